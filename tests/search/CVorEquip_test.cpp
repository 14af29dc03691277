#include "search/CVorEquip.h"

#include "controls/ztCombo.h"
#include "controls/ztMask.h"
#include "shell/ModGeral.h"
#include "tests/search/JanelaTeste.h"
#include "tests/support/FalhaLancada.h"

namespace {

class CVorEquipTeste : public JanelaTeste {
  protected:
    void SetUp() override
    {
        JanelaTeste::SetUp();
        host->objMTM->Cliente = "Autoridade das Estradas de Rodagem";
        host->MDB->PoeEquipamento(101, "Autoridade das Estradas de Rodagem", "RAD-01", 1, "R");
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
    static constexpr const char *SemVigente = "Equipamento não possui Aferição Vigente para a data de Infração.";
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
        return "         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'Autoridade das Estradas de "
               "Rodagem'     AND UCASE(Codigo) = "
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

TEST_F(CVorEquipTeste, SelecionaEquipamento_WithAndWithoutACode_OpensOnItsCriteriaAndSelectsNothingByItself)
{
    struct {
        std::string Codigo;
        std::string Tipo;
        std::string NaTela;
        std::string Enviado;
    } const casos[] = {
        {"rad-01", "", "T|Código|rad-01", "Codigo=\"rad-01\", "},
        {"", "F", "F|Todos|", "TipoEquip=\"F\", "},
    };
    for (const auto &caso : casos) {
        host->LimpaRegistro();
        host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
            EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoEquipto")->Valor() + "|" +
                          pessoa.Acha<ztCombo>("cboCriterio")->Texto() + "|" +
                          pessoa.Acha<ztMask>("txtCodEquip")->Text(),
                      caso.NaTela);
            EXPECT_EQ(pessoa.Acha("txtCodEquip")->Visible(), !caso.Codigo.empty());
            EXPECT_EQ(ListaDe(pessoa)->NroItens(), 2);
            EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
            EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
        });
        EXPECT_FALSE(Novo<CVorEquip>()->SelecionaEquipamento(caso.Codigo, caso.Tipo));
        EXPECT_EQ(Enviados("lista2"),
                  Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", " + caso.Enviado + "Ativo=1, IndTrabFoto=2}"});
    }
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

