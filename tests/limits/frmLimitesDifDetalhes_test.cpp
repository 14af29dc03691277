#include "limits/frmLimitesDifDetalhes.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/HostTeste.h"
#include "tests/support/NomesAcessiveis.h"
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

constexpr std::int16_t TiposComLimite[] = {Limite, HorarioProibido};
constexpr std::int16_t Tipos[] = {Limite, DiaEspecifico, HorarioProibido};

class frmLimitesDifDetalhesTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
        host->LimpaRegistro();
        form = Novo<frmLimitesDifDetalhes>();
    }
    void TearDown() override
    {
        form = nullptr;
        HostTeste::TearDown();
    }

    // Opens the form for new rows of equipment 12; the person does what the script says.
    bool Inclui(std::int16_t tipo, const std::function<void(Pessoa &)> &roteiro)
    {
        host->AoMostrarModal("frmLimitesDifDetalhes", roteiro);
        return form->CarregaInclusao(tipo, 12, "RAD-01");
    }
    // Opens it for row 7.
    bool Edita(std::int16_t tipo, const std::function<void(Pessoa &)> &roteiro)
    {
        host->AoMostrarModal("frmLimitesDifDetalhes", roteiro);
        return form->CarregaEdicao(tipo, "RAD-01", 7);
    }

    static Ref<LimiteDifED> NovoLimite(std::uint8_t dia = 3, std::int16_t velocMin = 40)
    {
        auto limite = Novo<LimiteDifED>();
        limite->NroInt = 7;
        limite->NroIntEquip = 34;
        limite->Dia = dia;
        limite->HoraInicio = 730;
        limite->HoraFim = 1805;
        limite->VelocPerm = 60;
        limite->VelocMin = velocMin;
        limite->Ativo = 1;
        limite->TipoLimite = 1;
        return limite;
    }
    static Ref<DiaEspecificoED> NovoDia(std::int16_t velocMin = 40)
    {
        auto dia = Novo<DiaEspecificoED>();
        dia->NroInt = 7;
        dia->NroIntEquip = 34;
        dia->Data = DataDe(5, 3, 2027);
        dia->HoraInicio = 5;
        dia->HoraFim = 2359;
        dia->VelocPerm = 80;
        dia->VelocMin = velocMin;
        return dia;
    }
    void RespondeLimite(const Ref<LimiteDifED> &limite)
    {
        host->Atende<LimiteDifED>("EquiptoRN", "consultaSimplesLimiteDif",
                                  [limite](const Ref<LimiteDifED> &) { return Resposta(limite); });
    }
    void RespondeDia(const Ref<DiaEspecificoED> &dia)
    {
        host->Atende<DiaEspecificoED>("EquiptoRN", "consultaSimplesDiaEspecifico",
                                      [dia](const Ref<DiaEspecificoED> &) { return Resposta(dia); });
    }
    // The service answers every read with a row and accepts every save.
    void AceitaTudo()
    {
        RespondeLimite(NovoLimite());
        RespondeDia(NovoDia());
        host->Servico("EquiptoRN", "alteraListaLimitesDif", [](const auto &) { return Resposta(); });
        host->Servico("EquiptoRN", "adicionaDiaEspecifico", [](const auto &) { return Resposta(); });
        host->Servico("EquiptoRN", "alteraDiaEspecifico", [](const auto &) { return Resposta(); });
    }

    // Fills a new row of the kind so that it can be saved.
    static void Preenche(Pessoa &p, std::int16_t tipo)
    {
        if (tipo == DiaEspecifico) {
            EXPECT_TRUE(p.Preenche("ztdData", "25/12/2026"));
        } else {
            EXPECT_TRUE(p.Marca("chkDia", 2));
        }
        EXPECT_TRUE(p.Preenche("ztmHInicial", "0730"));
        EXPECT_TRUE(p.Preenche("ztmHFinal", "1800"));
        if (tipo != HorarioProibido) {
            EXPECT_TRUE(p.Preenche("txtVelocPerm", "60"));
        }
    }
    static void Cancela(Pessoa &p) { EXPECT_TRUE(p.Clica("cmdCancelar")); }

    static std::int16_t Pagina(const Pessoa &p) { return p.Acha<ISSTab>("sstDados")->Tab(); }
    static std::int16_t Marcada(const Pessoa &p, const std::string &nome, std::int16_t indice = -1)
    {
        return p.Acha<ICheckBox>(nome, indice)->Value();
    }
    static std::string Texto(const Pessoa &p, const std::string &nome) { return p.Acha<IztMask>(nome)->Text(); }
    static bool Visivel(const Pessoa &p, const std::string &nome) { return p.Acha(nome)->Visible(); }

    // The record with which an operation was called, as the log has it.
    std::string Enviado(const std::string &metodo)
    {
        const std::string inicio = "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", ";
        const Linhas linhas = host->RegistroDe({inicio});
        if (linhas.size() != 1) {
            return "chamada " + std::to_string(linhas.size()) + " vezes";
        }
        return linhas.front().substr(inicio.size(), linhas.front().rfind(')') - inicio.size());
    }

    Ref<frmLimitesDifDetalhes> form;
};

// Screen.

TEST_F(frmLimitesDifDetalhesTeste, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmLimitesDifDetalhes().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmLimitesDifDetalhes().Desenho(), "tests/limits/dados/frmLimitesDifDetalhes.desenho.txt"));
}

TEST_F(frmLimitesDifDetalhesTeste, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    const auto carregada = SoCarregada<frmLimitesDifDetalhes>();
    EXPECT_TRUE(RetratoIgual(carregada, "tests/limits/dados"));
    Pessoa p(carregada);
    EXPECT_EQ(p.Acha<IztData>("ztdData")->Text(), "  /  /    ");
    for (const char *vazio : {"txtVelocPerm", "txtVelocMin"}) {
        EXPECT_EQ(Texto(p, vazio), "") << vazio;
    }
    for (const char *hora : {"ztmHInicial", "ztmHFinal"}) {
        EXPECT_EQ(p.Acha<IztMask>(hora)->Valor(), "") << hora;
    }
}

TEST_F(frmLimitesDifDetalhesTeste, Carrega_OfEachKindInEachMode_ShowsCaptionAndFramesOfTheKind)
{
    struct {
        std::int16_t Tipo;
        const char *Fim;
        bool Dias;
        bool Data;
        bool Veloc;
        bool Opcoes;
    } const casos[] = {
        {Limite, " Limite Diferenciado", true, false, true, true},
        {DiaEspecifico, " Dia Específico", false, true, true, true},
        {HorarioProibido, " Horário Proibido", true, false, false, false},
    };
    AceitaTudo();
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Fim);
        const auto confere = [&](Pessoa &p, const Ref<IForm> &janela, const std::string &inicio) {
            EXPECT_EQ(janela->Caption(), inicio + caso.Fim);
            EXPECT_EQ(p.Acha("lblCodEquip")->Caption(), "RAD-01");
            EXPECT_EQ(Visivel(p, "fraDiasSemana"), caso.Dias);
            EXPECT_EQ(Visivel(p, "fraData"), caso.Data);
            EXPECT_EQ(Visivel(p, "fraVelocPerm"), caso.Veloc);
            EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabVisible(0));
            EXPECT_EQ(p.Acha<ISSTab>("sstDados")->TabVisible(1), caso.Opcoes);
            EXPECT_EQ(p.Abre("sstDados", 1), caso.Opcoes);
            Cancela(p);
        };
        EXPECT_FALSE(Inclui(caso.Tipo, [&](Pessoa &p) { confere(p, form, "Novo"); }));
        EXPECT_FALSE(Edita(caso.Tipo, [&](Pessoa &p) { confere(p, form, "Editar"); }));
        auto detalhes = Novo<frmLimitesDifDetalhes>();
        detalhes->CarregaDetalhes(caso.Tipo, "RAD-01", 7);
        Pessoa p(detalhes);
        confere(p, detalhes, "Detalhes do");
    }
}

