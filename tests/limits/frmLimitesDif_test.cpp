#include "limits/frmLimitesDif.h"

#include "controls/ztList.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

constexpr std::int16_t Limite = 1;
constexpr std::int16_t DiaEspecifico = 2;
constexpr std::int16_t HorarioProibido = 3;

constexpr std::int16_t Tipos[] = {Limite, DiaEspecifico, HorarioProibido};
const std::string ListaPorTipo[] = {"", "listaLimiteDif", "listaDiaEspecifico", "listaLimiteDif"};
const std::string DescrPorTipo[] = {"", "Limite Diferenciado", "Dia Específico", "Horário Proibido"};

void Cancela(Pessoa &p)
{
    p.Clica("cmdCancelar");
}

void Fecha(Pessoa &p)
{
    p.Fecha();
}

// Fills a new row of a kind and saves it; of a limit or a prohibited hour, two days at once.
void PreencheNovo(Pessoa &p, std::int16_t tipo)
{
    if (tipo == DiaEspecifico) {
        p.Preenche("ztdData", "25122026");
    } else {
        p.Marca("chkDia", 2);
        p.Marca("chkDia", 8);
    }
    p.Preenche("ztmHInicial", "0700");
    p.Preenche("ztmHFinal", "0900");
    if (tipo != HorarioProibido) {
        p.Preenche("txtVelocPerm", "60");
    }
    p.Clica("ztCmdOK");
}

void AlteraHoraFinal(Pessoa &p)
{
    p.Preenche("ztmHFinal", "2100");
    p.Clica("ztCmdOK");
}

class frmLimitesDifTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
        form = Novo<frmLimitesDif>();
        host->LimpaRegistro();
    }
    void TearDown() override
    {
        form = nullptr;
        HostTeste::TearDown();
    }

    void RespondeListas()
    {
        for (const char *metodo : {"listaLimiteDif", "listaDiaEspecifico"}) {
            host->Servico("EquiptoRN", metodo, [](const auto &) { return Resposta(Novo<EquiptoED>()); });
        }
    }

    Ref<frmLimitesDif> form;
};

TEST_F(frmLimitesDifTeste, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmLimitesDif().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmLimitesDif().Desenho(), "tests/limits/dados/frmLimitesDif.desenho.txt"));
}

TEST_F(frmLimitesDifTeste, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    const auto carregada = SoCarregada<frmLimitesDif>();
    EXPECT_TRUE(RetratoIgual(carregada, "tests/limits/dados"));
    EXPECT_EQ(Pessoa(carregada).Acha<ztList>("ztLista")->Colunas().size(), 1U);
}

TEST_F(frmLimitesDifTeste, CarregaForm_OfEachKind_SearchesAndThenShowsTheWindowModally)
{
    RespondeListas();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
            EXPECT_EQ(form->Caption(), DescrPorTipo[tipo] + " [1234]");
            EXPECT_EQ(p.Acha<ztList>("ztLista")->Colunas().size(), 6U);
            EXPECT_FALSE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
            EXPECT_FALSE(p.EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
            EXPECT_FALSE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
            host->AoMostrarModal("frmLimitesDifDetalhes", [](Pessoa &detalhe) {
                EXPECT_EQ(detalhe.Acha("lblCodEquip")->Caption(), "1234");
                Cancela(detalhe);
            });
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjNovo"));
            Fecha(p);
        });
        form->CarregaForm("1234", 12, tipo);
        const Linhas esperado{
            "Plataforma.Carrega(frmLimitesDif)",
            "EquiptoRN.ExecutaMetodo(\"" + ListaPorTipo[tipo] + "\", *",
            "ObjInterface.MostraJanela(frmLimitesDif, modal=True)",
            "Plataforma.Carrega(frmLimitesDifDetalhes)",
            "ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=True)",
        };
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Carrega", "EquiptoRN.ExecutaMetodo", "ObjInterface."}),
                                  esperado));
        EXPECT_FALSE(host->Tela->EstaAberto(form));
    }
}