// By the person, by the host, or after an equipment without a calibration.
TEST_F(CVorEquipTeste, SelecionaEquipamento_ThatEndsWithoutAnEquipment_LeavesThePropertiesCleared)
{
    const auto seleciona = [&](const auto &roteiro) {
        Ref<CVorEquip> vor = ComResposta();
        host->AoMostrarModal("frmLista", roteiro);
        Vigente = Afericao(0, "", "", {});
        EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
        EXPECT_EQ(Propriedades(*vor), Vazias);
        Vigente = EmVigor;
    };
    seleciona([](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); });
    seleciona([this](const Ref<IForm> &) { geral->FecharJanelasAtivas(); });
    EXPECT_EQ(host->AvisosNovos(), Textos{});
    seleciona([this](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(host->AvisosNovos(), Textos{SemVigente});
        pessoa.Clica("cmdCancelar");
    });
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_ThatCannotOpen_IsReportedOnceAndAnswersFalse)
{
    Ref<CVorEquip> vor = ComResposta();
    host->FalhaEm("ObjInterface.MostraJanela");
    EXPECT_FALSE(vor->SelecionaEquipamento("RAD-01"));
    EXPECT_EQ(host->ErrosNovos(),
              Textos{"COEquipamentos.CarregaSelecao: 51 (ObjInterface.MostraJanela < Geral.FormShow < "
                     "frmLista.CarregaForm)"});
    EXPECT_EQ(Propriedades(*vor), Vazias);
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(CVorEquipTeste, SelecionaEquipamento_OnADateOutsideTheCalendar_FaultsToTheCaller)
{
    Ref<CVorEquip> vor = ComResposta();
    EXPECT_TRUE(Lanca(6, "ZTAVOREQUIP < CVorEquip.SelecionaEquipamento",
                      [&] { vor->SelecionaEquipamento("RAD-01", "", Data{1e9}); }));
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

TEST_F(CVorEquipTeste, BuscaEquipamento_OfACodeAndAType_AsksForTheCodeInUpperCaseAndTheTypeAsItIs)
{
    host->MDB->PoeEquipamento(105, "Autoridade das Estradas de Rodagem", "Praça 1", 1, "P");
    auto vor = Novo<CVorEquip>();
    EXPECT_TRUE(vor->BuscaEquipamento("praça 1"));
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("PRAÇA 1") + "\", 4, ausente, ausente)");
    EXPECT_EQ(Enviados("consultaSimples"), Textos{"EquiptoED{NroIntEquip=105}"});
    for (const std::string tipo : {"R", "r"}) {
        EXPECT_EQ(vor->BuscaEquipamento("RAD-01", tipo), tipo == "R");
        EXPECT_EQ(Consulta(),
                  "MDB.OpenRecordset(\"" + Sql("RAD-01") + " AND TipoEquip = '" + tipo + "'\", 4, ausente, ausente)");
    }
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WithoutADate_KeepsTheCalibrationOfTheAnswerBefore)
{
    Ref<CVorEquip> vor = ComResposta();
    host->MDB->PoeEquipamento(102, "Autoridade das Estradas de Rodagem", "PAR-02", 1, "F");
    Consultado = Equipto(102, "PAR-02", "F", 2);
    EXPECT_TRUE(vor->BuscaEquipamento("PAR-02"));
    EXPECT_EQ(Propriedades(*vor), "102|Modelo PAR-02|PAR-02|60|INM-77|ACME|05/03/2026");
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_ThatFindsNotExactlyOne_AnswersFalseSilently)
{
    Ref<CVorEquip> vor = ComResposta();
    host->MDB->PoeEquipamento(201, "Autoridade das Estradas de Rodagem", "DUPLO", 1, "R");
    host->MDB->PoeEquipamento(202, "Autoridade das Estradas de Rodagem", "duplo", 1, "P");
    host->MDB->PoeEquipamento(203, "Autoridade das Estradas de Rodagem", "INATIVO", 2, "R");
    host->MDB->PoeEquipamento(204, "OUTRO", "ALHEIO", 1, "R");
    host->MDB->PoeEquipamento(0, "Autoridade das Estradas de Rodagem", "ZERO", 1, "R");
    host->MDB->PoeEquipamento(-5, "Autoridade das Estradas de Rodagem", "NEGATIVO", 1, "R");
    for (const std::string codigo : {"NENHUM", "DUPLO", "INATIVO", "ALHEIO", "ZERO", "NEGATIVO", ""}) {
        EXPECT_FALSE(vor->BuscaEquipamento(codigo, "", DataDe(1, 2, 2026))) << codigo;
    }
    EXPECT_EQ(host->Conta("Cursor.Close()"), 7);
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
    EXPECT_EQ(Propriedades(*vor), Cheias);
    EXPECT_EQ(host->AvisosNovos(), Textos{});
    EXPECT_TRUE(vor->BuscaEquipamento("DUPLO", "P"));
}

TEST_F(CVorEquipTeste, BuscaEquipamento_ThatFails_FaultsToTheCallerAndKeepsTheProperties)
{
    Ref<CVorEquip> vor = ComResposta();
    const auto lanca = [&](const std::string &codigo, Data data, std::int32_t numero, const std::string &caminho) {
        SCOPED_TRACE(codigo + caminho);
        EXPECT_TRUE(
            Lanca(numero, caminho + " < CVorEquip.BuscaEquipamento", [&] { vor->BuscaEquipamento(codigo, "", data); }));
        EXPECT_EQ(Propriedades(*vor), Cheias);
    };
    const Data comData = DataDe(1, 2, 2026);
    lanca("d'água", {}, 3075, "*");
    EXPECT_EQ(Consulta(), "MDB.OpenRecordset(\"" + Sql("D'ÁGUA") + "\", 4, ausente, ausente)");
    host->MDB->TabelaDe("VOREQUIPTO")
        .Linhas.push_back({3e9, "Autoridade das Estradas de Rodagem", "GRANDE", std::int16_t{1}, "R"});
    lanca("GRANDE", {}, 6, "ZTAVOREQUIP");
    host->MDB->TabelaDe("VOREQUIPTO")
        .Linhas.push_back({Valor::Nulo{}, "Autoridade das Estradas de Rodagem", "NULO", std::int16_t{1}, "R"});
    lanca("NULO", {}, 94, "*");
    for (const Data data : {Data{}, comData}) { // the missing record is noticed only where it is read
        host->LimpaRegistro();
        host->RecusaOperacao("consultaSimples", "Equipamento não encontrado");
        lanca("RAD-01", data, 91, "ZTAVOREQUIP < CVorEquip.SetaDadosEquipto");
        EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Equipamento não encontrado\""));
        EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente").size(), data.Vazia() ? 0U : 1U);
    }
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Ocupado");
    lanca("RAD-01", comData, 91, "ZTAVOREQUIP");
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    lanca("RAD-01", {}, 51, "EquiptoRN.ExecutaMetodo < CVorEquip.ConsultaSimplesEquipto");
    host->FalhaEm("EquiptoRN.ExecutaMetodo", 2);
    lanca("RAD-01", comData, 51, "EquiptoRN.ExecutaMetodo < ModGeral.gFunConsultaAfericaoVigente");
    host->Servico("EquiptoRN", "consultaSimples", [](const Ref<::Registro> &) { return Resposta(Novo<AfericaoED>()); });
    lanca("RAD-01", {}, 13, "ZTAVOREQUIP < CVorEquip.ConsultaSimplesEquipto");
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

