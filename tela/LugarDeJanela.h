#pragma once

#include "tela/Arrumacao.h"

#include <optional>
#include <string>
#include <vector>

// Where a window stands, in the units of its screen. What is to the left of the first screen, or above it, is below
// zero.
struct LugarDeJanela {
    Retangulo Normal; // while it is not maximised
    bool Maximizada = false;

    bool operator==(const LugarDeJanela &) const = default;
};

// A place as a text, to be remembered. What tells no place that a window could have had is none.
std::string TextoDoLugar(const LugarDeJanela &lugar);
std::optional<LugarDeJanela> LugarDoTexto(const std::string &texto);

// As asked for, but no larger than the free area, and nowhere outside of it.
Retangulo Dentro(const Retangulo &pedido, const Retangulo &livre);
// Of that size, in the middle of what it stands in front of, within the free area.
Retangulo Centrado(const Tamanho &tamanho, const Retangulo &sobre, const Retangulo &livre);
// The area of the screen on which a window with that place is seen: that of its middle. None when that is on no
// screen, such as one that is not connected any more.
std::optional<Retangulo> TelaDoLugar(const Retangulo &lugar, const std::vector<Retangulo> &livres);

// Where a main window opens: as remembered when that screen is still there, otherwise in the middle of the area.
Retangulo LugarDaPrincipal(const std::optional<LugarDeJanela> &lembrado, const Tamanho &natural, const Retangulo &livre,
                           const std::vector<Retangulo> &livres);
// Where a window opens in front of another one: as large as remembered, in the middle of that one.
Retangulo LugarDaFrente(const std::optional<LugarDeJanela> &lembrado, const Tamanho &natural, const Retangulo &sobre,
                        const Retangulo &livre);
