#include "equipment/frmEquipDetalhes.h"

#include "controls/ztList.h"
#include "shell/ModGeral.h"
#include "tests/equipment/CenarioEquipDetalhes.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/InterfaceQueFalha.h"
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

class frmEquipDetalhesTeste : public EquipDetalhesTeste {};

// Screen.

TEST_F(frmEquipDetalhesTeste, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmEquipDetalhes().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmEquipDetalhes().Desenho(), "tests/equipment/dados/frmEquipDetalhes.desenho.txt"));
}

TEST_F(frmEquipDetalhesTeste, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    const auto carregada = SoCarregada<frmEquipDetalhes>();
    EXPECT_TRUE(RetratoIgual(carregada, "tests/equipment/dados"));
    Pessoa p(carregada);
    for (const char *combo : {"cboTipoMedidor", "cboTipoEquip", "cboMunic", "cboArqLayout", "cboRejeicao"}) {
        EXPECT_EQ(p.Acha<IztCombo>(combo)->IndiceAtual(), -1) << combo;
        EXPECT_EQ(p.Acha<IztCombo>(combo)->NroItens(), 0) << combo;
    }
    EXPECT_EQ(p.Acha("fraTipoVia")->Left(), 4320);
    EXPECT_EQ(p.Acha("fraLimiteVel")->Left(), 180);
}

TEST_F(frmEquipDetalhesTeste, Fields_OfThePerson_TakeWhatTheirSettingsSay)
{
    Inclui([&](Pessoa &p) {
        for (const char *codigo : {"txtCodEquip", "txtSubCodEquip"}) {
            EXPECT_TRUE(p.Preenche(codigo, "a1._-ç 234567890123456789"));
            EXPECT_EQ(Valores(p, codigo), "A1._2345678901234567") << codigo;
        }
        EXPECT_TRUE(p.Preenche("txtDescricao", std::string(60, 'd')));
        EXPECT_EQ(Valores(p, "txtDescricao").size(), 50U);
        EXPECT_TRUE(p.Preenche("txtModelo", std::string(60, 'm')));
        EXPECT_EQ(Valores(p, "txtModelo").size(), 30U);
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "C");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "1x2y34"));
        EXPECT_EQ(Valores(p, "txtVelocPerm"), "123");
        EXPECT_TRUE(p.Digita("cboMunic", "cax")); // searches as the person types
        EXPECT_EQ(Valores(p, "cboMunic"), "55");
        EXPECT_TRUE(p.Digita("cboArqLayout", "ant"));
        EXPECT_EQ(Valores(p, "cboArqLayout"), "Antigo");
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText(std::string(80, 'o'));
        EXPECT_EQ(Valores(p, "txtObsNotif").size(), 70U);
        Descarta(p);
    });
}

TEST_F(frmEquipDetalhesTeste, sstDados_OfEachPage_EnablesTheFrameOfThePageAlone)
{
    Responde(NovoED("C"));
    Edita([](Pessoa &p) {
        for (std::int16_t pagina : {std::int16_t{1}, std::int16_t{2}, std::int16_t{4}, std::int16_t{0}}) {
            EXPECT_TRUE(p.Abre("sstDados", pagina));
            for (std::int16_t moldura = 0; moldura < 5; ++moldura) {
                EXPECT_EQ(p.Acha("fraDados", moldura)->Enabled(), moldura == pagina) << pagina << ' ' << moldura;
            }
        }
        Cancela(p);
    });
}

