#include "sensors/frmEquipAfericoes.h"

#include "controls/ztCombo.h"
#include "tests/sensors/CenarioSensores.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <utility>

namespace {

const std::string Janela = "frmEquipAfericoes";
const std::string ItemINMETRO = "Aferição do INMETRO";
const std::string ItemDeclaracao = "Declaração de Conformidade";
const std::string Arquivo = "C:\\DOC\\certificado.pdf";

class frmEquipAfericoes_test : public CenarioSensores {
  protected:
    void SetUp() override
    {
        CenarioSensores::SetUp();
        sensor = PoeSensor(103, 3, "Rua Três, 33");
        host->Tela->Arquivos.Poe(Arquivo, {'%', 'P', 'D', 'F'});
    }
    void TearDown() override
    {
        sensor = nullptr;
        CenarioSensores::TearDown();
    }

    static Ref<frmEquipAfericoes> Compartilhado() { return FormCompartilhado<frmEquipAfericoes>(); }
    Ref<clsAfericao> AfericaoNova()
    {
        auto nova = Novo<clsAfericao>();
        nova->DefineSensor(sensor);
        return nova;
    }
    bool Inclui(const Ref<clsAfericao> &nova, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaInclusao(nova);
    }
    bool Edita(const Ref<clsAfericao> &afericao, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaEdicao(afericao);
    }
    // A listed calibration of the second kind.
    Ref<clsAfericao> PoeDeclaracao()
    {
        equipto->TipoEquip = "M";
        Ref<clsAfericao> declaracao = PoeAfericao(sensor, 8, "01/01/2026", "31/12/2026");
        declaracao->TipoAfer = 2;
        declaracao->PortDimel = "123/15";
        return declaracao;
    }
    void Envia(Pessoa &p)
    {
        host->EscolheArquivo(Arquivo);
        FAZ(p, Clica("cmdProcurar"));
        FAZ(p, Clica("cmdUpload"));
    }
    // The only notice since the last look, and where it led the focus.
    std::pair<std::string, std::string> Aviso()
    {
        const auto &avisos = host->Avisos();
        EXPECT_EQ(avisos.size(), ++avisosVistos);
        return avisos.empty() ? std::pair<std::string, std::string>()
                              : std::pair(avisos.back().Texto, avisos.back().Controle);
    }

    Ref<clsSensor> sensor;
    std::size_t avisosVistos = 0;
};

using Par = std::pair<std::string, std::string>;

TEST_F(frmEquipAfericoes_test, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmEquipAfericoes().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmEquipAfericoes().Desenho(), "tests/sensors/dados/frmEquipAfericoes.desenho.txt"));
}

TEST_F(frmEquipAfericoes_test, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    EXPECT_TRUE(RetratoIgual(SoCarregada<frmEquipAfericoes>(), "tests/sensors/dados"));
}

TEST_F(frmEquipAfericoes_test, Keys_EnterAndEsc_PressOKAndVisualizar)
{
    Inclui(AfericaoNova(), [&](Pessoa &p) {
        FAZ(p, Enter());
        EXPECT_EQ(Aviso(), Par("Informe o Número INMETRO!", "txtNroINMETRO"));
        FAZ(p, Esc());
        EXPECT_EQ(Caption(p, "lblMsgCert"), "Selecione o arquivo PDF!");
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Clica("cmdCancelar"));
    });
}

TEST_F(frmEquipAfericoes_test, CarregaInclusao_EquipmentTypeR_OneKindAndTheDesignStateOfTheDocument)
{
    host->LimpaRegistro();
    const bool confirmou = Inclui(AfericaoNova(), [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Nova Aferição");
        EXPECT_EQ(Caption(p, "lblCodEquip"), "EQ-10");
        EXPECT_EQ(Caption(p, "lblNroSensor"), "3");
        auto tipo = p.Acha<ztCombo>("cboTipo");
        ASSERT_EQ(tipo->NroItens(), 1);
        EXPECT_EQ(tipo->Itens()[0].Texto, ItemINMETRO);
        EXPECT_EQ(tipo->Itens()[0].Valor, "1");
        EXPECT_EQ(tipo->Valor(), "1");
        EXPECT_TRUE(tipo->ComboSomenteLeitura());
        EXPECT_FALSE(Visivel(p, "fraPortariaDIMEL"));
        for (const std::string campo : {"txtNroINMETRO", "txtMarcaINMETRO", "txtNroPortDIMEL", "txtAnoPortDIMEL"}) {
            EXPECT_EQ(Texto(p, campo), "") << campo;
        }
        EXPECT_EQ(Texto(p, "txtDtVerifINMETRO"), "  /  /    ");
        EXPECT_EQ(Texto(p, "txtDtVencINMETRO"), "  /  /    ");
        EXPECT_TRUE(Habilitado(p, "cmdProcurar"));
        EXPECT_EQ(Caption(p, "cmdProcurar"), "&Procurar...");
        EXPECT_TRUE(Habilitado(p, "cmdVisualizar"));
        EXPECT_FALSE(Habilitado(p, "cmdUpload"));
        EXPECT_EQ(Caption(p, "lblMsgCert"), "");
        EXPECT_TRUE(Visivel(p, "cmdOK"));
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Cancelar");
        FAZ(p, Clica("cmdCancelar"));
    });
    EXPECT_FALSE(confirmou);
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Plataforma", "ObjInterface", "goMensagem", "goDadosVor"}),
        {"Plataforma.Carrega(frmEquipAfericoes)", "Plataforma.Ponteiro := 0", "Plataforma.ProcessaMensagens()",
         "ObjInterface.MostraJanela(frmEquipAfericoes, modal=True)", "Plataforma.Descarrega(frmEquipAfericoes)"}));
}

