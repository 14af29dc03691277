#include "bench/Medida.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string Titulo = "figure                                            of      ratio  limit   growth  limit\n";

// A table whose clock moves only when the work says so.
class TabelaComRelogio : public testing::Test {
  protected:
    // Work that takes `segundos` a unit at first and `desvio` more at each run.
    Preparo Gasta(double segundos, double desvio = 0)
    {
        return [this, segundos, desvio](std::size_t trabalho) {
            m_Agora += 1000; // preparation does not count
            return [this, segundos, desvio, trabalho] {
                m_Agora += static_cast<double>(trabalho) * (segundos + desvio * m_Vez++);
                m_Ordem.push_back(trabalho);
            };
        };
    }

    double m_Agora = 0;
    int m_Vez = 0;
    std::vector<std::size_t> m_Ordem;
    std::ostringstream m_Texto;
    Tabela m_Tabela{m_Texto, [this] { return m_Agora; }};
};

} // namespace

TEST(Mediana, ask_OddCount_IsTheMiddleOne)
{
    EXPECT_EQ(Mediana({9, 1, 5}), 5);
    EXPECT_EQ(Mediana({7}), 7);
}

TEST(Mediana, ask_EvenCount_IsTheMeanOfTheMiddleTwo)
{
    EXPECT_EQ(Mediana({100, 2, 1, 4}), 3);
}

TEST_F(TabelaComRelogio, time_WithinLimits_IsOk)
{
    m_Tabela.MedeTempo({"listas", 5, Gasta(3), Gasta(2), 1.5, 1});

    EXPECT_EQ(m_Texto.str(), Titulo +
                                 "listas                                            time     1.50   1.50     1.00  "
                                 " 1.00  ok\n");
    EXPECT_EQ(m_Tabela.Saida(), 0);
}

TEST_F(TabelaComRelogio, time_RatioBeyondLimit_Fails)
{
    m_Tabela.MedeTempo({"listas", 5, Gasta(3), Gasta(2), 1.49, 1});

    EXPECT_EQ(m_Texto.str(), Titulo +
                                 "listas                                            time     1.50   1.49     1.00  "
                                 " 1.00  FAILED\n");
    EXPECT_EQ(m_Tabela.Saida(), 1);
}

TEST_F(TabelaComRelogio, time_QuadraticWork_FailsByItsGrowth)
{
    const Preparo quadrado = [this](std::size_t trabalho) {
        return [this, trabalho] { m_Agora += static_cast<double>(trabalho * trabalho); };
    };
    m_Tabela.MedeTempo({"listas", 5, quadrado, Gasta(100), 1, 1.5});

    EXPECT_EQ(m_Texto.str(), Titulo +
                                 "listas                                            time     0.50   1.00    10.00  "
                                 " 1.50  FAILED\n");
    EXPECT_EQ(m_Tabela.Saida(), 1);
}

TEST_F(TabelaComRelogio, time_LargeWorkSlowsBothAlike_HasNotGrown)
{
    const auto lentoQuandoGrande = [this](double segundos) {
        return Preparo([this, segundos](std::size_t trabalho) {
            return [this, segundos, trabalho] {
                m_Agora += static_cast<double>(trabalho) * segundos * (trabalho > 5 ? 1.5 : 1);
            };
        });
    };
    m_Tabela.MedeTempo({"listas", 5, lentoQuandoGrande(3), lentoQuandoGrande(2), 1.5, 1});

    EXPECT_EQ(m_Tabela.Saida(), 0) << m_Texto.str();
}

TEST_F(TabelaComRelogio, time_TooShortForTheClock_FailsAndSaysSo)
{
    m_Tabela.MedeTempo({"listas", 1, Gasta(19e-6), Gasta(1), 1, 2});
    EXPECT_NE(m_Texto.str().find("FAILED: too little work to measure"), std::string::npos);
    EXPECT_EQ(m_Tabela.Saida(), 1);
}

