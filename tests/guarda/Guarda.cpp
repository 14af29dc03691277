#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include <stdlib.h> // mkdtemp, which <cstdlib> need not declare; NOLINT(modernize-deprecated-headers)
#include <sys/wait.h>

Execucao Executa(const std::string &comando)
{
    Execucao execucao;
    std::FILE *const saida = popen((comando + " 2>&1 </dev/null").c_str(), "r");
    if (saida == nullptr) {
        ADD_FAILURE() << "could not be started: " << comando;
        return execucao;
    }
    std::array<char, 4096> trecho{};
    while (const std::size_t lidos = std::fread(trecho.data(), 1, trecho.size(), saida)) {
        execucao.Saida.append(trecho.data(), lidos);
    }
    const int estado = pclose(saida);
    execucao.Passou = WIFEXITED(estado) && WEXITSTATUS(estado) == 0;
    return execucao;
}

Execucao ExecutaCMake(const std::string &argumentos)
{
    return Executa("'" CMAKE_EXECUTAVEL "' " + argumentos);
}

PastaTemporaria::PastaTemporaria()
{
    std::string modelo = (std::filesystem::temp_directory_path() / "guarda.XXXXXX").string();
    if (mkdtemp(modelo.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), modelo);
    }
    Caminho = modelo;
}

PastaTemporaria::~PastaTemporaria()
{
    std::error_code ignorado;
    std::filesystem::remove_all(Caminho, ignorado);
}

void PastaTemporaria::Escreve(const std::string &arquivo, const std::string &conteudo) const
{
    const std::filesystem::path destino = Caminho / arquivo;
    std::filesystem::create_directories(destino.parent_path());
    std::ofstream(destino, std::ios::binary) << conteudo;
}