TEST_F(frmEquipAfericoes_test, CarregaInclusao_EachEquipmentType_TwoKindsForPCLMOnly)
{
    for (const std::string tipo : {"P", "C", "L", "M"}) {
        equipto->TipoEquip = tipo;
        Inclui(AfericaoNova(), [&](Pessoa &p) {
            auto combo = p.Acha<ztCombo>("cboTipo");
            EXPECT_EQ(combo->NroItens(), 2) << tipo;
            EXPECT_EQ(combo->Itens().back().Texto, ItemDeclaracao);
            EXPECT_EQ(combo->Itens().back().Valor, "2");
            EXPECT_EQ(combo->Valor(), "1");
            EXPECT_FALSE(combo->ComboSomenteLeitura()) << tipo;
            FAZ(p, Clica("cmdCancelar"));
        });
    }
    for (const std::string tipo : {"R", "A", "E", "F", "U", "V", "B", "T", "m", "p", "", "PC"}) {
        equipto->TipoEquip = tipo;
        Inclui(AfericaoNova(), [&](Pessoa &p) {
            EXPECT_EQ(p.Acha<ztCombo>("cboTipo")->NroItens(), 1) << tipo;
            EXPECT_TRUE(p.Acha<ztCombo>("cboTipo")->ComboSomenteLeitura()) << tipo;
            FAZ(p, Clica("cmdCancelar"));
        });
    }
}

TEST_F(frmEquipAfericoes_test, cboTipo_KindChosen_FramesAndLabelsFollow)
{
    equipto->TipoEquip = "M";
    Inclui(AfericaoNova(), [&](Pessoa &p) {
        FAZ(p, Escolhe("cboTipo", ItemDeclaracao));
        EXPECT_TRUE(Visivel(p, "fraPortariaDIMEL"));
        EXPECT_EQ(Caption(p, "lblMarcaINMETRO"), "Declaração:");
        EXPECT_EQ(Caption(p, "fraDocumento"), "Documento da Declaração de Conformidade:");
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->Valor(), "2");
        FAZ(p, Escolhe("cboTipo", ItemINMETRO));
        EXPECT_FALSE(Visivel(p, "fraPortariaDIMEL"));
        EXPECT_EQ(Caption(p, "lblMarcaINMETRO"), "Certificado:");
        EXPECT_EQ(Caption(p, "fraDocumento"), "Documento do Certificado:");
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->Valor(), "1");
        FAZ(p, Clica("cmdCancelar"));
    });
}

TEST_F(frmEquipAfericoes_test, CarregaEdicao_FirstKindWithDocument_ScreenFilled)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    host->LimpaRegistro();
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Editar Aferição");
        EXPECT_EQ(Caption(p, "lblCodEquip"), "EQ-10");
        EXPECT_EQ(Caption(p, "lblNroSensor"), "3");
        EXPECT_EQ(Texto(p, "txtNroINMETRO"), "1234");
        EXPECT_EQ(Texto(p, "txtMarcaINMETRO"), "99");
        EXPECT_EQ(Texto(p, "txtDtVerifINMETRO"), "05/03/2026");
        EXPECT_EQ(Texto(p, "txtDtVencINMETRO"), "09/11/2026");
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->Valor(), "1");
        EXPECT_TRUE(p.Acha<IztCombo>("cboTipo")->ComboSomenteLeitura());
        EXPECT_FALSE(Visivel(p, "fraPortariaDIMEL"));
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Alterar");
        EXPECT_TRUE(Habilitado(p, "cmdProcurar"));
        EXPECT_TRUE(Habilitado(p, "cmdVisualizar"));
        EXPECT_FALSE(Habilitado(p, "cmdUpload"));
        EXPECT_EQ(Caption(p, "lblMsgCert"), "Documento Encontrado!");
        EXPECT_TRUE(Habilitado(p, "cmdOK")); // at all times
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Cancelar");
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmEquipAfericoes, modal=True)"), 1);
    EXPECT_EQ(host->Conta("goMensagem"), 0);
}

