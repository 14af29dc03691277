#include "equipment/frmEquipDetalhes.h"

#include "controls/ztList.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"
#include "tests/equipment/CenarioEquipDetalhes.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/InterfaceQueFalha.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
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
            EXPECT_EQ(Texto(p, codigo), "A1._2345678901234567") << codigo;
        }
        EXPECT_TRUE(p.Preenche("txtDescricao", std::string(60, 'd')));
        EXPECT_EQ(Texto(p, "txtDescricao").size(), 50U);
        EXPECT_TRUE(p.Preenche("txtModelo", std::string(60, 'm')));
        EXPECT_EQ(Texto(p, "txtModelo").size(), 30U);
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "C");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "1x2y34"));
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "123");
        EXPECT_TRUE(p.Digita("cboMunic", "cax")); // searches as the person types
        EXPECT_EQ(Valor(p, "cboMunic"), "55");
        EXPECT_TRUE(p.Digita("cboArqLayout", "ant"));
        EXPECT_EQ(Valor(p, "cboArqLayout"), "Antigo");
        p.Acha<IztVeiObservacao>("txtObsNotif")->DefineText(std::string(80, 'o'));
        EXPECT_EQ(Texto(p, "txtObsNotif").size(), 70U);
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
                EXPECT_EQ(Caption(p, "lblClienteInc"), "DAER");
                EXPECT_EQ(Caption(p, "lblSetorInc"), "CENTRAL");
                EXPECT_EQ(Paginas(p), (std::vector<bool>{true, false, false, false, false}));
                EXPECT_EQ(Pagina(p), 0);
                EXPECT_FALSE(p.Abre("sstDados", 1));
                EXPECT_EQ(p.Acha<IztCombo>("cboTipoMedidor")->NroItens(), trabFoto ? 2 : 3);
                EXPECT_EQ(p.Acha<IztCombo>("cboTipoEquip")->NroItens(), 0);
                EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->NroItens(), 4);
                EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->IndiceAtual(), -1);
                EXPECT_FALSE(p.Acha<IztCombo>("cboMunic")->ComboSomenteLeitura());
                EXPECT_EQ(p.Acha<IztCombo>("cboArqLayout")->NroItens(), 3); // NENHUM too
                EXPECT_FALSE(Visivel(p, "frUltAtu"));
                EXPECT_TRUE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
                EXPECT_FALSE(p.Acha<IztCommand>("ztCmdOK")->Default());
                EXPECT_EQ(Botoes(p), BotoesDesligados);
                EXPECT_FALSE(p.Acha<IztMask>("txtCodEquip")->ReadOnly());
                EXPECT_FALSE(p.Acha<IztCombo>("cboTipoMedidor")->ComboSomenteLeitura());
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
            "objMTM.ClienteLogado() -> \"DAER\"",
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

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_OfALogonTiedToAMunicipality_ChoosesAndLocksIt)
{
    glCodMunicLogon = 55;
    EXPECT_FALSE(Inclui([&](Pessoa &p) {
        EXPECT_EQ(Valor(p, "cboMunic"), "55");
        EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->Texto(), "Caxias do Sul");
        EXPECT_TRUE(p.Acha<IztCombo>("cboMunic")->ComboSomenteLeitura());
        EXPECT_EQ(Botoes(p), BotoesDesligados) << "loading is no change";
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "C");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_FALSE(p.Escolhe("cboMunic", "Agudo"));
        Descarta(p);
    }));
    glCodMunicLogon = 0;
    Inclui([](Pessoa &p) {
        EXPECT_EQ(Valor(p, "cboMunic"), "");
        EXPECT_FALSE(p.Acha<IztCombo>("cboMunic")->ComboSomenteLeitura());
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
                EXPECT_EQ(Caption(p, "lblClienteInc"), "DETRAN");
                EXPECT_EQ(Caption(p, "lblSetorInc"), "NORTE");
                EXPECT_EQ(Texto(p, "txtCodEquip"), "EQ_1");
                EXPECT_EQ(Texto(p, "txtSubCodEquip"), "A.1");
                EXPECT_EQ(Texto(p, "txtDescricao"), "Saída da cidade");
                EXPECT_EQ(Valor(p, "cboTipoMedidor"), "1");
                EXPECT_EQ(Valor(p, "cboTipoEquip"), "C");
                EXPECT_EQ(Texto(p, "txtModelo"), "ACME 3");
                EXPECT_EQ(Valor(p, "cboMunic"), "120");
                EXPECT_EQ(Valor(p, "cboArqLayout"), "PADRAO");
                EXPECT_EQ(Texto(p, "txtVelocPerm"), "80");
                EXPECT_EQ(Caption(p, "lblTolerancia"), "7 Km/h");
                EXPECT_TRUE(Ligada(p, "optRodovia"));
                EXPECT_TRUE(Visivel(p, "frUltAtu"));
                EXPECT_EQ(Caption(p, "lblCliente"), "DAER");
                EXPECT_EQ(Caption(p, "lblOperador"), "77");
                EXPECT_EQ(Caption(p, "lblData"), "05/11/2026");
                EXPECT_EQ(Caption(p, "lblHora"), "09:30:15");
                EXPECT_TRUE(Marcada(p, "chkEntrelacada"));
                EXPECT_FALSE(Marcada(p, "chkPerfilMagnetico"));
                EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 1));
                EXPECT_FALSE(Ligada(p, "optTrabDiasDif", 0));
                EXPECT_TRUE(Marcada(p, "chkRejeicaoAuto"));
                EXPECT_TRUE(Habilitado(p, "chkRejeicaoAuto"));
                EXPECT_EQ(Valor(p, "cboRejeicao"), "32");
                EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->Texto(), "Imagem sem nitidez");
                EXPECT_TRUE(Habilitado(p, "cboRejeicao"));
                EXPECT_TRUE(Marcada(p, "chkIncObsNotif"));
                EXPECT_EQ(Texto(p, "txtObsNotif"), "Obs. da via");
                EXPECT_FALSE(p.Acha<IztVeiObservacao>("txtObsNotif")->Locked());

                EXPECT_FALSE(p.Preenche("txtCodEquip", "X"));
                EXPECT_FALSE(p.Escolhe("cboTipoMedidor", "Estático"));
                EXPECT_FALSE(p.Escolhe("cboTipoEquip", "Lombada"));
                EXPECT_FALSE(p.Acha<IztMask>("txtSubCodEquip")->ReadOnly());
                EXPECT_TRUE(p.Acha<IztCombo>("cboMunic")->ComboSomenteLeitura());
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

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfEmptyOptions_LeavesThemOffAndTheObservationLocked)
{
    auto ed = NovoED("C");
    ed->TemImagemEntrelacada = 0;
    ed->TemPerfilMag = 1;
    ed->TemLimiteDif = 2;
    ed->NroIntRejLimDif = 0;
    ed->txtObsNotif = "";
    Responde(ed);
    Edita([](Pessoa &p) {
        EXPECT_FALSE(Marcada(p, "chkEntrelacada"));
        EXPECT_TRUE(Marcada(p, "chkPerfilMagnetico"));
        EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 0));
        EXPECT_FALSE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "lblTextoRejLimDif"));
        EXPECT_FALSE(Habilitado(p, "cboRejeicao"));
        EXPECT_FALSE(Habilitado(p, "lblRejeicao"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 0);
        EXPECT_FALSE(Marcada(p, "chkIncObsNotif"));
        EXPECT_TRUE(p.Acha<IztVeiObservacao>("txtObsNotif")->Locked());
        EXPECT_EQ(Texto(p, "txtObsNotif"), "");
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfARejectionBelowOneOrUnknown_ShowsNoneOrNoChoice)
{
    auto ed = NovoED("C");
    ed->NroIntRejLimDif = -1;
    Responde(ed);
    Edita([](Pessoa &p) {
        EXPECT_FALSE(Marcada(p, "chkRejeicaoAuto"));
        Cancela(p);
    });
    ed->NroIntRejLimDif = 999;
    Edita([](Pessoa &p) {
        EXPECT_TRUE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 2);
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->IndiceAtual(), -1);
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfARejectionWithoutDifferentiatedLimits_ShowsItAllTheSame)
{
    auto ed = NovoED("C");
    ed->TemLimiteDif = 2;
    Responde(ed);
    Edita([](Pessoa &p) {
        EXPECT_TRUE(Ligada(p, "optTrabDiasDif", 0));
        EXPECT_TRUE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "chkRejeicaoAuto"));
        EXPECT_EQ(Valor(p, "cboRejeicao"), "32");
        EXPECT_TRUE(Habilitado(p, "cboRejeicao"));
        Cancela(p);
    });
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

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfEachRoadType_SwitchesItsOptionOrNone)
{
    struct {
        const char *TipoVia;
        const char *Opcao;
    } const casos[] = {{"R", "optRodovia"}, {"U", "optUrbana"}, {"I", "optInfGeraBanco"}, {"", ""},
                       {"r", ""},           {"X", ""}};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.TipoVia);
        auto ed = NovoED("C");
        ed->TipoVia = caso.TipoVia;
        Responde(ed);
        Edita([&](Pessoa &p) {
            for (const char *opcao : {"optRodovia", "optUrbana", "optInfGeraBanco"}) {
                EXPECT_EQ(Ligada(p, opcao), std::string(opcao) == caso.Opcao) << opcao;
            }
            Cancela(p);
        });
    }
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_OfCodesThatAreNotOffered_LeavesTheCombosWithoutAChoice)
{
    auto ed = NovoED("Z");
    ed->TipoAgente = 9;
    ed->CodMunic = 900; // another state's
    ed->ArquivoLayout = "SUMIU";
    Responde(ed);
    Edita([](Pessoa &p) {
        for (const char *combo : {"cboTipoMedidor", "cboTipoEquip", "cboMunic", "cboArqLayout"}) {
            EXPECT_EQ(p.Acha<IztCombo>(combo)->IndiceAtual(), -1) << combo;
        }
        EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, true, false, true})) << "as of any other type";
        Cancela(p);
    });
    ed->TipoEquip = "M"; // not offered for this meter type: the pages are those of what the combo has
    Edita([](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztCombo>("cboTipoEquip")->IndiceAtual(), -1);
        EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, true, false, true}));
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicao_WhenTheServiceRefuses_IsFalseWithoutAWindow)
{
    host->RecusaOperacao("consulta", "Equipamento não encontrado");
    EXPECT_FALSE(form->CarregaEdicao(7, false));
    host->RecusaOperacao("consulta", "Equipamento não encontrado");
    form->CarregaDetalhes(7, false);
    EXPECT_TRUE(RegistroIgual(host->Registro(), Linhas{"Gateway.CriaObjetoRN(*", "EquiptoRN.ExecutaMetodo(*",
                                                       "EquiptoRN.MostraErro() -> \"Equipamento não encontrado\"",
                                                       "Gateway.CriaObjetoRN(*", "EquiptoRN.ExecutaMetodo(*",
                                                       "EquiptoRN.MostraErro() -> \"Equipamento não encontrado\""}));
    EXPECT_EQ(host->Tela->NroForms(), 0);
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
            EXPECT_EQ(Caption(p, "cmdCancelar"), "&Fechar");
            EXPECT_EQ(p.Acha("cmdCancelar")->Left(), p.Acha("ztCmdAplicar")->Left());
            EXPECT_FALSE(Visivel(p, "ztCmdOK"));
            EXPECT_FALSE(Visivel(p, "ztCmdAplicar"));
            EXPECT_EQ(Texto(p, "txtDescricao"), "Saída da cidade");
            for (const char *campo : {"txtCodEquip", "txtSubCodEquip", "txtDescricao", "txtModelo"}) {
                EXPECT_FALSE(p.Preenche(campo, "X")) << campo;
            }
            for (const char *combo : {"cboTipoMedidor", "cboTipoEquip", "cboMunic", "cboArqLayout", "cboRejeicao"}) {
                EXPECT_TRUE(p.Acha<IztCombo>(combo)->ComboSomenteLeitura()) << combo;
            }
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

TEST_F(frmEquipDetalhesTeste, SharedForm_OpenedInEachModeInTurn_StartsFromItsDesign)
{
    AceitaSalvar();
    Responde(NovoED("M"));
    Detalha([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        Cancela(p);
    });
    Inclui([&](Pessoa &p) {
        EXPECT_EQ(form->Caption(), "Novo Equipamento");
        EXPECT_EQ(Pagina(p), 0);
        EXPECT_TRUE(Visivel(p, "ztCmdOK"));
        EXPECT_EQ(Caption(p, "cmdCancelar"), "&Cancelar");
        EXPECT_NE(p.Acha("cmdCancelar")->Left(), p.Acha("ztCmdAplicar")->Left());
        EXPECT_EQ(Texto(p, "txtDescricao"), "");
        EXPECT_FALSE(Ligada(p, "optInfGeraBanco"));
        EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->NroItens(), 4);
        EXPECT_TRUE(p.Preenche("txtDescricao", "x"));
        Fecha(p);
    });
    Edita([&](Pessoa &p) {
        EXPECT_EQ(Botoes(p), BotoesDesligados);
        EXPECT_EQ(Texto(p, "txtDescricao"), "Saída da cidade");
        EXPECT_FALSE(p.Acha<IztCommand>("ztCmdAplicar")->Default());
        Cancela(p);
    });
}

