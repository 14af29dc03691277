#include "shell/ModGeral.h"

#include "tests/shell/FormDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/UmControle.h"

#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

class ModGeralTeste : public HostTeste {
  protected:
    void TearDown() override
    {
        m_Form = nullptr;
        HostTeste::TearDown();
    }

    Ref<IztCombo> Combo() { return CriadoPeloHost<IztCombo>(m_Form, Chamado<AjustesZtCombo>("cbo")); }

    // Texts and values of a combo's items, "text|value".
    static Linhas Itens(const Ref<IztCombo> &combo)
    {
        Linhas itens;
        for (std::int16_t indice = 0; indice < combo->NroItens(); ++indice) {
            combo->DefineIndiceAtual(indice);
            itens.push_back(combo->Texto() + "|" + combo->Valor());
        }
        return itens;
    }

  private:
    Ref<FormDeTeste> m_Form = Novo<FormDeTeste>(); // holds the combos' place
};

// The singletons.

TEST_F(ModGeralTeste, goMensagem_OnFirstUse_IsCreatedWithTheProductNameAsTitle)
{
    LogaGeral();
    LiberaServicos();
    Ref<IMensagem> primeira = goMensagem();
    EXPECT_TRUE(goMensagem() == primeira);
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"Host.CriaMensagem()", "oAppEXE.ProductName -> \"Sistema de Autuações\"",
                                         "goMensagem.Titulo := \"Sistema de Autuações\""}));
}

TEST_F(ModGeralTeste, goMensagem_TitleThatCannotBeRead_PassesTheFaultAndIsTriedAgain)
{
    LogaGeral();
    LiberaServicos();
    host->FalhaEm("oAppEXE.ProductName", 1, 1001, "Sem nome");
    EXPECT_TRUE(Lanca(1001, "oAppEXE.ProductName", [] { goMensagem(); }));
    host->LimpaRegistro();
    goMensagem();
    EXPECT_EQ(host->Conta("goMensagem.Titulo := \"Sistema de Autuações\""), 1);
}

TEST_F(ModGeralTeste, goMensagem_WithoutShell_RaisesNinetyOne)
{
    EXPECT_EQ(FalhaLancada([] { goMensagem(); }).Numero, 91);
}

TEST_F(ModGeralTeste, goDadosVor_OnFirstUse_IsInitialisedWithTheInterfaceServices)
{
    LogaGeral();
    Ref<IDadosVor> primeiro = goDadosVor();
    EXPECT_TRUE(goDadosVor() == primeiro);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Host.CriaDadosVor()", "goDadosVor.Inicializa(ObjInterface)"}));
}

TEST_F(ModGeralTeste, goDadosVor_InitialisationThatFails_IsTriedAgain)
{
    LogaGeral();
    host->FalhaEm("goDadosVor.Inicializa");
    EXPECT_EQ(FalhaLancada([] { goDadosVor(); }).Fonte, "goDadosVor.Inicializa");
    goDadosVor();
    EXPECT_EQ(host->Conta("Host.CriaDadosVor()"), 2);
    EXPECT_EQ(host->Conta("goDadosVor.Inicializa(ObjInterface)"), 2);
}

TEST_F(ModGeralTeste, goDiretorios_Twice_IsCreatedOnce)
{
    LogaGeral();
    EXPECT_TRUE(goDiretorios() == goDiretorios());
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Host.CriaDiretorios()"}));
}

TEST_F(ModGeralTeste, ObjGlobalVor_Twice_IsCreatedOnceAndOutlivesTheLogoff)
{
    Ref<IObjGlobalVor> primeiro = ObjGlobalVor();
    LiberaServicos();
    EXPECT_TRUE(ObjGlobalVor() == primeiro);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Host.CriaObjGlobalVor()"}));
}

TEST_F(ModGeralTeste, Singletons_ClassThatIsNotThere_PassTheFault)
{
    LogaGeral();
    host->FalhaEm("Host.CriaDiretorios", 1, 429, "Não há");
    host->FalhaEm("Host.CriaDadosVor", 1, 429, "Não há");
    EXPECT_EQ(FalhaLancada([] { goDiretorios(); }).Numero, 429);
    EXPECT_EQ(FalhaLancada([] { goDadosVor(); }).Numero, 429);
}

// The gateway.

TEST_F(ModGeralTeste, goGateway_OnFirstUse_FollowsTheChainOnce)
{
    LogaGeral();
    Ref<IGateway> primeiro = goGateway();
    EXPECT_TRUE(goGateway() == primeiro);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objMTM.CreateQMR()", "QMR.CreateNewTrataBD()",
                                                 "TrataBD.InicializaInfoSistema(\"VOR\", 1)", "TrataBD.pQMR()",
                                                 "QMR.Sessao()", "objMTM.ObtemGateway()"}));
}