TEST_F(frmEquipAfericoes_test, CarregaEdicao_SecondKindWithoutDocument_OrdinanceSplitAndKindFixed)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    afericao->NroIntImgCertif = 0;
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->Valor(), "2");
        NAO_FAZ(p, Escolhe("cboTipo", ItemINMETRO));
        EXPECT_TRUE(Visivel(p, "fraPortariaDIMEL"));
        EXPECT_EQ(Caption(p, "lblMarcaINMETRO"), "Declaração:");
        EXPECT_EQ(Caption(p, "fraDocumento"), "Documento da Declaração de Conformidade:");
        EXPECT_EQ(Texto(p, "txtNroPortDIMEL"), "123");
        EXPECT_EQ(Texto(p, "txtAnoPortDIMEL"), "15");
        EXPECT_EQ(Caption(p, "cmdProcurar"), "Procurar");
        EXPECT_TRUE(Habilitado(p, "cmdProcurar"));
        EXPECT_FALSE(Habilitado(p, "cmdVisualizar"));
        EXPECT_FALSE(Habilitado(p, "cmdUpload"));
        EXPECT_EQ(Caption(p, "lblMsgCert"), "Sem Imagem Digitalizada!");
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipAfericoes_test, MontaTela_OfEachKindAndDocument_FillsTheControlsInThisOrder)
{
    const auto declaracao = PoeDeclaracao();
    declaracao->Numero = "77";
    declaracao->Marca = "88";
    for (const std::uint8_t tipo : {std::uint8_t{1}, std::uint8_t{2}}) {
        for (const double documento : {0.0, 5.0}) {
            SCOPED_TRACE(std::to_string(tipo) + " " + std::to_string(documento));
            declaracao->TipoAfer = tipo;
            declaracao->NroIntImgCertif = documento;
            auto anotada = Novo<FormQueAnota<frmEquipAfericoes>>();
            std::string titulo;
            anotada->AoPrimeiro = [&] { // so that everything that is written is a change
                titulo = anotada->Caption();
                const Pessoa p(anotada);
                p.Acha("fraPortariaDIMEL")->DefineVisible(tipo == 1);
                p.Acha("fraDocumento")->DefineCaption("");
                p.Acha("lblMarcaINMETRO")->DefineCaption("");
                p.Acha("cmdProcurar")->DefineEnabled(false);
                p.Acha("cmdVisualizar")->DefineEnabled(documento == 0);
                p.Acha("cmdUpload")->DefineEnabled(true);
            };
            Textos ordem;
            NaJanela(Janela, [&](Pessoa &p) {
                ordem = anotada->Alterados;
                EXPECT_EQ(Habilitado(p, "cmdUpload"), documento == 0); // left as it is without a document
                FAZ(p, Clica("cmdCancelar"));
            });
            anotada->CarregaEdicao(declaracao);
            EXPECT_EQ(titulo, "Editar Aferição");
            Textos esperada{"lblCodEquip",     "lblNroSensor",      "cboTipo",          "txtNroINMETRO",
                            "txtMarcaINMETRO", "txtDtVerifINMETRO", "txtDtVencINMETRO", "fraPortariaDIMEL",
                            "lblMarcaINMETRO", "fraDocumento",      "cboTipo"};
            if (tipo == 2) {
                esperada.insert(esperada.end(), {"txtNroPortDIMEL", "txtAnoPortDIMEL", "cboTipo"});
            }
            esperada.insert(esperada.end(), {"cmdProcurar", "cmdVisualizar"});
            if (documento != 0) {
                esperada.emplace_back("cmdUpload");
            }
            esperada.emplace_back("lblMsgCert");
            EXPECT_EQ(ordem, esperada);
        }
    }
}

