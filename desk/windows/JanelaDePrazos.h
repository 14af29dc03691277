#pragma once

#include "desk/host/ListaDePrazos.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/QuemUsa.h"

#include <QWidget>

#include <functional>
#include <optional>

class QLabel;
class QPushButton;
class QTableWidget;

namespace mesa {

class CampoDeFiltro;
class ComandosDeTabela;

// Asks where a calendar file goes, and writes it there. False when it could not be written, which was told.
bool SalvaCalendario(const std::string &texto, QWidget *dono);

// The list behind a number of the panel.
class JanelaDePrazos : public QWidget {
  public:
    // abre: shows an equipment.
    JanelaDePrazos(ListaDePrazos lista, std::function<void(const EquipamentoRecente &)> abre, BordaDaJanela borda,
                   const QuemUsa &quem, QWidget *dono);

    // Reads the rows and shows them.
    void Carrega();

  private:
    void Mostra();
    void Filtra();
    void Habilita();
    void AbreMenu(const QPoint &onde);
    void AbreEscolhido();
    // False when it was refused or given up, which was told.
    bool Le(bool (ListaDePrazos::*le)(std::string &, const Segue &));
    // What is still to be read: what is printed, exported or made a calendar of is the whole list.
    bool Completa();
    std::optional<std::size_t> Escolhida() const;

    ListaDePrazos m_Lista;
    std::function<void(const EquipamentoRecente &)> m_Abre;
    BordaDaJanela m_Borda;
    QTableWidget *m_Linhas;
    CampoDeFiltro *m_Filtro;
    ComandosDeTabela *m_ComandosDeTabela;
    QLabel *m_Nota;
    QPushButton *m_Abrir;
    QPushButton *m_Mais;
    QPushButton *m_Calendario;
};

} // namespace mesa
