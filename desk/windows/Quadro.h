#pragma once

#include "tela/Tracado.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

class QBoxLayout;
class QLabel;
class QLayout;
class QLayoutItem;
class QWidget;

namespace mesa {

// Name of the widget of a control: the control's, and behind it "_" and the index of one in a control array.
QString NomeDoWidget(const std::string &nome, std::int16_t indice);

// Draws a form from its description with the toolkit's layouts: a widget for each control, in the frames, pages, rows
// and grids that are described. A label that belongs to a control is called as the control's widget behind "rot_", the
// criteria bar of a list as the list before "_criterios". What the widgets say is their renderers' affair; what stands
// beside a control, and where the form moves one to, is followed here.
class Quadro : public QObject {
  public:
    Quadro(const IForm &form, QWidget *janela);

    // Follows the form. Called when the renderers have made their parts and follow the controls themselves.
    void Segue();
    // Again when what the labels are drawn with has changed.
    void AlinhaRotulos() const;

  private:
    // What one piece has become.
    struct Parte {
        QLabel *Rotulo = nullptr; // before it
        QWidget *Widget = nullptr;
        QLayout *Arranjo = nullptr;
    };
    // A piece of a row, or the room that is left behind them.
    struct Lugar {
        std::vector<QLayoutItem *> Itens;
        int Elasticidade = 0;
    };
    struct Fila {
        QBoxLayout *Leiaute;
        const Peca *Linha;
        std::vector<Lugar> Lugares; // as described
        OrdemDaLinha Ordem;
    };
    // Where the frames of a list's criteria bar are.
    struct Barra {
        const Peca *Lista;
        QLayout *Criterios;
    };

    Parte Faz(const Peca &peca, QWidget *dono, QLabel *anterior);
    QLayout *FazArranjo(const Peca &peca, QWidget *dono);
    // Of the pieces from one up to another one.
    QLayout *FazColuna(std::span<const Peca> pecas, QWidget *dono);
    // What the window shows, which scrolls, and below it the commands that stand at its end.
    void FazJanela(QWidget *janela);
    QLayout *FazLinha(const Peca &peca, QWidget *dono);
    QLayout *FazGrade(const Peca &peca, QWidget *dono);
    QWidget *FazWidget(const Peca &peca, QWidget *dono);
    QWidget *FazMoldura(const Peca &peca, QWidget *dono);
    QWidget *FazAbas(const Peca &peca, QWidget *dono);
    QWidget *FazLista(const Peca &peca, QWidget *dono);

    void Acompanha(const Peca &peca);
    void Ordena(Fila &fila) const;
    int RecuoDe(const Peca &peca) const;
    std::vector<QLabel *> RotulosDe(const Peca &peca) const;

    const Desenho m_Desenho;
    ControlesDoForm m_Controles;
    std::map<const Peca *, QWidget *> m_Widgets; // those of the controls
    std::map<const Peca *, QLabel *> m_Rotulos;  // before them
    std::vector<Fila> m_Filas;
    std::vector<Barra> m_Barras;
    std::vector<Conexao> m_Conexoes;
};

} // namespace mesa
