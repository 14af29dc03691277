#include "controls/PesquisaPorLetras.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Textos = std::vector<std::string>;

class PesquisaPorLetrasTest : public testing::Test {
  protected:
    // What is current once that was typed, with so much time from key to key.
    std::string Digitado(const std::string &texto, Momento entre = 200ms)
    {
        for (const char letra : texto) {
            m_Agora += entre;
            m_Pesquisa.Digita({&letra, 1}, m_Agora);
        }
        return Atual();
    }
    std::string Atual() const { return m_Atual < 0 ? "" : m_Textos[static_cast<std::size_t>(m_Atual)]; }
    void Comeca(const std::string &atual)
    {
        m_Pesquisa.Encerra();
        m_Atual = static_cast<std::int32_t>(std::ranges::find(m_Textos, atual) - m_Textos.begin());
        m_Idas.clear();
    }

    Textos m_Textos = {"Lombada", "Radar Fotográfico", "Pardal Móvel", "Pardal", "Radar", "Etilômetro"};
    std::int32_t m_Atual = -1;
    Textos m_Idas;
    bool m_Obedece = true;
    Momento m_Agora{5000};
    PesquisaPorLetras m_Pesquisa{{[this] { return static_cast<std::int32_t>(m_Textos.size()); },
                                  [this](std::int32_t item) { return m_Textos[static_cast<std::size_t>(item)]; },
                                  [this] { return m_Atual; }, [this] { return m_Obedece; },
                                  [this](std::int32_t item) {
                                      m_Atual = item;
                                      m_Idas.push_back(Atual());
                                  }}};
};

TEST_F(PesquisaPorLetrasTest, Digita_WithinThePause_FindsTheWholeWord)
{
    EXPECT_EQ(Digitado("pardal"), "Pardal");
    EXPECT_EQ(m_Idas, (Textos{"Pardal Móvel", "Pardal"}));
    EXPECT_EQ(m_Pesquisa.Procurado(), "pardal");
    EXPECT_EQ(Digitado(" m"), "Pardal Móvel");
    EXPECT_EQ(m_Pesquisa.Aviso(), "");
}

TEST_F(PesquisaPorLetrasTest, Digita_BehindAPause_BeginsAnew)
{
    EXPECT_EQ(Digitado("pa"), "Pardal Móvel");
    EXPECT_TRUE(m_Pesquisa.EmCurso(m_Agora + PesquisaPorLetras::Pausa));
    EXPECT_FALSE(m_Pesquisa.EmCurso(m_Agora + PesquisaPorLetras::Pausa + 1ms));
    EXPECT_EQ(Digitado("r", 1001ms), "Radar Fotográfico");
    EXPECT_EQ(m_Pesquisa.Procurado(), "r");
    EXPECT_EQ(Digitado("adar", 1000ms), "Radar");
}

TEST_F(PesquisaPorLetrasTest, Digita_WhenTheClockGoesBack_BeginsAnew)
{
    Digitado("pa");
    EXPECT_TRUE(m_Pesquisa.Digita("r", m_Agora - 1ms));
    EXPECT_EQ(Atual(), "Radar Fotográfico");
}

TEST_F(PesquisaPorLetrasTest, Digita_AccentsCaseAndBlanksBeforeAnItem_DoNotCount)
{
    m_Textos = {"", "  Água Santa", "A\u0301gua Boa", "São Paulo", "Sapiranga", " "};
    for (const auto &[digitado, achado] :
         std::vector<std::pair<std::string, std::string>>{{"AGUA S", "  Água Santa"},
                                                          {"água b", "A\u0301gua Boa"},
                                                          {"a\u0301gua B", "A\u0301gua Boa"},
                                                          {"sao", "São Paulo"},
                                                          {"SÃP", "Sapiranga"}}) {
        Comeca("");
        m_Pesquisa.Digita(digitado, m_Agora += 5s);
        EXPECT_EQ(Atual(), achado) << digitado;
    }
    Comeca("");
    EXPECT_FALSE(m_Pesquisa.Digita(" ", m_Agora)); // begins no word
    EXPECT_EQ(Atual(), "");
    EXPECT_TRUE(m_Pesquisa.Digita("\u0301", m_Agora)); // an accent by itself is none either
    EXPECT_EQ(m_Pesquisa.Procurado(), "");
}

TEST_F(PesquisaPorLetrasTest, Digita_WhatIsChosenAlready_StaysThere)
{
    Comeca("Pardal");
    EXPECT_EQ(Digitado("pardal"), "Pardal");
    EXPECT_EQ(m_Idas, (Textos{"Pardal Móvel", "Pardal"}));
    Comeca("Radar");
    EXPECT_EQ(Digitado("r"), "Radar");
    EXPECT_EQ(m_Idas, Textos{});
}

TEST_F(PesquisaPorLetrasTest, Digita_TheSameLetterAgain_GoesFromItemToItem)
{
    for (const Momento entre : {Momento{100}, Momento{3000}}) {
        Comeca("Lombada");
        EXPECT_EQ(Digitado("r", entre), "Radar Fotográfico");
        EXPECT_EQ(Digitado("r", entre), "Radar");
        EXPECT_EQ(Digitado("R", entre), "Radar Fotográfico");
        EXPECT_EQ(m_Pesquisa.Procurado(), "R");
    }
    EXPECT_EQ(Digitado("adar"), "Radar");
}

