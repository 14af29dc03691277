#include "host/Evento.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Ordem = std::vector<std::string>;

TEST(Evento, dispara_WithSeveralHandlers_CallsThemInTheOrderOfSubscriptionAndBringsBackWhatTheyWrote)
{
    Evento<int &> evento;
    int linha = 3;
    evento.dispara(linha); // there is none
    EXPECT_EQ(linha, 3);
    Conexao a = evento.liga([](int &valor) { valor = 0; });
    Conexao b = evento.liga([](int &valor) { valor += 5; });
    for (int vez = 0; vez < 2; ++vez) {
        evento.dispara(linha);
        EXPECT_EQ(linha, 5);
    }
}

TEST(Evento, Conexao_DroppedOrAssigned_EndsTheSubscription)
{
    Evento<> evento;
    Ordem ordem;
    {
        Conexao conexao = evento.liga([&] { ordem.push_back("first"); });
        EXPECT_TRUE(conexao.ligada());
        evento.dispara();
        conexao = evento.liga([&] { ordem.push_back("second"); });
        evento.dispara();
    }
    evento.dispara();
    EXPECT_EQ(ordem, (Ordem{"first", "second"}));
}

TEST(Evento, Conexao_desliga_EndsItAndLetsGoWhatTheHandlerHeld)
{
    Evento<> evento;
    auto retido = std::make_shared<int>(0);
    Conexao conexao = evento.liga([retido] { ++*retido; });
    EXPECT_EQ(retido.use_count(), 2);
    conexao.desliga();
    conexao.desliga();
    EXPECT_FALSE(conexao.ligada());
    evento.dispara();
    EXPECT_EQ(*retido, 0);
    EXPECT_EQ(retido.use_count(), 1);
}

TEST(Evento, dispara_WhileAHandlerEndsAnother_DoesNotCallTheEndedOne)
{
    Evento<> evento;
    int vezes = 0;
    Conexao segunda;
    Conexao primeira = evento.liga([&] { segunda.desliga(); });
    segunda = evento.liga([&] { ++vezes; });
    evento.dispara();
    EXPECT_EQ(vezes, 0);
}

TEST(Evento, dispara_WhileAHandlerEndsItself_RunsItToItsEnd)
{
    Evento<> evento;
    auto vivo = std::make_shared<int>(0);
    std::weak_ptr<int> vigia = vivo;
    Conexao conexao;
    conexao = evento.liga([&conexao, vivo] {
        conexao.desliga();
        ++*vivo;
    });
    vivo.reset();
    evento.dispara();
    EXPECT_TRUE(vigia.expired());
}

TEST(Evento, dispara_WhileAHandlerEndsTheEvent_CallsTheOthersAllTheSame)
{
    auto evento = std::make_unique<Evento<>>();
    int vezes = 0;
    Conexao primeira = evento->liga([&] { evento.reset(); });
    Conexao segunda = evento->liga([&] { ++vezes; });
    evento->dispara();
    EXPECT_EQ(vezes, 1);
    EXPECT_EQ(evento, nullptr);
}

TEST(Evento, dispara_WhileAHandlerSubscribes_DoesNotCallTheNewOneYet)
{
    Evento<> evento;
    int vezes = 0;
    std::vector<Conexao> novas;
    Conexao conexao = evento.liga([&] { novas.push_back(evento.liga([&] { ++vezes; })); });
    evento.dispara();
    EXPECT_EQ(vezes, 0);
    evento.dispara();
    EXPECT_EQ(vezes, 1);
}

TEST(Evento, dispara_WithAFaultInAHandler_RaisesItAndLeavesOutTheHandlersBehind)
{
    Evento<> evento;
    int vezes = 0;
    Conexao primeira = evento.liga([] { throw Falha(91); });
    Conexao segunda = evento.liga([&] { ++vezes; });
    EXPECT_EQ(FalhaLancada([&] { evento.dispara(); }).Numero, 91);
    EXPECT_EQ(vezes, 0);
    primeira.desliga();
    evento.dispara();
    EXPECT_EQ(vezes, 1);
}

TEST(Evento, Conexao_ThatOutlivesTheEvent_MayBeDropped)
{
    Conexao conexao;
    {
        Evento<> evento;
        conexao = evento.liga([] {});
    }
    conexao.desliga();
    EXPECT_FALSE(conexao.ligada());
}

} // namespace