// Rules by type.

// A row of the frames' table; Left 0: unchanged.
struct RegraMolduras {
    const char *Tipo;
    bool Layout;
    bool LimiteVel;
    bool TipoVia;
    std::int32_t Left;
    bool Banco; // optInfGeraBanco shown and forced on; otherwise hidden and off
    bool LimiteDif;
    bool ObsNotif;
};

constexpr RegraMolduras Molduras[] = {
    {"M", true, false, true, 180, true, false, false}, {"E", false, false, false, 0, false, true, false},
    {"U", false, false, false, 0, false, true, false}, {"B", false, false, false, 0, false, true, false},
    {"A", false, true, false, 0, false, true, false},  {"F", true, false, true, 180, false, false, true},
    {"V", true, false, true, 180, false, false, true}, {"C", true, true, true, 4320, false, true, false},
    {"L", true, true, true, 4320, false, true, false}, {"P", true, true, true, 4320, false, true, false},
    {"R", true, true, true, 4320, false, true, false}, {"X", true, true, true, 4320, false, true, false},
    {"", true, true, true, 4320, false, true, false},
};

// A row of the pages' table.
struct RegraPaginas {
    const char *Tipo;
    bool Sensores;
    bool Afericoes;
    bool Opcoes;
};

constexpr RegraPaginas PaginasDosTipos[] = {
    {"M", false, true, true},  {"A", false, true, false}, {"E", false, true, false}, {"U", false, true, false},
    {"B", false, true, false}, {"V", false, false, true}, {"F", true, false, true},  {"C", true, false, true},
    {"L", true, false, true},  {"P", true, false, true},  {"R", true, false, true},  {"X", true, false, true},
    {"", true, false, true},
};

