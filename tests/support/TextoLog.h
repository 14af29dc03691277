#pragma once

#include "host/HostServices.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// How the arguments of a host call are written in the log: texts in double quotes on one line, True and False, a
// control by its name, a form by its class, a record by its written members, an empty value as "ausente".

std::string TextoLog(std::string_view texto);
inline std::string TextoLog(const std::string &texto)
{
    return TextoLog(std::string_view(texto));
}
inline std::string TextoLog(const char *texto)
{
    return TextoLog(std::string_view(texto));
}
std::string TextoLog(double valor);
std::string TextoLog(Data valor);
std::string TextoLog(const Valor &valor);
std::string TextoLog(const ItensMenu &itens);
// Lists of texts, as bursts and reports take them.
std::string TextoLog(const std::vector<std::string> &textos);
std::string TextoLogObjeto(const Objeto *objeto);

template <std::integral T> std::string TextoLog(T valor)
{
    if constexpr (std::same_as<T, bool>) {
        return valor ? "True" : "False";
    } else {
        return std::to_string(valor);
    }
}

template <class T> std::string TextoLog(const Ref<T> &referencia)
{
    return TextoLogObjeto(referencia.Ponteiro());
}

// The arguments of a call, separated by commas.
template <class... Args> std::string ArgumentosLog(const Args &...args)
{
    std::string texto;
    ((texto += (texto.empty() ? "" : ", ") + TextoLog(args)), ...);
    return texto;
}
