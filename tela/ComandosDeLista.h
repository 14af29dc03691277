#pragma once

#include "controls/ztList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a screen shows of a list besides its rows.

// A command of the list, as its button and as its entry in the context menu.
struct ComandoDeLista {
    std::string Chave;
    std::string Letra; // that Alt answers to, whatever is seen and said now; empty when all of its letters were taken
    std::string NoBotao;
    std::string NoMenu;
    std::string Dica;
    bool IniciaGrupo = false;
    bool Visivel = false;
    bool Utilizavel = false;
};

// The side bar. The list's own two buttons have their letters first, so that these are the same whatever the commands
// are; a command has one of the first caption that it had, seen or not, so that no letter changes its meaning.
struct BarraDeLista {
    std::string Fechar;
    std::string Ajuda;
    std::vector<ComandoDeLista> Comandos; // in the order of the menu, those not seen included
    bool ComBotoesProprios = false;
    bool Visivel = false;
};

BarraDeLista BarraDaLista(const ztList &lista);

// The part of the context menu that sorts: the columns as the heading shows them, each under a digit, and under 0 the
// order in which the rows came.
struct OrdensDeLista {
    struct Coluna {
        std::string Caption;
        std::int32_t Numero = 0; // from 1, as ztList::OrdenaPor takes it
        bool Atual = false;
    };

    std::string Caption;
    std::vector<Coluna> Colunas;
    bool Utilizavel = false;
};

OrdensDeLista OrdensDaLista(const ztList &lista);

// The part of a table's context menu that takes what is seen elsewhere, and arranges it.
struct EntradasDeTabela {
    std::string Copiar;
    std::string CopiarTudo;
    std::string Imprimir;
    std::string Exportar;
    std::string Colunas;
};

// antes: the captions that the menu has besides.
EntradasDeTabela EntradasDaTabela(const std::vector<std::string> &antes);

// The list whose criteria bar the control is in; null for one that is in none.
ztList *ListaDosCriterios(const Ref<IControle> &controle);

// The button OK beside a list that is all there is in its window, while it is seen: such a window is for choosing a
// row. Nothing for any other list.
Ref<IControle> BotaoDeEscolha(const ztList &lista);

// Enter, or a double click, on the current row: chooses it in a window that is for that; otherwise shows its details in
// a list that is searched in, and in one that belongs to what is being edited opens it for editing, or shows its
// details where it cannot be edited. False when there is no row, or nothing of this can be done with it.
bool AbreLinha(ztList &lista);

// Keys that are a command whatever its letter: F5 repeats the search, Insert and Delete run the list's own command,
// with its own question.
enum class AtalhoDeLista { Atualiza, Inclui, Remove };

bool FazAtalho(ztList &lista, AtalhoDeLista atalho);

// What keys do in the rows, besides the arrows. The letters of commands come with Alt.
enum class TeclaDeLista { Home, End };

// The row to which the key leads, from 1; none without rows.
std::optional<std::int32_t> LinhaDaTecla(const ztList &lista, TeclaDeLista tecla);
