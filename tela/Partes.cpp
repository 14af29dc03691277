#include "tela/Partes.h"

#include <array>

std::span<const std::string_view> CaptionsDasPartes(EspecieControle especie)
{
    static constexpr std::array DoEndereco = {Partes::UsarEndereco, Partes::LimparEndereco};
    static constexpr std::array DaLista = {Partes::MaisRegistros, Partes::Localizar};
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
