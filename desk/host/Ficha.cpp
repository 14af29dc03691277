#include "desk/host/Ficha.h"

#include "host/Falha.h"
#include "services/Esquema.h"

#include <algorithm>

namespace mesa {

std::size_t MaximoDe(std::string_view tabela, std::string_view coluna)
{
    return static_cast<std::size_t>(Esquema::Acha(tabela)->Acha(coluna)->Ate);
}

CampoDaFicha &Ficha::Campo(std::string_view nome)
{
    const auto achado = std::ranges::find(Campos, nome, &CampoDaFicha::Nome);
    if (achado == Campos.end()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return *achado;
}

} // namespace mesa
