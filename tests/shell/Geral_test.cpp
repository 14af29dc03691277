#include "shell/Geral.h"

#include "shell/Especifica.h"
#include "shell/ModGeral.h"
#include "tests/shell/FormDeTeste.h"
#include "tests/shell/GeralDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// A shell that the host has created and not yet configured.
class GeralTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        shell = Novo<GeralDeTeste>();
        geral = shell;
    }

    void TearDown() override
    {
        shell = nullptr;
        HostTeste::TearDown();
    }

    void Parametros()
    {
        geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
        geral->cGlobal = host->cGlobal;
        geral->ObjInterface = host->ObjInterface;
    }

    void Loga()
    {
        Parametros();
        geral->Logon(host->objMTM, host->objSCA, "");
        host->LimpaRegistro();
    }

    Ref<FormDeTeste> FormCarregado(const std::string &classe = "frmTeste")
    {
        auto form = Novo<FormDeTeste>(classe);
        form->Carregar();
        return form;
    }

    // A form that the person sees.
    Ref<FormDeTeste> FormMostrado(const std::string &classe = "frmTeste")
    {
        auto form = FormCarregado(classe);
        geral->FormShow(form, false, nullptr);
        host->Tela->RodaMensagens();
        host->LimpaRegistro();
        return form;
    }

    Ref<EspecificaDeTeste> Particular() { return shell->Particular; }

    Ref<GeralDeTeste> shell;
};

// Creation and registration.

TEST_F(GeralTeste, Creation_Fresh_FlagsAreFalseAndNothingElseIsThere)
{
    EXPECT_FALSE(geral->Depurar);
    EXPECT_FALSE(geral->InstanciarFormsClickMenu);
    EXPECT_FALSE(geral->PossuiJanelaEnviaRecebe);
    EXPECT_FALSE(geral->ClickTratado);
    EXPECT_TRUE(geral->ActBar.Nada());
    EXPECT_TRUE(geral->cGlobal.Nada());
    EXPECT_TRUE(geral->ObjInterface.Nada());
    EXPECT_TRUE(geral->CEspecifica().Nada());
    EXPECT_TRUE(geral->objMTM().Nada());
    EXPECT_TRUE(geral->objSCA().Nada());
    EXPECT_TRUE(geral->oAppEXE().Nada());
    EXPECT_TRUE(geral->FormMDI().Nada());
    EXPECT_TRUE(geral->objZTP().Nada());
    EXPECT_TRUE(geral->Relatorios().Nada());
    EXPECT_TRUE(geral->Ajuda().Nada());
    EXPECT_TRUE(geral->FormAtivo().Nada());
    EXPECT_EQ(geral->sMunicCreden(), "");
    EXPECT_TRUE(goGeral.Nada());
    EXPECT_EQ(geral->NomeTipo(), "Geral");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, Modulo_Read_IsTheComponentsApplicationObject)
{
    EXPECT_TRUE(geral->Modulo() == host->Tela->App);
}

TEST_F(GeralTeste, DictionaryIdentity_BeforeParametros_RaisesNinetyOne)
{
    EXPECT_EQ(FalhaLancada([&] { geral->SistemaQMR(); }).Numero, 91);
    EXPECT_EQ(FalhaLancada([&] { geral->MDB(); }).Numero, 91);
}

TEST_F(GeralTeste, DictionaryIdentity_AfterParametros_IsTheModules)
{
    Parametros();
    EXPECT_EQ(geral->SistemaQMR(), "VOR");
    EXPECT_EQ(geral->QMRModuloID(), "VOR");
    EXPECT_EQ(geral->VersaoSistemaQMR(), 1);
    EXPECT_EQ(geral->QMRVersaoModulo(), 1);
    EXPECT_TRUE(geral->UsandoModuloQMRauxiliar());
}

TEST_F(GeralTeste, RegistraAM_BeforeParametros_GivesTheComponentAndItsClass)
{
    geral->RegistraAM("AUTUACAO");
    geral->DesregistraAM("AUTUACAO");
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"Host.CriaAMRegistro()",
                               "AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", \"AUTUACAO\")",
                               "Host.CriaAMRegistro()", "AMRegistro.DesregistraAM(\"ZTAVOREQUIP\", \"AUTUACAO\")"}));
}

TEST_F(GeralTeste, RegistraAM_ArgumentLeftOut_IsTheEmptyText)
{
    geral->RegistraAM();
    geral->DesregistraAM();
    EXPECT_EQ(host->Conta("AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", \"\")"), 1);
    EXPECT_EQ(host->Conta("AMRegistro.DesregistraAM(\"ZTAVOREQUIP\", \"\")"), 1);
}

TEST_F(GeralTeste, RegistraAM_AnyValue_IsHandedOnAsReceived)
{
    geral->RegistraAM(std::int32_t{7});
    EXPECT_EQ(host->Conta("AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", 7)"), 1);
}

TEST_F(GeralTeste, RegistraAM_Fails_IsIgnored)
{
    host->FalhaEm("Host.CriaAMRegistro");
    geral->RegistraAM("X");
    host->FalhaEm("AMRegistro.RegistraAM");
    geral->RegistraAM("X");
    host->FalhaEm("AMRegistro.DesregistraAM");
    geral->DesregistraAM("X");
    host->FalhaEm("Plataforma.Aplicacao");
    geral->RegistraAM("X");
}

// Parametros.

TEST_F(GeralTeste, Parametros_WithEverything_CallsTheHostInOrder)
{
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    host->ActBar->PoeFerramenta("bndA", "mnuX");
    geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, host->MDB, host->oAppEXE);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"FormMDI.AutoShowChildren -> True", "FormMDI.objZTP*",
                                                 "FormMDI.PossuiJanelaEnviaRecebe -> True",
                                                 "Tool(mnuX).Visible := True", "Tool(mnuX).Enabled := False"}));
    EXPECT_TRUE(geral->FormMDI() == host->FormMDI);
    EXPECT_TRUE(geral->objZTP() == host->FormMDI->ZTP);
    EXPECT_TRUE(geral->PossuiJanelaEnviaRecebe);
    EXPECT_TRUE(geral->ActBar == host->ActBar);
    EXPECT_TRUE(geral->Relatorios() == host->Relatorios);
    EXPECT_TRUE(geral->Ajuda() == host->Ajuda);
    EXPECT_TRUE(geral->oAppEXE() == host->oAppEXE);
    EXPECT_TRUE(geral->CEspecifica() == Particular());
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_TRUE(goGeral.Alvo() == geral);
}

TEST_F(GeralTeste, Parametros_StepByStep_HappenInTheirOrder)
{
    geral->ObjInterface = host->ObjInterface;
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    host->ActBar->PoeFerramenta("bndA", "mnuX");
    shell->AoCriarEspecifica = [&] {
        EXPECT_TRUE(geral->ObjInterface.Nada());
        EXPECT_TRUE(geral->oAppEXE().Nada());
    };
    Particular()->AoPedirMenu = [&] {
        EXPECT_TRUE(geral->ObjInterface.Nada());
        EXPECT_TRUE(geral->CEspecifica() == Particular());
        EXPECT_TRUE(geral->oAppEXE() == host->oAppEXE);
        EXPECT_EQ(geral->Menus.aMenu.size(), 1U);
        EXPECT_EQ(geral->Menus.aMenuAux.size(), 1U);
        EXPECT_TRUE(geral->ActBar.Nada());
        EXPECT_TRUE(host->Registro().empty());
    };
    Particular()->AoPedirMenuAuxiliar = [&] {
        EXPECT_EQ(geral->Menus.aMenu.size(), 2U); // the main items are there
        EXPECT_TRUE(geral->ActBar.Nada());
    };
    Particular()->AoInicializar = [&] {
        EXPECT_EQ(host->Conta("Tool("), 0);
        EXPECT_TRUE(geral->ActBar == host->ActBar);
        EXPECT_FALSE(geral->Relatorios().Nada());
        EXPECT_FALSE(geral->Ajuda().Nada());
        EXPECT_TRUE(geral->MDB() == host->MDB);
        EXPECT_TRUE(goGeral.Nada());
    };
    geral->Parametros(host->FormMDI, host->ActBar, nullptr, nullptr, host->MDB, host->oAppEXE);
    EXPECT_TRUE(
        RegistroIgual(host->Registro(),
                      {"FormMDI.AutoShowChildren*", "FormMDI.objZTP*", "FormMDI.PossuiJanelaEnviaRecebe*",
                       "Host.CriaRelatorios()", "oAppEXE.Path -> \"C:\\HOST\"", "Relatorios.PathRPT := \"C:\\HOST\"",
                       "Host.CriaAjuda()", "Tool(mnuX).Visible := True", "Tool(mnuX).Enabled := False"}));
    EXPECT_EQ(shell->EspecificasCriadas, 1);
    EXPECT_TRUE(goGeral.Alvo() == geral);
}

TEST_F(GeralTeste, Parametros_InterfaceSetBefore_IsLost)
{
    geral->ObjInterface = host->ObjInterface;
    geral->cGlobal = host->cGlobal;
    geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
    EXPECT_TRUE(geral->ObjInterface.Nada());
    EXPECT_TRUE(geral->cGlobal == host->cGlobal);
}

