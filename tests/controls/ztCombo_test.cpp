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

    // Texts and values, "text|value".
    static Textos Itens(const Ref<ztCombo> &combo)
    {
        Textos itens;
        for (const auto &item : combo->Itens()) {
            itens.push_back(item.Texto + "|" + item.Valor);
        }
        return itens;
    }

    Tela m_Tela;
};

// A combo of types, and one of municipalities in which the person searches.
class TiposTest : public ztComboTest {
  protected:
    Ref<ztCombo> combo = Tipos();
};

class MunicipiosTest : public ztComboTest {
  protected:
    Ref<ztCombo> combo = Municipios();
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
    // The last item may be without its end.
    EXPECT_EQ(Itens(Combo(Chamado<AjustesZtCombo>("cbo", {.Conteudo = "a|0??b|1"}))), (Textos{"a|0", "b|1"}));
}

TEST_F(ztComboTest, AdicionaItem_SplitsTextAndValueByItsDelimiterAndColumn)
{
    const Ref<ztCombo> combo = Combo(Chamado<AjustesZtCombo>("cbo"));
    for (const char *item : {"Aferição do INMETRO|1", "NENHUM", "vazio|", "a|b|c", ""}) {
        combo->AdicionaItem(item);
    }
    EXPECT_EQ(Itens(combo), (Textos{"Aferição do INMETRO|1", "NENHUM|NENHUM", "vazio|", "a|b", "|"}));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Mudou", "Mudou", "Mudou", "Mudou"}));
    const Ref<ztCombo> semValor = Combo(Chamado<AjustesZtCombo>("cboArqLayout", {.ColunaValor = -1}));
    semValor->AdicionaItem("RADAR|1");
    EXPECT_EQ(Itens(semValor), Textos{"RADAR|1|RADAR|1"});
    const Ref<ztCombo> outro = Combo(Chamado<AjustesZtCombo>("cbo", {.ColunaValor = 2, .DelimitadorColuna = ";"}));
    outro->AdicionaItem("a|b;x;9");
    EXPECT_EQ(Itens(outro), Textos{"a|b|9"});
}

TEST_F(TiposTest, DefineValor_OfAnItem_ChoosesItAndRaisesClickThenChange)
{
    combo->AdicionaItem("Outro|P"); // the first of two is chosen
    m_Tela.Vistos();
    combo->DefineValor("P");
    EXPECT_EQ(combo->IndiceAtual(), 1);
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(combo->Texto(), "Pardal");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    combo->DefineValor("P");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(TiposTest, DefineValor_OfNoItem_ChoosesNone)
{
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

TEST_F(TiposTest, DefineIndiceAtual_ChoosesByPositionAndOutsideTheItemsIsFault5)
{
    combo->DefineIndiceAtual(2);
    EXPECT_EQ(combo->Valor(), "M");
    combo->DefineIndiceAtual(2);
    combo->DefineIndiceAtual(-1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change", "Mudou", "Click", "Change"}));
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(3); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(-2); }), 5);
    EXPECT_EQ(combo->IndiceAtual(), -1);
}

TEST_F(TiposTest, Limpa_WithAChoice_EmptiesAndRaisesNothing)
{
    combo->DefineValor("P");
    m_Tela.Vistos();
    combo->Limpa();
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(TiposTest, Escolhe_ByThePerson_RaisesTheSame)
{
    EXPECT_FALSE(combo->Escolhe(-1) || combo->Escolhe(3) || combo->EscolheTexto("Radar")); // not there
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->Escolhe(0));
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_TRUE(combo->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    EXPECT_TRUE(combo->Escolhe(0));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->EscolheTexto("Pardal Móvel"));
    EXPECT_EQ(combo->Valor(), "M");
}

TEST_F(TiposTest, Escolhe_WhileReadOnlyOrDisabled_IsRefused)
{
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

TEST_F(TiposTest, Digita_InACombo_GoesToTheNextItemOfEachLetter)
{
    for (const char *valor : {"P", "M", "P"}) {
        EXPECT_TRUE(combo->Digita("p"));
        EXPECT_EQ(combo->Valor(), valor);
    }
    m_Tela.Vistos();
    EXPECT_FALSE(combo->Digita("x"));
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->Apaga());
    EXPECT_FALSE(combo->Digita("zl")); // a key that no item has, among others
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_TRUE(combo->Apaga());
    EXPECT_FALSE(combo->Digita("pz"));
    EXPECT_EQ(combo->Valor(), "P");
}

TEST_F(TiposTest, Digita_AWholeText_ChoosesThatItemWhateverWasChosenBefore)
{
    for (const char *antes : {"", "L", "P", "M"}) {
        for (const auto &[digitado, valor] : std::vector<std::pair<std::string, std::string>>{
                 {"pardal", "P"}, {"PARDAL MOVEL", "M"}, {"pardal m", "M"}, {"lom", "L"}}) {
            combo->DefineValor(antes);
            EXPECT_TRUE(combo->Preenche(digitado));
            EXPECT_EQ(combo->Valor(), valor) << digitado << " behind " << antes;
        }
    }
}