TEST_F(CVorEquipTeste, BuscaEquipamento_WithoutCalibrationInForce_TellsAndKeepsTheProperties)
{
    Ref<CVorEquip> vor = ComResposta();
    Vigente = Afericao(0, "N", "M", DataDe(1, 1, 2026));
    EXPECT_FALSE(vor->BuscaEquipamento("RAD-01", "", DataDe(1, 2, 2026)));
    EXPECT_EQ(host->AvisosNovos(), Textos{SemVigente});
    EXPECT_EQ(host->Avisos().back().Controle, "");
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
    const auto imprime = [&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); };
    for (const std::string caminho :
         {"Plataforma.GravaArquivo < CVorEquip.GravaNoArquivo", "Gateway.CriaObjetoRN", "RelatorioRN.ExecutaMetodo",
          "goDiretorios.ObtemDiretorio", "goMensagem.TextoParaBytes < CVorEquip.GravaNoArquivo",
          "Host.CriaDocumentoPDF", "DocumentoPDF.Mostra"}) {
        host->FalhaEm(caminho.substr(0, caminho.find(' ')));
        EXPECT_TRUE(Lanca(51, caminho, imprime));
        if (caminho.starts_with("Plataforma.")) { // a file that cannot be opened
            EXPECT_EQ(host->Conta("goMensagem.TextoParaBytes"), 0);
        }
    }
    host->Servico("RelatorioRN", "consultaRelatorioRVOR011",
                  [](const Ref<::Registro> &) { return Resposta(Ref<RelatorioAfericaoED>()); });
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP", imprime));
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

TEST_F(CVorEquipTeste, ImpCertificadoAfericaoEquipto_OfADocumentThatCannotBeConverted_LeavesTheFileOpenedAndAsItWas)
{
    auto vor = Novo<CVorEquip>();
    for (const char *antes : {"", "%PDF certificado"}) { // created empty, then as the printing between left it
        host->FalhaEm("goMensagem.TextoParaBytes");
        EXPECT_TRUE(Lanca(51, "*", [&] { vor->ImpCertificadoAfericaoEquipto(12, "A1", ""); }));
        ASSERT_TRUE(host->Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf"));
        EXPECT_EQ(Texto(host->Tela->Arquivos.Conteudo("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf")), antes);
        EXPECT_TRUE(vor->ImpCertificadoAfericaoEquipto(12, "A1", ""));
    }
}

TEST_F(CVorEquipTeste, LimpaArqTemp_OfSeveralCertificates_DeletesThemAndNothingElse)
{
    ArquivosEmMemoria &arquivos = host->Tela->Arquivos;
    const Textos outros{"VORAFER12.pdf", "~VORAFER12.pdf.bak", "~VORAFER12.txt", "outro.pdf"};
    Textos nomes{"~VORAFER12-A1.pdf", "~vorafer.PDF", "~VORAFER9-é 'x'.pdf"};
    nomes.insert(nomes.end(), outros.begin(), outros.end());
    for (const std::string &nome : nomes) {
        arquivos.Poe("C:\\HOST\\TEMP\\" + nome, {1});
    }
    for (bool outraVez : {false, true}) { // when there are none, nothing is done
        host->LimpaRegistro();
        Novo<CVorEquip>()->LimpaArqTemp();
        EXPECT_EQ(arquivos.Nomes("C:\\HOST\\TEMP\\*"), outros);
        EXPECT_EQ(host->Conta("Plataforma.PrimeiroArquivo(\"C:\\HOST\\TEMP\\~VORAFER*.pdf\")"), 1);
        EXPECT_EQ(host->Conta("Plataforma.ApagaArquivo"), outraVez ? 0 : 3);
        EXPECT_EQ(host->Conta("Plataforma.ProximoArquivo"), outraVez ? 0 : 3);
    }
}

TEST_F(CVorEquipTeste, LimpaArqTemp_OfAFileInUse_FaultsWithItsPath)
{
    host->Tela->Arquivos.Poe("C:\\HOST\\TEMP\\~VORAFER1.pdf", {1});
    host->Tela->Arquivos.Protege("C:\\HOST\\TEMP\\~VORAFER1.pdf");
    EXPECT_TRUE(Lanca(75, "* < CVorEquip.LimpaArqTemp", [] { Novo<CVorEquip>()->LimpaArqTemp(); }));
}

TEST_F(CVorEquipTeste, NomeTipo_IsTheClassThatOtherModulesKnow)
{
    EXPECT_EQ(CVorEquip().NomeTipo(), "CVorEquip");
}

} // namespace