// Opening.

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_InEachMode_FillsTheCombosAndOpensPage0Alone)
{
    for (bool trabFoto : {false, true}) {
        SCOPED_TRACE(trabFoto);
        host->LimpaRegistro();
        EXPECT_FALSE(Inclui(
            [&](Pessoa &p) {
                EXPECT_EQ(form->Caption(), "Novo Equipamento");
                EXPECT_EQ(Valores(p, "lblClienteInc lblSetorInc"), "Autoridade das Estradas de Rodagem|CENTRAL");
                EXPECT_EQ(Paginas(p), (std::vector<bool>{true, false, false, false, false}));
                EXPECT_EQ(Pagina(p), 0);
                EXPECT_FALSE(p.Abre("sstDados", 1));
                EXPECT_EQ(NroItens(p, "cboTipoMedidor"), trabFoto ? 2 : 3);
                EXPECT_EQ(NroItens(p, "cboTipoEquip"), 0);
                EXPECT_EQ(NroItens(p, "cboMunic"), 4);
                EXPECT_EQ(NroItens(p, "cboArqLayout"), 3); // NENHUM too
                EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->IndiceAtual(), -1);
                EXPECT_EQ(Travados(p, "cboMunic txtCodEquip cboTipoMedidor"), "");
                EXPECT_EQ(Visiveis(p, "frUltAtu"), "");
                EXPECT_TRUE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
                EXPECT_FALSE(p.Acha<IztCommand>("ztCmdOK")->Default());
                EXPECT_EQ(Botoes(p), BotoesDesligados);
                Cancela(p);
            },
            trabFoto));
        const Linhas esperado{
            "Plataforma.Carrega(frmEquipDetalhes)",
            std::string("goDadosVor.PreencheTipoAgente(cboTipoMedidor, ") + (trabFoto ? "True" : "False") +
                ", False, False)",
            "MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY "
            "NOME_MUNICIPIO\", 4, *",
            "goDadosVor.DirLayouts() -> *",
            "objMTM.ClienteLogado() -> \"Autoridade das Estradas de Rodagem\"",
            "objMTM.SetorLogado() -> \"CENTRAL\"",
            "FormMDI.FecharEnviaRecebe(True)",
            "Plataforma.Ponteiro := 0",
            "ObjInterface.MostraJanela(frmEquipDetalhes, modal=True)",
            "Plataforma.Descarrega(frmEquipDetalhes)",
        };
        EXPECT_TRUE(RegistroIgual(
            host->RegistroDe({"Plataforma.Carrega", "Plataforma.Descarrega", "Plataforma.Ponteiro", "goDadosVor.",
                              "MDB.", "objMTM.", "FormMDI.", "ObjInterface.", "EquiptoRN."}),
            esperado));
        EXPECT_TRUE(host->Tela->Perguntas().empty());
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_OfALogonTiedToAMunicipality_ChoosesAndLocksItInThisOrder)
{
    auto anotada = Novo<FormQueAnota<frmEquipDetalhes>>();
    form = anotada;
    glCodMunicLogon = 55;
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        EXPECT_TRUE(
            RegistroIgual(anotada->Alterados, {"cboTipoMedidor", "cboMunic", "cboArqLayout", "lblClienteInc",
                                               "lblSetorInc", "sstDados", "cboMunic", "frUltAtu", "ztCmdAplicar"}));
        EXPECT_EQ(Valores(p, "cboMunic"), "55");
        EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->Texto(), "Caxias do Sul");
        EXPECT_EQ(Travados(p, "cboMunic"), "cboMunic");
        EXPECT_EQ(Botoes(p), BotoesDesligados) << "loading is no change";
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "C");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_FALSE(p.Escolhe("cboMunic", "Agudo"));
        Descarta(p);
    }));
    glCodMunicLogon = 0; // which is none, even if there were one
    host->MDB->TabelaDe("Municipio").Linhas.push_back({0, "Vila Zero", "RS", 1});
    Inclui([](Pessoa &p) {
        EXPECT_EQ(Valores(p, "cboMunic"), "");
        EXPECT_EQ(Travados(p, "cboMunic"), "");
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfAnEquipment_ShowsEveryFieldAndLocksItsIdentity)
{
    Responde(NovoED("C"));
    for (bool trabFoto : {false, true}) {
        host->LimpaRegistro();
        EXPECT_FALSE(Edita(
            [&](Pessoa &p) {
                EXPECT_EQ(form->Caption(), "Detalhes do Equipamento");
                EXPECT_EQ(Valores(p, "lblClienteInc lblSetorInc txtCodEquip txtSubCodEquip txtDescricao"),
                          "ESTADO|NORTE|EQ_1|A.1|Saída da cidade");
                EXPECT_EQ(Valores(p, "cboTipoMedidor cboTipoEquip txtModelo cboMunic cboArqLayout txtVelocPerm"),
                          "1|C|ACME 3|120|PADRAO|80");
                EXPECT_EQ(Valores(p, "lblTolerancia optRodovia optUrbana optInfGeraBanco"), "7 Km/h|sim|não|não");
                EXPECT_EQ(Valores(p, "lblCliente lblOperador lblData lblHora"),
                          "Autoridade das Estradas de Rodagem|77|05/11/2026|09:30:15");
                EXPECT_EQ(Valores(p, "chkEntrelacada chkPerfilMagnetico optTrabDiasDif(1) optTrabDiasDif(0)"),
                          "sim|não|sim|não");
                EXPECT_EQ(Valores(p, "chkRejeicaoAuto cboRejeicao chkIncObsNotif txtObsNotif"),
                          "sim|32|sim|Obs. da via");
                EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->Texto(), "Imagem sem nitidez");
                EXPECT_EQ(Habilitados(p, "chkRejeicaoAuto cboRejeicao"), "chkRejeicaoAuto cboRejeicao");
                EXPECT_EQ(Visiveis(p, "frUltAtu"), "frUltAtu");

                EXPECT_FALSE(p.Preenche("txtCodEquip", "X"));
                EXPECT_FALSE(p.Escolhe("cboTipoMedidor", "Estático"));
                EXPECT_FALSE(p.Escolhe("cboTipoEquip", "Lombada"));
                EXPECT_EQ(Travados(p, "txtSubCodEquip cboMunic txtObsNotif"), "cboMunic");
                EXPECT_TRUE(p.Abre("sstDados", 1));
                EXPECT_FALSE(p.Escolhe("cboMunic", "Agudo"));
                EXPECT_FALSE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
                EXPECT_EQ(Botoes(p), BotoesDesligados);
                Cancela(p);
            },
            trabFoto));
        const std::string modo = trabFoto ? "True" : "False";
        const Linhas esperado{
            "EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=7}) -> True",
            "EquiptoRN.ObtemRetorno() -> *",
            "Plataforma.Carrega(frmEquipDetalhes)",
            "goDadosVor.PreencheTipoAgente(cboTipoMedidor, " + modo + ", False, False)",
            "MDB.OpenRecordset(*",
            "goDadosVor.DirLayouts() -> *",
            "goDadosVor.PreencheTipoEquip(cboTipoEquip, 1, " + modo + ", False, False)",
            "goDadosVor.PreencheRejeicoes(cboRejeicao, 0, 0)",
            "ObjInterface.MostraJanela(frmEquipDetalhes, modal=True)",
        };
        EXPECT_TRUE(RegistroIgual(
            host->RegistroDe({"EquiptoRN.", "Plataforma.Carrega", "goDadosVor.", "MDB.", "ObjInterface."}), esperado));
        EXPECT_TRUE(host->Tela->Perguntas().empty()) << "loading is no change";
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfOptions_ShowsThemAsTheyAre)
{
    struct {
        const char *Membros;
        const char *Controles;
        const char *Valores;     // of the first of them
        const char *Habilitados; // of all; empty: of no interest
        std::int32_t Rejeicoes;  // that are offered
    } const casos[] = {
        {R"(TemImagemEntrelacada=0, TemPerfilMag=1, TemLimiteDif=2, NroIntRejLimDif=0, txtObsNotif="")",
         "chkEntrelacada chkPerfilMagnetico optTrabDiasDif(0) chkRejeicaoAuto chkIncObsNotif txtObsNotif "
         "lblTextoRejLimDif cboRejeicao lblRejeicao",
         "não|sim|sim|não|não||", "chkEntrelacada chkPerfilMagnetico optTrabDiasDif chkIncObsNotif txtObsNotif", 0},
        {"NroIntRejLimDif=-1", "chkRejeicaoAuto", "não", "chkRejeicaoAuto", 0},
        {"NroIntRejLimDif=1", "chkRejeicaoAuto", "sim", "chkRejeicaoAuto", 2},
        {"NroIntRejLimDif=999", "chkRejeicaoAuto cboRejeicao", "sim|", "chkRejeicaoAuto cboRejeicao", 2}, // not offered
        {"TemLimiteDif=2", "optTrabDiasDif(0) chkRejeicaoAuto cboRejeicao", "sim|sim|32", "optTrabDiasDif cboRejeicao",
         2},
        {R"(TipoVia="R")", "optRodovia optUrbana optInfGeraBanco", "sim|não|não", "", 2},
        {R"(TipoVia="U")", "optRodovia optUrbana optInfGeraBanco", "não|sim|não", "", 2},
        {R"(TipoVia="I")", "optRodovia optUrbana optInfGeraBanco", "não|não|sim", "", 2},
        {R"(TipoVia="")", "optRodovia optUrbana optInfGeraBanco", "não|não|não", "", 2},
        {R"(TipoVia="r")", "optRodovia optUrbana optInfGeraBanco", "não|não|não", "", 2},
        {R"(TipoVia="X")", "optRodovia optUrbana optInfGeraBanco", "não|não|não", "", 2},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Membros);
        Responde(NovoED("C", caso.Membros));
        Edita([&](Pessoa &p) {
            EXPECT_TRUE(Valores(p, caso.Controles).starts_with(caso.Valores)) << Valores(p, caso.Controles);
            if (*caso.Habilitados != '\0') {
                EXPECT_EQ(Habilitados(p, caso.Controles), caso.Habilitados);
            }
            EXPECT_EQ(NroItens(p, "cboRejeicao"), caso.Rejeicoes);
            EXPECT_EQ(Travados(p, "txtObsNotif"), &caso == &casos[0] ? "txtObsNotif" : "");
            Cancela(p);
        });
    }
}