TEST_F(GeralTeste, Parametros_WhatIsNoMainForm_LeavesNothingWithoutError)
{
    geral->Parametros(Novo<FormQualquer>(), host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
    EXPECT_TRUE(geral->FormMDI().Nada());
    EXPECT_TRUE(geral->objZTP().Nada());
    EXPECT_FALSE(geral->PossuiJanelaEnviaRecebe);
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, Parametros_NoMainForm_LeavesNothingWithoutError)
{
    geral->Parametros(nullptr, host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
    EXPECT_TRUE(geral->FormMDI().Nada());
    EXPECT_TRUE(geral->objZTP().Nada());
    EXPECT_FALSE(geral->PossuiJanelaEnviaRecebe);
}

TEST_F(GeralTeste, Parametros_MainFormWithoutItsOtherMembers_IsTheMainFormAllTheSame)
{
    host->FalhaEm("FormMDI.objZTP", 1, 438);
    host->FalhaEm("FormMDI.PossuiJanelaEnviaRecebe", 1, 438);
    Parametros();
    EXPECT_TRUE(geral->FormMDI() == host->FormMDI);
    EXPECT_TRUE(geral->objZTP().Nada());
    EXPECT_FALSE(geral->PossuiJanelaEnviaRecebe);
}

TEST_F(GeralTeste, Parametros_AgainWithoutMainForm_ForgetsTheFirst)
{
    Parametros();
    geral->Parametros(nullptr, host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
    EXPECT_TRUE(geral->FormMDI().Nada());
    EXPECT_EQ(shell->EspecificasCriadas, 2);
}

TEST_F(GeralTeste, Parametros_WithoutReportServiceAndDescriptor_RaisesNinetyOneWithItsTail)
{
    const Falha falha =
        FalhaLancada([&] { geral->Parametros(host->FormMDI, host->ActBar, nullptr, host->Ajuda, nullptr, nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.Parametros");
}

TEST_F(GeralTeste, Parametros_WithoutDescriptor_IsNoErrorWhenTheReportServiceIsGiven)
{
    geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, nullptr, nullptr);
    EXPECT_TRUE(geral->oAppEXE().Nada());
}

TEST_F(GeralTeste, Parametros_AnyStepThatFails_GoesOnWithItsTailAndCanBeTriedAgain)
{
    for (const char *passo : {"Host.CriaRelatorios", "oAppEXE.Path", "Relatorios.PathRPT", "Host.CriaAjuda"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 429, "Não foi possível");
        const Falha falha = FalhaLancada(
            [&] { geral->Parametros(host->FormMDI, host->ActBar, nullptr, nullptr, nullptr, host->oAppEXE); });
        EXPECT_EQ(falha.Numero, 429);
        EXPECT_EQ(falha.Descricao, "Não foi possível");
        EXPECT_EQ(falha.Fonte, std::string(passo) + " < Geral.Parametros");
    }
    geral->Parametros(host->FormMDI, host->ActBar, nullptr, nullptr, nullptr, host->oAppEXE);
    EXPECT_TRUE(goGeral.Alvo() == geral);
}

TEST_F(GeralTeste, Parametros_MenuThatFails_GoesOnWithItsTail)
{
    Particular()->AoPedirMenu = [] { throw Falha(9); };
    const Falha falha = FalhaLancada([&] { Parametros(); });
    EXPECT_EQ(falha.Numero, 9);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.Parametros");
    EXPECT_TRUE(geral->ActBar.Nada());
}

// Logon.

TEST_F(GeralTeste, Logon_SomebodyLoggedOn_StoresTheSessionAndEnablesTheMenu)
{
    Parametros();
    host->LimpaRegistro();
    bool habilitado = false;
    Particular()->AoHabilitarMenu = [&] {
        habilitado = true;
        EXPECT_TRUE(geral->objMTM() == host->objMTM); // what the logon reads is there by then
        EXPECT_EQ(geral->sMunicCreden(), "8801");
    };
    geral->Logon(host->objMTM, host->objSCA, "8801");
    EXPECT_TRUE(habilitado);
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_TRUE(geral->objSCA() == host->objSCA);
    EXPECT_EQ(geral->sMunicCreden(), "8801");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objSCA.Logado() -> True"}));
}

TEST_F(GeralTeste, Logon_WithoutAccessControl_StoresWithoutRefreshOrError)
{
    Parametros();
    host->LimpaRegistro();
    Particular()->AoHabilitarMenu = [] { ADD_FAILURE() << "the menus were refreshed"; };
    geral->Logon(host->objMTM, nullptr, "8801");
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_TRUE(geral->objSCA().Nada());
    EXPECT_EQ(geral->sMunicCreden(), "8801");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, Logon_WithoutSession_StoresWithoutRefreshOrError)
{
    Parametros();
    host->LimpaRegistro();
    geral->Logon(nullptr, host->objSCA, "");
    EXPECT_TRUE(geral->objMTM().Nada());
    EXPECT_TRUE(geral->objSCA() == host->objSCA);
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, Logon_NobodyLoggedOn_DisablesTheMenusAndBuildsNoSingleton)
{
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    host->ActBar->PoeFerramenta("bndA", "mnuX");
    Parametros();
    host->ActBar->Ferramenta("bndA", "mnuX")->DefineEnabled(true);
    host->objSCA->UsuarioLogado = false;
    host->LimpaRegistro();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(RegistroIgual(
        host->Registro(), {"objSCA.Logado() -> False", "Tool(mnuX).Visible := True", "Tool(mnuX).Enabled := False"}));
    EXPECT_EQ(host->Conta("ObjGlobalVor"), 0);
    EXPECT_EQ(host->Conta("Host.Cria"), 0);
}

TEST_F(GeralTeste, Logon_RefreshThatFails_IsIgnored)
{
    Parametros();
    Particular()->AoHabilitarMenu = [] { throw Falha(51); };
    geral->Logon(host->objMTM, host->objSCA, "");
    host->FalhaEm("objSCA.Logado");
    geral->Logon(host->objMTM, host->objSCA, "x");
    EXPECT_EQ(geral->sMunicCreden(), "x");
}

TEST_F(GeralTeste, Logon_BeforeParametros_IsNoError)
{
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
}

TEST_F(GeralTeste, Logon_OutOfMemory_GoesOnWithItsTail)
{
    const std::string municipio = "um texto que não cabe no próprio objeto de texto";
    const Falha falha = FalhaLancada([&] {
        MemoriaEscassa escassa(1);
        geral->Logon(nullptr, nullptr, municipio);
    });
    EXPECT_EQ(falha.Numero, 7);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.Logon");
}

// Logoff.

TEST_F(GeralTeste, Logoff_AfterLogon_ClosesDisablesAndReleasesInOrder)
{
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    host->ActBar->PoeFerramenta("bndA", "mnuX");
    Loga();
    geral->MDB();
    geral->ObtemCFisJur();
    geral->ObtemCEndereco();
    geral->ObtemCVeiGen();
    goDadosVor();
    FormCarregado();
    host->LimpaRegistro();
    geral->Logoff();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Descarrega(frmTeste)", "Tool(mnuX).Visible := True",
                                                 "Tool(mnuX).Enabled := False", "goDadosVor.Finaliza()"}));
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_TRUE(geral->objSCA() == host->objSCA);

    // Every cache is gone: all is fetched again.
    host->LimpaRegistro();
    geral->MDB();
    geral->ObtemCFisJur();
    geral->ObtemCEndereco();
    geral->ObtemCVeiGen();
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"objMTM.CreateQMR()", "QMR.CreateNewTrataBD()",
                               "TrataBD.InicializaInfoSistema(\"VOR\", 1)", "TrataBD.AbreZTBanco(99)",
                               "TrataBD.CreateCFisJur()", "TrataBD.CreateCEndereco()", "TrataBD.CreateCVeiGen()"}));
}

TEST_F(GeralTeste, Logoff_WhileAWindowCloses_TheDatabaseIsGoneAndItsHelperAndTheServicesAreStillThere)
{
    Loga();
    geral->DefineMDB(host->MDB);
    geral->ObtemCFisJur();
    geral->ObtemCEndereco();
    geral->ObtemCVeiGen();
    const Ref<ITrataBD> trataBD = geral->TrataBD();
    const Ref<IMensagem> mensagem = goMensagem();
    auto form = FormCarregado();
    bool fechou = false;
    form->AoDescarregar = [&] {
        fechou = true;
        host->LimpaRegistro();
        geral->MDB();
        geral->ObtemCFisJur();
        geral->ObtemCEndereco();
        geral->ObtemCVeiGen();
        EXPECT_TRUE(RegistroIgual(host->Registro(), {"TrataBD.AbreZTBanco(99)", "TrataBD.CreateCFisJur()",
                                                     "TrataBD.CreateCEndereco()", "TrataBD.CreateCVeiGen()"}));
        EXPECT_TRUE(geral->TrataBD() == trataBD);
        EXPECT_TRUE(goMensagem() == mensagem);
    };
    geral->Logoff();
    EXPECT_TRUE(fechou);
    EXPECT_FALSE(geral->TrataBD() == trataBD);
    EXPECT_FALSE(goMensagem() == mensagem);
}

TEST_F(GeralTeste, Logoff_WhileTheServicesAreReleased_MenusAreDisabledAndTheHelperIsStillThere)
{
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    host->ActBar->PoeFerramenta("bndA", "mnuX");
    Loga();
    const Ref<ITrataBD> trataBD = geral->TrataBD();
    host->LimpaRegistro();
    bool liberou = false;
    Particular()->AoLiberarServicos = [&] {
        liberou = true;
        EXPECT_EQ(host->Conta("Tool(mnuX).Enabled := False"), 1);
        EXPECT_TRUE(geral->TrataBD() == trataBD);
    };
    geral->Logoff();
    EXPECT_TRUE(liberou);
    EXPECT_FALSE(geral->TrataBD() == trataBD);
}

