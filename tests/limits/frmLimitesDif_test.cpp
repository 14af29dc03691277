#include "limits/frmLimitesDif.h"

#include "controls/ztList.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/limits/Especies.h"
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

void Cancela(Pessoa &p)
{
    p.Clica("cmdCancelar");
}

void Fecha(Pessoa &p)
{
    p.Fecha();
}

// The rows of the list, their cells separated by "|".
Linhas NaLista(const Pessoa &p)
{
    const auto lista = p.Acha<ztList>("ztLista");
    Linhas linhas;
    for (std::int32_t linha = 1; linha <= lista->NroItens(); ++linha) {
        std::string texto = lista->TextoCelula(linha, 1);
        for (std::int32_t coluna = 2; coluna <= 6; ++coluna) {
            texto += "|" + lista->TextoCelula(linha, coluna);
        }
        linhas.push_back(texto);
    }
    return linhas;
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
    for (const Especie &especie : Especies) {
        SCOPED_TRACE(especie.Descr);
        host->LimpaRegistro();
        host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
            EXPECT_EQ(form->Caption(), especie.Descr + " [1234]");
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
        form->CarregaForm("1234", 12, especie.Tipo);
        const Linhas esperado{
            "Plataforma.Carrega(frmLimitesDif)",
            "EquiptoRN.ExecutaMetodo(\"" + especie.Lista + "\", *",
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
    for (const Especie &especie : Especies) {
        SCOPED_TRACE(especie.Descr);
        host->LimpaRegistro();
        host->RecusaOperacao(especie.Lista, "fora do ar");
        form->CarregaForm("1234", 12, especie.Tipo);
        EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"fora do ar\""), 1);
        EXPECT_FALSE(host->Contem("ObjInterface."));
        EXPECT_FALSE(host->Tela->EstaAberto(form));
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
        host->AoMostrarModal("frmLimitesDif", [&](Pessoa &p) {
            EXPECT_EQ(p.Acha<ztList>("ztLista")->Colunas().size(), 6U) << "as from the design";
            Fecha(p);
        });
        form->CarregaForm("1234", 12, especie.Tipo);
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
    EXPECT_TRUE(Lanca(70, "EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif < COSensores.Carrega",
                      [&] { form->CarregaForm("1234", 12, Limite.Tipo); }));
    EXPECT_EQ(host->Tela->Ponteiro(), 11); // whoever reports it sets it back
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    EXPECT_FALSE(host->Contem("ObjInterface."));
    Plataforma()->DefinePonteiro(PonteiroNormal);
    host->AoMostrarModal("frmLimitesDif", Fecha);
    form->CarregaForm("1234", 12, Limite.Tipo);
}

TEST_F(frmLimitesDifTeste, CarregaForm_WhenTheShowFails_RaisesAndUnloads)
{
    RespondeListas();
    host->FalhaEm("ObjInterface.MostraJanela");
    EXPECT_TRUE(
        Lanca(51, "ObjInterface.MostraJanela < Geral.FormShow", [&] { form->CarregaForm("1234", 12, Limite.Tipo); }));
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
    form->CarregaForm("1234", 12, Limite.Tipo);
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
    form->CarregaForm("1234", 12, Limite.Tipo);
    EXPECT_TRUE(host->Erros().empty());
}

// Three windows in one registry: what one kind stores, the other two do not show.
TEST_F(frmLimitesDifTeste, Window_OfEachKind_ShowsEachStepFromNewToDeactivated)
{
    struct {
        const Especie &Qual;
        Linhas Novas;
        Linhas Alteradas; // end and minimum speed of the first
        Linhas Restam;
    } const casos[] = {
        {Limite,
         {"Segunda|07:30|18:00|60 Km| |1", "Feriado|07:30|18:00|60 Km| |2"},
         {"Segunda|07:30|21:00|60 Km|50 Km|1", "Feriado|07:30|18:00|60 Km| |2"},
         {"Feriado|07:30|18:00|60 Km| |2"}},
        {DiaEspecifico, {"25/12/2026|07:30|18:00|60 Km| |1"}, {"24/12/2026|07:30|21:00|60 Km|50 Km|1"}, {}},
        {HorarioProibido,
         {"Segunda|07:30|18:00| | |3", "Feriado|07:30|18:00| | |4"},
         {"Segunda|07:30|21:00| | |3", "Feriado|07:30|18:00| | |4"},
         {"Feriado|07:30|18:00| | |4"}},
    };
    RegistroEmMemoria registro(*host);
    auto equipto = Novo<EquiptoED>();
    equipto->Codigo = "RAD-01";
    const std::int32_t nroIntEquip = registro.Poe(equipto);
    const auto naJanela = [&](const Especie &especie, const std::function<void(Pessoa &)> &roteiro) {
        SCOPED_TRACE(especie.Descr);
        host->AoMostrarModal("frmLimitesDif", roteiro);
        form->CarregaForm("RAD-01", nroIntEquip, especie.Tipo);
    };
    for (const auto &caso : casos) {
        naJanela(caso.Qual, [&](Pessoa &p) {
            EXPECT_EQ(NaLista(p), Linhas{});
            host->AoMostrarModal("frmLimitesDifDetalhes", [&](Pessoa &detalhe) {
                PreencheDois(detalhe, caso.Qual);
                EXPECT_TRUE(detalhe.Clica("ztCmdOK"));
            });
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjNovo"));
            EXPECT_EQ(NaLista(p), caso.Novas);

            EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
            host->AoMostrarModal("frmLimitesDifDetalhes", [&](Pessoa &detalhe) {
                EXPECT_TRUE(detalhe.Preenche("ztmHFinal", "2100"));
                EXPECT_EQ(detalhe.Preenche("ztdData", "24122026"), caso.Qual.DeUmaData());
                if (caso.Qual.ComVelocidade()) {
                    EXPECT_TRUE(detalhe.Abre("sstDados", 1));
                    EXPECT_TRUE(detalhe.Marca("chkVelocMin"));
                    EXPECT_TRUE(detalhe.Preenche("txtVelocMin", "50"));
                }
                EXPECT_TRUE(detalhe.Clica("ztCmdOK"));
            });
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
            EXPECT_EQ(NaLista(p), caso.Alteradas);

            EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
            auto detalhes = host->Tela->FormsAbertos("frmLimitesDifDetalhes");
            ASSERT_EQ(detalhes.size(), 1U);
            EXPECT_EQ(detalhes[0]->Caption(), "Detalhes do " + caso.Qual.Descr);
            EXPECT_TRUE(Pessoa(detalhes[0]).Clica("cmdCancelar"));

            host->Responde("Confirma a exclusão deste " + caso.Qual.Descr + "?", true);
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
            EXPECT_EQ(NaLista(p), caso.Restam);
            EXPECT_TRUE(p.Fecha());
        });
    }
    for (const auto &caso : casos) {
        naJanela(caso.Qual, [&](Pessoa &p) {
            EXPECT_EQ(NaLista(p), caso.Restam);
            EXPECT_TRUE(p.Fecha());
        });
    }
    EXPECT_EQ(registro.Limite(1)->Texto(), "LimiteDifED{NroInt=1, NroIntEquip=1, Dia=2, HoraInicio=730, HoraFim=2100, "
                                           "VelocPerm=60, VelocMin=50, Ativo=2, TipoLimite=1}");
    EXPECT_EQ(registro.Dia(1)->Texto(), "DiaEspecificoED{NroInt=1, NroIntEquip=1, Data=24/12/2026, HoraInicio=730, "
                                        "HoraFim=2100, VelocPerm=60, VelocMin=50, Ativo=2}");
    EXPECT_EQ(registro.Limite(4)->Texto(), "LimiteDifED{NroInt=4, NroIntEquip=1, Dia=8, HoraInicio=730, HoraFim=1800, "
                                           "VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2}");
}

} // namespace
