#include "limits/frmLimitesDifDetalhes.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/limits/Especies.h"
#include "tests/support/ArquivoIgual.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/HostTeste.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;
using Roteiro = std::function<void(Pessoa &)>;
using Valores = std::vector<std::pair<std::string, std::string>>; // what goes into which control

class frmLimitesDifDetalhesTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
        goMensagem();
        limite->NroInt = 7;
        limite->NroIntEquip = 34;
        limite->Dia = 3;
        limite->HoraInicio = 730;
        limite->HoraFim = 1805;
        limite->VelocPerm = 60;
        limite->VelocMin = 40;
        limite->TipoLimite = 1;
        dia->NroInt = 7;
        dia->NroIntEquip = 34;
        dia->Data = DataDe(5, 3, 2027);
        dia->HoraInicio = 5;
        dia->HoraFim = 2359;
        dia->VelocPerm = 80;
        dia->VelocMin = 40;
        host->Servico("EquiptoRN", "consultaSimplesLimiteDif", [this](const auto &) {
            AoConsultar();
            return Resposta(limite);
        });
        host->Servico("EquiptoRN", "consultaSimplesDiaEspecifico", [this](const auto &) {
            AoConsultar();
            return Resposta(dia);
        });
        for (const char *metodo : {"alteraListaLimitesDif", "adicionaDiaEspecifico", "alteraDiaEspecifico"}) {
            host->Servico("EquiptoRN", metodo, [](const auto &) { return Resposta(); });
        }
        host->LimpaRegistro();
        form = Novo<frmLimitesDifDetalhes>();
    }
    void TearDown() override
    {
        form = nullptr;
        HostTeste::TearDown();
    }

    // Opens the form for new rows of equipment 12, or for row 7; the person does what the script says.
    bool Abre(bool edita, const Especie &especie, const Roteiro &roteiro)
    {
        host->AoMostrarModal("frmLimitesDifDetalhes", roteiro);
        return edita ? form->CarregaEdicao(especie.Tipo, "RAD-01", 7)
                     : form->CarregaInclusao(especie.Tipo, 12, "RAD-01");
    }
    bool Inclui(const Especie &especie, const Roteiro &roteiro) { return Abre(false, especie, roteiro); }
    bool Edita(const Especie &especie, const Roteiro &roteiro) { return Abre(true, especie, roteiro); }

    static void Cancela(Pessoa &p) { EXPECT_TRUE(p.Clica("cmdCancelar")); }
    static void Confirma(Pessoa &p) { EXPECT_TRUE(p.Clica("ztCmdOK")); }
    // Puts values into controls, each on its page; a box is unchecked by none. Of the days it is Monday's.
    static void Poe(Pessoa &p, const Valores &valores)
    {
        for (const auto &[nome, texto] : valores) {
            EXPECT_TRUE(p.Abre("sstDados", nome.ends_with("VelocMin") ? 1 : 0)) << nome;
            const std::int16_t indice = nome == "chkDia" ? 2 : -1;
            if (nome.starts_with("chk")) {
                EXPECT_TRUE(texto.empty() ? p.Desmarca(nome, indice) : p.Marca(nome, indice)) << nome;
            } else {
                EXPECT_TRUE(p.Preenche(nome, texto)) << nome;
            }
        }
    }

    static std::string Texto(const Pessoa &p, const std::string &nome) { return p.Acha<IztMask>(nome)->Text(); }
    static bool Marcada(const Pessoa &p, const std::string &nome, std::int16_t indice = -1)
    {
        return p.Acha<ICheckBox>(nome, indice)->Value() == 1;
    }
    static std::string VelocMin(const Pessoa &p)
    {
        return (Marcada(p, "chkVelocMin") ? "x" : "-") + Texto(p, "txtVelocMin") +
               (p.Acha<IztMask>("txtVelocMin")->ReadOnly() ? "!" : "");
    }
    // What the window shows: caption, code, current page, days, date, hours, speed, minimum speed, buttons. What is
    // hidden stands in parentheses, and what is closed to the person ends in "!".
    std::string Quadro(const Pessoa &p) const
    {
        const auto se = [](bool visivel, const std::string &texto) { return visivel ? texto : "(" + texto + ")"; };
        std::string dias;
        std::string fechados;
        for (std::int16_t dia = 1; dia <= 8; ++dia) {
            dias += Marcada(p, "chkDia", dia) ? std::to_string(dia) : ".";
            fechados += p.Acha("chkDia", dia)->Enabled() ? "" : "!";
        }
        const auto abas = p.Acha<ISSTab>("sstDados");
        return form->Caption() + "|" + p.Acha("lblCodEquip")->Caption() + "|" +
               se(abas->TabVisible(0), std::to_string(abas->Tab())) + "|" +
               se(p.Acha("fraDiasSemana")->Visible(), dias + (fechados == "!!!!!!!!" ? "!" : fechados)) + "|" +
               se(p.Acha("fraData")->Visible(), p.Acha<IztData>("ztdData")->Text()) + "|" + Texto(p, "ztmHInicial") +
               " a " + Texto(p, "ztmHFinal") + "|" + se(p.Acha("fraVelocPerm")->Visible(), Texto(p, "txtVelocPerm")) +
               "|" + se(abas->TabVisible(1), VelocMin(p)) + "|" + se(p.Acha("ztCmdOK")->Visible(), "OK") + " " +
               p.Acha("cmdCancelar")->Caption();
    }

    static std::string SemTravas(std::string quadro)
    {
        std::erase(quadro, '!');
        return quadro;
    }

    // The one record with which an operation was called, as the log has it.
    std::string Enviado(const std::string &metodo)
    {
        const std::string inicio = "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", ";
        const Linhas linhas = host->RegistroDe({inicio});
        return linhas.size() == 1 ? linhas[0].substr(inicio.size(), linhas[0].rfind(')') - inicio.size())
                                  : "chamada " + std::to_string(linhas.size()) + " vezes";
    }

    // The row that the service reads, and what happens when it does.
    Ref<LimiteDifED> limite = Novo<LimiteDifED>();
    Ref<DiaEspecificoED> dia = Novo<DiaEspecificoED>();
    std::function<void()> AoConsultar = [] {};
    Ref<frmLimitesDifDetalhes> form;
};

