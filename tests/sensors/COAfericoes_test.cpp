#include "sensors/COAfericoes.h"

#include "sensors/frmEquipAfericoes.h"
#include "tests/sensors/ControladorDeColecao.h"

namespace {

class COAfericoes_test : public ComLista<CenarioSensores, COAfericoes> {
  protected:
    using Form = frmEquipAfericoes;

    void SetUp() override
    {
        ComLista::SetUp();
        sensor = PoeSensor(101, 1, "Rua 1");
        alterado = controlador->Alterado().liga([this] { ++alteracoes; });
    }
    void TearDown() override
    {
        sensor = nullptr;
        ComLista::TearDown();
    }

    std::vector<ColunaEsperada> Colunas()
    {
        return {{"Tipo", 1200},
                {"Número", 1260},
                {"Certif./Decl.Conf.", 1800},
                {"Dt.Verificação", 1650, "data"},
                {"Dt.Vencimento", 1650, "data"},
                {"Chave", 0}};
    }
    // Each for a year of its own, from 2011.
    Ref<clsAfericao> PoeRegistro(double nroInt, const std::string &numero)
    {
        const std::string ano = std::to_string(2011 + Quantos());
        const auto afericao = PoeAfericao(sensor, nroInt, "01/01/" + ano, "31/12/" + ano);
        afericao->Numero = numero;
        return afericao;
    }
    void PoeLinhas(std::int32_t n)
    {
        while (Quantos() < n) {
            PoeRegistro(101 + Quantos(), "item " + std::to_string(Quantos() + 1));
        }
    }
    bool Carrega(const Ref<IztList> &onde, bool somenteLeitura = false)
    {
        return controlador->Carrega(sensor, onde, somenteLeitura);
    }
    void CarregaNada() { controlador->Carrega(nullptr, lista, false); }
    void Inclui(Pessoa &p)
    {
        PreencheAfericao(p, "nova", "01/01/2026", "31/12/2026");
        EnviaDocumento(p);
        FAZ(p, Clica("cmdOK"));
    }
    void ConfereNovo(const clsAfericao &nova)
    {
        EXPECT_EQ(nova.NroIntAfericao, 0);
        EXPECT_EQ(nova.NroIntImgCertif, 1);
        EXPECT_EQ(nova.Sensor(), sensor);
        EXPECT_EQ(Linha(lista, 2), (Textos{"Aferição", "nova", "", "01/01/2026", "31/12/2026", "A2"}));
    }
    Textos DetalhesVistos()
    {
        Textos vistos;
        for (const auto &aberta : host->Tela->FormsAbertos(Janela)) {
            vistos.push_back(Texto(Pessoa(aberta), "txtNroINMETRO").substr(5)); // behind "item "
        }
        return vistos;
    }
    static Textos MenuAoCarregar() { return SoNovo; }
    static Textos MenuDaLinha(std::int32_t, std::int32_t) { return MenuCheio; }
    Ref<clsAfericao> Item(const std::string &chave) { return sensor->ListaAfericoes()->Item(chave); }
    std::int32_t Quantos() { return sensor->ListaAfericoes()->Count(); }
    void Limpa() { sensor->ListaAfericoes()->Clear(); }
    static std::string Descricao(const clsAfericao &afericao) { return afericao.Numero; }
    static void Numera(clsAfericao &afericao, double nroInt) { afericao.NroIntAfericao = nroInt; }
    void EncerraDono()
    {
        equipto->ListaSensores()->Clear();
        sensor = nullptr;
    }
    bool DonoMarcado() { return sensor->Alterado; }
    void DesmarcaDono() { sensor->Alterado = false; }