TEST_F(PesquisaPorLetrasTest, Digita_TheSameLetterAgain_FindsAnItemThatBeginsSo)
{
    m_Textos = {"Sol", "Ssuma", "Sal"};
    EXPECT_EQ(Digitado("s"), "Sol");
    EXPECT_EQ(Digitado("s"), "Ssuma");
    EXPECT_EQ(m_Pesquisa.Procurado(), "ss");
}

TEST_F(PesquisaPorLetrasTest, Digita_WhatNothingBeginsWith_IsLeftOutAndTold)
{
    EXPECT_EQ(Digitado("pardx"), "Pardal Móvel");
    EXPECT_EQ(m_Pesquisa.Procurado(), "pard");
    EXPECT_EQ(m_Pesquisa.Aviso(), "Nenhum item começa com \"pardx\".");
    EXPECT_EQ(Digitado("al"), "Pardal");
    EXPECT_EQ(m_Pesquisa.Aviso(), "");
    EXPECT_EQ(Digitado("z", 2s), "Pardal");
    EXPECT_EQ(m_Pesquisa.Procurado(), "");
    EXPECT_EQ(m_Pesquisa.Aviso(), "Nenhum item começa com \"z\".");
}

TEST_F(PesquisaPorLetrasTest, Continua_BehindAChoiceThatEndedTheSearch_TakesTheRestOfItsWordAlone)
{
    const auto acabou = [this] { // the choice has led the person away
        Comeca("Lombada");
        Digitado("e");
        m_Pesquisa.Encerra();
    };
    acabou();
    EXPECT_TRUE(m_Pesquisa.Continua("T", m_Agora));
    EXPECT_TRUE(m_Pesquisa.Continua("i", m_Agora + 900ms));
    EXPECT_TRUE(m_Pesquisa.Continua("l", m_Agora + 1800ms));
    EXPECT_TRUE(m_Pesquisa.Continua("ô")); // out of several keys
    EXPECT_FALSE(m_Pesquisa.Continua("1", m_Agora + 1800ms));
    EXPECT_FALSE(m_Pesquisa.Continua("m", m_Agora + 1800ms)); // which belongs to what was typed there since
    EXPECT_EQ(m_Idas, Textos{"Etilômetro"});
    acabou();
    EXPECT_FALSE(m_Pesquisa.Continua("t", m_Agora + PesquisaPorLetras::Pausa + 1ms));
    acabou();
    m_Atual = -1;
    EXPECT_FALSE(m_Pesquisa.Continua("t", m_Agora));
    acabou();
    m_Textos.clear();
    EXPECT_FALSE(m_Pesquisa.Continua("t", m_Agora));
    EXPECT_EQ(m_Pesquisa.Procurado(), "");
}

TEST_F(PesquisaPorLetrasTest, Encurta_TakesLettersBackWithinThePause)
{
    m_Textos = {"Porto Alegre", "Portão", "Passo Fundo"};
    EXPECT_EQ(Digitado("porta"), "Portão");
    EXPECT_TRUE(m_Pesquisa.Encurta(m_Agora));
    EXPECT_EQ(m_Pesquisa.Procurado(), "port");
    EXPECT_EQ(Atual(), "Porto Alegre");
    for (int letra = 0; letra < 4; ++letra) {
        EXPECT_TRUE(m_Pesquisa.Encurta(m_Agora));
    }
    EXPECT_EQ(Atual(), "Porto Alegre");
    EXPECT_FALSE(m_Pesquisa.Encurta(m_Agora));
    Digitado("pas");
    EXPECT_FALSE(m_Pesquisa.Encurta(m_Agora + 2s));
    EXPECT_EQ(Atual(), "Passo Fundo");
}

TEST_F(PesquisaPorLetrasTest, Digita_WhereNothingIsObeyed_DoesNothing)
{
    m_Obedece = false;
    EXPECT_EQ(Digitado("pardal"), "");
    EXPECT_FALSE(m_Pesquisa.Digita("p", m_Agora));
    EXPECT_EQ(m_Pesquisa.Procurado(), "");
}

TEST_F(PesquisaPorLetrasTest, Digita_AmongNoItemsOrInOtherScripts_ComesToNoHarm)
{
    m_Textos = {"שלום", "مرحبا", "😀 sorriso"};
    EXPECT_TRUE(m_Pesquisa.Digita("مر", m_Agora));
    EXPECT_EQ(Atual(), "مرحبا");
    m_Pesquisa.Encerra();
    EXPECT_TRUE(m_Pesquisa.Digita("😀 so", m_Agora));
    EXPECT_EQ(Atual(), "😀 sorriso");
    m_Textos.clear();
    m_Atual = -1;
    EXPECT_FALSE(m_Pesquisa.Digita("pp", m_Agora));
    EXPECT_FALSE(m_Pesquisa.Digita("\xC3\xFF", m_Agora));
}

} // namespace