class RegrasPorTipoTeste : public frmEquipDetalhesTeste {
  protected:
    static void ConfereMolduras(const Pessoa &p, const RegraMolduras &regra, std::int32_t left)
    {
        EXPECT_EQ(Visivel(p, "fraLayout"), regra.Layout);
        EXPECT_EQ(Visivel(p, "fraLimiteVel"), regra.LimiteVel);
        EXPECT_EQ(Visivel(p, "fraTipoVia"), regra.TipoVia);
        EXPECT_EQ(p.Acha("fraTipoVia")->Left(), regra.Left != 0 ? regra.Left : left);
        EXPECT_EQ(Visivel(p, "optInfGeraBanco"), regra.Banco);
        EXPECT_EQ(Ligada(p, "optInfGeraBanco"), regra.Banco);
        EXPECT_EQ(Visivel(p, "fraLimiteDif"), regra.LimiteDif);
        EXPECT_EQ(Visivel(p, "fraObsNotif"), regra.ObsNotif);
    }
};

TEST_F(RegrasPorTipoTeste, cboTipoEquip_OfEachTypeAfterEachOther_AppliesTheRowOfTheType)
{
    for (const RegraMolduras &antes : Molduras) {
        for (const RegraMolduras &depois : Molduras) {
            for (bool urbana : {false, true}) {
                if (std::string(antes.Tipo) == depois.Tipo) {
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
                    EXPECT_EQ(Ligada(p, "optUrbana"), urbana && !depois.Banco);
                    EXPECT_FALSE(Ligada(p, "optRodovia"));
                    EXPECT_EQ(Texto(p, "txtVelocPerm"), depois.Banco ? "" : "80");
                    EXPECT_EQ(Paginas(p), (std::vector<bool>{true, true, false, false, false}));
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
        ConfereMolduras(p, Molduras[std::size(Molduras) - 1], 180);
        EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabEnabled(1));
        Fecha(p);
    });
}

TEST_F(RegrasPorTipoTeste, cboTipoEquip_AThenE_ShowsTheSpeedFrameAloneAndThenNothingButTheMunicipality)
{
    Inclui([](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "A");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Foco("txtVelocPerm"));
        EXPECT_FALSE(p.Foco("cboArqLayout"));
        EXPECT_FALSE(p.Foco("optUrbana"));
        EXPECT_TRUE(p.Foco("cboMunic"));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EscolheTipo(p, "E");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_FALSE(p.Foco("txtVelocPerm"));
        EXPECT_TRUE(p.Foco("cboMunic"));
        Fecha(p);
    });
}

