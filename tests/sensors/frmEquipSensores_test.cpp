#include "sensors/frmEquipSensores.h"

#include "controls/SSTab.h"
#include "controls/ztEndereco.h"
#include "tests/sensors/CenarioSensores.h"
#include "tests/sensors/RegistrosCompletos.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/InterfaceQueFalha.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

namespace {

const std::string Descarte = "Foram feitas alterações neste sensor. Deseja descartá-las?";

class frmEquipSensores_test : public ComForm<frmEquipSensores, clsSensor> {
  protected:
    Ref<clsSensor> SensorNovo()
    {
        auto novo = Novo<clsSensor>();
        novo->DefineEquipto(equipto);
        novo->NroSensor = 4;
        return novo;
    }
    // A calibration in the window that the list of them opens.
    void IncluiAfericao(Pessoa &p)
    {
        NaJanela("frmEquipAfericoes", [this](Pessoa &nova) {
            PreencheAfericao(nova, "777", "01/01/2027", "31/12/2027");
            EnviaDocumento(nova);
            FAZ(nova, Clica("cmdOK"));
        });
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
    }
    void ExcluiAfericao(Pessoa &p, bool confirma = true)
    {
        host->Responde("Confirma a exclusão desta aferição?", confirma);
        FAZ(p, ClicaLinha("ztListaAfericao", 1));
        FAZ(p, EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
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

TEST_F(frmEquipSensores_test, EscAndCmdAjuda_PressCancelarAndNothing)
{
    Inclui(SensorNovo(), [&](Pessoa &p) {
        host->LimpaRegistro();
        FAZ(p, Clica("cmdAjuda"));
        EXPECT_EQ(host->Registro(), Textos{});
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Esc());
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    });
}

TEST_F(frmEquipSensores_test, CarregaInclusao_NewSensor_EmptyFieldsAndOKFromTheStart)
{
    host->LimpaRegistro();
    const bool confirmou = Inclui(SensorNovo(), [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Novo Sensor");
        NAO_FAZ(p, Preenche("txtNroSensor", "9"));
        EXPECT_EQ(Mostrado(p, {"lblCodEquip", "txtNroSensor", "txtLocalInfr", "cmdCancelar"}),
                  (Textos{"EQ-10", "4", "", "&Cancelar"}));
        EXPECT_EQ(p.Acha<ztEndereco>("ztEndereco1")->Endereco()->CodLogradouro(), 0);
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_TRUE(Visivel(p, "cmdOK"));
    });
    EXPECT_FALSE(confirmou);
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Plataforma", "ObjInterface"}),
        {"Plataforma.Carrega(frmEquipSensores)", "Plataforma.Ponteiro := 0", "Plataforma.ProcessaMensagens()",
         "ObjInterface.MostraJanela(frmEquipSensores, modal=True)", "Plataforma.Descarrega(frmEquipSensores)"}));
}

TEST_F(frmEquipSensores_test, cmdOK_WhatWasFilledIn_IsInTheRecordWhichIsMarked)
{
    const std::string oitenta(80, 'a');
    struct {
        std::int32_t Lograd;
        std::string Cep;
        std::string Local;
        std::string Campos;
    } const casos[] = {
        {777, "90020030", "Av. Ipiranga, 10", "Av. Ipiranga, 10, 777, 90020030, 10, sala 2"},
        {777, "90020-030", " ", " , 777, 90020, 10, sala 2"}, // the leading number only; a blank is text
        {0, "", oitenta + "bc", oitenta + ", 0, 0, 0, "},     // without any address
    };
    for (const auto &caso : casos) {
        auto novo = SensorNovo();
        novo->EndDescr = "não é da tela";
        EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
            if (caso.Lograd > 0) {
                FAZ(p, InformaEndereco("ztEndereco1", caso.Lograd, 10, "sala 2", caso.Cep, "descrição"));
                EXPECT_EQ(Texto(p, "txtLocalInfr"), "descrição");
            }
            FAZ(p, Preenche("txtLocalInfr", caso.Local));
            FAZ(p, Clica("cmdOK"));
        }));
        EXPECT_EQ(Retrato(*novo), "{0, 4, " + caso.Campos + ", não é da tela, } alterado");
        EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
    }
}

TEST_F(frmEquipSensores_test, cmdOK_PostalCodeTooLarge_Fault6AndTheFormStaysOpen)
{
    auto novo = SensorNovo();
    EXPECT_FALSE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, InformaEndereco("ztEndereco1", 777, 10, "casa", "99999999999", "x"));
        FAZ(p, Clica("cmdOK"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipSensores.cmdOK_Click", 6, "ZTAVOREQUIP"));
        EXPECT_TRUE(Aberta(Janela)->Visible());
    }));
    EXPECT_EQ(Retrato(*novo), "{0, 4, , 777, 0, 10, casa, , }"); // what comes before the postal code, and no more
}