TEST_F(ModGeralTeste, goGateway_AfterLogoff_IsBuiltAgainFromTheDatabaseHelper)
{
    LogaGeral();
    goGateway();
    geral->Logoff();
    geral->Logon(host->objMTM, host->objSCA, "");
    host->LimpaRegistro();
    goGateway();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objMTM.CreateQMR()", "QMR.CreateNewTrataBD()",
                                                 "TrataBD.InicializaInfoSistema(\"VOR\", 1)", "TrataBD.pQMR()",
                                                 "QMR.Sessao()", "objMTM.ObtemGateway()"}));
}

TEST_F(ModGeralTeste, goGateway_AnyStepThatFails_PassesTheFaultUnchangedAndIsTriedAgain)
{
    LogaGeral();
    for (const char *passo : {"objMTM.CreateQMR", "QMR.CreateNewTrataBD", "TrataBD.InicializaInfoSistema",
                              "TrataBD.pQMR", "QMR.Sessao", "objMTM.ObtemGateway"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 1002, "Sem rede");
        EXPECT_TRUE(Lanca(1002, passo, "Sem rede", [] { goGateway(); }));
    }
    EXPECT_FALSE(goGateway().Nada());
}

TEST_F(ModGeralTeste, goGateway_WithoutSession_RaisesNinetyOne)
{
    EXPECT_EQ(FalhaLancada([] { goGateway(); }).Numero, 91);
}

TEST_F(ModGeralTeste, LiberaServicos_WithEveryService_FinalisesTheDomainDataAndForgetsAll)
{
    LogaGeral();
    goDadosVor();
    goMensagem();
    goDiretorios();
    goGateway();
    host->LimpaRegistro();
    LiberaServicos();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"goDadosVor.Finaliza()"}));
    host->LimpaRegistro();
    goDadosVor();
    goMensagem();
    goDiretorios();
    goGateway();
    for (const char *criacao :
         {"Host.CriaDadosVor()", "Host.CriaMensagem()", "Host.CriaDiretorios()", "objMTM.ObtemGateway()"}) {
        EXPECT_EQ(host->Conta(criacao), 1) << criacao;
    }
}

TEST_F(ModGeralTeste, LiberaServicos_WhileTheDomainDataEnds_ItAndTheOthersAreStillThere)
{
    LogaGeral();
    const Ref<IDadosVor> dados = goDadosVor();
    const Ref<IMensagem> mensagem = goMensagem();
    const Ref<IDiretorios> diretorios = goDiretorios();
    const Ref<IGateway> gateway = goGateway();
    std::int32_t vezes = 0;
    host->ObservaChamadas([&] {
        ++vezes;
        EXPECT_TRUE(goDadosVor() == dados);
        EXPECT_TRUE(goMensagem() == mensagem);
        EXPECT_TRUE(goDiretorios() == diretorios);
        EXPECT_TRUE(goGateway() == gateway);
    });
    LiberaServicos();
    host->ObservaChamadas(nullptr);
    EXPECT_EQ(vezes, 1); // its end alone
}

TEST_F(ModGeralTeste, LiberaServicos_AfterALogon_LeavesTheShellAndTheCredential)
{
    LogaGeral();
    glCredencial = 11;
    glCodMunicLogon = 7;
    LiberaServicos();
    EXPECT_TRUE(goGeral.Alvo() == geral);
    EXPECT_EQ(glCredencial, 11);
    EXPECT_EQ(glCodMunicLogon, 7);
}

TEST_F(ModGeralTeste, LiberaServicos_WithoutServices_CreatesAndCallsNothing)
{
    LogaGeral();
    LiberaServicos(); // the messages that the logon has needed
    host->LimpaRegistro();
    LiberaServicos();
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(ModGeralTeste, LiberaServicos_FinalisationThatFails_ForgetsAllTheSame)
{
    LogaGeral();
    goDadosVor();
    host->FalhaEm("goDadosVor.Finaliza");
    LiberaServicos();
    host->LimpaRegistro();
    goDadosVor();
    EXPECT_EQ(host->Conta("Host.CriaDadosVor()"), 1);
}

TEST_F(ModGeralTeste, DescarregaModulo_AfterALogon_LeavesNothingBehindAndFinalisesNothing)
{
    host->Dominio->CodMunic = 8801;
    LogaGeral();
    goDadosVor();
    ASSERT_EQ(glCodMunicLogon, 8801);
    DescarregaModulo();
    EXPECT_TRUE(host->Registro() == Linhas({"Host.CriaDadosVor()", "goDadosVor.Inicializa(ObjInterface)"}));
    EXPECT_TRUE(goGeral.Nada());
    EXPECT_EQ(glCredencial, 0);
    EXPECT_EQ(glCodMunicLogon, 0);
    host->LimpaRegistro();
    ObjGlobalVor();
    EXPECT_EQ(host->Conta("Host.CriaObjGlobalVor()"), 1);
}

// The end of every error chain.

TEST_F(ModGeralTeste, gSubMostraErro_WithParts_ResetsThePointerAndThenShowsThem)
{
    LogaGeral();
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    host->LimpaRegistro();
    gSubMostraErro("frmLista.cmdOK_Click", 457, "A chave já está em uso", "ZTAVOREQUIP < clsX.Carrega");
    EXPECT_EQ(Plataforma()->Ponteiro(), 0);
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"Plataforma.Ponteiro := 0", "oAppEXE.ProductName -> \"Sistema de Autuações\"",
         "goMensagem.ExibeErro(\"frmLista.cmdOK_Click\", 457, \"A chave já está em uso\", \"ZTAVOREQUIP < "
         "clsX.Carrega\", \"Sistema de Autuações\")"}));
}

