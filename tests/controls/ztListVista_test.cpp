#include "controls/ztList.h"
#include "tests/controls/Tela.h"

#include <string>
#include <vector>

// What a person sees of the rows: their order and the filter; and the way to further ones.

namespace {

constexpr const char *Excluir = "mnuZTLObjExcluir";
constexpr const char *Editar = "mnuZTLObjEditar";

class ztListVistaTest : public testing::Test {
  protected:
    ztListVistaTest()
    {
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", 1000, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Nome", 4000, 0, "", true);
        lista->AdicionaColuna(3, std::nullopt, "Chave", 0, 0, "", false);
        lista->MenuVisivel(Excluir, true);
        m_Tela.Anota(lista->ItemClick(), "ItemClick");
        m_Tela.Anota(lista->HabilitaItensMenuLista(), "Habilita");
        m_Tela.Anota(lista->BotaoClick(), "BotaoClick");
        m_Tela.Liga(lista->ItemMenuClicado(), [this](const std::string &chave) { m_Tela.Eventos.push_back(chave); });
        Carrega({{"30", "Radar", "a"}, {"10", "Lombada São João", "b"}, {"20", "Pardal São José", "c"}});
        m_Tela.Vistos();
    }

    void Carrega(const std::vector<Textos> &linhas)
    {
        TabelaTexto tabela(3);
        for (const Textos &linha : linhas) {
            const std::int32_t numero = tabela.AdicionaLinha();
            for (std::size_t i = 0; i < linha.size(); ++i) {
                tabela.Celula(static_cast<std::int32_t>(i) + 1, numero) = linha[i];
            }
        }
        lista->CarregaItens(tabela);
    }
    Textos Codigos() const
    {
        Textos codigos;
        for (std::int32_t linha = 1; linha <= lista->NroVistas(); ++linha) {
            codigos.push_back(lista->TextoCelula(linha, 1));
        }
        return codigos;
    }
    void Filtra(const std::string &texto) { lista->Filtra(texto, {1, 2}); }
    // Further rows as the module brings them: appended, the last one current.
    void TrazAoPedir(const std::vector<Textos> &linhas)
    {
        lista->DefineTemMais(true);
        m_Tela.Liga(lista->BotaoClick(), [this, linhas] {
            Carrega(linhas);
            lista->DefineItemAtual(lista->NroItens());
        });
    }

    Tela m_Tela;
    Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista"));
};

TEST_F(ztListVistaTest, Sorting_LeavesTheModulesRowsWhereTheyAre)
{
    EXPECT_TRUE(lista->ClicaLinha(1));
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_EQ(Codigos(), (Textos{"10", "20", "30"}));
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(lista->AtualVista(), 3);
    EXPECT_EQ(lista->Celula(1, "Chave"), "a");
    EXPECT_EQ(lista->ValorAtual("Chave"), "a");
    EXPECT_EQ(lista->ColunaAtual(2), "Radar");
    EXPECT_TRUE(lista->ClicaLinha(1));
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_TRUE(lista->TeclaSetas(1));
    EXPECT_EQ(lista->ValorAtual("Chave"), "c");
}

TEST_F(ztListVistaTest, Sorting_StaysWhenTheRowsAreThrownAwayAndLoadedAnew)
{
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(lista->OrdenaPor(1));
    lista->Limpa(false);
    Carrega({{"7", "x", "d"}, {"9", "y", "e"}, {"8", "z", "f"}});
    lista->DefineItemAtual(lista->NroItens());
    EXPECT_EQ(Codigos(), (Textos{"9", "8", "7"}));
    EXPECT_EQ(lista->ValorAtual("Chave"), "f") << "the last one that was loaded";
    EXPECT_EQ(lista->AtualVista(), 2);
    EXPECT_TRUE(lista->OrdenaPor(0));
    EXPECT_EQ(Codigos(), (Textos{"7", "9", "8"}));
}

TEST_F(ztListVistaTest, Sorting_ByAnotherColumn_KeepsTheOrderBeforeAmongEqualsAlsoOfLaterRows)
{
    Carrega({{"40", "Radar", "d"}});
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Codigos(), (Textos{"10", "20", "40", "30"}));
    Carrega({{"35", "Radar", "e"}});
    EXPECT_EQ(Codigos(), (Textos{"10", "20", "40", "35", "30"}));
}

