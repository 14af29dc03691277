#include "controls/ztData.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

constexpr const char *Vazia = "  /  /    ";

class ztDataTest : public testing::Test {
  protected:
    ztDataTest() { m_Tela.Anota(m_Data->Change(), "Change"); }

    Tela m_Tela;
    Ref<ztData> m_Data = m_Tela.Poe<ztData>(Chamado<AjustesZtData>("ztdData"));
    Ref<TextBox> m_Outro = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txtOutro"));
};

TEST_F(ztDataTest, Fresh_ShowsItsTemplateAndHasNoValue)
{
    EXPECT_EQ(m_Data->NomeTipo(), "ztData");
    EXPECT_EQ(m_Data->Text(), Vazia);
    EXPECT_EQ(m_Data->Valor(), "");
    EXPECT_FALSE(m_Data->DataValida());
    EXPECT_FALSE(m_Data->ReadOnly());
}

TEST_F(ztDataTest, DefineText_OfADate_ShowsItWhole)
{
    const std::vector<std::pair<std::string, std::string>> datas = {
        {"05/03/2024", "05/03/2024"}, {"06/03/2024 23:59:59", "06/03/2024"}, {"7/3/24", "07/03/2024"},
        {"11/1/800", "11/01/0800"},   {"31/12/999 10:30:00", "31/12/0999"},  {"05032024", "05/03/2024"},
        {"7/9/1822", "07/09/1822"}};
    for (const auto &[escrita, mostrada] : datas) {
        m_Data->DefineText(escrita);
        EXPECT_EQ(m_Data->Text(), mostrada);
        EXPECT_EQ(m_Data->Valor(), mostrada);
        EXPECT_TRUE(m_Data->DataValida());
        EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
        m_Data->DefineText(mostrada);
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    }
}

TEST_F(ztDataTest, DefineText_WithoutADay_EmptiesTheField)
{
    for (const char *texto : {"00:00:00", "", "10:30", "nada", "99/99/9", Vazia}) {
        m_Data->DefineText("05/03/2024");
        m_Data->DefineText(texto);
        EXPECT_EQ(m_Data->Text(), Vazia) << texto;
        EXPECT_EQ(m_Data->Valor(), "") << texto;
        EXPECT_FALSE(m_Data->DataValida()) << texto;
    }
}

TEST_F(ztDataTest, DataValida_OfWhatTheCalendarHasNot_IsFalseAndAtItsEdgesTrue)
{
    for (const char *texto : {"31/02/2024", "29/02/2023", "32/01/2024", "00/01/2024", "01/00/2024", "01/13/2024",
                              "12/25/2024", "01/01/0099", "05/03/  24", "05/03/24  ", " 5/03/2024"}) {
        m_Data->DefineText(texto);
        EXPECT_EQ(m_Data->Text(), texto);
        EXPECT_EQ(m_Data->Valor(), texto);
        EXPECT_FALSE(m_Data->DataValida()) << texto;
    }
    for (const char *texto : {"29/02/2024", "31/12/9999", "01/01/0100", "30/12/1899", "01/12/2024"}) {
        m_Data->DefineText(texto);
        EXPECT_EQ(m_Data->Text(), texto);
        EXPECT_TRUE(m_Data->DataValida()) << texto;
    }
}

TEST_F(ztDataTest, Digita_DigitsOnly_FillsTheTemplate)
{
    EXPECT_TRUE(m_Data->Digita("0503"));
    EXPECT_EQ(m_Data->Text(), "05/03/    ");
    EXPECT_EQ(m_Data->Valor(), "05/03/    ");
    EXPECT_FALSE(m_Data->DataValida());
    EXPECT_TRUE(m_Data->Digita("x2024"));
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
    EXPECT_TRUE(m_Data->DataValida());
    EXPECT_EQ(m_Tela.Vistos().size(), 8U);
    EXPECT_TRUE(m_Data->Digita("9"));
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
}

TEST_F(ztDataTest, Digita_WithTheSlashes_IsTheSameAndApagaEmptiesTheField)
{
    m_Data->DefineReadOnly(true);
    EXPECT_FALSE(m_Data->Digita("0"));
    EXPECT_EQ(m_Data->Text(), Vazia);
    m_Data->DefineReadOnly(false);
    EXPECT_TRUE(m_Data->Digita("05/03/2024"));
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
    m_Tela.Vistos();
    EXPECT_TRUE(m_Data->Apaga());
    EXPECT_EQ(m_Data->Text(), Vazia);
    EXPECT_EQ(m_Data->Valor(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
}

TEST_F(ztDataTest, Foco_ElsewhereWithATwoDigitYear_MakesItWholeInTheCenturyOfThePlatform)
{
    const std::vector<std::pair<const char *, const char *>> anos = {
        {"010100", "01/01/2000"}, {"311229", "31/12/2029"}, {"010130", "01/01/1930"}, {"311299", "31/12/1999"}};
    for (const auto &[digitado, inteiro] : anos) {
        EXPECT_TRUE(m_Data->Preenche(digitado));
        m_Tela.Vistos();
        EXPECT_TRUE(m_Outro->Foco());
        EXPECT_EQ(m_Data->Text(), inteiro);
        EXPECT_TRUE(m_Data->DataValida());
        EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
    }
    EXPECT_TRUE(m_Data->Preenche("310224")); // no day, which stays as it was typed
    m_Outro->SetFocus();                     // by the module
    EXPECT_EQ(m_Data->Text(), "31/02/2024");
    EXPECT_FALSE(m_Data->DataValida());
}

TEST_F(ztDataTest, Foco_ElsewhereWithAnotherNumberOfYearDigits_LeavesTheText)
{
    for (const char *digitado : {"", "0503", "05032", "0503202", "05032024"}) {
        EXPECT_TRUE(m_Data->Preenche(digitado));
        const std::string antes = m_Data->Text();
        m_Tela.Vistos();
        EXPECT_TRUE(m_Outro->Foco());
        EXPECT_EQ(m_Data->Text(), antes);
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    }
}

TEST_F(ztDataTest, Foco_WhenTheYearMadeWholeLeadsTheFocusBack_EndsWhereItWasLed)
{
    EXPECT_TRUE(m_Data->Digita("050324"));
    m_Tela.Liga(m_Data->Change(), [&] { m_Data->SetFocus(); });
    EXPECT_FALSE(m_Outro->Foco());
    EXPECT_TRUE(m_Data->TemFoco());
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
}

TEST_F(ztDataTest, Foco_ElsewhereWithAGapInTheYear_LeavesTheText)
{
    EXPECT_TRUE(m_Data->Digita("050320"));
    EXPECT_TRUE(m_Data->Edita(9, 0, "4"));
    EXPECT_EQ(m_Data->Text(), "05/03/20 4");
    EXPECT_TRUE(m_Outro->Foco());
    EXPECT_EQ(m_Data->Text(), "05/03/20 4");
    EXPECT_FALSE(m_Data->DataValida());
}

} // namespace
