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

    // What the host gives; its main form and descriptor may be others.
    void Parametros(const Ref<IFormMDI> &mdi, const Ref<IMDB> &mdb, const Ref<IoAppEXE> &oAppEXE)
    {
        geral->Parametros(mdi, host->ActBar, host->Relatorios, host->Ajuda, mdb, oAppEXE);
        geral->cGlobal = host->cGlobal;
        geral->ObjInterface = host->ObjInterface;
    }
    void Parametros(const Ref<IMDB> &mdb = nullptr) { Parametros(host->FormMDI, mdb, host->oAppEXE); }

    // The same without reports and help, which the module then creates.
    void ParametrosSemServicos(const Ref<IMDB> &mdb = nullptr)
    {
        geral->Parametros(host->FormMDI, host->ActBar, nullptr, nullptr, mdb, host->oAppEXE);
    }

    // A module with one item, on one of the host's bands.
    void PoeItem()
    {
        Particular()->Itens = {ItemDeMenu("mnuX", "bndA")};
        host->ActBar->PoeFerramenta("bndA", "mnuX");
    }

    void Loga(const Ref<IMDB> &mdb = nullptr)
    {
        Parametros(mdb);
        geral->Logon(host->objMTM, host->objSCA, "");
        host->LimpaRegistro();
    }

    Ref<InterfaceAnotada> LogaAnotando()
    {
        Loga();
        auto objInterface = Novo<InterfaceAnotada>();
        geral->ObjInterface = ParaOModulo(objInterface);
        return objInterface;
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

    // The shell refers to nothing of the host's or of the module's.
    void ConfereVazia()
    {
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
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { geral->MDB(); }));
    }

    // It has what the host gave to Parametros.
    void ConfereParametros()
    {
        EXPECT_TRUE(geral->FormMDI() == host->FormMDI);
        EXPECT_TRUE(geral->objZTP() == host->FormMDI->ZTP);
        EXPECT_TRUE(geral->PossuiJanelaEnviaRecebe);
        EXPECT_TRUE(geral->ActBar == host->ActBar);
        EXPECT_TRUE(geral->Relatorios() == host->Relatorios);
        EXPECT_TRUE(geral->Ajuda() == host->Ajuda);
        EXPECT_TRUE(geral->oAppEXE() == host->oAppEXE);
        EXPECT_TRUE(geral->CEspecifica() == Particular());
        EXPECT_TRUE(goGeral.Alvo() == geral);
    }

    const Linhas MenuDesabilitado{"Tool(mnuX).Visible := True", "Tool(mnuX).Enabled := False"}; // after PoeItem
    const Linhas ServicosDoBanco{"TrataBD.AbreZTBanco(99)", "TrataBD.CreateCFisJur()", "TrataBD.CreateCEndereco()",
                                 "TrataBD.CreateCVeiGen()"}; // what PedeDoBanco makes when there is nothing yet

    void PedeDoBanco()
    {
        geral->MDB();
        geral->ObtemCFisJur();
        geral->ObtemCEndereco();
        geral->ObtemCVeiGen();
    }

    Ref<GeralDeTeste> shell;
};

// Creation and registration.

TEST_F(GeralTeste, Creation_Fresh_FlagsAreFalseAndNothingElseIsThere)
{
    EXPECT_FALSE(geral->Depurar || geral->InstanciarFormsClickMenu || geral->PossuiJanelaEnviaRecebe ||
                 geral->ClickTratado);
    ConfereVazia();
    EXPECT_EQ(geral->sMunicCreden(), "");
    EXPECT_TRUE(goGeral.Nada());
    EXPECT_EQ(geral->NomeTipo(), "Geral");
    EXPECT_TRUE(host->Registro().empty());
    EXPECT_TRUE(geral->Modulo() == host->Tela->App); // the component's
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { geral->SistemaQMR(); }));
}

TEST_F(GeralTeste, RegistraAM_AnyArgumentOrNone_GivesTheComponentAndItsClassWithItAsReceived)
{
    geral->RegistraAM("AUTUACAO");
    geral->DesregistraAM("AUTUACAO");
    geral->RegistraAM();
    geral->DesregistraAM();
    geral->RegistraAM(std::int32_t{7});
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"Host.CriaAMRegistro()", "AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", \"AUTUACAO\")",
         "Host.CriaAMRegistro()", "AMRegistro.DesregistraAM(\"ZTAVOREQUIP\", \"AUTUACAO\")", "Host.CriaAMRegistro()",
         "AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", \"\")", "Host.CriaAMRegistro()",
         "AMRegistro.DesregistraAM(\"ZTAVOREQUIP\", \"\")", "Host.CriaAMRegistro()",
         "AMRegistro.RegistraAM(\"ZTAVOREQUIP\", \"ZTAVOREQUIP.Geral\", 7)"}));
}

TEST_F(GeralTeste, RegistraAM_Fails_IsIgnored)
{
    for (const char *passo : {"Host.CriaAMRegistro", "AMRegistro.RegistraAM", "Plataforma.Aplicacao"}) {
        host->FalhaEm(passo);
        geral->RegistraAM("X");
    }
    host->FalhaEm("AMRegistro.DesregistraAM");
    geral->DesregistraAM("X");
    EXPECT_EQ(host->FalhasDisparadas(), 4);
}

// Parametros.

