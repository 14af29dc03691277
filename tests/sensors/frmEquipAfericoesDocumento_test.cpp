#include "sensors/frmEquipAfericoes.h"

#include "tests/sensors/CenarioSensores.h"

#include <algorithm>
#include <cstddef>
#include <utility>

// The document of a calibration: choosing, sending and fetching.

namespace {

const std::string Arquivo = "C:\\DOC\\certificado.pdf";
const std::string Temporario = "C:\\HOST\\MODULOS\\VORTemp.pdf";
const Bytes ConteudoNovo{'n', 'o', 'v', 'o'};
const Bytes ConteudoAntigo{'a', 'n', 't', 'i', 'g', 'o', 0, 255, '\r', '\n'};
const std::string SemDocumento = "É obrigatório fazer Upload do Documento em PDF!";
const std::string Dialogo = "cdAbreArquivos.ShowOpen(\"PDF (*.pdf)|*.pdf\", \"*.pdf\", \"Selecione o arquivo\")";

class frmEquipAfericoesDocumento_test : public ComForm<frmEquipAfericoes, clsAfericao> {
  protected:
    void SetUp() override
    {
        ComForm::SetUp();
        afericao = PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026"); // with document 500
        host->Dominio->Documentos[500] = ConteudoAntigo;
        host->Dominio->UltimoDocumento = 900;
        host->Tela->Arquivos.Poe(Arquivo, ConteudoNovo);
    }
    void TearDown() override
    {
        afericao = nullptr;
        ComForm::TearDown();
    }

    bool Inclui(const std::function<void(Pessoa &)> &gestos)
    {
        nova = Novo<clsAfericao>();
        nova->DefineSensor(sensor);
        return ComForm::Inclui(nova, [&](Pessoa &p) {
            PreencheAfericao(p, "1", "01/01/2027", "31/12/2027");
            host->LimpaRegistro();
            gestos(p);
        });
    }
    bool Edita(const std::function<void(Pessoa &)> &gestos)
    {
        return ComForm::Edita(afericao, [&](Pessoa &p) {
            host->LimpaRegistro();
            gestos(p);
        });
    }
    void Procura(Pessoa &p, const std::string &arquivo)
    {
        host->EscolheArquivo(arquivo);
        FAZ(p, Clica("cmdProcurar"));
    }
    void ProcuraECancela(Pessoa &p)
    {
        host->CancelaDialogo();
        FAZ(p, Clica("cmdProcurar"));
    }
    void Espera(const Pessoa &p, const std::string &rotulo, bool upload)
    {
        EXPECT_EQ(Caption(p, "lblMsgCert"), rotulo);
        EXPECT_EQ(Habilitado(p, "cmdUpload"), upload);
    }
    // What the label reads while something is done.
    static Textos Rotulos(const Pessoa &p, const std::function<void()> &acao)
    {
        Textos rotulos;
        const auto rotulo = p.Acha("lblMsgCert");
        const auto mudou = ComoBase(rotulo)->Mudou().liga([&] { rotulos.push_back(rotulo->Caption()); });
        acao();
        return rotulos;
    }
    // The controls around the document that change while something is done, in their order.
    static Textos Mudados(const Pessoa &p, const std::function<void()> &acao)
    {
        Textos mudados;
        std::vector<Conexao> conexoes;
        for (const std::string nome : {"lblMsgCert", "cmdProcurar", "cmdVisualizar", "cmdUpload"}) {
            conexoes.push_back(ComoBase(p.Acha(nome))->Mudou().liga([&mudados, nome] { mudados.push_back(nome); }));
        }
        acao();
        return mudados;
    }
    // OK is refused for want of a document.
    void EsperaOKRecusado(Pessoa &p)
    {
        const std::size_t antes = host->Avisos().size();
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Avisos().size(), antes + 1);
        EXPECT_EQ(host->Avisos().back().Texto, SemDocumento);
        EXPECT_EQ(host->Avisos().back().Controle, "");
    }
    const std::vector<DocumentosVistos::Visto> &Vistos() const { return host->Visor->Vistos; }

