#include "tests/support/Varredura.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

TEST(Varredura, Roda_OfAJourneyOfThreeCalls_FailsEachOnceAndRunsItAgain)
{
    Textos falhas;
    Textos jornadas;
    Varredura varredura;
    varredura.Prepara = [&](HostRoteirizado &host) { host.RespondeSempre("Confirma?", true); };
    varredura.Jornada = [&](HostRoteirizado &host) {
        jornadas.emplace_back("starts");
        host.objSCA->Logado();
        host.Tela->PerguntaSimNao("Confirma?", "Atenção", false);
        host.objMTM->ClienteLogado();
        jornadas.emplace_back("ends");
    };
    varredura.Confere = [&](HostRoteirizado &host, const std::optional<Falha> &falha) {
        ASSERT_TRUE(falha);
        EXPECT_EQ(falha->Fonte, host.ChamadaQueFalhou());
        falhas.push_back(falha->Fonte);
    };
    EXPECT_EQ(varredura.Roda(), 3);
    EXPECT_EQ(falhas, (Textos{"objSCA.Logado", "Plataforma.PerguntaSimNao", "objMTM.ClienteLogado"}));
    EXPECT_EQ(jornadas.size(), 3 * 3 + 2U); // three that break off and run again whole, and the undisturbed one
}

TEST(Varredura, Roda_OfOneCallByName_FailsItsOccurrences)
{
    Varredura varredura;
    varredura.Jornada = [](HostRoteirizado &host) {
        host.Tela->Agora();
        host.objSCA->Logado();
        host.Tela->Agora();
    };
    varredura.Chamada = "Plataforma.Agora";
    EXPECT_EQ(varredura.Roda(), 2);
}

TEST(Varredura, Roda_OfAJourneyWhoseErrorIsShown_IsNoProblem)
{
    Varredura varredura;
    varredura.Jornada = [](HostRoteirizado &host) {
        try {
            host.objSCA->Logado();
        } catch (const Falha &falha) {
            host.CriaMensagem()->ExibeErro("x", falha.Numero, falha.Descricao, falha.Fonte, "");
        }
    };
    varredura.Confere = [](HostRoteirizado &host, const std::optional<Falha> &falha) {
        EXPECT_FALSE(falha);
        EXPECT_EQ(host.Erros().size(), 1U);
    };
    EXPECT_EQ(varredura.Roda(), 1);
}

TEST(Varredura, Roda_OfAJourneyThatDoesNotRecover_FailsTheTest)
{
    static bool quebrada;
    quebrada = false;
    EXPECT_NONFATAL_FAILURE(
        {
            Varredura varredura;
            varredura.Jornada = [](HostRoteirizado &host) {
                if (quebrada) {
                    quebrada = false; // so that the undisturbed run is whole again
                    throw Falha(91);
                }
                quebrada = true;
                host.objSCA->Logado();
                quebrada = false;
            };
            varredura.Roda();
        },
        "a jornada seguinte falhou: 91");
}

TEST(Varredura, Roda_OfAJourneyThatKeepsAnObject_FailsTheTest)
{
    static Ref<IMensagem> retida;
    EXPECT_NONFATAL_FAILURE(
        {
            Varredura varredura;
            varredura.Chamada = "none";
            varredura.Jornada = [](HostRoteirizado &host) { retida = host.CriaMensagem(); };
            varredura.Roda();
        },
        "Objeto que não foi liberado: goMensagem");
    retida = nullptr;
}

} // namespace