TEST_F(frmLimitesDifTeste, CarregaForm_WhenTheFirstSearchIsRefused_ShowsNoWindow)
{
    RespondeListas();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        host->RecusaOperacao(ListaPorTipo[tipo], "fora do ar");
        form->CarregaForm("1234", 12, tipo);
        EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"fora do ar\""), 1);
        EXPECT_FALSE(host->Contem("ObjInterface."));
        EXPECT_FALSE(host->Tela->EstaAberto(form));
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
        host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
            EXPECT_EQ(p.Acha<ztList>("ztLista")->Colunas().size(), 6U) << "as from the design";
            Fecha(p);
        });
        form->CarregaForm("1234", 12, tipo);
    }
}

TEST_F(frmLimitesDifTeste, CarregaForm_OfAnUnknownTipo_ShowsNoWindow)
{
    form->CarregaForm("1234", 12, 4);
    EXPECT_FALSE(host->Contem("ObjInterface."));
    EXPECT_FALSE(host->Contem("EquiptoRN."));
    EXPECT_FALSE(host->Tela->EstaAberto(form));
}

TEST_F(frmLimitesDifTeste, CarregaForm_WhenTheSearchFails_RaisesUnderTheHourglassWithoutAWindow)
{
    RespondeListas();
    host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
    const Falha falha = FalhaLancada([&] { form->CarregaForm("1234", 12, Limite); });
    EXPECT_EQ(falha.Fonte, "EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif < COSensores.Carrega");
    EXPECT_EQ(host->Tela->Ponteiro(), 11);
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    EXPECT_FALSE(host->Contem("ObjInterface."));
    try {
        throw falha;
    } catch (...) { // as the caller reports it
        gSubMostraErro("COEquipamentos.LimitesDiferenciados");
    }
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
    EXPECT_EQ(host->Erros().size(), 1U);
    host->AoMostrarModal("frmLimitesDif", Fecha);
    form->CarregaForm("1234", 12, Limite);
}

TEST_F(frmLimitesDifTeste, CarregaForm_WhenTheShowFails_RaisesAndUnloads)
{
    RespondeListas();
    host->FalhaEm("ObjInterface.MostraJanela", 1, 70, "negado");
    EXPECT_EQ(FalhaLancada([&] { form->CarregaForm("1234", 12, Limite); }).Fonte,
              "ObjInterface.MostraJanela < Geral.FormShow");
    EXPECT_FALSE(host->Tela->EstaAberto(form));
}

TEST_F(frmLimitesDifTeste, Window_Closed_LeavesAListThatNobodyAnswers)
{
    RespondeListas();
    Ref<ztList> lista;
    host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
        lista = p.Acha<ztList>("ztLista");
        Fecha(p);
    });
    form->CarregaForm("1234", 12, Limite);
    host->LimpaRegistro();
    lista->ItemMenuClicado().dispara("mnuZTLObjNovo");
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(frmLimitesDifTeste, Window_ClosedWhileItsQuestionIsAnswered_HarmsNothing)
{
    RegistroEmMemoria registro(*host);
    auto limite = Novo<LimiteDifED>();
    limite->NroIntEquip = 12;
    limite->TipoLimite = 1;
    limite->Dia = 1;
    registro.PoeLimite(limite);
    host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
        host->Servico("EquiptoRN", "desativaLimiteDif", [&](const auto &) {
            Plataforma()->Descarrega(form);
            return Resposta();
        });
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        host->Responde("Confirma a exclusão deste Limite Diferenciado?", true);
        p.EscolheMenu("ztLista", "mnuZTLObjExcluir");
    });
    form->CarregaForm("1234", 12, Limite);
    EXPECT_TRUE(host->Erros().empty());
}

// Journeys.

class JornadaLimitesTeste : public frmLimitesDifTeste {
  protected:
    void SetUp() override
    {
        frmLimitesDifTeste::SetUp();
        auto equipto = Novo<EquiptoED>();
        equipto->Codigo = "RAD-01";
        nroIntEquip = registro.Poe(equipto);
    }

