#include "shell/ModGeral.h"

#include "controls/ztList.h"
#include "tests/shell/FormDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/UmControle.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
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

    void UsaServicos()
    {
        goDadosVor();
        goMensagem();
        goDiretorios();
        goGateway();
    }

    const Linhas CaminhoDoGateway{
        "objMTM.CreateQMR()", "QMR.CreateNewTrataBD()", "TrataBD.InicializaInfoSistema(\"VOR\", 1)",
        "TrataBD.pQMR()",     "QMR.Sessao()",           "objMTM.ObtemGateway()"};
    Ref<FormDeTeste> m_Form = Novo<FormDeTeste>(); // holds a control's place
};

// A combo that the module fills.
class ComboTeste : public ModGeralTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        cbo = CriadoPeloHost<IztCombo>(m_Form, Chamado<AjustesZtCombo>("cbo"));
        host->MDB->TabelaDe("Municipio").Linhas.clear();
    }

    void TearDown() override
    {
        cbo = nullptr;
        ModGeralTeste::TearDown();
    }

    // Texts and values of its items, "text|value".
    Linhas Itens() const
    {
        Linhas itens;
        for (std::int16_t indice = 0; indice < cbo->NroItens(); ++indice) {
            cbo->DefineIndiceAtual(indice);
            itens.push_back(cbo->Texto() + "|" + cbo->Valor());
        }
        return itens;
    }

    void PoeLayout(const std::string &nome) { host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\" + nome, {}); }

    Ref<IztCombo> cbo;
};

// The singletons.

TEST_F(ModGeralTeste, Singletons_Twice_AreCreatedOnceAndOnlyTheApplicationsOutlivesTheLogoff)
{
    const Ref<IObjGlobalVor> global = ObjGlobalVor();
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Host.CriaObjGlobalVor()"}));
    LogaGeral();
    LiberaServicos();
    EXPECT_TRUE(goMensagem() == goMensagem());
    EXPECT_TRUE(goDadosVor() == goDadosVor());
    EXPECT_TRUE(goDiretorios() == goDiretorios());
    EXPECT_TRUE(ObjGlobalVor() == global);
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"Host.CriaMensagem()", "oAppEXE.ProductName -> \"Sistema de Autuações\"",
                                         "goMensagem.Titulo := \"Sistema de Autuações\"", "Host.CriaDadosVor()",
                                         "goDadosVor.Inicializa(ObjInterface)", "Host.CriaDiretorios()"}));
}

TEST_F(ModGeralTeste, goMensagem_TitleThatCannotBeRead_PassesTheFaultAndIsTriedAgain)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [] { goMensagem(); })); // there is no shell
    LogaGeral();
    LiberaServicos();
    FalhaEmCada({"oAppEXE.ProductName"}, "", [] { goMensagem(); });
    host->LimpaRegistro();
    goMensagem();
    EXPECT_EQ(host->Conta("goMensagem.Titulo := \"Sistema de Autuações\""), 1);
}

TEST_F(ModGeralTeste, Singletons_ClassOrInitialisationThatFails_PassTheFaultAndAreTriedAgain)
{
    LogaGeral();
    FalhaEmCada({"Host.CriaDadosVor", "goDadosVor.Inicializa"}, "", [] { goDadosVor(); });
    FalhaEmCada({"Host.CriaDiretorios"}, "", [] { goDiretorios(); });
    goDadosVor();
    EXPECT_EQ(host->Conta("Host.CriaDadosVor()"), 3);
    EXPECT_EQ(host->Conta("goDadosVor.Inicializa(ObjInterface)"), 2);
}

// The gateway.

TEST_F(ModGeralTeste, goGateway_OnFirstUseAndAfterLogoff_FollowsTheChainOnce)
{
    LogaGeral();
    for (int logon = 0; logon < 2; ++logon) {
        Ref<IGateway> primeiro = goGateway();
        EXPECT_TRUE(goGateway() == primeiro);
        EXPECT_TRUE(RegistroIgual(host->Registro(), CaminhoDoGateway));
        geral->Logoff();
        geral->Logon(host->objMTM, host->objSCA, "");
        host->LimpaRegistro();
    }
}

