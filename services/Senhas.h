#pragma once

#include "services/Segredo.h"

#include <cstddef>
#include <string>

namespace mesa {

// What trying one password costs whoever guesses, and whoever signs in.
struct CustoDaSenha {
    unsigned long long Passadas = 2;
    std::size_t Memoria = 64 << 20; // bytes
};

// Passwords as the registry keeps them: a hash that takes its time.
namespace Senhas {

std::string Embaralha(const Segredo &senha, const CustoDaSenha &custo);
// An empty hash, of a user that there is not, is nobody's password and costs as much to try.
bool Confere(const std::string &embaralhada, const Segredo &senha, const CustoDaSenha &custo);
// Whether it was made at another cost than this.
bool Envelheceu(const std::string &embaralhada, const CustoDaSenha &custo);
// 64 hexadecimal digits that are made of the text, always the same for one salt and one cost, in as much time.
std::string Estica(const std::string &texto, const std::string &sal, const CustoDaSenha &custo);

} // namespace Senhas

} // namespace mesa