TEST_F(GeralTeste, Logoff_DatabaseGivenByTheHost_IsReleasedToo)
{
    geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, host->MDB, host->oAppEXE);
    geral->Logon(host->objMTM, host->objSCA, "");
    geral->Logoff();
    host->LimpaRegistro();
    geral->MDB();
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 1);
}

TEST_F(GeralTeste, Logoff_WithAuxiliaryDictionaryModule_KeepsTheDatabase)
{
    Loga();
    geral->DefineMDB(host->MDB);
    Particular()->Auxiliar = Novo<ZTPRoteirizado>();
    geral->Logoff();
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco"), 0);
}

TEST_F(GeralTeste, Logoff_WithoutUsingTheAuxiliaryModule_KeepsTheDatabaseHelper)
{
    Loga();
    Ref<ITrataBD> trataBD = geral->TrataBD();
    Particular()->UsandoAuxiliar = false;
    geral->Logoff();
    EXPECT_TRUE(geral->TrataBD() == trataBD);
}

TEST_F(GeralTeste, Logoff_BeforeParametros_RaisesNinetyOneWithItsTail)
{
    const Falha falha = FalhaLancada([&] { geral->Logoff(); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.Logoff");
}

TEST_F(GeralTeste, Logoff_ThenLogon_BuildsTheServicesAgain)
{
    Loga();
    goMensagem();
    geral->Logoff();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_EQ(host->Conta("Host.CriaMensagem()"), 1);
    EXPECT_EQ(host->Conta("Host.CriaObjGlobalVor()"), 0); // the application's, which stays
    EXPECT_EQ(host->Conta("ObjGlobalVor.InicializaSessao"), 1);
}

TEST_F(GeralTeste, Logoff_AfterLogon_LeavesWhatTheHostGaveAndTheGeneralFunctions)
{
    Loga();
    auto form = FormMostrado();
    const Ref<ICFunGen> funGen = geral->ObtemCFunGen();
    goGeral->FormAtivado(form);
    geral->Logoff();
    EXPECT_TRUE(geral->CEspecifica() == Particular());
    EXPECT_TRUE(geral->oAppEXE() == host->oAppEXE);
    EXPECT_TRUE(geral->FormMDI() == host->FormMDI);
    EXPECT_FALSE(geral->objZTP().Nada());
    EXPECT_TRUE(geral->Relatorios() == host->Relatorios);
    EXPECT_TRUE(geral->Ajuda() == host->Ajuda);
    EXPECT_TRUE(geral->ActBar == host->ActBar);
    EXPECT_TRUE(geral->cGlobal == host->cGlobal);
    EXPECT_TRUE(geral->ObjInterface == host->ObjInterface);
    EXPECT_TRUE(geral->FormAtivo() == form);
    EXPECT_TRUE(geral->ObtemCFunGen() == funGen);
    EXPECT_TRUE(goGeral.Alvo() == geral);
}

// Closing the windows.

TEST_F(GeralTeste, FecharJanelasAtivas_SeveralForms_AllCloseWithoutQuestion)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto primeiro = FormMostrado("frmUm");
    auto segundo = FormMostrado("frmDois");
    host->Tela->EmbrulhaForms = false;
    auto terceiro = FormCarregado("frmTres");
    host->LimpaRegistro();
    geral->FecharJanelasAtivas();
    EXPECT_EQ(host->Tela->NroForms(), 0);
    EXPECT_FALSE(primeiro->Carregado());
    EXPECT_FALSE(segundo->Carregado());
    EXPECT_FALSE(terceiro->Carregado());
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"Plataforma.Descarrega(frmUm)", "Plataforma.Descarrega(frmHospedeiro)",
                                         "Plataforma.Descarrega(frmDois)", "Plataforma.Descarrega(frmHospedeiro)",
                                         "Plataforma.Descarrega(frmTres)"}));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

TEST_F(GeralTeste, FecharJanelasAtivas_FormWithoutTheMember_UnloadsTheEarlierParentAgain)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    FormMostrado("frmUm");
    host->Tela->EmbrulhaForms = false;
    auto semMembro = FormCarregado("frmSem");
    semMembro->TemParent = false;
    host->LimpaRegistro();
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"Plataforma.Descarrega(frmUm)", "Plataforma.Descarrega(frmHospedeiro)",
                                         "Plataforma.Descarrega(frmSem)", "Plataforma.Descarrega(frmHospedeiro)"}));
}

TEST_F(GeralTeste, FecharJanelasAtivas_UnloadThatClosesAnotherForm_StillClosesAll)
{
    Loga();
    auto dono = FormCarregado("frmDono");
    auto filho = FormCarregado("frmFilho");
    auto ultimo = FormCarregado("frmUltimo");
    dono->AoDescarregar = [&] { filho->Descarregar(); };
    geral->FecharJanelasAtivas();
    EXPECT_EQ(host->Tela->NroForms(), 0);
    EXPECT_FALSE(ultimo->Carregado());
}

TEST_F(GeralTeste, FecharJanelasAtivas_UnloadThatFails_GoesOnWithTheNext)
{
    Loga();
    FormCarregado("frmUm");
    auto segundo = FormCarregado("frmDois");
    host->FalhaEm("Plataforma.Descarrega");
    geral->FecharJanelasAtivas();
    EXPECT_FALSE(segundo->Carregado());
}

TEST_F(GeralTeste, FecharJanelasAtivas_FormThatCannotBeRead_GoesOnWithTheNext)
{
    Loga();
    auto primeiro = FormCarregado("frmUm");
    auto segundo = FormCarregado("frmDois");
    host->FalhaEm("Plataforma.FormAberto");
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(primeiro->Carregado());
    EXPECT_FALSE(segundo->Carregado());
    host->FalhaEm("Plataforma.NroForms");
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(primeiro->Carregado());
}

TEST_F(GeralTeste, FecharJanelasAtivas_NoForms_CallsNothing)
{
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, FecharJanelasAtivas_WithoutHost_IsIgnored)
{
    InstalaHost(nullptr);
    geral->FecharJanelasAtivas();
    InstalaHost(host);
}

// Clicks.

TEST_F(GeralTeste, ClickMenu_NothingCameBack_AnswersWhetherItWasHandled)
{
    Loga();
    EXPECT_FALSE(geral->ClickMenu("mnuX"));
    Particular()->AoClicar = [&] { geral->ClickTratado = true; };
    EXPECT_TRUE(geral->ClickMenu("mnuX"));
    Particular()->AoClicar = nullptr;
    EXPECT_FALSE(geral->ClickMenu("mnuX")); // the flag is cleared at each click
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, ClickMenu_FormWithInstancing_IsShownEvenBesideOneOfItsClass)
{
    Loga();
    FormMostrado();
    auto novo = FormCarregado();
    host->LimpaRegistro();
    Particular()->FormDoClique = novo;
    geral->InstanciarFormsClickMenu = true;
    EXPECT_TRUE(geral->ClickMenu("mnuX"));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"ObjInterface.MostraJanela(frmTeste, modal=False)"}));
    EXPECT_TRUE(novo->Visible());
    EXPECT_FALSE(geral->InstanciarFormsClickMenu); // for one show only
    EXPECT_FALSE(geral->ClickTratado);
    Particular()->FormDoClique = nullptr;
}

TEST_F(GeralTeste, ClickMenu_FormWithoutInstancing_BringsTheVisibleOneToTheFront)
{
    Loga();
    auto visivel = FormMostrado();
    auto novo = FormCarregado();
    host->LimpaRegistro();
    Particular()->FormDoClique = novo;
    EXPECT_TRUE(geral->ClickMenu("mnuX"));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"frmTeste.SetFocus()"}));
    EXPECT_FALSE(novo->Visible());
    Particular()->FormDoClique = nullptr;
}

TEST_F(GeralTeste, ClickMenu_Fails_GoesOnWithItsTail)
{
    Loga();
    Particular()->AoClicar = [] { throw Falha(6); };
    Falha falha = FalhaLancada([&] { geral->ClickMenu("mnuX"); });
    EXPECT_EQ(falha.Numero, 6);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.ClickMenu");

    Particular()->AoClicar = nullptr;
    Particular()->FormDoClique = FormCarregado();
    host->FalhaEm("ObjInterface.MostraJanela", 1, 51, "Sem janela");
    falha = FalhaLancada([&] { geral->ClickMenu("mnuX"); });
    EXPECT_EQ(falha.Fonte, "ObjInterface.MostraJanela < Geral.ShowForm < Geral.ShowFormNoInstance < Geral.ClickMenu");
    Particular()->FormDoClique = nullptr;
}

TEST_F(GeralTeste, ClickMenu_BeforeParametros_RaisesNinetyOneWithItsTail)
{
    const Falha falha = FalhaLancada([&] { geral->ClickMenu("mnuModVOREquiptos"); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.ClickMenu");
}

TEST_F(GeralTeste, ClickMenu_ShellEndedMeanwhile_IsNoCrash)
{
    Loga();
    Particular()->AoClicar = [&] { geral->Encerra(); };
    EXPECT_FALSE(geral->ClickMenu("mnuX"));
}

TEST_F(GeralTeste, ClickMenu_ShellLetGoMeanwhile_EndsAfterTheClick)
{
    Loga();
    auto particular = Particular();
    particular->AoClicar = [&] {
        shell = nullptr;
        geral = nullptr;
        EXPECT_EQ(particular->VezesFinalizada, 0);
    };
    EXPECT_FALSE(geral.Ponteiro()->ClickMenu("mnuX"));
    EXPECT_EQ(particular->VezesFinalizada, 1);
    particular->AoClicar = nullptr;
}

// Tools.

TEST_F(GeralTeste, HabilitarItem_BeforeLogon_IsFalseWithoutTouchingTheModule)
{
    Parametros();
    host->LimpaRegistro();
    Particular()->AoHabilitarItem = [](const std::string &) {
        ADD_FAILURE() << "the module was asked";
        return true;
    };
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, HabilitarItem_NobodyLoggedOn_IsFalseWithoutTouchingTheModule)
{
    Loga();
    host->objSCA->UsuarioLogado = false;
    Particular()->AoHabilitarItem = [](const std::string &) {
        ADD_FAILURE() << "the module was asked";
        return true;
    };
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objSCA.Logado() -> False"}));
}

TEST_F(GeralTeste, HabilitarItem_LoggedOn_AsksTheModuleAndThenTellsTheHost)
{
    Loga();
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"objSCA.Logado() -> True", "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> True",
                               "cGlobal.MontaEstruturaMenus(\"mnuModVOREquiptos\", \"ZTAVOREQUIP\")"}));
}