    void NaJanela(std::int16_t tipo, const std::function<void(Pessoa &)> &roteiro)
    {
        host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
            roteiro(p);
            EXPECT_TRUE(p.Fecha());
        });
        form->CarregaForm("RAD-01", nroIntEquip, tipo);
    }
    void Escolhe(Pessoa &p, const std::string &item, const std::function<void(Pessoa &)> &roteiro)
    {
        host->AoMostrarModal("frmLimitesDifDetalhes", roteiro);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObj" + item));
    }
    static Linhas Coluna(const Pessoa &p, const std::string &coluna)
    {
        auto lista = p.Acha<ztList>("ztLista");
        Linhas celulas;
        for (std::int32_t linha = 1; linha <= lista->NroItens(); ++linha) {
            celulas.push_back(lista->Celula(linha, coluna));
        }
        return celulas;
    }

    RegistroEmMemoria registro{*host};
    std::int32_t nroIntEquip = 0;
};

TEST_F(JornadaLimitesTeste, Limits_FromNewToDeactivated_EachStepShowsInTheList)
{
    NaJanela(Limite, [&](Pessoa &p) {
        EXPECT_TRUE(Coluna(p, "Dia").empty());
        Escolhe(p, "Novo", [](Pessoa &detalhe) { PreencheNovo(detalhe, Limite); });
        EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"Segunda", "Feriado"}));
        EXPECT_EQ(Coluna(p, "Veloc. Perm."), (Linhas{"60 Km", "60 Km"}));
        EXPECT_EQ(Coluna(p, "Veloc. Mín."), (Linhas{" ", " "}));

        EXPECT_TRUE(p.ClicaLinha("ztLista", 2));
        Escolhe(p, "Editar", [](Pessoa &detalhe) {
            EXPECT_TRUE(detalhe.Preenche("txtVelocPerm", "80"));
            EXPECT_TRUE(detalhe.Abre("sstDados", 1));
            EXPECT_TRUE(detalhe.Marca("chkVelocMin"));
            EXPECT_TRUE(detalhe.Preenche("txtVelocMin", "50"));
            EXPECT_TRUE(detalhe.Clica("ztCmdOK"));
        });
        EXPECT_EQ(Coluna(p, "Veloc. Perm."), (Linhas{"60 Km", "80 Km"}));
        EXPECT_EQ(Coluna(p, "Veloc. Mín."), (Linhas{" ", "50 Km"}));

        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
        auto detalhes = host->Tela->FormsAbertos("frmLimitesDifDetalhes");
        ASSERT_EQ(detalhes.size(), 1U);
        EXPECT_EQ(detalhes[0]->Caption(), "Detalhes do Limite Diferenciado");
        EXPECT_TRUE(Pessoa(detalhes[0]).Clica("cmdCancelar"));

        host->Responde("Confirma a exclusão deste Limite Diferenciado?", true);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"Feriado"}));
    });
    EXPECT_EQ(registro.Limite(1)->Texto(), "LimiteDifED{NroInt=1, NroIntEquip=1, Dia=2, HoraInicio=700, HoraFim=900, "
                                           "VelocPerm=60, VelocMin=0, Ativo=2, TipoLimite=1}");
    EXPECT_EQ(registro.Limite(2)->Texto(), "LimiteDifED{NroInt=2, NroIntEquip=1, Dia=8, HoraInicio=700, HoraFim=900, "
                                           "VelocPerm=80, VelocMin=50, Ativo=1, TipoLimite=1}");
}

