#include "sensors/COSensores.h"

#include "sensors/frmEquipSensores.h"
#include "tests/sensors/CenarioSensores.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/UmControle.h"

namespace {

const std::string Janela = "frmEquipSensores";
const std::string Pergunta = "Confirma a exclusão deste sensor?";
const Textos SoNovo{"Novo"};
const Textos SemExcluir{"Novo", "Editar", "Detalhes"};
const Textos Todos{"Novo", "Editar", "Detalhes", "Excluir"};

class COSensores_test : public CenarioSensores {
  protected:
    void SetUp() override
    {
        CenarioSensores::SetUp();
        dona = Novo<frmComLista>();
        dona->Abre();
        lista = dona->ztLista;
        controlador = Novo<COSensores>();
        alterado = controlador->Alterado().liga([this] { ++alteracoes; });
        host->LimpaRegistro();
    }

    void TearDown() override
    {
        controlador = nullptr;
        lista = nullptr;
        dona = nullptr;
        CenarioSensores::TearDown();
    }

    // Sensors 1 to n, saved under 101 to 100 + n.
    void PoeSalvos(std::int16_t n)
    {
        for (std::int16_t numero = 1; numero <= n; ++numero) {
            PoeSensor(100 + numero, numero, "Rua " + std::to_string(numero));
        }
    }
    bool Carrega(bool somenteLeitura = false) { return controlador->Carrega(equipto, lista, somenteLeitura); }
    Pessoa Operador() { return Pessoa(dona, host->Tela); }
    Ref<clsSensor> Sensor(const std::string &chave) { return equipto->ListaSensores()->Item(chave); }
    std::int32_t Quantos() { return equipto->ListaSensores()->Count(); }

