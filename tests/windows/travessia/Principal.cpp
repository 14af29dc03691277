#include "cmake/gtest/Fim.h"
#include "tests/support/RegistroChamadas.h"
#include "tests/support/Varredura.h"
#include "tests/windows/travessia/BibliotecaDeRegistros.h"
#include "tests/windows/travessia/Cerca.h"
#include "tests/windows/travessia/Excecoes.h"
#include "tests/windows/travessia/Ligacao.h"

#include <gtest/gtest.h>

#include <ole2.h>

#include <iostream>
#include <optional>
#include <string>
#include <string_view>

// What every test program of the rooms starts with here.
//
//   --biblioteca               with the host's library of records registered
//   --falha=NUMBER[:LENGTH]    what the calls of a sweep fail with: the number, and the length of the description
//   --excecoes                 tells the tests that do not cross, and ends

namespace nativo {
namespace {

// Calls of host objects that did not come across the boundary: a test's own.
Contagem Diretas;

// What is no object of the foreign host's in the scripted one: its platform, and the controls of the component.
bool DoComponente(std::string_view nome)
{
    return nome.starts_with("Plataforma.") || nome == "Host.Controles" || nome == "Controles.Cria" ||
           nome.ends_with(".ShowOpen") || nome.ends_with(".Avisa") ||
           (nome.ends_with(".CodCliente") && !nome.starts_with("Orgao."));
}

void AoChamar(std::string_view nome)
{
    if (Cerca::Atravessando() || DoComponente(nome)) {
        return;
    }
    const testing::TestInfo *teste = testing::UnitTest::GetInstance()->current_test_info();
    const std::string conjunto = teste == nullptr ? "" : teste->test_suite_name();
    Diretas.Soma(conjunto + ": " + std::string(nome));
    if (!Excecoes::ChamaPorSi(conjunto, nome)) {
        ADD_FAILURE() << "not across the boundary: " << nome;
    }
}

void ContaAsChamadas()
{
    std::int64_t chamadas = 0;
    std::int64_t membros = 0;
    Cerca::Chamadas().Cada([&](std::string_view, std::int64_t vezes) {
        ++membros;
        chamadas += vezes;
    });
    std::cout << "crossed: " << chamadas << " calls of " << membros << " members\n";
    Diretas.Cada([](std::string_view nome, std::int64_t vezes) {
        std::cout << "not crossed: " << nome << ' ' << vezes << '\n';
    });
}

// A text of so many characters, none of which is the same in every code page.
std::string TextoDe(std::size_t tamanho)
{
    std::string texto;
    for (std::size_t i = 0; i < tamanho; ++i) {
        texto += "ç";
    }
    return texto;
}

Varredura::Defeito DefeitoDe(const std::string &texto)
{
    const std::size_t tamanho = texto.find(':');
    return {std::stoi(texto), tamanho == std::string::npos ? Varredura::Falhando.Descricao
                                                           : TextoDe(std::stoul(texto.substr(tamanho + 1)))};
}

int Roda(int quantos, char **argumentos)
{
    std::optional<BibliotecaDeRegistros> biblioteca;
    constexpr std::string_view falha = "--falha=";
    for (int i = 1; i < quantos; ++i) {
        const std::string argumento = argumentos[i];
        if (argumento == "--excecoes") {
            Excecoes::Conta(std::cout);
            return 0;
        }
        if (argumento == "--biblioteca") {
            biblioteca.emplace();
        } else if (argumento.starts_with(falha)) {
            Varredura::Falhando = DefeitoDe(argumento.substr(falha.size()));
        } else {
            std::cerr << "unknown: " << argumento << '\n';
            return 2;
        }
    }
    if (biblioteca && !biblioteca->Registrada()) {
        std::cerr << "the library of records cannot be registered\n";
        return 2;
    }
    LigaTravessia();
    RegistroChamadas::AoChamar = &AoChamar;
    const int resultado = RUN_ALL_TESTS();
    if (!GTEST_FLAG_GET(list_tests)) {
        ContaAsChamadas();
    }
    return resultado;
}

} // namespace
} // namespace nativo

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(filter, nativo::Excecoes::SemElas(GTEST_FLAG_GET(filter)));
    OleInitialize(nullptr);
    const int resultado = nativo::Roda(argc, argv);
    OleUninitialize();
    std::cout.flush();
    TerminaCom(resultado);
}
