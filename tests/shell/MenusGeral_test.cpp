#include "shell/MenusGeral.h"

#include "tests/shell/GeralDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// A shell whose module has items of its own.
class MenusGeralTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        auto shell = Novo<GeralDeTeste>();
        geral = shell;
        host->ActBar->PoeFerramenta("bndArquivo", "mnuNovo");
        host->ActBar->PoeFerramenta("bndArquivo", "mnuAbrir");
        host->ActBar->PoeFerramenta("bndAjuda", "mnuSobre");
        host->ActBar->PoeFerramenta("popEquip", "mnuLimites");
        host->ActBar->PoeBand("bndVazia");
        shell->Particular->Itens = {ItemDeMenu("mnuNovo", "bndArquivo"),
                                    ItemDeMenu("mnuAbrir", "bndArquivo", false, true),
                                    ItemDeMenu("mnuSobre", "bndAjuda", true)};
        shell->Particular->Auxiliares = {ItemDeMenu("mnuLimites", "popEquip"),
                                         ItemDeMenu("popEquip", "bndArquivo", false, false, "sub"),
                                         ItemDeMenu("bndAjuda", "bndArquivo", false, false, "sub2")};
        geral->Parametros(host->FormMDI, host->ActBar, host->Relatorios, host->Ajuda, nullptr, host->oAppEXE);
        host->LimpaRegistro();
    }

    // What was logged since the last look.
    Linhas Vistos()
    {
        Linhas vistos = host->Registro();
        host->LimpaRegistro();
        return vistos;
    }

    MenusGeral &Menus() { return geral->Menus; }
    Ref<ITool> Tool(const std::string &band, const std::string &nome) { return host->ActBar->Ferramenta(band, nome); }
};

// Merging.

// A host whose menu editor does what the test says with the holder that it is given.
class HostQueEdita : public HostRoteirizado {
  public:
    class Editor : public IAMEditMenu {
      public:
        explicit Editor(const std::function<void(Ref<IActBar> &)> &edita) : m_Edita(edita) {}
        std::string_view NomeTipo() const override { return "AMEditMenu"; }
        void IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &, bool) override { m_Edita(actBar); }
        void RemoveMenu(Ref<IActBar> &actBar, ItensMenu &) override { m_Edita(actBar); }

      private:
        std::function<void(Ref<IActBar> &)> m_Edita;
    };
    std::function<void(Ref<IActBar> &)> Edita;
    Ref<IAMEditMenu> CriaAMEditMenu() override { return Novo<Editor>(Edita); }
};

TEST_F(MenusGeralTeste, MenuHolder_ReplacedByTheHost_IsTheOneFromThenOn)
{
    const auto outro = Novo<HostQueEdita>();
    outro->Edita = [](Ref<IActBar> &actBar) { actBar = nullptr; };
    InstalaHost(outro);
    Menus().AdicionaMenu(Menus().aMenu);
    EXPECT_TRUE(geral->ActBar.Nada());
    geral->ActBar = host->ActBar;
    Menus().RemoveMenu(Menus().aMenu);
    EXPECT_TRUE(geral->ActBar.Nada());
    InstalaHost(host);
}

TEST_F(MenusGeralTeste, Items_WhileTheHostMergesOrRemovesThem_CountAsBefore)
{
    const auto outro = Novo<HostQueEdita>();
    int vezes = 0;
    outro->Edita = [&](Ref<IActBar> &) {
        if (++vezes == 1) {
            Menus().RemoveMenu(Menus().aMenu); // not merged yet
        } else if (vezes == 2) {
            Menus().IncorporaMenuPrincipal(); // merged still
        }
    };
    InstalaHost(outro);
    Menus().IncorporaMenuPrincipal();
    EXPECT_EQ(vezes, 1);
    Menus().RemoveMenu(Menus().aMenu);
    EXPECT_EQ(vezes, 2);
    InstalaHost(host);
}