TEST_F(GeralTeste, Parametros_WithEverything_CallsTheHostInOrder)
{
    PoeItem();
    Parametros(host->MDB);
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"FormMDI.AutoShowChildren -> True", "FormMDI.objZTP*",
                               "FormMDI.PossuiJanelaEnviaRecebe -> True", MenuDesabilitado[0], MenuDesabilitado[1]}));
    ConfereParametros();
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(geral->SistemaQMR() + geral->QMRModuloID(), "VORVOR"); // in the data dictionary
    EXPECT_EQ(geral->VersaoSistemaQMR(), 1);
    EXPECT_EQ(geral->QMRVersaoModulo(), 1);
    EXPECT_TRUE(geral->UsandoModuloQMRauxiliar());
}

TEST_F(GeralTeste, Parametros_StepByStep_HappenInTheirOrderAndTheInterfaceSetBeforeIsLost)
{
    geral->ObjInterface = host->ObjInterface;
    geral->cGlobal = host->cGlobal;
    PoeItem();
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
    ParametrosSemServicos(host->MDB);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"FormMDI.AutoShowChildren*", "FormMDI.objZTP*",
                                                 "FormMDI.PossuiJanelaEnviaRecebe*", "Host.CriaRelatorios()",
                                                 "oAppEXE.Path -> \"C:\\HOST\"", "Relatorios.PathRPT := \"C:\\HOST\"",
                                                 "Host.CriaAjuda()", MenuDesabilitado[0], MenuDesabilitado[1]}));
    EXPECT_EQ(shell->EspecificasCriadas, 1);
    EXPECT_TRUE(goGeral.Alvo() == geral);
    EXPECT_TRUE(geral->ObjInterface.Nada());
    EXPECT_TRUE(geral->cGlobal == host->cGlobal);
}

TEST_F(GeralTeste, Parametros_Again_ReplacesEachObjectInItsTurn)
{
    Parametros(host->MDB);
    // The report and help services and the database that the shell has at each call of the host.
    Linhas passos;
    host->ObservaChamadas([&] {
        bool banco = false;
        IgnoraErro([&] { banco = !geral->MDB().Nada(); }); // there is no session to open it with
        passos.push_back(std::string(geral->Relatorios().Nada() ? "" : "R") + (geral->Ajuda().Nada() ? "" : "A") +
                         (banco ? "B" : ""));
    });
    ParametrosSemServicos();
    host->ObservaChamadas(nullptr);
    EXPECT_EQ(passos, (Linhas{"RAB", "RAB", "RAB", // the main form's members
                              "AB", "RAB", "RAB",  // the report service and its path
                              "RAB"}));            // the help service
}

TEST_F(GeralTeste, Parametros_NoMainFormOrWhatIsNone_LeavesNothingWithoutErrorAndForgetsTheFirst)
{
    for (const Ref<IFormMDI> &mdi : {ParaOModulo(Novo<FormQualquer>()), Ref<IFormMDI>()}) {
        geral = shell = Novo<GeralDeTeste>();
        Parametros(mdi, nullptr, host->oAppEXE);
        EXPECT_TRUE(geral->FormMDI().Nada());
        EXPECT_TRUE(geral->objZTP().Nada());
        EXPECT_FALSE(geral->PossuiJanelaEnviaRecebe);
        EXPECT_TRUE(host->Registro().empty());
        Parametros();
        ConfereParametros();
        Parametros(mdi, nullptr, host->oAppEXE);
        EXPECT_TRUE(geral->FormMDI().Nada());
        EXPECT_EQ(shell->EspecificasCriadas, 3);
        host->LimpaRegistro();
    }
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

TEST_F(GeralTeste, Parametros_WithoutDescriptor_RaisesNinetyOneWithItsTailUnlessTheReportServiceIsGiven)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral.Parametros",
                      [&] { geral->Parametros(host->FormMDI, host->ActBar, nullptr, host->Ajuda, nullptr, nullptr); }));
    Parametros(host->FormMDI, nullptr, nullptr);
    EXPECT_TRUE(geral->oAppEXE().Nada());
}

TEST_F(GeralTeste, Parametros_AnyStepThatFails_GoesOnWithItsTailAndCanBeTriedAgain)
{
    Particular()->AoPedirMenu = [] { throw Falha(9); };
    EXPECT_TRUE(Lanca(9, "ZTAVOREQUIP < Geral.Parametros", [&] { Parametros(); }));
    EXPECT_TRUE(geral->ActBar.Nada());
    Particular()->AoPedirMenu = nullptr;
    FalhaEmCada({"Host.CriaRelatorios", "oAppEXE.Path", "Relatorios.PathRPT", "Host.CriaAjuda"}, " < Geral.Parametros",
                [&] { ParametrosSemServicos(); });
    ParametrosSemServicos();
    EXPECT_TRUE(goGeral.Alvo() == geral);
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

TEST_F(GeralTeste, Logon_WithoutAccessControlOrSession_StoresWithoutRefreshOrError)
{
    Parametros();
    host->LimpaRegistro();
    Particular()->AoHabilitarMenu = [] { ADD_FAILURE() << "the menus were refreshed"; };
    geral->Logon(host->objMTM, nullptr, "8801");
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_TRUE(geral->objSCA().Nada());
    EXPECT_EQ(geral->sMunicCreden(), "8801");
    geral->Logon(nullptr, host->objSCA, "");
    EXPECT_TRUE(geral->objMTM().Nada());
    EXPECT_TRUE(geral->objSCA() == host->objSCA);
    EXPECT_EQ(geral->sMunicCreden(), "");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(GeralTeste, Logon_NobodyLoggedOn_DisablesTheMenusAndBuildsNoSingleton)
{
    PoeItem();
    Parametros();
    host->ActBar->Ferramenta("bndA", "mnuX")->DefineEnabled(true);
    host->objSCA->UsuarioLogado = false;
    host->LimpaRegistro();
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"objSCA.Logado() -> False", MenuDesabilitado[0], MenuDesabilitado[1]}));
}