TEST_F(ztListVistaTest, Filter_LooksForEveryWordInAnyOfTheColumnsWithoutAccentsAndCase)
{
    Filtra("SAO");
    EXPECT_EQ(Codigos(), (Textos{"10", "20"}));
    Filtra(" são  jose ");
    EXPECT_EQ(Codigos(), Textos{"20"});
    Filtra("pardal 20");
    EXPECT_EQ(Codigos(), Textos{"20"});
    Filtra("20 pardal c");
    EXPECT_EQ(Codigos(), Textos{}) << "the hidden column is not looked into";
    Filtra("adar1");
    EXPECT_EQ(Codigos(), Textos{}) << "no word runs from one cell into the next";
    Filtra(" ");
    EXPECT_FALSE(lista->Filtrada());
    EXPECT_EQ(Codigos(), (Textos{"30", "10", "20"}));
    EXPECT_EQ(lista->NroItens(), 3);
}

TEST_F(ztListVistaTest, Filter_ThatHidesTheCurrentRow_LeavesNoneUntilItIsSeenAgain)
{
    EXPECT_TRUE(lista->ClicaLinha(1));
    m_Tela.Vistos();
    Filtra("lombada");
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->ValorAtual("Chave"), "");
    EXPECT_EQ(lista->ColunaAtual(1), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Habilita"});
    Filtra("");
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Habilita"});
    Filtra("radar");
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztListVistaTest, Commands_ActOnARowThatIsSeenOrOnNone)
{
    EXPECT_TRUE(lista->ClicaLinha(1));
    Filtra("sao");
    m_Tela.Vistos();
    std::string editada;
    m_Tela.Liga(lista->ItemMenuClicado(), [&](const std::string &) { editada = lista->ValorAtual("Chave"); });
    EXPECT_TRUE(lista->EscolheMenu(Editar));
    EXPECT_EQ(editada, "b");
    Filtra("nada disso");
    m_Tela.Vistos();
    EXPECT_FALSE(lista->EscolheMenu(Editar));
    EXPECT_FALSE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->NroItens(), 3);
    EXPECT_TRUE(lista->EscolheMenu("mnuZTLObjNovo"));
    EXPECT_EQ(editada, "") << "which needs none";
}

// A search with the filter still there.
TEST_F(ztListVistaTest, ItemAtual_WrittenToARowThatTheFilterHides_IsNoneForNow)
{
    Filtra("radar");
    lista->Limpa(false);
    Carrega({{"1", "Radar", "g"}, {"2", "Lombada", "h"}});
    lista->DefineItemAtual(lista->NroItens());
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(Codigos(), Textos{"1"});
    EXPECT_TRUE(lista->ClicaLinha(1));
    EXPECT_EQ(lista->ValorAtual("Chave"), "g");
    Filtra("");
    EXPECT_EQ(lista->ValorAtual("Chave"), "g");
}

TEST_F(ztListVistaTest, Removal_InASortedAndFilteredList_GoesOnWithTheRowThatComesIntoItsPlace)
{
    Carrega({{"15", "Poste São Luís", "d"}});
    Filtra("sao");
    EXPECT_TRUE(lista->OrdenaPor(1)); // 10, 15, 20
    EXPECT_TRUE(lista->ClicaLinha(1));
    std::int32_t removida = 0;
    m_Tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &linha) { removida = linha; });
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(removida, 2) << "as the module counts";
    EXPECT_EQ(Codigos(), (Textos{"15", "20"}));
    EXPECT_EQ(lista->ValorAtual("Chave"), "d");
    EXPECT_TRUE(lista->TeclaSetas(1));
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->ValorAtual("Chave"), "d") << "of the last one, the one before";
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->NroItens(), 1) << "the one that is not seen stays";
    Filtra("");
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(Codigos(), Textos{"30"});
}

// The module has already done away with what the row tells of.
TEST_F(ztListVistaTest, Removal_WhileThePersonSortsOrFilters_IsOfTheRowThatWasAskedAbout)
{
    EXPECT_TRUE(lista->ClicaLinha(2));
    m_Tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &) {
        EXPECT_TRUE(lista->OrdenaPor(1));
        Filtra("radar");
        Carrega({{"40", "Radar", "e"}});
    });
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(Codigos(), (Textos{"30", "40"}));
    Filtra("");
    EXPECT_EQ(Codigos(), (Textos{"20", "30", "40"}));
}