TEST_F(MenusGeralTeste, IncorporaMenuPrincipal_FirstTime_MergesTheMainItemsAndCountsAsMergedEvenWhenItFails)
{
    const std::string incorpora = "AMEditMenu.IncorporaMenu(ActBar, [Nothing, mnuNovo, mnuAbrir, mnuSobre], False)";
    Menus().IncorporaMenuPrincipal();
    EXPECT_TRUE(RegistroIgual(Vistos(), {"Host.CriaAMEditMenu()", incorpora}));
    Menus().IncorporaMenuPrincipal();
    Menus().RemoveMenu(Menus().aMenu);
    Vistos();
    host->FalhaEm("AMEditMenu.IncorporaMenu");
    Menus().IncorporaMenuPrincipal();
    Menus().IncorporaMenuPrincipal();
    EXPECT_TRUE(RegistroIgual(Vistos(), {"Host.CriaAMEditMenu()", incorpora + " !! 51"}));
}

TEST_F(MenusGeralTeste, AdicionaMenu_Fails_GoesOnWithItsTailAndDoesNotCountAsMerged)
{
    ItensMenu itens{nullptr, ItemDeMenu("mnuX", "bndArquivo")};
    Menus().AdicionaMenu(itens);
    Menus().AdicionaMenu(itens); // each time
    EXPECT_EQ(host->Conta("AMEditMenu.IncorporaMenu(ActBar, [Nothing, mnuX], False)"), 2);
    Menus().RemoveMenu(itens);
    FalhaEmCada({"Host.CriaAMEditMenu", "AMEditMenu.IncorporaMenu"}, " < Geral.AdicionaMenu",
                [&] { Menus().AdicionaMenu(Menus().aMenu); });
    host->FalhaEm("AMEditMenu.IncorporaMenu");
    Menus().AdicionaMenuAuxiliar(); // which ignores it
    Vistos();
    Menus().RemoveMenu(Menus().aMenu);
    Menus().RemoveMenuAuxiliar();
    EXPECT_EQ(Vistos(), Linhas{});
}

TEST_F(MenusGeralTeste, RemoveMenu_Merged_RemovesOnce)
{
    Menus().IncorporaMenuPrincipal();
    host->LimpaRegistro();
    Menus().RemoveMenu(Menus().aMenu);
    Menus().RemoveMenu(Menus().aMenu);
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"Host.CriaAMEditMenu()",
                                         "AMEditMenu.RemoveMenu(ActBar, [Nothing, mnuNovo, mnuAbrir, mnuSobre])"}));
}

TEST_F(MenusGeralTeste, RemoveMenu_Fails_IsIgnoredAndCountsAsRemoved)
{
    for (const char *passo : {"Host.CriaAMEditMenu", "AMEditMenu.RemoveMenu"}) {
        Menus().AdicionaMenu(Menus().aMenu);
        host->FalhaEm(passo);
        Menus().RemoveMenu(Menus().aMenu);
        host->LimpaRegistro();
        Menus().RemoveMenu(Menus().aMenu);
        EXPECT_TRUE(host->Registro().empty()) << passo;
    }
}

TEST_F(MenusGeralTeste, AdicionaMenuAuxiliar_BeforeTheMainItems_MergesTheAuxiliaryOnesAndKeepsThoseOut)
{
    Menus().AdicionaMenuAuxiliar();
    Menus().IncorporaMenuPrincipal(); // the flag is one for both
    EXPECT_TRUE(RegistroIgual(Vistos(),
                              {"Host.CriaAMEditMenu()",
                               "AMEditMenu.IncorporaMenu(ActBar, [Nothing, mnuLimites, popEquip, bndAjuda], False)"}));
}

TEST_F(MenusGeralTeste, RemoveMenuAuxiliar_BothMerged_ClearsTheFlagOfTheMainItemsToo)
{
    Menus().IncorporaMenuPrincipal();
    Menus().AdicionaMenuAuxiliar();
    Menus().RemoveMenuAuxiliar();
    EXPECT_EQ(host->Conta("AMEditMenu.RemoveMenu(ActBar, [Nothing, mnuLimites, popEquip, bndAjuda])"), 1);
    host->LimpaRegistro();
    Menus().RemoveMenu(Menus().aMenu);
    EXPECT_TRUE(host->Registro().empty());
    Menus().IncorporaMenuPrincipal();
    EXPECT_EQ(host->Conta("AMEditMenu.IncorporaMenu"), 1);
}