TEST_F(ModGeralTeste, goGateway_AnyStepThatFails_PassesTheFaultUnchangedAndIsTriedAgain)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", [] { goGateway(); })); // there is no session
    LogaGeral();
    FalhaEmCada({"objMTM.CreateQMR", "QMR.CreateNewTrataBD", "TrataBD.InicializaInfoSistema", "TrataBD.pQMR",
                 "QMR.Sessao", "objMTM.ObtemGateway"},
                "", [] { goGateway(); });
    EXPECT_FALSE(goGateway().Nada());
}

TEST_F(ModGeralTeste, LiberaServicos_WithEveryService_FinalisesTheDomainDataAndForgetsAllWhateverHappens)
{
    LogaGeral();
    for (bool falha : {false, true}) {
        UsaServicos();
        host->LimpaRegistro();
        if (falha) {
            host->FalhaEm("goDadosVor.Finaliza");
        }
        LiberaServicos();
        EXPECT_TRUE(RegistroIgual(host->Registro(), {"goDadosVor.Finaliza()*"}));
        host->LimpaRegistro();
        UsaServicos();
        for (const char *criacao :
             {"Host.CriaDadosVor()", "Host.CriaMensagem()", "Host.CriaDiretorios()", "objMTM.ObtemGateway()"}) {
            EXPECT_EQ(host->Conta(criacao), 1) << criacao;
        }
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

TEST_F(ModGeralTeste, LiberaServicos_AfterALogon_LeavesTheShellAndTheCredentialAndCreatesNothing)
{
    LogaGeral();
    glCredencial = 11;
    glCodMunicLogon = 7;
    LiberaServicos(); // the messages that the logon has needed
    LiberaServicos();
    EXPECT_TRUE(goGeral.Alvo() == geral);
    EXPECT_EQ(glCredencial, 11);
    EXPECT_EQ(glCodMunicLogon, 7);
    EXPECT_TRUE(host->Registro().empty());
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
    EXPECT_EQ(ErrosInteiros(), Linhas{"COEquipamentos.Inativar|1033|Objeto de Relatorios nao Definido|"
                                      "ZTAVOREQUIP.Geral.ImprimirRelatorio|Sistema de Autuações"});
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
    EXPECT_EQ(ErrosInteiros(), (Linhas{"ctx|5|Descrição|Fonte|Sistema de Autuações", "ctx|5|Descrição|Fonte|"}));
}

TEST_F(ModGeralTeste, gSubMostraErro_TitleCannotBeHad_ShowsTheFaultAndTheServiceIsBuiltAtTheNextUse)
{
    LogaGeral();
    LiberaServicos();
    host->LimpaRegistro();
    host->FalhaEm("oAppEXE.ProductName");    // the title of the box
    host->FalhaEm("oAppEXE.ProductName", 2); // and that of the service, which is not there yet
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    EXPECT_EQ(host->Conta("goMensagem.Titulo"), 0);
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    EXPECT_EQ(ErrosInteiros(), (Linhas{"ctx|5|Descrição|Fonte|", "ctx|5|Descrição|Fonte|Sistema de Autuações"}));
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

TEST_F(ModGeralTeste, gSubMostraErro_WithoutShellOrHost_ShowsTheFaultWithoutATitleOrNothing)
{
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    EXPECT_EQ(Plataforma()->Ponteiro(), 0);
    InstalaHost(nullptr);
    gSubMostraErro("ctx", 5, "Descrição", "Fonte");
    InstalaHost(host);
    EXPECT_EQ(ErrosInteiros(), Linhas{"ctx|5|Descrição|Fonte|"});
}

// The code tables.

TEST_F(ModGeralTeste, gFunDescrEquipto_EachCode_GivesItsDescriptionAndAnyOtherTextIsUndefined)
{
    const std::vector<std::pair<std::string, std::string>> tabela = {{"C", "Caetano"},
                                                                     {"L", "Lombada"},
                                                                     {"P", "Pardal"},
                                                                     {"M", "Pardal Móvel"},
                                                                     {"R", "Radar Fotográfico"},
                                                                     {"A", "Operado por Agente"},
                                                                     {"E", "Etilômetro"},
                                                                     {"F", "Agente Eletrônico"},
                                                                     {"U", "Luxímetro"},
                                                                     {"V", "Verif. Estac. Rotativo"}};
    for (const auto &[codigo, descricao] : tabela) {
        EXPECT_EQ(gFunDescrEquipto(codigo), descricao);
    }
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

TEST_F(ModGeralTeste, gFunDescrTipoAgente_EachCode_GivesItsDescriptionAndAnyOtherIsUndefined)
{
    EXPECT_EQ(gFunDescrTipoAgente(1), "Fixo");
    EXPECT_EQ(gFunDescrTipoAgente(2), "Estático");
    EXPECT_EQ(gFunDescrTipoAgente(3), "Portátil");
    for (int codigo : {0, 4, -1, 32767, -32768}) {
        EXPECT_EQ(gFunDescrTipoAgente(static_cast<std::int16_t>(codigo)), "Indefinido") << codigo;
    }
}

// Combos.

TEST_F(ComboTeste, gSubCarregaMunicipios_FreshCombo_GetsNameAndCodeInTheCursorsOrderAtEachCall)
{
    host->MDB->PoeMunicipio(8801, "PORTO ALEGRE", "RS", 4314902);
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    host->MDB->PoeMunicipio(9999, "DISTRITO SEM CODIGO", "RS", 0);
    host->MDB->PoeMunicipio(8105, "FLORIANOPOLIS", "SC", 4205407);
    gSubCarregaMunicipios(cbo);
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"MDB", "Cursor"}),
                              {"MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND "
                               "COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO\", 4, ausente, ausente)*",
                               "Cursor.Close()"}));
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(Itens(), (Linhas{"AGUDO|8501", "PORTO ALEGRE|8801", "AGUDO|8501", "PORTO ALEGRE|8801"}));
}