TEST_F(ModGeralTeste, gSubMostraErro_InACatchBlock_ShowsTheFaultBeingHandled)
{
    LogaGeral();
    try {
        throw Falha(1033, "ZTAVOREQUIP.Geral.ImprimirRelatorio", "Objeto de Relatorios nao Definido");
    } catch (...) {
        gSubMostraErro("COEquipamentos.Inativar");
    }
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COEquipamentos.Inativar");
    EXPECT_EQ(host->Erros()[0].Numero, 1033);
    EXPECT_EQ(host->Erros()[0].Descricao, "Objeto de Relatorios nao Definido");
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP.Geral.ImprimirRelatorio");
    EXPECT_EQ(host->Erros()[0].Titulo, "Sistema de Autuações");
}

TEST_F(ModGeralTeste, gSubMostraErro_AnythingInItFails_RaisesNothing)
{
    LogaGeral();
    for (const char *passo : {"Plataforma.Ponteiro", "oAppEXE.ProductName", "goMensagem.ExibeErro"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo);
        gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    }
    // A pointer or a title that cannot be had does not keep the fault from being shown.
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[0].Titulo, "Sistema de Autuações");
    EXPECT_EQ(host->Erros()[1].Titulo, "");
}

TEST_F(ModGeralTeste, gSubMostraErro_TitleCannotBeHad_ShowsTheFaultAndTheServiceIsBuiltAtTheNextUse)
{
    LogaGeral();
    LiberaServicos();
    host->LimpaRegistro();
    host->FalhaEm("oAppEXE.ProductName");    // the title of the box
    host->FalhaEm("oAppEXE.ProductName", 2); // and that of the service, which is not there yet
    gSubMostraErro("frmLista.cmdOK_Click", 5, "Descrição", "Fonte");
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmLista.cmdOK_Click");
    EXPECT_EQ(host->Erros()[0].Numero, 5);
    EXPECT_EQ(host->Erros()[0].Descricao, "Descrição");
    EXPECT_EQ(host->Erros()[0].Fonte, "Fonte");
    EXPECT_EQ(host->Erros()[0].Titulo, "");
    EXPECT_EQ(host->Conta("goMensagem.Titulo"), 0);

    gSubMostraErro("frmLista.cmdOK_Click", 5, "Descrição", "Fonte");
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[1].Titulo, "Sistema de Autuações");
    EXPECT_EQ(host->Conta("goMensagem.Titulo := \"Sistema de Autuações\""), 1);
}

TEST_F(ModGeralTeste, gSubMostraErro_NoMessageService_ShowsTheDescriptionInABoxOfThePlatform)
{
    LogaGeral();
    LiberaServicos();
    host->FalhaEm("Host.CriaMensagem");
    host->FalhaEm("Host.CriaMensagem", 2);
    gSubMostraErro("frmLista.cmdOK_Click", 5, "Descrição", "Fonte");
    EXPECT_TRUE(host->Erros().empty());
    ASSERT_EQ(host->Tela->Caixas().size(), 1U);
    EXPECT_EQ(host->Tela->Caixas()[0].Texto, "Descrição");
    EXPECT_EQ(host->Tela->Caixas()[0].Titulo, "Sistema de Autuações");
}

TEST_F(ModGeralTeste, gSubMostraErro_WithoutShell_ShowsTheFaultWithoutATitle)
{
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    EXPECT_EQ(Plataforma()->Ponteiro(), 0);
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Descricao, "Descrição");
    EXPECT_EQ(host->Erros()[0].Titulo, "");
}

TEST_F(ModGeralTeste, gSubMostraErro_WithoutHost_RaisesNothing)
{
    InstalaHost(nullptr);
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    InstalaHost(host);
    EXPECT_TRUE(host->Erros().empty());
}

// The code tables.