TEST_F(RegrasPorTipoTeste, cboTipoEquip_CUrbanaThenMThenC_EndsWithoutARoadType)
{
    Inclui([](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EscolheTipo(p, "C");
        EXPECT_TRUE(p.Abre("sstDados", 1));
        EXPECT_TRUE(p.Clica("optUrbana"));
        EXPECT_TRUE(p.Preenche("txtVelocPerm", "80"));
        EXPECT_TRUE(p.Abre("sstDados", 0));
        EscolheTipo(p, "M");
        EXPECT_TRUE(Ligada(p, "optInfGeraBanco"));
        EXPECT_FALSE(Ligada(p, "optUrbana"));
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "");
        EXPECT_EQ(Caption(p, "lblTolerancia"), "");
        EscolheTipo(p, "C");
        for (const char *opcao : {"optRodovia", "optUrbana", "optInfGeraBanco"}) {
            EXPECT_FALSE(Ligada(p, opcao)) << opcao;
        }
        EXPECT_FALSE(Visivel(p, "optInfGeraBanco"));
        Fecha(p);
    });
}

TEST_F(RegrasPorTipoTeste, MostraDados_OfEachType_OffersItsPagesAndFrames)
{
    for (const RegraPaginas &paginas : PaginasDosTipos) {
        SCOPED_TRACE(paginas.Tipo);
        const auto molduras = std::find_if(std::begin(Molduras), std::end(Molduras), [&](const RegraMolduras &regra) {
            return std::string(regra.Tipo) == paginas.Tipo;
        });
        ASSERT_NE(molduras, std::end(Molduras));
        auto ed = NovoED(paginas.Tipo);
        ed->TipoVia = molduras->Banco ? "I" : "R";
        Responde(ed);
        for (bool detalhes : {false, true}) {
            const auto roteiro = [&](Pessoa &p) {
                EXPECT_EQ(Paginas(p),
                          (std::vector<bool>{true, true, paginas.Sensores, paginas.Afericoes, paginas.Opcoes}));
                ConfereMolduras(p, *molduras, 4320);
                EXPECT_EQ(p.Abre("sstDados", 2), paginas.Sensores);
                EXPECT_EQ(p.Abre("sstDados", 3), paginas.Afericoes);
                EXPECT_EQ(p.Abre("sstDados", 4), paginas.Opcoes);
                Cancela(p);
            };
            detalhes ? Detalha(roteiro) : static_cast<void>(Edita(roteiro));
        }
    }
}

