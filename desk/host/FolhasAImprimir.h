#pragma once

#include <functional>
#include <vector>

namespace mesa {

// What a person asks of the pages of a document in a print dialog.
struct PedidoDeImpressao {
    int Paginas = 0;                       // of the document
    std::function<bool(int)> Escolhe = {}; // whether a page, from 0, is wanted; empty for all
    int Copias = 1;                        // that the printer does not make by itself
    bool Agrupa = true;                    // copy after copy, and not each page so many times
    bool DeTrasParaFrente = false;
};

// The pages to be printed, from 0, in that order.
std::vector<int> FolhasAImprimir(const PedidoDeImpressao &pedido);

} // namespace mesa
