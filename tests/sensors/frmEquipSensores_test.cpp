#include "sensors/frmEquipSensores.h"

#include "controls/SSTab.h"
#include "controls/ztEndereco.h"
#include "tests/sensors/CenarioSensores.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/InterfaceQueFalha.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

namespace {

const std::string Janela = "frmEquipSensores";
const std::string Descarte = "Foram feitas alterações neste sensor. Deseja descartá-las?";

class frmEquipSensores_test : public CenarioSensores {
  protected:
    void SetUp() override
    {
        CenarioSensores::SetUp();
        sensor = PoeSensor(103, 3, "Rua Três, 33");
    }
    void TearDown() override
    {
        sensor = nullptr;
        CenarioSensores::TearDown();
    }

    static Ref<frmEquipSensores> Compartilhado() { return FormCompartilhado<frmEquipSensores>(); }
    Ref<clsSensor> SensorNovo()
    {
        auto novo = Novo<clsSensor>();
        novo->DefineEquipto(equipto);
        novo->NroSensor = 4;
        return novo;
    }
    bool Inclui(const Ref<clsSensor> &novo, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaInclusao(novo);
    }
    bool Edita(const Ref<clsSensor> &clone, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaEdicao(clone);
    }
    void PoeEndereco()
    {
        sensor->CodLograd = 555;
        sensor->EndNro = 33;
        sensor->EndCompl = "fundos";
        sensor->EndCep = 90010000;
        sensor->EndDescr = "descrição antiga";
        sensor->SentidoVia = "N-S";
    }

    Ref<clsSensor> sensor;
};

TEST_F(frmEquipSensores_test, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmEquipSensores().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmEquipSensores().Desenho(), "tests/sensors/dados/frmEquipSensores.desenho.txt"));
}

TEST_F(frmEquipSensores_test, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    const auto carregada = SoCarregada<frmEquipSensores>();
    EXPECT_TRUE(RetratoIgual(carregada, "tests/sensors/dados"));
    EXPECT_EQ(Pessoa(carregada).Acha<ztList>("ztListaAfericao")->Colunas().size(), 1U);
}

TEST_F(frmEquipSensores_test, Esc_PressesCancelar)
{
    Inclui(SensorNovo(), [&](Pessoa &p) {
        FAZ(p, Esc());
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    });
}

TEST_F(frmEquipSensores_test, CarregaInclusao_NewSensor_EmptyFieldsAndOKFromTheStart)
{
    host->LimpaRegistro();
    const bool confirmou = Inclui(SensorNovo(), [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Novo Sensor");
        EXPECT_EQ(Caption(p, "lblCodEquip"), "EQ-10");
        EXPECT_EQ(Texto(p, "txtNroSensor"), "4");
        NAO_FAZ(p, Preenche("txtNroSensor", "9"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "");
        EXPECT_EQ(p.Acha<ztEndereco>("ztEndereco1")->Endereco()->CodLogradouro(), 0);
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_TRUE(Visivel(p, "cmdOK"));
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Cancelar");
        FAZ(p, Clica("cmdCancelar"));
    });
    EXPECT_FALSE(confirmou);
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Plataforma", "ObjInterface"}),
        {"Plataforma.Carrega(frmEquipSensores)", "Plataforma.Ponteiro := 0", "Plataforma.ProcessaMensagens()",
         "ObjInterface.MostraJanela(frmEquipSensores, modal=True)", "Plataforma.Descarrega(frmEquipSensores)"}));
}

