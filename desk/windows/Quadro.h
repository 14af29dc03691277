#pragma once

#include "host/IForm.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
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
    // The first labels of the rows of a page end at one place, whatever frames they are in.
    void AlinhaRotulos() const;

  private:
    // What one piece has become.
    struct Parte {
        QLabel *Rotulo = nullptr; // before it
        QWidget *Widget = nullptr;
        QLayout *Arranjo = nullptr;
    };
    // A place in a row, and the control in it when its Left counts.
    struct Lugar {
        std::vector<QLayoutItem *> Itens;
        int Elasticidade = 0;
        Ref<IControle> Movel;
    };
    struct Fila {
        QBoxLayout *Leiaute;
        std::vector<Lugar> Lugares; // as described
        std::vector<std::int32_t> Esquerdas;
    };
    // Where the frames of a list's criteria bar are.
    struct Barra {
        Ref<IControle> Lista;
        QLayout *Criterios;
    };

    const Ref<IControle> &ControleDe(const Peca &peca) const;
    Parte Faz(const Peca &peca, QWidget *dono, QLabel *anterior);
    QLayout *FazArranjo(const Peca &peca, QWidget *dono);
    // enche: the pieces fill the column even if none of them is elastic.
    QLayout *FazColuna(const Peca &peca, QWidget *dono, bool enche = false);
    QLayout *FazLinha(const Peca &peca, QWidget *dono);
    QLayout *FazGrade(const Peca &peca, QWidget *dono);
    QWidget *FazWidget(const Peca &peca, QWidget *dono);
    QWidget *FazMoldura(const Peca &peca, QWidget *dono);
    QWidget *FazAbas(const Peca &peca, QWidget *dono);
    QWidget *FazLista(const Peca &peca, QWidget *dono);

    void Acompanha(const Ref<IControle> &controle);
    static void Ordena(Fila &fila);
    void AjustaBarra(const Barra &barra) const;

    QWidget *m_Janela;
    std::map<std::pair<std::string, std::int16_t>, Ref<IControle>> m_Controles;
    std::map<const IControle *, QLabel *> m_Rotulos;
    std::map<const IControle *, std::size_t> m_FilaDe;
    std::vector<Fila> m_Filas;
    std::vector<Barra> m_Barras;
    std::vector<QWidget *> m_Paginas;
    std::vector<Conexao> m_Conexoes;
};

} // namespace mesa