TEST_F(frmLimitesDifDetalhesTeste, SharedForm_OfAKindAfterAnother_ShowsNothingOfTheEarlierOpening)
{
    AceitaTudo();
    Edita(Limite, [](Pessoa &p) {
        EXPECT_EQ(Marcada(p, "chkVelocMin"), 1);
        EXPECT_TRUE(p.Abre("sstDados", 1));
        Cancela(p);
    });
    Inclui(HorarioProibido, [&](Pessoa &p) {
        EXPECT_EQ(form->Caption(), "Novo Horário Proibido");
        EXPECT_EQ(Pagina(p), 0);
        for (std::int16_t dia = 1; dia <= 8; ++dia) {
            EXPECT_EQ(Marcada(p, "chkDia", dia), 0) << dia;
            EXPECT_TRUE(p.Acha("chkDia", dia)->Enabled()) << dia;
        }
        EXPECT_EQ(p.Acha<IztMask>("ztmHInicial")->Valor(), "");
        EXPECT_EQ(Marcada(p, "chkVelocMin"), 0);
        EXPECT_EQ(Texto(p, "txtVelocMin"), "");
        Cancela(p);
    });
}

TEST_F(frmLimitesDifDetalhesTeste, sstDados_OfAnotherTab_EnablesTheFrameOfTheTabAlone)
{
    Inclui(Limite, [](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_TRUE(p.Acha("fraDados", 1)->Enabled());
        EXPECT_TRUE(p.Marca("chkVelocMin"));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_FALSE(p.Acha("fraDados", 1)->Enabled());
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "60"));
        Cancela(p);
    });
}

TEST_F(frmLimitesDifDetalhesTeste, Fields_OfThePerson_TakeDigitsUpToTheirLimits)
{
    Inclui(Limite, [](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "1a2345"));
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "123");
        EXPECT_TRUE(p.Preenche("ztmHInicial", "08:3x0"));
        EXPECT_EQ(Texto(p, "ztmHInicial"), "08:30");
        EXPECT_EQ(p.Acha<IztMask>("ztmHInicial")->Valor(), "0830");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_FALSE(p.Preenche("txtVelocMin", "40")) << "read-only at start";
        Cancela(p);
    });
}

TEST_F(frmLimitesDifDetalhesTeste, cmdAjuda_WhenClicked_DoesNothing)
{
    Inclui(Limite, [&](Pessoa &p) {
        const auto antes = host->Chamadas();
        EXPECT_TRUE(p.Clica("cmdAjuda"));
        EXPECT_EQ(host->Chamadas(), antes);
        EXPECT_TRUE(form->Visible());
        Cancela(p);
    });
}

// Opening.