TEST_F(GeralTeste, Logon_RefreshThatFailsOrIsNotThereYet_IsIgnored)
{
    geral->Logon(host->objMTM, host->objSCA, "");
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    Parametros();
    Particular()->AoHabilitarMenu = [] { throw Falha(51); };
    geral->Logon(host->objMTM, host->objSCA, "");
    host->FalhaEm("objSCA.Logado");
    geral->Logon(host->objMTM, host->objSCA, "x");
    EXPECT_EQ(geral->sMunicCreden(), "x");
}

TEST_F(GeralTeste, Logon_OutOfMemory_GoesOnWithItsTail)
{
    const std::string municipio = "um texto que não cabe no próprio objeto de texto";
    EXPECT_TRUE(Lanca(7, "ZTAVOREQUIP < Geral.Logon", [&] {
        MemoriaEscassa escassa(1);
        geral->Logon(nullptr, nullptr, municipio);
    }));
}

// Logoff.

TEST_F(GeralTeste, Logoff_BeforeParametros_Fault91WithItsTail)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral.Logoff", [&] { geral->Logoff(); }));
}

TEST_F(GeralTeste, Logoff_AfterLogon_ClosesDisablesAndReleasesInOrder)
{
    PoeItem();
    Loga();
    PedeDoBanco();
    goDadosVor();
    FormCarregado();
    host->LimpaRegistro();
    geral->Logoff();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Descarrega(frmTeste)", MenuDesabilitado[0],
                                                 MenuDesabilitado[1], "goDadosVor.Finaliza()"}));
    EXPECT_TRUE(geral->objMTM() == host->objMTM);
    EXPECT_TRUE(geral->objSCA() == host->objSCA);

    // Every cache is gone: all is fetched again.
    host->LimpaRegistro();
    PedeDoBanco();
    Linhas esperado{"objMTM.CreateQMR()", "QMR.CreateNewTrataBD()", "TrataBD.InicializaInfoSistema(\"VOR\", 1)"};
    esperado.insert(esperado.end(), ServicosDoBanco.begin(), ServicosDoBanco.end());
    EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
}

TEST_F(GeralTeste, Logoff_WhileAWindowCloses_TheDatabaseIsGoneAndItsHelperAndTheServicesAreStillThere)
{
    Loga(host->MDB);
    PedeDoBanco();
    const Ref<ITrataBD> trataBD = geral->TrataBD();
    const Ref<IMensagem> mensagem = goMensagem();
    const Ref<ICFisJur> fisJur = geral->ObtemCFisJur();
    bool perguntou = false;
    Particular()->AoPedirAuxiliar = [&] {
        if (!std::exchange(perguntou, true)) {
            EXPECT_TRUE(geral->ObtemCFisJur() == fisJur); // nothing is gone when the database is decided about
        }
    };
    auto form = FormCarregado();
    bool fechou = false;
    form->AoDescarregar = [&] {
        fechou = true;
        host->LimpaRegistro();
        PedeDoBanco();
        EXPECT_TRUE(RegistroIgual(host->Registro(), ServicosDoBanco));
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
    PoeItem();
    Loga();
    const Ref<ITrataBD> trataBD = geral->TrataBD();
    host->LimpaRegistro();
    bool liberou = false;
    Particular()->AoLiberarServicos = [&] {
        liberou = true;
        EXPECT_TRUE(RegistroIgual(host->Registro(), MenuDesabilitado));
        EXPECT_TRUE(geral->TrataBD() == trataBD);
    };
    geral->Logoff();
    EXPECT_TRUE(liberou);
    EXPECT_FALSE(geral->TrataBD() == trataBD);
}

TEST_F(GeralTeste, Logoff_WithAuxiliaryDictionaryModule_KeepsTheDatabaseAndWithoutUsingItTheHelper)
{
    Loga(host->MDB);
    const Ref<ITrataBD> trataBD = geral->TrataBD();
    Particular()->UsandoAuxiliar = false;
    geral->Logoff();
    EXPECT_TRUE(geral->TrataBD() == trataBD);
    host->LimpaRegistro();
    geral->MDB();
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 1); // the host's was released

    Particular()->Auxiliar = Novo<ZTPRoteirizado>();
    geral->Logoff();
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco"), 1);
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
    ConfereParametros();
    EXPECT_TRUE(geral->cGlobal == host->cGlobal);
    EXPECT_TRUE(geral->ObjInterface == host->ObjInterface);
    EXPECT_TRUE(geral->FormAtivo() == form);
    EXPECT_TRUE(geral->ObtemCFunGen() == funGen);
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
    FormCarregado("frmUltimo");
    dono->AoDescarregar = [&] { filho->Descarregar(); };
    geral->FecharJanelasAtivas();
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(GeralTeste, FecharJanelasAtivas_FormThatCannotBeReadOrUnloaded_GoesOnWithTheNext)
{
    Loga();
    auto primeiro = FormCarregado("frmUm");
    for (const char *passo : {"Plataforma.FormAberto", "Plataforma.Descarrega"}) {
        auto segundo = FormCarregado("frmDois");
        host->FalhaEm(passo);
        geral->FecharJanelasAtivas();
        EXPECT_TRUE(primeiro->Carregado());
        EXPECT_FALSE(segundo->Carregado());
    }
    host->FalhaEm("Plataforma.NroForms");
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(primeiro->Carregado());
}

TEST_F(GeralTeste, FecharJanelasAtivas_NoFormsOrNoHost_CallsNothing)
{
    geral->FecharJanelasAtivas();
    EXPECT_TRUE(host->Registro().empty());
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
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral.ClickMenu", [&] { geral->ClickMenu("mnuModVOREquiptos"); }));
    Loga();
    Particular()->AoClicar = [] { throw Falha(6); };
    EXPECT_TRUE(Lanca(6, "ZTAVOREQUIP < Geral.ClickMenu", [&] { geral->ClickMenu("mnuX"); }));

    Particular()->AoClicar = nullptr;
    Particular()->FormDoClique = FormCarregado();
    FalhaEmCada({"ObjInterface.MostraJanela"}, " < Geral.ShowForm < Geral.ShowFormNoInstance < Geral.ClickMenu",
                [&] { geral->ClickMenu("mnuX"); });
    Particular()->FormDoClique = nullptr;
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

TEST_F(GeralTeste, HabilitarItem_BeforeLogonOrNobodyLoggedOn_IsFalseWithoutTouchingTheModule)
{
    Parametros();
    host->LimpaRegistro();
    Particular()->AoHabilitarItem = [](const std::string &) {
        ADD_FAILURE() << "the module was asked";
        return true;
    };
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(host->Registro().empty());
    Loga();
    host->objSCA->UsuarioLogado = false;
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objSCA.Logado() -> False"}));
}

TEST_F(GeralTeste, HabilitarItem_LoggedOn_AsksTheModuleAndThenTellsTheHostWhateverTheAnswer)
{
    Loga();
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    host->objSCA->Nega("VOR-EQP-CS", "");
    EXPECT_FALSE(geral->HabilitarItem("mnuModNABEquiptos"));
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"objSCA.Logado() -> True", "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> True",
                               "cGlobal.MontaEstruturaMenus(\"mnuModVOREquiptos\", \"ZTAVOREQUIP\")",
                               "objSCA.Logado() -> True", "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\") -> False",
                               "cGlobal.MontaEstruturaMenus(\"mnuModNABEquiptos\", \"ZTAVOREQUIP\")"}));
}

