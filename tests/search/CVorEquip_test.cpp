#include "search/CVorEquip.h"

#include "controls/ztCombo.h"
#include "controls/ztMask.h"
#include "shell/ModGeral.h"
#include "tests/search/JanelaTeste.h"
#include "tests/support/FalhaLancada.h"

#include <algorithm>

namespace {

class CVorEquipTeste : public JanelaTeste {
  protected:
    void SetUp() override
    {
        JanelaTeste::SetUp();
        host->objMTM->Cliente = "DAER";
        host->MDB->PoeEquipamento(101, "DAER", "RAD-01", 1, "R");
        host->Atende<EquiptoED>("EquiptoRN", "consultaSimples",
                                [this](const Ref<EquiptoED> &) { return Resposta(Consultado); });
        host->Atende<RelatorioAfericaoED>("RelatorioRN", "consultaRelatorioRVOR011",
                                          [this](const Ref<RelatorioAfericaoED> &) {
                                              auto resposta = Novo<RelatorioAfericaoED>();
                                              resposta->Documento = Documento;
                                              return Resposta(resposta);
                                          });
    }

    Ref<EquiptoED> Consultado = Equipto(101, "RAD-01", "R", 1);
    std::string Documento = "%PDF certificado";

    static std::string Propriedades(const CVorEquip &vor)
    {
        return CStr(vor.NroIntEquip()) + "|" + vor.Modelo() + "|" + vor.Codigo() + "|" + CStr(vor.VelocPerm()) + "|" +
               vor.NroInmetro() + "|" + vor.MarcaInmetro() + "|" + CStr(vor.DtVerifInmetro());
    }
    static constexpr const char *Vazias = "0|||0|||00:00:00";
    static constexpr const char *Cheias = "101|Modelo RAD-01|RAD-01|60|INM-77|ACME|05/03/2026";