TEST_F(ModGeralTeste, gFunDescrEquipto_EachCode_GivesItsDescription)
{
    EXPECT_EQ(gFunDescrEquipto("C"), "Caetano");
    EXPECT_EQ(gFunDescrEquipto("L"), "Lombada");
    EXPECT_EQ(gFunDescrEquipto("P"), "Pardal");
    EXPECT_EQ(gFunDescrEquipto("M"), "Pardal Móvel");
    EXPECT_EQ(gFunDescrEquipto("R"), "Radar Fotográfico");
    EXPECT_EQ(gFunDescrEquipto("A"), "Operado por Agente");
    EXPECT_EQ(gFunDescrEquipto("E"), "Etilômetro");
    EXPECT_EQ(gFunDescrEquipto("F"), "Agente Eletrônico");
    EXPECT_EQ(gFunDescrEquipto("U"), "Luxímetro");
    EXPECT_EQ(gFunDescrEquipto("V"), "Verif. Estac. Rotativo");
}

TEST_F(ModGeralTeste, gFunDescrEquipto_AnyOtherText_IsUndefined)
{
    for (const char *codigo : {"", "c", "r", "T", "B", "CC", " C", "C "}) {
        EXPECT_EQ(gFunDescrEquipto(codigo), "Indefinido") << '"' << codigo << '"';
    }
}

TEST_F(ModGeralTeste, gFunDescrEquipto_OutOfMemory_GoesOnWithItsTail)
{
    const std::string codigo = "R";
    EXPECT_TRUE(Lanca(7, "ZTAVOREQUIP < ModGeral.gFunDescrEquipto", [&] {
        MemoriaEscassa escassa(1);
        gFunDescrEquipto(codigo);
    }));
}

TEST_F(ModGeralTeste, gFunDescrTipoAgente_EachCode_GivesItsDescription)
{
    EXPECT_EQ(gFunDescrTipoAgente(1), "Fixo");
    EXPECT_EQ(gFunDescrTipoAgente(2), "Estático");
    EXPECT_EQ(gFunDescrTipoAgente(3), "Portátil");
}

TEST_F(ModGeralTeste, gFunDescrTipoAgente_AnyOtherCode_IsUndefined)
{
    for (int codigo : {0, 4, -1, 32767, -32768}) {
        EXPECT_EQ(gFunDescrTipoAgente(static_cast<std::int16_t>(codigo)), "Indefinido") << codigo;
    }
}

// Combos.

TEST_F(ModGeralTeste, gSubCarregaMunicipios_FreshCombo_GetsNameAndCodeInTheCursorsOrder)
{
    LogaGeral();
    auto &municipios = host->MDB->TabelaDe("Municipio");
    municipios.Linhas.clear();
    host->MDB->PoeMunicipio(8801, "PORTO ALEGRE", "RS", 4314902);
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    host->MDB->PoeMunicipio(9999, "DISTRITO SEM CODIGO", "RS", 0);
    host->MDB->PoeMunicipio(8105, "FLORIANOPOLIS", "SC", 4205407);
    Ref<IztCombo> cbo = Combo();
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"AGUDO|8501", "PORTO ALEGRE|8801"}));
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"MDB", "Cursor"}),
                              {"MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND "
                               "COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO\", 4, ausente, ausente)*",
                               "Cursor.Close()"}));
}

TEST_F(ModGeralTeste, gSubCarregaMunicipios_Twice_AddsEveryMunicipalityTwice)
{
    LogaGeral();
    host->MDB->TabelaDe("Municipio").Linhas.clear();
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    host->MDB->PoeMunicipio(8801, "PORTO ALEGRE", "RS", 4314902);
    Ref<IztCombo> cbo = Combo();
    gSubCarregaMunicipios(cbo);
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"AGUDO|8501", "PORTO ALEGRE|8801", "AGUDO|8501", "PORTO ALEGRE|8801"}));
}

TEST_F(ModGeralTeste, gSubCarregaMunicipios_NullName_JoinsAsNothing)
{
    LogaGeral();
    auto &municipios = host->MDB->TabelaDe("Municipio");
    municipios.Linhas.clear();
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    for (Valor &celula : municipios.Linhas[0]) {
        if (celula == Valor("AGUDO")) {
            celula = Valor::Nulo();
        }
    }
    Ref<IztCombo> cbo = Combo();
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"|8501"}));
}

TEST_F(ModGeralTeste, gSubCarregaMunicipios_Fails_ShowsTheFaultAndReturns)
{
    LogaGeral();
    host->FalhaEm("MDB.OpenRecordset", 1, 3078, "Sem tabela");
    Ref<IztCombo> cbo = Combo();
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(cbo->NroItens(), 0);
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, ".gSubCarregaMunicipios");
    EXPECT_EQ(host->Erros()[0].Numero, 3078);
    EXPECT_EQ(host->Erros()[0].Fonte, "MDB.OpenRecordset");
}

TEST_F(ModGeralTeste, gSubCarregaMunicipios_NoCombo_ShowsNinetyOne)
{
    LogaGeral();
    gSubCarregaMunicipios(nullptr);
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 91);
}

