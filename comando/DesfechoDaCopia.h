#pragma once

#include "comando/Ambiente.h"
#include "services/ComandosDeCopia.h"

namespace comando {

// What the program ends with after a copy or a restoration, whose sentences are told here.
Codigo Conta(const mesa::DesfechoDeComando &desfecho, Ambiente &ambiente);

} // namespace comando