TEST_F(GeralTeste, HabilitarItem_Denied_TellsTheHostAllTheSame)
{
    Loga();
    host->objSCA->Nega("VOR-EQP-CS", "");
    EXPECT_FALSE(geral->HabilitarItem("mnuModNABEquiptos"));
    EXPECT_EQ(host->Conta("cGlobal.MontaEstruturaMenus(\"mnuModNABEquiptos\", \"ZTAVOREQUIP\")"), 1);
}

TEST_F(GeralTeste, HabilitarItem_HostThatCannotBeTold_ChangesNothingOfTheAnswer)
{
    Loga();
    host->FalhaEm("cGlobal.MontaEstruturaMenus");
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    geral->cGlobal = nullptr;
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    geral->cGlobal = Novo<GlobalSemMembros>();
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
}

TEST_F(GeralTeste, HabilitarItem_AnythingFails_IsFalseWithoutError)
{
    Loga();
    host->FalhaEm("objSCA.Logado");
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    host->FalhaEm("objSCA.PossuiPerm2");
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_EQ(host->Conta("cGlobal.MontaEstruturaMenus"), 1);
}

TEST_F(GeralTeste, HabilitarItem_AfterLogoff_DependsOnTheAccessControlAlone)
{
    Loga();
    geral->Logoff();
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    host->objSCA->UsuarioLogado = false;
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
}

TEST_F(GeralTeste, TemPermissao_WithControl_ShowsOrHidesItByTheAnswer)
{
    Loga();
    auto form = FormCarregado();
    Ref<IControle> lblTexto = form->lblTexto;
    host->objSCA->Nega("VOR-EQP-CS", "E");
    EXPECT_FALSE(geral->TemPermissao("NAB", "VOR-EQP-CS", "E", lblTexto));
    EXPECT_FALSE(lblTexto->Visible());
    EXPECT_TRUE(geral->TemPermissao("NAB", "VOR-EQP-CS", "A", lblTexto));
    EXPECT_TRUE(lblTexto->Visible());
    EXPECT_EQ(host->Conta("objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> False"), 1);
}

TEST_F(GeralTeste, TemPermissao_Fails_PassesTheFaultUnchanged)
{
    EXPECT_EQ(FalhaLancada([&] { geral->TemPermissao("NAB", "X", "", nullptr); }).Numero, 91);
    Loga();
    host->FalhaEm("objSCA.PossuiPerm2", 1, 70, "Negado");
    const Falha falha = FalhaLancada([&] { geral->TemPermissao("NAB", "X", "", nullptr); });
    EXPECT_EQ(falha.Numero, 70);
    EXPECT_EQ(falha.Fonte, "objSCA.PossuiPerm2");
}

// Database.

TEST_F(GeralTeste, TrataBD_OnFirstRead_IsBuiltFromTheSessionAndKept)
{
    Loga();
    Ref<ITrataBD> primeiro = geral->TrataBD();
    EXPECT_TRUE(geral->TrataBD() == primeiro);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objMTM.CreateQMR()", "QMR.CreateNewTrataBD()",
                                                 "TrataBD.InicializaInfoSistema(\"VOR\", 1)"}));
}

TEST_F(GeralTeste, TrataBD_AnyStepThatFails_PassesTheFaultAndIsTriedAgain)
{
    Loga();
    for (const char *passo : {"objMTM.CreateQMR", "QMR.CreateNewTrataBD", "TrataBD.InicializaInfoSistema"}) {
        host->FalhaEm(passo, 1, 1004, "Falhou");
        const Falha falha = FalhaLancada([&] { geral->TrataBD(); });
        EXPECT_EQ(falha.Numero, 1004);
        EXPECT_EQ(falha.Fonte, passo);
    }
    host->LimpaRegistro();
    geral->TrataBD();
    EXPECT_EQ(host->Conta("TrataBD.InicializaInfoSistema(\"VOR\", 1)"), 1);
}

TEST_F(GeralTeste, TrataBD_BeforeLogon_RaisesNinetyOne)
{
    Parametros();
    EXPECT_EQ(FalhaLancada([&] { geral->TrataBD(); }).Numero, 91);
}

TEST_F(GeralTeste, MDB_NoneGiven_OpensOnFirstReadAndIsKept)
{
    Loga();
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 1);
}

TEST_F(GeralTeste, MDB_GivenByTheHost_Wins)
{
    geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, host->MDB, host->oAppEXE);
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(host->Conta("TrataBD"), 0);
}

TEST_F(GeralTeste, MDB_OpeningThatGivesNothing_IsNothingAndTriedAtEachRead)
{
    Loga();
    host->objMTM->AbreBanco = false;
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 2);
}

TEST_F(GeralTeste, MDB_WithAuxiliaryDictionaryModule_IsNotOpened)
{
    Loga();
    Particular()->Auxiliar = Novo<ZTPRoteirizado>();
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_EQ(host->Conta("TrataBD"), 0);
}

TEST_F(GeralTeste, MDB_Written_IsWhatIsRead)
{
    Loga();
    geral->DefineMDB(host->MDB);
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, HostFactories_Twice_AreAskedOnce)
{
    Loga();
    EXPECT_TRUE(geral->ObtemCFisJur() == geral->ObtemCFisJur());
    EXPECT_TRUE(geral->ObtemCEndereco() == geral->ObtemCEndereco());
    EXPECT_TRUE(geral->ObtemCVeiGen() == geral->ObtemCVeiGen());
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"TrataBD.Create"}),
                              {"TrataBD.CreateCFisJur()", "TrataBD.CreateCEndereco()", "TrataBD.CreateCVeiGen()"}));
    EXPECT_EQ(geral->ObtemCFisJur()->NomeTipo(), "CFisJur");
    EXPECT_EQ(geral->ObtemCEndereco()->NomeTipo(), "CEndereco");
    EXPECT_EQ(geral->ObtemCVeiGen()->NomeTipo(), "CVeiGen");
}

// Windows.

// Interface services that keep what they were given.
class InterfaceAnotada : public IObjInterface {
  public:
    std::string_view NomeTipo() const override { return "ObjInterface"; }
    std::int16_t Modal = 7;
    std::int16_t Depurar = 7;
    Ref<IForm> Dono;
    Ref<Objeto> FormClickNaEntrada;
    bool Falhando = false;

    void MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t depurar,
                      Ref<Objeto> &formClick) override
    {
        Modal = modal;
        Depurar = depurar;
        Dono = dono;
        FormClickNaEntrada = formClick;
        formClick = form;
        if (Falhando) {
            throw Falha(51);
        }
    }
    Ref<ITrataBD> pTrataBD() override { return nullptr; }
};

TEST_F(GeralTeste, ShowForm_NotModal_ShowsAndForgetsInstancing)
{
    Loga();
    geral->InstanciarFormsClickMenu = true;
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->ShowForm(form, false);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"ObjInterface.MostraJanela(frmTeste, modal=False)"}));
    EXPECT_TRUE(form->Visible());
    EXPECT_FALSE(geral->InstanciarFormsClickMenu);
}

TEST_F(GeralTeste, ShowForm_ModalWhileDebugging_HandsBothFlagsOn)
{
    Loga();
    geral->Depurar = true;
    auto form = FormCarregado();
    host->AoMostrarModal("frmTeste", [](const Ref<IForm> &mostrada) { Plataforma()->Descarrega(mostrada); });
    geral->ShowForm(form, true);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmTeste, modal=True, depurar=True)"), 1);
}

TEST_F(GeralTeste, ShowForm_Fails_GoesOnWithItsTailAndKeepsInstancing)
{
    Loga();
    geral->InstanciarFormsClickMenu = true;
    host->FalhaEm("ObjInterface.MostraJanela", 1, 51, "Sem janela");
    const Falha falha = FalhaLancada([&] { geral->ShowForm(FormCarregado(), false); });
    EXPECT_EQ(falha.Numero, 51);
    EXPECT_EQ(falha.Descricao, "Sem janela");
    EXPECT_EQ(falha.Fonte, "ObjInterface.MostraJanela < Geral.ShowForm");
    EXPECT_TRUE(geral->InstanciarFormsClickMenu);
}

TEST_F(GeralTeste, ShowForm_HostFailsAfterFillingTheClickedForm_ItStays)
{
    Loga();
    auto objInterface = Novo<InterfaceAnotada>();
    geral->ObjInterface = objInterface;
    auto form = FormCarregado();
    objInterface->Falhando = true;
    EXPECT_EQ(FalhaLancada([&] { geral->ShowForm(form, false); }).Numero, 51);
    objInterface->Falhando = false;
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(objInterface->FormClickNaEntrada == form);
}

