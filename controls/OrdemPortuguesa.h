#pragma once

#include <string>
#include <string_view>

// The text without accents and in lower case, for finding it by what a person types.
std::string SemAcentoNemCaixa(std::string_view texto);

// Key whose byte order is the Portuguese order of the texts: accents and case do not count, unless nothing else
// tells two texts apart; then the one without the accent comes first.
std::string ChaveOrdem(std::string_view texto);