TEST_F(RegrasPorTipoTeste, MostraDados_OfTypeMWithoutSpeed_HasZeroInTheHiddenField)
{
    auto ed = NovoED("M");
    ed->VelocPermitida = 0;
    Responde(ed);
    Edita([](Pessoa &p) {
        EXPECT_EQ(Texto(p, "txtVelocPerm"), "0");
        EXPECT_FALSE(Visivel(p, "fraLimiteVel"));
        Cancela(p);
    });
}

TEST_F(frmEquipDetalhesTeste, cboTipoMedidor_OfEachMeterType_FillsTheTypesItOffers)
{
    host->Dominio->TiposEquipamento = {{"C", "Caetano", 1, false}, {"M", "Pardal Móvel", 2, false}};
    Inclui([&](Pessoa &p) {
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EXPECT_TRUE(p.Escolhe("cboTipoEquip", "Caetano"));
        EXPECT_EQ(Botoes(p), SoAplicar);
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Estático"));
        EXPECT_EQ(p.Acha<IztCombo>("cboTipoEquip")->NroItens(), 1);
        EXPECT_EQ(p.Acha<IztCombo>("cboTipoEquip")->IndiceAtual(), -1);
        EXPECT_TRUE(p.Acha<ISSTab>("sstDados")->TabEnabled(1)) << "once available it stays";
        p.Acha<IztCombo>("cboTipoMedidor")->DefineIndiceAtual(-1);
        Fecha(p);
    });
    EXPECT_EQ(host->RegistroDe({"goDadosVor.PreencheTipoEquip"}),
              (Linhas{"goDadosVor.PreencheTipoEquip(cboTipoEquip, 1, False, False, False)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquip, 2, False, False, False)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquip, 0, False, False, False)"}));
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
            EXPECT_EQ(Caption(p, "lblTolerancia"), caso.Tolerancia) << caso.Veloc;
        }
        Descarta(p);
    });
}

TEST_F(frmEquipDetalhesTeste, optTrabDiasDif_OfEachAnswer_OpensAndClosesTheRejection)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 0));
        EXPECT_FALSE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "lblTextoRejLimDif"));
        EXPECT_FALSE(Habilitado(p, "cboRejeicao"));
        EXPECT_FALSE(Habilitado(p, "lblRejeicao"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 0);
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->IndiceAtual(), -1);

        host->LimpaRegistro();
        EXPECT_TRUE(p.Clica("optTrabDiasDif", 1));
        EXPECT_FALSE(Marcada(p, "chkRejeicaoAuto"));
        EXPECT_TRUE(Habilitado(p, "chkRejeicaoAuto"));
        EXPECT_TRUE(Habilitado(p, "lblTextoRejLimDif"));
        EXPECT_FALSE(Habilitado(p, "cboRejeicao"));
        EXPECT_FALSE(host->Contem("goDadosVor."));

        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        EXPECT_EQ(host->RegistroDe({"goDadosVor."}), (Linhas{"goDadosVor.PreencheRejeicoes(cboRejeicao, 0, 0)"}));
        EXPECT_TRUE(Habilitado(p, "cboRejeicao"));
        EXPECT_TRUE(Habilitado(p, "lblRejeicao"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 2);
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->IndiceAtual(), -1);
        EXPECT_TRUE(p.EscolheIndice("cboRejeicao", 0));

        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        EXPECT_FALSE(Habilitado(p, "cboRejeicao"));
        EXPECT_FALSE(Habilitado(p, "lblRejeicao"));
        EXPECT_EQ(p.Acha<IztCombo>("cboRejeicao")->NroItens(), 0);
        EXPECT_TRUE(Habilitado(p, "chkRejeicaoAuto"));
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
}