TEST_F(frmLimitesDifDetalhesTeste, CarregaInclusao_WithoutAService_OpensEmptyAndModal)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        EXPECT_FALSE(Inclui(tipo, [&](Pessoa &p) {
            EXPECT_EQ(p.Acha<IztMask>("ztmHInicial")->Valor(), "");
            EXPECT_EQ(p.Acha<IztMask>("ztmHFinal")->Valor(), "");
            EXPECT_EQ(Texto(p, "txtVelocPerm"), "");
            EXPECT_EQ(Marcada(p, "chkVelocMin"), 0);
            EXPECT_TRUE(p.Acha("ztCmdOK")->Visible());
            EXPECT_TRUE(p.Acha("ztCmdOK")->Enabled());
            EXPECT_EQ(p.Acha("cmdCancelar")->Caption(), "&Cancelar");
            Cancela(p);
        }));
        EXPECT_TRUE(RegistroIgual(host->Registro(), Linhas{
                                                        "Plataforma.Carrega(frmLimitesDifDetalhes)",
                                                        "FormMDI.FecharEnviaRecebe(True)",
                                                        "Plataforma.Ponteiro := 0",
                                                        "Plataforma.ProcessaMensagens()",
                                                        "ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=True)",
                                                        "cGlobal.gsubSetaAutoModuloAtivo(\"ZTAVOREQUIP\")",
                                                        "Plataforma.Descarrega(frmLimitesDifDetalhes)",
                                                    }));
        EXPECT_FALSE(form->Visible());
    }
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfALimit_ReadsTheRowAndFixesItsDay)
{
    for (std::uint8_t dia = 1; dia <= 8; ++dia) {
        SCOPED_TRACE(int{dia});
        RespondeLimite(NovoLimite(dia));
        host->LimpaRegistro();
        EXPECT_FALSE(Edita(Limite, [&](Pessoa &p) {
            for (std::int16_t codigo = 1; codigo <= 8; ++codigo) {
                EXPECT_EQ(Marcada(p, "chkDia", codigo), codigo == dia ? 1 : 0) << codigo;
                EXPECT_FALSE(p.Clica("chkDia", codigo)) << codigo;
            }
            EXPECT_EQ(Texto(p, "ztmHInicial"), "07:30");
            EXPECT_EQ(Texto(p, "ztmHFinal"), "18:05");
            EXPECT_EQ(Texto(p, "txtVelocPerm"), "60");
            EXPECT_EQ(Marcada(p, "chkVelocMin"), 1);
            EXPECT_EQ(Texto(p, "txtVelocMin"), "40");
            EXPECT_FALSE(p.Acha<IztMask>("txtVelocMin")->ReadOnly());
            Cancela(p);
        }));
        EXPECT_TRUE(
            RegistroIgual(host->RegistroDe({"Plataforma.Ponteiro", "Gateway.", "EquiptoRN.", "ObjInterface."}),
                          Linhas{
                              "Plataforma.Ponteiro := 11",
                              "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                              "EquiptoRN.ExecutaMetodo(\"consultaSimplesLimiteDif\", LimiteDifED{NroInt=7}) -> True",
                              "EquiptoRN.ObtemRetorno()*",
                              "Plataforma.Ponteiro := 0",
                              "Plataforma.Ponteiro := 0",
                              "ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=True)",
                          }));
    }
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfAProhibitedHour_LeavesTheSpeedsAlone)
{
    RespondeLimite(NovoLimite());
    Edita(HorarioProibido, [](Pessoa &p) {
        EXPECT_EQ(Marcada(p, "chkDia", 3), 1);
        EXPECT_FALSE(p.Acha("chkDia", 4)->Enabled());
        EXPECT_EQ(Texto(p, "ztmHInicial"), "07:30");
        EXPECT_EQ(Texto(p, "ztmHFinal"), "18:05");
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "");
        EXPECT_EQ(Marcada(p, "chkVelocMin"), 0);
        EXPECT_EQ(Texto(p, "txtVelocMin"), "");
        Cancela(p);
    });
    EXPECT_EQ(Enviado("consultaSimplesLimiteDif"), "LimiteDifED{NroInt=7}");
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfASpecificDay_ReadsTheRowAndLeavesItsDateOpen)
{
    RespondeDia(NovoDia());
    Edita(DiaEspecifico, [](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztData>("ztdData")->Text(), "05/03/2027");
        EXPECT_EQ(Texto(p, "ztmHInicial"), "00:05");
        EXPECT_EQ(Texto(p, "ztmHFinal"), "23:59");
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "80");
        EXPECT_EQ(Marcada(p, "chkVelocMin"), 1);
        EXPECT_EQ(Texto(p, "txtVelocMin"), "40");
        EXPECT_TRUE(p.Preenche("ztdData", "06032027"));
        EXPECT_EQ(p.Acha<IztData>("ztdData")->Text(), "06/03/2027");
        Cancela(p);
    });
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Plataforma.Ponteiro", "Gateway.", "EquiptoRN."}),
        Linhas{
            "Plataforma.Ponteiro := 11",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(\"consultaSimplesDiaEspecifico\", DiaEspecificoED{NroInt=7}) -> True",
            "EquiptoRN.ObtemRetorno()*",
            "Plataforma.Ponteiro := 0",
            "Plataforma.Ponteiro := 0",
        }));
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfARowWithoutMinimumSpeed_LeavesTheBoxUncheckedAndSavesZero)
{
    AceitaTudo();
    RespondeLimite(NovoLimite(3, 0));
    RespondeDia(NovoDia(0));
    for (std::int16_t tipo : {Limite, DiaEspecifico}) {
        SCOPED_TRACE(tipo);
        EXPECT_TRUE(Edita(tipo, [](Pessoa &p) {
            EXPECT_EQ(Marcada(p, "chkVelocMin"), 0);
            EXPECT_EQ(Texto(p, "txtVelocMin"), "");
            EXPECT_TRUE(p.Acha<IztMask>("txtVelocMin")->ReadOnly());
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
    }
    EXPECT_EQ(Enviado("alteraListaLimitesDif"),
              "EquiptoED{ListaLimiteDif=[LimiteDifED{NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=730, HoraFim=1805, "
              "VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}]}");
    EXPECT_EQ(Enviado("alteraDiaEspecifico"), "DiaEspecificoED{NroInt=7, NroIntEquip=34, Data=05/03/2027, "
                                              "HoraInicio=5, HoraFim=2359, VelocPerm=80, VelocMin=0, Ativo=1}");
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfARowWithADayThatDoesNotExist_ReportsAndDoesNotOpen)
{
    for (std::uint8_t dia : {std::uint8_t{0}, std::uint8_t{9}}) {
        SCOPED_TRACE(int{dia});
        RespondeLimite(NovoLimite(dia));
        EXPECT_FALSE(form->CarregaEdicao(Limite, "RAD-01", 7));
        const auto &erro = host->Erros().back();
        EXPECT_EQ(erro.Numero, 9);
        EXPECT_EQ(erro.Contexto, "frmLimitesDifDetalhes.CarregaEdicao");
        EXPECT_EQ(erro.Fonte, "ZTAVOREQUIP < frmLimitesDifDetalhes.BuscaLimitesDif < frmLimitesDifDetalhes.MontaTela");
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
        EXPECT_FALSE(host->Tela->EstaAberto(form));
    }
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_WhenTheReadIsRefused_OpensEmptyWithTheDaysOpen)
{
    host->RecusaOperacao("consultaSimplesLimiteDif", "Limite não encontrado");
    Edita(Limite, [](Pessoa &p) {
        EXPECT_EQ(p.Acha("lblCodEquip")->Caption(), "RAD-01");
        for (std::int16_t dia = 1; dia <= 8; ++dia) {
            EXPECT_EQ(Marcada(p, "chkDia", dia), 0) << dia;
            EXPECT_TRUE(p.Acha("chkDia", dia)->Enabled()) << dia;
        }
        EXPECT_EQ(p.Acha<IztMask>("ztmHInicial")->Valor(), "");
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "");
        EXPECT_EQ(Marcada(p, "chkVelocMin"), 0);
        Cancela(p);
    });
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Ponteiro", "EquiptoRN.", "ObjInterface."}),
                              Linhas{
                                  "Plataforma.Ponteiro := 11",
                                  "EquiptoRN.ExecutaMetodo(\"consultaSimplesLimiteDif\", *",
                                  "EquiptoRN.MostraErro() -> \"Limite não encontrado\"",
                                  "Plataforma.Ponteiro := 0",
                                  "Plataforma.Ponteiro := 0",
                                  "ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=True)",
                              }));
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_WhenTheReadOfADayIsRefused_OpensEmpty)
{
    host->RecusaOperacao("consultaSimplesDiaEspecifico", "Dia não encontrado");
    Edita(DiaEspecifico, [](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztData>("ztdData")->Text(), "  /  /    ");
        EXPECT_EQ(p.Acha<IztMask>("ztmHFinal")->Valor(), "");
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "");
        Cancela(p);
    });
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"Dia não encontrado\""), 1);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_WhenTheServiceAnswersNothing_ReportsAndDoesNotOpen)
{
    RespondeLimite(nullptr);
    RespondeDia(nullptr);
    for (const auto &[tipo, busca] : {std::pair{Limite, "BuscaLimitesDif"}, std::pair{DiaEspecifico, "BuscaDiasEspec"},
                                      std::pair{HorarioProibido, "BuscaLimitesDif"}}) {
        SCOPED_TRACE(tipo);
        EXPECT_FALSE(form->CarregaEdicao(tipo, "RAD-01", 7));
        EXPECT_EQ(host->Erros().back().Numero, 91);
        EXPECT_EQ(host->Erros().back().Fonte,
                  std::string("ZTAVOREQUIP < frmLimitesDifDetalhes.") + busca + " < frmLimitesDifDetalhes.MontaTela");
    }
    EXPECT_EQ(host->Erros().size(), 3U);
    EXPECT_FALSE(host->Contem("ObjInterface.MostraJanela"));
}

