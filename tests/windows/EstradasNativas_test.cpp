#include "host/LimiteDifED.h"
#include "host/SensorED.h"
#include "shell/Especifica.h"
#include "tests/support/Estradas.h"
#include "tests/support/RegistroDoTexto.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/VarreduraRegistro.h"
#include "tests/tela/RuasDeTeste.h"
#include "tests/windows/Cortes.h"
#include "tests/windows/Fotografia.h"
#include "tests/windows/OperadorNativo.h"
#include "tests/windows/TelaDeTeste.h"

namespace nativo {

namespace {

// What is told once for every kind of window, in the native windows, over a registry in memory with one equipment.
class EstradasNativasTest : public TelaDeTeste {
  protected:
    void SetUp() override
    {
        TelaDeTeste::SetUp();
        host->Clientes = {{1, "Autoridade das Estradas de Rodagem"}, {2, "Autoridade das Estradas de Rodagem"}};
        host->Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\PADRAO.LAY", {});
        camada->Clientes = [] {
            return std::vector<ClienteOferecido>{{"Autoridade das Estradas de Rodagem", {"Norte", "Sul"}},
                                                 {"PREFEITURA", {}}};
        };
        janelas->Descarrega = [this](const Ref<IForm> &form) { host->Tela->Descarrega(form); };
        registro = std::make_unique<RegistroEmMemoria>(*host);
        numero = registro->Poe(EquiptoCalibrado("R", 2, "R100"));
        geral = ::LogaGeral(*host);
        host->Tela->Janelas = janelas;
    }
    void TearDown() override
    {
        host->Tela->FechaTudo();
        host->Tela->Janelas = nullptr;
        registro = nullptr;
        TelaDeTeste::TearDown();
    }
    // From the search window on. Empty when all was as expected.
    std::string Percorre(const Percurso &percurso)
    {
        EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
        return OperadorNativo::Percorre(*camada, percurso, "frmLista");
    }

    std::unique_ptr<RegistroEmMemoria> registro;
    std::int32_t numero = 0;
};

TEST_F(EstradasNativasTest, Equipment_InNativeWindows_IsFoundEditedAndSaved)
{
    const Ref<EquiptoED> guardado = registro->Equipamento(numero);
    guardado->Descricao = "Radar da entrada";
    guardado->Sensores.Valor()->Item(1)->LocalInfr = "Rua A";
    std::string naLista;
    EXPECT_EQ(Percorre(EstradaDeUmEquipamento(naLista)), "");
    EXPECT_EQ(naLista, "Radar da saída");
    EXPECT_EQ(registro->Equipamento(numero)->Descricao.Valor(), "Radar da saída");
    EXPECT_EQ(registro->Equipamento(numero)->Sensores.Valor()->Item(1)->LocalInfr.Valor(), "Rua B");
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(EstradasNativasTest, Search_InNativeWindows_BySomeCriteriaAndOrders)
{
    const Ref<EquiptoED> outro = EquiptoCalibrado("R", 2, "R200");
    outro->Descricao = "Antes de todos";
    registro->Poe(outro);
    registro->Equipamento(numero)->Descricao = "Radar da entrada";
    std::string descricoes;
    Percurso percurso;
    percurso.Janelas["frmLista"] = [&](PessoaNaTela &p) {
        p.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "");
        p.Localiza("ztlLista");
        p.OrdenaPor("ztlLista", 2);
        for (std::int32_t linha = 1; linha <= p.Linhas("ztlLista"); ++linha) {
            descricoes += p.Celula("ztlLista", linha, "Descrição") + ";";
        }
        p.Marca("chkInativos", -1);
        p.Fecha();
    };
    EXPECT_EQ(Percorre(percurso), "");
    EXPECT_EQ(descricoes, "Antes de todos;Radar da entrada;");
}

// Pictures of every window at work, and nothing in them is cut.
TEST_F(EstradasNativasTest, Windows_WithAllThatTheyShow_ShowItWhole)
{
    camada->Logradouros = Novo<RuasDeTeste>();
    const Ref<EquiptoED> guardado = registro->Equipamento(numero);
    guardado->CodMunic = Canoas;
    guardado->TemLimiteDif = 1;
    guardado->Descricao = "Avenida das Nações Unidas, sentido centro, em frente ao nº 1200";
    const Ref<SensorED> sensor = guardado->Sensores.Valor()->Item(1);
    sensor->CodLograd = 2;
    sensor->EndNro = 1200;
    sensor->EndCompl = "em frente ao posto de pedágio";
    sensor->EndCep = 92000020;
    sensor->LocalInfr = "Rua Benta, 1200, em frente ao posto de pedágio";
    for (int outro = 1; outro <= 49; ++outro) {
        registro->Poe(EquiptoCalibrado("R", 2, "R" + std::to_string(200 + outro)));
    }
    registro->PoeLimite(DoTexto<LimiteDifED>(
        "NroIntEquip=" + std::to_string(numero) +
        R"(, Dia=2, HoraInicio=600, HoraFim=2200, VelocPerm=40, VelocMin=0, Ativo=1, TipoLimite=1)"));
    const auto olha = [](PessoaNaTela &p, const std::string &nome) {
        dynamic_cast<OperadorNativo &>(p).Olha([&](HWND janela) {
            Fotografa(janela, "trabalho-" + nome);
            EXPECT_EQ(Cortes(janela), std::vector<std::string>()) << nome;
        });
    };
    Percurso percurso;
    percurso.Janelas["frmLista"] = [&](PessoaNaTela &p) {
        p.Localiza("ztlLista");
        p.ClicaLinha("ztlLista", 1);
        olha(p, "lista");
        p.EscolheMenu("ztlLista", "mnuZTLObjEditar");
        p.ClicaLinha("ztlLista", 1);
        p.EscolheMenu("ztlLista", "mnuZTLObjLimitesDif");
        p.Fecha();
    };
    percurso.Janelas["frmEquipDetalhes"] = [&](PessoaNaTela &p) {
        olha(p, "equipamento-0");
        p.Abre("sstDados", 1);
        olha(p, "equipamento-1");
        p.Abre("sstDados", 2);
        p.ClicaLinha("ztListaSensor", 1);
        olha(p, "equipamento-2");
        p.EscolheMenu("ztListaSensor", "mnuZTLObjEditar");
        p.Fecha();
    };
    percurso.Janelas["frmEquipSensores"] = [&](PessoaNaTela &p) {
        olha(p, "sensor-0");
        p.Abre("sstDados", 1);
        p.ClicaLinha("ztListaAfericao", 1);
        olha(p, "sensor-1");
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjEditar");
        p.Fecha();
    };
    percurso.Janelas["frmEquipAfericoes"] = [&](PessoaNaTela &p) {
        olha(p, "afericao");
        p.Fecha();
    };
    percurso.Janelas["frmLimitesDif"] = [&](PessoaNaTela &p) {
        olha(p, "limites");
        p.Fecha();
    };
    EXPECT_EQ(Percorre(percurso), "");
}

TEST_F(EstradasNativasTest, Person_WhoseActionCannotBeDone_IsTold)
{
    Percurso percurso;
    percurso.Janelas["frmLista"] = [](PessoaNaTela &p) { p.Clica("cmdOK"); }; // not to be used before a search
    EXPECT_NE(Percorre(percurso).find("\"&OK\" cannot be clicked"), std::string::npos);
}

} // namespace

} // namespace nativo