    const std::string Nome = "COAfericoes";
    const std::string Carregamento = "COAfericoes.Carrega";
    const std::string Enche = "COAfericoes.CarregaAfericoes";
    const std::string ItemMenu = "COAfericoes.ItemMenuClicado";
    const std::string Detalhe = "COAfericoes.Detalhes";
    const std::string Janela = "frmEquipAfericoes";
    const std::string Pergunta = "Confirma a exclusão desta aferição?";
    const std::string Colecao = "clsListaAfericoes";
    const std::string Letra = "A";
    const std::string Campo = "txtNroINMETRO";
    const std::int32_t ColunaChave = 6;
    const double MenorSalvo = 0.5;
    const bool MarcaDono = true;
    Ref<clsSensor> sensor;
    Conexao alterado;
    int alteracoes = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(COAfericoes, ControladorDeLista, COAfericoes_test);
INSTANTIATE_TYPED_TEST_SUITE_P(COAfericoes, ControladorDeColecao, COAfericoes_test);

TEST_F(COAfericoes_test, Carrega_KindsAndInactiveOnes_RowsOfTheActiveOnesInListOrder)
{
    Ref<clsAfericao> declaracao = PoeAfericao(sensor, 1, "05/03/2026", "09/11/2026");
    declaracao->TipoAfer = 2;
    declaracao->Numero = "";
    declaracao->Marca = "555";
    PoeAfericao(sensor, 2, "01/01/2020", "31/12/2020")->Ativo = false;
    PoeAfericao(sensor, 3, "01/02/2024", "28/02/2025")->TipoAfer = 0; // anything but 2 is of the first kind
    PoeAfericao(sensor, 4, "01/02/2024", "28/02/2025");

    EXPECT_TRUE(Carrega(lista));

    ASSERT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(Linha(lista, 1), (Textos{"Decl.Conf.", "", "555", "05/03/2026", "09/11/2026", "A1"}));
    EXPECT_EQ(Linha(lista, 2), (Textos{"Aferição", "1234", "99", "01/02/2024", "28/02/2025", "A3"}));
    EXPECT_EQ(Linha(lista, 3), (Textos{"Aferição", "1234", "99", "01/02/2024", "28/02/2025", "A4"})); // equal dates
    EXPECT_EQ(Quantos(), 4);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

TEST_F(COAfericoes_test, Carrega_OnlyInactiveOnes_EmptyListAndOnlyNovo)
{
    PoeRegistro(2, "item")->Ativo = false;
    EXPECT_TRUE(Carrega(lista));
    EXPECT_EQ(lista->NroItens(), 0);
    lista->GotFocus().dispara();
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
}

// The one thing that a cancelled form leaves behind.
TEST_F(COAfericoes_test, Novo_CancelledAfterARecalculation_TheShortenedPeriodStaysAndTheSensorsFlagToo)
{
    PoeAfericao(sensor, 1, "01/01/2026", "31/12/2026");
    Carrega(lista);
    host->AoMostrarModal(Janela, [&](Pessoa &p) {
        EXPECT_EQ(Caption(p, "lblNroSensor"), "1");
        PreencheAfericao(p, "777", "01/06/2026", "01/06/2027");
        host->Responde(
            "Data de verificação do INMETRO (01/06/2026) em conflito com a \r\naferição dos dias 01/01/2026 e "
            "31/12/2026.\r\n\r\nDeseja continuar ?\r\n\r\nOBS: Caso continue, a data de vencimento da "
            "aferição em conflito será\r\nrecalculada automaticamente (um dia antes da nova data de "
            "verificação).",
            true);
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    });
    Comanda("Novo");

    EXPECT_EQ(Quantos(), 1);
    EXPECT_EQ(Item("A1")->DataVencimento, Dia("31/05/2026"));
    EXPECT_TRUE(Item("A1")->Alterado);
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
    EXPECT_EQ(Linha(lista, 1)[4], "31/12/2026"); // not loaded again
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "É obrigatório fazer Upload do Documento em PDF!");
}

// Out of sight, but its days are still held.
TEST_F(COAfericoes_test, Excluir_SavedCalibration_StillRefusesANewPeriod)
{
    PoeAfericao(sensor, 1, "01/03/2026", "31/12/2026");
    Carrega(lista);
    host->Responde(Pergunta, true);
    Comanda("Excluir", 1);
    host->AoMostrarModal(Janela, [&](Pessoa &p) {
        PreencheAfericao(p, "777", "01/01/2026", "01/04/2026");
        FAZ(p, Clica("cmdOK"));
        FAZ(p, Clica("cmdCancelar"));
    });
    Comanda("Novo");

    ASSERT_EQ(host->Tela->Caixas().size(), 1U);
    EXPECT_EQ(host->Tela->Caixas()[0].Texto,
              "Período da nova aferição em conflito com a aferição dos dias 01/03/2026 a 31/12/2026");
    EXPECT_EQ(Quantos(), 1);
}

// The sensor is marked only for a calibration that got into the list.
TEST_F(COAfericoes_test, Novo_CalibrationCannotBeAdded_NeitherFlagNorEvent)
{
    Carrega(lista);
    host->AoMostrarModal(Janela, [&](Pessoa &p) {
        Inclui(p);
        sensor->ListaAfericoes()->Finaliza(); // as the window closes
    });
    Comanda("Novo");
    EXPECT_TRUE(MostrouErro(1, ItemMenu, 91,
                            "ZTAVOREQUIP < clsListaAfericoes.Add < clsListaAfericoes.AddAfericao < COAfericoes.Novo"));
    EXPECT_FALSE(sensor->Alterado);
    EXPECT_EQ(alteracoes, 0);
}

} // namespace
