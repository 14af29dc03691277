#pragma once

#include <cstdint>
#include <string>

namespace mesa {

// Why a calibration that was stored is corrected, in the words of who corrects it.
namespace MotivoCorrecao {

inline constexpr std::int64_t Menor = 5; // characters
inline constexpr std::int64_t Maior = 500;

// What the history has where nobody was asked.
inline const std::string Nenhum = "sem motivo";

// The text without the blanks around it.
std::string Aparado(const std::string &texto);
// Why the text is no reason, as "o motivo precisa ter de 5 a 500 caracteres; veio com 2"; empty when it is one.
std::string RecusaDe(const std::string &texto);

} // namespace MotivoCorrecao

} // namespace mesa