    // One that holds the answer of an earlier question.
    Ref<CVorEquip> ComResposta()
    {
        auto vor = Novo<CVorEquip>();
        EXPECT_TRUE(vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
        EXPECT_EQ(Propriedades(*vor), Cheias);
        host->LimpaRegistro();
        return vor;
    }

    // The statement for a code, without a type.
    static std::string Sql(const std::string &codigo)
    {
        return "         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'DAER'     AND UCASE(Codigo) = "
               "'" +
               codigo + "'     AND Ativo = 1 ";
    }
    // The last query of the local database, without its result.
    std::string Consulta()
    {
        const Textos linhas = host->RegistroDe({"MDB.OpenRecordset("});
        return linhas.empty() ? "" : linhas.back().substr(0, linhas.back().find(')', linhas.back().rfind('"')) + 1);
    }

    static std::string Texto(const Bytes &bytes) { return {bytes.begin(), bytes.end()}; }
};

TEST_F(CVorEquipTeste, Properties_OfANewOne_AreEmpty)
{
    EXPECT_EQ(Propriedades(CVorEquip()), Vazias);
}

// SelecionaEquipamento.

TEST_F(CVorEquipTeste, SelecionaEquipamento_OfARow_LeavesItInTheProperties)
{
    auto vor = Novo<CVorEquip>();
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", 1));
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    });
    EXPECT_TRUE(vor->SelecionaEquipamento("RAD-01", "R", DataDe(1, 2, 2026)));
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_EQ(Enviados("lista2"), Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", Codigo=\"RAD-01\", "
                                         "TipoEquip=\"R\", Ativo=1, IndTrabFoto=2}"});
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
              Textos{"ConsultaAfericaoED{DtInfracao=01/02/2026, NroIntEquip=101, TipoConsulta=1}"});
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_WithACode_OpensOnItAndSelectsNothingByItself)
{
    Cadastro.resize(1);
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) {
        EXPECT_EQ(pessoa.Acha<ztCombo>("cboCriterio")->Texto(), "Código");
        EXPECT_EQ(pessoa.Acha<ztMask>("txtCodEquip")->Text(), "rad-01");
        EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoEquipto")->Valor(), "T");
        EXPECT_EQ(ListaDe(pessoa)->NroItens(), 1);
        EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
        EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
    });
    EXPECT_FALSE(Novo<CVorEquip>()->SelecionaEquipamento("rad-01"));
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_WithoutACode_ListsAllOfTheFilters)
{
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) {
        EXPECT_EQ(pessoa.Acha<ztCombo>("cboCriterio")->Texto(), "Todos");
        EXPECT_FALSE(pessoa.Acha("txtCodEquip")->Visible());
        EXPECT_EQ(ListaDe(pessoa)->NroItens(), 2);
        pessoa.Clica("cmdCancelar");
    });
    EXPECT_FALSE(Novo<CVorEquip>()->SelecionaEquipamento("", "F"));
    EXPECT_EQ(Enviados("lista2"),
              Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", TipoEquip=\"F\", Ativo=1, IndTrabFoto=2}"});
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_WithoutADate_AsksForTheCalibrationOfNoDate)
{
    auto vor = Novo<CVorEquip>();
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdOK"); });
    EXPECT_TRUE(vor->SelecionaEquipamento("RAD-01"));
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
              Textos{"ConsultaAfericaoED{DtInfracao=00:00:00, NroIntEquip=102, TipoConsulta=1}"});
    EXPECT_EQ(Propriedades(*vor), "102|Modelo PAR-02|PAR-02|60|INM-77|ACME|05/03/2026");
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_Cancelled_LeavesThePropertiesCleared)
{
    Ref<CVorEquip> vor = ComResposta();
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); });
    EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01"));
    EXPECT_EQ(Propriedades(*vor), Vazias);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_ClosedByTheHost_LeavesThePropertiesCleared)
{
    Ref<CVorEquip> vor = ComResposta();
    host->AoMostrarModal("frmLista", [this](const Ref<IForm> &) { geral->FecharJanelasAtivas(); });
    EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01"));
    EXPECT_EQ(Propriedades(*vor), Vazias);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_OfEquipmentWithoutCalibration_TellsAndCanBeCancelled)
{
    Ref<CVorEquip> vor = ComResposta();
    Vigente = Afericao(0, "", "", {});
    host->AoMostrarModal("frmLista", [this](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(Avisos(), Textos{"Equipamento não possui Aferição Vigente para a data de Infração."});
        pessoa.Clica("cmdCancelar");
    });
    EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
    EXPECT_EQ(Propriedades(*vor), Vazias);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_ThatCannotOpen_IsReportedOnceAndAnswersFalse)
{
    Ref<CVorEquip> vor = ComResposta();
    host->FalhaEm("ObjInterface.MostraJanela");
    EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01"));
    EXPECT_EQ(Erros(), Textos{"COEquipamentos.CarregaSelecao: 51 (ObjInterface.MostraJanela < Geral.FormShow < "
                              "frmLista.CarregaForm)"});
    EXPECT_EQ(Propriedades(*vor), Vazias);
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_OnADateOutsideTheCalendar_FaultsToTheCaller)
{
    Ref<CVorEquip> vor = ComResposta();
    const Falha falha = FalhaLancada([&] { vor->SelecionaEquipamento("RAD-01", "", Data{1e9}); });
    EXPECT_EQ(falha.Numero, 6);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CVorEquip.SelecionaEquipamento");
    EXPECT_EQ(Propriedades(*vor), Vazias);
    EXPECT_EQ(host->Registro(), Textos{});
}

// BuscaEquipamento.

