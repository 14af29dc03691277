#include "desk/host/Ficha.h"

#include "host/Falha.h"

#include <algorithm>

namespace mesa {

CampoDaFicha &Ficha::Campo(std::string_view nome)
{
    const auto achado = std::ranges::find(Campos, nome, &CampoDaFicha::Nome);
    if (achado == Campos.end()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return *achado;
}

} // namespace mesa