TEST_F(TiposTest, Digita_WhatIsChosenAlready_RaisesNothing)
{
    combo->DefineValor("P");
    m_Tela.Vistos();
    EXPECT_TRUE(combo->Digita("pardal"));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(combo->Digita(" "));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
}

TEST_F(TiposTest, Digita_WhenItsEventFillsTheComboAgain_GoesOnWithWhatWasTyped)
{
    m_Tela.Liga(combo->Click(), [&] {
        if (combo->Valor() == "P") {
            combo->Limpa();
            for (const char *item : {"Arara|A", "Rolinha|R", "Pardal Velho|V", "Pardal Novo|N"}) {
                combo->AdicionaItem(item);
            }
        }
    });
    EXPECT_TRUE(combo->Digita("p"));
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_TRUE(combo->Digita("ardal n"));
    EXPECT_EQ(combo->Valor(), "N");
}

TEST_F(MunicipiosTest, Digita_InAComboThatSearches_ChoosesByAllThatWasTyped)
{
    EXPECT_TRUE(combo->Digita("po"));
    EXPECT_EQ(combo->Texto(), "Portão");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
    EXPECT_TRUE(combo->Digita("rto "));
    EXPECT_EQ(combo->Texto(), "Porto Alegre");
    EXPECT_EQ(combo->Pesquisa().Procurado(), "porto ");
    EXPECT_FALSE(combo->Digita("x"));
    EXPECT_EQ(combo->Pesquisa().Procurado(), "porto ");
    EXPECT_EQ(combo->Texto(), "Porto Alegre");
}

TEST_F(MunicipiosTest, Digita_InAComboThatSearches_CountsNeitherAccentsNorCase)
{
    const std::vector<std::pair<std::string, std::string>> casos = {
        {"AGUA", "1"}, {"sao", "4"}, {"sá", "4"}, {"SÁP", "5"}};
    for (const auto &[digitado, valor] : casos) {
        EXPECT_TRUE(combo->Preenche(digitado));
        EXPECT_EQ(combo->Valor(), valor);
    }
}

TEST_F(MunicipiosTest, Digita_AfterTheFocusWasElsewhereOrApaga_StartsTheSearchAgainAndKeepsTheChoice)
{
    const Ref<TextBox> outro = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txt"));
    EXPECT_TRUE(combo->Digita("por"));
    EXPECT_TRUE(outro->Foco());
    EXPECT_EQ(combo->Pesquisa().Procurado(), "");
    EXPECT_EQ(combo->Texto(), "Portão");
    EXPECT_TRUE(combo->Digita("sap"));
    EXPECT_EQ(combo->Texto(), "Sapiranga");
    m_Tela.Vistos();
    EXPECT_TRUE(combo->Apaga());
    EXPECT_EQ(combo->Pesquisa().Procurado(), "");
    EXPECT_EQ(combo->Texto(), "Sapiranga");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(MunicipiosTest, Digita_WhenAKeyMakesItReadOnly_StopsBehindIt)
{
    m_Tela.Liga(combo->Click(), [&] { combo->DefineComboSomenteLeitura(true); });
    EXPECT_FALSE(combo->Digita("sap"));
    EXPECT_EQ(combo->Texto(), "São Leopoldo");
}

TEST_F(TiposTest, Click_WhenItFaultsOrChoosesAnother_RaisesNoChangeOrItForThatToo)
{
    {
        const Conexao falha = combo->Click().liga([] { throw Falha(13); });
        EXPECT_EQ(NumeroDaFalha([&] { combo->Escolhe(1); }), 13);
    }
    EXPECT_EQ(combo->Valor(), "P");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click"}));
    m_Tela.Liga(combo->Click(), [&] { combo->DefineValor("M"); });
    combo->DefineValor("L");
    EXPECT_EQ(combo->Valor(), "M");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Mudou", "Click", "Change", "Change"}));
}

TEST_F(ztComboTest, Escolhe_WhenClickReleasesTheForm_EndsInPeace)
{
    ztCombo *combo = Tipos().Ponteiro();
    m_Tela.Liga(combo->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(combo->Escolhe(1));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Change"}));
}

TEST_F(MunicipiosTest, Click_WhenItEmptiesTheCombo_LeavesItEmpty)
{
    m_Tela.Liga(combo->Click(), [&] { combo->Limpa(); });
    EXPECT_FALSE(combo->Digita("sao"));
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->Valor(), "");
}

TEST_F(TiposTest, Escolhe_WhenTheFocusIsLedElsewhereOrClosesTheCombo_IsRefused)
{
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

} // namespace