    Ref<frmComLista> dona;
    Ref<IztList> lista;
    Ref<COSensores> controlador;
    Conexao alterado;
    int alteracoes = 0;
};

TEST_F(COSensores_test, Carrega_ThreeColumns_ConfiguredWithTitleWidthAndNoMark)
{
    EXPECT_EQ(controlador->NomeTipo(), "COSensores");
    EXPECT_TRUE(Carrega());

    struct Esperada {
        std::string Titulo;
        int Largura;
        bool Visivel;
    };
    const std::vector<Esperada> esperadas{{"Nº Sensor", 1005, true}, {"Endereço", 4905, true}, {"Chave", 0, false}};
    const auto &colunas = ComoTipo<ztList>(lista)->Colunas();
    ASSERT_EQ(colunas.size(), esperadas.size());
    for (std::size_t i = 0; i < esperadas.size(); ++i) {
        EXPECT_EQ(colunas[i].Titulo, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Chave, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Largura, esperadas[i].Largura);
        EXPECT_EQ(colunas[i].Visivel, esperadas[i].Visivel);
        EXPECT_EQ(colunas[i].Marca, "");
        EXPECT_EQ(colunas[i].Alinhamento, 0);
    }
}

TEST_F(COSensores_test, Carrega_ActiveAndInactiveSensors_RowsOfTheActiveOnesOnly)
{
    PoeSalvos(3);
    Sensor("S2")->Ativo = false;

    EXPECT_TRUE(Carrega());

    ASSERT_EQ(lista->NroItens(), 2);
    EXPECT_EQ(Linha(lista, 1), (Textos{"1", "Rua 1", "S1"}));
    EXPECT_EQ(Linha(lista, 2), (Textos{"3", "Rua 3", "S3"}));
    EXPECT_EQ(Quantos(), 3);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

TEST_F(COSensores_test, Carrega_NoSensor_EmptyListAndOnlyNovo)
{
    EXPECT_TRUE(Carrega());

    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    auto operador = Operador();
    FAZ(operador, Foco("ztLista"));
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
}

// The menu is set before the rows come, and again when the focus does.
TEST_F(COSensores_test, Carrega_SomeSensors_MenuAsForAnEmptyListUntilTheFocusComes)
{
    PoeSalvos(2);
    Carrega();
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);

    auto operador = Operador();
    FAZ(operador, Foco("ztLista"));
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
}

TEST_F(COSensores_test, Carrega_Nothing_Fault91WithThePath)
{
    const Falha falha = FalhaLancada([&] { controlador->Carrega(equipto, nullptr, false); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < gsubConfigLista < COSensores.Carrega");

    const Falha semEquipto = FalhaLancada([&] { controlador->Carrega(nullptr, lista, false); });
    EXPECT_EQ(semEquipto.Numero, 91);
    EXPECT_EQ(semEquipto.Fonte, "ZTAVOREQUIP < COSensores.CarregaSensores < COSensores.Carrega");
}

TEST_F(COSensores_test, Carrega_Steps_ColumnsThenMenuThenRows)
{
    PoeSalvos(2);
    EXPECT_EQ(RetratosDaLista(lista, [&] { Carrega(); }),
              (Textos{"1/0/4", "2/0/4", "3/0/4", "3/0/3", "3/0/2", "3/0/1", "3/2/1"}));
}

TEST_F(COSensores_test, CarregaSensores_FaultAtEachStep_ListAsFarAsItCame)
{
    PoeSalvos(2);
    Carrega();
    PoeSensor(103, 3, "Rua 3");

    host->FalhaEm("Plataforma.Ponteiro"); // the hourglass
    EXPECT_EQ(FalhaLancada([&] { Carrega(); }).Fonte,
              "Plataforma.Ponteiro < COSensores.CarregaSensores < COSensores.Carrega");
    EXPECT_EQ(lista->NroItens(), 2);
    host->FalhaEm("Plataforma.Ponteiro", 2); // back to the default
    FalhaLancada([&] { Carrega(); });
    EXPECT_EQ(lista->NroItens(), 3);
    FalhaLancada([&] { controlador->Carrega(nullptr, lista, false); }); // the walk
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(host->Tela->Ponteiro(), PonteiroAmpulheta);
}

TEST_F(COSensores_test, HabilitaMenu_ByRowAndMode_OnlyTheLastSensorCanGo)
{
    PoeSalvos(3);
    Carrega();
    auto operador = Operador();

    FAZ(operador, ClicaLinha("ztLista", 3));
    EXPECT_EQ(MenuHabilitado(lista), Todos);
    FAZ(operador, ClicaLinha("ztLista", 2));
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
    EXPECT_EQ(host->Tela->Perguntas().size(), 0U);
}

TEST_F(COSensores_test, HabilitaMenu_ReadOnly_OnlyDetalhesAndOnlyWithRows)
{
    EXPECT_TRUE(Carrega(true));
    EXPECT_EQ(MenuHabilitado(lista), Textos{});

    PoeSalvos(2);
    controlador->Carrega(equipto, lista, true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    EXPECT_EQ(MenuHabilitado(lista), Textos{"Detalhes"});
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));
    NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COSensores_test, HabilitaMenu_NoCurrentRow_NothingToRemove)
{
    PoeSalvos(3);
    Carrega();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 3));
    lista->DefineItemAtual(0);

    lista->GotFocus().dispara();

    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
}

// The number in the first column counts, wherever the person has sorted the row to.
TEST_F(COSensores_test, HabilitaMenu_RowsSorted_LastByNumberNotByPlace)
{
    PoeSalvos(3);
    Carrega();
    auto operador = Operador();
    FAZ(operador, OrdenaPor("ztLista", 1));
    FAZ(operador, OrdenaPor("ztLista", 1));
    ASSERT_EQ(Coluna(lista, 1), (Textos{"3", "2", "1"}));

    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), Todos);
    FAZ(operador, ClicaLinha("ztLista", 3));
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
}

TEST_F(COSensores_test, Novo_Confirmed_CopyInTheListAndOneEvent)
{
    PoeSalvos(1);
    Carrega();
    host->LimpaRegistro();
    NaJanela(Janela, [&](Pessoa &p) {
        EXPECT_TRUE(Aberta(Janela) == FormCompartilhado<frmEquipSensores>());
        EXPECT_EQ(Texto(p, "txtNroSensor"), "2");
        EXPECT_EQ(Quantos(), 1); // in no list yet
        FAZ(p, Preenche("txtLocalInfr", "Av. Ipiranga, 10"));
        FAZ(p, Clica("cmdOK"));
    });

    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    ASSERT_EQ(Quantos(), 2);
    Ref<clsSensor> novo = Sensor("S2");
    EXPECT_EQ(novo->NroSensor, 2);
    EXPECT_EQ(novo->NroIntSensor, 0);
    EXPECT_EQ(novo->LocalInfr, "Av. Ipiranga, 10");
    EXPECT_TRUE(novo->Alterado);
    EXPECT_TRUE(novo->Ativo);
    EXPECT_EQ(novo->Equipto(), equipto);
    EXPECT_FALSE(Sensor("S1")->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Coluna(lista, 2), (Textos{"Rua 1", "Av. Ipiranga, 10"}));
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Ponteiro", "Plataforma.Descarrega", "ObjInterface"}),
                              {"Plataforma.Ponteiro := 0", "ObjInterface.MostraJanela(frmEquipSensores, modal=True)",
                               "Plataforma.Descarrega(frmEquipSensores)", "Plataforma.Ponteiro := 11",
                               "Plataforma.Ponteiro := 0"}));
}

