#include "equipment/frmEquipDetalhes.h"

#include "controls/OptionButton.h"
#include "controls/ztList.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"
#include "tests/equipment/CenarioEquipDetalhes.h"
#include "tests/support/FalhaLancada.h"
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
    static Ref<EquiptoED> ComSensor(const std::string &tipo)
    {
        auto ed = NovoED(tipo);
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = 71;
        afericao->Numero = "N1";
        afericao->DataVerificacao = DataDe(1, 2, 2026);
        afericao->DataVencimento = DataDe(1, 2, 2027);
        afericao->Ativo = 1;
        afericao->TipoAfer = 1;
        auto afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        afericoes->Add(afericao);
        auto sensor = Novo<SensorED>();
        sensor->NroIntSensor = 51;
        sensor->NroSensor = 1;
        sensor->LocalInfr = "Pista norte";
        sensor->Ativo = 1;
        sensor->Afericoes = afericoes;
        auto sensores = Novo<Colecao<Ref<SensorED>>>();
        sensores->Add(sensor);
        ed->Sensores = sensores;
        return ed;
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
        auto ed = ComSensor(tipo);
        if (std::string(mudanca.Evento) == "optTrabDiasDif_Click") {
            ed->TemLimiteDif = 2;
        }
        if (std::string(mudanca.Evento) == "chkIncObsNotif_Click") {
            ed->txtObsNotif = ""; // an observation that is emptied tells of itself first
        }
        if (tipo == "M") {
            ed->TipoVia = "R"; // so that there is something to click
        }
        Responde(ed);
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
    Inclui([&](Pessoa &p) {
        p.Acha<IztCombo>("cboTipoEquip")->AdicionaItem("Caetano|C");
        EXPECT_TRUE(p.Escolhe("cboTipoEquip", "Caetano"));
        EXPECT_EQ(Botoes(p), SoAplicar);
        Descarta(p);
    });
    Inclui([&](Pessoa &p) {
        p.Acha<IztCombo>("cboMunic")->DefineValor("7");
        EXPECT_EQ(Botoes(p), SoAplicar);
        Descarta(p);
    });
}