TEST_F(ModGeralTeste, gSubCarregaArqLayout_WithFiles_ListsTheirNamesBehindNone)
{
    LogaGeral();
    host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\X.LAY", {}); // in the order of the file system
    host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\RADAR01.LAY", {});
    host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\leia.txt", {});
    Ref<IztCombo> cbo = Combo();
    cbo->AdicionaItem("velho|1");
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"NENHUM|NENHUM", "X|X", "RADAR01|RADAR01"}));
    EXPECT_TRUE(
        RegistroIgual(host->RegistroDe({"goDadosVor.DirLayouts", "Plataforma.P"}),
                      {"goDadosVor.DirLayouts() -> \"C:\\HOST\\LAYOUTS\\\"",
                       "Plataforma.PrimeiroArquivo(\"C:\\HOST\\LAYOUTS\\*.LAY\") -> \"X.LAY\"",
                       "Plataforma.ProximoArquivo() -> \"RADAR01.LAY\"", "Plataforma.ProximoArquivo() -> \"\""}));
}

TEST_F(ModGeralTeste, gSubCarregaArqLayout_NoFile_OffersOnlyNone)
{
    LogaGeral();
    Ref<IztCombo> cbo = Combo();
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"NENHUM|NENHUM"}));
    EXPECT_EQ(host->Conta("Plataforma.ProximoArquivo"), 0);
}

TEST_F(ModGeralTeste, gSubCarregaArqLayout_AccentedName_LosesTheExtensionOnly)
{
    LogaGeral();
    host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\AÇÃO.LAY", {});
    Ref<IztCombo> cbo = Combo();
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"NENHUM|NENHUM", "AÇÃO|AÇÃO"}));
}

TEST_F(ModGeralTeste, gSubCarregaArqLayout_Fails_ShowsTheFaultWithNoneAlreadyThere)
{
    LogaGeral();
    host->FalhaEm("goDadosVor.DirLayouts", 1, 76, "Sem diretório");
    Ref<IztCombo> cbo = Combo();
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"NENHUM|NENHUM"}));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, ".gSubCarregaArqLayout");
    EXPECT_EQ(host->Erros()[0].Numero, 76);
    EXPECT_EQ(host->Erros()[0].Fonte, "goDadosVor.DirLayouts");
}

TEST_F(ModGeralTeste, gSubCarregaArqLayout_ListingThatFailsInTheMiddle_KeepsWhatWasFound)
{
    LogaGeral();
    host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\A1.LAY", {});
    host->FalhaEm("Plataforma.ProximoArquivo");
    Ref<IztCombo> cbo = Combo();
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(cbo), (Linhas{"NENHUM|NENHUM", "A1|A1"}));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, ".gSubCarregaArqLayout");
}

// Columns of a list. What the list is told is kept by a list of this test.

class ListaAnotada : public IztList {
  public:
    Linhas Chamadas;
    std::int32_t FalhaNa = 0; // call that fails