TEST_F(COSensores_test, Novo_Cancelled_NothingHappens)
{
    PoeSalvos(1);
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "abandonado"));
        FAZ(p, Clica("cmdCancelar"));
    });

    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    EXPECT_EQ(Quantos(), 1);
    EXPECT_EQ(lista->NroItens(), 1);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

TEST_F(COSensores_test, Editar_Confirmed_ListedSensorTakesTheCloneOver)
{
    PoeSalvos(2);
    Ref<clsSensor> sensor = Sensor("S2");
    Ref<clsAfericao> antiga = PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        EXPECT_TRUE(Aberta(Janela) == FormCompartilhado<frmEquipSensores>());
        FAZ(p, Preenche("txtLocalInfr", "Rua Nova"));
        EXPECT_EQ(sensor->LocalInfr, "Rua 2"); // a clone is on the screen
        FAZ(p, Clica("cmdOK"));
    });

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));

    EXPECT_EQ(Sensor("S2"), sensor);
    EXPECT_EQ(sensor->LocalInfr, "Rua Nova");
    EXPECT_EQ(sensor->NroIntSensor, 102);
    EXPECT_TRUE(sensor->Alterado);
    EXPECT_FALSE(Sensor("S1")->Alterado);
    ASSERT_EQ(sensor->ListaAfericoes()->Count(), 1);
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1) == antiga); // the calibrations are new objects
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1)->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Coluna(lista, 2), (Textos{"Rua 1", "Rua Nova"}));
}

TEST_F(COSensores_test, Editar_Cancelled_ListedSensorUntouched)
{
    PoeSalvos(2);
    Ref<clsSensor> sensor = Sensor("S1");
    Carrega();
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "outra"));
        FAZ(p, Esc());
    });

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));

    EXPECT_EQ(sensor->LocalInfr, "Rua 1");
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_EQ(lista->ItemAtual(), 1); // not loaded again
}

TEST_F(COSensores_test, Detalhes_TwoSensors_AWindowEachWithTheListedSensor)
{
    PoeSalvos(2);
    Sensor("S1")->Alterado = true;
    Carrega();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
    FAZ(operador, ClicaLinha("ztLista", 2));
    host->LimpaRegistro();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));

    const auto abertas = host->Tela->FormsAbertos(Janela);
    ASSERT_EQ(abertas.size(), 2U);
    EXPECT_EQ(Texto(Pessoa(abertas[0]), "txtNroSensor"), "1");
    EXPECT_EQ(Texto(Pessoa(abertas[1]), "txtNroSensor"), "2");
    EXPECT_EQ(alteracoes, 0);
    EXPECT_EQ(host->Conta("Plataforma.Ponteiro := 11"), 0); // nothing is refreshed

    Pessoa primeira(abertas[0], host->Tela);
    host->Responde("Foram feitas alterações neste sensor. Deseja descartá-las?", true); // a clone would not ask
    FAZ(primeira, Clica("cmdCancelar"));
    EXPECT_EQ(host->Tela->FormsAbertos(Janela).size(), 1U);
}

