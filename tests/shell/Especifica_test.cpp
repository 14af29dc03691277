#include "shell/Especifica.h"

#include "search/CVORPesqEquip.h"
#include "search/CVorEquip.h"
#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"

#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

constexpr const char *ComTrabFoto = "mnuModVOREquiptos";
constexpr const char *SemTrabFoto = "mnuModNABEquiptos";

// The module's own particular side, in a shell that the host has logged on to.
class EspecificaTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
    }

    // What the window asks for when it opens, up to the flag of the photo-work mode.
    const std::string MedidoresDoModo = "goDadosVor.PreencheTipoAgente(cboTipoAgente, ";

    std::vector<Ref<IForm>> Listas() const { return host->Tela->FormsAbertos("frmLista"); }
};

TEST_F(EspecificaTeste, Inicializa_AShell_IsTheOneThatEveryClassReaches)
{
    auto outra = Novo<Geral>();
    geral->CEspecifica()->Inicializa(outra);
    EXPECT_TRUE(goGeral.Alvo() == outra);
    EXPECT_EQ(geral->CEspecifica()->NomeTipo(), "Especifica");
}

// Clicks.

TEST_F(EspecificaTeste, ClickMenu_EachTool_OpensAWindowInItsPhotoWorkModeEachTime)
{
    EXPECT_TRUE(geral->ClickMenu(ComTrabFoto));
    ASSERT_EQ(Listas().size(), 1U);
    EXPECT_TRUE(Listas()[0]->Visible());
    EXPECT_EQ(host->Conta(MedidoresDoModo + "True, "), 1);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmLista, modal=False"), 1);
    EXPECT_TRUE(geral->ClickMenu(SemTrabFoto));
    EXPECT_TRUE(geral->ClickMenu(ComTrabFoto));
    ASSERT_EQ(Listas().size(), 3U);
    EXPECT_FALSE(Listas()[0] == Listas()[2]);
    EXPECT_EQ(host->Conta(MedidoresDoModo + "True, "), 2);
    EXPECT_EQ(host->Conta(MedidoresDoModo + "False, "), 1);
    EXPECT_TRUE(geral->CEspecifica()->ClickMenu(ComTrabFoto).Nada()); // never answers a form
    EXPECT_TRUE(geral->CEspecifica()->ClickMenu("mnuOutro").Nada());
    EXPECT_TRUE(geral->ClickTratado);
}

TEST_F(EspecificaTeste, ClickMenu_WhileTheWindowOpens_IsNotTakenYet)
{
    bool chegou = false;
    host->Tela->Posta([&] {
        chegou = true;
        EXPECT_FALSE(geral->ClickTratado);
    });
    EXPECT_TRUE(geral->ClickMenu(ComTrabFoto));
    EXPECT_TRUE(chegou);
}

TEST_F(EspecificaTeste, ClickMenu_NameInAnotherCaseOrUnknown_IsNotTaken)
{
    for (const char *tool : {"mnuModVOREQUIPTOS", "MNUMODVOREQUIPTOS", "mnumodnabequiptos", "mnuModVOREquiptos ",
                             "mnuModVOREquipto", "", "mnuOutro"}) {
        EXPECT_FALSE(geral->ClickMenu(tool)) << tool;
    }
    EXPECT_TRUE(host->Registro().empty());
    EXPECT_TRUE(Listas().empty());
}

TEST_F(EspecificaTeste, ClickMenu_WindowClosed_KeepsNothingOfItBeyondTheNextClick)
{
    geral->ClickMenu(ComTrabFoto);
    ASSERT_EQ(Listas().size(), 1U);
    RefFraca<IForm> lista = Listas()[0];
    host->Tela->FechaPelaPessoa(lista.Alvo());
    geral->FormAtivado(nullptr);
    geral->ClickMenu("mnuOutro"); // lets go of what the host kept with the shell
    EXPECT_TRUE(lista.Nada());
}

