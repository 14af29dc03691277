#include "equipment/frmEquipDetalhes.h"

#include "controls/ztList.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"
#include "tests/equipment/CenarioEquipDetalhes.h"
#include "tests/support/RegistroEmMemoria.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

constexpr const char *Layout = "C:\\HOST\\LAYOUTS\\PADRAO.LAY";
constexpr const char *Certificado = "C:\\CERT.PDF";

void Incluir(Pessoa &p, const std::string &medidor, const std::string &tipo)
{
    p.Preenche("txtCodEquip", "EQ_9");
    p.Preenche("txtDescricao", "Nova");
    p.Preenche("txtModelo", "ACME");
    p.Escolhe("cboTipoMedidor", medidor);
    p.Escolhe("cboTipoEquip", tipo);
    p.Abre("sstDados", 1);
    p.Escolhe("cboMunic", "Agudo");
    p.Escolhe("cboArqLayout", "PADRAO");
    p.Preenche("txtVelocPerm", "60");
    p.Clica("optUrbana");
}

void InformaSensor(Pessoa &p)
{
    p.Preenche("txtLocalInfr", "Pista norte");
    p.Clica("cmdOK");
}

void InformaAfericao(Pessoa &p)
{
    p.Preenche("txtNroINMETRO", "123");
    p.Preenche("txtDtVerifINMETRO", "01022026");
    p.Preenche("txtDtVencINMETRO", "31012027");
    p.Clica("cmdProcurar");
    p.Clica("cmdUpload");
    p.Clica("cmdOK");
}

std::int32_t AfericoesAtivas(const EquiptoED &equipto)
{
    std::int32_t ativas = 0;
    const ListaDe<AfericaoED> afericoes = equipto.Sensores.Valor()->Item(1)->Afericoes;
    for (std::int32_t i = 1; i <= afericoes->Count(); ++i) {
        ativas += afericoes->Item(i)->Ativo.Valor() == 1 ? 1 : 0;
    }
    return ativas;
}

class PercursoEquipDetalhesTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        host->Tela->Arquivos.Poe(Layout, {});
        host->Tela->Arquivos.Poe(Certificado, Bytes{'%', 'P', 'D', 'F'});
        LogaGeral();
        form = Novo<frmEquipDetalhes>();
    }
    void TearDown() override
    {
        form = nullptr;
        HostTeste::TearDown();
    }

    void Salva(Pessoa &p, const std::string &botao, bool inclusao = false)
    {
        host->Responde(inclusao ? "Confirma a inclusão?" : "Confirma a alteração?", true);
        EXPECT_TRUE(p.Clica(botao)) << p.Motivo();
    }

    RegistroEmMemoria registro{*host};
    Ref<frmEquipDetalhes> form;
};

TEST_F(PercursoEquipDetalhesTeste, Lombada_FromNewToDetails_KeepsItsSensors)
{
    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        Incluir(p, "Fixo", "Lombada");
        Salva(p, "ztCmdAplicar", true);
        EXPECT_TRUE(p.Abre("sstDados", 2));
        for (int i = 0; i < 2; ++i) {
            host->AoMostrarModal("frmEquipSensores", InformaSensor);
            EXPECT_TRUE(p.EscolheMenu("ztListaSensor", "mnuZTLObjNovo"));
        }
        Salva(p, "ztCmdOK");
    });
    EXPECT_TRUE(form->CarregaInclusao(false));
    const auto guardado = registro.Equipamento(1);
    ASSERT_FALSE(guardado.Nada());
    EXPECT_EQ(guardado->TipoEquip.Valor(), "L");
    EXPECT_EQ(guardado->TipoVia.Valor(), "U");
    EXPECT_EQ(guardado->VelocPermitida.Valor(), 60);
    ASSERT_EQ(guardado->Sensores.Valor()->Count(), 2);
    EXPECT_EQ(guardado->Sensores.Valor()->Item(2)->NroSensor.Valor(), 2);

    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_TRUE(p.ClicaLinha("ztListaSensor", 2));
        host->Responde("Confirma a exclusão deste sensor?", true);
        EXPECT_TRUE(p.EscolheMenu("ztListaSensor", "mnuZTLObjExcluir"));
        Salva(p, "ztCmdOK");
    });
    EXPECT_TRUE(form->CarregaEdicao(1, false));
    EXPECT_EQ(guardado->Sensores.Valor()->Item(2)->Ativo.Valor(), 2);

    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_EQ(p.Acha<IztList>("ztListaSensor")->NroItens(), 1);
        EXPECT_TRUE(p.Clica("cmdCancelar"));
    });
    Novo<frmEquipDetalhes>()->CarregaDetalhes(1, false);
}

TEST_F(PercursoEquipDetalhesTeste, EquipmentOfAnAgent_FromNewOn_KeepsItsCalibrationsOnSensor1)
{
    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        Incluir(p, "Portátil", "Operado por Agente");
        Salva(p, "ztCmdAplicar", true);
        EXPECT_TRUE(p.Abre("sstDados", 3));
        host->EscolheArquivo(Certificado);
        host->AoMostrarModal("frmEquipAfericoes", InformaAfericao);
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        Salva(p, "ztCmdOK");
    });
    EXPECT_TRUE(form->CarregaInclusao(false));
    const auto guardado = registro.Equipamento(1);
    ASSERT_EQ(guardado->Sensores.Valor()->Count(), 1);
    EXPECT_EQ(guardado->Sensores.Valor()->Item(1)->NroSensor.Valor(), 1);
    EXPECT_EQ(AfericoesAtivas(*guardado), 1);

    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_EQ(p.Acha<ztList>("ztListaAfericao")->TextoCelula(1, 2), "123");
        EXPECT_TRUE(p.ClicaLinha("ztListaAfericao", 1));
        host->Responde("Confirma a exclusão desta aferição?", true);
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        Salva(p, "ztCmdOK");
    });
    EXPECT_TRUE(form->CarregaEdicao(1, false));
    EXPECT_EQ(AfericoesAtivas(*guardado), 0);
}

TEST_F(PercursoEquipDetalhesTeste, Equipment_RefusedAtEachStep_IsSavedInTheEnd)
{
    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        Incluir(p, "Fixo", "Lombada");
        host->RecusaOperacao("inclui", "não");
        Salva(p, "ztCmdAplicar", true);
        Salva(p, "ztCmdAplicar", true);
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Marca("chkEntrelacada"));
        host->RecusaOperacao("altera", "não");
        Salva(p, "ztCmdAplicar");
        host->RecusaOperacao("consulta", "não");
        Salva(p, "ztCmdAplicar"); // saved, and not read again
        EXPECT_TRUE(p.Marca("chkPerfilMagnetico"));
        Salva(p, "ztCmdOK");
    });
    EXPECT_TRUE(form->CarregaInclusao(false));
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"não\""), 3);
    EXPECT_EQ(registro.Equipamentos().size(), 1U);
    EXPECT_EQ(registro.Equipamento(1)->TemImagemEntrelacada.Valor(), 1);
    EXPECT_EQ(registro.Equipamento(1)->TemPerfilMag.Valor(), 1);
}

TEST_F(PercursoEquipDetalhesTeste, Equipment_GoneMeanwhile_CannotBeOpened)
{
    EXPECT_FALSE(form->CarregaEdicao(5, false));
    form->CarregaDetalhes(5, false);
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"Equipamento não encontrado.\""), 2);
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

} // namespace