// Screen.

TEST_F(frmLimitesDifDetalhesTeste, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmLimitesDifDetalhes().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(
        DesenhoIgual(frmLimitesDifDetalhes().Desenho(), "tests/limits/dados/frmLimitesDifDetalhes.desenho.txt"));
}

TEST_F(frmLimitesDifDetalhesTeste, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    EXPECT_TRUE(RetratoIgual(SoCarregada<frmLimitesDifDetalhes>(), "tests/limits/dados"));
}

TEST_F(frmLimitesDifDetalhesTeste, sstDados_OfAnotherTab_EnablesTheFrameOfTheTabAlone)
{
    Inclui(Limite, [](Pessoa &p) {
        for (std::int16_t pagina : {std::int16_t{1}, std::int16_t{0}}) {
            EXPECT_TRUE(p.Abre("sstDados", pagina));
            EXPECT_EQ(p.Acha("fraDados", 0)->Enabled(), pagina == 0);
            EXPECT_EQ(p.Acha("fraDados", 1)->Enabled(), pagina == 1);
            EXPECT_TRUE(pagina == 1 ? p.Marca("chkVelocMin") : p.Preenche("txtVelocPerm", "60"));
        }
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

// One form in all kinds and modes after each other: nothing of an earlier opening stays.
TEST_F(frmLimitesDifDetalhesTeste, Opening_OfEachKindInEachMode_ShowsTheRowThatWasReadOrNone)
{
    struct {
        const Especie &Qual;
        std::string Vazia;
        std::string Lida;
    } const casos[] = {
        {Limite, "........|(  /  /    )|__:__ a __:__||-!", "..3.....!|(  /  /    )|07:30 a 18:05|60|x40"},
        {DiaEspecifico, "(........)|  /  /    |__:__ a __:__||-!", "(........)|05/03/2027|00:05 a 23:59|80|x40"},
        {HorarioProibido, "........|(  /  /    )|__:__ a __:__|()|(-!)",
         "..3.....!|(  /  /    )|07:30 a 18:05|()|(-!)"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Qual.Descr);
        EXPECT_FALSE(Inclui(caso.Qual, [&](Pessoa &p) {
            EXPECT_EQ(Quadro(p), "Novo " + caso.Qual.Descr + "|RAD-01|0|" + caso.Vazia + "|OK &Cancelar");
            Cancela(p);
        }));
        EXPECT_FALSE(host->Contem("EquiptoRN.")) << "a new row is not read";
        for (bool recusada : {false, true}) {
            const auto recusa = [&] {
                if (recusada) {
                    host->RecusaOperacao(caso.Qual.Consulta, "não encontrado");
                }
            };
            const std::string linha = caso.Qual.Descr + "|RAD-01|0|" + (recusada ? caso.Vazia : caso.Lida);
            recusa();
            form->CarregaDetalhes(caso.Qual.Tipo, "RAD-01", 7);
            EXPECT_TRUE(form->Visible());
            Pessoa detalhes(form);
            EXPECT_EQ(SemTravas(Quadro(detalhes)), SemTravas("Detalhes do " + linha + "|(OK) &Fechar"));
            for (const char *campo : {"ztmHInicial", "ztmHFinal", "txtVelocPerm", "ztdData"}) {
                EXPECT_FALSE(detalhes.Preenche(campo, "0900")) << campo;
            }
            EXPECT_FALSE(detalhes.Clica("chkDia", 3));
            EXPECT_EQ(detalhes.Abre("sstDados", 1), caso.Qual.ComVelocidade());
            EXPECT_FALSE(detalhes.Clica("chkVelocMin"));
            EXPECT_FALSE(detalhes.Preenche("txtVelocMin", "90"));
            EXPECT_TRUE(detalhes.Clica("cmdCancelar"));
            EXPECT_FALSE(host->Tela->EstaAberto(form));

            recusa();
            EXPECT_FALSE(Edita(caso.Qual, [&](Pessoa &p) {
                EXPECT_EQ(Quadro(p), "Editar " + linha + "|OK &Cancelar");
                EXPECT_TRUE(p.Preenche("ztmHFinal", "2000"));
                EXPECT_EQ(p.Preenche("ztdData", "06032027"), caso.Qual.DeUmaData());
                EXPECT_EQ(p.Abre("sstDados", 1), caso.Qual.ComVelocidade());
                Cancela(p);
            }));
        }
        EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"não encontrado\""), 2);
        host->LimpaRegistro();
    }
}

// The calls of each opening and of the save after it, and in between what changed on the form: everything that the
// opening decides is turned into its contrary before.
TEST_F(frmLimitesDifDetalhesTeste, OpeningAndSaving_OfEachKindInEachMode_GoInThisOrder)
{
    auto anotada = Novo<FormQueAnota<frmLimitesDifDetalhes>>();
    form = anotada;
    dia->VelocMin = 0;
    bool estraga = false;
    anotada->AoAlterar = [&](const Ref<IControle> &controle) {
        if (!estraga && !host->Contem("goMensagem.PreparaDetalhes")) {
            host->Nota("  " + RetratoControle(controle));
        }
    };
    Linhas diario;
    for (const Especie &especie : Especies) {
        const auto contraria = [&](const std::function<void(Pessoa &)> &poe) {
            Pessoa p(form);
            estraga = true;
            poe(p);
            estraga = false;
        };
        const Conexao mudou = form->Mudou().liga([&] {
            host->Nota("  " + form->Caption() + (form->Visible() ? "" : ", oculto"));
            if (form->Visible()) {
                return;
            }
            contraria([&](Pessoa &p) {
                p.Acha("fraDiasSemana")->DefineVisible(especie.DeUmaData());
                p.Acha("fraData")->DefineVisible(!especie.DeUmaData());
                p.Acha("fraVelocPerm")->DefineVisible(!especie.ComVelocidade());
                p.Acha<ISSTab>("sstDados")->DefineTabVisible(1, !especie.ComVelocidade());
                p.Acha("lblCodEquip")->DefineCaption("?");
            });
        });
        AoConsultar = [&] {
            contraria([&](Pessoa &p) {
                p.Acha<ICheckBox>("chkVelocMin")->DefineValue(1);
                p.Acha<IztMask>("txtVelocMin")->DefineReadOnly(!especie.DeUmaData());
            });
        };
        const auto anota = [&](const std::string &titulo) {
            diario.push_back(titulo + " " + especie.Descr);
            const Linhas linhas = host->Registro();
            diario.insert(diario.end(), linhas.begin(), linhas.end());
            host->LimpaRegistro();
        };
        for (bool edita : {false, true}) {
            EXPECT_TRUE(Abre(edita, especie, [&](Pessoa &p) {
                anota(edita ? "Edita" : "Inclui");
                Preenche(p, especie);
                host->LimpaRegistro();
                Confirma(p);
            }));
            anota("Salva");
        }
        host->RecusaOperacao(especie.Consulta, "não encontrado");
        EXPECT_FALSE(Abre(true, especie, Cancela));
        anota("Edita sem ler");
        AoConsultar = [] {}; // the box is checked then, which opens the field
        form->CarregaDetalhes(especie.Tipo, "RAD-01", 7);
        anota("Detalha");
        Plataforma()->Descarrega(form);
        host->LimpaRegistro();
    }
    EXPECT_TRUE(ArquivoIgual(diario, "tests/limits/dados/frmLimitesDifDetalhes.ordem.txt"));
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaEdicao_OfEachDay_ChecksItsBoxAlone)
{
    for (std::uint8_t numero = 1; numero <= 8; ++numero) {
        limite->Dia = numero;
        Edita(Limite, [&](Pessoa &p) {
            for (std::int16_t codigo = 1; codigo <= 8; ++codigo) {
                EXPECT_EQ(Marcada(p, "chkDia", codigo), codigo == numero) << codigo;
                EXPECT_FALSE(p.Clica("chkDia", codigo)) << codigo;
            }
            Cancela(p);
        });
    }
}

// Whatever stood in the box and the field before, which no opening of today leaves behind.
TEST_F(frmLimitesDifDetalhesTeste, MostraVelocMin_OfEachSpeed_SetsTheBoxAndTheField)
{
    for (const auto &[veloc, mostrada] : {std::pair{0, "-!"}, std::pair{1, "x1"}, std::pair{40, "x40"}}) {
        for (bool marcada : {false, true}) {
            for (bool fechado : {false, true}) {
                AoConsultar = [&] {
                    Pessoa p(form);
                    p.Acha<ICheckBox>("chkVelocMin")->DefineValue(marcada ? 1 : 0);
                    p.Acha<IztMask>("txtVelocMin")->DefineReadOnly(fechado);
                };
                limite->VelocMin = static_cast<std::int16_t>(veloc);
                dia->VelocMin = static_cast<std::int16_t>(veloc);
                for (const Especie &especie : {Limite, DiaEspecifico}) {
                    Edita(especie, [&](Pessoa &p) {
                        EXPECT_EQ(VelocMin(p), mostrada) << especie.Descr << marcada << fechado;
                        Cancela(p);
                    });
                }
            }
        }
    }
}

TEST_F(frmLimitesDifDetalhesTeste, CarregaDetalhes_OfSeveralRows_KeepsAWindowForEach)
{
    for (int minuto : {1, 2, 3}) {
        limite->HoraInicio = minuto;
        Novo<frmLimitesDifDetalhes>()->CarregaDetalhes(Limite.Tipo, "RAD-0" + std::to_string(minuto), minuto);
    }
    auto abertos = host->Tela->FormsAbertos("frmLimitesDifDetalhes");
    ASSERT_EQ(abertos.size(), 3U);
    EXPECT_EQ(Texto(Pessoa(abertos[0]), "ztmHInicial"), "00:01");
    EXPECT_EQ(Pessoa(abertos[1]).Acha("lblCodEquip")->Caption(), "RAD-02");
    EXPECT_EQ(Texto(Pessoa(abertos[2]), "ztmHInicial"), "00:03");
    EXPECT_TRUE(Pessoa(abertos[1]).Clica("cmdCancelar"));
    EXPECT_EQ(host->Tela->FormsAbertos("frmLimitesDifDetalhes"), (std::vector{abertos[0], abertos[2]}));
}

TEST_F(frmLimitesDifDetalhesTeste, chkVelocMin_CheckedAndUnchecked_OpensAndEmptiesTheField)
{
    Inclui(Limite, [](Pessoa &p) {
        Poe(p, {{"chkVelocMin", "x"}});
        EXPECT_EQ(VelocMin(p), "x");
        Poe(p, {{"txtVelocMin", "45"}, {"chkVelocMin", ""}});
        EXPECT_EQ(VelocMin(p), "-!");
        Cancela(p);
    });
}

TEST_F(frmLimitesDifDetalhesTeste, chkVelocMin_Click_ThatFails_IsReportedAndLeavesTheFormOpen)
{
    Inclui(Limite, [&](Pessoa &p) {
        Poe(p, {{"chkVelocMin", "x"}, {"txtVelocMin", "45"}});
        Conexao falha = p.Acha<IztMask>("txtVelocMin")->Change().liga([] { throw Falha(70, "Fora", "negado"); });
        EXPECT_TRUE(p.Desmarca("chkVelocMin"));
        EXPECT_EQ(VelocMin(p), "-") << "it is emptied before it is closed";
        EXPECT_TRUE(form->Visible());
        falha.desliga();
        Cancela(p);
    });
    EXPECT_EQ(host->ErrosNovos(), Linhas{"frmLimitesDifDetalhes.chkVelocMin_Click: 70 (Fora)"});
}

// Validation.

// A check of the form, in the order of the checks.
struct Regra {
    std::string Mensagem;
    std::string Foco;  // empty: none
    std::string Tipos; // the kinds that it is for
    bool Edicao;       // also outside inclusion
    std::vector<Valores> Faltas;
    std::pair<std::string, std::string> Remendo; // what the check asks for, though the next one may not take it

    bool Vale(const Especie &especie) const { return Tipos.find(std::to_string(especie.Tipo)) != std::string::npos; }
};

const Regra Regras[] = {
    {"Informe uma data válida.",
     "ztdData",
     "2",
     true,
     {{{"ztdData", ""}}, {{"ztdData", "2512"}}, {{"ztdData", "31022027"}}},
     {"ztdData", "25122026"}},
    {"Você deve selecionar no mínimo 1 (um) dia!", "", "13", false, {{{"chkDia", ""}}}, {"chkDia", "x"}},
    {"Informe a velocidade permitida.", "txtVelocPerm", "12", true, {{{"txtVelocPerm", ""}}}, {"txtVelocPerm", "0"}},
    {"Informe a hora inicial.", "ztmHInicial", "123", true, {{{"ztmHInicial", ""}}}, {"ztmHInicial", "2400"}},
    {"Informe uma hora inicial válida.",
     "ztmHInicial",
     "123",
     true,
     {{{"ztmHInicial", "2400"}}, {{"ztmHInicial", "1260"}}, {{"ztmHInicial", "073"}}, {{"ztmHInicial", "7"}}},
     {"ztmHInicial", "1000"}},
    {"Informe a hora final.", "ztmHFinal", "123", true, {{{"ztmHFinal", ""}}}, {"ztmHFinal", "0960"}},
    {"Informe uma hora final válida.",
     "ztmHFinal",
     "123",
     true,
     {{{"ztmHFinal", "2400"}}, {{"ztmHFinal", "1260"}}, {{"ztmHFinal", "18"}}},
     {"ztmHFinal", "0959"}},
    {"Horário final deve ser maior que o horário inicial!",
     "ztmHInicial",
     "123",
     true,
     {{{"ztmHInicial", "0800"}, {"ztmHFinal", "0759"}}, {{"ztmHInicial", "2200"}, {"ztmHFinal", "0600"}}},
     {"ztmHFinal", "1000"}},
    {"Informe a velocidade mínima.",
     "txtVelocMin",
     "12",
     true,
     {{{"chkVelocMin", "x"}, {"txtVelocMin", ""}}},
     {"txtVelocMin", "0"}},
};

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfEachFailure_ShowsItsMessageOnItsTabWithItsFocus)
{
    limite->VelocMin = 0;
    dia->VelocMin = 0;
    const auto reprova = [&](const Regra &regra, const Valores &falta, const Especie &especie, bool edita) {
        SCOPED_TRACE(regra.Mensagem + " " + falta.back().second + ", " + especie.Descr + (edita ? ", edicao" : ""));
        const std::int16_t pagina = regra.Foco == "txtVelocMin" ? 1 : 0;
        EXPECT_FALSE(Abre(edita, especie, [&](Pessoa &p) {
            if (!edita) {
                Preenche(p, especie);
            }
            Poe(p, falta);
            if (especie.ComVelocidade()) { // from the other tab
                EXPECT_TRUE(p.Abre("sstDados", static_cast<std::int16_t>(1 - pagina)));
            }
            host->LimpaRegistro();
            Confirma(p);
            EXPECT_EQ(host->AvisosNovos(), Linhas{regra.Mensagem});
            EXPECT_EQ(host->Avisos().back().Controle, regra.Foco);
            EXPECT_EQ(p.Acha<ISSTab>("sstDados")->Tab(), pagina);
            EXPECT_EQ(form->ControleAtivo()->Nome(), regra.Foco.empty() ? "ztCmdOK" : regra.Foco);
            EXPECT_FALSE(host->Contem("EquiptoRN."));
            EXPECT_TRUE(form->Enabled());
            EXPECT_TRUE(form->Visible());
            Cancela(p);
        }));
    };
    for (const Regra &regra : Regras) {
        for (const Valores &falta : regra.Faltas) {
            for (const Especie &especie : Especies) {
                if (regra.Vale(especie)) {
                    reprova(regra, falta, especie, false);
                    if (regra.Edicao) {
                        reprova(regra, falta, especie, true);
                    }
                }
            }
        }
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfAnEmptyForm_TellsTheFailuresInTheirOrder)
{
    for (const Especie &especie : Especies) {
        SCOPED_TRACE(especie.Descr);
        EXPECT_TRUE(Inclui(especie, [&](Pessoa &p) {
            if (especie.ComVelocidade()) {
                Poe(p, {{"chkVelocMin", "x"}});
            }
            for (const Regra &regra : Regras) {
                if (regra.Vale(especie)) {
                    Confirma(p);
                    EXPECT_EQ(host->AvisosNovos(), Linhas{regra.Mensagem});
                    Poe(p, {regra.Remendo});
                }
            }
            Confirma(p);
        }));
        EXPECT_EQ(host->AvisosNovos(), Linhas{});
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ValidouOk_OfAcceptablePeriods_AsksNothingMore)
{
    for (const auto &[inicial, final] :
         {std::pair{"0800", "0800"}, std::pair{"0000", "2359"}, std::pair{"0000", "0000"}, std::pair{"2359", "2359"},
          std::pair{"0959", "1000"}}) {
        for (const Especie &especie : Especies) {
            EXPECT_TRUE(Inclui(especie,
                               [&](Pessoa &p) {
                                   Preenche(p, especie);
                                   Poe(p, {{"ztmHInicial", inicial}, {"ztmHFinal", final}});
                                   Confirma(p);
                               }))
                << especie.Descr << inicial << final;
        }
    }
    EXPECT_EQ(host->AvisosNovos(), Linhas{});
}

// Saving.

// One form for all: a new row after an edited one carries no number.
TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfARow_SendsItInOneCall)
{
    const Valores comMinima{{"chkVelocMin", "x"}, {"txtVelocMin", "45"}};
    struct {
        bool Edita;
        const Especie &Qual;
        Valores Muda; // in a row that is otherwise read, or filled in
        std::string Linha;
    } const casos[] = {
        {true,
         Limite,
         {{"ztmHFinal", "2000"}, {"txtVelocPerm", "110"}},
         "NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=730, HoraFim=2000, VelocPerm=110, VelocMin=40, Ativo=1, "
         "TipoLimite=1"},
        {true,
         Limite,
         {{"chkVelocMin", ""}},
         "NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=730, HoraFim=1805, VelocPerm=60, VelocMin=0, Ativo=1, "
         "TipoLimite=1"},
        {false,
         Limite,
         {},
         "NroIntEquip=12, Dia=2, HoraInicio=730, HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1"},
        {false, Limite, comMinima,
         "NroIntEquip=12, Dia=2, HoraInicio=730, HoraFim=1800, VelocPerm=60, VelocMin=45, Ativo=1, TipoLimite=1"},
        {true,
         HorarioProibido,
         {{"ztmHInicial", "0000"}},
         "NroInt=7, NroIntEquip=34, Dia=3, HoraInicio=0, HoraFim=1805, VelocPerm=0, VelocMin=0, Ativo=1, "
         "TipoLimite=2"},
        {false,
         HorarioProibido,
         {},
         "NroIntEquip=12, Dia=2, HoraInicio=730, HoraFim=1800, VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2"},
        {true,
         DiaEspecifico,
         {{"ztdData", "06/03/2027"}},
         "NroInt=7, NroIntEquip=34, Data=06/03/2027, HoraInicio=5, HoraFim=2359, VelocPerm=80, VelocMin=40, Ativo=1"},
        {true,
         DiaEspecifico,
         {{"chkVelocMin", ""}},
         "NroInt=7, NroIntEquip=34, Data=05/03/2027, HoraInicio=5, HoraFim=2359, VelocPerm=80, VelocMin=0, Ativo=1"},
        {false,
         DiaEspecifico,
         {},
         "NroIntEquip=12, Data=25/12/2026, HoraInicio=730, HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1"},
        {false, // in the past, and speeds in any relation
         DiaEspecifico,
         {{"ztdData", "01011990"}, {"txtVelocPerm", "0"}, {"chkVelocMin", "x"}, {"txtVelocMin", "999"}},
         "NroIntEquip=12, Data=01/01/1990, HoraInicio=730, HoraFim=1800, VelocPerm=0, VelocMin=999, Ativo=1"},
        {false, // a year of two digits
         DiaEspecifico,
         {{"ztdData", "250127"}},
         "NroIntEquip=12, Data=25/01/2027, HoraInicio=730, HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Linha);
        EXPECT_TRUE(Abre(caso.Edita, caso.Qual, [&](Pessoa &p) {
            if (!caso.Edita) {
                Preenche(p, caso.Qual);
            }
            Poe(p, caso.Muda);
            host->LimpaRegistro();
            Confirma(p);
        }));
        EXPECT_EQ(Enviado(caso.Edita ? caso.Qual.Altera : caso.Qual.Inclui),
                  caso.Qual.DeUmaData() ? "DiaEspecificoED{" + caso.Linha + "}"
                                        : "EquiptoED{ListaLimiteDif=[LimiteDifED{" + caso.Linha + "}]}");
        EXPECT_EQ(host->Conta("EquiptoRN."), 1);
    }
    EXPECT_EQ(host->AvisosNovos(), Linhas{});
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfSeveralDays_SendsARowForEachInTheirOrderWithoutAKey)
{
    const auto confere = [&](const Especie &especie, const std::string &dias, const std::string &fim) {
        Linhas enviadas;
        host->Atende<EquiptoED>("EquiptoRN", especie.Inclui, [&](const Ref<EquiptoED> &pedido) {
            const auto &limites = pedido->ListaLimiteDif.Valor();
            for (std::int32_t i = 1; i <= limites->Count(); ++i) {
                enviadas.push_back(limites->Item(i)->Texto());
            }
            for (const char *chave : {"1", "8", "0", ""}) {
                EXPECT_THROW(limites->Item(std::string(chave)), Falha) << chave;
            }
            return Resposta();
        });
        EXPECT_TRUE(Inclui(especie, [&](Pessoa &p) {
            Preenche(p, especie);
            EXPECT_TRUE(p.Desmarca("chkDia", 2));
            for (auto codigo = dias.rbegin(); codigo != dias.rend(); ++codigo) {
                EXPECT_TRUE(p.Marca("chkDia", static_cast<std::int16_t>(*codigo - '0')));
            }
            Confirma(p);
        }));
        Linhas esperadas;
        for (char codigo : dias) {
            esperadas.push_back(std::string("LimiteDifED{NroIntEquip=12, Dia=") + codigo +
                                ", HoraInicio=730, HoraFim=1800, " + fim);
        }
        EXPECT_EQ(enviadas, esperadas);
    };
    confere(Limite, "12345678", "VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}");
    confere(Limite, "18", "VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}");
    confere(HorarioProibido, "12345678", "VelocPerm=0, VelocMin=0, Ativo=1, TipoLimite=2}");
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheSaveIsRefused_KeepsTheFormOpenAndCanBeTriedAgain)
{
    for (const Especie &especie : Especies) {
        for (bool edita : {false, true}) {
            SCOPED_TRACE(especie.Descr + (edita ? ", edicao" : ""));
            const std::string &metodo = edita ? especie.Altera : especie.Inclui;
            EXPECT_TRUE(Abre(edita, especie, [&](Pessoa &p) {
                Preenche(p, especie);
                host->RecusaOperacao(metodo, "Horário em conflito");
                host->LimpaRegistro();
                Confirma(p);
                EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Gateway.CriaObjetoRN(*",
                                                             "EquiptoRN.ExecutaMetodo(\"" + metodo + "\", *",
                                                             "EquiptoRN.MostraErro() -> \"Horário em conflito\"",
                                                             "Plataforma.Ponteiro := 0"}));
                EXPECT_TRUE(form->Visible());
                EXPECT_TRUE(form->Enabled());
                EXPECT_EQ(Texto(p, "ztmHInicial"), "07:30");
                Confirma(p);
            }));
        }
    }
}

