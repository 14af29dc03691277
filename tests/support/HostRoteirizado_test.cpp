#include "tests/support/HostTeste.h"

#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

class HostRoteirizadoTeste : public HostTeste {
  protected:
    // A proxy from the gateway, with its creation forgotten.
    Ref<IProxyRN> Proxy(const std::string &classe = "EquiptoRN")
    {
        auto proxy = host->objMTM->ObtemGateway()->CriaObjetoRN("VOR", classe, "ZTVORLIB", "4");
        host->LimpaRegistro();
        return proxy;
    }

    static bool Executa(const Ref<IProxyRN> &proxy, std::string metodo, Ref<Objeto> &variavel)
    {
        std::vector<Valor> parametros{Valor::PorReferencia(variavel)};
        Ref<Objeto> contexto;
        return proxy->ExecutaMetodo(contexto, metodo, parametros);
    }

    // The problems seen so far, which then do not fail this test.
    Linhas Problemas()
    {
        auto problemas = host->VerificaFim();
        host = Novo<HostRoteirizado>();
        InstalaHost(host);
        return problemas;
    }
};

TEST_F(HostRoteirizadoTeste, Registro_OfCalls_KeepsThemInOrderWithArgumentsAndResults)
{
    host->objSCA->Nega("VOR-EQP-CS", "E");
    host->objSCA->PossuiPerm2("NAB", "VOR-EQP-CS", "I");
    host->objSCA->PossuiPerm2("NAB", "VOR-EQP-CS", "E");
    Plataforma()->DefinePonteiro(11);
    host->CriaMensagem()->ExibeMensagem("Informe\nalgo", nullptr);
    EXPECT_EQ(host->Registro(),
              (Linhas{"objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> True",
                      "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> False", "Plataforma.Ponteiro := 11",
                      "Host.CriaMensagem()", "goMensagem.ExibeMensagem(\"Informe\\nalgo\", Nothing)"}));
    EXPECT_EQ(host->Chamadas(), 5);
    EXPECT_EQ(host->Conta("objSCA.PossuiPerm2("), 2);
    EXPECT_TRUE(host->Contem("Plataforma.Ponteiro := 1"));
    EXPECT_FALSE(host->Contem("Ponteiro"));
    EXPECT_EQ(host->RegistroDe({"Host.", "Plataforma."}), (Linhas{"Plataforma.Ponteiro := 11", "Host.CriaMensagem()"}));
    host->LimpaRegistro();
    EXPECT_EQ(host->Registro(), Linhas{});
    EXPECT_EQ(host->Chamadas(), 5);
}

TEST_F(HostRoteirizadoTeste, FalhaNaChamada_OfTheSecondCall_RaisesThereOnceWithTheCallAsSource)
{
    host->FalhaNaChamada(2, 70, "negado");
    EXPECT_TRUE(host->objSCA->Logado());
    EXPECT_EQ(Plataforma()->Ponteiro(), 0); // not a logged call
    EXPECT_TRUE(Lanca(70, "objMTM.ClienteLogado", "negado", [&] { host->objMTM->ClienteLogado(); }));
    EXPECT_EQ(host->objMTM->ClienteLogado(), "Autoridade das Estradas de Rodagem");
    EXPECT_EQ(host->Registro(), (Linhas{"objSCA.Logado() -> True", "objMTM.ClienteLogado() !! 70",
                                        "objMTM.ClienteLogado() -> \"Autoridade das Estradas de Rodagem\""}));
    EXPECT_EQ(host->FalhasDisparadas(), 1);
}

TEST_F(HostRoteirizadoTeste, FalhaEm_OfAnUnloggedRead_RaisesAtTheOccurrenceAsked)
{
    host->FalhaEm("Plataforma.Agora", 2);
    EXPECT_EQ(Plataforma()->Agora(), DataDe(20, 11, 2026, 10, 0, 0));
    EXPECT_EQ(FalhaLancada([] { Plataforma()->Agora(); }).Fonte, "Plataforma.Agora");
    EXPECT_EQ(host->Registro(), Linhas{});
}

TEST_F(HostRoteirizadoTeste, FalhaEm_OfACallThatNeverComes_IsAProblem)
{
    host->FalhaEm("goDadosVor.Finaliza");
    EXPECT_EQ(Problemas(), Linhas{"Falha programada que não foi disparada: goDadosVor.Finaliza"});
}

TEST_F(HostRoteirizadoTeste, ExecutaMetodo_OfAnEntry_GetsTheRequestAndGivesTheAnswer)
{
    host->Atende<EquiptoED>("EquiptoRN", "consulta", [](const Ref<EquiptoED> &pedido) -> Resposta {
        auto equipto = Novo<EquiptoED>();
        equipto->NroIntEquip = pedido->NroIntEquip.Valor();
        equipto->Codigo = "R-01";
        pedido->Codigo = "later";
        return equipto;
    });
    auto pedido = Novo<EquiptoED>();
    pedido->NroIntEquip = 12;
    Ref<Objeto> variavel = pedido;
    auto proxy = Proxy();
    EXPECT_TRUE(Executa(proxy, "consulta", variavel));
    EXPECT_EQ(proxy->ObtemRetorno().Como<EquiptoED>()->Codigo.Valor(), "R-01");
    EXPECT_TRUE(variavel == pedido);
    EXPECT_EQ(host->Registro(), (Linhas{"EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=12}) -> True",
                                        "EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=12, Codigo=\"R-01\"}"}));
}