TEST_F(GeralTeste, HabilitarItem_AnythingFails_IsFalseWithoutErrorUnlessTheHostCannotBeTold)
{
    Loga();
    host->FalhaEm("objSCA.Logado");
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    host->FalhaEm("objSCA.PossuiPerm2");
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
    EXPECT_EQ(host->Conta("cGlobal.MontaEstruturaMenus"), 1);
    host->FalhaEm("cGlobal.MontaEstruturaMenus");
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    for (const Ref<IcGlobal> &global : {Ref<IcGlobal>(), ParaOModulo(Novo<GlobalSemMembros>())}) {
        geral->cGlobal = global;
        EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    }
    geral->Logoff(); // it depends on the access control alone
    EXPECT_TRUE(geral->HabilitarItem("mnuModVOREquiptos"));
    host->objSCA->UsuarioLogado = false;
    EXPECT_FALSE(geral->HabilitarItem("mnuModVOREquiptos"));
}

TEST_F(GeralTeste, TemPermissao_WithControl_ShowsOrHidesItByTheAnswerAndPassesAFaultUnchanged)
{
    const auto semControle = [&] { geral->TemPermissao("NAB", "X", "", nullptr); };
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", semControle));
    Loga();
    FalhaEmCada({"objSCA.PossuiPerm2"}, "", semControle);
    Ref<IControle> lblTexto = FormCarregado()->lblTexto;
    host->objSCA->Nega("VOR-EQP-CS", "E");
    EXPECT_FALSE(geral->TemPermissao("NAB", "VOR-EQP-CS", "E", lblTexto));
    EXPECT_FALSE(lblTexto->Visible());
    EXPECT_TRUE(geral->TemPermissao("NAB", "VOR-EQP-CS", "A", lblTexto));
    EXPECT_TRUE(lblTexto->Visible());
    EXPECT_EQ(host->Conta("objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> False"), 1);
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
    Parametros();
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { geral->TrataBD(); }));
    Loga();
    FalhaEmCada({"objMTM.CreateQMR", "QMR.CreateNewTrataBD", "TrataBD.InicializaInfoSistema"}, "",
                [&] { geral->TrataBD(); });
    host->LimpaRegistro();
    geral->TrataBD();
    EXPECT_EQ(host->Conta("TrataBD.InicializaInfoSistema(\"VOR\", 1)"), 1);
}

TEST_F(GeralTeste, MDB_NoneGiven_IsOpenedAtEachReadUntilThereIsOneUnlessAnAuxiliaryModuleHasIt)
{
    Loga();
    Particular()->Auxiliar = Novo<ZTPRoteirizado>();
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_EQ(host->Conta("TrataBD"), 0);
    Particular()->Auxiliar = nullptr;
    host->objMTM->AbreBanco = false;
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_TRUE(geral->MDB().Nada());
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 2);
    host->objMTM->AbreBanco = true;
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_TRUE(geral->MDB() == host->MDB);
    EXPECT_EQ(host->Conta("TrataBD.AbreZTBanco(99)"), 3);
}

