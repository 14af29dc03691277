#include "equipment/frmEquipDetalhes.h"

#include "controls/OptionButton.h"
#include "controls/ztList.h"
#include "shell/ModGeral.h"
#include "tests/equipment/CenarioEquipDetalhes.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/RegistroDoTexto.h"
#include "tests/support/UmControle.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;
using Acao = std::function<void(Pessoa &)>;

// An action of the person on one control, on an equipment of a type.
struct Mudanca {
    const char *Evento;
    const char *TipoEquip; // of the equipment; empty for a new one
    std::int16_t Pagina;
    Acao Faz;
};

class GravacaoEquipDetalhesTeste : public EquipDetalhesTeste {
  protected:
    static Ref<EquiptoED> ComSensor(const std::string &tipo, const std::string &membros = "")
    {
        return NovoED(tipo, Sensores(Sensor(51, 1, "Pista norte", Afericao(71, "N1"))) + ", " + membros);
    }

    // Opens this equipment, and the person ends with OK after what the script says.
    bool EditaComOK(const Ref<EquiptoED> &equipto, const Acao &roteiro)
    {
        host->LimpaRegistro();
        Responde(equipto);
        return Edita([&](Pessoa &p) {
            roteiro(p);
            Aplica(p, false, true, "ztCmdOK");
        });
    }
    // A new equipment of a type is filled, changed by the script, and applied.
    bool IncluiEAplica(
        const std::string &tipo, const Acao &roteiro = [](Pessoa &) {})
    {
        host->LimpaRegistro();
        return Inclui([&](Pessoa &p) {
            PreencheNovo(p, tipo);
            roteiro(p);
            Aplica(p, true);
            Fecha(p);
        });
    }
    // A script that changes the description.
    static Acao Descreve(const std::string &texto)
    {
        return [texto](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtDescricao", texto)); };
    }

    // Removes the one row of a list; its page is the current one.
    void Exclui(Pessoa &p, const std::string &lista, const std::string &pergunta)
    {
        EXPECT_TRUE(p.ClicaLinha(lista, 1));
        host->Responde(pergunta, true);
        EXPECT_TRUE(p.EscolheMenu(lista, "mnuZTLObjExcluir"));
    }
    void ExcluiSensor(Pessoa &p) { Exclui(p, "ztListaSensor", "Confirma a exclusão deste sensor?"); }
    void ExcluiAfericao(Pessoa &p) { Exclui(p, "ztListaAfericao", "Confirma a exclusão desta aferição?"); }

    // Every control that counts as a change, each by the event of which the person is told when it fails.
    std::vector<Mudanca> Mudancas()
    {
        const auto preenche = [](const char *campo) {
            return [campo](Pessoa &p) { EXPECT_TRUE(p.Preenche(campo, "5")) << campo; };
        };
        const auto clica = [](const char *controle) {
            return [controle](Pessoa &p) { EXPECT_TRUE(p.Clica(controle)) << controle; };
        };
        const auto escolhe = [](const char *combo, const char *texto) {
            return [combo, texto](Pessoa &p) { EXPECT_TRUE(p.Escolhe(combo, texto)) << combo; };
        };
        return {
            {"txtCodEquip_Change", "", 0, preenche("txtCodEquip")},
            {"txtSubCodEquip_Change", "C", 0, preenche("txtSubCodEquip")},
            {"txtDescricao_Change", "C", 0, preenche("txtDescricao")},
            {"cboTipoMedidor_Change", "", 0, escolhe("cboTipoMedidor", "Fixo")},
            {"txtModelo_Change", "C", 0, preenche("txtModelo")},
            {"cboArqLayout_Change", "C", 1, escolhe("cboArqLayout", "Antigo")},
            {"txtVelocPerm_Change", "C", 1, preenche("txtVelocPerm")},
            {"optUrbana_Click", "C", 1, clica("optUrbana")},
            {"optInfGeraBanco_Click", "M", 1, clica("optInfGeraBanco")},
            {"chkEntrelacada_Click", "C", 4, clica("chkEntrelacada")},
            {"chkPerfilMagnetico_Click", "C", 4, clica("chkPerfilMagnetico")},
            {"optTrabDiasDif_Click", "C", 4, [](Pessoa &p) { EXPECT_TRUE(p.Clica("optTrabDiasDif", 1)); }},
            {"chkRejeicaoAuto_Click", "C", 4, clica("chkRejeicaoAuto")},
            {"chkIncObsNotif_Click", "F", 4, clica("chkIncObsNotif")},
            {"txtObsNotif_Change", "F", 4, preenche("txtObsNotif")},
            {"m_COSensores_Alterado", "C", 2, [this](Pessoa &p) { ExcluiSensor(p); }},
            {"m_COAfericoes_Alterado", "A", 3, [this](Pessoa &p) { ExcluiAfericao(p); }},
        };
    }
    // Opens the form in the state that the change needs, on its page.
    void NaSituacao(const Mudanca &mudanca, const Acao &roteiro)
    {
        const std::string tipo = mudanca.TipoEquip;
        const auto comeca = [&](Pessoa &p) {
            if (mudanca.Pagina != 0) {
                EXPECT_TRUE(p.Abre("sstDados", mudanca.Pagina));
            }
            roteiro(p);
        };
        if (tipo.empty()) {
            Inclui(comeca);
            return;
        }
        const std::string evento = mudanca.Evento;
        // An observation that is emptied would tell of itself first.
        Responde(ComSensor(tipo, evento == "optTrabDiasDif_Click"   ? "TemLimiteDif=2"
                                 : evento == "chkIncObsNotif_Click" ? R"(txtObsNotif="")"
                                                                    : ""));
        Edita(comeca);
    }
};

// Noticing changes.

TEST_F(GravacaoEquipDetalhesTeste, Change_OfEachControl_EnablesTheButtonsOfTheMode)
{
    for (const Mudanca &mudanca : Mudancas()) {
        SCOPED_TRACE(mudanca.Evento);
        NaSituacao(mudanca, [&](Pessoa &p) {
            EXPECT_EQ(Botoes(p), BotoesDesligados);
            mudanca.Faz(p);
            EXPECT_EQ(Botoes(p), std::string(mudanca.TipoEquip).empty() ? SoAplicar : BotoesLigados);
            host->Responde(PerguntaDescarte, false);
            EXPECT_TRUE(p.Clica("cmdCancelar"));
            EXPECT_TRUE(form->Visible());
            Descarta(p);
        });
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Change_InInclusao_NeverEnablesOK)
{
    Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        EXPECT_TRUE(p.Clica("optUrbana"));
        EXPECT_TRUE(p.Clica("optRodovia"));
        p.Acha<ICheckBox>("chkEntrelacada")->DefineValue(1);
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(1);
        EXPECT_EQ(Botoes(p), SoAplicar);
        Descarta(p);
    });
}

TEST_F(GravacaoEquipDetalhesTeste, cboTipoEquipAndCboMunic_InInclusao_CountAsChanges)
{
    for (const Acao &muda : {Acao([](Pessoa &p) {
                                 p.Acha<IztCombo>("cboTipoEquip")->AdicionaItem("Caetano|C");
                                 EXPECT_TRUE(p.Escolhe("cboTipoEquip", "Caetano"));
                             }),
                             Acao([](Pessoa &p) { p.Acha<IztCombo>("cboMunic")->DefineValor("7"); })}) {
        Inclui([&](Pessoa &p) {
            muda(p);
            EXPECT_EQ(Botoes(p), SoAplicar);
            Descarta(p);
        });
    }
}

