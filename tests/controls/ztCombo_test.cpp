#include "controls/ztCombo.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

class ztComboTest : public testing::Test {
  protected:
    Ref<ztCombo> Combo(const Peca &ajustes)
    {
        Ref<ztCombo> combo = m_Tela.Poe<ztCombo>(ajustes);
        m_Tela.Anota(combo->Mudou(), "Mudou");
        m_Tela.Anota(combo->Click(), "Click");
        m_Tela.Anota(combo->Change(), "Change");
        return combo;
    }
    Ref<ztCombo> Tipos()
    {
        Ref<ztCombo> combo = Combo(Chamado<AjustesZtCombo>("cboTipoEquip"));
        combo->AdicionaItem("Lombada|L");
        combo->AdicionaItem("Pardal|P");
        combo->AdicionaItem("Pardal Móvel|M");
        m_Tela.Vistos();
        return combo;
    }
    Ref<ztCombo> Municipios()
    {
        auto ajustes = Chamado<AjustesZtCombo>("cboMunic", {.PesquisaAoDigitar = true});
        Ref<ztCombo> combo = Combo(ajustes);
        for (const char *item : {"Água Santa|1", "Portão|2", "Porto Alegre|3", "São Leopoldo|4", "Sapiranga|5"}) {
            combo->AdicionaItem(item);
        }
        m_Tela.Vistos();
        return combo;
    }

    Tela m_Tela;
};

TEST_F(ztComboTest, Fresh_IsEmptyAndHasNoneChosen)
{
    const Ref<ztCombo> combo = Combo(Chamado<AjustesZtCombo>("cbo"));
    EXPECT_EQ(combo->NomeTipo(), "ztCombo");
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(combo->Texto(), "");
    EXPECT_FALSE(combo->ComboSomenteLeitura());
}

TEST_F(ztComboTest, Fresh_WithContents_HasThemAsItems)
{
    auto ajustes = Chamado<AjustesZtCombo>("cboCriterio", {.Conteudo = "Todos|0??Código|1??Subcódigo|2??"});
    const Ref<ztCombo> combo = Combo(ajustes);
    ASSERT_EQ(combo->NroItens(), 3);
    EXPECT_EQ(combo->Itens()[0].Texto, "Todos");
    EXPECT_EQ(combo->Itens()[0].Valor, "0");
    EXPECT_EQ(combo->Itens()[2].Texto, "Subcódigo");
    EXPECT_EQ(combo->Itens()[2].Valor, "2");
    EXPECT_EQ(combo->IndiceAtual(), -1);
}

TEST_F(ztComboTest, AdicionaItem_SplitsTextAndValue)
{
    const Ref<ztCombo> combo = Combo(Chamado<AjustesZtCombo>("cbo"));
    combo->AdicionaItem("Aferição do INMETRO|1");
    combo->AdicionaItem("NENHUM");
    combo->AdicionaItem("vazio|");
    combo->AdicionaItem("a|b|c");
    combo->AdicionaItem("");
    ASSERT_EQ(combo->NroItens(), 5);
    EXPECT_EQ(combo->Itens()[0].Texto, "Aferição do INMETRO");
    EXPECT_EQ(combo->Itens()[0].Valor, "1");
    EXPECT_EQ(combo->Itens()[1].Texto, "NENHUM");
    EXPECT_EQ(combo->Itens()[1].Valor, "NENHUM");
    EXPECT_EQ(combo->Itens()[2].Texto, "vazio");
    EXPECT_EQ(combo->Itens()[2].Valor, "");
    EXPECT_EQ(combo->Itens()[3].Texto, "a");
    EXPECT_EQ(combo->Itens()[3].Valor, "b");
    EXPECT_EQ(combo->Itens()[4].Texto, "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Mudou", "Mudou", "Mudou", "Mudou"}));
}

TEST_F(ztComboTest, AdicionaItem_WithoutAValueColumn_HasTheWholeTextAsValue)
{
    auto ajustes = Chamado<AjustesZtCombo>("cboArqLayout", {.ColunaValor = -1});
    const Ref<ztCombo> combo = Combo(ajustes);
    combo->AdicionaItem("RADAR|1");
    EXPECT_EQ(combo->Itens()[0].Texto, "RADAR|1");
    EXPECT_EQ(combo->Itens()[0].Valor, "RADAR|1");
}

TEST_F(ztComboTest, AdicionaItem_WithAnotherDelimiterAndColumn_FollowsThem)
{
    auto ajustes = Chamado<AjustesZtCombo>("cbo", {.ColunaValor = 2, .DelimitadorColuna = ";"});
    const Ref<ztCombo> combo = Combo(ajustes);
    combo->AdicionaItem("a|b;x;9");
    EXPECT_EQ(combo->Itens()[0].Texto, "a|b");
    EXPECT_EQ(combo->Itens()[0].Valor, "9");
}

