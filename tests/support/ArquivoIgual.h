#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Compares lines with those of the file `nome`; what differs is shown as by RegistroIgual. A change that is meant is
// taken over with RENOVA_RETRATOS in the environment, which writes the file anew and fails all the same, so that nobody
// forgets to look at what has changed:
//   RENOVA_RETRATOS=1 build/debug/teste_limits --gtest_filter='*Portrait'; git diff
testing::AssertionResult ArquivoIgual(const std::vector<std::string> &obtido, const std::string &nome);