TEST_F(GravacaoEquipDetalhesTeste, cboRejeicao_Alone_IsNoChange)
{
    Responde(NovoED("C"));
    Edita([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));
        EXPECT_EQ(Valores(p, "cboRejeicao"), "31");
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p); // without a question
    });
}

TEST_F(GravacaoEquipDetalhesTeste, Person_LookingAtPagesAndLists_ChangesNothing)
{
    Responde(ComSensor("C"));
    Edita([](Pessoa &p) {
        for (std::int16_t pagina : {std::int16_t{1}, std::int16_t{2}, std::int16_t{4}}) {
            EXPECT_TRUE(p.Abre("sstDados", pagina));
        }
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_TRUE(p.ClicaLinha("ztListaSensor", 1));
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p);
    });
}

TEST_F(GravacaoEquipDetalhesTeste, Change_InDetails_DoesNotCount)
{
    Responde(NovoED("F"));
    Detalha([](Pessoa &p) {
        p.Acha<ITextBox>("txtDescricao")->DefineText("outra");
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(0);
        p.Acha<IztMask>("txtVelocPerm")->DefineText("1");
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p); // without a question
    });
}

TEST_F(GravacaoEquipDetalhesTeste, Change_ThatFails_IsReportedUnderTheEventOrRaised)
{
    std::vector<Mudanca> mudancas = Mudancas();
    const auto combo = [](const char *nome, const char *item, const char *valor) {
        return [=](Pessoa &p) {
            p.Acha<IztCombo>(nome)->AdicionaItem(item);
            p.Acha<IztCombo>(nome)->DefineValor(valor);
        };
    };
    mudancas.push_back({"cboMunic_Change", "", 0, combo("cboMunic", "Vila|77", "77")});
    mudancas.push_back({"cboTipoEquip_Change", "", 0, combo("cboTipoEquip", "Etilômetro|E", "E")});
    mudancas.push_back(
        {"optRodovia_Click", "", 0, [](Pessoa &p) { p.Acha<IOptionButton>("optRodovia")->DefineValue(true); }});
    for (const Mudanca &mudanca : mudancas) {
        const std::string evento = mudanca.Evento;
        SCOPED_TRACE(evento);
        NaSituacao(mudanca, [&](Pessoa &p) {
            Conexao falha =
                Estraga(p, *mudanca.TipoEquip == '\0' ? "ztCmdAplicar" : "ztCmdOK"); // the first that changes
            if (evento == "cboArqLayout_Change" || evento == "cboMunic_Change") {    // no handler of their own
                EXPECT_TRUE(Lanca(70, "Fora < frmEquipDetalhes.Change", [&] { mudanca.Faz(p); }));
                EXPECT_EQ(Erros(), Linhas{});
            } else {
                mudanca.Faz(p);
                EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes." + evento + ": 70 (Fora < frmEquipDetalhes.Change)"});
            }
            if (*mudanca.TipoEquip == '\0') { // the rule of the type had done so before its change counted
                EXPECT_EQ(p.Acha<ISSTab>("sstDados")->TabEnabled(1), evento == "cboTipoEquip_Change");
            }
            EXPECT_TRUE(form->Visible());
            falha.desliga();
            Descarta(p); // the record was changed first
        });
    }
}

TEST_F(GravacaoEquipDetalhesTeste, RuleEvents_WhenAControlFails_ReportUnderTheirNames)
{
    struct {
        const char *Evento;
        const char *Controle; // which fails
        const char *TipoEquip;
        Acao Faz;
    } const casos[] = {
        {"txtVelocPerm_Change", "lblTolerancia", "C",
         [](Pessoa &p) { p.Acha<IztMask>("txtVelocPerm")->DefineText("120"); }},
        {"optTrabDiasDif_Click", "lblTextoRejLimDif", "C",
         [](Pessoa &p) { p.Acha<IOptionButton>("optTrabDiasDif", 0)->DefineValue(true); }},
        {"chkIncObsNotif_Click", "txtObsNotif", "F",
         [](Pessoa &p) { p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(0); }},
        {"cboTipoEquip_Change", "fraLayout", "C",
         [](Pessoa &p) { p.Acha<IztCombo>("cboTipoEquip")->DefineValor("E"); }},
        {"chkRejeicaoAuto_Click", "lblRejeicao", "C",
         [](Pessoa &p) { p.Acha<ICheckBox>("chkRejeicaoAuto")->DefineValue(0); }},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Evento);
        const bool comRejeicao = std::string(caso.Controle) == "lblRejeicao"; // else it is no rule inside the rule
        Responde(NovoED(caso.TipoEquip, comRejeicao ? "" : "NroIntRejLimDif=0"));
        Edita([&](Pessoa &p) {
            const Conexao falha = Estraga(p, caso.Controle);
            caso.Faz(p);
            EXPECT_EQ(Erros(), Linhas{std::string("frmEquipDetalhes.") + caso.Evento + ": 70 (Fora)"});
            EXPECT_EQ(Botoes(p), BotoesDesligados) << "the rule stopped before it counted the change";
            if (std::string(caso.Controle) == "txtObsNotif") {
                EXPECT_EQ(Valores(p, "txtObsNotif"), "Obs. da via") << "it is locked before it is emptied";
            }
            Fecha(p);
        });
    }
}

// Validation.

struct Reprovacao {
    const char *Nome;
    std::string TipoEquip;
    Acao Estraga; // of a form that is otherwise right
    std::string Mensagem;
    std::int16_t Pagina;
    std::string Foco;
};

std::vector<Reprovacao> Reprovacoes()
{
    const auto apaga = [](const char *campo) { return [campo](Pessoa &p) { p.Acha<IztMask>(campo)->DefineText(""); }; };
    const auto apagaTexto = [](const char *campo) {
        return [campo](Pessoa &p) { p.Acha<ITextBox>(campo)->DefineText(""); };
    };
    const auto semEscolha = [](const char *combo) {
        return [combo](Pessoa &p) { p.Acha<IztCombo>(combo)->DefineIndiceAtual(-1); };
    };
    const auto veloc = [](const char *texto) {
        return [texto](Pessoa &p) { p.Acha<IztMask>("txtVelocPerm")->DefineText(texto); };
    };
    return {
        {"1", "C", apaga("txtCodEquip"), "Informe o código do equipamento!", 0, "txtCodEquip"},
        {"2", "C", apagaTexto("txtDescricao"), "Informe a descrição do equipamento!", 0, "txtDescricao"},
        {"3", "C", semEscolha("cboTipoMedidor"), "Informe o tipo de medidor!", 0, "cboTipoMedidor"},
        {"4", "C", semEscolha("cboTipoEquip"), "Informe o tipo de equipamento!", 0, "cboTipoEquip"},
        {"5", "C", apagaTexto("txtModelo"), "Informe a marca/modelo!", 0, "txtModelo"},
        {"6", "C", semEscolha("cboMunic"), "Informe o município!", 1, "cboMunic"},
        {"6 of another type", "V", semEscolha("cboMunic"), "Informe o município!", 1, "cboMunic"},
        {"7", "C", semEscolha("cboArqLayout"), "Informe o layout dos arquivos!", 1, "cboArqLayout"},
        {"7 of type M", "M", semEscolha("cboArqLayout"), "Informe o layout dos arquivos!", 1, "cboArqLayout"},
        {"8", "C", veloc(""), "Informe a velocidade permitida!", 1, "txtVelocPerm"},
        {"8 of type A", "A", veloc(""), "Informe a velocidade permitida!", 1, "txtVelocPerm"},
        {"9", "C", veloc("0"), "Informe uma velocidade permitida válida!", 1, "txtVelocPerm"},
        {"9 of more digits", "A", veloc("000"), "Informe uma velocidade permitida válida!", 1, "txtVelocPerm"},
        {"10", "C", semEscolha("cboRejeicao"), "Informe a rejeição.", 4, "cboRejeicao"},
        {"11", "F", [](Pessoa &p) { p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText(""); }, "Informe a observação.",
         4, "txtObsNotif"},
    };
}

