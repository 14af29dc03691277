#include "tests/fuzz/Alvo.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

// Stands in for the fuzzer where the compiler has none: runs the files named, and those of the folders named, through
// the target. The name comes before the run, so that the last one printed is the file to look at.

namespace {

std::vector<std::filesystem::path> Arquivos(const std::filesystem::path &nome)
{
    if (!std::filesystem::is_directory(nome)) {
        return {nome};
    }
    std::vector<std::filesystem::path> arquivos;
    for (const auto &entrada : std::filesystem::directory_iterator(nome)) {
        arquivos.push_back(entrada.path());
    }
    std::ranges::sort(arquivos);
    return arquivos;
}

std::vector<std::uint8_t> Conteudo(const std::filesystem::path &nome)
{
    std::ifstream arquivo(nome, std::ios::binary);
    if (!arquivo) {
        throw std::runtime_error("cannot be read: " + nome.string());
    }
    return {std::istreambuf_iterator<char>(arquivo), std::istreambuf_iterator<char>()};
}

} // namespace

int main(int quantos, char **argumentos)
try {
    int entradas = 0;
    for (int argumento = 1; argumento < quantos; ++argumento) {
        for (const std::filesystem::path &nome : Arquivos(argumentos[argumento])) {
            std::cout << nome.string() << std::endl;
            const std::vector<std::uint8_t> dados = Conteudo(nome);
            LLVMFuzzerTestOneInput(dados.data(), dados.size());
            ++entradas;
        }
    }
    std::cout << entradas << " inputs ran" << std::endl;
    return entradas > 0 ? 0 : 1;
} catch (const std::exception &erro) {
    std::cerr << "escaped: " << erro.what() << std::endl;
    return 1;
}