// Finding items.

TEST_F(MenusGeralTeste, Item_ByPosition_IsFoundFromOneToTheUpperBoundAndRounded)
{
    const std::vector<std::pair<Valor, std::string>> posicoes = {
        {std::int32_t{1}, "mnuNovo"},
        {std::int16_t{3}, "mnuSobre"},
        {"2", "mnuAbrir"}, // what reads as a number
        {1.5, "mnuAbrir"},
        {"2,4", "mnuAbrir"}, // half to even
    };
    for (const auto &[posicao, nome] : posicoes) {
        EXPECT_EQ(Menus().Item(posicao)->Name, nome);
    }
    EXPECT_EQ(Menus().ItemAuxiliar(std::int32_t{3})->Name, "bndAjuda");
    for (const Valor &fora : {Valor(std::int32_t{0}), Valor(std::int32_t{4}), Valor(std::int32_t{-1}), Valor("0"),
                              Valor("99999999999"), Valor(), Valor(3.2), Valor(0.9)}) {
        EXPECT_TRUE(Menus().Item(fora).Nada());
    }
    EXPECT_TRUE(Menus().ItemAuxiliar(std::int32_t{4}).Nada());
    Menus().aMenu.push_back(ItemDeMenu("9", "bndAjuda"));
    EXPECT_TRUE(Menus().Item(std::int32_t{9}).Nada()); // and by no name then
}

TEST_F(MenusGeralTeste, Item_ByName_IsTheFirstOfExactlyThatName)
{
    Menus().aMenu.push_back(ItemDeMenu("mnuNovo", "bndAjuda"));
    EXPECT_EQ(Menus().Item("mnuNovo")->Band, "bndArquivo");
    EXPECT_TRUE(Menus().Item("MNUNOVO").Nada());
    EXPECT_TRUE(Menus().Item("").Nada());
    EXPECT_TRUE(Menus().Item("mnuLimites").Nada());
    EXPECT_EQ(Menus().ItemAuxiliar("mnuLimites")->Band, "popEquip");
}

TEST_F(MenusGeralTeste, Item_ByADateANullOrAnObject_IsByNoPosition)
{
    Menus().aMenu.push_back(ItemDeMenu("01/01/1900", "bndArquivo"));
    EXPECT_EQ(Menus().Item(DataDe(1, 1, 1900))->Band, "bndArquivo"); // day 2, but a date is a name
    EXPECT_TRUE(Menus().Item(Valor(Valor::Nulo{})).Nada());
    EXPECT_TRUE(Menus().Item(Valor(Ref<Objeto>(host->ActBar))).Nada());
    EXPECT_TRUE(Menus().ItemAuxiliar(Valor(Ref<Objeto>(host->ActBar))).Nada());
    EXPECT_TRUE(Menus().Item(Valor(Ref<Objeto>())).Nada());
}

TEST_F(MenusGeralTeste, Item_BehindAPlaceThatHoldsNone_IsFound)
{
    Menus().aMenu = {nullptr, nullptr, ItemDeMenu("mnuNovo", "bndArquivo")};
    EXPECT_EQ(Menus().Item("mnuNovo")->Band, "bndArquivo");
    EXPECT_TRUE(Menus().Item("mnuAbrir").Nada());
    EXPECT_TRUE(Menus().Item(std::int32_t{1}).Nada());
}

TEST_F(MenusGeralTeste, Item_AfterTheShellEnded_IsNothing)
{
    geral->Encerra();
    EXPECT_TRUE(Menus().Item(std::int32_t{1}).Nada());
    EXPECT_TRUE(Menus().Item("mnuNovo").Nada());
}

// State of the tools.

TEST_F(MenusGeralTeste, DesabilitarMenu_Items_AreDisabledHiddenOrLeftAloneEachByItsFlags)
{
    Menus().aMenu.push_back(ItemDeMenu("mnuLimites", "popEquip", true, true)); // never disabled, though it hides
    Menus().DesabilitarMenu();
    EXPECT_TRUE(RegistroIgual(Vistos(), {"Tool(mnuNovo).Visible := True", "Tool(mnuNovo).Enabled := False",
                                         "Tool(mnuAbrir).Visible := False", "Tool(mnuAbrir).Enabled := False"}));
}

