#include "sensors/COAfericoes.h"

#include "sensors/frmEquipAfericoes.h"
#include "tests/sensors/CenarioSensores.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

namespace {

const std::string Janela = "frmEquipAfericoes";
const std::string Pergunta = "Confirma a exclusão desta aferição?";
const Textos SoNovo{"Novo"};
const Textos Todos{"Novo", "Editar", "Detalhes", "Excluir"};

class COAfericoes_test : public CenarioSensores {
  protected:
    void SetUp() override
    {
        CenarioSensores::SetUp();
        dona = Novo<frmComLista>();
        dona->Abre();
        lista = dona->ztLista;
        sensor = PoeSensor(101, 1, "Rua 1");
        controlador = Novo<COAfericoes>();
        alterado = controlador->Alterado().liga([this] { ++alteracoes; });
        host->LimpaRegistro();
        host->Tela->Arquivos.Poe("C:\\DOC\\c.pdf", {'%', 'P', 'D', 'F'});
    }

    void TearDown() override
    {
        controlador = nullptr;
        sensor = nullptr;
        lista = nullptr;
        dona = nullptr;
        CenarioSensores::TearDown();
    }

    bool Carrega(bool somenteLeitura = false) { return controlador->Carrega(sensor, lista, somenteLeitura); }
    Pessoa Operador() { return Pessoa(dona, host->Tela); }
    Ref<clsAfericao> Afericao(const std::string &chave) { return sensor->ListaAfericoes()->Item(chave); }
    std::int32_t Quantas() { return sensor->ListaAfericoes()->Count(); }

    // Fills a new calibration in, document included, and confirms it.
    void NaJanelaInclui(const std::string &verificacao, const std::string &vencimento)
    {
        host->EscolheArquivo("C:\\DOC\\c.pdf");
        NaJanela(Janela, [=](Pessoa &p) {
            FAZ(p, Preenche("txtNroINMETRO", "777"));
            FAZ(p, Preenche("txtDtVerifINMETRO", verificacao));
            FAZ(p, Preenche("txtDtVencINMETRO", vencimento));
            FAZ(p, Clica("cmdProcurar"));
            FAZ(p, Clica("cmdUpload"));
            FAZ(p, Clica("cmdOK"));
        });
    }

