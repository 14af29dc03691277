#include "tests/support/ComoNoArquivo.h"

#include "tests/support/RegistroIgual.h"

#include <cstdlib>
#include <fstream>

testing::AssertionResult ComoNoArquivo(const std::vector<std::string> &obtido, const std::string &arquivo)
{
    if (std::getenv("RENOVA_RETRATOS") != nullptr) {
        std::ofstream novo(arquivo);
        for (const std::string &linha : obtido) {
            novo << linha << '\n';
        }
        return testing::AssertionFailure() << arquivo << " was written anew";
    }
    std::vector<std::string> esperado;
    std::ifstream guardado(arquivo);
    for (std::string linha; std::getline(guardado, linha);) {
        esperado.push_back(linha);
    }
    return RegistroIgual(obtido, esperado) << " (" << arquivo << ")";
}
