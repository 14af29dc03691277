#pragma once

#include "services/Restauracao.h"

#include <string>

namespace mesa {

// What a command without windows ends with.
struct DesfechoDeComando {
    int Saida = 0; // 0 done, 1 not done
    std::string Texto;
};

// registro: the registry's file. pasta, pedido: as the person gave them.
DesfechoDeComando ComandaCopia(const std::string &registro, const ConfereArquivo &confere, const std::string &pasta,
                               const Instante &agora, int quantas = Copia::QuantasPadrao);
DesfechoDeComando ComandaRestauracao(const std::string &registro, const ConfereArquivo &confere,
                                     const PedidoDeRestauracao &pedido, const Instante &agora);

} // namespace mesa
