#pragma once

#include "desk/host/ListaDePrazos.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/QuemUsa.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

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

    // With room for the columns, which are many.
    QSize sizeHint() const override;

  private:
    // desde: the first row that is not shown yet.
    void Mostra(std::size_t desde);
    void Ordena(int coluna);
    void Filtra();
    void Habilita();
    void AbreMenu(const QPoint &onde);
    void AbreEscolhido();
    // False when it was refused or given up, which was told.
    bool Le(bool (ListaDePrazos::*le)(std::string &, const Segue &), bool doComeco);
    // What is still to be read: what is printed, exported or made a calendar of is the whole list.
    bool Completa();
    std::optional<std::size_t> Escolhida() const;

    std::shared_ptr<ListaDePrazos> m_Lista; // what reads it may outlive the window
    std::vector<int> m_Larguras;            // as the texts ask for
    int m_Ordenada = -1;                    // the column that the rows are in the order of
    bool m_Crescente = true;
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