TEST_F(GravacaoEquipDetalhesTeste, cboRejeicao_Alone_IsNoChange)
{
    Responde(NovoED("C"));
    Edita([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));
        EXPECT_EQ(Valor(p, "cboRejeicao"), "31");
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
    for (const Mudanca &mudanca : Mudancas()) {
        SCOPED_TRACE(mudanca.Evento);
        NaSituacao(mudanca, [&](Pessoa &p) {
            Conexao falha = ComoBase(p.Acha("ztCmdAplicar"))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
            const std::size_t antes = host->Erros().size();
            if (std::string(mudanca.Evento) == "cboArqLayout_Change") {
                EXPECT_EQ(FalhaLancada([&] { mudanca.Faz(p); }).Fonte, "Fora < frmEquipDetalhes.Change");
                EXPECT_EQ(host->Erros().size(), antes);
            } else {
                mudanca.Faz(p);
                ASSERT_EQ(host->Erros().size(), antes + 1);
                EXPECT_EQ(host->Erros().back().Contexto, std::string("frmEquipDetalhes.") + mudanca.Evento);
                EXPECT_EQ(host->Erros().back().Fonte, "Fora < frmEquipDetalhes.Change");
            }
            EXPECT_TRUE(form->Visible());
            Fecha(p);
        });
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Change_ThatFails_OfTheOtherControlsOfANewEquipment)
{
    const auto falhaDe = [](const Pessoa &p, const char *controle) {
        return ComoBase(p.Acha(controle))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
    };
    // The municipality has no handler of its own.
    Inclui([&](Pessoa &p) {
        Conexao falha = falhaDe(p, "ztCmdAplicar");
        EXPECT_EQ(FalhaLancada([&] { p.Acha<IztCombo>("cboMunic")->DefineValor("7"); }).Fonte,
                  "Fora < frmEquipDetalhes.Change");
        Fecha(p);
    });
    EXPECT_TRUE(host->Erros().empty());
    struct {
        const char *Contexto;
        bool AbrePaginaDados; // the rule has done so before its change counted
        Acao Faz;
    } const casos[] = {
        {"frmEquipDetalhes.optRodovia_Click", false,
         [](Pessoa &p) { p.Acha<IOptionButton>("optRodovia")->DefineValue(true); }},
        {"frmEquipDetalhes.cboTipoEquip_Change", true,
         [](Pessoa &p) {
             p.Acha<IztCombo>("cboTipoEquip")->AdicionaItem("Etilômetro|E");
             p.Acha<IztCombo>("cboTipoEquip")->DefineValor("E");
         }},
    };
    for (const auto &caso : casos) {
        Inclui([&](Pessoa &p) {
            Conexao falha = falhaDe(p, "ztCmdAplicar");
            caso.Faz(p);
            EXPECT_EQ(host->Erros().back().Contexto, caso.Contexto);
            EXPECT_EQ(host->Erros().back().Fonte, "Fora < frmEquipDetalhes.Change");
            EXPECT_EQ(p.Acha<ISSTab>("sstDados")->TabEnabled(1), caso.AbrePaginaDados);
            Fecha(p);
        });
    }
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(GravacaoEquipDetalhesTeste, RuleEvents_WhenAControlFails_ReportUnderTheirNames)
{
    struct {
        const char *Contexto;
        const char *Controle; // which fails
        const char *TipoEquip;
        Acao Faz;
    } const casos[] = {
        {"frmEquipDetalhes.txtVelocPerm_Change", "lblTolerancia", "C",
         [](Pessoa &p) { p.Acha<IztMask>("txtVelocPerm")->DefineText("120"); }},
        {"frmEquipDetalhes.optTrabDiasDif_Click", "lblTextoRejLimDif", "C",
         [](Pessoa &p) { p.Acha<IOptionButton>("optTrabDiasDif", 0)->DefineValue(true); }},
        {"frmEquipDetalhes.chkIncObsNotif_Click", "txtObsNotif", "F",
         [](Pessoa &p) { p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(0); }},
        {"frmEquipDetalhes.cboTipoEquip_Change", "fraLayout", "C",
         [](Pessoa &p) { p.Acha<IztCombo>("cboTipoEquip")->DefineValor("E"); }},
        {"frmEquipDetalhes.chkRejeicaoAuto_Click", "lblRejeicao", "C",
         [](Pessoa &p) { p.Acha<ICheckBox>("chkRejeicaoAuto")->DefineValue(0); }},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Contexto);
        auto ed = NovoED(caso.TipoEquip);
        ed->NroIntRejLimDif = std::string(caso.Controle) == "lblRejeicao" ? 32 : 0; // no rule inside the rule
        Responde(ed);
        Edita([&](Pessoa &p) {
            Conexao falha = ComoBase(p.Acha(caso.Controle))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
            caso.Faz(p);
            EXPECT_EQ(host->Erros().back().Contexto, caso.Contexto);
            EXPECT_EQ(host->Erros().back().Fonte, "Fora");
            EXPECT_EQ(Botoes(p), BotoesDesligados) << "the rule stopped before it counted the change";
            if (std::string(caso.Controle) == "txtObsNotif") {
                EXPECT_EQ(Texto(p, "txtObsNotif"), "Obs. da via") << "it is locked before it is emptied";
            }
            Fecha(p);
        });
    }
    EXPECT_EQ(host->Erros().size(), std::size(casos));
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
    auto ed = Novo<EquiptoED>();
    ed->NroIntEquip = 7;
    ed->NroIntRejLimDif = 999; // not offered any more
    ed->txtObsNotif = "x";
    Responde(ed);
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
    struct {
        const char *Tipo;
        bool Munic;
        bool Layout;
        bool Veloc;
    } const casos[] = {
        {"C", true, true, true},    {"L", true, true, true},   {"P", true, true, true},    {"R", true, true, true},
        {"X", true, true, true},    {"", true, true, true},    {"M", true, true, false},   {"F", true, true, false},
        {"V", true, true, false},   {"A", false, false, true}, {"E", false, false, false}, {"U", false, false, false},
        {"B", false, false, false},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Tipo);
        EXPECT_FALSE(Inclui([&](Pessoa &p) {
            EXPECT_TRUE(p.Preenche("txtCodEquip", "EQ_9"));
            EXPECT_TRUE(p.Preenche("txtDescricao", "Nova"));
            EXPECT_TRUE(p.Preenche("txtModelo", "ACME"));
            EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
            EscolheTipo(p, caso.Tipo);
            const auto exige = [&](const std::string &mensagem, const Acao &mende) {
                EXPECT_TRUE(p.Clica("ztCmdAplicar"));
                EXPECT_EQ(host->Avisos().back().Texto, mensagem);
                mende(p);
            };
            if (caso.Munic) {
                exige("Informe o município!", [](Pessoa &q) { EXPECT_TRUE(q.Escolhe("cboMunic", "Agudo")); });
            }
            if (caso.Layout) {
                exige("Informe o layout dos arquivos!",
                      [](Pessoa &q) { EXPECT_TRUE(q.Escolhe("cboArqLayout", "PADRAO")); });
            }
            if (caso.Veloc) {
                exige("Informe a velocidade permitida!",
                      [](Pessoa &q) { EXPECT_TRUE(q.Preenche("txtVelocPerm", "60")); });
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

TEST_F(GravacaoEquipDetalhesTeste, ValidouOk_OfBlanks_PassesAndSavesThemEmpty)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "   "));
        EXPECT_TRUE(p.Preenche("txtModelo", " "));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "Descricao"), "\"\"");
    EXPECT_EQ(MembroEnviado("altera", "Modelo"), "\"\"");
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
                EXPECT_EQ(host->Erros().back().Contexto, contexto);
                EXPECT_EQ(host->Erros().back().Fonte, "goMensagem.ExibeMensagem < frmEquipDetalhes.ValidouOk");
            }
        }
        Descarta(p);
    });
    EXPECT_EQ(host->Erros().size(), 4U);
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdOK_WhoseValidationFailed_GoesOnToTheConfirmation)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", ""));
        host->FalhaEm("goMensagem.ExibeMensagem", 1, 70, "negado");
        Aplica(p, false, false, "ztCmdOK");
        Descarta(p);
    });
    EXPECT_EQ(host->Erros().size(), 1U);
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
            "EquiptoRN.ExecutaMetodo(\"inclui\", EquiptoED{ClienteInc=\"DAER\", SetorInc=\"CENTRAL\", "
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
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "F");
        p.Acha<ICheckBox>("chkEntrelacada")->DefineValue(1);
        p.Acha<ICheckBox>("chkPerfilMagnetico")->DefineValue(1);
        p.Acha<IOptionButton>("optTrabDiasDif", 1)->DefineValue(true);
        p.Acha<ICheckBox>("chkRejeicaoAuto")->DefineValue(1);
        p.Acha<IztCombo>("cboRejeicao")->DefineIndiceAtual(0);
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(1);
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("obs");
        Aplica(p, true);
        Fecha(p);
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
    auto ed = NovoED("C");
    ed->TemImagemEntrelacada = 2;
    ed->TemLimiteDif = 2;
    ed->NroIntRejLimDif = 0;
    Responde(ed);
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Marca("chkEntrelacada"));
        EXPECT_TRUE(p.Marca("chkPerfilMagnetico"));
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 1));
        EXPECT_TRUE(p.Marca("chkRejeicaoAuto"));
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText("  obs  ");
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(Enviado("altera"),
              "EquiptoED{NroIntEquip=7, ClienteInc=\"DETRAN\", SetorInc=\"NORTE\", Codigo=\"EQ_1\", SubCodigo=\"A.1\", "
              "Descricao=\"Saída da cidade\", CodMunic=120, TipoVia=\"R\", TipoEquip=\"C\", VelocPermitida=80, "
              "ArquivoLayout=\"PADRAO\", TemImagemEntrelacada=1, Modelo=\"ACME 3\", TemLimiteDif=1, TemPerfilMag=1, "
              "NroIntRejLimDif=31, Ativo=1, TipoAgente=1, txtObsNotif=\"  obs  \"}");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfCodesThatNoKeyTypes_SendsThemAsTheyWereLoaded)
{
    AceitaSalvar();
    auto ed = NovoED("C");
    ed->Codigo = "fsc-0001/99 da série antiga";
    ed->SubCodigo = "Ç 7 - mais de vinte letras";
    Responde(ed);
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztMask>("txtCodEquip")->Text(), "fsc-0001/99 da série antiga");
        EXPECT_EQ(p.Acha<IztMask>("txtSubCodEquip")->Text(), "Ç 7 - mais de vinte letras");
        EXPECT_TRUE(p.Digita("txtSubCodEquip", "x")); // nothing comes in, and nothing goes
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "Codigo"), "\"fsc-0001/99 da série antiga\"");
    EXPECT_EQ(MembroEnviado("altera", "SubCodigo"), "\"Ç 7 - mais de vinte letras\"");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_InEdicaoWithTheOptionsTakenBack_LeavesThemUnset)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Desmarca("chkEntrelacada"));
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 0));
        p.Acha<ICheckBox>("chkIncObsNotif")->DefineValue(0);
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "TemImagemEntrelacada"), "2");
    EXPECT_EQ(MembroEnviado("altera", "TemLimiteDif"), "2");
    EXPECT_EQ(MembroEnviado("altera", "NroIntRejLimDif"), "");
    EXPECT_EQ(MembroEnviado("altera", "txtObsNotif"), "");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheTexts_TrimsThem)
{
    AceitaSalvar();
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtSubCodEquip", "B.2"));
        EXPECT_TRUE(p.Preenche("txtDescricao", "  Centro  da cidade "));
        EXPECT_TRUE(p.Preenche("txtModelo", " Novo modelo"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "SubCodigo"), "\"B.2\"");
    EXPECT_EQ(MembroEnviado("altera", "Descricao"), "\"Centro  da cidade\"");
    EXPECT_EQ(MembroEnviado("altera", "Modelo"), "\"Novo modelo\"");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheSector_WritesItForClient2Alone)
{
    AceitaSalvar();
    for (std::int32_t cliente : {2, 1, 3}) {
        SCOPED_TRACE(cliente);
        host->Dominio->CodCliente = cliente;
        host->LimpaRegistro();
        EXPECT_TRUE(Inclui([&](Pessoa &p) {
            PreencheNovo(p, "C");
            Aplica(p, true);
            Fecha(p);
        }));
        EXPECT_EQ(MembroEnviado("inclui", "SetorInc"), cliente == 2 ? "\"CENTRAL\"" : "");
        Responde(NovoED("C"));
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            p.Acha("lblClienteInc")->DefineCaption("OUTRO CLIENTE");
            p.Acha("lblSetorInc")->DefineCaption("OUTRO SETOR");
            EXPECT_TRUE(p.Preenche("txtDescricao", "x"));
            Aplica(p, false, true, "ztCmdOK");
        }));
        EXPECT_EQ(MembroEnviado("altera", "ClienteInc"), "\"OUTRO CLIENTE\"");
        EXPECT_EQ(MembroEnviado("altera", "SetorInc"), cliente == 2 ? "\"OUTRO SETOR\"" : "\"NORTE\"");
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfAMunicipalityThatIsNoNumberAboveZero_KeepsTheRecords)
{
    AceitaSalvar();
    for (const char *codigo : {"abc", "12 de Maio", "0", "-5"}) {
        host->MDB->TabelaDe("Municipio").Linhas.push_back({codigo, std::string("Vila ") + codigo, "RS", 1});
    }
    struct {
        const char *Codigo;
        const char *Enviado;
    } const casos[] = {{"abc", "120"}, {"12 de Maio", "120"}, {"0", "120"}, {"-5", "120"}, {"7", "7"}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Codigo);
        host->LimpaRegistro();
        Responde(NovoED("C"));
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            p.Acha<IztCombo>("cboMunic")->DefineValor(caso.Codigo);
            EXPECT_EQ(Valor(p, "cboMunic"), caso.Codigo);
            Aplica(p, false, true, "ztCmdOK");
        }));
        EXPECT_EQ(MembroEnviado("altera", "CodMunic"), caso.Enviado);
    }
    // Where it may stay empty.
    host->LimpaRegistro();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "A");
        p.Acha<IztCombo>("cboMunic")->DefineIndiceAtual(-1);
        Aplica(p, true);
        Fecha(p);
    }));
    EXPECT_EQ(MembroEnviado("inclui", "CodMunic"), "0");
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheLayout_WritesItOnlyWhileItsFrameShows)
{
    AceitaSalvar();
    for (const auto &[tipo, esperado] : {std::pair{"E", "\"PADRAO\""}, std::pair{"F", "\"Antigo\""}}) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        Responde(NovoED(tipo));
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            p.Acha<IztCombo>("cboArqLayout")->DefineValor("Antigo");
            Aplica(p, false, true, "ztCmdOK");
        }));
        EXPECT_EQ(MembroEnviado("altera", "ArquivoLayout"), esperado);
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheSpeed_WritesItOnlyAboveZeroAndWhileItsFrameShows)
{
    AceitaSalvar();
    struct {
        const char *Tipo;
        const char *Texto;
        const char *Enviada;
    } const casos[] = {{"C", "70", "70"}, {"A", "110", "110"}, {"E", "", "80"},  {"E", "0", "80"},
                       {"E", "70", "80"}, {"M", "", "80"},     {"M", "70", "80"}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(std::string(caso.Tipo) + " " + caso.Texto);
        host->LimpaRegistro();
        Responde(NovoED(caso.Tipo));
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            p.Acha<IztMask>("txtVelocPerm")->DefineText(caso.Texto);
            EXPECT_TRUE(p.Preenche("txtDescricao", "x"));
            Aplica(p, false, true, "ztCmdOK");
        }));
        EXPECT_EQ(MembroEnviado("altera", "VelocPermitida"), caso.Enviada);
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfASpeedTypedBeforeItsFrameHid_SendsNone)
{
    AceitaSalvar();
    for (const char *tipo : {"E", "M"}) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        EXPECT_TRUE(Inclui([&](Pessoa &p) {
            PreencheNovo(p, "C");
            EXPECT_TRUE(p.Abre("sstDados", 0));
            EscolheTipo(p, tipo);
            Aplica(p, true);
            Fecha(p);
        }));
        EXPECT_EQ(MembroEnviado("inclui", "VelocPermitida"), "0");
    }
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_OfTheRoadType_SendsTheOneThatIsOnEvenHidden)
{
    AceitaSalvar();
    struct {
        const char *Antes; // type on which the option is chosen
        const char *Opcao;
        const char *Tipo;
        const char *TipoVia;
    } const casos[] = {
        {"C", "optRodovia", "C", "\"R\""},
        {"C", "optUrbana", "C", "\"U\""},
        {"C", "", "C", "\"\""},
        {"C", "optUrbana", "E", "\"U\""},
        {"C", "optRodovia", "A", "\"R\""},
        {"C", "optRodovia", "M", "\"I\""},
        {"M", "", "M", "\"I\""},
        {"M", "", "C", "\"\""},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(std::string(caso.Antes) + caso.Opcao + caso.Tipo);
        host->LimpaRegistro();
        EXPECT_TRUE(Inclui([&](Pessoa &p) {
            PreencheNovo(p, caso.Antes);
            if (*caso.Opcao != '\0') {
                EXPECT_TRUE(p.Clica(caso.Opcao));
            }
            EXPECT_TRUE(p.Abre("sstDados", 0));
            EscolheTipo(p, caso.Tipo);
            if (Visivel(p, "fraLimiteVel")) {
                p.Acha<IztMask>("txtVelocPerm")->DefineText("60");
            }
            Aplica(p, true);
            Fecha(p);
        }));
        EXPECT_EQ(MembroEnviado("inclui", "TipoVia"), caso.TipoVia);
    }
}