TEST_F(COSensores_test, Detalhes_ReadOnlyList_Opens)
{
    PoeSalvos(1);
    Carrega(true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
    EXPECT_EQ(Aberta(Janela)->Caption(), "Editar Sensor");
}

TEST_F(COSensores_test, Excluir_NoIsAnswered_RowAndSensorStay)
{
    PoeSalvos(2);
    Carrega();
    host->Responde(Pergunta, false);

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    ASSERT_EQ(host->Tela->Perguntas().size(), 1U);
    EXPECT_EQ(host->Tela->Perguntas()[0].Texto, Pergunta);
    EXPECT_EQ(host->Tela->Perguntas()[0].Titulo, "Atenção");
    EXPECT_FALSE(host->Tela->Perguntas()[0].PadraoSim);
    EXPECT_EQ(lista->NroItens(), 2);
    EXPECT_TRUE(Sensor("S2")->Ativo);
    EXPECT_FALSE(Sensor("S2")->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COSensores_test, Excluir_SavedSensor_StaysInactiveForTheService)
{
    PoeSalvos(2);
    Carrega();
    host->Responde(Pergunta, true);
    host->LimpaRegistro();

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    ASSERT_EQ(Quantos(), 2);
    EXPECT_FALSE(Sensor("S2")->Ativo);
    EXPECT_TRUE(Sensor("S2")->Alterado);
    EXPECT_FALSE(Sensor("S1")->Alterado);
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(Coluna(lista, 3), Textos{"S1"});
    EXPECT_EQ(MenuHabilitado(lista), Todos);                // sensor 1 is the last one now
    EXPECT_EQ(host->Conta("Plataforma.Ponteiro := 11"), 0); // the list itself takes the row off
}

TEST_F(COSensores_test, Excluir_NeverSavedSensor_LeavesTheCollectionAndItsKeyIsNotUsedAgain)
{
    PoeSalvos(1);
    PoeSensor(0, 2, "novo");
    RefFraca<clsSensor> retirado = Sensor("S2");
    Carrega();
    host->Responde(Pergunta, true);

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 2));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    EXPECT_EQ(Quantos(), 1);
    EXPECT_TRUE(retirado.Nada());
    EXPECT_EQ(alteracoes, 1);
    EXPECT_EQ(equipto->ListaSensores()->Add(2, "")->Chave(), "S3");
}

// The record is complete when the event comes, and the list is loaded again only behind it.
TEST_F(COSensores_test, Alterado_EachOperation_AfterTheRecordAndBeforeTheList)
{
    PoeSalvos(2);
    Carrega();
    auto operador = Operador();
    Textos vistos;
    const auto ouve = controlador->Alterado().liga([&] {
        const auto ultimo = equipto->ListaSensores()->Item(Quantos());
        vistos.push_back(ultimo->LocalInfr + (ultimo->Alterado ? " alterado" : "") + (ultimo->Ativo ? "" : " inativo"));
        for (const std::string &local : Coluna(lista, 2)) {
            vistos.push_back(local);
        }
    });

    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "nova"));
        FAZ(p, Clica("cmdOK"));
    });
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    EXPECT_EQ(vistos, (Textos{"nova alterado", "Rua 1", "Rua 2"}));
    EXPECT_EQ(Coluna(lista, 2), (Textos{"Rua 1", "Rua 2", "nova"}));

    vistos.clear();
    Sensor("S3")->NroIntSensor = 103;
    Sensor("S3")->Alterado = false;
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "outra"));
        FAZ(p, Clica("cmdOK"));
    });
    FAZ(operador, ClicaLinha("ztLista", 3));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjEditar"));
    EXPECT_EQ(vistos, (Textos{"outra alterado", "Rua 1", "Rua 2", "nova"}));
    EXPECT_EQ(Coluna(lista, 2), (Textos{"Rua 1", "Rua 2", "outra"}));

    vistos.clear();
    Sensor("S3")->Alterado = false;
    host->Responde(Pergunta, true);
    FAZ(operador, ClicaLinha("ztLista", 3));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    EXPECT_EQ(vistos, (Textos{"outra alterado inativo", "Rua 1", "Rua 2", "outra"}));
    EXPECT_EQ(Coluna(lista, 2), (Textos{"Rua 1", "Rua 2"}));
    EXPECT_EQ(alteracoes, 3);
}

TEST_F(COSensores_test, Excluir_NumberBelowOneOrOne_LeavesTheCollectionOrStays)
{
    PoeSensor(1, 1, "salvo");
    PoeSensor(-1, 2, "nunca salvo");
    Carrega();
    auto operador = Operador();
    for (const std::int32_t linha : {2, 1}) {
        host->Responde(Pergunta, true);
        FAZ(operador, ClicaLinha("ztLista", linha));
        FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    }
    ASSERT_EQ(Quantos(), 1);
    EXPECT_FALSE(Sensor("S1")->Ativo);
    EXPECT_TRUE(Sensor("S1")->Alterado);
}

