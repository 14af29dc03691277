#include "tests/services/Motor.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

// Starts the cluster that all tests of one run share, or ends it: aglomerado_de_teste inicia|encerra.
int main(int argc, char **argv)
try {
    std::string pasta;
    if (std::getline(std::ifstream(ARQUIVO_DO_AGLOMERADO), pasta)) {
        if (fs::exists(pasta)) {
            motor::EncerraEm(pasta);
        }
        fs::remove(ARQUIVO_DO_AGLOMERADO);
    }
    if (argc == 2 && std::string(argv[1]) == "inicia") {
        const motor::Aglomerado novo({.Fica = true});
        std::ofstream(ARQUIVO_DO_AGLOMERADO) << novo.Pasta().string() << '\n';
    }
    return 0;
} catch (const std::exception &erro) {
    std::fprintf(stderr, "%s\n", erro.what());
    return 1;
}