// Outcomes.

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_AnsweredNo_LeavesEverythingAsItWas)
{
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        for (const char *botao : {"ztCmdOK", "ztCmdAplicar"}) {
            host->LimpaRegistro();
            Aplica(p, false, false, botao);
            EXPECT_EQ(host->Registro(),
                      (Linhas{"Plataforma.PerguntaSimNao(\"Confirma a alteração?\", \"Atenção\", padrao=Sim) -> Não"}));
            EXPECT_EQ(Botoes(p), BotoesLigados);
            EXPECT_TRUE(form->Visible());
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
        EXPECT_EQ(Texto(p, "txtDescricao"), "Nova");
        EXPECT_FALSE(p.Acha<IztMask>("txtCodEquip")->ReadOnly());
        Aplica(p, true); // the same question again
        Fecha(p);
    }));
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"altera\""), 0);
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_RefusedThroughout_AnswersFalse)
{
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        for (const char *botao : {"ztCmdOK", "ztCmdAplicar"}) {
            host->RecusaOperacao("altera", "não");
            Aplica(p, false, true, botao);
            EXPECT_EQ(Botoes(p), BotoesLigados);
            EXPECT_TRUE(form->Visible());
            EXPECT_EQ(Texto(p, "txtDescricao"), "nova");
        }
        Descarta(p);
    }));
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"não\""), 2);
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"consulta\""), 1);
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
            EXPECT_FALSE(Visivel(p, "frUltAtu"));
            Aplica(p, true);
            EXPECT_EQ(Paginas(p), paginas);
            EXPECT_TRUE(Visivel(p, "frUltAtu"));
            EXPECT_EQ(Caption(p, "lblData"), "20/11/2026");
            EXPECT_EQ(Caption(p, "lblHora"), "10:00:00");
            EXPECT_TRUE(p.Acha<IztMask>("txtCodEquip")->ReadOnly());
            for (const char *combo : {"cboTipoMedidor", "cboTipoEquip", "cboMunic"}) {
                EXPECT_TRUE(p.Acha<IztCombo>(combo)->ComboSomenteLeitura()) << combo;
            }
            EXPECT_FALSE(p.Acha<IztMask>("txtSubCodEquip")->ReadOnly());
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
        EXPECT_FALSE(Ligada(p, "optTrabDiasDif", 0));
        Aplica(p, true);
        EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 0));
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
        EXPECT_FALSE(p.Acha<IztMask>("txtCodEquip")->ReadOnly());
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
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        auto depois = NovoED("C");
        depois->Descricao = "nova";
        depois->DataTrans = 20261121;
        Responde(depois);
        host->LimpaRegistro();
        Aplica(p, false);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"EquiptoRN.ExecutaMetodo", "Plataforma.Ponteiro"}),
                                  Linhas{"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(\"altera\", *",
                                         "Plataforma.Ponteiro := 0", "EquiptoRN.ExecutaMetodo(\"consulta\", *"}));
        EXPECT_EQ(Caption(p, "lblData"), "21/11/2026");
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
        auto depois = NovoED("C");
        depois->Descricao = "NOVA"; // as the service keeps it
        Responde(depois);
        Aplica(p, false);
        EXPECT_EQ(Texto(p, "txtDescricao"), "NOVA");
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
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_FALSE(Inclui(Cancela));
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheServiceAnswersWithoutOptions_TakesThemBack)
{
    AceitaSalvar();
    auto antes = NovoED("C");
    antes->TemPerfilMag = 1;
    Responde(antes);
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        EXPECT_TRUE(Marcada(p, "chkEntrelacada") && Marcada(p, "chkPerfilMagnetico"));
        EXPECT_TRUE(Marcada(p, "chkRejeicaoAuto") && Marcada(p, "chkIncObsNotif"));
        auto depois = NovoED("C");
        depois->TemImagemEntrelacada = 2;
        depois->TemPerfilMag = 2;
        depois->TemLimiteDif = 1; // alone it does not take the rejection back
        depois->NroIntRejLimDif = 0;
        depois->txtObsNotif = "";
        Responde(depois);
        Aplica(p, false);
        EXPECT_FALSE(Marcada(p, "chkEntrelacada"));
        EXPECT_FALSE(Marcada(p, "chkPerfilMagnetico"));
        EXPECT_FALSE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 0);
        EXPECT_FALSE(Marcada(p, "chkIncObsNotif"));
        EXPECT_EQ(Texto(p, "txtObsNotif"), "");
        EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 1));
        depois->TemLimiteDif = 2;
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false);
        EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 0));
        Fecha(p);
    }));
}