TEST_F(GeralTeste, ShowForm_WithoutInterfaceServices_RaisesNinetyOneWithItsTail)
{
    Loga();
    geral->ObjInterface = nullptr;
    const Falha falha = FalhaLancada([&] { geral->ShowForm(FormCarregado(), false); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.ShowForm");
}

TEST_F(GeralTeste, ShowForm_Flags_TravelAsZeroAndMinusOne)
{
    Loga();
    auto objInterface = Novo<InterfaceAnotada>();
    geral->ObjInterface = objInterface;
    auto form = FormCarregado();
    geral->ShowForm(form, false);
    EXPECT_EQ(objInterface->Modal, 0);
    EXPECT_EQ(objInterface->Depurar, 0);
    geral->Depurar = true;
    geral->ShowForm(form, true);
    EXPECT_EQ(objInterface->Modal, -1);
    EXPECT_EQ(objInterface->Depurar, -1);
    EXPECT_TRUE(objInterface->Dono.Nada());
}

TEST_F(GeralTeste, FormClick_AfterTheShows_IsClearedByShowFormAndKeptByFormShow)
{
    Loga();
    auto objInterface = Novo<InterfaceAnotada>();
    geral->ObjInterface = objInterface;
    auto form = FormCarregado();
    geral->FormShow(form, false, nullptr);
    geral->FormShow(form, false, form);
    EXPECT_TRUE(objInterface->FormClickNaEntrada == form); // as the first show left it
    EXPECT_TRUE(objInterface->Dono == form);
    geral->ShowForm(form, false);
    EXPECT_TRUE(objInterface->FormClickNaEntrada == form);
    geral->ShowForm(form, false);
    EXPECT_TRUE(objInterface->FormClickNaEntrada.Nada());

    // A click clears it too, and so does finding a visible form.
    geral->FormShow(form, false, nullptr);
    geral->ClickMenu("mnuX");
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(objInterface->FormClickNaEntrada.Nada());
    form->DefineVisible(true);
    geral->ShowFormNoInstance(form);
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(objInterface->FormClickNaEntrada.Nada());
}

TEST_F(GeralTeste, ShowFormNoInstance_NoneOfItsClass_ShowsIt)
{
    Loga();
    FormMostrado("frmOutro");
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->ShowFormNoInstance(form);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"ObjInterface.MostraJanela(frmTeste, modal=False)"}));
}

TEST_F(GeralTeste, ShowFormNoInstance_HiddenOneOfItsClass_DoesNotCount)
{
    Loga();
    FormCarregado();
    auto form = Novo<FormDeTeste>();
    geral->ShowFormNoInstance(form);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmTeste, modal=False)"), 1);
    EXPECT_TRUE(form->Visible());
}

TEST_F(GeralTeste, ShowFormNoInstance_HiddenOneBeforeAVisibleOne_IsPassedOver)
{
    Loga();
    FormCarregado();
    auto visivel = FormMostrado();
    auto form = Novo<FormDeTeste>();
    geral->ShowFormNoInstance(form);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"frmTeste.SetFocus()"}));
    EXPECT_FALSE(form->Visible());
}

TEST_F(GeralTeste, ShowFormNoInstance_VisibleWrappedOneInAnotherCase_IsBroughtToTheFront)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto visivel = FormMostrado("FRMTeste");
    auto form = Novo<FormDeTeste>();
    geral->InstanciarFormsClickMenu = true;
    geral->ShowFormNoInstance(form);
    EXPECT_TRUE(geral->InstanciarFormsClickMenu); // nothing was shown
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"frmHospedeiro.ZOrder(0)", "FRMTeste.SetFocus()"}));
    EXPECT_FALSE(form->Visible());
}

TEST_F(GeralTeste, ShowFormNoInstance_DisabledMatch_ComesToTheFrontWithoutFocus)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto visivel = FormMostrado();
    visivel->DefineEnabled(false);
    geral->ShowFormNoInstance(Novo<FormDeTeste>());
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"frmHospedeiro.ZOrder(0)"}));
}

TEST_F(GeralTeste, ShowFormNoInstance_SeveralMatches_TakesTheFirst)
{
    Loga();
    auto primeiro = FormMostrado();
    primeiro->DefineEnabled(false);
    FormMostrado();
    geral->ShowFormNoInstance(Novo<FormDeTeste>());
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, ShowFormNoInstance_Fails_GoesOnWithItsTail)
{
    Loga();
    Falha falha = FalhaLancada([&] { geral->ShowFormNoInstance(nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.ShowFormNoInstance");

    auto visivel = FormMostrado();
    visivel->TemParent = false; // the member that this form lacks
    falha = FalhaLancada([&] { geral->ShowFormNoInstance(Novo<FormDeTeste>()); });
    EXPECT_EQ(falha.Numero, 438);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.ShowFormNoInstance");
    visivel->TemParent = true;

    host->FalhaEm("Plataforma.FormAberto", 1, 9, "Sumiu");
    falha = FalhaLancada([&] { geral->ShowFormNoInstance(Novo<FormDeTeste>()); });
    EXPECT_EQ(falha.Fonte, "Plataforma.FormAberto < Geral.ShowFormNoInstance");
}

TEST_F(GeralTeste, FormShow_NotModal_RunsItsStepsInOrder)
{
    Loga();
    auto form = FormCarregado();
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    host->LimpaRegistro();
    geral->InstanciarFormsClickMenu = true;
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"FormMDI.FecharEnviaRecebe(True)", "Plataforma.Ponteiro := 0",
                               "Plataforma.ProcessaMensagens()", "ObjInterface.MostraJanela(frmTeste, modal=False)"}));
    EXPECT_TRUE(geral->InstanciarFormsClickMenu); // only ShowForm uses it up
}

TEST_F(GeralTeste, FormShow_ModalWithOwner_HandsBothOn)
{
    Loga();
    auto dono = FormMostrado("frmDono");
    auto form = FormCarregado();
    host->AoMostrarModal("frmTeste", [](const Ref<IForm> &mostrada) { Plataforma()->Descarrega(mostrada); });
    geral->FormShow(form, true, dono);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmTeste, modal=True, dono=frmDono)"), 1);
}

TEST_F(GeralTeste, FormShow_SendAndReceiveWindowThatFails_IsIgnored)
{
    Loga();
    host->FalhaEm("FormMDI.FecharEnviaRecebe");
    auto form = FormCarregado();
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(form->Visible());
}

TEST_F(GeralTeste, FormShow_AnotherClickInTheQueue_ArrivesBeforeTheWindow)
{
    Loga();
    auto form = FormCarregado();
    host->Tela->Posta([&] { geral->ClickMenu("mnuX"); });
    Particular()->AoClicar = [&] {
        EXPECT_FALSE(form->Visible());
        geral->ClickTratado = true;
    };
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(geral->ClickTratado);
    EXPECT_TRUE(form->Visible());
}

TEST_F(GeralTeste, FormShow_ShellEndedWhileTheQueueRuns_RaisesNinetyOneWithItsTail)
{
    Loga();
    auto form = FormCarregado();
    host->Tela->Posta([&] { geral->Encerra(); });
    const Falha falha = FalhaLancada([&] { geral->FormShow(form, false, nullptr); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < Geral.FormShow");
}

TEST_F(GeralTeste, FormShow_AnyStepThatFails_GoesOnWithItsTail)
{
    Loga();
    for (const char *passo : {"Plataforma.Ponteiro", "Plataforma.ProcessaMensagens", "ObjInterface.MostraJanela"}) {
        host->FalhaEm(passo, 1, 51, "Falhou");
        const Falha falha = FalhaLancada([&] { geral->FormShow(FormCarregado(), false, nullptr); });
        EXPECT_EQ(falha.Numero, 51);
        EXPECT_EQ(falha.Descricao, "Falhou");
        EXPECT_EQ(falha.Fonte, std::string(passo) + " < Geral.FormShow");
    }
}

TEST_F(GeralTeste, CentralizaForm_OnScreen_UsesTheScreensSize)
{
    Loga();
    auto form = FormCarregado(); // 6000 by 3001
    std::vector<std::pair<std::int32_t, std::int32_t>> passos;
    const Conexao mudou = form->Mudou().liga([&] { passos.emplace_back(form->Left(), form->Top()); });
    geral->CentralizaForm(form, true);
    EXPECT_EQ(passos, (std::vector<std::pair<std::int32_t, std::int32_t>>{{4680, 0}, {4680, 4260}}));
    EXPECT_EQ(form->Left(), 4680); // (15360 - 6000) / 2
    EXPECT_EQ(form->Top(), 4260);  // (11520 - 3001) / 2 = 4259.5, to even
    EXPECT_EQ(host->Conta("FormMDI."), 0);
}

TEST_F(GeralTeste, CentralizaForm_OnScreenAsMDIChild_UsesTheScreenAllTheSame)
{
    Loga();
    auto form = FormCarregado();
    form->Filha = true;
    geral->CentralizaForm(form, true);
    EXPECT_EQ(form->Left(), 4680);
}

TEST_F(GeralTeste, CentralizaForm_MDIChild_UsesTheMainFormsClientArea)
{
    Loga();
    auto form = FormCarregado();
    form->Filha = true;
    geral->CentralizaForm(form, false);
    EXPECT_EQ(form->Left(), 3000); // (12000 - 6000) / 2
    EXPECT_EQ(form->Top(), 2500);  // (8000 - 3001) / 2 = 2499.5, to even
}

TEST_F(GeralTeste, CentralizaForm_OtherForm_CentresOverTheMainForm)
{
    Loga();
    auto form = FormCarregado();
    geral->CentralizaForm(form, false);
    EXPECT_EQ(form->Left(), 3720); // 600 + (12240 - 6000) / 2
    EXPECT_EQ(form->Top(), 3300);  // 300 + (9000 - 3001) / 2 = 3299.5, to even
}

TEST_F(GeralTeste, CentralizaForm_FormLargerThanItsPlace_GoesNegative)
{
    Loga();
    auto form = FormCarregado();
    form->DefineWidth(16000);
    geral->CentralizaForm(form, true);
    EXPECT_EQ(form->Left(), -320);
}

TEST_F(GeralTeste, CentralizaForm_BeforeAMainForm_RaisesWithATailWithoutClass)
{
    auto form = FormCarregado();
    const Falha falha = FalhaLancada([&] { geral->CentralizaForm(form, false); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CentralizaForm");
    form->Filha = true;
    EXPECT_EQ(FalhaLancada([&] { geral->CentralizaForm(form, false); }).Fonte, "ZTAVOREQUIP < CentralizaForm");
    EXPECT_EQ(FalhaLancada([&] { geral->CentralizaForm(nullptr, true); }).Fonte, "ZTAVOREQUIP < CentralizaForm");
}

TEST_F(GeralTeste, CentralizaForm_HostThatFails_GoesOnWithItsTail)
{
    Loga();
    host->FalhaEm("FormMDI.Width", 1, 51, "Falhou");
    const Falha falha = FalhaLancada([&] { geral->CentralizaForm(FormCarregado(), false); });
    EXPECT_EQ(falha.Numero, 51);
    EXPECT_EQ(falha.Fonte, "FormMDI.Width < CentralizaForm");
}

TEST_F(GeralTeste, DefineTitulo_FormWithoutParent_WritesItsWindowOnly)
{
    Loga();
    auto form = FormMostrado();
    geral->DefineTitulo(form, "Equipamentos - Ativos");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.DefineTextoJanela(frmTeste, \"Equipamentos - Ativos\")"}));
    EXPECT_EQ(form->Caption(), "Teste");
}

TEST_F(GeralTeste, DefineTitulo_WrappedForm_WritesBoth)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto form = FormMostrado();
    geral->DefineTitulo(form, "Título");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.DefineTextoJanela(frmTeste, \"Título\")",
                                                 "Plataforma.DefineTextoJanela(frmHospedeiro, \"Título\")"}));
}