// All has been done but the closing itself, so whatever closes the window then, it was confirmed.
TEST_F(frmEquipSensores_test, cmdOKAndCmdCancelar_UnloadFails_ReportedWithTheRecordAlreadyWritten)
{
    auto clone = sensor->getClone();
    EXPECT_TRUE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "Rua Nova"));
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdOK"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipSensores.cmdOK_Click", 51, "Plataforma.Descarrega"));
        EXPECT_EQ(clone->LocalInfr, "Rua Nova");
        EXPECT_TRUE(clone->Alterado);
        host->Responde(Descarte, true);
        host->FalhaEm("Plataforma.Descarrega");
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_TRUE(MostrouErro(2, "frmEquipSensores.cmdCancelar_Click", 51, "Plataforma.Descarrega"));
        EXPECT_TRUE(Aberta(Janela)->Visible());
        FAZ(p, Fecha());
    }));
}

// What stands in the record when OK could not go on.
TEST_F(frmEquipSensores_test, cmdOK_OutOfMemoryAnywhere_FieldsWrittenInTheirOrder)
{
    const std::string local = "Rua de nome comprido, 1234, sentido centro";
    const std::string fundos = "fundos, atrás da praça do pedágio";
    std::set<std::string> vistos;
    bool recusou = true;
    for (std::int64_t n = 2; recusou; ++n) { // behind what raising the event asks for
        auto novo = SensorNovo();
        Inclui(novo, [&](Pessoa &p) {
            FAZ(p, InformaEndereco("ztEndereco1", 777, 10, fundos, "90020030", local));
            const auto botao = p.Acha<ICommandButton>("cmdOK");
            {
                MemoriaEscassa escassa(n);
                botao->Click().dispara();
                recusou = escassa.Recusou();
            }
            if (recusou) {
                FAZ(p, Fecha());
            }
        });
        vistos.insert(Retrato(*novo));
    }
    EXPECT_EQ(vistos, (std::set<std::string>{"{0, 4, , 0, 0, 0, , , }", "{0, 4, , 777, 0, 10, , , }",
                                             "{0, 4, , 777, 0, 10, " + fundos + ", , }",
                                             "{0, 4, , 777, 90020030, 10, " + fundos + ", , }",
                                             "{0, 4, " + local + ", 777, 90020030, 10, " + fundos + ", , } alterado"}));
    EXPECT_FALSE(host->Erros().empty());
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
    }));
}

TEST_F(frmEquipSensores_test, CarregaEdicao_WithAddress_ScreenFilledAndOKDisabled)
{
    PoeEndereco();
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Detalhes do Sensor"); // the captions of the modes are crossed
        EXPECT_EQ(Mostrado(p, {"lblCodEquip", "txtNroSensor", "txtLocalInfr", "cmdCancelar"}),
                  (Textos{"EQ-10", "3", "Rua Três, 33", "&Cancelar"}));
        const auto endereco = p.Acha<ztEndereco>("ztEndereco1")->EnderecoProprio();
        EXPECT_EQ(endereco->CodMunic(), 8801);
        EXPECT_EQ(endereco->CodLogradouro(), 555);
        EXPECT_EQ(endereco->Numero(), 33);
        EXPECT_EQ(endereco->Complemento(), "fundos");
        EXPECT_EQ(endereco->Cep(), "90010000");
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        NAO_FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_FALSE(clone->Alterado);
    sensor->CodLograd = 1; // the least
    Edita(sensor,
          [](Pessoa &p) { EXPECT_EQ(p.Acha<ztEndereco>("ztEndereco1")->EnderecoProprio()->CodLogradouro(), 1); });
}