TEST_F(frmEquipSensores_test, CarregaInclusao_Confirmed_RecordFilledAndMarked)
{
    auto novo = SensorNovo();
    novo->EndDescr = "não é da tela";
    const bool confirmou = Inclui(novo, [&](Pessoa &p) {
        FAZ(p, InformaEndereco("ztEndereco1", 777, 10, "sala 2", "90020030", "Av. Ipiranga, 10"));
        FAZ(p, Clica("cmdOK"));
    });
    EXPECT_TRUE(confirmou);
    EXPECT_EQ(novo->CodLograd, 777);
    EXPECT_EQ(novo->EndNro, 10);
    EXPECT_EQ(novo->EndCompl, "sala 2");
    EXPECT_EQ(novo->EndCep, 90020030);
    EXPECT_EQ(novo->LocalInfr, "Av. Ipiranga, 10");
    EXPECT_EQ(novo->EndDescr, "não é da tela");
    EXPECT_EQ(novo->SentidoVia, "");
    EXPECT_EQ(novo->NroSensor, 4);
    EXPECT_TRUE(novo->Alterado);
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(frmEquipSensores_test, cmdOK_WithoutAnyAddress_AcceptedWithStreetZero)
{
    auto novo = SensorNovo();
    EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", " ")); // a blank is text
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(novo->CodLograd, 0);
    EXPECT_EQ(novo->EndCep, 0);
    EXPECT_EQ(novo->LocalInfr, " ");
}

TEST_F(frmEquipSensores_test, cmdOK_PostalCodeWithHyphen_LeadingNumberOnly)
{
    auto novo = SensorNovo();
    EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, InformaEndereco("ztEndereco1", 777, 10, "", "90020-030", "Av. Ipiranga, 10"));
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(novo->EndCep, 90020);
}

TEST_F(frmEquipSensores_test, cmdOK_PostalCodeTooLarge_Fault6AndTheFormStaysOpen)
{
    auto novo = SensorNovo();
    EXPECT_FALSE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, InformaEndereco("ztEndereco1", 777, 10, "casa", "99999999999", "x"));
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Numero, 6);
        EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipSensores.cmdOK_Click");
        EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP");
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(novo->CodLograd, 777); // what comes before the postal code
    EXPECT_EQ(novo->EndNro, 10);
    EXPECT_EQ(novo->EndCompl, "casa");
    EXPECT_EQ(novo->EndCep, 0);
    EXPECT_EQ(novo->LocalInfr, ""); // and nothing behind it
    EXPECT_FALSE(novo->Alterado);
}

// All has been done but the closing itself, so whatever closes the window then, it was confirmed.
TEST_F(frmEquipSensores_test, cmdOKAndCmdCancelar_UnloadFails_ReportedWithTheRecordAlreadyWritten)
{
    auto clone = sensor->getClone();
    EXPECT_TRUE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "Rua Nova"));
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores.cmdOK_Click");
        EXPECT_EQ(clone->LocalInfr, "Rua Nova");
        EXPECT_TRUE(clone->Alterado);
        host->Responde(Descarte, true);
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores.cmdCancelar_Click");
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Fecha());
    }));
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(frmEquipSensores_test, cmdOK_NoNotificationAddress_NoticeFocusAndTheFormStaysOpen)
{
    auto novo = SensorNovo();
    EXPECT_FALSE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, Clica("cmdOK"));
        ASSERT_EQ(host->Avisos().size(), 1U);
        EXPECT_EQ(host->Avisos()[0].Texto, "Informe o endereço na notificação.");
        EXPECT_EQ(host->Avisos()[0].Controle, "txtLocalInfr");
        EXPECT_EQ(Aberta(Janela)->ControleAtivo()->Nome(), "txtLocalInfr");
        EXPECT_FALSE(novo->Alterado);
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipSensores_test, txtLocalInfr_LongText_CutAt80)
{
    auto novo = SensorNovo();
    const std::string oitenta(80, 'a');
    EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", oitenta + "bc"));
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(novo->LocalInfr, oitenta);
}

