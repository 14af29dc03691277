#pragma once

#include "host/Falha.h"

#include <cstdint>
#include <string>

namespace planilhas {

// Number of the fault whose cause is what a file holds: it is not of a format that is read here, or damaged, or
// protected, or larger than is taken. The description is a sentence for whoever chose the file.
inline constexpr std::int32_t FormatoInvalido = 321;

[[noreturn]] void FalhaDeFormato(const std::string &frase);

// Failure of the system in an act on a file, by the system's number, with the sentence "<act>: <reason>.".
[[noreturn]] void FalhaDeArquivo(int erro, const std::string &ato);

} // namespace planilhas