    std::string_view NomeTipo() const override { return "ztList"; }
    void AdicionaColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                        std::int16_t largura, std::int16_t alinhamento, const std::string &marca, bool visivel) override
    {
        Anota("AdicionaColuna", numero, chave, titulo, largura, alinhamento, marca, visivel);
    }
    void AlteraPrimeiraColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                              std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                              bool visivel) override
    {
        Anota("AlteraPrimeiraColuna", numero, chave, titulo, largura, alinhamento, marca, visivel);
    }

    // Nothing else is used.
    const std::string &Nome() const override { return m_Vazio; }
    std::int16_t Indice() const override { return -1; }
    EspecieControle Especie() const override { return EspecieControle::ztList; }
    std::string Caption() const override { return {}; }
    void DefineCaption(const std::string &) override {}
    std::string Rotulo() const override { return {}; }
    void DefineRotulo(const std::string &) override {}
    Ref<IControle> Container() const override { return nullptr; }
    std::int16_t Pagina() const override { return -1; }
    std::int32_t Left() const override { return 0; }
    void DefineLeft(std::int32_t) override {}
    std::int32_t Top() const override { return 0; }
    void DefineTop(std::int32_t) override {}
    std::int32_t Width() const override { return 0; }
    void DefineWidth(std::int32_t) override {}
    std::int32_t Height() const override { return 0; }
    void DefineHeight(std::int32_t) override {}
    std::int16_t TabIndex() const override { return 0; }
    void DefineTabIndex(std::int16_t) override {}
    bool Enabled() const override { return true; }
    void DefineEnabled(bool) override {}
    bool Visible() const override { return true; }
    void DefineVisible(bool) override {}
    void SetFocus() override {}
    void Limpa(std::optional<bool>) override {}
    void CarregaItens(TabelaTexto &) override {}
    void AtualizaLista() override {}
    std::int32_t NroItens() const override { return 0; }
    std::int32_t ItemAtual() const override { return -1; }
    void DefineItemAtual(std::int32_t) override {}
    std::string Celula(std::int32_t, const std::string &) const override { return {}; }
    std::string ValorAtual(const std::string &) const override { return {}; }
    std::string ColunaAtual(std::int16_t) const override { return {}; }
    std::string Titulo() const override { return {}; }
    void DefineTitulo(const std::string &) override {}
    void DefineTemMais(bool) override {}
    void IncluiItensMenu(const std::vector<ItemMenuLista> &) override {}
    Ref<IItemMenu> ItemMenu(const std::string &) override { return nullptr; }
    void MenuVisivel(const std::string &, bool) override {}
    void MenuBloqueado(const std::string &, bool) override {}
    void MenuHabilitado(const std::string &, bool) override {}
    void MenuTexto(const std::string &, const std::string &) override {}
    void EstiloMenu1(std::int32_t) override {}
    void EstiloMenu2(std::int32_t) override {}
    void BarraCriteriosAtiva(bool) override {}
    std::int32_t BarraCriteriosAltura() const override { return 0; }
    void DefineBarraCriteriosAltura(std::int32_t) override {}
    void BotoesFecharAjuda(bool) override {}
    void DefineJanelaExibida(bool) override {}
    Evento<> &BotaoClick() override { return m_Evento; }
    Evento<> &ItemClick() override { return m_Evento; }
    Evento<std::string> &ItemMenuClicado() override { return m_ItemMenu; }
    Evento<> &HabilitaItensMenuLista() override { return m_Evento; }
    Evento<> &GotFocus() override { return m_Evento; }
    Evento<std::int32_t &> &AntesDeRemoverItem() override { return m_Remocao; }
    Evento<> &DepoisDeRemoverItem() override { return m_Evento; }
    Evento<bool &> &BotaoLocalizarValida() override { return m_Valida; }
    Evento<> &BotaoLocalizarEnvia() override { return m_Evento; }

  private:
    void Anota(const std::string &operacao, std::int16_t numero, const std::optional<std::string> &chave,
               const std::string &titulo, std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
               bool visivel)
    {
        Chamadas.push_back(
            operacao + "(" +
            ArgumentosLog(numero, chave ? TextoLog(*chave) : "ausente", titulo, largura, alinhamento, marca, visivel) +
            ")");
        if (static_cast<std::int32_t>(Chamadas.size()) == FalhaNa) {
            throw Falha(5, "ztList." + operacao, "Coluna recusada");
        }
    }

    std::string m_Vazio;
    Evento<> m_Evento;
    Evento<std::string> m_ItemMenu;
    Evento<std::int32_t &> m_Remocao;
    Evento<bool &> m_Valida;
};

TabelaColunas TresColunas()
{
    return {{}, {"Código", 1200, "", 0}, {"NroIntEquip", 0, "", 0}, {"Verificação", 1000, "data", 2}};
}

TEST_F(ModGeralTeste, gsubConfigLista_Columns_ChangesTheFirstAndAddsTheOthers)
{
    auto lista = Novo<ListaAnotada>();
    gsubConfigLista(TresColunas(), lista);
    EXPECT_EQ(lista->Chamadas, (Linhas{"AlteraPrimeiraColuna(1, \"ausente\", \"Código\", 1200, 0, \"\", True)",
                                       "AdicionaColuna(2, \"ausente\", \"NroIntEquip\", 0, 0, \"\", False)",
                                       "AdicionaColuna(3, \"ausente\", \"Verificação\", 1000, 2, \"data\", True)"}));
}

TEST_F(ModGeralTeste, gsubConfigLista_WidthOne_ShowsTheColumn)
{
    auto lista = Novo<ListaAnotada>();
    gsubConfigLista({{}, {"X", 1, "", 0}, {"Y", 1, "", 0}}, lista);
    EXPECT_EQ(lista->Chamadas, (Linhas{"AlteraPrimeiraColuna(1, \"ausente\", \"X\", 1, 0, \"\", True)",
                                       "AdicionaColuna(2, \"ausente\", \"Y\", 1, 0, \"\", True)"}));
}

TEST_F(ModGeralTeste, gsubConfigLista_NegativeWidth_HidesTheColumn)
{
    auto lista = Novo<ListaAnotada>();
    gsubConfigLista({{}, {"X", -1, "", 0}}, lista);
    EXPECT_EQ(lista->Chamadas, (Linhas{"AlteraPrimeiraColuna(1, \"ausente\", \"X\", -1, 0, \"\", False)"}));
}

TEST_F(ModGeralTeste, gsubConfigLista_NothingAboveElementZero_ChangesNothing)
{
    auto lista = Novo<ListaAnotada>();
    gsubConfigLista({{}}, lista);
    gsubConfigLista({}, lista);
    gsubConfigLista({{"Título", 100, "", 0}}, lista);
    EXPECT_TRUE(lista->Chamadas.empty());
}