TEST_F(COSensores_test, Excluir_TheOnlySensor_OnlyNovoIsLeft)
{
    PoeSalvos(1);
    Carrega();
    host->Responde(Pergunta, true);

    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));

    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
}

TEST_F(COSensores_test, Novo_AfterASavedSensorWasRemoved_TwoSensorsWithThatNumberTravel)
{
    PoeSalvos(3);
    Carrega();
    host->Responde(Pergunta, true);
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 3));
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "de novo"));
        FAZ(p, Clica("cmdOK"));
    });
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));

    ASSERT_EQ(Quantos(), 4);
    EXPECT_EQ(Sensor("S4")->NroSensor, 3);
    const auto enviados = equipto->ToEquiptoED()->Sensores.Valor();
    ASSERT_EQ(enviados->Count(), 2);
    EXPECT_EQ(enviados->Item(1)->Texto(), "SensorED{NroIntSensor=103, NroSensor=3, Ativo=2, LocalInfr=\"Rua 3\"}");
    EXPECT_EQ(enviados->Item(2)->Texto(), "SensorED{NroSensor=3, Ativo=1, LocalInfr=\"de novo\"}");
}

TEST_F(COSensores_test, ItemMenuClicado_AnotherKey_DoesNothing)
{
    PoeSalvos(1);
    Carrega();
    host->LimpaRegistro();
    for (const std::string chave : {"mnuZTLObjLocalizar", "mnuZTLObjAtualizar", "mnuztlobjnovo", ""}) {
        lista->ItemMenuClicado().dispara(chave);
    }
    EXPECT_EQ(host->Registro(), Textos{});
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COSensores_test, Editar_StaleKey_ErrorBoxWithThePathAndTheListStays)
{
    PoeSalvos(1);
    Carrega();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    equipto->ListaSensores()->Clear();

    for (const std::string item : {"Editar", "Detalhes"}) {
        FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + item));
        const auto &erro = host->Erros().back();
        EXPECT_EQ(erro.Contexto, "COSensores.ItemMenuClicado");
        EXPECT_EQ(erro.Numero, 5);
        EXPECT_EQ(erro.Fonte, "ZTAVOREQUIP < clsListaSensores.Item (Property Get) < COSensores." + item);
        EXPECT_EQ(erro.Titulo, "Sistema de Autuações");
    }
    EXPECT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(lista->NroItens(), 1);
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COSensores_test, Editar_NoCurrentRow_Fault9)
{
    PoeSalvos(1);
    Carrega();
    lista->ItemMenuClicado().dispara("mnuZTLObjEditar");
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 9);
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP < COSensores.Editar");
}

// A fault gives no answer, so the row given is not written.
TEST_F(COSensores_test, Excluir_StaleKey_ErrorBoxAndTheRowIsNotWritten)
{
    PoeSalvos(1);
    Carrega();
    equipto->ListaSensores()->Clear();
    host->Responde(Pergunta, true);

    std::int32_t linha = 1;
    lista->AntesDeRemoverItem().dispara(linha);

    EXPECT_EQ(linha, 1);
    EXPECT_EQ(host->Tela->Perguntas().size(), 1U); // before anything is looked up
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COSensores.m_ZtList_AntesDeRemoverItem");
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP < clsListaSensores.Item (Property Get) < COSensores.Excluir");
    EXPECT_EQ(alteracoes, 0);
}

