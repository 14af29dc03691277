#include "services/SessaoServico.h"

#include <algorithm>

namespace mesa {

std::string UFDoCliente(SessaoServico &sessao)
{
    const std::vector<ClienteCadastrado> clientes = sessao.Clientes();
    const auto achado = std::ranges::find(clientes, sessao.Operador().CodCliente, &ClienteCadastrado::CodCliente);
    return achado == clientes.end() ? std::string() : achado->UF;
}

} // namespace mesa
