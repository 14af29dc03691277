#include "host/Texto.h"
#include "services/Recusa.h"
#include "services/TabelaDeTexto.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

using namespace mesa;

namespace {

using Linhas = std::vector<std::vector<std::string>>;

Linhas Celulas(const std::string &conteudo)
{
    Linhas linhas;
    for (const LinhaDeTexto &linha : LeTabelaDeTexto(conteudo)) {
        linhas.push_back(linha.Celulas);
    }
    return linhas;
}

std::string EntreAspas(const std::string &celula)
{
    return "\"" + Substitui(celula, "\"", "\"\"") + "\"";
}

TEST(TabelaDeTextoTeste, LeTabelaDeTexto_OfCellsInQuotationMarks_ReadsThemAsTheyWere)
{
    constexpr std::array Pedacos = {"a", "ç", "\"", ";", ",", "\t", "\n", "\r\n", " ", "4314902", ""};
    std::mt19937 sorteio(20261122);
    const auto ate = [&](std::size_t n) { return sorteio() % n; };
    for (int vez = 0; vez < 5000; ++vez) {
        const char separador = ";,\t"[ate(3)];
        Linhas escritas;
        std::string conteudo = ate(2) == 0 ? "\xEF\xBB\xBF" : "";
        // The first row, by which the separator is known, has none of the others.
        for (std::size_t linha = 0, linhas = 1 + ate(3); linha < linhas; ++linha) {
            std::vector<std::string> celulas = {linha == 0 ? "x" : "y"};
            for (std::size_t coluna = 1 + ate(3); coluna > 0; --coluna) {
                std::string celula;
                for (std::size_t pedaco = linha == 0 ? 0 : ate(5); pedaco > 0; --pedaco) {
                    celula += Pedacos[ate(Pedacos.size())];
                }
                celulas.push_back(celula);
            }
            for (std::size_t coluna = 0; coluna < celulas.size(); ++coluna) {
                conteudo += (coluna > 0 ? std::string(1, separador) : "") + EntreAspas(celulas[coluna]);
            }
            conteudo += ate(2) == 0 ? "\n" : "\r\n";
            escritas.push_back(std::move(celulas));
        }
        ASSERT_EQ(Celulas(conteudo), escritas) << conteudo;
    }
}

TEST(TabelaDeTextoTeste, LeTabelaDeTexto_OfAnyBytes_ReadsOrRefuses)
{
    constexpr std::array Pedacos = {"a", "\xC3", "\xA7", "\"", ";", ",", "\t", "\n", "\r", "\xEF\xBB\xBF", "\xFF\xFE"};
    std::mt19937 sorteio(20261122);
    int lidas = 0;
    int recusadas = 0;
    for (int vez = 0; vez < 50000; ++vez) {
        std::string conteudo;
        for (std::size_t pedaco = sorteio() % 12; pedaco > 0; --pedaco) {
            conteudo += Pedacos[sorteio() % Pedacos.size()];
        }
        try {
            for (const LinhaDeTexto &linha : LeTabelaDeTexto(conteudo)) {
                ASSERT_FALSE(linha.Celulas.empty());
                ASSERT_GE(linha.Numero, 1);
                ++lidas;
            }
        } catch (const Recusa &motivo) {
            ASSERT_NE(std::string(motivo.what()), "");
            ++recusadas;
        }
    }
    EXPECT_GT(lidas, 1000);
    EXPECT_GT(recusadas, 1000);
}

TEST(TabelaDeTextoTeste, LeTabelaDeTexto_OfRows_NumbersThemByTheLinesOfTheFile)
{
    std::vector<std::int32_t> numeros;
    for (const LinhaDeTexto &linha : LeTabelaDeTexto("a;b\n\n\"c\nd\";e\r\nf;g\rh;i")) {
        numeros.push_back(linha.Numero);
    }
    EXPECT_EQ(numeros, (std::vector<std::int32_t>{1, 3, 5, 6}));
}

} // namespace