TEST_F(frmEquipDetalhesTeste, MostraDados_OfAnEquipment_FillsTheControlsInThisOrder)
{
    auto ed = NovoED("C");
    ed->TemPerfilMag = 1;
    Responde(ed);
    const Linhas esperado{
        "cboTipoMedidor", // filled
        "cboMunic",           "cboArqLayout",
        "lblClienteInc", // shown, from here on
        "lblSetorInc",        "txtCodEquip",       "txtSubCodEquip", "txtDescricao", "cboTipoMedidor", "cboTipoEquip",
        "fraObsNotif", // by the rule of the type
        "txtModelo",          "cboMunic",          "cboArqLayout",   "txtVelocPerm", "lblTolerancia",  "optRodovia",
        "lblCliente",         "lblOperador",       "lblData",        "lblHora",      "sstDados",       "chkEntrelacada",
        "chkPerfilMagnetico", "optTrabDiasDif(1)",
        "chkRejeicaoAuto", // enabled by that answer
        "lblTextoRejLimDif",  "chkRejeicaoAuto",   "cboRejeicao",    "lblRejeicao",  "cboRejeicao",    "chkIncObsNotif",
        "txtObsNotif",
        "txtCodEquip", // locked, from here on
        "cboTipoMedidor",     "cboTipoEquip",      "cboMunic"};
    auto anotada = Novo<FormQueAnota<frmEquipDetalhes>>();
    form = anotada;
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(RegistroIgual(anotada->Alterados, esperado));
        Cancela(p);
    });
    anotada->Alterados.clear();
    Detalha([&](Pessoa &p) {
        Linhas comBotoes = esperado;
        comBotoes.insert(comBotoes.end(), {"cmdCancelar", "ztCmdOK", "ztCmdAplicar"});
        ASSERT_GT(anotada->Alterados.size(), comBotoes.size());
        anotada->Alterados.resize(comBotoes.size()); // without what making it read-only changed
        EXPECT_TRUE(RegistroIgual(anotada->Alterados, comBotoes));
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfCodesThatAreNotOffered_LeavesTheCombosWithoutAChoice)
{
    for (const char *tipo : {"Z", "M"}) { // the pages are those of what the combo has
        Responde(NovoED(tipo, R"(TipoAgente=9, CodMunic=900, ArquivoLayout="SUMIU")"));
        Edita([](Pessoa &p) {
            for (const char *combo : {"cboTipoMedidor", "cboTipoEquip", "cboMunic", "cboArqLayout"}) {
                EXPECT_EQ(p.Acha<IztCombo>(combo)->IndiceAtual(), -1) << combo;
            }
            EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, true, false, true})) << "as of any other type";
            Cancela(p);
        });
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_WhenTheServiceRefuses_IsFalseWithoutAWindow)
{
    for (bool detalhes : {false, true}) {
        host->LimpaRegistro();
        host->RecusaOperacao("consulta", "Equipamento não encontrado");
        if (detalhes) {
            form->CarregaDetalhes(7, false);
        } else {
            EXPECT_FALSE(form->CarregaEdicao(7, false));
        }
        EXPECT_TRUE(
            RegistroIgual(host->Registro(), Linhas{"Gateway.CriaObjetoRN(*", "EquiptoRN.ExecutaMetodo(*",
                                                   "EquiptoRN.MostraErro() -> \"Equipamento não encontrado\""}));
        EXPECT_EQ(host->Tela->NroForms(), 0);
    }
    Responde(NovoED());
    EXPECT_FALSE(Edita(Cancela));
}

TEST_F(frmEquipDetalhesTeste, CarregaDetalhes_OfEachKindOfType_IsModalAndReadOnly)
{
    for (const char *tipo : {"C", "F", "A", "M"}) {
        SCOPED_TRACE(tipo);
        Responde(NovoED(tipo));
        host->LimpaRegistro();
        Detalha([&](Pessoa &p) {
            EXPECT_EQ(form->Caption(), "Detalhes do Equipamento");
            EXPECT_EQ(Valores(p, "cmdCancelar txtDescricao"), "&Fechar|Saída da cidade");
            EXPECT_EQ(p.Acha("cmdCancelar")->Left(), p.Acha("ztCmdAplicar")->Left());
            EXPECT_EQ(Visiveis(p, "ztCmdOK ztCmdAplicar"), "");
            for (const char *campo : {"txtCodEquip", "txtSubCodEquip", "txtDescricao", "txtModelo"}) {
                EXPECT_FALSE(p.Preenche(campo, "X")) << campo;
            }
            const std::string combos = "cboTipoMedidor cboTipoEquip cboMunic cboArqLayout cboRejeicao";
            EXPECT_EQ(Travados(p, combos), combos);
            EXPECT_TRUE(p.Abre("sstDados", 1));
            EXPECT_FALSE(p.Preenche("txtVelocPerm", "90"));
            EXPECT_FALSE(p.Clica("optUrbana"));
            if (p.Abre("sstDados", 4)) {
                for (const char *caixa :
                     {"chkEntrelacada", "chkPerfilMagnetico", "chkRejeicaoAuto", "chkIncObsNotif"}) {
                    EXPECT_FALSE(p.Clica(caixa)) << caixa;
                }
                EXPECT_FALSE(p.Clica("optTrabDiasDif", 0));
                EXPECT_FALSE(p.Preenche("txtObsNotif", "x"));
            }
            Cancela(p);
        });
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goMensagem.PreparaDetalhes", "ObjInterface."}),
                                  Linhas{"goMensagem.PreparaDetalhes(frmEquipDetalhes)",
                                         "ObjInterface.MostraJanela(frmEquipDetalhes, modal=True)"}));
        EXPECT_TRUE(host->Tela->Perguntas().empty());
    }
}

