#include "desk/windows/ConexaoQt.h"

#include "host/Conversoes.h"
#include "tests/desk/ServidorDeTeste.h"
#include "tests/desk/Teclado.h"
#include "tests/rede/Mudo.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

using namespace mesa;

namespace {

class ConexaoQtTeste : public testing::Test {
  protected:
    // Runs in the windows while the keys are pressed.
    static void NaFrente(const std::function<void()> &faz, const std::function<void(Teclado &)> &jornada)
    {
        bool feito = false;
        QMetaObject::invokeMethod(
            qApp,
            [&] {
                faz();
                feito = true;
            },
            Qt::QueuedConnection);
        EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                      jornada(t);
                      t.Espera("it is done", [&] { return feito; });
                  }),
                  "");
    }

    QTemporaryDir pasta;
    Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
    ConexaoQt conexao{preferencias};
};

TEST_F(ConexaoQtTeste, WhatWasAskedBefore_ByKeys_IsTheSameOrANewOneOrNeither)
{
    const auto pergunta = [&](const std::function<void(Teclado &)> &teclas) {
        std::optional<bool> resposta;
        NaFrente([&] { resposta = conexao.EhOMesmo("Isto mesmo já foi pedido."); },
                 [&](Teclado &t) {
                     t.EsperaJanela("JaPedido").EsperaFoco("voltar");
                     t.EsperaTexto("frase", "Isto mesmo já foi pedido.");
                     teclas(t);
                 });
        return resposta;
    };
    EXPECT_EQ(pergunta([](Teclado &t) { t.Alt('M'); }), true);
    EXPECT_EQ(pergunta([](Teclado &t) { t.Alt('N'); }), false);
    EXPECT_EQ(pergunta([](Teclado &t) { t.Alt('V'); }), std::nullopt);
    EXPECT_EQ(pergunta([](Teclado &t) { t.Tecla(Qt::Key_Return); }), std::nullopt);
    EXPECT_EQ(pergunta([](Teclado &t) { t.Tecla(Qt::Key_Escape); }), std::nullopt);
}

// One that takes the connection and then says nothing.
TEST_F(ConexaoQtTeste, ServerThatSaysNothing_IsGivenUpByKeysWhileItIsLookedFor)
{
    const Mudo mudo;
    const rede::Endereco onde{"127.0.0.1", mudo.Porta()};
    const ConectaServidor rede = FazRede(conexao);
    std::string frase;
    const auto desiste = [](Teclado &t) { t.EsperaJanela("Andamento").Alt('C'); };
    const auto tenta = [&](const std::function<void()> &faz) {
        frase.clear();
        NaFrente(
            [&] {
                try {
                    faz();
                } catch (...) {
                    frase = FalhaCorrente().Descricao;
                }
            },
            desiste);
    };
    tenta([&] { rede.Digital(onde); });
    EXPECT_EQ(frase, "Não se chegou ao servidor " + onde.Texto() + ": a espera foi cancelada.");
    tenta([&] { rede.Conecta(onde, {"AA", ""}); });
    EXPECT_EQ(frase, "A espera pelo servidor " + onde.Texto() + " foi cancelada.");
}

// The servers that the desk connects to tell it the day; a registry of this computer goes by this computer's.
TEST_F(ConexaoQtTeste, WorkAtAServer_GoesByTheServersClock)
{
    RegistroDeTeste registro;
    registro.Cadastra("ana");
    registro.Relogio = DataDe(3, 2, 2031, 9, 0, 0);
    ServidorDeTeste servidor(registro);
    const LugarDoTrabalho la{servidor.Onde(), servidor.Digital(), ""};
    const auto daqui = [] { return DataDe(20, 11, 2026, 10, 0, 0); };
    const auto agora = conexao.RelogioDe(la, daqui);
    Ref<SessaoServico> sessao;
    NaFrente(
        [&] {
            std::string recusa;
            std::int32_t espera = 0;
            sessao = FazRede(conexao)
                         .Conecta(servidor.Onde(), {servidor.Digital(), ""})
                         ->Entra("ana", "senha de ana", "aqui", recusa, espera);
            ASSERT_TRUE(sessao) << recusa;
            EXPECT_FALSE(sessao->DeveTrocarSenha());
        },
        [](Teclado &) {});
    EXPECT_EQ(Format(agora(), "dd/mm/yyyy"), "03/02/2031");
    EXPECT_EQ(Format(conexao.RelogioDe(LugarDoTrabalho{}, daqui)(), "dd/mm/yyyy"), "20/11/2026");
}

} // namespace