    Ref<clsAfericao> afericao;
    Ref<clsAfericao> nova;
};

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_FileThatOpens_ShownToThePersonAndUploadEnabled)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        Espera(p, "Arquivo " + Arquivo, true);
        EXPECT_TRUE(
            RegistroIgual(host->Registro(),
                          {Dialogo + " -> \"" + Arquivo + "\"", "Plataforma.TamanhoArquivo(\"" + Arquivo + "\") -> 4",
                           "Host.CriaDocumentoPDF()", "DocumentoPDF.ArquivoPDF := \"" + Arquivo + "\"",
                           "DocumentoPDF.Mostra(True) -> True"})); // and nothing has been sent
        ASSERT_EQ(Vistos().size(), 1U);
        EXPECT_EQ(Vistos()[0].Conteudo, ConteudoNovo);
        EXPECT_TRUE(Vistos()[0].Modal);
        EsperaOKRecusado(p);
    }));
    EXPECT_EQ(nova->NroIntImgCertif, 0);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_CancelledOnFirstUse_NoFile)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        p.Acha("cmdUpload")->DefineEnabled(true); // so that its end is a change
        const Textos ordem = Mudados(p, [&] { ProcuraECancela(p); });
        EXPECT_EQ(ordem, (Textos{"lblMsgCert", "lblMsgCert", "cmdUpload"}));
        Espera(p, "Sem Arquivo!", false);
        EXPECT_TRUE(RegistroIgual(host->Registro(), {Dialogo + " -> cancelado"}));
    }));
    EXPECT_TRUE(Vistos().empty());
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_LargestAllowedAndOneByteMore_PassesAndIsRefused)
{
    const std::string justo = "C:\\DOC\\justo.pdf";
    const std::string grande = "C:\\DOC\\grande.pdf";
    host->Tela->Arquivos.Poe(justo, Bytes(5242880, 1));
    host->Tela->Arquivos.Poe(grande, Bytes(5242881, 1));
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, grande);
        Espera(p, "Aguardando...", false);
        ASSERT_EQ(host->Avisos().size(), 1U);
        EXPECT_EQ(host->Avisos()[0].Texto, "Arquivo 'C:\\DOC\\grande.pdf' ultrapassa tamanho máximo (5 Mb).");
        EXPECT_EQ(host->Avisos()[0].Controle, "");
        EXPECT_TRUE(Vistos().empty());

        Procura(p, justo);
        Espera(p, "Arquivo " + justo, true);
        EXPECT_EQ(host->Avisos().size(), 1U);

        Procura(p, grande); // what was enabled stays enabled
        Espera(p, "Aguardando...", true);
        EXPECT_EQ(host->Avisos().size(), 2U);
        EXPECT_EQ(Vistos().size(), 1U);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_EmptyFile_PassesTheLimitAndIsSentAsItIs)
{
    const std::string vazio = "C:\\DOC\\vazio.pdf";
    host->Tela->Arquivos.Poe(vazio, {});
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        Procura(p, vazio);
        Espera(p, "Arquivo " + vazio, true);
        FAZ(p, Clica("cmdUpload"));
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(host->Dominio->Documentos[901], Bytes{});
    EXPECT_EQ(nova->NroIntImgCertif, 901);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_ViewerCannotOpenOrChoiceIsCancelled_EarlierFileAgain)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        host->Visor->Abre = false;
        Procura(p, Arquivo);
        Espera(p, "Aguardando...", false);
        host->Visor->Abre = true;
        ProcuraECancela(p);
        Espera(p, "Arquivo " + Arquivo, true);
        EXPECT_EQ(Vistos().back().Caminho, Arquivo);
        host->Visor->Abre = false;
        ProcuraECancela(p);
        Espera(p, "Aguardando...", true);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_NameOfBlanks_LooksAtTheLengthFirst)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, "   ");
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Numero, 53);
        Espera(p, "Aguardando...", false);

        Procura(p, Arquivo);
        Espera(p, "Arquivo " + Arquivo, true);
        host->Tela->Arquivos.Poe("   ", ConteudoNovo);
        Procura(p, "   ");
        Espera(p, "Sem Arquivo!", false); // what the file before had enabled is disabled again
    }));
    EXPECT_EQ(Vistos().size(), 1U);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_FileVanished_ErrorBoxAndTheFormStaysOpen)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, "C:\\DOC\\sumiu.pdf");
        EXPECT_TRUE(
            MostrouErro(1, "frmEquipAfericoes.cmdProcurar_Click", 53, "ZTAVOREQUIP < frmEquipAfericoes.ProcurarPDF"));
        Espera(p, "Aguardando...", false);
        EXPECT_TRUE(Aberta(Janela)->Visible());
        EXPECT_EQ(host->Tela->Ponteiro(), PonteiroNormal);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_ViewerFails_PathThroughBothProcedures)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        std::size_t erros = 0;
        for (const std::string operacao : {"Host.CriaDocumentoPDF", "DocumentoPDF.ArquivoPDF", "DocumentoPDF.Mostra"}) {
            host->FalhaEm(operacao);
            Procura(p, Arquivo);
            EXPECT_TRUE(MostrouErro(++erros, "frmEquipAfericoes.cmdProcurar_Click", 51,
                                    operacao + " < frmEquipAfericoes.VisualizaPDF < frmEquipAfericoes.ProcurarPDF"));
            Espera(p, "Aguardando...", false);
        }
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_Accepted_NumberOnTheScreenAndInTheRecordOnOK)
{
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        host->LimpaRegistro();
        FAZ(p, Clica("cmdUpload"));
        Espera(p, "Upload Concluido!", false);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goDadosVor.EnviaDocumento"}),
                                  {"goDadosVor.EnviaDocumento(\"" + Arquivo + "\", 0, 0) -> documento 901 -> True"}));
        EXPECT_EQ(nova->NroIntImgCertif, 0);
        EXPECT_EQ(host->Dominio->Documentos[901], ConteudoNovo); // at once, before the calibration is confirmed
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(nova->NroIntImgCertif, 901);
    EXPECT_TRUE(host->Tela->Caixas().empty());
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_Refused_BoxTellsAndTheLabelDoesNot)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        host->Dominio->AceitaEnvio = false;
        EXPECT_EQ(Rotulos(p, [&] { FAZ(p, Clica("cmdUpload")); }),
                  (Textos{"Fazendo Upload, Aguarde!", "Não foi possivel realizar o Upload!", "Upload Concluido!"}));
        ASSERT_EQ(host->Tela->Caixas().size(), 1U);
        EXPECT_EQ(host->Tela->Caixas()[0].Texto, "Não foi possivel realizar o Upload!");
        EXPECT_EQ(host->Tela->Caixas()[0].Titulo, "Atenção");
        Espera(p, "Upload Concluido!", false);
        NAO_FAZ(p, Clica("cmdUpload")); // a new try needs a new choice
        EsperaOKRecusado(p);

        host->Dominio->AceitaEnvio = true;
        ProcuraECancela(p);
        FAZ(p, Clica("cmdUpload"));
        Espera(p, "Upload Concluido!", false);
        EXPECT_EQ(host->Tela->Caixas().size(), 1U);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_NoFileChosen_NothingIsSent)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        p.Acha("cmdUpload")->DefineEnabled(true); // out of the person's reach otherwise
        for (const std::string nome : {"", "  "}) {
            p.Acha<ICommonDialog>("cdAbreArquivos")->DefineFileName(nome);
            FAZ(p, Clica("cmdUpload"));
            Espera(p, "Nenhum PDF foi Selecionado!", true);
        }
        EXPECT_EQ(host->Conta("goDadosVor.EnviaDocumento"), 0);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_ServiceAnswersNumberZero_CountsAsNoDocument)
{
    host->Dominio->UltimoDocumento = -1; // the next number is 0
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        FAZ(p, Clica("cmdUpload"));
        Espera(p, "Upload Concluido!", false);
        EXPECT_TRUE(host->Tela->Caixas().empty());
        EsperaOKRecusado(p);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_ServiceFails_StillSendingAndTheScreenHasNoDocumentFromBeforeTheCall)
{
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        Procura(p, Arquivo);
        host->FalhaEm("goDadosVor.EnviaDocumento");
        host->LimpaRegistro();
        FAZ(p, Clica("cmdUpload"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipAfericoes.cmdUpload_Click", 51, "goDadosVor.EnviaDocumento"));
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goDadosVor.EnviaDocumento"}),
                                  {"goDadosVor.EnviaDocumento(\"" + Arquivo + "\", 0, 0) !! 51"}));
        Espera(p, "Fazendo Upload, Aguarde!", false);
        EsperaOKRecusado(p);
    }));
    EXPECT_EQ(afericao->NroIntImgCertif, 500);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_BoxOfARefusalFails_LabelsBehindItDoNotCome)
{
    host->Dominio->AceitaEnvio = false;
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        host->FalhaEm("Plataforma.CaixaInformacao");
        FAZ(p, Clica("cmdUpload"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipAfericoes.cmdUpload_Click", 51, "Plataforma.CaixaInformacao"));
        Espera(p, "Fazendo Upload, Aguarde!", false);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_FileVanishedAfterTheChoice_RefusedLikeAnyOther)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        host->Tela->Arquivos.Apaga(Arquivo);
        FAZ(p, Clica("cmdUpload"));
        ASSERT_EQ(host->Tela->Caixas().size(), 1U);
        Espera(p, "Upload Concluido!", false);
        EsperaOKRecusado(p);
    }));
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_Replacement_IsTheRecordsOnOKAlone)
{
    for (const std::string botao : {"cmdCancelar", "cmdOK"}) {
        host->Dominio->Documentos.erase(901);
        host->Dominio->UltimoDocumento = 900;
        EXPECT_EQ(Edita([&](Pessoa &p) {
                      Procura(p, Arquivo);
                      Espera(p, "Arquivo " + Arquivo, true);
                      FAZ(p, Clica("cmdUpload"));
                      FAZ(p, Clica(botao));
                  }),
                  botao == "cmdOK");
        EXPECT_EQ(afericao->NroIntImgCertif, botao == "cmdOK" ? 901 : 500);
        EXPECT_EQ(host->Dominio->Documentos[901], ConteudoNovo); // abandoned, when it was cancelled
    }
}