TEST_F(GravacaoEquipDetalhesTeste, ValidouOk_OfEachFailureInEdicao_OpensItsPageAndTellsItOnce)
{
    for (const Reprovacao &caso : Reprovacoes()) {
        for (const char *botao : {"ztCmdOK", "ztCmdAplicar"}) {
            SCOPED_TRACE(std::string(caso.Nome) + ", " + botao);
            Responde(NovoED(caso.TipoEquip));
            EXPECT_FALSE(Edita([&](Pessoa &p) {
                caso.Estraga(p);
                EXPECT_TRUE(p.Preenche("txtDescricao", caso.Foco == "txtDescricao" ? "" : "nova"));
                if (caso.Pagina == 0) { // from another page
                    EXPECT_TRUE(p.Abre("sstDados", 1));
                }
                host->LimpaRegistro();
                const std::size_t antes = host->Avisos().size();
                EXPECT_TRUE(p.Clica(botao)) << p.Motivo();
                ASSERT_EQ(host->Avisos().size(), antes + 1);
                EXPECT_EQ(host->Avisos().back().Texto, caso.Mensagem);
                EXPECT_EQ(host->Avisos().back().Controle, caso.Foco);
                EXPECT_EQ(Pagina(p), caso.Pagina);
                EXPECT_EQ(form->ControleAtivo()->Nome(), caso.Foco);
                EXPECT_EQ(host->Registro(),
                          (Linhas{"goMensagem.ExibeMensagem(\"" + caso.Mensagem + "\", " + caso.Foco + ")"}));
                EXPECT_TRUE(form->Enabled());
                EXPECT_EQ(Botoes(p), BotoesLigados);
                Descarta(p);
            }));
        }
    }
}

TEST_F(GravacaoEquipDetalhesTeste, ValidouOk_OfAFormThatFailsEverything_TellsTheFailuresInTheirOrder)
{
    Responde(DoTexto<EquiptoED>(R"(NroIntEquip=7, NroIntRejLimDif=999, txtObsNotif="x")")); // 999: not offered any more
    AceitaSalvar();
    struct {
        const char *Mensagem;
        Acao Mende;
    } const remendos[] = {
        {"Informe o código do equipamento!", [](Pessoa &p) { p.Acha<IztMask>("txtCodEquip")->DefineText("E1"); }},
        {"Informe a descrição do equipamento!", [](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtDescricao", "d")); }},
        {"Informe o tipo de medidor!", [](Pessoa &p) { p.Acha<IztCombo>("cboTipoMedidor")->DefineValor("1"); }},
        {"Informe o tipo de equipamento!", [](Pessoa &p) { p.Acha<IztCombo>("cboTipoEquip")->DefineValor("C"); }},
        {"Informe a marca/modelo!", [](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtModelo", "m")); }},
        {"Informe o município!", [](Pessoa &p) { p.Acha<IztCombo>("cboMunic")->DefineValor("7"); }},
        {"Informe o layout dos arquivos!", [](Pessoa &p) { EXPECT_TRUE(p.Escolhe("cboArqLayout", "NENHUM")); }},
        {"Informe a velocidade permitida!", [](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtVelocPerm", "00")); }},
        {"Informe uma velocidade permitida válida!", [](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtVelocPerm", "1")); }},
        {"Informe a rejeição.", [](Pessoa &p) { EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 1)); }},
        {"Informe a observação.", [](Pessoa &p) { p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("obs"); }},
    };
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        p.Acha<IztMask>("txtVelocPerm")->DefineText("");
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("");
        EXPECT_TRUE(p.Clica("ztCmdAplicar"));
        for (const auto &remendo : remendos) {
            EXPECT_EQ(host->Avisos().back().Texto, remendo.Mensagem);
            remendo.Mende(p);
            if (&remendo != &remendos[std::size(remendos) - 1]) {
                EXPECT_TRUE(p.Clica("ztCmdAplicar"));
            }
        }
        EXPECT_EQ(host->Avisos().size(), std::size(remendos));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(host->Avisos().size(), std::size(remendos));
}

TEST_F(GravacaoEquipDetalhesTeste, ValidouOk_OfANewEquipmentOfEachType_AsksWhatTheTypeShows)
{
    const std::pair<std::string, Acao> exigencias[] = {
        {"Informe o município!", [](Pessoa &p) { EXPECT_TRUE(p.Escolhe("cboMunic", "Agudo")); }},
        {"Informe o layout dos arquivos!", [](Pessoa &p) { EXPECT_TRUE(p.Escolhe("cboArqLayout", "PADRAO")); }},
        {"Informe a velocidade permitida!", [](Pessoa &p) { EXPECT_TRUE(p.Preenche("txtVelocPerm", "60")); }},
    };
    struct {
        const char *Tipo;
        std::vector<std::size_t> Exige;
    } const casos[] = {{"C", {0, 1, 2}}, {"L", {0, 1, 2}}, {"P", {0, 1, 2}}, {"R", {0, 1, 2}}, {"X", {0, 1, 2}},
                       {"", {0, 1, 2}},  {"M", {0, 1}},    {"F", {0, 1}},    {"V", {0, 1}},    {"A", {2}},
                       {"E", {}},        {"U", {}},        {"B", {}}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Tipo);
        EXPECT_FALSE(Inclui([&](Pessoa &p) {
            EXPECT_TRUE(p.Preenche("txtCodEquip", "EQ_9"));
            EXPECT_TRUE(p.Preenche("txtDescricao", "Nova"));
            EXPECT_TRUE(p.Preenche("txtModelo", "ACME"));
            EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
            EscolheTipo(p, caso.Tipo);
            for (std::size_t exige : caso.Exige) {
                EXPECT_TRUE(p.Clica("ztCmdAplicar"));
                EXPECT_EQ(host->Avisos().back().Texto, exigencias[exige].first);
                exigencias[exige].second(p);
            }
            const std::size_t avisos = host->Avisos().size();
            Aplica(p, true, false);
            EXPECT_EQ(host->Avisos().size(), avisos);
            Descarta(p);
        }));
    }
}

TEST_F(GravacaoEquipDetalhesTeste, ValidouOk_InInclusao_DoesNotLookAtTheOptions)
{
    Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        p.Acha<ICheckBox>("chkRejeicaoAuto")->DefineValue(1);
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(1);
        Aplica(p, true, false); // straight to the question
        Descarta(p);
    });
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(GravacaoEquipDetalhesTeste, ValidaClick_ThatFails_IsReportedAndLeavesTheFlagAsItWas)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        p.Acha<ITextBox>("txtDescricao")->DefineText("");
        for (const auto &[botao, contexto] : {std::pair{"ztCmdOK", "frmEquipDetalhes.ztCmdOk_ValidaClick"},
                                              std::pair{"ztCmdAplicar", "frmEquipDetalhes.ztCmdAplicar_ValidaClick"}}) {
            for (bool antes : {false, true}) {
                host->FalhaEm("goMensagem.ExibeMensagem", 1, 70, "negado");
                bool cancela = antes;
                p.Acha<IztCommand>(botao)->ValidaClick().dispara(cancela);
                EXPECT_EQ(cancela, antes);
                EXPECT_EQ(Erros(), Linhas{std::string(contexto) + ": 70 (goMensagem.ExibeMensagem < "
                                                                  "frmEquipDetalhes.ValidouOk)"});
            }
        }
        host->FalhaEm("goMensagem.ExibeMensagem"); // the flag was false: on to the confirmation
        Aplica(p, false, false, "ztCmdOK");
        EXPECT_EQ(Erros().size(), 1U);
        Descarta(p);
    });
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_AfterTheCheckOfTheSpeedFailed_LeavesTheSpeedThatTheEquipmentHad)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        p.Acha<IztMask>("txtVelocPerm")->DefineText("0");
        host->FalhaEm("goMensagem.ExibeMensagem");
        host->LimpaRegistro();
        Aplica(p, false);
        EXPECT_EQ(Erros().size(), 1U);
        EXPECT_EQ(MembroEnviado("altera", "VelocPermitida"), "80");
        Fecha(p);
    });
}