TEST_F(ModGeralTeste, gsubConfigLista_Fails_GoesOnWithATailWithoutModule)
{
    auto lista = Novo<ListaAnotada>();
    lista->FalhaNa = 2;
    EXPECT_TRUE(Lanca(5, "ztList.AdicionaColuna < gsubConfigLista", "Coluna recusada",
                      [&] { gsubConfigLista(TresColunas(), lista); }));
    EXPECT_EQ(lista->Chamadas.size(), 2U);
}

TEST_F(ModGeralTeste, gsubConfigLista_NoList_RaisesNinetyOneWithItsTail)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < gsubConfigLista", [] { gsubConfigLista(TresColunas(), nullptr); }));
}

// The calibration in force.

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_InForce_AsksTheServiceStepByStep)
{
    LogaGeral();
    host->Atende<ConsultaAfericaoED>("EquiptoRN", "consultaSimplesAfericaoVigente",
                                     [](const Ref<ConsultaAfericaoED> &) -> Resposta {
                                         auto afericao = Novo<AfericaoED>();
                                         afericao->NroIntAfericao = 77;
                                         return afericao;
                                     });
    Ref<AfericaoED> afericao = gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026), std::int16_t{1});
    ASSERT_FALSE(afericao.Nada());
    EXPECT_EQ(afericao->NroIntAfericao.Valor(), 77);
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Gateway", "EquiptoRN"}),
        {"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
         "EquiptoRN.ExecutaMetodo(\"consultaSimplesAfericaoVigente\", ConsultaAfericaoED{DtInfracao=20/11/2026, "
         "NroIntEquip=12, TipoConsulta=1}) -> True",
         "EquiptoRN.ObtemRetorno()*"}));
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_OptionalValueLeftOut_IsSentAsZero)
{
    LogaGeral();
    host->Atende<ConsultaAfericaoED>("EquiptoRN", "consultaSimplesAfericaoVigente",
                                     [](const Ref<ConsultaAfericaoED> &pedido) -> Resposta {
                                         EXPECT_TRUE(pedido->TipoConsulta.Escrito());
                                         EXPECT_EQ(pedido->TipoConsulta.Valor(), 0);
                                         return Novo<AfericaoED>();
                                     });
    EXPECT_FALSE(gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026)).Nada());
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_Refused_ShowsTheProxysErrorAndGivesNothing)
{
    LogaGeral();
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Equipamento inexistente");
    EXPECT_TRUE(gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026), std::int16_t{1}).Nada());
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"Equipamento inexistente\""), 1);
    EXPECT_EQ(host->Conta("EquiptoRN.ObtemRetorno"), 0);
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_MachineryFails_GoesOnWithItsTail)
{
    LogaGeral();
    host->Atende<ConsultaAfericaoED>("EquiptoRN", "consultaSimplesAfericaoVigente",
                                     [](const Ref<ConsultaAfericaoED> &) -> Resposta { return Novo<AfericaoED>(); });
    for (const char *passo : {"objMTM.CreateQMR", "objMTM.ObtemGateway", "Gateway.CriaObjetoRN",
                              "EquiptoRN.ExecutaMetodo", "EquiptoRN.ObtemRetorno"}) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 1003, "Sem rede");
        EXPECT_TRUE(Lanca(1003, std::string(passo) + " < ModGeral.gFunConsultaAfericaoVigente", "Sem rede",
                          [] { gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026), std::int16_t{1}); }));
    }
    EXPECT_FALSE(gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026), std::int16_t{1}).Nada());
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_AnswerOfAnotherClass_RaisesThirteen)
{
    LogaGeral();
    host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente",
                  [](const Ref<Registro> &) -> Resposta { return Novo<EquiptoED>(); });
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP < ModGeral.gFunConsultaAfericaoVigente",
                      [] { gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}); }));
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_AnswerThatIsNoObject_RaisesFourHundredTwentyFour)
{
    LogaGeral();
    host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente",
                  [](const Ref<Registro> &) -> Resposta { return Valor("nenhuma"); });
    EXPECT_EQ(FalhaLancada([] { gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}); }).Numero, 424);
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_RequestReplacedByAnotherRecordOfItsType_IsNoMatter)
{
    LogaGeral();
    host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente", [](const Ref<Registro> &) -> Resposta {
        return Resposta(Novo<AfericaoED>()).Troca(Novo<ConsultaAfericaoED>());
    });
    EXPECT_FALSE(gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}).Nada());
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_RequestReplacedByARecordOfAnotherType_RaisesThirteen)
{
    LogaGeral();
    host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente", [](const Ref<Registro> &) -> Resposta {
        return Resposta(Novo<AfericaoED>()).Troca(Novo<EquiptoED>());
    });
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP < ModGeral.gFunConsultaAfericaoVigente",
                      [] { gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}); }));
    EXPECT_EQ(host->Conta("EquiptoRN.ObtemRetorno"), 0);
}

