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

TEST_F(EspecificaTeste, Identity_InTheDataDictionary_IsConstant)
{
    Especifica especifica;
    EXPECT_EQ(especifica.NomeTipo(), "Especifica");
    EXPECT_EQ(especifica.SistemaQMR(), "VOR");
    EXPECT_EQ(especifica.QMRModuloID(), "VOR");
    EXPECT_EQ(especifica.VersaoSistemaQMR(), 1);
    EXPECT_EQ(especifica.QMRVersaoModulo(), 1);
    EXPECT_TRUE(especifica.ModuloQMRAuxiliar().Nada());
    EXPECT_TRUE(especifica.UsandoModuloQMRauxiliar());
}

TEST_F(EspecificaTeste, Inicializa_AShell_IsTheOneThatEveryClassReaches)
{
    auto outra = Novo<Geral>();
    geral->CEspecifica()->Inicializa(outra);
    EXPECT_TRUE(goGeral.Alvo() == outra);
}

// Clicks.

TEST_F(EspecificaTeste, ClickMenu_PhotoWorkTool_OpensTheListInPhotoWorkMode)
{
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    ASSERT_EQ(Listas().size(), 1U);
    EXPECT_TRUE(Listas()[0]->Visible());
    EXPECT_EQ(host->Conta(MedidoresDoModo + "True, "), 1);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmLista, modal=False"), 1);
}

TEST_F(EspecificaTeste, ClickMenu_WhileTheWindowOpens_IsNotTakenYet)
{
    bool chegou = false;
    host->Tela->Posta([&] {
        chegou = true;
        EXPECT_FALSE(geral->ClickTratado);
    });
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    EXPECT_TRUE(chegou);
}

TEST_F(EspecificaTeste, ClickMenu_OtherTool_OpensTheSameWindowOutsidePhotoWorkMode)
{
    EXPECT_TRUE(geral->ClickMenu("mnuModNABEquiptos"));
    ASSERT_EQ(Listas().size(), 1U);
    EXPECT_EQ(host->Conta(MedidoresDoModo + "False, "), 1);
}

TEST_F(EspecificaTeste, ClickMenu_AnyTool_NeverAnswersAForm)
{
    EXPECT_TRUE(geral->CEspecifica()->ClickMenu("mnuModVOREquiptos").Nada());
    EXPECT_TRUE(geral->CEspecifica()->ClickMenu("mnuOutro").Nada());
    EXPECT_TRUE(geral->ClickTratado);
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

TEST_F(EspecificaTeste, ClickMenu_Twice_OpensTwoWindows)
{
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    EXPECT_TRUE(geral->ClickMenu("mnuModNABEquiptos"));
    ASSERT_EQ(Listas().size(), 3U);
    EXPECT_FALSE(Listas()[0] == Listas()[1]);
    EXPECT_EQ(host->Conta(MedidoresDoModo + "True, "), 2);
    EXPECT_EQ(host->Conta(MedidoresDoModo + "False, "), 1);
}

TEST_F(EspecificaTeste, ClickMenu_WindowClosed_KeepsNothingOfItBeyondTheNextClick)
{
    geral->ClickMenu("mnuModVOREquiptos");
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
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COEquipamentos.CarregaJanela");
    EXPECT_TRUE(Listas().empty());
    EXPECT_EQ(Plataforma()->Ponteiro(), 0);
}

TEST_F(EspecificaTeste, ClickMenu_ControllerThatCannotBeCreated_IsShownToThePersonAndNotTaken)
{
    const std::string tool = "mnuModVOREquiptos";
    {
        MemoriaEscassa escassa(1);
        EXPECT_FALSE(geral->ClickMenu(tool));
        EXPECT_TRUE(escassa.Recusou());
    }
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "Especifica - ClickMenu");
    EXPECT_EQ(host->Erros()[0].Numero, 7);
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP");
    EXPECT_EQ(host->Erros()[0].Titulo, "Sistema de Autuações");
    EXPECT_FALSE(geral->ClickTratado);
    EXPECT_TRUE(Listas().empty());
    EXPECT_TRUE(geral->ClickMenu(tool)); // the next click works
}

// Tools.

TEST_F(EspecificaTeste, HabilitarItem_BothTools_AskTheSamePermission)
{
    EXPECT_TRUE(geral->CEspecifica()->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(geral->CEspecifica()->HabilitarItem("mnuModNABEquiptos"));
    host->objSCA->Nega("VOR-EQP-CS", "");
    EXPECT_FALSE(geral->CEspecifica()->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_FALSE(geral->CEspecifica()->HabilitarItem("mnuModNABEquiptos"));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> True",
                                                 "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> True",
                                                 "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> False",
                                                 "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> False"}));
}