TEST_F(ComboTeste, gSubCarregaMunicipios_NullName_JoinsAsNothing)
{
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    auto &celulas = host->MDB->TabelaDe("Municipio").Linhas[0];
    std::replace(celulas.begin(), celulas.end(), Valor("AGUDO"), Valor(Valor::Nulo()));
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(Itens(), (Linhas{"|8501"}));
}

TEST_F(ComboTeste, gSubCarregaMunicipios_Fails_ShowsTheFaultAndReturns)
{
    host->MDB->PoeMunicipio(8501, "AGUDO", "RS", 4300109);
    host->FalhaEm("MDB.OpenRecordset", 1, 3078, "Sem tabela");
    gSubCarregaMunicipios(cbo);
    EXPECT_EQ(cbo->NroItens(), 0);
    gSubCarregaMunicipios(nullptr);
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(), {".gSubCarregaMunicipios|3078|Sem tabela|MDB.OpenRecordset|*",
                                                ".gSubCarregaMunicipios|91|*"}));
}

TEST_F(ComboTeste, gSubCarregaArqLayout_WithFiles_ListsTheirNamesBehindNone)
{
    for (const char *nome : {"X.LAY", "RADAR01.LAY", "leia.txt", "AÇÃO.LAY"}) { // in the order of the file system
        PoeLayout(nome);
    }
    cbo->AdicionaItem("velho|1");
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(), (Linhas{"NENHUM|NENHUM", "X|X", "RADAR01|RADAR01", "AÇÃO|AÇÃO"}));
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goDadosVor.DirLayouts", "Plataforma.P"}),
                              {"goDadosVor.DirLayouts() -> \"C:\\HOST\\LAYOUTS\\\"",
                               "Plataforma.PrimeiroArquivo(\"C:\\HOST\\LAYOUTS\\*.LAY\") -> \"X.LAY\"",
                               "Plataforma.ProximoArquivo() -> \"RADAR01.LAY\"",
                               "Plataforma.ProximoArquivo() -> \"AÇÃO.LAY\"", "Plataforma.ProximoArquivo() -> \"\""}));
}

TEST_F(ComboTeste, gSubCarregaArqLayout_NoFile_OffersOnlyNone)
{
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(), (Linhas{"NENHUM|NENHUM"}));
    EXPECT_EQ(host->Conta("Plataforma.ProximoArquivo"), 0);
}

TEST_F(ComboTeste, gSubCarregaArqLayout_Fails_ShowsTheFaultAndKeepsWhatWasFound)
{
    PoeLayout("A1.LAY");
    host->FalhaEm("goDadosVor.DirLayouts", 1, 76, "Sem diretório");
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(), (Linhas{"NENHUM|NENHUM"}));
    host->FalhaEm("Plataforma.ProximoArquivo");
    gSubCarregaArqLayout(cbo);
    EXPECT_EQ(Itens(), (Linhas{"NENHUM|NENHUM", "A1|A1"}));
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(), {".gSubCarregaArqLayout|76|Sem diretório|goDadosVor.DirLayouts|*",
                                                ".gSubCarregaArqLayout|51|*"}));
}