TEST_F(JornadaLimitesTeste, SpecificDays_FromNewToDeactivated_EachStepShowsInTheList)
{
    NaJanela(DiaEspecifico, [&](Pessoa &p) {
        Escolhe(p, "Novo", [](Pessoa &detalhe) { PreencheNovo(detalhe, DiaEspecifico); });
        EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"25/12/2026"}));
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        Escolhe(p, "Editar", [](Pessoa &detalhe) {
            EXPECT_TRUE(detalhe.Preenche("ztdData", "24122026"));
            AlteraHoraFinal(detalhe);
        });
        EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"24/12/2026"}));
        EXPECT_EQ(Coluna(p, "Hora Fim"), (Linhas{"21:00"}));
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        host->Responde("Confirma a exclusão deste Dia Específico?", true);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        EXPECT_TRUE(Coluna(p, "Dia").empty());
    });
    EXPECT_EQ(registro.Dia(1)->Texto(), "DiaEspecificoED{NroInt=1, NroIntEquip=1, Data=24/12/2026, HoraInicio=700, "
                                        "HoraFim=2100, VelocPerm=60, VelocMin=0, Ativo=2}");
}

TEST_F(JornadaLimitesTeste, ProhibitedHours_FromNewToDeactivated_StayApartFromTheLimits)
{
    NaJanela(HorarioProibido, [&](Pessoa &p) {
        Escolhe(p, "Novo", [](Pessoa &detalhe) { PreencheNovo(detalhe, HorarioProibido); });
        EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"Segunda", "Feriado"}));
        EXPECT_EQ(Coluna(p, "Veloc. Perm."), (Linhas{" ", " "}));
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        Escolhe(p, "Editar", AlteraHoraFinal);
        EXPECT_EQ(Coluna(p, "Hora Fim"), (Linhas{"21:00", "09:00"}));
        EXPECT_TRUE(p.ClicaLinha("ztLista", 2));
        host->Responde("Confirma a exclusão deste Horário Proibido?", true);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    });
    EXPECT_EQ(registro.Limite(1)->Texto(), "LimiteDifED{NroInt=1, NroIntEquip=1, Dia=2, HoraInicio=700, HoraFim=2100, "
                                           "VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2}");
    NaJanela(Limite, [](Pessoa &p) { EXPECT_TRUE(Coluna(p, "Dia").empty()); });
    NaJanela(HorarioProibido, [](Pessoa &p) { EXPECT_EQ(Coluna(p, "Dia"), (Linhas{"Segunda"})); });
}

TEST_F(JornadaLimitesTeste, AnyKind_WhenTheServiceRefusesEachStep_CanBeTriedAgain)
{
    const std::string inclui[] = {"", "alteraListaLimitesDif", "adicionaDiaEspecifico", "alteraListaLimitesDif"};
    const std::string altera[] = {"", "alteraListaLimitesDif", "alteraDiaEspecifico", "alteraListaLimitesDif"};
    const std::string desativa[] = {"", "desativaLimiteDif", "desativaDiaEspecifico", "desativaLimiteDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        NaJanela(tipo, [&](Pessoa &p) {
            Escolhe(p, "Novo", [&](Pessoa &detalhe) {
                host->RecusaOperacao(inclui[tipo], "não");
                PreencheNovo(detalhe, tipo);
                EXPECT_TRUE(detalhe.Clica("ztCmdOK"));
            });
            const std::size_t linhas = tipo == DiaEspecifico ? 1 : 2;
            EXPECT_EQ(Coluna(p, "Dia").size(), linhas);
            EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
            Escolhe(p, "Editar", [&](Pessoa &detalhe) {
                host->RecusaOperacao(altera[tipo], "não");
                AlteraHoraFinal(detalhe);
                EXPECT_TRUE(detalhe.Clica("ztCmdOK"));
            });
            EXPECT_EQ(Coluna(p, "Hora Fim").front(), "21:00");
            EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
            host->RecusaOperacao(desativa[tipo], "não");
            for (bool recusada : {true, false}) {
                host->Responde("Confirma a exclusão deste " + DescrPorTipo[tipo] + "?", true);
                EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
                EXPECT_EQ(Coluna(p, "Dia").size(), recusada ? linhas : linhas - 1);
            }
        });
    }
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro"), 9);
}

} // namespace