TEST_F(frmEquipDetalhesTeste, chkIncObsNotif_OfEachState_OpensOrEmptiesTheObservation)
{
    Responde(NovoED("F"));
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        EXPECT_TRUE(p.Clica("chkIncObsNotif"));
        EXPECT_EQ(Texto(p, "txtObsNotif"), "");
        EXPECT_TRUE(p.Acha<IztVeiObservacao>("txtObsNotif")->Locked());
        EXPECT_FALSE(p.Preenche("txtObsNotif", "x"));
        EXPECT_TRUE(p.Clica("chkIncObsNotif"));
        EXPECT_TRUE(p.Preenche("txtObsNotif", "nova"));
        EXPECT_EQ(Texto(p, "txtObsNotif"), "nova");
        Descarta(p);
    });
}

// Pages with lists.

class PaginasDeListaTeste : public frmEquipDetalhesTeste {
  protected:
    static Ref<SensorED> NovoSensor(std::int32_t nroInt, std::int16_t nro, const std::string &local)
    {
        auto sensor = Novo<SensorED>();
        sensor->NroIntSensor = nroInt;
        sensor->NroSensor = nro;
        sensor->LocalInfr = local;
        sensor->Ativo = 1;
        return sensor;
    }
    static Ref<AfericaoED> NovaAfericao(double nroInt, const std::string &numero)
    {
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = nroInt;
        afericao->Numero = numero;
        afericao->DataVerificacao = DataDe(1, 2, 2026);
        afericao->DataVencimento = DataDe(1, 2, 2027);
        afericao->Ativo = 1;
        afericao->TipoAfer = 1;
        return afericao;
    }
    static Ref<EquiptoED> ComSensores(const std::string &tipo, const std::vector<Ref<SensorED>> &sensores)
    {
        auto ed = NovoED(tipo);
        auto lista = Novo<Colecao<Ref<SensorED>>>();
        for (const auto &sensor : sensores) {
            lista->Add(sensor);
        }
        ed->Sensores = lista;
        return ed;
    }
    static Ref<SensorED> ComAfericoes(Ref<SensorED> sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        auto lista = Novo<Colecao<Ref<AfericaoED>>>();
        for (const auto &afericao : afericoes) {
            lista->Add(afericao);
        }
        sensor->Afericoes = lista;
        return sensor;
    }
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
    Responde(ComSensores("C", {NovoSensor(51, 1, "Pista norte"), NovoSensor(52, 2, "Pista sul")}));
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
            Responde(
                ComSensores(caso.Tipo, {ComAfericoes(NovoSensor(51, 1, "Pista norte"), {NovaAfericao(71, "N1")})}));
            Edita([&](Pessoa &p) {
                const auto lista = p.Acha<ztList>(caso.Lista);
                host->FalhaEm("Plataforma.Ponteiro", ponteiro);
                EXPECT_TRUE(p.Abre("sstDados", caso.Pagina));
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
    EXPECT_EQ(host->Erros().size(), 4U);
}

TEST_F(PaginasDeListaTeste, PageAfericoes_OfAnEquipmentWithSensors_ShowsTheFirstOnesCalibrations)
{
    Responde(ComSensores("A", {ComAfericoes(NovoSensor(51, 1, ""), {NovaAfericao(71, "N1"), NovaAfericao(72, "N2")}),
                               ComAfericoes(NovoSensor(52, 2, ""), {NovaAfericao(73, "N3")})}));
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
    Responde(ComSensores("C", {NovoSensor(51, 1, "Pista norte")}));
    Detalha([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_FALSE(PodeIncluir(p, "ztListaSensor"));
        Cancela(p);
    });
    Responde(ComSensores("A", {NovoSensor(51, 1, "")}));
    Detalha([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 3));
        EXPECT_FALSE(PodeIncluir(p, "ztListaAfericao"));
        Cancela(p);
    });
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
    Responde(ComSensores("C", {NovoSensor(51, 1, "Pista norte")}));
    Edita([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        Cancela(p);
    });
    Responde(ComSensores("C", {NovoSensor(53, 1, "Acesso leste")}));
    Edita([](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_EQ(Coluna(p, "ztListaSensor", 2), (Linhas{"Acesso leste"}));
        EXPECT_EQ(p.Acha<ztList>("ztListaSensor")->Colunas().size(), 3U);
        Cancela(p);
    });
}