// Columns of a list. What the list is told is kept by a list of this test.

class ListaAnotada : public ztList {
  public:
    using ztList::ztList;

    Linhas Chamadas;
    std::int32_t FalhaNa = 0; // call that fails

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

  private:
    template <class... Outros>
    void Anota(const std::string &operacao, std::int16_t numero, const std::optional<std::string> &chave,
               const Outros &...outros)
    {
        Chamadas.push_back(operacao + "(" + ArgumentosLog(numero, chave ? TextoLog(*chave) : "ausente", outros...) +
                           ")");
        if (static_cast<std::int32_t>(Chamadas.size()) == FalhaNa) {
            throw Falha(5, "ztList." + operacao, "Coluna recusada");
        }
    }
};

class ListaTeste : public HostTeste {
  protected:
    void TearDown() override
    {
        lista = nullptr;
        HostTeste::TearDown();
    }

    Ref<ListaAnotada> lista = Feito<ListaAnotada>(FormNaTela(), Chamado<AjustesZtList>("ztl"));
};

TabelaColunas TresColunas()
{
    return {{}, {"Código", 1200, "", 0}, {"NroIntEquip", 0, "", 0}, {"Verificação", 1000, "data", 2}};
}

TEST_F(ListaTeste, gsubConfigLista_Columns_ChangesTheFirstAndAddsTheOthersShowingThoseWithAWidth)
{
    gsubConfigLista(TresColunas(), lista);
    gsubConfigLista({{}, {"X", 1, "", 0}, {"Y", 1, "", 0}}, lista);
    gsubConfigLista({{}, {"X", -1, "", 0}}, lista);
    EXPECT_EQ(lista->Chamadas, (Linhas{"AlteraPrimeiraColuna(1, \"ausente\", \"Código\", 1200, 0, \"\", True)",
                                       "AdicionaColuna(2, \"ausente\", \"NroIntEquip\", 0, 0, \"\", False)",
                                       "AdicionaColuna(3, \"ausente\", \"Verificação\", 1000, 2, \"data\", True)",
                                       "AlteraPrimeiraColuna(1, \"ausente\", \"X\", 1, 0, \"\", True)",
                                       "AdicionaColuna(2, \"ausente\", \"Y\", 1, 0, \"\", True)",
                                       "AlteraPrimeiraColuna(1, \"ausente\", \"X\", -1, 0, \"\", False)"}));
}

TEST_F(ListaTeste, gsubConfigLista_NothingAboveElementZero_ChangesNothing)
{
    gsubConfigLista({{}}, lista);
    gsubConfigLista({}, lista);
    gsubConfigLista({{"Título", 100, "", 0}}, lista);
    EXPECT_TRUE(lista->Chamadas.empty());
}

TEST_F(ListaTeste, gsubConfigLista_Fails_GoesOnWithATailWithoutModule)
{
    lista->FalhaNa = 2;
    EXPECT_TRUE(Lanca(5, "ztList.AdicionaColuna < gsubConfigLista", "Coluna recusada",
                      [&] { gsubConfigLista(TresColunas(), lista); }));
    EXPECT_EQ(lista->Chamadas.size(), 2U);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < gsubConfigLista", [] { gsubConfigLista(TresColunas(), nullptr); }));
}

// The calibration in force for equipment 12 on 20/11/2026.

class VigenteTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
    }

    void Responde(const std::function<Resposta()> &resposta)
    {
        host->Servico("EquiptoRN", "consultaSimplesAfericaoVigente",
                      [resposta](const Ref<Registro> &) -> Resposta { return resposta(); });
    }

    static Ref<AfericaoED> Consulta() { return gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026), std::int16_t{1}); }

    const std::string Cauda = " < ModGeral.gFunConsultaAfericaoVigente";
};

