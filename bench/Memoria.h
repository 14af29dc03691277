#pragma once

#include <cstddef>
#include <functional>

// Runs the procedure and gives the largest number of bytes that it held at once, beyond those held at its start.
// Counts operator new, which Memoria.cpp replaces; not for more than one thread.
std::size_t PicoDeMemoria(const std::function<void()> &procedimento);