TEST_F(frmEquipSensores_test, CarregaEdicao_WithAddress_ScreenFilledAndOKDisabled)
{
    PoeEndereco();
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Detalhes do Sensor"); // the captions of the modes are crossed
        EXPECT_EQ(Caption(p, "lblCodEquip"), "EQ-10");
        EXPECT_EQ(Texto(p, "txtNroSensor"), "3");
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Três, 33");
        const auto endereco = p.Acha<ztEndereco>("ztEndereco1")->EnderecoProprio();
        EXPECT_EQ(endereco->CodMunic(), 8801);
        EXPECT_EQ(endereco->CodLogradouro(), 555);
        EXPECT_EQ(endereco->Numero(), 33);
        EXPECT_EQ(endereco->Complemento(), "fundos");
        EXPECT_EQ(endereco->Cep(), "90010000");
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        NAO_FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Cancelar");
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_FALSE(clone->Alterado);
}

TEST_F(frmEquipSensores_test, MontaTela_OfASensor_FillsTheControlsInThisOrder)
{
    PoeEndereco();
    for (const bool detalhes : {false, true}) {
        SCOPED_TRACE(detalhes);
        auto anotada = Novo<FormQueAnota<frmEquipSensores>>();
        std::string titulo;
        anotada->AoPrimeiro = [&] {
            titulo = anotada->Caption();
            // So that a change that counts as the person's is seen.
            Pessoa(anotada).Acha("cmdOK")->DefineEnabled(false);
        };
        Textos ordem;
        if (detalhes) {
            anotada->CarregaDetalhes(sensor);
            ordem = anotada->Alterados;
            ordem.resize(6); // without what making it read-only changed
            FAZ(Pessoa(anotada, host->Tela), Fecha());
        } else {
            NaJanela(Janela, [&](Pessoa &p) {
                ordem = anotada->Alterados;
                FAZ(p, Clica("cmdCancelar"));
            });
            anotada->CarregaEdicao(sensor);
        }
        EXPECT_EQ(titulo, detalhes ? "Editar Sensor" : "Detalhes do Sensor");
        Textos esperada{"lblCodEquip", "txtNroSensor", "ztEndereco1", "txtLocalInfr"};
        if (detalhes) {
            esperada.insert(esperada.end(), {"cmdOK", "cmdCancelar"});
        }
        EXPECT_EQ(ordem, esperada);
    }
}

TEST_F(frmEquipSensores_test, Change_InEachMode_EnablesOKUnlessItIsInDetails)
{
    const auto escreve = [](const Pessoa &p) {
        p.Acha("cmdOK")->DefineEnabled(false);
        p.Acha<ITextBox>("txtLocalInfr")->DefineText("Rua Nova");
        return p.Acha("cmdOK")->Enabled();
    };
    Inclui(SensorNovo(), [&](Pessoa &p) {
        EXPECT_TRUE(escreve(p));
        FAZ(p, Fecha());
    });
    Edita(sensor->getClone(), [&](Pessoa &p) {
        EXPECT_TRUE(escreve(p));
        FAZ(p, Fecha());
    });
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
    EXPECT_FALSE(escreve(Pessoa(Aberta(Janela), host->Tela)));
}

TEST_F(frmEquipSensores_test, sstDados_FirstVisit_TurnsTheFramesBeforeItFillsTheList)
{
    auto anotada = Novo<FormQueAnota<frmEquipSensores>>();
    NaJanela(Janela, [&](Pessoa &p) {
        anotada->Alterados.clear();
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(anotada->Alterados, (Textos{"sstDados", "fraDados(0)", "fraDados(1)", "ztListaAfericao"}));
        FAZ(p, Clica("cmdCancelar"));
    });
    anotada->CarregaEdicao(sensor);
}

