#pragma once

#include "host/Desenho.h"

#include <gtest/gtest.h>

#include <string>

// Compares a form's description with the file `nome`: size, then the pieces, a line each, those inside another one
// deeper, with how they are arranged and what no portrait of the loaded controls shows. For example
//   linha
//     ztCombo cboTipo ["1|Fixo??2|Móvel??"], elastica, nome "Tipo"
// A change that is meant is taken over as for a portrait of the controls.
testing::AssertionResult DesenhoIgual(const Desenho &desenho, const std::string &nome);