TEST_F(GeralTeste, MDB_GivenByTheHostOrWritten_IsWhatIsRead)
{
    Loga(host->MDB);
    EXPECT_TRUE(geral->MDB() == host->MDB);
    const Ref<IMDB> outro = ParaOModulo(Novo<BancoLocal>(std::make_shared<RegistroChamadas>()));
    geral->DefineMDB(outro);
    EXPECT_TRUE(geral->MDB() == outro);
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

TEST_F(GeralTeste, ShowForm_Fails_GoesOnWithItsTailAndKeepsInstancing)
{
    Loga();
    geral->InstanciarFormsClickMenu = true;
    FalhaEmCada({"ObjInterface.MostraJanela"}, " < Geral.ShowForm", [&] { geral->ShowForm(FormCarregado(), false); });
    geral->ObjInterface = nullptr;
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral.ShowForm", [&] { geral->ShowForm(FormCarregado(), false); }));
    EXPECT_TRUE(geral->InstanciarFormsClickMenu);
}

TEST_F(GeralTeste, ShowForm_HostFailsAfterFillingTheClickedForm_ItStays)
{
    const auto objInterface = LogaAnotando();
    auto form = FormCarregado();
    objInterface->Falhando = true;
    EXPECT_EQ(FalhaLancada([&] { geral->ShowForm(form, false); }).Numero, 51);
    objInterface->Falhando = false;
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(objInterface->FormClickNaEntrada == form);
}

TEST_F(GeralTeste, ShowForm_Flags_TravelAsZeroAndMinusOne)
{
    const auto objInterface = LogaAnotando();
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
    const auto objInterface = LogaAnotando();
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

TEST_F(GeralTeste, ShowFormNoInstance_NoVisibleOneOfItsClass_ShowsIt)
{
    Loga();
    FormMostrado("frmOutro");
    FormCarregado(); // hidden, which does not count
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->ShowFormNoInstance(form);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"ObjInterface.MostraJanela(frmTeste, modal=False)"}));
    EXPECT_TRUE(form->Visible());

    auto outro = Novo<FormDeTeste>();
    host->LimpaRegistro();
    geral->ShowFormNoInstance(outro); // the hidden one before the visible one is passed over
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"frmTeste.SetFocus()"}));
    EXPECT_FALSE(outro->Visible());
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
    visivel->DefineEnabled(false);                // then it gets no focus
    geral->ShowFormNoInstance(form);
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"frmHospedeiro.ZOrder(0)", "FRMTeste.SetFocus()", "frmHospedeiro.ZOrder(0)"}));
    EXPECT_FALSE(form->Visible());
}

// A form that refuses the focus.
class FormSemFoco : public FormDeTeste {
  public:
    void SetFocus() override { throw Falha(5); }
};

TEST_F(GeralTeste, ShowFormNoInstance_MatchThatRefusesTheFocus_KeepsTheClickedForm)
{
    const auto objInterface = LogaAnotando();
    auto form = Novo<FormSemFoco>();
    form->Carregar();
    form->DefineVisible(true);
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(Lanca(5, "ZTAVOREQUIP < Geral.ShowFormNoInstance", [&] { geral->ShowFormNoInstance(form); }));
    geral->FormShow(form, false, nullptr);
    EXPECT_TRUE(objInterface->FormClickNaEntrada == form);
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
    const std::string cauda = " < Geral.ShowFormNoInstance";
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP" + cauda, [&] { geral->ShowFormNoInstance(nullptr); }));
    const auto mostra = [&] { geral->ShowFormNoInstance(Novo<FormDeTeste>()); };
    auto visivel = FormMostrado();
    visivel->TemParent = false; // the member that this form lacks
    EXPECT_TRUE(Lanca(438, "ZTAVOREQUIP" + cauda, mostra));
    visivel->TemParent = true;
    FalhaEmCada({"Plataforma.FormAberto"}, cauda, mostra);
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
    host->AoMostrarModal("frmModal", [](const Ref<IForm> &mostrada) { Plataforma()->Descarrega(mostrada); });
    geral->FormShow(FormCarregado("frmModal"), true, form);
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmModal, modal=True, dono=frmTeste)"), 1);
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

TEST_F(GeralTeste, FormShow_AnyStepThatFails_GoesOnWithItsTail)
{
    Loga();
    FalhaEmCada({"Plataforma.Ponteiro", "Plataforma.ProcessaMensagens", "ObjInterface.MostraJanela"},
                " < Geral.FormShow", [&] { geral->FormShow(FormCarregado(), false, nullptr); });
}

TEST_F(GeralTeste, CentralizaForm_ByItsPlaceAndSize_StandsInTheMiddleOfTheScreenOrOfTheMainForm)
{
    using Passos = std::vector<std::pair<std::int32_t, std::int32_t>>; // Left is written first
    struct Caso {
        bool Tela;
        bool Filha;
        std::int32_t Largura;
        Passos Esperados;
    };
    Loga();
    for (const Caso &caso : std::vector<Caso>{
             {true, false, 6000, {{4680, 0}, {4680, 4260}}}, // (15360 - 6000) / 2; (11520 - 3001) / 2 = 4259.5, to even
             {true, true, 6000, {{4680, 0}, {4680, 4260}}},  // an MDI child on the screen all the same
             {true, false, 16000, {{-320, 0}, {-320, 4260}}}, // larger than its place
             {false, true, 6000, {{3000, 0}, {3000, 2500}}},  // (12000 - 6000) / 2; (8000 - 3001) / 2 = 2499.5
             {false, false, 6000, {{3720, 0}, {3720, 3300}}}, // 600 + (12240 - 6000) / 2; 300 + (9000 - 3001) / 2
         }) {
        auto form = FormCarregado(); // 6000 by 3001
        form->Filha = caso.Filha;
        form->DefineWidth(caso.Largura);
        Passos passos;
        const Conexao mudou = form->Mudou().liga([&] { passos.emplace_back(form->Left(), form->Top()); });
        host->LimpaRegistro();
        geral->CentralizaForm(form, caso.Tela);
        EXPECT_EQ(passos, caso.Esperados);
        EXPECT_EQ(host->Conta("FormMDI.") == 0, caso.Tela);
    }
}