// Neither after a refused save nor after an opening that saved, and nothing is asked, whatever was typed.
TEST_F(frmLimitesDifDetalhesTeste, Opening_CancelledOrClosed_IsFalseAndAsksNothing)
{
    EXPECT_FALSE(Inclui(Limite, [&](Pessoa &p) {
        Preenche(p, Limite);
        host->RecusaOperacao("alteraListaLimitesDif", "não");
        Confirma(p);
        Cancela(p);
    }));
    for (bool edita : {false, true}) {
        EXPECT_TRUE(Abre(edita, Limite, [](Pessoa &p) {
            Preenche(p, Limite);
            Confirma(p);
        }));
        EXPECT_FALSE(Abre(edita, Limite, Cancela));
    }
    host->LimpaRegistro();
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
    EXPECT_TRUE(Edita(Limite, Confirma));
    EXPECT_TRUE(travada);
}

// The service's mark of the row goes back with the change; a new row has none, whatever was read before.
TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfARowThatWasRead_HandsBackItsMark)
{
    limite->VersaoLida = 5;
    dia->VersaoLida = 6;
    std::vector<std::int64_t> vindas;
    host->Atende<EquiptoED>("EquiptoRN", "alteraListaLimitesDif", [&](const Ref<EquiptoED> &pedido) {
        vindas.push_back(pedido->ListaLimiteDif.Valor()->Item(1)->VersaoLida);
        return Resposta();
    });
    for (const char *metodo : {"alteraDiaEspecifico", "adicionaDiaEspecifico"}) {
        host->Servico("EquiptoRN", metodo, [&](const Ref<Registro> &pedido) {
            vindas.push_back(pedido->VersaoLida);
            return Resposta();
        });
    }
    for (const Especie *especie : {&Limite, &DiaEspecifico}) {
        EXPECT_TRUE(Edita(*especie, Confirma));
        EXPECT_TRUE(Inclui(*especie, [&](Pessoa &p) {
            Preenche(p, *especie);
            Confirma(p);
        }));
    }
    EXPECT_EQ(vindas, (std::vector<std::int64_t>{5, 0, 6, 0}));
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfALimitThatCouldNotBeRead_SendsWhatIsChecked)
{
    EXPECT_FALSE(Inclui(Limite, Cancela)); // its equipment must not travel with another one's row
    for (bool comDia : {false, true}) {
        host->LimpaRegistro();
        host->RecusaOperacao("consultaSimplesLimiteDif", "fora do ar");
        EXPECT_TRUE(Edita(Limite, [&](Pessoa &p) {
            Preenche(p, Limite);
            Poe(p, {{"chkDia", comDia ? "x" : ""}});
            Confirma(p);
        }));
        EXPECT_EQ(Enviado("alteraListaLimitesDif"),
                  comDia ? "EquiptoED{ListaLimiteDif=[LimiteDifED{NroInt=7, NroIntEquip=0, Dia=2, HoraInicio=730, "
                           "HoraFim=1800, VelocPerm=60, VelocMin=0, Ativo=1, TipoLimite=1}]}"
                         : "EquiptoED{ListaLimiteDif=[]}");
    }
    EXPECT_EQ(host->AvisosNovos(), Linhas{});
}

