#include "tela/Partes.h"

#include <array>

std::span<const Parte> PartesDe(EspecieControle especie)
{
    static constexpr std::array Unica = {Parte::Todo};
    static constexpr std::array DoEndereco = {Parte::Municipio,   Parte::Via,  Parte::Numero,
                                              Parte::Complemento, Parte::Usar, Parte::Limpar};
    static constexpr std::array DoCliente = {Parte::Cliente, Parte::Setor};
    static constexpr std::array DaLista = {Parte::Localizar, Parte::Linhas, Parte::MaisRegistros, Parte::Filtro};
    switch (especie) {
    case EspecieControle::ztEndereco:
        return DoEndereco;
    case EspecieControle::ztClienteSetor:
        return DoCliente;
    case EspecieControle::ztList:
        return DaLista;
    default:
        return Unica;
    }
}

Parte ParteDoFoco(EspecieControle especie)
{
    switch (especie) {
    case EspecieControle::ztEndereco:
        return Parte::Via;
    case EspecieControle::ztClienteSetor:
        return Parte::Cliente;
    case EspecieControle::ztList:
        return Parte::Linhas;
    default:
        return Parte::Todo;
    }
}

std::span<const BotaoDeParte> CaptionsDasPartes(EspecieControle especie)
{
    static constexpr std::array DoEndereco = {BotaoDeParte{Parte::Usar, Partes::UsarEndereco},
                                              BotaoDeParte{Parte::Limpar, Partes::LimparEndereco}};
    static constexpr std::array DaLista = {BotaoDeParte{Parte::Localizar, Partes::Localizar},
                                           BotaoDeParte{Parte::MaisRegistros, Partes::MaisRegistros}};
    if (especie == EspecieControle::ztEndereco) {
        return DoEndereco;
    }
    if (especie == EspecieControle::ztList) {
        return DaLista;
    }
    return {};
}

std::span<const std::string_view> RotulosDasPartes(EspecieControle especie)
{
    static constexpr std::array DoEndereco = {Partes::Municipio, Partes::Logradouro, Partes::Numero};
    static constexpr std::array DoCliente = {Partes::Cliente};
    if (especie == EspecieControle::ztEndereco) {
        return DoEndereco;
    }
    if (especie == EspecieControle::ztClienteSetor) {
        return DoCliente;
    }
    return {};
}