TEST_F(GeralTeste, CentralizaForm_Fails_GoesOnWithATailWithoutClass)
{
    auto form = FormCarregado();
    for (bool filha : {false, true}) {
        form->Filha = filha;
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < CentralizaForm", [&] { geral->CentralizaForm(form, false); }));
    }
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < CentralizaForm", [&] { geral->CentralizaForm(nullptr, true); }));
    Loga();
    FalhaEmCada({"FormMDI.Width"}, " < CentralizaForm", [&] { geral->CentralizaForm(FormCarregado(), false); });
}

TEST_F(GeralTeste, DefineTitulo_FormWithoutParentOrTheMember_WritesItsWindowOnly)
{
    Loga();
    auto form = FormMostrado();
    const std::int32_t antes = form->PedidosParent;
    host->ObservaChamadas([&] { EXPECT_GT(form->PedidosParent, antes); }); // the wrapping form is asked for first
    geral->DefineTitulo(form, "Equipamentos - Ativos");
    host->ObservaChamadas(nullptr);
    form->TemParent = false;
    geral->DefineTitulo(form, "Título");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.DefineTextoJanela(frmTeste, \"Equipamentos - Ativos\")",
                                                 "Plataforma.DefineTextoJanela(frmTeste, \"Título\")"}));
    EXPECT_EQ(form->Caption(), "Teste");
}

TEST_F(GeralTeste, DefineTitulo_WrappedForm_WritesBothOneWithoutTheOther)
{
    Loga();
    host->Tela->EmbrulhaForms = true;
    auto form = FormMostrado();
    geral->DefineTitulo(form, "Título");
    const Linhas ambos{"Plataforma.DefineTextoJanela(frmTeste, \"Título\")",
                       "Plataforma.DefineTextoJanela(frmHospedeiro, \"Título\")"};
    EXPECT_TRUE(RegistroIgual(host->Registro(), ambos));
    host->FalhaEm("Plataforma.DefineTextoJanela");
    geral->DefineTitulo(form, "Outro");
    EXPECT_EQ(host->Tela->TextoJanela(form), "Título");
    EXPECT_EQ(host->Conta("Plataforma.DefineTextoJanela(frmHospedeiro, \"Outro\")"), 1);
    geral->DefineTitulo(nullptr, "Título");
}

// Active form.

TEST_F(GeralTeste, FormAtivado_WithGlobalServicesOrNot_TellsThemAndKeepsTheFormUnlessTheyFail)
{
    auto form = FormCarregado();
    host->LimpaRegistro();
    geral->FormAtivado(form);
    EXPECT_TRUE(geral->FormAtivo() == form);
    EXPECT_TRUE(host->Registro().empty());
    Loga();
    const auto outra = FormCarregado();
    host->FalhaEm("cGlobal.gsubSetaAutoModuloAtivo");
    geral->FormAtivado(outra);
    EXPECT_TRUE(geral->FormAtivo() == form);
    geral->cGlobal = ParaOModulo(Novo<GlobalSemMembros>());
    geral->FormAtivado(outra);
    EXPECT_TRUE(geral->FormAtivo() == form);
    geral->cGlobal = host->cGlobal;
    host->LimpaRegistro();
    geral->FormAtivado(outra);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"cGlobal.gsubSetaAutoModuloAtivo(\"ZTAVOREQUIP\")"}));
    EXPECT_TRUE(geral->FormAtivo() == outra);
}

// Send and receive window.

TEST_F(GeralTeste, AbreEnviaRecebe_WithMessage_SetsItAndThenOpensOneWithoutTheOther)
{
    geral->AbreEnviaRecebe("X"); // without a main form
    geral->FechaEnviaRecebe();
    EXPECT_TRUE(host->Registro().empty());
    Loga();
    geral->AbreEnviaRecebe("Enviando...");
    geral->FechaEnviaRecebe();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"FormMDI.MsgEnviaRecebe(\"Enviando...\")",
                                                 "FormMDI.AbrirEnviaRecebe()", "FormMDI.FecharEnviaRecebe(True)"}));
    for (const char *passo : {"FormMDI.MsgEnviaRecebe", "FormMDI.AbrirEnviaRecebe", "FormMDI.FecharEnviaRecebe"}) {
        host->FalhaEm(passo);
    }
    geral->AbreEnviaRecebe("X");
    geral->FechaEnviaRecebe();
    EXPECT_EQ(host->FalhasDisparadas(), 3);
}

// Sibling modules, general functions, help.

TEST_F(GeralTeste, ObtemAutoModulo_ByTheClassOfTheGlobalServices_TakesOneOfTwoRoads)
{
    Loga();
    host->cGlobal->Modulos["ZTAVORFOTO"] = host->FormMDI->ZTP.Propria();
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
    geral->cGlobal = ParaOModulo(Novo<GlobalSemMembros>());
    EXPECT_EQ(FalhaLancada([&] { geral->ObtemAutoModulo("X"); }).Numero, 438);
}