TEST_F(GravacaoEquipDetalhesTeste, Aplicar_Saved_TakesTheDefaultAndTheButtonsBackBeforeTheReading)
{
    AceitaSalvar();
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
            return Resposta(NovoED("C"));
        });
        host->Atende<EquiptoED>("EquiptoRN", "inclui", [&](const Ref<EquiptoED> &) {
            EXPECT_EQ(host->Tela->Ponteiro(), 11);
            return Resposta(NovoED("C"));
        });
        Aplica(p, true);
        EXPECT_EQ(vezes, 1);
        EXPECT_FALSE(aplicar->Default());
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
        EXPECT_EQ(Texto(p, "txtDescricao"), "nova");
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

TEST_F(GravacaoEquipDetalhesTeste, ztCmdOK_AfterASensorWasRemoved_SendsItInactive)
{
    AceitaSalvar();
    Responde(ComSensor("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        ExcluiSensor(p);
        EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo"), 1) << "nothing is saved by itself";
        Aplica(p, false, true, "ztCmdOK");
    }));
    const std::string enviado = Enviado("altera");
    EXPECT_NE(enviado.find("Sensores=[SensorED{NroIntSensor=51, NroSensor=1, "), std::string::npos) << enviado;
    EXPECT_NE(enviado.find("Ativo=2, LocalInfr=\"Pista norte\"}]"), std::string::npos) << enviado;
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
        auto gravado = ComSensor("A");
        gravado->Descricao = "nova";
        Responde(gravado);
        Aplica(p, false);
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_EQ(lista->Arranjo(), arranjo) << "the rows are not built anew";
        EXPECT_TRUE(p.ClicaLinha("ztListaAfericao", 1));
        const std::int32_t janelas = host->Tela->NroForms();
        host->LimpaRegistro();

        std::size_t erros = 0;
        const auto mostrou = [&](const std::string &contexto, const std::string &fonte) {
            ASSERT_EQ(host->Erros().size(), ++erros);
            EXPECT_EQ(host->Erros().back().Numero, 91);
            EXPECT_EQ(host->Erros().back().Contexto, contexto);
            EXPECT_EQ(host->Erros().back().Fonte, fonte);
            EXPECT_EQ(host->Tela->NroForms(), janelas) << "no window stays";
            EXPECT_EQ(Botoes(p), BotoesDesligados) << "no change";
        };
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        mostrou("frmEquipAfericoes.CarregaInclusao", "ZTAVOREQUIP");
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjEditar"));
        mostrou("COAfericoes.ItemMenuClicado", "ZTAVOREQUIP < COAfericoes.Editar");
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjDetalhes"));
        mostrou("COAfericoes.ItemMenuClicado", "ZTAVOREQUIP < COAfericoes.Detalhes");
        EXPECT_EQ(host->Conta("ObjInterface.MostraJanela"), 0);

        host->Responde("Confirma a exclusão desta aferição?", false);
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir"));
        EXPECT_EQ(host->Erros().size(), erros) << "a refused question looks nothing up";
        ASSERT_EQ(lista->NroItens(), 1);
        EXPECT_EQ(lista->Celula(1, "Número"), "N1");
        ExcluiAfericao(p);
        mostrou("COAfericoes.m_ZtList_AntesDeRemoverItem", "ZTAVOREQUIP < COAfericoes.Excluir");
        EXPECT_EQ(lista->NroItens(), 0) << "the fault does not cancel the removal of the row";

        EXPECT_EQ(host->Conta("EquiptoRN."), 0);
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
        Aplica(p, false, true, "ztCmdOK");
    }));
    EXPECT_EQ(MembroEnviado("altera", "Descricao"), "\"outra\"");
    EXPECT_EQ(MembroEnviado("altera", "Sensores"), "");
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_OfARemovedCalibration_SendsItInsideItsSensor)
{
    AceitaSalvar();
    Responde(ComSensor("A"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        ExcluiAfericao(p);
        Aplica(p, false, true, "ztCmdOK");
    }));
    const std::string enviado = Enviado("altera");
    EXPECT_NE(enviado.find("Sensores=[SensorED{Afericoes=[AfericaoED{NroIntAfericao=71, "), std::string::npos)
        << enviado;
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
        const char *Fonte;
    } const casos[] = {
        {"Plataforma.PerguntaSimNao", 1, "Plataforma.PerguntaSimNao < frmEquipDetalhes.Aplicar"},
        {"Plataforma.Ponteiro", 1, "Plataforma.Ponteiro < frmEquipDetalhes.Aplicar"},
        {"goDadosVor.ObtemOrgao", 1, "goDadosVor.ObtemOrgao < frmEquipDetalhes.Aplicar"},
        {"Orgao.CodCliente", 1, "Orgao.CodCliente < frmEquipDetalhes.Aplicar"},
        {"EquiptoRN.ExecutaMetodo", 1, "EquiptoRN.ExecutaMetodo < clsEquipto.Salva < frmEquipDetalhes.Aplicar"},
        {"Plataforma.Ponteiro", 2, "Plataforma.Ponteiro < frmEquipDetalhes.Aplicar"},
    };
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
                EXPECT_EQ(host->Erros().back().Contexto,
                          std::string("frmEquipDetalhes.") +
                              (std::string(botao) == "ztCmdOK" ? "ztCmdOk_Click" : "ztCmdAplicar_Click"));
                EXPECT_EQ(host->Erros().back().Fonte, caso.Fonte);
                EXPECT_EQ(host->Tela->Ponteiro(), 0);
                EXPECT_TRUE(form->Visible());
                EXPECT_TRUE(form->Enabled());
                EXPECT_EQ(Botoes(p), BotoesLigados);
                Aplica(p, false, true, "ztCmdOK");
            }));
        }
    }
    EXPECT_EQ(host->Erros().size(), 2 * std::size(casos));
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
    Responde(NovoED("C"));
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        p.Acha<OpcaoQueFalha>("optRodovia")->Estragada = true;
        Aplica(p, false, true, "ztCmdOK");
    }));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.obtemTipoVia");
    EXPECT_EQ(host->Erros()[0].Numero, 70);
    EXPECT_EQ(host->Erros()[0].Fonte, "Fora");
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
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.ztCmdAplicar_Click");
    EXPECT_EQ(host->Erros()[0].Fonte, "EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < clsEquipto.ReCarrega");
}

