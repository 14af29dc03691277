#pragma once

#include "host/IControle.h"

#include <span>
#include <string_view>

// The captions that controls show of their own, besides what the form writes into them. A screen layer makes a button
// of each.
namespace Partes {

inline constexpr std::string_view UsarEndereco = "&Usar endereço";
inline constexpr std::string_view LimparEndereco = "&Limpar";
inline constexpr std::string_view MaisRegistros = "&Mais registros";
inline constexpr std::string_view Localizar = "&Localizar";

} // namespace Partes

// Those of a kind of control whose letters are the same in every window.
std::span<const std::string_view> CaptionsDasPartes(EspecieControle especie);