TEST_F(GeralTeste, ObtemCFunGen_WithAndWithoutDescriptorAndDescription_IsCreatedOnceAndTitled)
{
    const auto pede = [&](const std::string &descricao) {
        host->Tela->App->m_Descricao = descricao;
        host->LimpaRegistro();
        const Ref<ICFunGen> funGen = geral->ObtemCFunGen();
        EXPECT_TRUE(geral->ObtemCFunGenComAppTitle() == funGen);
        return host->RegistroDe({"Host.CriaCFunGen", "CFunGen"});
    };
    const std::string criacao = "Host.CriaCFunGen()";
    const auto titulos = [](const std::string &avisos, const std::string &app) {
        return Linhas{"CFunGen.SetaTituloAvisos(\"" + avisos + "\")", "CFunGen.SetaTituloAvisos(\"" + avisos + "\")",
                      "CFunGen.AppTitle := \"" + app + "\""};
    };
    Linhas primeira = titulos("Equipamentos - Registro de Equipamentos", "Equipamentos");
    primeira.insert(primeira.begin(), criacao);
    EXPECT_TRUE(RegistroIgual(pede("Registro de Equipamentos"), primeira));
    EXPECT_TRUE(RegistroIgual(pede(""), titulos("Equipamentos - Equipamentos", "Equipamentos")));
    Loga();
    EXPECT_TRUE(
        RegistroIgual(pede(""), titulos("Autuação Eletrônica - Equipamentos", "Autuação Eletrônica - Equipamentos")));
    EXPECT_TRUE(
        RegistroIgual(pede("Registro de Equipamentos"),
                      titulos("Autuação Eletrônica - Registro de Equipamentos", "Autuação Eletrônica - Equipamentos")));
}

TEST_F(GeralTeste, TrataAjuda_WithHelpService_GivesItTheComponentAndTheTopic)
{
    geral->TrataAjuda("equipamentos");
    EXPECT_TRUE(host->Registro().empty()); // there is none yet
    Loga();
    geral->TrataAjuda("equipamentos");
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Ajuda.TrataAjuda2(App, \"equipamentos\")"}));
}

// Transactions of the module.

TEST_F(GeralTeste, ObtemTransacao_Unknown_TriesTheCodeAndThenWithItsPrefix)
{
    Parametros();
    const std::vector<std::pair<std::string, Linhas>> casos = {
        {"ab-c", {"ABC", "CABC"}},
        {"cab", {"CAB"}},
        {"--", {"", "C"}},
        {"", {}},
        {"A", {}},
        {"ã", {}}, // one character, two bytes
    };
    for (const auto &[codigo, pedidos] : casos) {
        EXPECT_TRUE(geral->ObtemTransacao(codigo).Nada());
        EXPECT_EQ(std::exchange(Particular()->CodigosPedidos, {}), pedidos) << codigo;
    }
}

TEST_F(GeralTeste, ObtemTransacao_Known_IsFoundAtTheFirstOrSecondTry)
{
    EXPECT_TRUE(geral->ObtemTransacao("A").Nada());
    EXPECT_EQ(shell->EspecificasCriadas, 1); // for this call, before Parametros and before the length is looked at
    EXPECT_TRUE(geral->CEspecifica().Nada());
    const Ref<ITransacao> transacao = Novo<TransacaoRoteirizada>();
    Particular()->Transacoes["CABC"] = transacao;
    EXPECT_TRUE(geral->ObtemTransacao("c-abc") == transacao);
    EXPECT_EQ(shell->EspecificasCriadas, 2);
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("ab-c") == transacao);
    EXPECT_EQ(Particular()->CodigosPedidos, (Linhas{"CABC", "ABC", "CABC"}));
    geral = Novo<Geral>(); // this module has none
    EXPECT_TRUE(geral->ObtemTransacao("CABC").Nada());
    Parametros();
    EXPECT_TRUE(geral->ObtemTransacao("ABC").Nada());
}

