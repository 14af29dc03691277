#pragma once

#include "services/Banco.h"
#include "services/Servicos.h"

namespace mesa {

// What a registry begins with: who it is, which kind it is, and the keys with which it signs.
namespace Fundacao {

// Writes the one row of REGISTRO; its entry in the history is the caller's, who knows what stands before it.
void EscreveIdentidade(Banco &banco, TipoDeRegistro tipo, const Instante &agora);

// A new registry, with nobody in it yet.
void Funda(Banco &banco, TipoDeRegistro tipo, const Instante &agora);

} // namespace Fundacao

} // namespace mesa