// Faults.

TEST_F(frmLimitesDifDetalhesTeste, EntryPoints_WhenTheRowCannotBeRead_ReportAndThenUnload)
{
    const auto confere = [&](const Especie &especie, std::int32_t numero, const std::string &comeco,
                             const std::function<void()> &estraga) {
        for (bool detalhes : {false, true}) {
            SCOPED_TRACE(especie.Descr + " " + std::to_string(numero) + (detalhes ? " detalhes" : ""));
            host->LimpaRegistro();
            estraga();
            if (detalhes) {
                form->CarregaDetalhes(especie.Tipo, "RAD-01", 7);
            } else {
                EXPECT_FALSE(form->CarregaEdicao(especie.Tipo, "RAD-01", 7));
            }
            EXPECT_EQ(host->ErrosNovos(),
                      Linhas{"frmLimitesDifDetalhes.CarregaEdicao: " + std::to_string(numero) + " (" + comeco +
                             " < frmLimitesDifDetalhes." + especie.Busca + " < frmLimitesDifDetalhes.MontaTela)"});
            EXPECT_TRUE(RegistroIgual(host->RegistroDe({"ObjInterface.", "goMensagem.", "Plataforma.Descarrega"}),
                                      {"goMensagem.ExibeErro(*", "Plataforma.Descarrega(frmLimitesDifDetalhes)"}));
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_FALSE(host->Tela->EstaAberto(form));
        }
    };
    for (const Especie &especie : Especies) {
        confere(especie, 70, "EquiptoRN.ExecutaMetodo",
                [&] { host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado"); });
    }
    EXPECT_EQ(host->Erros().back().Descricao, "negado");
    for (std::uint8_t inexistente : {std::uint8_t{0}, std::uint8_t{9}}) {
        confere(Limite, 9, "ZTAVOREQUIP", [&] { limite->Dia = inexistente; });
    }
    limite = nullptr;
    dia = nullptr;
    for (const Especie &especie : Especies) {
        confere(especie, 91, "ZTAVOREQUIP", [] {});
    }
}

TEST_F(frmLimitesDifDetalhesTeste, EntryPoints_WhenTheShowFails_ReportUnderTheirNamesAndThenUnload)
{
    const std::pair<std::string, std::function<void()>> entradas[] = {
        {"CarregaInclusao", [&] { EXPECT_FALSE(form->CarregaInclusao(1, 12, "RAD-01")); }},
        {"CarregaEdicao", [&] { EXPECT_FALSE(form->CarregaEdicao(1, "RAD-01", 7)); }},
        {"CarregaEdicao", [&] { form->CarregaDetalhes(1, "RAD-01", 7); }},
    };
    for (const auto &[nome, entra] : entradas) {
        host->LimpaRegistro();
        host->FalhaEm("ObjInterface.MostraJanela");
        entra();
        EXPECT_EQ(host->ErrosNovos(),
                  Linhas{"frmLimitesDifDetalhes." + nome + ": 51 (ObjInterface.MostraJanela < Geral.FormShow)"});
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goMensagem.ExibeErro", "Plataforma.Descarrega"}),
                                  {"goMensagem.ExibeErro(*", "Plataforma.Descarrega(frmLimitesDifDetalhes)"}));
        EXPECT_FALSE(host->Tela->EstaAberto(form));
    }
    EXPECT_TRUE(Edita(Limite, Confirma));
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
    EXPECT_FALSE(Novo<Recusada>()->CarregaInclusao(1, 12, "RAD-01"));
    EXPECT_EQ(host->ErrosNovos(),
              Linhas{"frmLimitesDifDetalhes.CarregaInclusao: 5 (Janela < frmLimitesDifDetalhes.MontaTela)"});
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheSaveFails_RaisesAndStaysOpenUnderTheHourglass)
{
    for (const Especie &especie : Especies) {
        SCOPED_TRACE(especie.Descr);
        EXPECT_TRUE(Edita(especie, [&](Pessoa &p) {
            host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
            EXPECT_TRUE(Lanca(70,
                              "EquiptoRN.ExecutaMetodo < frmLimitesDifDetalhes." + especie.Salva +
                                  " < frmLimitesDifDetalhes.ztCmdOk_Click",
                              [&] { p.Clica("ztCmdOK"); }));
            EXPECT_EQ(host->Tela->Ponteiro(), 11);
            EXPECT_TRUE(form->Visible());
            EXPECT_TRUE(form->Enabled());
            Confirma(p);
        }));
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
    }
    EXPECT_EQ(host->ErrosNovos(), Linhas{});
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_OfAFormThatWasNotFilled_AsksForTheServiceAndSendsNothing)
{
    for (const Especie &especie : Especies) {
        SCOPED_TRACE(especie.Descr);
        Inclui(especie, [&](Pessoa &p) {
            p.Marca("chkDia", 2);
            host->LimpaRegistro();
            EXPECT_TRUE(Lanca(
                13, "ZTAVOREQUIP < frmLimitesDifDetalhes." + especie.Salva + " < frmLimitesDifDetalhes.ztCmdOk_Click",
                [&] { p.Acha<IztCommand>("ztCmdOK")->Click().dispara(); }));
            EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "Gateway.CriaObjetoRN(*"}));
            Plataforma()->DefinePonteiro(PonteiroNormal);
            Cancela(p);
        });
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhoseFormCannotBeUnloaded_HasSaved)
{
    for (const Especie &especie : Especies) {
        EXPECT_TRUE(Edita(especie, [&](Pessoa &p) {
            host->FalhaEm("Plataforma.Descarrega");
            EXPECT_TRUE(
                Lanca(51, "Plataforma.Descarrega < frmLimitesDifDetalhes.ztCmdOk_Click", [&] { p.Clica("ztCmdOK"); }));
            EXPECT_TRUE(form->Visible());
            Cancela(p);
        })) << especie.Descr;
    }
}