TEST_F(frmEquipDetalhesTeste, SharedForm_OpenedInEachModeInTurn_StartsFromItsDesignAndCountsChanges)
{
    AceitaSalvar();
    Responde(NovoED("M"));
    for (bool inclui : {true, false, true}) {
        Detalha([](Pessoa &p) {
            EXPECT_TRUE(p.Abre("sstDados", 3));
            Cancela(p);
        });
        const auto roteiro = [&](Pessoa &p) {
            EXPECT_EQ(form->Caption(), inclui ? "Novo Equipamento" : "Detalhes do Equipamento");
            EXPECT_EQ(Pagina(p), 0);
            EXPECT_EQ(Visiveis(p, "ztCmdOK"), "ztCmdOK");
            EXPECT_EQ(Valores(p, "cmdCancelar txtDescricao optInfGeraBanco"),
                      inclui ? "&Cancelar||não" : "&Cancelar|Saída da cidade|não");
            EXPECT_NE(p.Acha("cmdCancelar")->Left(), p.Acha("ztCmdAplicar")->Left());
            EXPECT_EQ(p.Acha<IztCommand>("ztCmdAplicar")->Default(), inclui);
            EXPECT_EQ(NroItens(p, "cboMunic"), 4);
            EXPECT_EQ(Botoes(p), BotoesDesligados);
            EXPECT_TRUE(p.Preenche("txtDescricao", "x"));
            EXPECT_EQ(Botoes(p), inclui ? SoAplicar : BotoesLigados);
            Fecha(p);
        };
        inclui ? Inclui(roteiro) : Edita(roteiro);
    }
}

// Rules by type.

// What a type shows.
struct RegraDoTipo {
    const char *Tipo;
    bool Layout;
    bool LimiteVel;
    bool TipoVia;
    std::int32_t Left; // of the frame of the road type; 0: unchanged
    bool Banco;        // optInfGeraBanco shown and forced on; otherwise hidden and off
    bool LimiteDif;
    bool ObsNotif;
    std::vector<bool> Paginas; // of a saved equipment
};

const std::vector<bool> SoAfericoes{true, true, false, true, false};
const std::vector<bool> SensoresEOpcoes{true, true, true, false, true};

const RegraDoTipo Regras[] = {
    {"M", true, false, true, 180, true, false, false, {true, true, false, true, true}},
    {"E", false, false, false, 0, false, true, false, SoAfericoes},
    {"U", false, false, false, 0, false, true, false, SoAfericoes},
    {"B", false, false, false, 0, false, true, false, SoAfericoes},
    {"A", false, true, false, 0, false, true, false, SoAfericoes},
    {"F", true, false, true, 180, false, false, true, SensoresEOpcoes},
    {"V", true, false, true, 180, false, false, true, {true, true, false, false, true}},
    {"C", true, true, true, 4320, false, true, false, SensoresEOpcoes},
    {"L", true, true, true, 4320, false, true, false, SensoresEOpcoes},
    {"P", true, true, true, 4320, false, true, false, SensoresEOpcoes},
    {"R", true, true, true, 4320, false, true, false, SensoresEOpcoes},
    {"X", true, true, true, 4320, false, true, false, SensoresEOpcoes},
    {"", true, true, true, 4320, false, true, false, SensoresEOpcoes},
};

class RegrasPorTipoTeste : public frmEquipDetalhesTeste {
  protected:
    static void ConfereMolduras(const Pessoa &p, const RegraDoTipo &regra, std::int32_t left)
    {
        const auto visivel = [&](const char *nome) { return p.Acha(nome)->Visible(); };
        EXPECT_EQ(visivel("fraLayout"), regra.Layout);
        EXPECT_EQ(visivel("fraLimiteVel"), regra.LimiteVel);
        EXPECT_EQ(visivel("fraTipoVia"), regra.TipoVia);
        EXPECT_EQ(p.Acha("fraTipoVia")->Left(), regra.Left != 0 ? regra.Left : left);
        EXPECT_EQ(visivel("optInfGeraBanco"), regra.Banco);
        EXPECT_EQ(Valores(p, "optInfGeraBanco"), regra.Banco ? "sim" : "não");
        EXPECT_EQ(visivel("fraLimiteDif"), regra.LimiteDif);
        EXPECT_EQ(visivel("fraObsNotif"), regra.ObsNotif);
    }
};

TEST_F(RegrasPorTipoTeste, cboTipoEquip_OfEachTypeAfterEachOther_AppliesTheRowOfTheType)
{
    for (const RegraDoTipo &antes : Regras) {
        for (const RegraDoTipo &depois : Regras) {
            for (bool urbana : {false, true}) {
                if (&antes == &depois) {
                    continue;
                }
                SCOPED_TRACE(std::string(antes.Tipo) + " -> " + depois.Tipo + (urbana ? ", urbana" : ""));
                Inclui([&](Pessoa &p) {
                    EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
                    EscolheTipo(p, antes.Tipo);
                    ConfereMolduras(p, antes, 4320);
                    EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabEnabled(1));
                    const std::int32_t left = p.Acha("fraTipoVia")->Left();
                    p.Acha<IztMask>("txtVelocPerm")->DefineText("80");
                    if (urbana) {
                        p.Acha<IOptionButton>("optUrbana")->DefineValue(true);
                    }
                    EscolheTipo(p, depois.Tipo);
                    ConfereMolduras(p, depois, left);
                    EXPECT_EQ(Valores(p, "optUrbana optRodovia"), urbana && !depois.Banco ? "sim|não" : "não|não");
                    EXPECT_EQ(Valores(p, "txtVelocPerm lblTolerancia"), depois.Banco ? "|" : "80|7 Km/h");
                    EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, false, false, false}));
                    EXPECT_TRUE(p.Abre("sstDados", 1));
                    EXPECT_EQ(p.Foco("txtVelocPerm"), depois.LimiteVel);
                    EXPECT_EQ(p.Foco("cboArqLayout"), depois.Layout);
                    EXPECT_EQ(p.Foco("optUrbana"), depois.TipoVia);
                    EXPECT_TRUE(p.Foco("cboMunic"));
                    Fecha(p);
                });
            }
        }
    }
}

