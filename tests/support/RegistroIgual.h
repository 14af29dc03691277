#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Compares a log with the one expected, in which a line that ends in "*" stands for every line that begins so. When
// they differ the message shows both: "  " the lines in both, "- " those that are missing, "+ " those too many.
testing::AssertionResult RegistroIgual(const std::vector<std::string> &obtido,
                                       const std::vector<std::string> &esperado);
