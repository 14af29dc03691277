#include "tests/fuzz/Alvo.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

// Stands in for the fuzzer where the compiler has none: runs the inputs of a file, one a line in hexadecimal, through
// the target. The line's number comes before the run, so that the last one printed is the input to look at.

namespace {

std::vector<std::uint8_t> Octetos(const std::string &linha)
{
    if (linha.size() % 2 != 0 || linha.find_first_not_of("0123456789ABCDEF") != std::string::npos) {
        throw std::runtime_error("not an input: " + linha);
    }
    std::vector<std::uint8_t> octetos;
    for (std::size_t i = 0; i < linha.size(); i += 2) {
        octetos.push_back(static_cast<std::uint8_t>(std::stoi(linha.substr(i, 2), nullptr, 16)));
    }
    return octetos;
}

} // namespace

int main(int quantos, char **argumentos)
try {
    if (quantos != 2) {
        throw std::runtime_error("one file of inputs is expected");
    }
    std::ifstream arquivo(argumentos[1]);
    int entradas = 0;
    for (std::string linha; std::getline(arquivo, linha);) {
        std::cout << argumentos[1] << ':' << ++entradas << std::endl;
        const std::vector<std::uint8_t> dados = Octetos(linha);
        LLVMFuzzerTestOneInput(dados.data(), dados.size());
    }
    std::cout << entradas << " inputs ran" << std::endl;
    return entradas > 0 ? 0 : 1;
} catch (const std::exception &erro) {
    std::cerr << "escaped: " << erro.what() << std::endl;
    return 1;
}