TEST_F(frmEquipSensores_test, Window_Closed_LeavesAListThatNobodyAnswers)
{
    Ref<ztList> lista;
    Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        lista = p.Acha<ztList>("ztListaAfericao");
        FAZ(p, Clica("cmdCancelar"));
    });
    host->LimpaRegistro();
    lista->ItemMenuClicado().dispara("mnuZTLObjNovo");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(frmEquipSensores_test, CarregaEdicao_Confirmed_AlwaysMarksTheClone)
{
    PoeEndereco();
    auto clone = sensor->getClone();
    EXPECT_TRUE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Digita("txtLocalInfr", "x"));
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        FAZ(p, Preenche("txtLocalInfr", "Rua Três, 33")); // as it was
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_TRUE(clone->Alterado);
    EXPECT_EQ(clone->LocalInfr, "Rua Três, 33");
    EXPECT_EQ(clone->CodLograd, 555);
    EXPECT_EQ(clone->EndNro, 33);
    EXPECT_EQ(clone->EndCompl, "fundos");
    EXPECT_EQ(clone->EndCep, 90010000);
    EXPECT_EQ(clone->EndDescr, "descrição antiga");
    EXPECT_EQ(clone->SentidoVia, "N-S");
    EXPECT_FALSE(sensor->Alterado);
}

TEST_F(frmEquipSensores_test, CarregaEdicao_NoStreet_AddressControlStaysEmpty)
{
    sensor->EndNro = 99;
    sensor->EndCompl = "perdido";
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        const auto endereco = p.Acha<ztEndereco>("ztEndereco1")->EnderecoProprio();
        EXPECT_EQ(endereco->CodMunic(), 0);
        EXPECT_EQ(endereco->Numero(), 0);
        EXPECT_EQ(endereco->Complemento(), "");
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipSensores_test, cmdCancelar_AfterTypingOnly_NoQuestion)
{
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "outra coisa"));
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_EQ(clone->LocalInfr, "Rua Três, 33");
}

TEST_F(frmEquipSensores_test, cmdCancelar_AfterACalibrationChange_AsksAndNoKeepsTheFormOpen)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    auto clone = sensor->getClone();
    host->Responde("Confirma a exclusão desta aferição?", true);
    host->Responde(Descarte, false);
    host->Responde(Descarte, true);
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        FAZ(p, ClicaLinha("ztListaAfericao", 1));
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        EXPECT_TRUE(Habilitado(p, "cmdOK")); // a change of the calibrations is one of the sensor
        EXPECT_TRUE(clone->Alterado);
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Esc());
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    }));
    ASSERT_EQ(host->Tela->Perguntas().size(), 3U);
    for (const auto &pergunta : host->Tela->Perguntas()) {
        EXPECT_EQ(pergunta.Titulo, "Atenção");
        EXPECT_FALSE(pergunta.PadraoSim);
    }
    EXPECT_TRUE(sensor->ListaAfericoes()->Item(1)->Ativo); // the listed sensor knows nothing of it
    EXPECT_FALSE(sensor->Alterado);
}

TEST_F(frmEquipSensores_test, cmdCancelar_AfterACalibrationWasAdded_AsksAndTheListedSensorHasNone)
{
    const std::string certificado = "C:\\DOC\\c.pdf";
    host->Tela->Arquivos.Poe(certificado, {'%', 'P', 'D', 'F'});
    auto clone = sensor->getClone();
    host->Responde(Descarte, true);
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        NaJanela("frmEquipAfericoes", [&](Pessoa &q) {
            FAZ(q, Preenche("txtNroINMETRO", "777"));
            FAZ(q, Preenche("txtDtVerifINMETRO", "01/01/2026"));
            FAZ(q, Preenche("txtDtVencINMETRO", "31/12/2026"));
            host->EscolheArquivo(certificado);
            FAZ(q, Clica("cmdProcurar"));
            FAZ(q, Clica("cmdUpload"));
            FAZ(q, Clica("cmdOK"));
        });
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_EQ(clone->ListaAfericoes()->Count(), 1);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Tela->Perguntas().size(), 1U);
    EXPECT_EQ(sensor->ListaAfericoes()->Count(), 0);
    EXPECT_FALSE(sensor->Alterado);
}

