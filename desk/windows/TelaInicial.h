#pragma once

#include "desk/host/PaginaInicial.h"
#include "desk/windows/PainelQt.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

namespace mesa {

// The start page on the screen. What it shows is asked for each time that it comes to be seen.
class TelaInicial : public QWidget {
  public:
    struct Pedidos {
        std::function<std::optional<PaginaInicial>()> Pagina; // none: it could not be read
        std::function<void(const std::string &acao)> Faz;
        std::function<void(const EquipamentoRecente &)> Abre;
        PainelQt::Pedidos Painel;
    };

    TelaInicial(Pedidos pedidos, QWidget *dono);

    // The keyboard goes to the panel of deadlines.
    void VaiAoPainel();

  protected:
    void showEvent(QShowEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;

  private:
    void Mostra();
    void MostraRecentes();
    void AbreEscolhido();

    Pedidos m_Pedidos;
    std::vector<RecenteMostrado> m_Mostrados;
    QLabel *m_Quem;
    QLabel *m_Impedimento;
    PainelQt *m_Painel;
    QVBoxLayout *m_Acoes;
    QWidget *m_Lado; // with the recent equipment
    QLabel *m_SemRecentes;
    QTreeWidget *m_Recentes;
    QPushButton *m_Abrir;
};

} // namespace mesa