TEST_F(CVorEquipTeste, BuscaEquipamento_OfACodeWithADate_FindsNumberRecordAndCalibrationInThisOrder)
{
    auto vor = Novo<CVorEquip>();
    goGateway();
    host->LimpaRegistro();
    EXPECT_TRUE(vor->BuscaEquipamento("rad-01", "", DataDe(1, 2, 2026)));
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"objMTM.ClienteLogado*", "TrataBD.AbreZTBanco(99)",
         "MDB.OpenRecordset(\"" + Sql("RAD-01") + "\", 4, ausente, ausente)*", "Cursor.Close()",
         "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
         "EquiptoRN.ExecutaMetodo(\"consultaSimples\", EquiptoED{NroIntEquip=101}) -> True",
         "EquiptoRN.ObtemRetorno()*", "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
         "EquiptoRN.ExecutaMetodo(\"consultaSimplesAfericaoVigente\", ConsultaAfericaoED{DtInfracao=01/02/2026, "
         "NroIntEquip=101, TipoConsulta=1}) -> True",
         "EquiptoRN.ObtemRetorno()*"}));
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(CVorEquipTeste, BuscaEquipamento_OfACodeInLowerCaseWithAccents_AsksInUpperCase)
{
    host->MDB->PoeEquipamento(105, "DAER", "Praça 1", 1, "P");
    EXPECT_TRUE(Novo<CVorEquip>()->BuscaEquipamento("praça 1"));
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("PRAÇA 1") + "\", 4, ausente, ausente)");
    EXPECT_EQ(Enviados("consultaSimples"), Textos{"EquiptoED{NroIntEquip=105}"});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WithAType_AddsItToTheStatement)
{
    auto vor = Novo<CVorEquip>();
    EXPECT_TRUE(vor->BuscaEquipamento("RAD-01", "R"));
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("RAD-01") + " AND TipoEquip = 'R'\", 4, ausente, ausente)");
    EXPECT_FALSE(vor->BuscaEquipamento("RAD-01", "r"));
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("RAD-01") + " AND TipoEquip = 'r'\", 4, ausente, ausente)");
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WithoutADate_KeepsTheCalibrationOfTheAnswerBefore)
{
    Ref<CVorEquip> vor = ComResposta();
    host->MDB->PoeEquipamento(102, "DAER", "PAR-02", 1, "F");
    Consultado = Equipto(102, "PAR-02", "F", 2);
    EXPECT_TRUE(vor->BuscaEquipamento("PAR-02"));
    EXPECT_EQ(Propriedades(*vor), "102|Modelo PAR-02|PAR-02|60|INM-77|ACME|05/03/2026");
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_ThatFindsNotExactlyOne_AnswersFalseSilently)
{
    Ref<CVorEquip> vor = ComResposta();
    host->MDB->PoeEquipamento(201, "DAER", "DUPLO", 1, "R");
    host->MDB->PoeEquipamento(202, "DAER", "duplo", 1, "P");
    host->MDB->PoeEquipamento(203, "DAER", "INATIVO", 2, "R");
    host->MDB->PoeEquipamento(204, "OUTRO", "ALHEIO", 1, "R");
    host->MDB->PoeEquipamento(0, "DAER", "ZERO", 1, "R");
    host->MDB->PoeEquipamento(-5, "DAER", "NEGATIVO", 1, "R");
    for (const std::string codigo : {"NENHUM", "DUPLO", "INATIVO", "ALHEIO", "ZERO", "NEGATIVO", ""}) {
        EXPECT_FALSE(vor->BuscaEquipamento(codigo, "", DataDe(1, 2, 2026))) << codigo;
    }
    EXPECT_EQ(host->Conta("Cursor.Close()"), 7);
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_EQ(Avisos(), Textos{});
    EXPECT_TRUE(vor->BuscaEquipamento("DUPLO", "P"));
}

