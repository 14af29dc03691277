#include "tests/support/RegistroIgual.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

bool Casa(std::string_view obtida, std::string_view esperada)
{
    return esperada.ends_with('*') ? obtida.starts_with(esperada.substr(0, esperada.size() - 1)) : obtida == esperada;
}

} // namespace

testing::AssertionResult RegistroIgual(const std::vector<std::string> &obtido, const std::vector<std::string> &esperado)
{
    const std::size_t linhas = esperado.size();
    const std::size_t colunas = obtido.size();
    // Length of the longest common rest from (i, j) on.
    std::vector<std::vector<std::size_t>> comum(linhas + 1, std::vector<std::size_t>(colunas + 1));
    for (std::size_t i = linhas; i-- > 0;) {
        for (std::size_t j = colunas; j-- > 0;) {
            comum[i][j] =
                Casa(obtido[j], esperado[i]) ? comum[i + 1][j + 1] + 1 : std::max(comum[i + 1][j], comum[i][j + 1]);
        }
    }
    if (linhas == colunas && comum[0][0] == linhas) {
        return testing::AssertionSuccess();
    }
    std::string diferenca;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < linhas || j < colunas) {
        if (i < linhas && j < colunas && Casa(obtido[j], esperado[i])) {
            diferenca += "  " + obtido[j] + "\n";
            ++i;
            ++j;
        } else if (i < linhas && (j == colunas || comum[i + 1][j] >= comum[i][j + 1])) {
            diferenca += "- " + esperado[i++] + "\n";
        } else {
            diferenca += "+ " + obtido[j++] + "\n";
        }
    }
    return testing::AssertionFailure() << "o registro difere (- falta, + sobra):\n" << diferenca;
}