    Ref<frmComLista> dona;
    Ref<IztList> lista;
    Ref<clsSensor> sensor;
    Ref<COAfericoes> controlador;
    Conexao alterado;
    int alteracoes = 0;
};

TEST_F(COAfericoes_test, Carrega_SixColumns_ConfiguredWithTitleWidthAndMark)
{
    EXPECT_EQ(controlador->NomeTipo(), "COAfericoes");
    EXPECT_TRUE(Carrega());

    struct Esperada {
        std::string Titulo;
        int Largura;
        std::string Marca;
        bool Visivel;
    };
    const std::vector<Esperada> esperadas{{"Tipo", 1200, "", true},
                                          {"Número", 1260, "", true},
                                          {"Certif./Decl.Conf.", 1800, "", true},
                                          {"Dt.Verificação", 1650, "data", true},
                                          {"Dt.Vencimento", 1650, "data", true},
                                          {"Chave", 0, "", false}};
    const auto &colunas = ComoTipo<ztList>(lista)->Colunas();
    ASSERT_EQ(colunas.size(), esperadas.size());
    for (std::size_t i = 0; i < esperadas.size(); ++i) {
        EXPECT_EQ(colunas[i].Titulo, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Chave, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Largura, esperadas[i].Largura);
        EXPECT_EQ(colunas[i].Visivel, esperadas[i].Visivel);
        EXPECT_EQ(colunas[i].Marca, esperadas[i].Marca);
        EXPECT_EQ(colunas[i].Alinhamento, 0);
    }
}

TEST_F(COAfericoes_test, Carrega_KindsAndInactiveOnes_RowsOfTheActiveOnesInListOrder)
{
    Ref<clsAfericao> declaracao = PoeAfericao(sensor, 1, "05/03/2026", "09/11/2026");
    declaracao->TipoAfer = 2;
    declaracao->Numero = "";
    declaracao->Marca = "555";
    PoeAfericao(sensor, 2, "01/01/2020", "31/12/2020")->Ativo = false;
    PoeAfericao(sensor, 3, "01/02/2024", "28/02/2025")->TipoAfer = 0; // anything but 2 is of the first kind
    PoeAfericao(sensor, 4, "01/02/2024", "28/02/2025");

    EXPECT_TRUE(Carrega());

    ASSERT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(Linha(lista, 1), (Textos{"Decl.Conf.", "", "555", "05/03/2026", "09/11/2026", "A1"}));
    EXPECT_EQ(Linha(lista, 2), (Textos{"Aferição", "1234", "99", "01/02/2024", "28/02/2025", "A3"}));
    EXPECT_EQ(Linha(lista, 3), (Textos{"Aferição", "1234", "99", "01/02/2024", "28/02/2025", "A4"})); // equal dates
    EXPECT_EQ(Quantas(), 4);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

TEST_F(COAfericoes_test, Carrega_OnlyInactiveOnes_EmptyListAndOnlyNovo)
{
    PoeAfericao(sensor, 2, "01/01/2020", "31/12/2020")->Ativo = false;
    EXPECT_TRUE(Carrega());
    EXPECT_EQ(lista->NroItens(), 0);
    auto operador = Operador();
    FAZ(operador, Foco("ztLista"));
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
}

TEST_F(COAfericoes_test, Carrega_Nothing_Fault91WithThePath)
{
    const Falha semLista = FalhaLancada([&] { controlador->Carrega(sensor, nullptr, false); });
    EXPECT_EQ(semLista.Numero, 91);
    EXPECT_EQ(semLista.Fonte, "ZTAVOREQUIP < gsubConfigLista < COAfericoes.Carrega");

    const Falha semSensor = FalhaLancada([&] { controlador->Carrega(nullptr, lista, false); });
    EXPECT_EQ(semSensor.Numero, 91);
    EXPECT_EQ(semSensor.Fonte, "ZTAVOREQUIP < COAfericoes.CarregaAfericoes < COAfericoes.Carrega");
}

TEST_F(COAfericoes_test, Carrega_Steps_ColumnsThenMenuThenRows)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    EXPECT_EQ(RetratosDaLista(lista, [&] { Carrega(); }),
              (Textos{"1/0/4", "2/0/4", "3/0/4", "4/0/4", "5/0/4", "6/0/4", "6/0/3", "6/0/2", "6/0/1", "6/1/1"}));
}

TEST_F(COAfericoes_test, CarregaAfericoes_FaultAtEachStep_ListAsFarAsItCame)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    PoeAfericao(sensor, 2, "01/01/2025", "31/12/2025");

    host->FalhaEm("Plataforma.Ponteiro"); // the hourglass
    EXPECT_EQ(FalhaLancada([&] { Carrega(); }).Fonte,
              "Plataforma.Ponteiro < COAfericoes.CarregaAfericoes < COAfericoes.Carrega");
    EXPECT_EQ(lista->NroItens(), 1);
    host->FalhaEm("Plataforma.Ponteiro", 2); // back to the default
    FalhaLancada([&] { Carrega(); });
    EXPECT_EQ(lista->NroItens(), 2);
    FalhaLancada([&] { controlador->Carrega(nullptr, lista, false); }); // the walk
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(host->Tela->Ponteiro(), PonteiroAmpulheta);
}

TEST_F(COAfericoes_test, HabilitaMenu_AnyRow_AnyCalibrationCanGo)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    PoeAfericao(sensor, 2, "01/01/2025", "31/12/2025");
    Carrega();
    EXPECT_EQ(MenuHabilitado(lista), SoNovo); // set before the rows came

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), Todos);
    FAZ(operador, ClicaLinha("ztLista", 2));
    EXPECT_EQ(MenuHabilitado(lista), Todos);
}