TEST_F(RegrasPorTipoTeste, cboTipoEquip_LeftWithoutAChoice_AppliesTheRowOfAnyOtherAndOpensPage1)
{
    Inclui([](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "M");
        p.Acha<ISSTab>("sstDados")->DefineTabEnabled(1, false);
        p.Acha<IztCombo>("cboTipoEquip")->DefineIndiceAtual(-1);
        ConfereMolduras(p, Regras[std::size(Regras) - 1], 180);
        EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabEnabled(1));
        Fecha(p);
    });
}

TEST_F(RegrasPorTipoTeste, MostraDados_OfEachType_OffersItsPagesAndFrames)
{
    for (const RegraDoTipo &regra : Regras) {
        SCOPED_TRACE(regra.Tipo);
        Responde(NovoED(regra.Tipo, regra.Banco ? R"(TipoVia="I", VelocPermitida=0)" : ""));
        for (bool detalhes : {false, true}) {
            const auto roteiro = [&](Pessoa &p) {
                EXPECT_EQ(Paginas(p), regra.Paginas);
                ConfereMolduras(p, regra, 4320);
                EXPECT_EQ(Valores(p, "txtVelocPerm"), regra.Banco ? "0" : "80") << "hidden or not";
                for (std::int16_t pagina : {std::int16_t{2}, std::int16_t{3}, std::int16_t{4}}) {
                    EXPECT_EQ(p.Abre("sstDados", pagina), regra.Paginas[static_cast<std::size_t>(pagina)]) << pagina;
                }
                Cancela(p);
            };
            detalhes ? Detalha(roteiro) : static_cast<void>(Edita(roteiro));
        }
    }
}

TEST_F(frmEquipDetalhesTeste, cboTipoMedidor_OfEachMeterType_FillsTheTypesItOffers)
{
    host->Dominio->TiposEquipamento = {{"C", "Caetano", 1, false}, {"M", "Pardal Móvel", 2, false}};
    Inclui([&](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EXPECT_TRUE(p.Escolhe("cboTipoEquip", "Caetano"));
        EXPECT_EQ(Botoes(p), SoAplicar);
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Estático"));
        EXPECT_EQ(NroItens(p, "cboTipoEquip"), 1);
        EXPECT_EQ(p.Acha<IztCombo>("cboTipoEquip")->IndiceAtual(), -1);
        EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabEnabled(1)) << "once available it stays";
        p.Acha<IztCombo>("cboTipoMedidor")->DefineIndiceAtual(-1);
        Fecha(p);
    });
    const auto comTrabFoto = [](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        Fecha(p);
    };
    Inclui(comTrabFoto, true);
    EXPECT_EQ(host->RegistroDe({"goDadosVor.PreencheTipoEquip"}),
              (Linhas{"goDadosVor.PreencheTipoEquip(cboTipoEquip, 1, False, False, False)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquip, 2, False, False, False)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquip, 0, False, False, False)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquip, 1, True, False, False)"}));
}

// Small rules.

TEST_F(frmEquipDetalhesTeste, txtVelocPerm_OfEachSpeed_WordsItsTolerance)
{
    struct {
        const char *Veloc;
        const char *Tolerancia;
    } const casos[] = {{"1", "7 Km/h"},
                       {"99", "7 Km/h"},
                       {"100", "7% sobre velocidade medida."},
                       {"0", "7 Km/h"},
                       {"", ""},
                       {"101", "7% sobre velocidade medida."},
                       {"099", "7 Km/h"},
                       {"999", "7% sobre velocidade medida."}};
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 1));
        for (const auto &caso : casos) {
            EXPECT_TRUE(p.Preenche("txtVelocPerm", caso.Veloc));
            EXPECT_EQ(Valores(p, "lblTolerancia"), caso.Tolerancia) << caso.Veloc;
        }
        Descarta(p);
    });
}

TEST_F(frmEquipDetalhesTeste, optTrabDiasDif_OfEachAnswer_OpensAndClosesTheRejection)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        const std::string controles = "chkRejeicaoAuto lblTextoRejLimDif cboRejeicao lblRejeicao";
        const auto confere = [&](const std::string &marcada, std::int32_t itens, const std::string &habilitados) {
            EXPECT_EQ(Valores(p, "chkRejeicaoAuto"), marcada);
            EXPECT_EQ(NroItens(p, "cboRejeicao"), itens);
            EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->IndiceAtual(), -1);
            EXPECT_EQ(Habilitados(p, controles), habilitados);
        };
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 0));
        confere("não", 0, "");

        host->LimpaRegistro();
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 1));
        confere("não", 0, "chkRejeicaoAuto lblTextoRejLimDif");
        EXPECT_FALSE(host->Contem("goDadosVor."));

        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        EXPECT_EQ(host->RegistroDe({"goDadosVor."}), (Linhas{"goDadosVor.PreencheRejeicoes(cboRejeicao, 0, 0)"}));
        confere("sim", 2, controles);
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));

        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        confere("não", 0, "chkRejeicaoAuto lblTextoRejLimDif");
        Descarta(p);
    });
}