TEST_F(HostRoteirizadoTeste, ExecutaMetodo_OfARefusedOperation_AnswersFalseOnceAndShowsTheMessage)
{
    host->Servico("EquiptoRN", "altera", [](const Ref<Registro> &) -> Resposta { return {}; });
    host->RecusaOperacao("altera", "Código já usado.");
    Ref<Objeto> variavel = Novo<EquiptoED>();
    auto proxy = Proxy();
    EXPECT_FALSE(Executa(proxy, "altera", variavel));
    proxy->MostraErro();
    EXPECT_TRUE(Executa(proxy, "altera", variavel));
    EXPECT_EQ(host->Registro(), (Linhas{"EquiptoRN.ExecutaMetodo(\"altera\", EquiptoED{}) -> False",
                                        "EquiptoRN.MostraErro() -> \"Código já usado.\"",
                                        "EquiptoRN.ExecutaMetodo(\"altera\", EquiptoED{}) -> True"}));
}

TEST_F(HostRoteirizadoTeste, ExecutaMetodo_WithTroca_PutsTheOtherObjectIntoTheVariable)
{
    auto outro = Novo<SensorED>();
    host->Servico("EquiptoRN", "altera", [&](const Ref<Registro> &) { return Resposta().Troca(outro); });
    Ref<Objeto> variavel = Novo<EquiptoED>();
    auto proxy = Proxy();
    EXPECT_TRUE(Executa(proxy, "altera", variavel));
    EXPECT_TRUE(variavel == outro);
    EXPECT_TRUE(proxy->ObtemRetorno().ComoObjeto().Nada());
}

TEST_F(HostRoteirizadoTeste, ExecutaMetodo_WithoutAnEntry_IsRefusedAndAProblem)
{
    Ref<Objeto> variavel = Novo<EquiptoED>();
    EXPECT_FALSE(Executa(Proxy(), "apaga", variavel));
    EXPECT_EQ(Problemas(), Linhas{"INESPERADA: operação EquiptoRN \"apaga\""});
}

TEST_F(HostRoteirizadoTeste, Proxy_AgainstTheConvention_IsAProblem)
{
    auto proxy = Proxy();
    proxy->ObtemRetorno();
    proxy->MostraErro();
    Ref<Objeto> contexto;
    std::string metodo = "consulta";
    std::vector<Valor> parametros;
    EXPECT_EQ(FalhaLancada([&] { proxy->ExecutaMetodo(contexto, metodo, parametros); }).Numero, 5);
    proxy = nullptr;
    EXPECT_EQ(Problemas(),
              (Linhas{"EquiptoRN.ObtemRetorno sem operação bem sucedida", "EquiptoRN.MostraErro sem operação recusada",
                      "EquiptoRN.ExecutaMetodo fora da convenção: \"consulta\""}));
}

TEST_F(HostRoteirizadoTeste, PerguntaSimNao_WithAnAnswer_GivesItAndLogsTheDefault)
{
    host->Responde("Confirma?", true);
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Confirma?", "Atenção", false));
    EXPECT_EQ(host->Registro(), Linhas{"Plataforma.PerguntaSimNao(\"Confirma?\", \"Atenção\", padrao=Não) -> Sim"});
}

TEST_F(HostRoteirizadoTeste, PerguntaSimNao_OutOfTheOrderOfTheAnswers_GivesTheDefaultAndIsAProblem)
{
    host->Responde("Primeira?", false);
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Segunda?", "Atenção", true));
    EXPECT_EQ(Problemas(),
              (Linhas{"INESPERADA: pergunta \"Segunda?\"", "Pergunta esperada que não foi feita: Primeira?"}));
}

TEST_F(HostRoteirizadoTeste, VerificaFim_WithAnErrorBoxNobodyLookedAt_ReportsIt)
{
    for (int olha = 0; olha < 3; ++olha) {
        host->CriaMensagem()->ExibeErro("frmLista.cmdOK_Click", 91, "Variável", "ZTAVOREQUIP < x", "Título");
        Linhas problemas{"INESPERADA: caixa de erro 91 Variável (frmLista.cmdOK_Click; ZTAVOREQUIP < x)"};
        if (olha == 1) {
            ASSERT_EQ(host->Erros().size(), 1U);
            EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP < x");
            problemas.clear();
        } else if (olha == 2) {
            EXPECT_EQ(host->ErrosNovos(), Linhas{"frmLista.cmdOK_Click: 91 (ZTAVOREQUIP < x)"});
            EXPECT_EQ(host->ErrosNovos(), Linhas{});
            problemas.clear();
        }
        EXPECT_EQ(Problemas(), problemas);
    }
}

TEST_F(HostRoteirizadoTeste, VerificaFim_WithAnObjectStillHeld_NamesItsClass)
{
    auto retido = host->CriaDiretorios();
    auto sessao = host->objMTM;
    EXPECT_EQ(Problemas(),
              (Linhas{"Objeto que não foi liberado: objMTM", "Objeto que não foi liberado: goDiretorios"}));
}

TEST_F(HostRoteirizadoTeste, LogaGeral_OfTheFixture_LeavesALoggedOnShellAndAnEmptyLog)
{
    LogaGeral();
    EXPECT_EQ(host->Registro(), Linhas{});
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_EQ(glCredencial, 4711);
}

} // namespace