TEST_F(COAfericoes_test, HabilitaMenu_ReadOnly_OnlyDetalhesAndOnlyWithRows)
{
    Carrega(true);
    EXPECT_EQ(MenuHabilitado(lista), Textos{});

    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega(true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), Textos{"Detalhes"});
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
    EXPECT_EQ(Aberta(Janela)->Caption(), "Detalhes da Aferição");
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, Novo_Confirmed_CopyInTheListAndBothFlags)
{
    Carrega();
    NaJanelaInclui("01/01/2026", "31/12/2026");
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    ASSERT_EQ(Quantas(), 1);
    Ref<clsAfericao> nova = Afericao("A1");
    EXPECT_TRUE(nova->Alterado);
    EXPECT_EQ(nova->NroIntAfericao, 0);
    EXPECT_EQ(nova->Numero, "777");
    EXPECT_EQ(nova->NroIntImgCertif, 1);
    EXPECT_EQ(nova->Sensor(), sensor);
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Linha(lista, 1), (Textos{"Aferição", "777", "", "01/01/2026", "31/12/2026", "A1"}));
}

TEST_F(COAfericoes_test, Novo_Cancelled_ListAndFlagsAsTheyWere)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        EXPECT_TRUE(Aberta(Janela) == FormCompartilhado<frmEquipAfericoes>());
        EXPECT_EQ(Caption(p, "lblNroSensor"), "1");
        FAZ(p, Clica("cmdCancelar"));
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    EXPECT_EQ(Quantas(), 1);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_FALSE(Afericao("A1")->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

// The one thing that a cancelled form leaves behind.
TEST_F(COAfericoes_test, Novo_CancelledAfterARecalculation_TheShortenedPeriodStaysAndTheSensorsFlagToo)
{
    PoeAfericao(sensor, 1, "01/01/2026", "31/12/2026");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "777"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/06/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "01/06/2027"));
        host->Responde(
            "Data de verificação do INMETRO (01/06/2026) em conflito com a \r\naferição dos dias 01/01/2026 e "
            "31/12/2026.\r\n\r\nDeseja continuar ?\r\n\r\nOBS: Caso continue, a data de vencimento da "
            "aferição em conflito será\r\nrecalculada automaticamente (um dia antes da nova data de "
            "verificação).",
            true);
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    EXPECT_EQ(Quantas(), 1);
    EXPECT_EQ(Afericao("A1")->DataVencimento, Dia("31/05/2026"));
    EXPECT_TRUE(Afericao("A1")->Alterado);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_EQ(Linha(lista, 1)[4], "31/12/2026"); // not loaded again
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "É obrigatório fazer Upload do Documento em PDF!");
}

TEST_F(COAfericoes_test, Editar_Confirmed_TheListedRecordItselfIsWritten)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Ref<clsAfericao> afericao = PoeAfericao(sensor, 2, "01/01/2025", "31/12/2025");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "42"));
        EXPECT_TRUE(Aberta(Janela) == FormCompartilhado<frmEquipAfericoes>());
        EXPECT_EQ(afericao->Numero, "1234"); // only on OK
        FAZ(p, Clica("cmdOK"));
    });
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));

    EXPECT_EQ(Afericao("A2"), afericao);
    EXPECT_EQ(afericao->Numero, "42");
    EXPECT_TRUE(afericao->Alterado);
    EXPECT_FALSE(Afericao("A1")->Alterado);
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Coluna(lista, 2), (Textos{"1234", "42"}));
}

TEST_F(COAfericoes_test, Editar_Cancelled_FlagsAsTheyWere)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "42"));
        FAZ(p, Clica("cmdCancelar"));
    });
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));

    EXPECT_EQ(Afericao("A1")->Numero, "1234");
    EXPECT_FALSE(Afericao("A1")->Alterado);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_EQ(lista->ItemAtual(), 1);
}