// Faults.

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_WhenAStepFails_ReportsAndLeavesNothingOpen)
{
    struct {
        const char *Chamada;
        const char *Fonte;
    } const casos[] = {
        {"Plataforma.Carrega", "Plataforma.Carrega"},
        {"goDadosVor.PreencheTipoAgente", "goDadosVor.PreencheTipoAgente"},
        {"objMTM.ClienteLogado", "objMTM.ClienteLogado"},
        {"ObjInterface.MostraJanela", "ObjInterface.MostraJanela < Geral.FormShow"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Chamada);
        host->FalhaEm(caso.Chamada, 1, 70, "negado");
        EXPECT_FALSE(form->CarregaInclusao(false));
        const auto &erro = host->Erros().back();
        EXPECT_EQ(erro.Contexto, "frmEquipDetalhes.CarregaInclusao");
        EXPECT_EQ(erro.Numero, 70);
        EXPECT_EQ(erro.Descricao, "negado");
        EXPECT_EQ(erro.Fonte, caso.Fonte);
        EXPECT_EQ(host->Tela->NroForms(), 0);
        EXPECT_FALSE(Inclui([](Pessoa &p) {
            EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->NroItens(), 4);
            Cancela(p);
        }));
    }
    EXPECT_EQ(host->Erros().size(), std::size(casos));
}

TEST_F(frmEquipDetalhesTeste, CarregaInclusao_WhenAComboCannotBeFilled_TellsItAndOpensAllTheSame)
{
    host->FalhaEm("MDB.OpenRecordset", 1, 70, "negado");
    host->FalhaEm("goDadosVor.DirLayouts", 1, 70, "negado");
    EXPECT_FALSE(Inclui([](Pessoa &p) {
        EXPECT_EQ(p.Acha<IztCombo>("cboMunic")->NroItens(), 0);
        EXPECT_EQ(p.Acha<IztCombo>("cboArqLayout")->NroItens(), 1);
        Cancela(p);
    }));
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[0].Contexto, ".gSubCarregaMunicipios");
    EXPECT_EQ(host->Erros()[1].Contexto, ".gSubCarregaArqLayout");
}

TEST_F(frmEquipDetalhesTeste, CarregaEdicaoAndCarregaDetalhes_WhenAStepFails_ReportUnderTheirNames)
{
    Responde(NovoED("C"));
    struct {
        const char *Chamada;
        const char *Fonte;
    } const casos[] = {
        {"EquiptoRN.ExecutaMetodo", "EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < frmEquipDetalhes.MontaTela"},
        {"goMensagem.FormataData",
         "goMensagem.FormataData < clsEquipto.CarregaED < clsEquipto.Carrega < frmEquipDetalhes.MontaTela"},
        {"Plataforma.Carrega", "Plataforma.Carrega < frmEquipDetalhes.MontaTela"},
        {"goDadosVor.PreencheTipoAgente", "goDadosVor.PreencheTipoAgente < frmEquipDetalhes.MontaTela"},
        {"Plataforma.ProcessaMensagens", "Plataforma.ProcessaMensagens < Geral.FormShow"},
    };
    for (const auto &caso : casos) {
        for (bool detalhes : {false, true}) {
            SCOPED_TRACE(std::string(caso.Chamada) + (detalhes ? ", detalhes" : ", edicao"));
            host->FalhaEm(caso.Chamada, 1, 70, "negado");
            if (detalhes) {
                form->CarregaDetalhes(7, false);
            } else {
                EXPECT_FALSE(form->CarregaEdicao(7, false));
            }
            const auto &erro = host->Erros().back();
            EXPECT_EQ(erro.Contexto, detalhes ? "frmEquipDetalhes.CarregaDetalhes" : "frmEquipDetalhes.CarregaEdicao");
            EXPECT_EQ(erro.Fonte, caso.Fonte);
            EXPECT_EQ(host->Tela->NroForms(), 0);
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_FALSE(Edita(Cancela));
        }
    }
    host->FalhaEm("goMensagem.PreparaDetalhes", 1, 70, "negado");
    form->CarregaDetalhes(7, false);
    EXPECT_EQ(host->Erros().back().Contexto, "frmEquipDetalhes.CarregaDetalhes");
    EXPECT_EQ(host->Erros().back().Fonte, "goMensagem.PreparaDetalhes");
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(frmEquipDetalhesTeste, CarregaDetalhes_WhenTheHostFailsBehindAFormOnTheScreen_LeavesTheFormWhole)
{
    Responde(NovoED("C"));
    geral->ObjInterface = Novo<InterfaceQueFalha>();
    form->CarregaDetalhes(7, false);
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.CarregaDetalhes");
    EXPECT_EQ(host->Erros()[0].Fonte, "ObjInterface < Geral.FormShow");
    EXPECT_TRUE(form->Visible());
    Pessoa pessoa(form, host->Tela);
    EXPECT_TRUE(pessoa.Clica("cmdCancelar")); // it still has its equipment to ask
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(host->Erros().size(), 1U);
}

TEST_F(frmEquipDetalhesTeste, MostraDados_ThatFails_GrowsThePath)
{
    class Recusada : public frmEquipDetalhes {
        void LigaControles() override
        {
            frmEquipDetalhes::LigaControles();
            const Ref<IControle> label = Pessoa(EsteForm()).Acha("lblClienteInc");
            m_Falha = ComoBase(label)->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
        }
        Conexao m_Falha;
    };
    Responde(NovoED("C"));
    EXPECT_FALSE(Novo<Recusada>()->CarregaEdicao(7, false));
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Fonte, "Fora < frmEquipDetalhes.MostraDados < frmEquipDetalhes.MontaTela");
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.CarregaEdicao");
}