TEST_F(frmEquipAfericoes_test, CarregaEdicao_OrdinanceWithMoreThanOneSlash_TheTwoFirstPieces)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    afericao->PortDimel = "1/2/3";
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(Texto(p, "txtNroPortDIMEL"), "1");
        EXPECT_EQ(Texto(p, "txtAnoPortDIMEL"), "2");
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipAfericoes_test, CarregaEdicao_NoDatesAndAnotherKindNumber_EmptyDatesAndFirstKind)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    afericao->DataVerificacao = Data{};
    afericao->DataVencimento = Data{};
    afericao->TipoAfer = 0;
    afericao->PortDimel = "sem barra"; // of no account in the first kind
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztData>("txtDtVerifINMETRO")->Valor(), "");
        EXPECT_EQ(p.Acha<IztData>("txtDtVencINMETRO")->Valor(), "");
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->Valor(), "1");
        EXPECT_EQ(Texto(p, "txtNroPortDIMEL"), "");
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipAfericoes_test, CarregaDetalhes_EachRecord_ReadOnlyNotModalAndAWindowOfItsOwn)
{
    Ref<clsAfericao> primeira = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    Ref<clsAfericao> segunda = PoeDeclaracao();
    segunda->NroIntImgCertif = 0;
    host->LimpaRegistro();
    Novo<frmEquipAfericoes>()->CarregaDetalhes(primeira);
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Carrega", "goMensagem.PreparaDetalhes", "ObjInterface"}),
                              {"Plataforma.Carrega(frmEquipAfericoes)", "goMensagem.PreparaDetalhes(frmEquipAfericoes)",
                               "ObjInterface.MostraJanela(frmEquipAfericoes, modal=False)"}));
    Novo<frmEquipAfericoes>()->CarregaDetalhes(segunda);

    const auto abertas = host->Tela->FormsAbertos(Janela);
    ASSERT_EQ(abertas.size(), 2U);
    for (const auto &form : abertas) {
        Pessoa p(form, host->Tela);
        EXPECT_EQ(form->Caption(), "Detalhes da Aferição");
        EXPECT_FALSE(Visivel(p, "cmdOK"));
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Fechar");
        NAO_FAZ(p, Enter());
        NAO_FAZ(p, Digita("txtNroINMETRO", "9"));
        NAO_FAZ(p, Digita("txtMarcaINMETRO", "9"));
        NAO_FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2000"));
        NAO_FAZ(p, Preenche("txtDtVencINMETRO", "01/01/2000"));
        NAO_FAZ(p, Escolhe("cboTipo", ItemINMETRO));
        EXPECT_TRUE(p.Acha<IztCombo>("cboTipo")->ComboSomenteLeitura());
        NAO_FAZ(p, Clica("cmdProcurar"));
        NAO_FAZ(p, Clica("cmdUpload"));
    }
    Pessoa comDocumento(abertas[0], host->Tela);
    EXPECT_TRUE(Habilitado(comDocumento, "cmdVisualizar"));
    EXPECT_EQ(Caption(comDocumento, "cmdProcurar"), "Alterar");
    EXPECT_EQ(Caption(comDocumento, "lblMsgCert"), "Documento Encontrado!");
    Pessoa semDocumento(abertas[1], host->Tela);
    EXPECT_FALSE(Habilitado(semDocumento, "cmdVisualizar"));
    EXPECT_EQ(Caption(semDocumento, "cmdProcurar"), "Procurar");
    EXPECT_EQ(Caption(semDocumento, "lblMsgCert"), "Sem Imagem Digitalizada!");
    EXPECT_EQ(Texto(semDocumento, "txtNroPortDIMEL"), "123");

    FAZ(comDocumento, Clica("cmdCancelar"));
    FAZ(semDocumento, Clica("cmdCancelar"));
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    EXPECT_FALSE(primeira->Alterado);
    EXPECT_EQ(host->Avisos().size(), 0U);
}

TEST_F(frmEquipAfericoes_test, CarregaDetalhes_HostPreparesTheForm_ButtonsAlreadyThoseOfDetails)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    EXPECT_EQ(RodapesAoChamar(Janela, [&] { Novo<frmEquipAfericoes>()->CarregaDetalhes(afericao); }),
              (std::set<std::string>{"&Fechar"}));
}

