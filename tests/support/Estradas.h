#pragma once

#include "tests/support/PessoaNaTela.h"

// The road of one equipment, in the search window: found, edited with its first sensor, and saved. `naLista` gets the
// description that the list shows then.
Percurso EstradaDeUmEquipamento(std::string &naLista);