TEST_F(CVorEquipTeste, BuscaEquipamento_OfACodeWithAnApostrophe_FaultsToTheCaller)
{
    Ref<CVorEquip> vor = ComResposta();
    const Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("d'água"); });
    EXPECT_EQ(falha.Numero, 3075);
    EXPECT_TRUE(falha.Fonte.ends_with(" < CVorEquip.BuscaEquipamento")) << falha.Fonte;
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("D'ÁGUA") + "\", 4, ausente, ausente)");
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_EQ(Erros(), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_OfANumberTooLarge_FaultsToTheCaller)
{
    Ref<CVorEquip> vor = ComResposta();
    host->MDB->TabelaDe("VOREQUIPTO").Linhas.push_back({3e9, "DAER", "GRANDE", std::int16_t{1}, "R"});
    host->MDB->TabelaDe("VOREQUIPTO").Linhas.push_back({Valor::Nulo{}, "DAER", "NULO", std::int16_t{1}, "R"});
    Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("GRANDE"); });
    EXPECT_EQ(falha.Numero, 6);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CVorEquip.BuscaEquipamento");
    falha = FalhaLancada([&] { vor->BuscaEquipamento("NULO"); });
    EXPECT_EQ(falha.Numero, 94);
    EXPECT_EQ(Propriedades(*vor), Cheias);
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WithoutCalibrationInForce_TellsAndKeepsTheProperties)
{
    Ref<CVorEquip> vor = ComResposta();
    Vigente = Afericao(0, "N", "M", DataDe(1, 1, 2026));
    EXPECT_FALSE(vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
    EXPECT_EQ(Avisos(), Textos{"Equipamento não possui Aferição Vigente para a data de Infração."});
    EXPECT_EQ(host->Avisos().back().Controle, "");
    EXPECT_EQ(Propriedades(*vor), Cheias);
}

TEST_F(CVorEquipTeste, BuscaEquipamento_ThatTheServiceRefuses_FaultsForWantOfTheRecord)
{
    Ref<CVorEquip> vor = ComResposta();
    for (const Data data : {Data{}, DataDe(1, 2, 2026)}) {
        host->LimpaRegistro();
        host->RecusaOperacao("consultaSimples", "Equipamento não encontrado");
        const Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("RAD-01", "", data); });
        EXPECT_EQ(falha.Numero, 91);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CVorEquip.SetaDadosEquipto < CVorEquip.BuscaEquipamento");
        EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Equipamento não encontrado\""));
        EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente").size(), data.Vazia() ? 0U : 1U);
        EXPECT_EQ(Propriedades(*vor), Cheias);
    }
    EXPECT_EQ(Erros(), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WhoseCalibrationIsRefused_FaultsForWantOfIt)
{
    Ref<CVorEquip> vor = ComResposta();
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Ocupado");
    const Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CVorEquip.BuscaEquipamento");
    EXPECT_EQ(Propriedades(*vor), Cheias);
}

TEST_F(CVorEquipTeste, BuscaEquipamento_OfAServiceThatFails_TellsThePath)
{
    Ref<CVorEquip> vor = ComResposta();
    host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
    Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("RAD-01"); });
    EXPECT_EQ(falha.Numero, 70);
    EXPECT_EQ(falha.Descricao, "negado");
    EXPECT_EQ(falha.Fonte, "EquiptoRN.ExecutaMetodo < CVorEquip.ConsultaSimplesEquipto < CVorEquip.BuscaEquipamento");
    host->FalhaEm("EquiptoRN.ExecutaMetodo", 2);
    falha = FalhaLancada([&] { vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)); });
    EXPECT_EQ(falha.Fonte,
              "EquiptoRN.ExecutaMetodo < ModGeral.gFunConsultaAfericaoVigente < CVorEquip.BuscaEquipamento");
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_EQ(Erros(), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_AnsweredWithSomethingElse_FaultsToTheCaller)
{
    Ref<CVorEquip> vor = ComResposta();
    host->Servico("EquiptoRN", "consultaSimples", [](const Ref<::Registro> &) { return Resposta(Novo<AfericaoED>()); });
    const Falha falha = FalhaLancada([&] { vor->BuscaEquipamento("RAD-01"); });
    EXPECT_EQ(falha.Numero, 13);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < CVorEquip.ConsultaSimplesEquipto < CVorEquip.BuscaEquipamento");
    EXPECT_EQ(Propriedades(*vor), Cheias);
}

