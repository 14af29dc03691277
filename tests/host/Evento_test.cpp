#include "host/Evento.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Ordem = std::vector<std::string>;

TEST(Evento, dispara_WithSeveralHandlers_CallsThemInTheOrderOfSubscription)
{
    Evento<int> evento;
    Ordem ordem;
    Conexao a = evento.liga([&](int n) { ordem.push_back("a" + std::to_string(n)); });
    Conexao b = evento.liga([&](int n) { ordem.push_back("b" + std::to_string(n)); });
    evento.dispara(1);
    evento.dispara(2);
    EXPECT_EQ(ordem, (Ordem{"a1", "b1", "a2", "b2"}));
}

TEST(Evento, dispara_WithoutHandlers_DoesNothing)
{
    Evento<bool &> evento;
    bool cancela = false;
    evento.dispara(cancela);
    EXPECT_FALSE(cancela);
}

TEST(Evento, dispara_WithAReference_BringsBackWhatAHandlerWrote)
{
    Evento<int &> evento;
    Conexao a = evento.liga([](int &linha) { linha = 0; });
    Conexao b = evento.liga([](int &linha) { linha += 5; });
    int linha = 3;
    evento.dispara(linha);
    EXPECT_EQ(linha, 5);
}

TEST(Evento, Conexao_Dropped_EndsTheSubscription)
{
    Evento<> evento;
    int vezes = 0;
    {
        Conexao conexao = evento.liga([&] { ++vezes; });
        EXPECT_TRUE(conexao.ligada());
        evento.dispara();
    }
    evento.dispara();
    EXPECT_EQ(vezes, 1);
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

TEST(Evento, Conexao_Assigned_EndsTheFormerSubscription)
{
    Evento<> evento;
    Ordem ordem;
    Conexao conexao = evento.liga([&] { ordem.push_back("first"); });
    conexao = evento.liga([&] { ordem.push_back("second"); });
    evento.dispara();
    EXPECT_EQ(ordem, Ordem{"second"});
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
