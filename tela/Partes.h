#pragma once

#include "host/IControle.h"

#include <span>
#include <string_view>

// The captions that controls show of their own, besides what the form writes into them. A screen layer makes a button
// or a label of each.
namespace Partes {

inline constexpr std::string_view UsarEndereco = "&Usar endereço";
inline constexpr std::string_view LimparEndereco = "&Limpar";
inline constexpr std::string_view MaisRegistros = "&Mais registros";
inline constexpr std::string_view Localizar = "&Localizar";

inline constexpr std::string_view Municipio = "Município:";
inline constexpr std::string_view Logradouro = "Logradouro ou CEP:";
inline constexpr std::string_view Numero = "Número:";
inline constexpr std::string_view Complemento = "Complemento:";
inline constexpr std::string_view Cliente = "Cliente:";
inline constexpr std::string_view Setor = "Setor:";

} // namespace Partes

// Those of a kind of control whose letters are the same in every window.
std::span<const std::string_view> CaptionsDasPartes(EspecieControle especie);

// Of a picker, the labels with which its rows begin. They line up with those of the page.
std::span<const std::string_view> RotulosDasPartes(EspecieControle especie);