// What is sent.

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfANewEquipment_AsksWritesSavesAndReadsAgain)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        EXPECT_TRUE(p.Clica("optUrbana"));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtSubCodEquip", "S1"));
        host->LimpaRegistro();
        Aplica(p, true);
        const Linhas esperado{
            "Plataforma.PerguntaSimNao(\"Confirma a inclusão?\", \"Atenção\", padrao=Sim) -> Sim",
            "Plataforma.Ponteiro := 11",
            "goDadosVor.ObtemOrgao()",
            "Orgao.CodCliente -> 2",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(\"inclui\", EquiptoED{ClienteInc=\"Autoridade das Estradas de Rodagem\", "
            "SetorInc=\"CENTRAL\", "
            "Codigo=\"EQ_9\", SubCodigo=\"S1\", Descricao=\"Nova\", CodMunic=7, TipoVia=\"U\", TipoEquip=\"C\", "
            "VelocPermitida=60, ArquivoLayout=\"PADRAO\", TemImagemEntrelacada=2, Modelo=\"ACME\", TemLimiteDif=2, "
            "TemPerfilMag=2, Ativo=2, TipoAgente=1}) -> True",
            "EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=7, *",
            "goMensagem.FormataData(20261120, 0) -> \"20/11/2026\"",
            "goMensagem.FormataHora(100000, 0) -> \"10:00:00\"",
            "Plataforma.Ponteiro := 0",
            "Gateway.CriaObjetoRN(*",
            "EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=7}) -> True",
            "EquiptoRN.ObtemRetorno() -> *",
            "goMensagem.FormataData(*",
            "goMensagem.FormataHora(*",
        };
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
        EXPECT_FALSE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
        Fecha(p);
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfANewEquipment_SendsNoneOfTheOptions)
{
    AceitaSalvar();
    EXPECT_TRUE(IncluiEAplica("F", [](Pessoa &p) {
        p.Acha<ICheckBox>("chkEntrelacada")->DefineValue(1);
        p.Acha<ICheckBox>("chkPerfilMagnetico")->DefineValue(1);
        p.Acha<IOptionButton>("optTrabDiasDif", 1)->DefineValue(true);
        p.Acha<ICheckBox>("chkRejeicaoAuto")->DefineValue(1);
        p.Acha<IztCombo>("cboRejeicao")->DefineIndiceAtual(0);
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(1);
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("obs");
    }));
    for (const char *indicador : {"TemImagemEntrelacada", "TemPerfilMag", "TemLimiteDif"}) {
        EXPECT_EQ(MembroEnviado("inclui", indicador), "2") << indicador;
    }
    EXPECT_EQ(MembroEnviado("inclui", "NroIntRejLimDif"), "");
    EXPECT_EQ(MembroEnviado("inclui", "txtObsNotif"), "");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_InEdicao_SendsTheOptions)
{
    AceitaSalvar();
    EXPECT_TRUE(EditaComOK(NovoED("C", "TemImagemEntrelacada=2, TemLimiteDif=2, NroIntRejLimDif=0"), [](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Marca("chkEntrelacada"));
        EXPECT_TRUE(p.Marca("chkPerfilMagnetico"));
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 1));
        EXPECT_TRUE(p.Marca("chkRejeicaoAuto"));
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("  obs  ");
    }));
    EXPECT_EQ(Enviado("altera"),
              "EquiptoED{NroIntEquip=7, ClienteInc=\"ESTADO\", SetorInc=\"NORTE\", Codigo=\"EQ_1\", SubCodigo=\"A.1\", "
              "Descricao=\"Saída da cidade\", CodMunic=120, TipoVia=\"R\", TipoEquip=\"C\", VelocPermitida=80, "
              "ArquivoLayout=\"PADRAO\", TemImagemEntrelacada=1, Modelo=\"ACME 3\", TemLimiteDif=1, TemPerfilMag=1, "
              "NroIntRejLimDif=31, Ativo=1, TipoAgente=1, txtObsNotif=\"  obs  \"}");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_InEdicao_SendsOfEachFieldWhatItSays)
{
    AceitaSalvar();
    for (const char *codigo : {"abc", "12 de Maio", "0", "-5", "1"}) {
        host->MDB->TabelaDe("Municipio").Linhas.push_back({codigo, std::string("Vila ") + codigo, "RS", 1});
    }
    const auto munic = [](const char *codigo) {
        return [codigo](Pessoa &p) {
            p.Acha<IztCombo>("cboMunic")->DefineValor(codigo);
            EXPECT_EQ(Valores(p, "cboMunic"), codigo);
        };
    };
    const auto layout = [](Pessoa &p) { p.Acha<IztCombo>("cboArqLayout")->DefineValor("Antigo"); };
    const auto veloc = [](const char *texto) {
        return [texto](Pessoa &p) {
            p.Acha<IztMask>("txtVelocPerm")->DefineText(texto);
            Descreve("x")(p);
        };
    };
    using Membros = std::vector<std::pair<const char *, const char *>>;
    struct {
        const char *Nome;
        Ref<EquiptoED> Equipto;
        Acao Faz;
        Membros Enviados; // empty: left unset
    } const casos[] = {
        {"texts are trimmed",
         NovoED("C"),
         [](Pessoa &p) {
             EXPECT_TRUE(p.Preenche("txtSubCodEquip", "B.2"));
             EXPECT_TRUE(p.Preenche("txtDescricao", "  Centro  da cidade "));
             EXPECT_TRUE(p.Preenche("txtModelo", " Novo modelo"));
         },
         {{"SubCodigo", "\"B.2\""}, {"Descricao", "\"Centro  da cidade\""}, {"Modelo", "\"Novo modelo\""}}},
        {"blanks pass and are saved empty",
         NovoED("C"),
         [](Pessoa &p) {
             EXPECT_TRUE(p.Preenche("txtDescricao", "   "));
             EXPECT_TRUE(p.Preenche("txtModelo", " "));
         },
         {{"Descricao", "\"\""}, {"Modelo", "\"\""}}},
        {"codes that no key types are sent as they were loaded",
         NovoED("C", R"(Codigo="fsc-0001/99 da série antiga", SubCodigo="Ç 7 - mais de vinte letras")"),
         [](Pessoa &p) {
             EXPECT_EQ(Valores(p, "txtCodEquip txtSubCodEquip"),
                       "fsc-0001/99 da série antiga|Ç 7 - mais de vinte letras");
             EXPECT_TRUE(p.Digita("txtSubCodEquip", "x")); // nothing comes in, and nothing goes
             Descreve("outra")(p);
         },
         {{"Codigo", "\"fsc-0001/99 da série antiga\""}, {"SubCodigo", "\"Ç 7 - mais de vinte letras\""}}},
        {"options taken back are left unset",
         NovoED("C"),
         [](Pessoa &p) {
             EXPECT_TRUE(p.Abre("sstDados", 4));
             EXPECT_TRUE(p.Desmarca("chkEntrelacada"));
             EXPECT_TRUE(p.Clica("optTrabDiasDif", 0));
             p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(0);
         },
         {{"TemImagemEntrelacada", "2"}, {"TemLimiteDif", "2"}, {"NroIntRejLimDif", ""}, {"txtObsNotif", ""}}},
        {"a municipality is a number above 0", NovoED("C"), munic("7"), {{"CodMunic", "7"}}},
        {"1 is one", NovoED("C"), munic("1"), {{"CodMunic", "1"}}},
        {"a text is none", NovoED("C"), munic("abc"), {{"CodMunic", "120"}}},
        {"a number and more is none", NovoED("C"), munic("12 de Maio"), {{"CodMunic", "120"}}},
        {"0 is none", NovoED("C"), munic("0"), {{"CodMunic", "120"}}},
        {"-5 is none", NovoED("C"), munic("-5"), {{"CodMunic", "120"}}},
        {"a layout whose frame is hidden stays", NovoED("E"), layout, {{"ArquivoLayout", "\"PADRAO\""}}},
        {"a layout whose frame shows is sent", NovoED("F"), layout, {{"ArquivoLayout", "\"Antigo\""}}},
        {"C 70", NovoED("C"), veloc("70"), {{"VelocPermitida", "70"}}},
        {"C 1", NovoED("C"), veloc("1"), {{"VelocPermitida", "1"}}},
        {"A 110", NovoED("A"), veloc("110"), {{"VelocPermitida", "110"}}},
        {"E empty", NovoED("E"), veloc(""), {{"VelocPermitida", "80"}}},
        {"E 0", NovoED("E"), veloc("0"), {{"VelocPermitida", "80"}}},
        {"E 70", NovoED("E"), veloc("70"), {{"VelocPermitida", "80"}}},
        {"M empty", NovoED("M"), veloc(""), {{"VelocPermitida", "80"}}},
        {"M 70", NovoED("M"), veloc("70"), {{"VelocPermitida", "80"}}},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Nome);
        EXPECT_TRUE(EditaComOK(caso.Equipto, caso.Faz));
        for (const auto &[membro, valor] : caso.Enviados) {
            EXPECT_EQ(MembroEnviado("altera", membro), valor) << membro;
        }
    }
    EXPECT_TRUE(host->Avisos().empty());
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheSector_WritesItForClient2Alone)
{
    AceitaSalvar();
    for (std::int32_t cliente : {2, 1, 3}) {
        SCOPED_TRACE(cliente);
        host->Dominio->CodCliente = cliente;
        EXPECT_TRUE(IncluiEAplica("C"));
        EXPECT_EQ(MembroEnviado("inclui", "SetorInc"), cliente == 2 ? "\"CENTRAL\"" : "");
        EXPECT_TRUE(EditaComOK(NovoED("C"), [](Pessoa &p) {
            p.Acha("lblClienteInc")->DefineCaption("OUTRO CLIENTE");
            p.Acha("lblSetorInc")->DefineCaption("OUTRO SETOR");
            Descreve("x")(p);
        }));
        EXPECT_EQ(MembroEnviado("altera", "ClienteInc"), "\"OUTRO CLIENTE\"");
        EXPECT_EQ(MembroEnviado("altera", "SetorInc"), cliente == 2 ? "\"OUTRO SETOR\"" : "\"NORTE\"");
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfANewEquipmentOfAnotherType_SendsTheRoadTypeEvenHiddenAndNoHiddenSpeed)
{
    AceitaSalvar();
    struct {
        const char *Antes; // type on which the option is chosen
        const char *Opcao;
        const char *Tipo;
        const char *TipoVia;
        const char *Veloc;
    } const casos[] = {
        {"C", "optRodovia", "C", "\"R\"", "60"},
        {"C", "optUrbana", "C", "\"U\"", "60"},
        {"C", "", "C", "\"\"", "60"},
        {"C", "optUrbana", "E", "\"U\"", "0"},
        {"C", "optRodovia", "A", "\"R\"", "60"},
        {"C", "optRodovia", "M", "\"I\"", "0"},
        {"M", "", "M", "\"I\"", "0"},
        {"M", "", "C", "\"\"", "60"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(std::string(caso.Antes) + caso.Opcao + caso.Tipo);
        EXPECT_TRUE(IncluiEAplica(caso.Antes, [&](Pessoa &p) {
            if (*caso.Opcao != '\0') {
                EXPECT_TRUE(p.Clica(caso.Opcao));
            }
            EXPECT_TRUE(p.Abre("sstDados", 0));
            EscolheTipo(p, caso.Tipo);
            if (!Visiveis(p, "fraLimiteVel").empty()) {
                p.Acha<IztMask>("txtVelocPerm")->DefineText("60");
            }
        }));
        EXPECT_EQ(MembroEnviado("inclui", "TipoVia"), caso.TipoVia);
        EXPECT_EQ(MembroEnviado("inclui", "VelocPermitida"), caso.Veloc);
    }
    EXPECT_TRUE(IncluiEAplica("A", [](Pessoa &p) { p.Acha<IztCombo>("cboMunic")->DefineIndiceAtual(-1); }));
    EXPECT_EQ(MembroEnviado("inclui", "CodMunic"), "0") << "where it may stay empty";
}

// Outcomes.

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_AnsweredNoOrRefused_LeavesEverythingAsItWas)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        for (const char *botao : {"ztCmdOK", "ztCmdAplicar"}) {
            for (bool recusa : {false, true}) {
                host->LimpaRegistro();
                if (recusa) {
                    host->RecusaOperacao("altera", "não");
                }
                Aplica(p, false, recusa, botao);
                if (!recusa) {
                    EXPECT_EQ(
                        host->Registro(),
                        (Linhas{
                            "Plataforma.PerguntaSimNao(\"Confirma a alteração?\", \"Atenção\", padrao=Sim) -> Não"}));
                }
                EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"não\""), recusa);
                EXPECT_FALSE(host->Contem("EquiptoRN.ExecutaMetodo(\"consulta\""));
                EXPECT_EQ(Botoes(p), BotoesLigados);
                EXPECT_TRUE(form->Visible());
                EXPECT_EQ(Valores(p, "txtDescricao"), "nova");
            }
        }
        Descarta(p); // still altered
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_RefusedOfANewEquipment_StaysAnInclusion)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        host->RecusaOperacao("inclui", "Código já usado");
        host->LimpaRegistro();
        Aplica(p, true);
        const Linhas esperado{
            "Plataforma.PerguntaSimNao(*",
            "Plataforma.Ponteiro := 11",
            "goDadosVor.ObtemOrgao()",
            "Orgao.CodCliente -> 2",
            "Gateway.CriaObjetoRN(*",
            "EquiptoRN.ExecutaMetodo(\"inclui\", *",
            "EquiptoRN.MostraErro() -> \"Código já usado\"",
            "Plataforma.Ponteiro := 0",
        };
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
        EXPECT_EQ(Botoes(p), SoAplicar);
        EXPECT_TRUE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
        EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, false, false, false}));
        EXPECT_EQ(Valores(p, "txtDescricao"), "Nova");
        EXPECT_EQ(Travados(p, "txtCodEquip"), "");
        Aplica(p, true); // the same question again
        Fecha(p);
    }));
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"altera\""), 0);
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_OfANewEquipment_OpensItsPagesAndLocksItsIdentity)
{
    AceitaSalvar();
    for (const auto &[tipo, paginas] : {std::pair{"C", std::vector<bool>{true, true, true, false, true}},
                                        std::pair{"A", std::vector<bool>{true, true, false, true, false}},
                                        std::pair{"M", std::vector<bool>{true, true, false, true, true}},
                                        std::pair{"V", std::vector<bool>{true, true, false, false, true}}}) {
        SCOPED_TRACE(tipo);
        EXPECT_TRUE(Inclui([&](Pessoa &p) {
            PreencheNovo(p, tipo);
            EXPECT_EQ(Visiveis(p, "frUltAtu"), "");
            Aplica(p, true);
            EXPECT_EQ(Paginas(p), paginas);
            EXPECT_EQ(Visiveis(p, "frUltAtu"), "frUltAtu");
            EXPECT_EQ(Valores(p, "lblData lblHora"), "20/11/2026|10:00:00");
            EXPECT_EQ(Travados(p, "txtCodEquip cboTipoMedidor cboTipoEquip cboMunic txtSubCodEquip"),
                      "txtCodEquip cboTipoMedidor cboTipoEquip cboMunic");
            EXPECT_EQ(form->Caption(), "Novo Equipamento");
            Fecha(p);
        }));
    }
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_AfterTheInclusion_AltersTheSameEquipment)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        Aplica(p, true);
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Marca("chkEntrelacada"));
        EXPECT_EQ(Botoes(p), BotoesLigados) << "OK too, from now on";
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 1));
        EXPECT_TRUE(p.Marca("chkRejeicaoAuto"));
        EXPECT_TRUE(p.Clica("ztCmdAplicar"));
        EXPECT_EQ(host->Avisos().back().Texto, "Informe a rejeição.") << "the options are checked now";
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 1));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "NroIntEquip"), "7");
    EXPECT_EQ(MembroEnviado("altera", "NroIntRejLimDif"), "32");
}