TEST_F(GravacaoEquipDetalhesTeste, ztCmdAplicar_WhenTheShowingFails_IsReportedWithItsPath)
{
    AceitaSalvar();
    EXPECT_TRUE(Inclui([&](Pessoa &p) {
        PreencheNovo(p, "C");
        Conexao falha = ComoBase(p.Acha("frUltAtu"))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
        Aplica(p, true);
        Fecha(p);
    }));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.ztCmdAplicar_Click");
    EXPECT_EQ(host->Erros()[0].Fonte, "Fora < frmEquipDetalhes.MostraDados");
}

TEST_F(GravacaoEquipDetalhesTeste, cmdCancelar_WhenItFails_IsReportedAndCanBePressedAgain)
{
    Responde(NovoED("C"));
    EXPECT_FALSE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Preenche("txtDescricao", "nova"));
        host->FalhaEm("Plataforma.PerguntaSimNao", 1, 70, "negado");
        EXPECT_TRUE(p.Clica("cmdCancelar"));
        EXPECT_EQ(host->Erros().back().Fonte, "Plataforma.PerguntaSimNao");
        host->FalhaEm("Plataforma.Descarrega", 1, 70, "negado");
        Descarta(p);
        EXPECT_EQ(host->Erros().back().Fonte, "Plataforma.Descarrega");
        EXPECT_TRUE(form->Visible());
        Descarta(p);
    }));
    ASSERT_EQ(host->Erros().size(), 2U);
    for (const auto &erro : host->Erros()) {
        EXPECT_EQ(erro.Contexto, "frmEquipDetalhes.cmdCancelar_Click");
    }
}

} // namespace