TEST_F(GeralTeste, ObtemTransacao2_Called_RaisesBeforeAnyOtherEffect)
{
    Ref<ITransacao> origem = ParaOModulo(Novo<TransacaoRoteirizada>());
    const Ref<ITransacao> mesma = origem;
    EXPECT_TRUE(Lanca(-1, "ZTAVOREQUIP.Geral.ObtemTransacao2", "Método depreciado. Não utilizar.",
                      [&] { geral->ObtemTransacao2("ABC", origem); }));
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

class CopiaTeste : public GeralTeste {
  protected:
    void SetUp() override
    {
        GeralTeste::SetUp();
        Parametros();
        Particular()->Transacoes["CABC"] = TransacaoCompleta();
    }

    void Copia(Ref<ITransacao> destino, const std::string &codigo = "abc") { geral->ObtemTransacao3(codigo, destino); }
};

TEST_F(CopiaTeste, ObtemTransacao3_Known_CopiesTheDefinitionAndSharesTheFields)
{
    const Ref<ITransacao> transacao = Particular()->Transacoes["CABC"];
    Oferta destino = Novo<TransacaoRoteirizada>();
    Ref<ITransacao> origem = destino;
    geral->ObtemTransacao3("abc", origem);
    EXPECT_TRUE(origem == destino);
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_EQ(destino->Transacao, "ABC1");
    EXPECT_EQ(destino->Sistema, "VOR");
    EXPECT_EQ(destino->Job, "JOB1");
    EXPECT_EQ(destino->Programa, "PGM1");
    EXPECT_TRUE(destino->GCI && destino->Java);
    ASSERT_EQ(destino->Entrada->Count(), 2);
    EXPECT_FALSE(destino->Entrada == transacao->Cin());
    EXPECT_TRUE(destino->Entrada->Item(1) == transacao->Cin()->Item(1));
    EXPECT_TRUE(destino->Entrada->Item("uf") == transacao->Cin()->Item("UF"));
    ASSERT_EQ(destino->Saida->Count(), 1);
    EXPECT_TRUE(destino->Saida->Item("NOME") == transacao->Cout()->Item(1));
}

TEST_F(CopiaTeste, ObtemTransacao3_Unknown_LeavesTheObjectAsItWas)
{
    Oferta destino = TransacaoCompleta();
    const CamposTransacao entrada = destino->Entrada;
    Copia(destino, "XYZ");
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_TRUE(destino->GCI);
    EXPECT_TRUE(destino->Entrada == entrada);
}

TEST_F(CopiaTeste, ObtemTransacao3_WithoutFields_KeepsThoseOfTheObject)
{
    auto transacao = Novo<TransacaoRoteirizada>();
    transacao->Saida = Campos({});
    Particular()->Transacoes["CABC"] = transacao;
    Oferta destino = TransacaoCompleta();
    Copia(destino);
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

TEST_F(CopiaTeste, ObtemTransacao3_MembersThatRefuse_AreWrittenInTheirOrderAndIgnoredUpToTheFields)
{
    Oferta destino = Novo<TransacaoAnotada>();
    EXPECT_TRUE(Lanca(438, "ZTAVOREQUIP", [&] { Copia(destino); })); // of Cout
    EXPECT_EQ(destino->Escritas,
              (Linhas{"sWindow", "sTransacao", "sSistema", "sJob", "sPrograma", "bGCI", "SisJava", "Cin", "Cout"}));
}

TEST_F(CopiaTeste, ObtemTransacao3_MembersThatAreMissing_AreSkippedOneByOne)
{
    Particular()->Transacoes["CABC"] = Novo<TransacaoPobre>();
    Oferta destino = TransacaoCompleta();
    Copia(destino);
    EXPECT_EQ(destino->Window, "WIN");
    EXPECT_EQ(destino->Transacao, "ABC1");
    EXPECT_EQ(destino->Job, "JOB");
    EXPECT_TRUE(destino->Java);
}

TEST_F(CopiaTeste, ObtemTransacao3_ObjectOrFieldsThatLackSomething_RaiseOnlyWhenThereAreFields)
{
    EXPECT_TRUE(Lanca(438, "ZTAVOREQUIP", [&] { Copia(ParaOModulo(Novo<TransacaoPobre>())); }));
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { Copia(nullptr); }));
    Ref<ITransacao> nenhuma;
    geral->ObtemTransacao3("XYZ", nenhuma);
    EXPECT_TRUE(nenhuma.Nada());

    auto transacao = Novo<TransacaoPobre>();
    transacao->Entrada = Novo<Colecao<Ref<CampoTransacao>>>();
    transacao->Entrada->Add(nullptr);
    Particular()->Transacoes["CABC"] = transacao;
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [&] { Copia(ParaOModulo(Novo<TransacaoRoteirizada>())); }));
}

TEST_F(CopiaTeste, ObtemTransacao3_FieldNameTwice_RaisesFourHundredFiftySeven)
{
    for (const auto campos : {&TransacaoRoteirizada::Entrada, &TransacaoRoteirizada::Saida}) {
        auto transacao = Novo<TransacaoRoteirizada>();
        (*transacao).*campos = Campos({{"PLACA", "1"}, {"UF", "RS"}});
        ((*transacao).*campos)->Item(2)->Nome = "placa";
        Particular()->Transacoes["CABC"] = transacao;
        Oferta destino = Novo<TransacaoRoteirizada>();
        EXPECT_TRUE(Lanca(457, "ZTAVOREQUIP", [&] { Copia(destino); }));
        ASSERT_FALSE(((*destino).*campos).Nada());
        EXPECT_EQ(((*destino).*campos)->Count(), 1);
    }
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
    ConfereVazia();
    EXPECT_TRUE(geral->Menus.aMenu.empty());
    EXPECT_TRUE(geral->Menus.aMenuAux.empty());
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
        auto banco = ParaOModulo(Novo<BancoLocal>(std::make_shared<RegistroChamadas>()));
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

TEST_F(GeralTeste, Encerra_FreshOrFinalisationThatFails_ReleasesAllTheSame)
{
    geral->Encerra();
    geral->Encerra();
    EXPECT_EQ(Particular()->VezesFinalizada, 0);
    Loga();
    Particular()->AoFinalizar = [] { throw Falha(51); };
    geral->Encerra();
    ConfereVazia();
}

TEST_F(GeralTeste, Destruction_Configured_EndsTheShellAndLetsGoOfTheSharedForms)
{
    Loga();
    auto form = FormMostrado();
    RefFraca<FormDeTeste> fraca = FormCompartilhado<FormDeTeste>();
    ASSERT_FALSE(fraca.Nada());
    auto particular = Particular();
    shell = nullptr;
    geral = nullptr;
    EXPECT_EQ(particular->VezesFinalizada, 1);
    EXPECT_FALSE(form->Carregado());
    EXPECT_TRUE(goGeral.Nada());
    EXPECT_TRUE(fraca.Nada());
}

} // namespace