// The showing of the saved record is no loading: what it switches counts.
TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_OfANewEquipment_SwitchesTheLimitsToNoWhichIsAChange)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        EXPECT_EQ(Valores(p, "optTrabDiasDif(0)"), "não");
        Aplica(p, true);
        EXPECT_EQ(Valores(p, "optTrabDiasDif(0)"), "sim");
        EXPECT_EQ(Botoes(p), BotoesLigados);
        Aplica(p, false);
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p); // without a question
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_OfANewEquipmentThatCannotBeReadAgain_HasSavedIt)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        host->RecusaOperacao("consulta", "fora do ar");
        Aplica(p, true);
        EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"fora do ar\""), 1);
        EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, false, false, false})) << "nothing was shown anew";
        EXPECT_EQ(Travados(p, "txtCodEquip"), "");
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        EXPECT_EQ(Botoes(p), BotoesLigados);
        Aplica(p, false);
        Fecha(p);
    }));
    EXPECT_EQ(MembroEnviado("altera", "NroIntEquip"), "7");
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_InEdicao_LeavesAnUntouchedForm)
{
    AceitaSalvar();
    auto anotada = Novo<FormQueAnota<frmEquipDetalhes>>();
    form = anotada;
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        Responde(NovoED("C", R"(Descricao="nova", DataTrans=20261121)"));
        host->LimpaRegistro();
        anotada->Alterados.clear();
        Aplica(p, false);
        EXPECT_EQ(anotada->Alterados, (Linhas{"ztCmdAplicar", "ztCmdOK", "lblData"}));
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"EquiptoRN.ExecutaMetodo", "Plataforma.Ponteiro"}),
                                  Linhas{"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(\"altera\", *",
                                         "Plataforma.Ponteiro := 0", "EquiptoRN.ExecutaMetodo(\"consulta\", *"}));
        EXPECT_EQ(Valores(p, "lblData"), "21/11/2026");
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p); // without a question
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheServiceAnswersOtherData_CountsItAsAChange)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        Responde(NovoED("C", R"(Descricao="NOVA")")); // as the service keeps it
        Aplica(p, false);
        EXPECT_EQ(Valores(p, "txtDescricao"), "NOVA");
        EXPECT_EQ(Botoes(p), BotoesLigados);
        Descarta(p);
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdOK_ThatSaves_ClosesWithoutReadingAgain)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->LimpaRegistro();
        Aplica(p, false, true, "ztCmdOK");
        EXPECT_FALSE(form->Visible());
        EXPECT_FALSE(host->Contem("EquiptoRN.ExecutaMetodo(\"consulta\""));
        EXPECT_FALSE(host->Contem("EquiptoRN.ObtemRetorno"));
        EXPECT_EQ(host->Registro().back(), "Plataforma.Descarrega(frmEquipDetalhes)");
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, Caller_AfterOneSave_LearnsOfItHoweverTheFormWasLeft)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    for (bool fecha : {false, true}) {
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
            Aplica(p, false);
            EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
            fecha ? Fecha(p) : Descarta(p);
        }));
        EXPECT_FALSE(Edita(Cancela)) << "not of an earlier opening";
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Caller_OfACancelledInclusionAfterASavedEdition_LearnsOfNoSave)
{
    AceitaSalvar();
    EXPECT_TRUE(EditaComOK(NovoED("C"), Descreve("nova")));
    EXPECT_FALSE(Inclui(Cancela));
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheServiceAnswersWithoutOptions_TakesThemBack)
{
    AceitaSalvar();
    const std::string opcoes = "chkEntrelacada chkPerfilMagnetico chkRejeicaoAuto chkIncObsNotif optTrabDiasDif(1)";
    Responde(NovoED("C", "TemPerfilMag=1"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_EQ(Valores(p, opcoes), "sim|sim|sim|sim|sim");
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        // The differentiated limits alone do not take the rejection back.
        const auto depois = NovoED("C", R"(TemImagemEntrelacada=2, NroIntRejLimDif=0, txtObsNotif="")");
        Responde(depois);
        Aplica(p, false);
        EXPECT_EQ(Valores(p, opcoes), "não|não|não|não|sim");
        EXPECT_EQ(NroItens(p, "cboRejeicao"), 0);
        EXPECT_EQ(Valores(p, "txtObsNotif"), "");
        depois->TemLimiteDif = 2;
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false);
        EXPECT_EQ(Valores(p, "optTrabDiasDif(1) optTrabDiasDif(0)"), "não|sim");
        Fecha(p);
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_Saved_TakesTheDefaultAndTheButtonsBackBeforeTheReading)
{
    AceitaSalvar();
    auto anotada = Novo<FormQueAnota<frmEquipDetalhes>>();
    form = anotada;
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        const auto aplicar = p.Acha<IztCommand>("ztCmdAplicar");
        EXPECT_TRUE(aplicar->Default());
        std::int32_t vezes = 0;
        host->Atende<EquiptoED>("EquiptoRN", "consulta", [&](const Ref<EquiptoED> &) {
            ++vezes;
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_FALSE(aplicar->Default());
            EXPECT_EQ(Botoes(p), BotoesDesligados);
            EXPECT_EQ(anotada->Alterados, Linhas{"ztCmdAplicar"});
            return Resposta(NovoED("C", R"(NroIntRejLimDif=0, txtObsNotif="")"));
        });
        anotada->Alterados.clear();
        host->Atende<EquiptoED>("EquiptoRN", "inclui", [&](const Ref<EquiptoED> &) {
            EXPECT_EQ(host->Tela->Ponteiro(), 11);
            return Resposta(NovoED("C"));
        });
        Aplica(p, true);
        EXPECT_EQ(vezes, 1);
        EXPECT_FALSE(aplicar->Default());
        EXPECT_TRUE(RegistroIgual(anotada->Alterados,
                                  {"ztCmdAplicar",      "lblClienteInc",  "lblSetorInc",       "txtCodEquip",
                                   "ztCmdOK", // what the showing writes counts as a change
                                   "ztCmdAplicar",      "txtSubCodEquip", "txtDescricao",      "txtModelo",
                                   "cboMunic",          "txtVelocPerm",   "optRodovia",        "frUltAtu",
                                   "lblCliente",        "lblOperador",    "lblData",           "lblHora",
                                   "sstDados",          "chkEntrelacada", "optTrabDiasDif(1)", "chkRejeicaoAuto",
                                   "lblTextoRejLimDif", "txtObsNotif",    "txtCodEquip",       "cboTipoMedidor",
                                   "cboTipoEquip",      "cboMunic"}));
        Fecha(p);
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, cmdCancelar_OfAnAlteredForm_AsksWithNoAsTheDefault)
{
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->LimpaRegistro();
        host->Responde(PerguntaDescarte, false);
        EXPECT_TRUE(p.Clica("cmdCancelar"));
        EXPECT_EQ(host->Registro(), (Linhas{"Plataforma.PerguntaSimNao(\"Foram feitas alterações neste equipamento. "
                                            "Deseja descartá-las?\", \"Atenção\", padrao=Não) -> Não"}));
        EXPECT_TRUE(form->Visible());
        EXPECT_EQ(Valores(p, "txtDescricao"), "nova");
        Descarta(p);
        EXPECT_FALSE(form->Visible());
    }));
    EXPECT_FALSE(host->Contem("EquiptoRN."));
}