TEST_F(frmEquipSensores_test, Loading_InEachMode_FillsTheControlsInThisOrder)
{
    PoeEndereco();
    struct {
        std::string Modo; // as the caption tells it
        Textos Ordem;
    } const casos[] = {
        {"Novo Sensor", {"txtNroSensor", "lblCodEquip"}},
        {"Detalhes do Sensor", {"lblCodEquip", "txtNroSensor", "ztEndereco1", "txtLocalInfr"}},
        {"Editar Sensor", {"lblCodEquip", "txtNroSensor", "ztEndereco1", "txtLocalInfr", "cmdOK", "cmdCancelar"}}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Modo);
        auto anotada = Novo<FormQueAnota<frmEquipSensores>>();
        std::string titulo;
        anotada->AoPrimeiro = [&] {
            titulo = anotada->Caption();
            // So that a change that counts as the person's is seen.
            Pessoa(anotada).Acha("cmdOK")->DefineEnabled(false);
        };
        Textos ordem;
        if (caso.Modo == "Editar Sensor") {
            anotada->CarregaDetalhes(sensor);
            ordem = anotada->Alterados;
            ordem.resize(6); // without what making it read-only changed
            FAZ(Pessoa(anotada, host->Tela), Fecha());
        } else {
            NaJanela(Janela, [&](Pessoa &) { ordem = anotada->Alterados; });
            caso.Modo == "Novo Sensor" ? anotada->CarregaInclusao(sensor) : anotada->CarregaEdicao(sensor);
        }
        EXPECT_EQ(titulo, caso.Modo);
        EXPECT_EQ(ordem, caso.Ordem);
    }
}

// What a control writes while the form still loads is no change of the person's, up to the last step.
TEST_F(frmEquipSensores_test, Change_WhileTheFormLoads_DoesNotEnableOK)
{
    for (const bool inclusao : {true, false}) {
        SCOPED_TRACE(inclusao);
        auto anotada = Novo<FormQueAnota<frmEquipSensores>>();
        std::vector<Conexao> conexoes;
        int escritos = 0;
        anotada->AoPrimeiro = [&] {
            const Pessoa p(anotada);
            p.Acha("cmdOK")->DefineEnabled(!inclusao);
            for (const std::string nome : {"lblCodEquip", "cmdOK"}) {
                conexoes.push_back(ComoBase(p.Acha(nome))->Mudou().liga([&, p] {
                    p.Acha<ITextBox>("txtLocalInfr")->DefineText(std::to_string(++escritos));
                }));
            }
        };
        NaJanela(Janela, [&](Pessoa &p) {
            EXPECT_FALSE(Habilitado(p, "cmdOK"));
            EXPECT_EQ(escritos, 1);
        });
        inclusao ? anotada->CarregaInclusao(sensor) : anotada->CarregaEdicao(sensor);
        conexoes.clear();
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
    });
    anotada->CarregaEdicao(sensor);
}

TEST_F(frmEquipSensores_test, Window_Closed_LeavesAListThatNobodyAnswers)
{
    Ref<ztList> lista;
    Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        lista = p.Acha<ztList>("ztListaAfericao");
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
    EXPECT_EQ(Retrato(*clone), "S1{103, 3, Rua Três, 33, 555, 90010000, 33, fundos, descrição antiga, N-S} alterado");
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
    }));
}

TEST_F(frmEquipSensores_test, cmdCancelar_AfterTypingOnly_NoQuestion)
{
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) { FAZ(p, Preenche("txtLocalInfr", "outra coisa")); }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_EQ(clone->LocalInfr, "Rua Três, 33");
}

TEST_F(frmEquipSensores_test, cmdCancelar_AfterACalibrationChange_AsksAndNoKeepsTheFormOpen)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    auto clone = sensor->getClone();
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        ExcluiAfericao(p);
        EXPECT_TRUE(Habilitado(p, "cmdOK")); // a change of the calibrations is one of the sensor
        EXPECT_TRUE(clone->Alterado);
        host->Responde(Descarte, false);
        host->Responde(Descarte, true);
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
    auto clone = sensor->getClone();
    host->Responde(Descarte, true);
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        EXPECT_FALSE(Habilitado(p, "cmdOK"));
        IncluiAfericao(p);
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_EQ(clone->ListaAfericoes()->Count(), 1);
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
    EXPECT_EQ(Mostrado(p, {"txtNroSensor", "txtLocalInfr", "cmdCancelar"}), (Textos{"3", "Rua Três, 33", "&Fechar"}));
    EXPECT_EQ(p.Acha<ztEndereco>("ztEndereco1")->Endereco()->CodLogradouro(), 555);
    EXPECT_FALSE(Visivel(p, "cmdOK"));
    NAO_FAZ(p, Clica("cmdOK"));
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
        const auto confere = [&](std::int16_t pagina) {
            EXPECT_EQ(p.Acha("fraDados", 0)->Enabled(), pagina == 0);
            EXPECT_EQ(p.Acha("fraDados", 1)->Enabled(), pagina == 1);
        };
        confere(0);
        for (const std::int16_t pagina : {std::int16_t{1}, std::int16_t{0}}) {
            FAZ(p, Abre("sstDados", pagina));
            confere(pagina);
        }
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
        ExcluiAfericao(p, false);
        EXPECT_EQ(lista->NroItens(), 1);
        ExcluiAfericao(p);
        EXPECT_EQ(lista->NroItens(), 0);
        EXPECT_FALSE(clone->ListaAfericoes()->Item(1)->Ativo);
        EXPECT_TRUE(p.Acha("cmdOK")->Enabled());
        host->Responde(Descarte, true);
    }));
    EXPECT_EQ(host->Erros().size(), 1U);
}