TEST_F(frmEquipDetalhesTeste, RuleEvents_OfThePerson_ChangeTheControlsInThisOrder)
{
    Responde(NovoED("C"));
    auto anotada = Novo<FormQueAnota<frmEquipDetalhes>>();
    form = anotada;
    Edita([&](Pessoa &p) {
        const auto alterados = [&](const std::function<void()> &faz) {
            anotada->Alterados.clear();
            faz();
            return anotada->Alterados;
        };
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_EQ(alterados([&] { EXPECT_TRUE(p.Digita("txtVelocPerm", "0")); }),
                  (Linhas{"txtVelocPerm", "lblTolerancia", "ztCmdOK", "ztCmdAplicar"}));
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_EQ(alterados([&] { EXPECT_TRUE(p.Clica("optTrabDiasDif", 0)); }),
                  (Linhas{"optTrabDiasDif(1)", "optTrabDiasDif(0)",
                          "chkRejeicaoAuto", // taken back, which closes the rejection
                          "cboRejeicao", "lblRejeicao",
                          "chkRejeicaoAuto", // disabled
                          "lblTextoRejLimDif"}));
        EXPECT_EQ(alterados([&] { EXPECT_TRUE(p.Clica("optTrabDiasDif", 1)); }),
                  (Linhas{"optTrabDiasDif(0)", "optTrabDiasDif(1)", "chkRejeicaoAuto", "lblTextoRejLimDif"}));
        for (int vez = 0; vez < 2; ++vez) {
            EXPECT_EQ(alterados([&] { EXPECT_TRUE(p.Clica("chkRejeicaoAuto")); }),
                      (Linhas{"chkRejeicaoAuto", "cboRejeicao", "lblRejeicao"}));
        }
        Descarta(p);
    });
    const std::pair<const char *, Linhas> tipos[] = {
        {"E", {"cboTipoEquip", "fraLayout", "fraLimiteVel", "fraTipoVia", "fraObsNotif", "sstDados"}},
        {"F", {"cboTipoEquip", "fraLayout", "fraTipoVia", "fraLimiteDif", "fraObsNotif"}},
        {"A", {"cboTipoEquip", "fraLayout", "fraLimiteVel", "fraTipoVia", "fraLimiteDif", "fraObsNotif"}},
        {"M",
         {"cboTipoEquip", "fraLayout", "fraLimiteVel", "fraTipoVia", "optInfGeraBanco", "fraLimiteDif", "txtVelocPerm",
          "lblTolerancia"}},
    };
    Inclui([&](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        p.Acha<IztMask>("txtVelocPerm")->DefineText("80");
        for (const auto &[tipo, esperado] : tipos) {
            anotada->Alterados.clear();
            EscolheTipo(p, tipo);
            EXPECT_TRUE(RegistroIgual(anotada->Alterados, esperado)) << tipo;
        }
        Descarta(p);
    });
}

TEST_F(frmEquipDetalhesTeste, chkIncObsNotif_OfEachState_OpensOrEmptiesTheObservation)
{
    Responde(NovoED("F"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Clica("chkIncObsNotif"));
        EXPECT_EQ(Valores(p, "txtObsNotif"), "");
        EXPECT_EQ(Travados(p, "txtObsNotif"), "txtObsNotif");
        EXPECT_FALSE(p.Preenche("txtObsNotif", "x"));
        EXPECT_TRUE(p.Clica("chkIncObsNotif"));
        EXPECT_TRUE(p.Preenche("txtObsNotif", "nova"));
        EXPECT_EQ(Valores(p, "txtObsNotif"), "nova");
        Descarta(p);
    });
}

// Pages with lists.

class PaginasDeListaTeste : public frmEquipDetalhesTeste {
  protected:
    static Linhas Coluna(const Pessoa &p, const std::string &nome, std::int32_t coluna)
    {
        const auto lista = p.Acha<ztList>(nome);
        Linhas celulas;
        for (std::int32_t linha = 1; linha <= lista->NroItens(); ++linha) {
            celulas.push_back(lista->TextoCelula(linha, coluna));
        }
        return celulas;
    }
    static bool PodeIncluir(const Pessoa &p, const std::string &lista)
    {
        return p.Acha<IztList>(lista)->ItemMenu("mnuZTLObjNovo")->Enabled();
    }
};

TEST_F(PaginasDeListaTeste, PageSensores_OnItsFirstVisit_LoadsTheSensorsOnce)
{
    Responde(NovoED("C", Sensores(Sensor(51, 1, "Pista norte") + ", " + Sensor(52, 2, "Pista sul"))));
    Edita([&](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztList>("ztListaSensor")->NroItens(), 0);
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_EQ(p.Acha<IztList>("ztListaSensor")->NroItens(), 0) << "not before the visit";
        host->LimpaRegistro();
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_EQ(Coluna(p, "ztListaSensor", 2), (Linhas{"Pista norte", "Pista sul"}));
        EXPECT_TRUE(PodeIncluir(p, "ztListaSensor"));
        EXPECT_EQ(host->Registro(), (Linhas{"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        const auto arranjo = p.Acha<ztList>("ztListaSensor")->Arranjo();
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_EQ(p.Acha<ztList>("ztListaSensor")->Arranjo(), arranjo);
        EXPECT_EQ(host->Registro().size(), 2U) << "nothing is read again";
        Cancela(p);
    });
}

// Whether the fault came before the rows or behind them, the list is the controller's from then on.
TEST_F(PaginasDeListaTeste, PageLists_AfterALoadThatFailed_AreNotLoadedAgainAndWork)
{
    struct {
        const char *Tipo;
        std::int16_t Pagina;
        const char *Lista;
        std::size_t Colunas;
        const char *Form;
        const char *Pergunta;
        const char *Enviado;
    } const casos[] = {
        {"C", 2, "ztListaSensor", 3, "frmEquipSensores", "Confirma a exclusão deste sensor?",
         "SensorED{NroIntSensor=51, NroSensor=1, Ativo=2"},
        {"A", 3, "ztListaAfericao", 6, "frmEquipAfericoes", "Confirma a exclusão desta aferição?",
         "AfericaoED{NroIntAfericao=71, "},
    };
    AceitaSalvar();
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Lista);
        const auto visita = [&](std::int32_t ponteiro, std::int32_t linhas, const Roteiro &depois) {
            Responde(NovoED(caso.Tipo, Sensores(Sensor(51, 1, "Pista norte", Afericao(71, "N1")))));
            Edita([&](Pessoa &p) {
                const auto lista = p.Acha<ztList>(caso.Lista);
                host->FalhaEm("Plataforma.Ponteiro", ponteiro);
                EXPECT_TRUE(p.Abre("sstDados", caso.Pagina));
                EXPECT_TRUE(RegistroIgual(Erros(), {"frmEquipDetalhes.sstDados_Click: 51 (Plataforma.Ponteiro < CO*"}));
                EXPECT_EQ(host->Tela->Ponteiro(), 0);
                EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
                EXPECT_TRUE(p.Acha("fraDados", caso.Pagina)->Enabled());
                EXPECT_TRUE(p.Abre("sstDados", 0));
                host->LimpaRegistro();
                EXPECT_TRUE(p.Abre("sstDados", caso.Pagina));
                EXPECT_EQ(host->Registro(), Linhas{}) << "not loaded again";
                EXPECT_EQ(lista->Colunas().size(), caso.Colunas);
                EXPECT_EQ(lista->NroItens(), linhas);
                depois(p);
            });
        };
        visita(1, 0, [&](Pessoa &p) { // the hourglass
            host->AoMostrarModal(caso.Form, [](Pessoa &outra) { Cancela(outra); });
            EXPECT_TRUE(p.EscolheMenu(caso.Lista, "mnuZTLObjNovo"));
            Cancela(p);
        });
        visita(2, 1, [&](Pessoa &p) { // the pointer back to the default
            EXPECT_TRUE(p.ClicaLinha(caso.Lista, 1));
            host->Responde(caso.Pergunta, false);
            EXPECT_TRUE(p.EscolheMenu(caso.Lista, "mnuZTLObjExcluir"));
            EXPECT_EQ(p.Acha<ztList>(caso.Lista)->NroItens(), 1);
            host->Responde(caso.Pergunta, true);
            EXPECT_TRUE(p.EscolheMenu(caso.Lista, "mnuZTLObjExcluir"));
            EXPECT_EQ(p.Acha<ztList>(caso.Lista)->NroItens(), 0);
            Aplica(p, false, true, "ztCmdOK");
            EXPECT_NE(Enviado("altera").find(caso.Enviado), std::string::npos) << Enviado("altera");
        });
    }
}