TEST_F(frmLimitesDifDetalhesTeste, MontaTela_OfEachKind_FillsTheControlsInThisOrder)
{
    struct {
        std::int16_t Tipo;
        Linhas Molduras;
        Linhas Linha;
        bool ComDias;
        const char *Caption;
    } const casos[] = {
        {Limite,
         {"fraData"},
         {"chkDia(3)", "ztmHInicial", "ztmHFinal", "txtVelocPerm", "chkVelocMin", "txtVelocMin"},
         true,
         "Editar Limite Diferenciado"},
        {DiaEspecifico,
         {"fraDiasSemana"},
         {"ztdData", "ztmHInicial", "ztmHFinal", "txtVelocPerm", "chkVelocMin", "txtVelocMin"},
         false,
         "Editar Dia Específico"},
        {HorarioProibido,
         {"fraData", "fraVelocPerm", "sstDados"},
         {"chkDia(3)", "ztmHInicial", "ztmHFinal"},
         true,
         "Editar Horário Proibido"},
    };
    auto anotada = Novo<FormQueAnota<frmLimitesDifDetalhes>>();
    form = anotada;
    std::string captionNaBusca;
    const auto espia = [&](const auto &registro) {
        return [&captionNaBusca, this, registro](const auto &) {
            captionNaBusca = form->Caption();
            return Resposta(registro);
        };
    };
    host->Atende<LimiteDifED>("EquiptoRN", "consultaSimplesLimiteDif", espia(NovoLimite()));
    host->Atende<DiaEspecificoED>("EquiptoRN", "consultaSimplesDiaEspecifico", espia(NovoDia()));
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Tipo);
        anotada->Alterados.clear();
        Inclui(caso.Tipo, [&](Pessoa &p) {
            Linhas esperado = caso.Molduras;
            esperado.emplace_back("lblCodEquip");
            EXPECT_EQ(anotada->Alterados, esperado);
            Cancela(p);
        });

        Linhas esperado{"lblCodEquip"}; // by the entry point already
        esperado.insert(esperado.end(), caso.Molduras.begin(), caso.Molduras.end());
        esperado.insert(esperado.end(), caso.Linha.begin(), caso.Linha.end());
        for (int dia = 1; caso.ComDias && dia <= 8; ++dia) {
            esperado.push_back("chkDia(" + std::to_string(dia) + ")"); // disabled
        }
        anotada->Alterados.clear();
        Edita(caso.Tipo, [&](Pessoa &p) {
            EXPECT_EQ(anotada->Alterados, esperado);
            Cancela(p);
        });
        EXPECT_EQ(captionNaBusca, caso.Caption);

        anotada->Alterados.clear();
        anotada->CarregaDetalhes(caso.Tipo, "RAD-01", 7);
        esperado.insert(esperado.end(), {"ztCmdOK", "cmdCancelar"});
        ASSERT_GT(anotada->Alterados.size(), esperado.size());
        anotada->Alterados.resize(esperado.size()); // without what making it read-only changed
        EXPECT_EQ(anotada->Alterados, esperado);
        EXPECT_TRUE(Pessoa(anotada).Clica("cmdCancelar"));
    }
}

// Details.

TEST_F(frmLimitesDifDetalhesTeste, CarregaDetalhes_OfEachKind_ShowsTheRowReadOnlyWithoutModality)
{
    AceitaTudo();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        auto detalhes = Novo<frmLimitesDifDetalhes>();
        detalhes->CarregaDetalhes(tipo, "RAD-01", 7);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goMensagem.PreparaDetalhes", "ObjInterface."}),
                                  Linhas{"goMensagem.PreparaDetalhes(frmLimitesDifDetalhes)",
                                         "ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=False)"}));
        Pessoa p(detalhes);
        EXPECT_TRUE(detalhes->Visible());
        EXPECT_FALSE(Visivel(p, "ztCmdOK"));
        EXPECT_EQ(p.Acha("cmdCancelar")->Caption(), "&Fechar");
        EXPECT_FALSE(p.Preenche("ztmHInicial", "0900"));
        EXPECT_FALSE(p.Preenche("ztmHFinal", "0900"));
        EXPECT_FALSE(p.Preenche("txtVelocPerm", "90"));
        EXPECT_FALSE(p.Preenche("ztdData", "01012027"));
        EXPECT_FALSE(p.Clica("chkDia", 3));
        if (tipo != HorarioProibido) {
            EXPECT_TRUE(p.Abre("sstDados", 1));
            EXPECT_FALSE(p.Clica("chkVelocMin"));
            EXPECT_FALSE(p.Preenche("txtVelocMin", "90"));
            EXPECT_EQ(Texto(p, "txtVelocMin"), "40");
        }
        EXPECT_TRUE(p.Clica("cmdCancelar"));
        EXPECT_FALSE(host->Tela->EstaAberto(detalhes));
    }
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaDetalhes_OfSeveralRows_KeepsAWindowForEach)
{
    for (int minuto : {1, 2, 3}) {
        auto limite = NovoLimite();
        limite->HoraInicio = minuto;
        RespondeLimite(limite);
        Novo<frmLimitesDifDetalhes>()->CarregaDetalhes(Limite, "RAD-0" + std::to_string(minuto), minuto);
    }
    auto abertos = host->Tela->FormsAbertos("frmLimitesDifDetalhes");
    ASSERT_EQ(abertos.size(), 3U);
    EXPECT_EQ(Texto(Pessoa(abertos[0]), "ztmHInicial"), "00:01");
    EXPECT_EQ(Pessoa(abertos[1]).Acha("lblCodEquip")->Caption(), "RAD-02");
    EXPECT_EQ(Texto(Pessoa(abertos[2]), "ztmHInicial"), "00:03");
    EXPECT_TRUE(Pessoa(abertos[1]).Clica("cmdCancelar"));
    EXPECT_EQ(host->Tela->FormsAbertos("frmLimitesDifDetalhes"), (std::vector{abertos[0], abertos[2]}));
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaDetalhes_WhenTheReadIsRefused_OpensEmptyAndReadOnly)
{
    host->RecusaOperacao("consultaSimplesLimiteDif", "Limite não encontrado");
    form->CarregaDetalhes(Limite, "RAD-01", 7);
    Pessoa p(form);
    EXPECT_TRUE(form->Visible());
    EXPECT_FALSE(p.Clica("chkDia", 1));
    EXPECT_FALSE(p.Preenche("txtVelocPerm", "90"));
}

TEST_F(frmLimitesDifDetalhesTeste, OpenedAfterDetails_InEditMode_HasItsButtonsBack)
{
    AceitaTudo();
    form->CarregaDetalhes(Limite, "RAD-01", 7);
    EXPECT_TRUE(Pessoa(form).Clica("cmdCancelar"));
    EXPECT_TRUE(Edita(Limite, [&](Pessoa &p) {
        EXPECT_EQ(form->Caption(), "Editar Limite Diferenciado");
        EXPECT_TRUE(Visivel(p, "ztCmdOK"));
        EXPECT_EQ(p.Acha("cmdCancelar")->Caption(), "&Cancelar");
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "90"));
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
}

// Minimum speed.

TEST_F(frmLimitesDifDetalhesTeste, chkVelocMin_CheckedAndUnchecked_OpensAndEmptiesTheField)
{
    AceitaTudo();
    for (std::int16_t tipo : {Limite, DiaEspecifico}) {
        SCOPED_TRACE(tipo);
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            Preenche(p, tipo);
            EXPECT_TRUE(p.Abre("sstDados", 1));
            EXPECT_TRUE(p.Clica("chkVelocMin"));
            EXPECT_FALSE(p.Acha<IztMask>("txtVelocMin")->ReadOnly());
            EXPECT_TRUE(p.Preenche("txtVelocMin", "45"));
            EXPECT_TRUE(p.Clica("chkVelocMin"));
            EXPECT_EQ(Texto(p, "txtVelocMin"), "");
            EXPECT_TRUE(p.Acha<IztMask>("txtVelocMin")->ReadOnly());
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
    }
    EXPECT_EQ(Enviado("alteraListaLimitesDif"),
              "EquiptoED{ListaLimiteDif=[LimiteDifED{NroIntEquip=12, Dia=2, HoraInicio=730, HoraFim=1800, "
              "VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}]}");
    EXPECT_EQ(Enviado("adicionaDiaEspecifico"), "DiaEspecificoED{NroIntEquip=12, Data=25/12/2026, HoraInicio=730, "
                                                "HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1}");
}

TEST_F(frmLimitesDifDetalhesTeste, chkVelocMin_Click_ThatFails_IsReportedAndLeavesTheFormOpen)
{
    Inclui(Limite, [&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Marca("chkVelocMin"));
        EXPECT_TRUE(p.Preenche("txtVelocMin", "45"));
        Conexao falha = p.Acha<IztMask>("txtVelocMin")->Change().liga([] { throw Falha(70, "Fora", "negado"); });
        EXPECT_TRUE(p.Desmarca("chkVelocMin"));
        EXPECT_FALSE(p.Acha<IztMask>("txtVelocMin")->ReadOnly()) << "it is emptied before it is closed";
        EXPECT_TRUE(form->Visible());
        falha.desliga();
        Cancela(p);
    });
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmLimitesDifDetalhes.chkVelocMin_Click");
    EXPECT_EQ(host->Erros()[0].Numero, 70);
    EXPECT_EQ(host->Erros()[0].Fonte, "Fora");
}