// The shared instance keeps its fields from one use to the next.
TEST_F(frmEquipSensores_test, CarregaX_AfterAConfirmedUse_ItsAnswerIsForgotten)
{
    const auto confirma = [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "Rua Nova"));
        FAZ(p, Clica("cmdOK"));
    };
    const auto cancela = [&](Pessoa &p) { FAZ(p, Clica("cmdCancelar")); };
    EXPECT_TRUE(Edita(sensor->getClone(), confirma));
    EXPECT_FALSE(Edita(sensor->getClone(), cancela));
    EXPECT_TRUE(Inclui(SensorNovo(), confirma));
    EXPECT_FALSE(Inclui(SensorNovo(), cancela));
}

// The window's own button asks nothing.
TEST_F(frmEquipSensores_test, Unload_ByTheWindowsButton_NotConfirmedAndNoQuestion)
{
    auto clone = sensor->getClone();
    clone->Alterado = true;
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) { FAZ(p, Fecha()); }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

TEST_F(frmEquipSensores_test, CarregaDetalhes_ListedSensor_ReadOnlyAndNotModal)
{
    PoeEndereco();
    host->LimpaRegistro();
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor); // returns with the window open

    Ref<IForm> form = Aberta(Janela);
    Pessoa p(form, host->Tela);
    EXPECT_EQ(form->Caption(), "Editar Sensor"); // the captions of the modes are crossed
    EXPECT_EQ(Texto(p, "txtNroSensor"), "3");
    EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Três, 33");
    EXPECT_EQ(p.Acha<ztEndereco>("ztEndereco1")->Endereco()->CodLogradouro(), 555);
    EXPECT_FALSE(Visivel(p, "cmdOK"));
    NAO_FAZ(p, Clica("cmdOK"));
    EXPECT_EQ(Caption(p, "cmdCancelar"), "&Fechar");
    NAO_FAZ(p, Digita("txtLocalInfr", "x"));
    NAO_FAZ(p, InformaEndereco("ztEndereco1", 1, 1, "", "1", "x"));
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Carrega", "goMensagem.PreparaDetalhes", "ObjInterface"}),
                              {"Plataforma.Carrega(frmEquipSensores)", "goMensagem.PreparaDetalhes(frmEquipSensores)",
                               "ObjInterface.MostraJanela(frmEquipSensores, modal=False)"}));

    FAZ(p, Clica("cmdCancelar"));
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    EXPECT_FALSE(sensor->Alterado);
}

TEST_F(frmEquipSensores_test, CarregaDetalhes_HostPreparesTheForm_ButtonsAlreadyThoseOfDetails)
{
    EXPECT_EQ(RodapesAoChamar(Janela, [&] { Novo<frmEquipSensores>()->CarregaDetalhes(sensor); }),
              (std::set<std::string>{"&Fechar"}));
}

TEST_F(frmEquipSensores_test, CarregaDetalhes_Calibrations_ReadOnlyToo)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
    Pessoa p(Aberta(Janela), host->Tela);
    FAZ(p, Abre("sstDados", 1));
    FAZ(p, ClicaLinha("ztListaAfericao", 1));
    EXPECT_EQ(MenuHabilitado(p.Acha<IztList>("ztListaAfericao")), Textos{"Detalhes"});
    FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjDetalhes"));
    EXPECT_EQ(Aberta("frmEquipAfericoes")->Caption(), "Detalhes da Aferição");
}

// A sensor that was changed before asks even where nothing can be changed.
TEST_F(frmEquipSensores_test, CarregaDetalhes_SensorWithChanges_ClosingAsks)
{
    sensor->Alterado = true;
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
    Pessoa p(Aberta(Janela), host->Tela);
    host->Responde(Descarte, true);
    FAZ(p, Clica("cmdCancelar"));
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    EXPECT_TRUE(sensor->Alterado);
}

