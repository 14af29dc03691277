#include "sensors/COSensores.h"

#include "sensors/frmEquipSensores.h"
#include "tests/sensors/ControladorDeColecao.h"

namespace {

class COSensores_test : public ComLista<CenarioSensores, COSensores> {
  protected:
    using Form = frmEquipSensores;

    void SetUp() override
    {
        ComLista::SetUp();
        alterado = controlador->Alterado().liga([this] { ++alteracoes; });
    }

    std::vector<ColunaEsperada> Colunas() { return {{"Nº Sensor", 1005}, {"Endereço", 4905}, {"Chave", 0}}; }
    Ref<clsSensor> PoeRegistro(std::int32_t nroInt, const std::string &local)
    {
        return PoeSensor(nroInt, static_cast<std::int16_t>(Quantos() + 1), local);
    }
    void PoeLinhas(std::int32_t n)
    {
        while (Quantos() < n) {
            PoeRegistro(101 + Quantos(), "item " + std::to_string(Quantos() + 1));
        }
    }
    bool Carrega(const Ref<IztList> &onde, bool somenteLeitura = false)
    {
        return controlador->Carrega(equipto, onde, somenteLeitura);
    }
    void CarregaNada() { controlador->Carrega(nullptr, lista, false); }
    void Inclui(Pessoa &p)
    {
        FAZ(p, Preenche("txtLocalInfr", "nova"));
        FAZ(p, Clica("cmdOK"));
    }
    void ConfereNovo(const clsSensor &novo)
    {
        EXPECT_EQ(novo.NroSensor, Quantos());
        EXPECT_EQ(novo.NroIntSensor, 0);
        EXPECT_EQ(novo.Equipto(), equipto);
    }
    Textos DetalhesVistos()
    {
        Textos vistos;
        for (const auto &aberta : host->Tela->FormsAbertos(Janela)) {
            vistos.push_back(Texto(Pessoa(aberta), "txtNroSensor"));
        }
        return vistos;
    }
    static Textos MenuAoCarregar() { return SoNovo; }
    static Textos MenuDaLinha(std::int32_t linha, std::int32_t linhas)
    {
        return linha == linhas ? MenuCheio : SemExcluir;
    }
    Ref<clsSensor> Item(const std::string &chave) { return equipto->ListaSensores()->Item(chave); }
    std::int32_t Quantos() { return equipto->ListaSensores()->Count(); }
    void Limpa() { equipto->ListaSensores()->Clear(); }
    static std::string Descricao(const clsSensor &sensor) { return sensor.LocalInfr; }
    static void Numera(clsSensor &sensor, std::int32_t nroInt) { sensor.NroIntSensor = nroInt; }
    void EncerraDono() { equipto = nullptr; }
    bool DonoMarcado() { return equipto->Alterado; }
    void DesmarcaDono() { equipto->Alterado = false; }