TEST_F(ModGeralTeste, gFunConsultaAfericaoVigente_AnswerNothing_GivesNothing)
{
    LogaGeral();
    host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente",
                  [](const Ref<Registro> &) -> Resposta { return Ref<AfericaoED>(); });
    EXPECT_TRUE(gFunConsultaAfericaoVigente(12, Data(), std::int16_t{1}).Nada());
}

// Focus.

class FocavelDeTeste : public IFocavel {
  public:
    std::string_view NomeTipo() const override { return "controle"; }
    bool Habilitado = true;
    bool Visivel = true;
    bool Falhando = false;
    std::int32_t Focos = 0;

    bool Enabled() const override
    {
        if (Falhando) {
            throw Falha(438);
        }
        return Habilitado;
    }
    void DefineEnabled(bool) override {}
    bool Visible() const override { return Visivel; }
    void DefineVisible(bool) override {}
    void SetFocus() override { ++Focos; }
};

TEST_F(ModGeralTeste, gSubDefineFoco_EnabledVisibleControl_GetsTheFocus)
{
    auto ctl = Novo<FocavelDeTeste>();
    gSubDefineFoco(ctl);
    EXPECT_EQ(ctl->Focos, 1);
}

TEST_F(ModGeralTeste, gSubDefineFoco_DisabledHiddenOrFailingControl_IsPassedOver)
{
    auto desabilitado = Novo<FocavelDeTeste>();
    desabilitado->Habilitado = false;
    auto escondido = Novo<FocavelDeTeste>();
    escondido->Visivel = false;
    auto falhando = Novo<FocavelDeTeste>();
    falhando->Falhando = true;
    for (const Ref<FocavelDeTeste> &ctl : {desabilitado, escondido, falhando}) {
        gSubDefineFoco(ctl);
        EXPECT_EQ(ctl->Focos, 0);
    }
}

TEST_F(ModGeralTeste, gSubDefineFoco_Nothing_RaisesNothing)
{
    gSubDefineFoco(nullptr);
}

TEST_F(ModGeralTeste, gSubDefineFoco_MinimisedForm_GetsTheFocusAndIsRestored)
{
    auto form = Novo<FormDeTeste>();
    form->Carregar();
    form->DefineVisible(true);
    form->DefineWindowState(JanelaMinimizada);
    host->LimpaRegistro();
    gSubDefineFoco(form);
    EXPECT_EQ(host->Conta("frmTeste.SetFocus()"), 1);
    EXPECT_EQ(form->WindowState(), JanelaNormal);
}

TEST_F(ModGeralTeste, gSubDefineFoco_HiddenMinimisedForm_IsRestoredWithoutFocus)
{
    auto form = Novo<FormDeTeste>();
    form->Carregar();
    form->DefineWindowState(JanelaMinimizada);
    gSubDefineFoco(form);
    EXPECT_EQ(host->Conta("frmTeste.SetFocus()"), 0);
    EXPECT_EQ(form->WindowState(), JanelaNormal);
}

// A form that refuses the focus.
class FormSemFoco : public FormDeTeste {
  public:
    std::int32_t Pedidos = 0;

    void SetFocus() override
    {
        ++Pedidos;
        EXPECT_EQ(WindowState(), JanelaMinimizada); // restored only afterwards
        throw Falha(5);
    }
};

TEST_F(ModGeralTeste, gSubDefineFoco_MinimisedFormThatRefusesTheFocus_IsRestoredAllTheSame)
{
    auto form = Novo<FormSemFoco>();
    form->Carregar();
    form->DefineVisible(true);
    form->DefineWindowState(JanelaMinimizada);
    gSubDefineFoco(form);
    EXPECT_EQ(form->Pedidos, 1);
    EXPECT_EQ(form->WindowState(), JanelaNormal);
}

TEST_F(ModGeralTeste, gSubDefineFoco_MaximisedForm_StaysSo)
{
    auto form = Novo<FormDeTeste>();
    form->Carregar();
    form->DefineVisible(true);
    form->DefineWindowState(2);
    gSubDefineFoco(form);
    EXPECT_EQ(form->WindowState(), 2);
}

// Shared forms.

class FormCompartilhadoDeTeste : public FormDeTeste {};

TEST_F(ModGeralTeste, FormCompartilhado_UntilReleased_IsOneInstance)
{
    RefFraca<FormCompartilhadoDeTeste> fraca = FormCompartilhado<FormCompartilhadoDeTeste>();
    EXPECT_FALSE(fraca.Nada());
    EXPECT_TRUE(FormCompartilhado<FormCompartilhadoDeTeste>() == fraca.Alvo());
    LiberaFormsCompartilhados();
    EXPECT_TRUE(fraca.Nada());
    EXPECT_FALSE(FormCompartilhado<FormCompartilhadoDeTeste>().Nada());
    LiberaFormsCompartilhados();
    LiberaFormsCompartilhados();
}

} // namespace