TEST_F(frmEquipSensores_test, sstDados_Pages_FrameOfTheCurrentOneEnabled)
{
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        EXPECT_TRUE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_FALSE(p.Acha("fraDados", 1)->Enabled());
        FAZ(p, Abre("sstDados", 1));
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_TRUE(p.Acha("fraDados", 1)->Enabled());
        FAZ(p, Abre("sstDados", 0));
        EXPECT_TRUE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_FALSE(p.Acha("fraDados", 1)->Enabled());
        FAZ(p, Clica("cmdCancelar"));
    }));
}

// The rows came before the fault; the list is the controller's from then on.
TEST_F(frmEquipSensores_test, sstDados_AfterALoadThatFailed_TheTabIsNotLoadedAgainAndWorks)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    const auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        auto lista = p.Acha<ztList>("ztListaAfericao");
        host->FalhaEm("Plataforma.Ponteiro", 2);
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(lista->NroItens(), 1);
        FAZ(p, Abre("sstDados", 0));
        host->LimpaRegistro();
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(host->Registro(), Textos{});
        EXPECT_EQ(lista->NroItens(), 1);
        EXPECT_EQ(lista->Colunas().size(), 6U);
        EXPECT_FALSE(p.Acha("cmdOK")->Enabled());
        FAZ(p, ClicaLinha("ztListaAfericao", 1));
        host->Responde("Confirma a exclusão desta aferição?", false);
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        EXPECT_EQ(lista->NroItens(), 1);
        host->Responde("Confirma a exclusão desta aferição?", true);
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        EXPECT_EQ(lista->NroItens(), 0);
        EXPECT_FALSE(clone->ListaAfericoes()->Item(1)->Ativo);
        EXPECT_TRUE(p.Acha("cmdOK")->Enabled());
        host->Responde(Descarte, true);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 1U);
}

// Without its rows the list still opens the form, and is filled by what is confirmed there.
TEST_F(frmEquipSensores_test, sstDados_AfterALoadThatBroughtNoRows_ANewCalibrationBringsThem)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        host->FalhaEm("Plataforma.Ponteiro");
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(p.Acha<IztList>("ztListaAfericao")->NroItens(), 0);
        host->Tela->Arquivos.Poe("C:\\c.pdf", {'%', 'P', 'D', 'F'});
        host->EscolheArquivo("C:\\c.pdf");
        NaJanela("frmEquipAfericoes", [&](Pessoa &nova) {
            FAZ(nova, Preenche("txtNroINMETRO", "42"));
            FAZ(nova, Preenche("txtDtVerifINMETRO", "01/01/2027"));
            FAZ(nova, Preenche("txtDtVencINMETRO", "31/12/2027"));
            FAZ(nova, Clica("cmdProcurar"));
            FAZ(nova, Clica("cmdUpload"));
            FAZ(nova, Clica("cmdOK"));
        });
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        EXPECT_EQ(p.Acha<IztList>("ztListaAfericao")->NroItens(), 2);
        host->Responde(Descarte, true);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 1U);
}