TEST_F(COAfericoes_test, Detalhes_TwoCalibrations_AWindowEachAndNothingRefreshed)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024")->Numero = "um";
    PoeAfericao(sensor, 2, "01/01/2025", "31/12/2025")->Numero = "dois";
    Carrega();
    auto operador = Operador();
    host->LimpaRegistro();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));

    const auto abertas = host->Tela->FormsAbertos(Janela);
    ASSERT_EQ(abertas.size(), 2U);
    EXPECT_EQ(Texto(Pessoa(abertas[0]), "txtNroINMETRO"), "um");
    EXPECT_EQ(Texto(Pessoa(abertas[1]), "txtNroINMETRO"), "dois");
    EXPECT_EQ(host->Conta("Plataforma.Ponteiro := 11"), 0);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, Excluir_NoIsAnswered_NothingChanges)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    host->Responde(Pergunta, false);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    ASSERT_EQ(host->Tela->Perguntas().size(), 1U);
    EXPECT_EQ(host->Tela->Perguntas()[0].Titulo, "Atenção");
    EXPECT_FALSE(host->Tela->Perguntas()[0].PadraoSim);
    EXPECT_EQ(lista->NroItens(), 1);
    EXPECT_TRUE(Afericao("A1")->Ativo);
    EXPECT_FALSE(Afericao("A1")->Alterado);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, Excluir_SavedCalibration_StaysInactiveForTheService)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    PoeAfericao(sensor, 2, "01/01/2025", "31/12/2025");
    Carrega();
    host->Responde(Pergunta, true);
    host->LimpaRegistro();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    EXPECT_EQ(Quantas(), 2);
    EXPECT_FALSE(Afericao("A1")->Ativo);
    EXPECT_TRUE(Afericao("A1")->Alterado);
    EXPECT_FALSE(Afericao("A2")->Alterado);
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Coluna(lista, 6), Textos{"A2"});
    EXPECT_EQ(host->Conta("Plataforma.Ponteiro := 11"), 0);
    EXPECT_EQ(sensor->ToSensorED()->Afericoes.Valor()->Count(), 1);
}

TEST_F(COAfericoes_test, Excluir_NeverSavedCalibration_LeavesTheCollectionAndTheSensorIsMarkedAllTheSame)
{
    PoeAfericao(sensor, 0, "01/01/2024", "31/12/2024");
    RefFraca<clsAfericao> retirada = Afericao("A1");
    Carrega();
    host->Responde(Pergunta, true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    EXPECT_EQ(Quantas(), 0);
    EXPECT_TRUE(retirada.Nada());
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
}

// Both flags are set when the event comes, and the list is loaded again only behind it.
TEST_F(COAfericoes_test, Alterado_EachOperation_AfterTheFlagsAndBeforeTheList)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    auto operador = Operador();
    Textos vistos;
    const auto ouve = controlador->Alterado().liga([&] {
        const auto ultima = sensor->ListaAfericoes()->Item(Quantas());
        EXPECT_TRUE(sensor->Alterado);
        EXPECT_TRUE(ultima->Alterado);
        vistos.push_back(ultima->Numero + (ultima->Ativo ? "" : " inativa"));
        for (const std::string &numero : Coluna(lista, 2)) {
            vistos.push_back(numero);
        }
        sensor->Alterado = false;
    });

    NaJanelaInclui("01/01/2026", "31/12/2026");
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    EXPECT_EQ(vistos, (Textos{"777", "1234"}));
    EXPECT_EQ(Coluna(lista, 2), (Textos{"1234", "777"}));

    vistos.clear();
    Afericao("A2")->NroIntAfericao = 2;
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "42"));
        FAZ(p, Clica("cmdOK"));
    });
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));
    EXPECT_EQ(vistos, (Textos{"42", "1234", "777"}));
    EXPECT_EQ(Coluna(lista, 2), (Textos{"1234", "42"}));

    vistos.clear();
    Afericao("A2")->Alterado = false;
    host->Responde(Pergunta, true);
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    EXPECT_EQ(vistos, (Textos{"42 inativa", "1234", "42"}));
    EXPECT_EQ(Coluna(lista, 2), Textos{"1234"});
    EXPECT_EQ(alteracoes, 3);
    EXPECT_FALSE(sensor->Alterado); // nothing is written behind the event
}