TEST_F(MenusGeralTeste, DesabilitarMenu_WritesThatFail_GoOnWithTheNext)
{
    host->FalhaEm("Tool(mnuNovo).Visible");
    Menus().aMenu.insert(Menus().aMenu.begin() + 1, {nullptr, ItemDeMenu("mnuQueNaoHa", "bndArquivo")});
    Menus().DesabilitarMenu();
    EXPECT_FALSE(Tool("bndArquivo", "mnuNovo")->Enabled());
    EXPECT_FALSE(Tool("bndArquivo", "mnuAbrir")->Visible());
}

TEST_F(MenusGeralTeste, DesabilitarMenu_WithoutItemsOrMenuHolder_TouchesNothing)
{
    geral->ActBar = nullptr;
    Menus().DesabilitarMenu();
    geral->ActBar = host->ActBar;
    Menus().aMenu.assign(1, nullptr);
    Menus().DesabilitarMenu();
    EXPECT_EQ(Vistos(), Linhas{});
}

TEST_F(MenusGeralTeste, HabilitarFerramenta_AnItem_StaysVisibleUnlessItHidesWhenDisabled)
{
    for (const char *nome : {"mnuNovo", "mnuAbrir"}) {
        Menus().HabilitarFerramenta(Menus().Item(nome), true);
        Menus().HabilitarFerramenta(Menus().Item(nome), false);
    }
    EXPECT_TRUE(RegistroIgual(Vistos(), {"Tool(mnuNovo).Visible := True", "Tool(mnuNovo).Enabled := True",
                                         "Tool(mnuNovo).Visible := True", "Tool(mnuNovo).Enabled := False",
                                         "Tool(mnuAbrir).Visible := True", "Tool(mnuAbrir).Enabled := True",
                                         "Tool(mnuAbrir).Visible := False", "Tool(mnuAbrir).Enabled := False"}));
}

TEST_F(MenusGeralTeste, HabilitarFerramenta_AnythingFails_IsIgnored)
{
    Menus().HabilitarFerramenta(nullptr, true);
    Menus().HabilitarFerramenta(ItemDeMenu("mnuQueNaoHa", "bndQueNaoHa"), true);
    host->FalhaEm("Tool(mnuNovo).Visible");
    Menus().HabilitarFerramenta(Menus().Item("mnuNovo"), false);
    EXPECT_FALSE(Tool("bndArquivo", "mnuNovo")->Enabled());
}

TEST_F(MenusGeralTeste, HabilitarBand_ByItsTools_IsTrueWhenOneIsVisibleAndEnabled)
{
    EXPECT_FALSE(Menus().HabilitarBand("bndVazia"));
    for (int estado = 0; estado < 4; ++estado) {
        const bool visivel = estado % 2 == 1;
        const bool habilitada = estado / 2 == 1;
        Tool("bndAjuda", "mnuSobre")->DefineVisible(visivel);
        Tool("bndAjuda", "mnuSobre")->DefineEnabled(habilitada);
        EXPECT_EQ(Menus().HabilitarBand("bndAjuda"), visivel && habilitada) << estado;
    }
    Tool("bndArquivo", "mnuNovo")->DefineEnabled(false);
    Tool("bndArquivo", "mnuAbrir")->DefineVisible(true); // the last one alone is enough
    Tool("bndArquivo", "mnuAbrir")->DefineEnabled(true);
    EXPECT_TRUE(Menus().HabilitarBand("bndArquivo"));
}

TEST_F(MenusGeralTeste, HabilitarBand_UnknownBandOrNoMenuHolder_RaisesWithItsTail)
{
    EXPECT_TRUE(Lanca(9, "ActBar < Geral.HabilitarBand", "A band bndQueNaoHa não existe",
                      [&] { Menus().HabilitarBand("bndQueNaoHa"); }));
    geral->ActBar = nullptr;
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral.HabilitarBand", [&] { Menus().HabilitarBand("bndAjuda"); }));
}

// Popups.