TEST_F(frmEquipSensores_test, sstDados_FirstVisit_LoadsTheCalibrationsOnce)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        auto lista = p.Acha<IztList>("ztListaAfericao");
        EXPECT_EQ(lista->NroItens(), 0);
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(lista->NroItens(), 1);
        host->LimpaRegistro();
        clone->ListaAfericoes()->Item(1)->Ativo = false;
        FAZ(p, Abre("sstDados", 0));
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(lista->NroItens(), 1); // not loaded again
        EXPECT_EQ(host->Registro(), Textos{});
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipSensores_test, ztEndereco1_EntradaOK_OverwritesTheTextEachTime)
{
    auto clone = sensor->getClone();
    EXPECT_TRUE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, InformaEndereco("ztEndereco1", 1, 10, "", "90000000", "Rua Um, 10"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Um, 10");
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        FAZ(p, Preenche("txtLocalInfr", "texto próprio"));
        FAZ(p, InformaEndereco("ztEndereco1", 1, 10, "", "90000000", "Rua Um, 10"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Um, 10");
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_EQ(clone->LocalInfr, "Rua Um, 10");
}

TEST_F(frmEquipSensores_test, ztEndereco1_EntradaOKWithoutDescription_TextStaysButOKIsEnabled)
{
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, LimpaEndereco("ztEndereco1"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Três, 33");
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipSensores_test, Inclusion_CalibrationsOfTheUnlistedSensor_KeptInIt)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    auto novo = SensorNovo();
    novo->ListaAfericoes()->AddAll(sensor->ListaAfericoes());
    host->Responde("Confirma a exclusão desta aferição?", true);
    EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "x"));
        FAZ(p, Abre("sstDados", 1));
        FAZ(p, ClicaLinha("ztListaAfericao", 1));
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_FALSE(novo->ListaAfericoes()->Item(1)->Ativo);
    EXPECT_TRUE(novo->Alterado);
}

TEST_F(frmEquipSensores_test, SharedInstance_AfterEachMode_StartsAgainFromItsDesign)
{
    Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        FAZ(p, Clica("cmdCancelar"));
    });
    Inclui(SensorNovo(), [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Novo Sensor");
        EXPECT_EQ(p.Acha<SSTab>("sstDados")->Tab(), 0);
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "");
        EXPECT_EQ(p.Acha<ztList>("ztListaAfericao")->Colunas().size(), 1U);
        FAZ(p, Clica("cmdCancelar"));
    });
}

TEST_F(frmEquipSensores_test, Unload_Each_ReleasesRecordAndController)
{
    auto clone = sensor->getClone();
    RefFraca<clsSensor> fraca = clone;
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        FAZ(p, Clica("cmdCancelar"));
    });
    Compartilhado()->CarregaEdicao(std::exchange(clone, nullptr));
    EXPECT_TRUE(fraca.Nada());

    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
    fraca = sensor;
    sensor = nullptr;
    equipto->ListaSensores()->Clear();
    EXPECT_FALSE(fraca.Nada()); // on the screen
    Pessoa p(Aberta(Janela), host->Tela);
    FAZ(p, Clica("cmdCancelar"));
    EXPECT_TRUE(fraca.Nada());
}

