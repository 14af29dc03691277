#include "tests/support/ArquivoIgual.h"

#include "tests/support/RegistroIgual.h"

#include <cstdlib>
#include <fstream>

testing::AssertionResult ArquivoIgual(const std::vector<std::string> &obtido, const std::string &nome)
{
    if (std::getenv("RENOVA_RETRATOS") != nullptr) {
        std::ofstream arquivo(nome);
        for (const std::string &linha : obtido) {
            arquivo << linha << '\n';
        }
        return testing::AssertionFailure() << nome << " was written anew";
    }
    std::vector<std::string> esperado;
    std::ifstream arquivo(nome);
    for (std::string linha; std::getline(arquivo, linha);) {
        esperado.push_back(linha);
    }
    return RegistroIgual(obtido, esperado) << " (" << nome << ")";
}
