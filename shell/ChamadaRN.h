#pragma once

#include "host/ChamadaRemota.h"
#include "host/Ref.h"
#include "host/Registro.h"
#include "shell/ModGeral.h"

#include <optional>
#include <string>

// The remote call as the module's procedures make it: through goGateway. `pedido` builds the record that goes, once the
// proxy is there.

// A call whose answer is a record; no value when the service refused.
template <class Resposta, class Pedido>
std::optional<Ref<Resposta>> ConsultaRN(const std::string &classeRN, const std::string &metodo, Pedido &&pedido)
{
    return ConsultaRemota<Resposta>(goGateway, classeRN, metodo, pedido);
}

// A call that changes data; false when the service refused.
template <class Pedido> bool ComandaRN(const std::string &classeRN, const std::string &metodo, Pedido &&pedido)
{
    return ComandaRemoto(goGateway, classeRN, metodo, pedido);
}

// A record of which one member is written: the number by which the service finds what is asked for.
template <class ED, class T> Ref<ED> SoComNumero(Campo<T> ED::*numero, T valor)
{
    auto registro = Novo<ED>();
    (*registro).*numero = valor;
    return registro;
}