TEST_F(GravacaoEquipDetalhesTeste, Window_ClosedByItsOwnButton_DiscardsWithoutAQuestion)
{
    Responde(ComSensor("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        ExcluiSensor(p);
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->LimpaRegistro();
        Fecha(p);
        EXPECT_FALSE(host->Contem("Plataforma.PerguntaSimNao"));
    }));
    EXPECT_FALSE(host->Contem("EquiptoRN.ExecutaMetodo(\"altera\""));
}

TEST_F(GravacaoEquipDetalhesTeste, Enter_OnAChangedNewEquipment_PressesAplicar)
{
    AceitaSalvar();
    Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        EXPECT_TRUE(p.Foco("cboMunic"));
        host->Responde(Confirmacao(true), false);
        EXPECT_TRUE(p.Enter());
        EXPECT_FALSE(p.Esc()) << "no button answers it";
        Descarta(p);
    });
}

TEST_F(GravacaoEquipDetalhesTeste, Buttons_WhileTheirClickRuns_LockTheForm)
{
    Responde(NovoED("C"));
    std::vector<bool> habilitado;
    host->Servico("EquiptoRN", "altera", [&](const auto &) {
        habilitado.push_back(form->Enabled());
        return Resposta();
    });
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        Aplica(p, false);
        EXPECT_TRUE(form->Enabled());
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(habilitado, (std::vector<bool>{false, false}));
}

