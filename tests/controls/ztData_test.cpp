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
    EXPECT_EQ(m_Data->Recusa(), "");
    EXPECT_TRUE(m_Data->Digita("x2024"));
    EXPECT_EQ(m_Data->Recusa(), "Só algarismos.");
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
    EXPECT_TRUE(m_Data->DataValida());
    EXPECT_EQ(m_Tela.Vistos().size(), 8U);
    EXPECT_TRUE(m_Data->Digita("9"));
    EXPECT_EQ(m_Data->Text(), "05/03/2024");
    EXPECT_EQ(m_Data->Recusa(), "O campo já está completo.");
    EXPECT_TRUE(m_Data->Edita(9, 1, ""));
    EXPECT_EQ(m_Data->Recusa(), "");
}

TEST_F(ztDataTest, Edita_AnEmptyField_TakesWhatIsTypedWhereverTheCursorStands)
{
    for (std::size_t posicao = 0; posicao <= 10; ++posicao) {
        EXPECT_TRUE(m_Data->Apaga());
        std::size_t cursor = posicao;
        for (const char *tecla : {"0", "5", "0", "3", "2", "0", "2", "4"}) {
            EXPECT_TRUE(m_Data->Edita(cursor, 0, tecla));
            cursor = m_Data->Cursor();
        }
        EXPECT_EQ(m_Data->Text(), "05/03/2024") << posicao;
        EXPECT_TRUE(m_Data->Apaga());
        EXPECT_TRUE(m_Data->Edita(posicao, 0, "05032024")); // pasted
        EXPECT_EQ(m_Data->Text(), "05/03/2024") << posicao;
    }
}

TEST_F(ztDataTest, Edita_SeparatorsByHand_EndTheGroupThatTheyStandBehind)
{
    const std::vector<std::pair<std::string, std::string>> casos = {
        {"1/", "01/  /    "},           {"1/2/", "01/02/    "},          {"1/2/26", "01/02/26  "},
        {"1-2-2026", "01/02/2026"},     {"1.2.2026", "01/02/2026"},      {"1 2 2026", "01/02/2026"},
        {"01/02/2026", "01/02/2026"},   {"010226", "01/02/26  "},        {"12/2/26", "12/02/26  "},
        {"//1//2//26//", "01/02/26  "}, {" 01/02/2026\n", "01/02/2026"}, {"0/", "00/  /    "},
        {"2026-02-01", "01/02/2026"},   {"1/2/26/", "01/02/26  "},       {"01/02", "01/02/    "}};
    for (const auto &[digitado, mostrado] : casos) {
        EXPECT_TRUE(m_Data->Preenche(digitado));
        EXPECT_EQ(m_Data->Text(), mostrado) << digitado;
        if (digitado == "2026-02-01") { // a program's, which nobody types key by key
            continue;
        }
        EXPECT_TRUE(m_Data->Apaga());
        for (std::size_t cursor = 0; const char tecla : digitado) {
            EXPECT_TRUE(m_Data->Edita(cursor, 0, {tecla}));
            cursor = m_Data->Cursor();
        }
        EXPECT_EQ(m_Data->Text(), mostrado) << digitado;
    }
}

TEST_F(ztDataTest, Foco_ElsewhereAfterADateInShort_MakesItWhole)
{
    EXPECT_TRUE(m_Data->Preenche("1/2/26"));
    EXPECT_TRUE(m_Outro->Foco());
    EXPECT_EQ(m_Data->Text(), "01/02/2026");
    EXPECT_TRUE(m_Data->DataValida());
}

TEST_F(ztDataTest, Edita_InTheMiddle_OvertypesAndFillsGaps)
{
    EXPECT_TRUE(m_Data->Digita("05032024"));
    EXPECT_TRUE(m_Data->Edita(0, 0, "1"));
    EXPECT_EQ(m_Data->Text(), "15/03/2024");
    EXPECT_EQ(m_Data->Cursor(), 1U);
    EXPECT_TRUE(m_Data->Edita(0, 2, "")); // deleted
    EXPECT_EQ(m_Data->Text(), "  /03/2024");
    EXPECT_TRUE(m_Data->Edita(0, 0, "7"));
    EXPECT_TRUE(m_Data->Edita(m_Data->Cursor(), 0, "/"));
    EXPECT_EQ(m_Data->Text(), "07/03/2024");
    EXPECT_EQ(m_Data->Cursor(), 3U);
    EXPECT_TRUE(m_Data->Edita(4, 1, ""));
    EXPECT_EQ(m_Data->Text(), "07/0 /2024");
    EXPECT_TRUE(m_Data->Edita(10, 0, "9")); // nowhere else is a place for it
    EXPECT_EQ(m_Data->Text(), "07/09/2024");
    EXPECT_TRUE(m_Data->Edita(0, 10, "1")); // what was selected is replaced
    EXPECT_EQ(m_Data->Text(), "1 /  /    ");
    EXPECT_TRUE(m_Data->Edita(8, 0, "2")); // no gap behind what is typed
    EXPECT_EQ(m_Data->Text(), "12/  /    ");
}

TEST_F(ztDataTest, Edita_AWholeDateAtOnce_TakesThePlaceOfTheOneThatIsThere)
{
    for (const char *colado : {"1/2/2026", "01/02/2026", "01022026", "2026-02-01"}) {
        for (const std::size_t posicao : {0U, 4U, 10U}) {
            m_Data->DefineText("15/03/2024");
            EXPECT_TRUE(m_Data->Edita(posicao, 0, colado));
            EXPECT_EQ(m_Data->Text(), "01/02/2026") << colado << " at " << posicao;
        }
    }
}

TEST_F(ztDataTest, Edita_AHundredThousandCharacters_IsDoneAtOnceAndSaysWhy)
{
    EXPECT_TRUE(m_Data->Edita(0, 0, std::string(100000, 'x')));
    EXPECT_EQ(m_Data->Text(), Vazia);
    EXPECT_EQ(m_Data->Recusa(), "Só algarismos.");
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
    EXPECT_TRUE(m_Data->Digita("05032024"));
    EXPECT_TRUE(m_Data->Edita(8, 1, ""));
    EXPECT_EQ(m_Data->Text(), "05/03/20 4");
    EXPECT_TRUE(m_Outro->Foco());
    EXPECT_EQ(m_Data->Text(), "05/03/20 4");
    EXPECT_FALSE(m_Data->DataValida());
}

} // namespace
