#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace {

// What is outside of the namespace of a room that meets foreign names: includes, names of the toolkit's classes
// and of the database's, comments, what the system's compiler and linker give names to, and the entry of a program.
void ConfereDeclaracoes(const std::string &pasta, const std::string &nome, int menosDe)
{
    const std::regex deFora("|#.*|//.*|class Q\\w+;|struct (pg_\\w+|zip\\w*|lxw_\\w+|XML_\\w+);|int "
                            "main\\(.*|__CRT_UUID_DECL\\(.*\\)|extern \"C\" .*;");
    const std::regex abre("namespace " + nome + "(::\\w+)? \\{");
    const std::regex fecha("\\} // namespace " + nome + "(::\\w+)?");
    int arquivos = 0;
    for (const auto &entrada : std::filesystem::recursive_directory_iterator(pasta)) {
        if (entrada.path().extension() != ".h" && entrada.path().extension() != ".cpp") {
            continue;
        }
        ++arquivos;
        std::ifstream arquivo(entrada.path());
        bool dentro = false;
        for (std::string linha; std::getline(arquivo, linha) && linha.rfind("int main(", 0) != 0;) {
            if (std::regex_match(linha, abre)) {
                dentro = true;
            } else if (std::regex_match(linha, fecha)) {
                dentro = false;
            } else if (!dentro) {
                EXPECT_TRUE(std::regex_match(linha, deFora)) << entrada.path() << ": " << linha;
            }
        }
        EXPECT_FALSE(dentro) << entrada.path();
    }
    EXPECT_GT(arquivos, menosDe);
}

} // namespace

// The desk meets the names of a toolkit and of other libraries: every declaration of its own stands in its namespace.
TEST(EspacoDeNomes, look_EveryFileOfTheDesk_DeclaresInItsNamespace)
{
    ConfereDeclaracoes("desk", "mesa", 100);
}

// So do the rooms between the desk and its data, which meet those of formats, of the database and of the network.
TEST(EspacoDeNomes, look_EveryFileOfTheTablesTheServicesAndTheNetwork_DeclaresInItsNamespace)
{
    ConfereDeclaracoes("planilhas", "planilhas", 30);
    ConfereDeclaracoes("services", "mesa", 100);
    ConfereDeclaracoes("rede", "rede", 10);
    ConfereDeclaracoes("server", "servidor", 20);
    ConfereDeclaracoes("comando", "comando", 20);
}

// So do the rooms for Windows, and their tests, which meet the names of the system.
TEST(EspacoDeNomes, look_EveryFileOfTheRoomsForWindows_DeclaresInItsNamespace)
{
    ConfereDeclaracoes("windows", "nativo", 10);
}