// The certificate.

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_OfACalibration_WritesTheFileAndShowsItWithoutWaiting)
{
    goGateway();
    host->LimpaRegistro();
    EXPECT_TRUE(Novo<CVorEquip>()->ImpCertificadoAfericaoEquipto(12, "A1", "AIT 7"));
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"Gateway.CriaObjetoRN(\"VOR\", \"RelatorioRN\", \"ZTVORLIB\", \"4\")",
         "RelatorioRN.ExecutaMetodo(\"consultaRelatorioRVOR011\", RelatorioAfericaoED{CodOat=12, Serie=\"A1\", "
         "TxtIdent=\"AIT 7\"}) -> True",
         "RelatorioRN.ObtemRetorno()*", "Host.CriaDiretorios()",
         "goDiretorios.ObtemDiretorio(99, \"\") -> \"C:\\HOST\\TEMP\\\"",
         "Plataforma.GravaArquivo(\"C:\\HOST\\TEMP\\~VORAFER12-A1.pdf\", 0 bytes)",
         "goMensagem.TextoParaBytes(16 bytes)",
         "Plataforma.GravaArquivo(\"C:\\HOST\\TEMP\\~VORAFER12-A1.pdf\", 16 bytes)", "Host.CriaDocumentoPDF()",
         "DocumentoPDF.ArquivoPDF := \"C:\\HOST\\TEMP\\~VORAFER12-A1.pdf\"", "DocumentoPDF.Mostra(False) -> True"}));
    ASSERT_EQ(host->Visor->Vistos.size(), 1U);
    EXPECT_EQ(host->Visor->Vistos[0].Caminho, "C:\\HOST\\TEMP\\~VORAFER12-A1.pdf");
    EXPECT_EQ(Texto(host->Visor->Vistos[0].Conteudo), "%PDF certificado");
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_WithoutPreview_ShowsItAllTheSame)
{
    EXPECT_TRUE(Novo<CVorEquip>()->ImpCertificadoAfericaoEquipto(-3, "", "", false));
    EXPECT_TRUE(host->Contem("DocumentoPDF.Mostra(False)"));
    EXPECT_TRUE(host->Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER-3-.pdf"));
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_TwiceWithTheSameKeys_LeavesTheOldTail)
{
    auto vor = Novo<CVorEquip>();
    EXPECT_TRUE(vor->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    Documento = "novo";
    EXPECT_TRUE(vor->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    EXPECT_EQ(Texto(host->Tela->Arquivos.Conteudo("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf")), "novo certificado");
    vor->LimpaArqTemp();
    EXPECT_TRUE(vor->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    EXPECT_EQ(Texto(host->Tela->Arquivos.Conteudo("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf")), "novo");
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_ThatTheViewerCannotShow_AnswersFalse)
{
    host->Visor->Abre = false;
    EXPECT_FALSE(Novo<CVorEquip>()->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    EXPECT_TRUE(host->Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf"));
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_ThatTheServiceRefuses_AnswersFalseWithoutAFile)
{
    host->RecusaOperacao("consultaRelatorioRVOR011", "Certificado não encontrado");
    EXPECT_FALSE(Novo<CVorEquip>()->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    EXPECT_TRUE(host->Contem("RelatorioRN.MostraErro() -> \"Certificado não encontrado\""));
    EXPECT_EQ(host->Conta("goDiretorios."), 0);
    EXPECT_EQ(host->Conta("Plataforma.GravaArquivo"), 0);
    EXPECT_EQ(host->Conta("DocumentoPDF."), 0);
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_ThatFails_FaultsToTheCallerWithoutAPathOfItsOwn)
{
    auto vor = Novo<CVorEquip>();
    const std::vector<std::pair<std::string, std::string>> casos{
        {"Gateway.CriaObjetoRN", "Gateway.CriaObjetoRN"},
        {"RelatorioRN.ExecutaMetodo", "RelatorioRN.ExecutaMetodo"},
        {"goDiretorios.ObtemDiretorio", "goDiretorios.ObtemDiretorio"},
        {"goMensagem.TextoParaBytes", "goMensagem.TextoParaBytes < CVorEquip.GravaNoArquivo"},
        {"Plataforma.GravaArquivo", "Plataforma.GravaArquivo < CVorEquip.GravaNoArquivo"},
        {"Host.CriaDocumentoPDF", "Host.CriaDocumentoPDF"},
        {"DocumentoPDF.Mostra", "DocumentoPDF.Mostra"},
    };
    for (const auto &[chamada, caminho] : casos) {
        host->FalhaEm(chamada);
        EXPECT_EQ(FalhaLancada([&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); }).Fonte, caminho);
    }
    host->Servico("RelatorioRN", "consultaRelatorioRVOR011",
                  [](const Ref<::Registro> &) { return Resposta(Ref<RelatorioAfericaoED>()); });
    const Falha falha = FalhaLancada([&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
    EXPECT_EQ(Erros(), Textos{});
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_OfAFileThatCannotBeOpened_ConvertsNothing)
{
    auto vor = Novo<CVorEquip>();
    host->FalhaEm("Plataforma.GravaArquivo");
    EXPECT_EQ(FalhaLancada([&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); }).Fonte,
              "Plataforma.GravaArquivo < CVorEquip.GravaNoArquivo");
    EXPECT_EQ(host->Conta("goMensagem.TextoParaBytes"), 0);
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_OfADocumentThatCannotBeConverted_LeavesTheFileOpenedAndAsItWas)
{
    auto vor = Novo<CVorEquip>();
    for (const char *antes : {"", "%PDF certificado"}) { // created empty, then as the printing between left it
        host->FalhaEm("goMensagem.TextoParaBytes");
        EXPECT_EQ(FalhaLancada([&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); }).Fonte,
                  "goMensagem.TextoParaBytes < CVorEquip.GravaNoArquivo");
        ASSERT_TRUE(host->Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf"));
        EXPECT_EQ(Texto(host->Tela->Arquivos.Conteudo("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf")), antes);
        EXPECT_TRUE(vor->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    }
}

TEST_F(CVorEquipTeste, LimpaArqTemp_OfSeveralCertificates_DeletesThemAndNothingElse)
{
    ArquivosEmMemoria &arquivos = host->Tela->Arquivos;
    const std::vector<std::string> certificados{"~VORAFER12-A1.pdf", "~vorafer.PDF", "~VORAFER9-é 'x'.pdf"};
    const std::vector<std::string> outros{"VORAFER12.pdf", "~VORAFER12.pdf.bak", "~VORAFER12.txt", "outro.pdf"};
    for (const std::string &nome : certificados) {
        arquivos.Poe("C:\\HOST\\TEMP\\" + nome, {1});
    }
    for (const std::string &nome : outros) {
        arquivos.Poe("C:\\HOST\\TEMP\\" + nome, {1});
    }
    Novo<CVorEquip>()->LimpaArqTemp();
    for (const std::string &nome : certificados) {
        EXPECT_FALSE(arquivos.Existe("C:\\HOST\\TEMP\\" + nome)) << nome;
    }
    for (const std::string &nome : outros) {
        EXPECT_TRUE(arquivos.Existe("C:\\HOST\\TEMP\\" + nome)) << nome;
    }
    EXPECT_EQ(host->Conta("Plataforma.PrimeiroArquivo(\"C:\\HOST\\TEMP\\~VORAFER*.pdf\")"), 1);
}

TEST_F(CVorEquipTeste, LimpaArqTemp_WithoutCertificates_DoesNothing)
{
    Novo<CVorEquip>()->LimpaArqTemp();
    EXPECT_EQ(host->Conta("Plataforma.ApagaArquivo"), 0);
    EXPECT_EQ(host->Conta("Plataforma.ProximoArquivo"), 0);
}

TEST_F(CVorEquipTeste, LimpaArqTemp_OfAFileInUse_FaultsWithItsPath)
{
    host->Tela->Arquivos.Poe("C:\\HOST\\TEMP\\~VORAFER1.pdf", {1});
    host->Tela->Arquivos.Protege("C:\\HOST\\TEMP\\~VORAFER1.pdf");
    const Falha falha = FalhaLancada([] { Novo<CVorEquip>()->LimpaArqTemp(); });
    EXPECT_EQ(falha.Numero, 75);
    EXPECT_TRUE(falha.Fonte.ends_with(" < CVorEquip.LimpaArqTemp")) << falha.Fonte;
}

// Whole journeys in which each call of the host fails once.

TEST_F(CVorEquipTeste, BuscaEquipamento_WithEachCallFailing_FaultsToTheCallerAndWorksOnTheNextTry)
{
    std::int32_t n = 0;
    for (;; ++n) {
        SCOPED_TRACE("call " + std::to_string(n + 1));
        auto vor = Novo<CVorEquip>();
        host->FalhaNaChamada(n + 1);
        bool achou = false;
        Falha falha(0, "", "");
        try {
            achou = vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026));
        } catch (...) {
            falha = FalhaCorrente();
        }
        if (host->FalhasDisparadas() == 0) {
            EXPECT_TRUE(achou);
            break;
        }
        EXPECT_EQ(falha.Numero, 51);
        EXPECT_TRUE(falha.Fonte.ends_with(" < CVorEquip.BuscaEquipamento")) << falha.Fonte;
        EXPECT_EQ(Propriedades(*vor), Vazias);
        EXPECT_EQ(Erros(), Textos{});
        EXPECT_TRUE(vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
        EXPECT_EQ(Propriedades(*vor), Cheias);
        vor = nullptr;
        NovoHost();
    }
    EXPECT_GT(n, 8);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_WithEachCallFailing_TellsItOnceAndWorksOnTheNextTry)
{
    bool janela = false;
    const auto seleciona = [&](CVorEquip &vor) {
        if (!janela) {
            janela = true;
            host->AoMostrarModal("frmLista", [&](const Ref<IForm> &form) {
                janela = false;
                Pessoa pessoa(form, host->Tela);
                for (std::int32_t tentativa = 0; tentativa < 2 && form->Visible(); ++tentativa) {
                    if (ListaDe(pessoa)->NroItens() == 0) {
                        pessoa.Localiza("ztlLista");
                    }
                    pessoa.ClicaLinha("ztlLista", 1);
                    pessoa.Clica("cmdOK");
                }
            });
        }
        return vor.SelecionaEquipamento("RAD-01", "", DataDe(1, 2, 2026));
    };
    std::int32_t n = 0;
    for (;; ++n) {
        SCOPED_TRACE("call " + std::to_string(n + 1));
        auto vor = Novo<CVorEquip>();
        host->FalhaNaChamada(n + 1);
        const bool escolheu = seleciona(*vor);
        if (host->FalhasDisparadas() == 0) {
            EXPECT_TRUE(escolheu);
            break;
        }
        const Textos registro = host->Registro();
        const auto culpada =
            std::ranges::find_if(registro, [](const std::string &linha) { return linha.ends_with(" !! 51"); });
        ASSERT_NE(culpada, registro.end());
        const bool ignorada = culpada->starts_with("FormMDI.FecharEnviaRecebe") ||
                              culpada->starts_with("cGlobal.gsubSetaAutoModuloAtivo");
        EXPECT_EQ(Erros().size(), ignorada ? 0U : 1U) << *culpada;
        EXPECT_EQ(host->Tela->Ponteiro(), 0) << *culpada;
        EXPECT_EQ(host->Tela->NroForms(), 0) << *culpada;
        EXPECT_EQ(Propriedades(*vor), escolheu ? Cheias : Vazias) << *culpada;
        EXPECT_TRUE(seleciona(*vor)) << *culpada;
        EXPECT_EQ(Propriedades(*vor), Cheias) << *culpada;
        EXPECT_EQ(Erros(), Textos{}) << *culpada;
        vor = nullptr;
        NovoHost();
    }
    EXPECT_GT(n, 15);
}

TEST_F(CVorEquipTeste, NomeTipo_IsTheClassThatOtherModulesKnow)
{
    EXPECT_EQ(CVorEquip().NomeTipo(), "CVorEquip");
}

} // namespace