TEST_F(VigenteTeste, InForce_AsksTheServiceStepByStepAndAnOptionalValueLeftOutIsSentAsZero)
{
    Responde([] {
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = 77;
        return Resposta(afericao);
    });
    Ref<AfericaoED> afericao = Consulta();
    ASSERT_FALSE(afericao.Nada());
    EXPECT_EQ(afericao->NroIntAfericao.Valor(), 77);
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Gateway", "EquiptoRN"}),
        {"Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
         "EquiptoRN.ExecutaMetodo(\"consultaSimplesAfericaoVigente\", ConsultaAfericaoED{DtInfracao=20/11/2026, "
         "NroIntEquip=12, TipoConsulta=1}) -> True",
         "EquiptoRN.ObtemRetorno()*"}));
    EXPECT_FALSE(gFunConsultaAfericaoVigente(12, DataDe(20, 11, 2026)).Nada());
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"consultaSimplesAfericaoVigente\", "
                          "ConsultaAfericaoED{DtInfracao=20/11/2026, NroIntEquip=12, TipoConsulta=0})"),
              1);
}

TEST_F(VigenteTeste, Refused_ShowsTheProxysErrorAndGivesNothing)
{
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Equipamento inexistente");
    EXPECT_TRUE(Consulta().Nada());
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"Equipamento inexistente\""), 1);
    EXPECT_EQ(host->Conta("EquiptoRN.ObtemRetorno"), 0);
}

TEST_F(VigenteTeste, MachineryFails_GoesOnWithItsTail)
{
    Responde([] { return Resposta(Novo<AfericaoED>()); });
    FalhaEmCada({"objMTM.CreateQMR", "objMTM.ObtemGateway", "Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo",
                 "EquiptoRN.ObtemRetorno"},
                Cauda, [] { Consulta(); });
    EXPECT_FALSE(Consulta().Nada());
}

TEST_F(VigenteTeste, AnswerOfAnotherClassOrNoObject_RaisesWithItsTailAndNothingGivesNothing)
{
    Responde([] { return Resposta(Novo<EquiptoED>()); });
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP" + Cauda, [] { Consulta(); }));
    Responde([] { return Resposta(Valor("nenhuma")); });
    EXPECT_TRUE(Lanca(424, "ZTAVOREQUIP" + Cauda, [] { Consulta(); }));
    Responde([] { return Resposta(Ref<AfericaoED>()); });
    EXPECT_TRUE(Consulta().Nada());
}

TEST_F(VigenteTeste, RequestReplaced_IsNoMatterUnlessByARecordOfAnotherType)
{
    Responde([] { return Resposta(Novo<AfericaoED>()).Troca(Novo<ConsultaAfericaoED>()); });
    EXPECT_FALSE(Consulta().Nada());
    host->LimpaRegistro();
    Responde([] { return Resposta(Novo<AfericaoED>()).Troca(Novo<EquiptoED>()); });
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP" + Cauda, [] { Consulta(); }));
    EXPECT_EQ(host->Conta("EquiptoRN.ObtemRetorno"), 0);
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

TEST_F(ModGeralTeste, gSubDefineFoco_AControl_GetsTheFocusUnlessDisabledHiddenOrFailing)
{
    for (int caso = 0; caso < 4; ++caso) {
        auto ctl = Novo<FocavelDeTeste>();
        ctl->Habilitado = caso != 1;
        ctl->Visivel = caso != 2;
        ctl->Falhando = caso == 3;
        gSubDefineFoco(ctl);
        EXPECT_EQ(ctl->Focos, caso == 0 ? 1 : 0) << caso;
    }
    gSubDefineFoco(nullptr); // raises nothing
}

TEST_F(ModGeralTeste, gSubDefineFoco_AForm_IsRestoredWhenMinimisedAndGetsTheFocusWhenVisible)
{
    struct Caso {
        bool Visivel;
        std::int16_t Antes;
        std::int16_t Depois;
    };
    for (const Caso &caso : {Caso{true, JanelaMinimizada, JanelaNormal}, Caso{false, JanelaMinimizada, JanelaNormal},
                             Caso{true, 2, 2}}) { // maximised, it stays so
        m_Form->Carregar();
        m_Form->DefineVisible(caso.Visivel);
        m_Form->DefineWindowState(caso.Antes);
        host->LimpaRegistro();
        gSubDefineFoco(m_Form);
        EXPECT_EQ(host->Conta("frmTeste.SetFocus()") == 1, caso.Visivel);
        EXPECT_EQ(m_Form->WindowState(), caso.Depois);
    }
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