// From all wrong to all right: each rule speaks only when those before it are content.
TEST_F(frmEquipAfericoes_test, ValidouOk_SecondKind_RulesInTheirOrder)
{
    equipto->TipoEquip = "M";
    PoeAfericao(sensor, 1, "01/06/2026", "31/12/2026");
    PoeAfericao(sensor, 2, "01/01/2026", "31/03/2026");
    auto nova = AfericaoNova();
    EXPECT_TRUE(Inclui(nova, [&](Pessoa &p) {
        const auto recusa = [&](const std::string &texto, const std::string &controle) {
            FAZ(p, Clica("cmdOK"));
            EXPECT_EQ(Aviso(), Par(texto, controle));
            if (!controle.empty()) {
                EXPECT_EQ(Aberta(Janela)->ControleAtivo()->Nome(), controle);
            }
        };
        FAZ(p, Escolhe("cboTipo", ItemDeclaracao));
        recusa("Informe o Número da Portaria DIMEL!", "txtNroPortDIMEL");
        FAZ(p, Preenche("txtNroPortDIMEL", "00"));
        recusa("Informe o Número da Portaria DIMEL!", "txtNroPortDIMEL");
        FAZ(p, Preenche("txtNroPortDIMEL", "123"));
        recusa("Informe o Ano da Portaria DIMEL!", "txtAnoPortDIMEL");
        for (const std::string ano : {"0", "00", "  ", "ab"}) {
            FAZ(p, Preenche("txtAnoPortDIMEL", ano));
            recusa("Informe o Ano da Portaria DIMEL!", "txtAnoPortDIMEL");
        }
        FAZ(p, Preenche("txtAnoPortDIMEL", "05"));
        recusa("Informe a data de Verificação!", "txtDtVerifINMETRO");
        FAZ(p, Preenche("txtDtVerifINMETRO", "31/02/2026"));
        recusa("Informe uma data de Verificação válida!", "txtDtVerifINMETRO");
        FAZ(p, Preenche("txtDtVerifINMETRO", "15/0"));
        recusa("Informe uma data de Verificação válida!", "txtDtVerifINMETRO");
        FAZ(p, Preenche("txtDtVerifINMETRO", "15/03/2026"));
        recusa("Informe a data de Vencimento!", "txtDtVencINMETRO");
        FAZ(p, Preenche("txtDtVencINMETRO", "99/99/9999"));
        recusa("Informe uma data de Vencimento válida!", "txtDtVencINMETRO");
        for (const std::string naoDepois : {"14/03/2026", "15/03/2026"}) {
            FAZ(p, Preenche("txtDtVencINMETRO", naoDepois));
            recusa("A data de Vencimento deve ser maior que a data de Verificação!", "txtDtVencINMETRO");
        }
        EXPECT_TRUE(host->Tela->Caixas().empty());
        EXPECT_TRUE(host->Tela->Perguntas().empty());

        FAZ(p, Preenche("txtDtVencINMETRO", "01/06/2026")); // the first day of another period
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Tela->Caixas().size(), 1U);
        EXPECT_EQ(host->Tela->Caixas()[0].Texto,
                  "Período da nova aferição em conflito com a aferição dos dias 01/06/2026 a 31/12/2026");
        EXPECT_EQ(host->Tela->Caixas()[0].Titulo, "Atenção");
        EXPECT_TRUE(host->Tela->Perguntas().empty());

        FAZ(p, Preenche("txtDtVencINMETRO", "31/05/2026"));
        const std::string pergunta =
            "Data de verificação do INMETRO (15/03/2026) em conflito com a \r\naferição dos dias 01/01/2026 e "
            "31/03/2026.\r\n\r\nDeseja continuar ?\r\n\r\nOBS: Caso continue, a data de vencimento da aferição em "
            "conflito será\r\nrecalculada automaticamente (um dia antes da nova data de verificação).";
        host->Responde(pergunta, true);
        recusa("É obrigatório fazer Upload do Documento em PDF!", ""); // the last rule, behind the question
        ASSERT_EQ(host->Tela->Perguntas().size(), 1U);
        EXPECT_EQ(host->Tela->Perguntas()[0].Titulo, "Atenção");
        EXPECT_FALSE(host->Tela->Perguntas()[0].PadraoSim);

        Envia(p);
        FAZ(p, Clica("cmdOK")); // the conflict is gone: the old period was shortened
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    }));
    EXPECT_EQ(host->Avisos().size(), avisosVistos);
    EXPECT_EQ(host->Tela->Caixas().size(), 1U);
    EXPECT_EQ(host->Tela->Perguntas().size(), 1U);
    EXPECT_EQ(nova->TipoAfer, 2);
    EXPECT_EQ(nova->Numero, "");
    EXPECT_EQ(nova->Marca, ""); // without a rule in either kind
    EXPECT_EQ(nova->PortDimel, "123/05");
    EXPECT_EQ(nova->DataVerificacao, Dia("15/03/2026"));
    EXPECT_EQ(nova->DataVencimento, Dia("31/05/2026"));
    EXPECT_EQ(nova->NroIntImgCertif, 1);
    EXPECT_TRUE(nova->Alterado);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(sensor->ListaAfericoes()->Item(2)->DataVencimento, Dia("14/03/2026"));
}

// The shared instance keeps its fields from one use to the next.
TEST_F(frmEquipAfericoes_test, CarregaInclusao_AfterAConfirmedEdition_ItsAnswerAndItsDocumentAreForgotten)
{
    Ref<clsAfericao> listada = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026"); // with document 500
    EXPECT_TRUE(Edita(listada, [&](Pessoa &p) { FAZ(p, Clica("cmdOK")); }));
    auto nova = AfericaoNova();
    EXPECT_FALSE(Inclui(nova, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "1"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2027"));
        FAZ(p, Preenche("txtDtVencINMETRO", "31/12/2027"));
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(Aviso(), Par("É obrigatório fazer Upload do Documento em PDF!", ""));
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(nova->NroIntImgCertif, 0);
    EXPECT_TRUE(Edita(listada, [&](Pessoa &p) { FAZ(p, Clica("cmdOK")); }));
    EXPECT_FALSE(Edita(listada, [&](Pessoa &p) { FAZ(p, Clica("cmdCancelar")); }));
}

TEST_F(frmEquipAfericoes_test, Conflict_InEdition_BoxesWithTheirWholeTextsAndNothingWritten)
{
    Ref<clsAfericao> outra = PoeAfericao(sensor, 1, "01/06/2026", "31/12/2026");
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 2, "01/01/2026", "31/03/2026");
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        FAZ(p, Preenche("txtDtVencINMETRO", "01/06/2026"));
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "31/12/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "31/12/2027"));
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    }));
    ASSERT_EQ(host->Tela->Caixas().size(), 2U);
    EXPECT_EQ(host->Tela->Caixas()[0].Texto,
              "Período da nova aferição em conflito com a aferição dos dias 01/06/2026 a 31/12/2026");
    EXPECT_EQ(host->Tela->Caixas()[1].Texto, "Data de verificação do INMETRO (31/12/2026) em conflito com a \r\n"
                                             "aferição dos dias 01/06/2026 e 31/12/2026.");
    for (const auto &caixa : host->Tela->Caixas()) {
        EXPECT_EQ(caixa.Titulo, "Atenção");
    }
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_TRUE(host->Avisos().empty());
    EXPECT_EQ(outra->DataVencimento, Dia("31/12/2026"));
    EXPECT_FALSE(outra->Alterado);
    EXPECT_FALSE(afericao->Alterado);
    EXPECT_EQ(afericao->DataVencimento, Dia("31/03/2026"));
}