    const std::string Nome = "COSensores";
    const std::string Carregamento = "COSensores.Carrega";
    const std::string Enche = "COSensores.CarregaSensores";
    const std::string ItemMenu = "COSensores.ItemMenuClicado";
    const std::string Detalhe = "COSensores.Detalhes";
    const std::string Janela = "frmEquipSensores";
    const std::string Pergunta = "Confirma a exclusão deste sensor?";
    const std::string Colecao = "clsListaSensores";
    const std::string Letra = "S";
    const std::string Campo = "txtLocalInfr";
    const std::int32_t ColunaChave = 3;
    const std::int32_t MenorSalvo = 1;
    const bool MarcaDono = false; // the form does
    Conexao alterado;
    int alteracoes = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(COSensores, ControladorDeLista, COSensores_test);
INSTANTIATE_TYPED_TEST_SUITE_P(COSensores, ControladorDeColecao, COSensores_test);

TEST_F(COSensores_test, Carrega_ActiveAndInactiveSensors_RowsOfTheActiveOnesOnly)
{
    PoeLinhas(3);
    Item("S2")->Ativo = false;

    EXPECT_TRUE(Carrega(lista));

    ASSERT_EQ(lista->NroItens(), 2);
    EXPECT_EQ(Linha(lista, 1), (Textos{"1", "item 1", "S1"}));
    EXPECT_EQ(Linha(lista, 2), (Textos{"3", "item 3", "S3"}));
    EXPECT_EQ(Quantos(), 3);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

TEST_F(COSensores_test, HabilitaMenu_ByRow_OnlyTheLastSensorCanGo)
{
    PoeLinhas(3);
    Carrega(lista);
    auto operador = Operador();
    for (const std::int32_t linha : {3, 2, 1}) {
        FAZ(operador, ClicaLinha("ztLista", linha));
        EXPECT_EQ(MenuHabilitado(lista), MenuDaLinha(linha, 3));
    }
    FAZ(operador, ClicaLinha("ztLista", 3));
    lista->DefineItemAtual(0);
    lista->GotFocus().dispara();
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir); // no current row, nothing to remove
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

// The number in the first column counts, wherever the person has sorted the row to.
TEST_F(COSensores_test, HabilitaMenu_RowsSorted_LastByNumberNotByPlace)
{
    PoeLinhas(3);
    Carrega(lista);
    auto operador = Operador();
    FAZ(operador, OrdenaPor("ztLista", 1));
    FAZ(operador, OrdenaPor("ztLista", 1));
    ASSERT_EQ(Coluna(lista, 1), (Textos{"3", "2", "1"}));

    FAZ(operador, ClicaLinha("ztLista", 1));
    EXPECT_EQ(MenuHabilitado(lista), MenuCheio);
    FAZ(operador, ClicaLinha("ztLista", 3));
    EXPECT_EQ(MenuHabilitado(lista), SemExcluir);
}

TEST_F(COSensores_test, Editar_Confirmed_NumberStaysAndTheCalibrationsAreNewObjects)
{
    PoeLinhas(1);
    const auto sensor = Item("S1");
    const auto antiga = PoeAfericao(sensor, 7, "01/01/2026", "31/12/2026");
    Carrega(lista);
    host->AoMostrarModal(Janela, [this](Pessoa &p) { Inclui(p); });
    Comanda("Editar", 1);
    EXPECT_EQ(sensor->NroIntSensor, 101);
    ASSERT_EQ(sensor->ListaAfericoes()->Count(), 1);
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1) == antiga);
    EXPECT_FALSE(sensor->ListaAfericoes()->Item(1)->Alterado);
}

TEST_F(COSensores_test, Detalhes_SensorWithChanges_ListedOneItselfIsShown)
{
    PoeLinhas(1);
    Item("S1")->Alterado = true;
    Carrega(lista);
    Comanda("Detalhes", 1);
    EXPECT_EQ(Aberta(Janela)->Caption(), "Editar Sensor");
    host->Responde("Foram feitas alterações neste sensor. Deseja descartá-las?", true); // a clone would not ask
    Pessoa p(Aberta(Janela), host->Tela);
    FAZ(p, Clica("cmdCancelar"));
    EXPECT_TRUE(host->Tela->FormsAbertos(Janela).empty());
}

TEST_F(COSensores_test, Novo_AfterASavedSensorWasRemoved_TwoSensorsWithThatNumberTravel)
{
    PoeLinhas(3);
    Carrega(lista);
    host->Responde(Pergunta, true);
    Comanda("Excluir", 3);
    host->AoMostrarModal(Janela, [this](Pessoa &p) {
        EXPECT_EQ(Texto(p, "txtNroSensor"), "3");
        Inclui(p);
    });
    Comanda("Novo");

    ASSERT_EQ(Quantos(), 4);
    EXPECT_EQ(Item("S4")->NroSensor, 3);
    const auto enviados = equipto->ToEquiptoED()->Sensores.Valor();
    ASSERT_EQ(enviados->Count(), 2);
    EXPECT_EQ(enviados->Item(1)->Texto(), "SensorED{NroIntSensor=103, NroSensor=3, Ativo=2, LocalInfr=\"item 3\"}");
    EXPECT_EQ(enviados->Item(2)->Texto(), "SensorED{NroSensor=3, Ativo=1, LocalInfr=\"nova\"}");
}

TEST_F(COSensores_test, Carrega_Equipment_IsNotKeptAlive)
{
    Carrega(lista);
    const RefFraca<clsEquipto> fraco = equipto;
    equipto = nullptr;
    EXPECT_TRUE(fraco.Nada());
}

} // namespace