TEST_F(PaginasDeListaTeste, PageAfericoes_OfAnEquipmentWithSensors_ShowsTheFirstOnesCalibrations)
{
    Responde(NovoED("A", Sensores(Sensor(51, 1, "", Afericao(71, "N1") + ", " + Afericao(72, "N2")) + ", " +
                                  Sensor(52, 2, "", Afericao(73, "N3")))));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_EQ(Coluna(p, "ztListaAfericao", 2), (Linhas{"N1", "N2"}));
        EXPECT_TRUE(PodeIncluir(p, "ztListaAfericao"));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        const auto arranjo = p.Acha<ztList>("ztListaAfericao")->Arranjo();
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_EQ(p.Acha<ztList>("ztListaAfericao")->Arranjo(), arranjo);
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        Cancela(p);
    });
}

TEST_F(PaginasDeListaTeste, PageLists_InDetails_AreReadOnly)
{
    for (bool sensores : {true, false}) {
        Responde(NovoED(sensores ? "C" : "A", Sensores(Sensor(51, 1, "Pista norte"))));
        Detalha([&](Pessoa &p) {
            EXPECT_TRUE(p.Abre("sstDados", sensores ? 2 : 3));
            EXPECT_FALSE(PodeIncluir(p, sensores ? "ztListaSensor" : "ztListaAfericao"));
            Cancela(p);
        });
    }
}

TEST_F(PaginasDeListaTeste, PageAfericoes_OfAnEquipmentWithoutSensors_AddsOneThatIsNotSentByItself)
{
    for (const char *tipo : {"M", "A", "E", "U", "B"}) {
        SCOPED_TRACE(tipo);
        Responde(NovoED(tipo));
        AceitaSalvar();
        host->LimpaRegistro();
        EXPECT_TRUE(Edita([&](Pessoa &p) {
            EXPECT_TRUE(p.Abre("sstDados", 3));
            EXPECT_EQ(Botoes(p), BotoesDesligados);
            EXPECT_TRUE(p.Abre("sstDados", 0));
            EXPECT_TRUE(p.Preenche("txtDescricao", "outra"));
            Aplica(p, false, true, "ztCmdOK");
        }));
        EXPECT_EQ(MembroEnviado("altera", "Sensores"), "");
        EXPECT_EQ(MembroEnviado("altera", "Descricao"), "\"outra\"");
    }
}

TEST_F(PaginasDeListaTeste, PageAfericoes_WithACalibrationAdded_SendsSensor1WithAnEmptyAddress)
{
    Responde(NovoED("A"));
    AceitaSalvar();
    host->Tela->Arquivos.Poe("C:\\CERT.PDF", Bytes{'%', 'P', 'D', 'F'});
    EXPECT_TRUE(Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        host->AoMostrarModal("frmEquipAfericoes", [&](Pessoa &afericao) {
            EXPECT_TRUE(afericao.Preenche("txtNroINMETRO", "123"));
            EXPECT_TRUE(afericao.Preenche("txtDtVerifINMETRO", "01022026"));
            EXPECT_TRUE(afericao.Preenche("txtDtVencINMETRO", "01022027"));
            host->EscolheArquivo("C:\\CERT.PDF");
            EXPECT_TRUE(afericao.Clica("cmdProcurar"));
            EXPECT_TRUE(afericao.Clica("cmdUpload"));
            EXPECT_TRUE(afericao.Clica("cmdOK"));
        });
        EXPECT_TRUE(p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo"));
        EXPECT_EQ(Botoes(p), BotoesLigados);
        Aplica(p, false, true, "ztCmdOK");
    }));
    const std::string enviado = Enviado("altera");
    const std::size_t onde = enviado.find("Sensores=[SensorED{Afericoes=[AfericaoED{");
    ASSERT_NE(onde, std::string::npos) << enviado;
    EXPECT_NE(enviado.find("NroSensor=1", onde), std::string::npos);
    EXPECT_NE(enviado.find("LocalInfr=\"\"", onde), std::string::npos);
    EXPECT_EQ(enviado.find("NroIntSensor=", onde), std::string::npos);
    EXPECT_EQ(enviado.find("SensorED{", onde + 12), std::string::npos) << "one sensor";
}

TEST_F(PaginasDeListaTeste, Window_ClosedAndOpenedAgain_LoadsItsPagesAnew)
{
    for (bool sensores : {true, false}) {
        const std::string lista = sensores ? "ztListaSensor" : "ztListaAfericao";
        for (const std::string nome : {"Um", "Outro"}) {
            Responde(NovoED(sensores ? "C" : "A", Sensores(Sensor(51, 1, nome, Afericao(71, nome)))));
            Edita([&](Pessoa &p) {
                EXPECT_TRUE(p.Abre("sstDados", sensores ? 2 : 3));
                EXPECT_EQ(Coluna(p, lista, 2), Linhas{nome});
                EXPECT_EQ(p.Acha<ztList>(lista)->Colunas().size(), sensores ? 3U : 6U);
                Cancela(p);
            });
        }
    }
}