TEST_F(GeralTeste, DefineTitulo_FormWithoutTheMember_IsWrittenWithoutError)
{
    Loga();
    auto form = FormMostrado();
    form->TemParent = false;
    geral->DefineTitulo(form, "Título");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.DefineTextoJanela(frmTeste, \"Título\")"}));
}

TEST_F(GeralTeste, DefineTitulo_FirstWriteThatFails_WritesTheParentAllTheSame)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto form = FormMostrado();
    host->FalhaEm("Plataforma.DefineTextoJanela");
    geral->DefineTitulo(form, "Título");
    EXPECT_EQ(host->Tela->TextoJanela(form), "Teste");
    EXPECT_EQ(host->Conta("Plataforma.DefineTextoJanela(frmHospedeiro, \"Título\")"), 1);
    geral->DefineTitulo(nullptr, "Título");
}

// Active form.

TEST_F(GeralTeste, FormAtivado_WithGlobalServices_TellsThemAndKeepsTheForm)
{
    Loga();
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->FormAtivado(form);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"cGlobal.gsubSetaAutoModuloAtivo(\"ZTAVOREQUIP\")"}));
    EXPECT_TRUE(geral->FormAtivo() == form);
}

TEST_F(GeralTeste, FormAtivado_WithoutGlobalServices_KeepsTheForm)
{
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->FormAtivado(form);
    EXPECT_TRUE(geral->FormAtivo() == form);
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, FormAtivado_GlobalServicesThatFail_EndTheProcedureSilently)
{
    Loga();
    host->FalhaEm("cGlobal.gsubSetaAutoModuloAtivo");
    geral->FormAtivado(FormCarregado());
    EXPECT_TRUE(geral->FormAtivo().Nada());
    geral->cGlobal = Novo<GlobalSemMembros>();
    geral->FormAtivado(FormCarregado());
    EXPECT_TRUE(geral->FormAtivo().Nada());
}

// Send and receive window.

TEST_F(GeralTeste, AbreEnviaRecebe_WithMessage_SetsItAndThenOpens)
{
    Loga();
    geral->AbreEnviaRecebe("Enviando...");
    geral->FechaEnviaRecebe();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"FormMDI.MsgEnviaRecebe(\"Enviando...\")",
                                                 "FormMDI.AbrirEnviaRecebe()", "FormMDI.FecharEnviaRecebe(True)"}));
}

TEST_F(GeralTeste, AbreEnviaRecebe_MessageThatFails_OpensAllTheSame)
{
    Loga();
    host->FalhaEm("FormMDI.MsgEnviaRecebe");
    host->FalhaEm("FormMDI.AbrirEnviaRecebe");
    host->FalhaEm("FormMDI.FecharEnviaRecebe");
    geral->AbreEnviaRecebe("X");
    geral->FechaEnviaRecebe();
    EXPECT_EQ(host->FalhasDisparadas(), 3);
}

TEST_F(GeralTeste, AbreEnviaRecebe_WithoutMainForm_IsIgnored)
{
    geral->AbreEnviaRecebe("X");
    geral->FechaEnviaRecebe();
    EXPECT_TRUE(host->Registro().empty());
}

// Sibling modules, general functions, help.

TEST_F(GeralTeste, ObtemAutoModulo_ByTheClassOfTheGlobalServices_TakesOneOfTwoRoads)
{
    Loga();
    host->cGlobal->Modulos["ZTAVORFOTO"] = host->FormMDI->ZTP;
    for (const char *classe : {"CAutoModulos", "cautomodulos", "CAUTOMODULOS"}) {
        host->cGlobal->Classe = classe;
        EXPECT_TRUE(geral->ObtemAutoModulo("ZTAVORFOTO") == host->FormMDI->ZTP);
    }
    EXPECT_EQ(host->Conta("cGlobal.PegaAutoModulo(\"ZTAVORFOTO\")"), 3);
    host->LimpaRegistro();
    for (const char *classe : {"cGlobal", "CAutoModulo", "CAutoModulos2"}) {
        host->cGlobal->Classe = classe;
        EXPECT_TRUE(geral->ObtemAutoModulo("ZTAVORFOTO") == host->FormMDI->ZTP);
    }
    EXPECT_EQ(host->Conta("cGlobal.gfunRetornaAutoModulo(\"ZTAVORFOTO\")"), 3);
    EXPECT_EQ(host->Conta("cGlobal.PegaAutoModulo"), 0);
    host->cGlobal->Modulos.clear();
}

TEST_F(GeralTeste, ObtemAutoModulo_Fails_PassesTheFaultUnchanged)
{
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemAutoModulo("X"); }).Numero, 91);
    Loga();
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemAutoModulo("X"); }).Fonte, "cGlobal");
    geral->cGlobal = Novo<GlobalSemMembros>();
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemAutoModulo("X"); }).Numero, 438);
}

TEST_F(GeralTeste, ObtemCFunGen_WithDescriptor_IsCreatedOnceAndTitled)
{
    Loga();
    Ref<ICFunGen> primeira = geral->ObtemCFunGen();
    EXPECT_TRUE(geral->ObtemCFunGen() == primeira);
    EXPECT_EQ(host->Conta("Host.CriaCFunGen()"), 1);
    EXPECT_EQ(host->Conta("CFunGen.SetaTituloAvisos(\"Autuação Eletrônica - Registro de Equipamentos\")"), 2);
    EXPECT_EQ(host->Conta("CFunGen.AppTitle"), 0);
}

TEST_F(GeralTeste, ObtemCFunGen_WithoutDescription_UsesTheComponentsTitle)
{
    Loga();
    host->Tela->App->m_Descricao = "";
    geral->ObtemCFunGen();
    EXPECT_EQ(host->Conta("CFunGen.SetaTituloAvisos(\"Autuação Eletrônica - Equipamentos\")"), 1);
}

TEST_F(GeralTeste, ObtemCFunGen_WithoutDescriptor_UsesTheComponentsTitleForTheHosts)
{
    geral->ObtemCFunGen();
    EXPECT_EQ(host->Conta("CFunGen.SetaTituloAvisos(\"Equipamentos - Registro de Equipamentos\")"), 1);
    host->Tela->App->m_Descricao = "";
    geral->ObtemCFunGen();
    EXPECT_EQ(host->Conta("CFunGen.SetaTituloAvisos(\"Equipamentos - Equipamentos\")"), 1);
}

TEST_F(GeralTeste, ObtemCFunGenComAppTitle_WithDescriptor_WritesBothTitles)
{
    Loga();
    Ref<ICFunGen> funGen = geral->ObtemCFunGenComAppTitle();
    EXPECT_TRUE(funGen == geral->ObtemCFunGen());
    EXPECT_EQ(host->Conta("CFunGen.AppTitle := \"Autuação Eletrônica - Equipamentos\""), 1);
}

TEST_F(GeralTeste, ObtemCFunGenComAppTitle_WithoutDescriptor_WritesTheComponentsTitle)
{
    geral->ObtemCFunGenComAppTitle();
    EXPECT_EQ(host->Conta("CFunGen.AppTitle := \"Equipamentos\""), 1);
}