// Without its rows the list still opens the form, and is filled by what is confirmed there.
TEST_F(frmEquipSensores_test, sstDados_AfterALoadThatBroughtNoRows_ANewCalibrationBringsThem)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    host->Responde(Descarte, true);
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        host->FalhaEm("Plataforma.Ponteiro");
        FAZ(p, Abre("sstDados", 1));
        EXPECT_EQ(p.Acha<IztList>("ztListaAfericao")->NroItens(), 0);
        IncluiAfericao(p);
        EXPECT_EQ(p.Acha<IztList>("ztListaAfericao")->NroItens(), 2);
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
    }));
}

TEST_F(frmEquipSensores_test, ztEndereco1_EntradaOK_OverwritesTheTextEachTime)
{
    auto clone = sensor->getClone();
    auto anotada = Novo<FormQueAnota<frmEquipSensores>>();
    NaJanela(Janela, [&](Pessoa &p) {
        anotada->Alterados.clear();
        FAZ(p, InformaEndereco("ztEndereco1", 1, 10, "", "90000000", "Rua Um, 10"));
        EXPECT_EQ(anotada->Alterados, (Textos{"ztEndereco1", "txtLocalInfr", "cmdOK"}));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Um, 10");
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        FAZ(p, Preenche("txtLocalInfr", "texto próprio"));
        FAZ(p, InformaEndereco("ztEndereco1", 1, 10, "", "90000000", "Rua Um, 10"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Um, 10");
        FAZ(p, Clica("cmdOK"));
    });
    EXPECT_TRUE(anotada->CarregaEdicao(clone));
    EXPECT_EQ(clone->LocalInfr, "Rua Um, 10");
}

TEST_F(frmEquipSensores_test, ztEndereco1_EntradaOKWithoutDescription_TextStaysButOKIsEnabled)
{
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, LimpaEndereco("ztEndereco1"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "Rua Três, 33");
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
    }));
}

TEST_F(frmEquipSensores_test, Inclusion_CalibrationsOfTheUnlistedSensor_KeptInIt)
{
    PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    auto novo = SensorNovo();
    novo->ListaAfericoes()->AddAll(sensor->ListaAfericoes());
    EXPECT_TRUE(Inclui(novo, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "x"));
        FAZ(p, Abre("sstDados", 1));
        ExcluiAfericao(p);
        FAZ(p, Clica("cmdOK"));
    }));
    EXPECT_FALSE(novo->ListaAfericoes()->Item(1)->Ativo);
    EXPECT_TRUE(novo->Alterado);
}

TEST_F(frmEquipSensores_test, SharedInstance_AfterEachMode_StartsAgainFromItsDesign)
{
    Edita(sensor->getClone(), [&](Pessoa &p) { FAZ(p, Abre("sstDados", 1)); });
    Inclui(SensorNovo(), [&](Pessoa &p) {
        EXPECT_EQ(Aberta(Janela)->Caption(), "Novo Sensor");
        EXPECT_EQ(p.Acha<SSTab>("sstDados")->Tab(), 0);
        EXPECT_TRUE(Habilitado(p, "cmdOK"));
        EXPECT_EQ(Texto(p, "txtLocalInfr"), "");
        EXPECT_EQ(p.Acha<ztList>("ztListaAfericao")->Colunas().size(), 1U);
    });
}

TEST_F(frmEquipSensores_test, Unload_Each_ReleasesRecordAndController)
{
    auto clone = sensor->getClone();
    RefFraca<clsSensor> fraca = clone;
    NaJanela(Janela, [&](Pessoa &p) { FAZ(p, Abre("sstDados", 1)); });
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
    host->LimpaRegistro();
    EXPECT_FALSE(Compartilhado()->CarregaInclusao(novo));
    EXPECT_TRUE(MostrouErro(1, "frmEquipSensores.CarregaInclusao", 91, "ZTAVOREQUIP"));
    EXPECT_FALSE(Compartilhado()->CarregaEdicao(clone));
    EXPECT_TRUE(MostrouErro(2, "frmEquipSensores.CarregaEdicao", 91, "ZTAVOREQUIP < frmEquipSensores.MontaTela"));
    Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
    EXPECT_TRUE(MostrouErro(3, "frmEquipSensores.CarregaDetalhes", 91, "ZTAVOREQUIP < frmEquipSensores.MontaTela"));
    EXPECT_EQ(host->Erros().back().Titulo, "Sistema de Autuações");
    const std::string caixa = "goMensagem.ExibeErro(*";
    const std::string fim = "Plataforma.Descarrega(frmEquipSensores)"; // only behind the box
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goMensagem.", "Plataforma.Descarrega", "ObjInterface.MostraJanela"}),
                              {caixa, fim, caixa, fim, caixa, fim}));
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(frmEquipSensores_test, CarregaX_LoadingItselfFails_LetsGoOfTheRecord)
{
    ConfereSemCarga([&] { return sensor->getClone(); });
}