// Faults.

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_WhenAStepFails_ReportsAndLeavesNothingOpen)
{
    for (const auto &[chamada, cauda] : {std::pair{"Plataforma.Carrega", ""},
                                         {"goDadosVor.PreencheTipoAgente", ""},
                                         {"objMTM.ClienteLogado", ""},
                                         {"ObjInterface.MostraJanela", " < Geral.FormShow"}}) {
        host->LimpaRegistro();
        host->FalhaEm(chamada, 1, 70);
        EXPECT_FALSE(form->CarregaInclusao(false));
        EXPECT_EQ(Erros(), Linhas{std::string("frmEquipDetalhes.CarregaInclusao: 70 (") + chamada + cauda + ")"});
        Linhas fim{"goMensagem.ExibeErro(*", "Plataforma.Descarrega(frmEquipDetalhes)"};
        fim.resize(std::string(chamada) == "Plataforma.Carrega" ? 1 : 2);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"goMensagem.ExibeErro", "Plataforma.Descarrega"}), fim));
        EXPECT_EQ(host->Tela->NroForms(), 0);
        EXPECT_FALSE(Inclui([](Pessoa &p) {
            EXPECT_EQ(NroItens(p, "cboMunic"), 4);
            Cancela(p);
        }));
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_WhenAComboCannotBeFilled_TellsItAndOpensAllTheSame)
{
    host->FalhaEm("MDB.OpenRecordset");
    host->FalhaEm("goDadosVor.DirLayouts");
    EXPECT_FALSE(Inclui([](Pessoa &p) {
        EXPECT_EQ(NroItens(p, "cboMunic"), 0);
        EXPECT_EQ(NroItens(p, "cboArqLayout"), 1);
        Cancela(p);
    }));
    EXPECT_TRUE(RegistroIgual(Erros(), {".gSubCarregaMunicipios: 51 (*", ".gSubCarregaArqLayout: 51 (*"}));
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicaoAndCarregaDetalhes_WhenAStepFails_ReportUnderTheirNames)
{
    Responde(NovoED("C"));
    const std::string monta = " < frmEquipDetalhes.MontaTela";
    struct {
        std::string Chamada;
        std::string Cauda;
    } const casos[] = {
        {"EquiptoRN.ExecutaMetodo", " < clsEquipto.Carrega" + monta},
        {"goMensagem.FormataData", " < clsEquipto.CarregaED < clsEquipto.Carrega" + monta},
        {"Plataforma.Carrega", monta},
        {"goDadosVor.PreencheTipoAgente", monta},
        {"Plataforma.ProcessaMensagens", " < Geral.FormShow"},
        {"goMensagem.PreparaDetalhes", ""},
    };
    for (const auto &caso : casos) {
        for (bool detalhes : {false, true}) {
            if (!detalhes && caso.Cauda.empty()) {
                continue;
            }
            host->LimpaRegistro();
            host->FalhaEm(caso.Chamada, 1, 70);
            if (detalhes) {
                form->CarregaDetalhes(7, false);
            } else {
                EXPECT_FALSE(form->CarregaEdicao(7, false));
            }
            EXPECT_EQ(Erros(), Linhas{std::string("frmEquipDetalhes.Carrega") + (detalhes ? "Detalhes" : "Edicao") +
                                      ": 70 (" + caso.Chamada + caso.Cauda + ")"});
            EXPECT_TRUE(host->RegistroDe({"goMensagem.ExibeErro", "Plataforma.Descarrega"})
                            .front()
                            .starts_with("goMensagem.ExibeErro("))
                << "told before it is unloaded";
            EXPECT_EQ(host->Tela->NroForms(), 0);
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_FALSE(Edita(Cancela));
        }
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaDetalhes_WhenTheHostFailsBehindAFormOnTheScreen_LeavesTheFormWhole)
{
    Responde(NovoED("C"));
    geral->ObjInterface = ParaOModulo(Novo<InterfaceQueFalha>());
    form->CarregaDetalhes(7, false);
    EXPECT_TRUE(RegistroIgual(Erros(), {"frmEquipDetalhes.CarregaDetalhes: *"}));
    EXPECT_EQ(host->Erros()[0].Fonte, "ObjInterface < Geral.FormShow");
    EXPECT_TRUE(form->Visible());
    Pessoa pessoa(form, host->Tela);
    EXPECT_TRUE(pessoa.Clica("cmdCancelar")); // it still has its equipment to ask
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(Erros(), Linhas{});
}

TEST_F(frmEquipDetalhesTeste, MostraDados_ThatFails_GrowsThePath)
{
    class Recusada : public frmEquipDetalhes {
        void LigaControles() override
        {
            frmEquipDetalhes::LigaControles();
            m_Falha = Estraga(Pessoa(EsteForm()), "lblClienteInc");
        }
        Conexao m_Falha;
    };
    Responde(NovoED("C"));
    EXPECT_FALSE(Novo<Recusada>()->CarregaEdicao(7, false));
    EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.CarregaEdicao: 70 (Fora < frmEquipDetalhes.MostraDados < "
                              "frmEquipDetalhes.MontaTela)"});
}

TEST_F(frmEquipDetalhesTeste, sstDados_WhenTheFrameOfThePageFails_HasDisabledTheOneLeftAndLoadsNothing)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        Conexao falha = Estraga(p, "fraDados", 2);
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_EQ(p.Acha<ztList>("ztListaSensor")->Colunas().size(), 1U);
        falha.desliga();
        Cancela(p);
    });
    EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.sstDados_Click: 70 (Fora)"});
}

TEST_F(frmEquipDetalhesTeste, RuleEvents_WhenAServiceFails_ReportUnderTheirNames)
{
    Inclui([&](Pessoa &p) {
        host->FalhaEm("goDadosVor.PreencheTipoEquip", 1, 70);
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.cboTipoMedidor_Change: 70 (goDadosVor.PreencheTipoEquip)"});
        EXPECT_EQ(Botoes(p), BotoesDesligados) << "the rule stopped before it counted the change";
        Cancela(p);
    });
    Responde(NovoED("C", "NroIntRejLimDif=0"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        host->FalhaEm("goDadosVor.PreencheRejeicoes", 1, 70);
        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        EXPECT_EQ(Erros(), Linhas{"frmEquipDetalhes.chkRejeicaoAuto_Click: 70 (goDadosVor.PreencheRejeicoes)"});
        EXPECT_EQ(Habilitados(p, "cboRejeicao"), "");
        Cancela(p);
    });
}

} // namespace