TEST_F(EspecificaTeste, ClickMenu_WindowThatFails_IsShownByTheController)
{
    host->FalhaEm("ObjInterface.MostraJanela", 1, 51, "Sem janela");
    EXPECT_TRUE(geral->ClickMenu(ComTrabFoto));
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(), {"COEquipamentos.CarregaJanela|51|Sem janela|*"}));
    EXPECT_TRUE(Listas().empty());
    EXPECT_EQ(Plataforma()->Ponteiro(), 0);
}

TEST_F(EspecificaTeste, ClickMenu_ControllerThatCannotBeCreated_IsShownToThePersonAndNotTaken)
{
    const std::string tool = ComTrabFoto;
    {
        MemoriaEscassa escassa(1);
        EXPECT_FALSE(geral->ClickMenu(tool));
        EXPECT_TRUE(escassa.Recusou());
    }
    EXPECT_EQ(ErrosInteiros(),
              Linhas{"Especifica - ClickMenu|7|" + Falha(7).Descricao + "|ZTAVOREQUIP|Sistema de Autuações"});
    EXPECT_FALSE(geral->ClickTratado);
    EXPECT_TRUE(Listas().empty());
    EXPECT_TRUE(geral->ClickMenu(tool)); // the next click works
}

// Tools.

TEST_F(EspecificaTeste, HabilitarItem_BothTools_AskTheSamePermissionAndAnyOtherIsFalseWithoutAsking)
{
    for (bool permitido : {true, false}) {
        for (const char *tool : {ComTrabFoto, SemTrabFoto}) {
            EXPECT_EQ(geral->CEspecifica()->HabilitarItem(tool), permitido);
        }
        for (const char *tool : {"mnuOutro", "MNUMODVOREQUIPTOS", ""}) {
            EXPECT_FALSE(geral->CEspecifica()->HabilitarItem(tool)) << tool;
        }
        const std::string pergunta =
            std::string("objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> ") + (permitido ? "True" : "False");
        EXPECT_TRUE(RegistroIgual(host->Registro(), {pergunta, pergunta}));
        host->LimpaRegistro();
        host->objSCA->Nega("VOR-EQP-CS", "");
    }
}

// Menu items.

TEST_F(EspecificaTeste, Menu_OfThisModule_HasNoItems)
{
    EXPECT_EQ(geral->Menus.aMenu, ItensMenu(1));
    EXPECT_EQ(geral->Menus.aMenuAux, ItensMenu(1));

    ItensMenu itens(3, Novo<ItemMenuModulo>());
    const ItensMenu antes = itens;
    geral->CEspecifica()->Menu(itens);
    EXPECT_EQ(itens, antes);
    geral->CEspecifica()->MenuAuxiliar(itens);
    EXPECT_EQ(itens, ItensMenu(1));
}

// Logon.

TEST_F(EspecificaTeste, EfetuaLogon_FirstTime_GivesTheSessionTitlesTheMessagesAndReadsTheCredential)
{
    geral->Logoff();
    DescarregaModulo();
    geral->CEspecifica()->Inicializa(geral);
    host->Dominio->Credencial = 123456;
    host->Dominio->CodMunic = 8801;
    host->LimpaRegistro();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"objSCA.Logado() -> True", "Host.CriaObjGlobalVor()",
         "ObjGlobalVor.InicializaSessao(objMTM, objSCA, oAppEXE, Nothing)", "Host.CriaMensagem()",
         "oAppEXE.ProductName -> \"Sistema de Autuações\"", "goMensagem.Titulo := \"Sistema de Autuações\"",
         "oAppEXE.Title -> \"Autuação Eletrônica\"", "goMensagem.Titulo := \"Autuação Eletrônica\"",
         "ObjGlobalVor.ObtemCredencial()", "Credencial.Credencial -> 123456", "Credencial.CodMunic -> 8801"}));
    EXPECT_EQ(glCredencial, 123456);
    EXPECT_EQ(glCodMunicLogon, 8801);
}

TEST_F(EspecificaTeste, HabilitarMenu_Called_IsTheLogonAndNothingElse)
{
    geral->CEspecifica()->HabilitarMenu();
    EXPECT_TRUE(RegistroIgual(
        host->Registro(), {"ObjGlobalVor.InicializaSessao(objMTM, objSCA, oAppEXE, Nothing)",
                           "oAppEXE.Title -> \"Autuação Eletrônica\"", "goMensagem.Titulo := \"Autuação Eletrônica\"",
                           "ObjGlobalVor.ObtemCredencial()", "Credencial.Credencial*", "Credencial.CodMunic*"}));
}