TEST_F(frmEquipSensores_test, CarregaX_EquipmentEnded_ErrorBoxPerModeAndNoWindowStays)
{
    auto novo = SensorNovo();
    auto clone = sensor->getClone();
    equipto = nullptr;
    EXPECT_FALSE(Compartilhado()->CarregaInclusao(novo));
    EXPECT_FALSE(Compartilhado()->CarregaEdicao(clone));
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);

    ASSERT_EQ(host->Erros().size(), 3U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipSensores.CarregaInclusao");
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP");
    EXPECT_EQ(host->Erros()[1].Contexto, "frmEquipSensores.CarregaEdicao");
    EXPECT_EQ(host->Erros()[1].Fonte, "ZTAVOREQUIP < frmEquipSensores.MontaTela");
    EXPECT_EQ(host->Erros()[2].Contexto, "frmEquipSensores.CarregaDetalhes");
    EXPECT_EQ(host->Erros()[2].Fonte, "ZTAVOREQUIP < frmEquipSensores.MontaTela");
    for (const auto &erro : host->Erros()) {
        EXPECT_EQ(erro.Numero, 91);
        EXPECT_EQ(erro.Titulo, "Sistema de Autuações");
    }
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela"), 0);
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(frmEquipSensores_test, Events_HostFails_ReportedWithTheirContext)
{
    sensor->Alterado = true;
    EXPECT_FALSE(Inclui(SensorNovo(), [&](Pessoa &p) {
        host->FalhaEm("goMensagem.ExibeMensagem");
        FAZ(p, Clica("cmdOK"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores.cmdOK_Click");
        EXPECT_EQ(host->Erros().back().Fonte, "goMensagem.ExibeMensagem < frmEquipSensores.validouOk");
        host->FalhaEm("Plataforma.Ponteiro");
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores.sstDados_Click");
        EXPECT_EQ(host->Erros().back().Fonte,
                  "Plataforma.Ponteiro < COAfericoes.CarregaAfericoes < COAfericoes.Carrega");
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled()); // the pages were changed before
        EXPECT_TRUE(p.Acha("fraDados", 1)->Enabled());
        FAZ(p, Clica("cmdCancelar"));
    }));
    auto clone = sensor->getClone();
    clone->Alterado = true;
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        host->FalhaEm("Plataforma.PerguntaSimNao");
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores.cmdCancelar_Click");
        EXPECT_EQ(host->Erros().back().Fonte, "Plataforma.PerguntaSimNao");
        EXPECT_TRUE(Aberta(Janela)->Visible()); // the form stays open
        host->Responde(Descarte, true);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 3U);
}

// The events that only pass a change on; a handler of the screen's that fails stands for any fault below them.
TEST_F(frmEquipSensores_test, ChangeEvents_FaultBelow_ReportedWithThePathThroughChange)
{
    PoeAfericao(sensor, 0, "01/01/2026", "31/12/2026");
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        FAZ(p, ClicaLinha("ztListaAfericao", 1));
        auto botao = ComoBase(p.Acha("cmdOK"));
        ASSERT_NE(botao, nullptr);
        const auto quebra = botao->Mudou().liga([] { throw Falha(1000, "tela", "quebrou"); });
        const auto espera = [&](const std::string &contexto) {
            EXPECT_EQ(host->Erros().back().Contexto, "frmEquipSensores." + contexto);
            EXPECT_EQ(host->Erros().back().Fonte, "tela < frmEquipSensores.Change");
            EXPECT_EQ(host->Erros().back().Numero, 1000);
            p.Acha<ICommandButton>("cmdOK")->DefineEnabled(true);
        };
        const auto desabilita = [&] { IgnoraErro([&] { p.Acha("cmdOK")->DefineEnabled(false); }); };

        host->Responde("Confirma a exclusão desta aferição?", true);
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        espera("m_COAfericoes_Alterado");
        FAZ(p, Abre("sstDados", 0));
        desabilita();
        FAZ(p, Digita("txtLocalInfr", "x"));
        espera("txtLocalInfr_Change");
        desabilita();
        FAZ(p, LimpaEndereco("ztEndereco1"));
        espera("ztEndereco1_EntradaOK");
        host->Responde(Descarte, true);
        FAZ(p, Clica("cmdCancelar"));
    }));
    EXPECT_EQ(host->Erros().size(), 3U);
}

TEST_F(frmEquipSensores_test, cmdAjuda_Pressed_NothingHappens)
{
    EXPECT_FALSE(Inclui(SensorNovo(), [&](Pessoa &p) {
        host->LimpaRegistro();
        FAZ(p, Clica("cmdAjuda"));
        EXPECT_EQ(host->Registro(), Textos{});
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Clica("cmdCancelar"));
    }));
}

TEST_F(frmEquipSensores_test, CarregaDetalhes_WhenTheHostFailsBehindAFormOnTheScreen_LeavesTheFormWhole)
{
    auto form = Novo<frmEquipSensores>();
    geral->ObjInterface = Novo<InterfaceQueFalha>();
    form->CarregaDetalhes(sensor->getClone());
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipSensores.CarregaDetalhes");
    EXPECT_EQ(host->Erros()[0].Fonte, "ObjInterface < Geral.FormShow");
    EXPECT_TRUE(form->Visible());
    Pessoa pessoa(form, host->Tela);
    FAZ(pessoa, Abre("sstDados", 1)); // its page still has the sensor to load from
    FAZ(pessoa, Clica("cmdCancelar"));
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(host->Erros().size(), 1U);
}

} // namespace