TEST_F(GeralTeste, TrataAjuda_WithHelpService_GivesItTheComponentAndTheTopic)
{
    Loga();
    geral->TrataAjuda("equipamentos");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Ajuda.TrataAjuda2(App, \"equipamentos\")"}));
}

TEST_F(GeralTeste, TrataAjuda_WithoutHelpService_DoesNothing)
{
    geral->TrataAjuda("equipamentos");
    EXPECT_TRUE(host->Registro().empty());
}

// Transactions of the module.

TEST_F(GeralTeste, ObtemTransacao_Unknown_TriesTheCodeAndThenWithItsPrefix)
{
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("ab-c").Nada());
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"ABC", "CABC"}));
}

TEST_F(GeralTeste, ObtemTransacao_UnknownCodeThatBeginsWithC_IsTriedOnce)
{
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("cab").Nada());
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"CAB"}));
}

TEST_F(GeralTeste, ObtemTransacao_FewerThanTwoCharacters_IsNothingWithoutACall)
{
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("").Nada());
    EXPECT_TRUE(geral->ObtemTransacao("A").Nada());
    EXPECT_TRUE(geral->ObtemTransacao("ã").Nada()); // one character, two bytes
    EXPECT_TRUE(Particular()->CodigosPedidos.empty());
}

TEST_F(GeralTeste, ObtemTransacao_OnlyHyphens_TriesWhatRemains)
{
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("--").Nada());
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"", "C"}));
}

TEST_F(GeralTeste, ObtemTransacao_Known_IsFoundAtTheFirstOrSecondTry)
{
    Parametros();
    auto transacao = Novo<TransacaoRoteirizada>();
    Particular()->Transacoes["CABC"] = transacao;
    EXPECT_TRUE(geral->ObtemTransacao("ab-c") == transacao);
    EXPECT_TRUE(geral->ObtemTransacao("c-abc") == transacao);
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"ABC", "CABC", "CABC"}));
}

TEST_F(GeralTeste, ObtemTransacao_BeforeParametros_CreatesASideForThisCall)
{
    geral->ObtemTransacao("AB");
    EXPECT_EQ(shell->EspecificasCriadas, 1);
    EXPECT_TRUE(geral->CEspecifica().Nada());
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"AB", "CAB"}));
    geral->ObtemTransacao("A");
    EXPECT_EQ(shell->EspecificasCriadas, 2); // created before the length is looked at
}

TEST_F(GeralTeste, ObtemTransacao_OfThisModule_IsAlwaysNothing)
{
    geral = Novo<Geral>();
    EXPECT_TRUE(geral->ObtemTransacao("CABC").Nada());
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("ABC").Nada());
}

TEST_F(GeralTeste, ObtemTransacao2_Called_RaisesBeforeAnyOtherEffect)
{
    Ref<ITransacao> origem = Novo<TransacaoRoteirizada>();
    const Ref<ITransacao> mesma = origem;
    const Falha falha = FalhaLancada([&] { geral->ObtemTransacao2("ABC", origem); });
    EXPECT_EQ(falha.Numero, -1);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP.Geral.ObtemTransacao2");
    EXPECT_EQ(falha.Descricao, "Método depreciado. Não utilizar.");
    EXPECT_TRUE(origem == mesma);
    EXPECT_EQ(shell->EspecificasCriadas, 0);
    EXPECT_TRUE(host->Registro().empty());
}

CamposTransacao Campos(const std::vector<std::pair<std::string, std::string>> &nomesEValores)
{
    auto campos = Novo<Colecao<Ref<CampoTransacao>>>();
    for (const auto &[nome, valor] : nomesEValores) {
        auto campo = Novo<CampoTransacao>();
        campo->Nome = nome;
        campo->Valor = valor;
        campos->Add(campo, nome);
    }
    return campos;
}

Ref<TransacaoRoteirizada> TransacaoCompleta()
{
    auto transacao = Novo<TransacaoRoteirizada>();
    transacao->Window = "WIN";
    transacao->Transacao = "ABC1";
    transacao->Sistema = "VOR";
    transacao->Job = "JOB1";
    transacao->Programa = "PGM1";
    transacao->GCI = true;
    transacao->Java = true;
    transacao->Entrada = Campos({{"PLACA", "IAA0001"}, {"UF", "RS"}});
    transacao->Saida = Campos({{"NOME", ""}});
    return transacao;
}

TEST_F(GeralTeste, ObtemTransacao3_Known_CopiesTheDefinitionAndSharesTheFields)
{
    Parametros();
    auto transacao = TransacaoCompleta();
    Particular()->Transacoes["CABC"] = transacao;
    auto destino = Novo<TransacaoRoteirizada>();
    Ref<ITransacao> origem = destino;
    geral->ObtemTransacao3("abc", origem);
    EXPECT_TRUE(origem == destino);
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_EQ(destino->Transacao, "ABC1");
    EXPECT_EQ(destino->Sistema, "VOR");
    EXPECT_EQ(destino->Job, "JOB1");
    EXPECT_EQ(destino->Programa, "PGM1");
    EXPECT_TRUE(destino->GCI);
    EXPECT_TRUE(destino->Java);
    ASSERT_EQ(destino->Entrada->Count(), 2);
    EXPECT_FALSE(destino->Entrada == transacao->Entrada);
    EXPECT_TRUE(destino->Entrada->Item(1) == transacao->Entrada->Item(1));
    EXPECT_TRUE(destino->Entrada->Item("uf") == transacao->Entrada->Item("UF"));
    ASSERT_EQ(destino->Saida->Count(), 1);
    EXPECT_TRUE(destino->Saida->Item("NOME") == transacao->Saida->Item(1));
}

TEST_F(GeralTeste, ObtemTransacao3_Unknown_LeavesTheObjectAsItWas)
{
    Parametros();
    auto destino = TransacaoCompleta();
    const CamposTransacao entrada = destino->Entrada;
    Ref<ITransacao> origem = destino;
    geral->ObtemTransacao3("XYZ", origem);
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_TRUE(destino->GCI);
    EXPECT_TRUE(destino->Entrada == entrada);
}

TEST_F(GeralTeste, ObtemTransacao3_WithoutFields_KeepsThoseOfTheObject)
{
    Parametros();
    auto transacao = Novo<TransacaoRoteirizada>();
    transacao->Saida = Campos({});
    Particular()->Transacoes["CABC"] = transacao;
    auto destino = TransacaoCompleta();
    Ref<ITransacao> origem = destino;
    geral->ObtemTransacao3("CABC", origem);
    EXPECT_EQ(destino->Entrada->Count(), 2);
    EXPECT_EQ(destino->Saida->Count(), 0);
    EXPECT_EQ(destino->Window, "");
    EXPECT_FALSE(destino->GCI);
}

// A transaction object that lacks most members.
class TransacaoPobre : public ITransacao {
  public:
    std::string_view NomeTipo() const override { return "TransacaoPobre"; }
    std::string sWindow() const override { return "WIN"; }
    std::string sJob() const override { return "JOB"; }
    CamposTransacao Cin() const override { return Entrada; }
    CamposTransacao Cout() const override { return nullptr; }

    CamposTransacao Entrada;
};

// A transaction object that refuses every member and keeps the order in which they were written.
class TransacaoAnotada : public ITransacao {
  public:
    std::string_view NomeTipo() const override { return "TransacaoAnotada"; }
    Linhas Escritas;

    void DefinesWindow(const std::string &) override { Anota("sWindow"); }
    void DefinesTransacao(const std::string &) override { Anota("sTransacao"); }
    void DefinesSistema(const std::string &) override { Anota("sSistema"); }
    void DefinesJob(const std::string &) override { Anota("sJob"); }
    void DefinesPrograma(const std::string &) override { Anota("sPrograma"); }
    void DefinebGCI(bool) override { Anota("bGCI"); }
    void DefineSisJava(bool) override { Anota("SisJava"); }
    void DefineCin(const CamposTransacao &) override { Escritas.push_back("Cin"); }
    void DefineCout(const CamposTransacao &) override { Anota("Cout"); }

  private:
    void Anota(const char *membro)
    {
        Escritas.push_back(membro);
        throw Falha(438);
    }
};

TEST_F(GeralTeste, ObtemTransacao3_MembersThatRefuse_AreWrittenInTheirOrderAndIgnoredUpToTheFields)
{
    Parametros();
    Particular()->Transacoes["CABC"] = TransacaoCompleta();
    auto destino = Novo<TransacaoAnotada>();
    Ref<ITransacao> origem = destino;
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemTransacao3("CABC", origem); }).Numero, 438); // of Cout
    EXPECT_EQ(destino->Escritas,
              (Linhas{"sWindow", "sTransacao", "sSistema", "sJob", "sPrograma", "bGCI", "SisJava", "Cin", "Cout"}));
}

TEST_F(GeralTeste, ObtemTransacao3_MembersThatAreMissing_AreSkippedOneByOne)
{
    Parametros();
    Particular()->Transacoes["CABC"] = Novo<TransacaoPobre>();
    auto destino = TransacaoCompleta();
    Ref<ITransacao> origem = destino;
    geral->ObtemTransacao3("CABC", origem);
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_EQ(destino->Transacao, "ABC1");
    EXPECT_EQ(destino->Job, "JOB");
    EXPECT_TRUE(destino->Java);
}

TEST_F(GeralTeste, ObtemTransacao3_ObjectWithoutFields_RaisesWhatTheObjectLacks)
{
    Parametros();
    Particular()->Transacoes["CABC"] = TransacaoCompleta();
    Ref<ITransacao> origem = Novo<TransacaoPobre>();
    const Falha falha = FalhaLancada([&] { geral->ObtemTransacao3("CABC", origem); });
    EXPECT_EQ(falha.Numero, 438);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
}