TEST_F(TabelaComRelogio, time_BaselineTooShortForTheClock_FailsAndSaysSo)
{
    m_Tabela.MedeTempo({"listas", 1, Gasta(21e-6), Gasta(19e-6), 2, 2});
    EXPECT_NE(m_Texto.str().find("FAILED: too little work to measure"), std::string::npos);
    EXPECT_EQ(m_Tabela.Saida(), 1);
}

TEST_F(TabelaComRelogio, time_NothingTakesTime_IsNeverOk)
{
    m_Tabela.MedeTempo({"listas", 1, Gasta(0), Gasta(0), 1000, 1000});
    EXPECT_EQ(m_Texto.str().find("  ok"), std::string::npos);
    EXPECT_EQ(m_Tabela.Saida(), 1);
}

TEST_F(TabelaComRelogio, time_SubjectAndBaseline_Alternate)
{
    m_Tabela.MedeTempo({"listas", 5, Gasta(3), Gasta(2), 2, 1});

    ASSERT_EQ(m_Ordem.size(), 44U);
    for (std::size_t vez = 0; vez < 44; vez += 4) {
        EXPECT_EQ(std::vector(m_Ordem.begin() + vez, m_Ordem.begin() + vez + 4),
                  (std::vector<std::size_t>{5, 5, 50, 50}));
    }
}

TEST_F(TabelaComRelogio, time_MachineGettingFaster_LeavesTheRatio)
{
    // Twice as fast in the end: all runs of the subject before all of the baseline would make a ratio of 1.40.
    m_Tabela.MedeTempo({"listas", 5, Gasta(88, -1), Gasta(88, -1), 1.03, 1.03});

    EXPECT_EQ(m_Tabela.Saida(), 0) << m_Texto.str();
}

TEST_F(TabelaComRelogio, exit_OneOfSeveralFails_IsFailure)
{
    m_Tabela.MedeTempo({"a", 5, Gasta(3), Gasta(2), 1, 1});
    m_Tabela.MedeTempo({"b", 5, Gasta(2), Gasta(2), 1, 1});

    EXPECT_EQ(m_Tabela.Saida(), 1);
    EXPECT_EQ(m_Texto.str().find(Titulo), 0U);
    EXPECT_EQ(m_Texto.str().find(Titulo, 1), std::string::npos);
}

TEST_F(TabelaComRelogio, exit_NoFigure_IsFailure)
{
    EXPECT_EQ(m_Tabela.Saida(), 1);
    EXPECT_EQ(m_Texto.str(), "");
}

TEST_F(TabelaComRelogio, memory_TwiceTheBaseline_RatioIsTwo)
{
    const auto ocupa = [](std::size_t bytes) {
        return Preparo(
            [bytes](std::size_t trabalho) { return [bytes, trabalho] { Usa(std::vector<char>(bytes * trabalho)); }; });
    };
    m_Tabela.MedeMemoria({"listas", 10, ocupa(200), ocupa(100), 2, 1});

    EXPECT_EQ(m_Texto.str(), Titulo +
                                 "listas                                            memory   2.00   2.00     1.00  "
                                 " 1.00  ok\n");
    EXPECT_EQ(m_Tabela.Saida(), 0);
}

TEST_F(TabelaComRelogio, memory_HeldByThePreparation_DoesNotCount)
{
    const Preparo preparado = [](std::size_t trabalho) {
        return [guardado = std::vector<char>(1000 * trabalho), trabalho] {
            Usa(guardado);
            Usa(std::vector<char>(100 * trabalho));
        };
    };
    m_Tabela.MedeMemoria({"listas", 10, preparado, preparado, 1, 1});

    EXPECT_EQ(m_Tabela.Saida(), 0) << m_Texto.str();
}

TEST_F(TabelaComRelogio, memory_NothingHeld_IsNeverOk)
{
    const Preparo nada = [](std::size_t) { return [] {}; };
    m_Tabela.MedeMemoria({"listas", 10, nada, nada, 1000, 1000});

    EXPECT_EQ(m_Texto.str().find("  ok"), std::string::npos);
    EXPECT_EQ(m_Tabela.Saida(), 1);
}