TEST_F(COAfericoes_test, Excluir_NumberNotAboveZeroOrJustAbove_LeavesTheCollectionOrStays)
{
    PoeAfericao(sensor, 0.5, "01/01/2024", "31/12/2024");
    PoeAfericao(sensor, -1, "01/01/2025", "31/12/2025");
    Carrega();
    auto operador = Operador();
    for (const std::int32_t linha : {2, 1}) {
        host->Responde(Pergunta, true);
        FAZ(operador, ClicaLinha("ztLista", linha));
        FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    }
    ASSERT_EQ(Quantas(), 1);
    EXPECT_FALSE(Afericao("A1")->Ativo);
    EXPECT_TRUE(Afericao("A1")->Alterado);
}

// Out of sight, but its days are still held.
TEST_F(COAfericoes_test, Excluir_SavedCalibration_StillRefusesANewPeriod)
{
    PoeAfericao(sensor, 1, "01/03/2026", "31/12/2026");
    Carrega();
    host->Responde(Pergunta, true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "777"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "01/04/2026"));
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    });
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    ASSERT_EQ(host->Tela->Caixas().size(), 1U);
    EXPECT_EQ(host->Tela->Caixas()[0].Texto,
              "Período da nova aferição em conflito com a aferição dos dias 01/03/2026 a 31/12/2026");
    EXPECT_EQ(Quantas(), 1);
}

TEST_F(COAfericoes_test, ItemMenuClicado_AnotherKey_DoesNothing)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    host->LimpaRegistro();
    for (const std::string chave : {"mnuZTLObjLocalizar", "mnuZTLObjAtualizar", "MNUZTLOBJNOVO", ""}) {
        lista->ItemMenuClicado().dispara(chave);
    }
    EXPECT_EQ(host->Registro(), Textos{});
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, StaleKey_ErrorBoxWithThePath)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    sensor->ListaAfericoes()->Clear();
    const std::string fonte = "ZTAVOREQUIP < clsListaAfericoes.Item (Property Get) < COAfericoes.";

    for (const std::string item : {"Editar", "Detalhes"}) {
        FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + item));
        EXPECT_EQ(host->Erros().back().Contexto, "COAfericoes.ItemMenuClicado");
        EXPECT_EQ(host->Erros().back().Numero, 5);
        EXPECT_EQ(host->Erros().back().Fonte, fonte + item);
    }
    host->Responde(Pergunta, true);
    std::int32_t linha = 1;
    lista->AntesDeRemoverItem().dispara(linha);
    EXPECT_EQ(linha, 1);                           // a fault gives no answer, so the row given is not written
    EXPECT_EQ(host->Tela->Perguntas().size(), 1U); // before anything is looked up
    ASSERT_EQ(host->Erros().size(), 3U);
    EXPECT_EQ(host->Erros()[2].Contexto, "COAfericoes.m_ZtList_AntesDeRemoverItem");
    EXPECT_EQ(host->Erros()[2].Fonte, fonte + "Excluir");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, Excluir_NoIsAnsweredWithAStaleKey_NothingIsLookedUp)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    sensor->ListaAfericoes()->Clear();
    host->Responde(Pergunta, false);

    std::int32_t linha = 1;
    lista->AntesDeRemoverItem().dispara(linha);

    EXPECT_EQ(linha, 0);
    EXPECT_TRUE(host->Erros().empty());
}