TEST_F(frmEquipSensores_test, Events_HostFails_ReportedWithTheirContext)
{
    EXPECT_FALSE(Inclui(SensorNovo(), [&](Pessoa &p) {
        host->FalhaEm("goMensagem.ExibeMensagem");
        FAZ(p, Clica("cmdOK"));
        EXPECT_TRUE(MostrouErro(1, "frmEquipSensores.cmdOK_Click", 51,
                                "goMensagem.ExibeMensagem < frmEquipSensores.validouOk"));
        host->FalhaEm("Plataforma.Ponteiro");
        FAZ(p, Abre("sstDados", 1));
        EXPECT_TRUE(MostrouErro(2, "frmEquipSensores.sstDados_Click", 51,
                                "Plataforma.Ponteiro < COAfericoes.CarregaAfericoes < COAfericoes.Carrega"));
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled()); // the pages were changed before
        EXPECT_TRUE(p.Acha("fraDados", 1)->Enabled());
    }));
    auto clone = sensor->getClone();
    clone->Alterado = true;
    EXPECT_FALSE(Edita(clone, [&](Pessoa &p) {
        host->FalhaEm("Plataforma.PerguntaSimNao");
        FAZ(p, Clica("cmdCancelar"));
        EXPECT_TRUE(MostrouErro(3, "frmEquipSensores.cmdCancelar_Click", 51, "Plataforma.PerguntaSimNao"));
        EXPECT_TRUE(Aberta(Janela)->Visible()); // the form stays open
        host->Responde(Descarte, true);
    }));
}

// The events that only pass a change on; a handler of the screen's that fails stands for any fault below them.
TEST_F(frmEquipSensores_test, ChangeEvents_FaultBelow_ReportedWithThePathThroughChange)
{
    PoeAfericao(sensor, 0, "01/01/2026", "31/12/2026");
    EXPECT_FALSE(Edita(sensor->getClone(), [&](Pessoa &p) {
        FAZ(p, Abre("sstDados", 1));
        auto botao = ComoBase(p.Acha("cmdOK"));
        ASSERT_NE(botao, nullptr);
        const auto quebra = botao->Mudou().liga([] { throw Falha(1000, "tela", "quebrou"); });
        auto espera = [&, erros = std::size_t{0}](const std::string &contexto) mutable {
            EXPECT_TRUE(MostrouErro(++erros, "frmEquipSensores." + contexto, 1000, "tela < frmEquipSensores.Change"));
            p.Acha<ICommandButton>("cmdOK")->DefineEnabled(true);
        };
        const auto desabilita = [&] { IgnoraErro([&] { p.Acha("cmdOK")->DefineEnabled(false); }); };

        ExcluiAfericao(p);
        espera("m_COAfericoes_Alterado");
        FAZ(p, Abre("sstDados", 0));
        desabilita();
        FAZ(p, Digita("txtLocalInfr", "x"));
        espera("txtLocalInfr_Change");
        desabilita();
        FAZ(p, LimpaEndereco("ztEndereco1"));
        espera("ztEndereco1_EntradaOK");
        host->Responde(Descarte, true);
    }));
}

TEST_F(frmEquipSensores_test, CarregaDetalhes_WhenTheHostFailsBehindAFormOnTheScreen_LeavesTheFormWhole)
{
    auto form = Novo<frmEquipSensores>();
    geral->ObjInterface = ParaOModulo(Novo<InterfaceQueFalha>());
    form->CarregaDetalhes(sensor->getClone());
    EXPECT_TRUE(MostrouErro(1, "frmEquipSensores.CarregaDetalhes", 51, "ObjInterface < Geral.FormShow"));
    EXPECT_TRUE(form->Visible());
    Pessoa pessoa(form, host->Tela);
    FAZ(pessoa, Abre("sstDados", 1)); // its page still has the sensor to load from
    FAZ(pessoa, Clica("cmdCancelar"));
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(host->Erros().size(), 1U);
}

} // namespace