TEST_F(ztComboTest, DefineValor_OfAnItem_ChoosesItAndRaisesClickThenChange)
{
    const Ref<ztCombo> combo = Tipos();
    combo->DefineValor("P");
    EXPECT_EQ(combo->IndiceAtual(), 1);
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(combo->Texto(), "Pardal");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    combo->DefineValor("P");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztComboTest, DefineValor_OfNoItem_ChoosesNone)
{
    const Ref<ztCombo> combo = Tipos();
    combo->DefineValor("p"); // the case counts
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    combo->DefineValor("P");
    m_Tela.Vistos();
    combo->DefineValor("");
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(combo->Texto(), "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
}

TEST_F(ztComboTest, DefineValor_WhenTwoItemsHaveIt_ChoosesTheFirst)
{
    const Ref<ztCombo> combo = Tipos();
    combo->AdicionaItem("Outro|P");
    combo->DefineValor("P");
    EXPECT_EQ(combo->IndiceAtual(), 1);
}

TEST_F(ztComboTest, DefineIndiceAtual_ChoosesByPosition)
{
    const Ref<ztCombo> combo = Tipos();
    combo->DefineIndiceAtual(2);
    EXPECT_EQ(combo->Valor(), "M");
    combo->DefineIndiceAtual(2);
    combo->DefineIndiceAtual(-1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change", "Mudou", "Click", "Change"}));
}

TEST_F(ztComboTest, DefineIndiceAtual_OutsideTheItems_IsFault5)
{
    const Ref<ztCombo> combo = Tipos();
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(3); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(-2); }), 5);
    EXPECT_EQ(combo->IndiceAtual(), -1);
}

TEST_F(ztComboTest, Limpa_WithAChoice_EmptiesAndRaisesNothing)
{
    const Ref<ztCombo> combo = Tipos();
    combo->DefineValor("P");
    m_Tela.Vistos();
    combo->Limpa();
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(ztComboTest, Escolhe_ByThePerson_RaisesTheSame)
{
    const Ref<ztCombo> combo = Tipos();
    EXPECT_TRUE(combo->Escolhe(0));
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_TRUE(combo->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    EXPECT_TRUE(combo->Escolhe(0));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->EscolheTexto("Pardal Móvel"));
    EXPECT_EQ(combo->Valor(), "M");
}

TEST_F(ztComboTest, Escolhe_OfWhatIsNotThere_IsRefused)
{
    const Ref<ztCombo> combo = Tipos();
    EXPECT_FALSE(combo->Escolhe(-1));
    EXPECT_FALSE(combo->Escolhe(3));
    EXPECT_FALSE(combo->EscolheTexto("Radar"));
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztComboTest, Escolhe_WhileReadOnlyOrDisabled_IsRefused)
{
    const Ref<ztCombo> combo = Tipos();
    combo->DefineComboSomenteLeitura(true);
    m_Tela.Vistos();
    EXPECT_FALSE(combo->Escolhe(0));
    EXPECT_FALSE(combo->EscolheTexto("Pardal"));
    EXPECT_FALSE(combo->Digita("L"));
    EXPECT_FALSE(combo->Apaga());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->Foco());
    combo->DefineValor("P"); // the module can
    EXPECT_EQ(combo->Valor(), "P");
    combo->DefineComboSomenteLeitura(false);
    combo->DefineEnabled(false);
    EXPECT_FALSE(combo->Escolhe(0));
    EXPECT_EQ(combo->Valor(), "P");
}

TEST_F(ztComboTest, Digita_InACombo_GoesToTheNextItemOfTheLetter)
{
    const Ref<ztCombo> combo = Tipos();
    EXPECT_TRUE(combo->Digita("p"));
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_TRUE(combo->Digita("p"));
    EXPECT_EQ(combo->Valor(), "M");
    EXPECT_TRUE(combo->Digita("p"));
    EXPECT_EQ(combo->Valor(), "P");
    m_Tela.Vistos();
    EXPECT_FALSE(combo->Digita("x"));
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztComboTest, Digita_InAComboThatSearches_ChoosesByAllThatWasTyped)
{
    const Ref<ztCombo> combo = Municipios();
    EXPECT_TRUE(combo->Digita("po"));
    EXPECT_EQ(combo->Texto(), "Portão");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    EXPECT_TRUE(combo->Digita("rto "));
    EXPECT_EQ(combo->Texto(), "Porto Alegre");
    EXPECT_EQ(combo->Procurado(), "porto ");
    EXPECT_FALSE(combo->Digita("x"));
    EXPECT_EQ(combo->Procurado(), "porto ");
    EXPECT_EQ(combo->Texto(), "Porto Alegre");
}