TEST_F(GeralTeste, ObtemTransacao3_NoObject_RaisesNinetyOneOnlyWhenThereAreFields)
{
    Parametros();
    Particular()->Transacoes["CABC"] = TransacaoCompleta();
    Ref<ITransacao> origem;
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemTransacao3("CABC", origem); }).Numero, 91);
    geral->ObtemTransacao3("XYZ", origem);
    EXPECT_TRUE(origem.Nada());
}

TEST_F(GeralTeste, ObtemTransacao3_FieldNameTwice_RaisesFourHundredFiftySeven)
{
    Parametros();
    auto transacao = Novo<TransacaoPobre>();
    transacao->Entrada = Campos({{"PLACA", "1"}, {"UF", "RS"}});
    transacao->Entrada->Item(2)->Nome = "placa";
    Particular()->Transacoes["CABC"] = transacao;
    auto destino = Novo<TransacaoRoteirizada>();
    Ref<ITransacao> origem = destino;
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemTransacao3("CABC", origem); }).Numero, 457);
    EXPECT_EQ(destino->Entrada->Count(), 1);
}

TEST_F(GeralTeste, ObtemTransacao3_FieldThatIsNothing_RaisesNinetyOne)
{
    Parametros();
    auto transacao = Novo<TransacaoPobre>();
    transacao->Entrada = Novo<Colecao<Ref<CampoTransacao>>>();
    transacao->Entrada->Add(nullptr);
    Particular()->Transacoes["CABC"] = transacao;
    Ref<ITransacao> origem = Novo<TransacaoRoteirizada>();
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemTransacao3("CABC", origem); }).Numero, 91);
}

// End.

TEST_F(GeralTeste, Encerra_Configured_ClosesFinishesAndReleasesEverything)
{
    Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
    Loga();
    geral->MDB();
    geral->ObtemCFunGen();
    const Ref<IMensagem> mensagem = goMensagem();
    glCodMunicLogon = 7;
    auto form = FormMostrado();
    Particular()->AoFinalizar = [&] {
        EXPECT_FALSE(form->Carregado()); // the windows are closed by then
        EXPECT_FALSE(geral->oAppEXE().Nada());
        EXPECT_TRUE(geral->CEspecifica() == Particular());
    };
    geral->Encerra();
    EXPECT_EQ(Particular()->VezesFinalizada, 1);
    EXPECT_TRUE(geral->CEspecifica().Nada());
    EXPECT_TRUE(geral->objMTM().Nada());
    EXPECT_TRUE(geral->objSCA().Nada());
    EXPECT_TRUE(geral->oAppEXE().Nada());
    EXPECT_TRUE(geral->FormMDI().Nada());
    EXPECT_TRUE(geral->objZTP().Nada());
    EXPECT_TRUE(geral->Relatorios().Nada());
    EXPECT_TRUE(geral->Ajuda().Nada());
    EXPECT_TRUE(geral->FormAtivo().Nada());
    EXPECT_TRUE(geral->ActBar.Nada());
    EXPECT_TRUE(geral->cGlobal.Nada());
    EXPECT_TRUE(geral->ObjInterface.Nada());
    EXPECT_TRUE(geral->Menus.aMenu.empty());
    EXPECT_TRUE(geral->Menus.aMenuAux.empty());
    EXPECT_EQ(FalhaLancada([&] { geral->MDB(); }).Numero, 91);
    EXPECT_FALSE(goGeral.Nada());          // never cleared
    EXPECT_TRUE(goMensagem() == mensagem); // the services go at Logoff
    EXPECT_EQ(glCodMunicLogon, 7);
}

TEST_F(GeralTeste, Encerra_WithEverythingCached_LetsGoOfIt)
{
    Loga();
    RefFraca<ITrataBD> trataBD = geral->TrataBD();
    RefFraca<ICFunGen> funGen = geral->ObtemCFunGen();
    RefFraca<ICFisJur> fisJur = geral->ObtemCFisJur();
    RefFraca<ICEndereco> endereco = geral->ObtemCEndereco();
    RefFraca<ICVeiGen> veiGen = geral->ObtemCVeiGen();
    RefFraca<FormDeTeste> form = FormMostrado(); // the host has put it with the shell
    RefFraca<IMDB> mdb;
    {
        auto banco = Novo<BancoLocal>(std::make_shared<RegistroChamadas>());
        mdb = banco;
        geral->DefineMDB(banco);
    }
    ASSERT_FALSE(trataBD.Nada() || funGen.Nada() || fisJur.Nada() || endereco.Nada() || veiGen.Nada() || form.Nada() ||
                 mdb.Nada());
    geral->Encerra();
    EXPECT_TRUE(trataBD.Nada());
    EXPECT_TRUE(funGen.Nada());
    EXPECT_TRUE(fisJur.Nada());
    EXPECT_TRUE(endereco.Nada());
    EXPECT_TRUE(veiGen.Nada());
    EXPECT_TRUE(form.Nada());
    EXPECT_TRUE(mdb.Nada());
}

TEST_F(GeralTeste, Encerra_TwiceOrFresh_IsNoError)
{
    geral->Encerra();
    geral->Encerra();
    EXPECT_EQ(Particular()->VezesFinalizada, 0);
}

TEST_F(GeralTeste, Encerra_FinalisationThatFails_ReleasesAllTheSame)
{
    Loga();
    Particular()->AoFinalizar = [] { throw Falha(51); };
    geral->Encerra();
    EXPECT_TRUE(geral->CEspecifica().Nada());
    EXPECT_TRUE(geral->objMTM().Nada());
}

TEST_F(GeralTeste, Destruction_Configured_EndsTheShell)
{
    Loga();
    auto form = FormMostrado();
    auto particular = Particular();
    shell = nullptr;
    geral = nullptr;
    EXPECT_EQ(particular->VezesFinalizada, 1);
    EXPECT_FALSE(form->Carregado());
    EXPECT_TRUE(goGeral.Nada());
}

TEST_F(GeralTeste, Destruction_SharedForms_AreLetGo)
{
    Loga();
    RefFraca<FormDeTeste> fraca = FormCompartilhado<FormDeTeste>();
    ASSERT_FALSE(fraca.Nada());
    shell = nullptr;
    geral = nullptr;
    EXPECT_TRUE(fraca.Nada());
}

// The whole life of a shell, on a host of which every call fails in turn.

// Runs a step of the host. False when it failed, and then with the tail given; a step without a tail never fails.
bool Passo(const std::string &cauda, const std::function<void()> &passo)
{
    try {
        passo();
        return true;
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Numero, 1020);
        EXPECT_EQ(falha.Descricao, "Falhou");
        EXPECT_TRUE(!cauda.empty() && falha.Fonte.ends_with(cauda)) << falha.Fonte;
        return false;
    }
}

void Vida(HostRoteirizado &host, const Ref<Geral> &geral)
{
    Passo("", [&] { geral->RegistraAM("AUTUACAO"); });
    if (!Passo(" < Geral.Parametros",
               [&] { geral->Parametros(host.FormMDI, host.ActBar, nullptr, nullptr, nullptr, host.oAppEXE); })) {
        return;
    }
    geral->cGlobal = host.cGlobal;
    geral->ObjInterface = host.ObjInterface;
    Passo(" < Geral.Logon", [&] { geral->Logon(host.objMTM, host.objSCA, ""); });
    Passo("", [&] { geral->HabilitarItem("mnuModVOREquiptos"); });
    Passo(" < Geral.ClickMenu", [&] { geral->ClickMenu("mnuModVOREquiptos"); });
    host.Tela->RodaMensagens();
    EXPECT_EQ(host.Tela->Ponteiro(), 0);
    Passo(" < ModGeral.gFunConsultaAfericaoVigente", [] { gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}); });
    Passo(" < Geral.Logoff", [&] { geral->Logoff(); });
}

TEST_F(GeralTeste, Life_AnyHostCallThatFails_EndsAsPromisedAndTheNextOneIsWhole)
{
    std::int32_t calls = 0;
    for (bool falhou = true; falhou;) {
        auto hospede = Novo<HostRoteirizado>();
        InstalaHost(hospede);
        hospede->Servico("EquiptoRN", "consultaSimplesAfericaoVigente",
                         [](const Ref<Registro> &) -> Resposta { return Novo<AfericaoED>(); });
        hospede->FalhaNaChamada(++calls, 1020, "Falhou");
        {
            SCOPED_TRACE("call " + std::to_string(calls));
            auto vida = Novo<Geral>();
            Vida(*hospede, vida);
            falhou = hospede->FalhasDisparadas() > 0;
            const std::size_t erros = hospede->Erros().size();
            EXPECT_LE(erros, 1U);

            if (falhou) {
                hospede->LimpaRegistro();
                Vida(*hospede, vida);
                EXPECT_EQ(hospede->Erros().size(), erros);
                EXPECT_EQ(hospede->Conta("ObjInterface.MostraJanela(frmLista, modal=False"), 1);
                EXPECT_EQ(hospede->Conta("EquiptoRN.ObtemRetorno()"), 1);
                EXPECT_EQ(hospede->Conta("goDadosVor.Finaliza()"), 1);
            }
            vida->Encerra();
            EXPECT_EQ(hospede->Tela->NroForms(), 0);
        }
        DescarregaModulo();
        for (const std::string &problema : hospede->VerificaFim()) {
            ADD_FAILURE() << problema << " (call " << calls << ")";
        }
    }
    InstalaHost(host);
    EXPECT_GT(calls, 40);
}

} // namespace
