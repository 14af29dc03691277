#pragma once

#include "services/Restauracao.h"

#include <string>

namespace mesa {

// What a command without windows ends with.
struct DesfechoDeComando {
    int Saida = 0; // 0 done, 1 not done
    std::string Texto;
    DesfechoDaCopia Como = {};
};

// registro: the registry's file. pasta, pedido: as the person gave them. andamento: told how much is done, and may give
// up.
DesfechoDeComando ComandaCopia(const std::string &registro, const ConfereArquivo &confere, const std::string &pasta,
                               const Instante &agora, int quantas = Copia::QuantasPadrao,
                               const AndamentoDaCopia &andamento = {});
DesfechoDeComando ComandaRestauracao(const std::string &registro, const ConfereArquivo &confere,
                                     const PedidoDeRestauracao &pedido, const Instante &agora,
                                     const AndamentoDaCopia &andamento = {});

} // namespace mesa