TEST_F(ztComboTest, Digita_InAComboThatSearches_CountsNeitherAccentsNorCase)
{
    const Ref<ztCombo> combo = Municipios();
    EXPECT_TRUE(combo->Preenche("AGUA"));
    EXPECT_EQ(combo->Valor(), "1");
    EXPECT_TRUE(combo->Preenche("sao"));
    EXPECT_EQ(combo->Valor(), "4");
    EXPECT_TRUE(combo->Preenche("sá"));
    EXPECT_EQ(combo->Valor(), "4");
    EXPECT_TRUE(combo->Preenche("SÁP"));
    EXPECT_EQ(combo->Valor(), "5");
}

TEST_F(ztComboTest, Digita_AfterTheFocusWasElsewhere_StartsTheSearchAgain)
{
    const Ref<ztCombo> combo = Municipios();
    const Ref<TextBox> outro = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txt"));
    EXPECT_TRUE(combo->Digita("por"));
    EXPECT_TRUE(outro->Foco());
    EXPECT_EQ(combo->Procurado(), "");
    EXPECT_EQ(combo->Texto(), "Portão");
    EXPECT_TRUE(combo->Digita("sap"));
    EXPECT_EQ(combo->Texto(), "Sapiranga");
}

TEST_F(ztComboTest, Apaga_StartsTheSearchAgainAndKeepsTheChoice)
{
    const Ref<ztCombo> combo = Municipios();
    EXPECT_TRUE(combo->Digita("sap"));
    m_Tela.Vistos();
    EXPECT_TRUE(combo->Apaga());
    EXPECT_EQ(combo->Procurado(), "");
    EXPECT_EQ(combo->Texto(), "Sapiranga");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztComboTest, Digita_WhenAKeyMakesItReadOnly_StopsBehindIt)
{
    const Ref<ztCombo> combo = Municipios();
    m_Tela.Liga(combo->Click(), [&] { combo->DefineComboSomenteLeitura(true); });
    EXPECT_FALSE(combo->Digita("sap"));
    EXPECT_EQ(combo->Texto(), "São Leopoldo");
}

TEST_F(ztComboTest, Click_WhenItChoosesAnother_RaisesClickAndChangeForThatToo)
{
    const Ref<ztCombo> combo = Tipos();
    m_Tela.Liga(combo->Click(), [&] { combo->DefineValor("M"); });
    combo->DefineValor("P");
    EXPECT_EQ(combo->Valor(), "M");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Mudou", "Click", "Change", "Change"}));
}

TEST_F(ztComboTest, Escolhe_WhenClickFaults_HasChosenAndRaisesNoChange)
{
    const Ref<ztCombo> combo = Tipos();
    m_Tela.Liga(combo->Click(), [] { throw Falha(13); });
    EXPECT_EQ(NumeroDaFalha([&] { combo->Escolhe(1); }), 13);
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click"}));
}

TEST_F(ztComboTest, Escolhe_WhenClickReleasesTheForm_EndsInPeace)
{
    ztCombo *combo = Tipos().Ponteiro();
    m_Tela.Liga(combo->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(combo->Escolhe(1));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
}

TEST_F(ztComboTest, Click_WhenItEmptiesTheCombo_LeavesItEmpty)
{
    const Ref<ztCombo> combo = Municipios();
    m_Tela.Liga(combo->Click(), [&] { combo->Limpa(); });
    EXPECT_FALSE(combo->Digita("sao"));
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->Valor(), "");
}

TEST_F(ztComboTest, Fresh_WithContentThatDoesNotEndInTheMark_HasItsLastItemToo)
{
    auto ajustes = Chamado<AjustesZtCombo>("cbo", {.Conteudo = "Sim|S??Não|N"});
    const Ref<ztCombo> combo = Combo(ajustes);
    EXPECT_EQ(combo->NroItens(), 2);
    combo->DefineValor("N");
    EXPECT_EQ(combo->Texto(), "Não");
}

TEST_F(ztComboTest, Escolhe_WhenTheFocusIsLedElsewhereOrClosesTheCombo_IsRefused)
{
    const Ref<ztCombo> combo = Tipos();
    const Ref<TextBox> outro = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txt"));
    {
        const Conexao levado = combo->RecebeuFoco().liga([&] { outro->SetFocus(); });
        EXPECT_FALSE(combo->Escolhe(1));
        EXPECT_FALSE(combo->Digita("p"));
    }
    const Conexao trancado = combo->RecebeuFoco().liga([&] { combo->DefineComboSomenteLeitura(true); });
    EXPECT_FALSE(combo->Escolhe(1));
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(ztComboTest, Digita_OfAKeyThatNoItemHasAmongOthers_ChoosesByTheOthersAndSaysSo)
{
    const Ref<ztCombo> combo = Tipos();
    EXPECT_FALSE(combo->Digita("zl"));
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_FALSE(combo->Digita("pz"));
    EXPECT_EQ(combo->Valor(), "P");
}

} // namespace
