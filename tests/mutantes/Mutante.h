#pragma once

// Whether the change of this number is the one that is on in this run.
bool Mutante(unsigned numero) noexcept;
