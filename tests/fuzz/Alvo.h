#pragma once

#include <cstddef>
#include <cstdint>

// What every target defines: one input goes through, and what does not hold for it ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho);