TEST_F(GravacaoEquipDetalhesTeste, SharedForm_ReleasedWhileItIsShown_StillAnswers)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    host->AoMostrarModal("frmEquipDetalhes", [&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtModelo", "novo"));
        Aplica(p, false);
        LiberaFormsCompartilhados();
        Fecha(p);
    });
    EXPECT_TRUE(FormCompartilhado<frmEquipDetalhes>()->CarregaEdicao(7, false));
}

// Sensors and calibrations with the equipment.

TEST_F(GravacaoEquipDetalhesTeste, ztCmdOK_AfterARowWasRemoved_SendsItInactive)
{
    AceitaSalvar();
    EXPECT_TRUE(EditaComOK(ComSensor("C"), [&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        ExcluiSensor(p);
        EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo"), 1) << "nothing is saved by itself";
    }));
    std::string enviado = Enviado("altera");
    EXPECT_NE(enviado.find("Sensores=[SensorED{NroIntSensor=51, NroSensor=1, "), std::string::npos) << enviado;
    EXPECT_NE(enviado.find("Ativo=2, LocalInfr=\"Pista norte\"}]"), std::string::npos) << enviado;
    EXPECT_TRUE(EditaComOK(ComSensor("A"), [&](Pessoa &p) { // a calibration travels inside its sensor
        EXPECT_TRUE(p.Abre("sstDados", 3));
        ExcluiAfericao(p);
    }));
    enviado = Enviado("altera");
    EXPECT_NE(enviado.find("Sensores=[SensorED{Afericoes=[AfericaoED{NroIntAfericao=71, "), std::string::npos)
        << enviado;
}