TEST_F(EspecificaTeste, EfetuaLogon_AnyStepThatFails_IsShownAndReturnsNormally)
{
    DescarregaModulo();
    geral->CEspecifica()->Inicializa(geral);
    Linhas esperados;
    for (const char *passo :
         {"Host.CriaObjGlobalVor", "ObjGlobalVor.InicializaSessao", "oAppEXE.Title", "goMensagem.Titulo",
          "ObjGlobalVor.ObtemCredencial", "Credencial.Credencial", "Credencial.CodMunic"}) {
        goMensagem(); // whose own title is not the one that fails
        host->FalhaEm(passo, 1, 1005, "Falhou");
        geral->Logon(host->objMTM, host->objSCA, "");
        esperados.push_back(std::string("Especifica - EfetuaLogon|1005|Falhou|") + passo + "|Sistema de Autuações");
    }
    EXPECT_EQ(ErrosInteiros(), esperados);
}

TEST_F(EspecificaTeste, LiberaServicos_Called_ReleasesTheServicesOfTheModuleAndFinalizaDoesNothing)
{
    goDadosVor();
    host->LimpaRegistro();
    geral->CEspecifica()->Finaliza();
    geral->CEspecifica()->LiberaServicos();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"goDadosVor.Finaliza()"}));
}

TEST_F(EspecificaTeste, ClickMenu_AfterLogoffAndAnotherLogon_OpensAWindowThatSearches)
{
    geral->ClickMenu(ComTrabFoto);
    geral->Logoff();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(geral->ClickMenu(ComTrabFoto));
    ASSERT_EQ(Listas().size(), 1U);
    host->Servico("EquiptoRN", "lista2", [](const Ref<Registro> &) -> Resposta {
        auto pagina = Novo<ListaEquiptoED>();
        pagina->Equipamentos = Novo<Colecao<Ref<EquiptoED>>>();
        pagina->Equipamentos.Valor()->Add(Novo<EquiptoED>());
        return pagina;
    });
    Pessoa pessoa(Listas()[0], host->Tela);
    EXPECT_TRUE(pessoa.Localiza("ztlLista")) << pessoa.Motivo();
    EXPECT_EQ(pessoa.Acha<IztList>("ztlLista")->NroItens(), 1);
    EXPECT_TRUE(host->Erros().empty());
}

// For other modules.

TEST_F(EspecificaTeste, QueryServices_Twice_AreTwoInstances)
{
    const Ref<CVorEquip> um = geral->CEspecifica()->CreateCVorEquip();
    EXPECT_FALSE(um.Nada() || um == geral->CEspecifica()->CreateCVorEquip());
    EXPECT_EQ(um->NroIntEquip(), 0);
    const Ref<CVORPesqEquip> uma = geral->CEspecifica()->CreateCVORPesqEquip();
    EXPECT_FALSE(uma.Nada() || uma == geral->CEspecifica()->CreateCVORPesqEquip());
}

TEST_F(EspecificaTeste, ImprimeAfericaoVigenteEquipto_WhateverTheArguments_Refuses)
{
    Ref<Especifica> especifica = geral->CEspecifica();
    const std::string texto = "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado";
    EXPECT_TRUE(
        Lanca(-1, "ZTAVOREQUIP.Especifica", texto, [&] { especifica->ImprimeAfericaoVigenteEquipto(20261120); }));
    EXPECT_TRUE(Lanca(-1, "ZTAVOREQUIP.Especifica", texto,
                      [&] { especifica->ImprimeAfericaoVigenteEquipto(20261120, 12, 5, "A1"); }));
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(EspecificaTeste, ObtemTransacao_OfThisModule_IsAMemberThatIsNotThere)
{
    EXPECT_TRUE(Lanca(438, "ZTAVOREQUIP", [&] { geral->CEspecifica()->ObtemTransacao("CABC"); }));
}

} // namespace