TEST_F(COSensores_test, Excluir_NoIsAnsweredWithAStaleKey_NothingIsLookedUp)
{
    PoeSalvos(1);
    Carrega();
    equipto->ListaSensores()->Clear();
    host->Responde(Pergunta, false);

    std::int32_t linha = 1;
    lista->AntesDeRemoverItem().dispara(linha);

    EXPECT_EQ(linha, 0);
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(COSensores_test, Novo_EquipmentEnded_Fault91AndNoWindow)
{
    Carrega();
    equipto = nullptr;
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 91);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipSensores.CarregaInclusao");
    EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmEquipSensores"), 0);
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(COSensores_test, Novo_FaultInAHandlerOfAlterado_ReachesTheErrorBox)
{
    Carrega();
    auto falha = controlador->Alterado().liga([] { throw Falha(1000, "dona", "não pode"); });
    NaJanela(Janela, [&](Pessoa &p) {
        FAZ(p, Preenche("txtLocalInfr", "x"));
        FAZ(p, Clica("cmdOK"));
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 1000);
    EXPECT_EQ(host->Erros()[0].Descricao, "não pode");
    EXPECT_EQ(host->Erros()[0].Fonte, "dona < COSensores.Novo");
    EXPECT_EQ(host->Erros()[0].Contexto, "COSensores.ItemMenuClicado");
    EXPECT_EQ(Quantos(), 1); // what had been done stays
}

// Every request for memory in turn is refused; whatever procedure it hits, the path tells so.
TEST_F(COSensores_test, Carrega_OutOfMemoryAnywhere_PathOfEveryProcedure)
{
    PoeSalvos(2);
    Carrega(); // the list has room for its handlers from now on, so that all attempts ask for the same memory
    controlador = nullptr;

    const std::set<std::string> fontes = FontesSemMemoria([&] { Novo<COSensores>()->Carrega(equipto, lista, false); });

    for (const std::string esperada :
         {"ZTAVOREQUIP < COSensores.Carrega", "ZTAVOREQUIP < COSensores.Colunas (Property Get) < COSensores.Carrega",
          "ZTAVOREQUIP < COSensores.HabilitaMenu < COSensores.MenuInicial < COSensores.Carrega",
          "ZTAVOREQUIP < COSensores.CarregaSensores < COSensores.Carrega"}) {
        EXPECT_TRUE(fontes.contains(esperada)) << esperada;
    }
}

TEST_F(COSensores_test, ListEvents_OutOfMemory_TwoReportAndOnePassesOn)
{
    PoeSalvos(1);
    Carrega();
    const std::string fonte = "ZTAVOREQUIP < COSensores.HabilitaMenu";
    const auto dispara = [&](Evento<> &evento) {
        MemoriaEscassa escassa(3); // behind what raising the event itself asks for
        evento.dispara();
    };

    dispara(lista->GotFocus());
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COSensores.m_ZtList_GotFocus");
    EXPECT_EQ(host->Erros()[0].Fonte, fonte);

    dispara(lista->ItemClick());
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[1].Contexto, "COSensores.m_ZtList_ItemClick");
    EXPECT_EQ(host->Erros()[1].Fonte, fonte);

    const Falha falha = FalhaLancada([&] { dispara(lista->DepoisDeRemoverItem()); });
    EXPECT_EQ(falha.Numero, 7);
    EXPECT_EQ(falha.Fonte, fonte + " < COSensores.m_ZtList_DepoisDeRemoverItem");
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(COSensores_test, Released_ListEventsNoLongerReachIt)
{
    PoeSalvos(1);
    Carrega();
    RefFraca<COSensores> fraca = controlador;
    controlador = nullptr;
    EXPECT_TRUE(fraca.Nada());

    host->LimpaRegistro();
    auto operador = Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    lista->ItemMenuClicado().dispara("mnuZTLObjNovo");
    EXPECT_EQ(host->Registro(), Textos{});
}

TEST_F(COSensores_test, Released_WhileItsWindowIsOpen_EndsWithTheHandler)
{
    PoeSalvos(1);
    Carrega();
    RefFraca<COSensores> fraca = controlador;
    NaJanela(Janela, [&](Pessoa &p) {
        controlador = nullptr;
        EXPECT_FALSE(fraca.Nada());
        FAZ(p, Preenche("txtLocalInfr", "Rua 2"));
        FAZ(p, Clica("cmdOK"));
    });
    auto operador = Operador();
    FAZ(operador, EscolheMenu("ztLista", "mnuZTLObjNovo"));
    EXPECT_TRUE(fraca.Nada());
    EXPECT_EQ(Quantos(), 2);
}

TEST_F(COSensores_test, Carrega_ListAndEquipment_NeitherIsKeptAlive)
{
    Carrega();
    RefFraca<clsEquipto> equiptoFraco = equipto;
    equipto = nullptr;
    EXPECT_TRUE(equiptoFraco.Nada());
    Ref<IztList> outra = CriadoPeloHost<IztList>(dona, Chamado<AjustesZtList>("ztOutra"));
    equipto = Novo<clsEquipto>();
    controlador->Carrega(equipto, outra, false);
    RefFraca<IztList> listaFraca = outra;
    outra = nullptr;
    EXPECT_TRUE(listaFraca.Nada());
}

} // namespace
