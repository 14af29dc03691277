#pragma once

#include "desk/host/PainelDePrazos.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/QuemUsa.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QTableWidget;

namespace mesa {

class ComandosDeTabela;
class GraficoDeMeses;

// The panel of deadlines on the screen. It is read each time that it comes to be seen, once the page itself has been
// painted.
class PainelQt : public QWidget {
  public:
    struct Pedidos {
        SessaoDosPrazos Sessao;
        std::function<void(const RecorteDePrazos &)> AbreLista;
        BordaDaJanela Borda;
        std::function<QuemUsa()> Quem;
    };

    PainelQt(Pedidos pedidos, QWidget *dono);

    // Nothing of what was read before is shown from now on. It is read again once the panel has been painted.
    void LeAoAparecer();

  protected:
    void paintEvent(QPaintEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;

  private:
    class BotaoDoEstado;

    void MontaEstados();
    void MontaCabeca();
    void MontaGrupos();
    // Nothing of what was read before is shown.
    void Espera();
    void Le();
    void Confere();
    void Mostra();
    void RecebeFoco();
    void Assenta();
    void MostraEstados();
    void MostraGrupos();
    void AbreGrupo();
    void SalvaTodos();

    Pedidos m_Pedidos;
    PainelDePrazos m_Painel;
    bool m_Pendente = false; // to be read
    QLabel *m_Resumo;
    QLabel *m_Falhas;
    QPushButton *m_TentarDeNovo;
    QWidget *m_Numeros;
    QGridLayout *m_Estados;
    std::vector<BotaoDoEstado *> m_Botoes;
    QLabel *m_Regra;
    QComboBox *m_Agrupar;
    QPushButton *m_Atualizar;
    QPushButton *m_Conferir;
    QPushButton *m_Calendario;
    QTableWidget *m_Grupos;
    ComandosDeTabela *m_ComandosDosGrupos = nullptr;
    QLabel *m_TituloDosMeses;
    GraficoDeMeses *m_Meses;
};

} // namespace mesa