// Validation.

// One check of the form: how a form that is otherwise right fails it.
struct Reprovacao {
    const char *Nome;
    std::vector<std::int16_t> Tipos;
    bool Edicao; // also outside inclusion
    std::function<void(Pessoa &)> Estraga;
    std::string Mensagem;
    std::int16_t Pagina;
    std::string Foco; // empty: none
};

void ApagaTexto(Pessoa &p, const std::string &nome)
{
    EXPECT_TRUE(p.Apaga(nome));
}

void PreencheTexto(Pessoa &p, const std::string &nome, const std::string &texto)
{
    EXPECT_TRUE(p.Preenche(nome, texto));
}

std::vector<Reprovacao> Reprovacoes()
{
    const std::vector<std::int16_t> todos{Limite, DiaEspecifico, HorarioProibido};
    const std::string inicialInvalida = "Informe uma hora inicial válida.";
    const std::string finalInvalida = "Informe uma hora final válida.";
    const std::string ordem = "Horário final deve ser maior que o horário inicial!";
    const auto inicial = [](const char *hora) { return [hora](Pessoa &p) { PreencheTexto(p, "ztmHInicial", hora); }; };
    const auto final = [](const char *hora) { return [hora](Pessoa &p) { PreencheTexto(p, "ztmHFinal", hora); }; };
    const auto data = [](const char *texto) { return [texto](Pessoa &p) { PreencheTexto(p, "ztdData", texto); }; };
    return {
        {"no date",
         {DiaEspecifico},
         true,
         [](Pessoa &p) { ApagaTexto(p, "ztdData"); },
         "Informe uma data válida.",
         0,
         "ztdData"},
        {"part of a date", {DiaEspecifico}, true, data("2512"), "Informe uma data válida.", 0, "ztdData"},
        {"no date of the calendar", {DiaEspecifico}, true, data("31022027"), "Informe uma data válida.", 0, "ztdData"},
        {"no day",
         {Limite, HorarioProibido},
         false,
         [](Pessoa &p) { EXPECT_TRUE(p.Desmarca("chkDia", 2)); },
         "Você deve selecionar no mínimo 1 (um) dia!",
         0,
         ""},
        {"no speed",
         {Limite, DiaEspecifico},
         true,
         [](Pessoa &p) { ApagaTexto(p, "txtVelocPerm"); },
         "Informe a velocidade permitida.",
         0,
         "txtVelocPerm"},
        {"no start", todos, true, [](Pessoa &p) { ApagaTexto(p, "ztmHInicial"); }, "Informe a hora inicial.", 0,
         "ztmHInicial"},
        {"start 24:00", todos, true, inicial("2400"), inicialInvalida, 0, "ztmHInicial"},
        {"start 12:60", todos, true, inicial("1260"), inicialInvalida, 0, "ztmHInicial"},
        {"start of three digits", todos, true, inicial("073"), inicialInvalida, 0, "ztmHInicial"},
        {"start of one digit", todos, true, inicial("7"), inicialInvalida, 0, "ztmHInicial"},
        {"no end", todos, true, [](Pessoa &p) { ApagaTexto(p, "ztmHFinal"); }, "Informe a hora final.", 0, "ztmHFinal"},
        {"end 24:00", todos, true, final("2400"), finalInvalida, 0, "ztmHFinal"},
        {"end 12:60", todos, true, final("1260"), finalInvalida, 0, "ztmHFinal"},
        {"end of two digits", todos, true, final("18"), finalInvalida, 0, "ztmHFinal"},
        {"end before start", todos, true,
         [](Pessoa &p) {
             PreencheTexto(p, "ztmHInicial", "0800");
             PreencheTexto(p, "ztmHFinal", "0759");
         },
         ordem, 0, "ztmHInicial"},
        {"over midnight", todos, true,
         [](Pessoa &p) {
             PreencheTexto(p, "ztmHInicial", "2200");
             PreencheTexto(p, "ztmHFinal", "0600");
         },
         ordem, 0, "ztmHInicial"},
        {"no minimum speed",
         {Limite, DiaEspecifico},
         true,
         [](Pessoa &p) {
             EXPECT_TRUE(p.Abre("sstDados", 1));
             EXPECT_TRUE(p.Marca("chkVelocMin"));
             EXPECT_TRUE(p.Apaga("txtVelocMin"));
             EXPECT_TRUE(p.Abre("sstDados", 0));
         },
         "Informe a velocidade mínima.",
         1,
         "txtVelocMin"},
    };
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfEachFailure_ShowsItsMessageOnItsTabWithItsFocus)
{
    AceitaTudo();
    RespondeLimite(NovoLimite(3, 0));
    RespondeDia(NovoDia(0));
    for (const Reprovacao &caso : Reprovacoes()) {
        for (std::int16_t tipo : caso.Tipos) {
            for (bool edicao : {false, true}) {
                if (edicao && !caso.Edicao) {
                    continue;
                }
                SCOPED_TRACE(std::string(caso.Nome) + ", tipo " + std::to_string(tipo) + (edicao ? ", edicao" : ""));
                const auto roteiro = [&](Pessoa &p) {
                    if (!edicao) {
                        Preenche(p, tipo);
                    }
                    caso.Estraga(p);
                    if (tipo != HorarioProibido) { // from the other tab
                        EXPECT_TRUE(p.Abre("sstDados", static_cast<std::int16_t>(1 - caso.Pagina)));
                    }
                    host->LimpaRegistro();
                    const std::size_t antes = host->Avisos().size();
                    EXPECT_TRUE(p.Clica("ztCmdOK"));
                    ASSERT_EQ(host->Avisos().size(), antes + 1);
                    EXPECT_EQ(host->Avisos().back().Texto, caso.Mensagem);
                    EXPECT_EQ(host->Avisos().back().Controle, caso.Foco);
                    EXPECT_EQ(Pagina(p), caso.Pagina);
                    EXPECT_EQ(form->ControleAtivo()->Nome(), caso.Foco.empty() ? "ztCmdOK" : caso.Foco);
                    EXPECT_FALSE(host->Contem("EquiptoRN."));
                    EXPECT_TRUE(form->Enabled());
                    EXPECT_TRUE(form->Visible());
                    Cancela(p);
                };
                EXPECT_FALSE(edicao ? Edita(tipo, roteiro) : Inclui(tipo, roteiro));
            }
        }
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfAnEmptyForm_TellsTheFailuresInTheirOrder)
{
    struct Remendo {
        std::string Mensagem; // what an OK says before the mend
        std::function<void(Pessoa &)> Mende;
    };
    const Remendo data{"Informe uma data válida.", [](Pessoa &p) { PreencheTexto(p, "ztdData", "25122026"); }};
    const Remendo dia{"Você deve selecionar no mínimo 1 (um) dia!",
                      [](Pessoa &p) { EXPECT_TRUE(p.Marca("chkDia", 8)); }};
    const Remendo veloc{"Informe a velocidade permitida.", [](Pessoa &p) { PreencheTexto(p, "txtVelocPerm", "0"); }};
    const Remendo horas[] = {
        {"Informe a hora inicial.", [](Pessoa &p) { PreencheTexto(p, "ztmHInicial", "2400"); }},
        {"Informe uma hora inicial válida.", [](Pessoa &p) { PreencheTexto(p, "ztmHInicial", "1000"); }},
        {"Informe a hora final.", [](Pessoa &p) { PreencheTexto(p, "ztmHFinal", "0960"); }},
        {"Informe uma hora final válida.", [](Pessoa &p) { PreencheTexto(p, "ztmHFinal", "0959"); }},
        {"Horário final deve ser maior que o horário inicial!",
         [](Pessoa &p) { PreencheTexto(p, "ztmHFinal", "1000"); }},
    };
    const Remendo minima{"Informe a velocidade mínima.", [](Pessoa &p) { PreencheTexto(p, "txtVelocMin", "0"); }};

    AceitaTudo();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        std::vector<Remendo> remendos{tipo == DiaEspecifico ? data : dia};
        if (tipo != HorarioProibido) {
            remendos.push_back(veloc);
        }
        remendos.insert(remendos.end(), std::begin(horas), std::end(horas));
        if (tipo != HorarioProibido) {
            remendos.push_back(minima);
        }
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            if (tipo != HorarioProibido) {
                EXPECT_TRUE(p.Abre("sstDados", 1));
                EXPECT_TRUE(p.Marca("chkVelocMin"));
            }
            for (const Remendo &remendo : remendos) {
                EXPECT_TRUE(p.Clica("ztCmdOK"));
                EXPECT_EQ(host->Avisos().back().Texto, remendo.Mensagem);
                remendo.Mende(p);
            }
            const std::size_t avisos = host->Avisos().size();
            EXPECT_TRUE(p.Clica("ztCmdOK"));
            EXPECT_EQ(host->Avisos().size(), avisos);
        }));
    }
    EXPECT_EQ(host->Avisos().size(), 8U + 8U + 6U);
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfAcceptablePeriods_AsksNothingMore)
{
    AceitaTudo();
    struct {
        const char *Inicial;
        const char *Final;
    } const periodos[] = {{"0800", "0800"}, {"0000", "2359"}, {"0000", "0000"}, {"2359", "2359"}, {"0959", "1000"}};
    for (const auto &periodo : periodos) {
        for (std::int16_t tipo : Tipos) {
            SCOPED_TRACE(std::string(periodo.Inicial) + " a " + periodo.Final + ", tipo " + std::to_string(tipo));
            EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
                Preenche(p, tipo);
                PreencheTexto(p, "ztmHInicial", periodo.Inicial);
                PreencheTexto(p, "ztmHFinal", periodo.Final);
                EXPECT_TRUE(p.Clica("ztCmdOK"));
            }));
        }
    }
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfADateInThePastAndSpeedsInAnyRelation_IsTrue)
{
    AceitaTudo();
    EXPECT_TRUE(Inclui(DiaEspecifico, [](Pessoa &p) {
        Preenche(p, DiaEspecifico);
        PreencheTexto(p, "ztdData", "01011990");
        PreencheTexto(p, "txtVelocPerm", "0");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Marca("chkVelocMin"));
        PreencheTexto(p, "txtVelocMin", "999");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("adicionaDiaEspecifico"), "DiaEspecificoED{NroIntEquip=12, Data=01/01/1990, HoraInicio=730, "
                                                "HoraFim=1800, VelocPerm=0, VelocMin=999, Ativo=1}");
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfADateWithATwoDigitYear_TakesTheWholeYear)
{
    AceitaTudo();
    EXPECT_TRUE(Inclui(DiaEspecifico, [](Pessoa &p) {
        Preenche(p, DiaEspecifico);
        PreencheTexto(p, "ztdData", "250127");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_NE(Enviado("adicionaDiaEspecifico").find("Data=25/01/2027"), std::string::npos);
}

// Saving.

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfANewLimitWithAllDays_SendsEightRowsInOneCall)
{
    AceitaTudo();
    for (std::int16_t tipo : TiposComLimite) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            Preenche(p, tipo);
            for (std::int16_t dia = 1; dia <= 8; ++dia) {
                EXPECT_TRUE(p.Marca("chkDia", dia));
            }
            if (tipo == Limite) {
                EXPECT_TRUE(p.Abre("sstDados", 1));
                EXPECT_TRUE(p.Marca("chkVelocMin"));
                PreencheTexto(p, "txtVelocMin", "45");
            }
            host->LimpaRegistro();
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
        std::string linhas;
        for (int dia = 1; dia <= 8; ++dia) {
            linhas += (linhas.empty() ? "" : ", ") + std::string("LimiteDifED{NroIntEquip=12, Dia=") +
                      std::to_string(dia) + ", HoraInicio=730, HoraFim=1800, " +
                      (tipo == Limite ? "VelocPerm=60, VelocMin=45, Ativo=1, TipoLimite=1}"
                                      : "VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2}");
        }
        EXPECT_TRUE(RegistroIgual(host->Registro(),
                                  Linhas{
                                      "Plataforma.Ponteiro := 11",
                                      "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                                      "EquiptoRN.ExecutaMetodo(\"alteraListaLimitesDif\", EquiptoED{ListaLimiteDif=[" +
                                          linhas + "]}) -> True",
                                      "Plataforma.Ponteiro := 0",
                                      "Plataforma.Descarrega(frmLimitesDifDetalhes)",
                                  }));
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfANewLimit_SendsTheCheckedDaysWithoutAKey)
{
    std::int32_t linhas = 0;
    host->Atende<EquiptoED>("EquiptoRN", "alteraListaLimitesDif", [&](const Ref<EquiptoED> &pedido) {
        const auto &limites = pedido->ListaLimiteDif.Valor();
        linhas = limites->Count();
        EXPECT_EQ(limites->Item(1)->Dia.Valor(), 1);
        EXPECT_EQ(limites->Item(2)->Dia.Valor(), 8);
        for (const char *chave : {"1", "8", "0", ""}) {
            EXPECT_THROW(limites->Item(std::string(chave)), Falha) << chave;
        }
        return Resposta();
    });
    EXPECT_TRUE(Inclui(Limite, [](Pessoa &p) {
        Preenche(p, Limite);
        EXPECT_TRUE(p.Desmarca("chkDia", 2));
        EXPECT_TRUE(p.Marca("chkDia", 8));
        EXPECT_TRUE(p.Marca("chkDia", 1));
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(linhas, 2);
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfAnEditedRow_SendsItWithItsNumbers)
{
    AceitaTudo();
    EXPECT_TRUE(Edita(Limite, [](Pessoa &p) {
        PreencheTexto(p, "ztmHFinal", "2000");
        PreencheTexto(p, "txtVelocPerm", "110");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("alteraListaLimitesDif"),
              "EquiptoED{ListaLimiteDif=[LimiteDifED{NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=730, HoraFim=2000, "
              "VelocPerm=110, VelocMin=40, Ativo=1, TipoLimite=1}]}");
    host->LimpaRegistro();
    EXPECT_TRUE(Edita(HorarioProibido, [](Pessoa &p) {
        PreencheTexto(p, "ztmHInicial", "0000");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("alteraListaLimitesDif"),
              "EquiptoED{ListaLimiteDif=[LimiteDifED{NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=0, HoraFim=1805, "
              "VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2}]}");
    EXPECT_TRUE(Edita(DiaEspecifico, [](Pessoa &p) {
        PreencheTexto(p, "ztdData", "06/03/2027");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("alteraDiaEspecifico"), "DiaEspecificoED{NroInt=7, NroIntEquip=34, Data=06/03/2027, "
                                              "HoraInicio=5, HoraFim=2359, VelocPerm=80, VelocMin=40, Ativo=1}");
    EXPECT_FALSE(host->Contem("EquiptoRN.ExecutaMetodo(\"adicionaDiaEspecifico\""));
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfANewDay_SendsItInOneCallAndFetchesNothing)
{
    AceitaTudo();
    EXPECT_TRUE(Inclui(DiaEspecifico, [&](Pessoa &p) {
        Preenche(p, DiaEspecifico);
        host->LimpaRegistro();
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        Linhas{
            "Plataforma.Ponteiro := 11",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(\"adicionaDiaEspecifico\", DiaEspecificoED{NroIntEquip=12, Data=25/12/2026, "
            "HoraInicio=730, HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1}) -> True",
            "Plataforma.Ponteiro := 0",
            "Plataforma.Descarrega(frmLimitesDifDetalhes)",
        }));
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_AfterAnEdit_OfANewRowCarriesNoNumber)
{
    AceitaTudo();
    Edita(Limite, Cancela);
    EXPECT_TRUE(Inclui(Limite, [](Pessoa &p) {
        Preenche(p, Limite);
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("alteraListaLimitesDif"),
              "EquiptoED{ListaLimiteDif=[LimiteDifED{NroIntEquip=12, Dia=2, HoraInicio=730, HoraFim=1800, "
              "VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}]}");
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheSaveIsRefused_KeepsTheFormOpenAndCanBeTriedAgain)
{
    AceitaTudo();
    const std::string metodos[] = {"alteraListaLimitesDif", "adicionaDiaEspecifico", "alteraListaLimitesDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        const std::string &metodo = metodos[tipo - 1];
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            Preenche(p, tipo);
            host->RecusaOperacao(metodo, "Horário em conflito");
            host->LimpaRegistro();
            EXPECT_TRUE(p.Clica("ztCmdOK"));
            EXPECT_TRUE(RegistroIgual(host->Registro(), Linhas{
                                                            "Plataforma.Ponteiro := 11",
                                                            "Gateway.CriaObjetoRN(*",
                                                            "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", *",
                                                            "EquiptoRN.MostraErro() -> \"Horário em conflito\"",
                                                            "Plataforma.Ponteiro := 0",
                                                        }));
            EXPECT_TRUE(form->Visible());
            EXPECT_TRUE(form->Enabled());
            EXPECT_EQ(Texto(p, "ztmHInicial"), "07:30");
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
    }
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaInclusao_CancelledAfterARefusedSave_IsFalseAndAsksNothing)
{
    EXPECT_FALSE(Inclui(Limite, [&](Pessoa &p) {
        Preenche(p, Limite);
        host->RecusaOperacao("alteraListaLimitesDif", "não");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
        Cancela(p);
    }));
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaInclusao_AfterASavedOne_IsFalseWhenCancelled)
{
    AceitaTudo();
    EXPECT_TRUE(Inclui(Limite, [](Pessoa &p) {
        Preenche(p, Limite);
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_FALSE(Inclui(Limite, Cancela));
    EXPECT_TRUE(Edita(Limite, [](Pessoa &p) { EXPECT_TRUE(p.Clica("ztCmdOK")); }));
    EXPECT_FALSE(Edita(Limite, Cancela));
}

TEST_F(frmLimitesDifDetalhesTeste, Window_ClosedByItsOwnButtonOrCancelled_AsksNothingWhateverWasTyped)
{
    for (bool fecha : {false, true}) {
        EXPECT_FALSE(Inclui(Limite, [&](Pessoa &p) {
            Preenche(p, Limite);
            EXPECT_TRUE(fecha ? p.Fecha() : p.Clica("cmdCancelar"));
        }));
    }
    EXPECT_TRUE(host->Tela->Perguntas().empty());
    EXPECT_FALSE(host->Contem("EquiptoRN."));
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhileItRuns_LocksTheForm)
{
    bool travada = false;
    host->Servico("EquiptoRN", "alteraListaLimitesDif", [&](const auto &) {
        travada = !form->Enabled();
        return Resposta();
    });
    EXPECT_TRUE(Inclui(Limite, [](Pessoa &p) {
        Preenche(p, Limite);
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_TRUE(travada);
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfALimitThatCouldNotBeRead_SendsWhatIsChecked)
{
    AceitaTudo();
    EXPECT_FALSE(Inclui(Limite, Cancela)); // its equipment must not travel with another one's row
    for (bool comDia : {false, true}) {
        host->LimpaRegistro();
        host->RecusaOperacao("consultaSimplesLimiteDif", "fora do ar");
        EXPECT_TRUE(Edita(Limite, [&](Pessoa &p) {
            PreencheTexto(p, "ztmHInicial", "0730");
            PreencheTexto(p, "ztmHFinal", "1800");
            PreencheTexto(p, "txtVelocPerm", "60");
            if (comDia) {
                EXPECT_TRUE(p.Marca("chkDia", 5));
            }
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
        EXPECT_EQ(Enviado("alteraListaLimitesDif"),
                  comDia ? "EquiptoED{ListaLimiteDif=[LimiteDifED{NroInt=7, NroIntEquip=0, Dia=5, HoraInicio=730, "
                           "HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}]}"
                         : "EquiptoED{ListaLimiteDif=[]}");
    }
    EXPECT_TRUE(host->Avisos().empty());
}

// Faults.

TEST_F(frmLimitesDifDetalhesTeste, EntryPoints_WhenTheReadFails_ReportOnceAndOpenNothing)
{
    for (std::int16_t tipo : Tipos) {
        for (bool detalhes : {false, true}) {
            SCOPED_TRACE(std::to_string(tipo) + (detalhes ? " detalhes" : " edicao"));
            host->LimpaRegistro();
            host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
            if (detalhes) {
                form->CarregaDetalhes(tipo, "RAD-01", 7);
            } else {
                EXPECT_FALSE(form->CarregaEdicao(tipo, "RAD-01", 7));
            }
            const auto &erro = host->Erros().back();
            EXPECT_EQ(erro.Contexto, "frmLimitesDifDetalhes.CarregaEdicao");
            EXPECT_EQ(erro.Numero, 70);
            EXPECT_EQ(erro.Descricao, "negado");
            EXPECT_EQ(erro.Fonte, std::string("EquiptoRN.ExecutaMetodo < frmLimitesDifDetalhes.") +
                                      (tipo == DiaEspecifico ? "BuscaDiasEspec" : "BuscaLimitesDif") +
                                      " < frmLimitesDifDetalhes.MontaTela");
            EXPECT_EQ(host->Conta("goMensagem.ExibeErro"), 1);
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_FALSE(host->Contem("ObjInterface.MostraJanela"));
            EXPECT_TRUE(host->Tela->FormsAbertos("frmLimitesDifDetalhes").empty());
        }
    }
    EXPECT_EQ(host->Erros().size(), 6U);
}

TEST_F(frmLimitesDifDetalhesTeste, EntryPoints_WhenTheShowFails_ReportUnderTheirNames)
{
    AceitaTudo();
    const auto falha = [&] { host->FalhaEm("ObjInterface.MostraJanela", 1, 5, "não mostra"); };
    falha();
    EXPECT_FALSE(form->CarregaInclusao(Limite, 12, "RAD-01"));
    falha();
    EXPECT_FALSE(form->CarregaEdicao(Limite, "RAD-01", 7));
    falha();
    form->CarregaDetalhes(Limite, "RAD-01", 7);
    ASSERT_EQ(host->Erros().size(), 3U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmLimitesDifDetalhes.CarregaInclusao");
    EXPECT_EQ(host->Erros()[1].Contexto, "frmLimitesDifDetalhes.CarregaEdicao");
    EXPECT_EQ(host->Erros()[2].Contexto, "frmLimitesDifDetalhes.CarregaEdicao");
    for (const auto &erro : host->Erros()) {
        EXPECT_EQ(erro.Fonte, "ObjInterface.MostraJanela < Geral.FormShow");
    }
    EXPECT_TRUE(host->Tela->FormsAbertos("frmLimitesDifDetalhes").empty());
    EXPECT_TRUE(Inclui(Limite, [](Pessoa &p) {
        Preenche(p, Limite);
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaInclusao_WhenMontaTelaFails_GrowsItsPath)
{
    class Recusada : public frmLimitesDifDetalhes {
        void DefineCaption(const std::string &valor) override
        {
            if (valor.starts_with("Novo")) {
                throw Falha(5, "Janela", "sem título");
            }
            frmLimitesDifDetalhes::DefineCaption(valor);
        }
    };
    EXPECT_FALSE(Novo<Recusada>()->CarregaInclusao(Limite, 12, "RAD-01"));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmLimitesDifDetalhes.CarregaInclusao");
    EXPECT_EQ(host->Erros()[0].Fonte, "Janela < frmLimitesDifDetalhes.MontaTela");
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheSaveFails_RaisesAndStaysOpenUnderTheHourglass)
{
    AceitaTudo();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            Preenche(p, tipo);
            host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
            const Falha falha = FalhaLancada([&] { p.Clica("ztCmdOK"); });
            EXPECT_EQ(falha.Numero, 70);
            EXPECT_EQ(falha.Fonte, std::string("EquiptoRN.ExecutaMetodo < frmLimitesDifDetalhes.") +
                                       (tipo == DiaEspecifico ? "SalvaDiaEspec" : "SalvaLimiteDif") +
                                       " < frmLimitesDifDetalhes.ztCmdOk_Click");
            EXPECT_EQ(host->Tela->Ponteiro(), 11);
            EXPECT_TRUE(form->Visible());
            EXPECT_TRUE(form->Enabled());
            EXPECT_TRUE(p.Clica("ztCmdOK"));
        }));
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
    }
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfAFormThatWasNotFilled_AsksForTheServiceAndSendsNothing)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        Inclui(tipo, [&](Pessoa &p) {
            if (tipo != DiaEspecifico) {
                EXPECT_TRUE(p.Marca("chkDia", 2));
            }
            host->LimpaRegistro();
            const Falha falha = FalhaLancada([&] { p.Acha<IztCommand>("ztCmdOK")->Click().dispara(); });
            EXPECT_EQ(falha.Numero, 13);
            EXPECT_EQ(falha.Fonte, std::string("ZTAVOREQUIP < frmLimitesDifDetalhes.") +
                                       (tipo == DiaEspecifico ? "SalvaDiaEspec" : "SalvaLimiteDif") +
                                       " < frmLimitesDifDetalhes.ztCmdOk_Click");
            EXPECT_TRUE(RegistroIgual(host->Registro(), Linhas{"Plataforma.Ponteiro := 11", "Gateway.CriaObjetoRN(*"}));
            Plataforma()->DefinePonteiro(PonteiroNormal);
            Cancela(p);
        });
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhoseFormCannotBeUnloaded_HasSaved)
{
    AceitaTudo();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        EXPECT_TRUE(Inclui(tipo, [&](Pessoa &p) {
            Preenche(p, tipo);
            host->FalhaEm("Plataforma.Descarrega", 1, 70, "negado");
            EXPECT_EQ(FalhaLancada([&] { p.Clica("ztCmdOK"); }).Fonte,
                      "Plataforma.Descarrega < frmLimitesDifDetalhes.ztCmdOk_Click");
            EXPECT_TRUE(form->Visible());
            Cancela(p);
        }));
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheMessageFails_RaisesAndDoesNotClick)
{
    Inclui(Limite, [&](Pessoa &p) {
        host->FalhaEm("goMensagem.ExibeMensagem", 1, 70, "negado");
        const Falha falha = FalhaLancada([&] { p.Clica("ztCmdOK"); });
        EXPECT_EQ(falha.Fonte, "goMensagem.ExibeMensagem < frmLimitesDifDetalhes.ValidouOk < "
                               "frmLimitesDifDetalhes.ztCmdOk_ValidaClick");
        EXPECT_FALSE(host->Contem("EquiptoRN."));
        EXPECT_TRUE(form->Enabled());
        Cancela(p);
    });
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, ValidaClick_WhenItFails_LeavesTheFlagAsItWas)
{
    Inclui(Limite, [&](Pessoa &p) {
        for (bool antes : {false, true}) {
            bool cancela = antes;
            host->FalhaEm("goMensagem.ExibeMensagem");
            EXPECT_EQ(FalhaLancada([&] { p.Acha<IztCommand>("ztCmdOK")->ValidaClick().dispara(cancela); }).Numero, 51);
            EXPECT_EQ(cancela, antes);
        }
        Cancela(p);
    });
}

TEST_F(frmLimitesDifDetalhesTeste, sstDados_Click_ThatFails_RaisesWithItsShortTail)
{
    Inclui(Limite, [&](Pessoa &p) {
        Conexao falha = ComoBase(p.Acha("fraDados", 1))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
        EXPECT_EQ(FalhaLancada([&] { p.Abre("sstDados", 1); }).Fonte, "Fora < sstDados_Click");
        EXPECT_TRUE(p.Acha("fraDados", 0)->Enabled()) << "the frame left is disabled last";
        falha.desliga();
        Cancela(p);
    });
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(frmLimitesDifDetalhesTeste, MontaTela_OfAKindThatIsNone_AddsNoEndingToTheCaption)
{
    EXPECT_FALSE(Inclui(4, [this](Pessoa &p) {
        EXPECT_EQ(form->Caption(), "Novo");
        EXPECT_TRUE(p.Clica("cmdCancelar"));
    }));
}

TEST_F(frmLimitesDifDetalhesTeste, Editing_OfAKindThatIsNone_ReadsAndSavesADayWithoutAskingForItsDate)
{
    AceitaTudo();
    EXPECT_TRUE(Edita(4, [this](Pessoa &p) {
        EXPECT_TRUE(p.Acha("fraDiasSemana")->Visible());
        EXPECT_FALSE(p.Acha("fraData")->Visible());
        PreencheTexto(p, "txtVelocPerm", "70");
        EXPECT_TRUE(p.Clica("ztCmdOK"));
    }));
    EXPECT_EQ(Enviado("consultaSimplesDiaEspecifico"), "DiaEspecificoED{NroInt=7}");
    EXPECT_NE(Enviado("alteraDiaEspecifico").find("VelocPerm=70"), std::string::npos);
}

} // namespace