// The sensor is marked only for a calibration that got into the list.
TEST_F(COAfericoes_test, Novo_CalibrationCannotBeAdded_NeitherFlagNorEvent)
{
    Carrega();
    host->EscolheArquivo("C:\\DOC\\c.pdf");
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtNroINMETRO", "777"));
        FAZ(p, Preenche("txtDtVerifINMETRO", "01/01/2026"));
        FAZ(p, Preenche("txtDtVencINMETRO", "31/12/2026"));
        FAZ(p, Clica("cmdProcurar"));
        FAZ(p, Clica("cmdUpload"));
        host->ObservaChamadas([&] { sensor->ListaAfericoes()->Finaliza(); }); // as the window closes
        FAZ(p, Clica("cmdOK"));
        host->ObservaChamadas({});
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 91);
    EXPECT_EQ(host->Erros()[0].Fonte,
              "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao < COAfericoes.Novo");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COAfericoes_test, Novo_SensorEnded_Fault91AndNoWindow)
{
    Carrega();
    equipto->ListaSensores()->Clear();
    sensor = nullptr;
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 91);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipAfericoes.CarregaInclusao");
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(COAfericoes_test, Novo_FaultInAHandlerOfAlterado_ReachesTheErrorBox)
{
    Carrega();
    auto falha = controlador->Alterado().liga([] { throw Falha(1000, "dona", "não pode"); });
    NaJanelaInclui("01/01/2026", "31/12/2026");
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Fonte, "dona < COAfericoes.Novo");
    EXPECT_EQ(host->Erros()[0].Contexto, "COAfericoes.ItemMenuClicado");
    EXPECT_TRUE(sensor->Alterado);
}

TEST_F(COAfericoes_test, Carrega_OutOfMemoryAnywhere_PathOfEveryProcedure)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega(); // the list has room for its handlers from now on, so that all attempts ask for the same memory
    controlador = nullptr;

    const std::set<std::string> fontes = FontesSemMemoria([&] { Novo<COAfericoes>()->Carrega(sensor, lista, false); });

    for (const std::string esperada :
         {"ZTAVOREQUIP < COAfericoes.Carrega", "ZTAVOREQUIP < COAfericoes.Colunas (Property Get) < COAfericoes.Carrega",
          "ZTAVOREQUIP < COAfericoes.HabilitaMenu < COAfericoes.MenuInicial < COAfericoes.Carrega",
          "ZTAVOREQUIP < COAfericoes.CarregaAfericoes < COAfericoes.Carrega"}) {
        EXPECT_TRUE(fontes.contains(esperada)) << esperada;
    }
}

TEST_F(COAfericoes_test, ListEvents_OutOfMemory_TwoReportAndOnePassesOn)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    const std::string fonte = "ZTAVOREQUIP < COAfericoes.HabilitaMenu";
    const auto dispara = [&](Evento<> &evento) {
        MemoriaEscassa escassa(3); // behind what raising the event itself asks for
        evento.dispara();
    };

    dispara(lista->GotFocus());
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COAfericoes.m_ZtList_GotFocus");
    EXPECT_EQ(host->Erros()[0].Fonte, fonte);

    dispara(lista->ItemClick());
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[1].Contexto, "COAfericoes.m_ZtList_ItemClick");

    const Falha falha = FalhaLancada([&] { dispara(lista->DepoisDeRemoverItem()); });
    EXPECT_EQ(falha.Numero, 7);
    EXPECT_EQ(falha.Fonte, fonte + " < COAfericoes.m_ZtList_DepoisDeRemoverItem");
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(COAfericoes_test, Released_ListEventsNoLongerReachIt)
{
    PoeAfericao(sensor, 1, "01/01/2024", "31/12/2024");
    Carrega();
    RefFraca<COAfericoes> fraca = controlador;
    controlador = nullptr;
    EXPECT_TRUE(fraca.Nada());

    host->LimpaRegistro();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    lista->ItemMenuClicado().dispara("mnuZTLObjNovo");
    EXPECT_EQ(host->Registro(), Textos{});
}

TEST_F(COAfericoes_test, Released_WhileItsWindowIsOpen_EndsWithTheHandler)
{
    Carrega();
    RefFraca<COAfericoes> fraca = controlador;
    NaJanela(Janela, [&](Pessoa &p) {
        controlador = nullptr;
        EXPECT_FALSE(fraca.Nada());
        FAZ(p, Clica("cmdCancelar"));
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    EXPECT_TRUE(fraca.Nada());
}

} // namespace
