#include "planilhas/NumerosComPonto.h"

#include "planilhas/Pacote.h"
#include "tests/planilhas/Arquivos.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

using namespace planilhas;

namespace {

// The program's language is one with a decimal comma, one of the machine's or one that is compiled for this.
class NumerosComPontoTeste : public testing::Test {
  protected:
    void SetUp() override
    {
        if (!TemVirgula() && !CompilaLocal()) {
            GTEST_SKIP() << "no locale with a decimal comma is installed, and localedef cannot compile one";
        }
    }

    void TearDown() override
    {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }

    static bool TemVirgula()
    {
        for (const char *nome : {"pt_BR.UTF-8", "de_DE.UTF-8"}) {
            if (std::setlocale(LC_ALL, nome) != nullptr) {
                return std::string_view(std::localeconv()->decimal_point) == ",";
            }
        }
        return false;
    }

    // Once for all tests.
    static bool CompilaLocal()
    {
        static const Pasta locais;
        static const int fim = std::system(
            ("localedef -i pt_BR -f UTF-8 '" + (locais / "pt_BR.UTF-8").string() + "' >/dev/null 2>&1").c_str());
        setenv("LOCPATH", (locais / ".").c_str(), 1);
        return fim == 0 && TemVirgula();
    }

    static std::string Parte(const std::filesystem::path &arquivo, const std::string &parte)
    {
        Pacote pacote(arquivo, 1000000);
        const auto aberta = pacote.Abre(parte);
        std::string tudo;
        std::array<char, 4096> octetos{};
        for (std::size_t lidos = aberta->Le(octetos.data(), octetos.size()); lidos > 0;
             lidos = aberta->Le(octetos.data(), octetos.size())) {
            tudo.append(octetos.data(), lidos);
        }
        return tudo;
    }

    std::filesystem::path Grava(const std::string &nome, Formato formato) const
    {
        const auto escritor = FazEscritor(m_Pasta / nome, formato);
        escritor->Folha("a");
        escritor->Cabecalho({"Velocidade medida"});
        escritor->Escreve({CelulaDeNumero("5.3"), CelulaDeNumero("-1234.56"), CelulaDeNumero("0.30000000000000004"),
                           CelulaDeDataHora({31, 12, 2024, 10, 30, 15}), CelulaDeHora(8, 30, 15)});
        escritor->Conclui();
        return m_Pasta / nome;
    }

    Pasta m_Pasta;
};

std::string ComUmaCasa(double numero)
{
    std::array<char, 16> texto{};
    std::snprintf(texto.data(), texto.size(), "%.1f", numero);
    return texto.data();
}

} // namespace

TEST_F(NumerosComPontoTeste, Scope_WhereNumbersHaveAComma_HasThePointAndGivesTheCommaBack)
{
    EXPECT_EQ(ComUmaCasa(1.5), "1,5");
    {
        const NumerosComPonto comPonto;
        EXPECT_EQ(ComUmaCasa(1.5), "1.5");
    }
    EXPECT_EQ(ComUmaCasa(1.5), "1,5");
}

TEST_F(NumerosComPontoTeste, write_WhereNumbersHaveAComma_IsTheSameInEveryFormat)
{
    for (const Formato formato : {Formato::Csv, Formato::Xlsx, Formato::Ods}) {
        const auto comVirgula = Grava("virgula", formato);
        EXPECT_EQ(ComUmaCasa(1.5), "1,5");
        const std::string lidaComVirgula = Linhas(comVirgula).at(1);
        const std::string local = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        const auto comPonto = Grava("ponto", formato);
        EXPECT_EQ(lidaComVirgula, Linhas(comPonto).at(1));
        if (formato == Formato::Xlsx) {
            for (const char *parte : {"xl/worksheets/sheet1.xml", "xl/styles.xml", "xl/workbook.xml"}) {
                EXPECT_EQ(Parte(comVirgula, parte), Parte(comPonto, parte)) << parte;
            }
        }
        ASSERT_NE(std::setlocale(LC_ALL, local.c_str()), nullptr);
    }
}
