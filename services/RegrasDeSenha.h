#pragma once

#include "services/Segredo.h"

#include <cstddef>
#include <string>

namespace mesa {

// What a password has to be, whoever chooses it.
namespace RegrasDeSenha {

inline constexpr std::size_t Minimo = 12; // characters
inline constexpr std::size_t Maximo = 128;

// Refused with a sentence: too short or long, what a keyboard cannot type, one character or a run over and over, the
// user's own names inside, and what is little more than common words, however they are dressed up.
void Confere(const Segredo &senha, const std::string &usuario, const std::string &nome);

} // namespace RegrasDeSenha

} // namespace mesa
