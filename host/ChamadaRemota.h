#pragma once

#include "host/IGateway.h"
#include "host/Registro.h"

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

// The one way in which the module calls a remote service. `gateway` gives the gateway (a reference that is dropped as
// soon as the proxy is there); `pedido` builds the input record and runs after the proxy was created; `retorno` gets
// the proxy after a successful call. False when the service refused, which the proxy has then shown. Faults of the
// machinery pass through; a remote side that leaves a record of another type in the caller's variable is fault 13.
template <class ObtemGateway, class Pedido, class Retorno>
bool ExecutaRemoto(ObtemGateway &&gateway, const std::string &classeRN, const std::string &metodo, Pedido &&pedido,
                   Retorno &&retorno)
{
    Ref<IProxyRN> proxy = gateway()->CriaObjetoRN("VOR", classeRN, "ZTVORLIB", "4");
    auto registro = pedido();
    using TipoRegistro = std::remove_reference_t<decltype(*registro)>;

    Ref<Objeto> oED = registro;
    std::vector<Valor> aParam{Valor::PorReferencia(oED)};
    std::string sMetodo = metodo;
    Ref<Objeto> oContexto;
    const bool sucesso = proxy->ExecutaMetodo(oContexto, sMetodo, aParam);
    registro = ComoTipo<TipoRegistro>(oED);
    aParam.clear();
    oContexto = nullptr;
    if (!sucesso) {
        proxy->MostraErro();
        return false;
    }
    retorno(*proxy);
    return true;
}

// A call whose answer is a record of type Resposta. No value when the service refused. The answer itself may be
// Nothing; an answer of another type is fault 13, one that is no object fault 424.
template <class Resposta, class ObtemGateway, class Pedido>
std::optional<Ref<Resposta>> ConsultaRemota(ObtemGateway &&gateway, const std::string &classeRN,
                                            const std::string &metodo, Pedido &&pedido)
{
    Ref<Resposta> resposta;
    if (!ExecutaRemoto(gateway, classeRN, metodo, pedido,
                       [&](IProxyRN &proxy) { resposta = proxy.ObtemRetorno().Como<Resposta>(); })) {
        return std::nullopt;
    }
    return resposta;
}

// A call that changes data and returns nothing useful: the answer is not fetched. False when the service refused.
template <class ObtemGateway, class Pedido>
bool ComandaRemoto(ObtemGateway &&gateway, const std::string &classeRN, const std::string &metodo, Pedido &&pedido)
{
    return ExecutaRemoto(gateway, classeRN, metodo, pedido, [](IProxyRN &) {});
}