// Of the first text both days are the system's short form, of the second only the new verification date. A failure
// set for the reading behind the last one still waits.
TEST_F(frmEquipAfericoes_test, Conflict_DaysInTheTexts_ShortFormAskedOfTheSystemTwiceAndOnce)
{
    PoeAfericao(sensor, 1, "01/06/2026", "31/12/2026");
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 2, "01/01/2026", "31/03/2026");
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        const auto pergunta = [&](std::int32_t vezes) {
            host->FalhaEm("Plataforma.DataCurta", vezes + 1);
            FAZ(p, Clica("cmdOK"));
            EXPECT_EQ(FalhaLancada([&] { host->Tela->DataCurta(Dia("01/06/2026")); }).Fonte, "Plataforma.DataCurta");
        };
        FAZ(p, Preenche("txtDtVencINMETRO", "01/06/2026"));
        pergunta(2);
        FAZ(p, Preenche("txtDtVerifINMETRO", "31/12/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "31/12/2027"));
        pergunta(1);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Tela->Caixas().size(), 2U);
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(frmEquipAfericoes_test, ValidouOk_FirstKind_NumberNeededAndBlanksAreOne)
{
    auto nova = AfericaoNova();
    EXPECT_TRUE(Inclui(nova, [&](Pessoa &p) {
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(Aviso(), Par("Informe o Número INMETRO!", "txtNroINMETRO"));
        FAZ(p, Preenche("txtNroINMETRO", "   "));
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(Aviso(), Par("Informe a data de Verificação!", "txtDtVerifINMETRO"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "02/01/2026")); // two days are the shortest period
        FAZ(p, Preenche("txtMarcaINMETRO", "12a345678901234567"));
        Envia(p);
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(nova->Numero, "   ");
    EXPECT_EQ(nova->Marca, "12345678901234");
    EXPECT_EQ(nova->TipoAfer, 1);
    EXPECT_EQ(nova->PortDimel, "");
}

TEST_F(frmEquipAfericoes_test, cmdOK_EditOfTheFirstKind_OrdinanceUntouchedAndMarkedWithoutAnyChange)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    afericao->PortDimel = "77/99";
    EXPECT_TRUE(Edita(afericao, [&](Pessoa &p) { FAZ(p, Clica("cmdOK")); }));
    EXPECT_EQ(afericao->PortDimel, "77/99");
    EXPECT_TRUE(afericao->Alterado);
    EXPECT_EQ(afericao->Numero, "1234");
    EXPECT_EQ(afericao->Marca, "99");
    EXPECT_EQ(afericao->NroIntAfericao, 7);
    EXPECT_EQ(afericao->NroIntImgCertif, 500);
    EXPECT_EQ(afericao->DataVerificacao, Dia("05/03/2026"));
    EXPECT_EQ(afericao->DataVencimento, Dia("09/11/2026"));
    EXPECT_TRUE(afericao->Ativo);
    EXPECT_EQ(afericao->Chave(), "A1");
    EXPECT_FALSE(sensor->Alterado); // the controller's business
}

TEST_F(frmEquipAfericoes_test, cmdOK_Refused_TheKindOfTheRecordIsUntouched)
{
    equipto->TipoEquip = "M";
    auto nova = AfericaoNova();
    EXPECT_FALSE(Inclui(nova, [&](Pessoa &p) {
        FAZ(p, Escolhe("cboTipo", ItemDeclaracao));
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(Aviso().first, "Informe o Número da Portaria DIMEL!");
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(nova->TipoAfer, 0);
}

TEST_F(frmEquipAfericoes_test, cmdOK_EditOfTheSecondKind_OrdinanceWritten)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    EXPECT_TRUE(Edita(afericao, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroPortDIMEL", "1234567")); // six digits at most
        FAZ(p, Preenche("txtAnoPortDIMEL", "7x"));
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(afericao->PortDimel, "123456/7x");
    EXPECT_EQ(afericao->TipoAfer, 2);
}

TEST_F(frmEquipAfericoes_test, cmdCancelar_EverythingTyped_RecordUntouchedAndNoQuestion)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "9"));
        FAZ(p, Preenche("txtMarcaINMETRO", "9"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2000"));
        FAZ(p, Preenche("txtDtVencINMETRO", "01/01/2001"));
        FAZ(p, Preenche("txtNroPortDIMEL", "9"));
        FAZ(p, Preenche("txtAnoPortDIMEL", "99"));
        Envia(p);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(afericao->Numero, "1234");
    EXPECT_EQ(afericao->Marca, "99");
    EXPECT_EQ(afericao->DataVerificacao, Dia("01/01/2026"));
    EXPECT_EQ(afericao->DataVencimento, Dia("31/12/2026"));
    EXPECT_EQ(afericao->PortDimel, "123/15");
    EXPECT_EQ(afericao->NroIntImgCertif, 500);
    EXPECT_FALSE(afericao->Alterado);
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(frmEquipAfericoes_test, Unload_ByTheWindowsButton_NotConfirmed)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) { FAZ(p, Fecha()); }));
    EXPECT_FALSE(afericao->Alterado);
}

// A record of the second kind under an equipment whose type no longer offers it: the kind is not lost, and OK cannot
// turn the record into another kind.
TEST_F(frmEquipAfericoes_test, cmdOK_KindThatTheComboDoesNotOffer_Fault13AndTheRecordIsUntouched)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    equipto->TipoEquip = "R";
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->IndiceAtual(), -1);
        EXPECT_TRUE(Visivel(p, "fraPortariaDIMEL"));
        FAZ(p, Preenche("txtNroINMETRO", "42"));
        FAZ(p, Preenche("txtMarcaINMETRO", "43"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "02/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "30/12/2026"));
        FAZ(p, Preenche("txtNroPortDIMEL", "44"));
        Envia(p);
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Numero, 13);
        EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipAfericoes.cmdOK_Click");
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(afericao->TipoAfer, 2);
    EXPECT_EQ(afericao->Numero, "1234");
    EXPECT_EQ(afericao->Marca, "99");
    EXPECT_EQ(afericao->DataVerificacao, Dia("01/01/2026"));
    EXPECT_EQ(afericao->DataVencimento, Dia("31/12/2026"));
    EXPECT_EQ(afericao->PortDimel, "123/15");
    EXPECT_EQ(afericao->NroIntImgCertif, 500);
    EXPECT_FALSE(afericao->Alterado);
}

// All has been done but the closing itself, so whatever closes the window then, it was confirmed.
TEST_F(frmEquipAfericoes_test, cmdOKAndCmdCancelar_UnloadFails_ReportedWithTheRecordAlreadyWritten)
{
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 7, "05/03/2026", "09/11/2026");
    EXPECT_TRUE(Edita(afericao, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "42"));
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.cmdOK_Click");
        EXPECT_EQ(afericao->Numero, "42");
        EXPECT_TRUE(afericao->Alterado);
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.cmdCancelar_Click");
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(frmEquipAfericoes_test, CarregaX_OrdinanceWithoutSlash_ErrorBoxAndTheFormDoesNotOpen)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    for (const std::string portaria : {"12315", ""}) {
        afericao->PortDimel = portaria;
        host->LimpaRegistro();
        EXPECT_FALSE(Compartilhado()->CarregaEdicao(afericao));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.CarregaEdicao");
        EXPECT_EQ(host->Erros().back().Numero, 9);
        EXPECT_EQ(host->Erros().back().Fonte, "ZTAVOREQUIP < frmEquipAfericoes.MontaTela");
        EXPECT_EQ(host->Erros().back().Titulo, "Sistema de Autuações");
        Novo<frmEquipAfericoes>()->CarregaDetalhes(afericao);
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.CarregaDetalhes");
        EXPECT_EQ(host->Erros().back().Fonte, "ZTAVOREQUIP < frmEquipAfericoes.MontaTela");
        EXPECT_EQ(host->Conta("ObjInterface.MostraJanela"), 0);
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
        EXPECT_EQ(host->Tela->Ponteiro(), PonteiroNormal);
    }
    EXPECT_EQ(host->Erros().size(), 4U);

    afericao->PortDimel = "1/2"; // and the same window opens the next record as if nothing had been
    EXPECT_FALSE(Edita(afericao, [&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztCombo>("cboTipo")->NroItens(), 2);
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipAfericoes_test, CarregaX_BackReferenceEnded_ErrorBoxPerMode)
{
    Ref<clsAfericao> solta = Novo<clsAfericao>(); // of no sensor
    EXPECT_FALSE(Compartilhado()->CarregaInclusao(solta));
    EXPECT_FALSE(Compartilhado()->CarregaEdicao(solta));
    Novo<frmEquipAfericoes>()->CarregaDetalhes(solta);
    Ref<clsAfericao> semEquipto = AfericaoNova();
    equipto = nullptr;
    EXPECT_FALSE(Compartilhado()->CarregaInclusao(semEquipto));

    ASSERT_EQ(host->Erros().size(), 4U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipAfericoes.CarregaInclusao");
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP");
    EXPECT_EQ(host->Erros()[1].Contexto, "frmEquipAfericoes.CarregaEdicao");
    EXPECT_EQ(host->Erros()[1].Fonte, "ZTAVOREQUIP < frmEquipAfericoes.MontaTela");
    EXPECT_EQ(host->Erros()[2].Contexto, "frmEquipAfericoes.CarregaDetalhes");
    EXPECT_EQ(host->Erros()[3].Contexto, "frmEquipAfericoes.CarregaInclusao");
    for (const auto &erro : host->Erros()) {
        EXPECT_EQ(erro.Numero, 91);
    }
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(frmEquipAfericoes_test, cmdOK_SensorEndedMeanwhile_Fault91WithThePathAndTheFormStaysOpen)
{
    auto nova = AfericaoNova();
    EXPECT_FALSE(Inclui(nova, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "1"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "31/12/2026"));
        sensor = nullptr;
        equipto->ListaSensores()->Clear();
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Numero, 91);
        EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipAfericoes.cmdOK_Click");
        EXPECT_EQ(host->Erros()[0].Fonte,
                  "ZTAVOREQUIP < frmEquipAfericoes.VerificaConflitoDatas < frmEquipAfericoes.ValidouOk");
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_FALSE(nova->Alterado);
}

TEST_F(frmEquipAfericoes_test, cboTipo_ChoiceTakenAway_Fault13InItsContext)
{
    Inclui(AfericaoNova(), [&](Pessoa &p) {
        p.Acha<IztCombo>("cboTipo")->DefineIndiceAtual(-1);
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Numero, 13);
        EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipAfericoes.cboTipo_Click");
        EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP");
        FAZ(p, Clica("cmdCancelar"));
    });
}

TEST_F(frmEquipAfericoes_test, Validation_HostFails_PathThroughTheProcedures)
{
    PoeAfericao(sensor, 1, "01/06/2026", "31/12/2026");
    EXPECT_FALSE(Inclui(AfericaoNova(), [&](Pessoa &p) {
        const auto falha = [&](const std::string &operacao, const std::string &procedimento) {
            host->FalhaEm(operacao);
            FAZ(p, Clica("cmdOK"));
            EXPECT_EQ(host->Erros().back().Contexto, "frmEquipAfericoes.cmdOK_Click");
            EXPECT_EQ(host->Erros().back().Fonte, operacao + procedimento + " < frmEquipAfericoes.ValidouOk");
            EXPECT_TRUE(Aberta(Janela)->Visible());
        };
        falha("goMensagem.ExibeMensagem", "");
        FAZ(p, Preenche("txtNroINMETRO", "1"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "01/07/2026"));
        falha("Plataforma.CaixaInformacao", " < frmEquipAfericoes.VerificaConflitoDatas");
        falha("Plataforma.DataCurta", " < frmEquipAfericoes.VerificaConflitoDatas");
        FAZ(p, Preenche("txtDtVerifINMETRO", "02/06/2026"));
        falha("Plataforma.PerguntaSimNao", " < frmEquipAfericoes.DataVerificacaoEmConflito");
        falha("Plataforma.DataCurta", " < frmEquipAfericoes.DataVerificacaoEmConflito");
        EXPECT_EQ(sensor->ListaAfericoes()->Item(1)->DataVencimento, Dia("31/12/2026"));
        EXPECT_FALSE(sensor->ListaAfericoes()->Item(1)->Alterado);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 5U);
}

TEST_F(frmEquipAfericoes_test, CarregaDetalhes_OutOfMemoryAnywhere_PathsOfTheLoadingProcedures)
{
    Ref<clsAfericao> afericao = PoeDeclaracao();
    std::set<std::string> vistas;
    for (std::int64_t n = 1;; ++n) {
        bool recusou = false;
        {
            auto form = Novo<frmEquipAfericoes>();
            MemoriaEscassa escassa(n);
            form->CarregaDetalhes(afericao);
            recusou = escassa.Recusou();
        }
        host->Tela->FechaTudo();
        if (!recusou) {
            break;
        }
    }
    for (const auto &erro : host->Erros()) {
        vistas.insert(erro.Fonte);
    }
    const std::string monta = " < frmEquipAfericoes.MontaTela";
    for (const std::string &esperada : {"ZTAVOREQUIP" + monta, "ZTAVOREQUIP < frmEquipAfericoes.MontaComboTipo" + monta,
                                        "ZTAVOREQUIP < frmEquipAfericoes.SetaTipoAfer" + monta}) {
        EXPECT_TRUE(vistas.contains(esperada)) << esperada;
    }
}

TEST_F(frmEquipAfericoes_test, Unload_Each_ReleasesTheRecord)
{
    Ref<clsAfericao> nova = AfericaoNova();
    RefFraca<clsAfericao> fraca = nova;
    NaJanela(Janela, [&](Pessoa &p) { FAZ(p, Clica("cmdCancelar")); });
    Compartilhado()->CarregaInclusao(std::exchange(nova, nullptr));
    EXPECT_TRUE(fraca.Nada());

    Ref<clsAfericao> listada = PoeAfericao(sensor, 1, "01/06/2026", "31/12/2026");
    Novo<frmEquipAfericoes>()->CarregaDetalhes(listada);
    fraca = std::exchange(listada, nullptr);
    sensor->ListaAfericoes()->Clear();
    EXPECT_FALSE(fraca.Nada()); // on the screen
    Pessoa p(Aberta(Janela), host->Tela);
    FAZ(p, Clica("cmdCancelar"));
    EXPECT_TRUE(fraca.Nada());
}

TEST_F(frmEquipAfericoes_test, cmdAjuda_Pressed_NothingHappens)
{
    Inclui(AfericaoNova(), [&](Pessoa &p) {
        host->LimpaRegistro();
        FAZ(p, Clica("cmdAjuda"));
        EXPECT_EQ(host->Registro(), Textos{});
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Clica("cmdCancelar"));
    });
}

} // namespace