TEST_F(EspecificaTeste, HabilitarItem_AnyOtherTool_IsFalseWithoutAsking)
{
    for (const char *tool : {"mnuOutro", "MNUMODVOREQUIPTOS", ""}) {
        EXPECT_FALSE(geral->CEspecifica()->HabilitarItem(tool)) << tool;
    }
    EXPECT_TRUE(host->Registro().empty());
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
    std::size_t erros = 0;
    for (const char *passo : {"ObjGlobalVor.InicializaSessao", "oAppEXE.Title", "goMensagem.Titulo",
                              "ObjGlobalVor.ObtemCredencial", "Credencial.Credencial", "Credencial.CodMunic"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 1005, "Falhou");
        geral->Logon(host->objMTM, host->objSCA, "");
        ASSERT_EQ(host->Erros().size(), ++erros);
        EXPECT_EQ(host->Erros().back().Contexto, "Especifica - EfetuaLogon");
        EXPECT_EQ(host->Erros().back().Numero, 1005);
        EXPECT_EQ(host->Erros().back().Descricao, "Falhou");
        EXPECT_EQ(host->Erros().back().Fonte, passo);
        EXPECT_EQ(host->Erros().back().Titulo, "Sistema de Autuações");
    }
}

TEST_F(EspecificaTeste, EfetuaLogon_GlobalObjectThatIsNotThere_IsShown)
{
    DescarregaModulo();
    geral->CEspecifica()->Inicializa(geral);
    host->FalhaEm("Host.CriaObjGlobalVor", 1, 429, "Não há");
    geral->CEspecifica()->EfetuaLogon();
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "Especifica - EfetuaLogon");
    EXPECT_EQ(host->Erros()[0].Numero, 429);
    EXPECT_EQ(glCredencial, 0);
}

TEST_F(EspecificaTeste, LiberaServicos_Called_ReleasesTheServicesOfTheModule)
{
    goDadosVor();
    host->LimpaRegistro();
    geral->CEspecifica()->LiberaServicos();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"goDadosVor.Finaliza()"}));
}

TEST_F(EspecificaTeste, Finaliza_Called_DoesNothing)
{
    geral->CEspecifica()->Finaliza();
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(EspecificaTeste, ClickMenu_AfterLogoffAndAnotherLogon_OpensAWindowThatSearches)
{
    geral->ClickMenu("mnuModVOREquiptos");
    geral->Logoff();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
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

TEST_F(EspecificaTeste, CreateCVorEquip_Twice_GivesTwoInstances)
{
    Ref<CVorEquip> um = geral->CEspecifica()->CreateCVorEquip();
    Ref<CVorEquip> outro = geral->CEspecifica()->CreateCVorEquip();
    EXPECT_FALSE(um.Nada());
    EXPECT_FALSE(um == outro);
    EXPECT_EQ(um->NroIntEquip(), 0);
}

TEST_F(EspecificaTeste, CreateCVORPesqEquip_Twice_GivesTwoInstances)
{
    Ref<CVORPesqEquip> uma = geral->CEspecifica()->CreateCVORPesqEquip();
    Ref<CVORPesqEquip> outra = geral->CEspecifica()->CreateCVORPesqEquip();
    EXPECT_FALSE(uma.Nada());
    EXPECT_FALSE(uma == outra);
}

TEST_F(EspecificaTeste, ImprimeAfericaoVigenteEquipto_WhateverTheArguments_Refuses)
{
    Ref<Especifica> especifica = geral->CEspecifica();
    for (const Falha &falha :
         {FalhaLancada([&] { especifica->ImprimeAfericaoVigenteEquipto(20261120); }),
          FalhaLancada([&] { especifica->ImprimeAfericaoVigenteEquipto(20261120, 12, 5, "A1"); })}) {
        EXPECT_EQ(falha.Numero, -1);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP.Especifica");
        EXPECT_EQ(falha.Descricao, "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado");
    }
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(EspecificaTeste, ObtemTransacao_OfThisModule_IsAMemberThatIsNotThere)
{
    EXPECT_TRUE(Lanca(438, "ZTAVOREQUIP", [&] { geral->CEspecifica()->ObtemTransacao("CABC"); }));
}

} // namespace
