#include "desk/host/FolhasAImprimir.h"

#include <algorithm>

namespace mesa {

std::vector<int> FolhasAImprimir(const PedidoDeImpressao &pedido)
{
    std::vector<int> paginas;
    for (int pagina = 0; pagina < pedido.Paginas; ++pagina) {
        if (!pedido.Escolhe || pedido.Escolhe(pagina)) {
            paginas.push_back(pagina);
        }
    }
    if (pedido.DeTrasParaFrente) {
        std::ranges::reverse(paginas);
    }
    const int copias = std::max(1, pedido.Copias);
    std::vector<int> folhas;
    if (pedido.Agrupa) {
        for (int copia = 0; copia < copias; ++copia) {
            folhas.insert(folhas.end(), paginas.begin(), paginas.end());
        }
    } else {
        for (const int pagina : paginas) {
            folhas.insert(folhas.end(), static_cast<std::size_t>(copias), pagina);
        }
    }
    return folhas;
}

} // namespace mesa
