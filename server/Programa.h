#pragma once

#include "server/LinhaDeComando.h"
#include "services/Instante.h"
#include "services/Senhas.h"

#include <functional>
#include <iosfwd>

namespace servidor {

// Where a program hears and speaks.
struct Boca {
    std::istream &Entrada;
    std::ostream &Saida;
    std::ostream &Erros;
};

// Does what the command line asks; gives the code to end with. espera: comes back when a server that serves is to end.
int Programa(const LinhaDeComando &linha, const Boca &boca, const mesa::Relogio &agora,
             const std::function<void()> &espera, const mesa::CustoDaSenha &custo = {});

} // namespace servidor