TEST_F(frmLimitesDifDetalhesTeste, ztCmdOK_WhenTheMessageFails_RaisesAndDoesNotClick)
{
    Inclui(Limite, [&](Pessoa &p) {
        host->FalhaEm("goMensagem.ExibeMensagem");
        EXPECT_TRUE(Lanca(51,
                          "goMensagem.ExibeMensagem < frmLimitesDifDetalhes.ValidouOk < "
                          "frmLimitesDifDetalhes.ztCmdOk_ValidaClick",
                          [&] { p.Clica("ztCmdOK"); }));
        EXPECT_FALSE(host->Contem("EquiptoRN."));
        EXPECT_TRUE(form->Enabled());
        for (bool antes : {false, true}) {
            bool cancela = antes;
            host->FalhaEm("goMensagem.ExibeMensagem");
            EXPECT_TRUE(Lanca(51, "*", [&] { p.Acha<IztCommand>("ztCmdOK")->ValidaClick().dispara(cancela); }));
            EXPECT_EQ(cancela, antes) << "the flag stays as it was";
        }
        Cancela(p);
    });
    EXPECT_EQ(host->ErrosNovos(), Linhas{});
}

TEST_F(frmLimitesDifDetalhesTeste, sstDados_Click_ThatFails_RaisesWithItsShortTail)
{
    Inclui(Limite, [&](Pessoa &p) {
        Conexao falha = ComoBase(p.Acha("fraDados", 1))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
        EXPECT_TRUE(Lanca(70, "Fora < sstDados_Click", [&] { p.Abre("sstDados", 1); }));
        EXPECT_TRUE(p.Acha("fraDados", 0)->Enabled()) << "the frame left is disabled last";
        falha.desliga();
        Cancela(p);
    });
    EXPECT_EQ(host->ErrosNovos(), Linhas{});
}

TEST_F(frmLimitesDifDetalhesTeste, Opening_OfAKindThatIsNone_IsADayInAllButTheNameAndTheDate)
{
    Especie nenhuma = DiaEspecifico;
    nenhuma.Tipo = 4;
    EXPECT_FALSE(Inclui(nenhuma, [&](Pessoa &p) {
        EXPECT_EQ(Quadro(p), "Novo|RAD-01|0|........|(  /  /    )|__:__ a __:__||-!|OK &Cancelar");
        Cancela(p);
    }));
    EXPECT_TRUE(Edita(nenhuma, [&](Pessoa &p) {
        EXPECT_EQ(Quadro(p), "Editar|RAD-01|0|........|(05/03/2027)|00:05 a 23:59|80|x40|OK &Cancelar");
        Poe(p, {{"txtVelocPerm", "70"}});
        Confirma(p);
    }));
    EXPECT_EQ(Enviado("consultaSimplesDiaEspecifico"), "DiaEspecificoED{NroInt=7}");
    EXPECT_NE(Enviado("alteraDiaEspecifico").find("VelocPerm=70"), std::string::npos);
}

} // namespace
