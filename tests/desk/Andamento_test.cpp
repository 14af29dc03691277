#include "desk/host/Andamento.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;
using namespace std::chrono_literals;

namespace {

using Textos = std::vector<std::string>;

// What a person would have seen; they give up before the view of that number, from 1.
class TelaFalsa : public ITelaDeAndamento {
  public:
    Textos Vistos;
    int DesisteNa = 0;

    void Abre(const std::string &frase, bool cancelavel) override
    {
        Vistos.push_back((cancelavel ? "abre " : "abre sem cancelar ") + frase);
    }
    bool Mostra(double parte, const std::string &oQue) override
    {
        Vistos.push_back(std::to_string(static_cast<int>(parte * 100)) + "% " + oQue);
        return ++m_Mostras != DesisteNa;
    }
    void Fecha() override { Vistos.emplace_back("fecha"); }

  private:
    int m_Mostras = 0;
};

class AndamentoTeste : public testing::Test {
  protected:
    // A work of so many steps that take so long each; how many it has done.
    int Trabalha(int passos, std::chrono::milliseconds cada, bool cancelavel = true)
    {
        Andamento andamento(tela, "Trabalhando", cancelavel, [this] { return agora; });
        const Segue segue = andamento.ComoSegue();
        int feitos = 0;
        while (feitos < passos && segue(static_cast<double>(feitos) / passos, "passo " + std::to_string(feitos))) {
            ++feitos;
            agora += cada;
        }
        desistiu = andamento.Desistiu();
        return feitos;
    }

    TelaFalsa tela;
    std::chrono::milliseconds agora{777};
    bool desistiu = false;
};

TEST_F(AndamentoTeste, ShortWork_ShowsNothing)
{
    EXPECT_EQ(Trabalha(10, 49ms), 10);
    EXPECT_EQ(tela.Vistos, Textos());
}

TEST_F(AndamentoTeste, LongWork_IsShownAfterHalfASecond_AndGoesWithItsEnd)
{
    EXPECT_EQ(Trabalha(4, 250ms), 4);
    EXPECT_EQ(tela.Vistos, Textos({"abre Trabalhando", "50% passo 2", "75% passo 3", "fecha"}));
}

TEST_F(AndamentoTeste, ManySteps_AreNotAllShown)
{
    EXPECT_EQ(Trabalha(700, 1ms), 700);
    EXPECT_EQ(tela.Vistos.size(), 2U + 4U); // at 500, 550, 600 and 650
}

TEST_F(AndamentoTeste, GivenUp_StopsTheWork_AndShowsNoMore)
{
    tela.DesisteNa = 2;
    EXPECT_EQ(Trabalha(100, 100ms), 6);
    EXPECT_TRUE(desistiu);
    EXPECT_EQ(tela.Vistos, Textos({"abre Trabalhando", "5% passo 5", "6% passo 6", "fecha"}));
}

TEST_F(AndamentoTeste, GivenUp_StaysSo)
{
    tela.DesisteNa = 1;
    Andamento andamento(tela, "Trabalhando", true, [this] { return agora; });
    agora += 500ms;
    EXPECT_FALSE(andamento.Anda(0, ""));
    agora += 500ms;
    EXPECT_FALSE(andamento.Anda(0.5, ""));
    EXPECT_EQ(tela.Vistos.size(), 2U);
}

TEST_F(AndamentoTeste, WhatCannotBeGivenUp_GoesOn)
{
    tela.DesisteNa = 1;
    EXPECT_EQ(Trabalha(8, 100ms, false), 8);
    EXPECT_EQ(tela.Vistos.front(), "abre sem cancelar Trabalhando");
    EXPECT_FALSE(desistiu);
}

TEST_F(AndamentoTeste, PartOutOfBounds_IsShownWithin)
{
    Andamento andamento(tela, "Trabalhando", true, [this] { return agora; });
    agora += 1s;
    andamento.Anda(-3, "a");
    agora += 1s;
    andamento.Anda(7, "b");
    EXPECT_EQ(tela.Vistos, Textos({"abre Trabalhando", "0% a", "100% b"}));
}

TEST_F(AndamentoTeste, Fault_ClosesIt)
{
    const auto trabalha = [this] {
        Andamento andamento(tela, "Trabalhando", true, [this] { return agora; });
        agora += 1s;
        andamento.Anda(0, "");
        throw 1;
    };
    EXPECT_ANY_THROW(trabalha());
    EXPECT_EQ(tela.Vistos.back(), "fecha");
}

} // namespace
