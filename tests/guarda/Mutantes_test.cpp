#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

// A room of one procedure, whose tests do not look at the count of its calls.
constexpr const char *Fonte = R"(int g_Chamadas = 0;

int Dobra(int n)
{
    switch (n) {
    case 7:
        return -1;
    }
    unsigned int vezes = 1;
    if (n <= 100)
        vezes = 2;
    else
        n = 100;
    ++g_Chamadas;
    return n * static_cast<int>(vezes);
}
)";

constexpr const char *Teste = R"(#include <gtest/gtest.h>
int Dobra(int n);
TEST(Dobra, ask_Three_IsSix) { EXPECT_EQ(Dobra(3), 6); }
TEST(Dobra, ask_Seven_IsRefused) { EXPECT_EQ(Dobra(7), -1); }
TEST(Dobra, ask_Many_IsHundred) { EXPECT_EQ(Dobra(101), 100); }
)";

constexpr const char *Construcao = R"(rule cxx
  command = g++ -std=c++20 -c $in -o $out
rule junta
  command = ar rcs $out $in
rule liga
  command = g++ -o $out $in -lgtest -lgtest_main
build Dobra.o: cxx ../sala/Dobra.cpp
build Dobra_test.o: cxx ../Dobra_test.cpp
build libsala.a: junta Dobra.o
build teste_sala: liga Dobra_test.o libsala.a
)";

constexpr const char *SemEfeito = "sala/Dobra.cpp\tg_Chamadas\tconstant: 0\tint g_Chamadas = 0;";
constexpr const char *Indiferente = "sala/Dobra.cpp\tDobra\tswap with: ++g_Chamadas;\tif (n <= 100)";
constexpr const char *TodasAsTrocas = "sala/Dobra.cpp\tDobra\tswap\t*";
constexpr const char *NinguemOlha = "sala/Dobra.cpp\tDobra\tdelete\t++g_Chamadas;";
constexpr const char *Notado = "sala/Dobra.cpp\tDobra\tconstant: 2\tvezes = 2;";
constexpr const char *Sumiu = "sala/Dobra.cpp\tDobra\tconstant: 3\treturn n * 3;";

} // namespace

TEST(Mutantes, run_SampleRoom_EachSurvivorNeedsItsReasonAndEachReasonItsSurvivor)
{
    const PastaTemporaria pasta;
    pasta.Escreve("sala/Dobra.cpp", Fonte);
    pasta.Escreve("Dobra_test.cpp", Teste);
    pasta.Escreve("build/build.ninja", Construcao);
    const auto roda = [&](const std::string &motivos) {
        pasta.Escreve("motivos.tsv", "# file, procedure, change, statement, reason\n" + motivos);
        return Executa("roda=$PWD/tests/mutantes/roda.py; cd '" + pasta.Caminho.string() +
                       "' && { ninja -C build >/dev/null; python3 -B $roda build motivos.tsv 0 sala; }");
    };
    const std::string titulo = "room          mutants   tried  killed       %  reason  survived\n";
    const auto motivo = [](const char *chave) { return std::string(chave) + "\tnobody asks for it\n"; };

    const Execucao certa = roda(motivo(SemEfeito) + motivo(TodasAsTrocas) + motivo(NinguemOlha));
    EXPECT_TRUE(certa.Passou);
    EXPECT_EQ(certa.Saida, titulo + "sala               12      12       9   75.00       3         0\n");

    const Execucao errada = roda(motivo(SemEfeito) + motivo(Indiferente) + motivo(Notado) + motivo(Sumiu));
    EXPECT_FALSE(errada.Passou);
    EXPECT_EQ(errada.Saida, titulo + "sala               12      12       9   75.00       2         1\n" +
                                "\nNo test notices:\n  line 14: " + NinguemOlha +
                                "\n\n"
                                "Reasons of no change, or of one that a test notices:\n  " +
                                Notado + "\n  " + Sumiu + "\n");
}
