#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/QuemUsa.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QLabel;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace mesa {

class CampoDeFiltro;
class ComandosDeTabela;
class PainelDaFicha;

// A page of the administration on the screen.
class PaginaQt : public QWidget {
  public:
    PaginaQt(std::unique_ptr<PaginaAdministracao> pagina, BordaDaJanela borda, const QuemUsa &quem, QWidget *dono);

    // Reads the rows and shows them; the chosen one stays so.
    void Carrega();

  private:
    void MontaCriterios(QVBoxLayout *tudo);
    void MontaTabela(const QuemUsa &quem);
    void MontaComandos(QVBoxLayout *tudo);
    void MostraColunas();
    void Filtra();
    void AbreMenu(const QPoint &onde);
    void Mostra();
    void Habilita();
    void Comanda(const ComandoDaPagina &comando);
    void ComFicha(const std::string &comando);
    void ComArquivo(const ComandoDaPagina &comando);
    bool Confirma(const std::string &comando);
    void Recusa(const std::string &frase);
    std::optional<std::size_t> Escolhida() const;

    std::unique_ptr<PaginaAdministracao> m_Pagina;
    BordaDaJanela m_Borda;
    PainelDaFicha *m_Criterios = nullptr;
    QTableWidget *m_Linhas;
    CampoDeFiltro *m_Filtro;
    ComandosDeTabela *m_ComandosDeTabela;
    QLabel *m_Nota;
    std::vector<std::pair<std::string, QPushButton *>> m_Botoes;
};

} // namespace mesa
