#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

// The desk meets the names of a toolkit and of other libraries: every declaration of its own stands in its namespace.
// Outside of it are includes, names of the toolkit's classes, comments and the entry of a program.
TEST(EspacoDeNomes, look_EveryFileOfTheDesk_DeclaresInItsNamespace)
{
    const std::regex deFora("|#.*|//.*|class Q\\w+;|int main\\(.*");
    int arquivos = 0;
    for (const auto &entrada : std::filesystem::recursive_directory_iterator("desk")) {
        if (entrada.path().extension() != ".h" && entrada.path().extension() != ".cpp") {
            continue;
        }
        ++arquivos;
        std::ifstream arquivo(entrada.path());
        bool dentro = false;
        for (std::string linha; std::getline(arquivo, linha) && linha.rfind("int main(", 0) != 0;) {
            if (linha == "namespace mesa {" || linha == "} // namespace mesa") {
                dentro = linha.front() == 'n';
            } else if (!dentro) {
                EXPECT_TRUE(std::regex_match(linha, deFora)) << entrada.path() << ": " << linha;
            }
        }
        EXPECT_FALSE(dentro) << entrada.path();
    }
    EXPECT_GT(arquivos, 100);
}