TEST_F(ztListVistaTest, RolaAteOFim_BringsRowsByTheButtonsEventAndThePersonStays)
{
    EXPECT_FALSE(lista->RolaAteOFim()) << "there are no more";
    EXPECT_TRUE(lista->ClicaLinha(2));
    m_Tela.Form->DefineControleAtivo(nullptr);
    m_Tela.Vistos();
    TrazAoPedir({{"5", "Novo", "z"}});
    EXPECT_TRUE(lista->RolaAteOFim());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"BotaoClick", "ItemClick", "Habilita", "ItemClick", "Habilita"}));
    EXPECT_EQ(lista->NroItens(), 4);
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_FALSE(lista->TemFoco());
    EXPECT_TRUE(lista->PedeMais());
    EXPECT_EQ(lista->ItemAtual(), 5) << "by the button the last one is current, as the module writes it";
}

TEST_F(ztListVistaTest, RolaAteOFim_WhenNothingCame_AsksNoMoreUntilSomethingDoes)
{
    lista->DefineTemMais(true);
    EXPECT_FALSE(lista->RolaAteOFim());
    EXPECT_FALSE(lista->RolaAteOFim());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"BotaoClick"});
    EXPECT_TRUE(lista->PedeMais()) << "the button stays";
    m_Tela.Vistos();
    EXPECT_FALSE(lista->RolaAteOFim());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"BotaoClick"});
    Carrega({{"5", "Novo", "z"}});
    EXPECT_FALSE(lista->RolaAteOFim());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"BotaoClick"});
}

TEST_F(ztListVistaTest, RolaAteOFim_WhileRowsAreOnTheirWay_AsksNotTwice)
{
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->BotaoClick(), [&] {
        EXPECT_TRUE(lista->Trazendo());
        EXPECT_FALSE(lista->RolaAteOFim());
        EXPECT_FALSE(lista->PedeMais());
        Carrega({{"5", "Novo", "z"}});
    });
    EXPECT_TRUE(lista->RolaAteOFim());
    EXPECT_FALSE(lista->Trazendo());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"BotaoClick"});
}

TEST_F(ztListVistaTest, RolaAteOFim_WhenTheModuleFaults_CanBeAskedByTheButtonAgain)
{
    lista->DefineTemMais(true);
    bool falha = true;
    m_Tela.Liga(lista->BotaoClick(), [&] {
        if (falha) {
            throw Falha(91);
        }
    });
    EXPECT_EQ(NumeroDaFalha([&] { lista->RolaAteOFim(); }), 91);
    EXPECT_FALSE(lista->Trazendo());
    EXPECT_FALSE(lista->RolaAteOFim());
    falha = false;
    EXPECT_TRUE(lista->PedeMais());
}

TEST_F(ztListVistaTest, RolaAteOFim_WhenTheRowsAreThrownAwayMeanwhile_LeavesTheCurrentRowToTheModule)
{
    EXPECT_TRUE(lista->ClicaLinha(2));
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->BotaoClick(), [&] {
        lista->Limpa(false);
        Carrega({{"1", "", "p"}, {"2", "", "q"}, {"3", "", "r"}, {"4", "", "s"}});
        lista->DefineItemAtual(4);
    });
    EXPECT_FALSE(lista->RolaAteOFim());
    EXPECT_EQ(lista->ItemAtual(), 4);
}

TEST_F(ztListVistaTest, RolaAteOFim_InASortedList_PutsTheRowsInTheirPlace)
{
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(lista->ClicaLinha(1));
    TrazAoPedir({{"25", "x", "y"}, {"5", "x", "z"}});
    EXPECT_TRUE(lista->RolaAteOFim());
    EXPECT_EQ(Codigos(), (Textos{"5", "10", "20", "25", "30"}));
    EXPECT_EQ(lista->ValorAtual("Código"), "10");
    EXPECT_EQ(lista->AtualVista(), 2);
}

TEST_F(ztListVistaTest, RolaAteOFim_ThatReleasesTheForm_EndsInPeace)
{
    Tela tela;
    ztList *so = tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista")).Ponteiro();
    so->DefineTemMais(true);
    tela.Liga(so->BotaoClick(), [&] { tela.Solta(); });
    EXPECT_FALSE(so->RolaAteOFim());
    EXPECT_TRUE(tela.Form.Nada());
}

} // namespace