// The page keeps the sensor that it was given, and that one has ended with the list that was read again.
TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_AfterwardsOnPageAfericoes_EveryCommandIsFault91AndNothingIsSent)
{
    AceitaSalvar();
    Responde(ComSensor("A"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        const auto lista = p.Acha<ztList>("ztListaAfericao");
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        const auto arranjo = lista->Arranjo();
        Responde(ComSensor("A", R"(Descricao="nova")"));
        Aplica(p, false);
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_EQ(lista->Arranjo(), arranjo) << "the rows are not built anew";
        EXPECT_TRUE(p.ClicaLinha("ztListaAfericao", 1));
        const std::int32_t janelas = host->Tela->NroForms();
        host->LimpaRegistro();

        const auto mostrou = [&](const std::string &contexto, const std::string &fonte) {
            EXPECT_EQ(Erros(), Linhas{contexto + ": 91 (ZTAVOREQUIP" + fonte + ")"});
            EXPECT_EQ(host->Tela->NroForms(), janelas) << "no window stays";
            EXPECT_EQ(Botoes(p), BotoesDesligados) << "no change";
        };
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        mostrou("frmEquipAfericoes.CarregaInclusao", "");
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjEditar"));
        mostrou("COAfericoes.ItemMenuClicado", " < COAfericoes.Editar");
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjDetalhes"));
        mostrou("COAfericoes.ItemMenuClicado", " < COAfericoes.Detalhes");
        EXPECT_EQ(host->Conta("ObjInterface.MostraJanela"), 0);

        host->Responde("Confirma a exclusão desta aferição?", false);
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        EXPECT_EQ(Erros(), Linhas{}) << "a refused question looks nothing up";
        ASSERT_EQ(lista->NroItens(), 1);
        EXPECT_EQ(lista->Celula(1, "Número"), "N1");
        ExcluiAfericao(p);
        mostrou("COAfericoes.m_ZtList_AntesDeRemoverItem", " < COAfericoes.Excluir");
        EXPECT_EQ(lista->NroItens(), 0) << "the fault does not cancel the removal of the row";

        EXPECT_EQ(host->Conta("EquiptoRN."), 0);
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "Descricao"), "\"outra\"");
    EXPECT_EQ(MembroEnviado("altera", "Sensores"), "");
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_AfterwardsOnPageSensores_ReachesTheNewListUnderTheOldRows)
{
    AceitaSalvar();
    Responde(ComSensor("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        const auto arranjo = p.Acha<ztList>("ztListaSensor")->Arranjo();
        Aplica(p, false);
        EXPECT_EQ(p.Acha<ztList>("ztListaSensor")->Arranjo(), arranjo) << "the rows are not built anew";
        EXPECT_TRUE(p.Abre("sstDados", 2));
        ExcluiSensor(p);
        host->LimpaRegistro();
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_NE(Enviado("altera").find("Sensores=[SensorED{NroIntSensor=51, "), std::string::npos);
}

// Faults.

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_WhenAStepFails_IsReportedUnderTheButton)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    struct {
        const char *Chamada;
        std::int32_t Vez;
        const char *Cauda;
    } const casos[] = {{"Plataforma.PerguntaSimNao", 1, ""}, {"Plataforma.Ponteiro", 1, ""},
                       {"goDadosVor.ObtemOrgao", 1, ""},     {"Orgao.CodCliente", 1, ""},
                       {"Plataforma.Ponteiro", 2, ""},       {"EquiptoRN.ExecutaMetodo", 1, " < clsEquipto.Salva"}};
    for (const auto &caso : casos) {
        for (const char *botao : {"ztCmdOK", "ztCmdAplicar"}) {
            SCOPED_TRACE(std::string(caso.Chamada) + " " + std::to_string(caso.Vez) + " " + botao);
            EXPECT_TRUE(Edita([&](Pessoa &p) {
                EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
                host->FalhaEm(caso.Chamada, caso.Vez, 70, "negado");
                if (std::string(caso.Chamada) == "Plataforma.PerguntaSimNao") {
                    EXPECT_TRUE(p.Clica(botao));
                } else {
                    Aplica(p, false, true, botao);
                }
                EXPECT_EQ(Erros(),
                          Linhas{(std::string(botao) == "ztCmdOK" ? "frmEquipDetalhes.ztCmdOk_Click: 70 ("
                                                                  : "frmEquipDetalhes.ztCmdAplicar_Click: 70 (") +
                                 std::string(caso.Chamada) + caso.Cauda + " < frmEquipDetalhes.Aplicar)"});
                EXPECT_EQ(host->Tela->Ponteiro(), 0);
                EXPECT_TRUE(form->Visible());
                EXPECT_TRUE(form->Enabled());
                EXPECT_EQ(Botoes(p), BotoesLigados);
                Aplica(p, false, true, "ztCmdOK");
            }));
        }
    }
}

// An option that cannot be read once it is spoilt.
class OpcaoQueFalha : public OptionButton {
  public:
    using OptionButton::OptionButton;
    bool Value() const override
    {
        if (Estragada) {
            throw Falha(70, "Fora", "negado");
        }
        return OptionButton::Value();
    }
    bool Estragada = false;
};

class FabricaDeOpcoesQueFalham : public FabricaControles {
  public:
    Ref<IControle> Cria(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container,
                        std::int16_t pagina) override
    {
        return peca.Especie() == EspecieControle::OptionButton ? Feito<OpcaoQueFalha>(form, peca, container, pagina)
                                                               : FabricaControles::Cria(form, peca, container, pagina);
    }
};

class HostDeOpcoesQueFalham : public HostRoteirizado {
  public:
    Ref<IFabricaControles> Controles() override { return m_Fabrica; }

  private:
    Ref<FabricaDeOpcoesQueFalham> m_Fabrica = Novo<FabricaDeOpcoesQueFalham>();
};

class OpcoesQueFalhamTeste : public GravacaoEquipDetalhesTeste {
  protected:
    void SetUp() override
    {
        host = Novo<HostDeOpcoesQueFalham>();
        GravacaoEquipDetalhesTeste::SetUp();
    }
};

TEST_F(OpcoesQueFalhamTeste, obtemTipoVia_ThatFails_ReportsAndTheSaveGoesOnWithoutARoadType)
{
    AceitaSalvar();
    EXPECT_TRUE(EditaComOK(NovoED("C"), [](Pessoa &p) {
        Descreve("nova")(p);
        p.Acha<OpcaoQueFalha>("optRodovia")->Estragada = true;
    }));
    EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.obtemTipoVia: 70 (Fora)"});
    EXPECT_EQ(MembroEnviado("altera", "TipoVia"), "\"\"");
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheReadingAgainFails_IsReportedAndHasSaved)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->FalhaEm("EquiptoRN.ExecutaMetodo", 2, 70, "negado");
        Aplica(p, false);
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Descarta(p); // "altera" has left the record as changed
    }));
    EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.ztCmdAplicar_Click: 70 (EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < "
                              "clsEquipto.ReCarrega)"});
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheShowingFails_IsReportedWithItsPath)
{
    AceitaSalvar();
    Conexao falha;
    EXPECT_TRUE(IncluiEAplica("C", [&](Pessoa &p) { falha = Estraga(p, "frUltAtu"); }));
    EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.ztCmdAplicar_Click: 70 (Fora < frmEquipDetalhes.MostraDados)"});
}

TEST_F(GravacaoEquipDetalhesTeste, cmdCancelar_WhenItFails_IsReportedAndCanBePressedAgain)
{
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->FalhaEm("Plataforma.PerguntaSimNao", 1, 70);
        EXPECT_TRUE(p.Clica("cmdCancelar"));
        EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.cmdCancelar_Click: 70 (Plataforma.PerguntaSimNao)"});
        host->FalhaEm("Plataforma.Descarrega", 1, 70);
        Descarta(p);
        EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.cmdCancelar_Click: 70 (Plataforma.Descarrega)"});
        EXPECT_TRUE(form->Visible());
        Descarta(p);
    }));
}

} // namespace
