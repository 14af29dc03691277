#pragma once

#include "host/Desenho.h"
#include "host/IForm.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// How the description of a form is read, whoever places its pieces: a toolkit's layouts, or a layer without any.

// The controls of a form, by the pieces that describe them.
class ControlesDoForm {
  public:
    explicit ControlesDoForm(const IForm &form);

    // Of a piece of the form's description that is a control.
    const Ref<IControle> &De(const Peca &peca) const { return m_Controles.at({peca.Nome, peca.Indice}); }

  private:
    std::map<std::pair<std::string, std::int16_t>, Ref<IControle>> m_Controles;
};

// Empty room, which is seen as long as what it stands in.
bool EhMola(const Peca &peca);

// Whether there is anything to be seen of the control, and so room to be taken, while it is visible. Not of a dialog,
// nor of a frame that is not drawn and holds nothing.
bool TomaLugar(const Peca &peca);

// The row of buttons that commands the whole form, which stands at its end and stays in view whatever is scrolled.
bool EhDeComandos(const Peca &peca);

// Pages.

// The root of the description, and every page of its tab strips. Labels line up on each of them by itself.
std::vector<const Peca *> PaginasDe(const Peca &raiz);

// What a screen knows of the pieces of a page.
struct MedidasDaPagina {
    // How far inside its room, from the left, what the piece holds begins.
    std::function<std::int32_t(const Peca &)> Recuo;
    // Of the label that the piece has, or is; of a picker, of the widest of its own.
    std::function<std::int32_t(const Peca &)> Rotulo;
};

// The labels with which the rows of a page begin end at one place, whatever frames they are in: how wide each is, by
// the piece that has it or is it. Those hidden count, so that nothing moves when they come.
std::map<const Peca *, std::int32_t> AlinhaRotulos(const Peca &pagina, const ControlesDoForm &controles,
                                                   const MedidasDaPagina &medidas);

// Rows.

// Whether the piece may change places with others of its row: its description tells it a place or a width. It may be
// told so by its width alone: its place may be 0.
bool EhMovel(const Peca &peca);

struct OrdemDaLinha {
    // The piece at each place. Those that may change places stand in the order of where they are now, in the places
    // that such pieces have in the row; those hidden too.
    std::vector<std::size_t> Pecas;
    // Between the row's pieces, in twips, when those that may change places tell how wide they are; none: the screen's
    // own, also while one is told to stand over the other.
    std::optional<std::int32_t> Distancia;

    bool operator==(const OrdemDaLinha &) const = default;
};

OrdemDaLinha OrdenaLinha(const Peca &linha, const ControlesDoForm &controles);

// Criteria bars.

// Of a list, in twips.
struct BarraDeCriterios {
    bool Visivel = false;
    // Around the frame that is seen: it stands where its Left and Top are, in a bar of the height told.
    std::int32_t Esquerda = 0;
    std::int32_t Acima = 0;
    std::int32_t Abaixo = 0;
};

BarraDeCriterios BarraDe(const Peca &lista, const ControlesDoForm &controles);

// Widths.

// Whether a piece takes all of the room that its column or its cell of a grid has for it. What has a width of its own,
// a field, combo, button or picture, does so only when it is elastic, and stands at the left of that room otherwise.
bool Enche(const Peca &peca);

// How wide a piece is by what it is to hold, counted in characters. What it shows may ask for more.
struct LarguraEmLetras {
    std::int32_t Natural = 0;
    std::int32_t Menor = 0; // to which it gives way where room is short
    std::int32_t Maior = 0; // however much it shows asks for; 0: no such limit
    char Letra = 'n';       // a wide one of those that it holds
};

inline constexpr std::int32_t LadoDaImagem = 32; // pixels

inline constexpr std::int32_t LetrasDoCombo = 18; // of one that has no items yet

LarguraEmLetras LarguraDe(const Peca &peca);