TEST_F(frmEquipAfericoesDocumento_test, cmdUpload_FailedReplacement_OKRefusedAndCancelKeepsTheOldOne)
{
    host->Dominio->AceitaEnvio = false;
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        Procura(p, Arquivo);
        FAZ(p, Clica("cmdUpload"));
        EsperaOKRecusado(p);
    }));
    EXPECT_EQ(afericao->NroIntImgCertif, 500);
    EXPECT_FALSE(afericao->Alterado);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_StoredDocument_FetchedWrittenAndShown)
{
    host->Tela->Arquivos.Poe(Temporario, Bytes(1000, 'x')); // of an earlier view, and longer
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_EQ(Rotulos(p, [&] { FAZ(p, Clica("cmdVisualizar")); }),
                  (Textos{"Baixando Documento, aguarde!", "Operação Concluida com Sucesso!"}));
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Alterar");
        EXPECT_TRUE(RegistroIgual(
            host->RegistroDe({"goDadosVor.RecebeDocumento", "Plataforma", "Host.CriaDocumentoPDF", "DocumentoPDF"}),
            {"goDadosVor.RecebeDocumento(500, True) -> True",
             "Plataforma.ExisteArquivo(\"" + Temporario + "\") -> True",
             "Plataforma.ApagaArquivo(\"" + Temporario + "\")",
             "Plataforma.GravaArquivo(\"" + Temporario + "\", 10 bytes)", "Host.CriaDocumentoPDF()",
             "DocumentoPDF.ArquivoPDF := \"" + Temporario + "\"", "DocumentoPDF.Mostra(True) -> True"}));
    }));
    ASSERT_EQ(Vistos().size(), 1U);
    EXPECT_EQ(Vistos()[0].Conteudo, ConteudoAntigo);
    EXPECT_TRUE(Vistos()[0].Modal);
    EXPECT_EQ(host->Tela->Arquivos.Conteudo(Temporario), ConteudoAntigo); // it stays
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_NoTemporaryFileYet_NothingToDelete)
{
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        FAZ(p, Esc()); // which presses this button
        EXPECT_EQ(host->Conta("Plataforma.ApagaArquivo"), 0);
        EXPECT_EQ(host->Conta("Plataforma.GravaArquivo"), 1);
        FAZ(p, Esc()); // and again: now there is one
        EXPECT_EQ(host->Conta("Plataforma.ApagaArquivo"), 1);
    }));
    EXPECT_EQ(Vistos().size(), 2U);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_InDetails_Works)
{
    Novo<frmEquipAfericoes>()->CarregaDetalhes(afericao);
    Pessoa p(Aberta(Janela), host->Tela);
    NAO_FAZ(p, Clica("cmdProcurar"));
    FAZ(p, Clica("cmdVisualizar"));
    Espera(p, "Operação Concluida com Sucesso!", false);
    EXPECT_EQ(Caption(p, "cmdProcurar"), "Alterar");
    EXPECT_EQ(Vistos().size(), 1U);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_AfterAnUploadInEdition_TheOldDocument)
{
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        Procura(p, Arquivo);
        FAZ(p, Clica("cmdUpload"));
        FAZ(p, Clica("cmdVisualizar"));
        EXPECT_EQ(Vistos().back().Conteudo, ConteudoAntigo);
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(afericao->NroIntImgCertif, 901);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_AfterAnUploadInInclusion_NothingToShowAndOKPasses)
{
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        Procura(p, Arquivo);
        FAZ(p, Clica("cmdUpload"));
        host->LimpaRegistro();
        EXPECT_EQ(Mudados(p, [&] { FAZ(p, Clica("cmdVisualizar")); }), (Textos{"lblMsgCert", "cmdProcurar"}));
        Espera(p, "Selecione o arquivo PDF!", false);
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Procurar");
        EXPECT_EQ(host->Registro(), Textos{});
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(nova->NroIntImgCertif, 901);
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_RecordWithADocument_ButtonOffersAnother)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        nova->NroIntImgCertif = 500; // where the caption is still that of the design
        EXPECT_EQ(Caption(p, "cmdProcurar"), "&Procurar...");
        EXPECT_EQ(Mudados(p, [&] { FAZ(p, Clica("cmdVisualizar")); }),
                  (Textos{"cmdProcurar", "lblMsgCert", "lblMsgCert"}));
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Alterar");
        Espera(p, "Operação Concluida com Sucesso!", false);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_ServiceRefusesOrViewerCannotOpen_LabelTells)
{
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        host->Visor->Abre = false;
        FAZ(p, Clica("cmdVisualizar"));
        Espera(p, "Baixando Documento, aguarde!", false);
        host->LimpaRegistro();
        host->Dominio->AceitaRecebimento = false;
        FAZ(p, Clica("cmdVisualizar"));
        Espera(p, "Não foi Possivel Recuperar o Documento!", false);
        const Textos trilha = host->Trilha(); // nobody asks for a place to put it
        EXPECT_EQ(std::count(trilha.begin(), trilha.end(), "Plataforma.CaminhoModulo"), 0);
        EXPECT_EQ(host->Conta("Plataforma.ExisteArquivo"), 0);
    }));
    EXPECT_TRUE(host->Tela->Caixas().empty());
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_ServiceFails_ErrorBoxWithLabelAndButtonOfTheAttempt)
{
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        nova->NroIntImgCertif = 500; // where the caption is still that of the design
        host->FalhaEm("goDadosVor.RecebeDocumento");
        FAZ(p, Clica("cmdVisualizar"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipAfericoes.cmdVisualizar_Click", 51, "goDadosVor.RecebeDocumento"));
        Espera(p, "Baixando Documento, aguarde!", false);
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Alterar");
        EXPECT_TRUE(Vistos().empty());
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_FileThatCannotBeDeletedOrWritten_ErrorBoxAndTheFormStaysOpen)
{
    host->Tela->Arquivos.Poe(Temporario, ConteudoNovo);
    host->Tela->Arquivos.Protege(Temporario);
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        const auto falhou = [&](std::size_t quantas, std::int32_t numero) {
            ASSERT_EQ(host->Erros().size(), quantas);
            EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.cmdVisualizar_Click");
            EXPECT_EQ(host->Erros().back().Numero, numero);
            Espera(p, "Baixando Documento, aguarde!", false);
            EXPECT_TRUE(Aberta(Janela)->Visible());
            EXPECT_TRUE(Vistos().empty());
        };
        FAZ(p, Clica("cmdVisualizar"));
        falhou(1, 75); // in use by another viewer
        EXPECT_EQ(host->Conta("Plataforma.GravaArquivo"), 0);
        host->Tela->DiretorioModulo = "C:\\NAO\\EXISTE";
        FAZ(p, Clica("cmdVisualizar"));
        falhou(2, 76);
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdVisualizar_ViewerFails_PathThroughVisualizaPDF)
{
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        host->FalhaEm("DocumentoPDF.Mostra");
        FAZ(p, Clica("cmdVisualizar"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipAfericoes.cmdVisualizar_Click", 51,
                                "DocumentoPDF.Mostra < frmEquipAfericoes.VisualizaPDF"));
    }));
}

TEST_F(frmEquipAfericoesDocumento_test, cmdProcurar_NextUseOfTheForm_EarlierFileIsForgotten)
{
    EXPECT_FALSE(Edita([&](Pessoa &p) { Procura(p, Arquivo); }));
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        ProcuraECancela(p);
        Espera(p, "Sem Arquivo!", false);
    }));
}

} // namespace
