#pragma once

#include "host/Desenho.h"
#include "host/IForm.h"

#include <cstdint>
#include <string>
#include <vector>

// Places the description of a form on a screen that has no layouts of its own.
// All measures are the screen's pixels.

struct Tamanho {
    std::int32_t Largura = 0;
    std::int32_t Altura = 0;

    bool operator==(const Tamanho &) const = default;
};

struct Retangulo {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Largura = 0;
    std::int32_t Altura = 0;

    bool operator==(const Retangulo &) const = default;
};

// The screen's font.
class IMedidor {
  public:
    virtual ~IMedidor() = default;

    // Of a text without marks, whose lines are parted by line feeds. largura: on
    // as many lines as it takes to be no wider; 0 for no limit.
    virtual Tamanho Mede(const std::string &texto, std::int32_t largura) const = 0;
};

// The room that the screen's widgets take besides their texts.
struct Folgas {
    std::int32_t Margem = 9;          // around the window's contents, and around those of a box or page
    std::int32_t EntrePecas = 6;      // in either direction
    std::int32_t Campo = 8;           // of a field around its text, in either direction
    std::int32_t Seta = 20;           // of a combo, besides its field
    std::int32_t Marca = 20;          // of a check box or option, before its text
    std::int32_t Botao = 24;          // of a button beside its text
    std::int32_t MenorBotao = 75;     // width
    std::int32_t AlturaDaLista = 150; // with a few rows
    std::int32_t LarguraDaLista = 300;
    std::int32_t Coluna = 12;        // of a list's column beside its texts
    std::int32_t BarraDaLista = 120; // what a list has beside its columns
    std::int32_t LarguraDoParagrafo = 400;
};

// Where a piece that is seen stands in its window.
struct PecaArrumada {
    const Peca *Quem = nullptr;
    Retangulo Lugar;
    Retangulo Rotulo;                   // of the text before the control; empty when it has none
    Retangulo Miolo;                    // of a box, the pages or a list: what is left inside for
                                        // what it holds
    Retangulo Localizar;                // of a list: the search button beside its criteria
    std::int32_t LarguraDosRotulos = 0; // of a picker: of the labels with which its rows begin
};

struct FormArrumado {
    // What the window has at first, and what it needs: in less, something would be cut.
    Tamanho Natural;
    Tamanho Menor;
    // Only what is a control; a page that is not the current one stands where it
    // will be seen.
    std::vector<PecaArrumada> Pecas;
};

// form: has the controls of the description, and with them what they are now: which are seen, with which captions,
// positions and items. What is hidden takes no room. disponivel: of the window's contents; long fields give way in less
// than is natural.
FormArrumado Arruma(const Desenho &desenho, const IForm &form, const IMedidor &medidor, Tamanho disponivel,
                    const Folgas &folgas = {});