TEST_F(MenusGeralTeste, PopupBand_Coordinates_LoseTheirDecimals)
{
    Menus().PopupBand(100.9, 20.5, "popEquip");
    Menus().PopupBand(-1.5, 0.2, "popEquip");
    Menus().PopupBand16("popEquip", 32767, -5);
    EXPECT_TRUE(RegistroIgual(Vistos(), {"Plataforma.ProcessaMensagens()", "Band(popEquip).TrackPopup(100, 20)",
                                         "Plataforma.ProcessaMensagens()", "Band(popEquip).TrackPopup(-1, 0)",
                                         "Plataforma.ProcessaMensagens()", "Band(popEquip).TrackPopup(32767, -5)"}));
}

TEST_F(MenusGeralTeste, PopupBand_AnythingFails_IsIgnored)
{
    Menus().PopupBand(1, 2, "bndQueNaoHa");
    Menus().PopupBand(1e20, 2, "popEquip");
    Menus().PopupBand16("bndQueNaoHa", 1, 2);
    host->FalhaEm("Band(popEquip).TrackPopup");
    Menus().PopupBand16("popEquip", 1, 2);
    host->FalhaEm("Plataforma.ProcessaMensagens");
    Menus().PopupBand16("popEquip", 3, 4);
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Band("}),
                              {"Band(popEquip).TrackPopup(1, 2) !! 51", "Band(popEquip).TrackPopup(3, 4)"}));
}

TEST_F(MenusGeralTeste, PopupBand_AnotherClickInTheQueue_ArrivesBeforeThePopup)
{
    bool chegou = false;
    host->Tela->Posta([&] {
        EXPECT_EQ(host->Conta("Band("), 0);
        chegou = true;
    });
    Menus().PopupBand16("popEquip", 1, 2);
    EXPECT_TRUE(chegou);
}

TEST_F(MenusGeralTeste, PopupAuxiliar_ItemLeftOut_TakesTheFirstWithASubBand)
{
    const Linhas popup{"Plataforma.ProcessaMensagens()", "Band(popEquip).TrackPopup(10, 20)"};
    Menus().PopupAuxiliar(10, 20);
    EXPECT_TRUE(RegistroIgual(Vistos(), popup));
    Menus().aMenuAux = {nullptr, nullptr, ItemDeMenu("popEquip", "bndArquivo", false, false, "sub")};
    Menus().PopupAuxiliar(10, 20); // behind a place that holds none
    EXPECT_TRUE(RegistroIgual(Vistos(), popup));
    Menus().aMenuAux = {nullptr, ItemDeMenu("mnuLimites", "popEquip")};
    Menus().PopupAuxiliar(10, 20);
    Menus().aMenuAux.resize(1);
    Menus().PopupAuxiliar(10, 20);
    EXPECT_EQ(Vistos(), Linhas{});
}

TEST_F(MenusGeralTeste, PopupAuxiliar_ByPositionOrBandNameInAnyCase_ShowsThatBand)
{
    for (const Valor &item : {Valor(std::int32_t{3}), Valor("2"), Valor("POPequip"), Valor("bndajuda"),
                              Valor("bndARQUIVO")}) { // the last at position 0
        Menus().PopupAuxiliar(10, 20, item);
    }
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Band("}),
                              {"Band(bndAjuda).TrackPopup(10, 20)", "Band(popEquip).TrackPopup(10, 20)",
                               "Band(popEquip).TrackPopup(10, 20)", "Band(bndAjuda).TrackPopup(10, 20)",
                               "Band(bndArquivo).TrackPopup(10, 20)"}));
    Vistos();
    for (const Valor &item :
         {Valor(std::int32_t{0}), Valor(std::int32_t{4}), Valor(std::int32_t{-1}), Valor("bndQueNaoHa"), Valor("")}) {
        Menus().PopupAuxiliar(10, 20, item);
    }
    EXPECT_EQ(Vistos(), Linhas{});
    Menus().PopupAuxiliar(10, 20, Valor(std::int32_t{1})); // "mnuLimites" is a tool, not a band
    geral->ActBar = nullptr;
    Menus().PopupAuxiliar(10, 20, Valor("popEquip"));
    EXPECT_EQ(host->Conta("Band("), 0);
}

} // namespace
