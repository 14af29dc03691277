#include "services/ComandosDeCopia.h"

namespace mesa {

namespace {

DesfechoDeComando Conta(const DesfechoDaCopia &desfecho)
{
    std::string texto = desfecho.Frase;
    for (const std::string &achado : desfecho.Achados) {
        texto += "\n- " + achado;
    }
    return {desfecho.Feita ? 0 : 1, texto + "\n", desfecho};
}

} // namespace

DesfechoDeComando ComandaCopia(const std::string &registro, const ConfereArquivo &confere, const std::string &pasta,
                               const Instante &agora, int quantas, const AndamentoDaCopia &andamento)
{
    return Conta(Copia(registro, confere).Faz(pasta, agora, quantas, andamento));
}

DesfechoDeComando ComandaRestauracao(const std::string &registro, const ConfereArquivo &confere,
                                     const PedidoDeRestauracao &pedido, const Instante &agora,
                                     const AndamentoDaCopia &andamento)
{
    return Conta(Restauracao(registro, confere).Faz(pedido, agora, andamento));
}

} // namespace mesa