TEST_F(frmEquipDetalhesTeste, sstDados_WhenAListCannotBeLoaded_ReportsAndDoesNotTryAgain)
{
    struct {
        const char *Tipo;
        std::int16_t Pagina;
        const char *Fonte;
    } const casos[] = {
        {"C", 2, "Plataforma.Ponteiro < COSensores.CarregaSensores < COSensores.Carrega"},
        {"A", 3, "Plataforma.Ponteiro < COAfericoes.CarregaAfericoes < COAfericoes.Carrega"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Pagina);
        Responde(NovoED(caso.Tipo));
        Edita([&](Pessoa &p) {
            host->FalhaEm("Plataforma.Ponteiro", 2, 70, "negado");
            EXPECT_TRUE(p.Abre("sstDados", caso.Pagina));
            EXPECT_EQ(host->Erros().back().Contexto, "frmEquipDetalhes.sstDados_Click");
            EXPECT_EQ(host->Erros().back().Fonte, caso.Fonte);
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_TRUE(form->Visible());
            EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
            EXPECT_TRUE(p.Acha("fraDados", caso.Pagina)->Enabled());
            EXPECT_TRUE(p.Abre("sstDados", 0));
            host->LimpaRegistro();
            EXPECT_TRUE(p.Abre("sstDados", caso.Pagina));
            EXPECT_EQ(host->Registro(), Linhas{});
            Cancela(p);
        });
    }
    EXPECT_EQ(host->Erros().size(), 2U);
}

TEST_F(frmEquipDetalhesTeste, sstDados_WhenTheFrameOfThePageFails_HasDisabledTheOneLeftAndLoadsNothing)
{
    Responde(NovoED("C"));
    Edita([&](Pessoa &p) {
        Conexao falha = ComoBase(p.Acha("fraDados", 2))->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
        EXPECT_TRUE(p.Abre("sstDados", 2));
        EXPECT_FALSE(p.Acha("fraDados", 0)->Enabled());
        EXPECT_EQ(p.Acha<ztList>("ztListaSensor")->Colunas().size(), 1U);
        falha.desliga();
        Cancela(p);
    });
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Contexto, "frmEquipDetalhes.sstDados_Click");
    EXPECT_EQ(host->Erros()[0].Fonte, "Fora");
}

TEST_F(frmEquipDetalhesTeste, RuleEvents_WhenAServiceFails_ReportUnderTheirNames)
{
    Inclui([&](Pessoa &p) {
        host->FalhaEm("goDadosVor.PreencheTipoEquip", 1, 70, "negado");
        EXPECT_TRUE(p.Escolhe("cboTipoMedidor", "Fixo"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipDetalhes.cboTipoMedidor_Change");
        EXPECT_EQ(host->Erros().back().Fonte, "goDadosVor.PreencheTipoEquip");
        EXPECT_EQ(Botoes(p), BotoesDesligados) << "the rule stopped before it counted the change";
        Cancela(p);
    });
    auto ed = NovoED("C");
    ed->NroIntRejLimDif = 0;
    Responde(ed);
    Edita([&](Pessoa &p) {
        EXPECT_TRUE(p.Abre("sstDados", 4));
        host->FalhaEm("goDadosVor.PreencheRejeicoes", 1, 70, "negado");
        EXPECT_TRUE(p.Clica("chkRejeicaoAuto"));
        EXPECT_EQ(host->Erros().back().Contexto, "frmEquipDetalhes.chkRejeicaoAuto_Click");
        EXPECT_EQ(host->Erros().back().Fonte, "goDadosVor.PreencheRejeicoes");
        EXPECT_FALSE(Habilitado(p, "cboRejeicao"));
        Cancela(p);
    });
    EXPECT_EQ(host->Erros().size(), 2U);
}

} // namespace
