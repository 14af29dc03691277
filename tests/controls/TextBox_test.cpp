#include "controls/TextBox.h"

#include "tests/controls/Tela.h"

namespace {

class TextBoxTest : public testing::Test {
  protected:
    Ref<TextBox> Caixa(std::int32_t limite)
    {
        auto ajustes = Chamado<AjustesTextBox>("txtDescricao", {.MaxLength = limite});
        Ref<TextBox> caixa = m_Tela.Poe<TextBox>(ajustes);
        m_Tela.Anota(caixa->Change(), "Change");
        m_Tela.Anota(caixa->Mudou(), "Mudou");
        return caixa;
    }

    Tela m_Tela;
};

// A text without a limit.
class CaixaTest : public TextBoxTest {
  protected:
    Ref<TextBox> caixa = Caixa(0);
};

TEST_F(TextBoxTest, Fresh_HasItsSettings)
{
    auto ajustes = Chamado<AjustesTextBox>("txtDescricao", {.MaxLength = 50});
    ajustes.Indice = 3;
    ajustes.Rotulo = "Descrição:";
    ajustes.Left = 10;
    ajustes.Top = 20;
    ajustes.Width = 30;
    ajustes.Height = 40;
    const Ref<TextBox> caixa = m_Tela.Poe<TextBox>(ajustes);
    EXPECT_EQ(caixa->NomeTipo(), "TextBox");
    EXPECT_EQ(caixa->Especie(), EspecieControle::TextBox);
    EXPECT_EQ(caixa->Nome(), "txtDescricao");
    EXPECT_EQ(caixa->Indice(), 3);
    EXPECT_EQ(caixa->Rotulo(), "Descrição:");
    EXPECT_EQ(caixa->Text(), "");
    EXPECT_EQ(caixa->MaxLength(), 50);
    EXPECT_EQ(caixa->Left(), 10);
    EXPECT_EQ(caixa->Top(), 20);
    EXPECT_EQ(caixa->Width(), 30);
    EXPECT_EQ(caixa->Height(), 40);
    EXPECT_FALSE(caixa->Locked());
    EXPECT_TRUE(caixa->Enabled());
    EXPECT_TRUE(caixa->Visible());
}

TEST_F(CaixaTest, DefineText_OfAnotherText_TellsTheScreenAndThenRaisesChangeWhateverThePersonMay)
{
    const auto confere = [&](const std::string &texto) {
        m_Tela.Vistos();
        caixa->DefineText(texto);
        EXPECT_EQ(caixa->Text(), texto);
        EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
        caixa->DefineText(texto);
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    };
    confere("Radar");
    confere("a\r\nb\xC3"); // lines and malformed bytes are kept
    caixa->DefineEnabled(false);
    caixa->DefineVisible(false);
    caixa->DefineLocked(true);
    confere("x");
}

TEST_F(TextBoxTest, DefineText_AroundTheLimit_CutsByCharacters)
{
    const Ref<TextBox> caixa = Caixa(8);
    caixa->DefineText("Aferição");
    EXPECT_EQ(caixa->Text(), "Aferição");
    caixa->DefineText("Aferições");
    EXPECT_EQ(caixa->Text(), "Aferiçõe");
    m_Tela.Vistos();
    caixa->DefineText("Aferiçõe além"); // the same once cut
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(CaixaTest, Digita_ThreeKeys_RaisesChangeThreeTimesBehindTheTextAndTakesTheFocus)
{
    caixa->DefineText("ção");
    m_Tela.Vistos();
    EXPECT_TRUE(caixa->Digita("pé!"));
    EXPECT_EQ(caixa->Text(), "çãopé!");
    EXPECT_TRUE(caixa->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change", "Mudou", "Change", "Mudou", "Change"}));
}

TEST_F(TextBoxTest, Digita_AtTheLimit_LeavesOutWhatIsTooMuch)
{
    const Ref<TextBox> caixa = Caixa(3);
    EXPECT_TRUE(caixa->Digita("ãéíó"));
    EXPECT_EQ(caixa->Text(), "ãéí");
    EXPECT_EQ(m_Tela.Vistos().size(), 6U);
    EXPECT_TRUE(caixa->Digita("x"));
    EXPECT_EQ(caixa->Text(), "ãéí");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(TextBoxTest, Digita_OfWhatNoKeyTypes_LeavesItOutAndCountsEachCodeAsOne)
{
    const Ref<TextBox> livre = Caixa(0);
    EXPECT_TRUE(livre->Digita("a\tb\r\nc\x7F"
                              "d\xC3"
                              "e\xFF"));
    EXPECT_EQ(livre->Text(), "abcde");
    const Ref<TextBox> deTres = Caixa(3);
    EXPECT_TRUE(deTres->Digita("e\u0301\U0001F697x")); // a combining mark, and beyond the basic plane
    EXPECT_EQ(deTres->Text(), "e\u0301\U0001F697");
}

TEST_F(TextBoxTest, Apaga_WithText_RaisesChangeOnceAndPreencheReplacesIt)
{
    const Ref<TextBox> caixa = Caixa(2);
    caixa->DefineText("AB");
    m_Tela.Vistos();
    EXPECT_TRUE(caixa->Apaga());
    EXPECT_EQ(caixa->Text(), "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
    EXPECT_TRUE(caixa->Apaga());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    caixa->DefineText("AB");
    EXPECT_TRUE(caixa->Preenche("çé"));
    EXPECT_EQ(caixa->Text(), "çé");
}

TEST_F(TextBoxTest, Edita_InTheMiddleOrBeyond_ReplacesAndLeavesTheCursorBehind)
{
    const Ref<TextBox> caixa = Caixa(6);
    caixa->DefineText("aéçõz");
    EXPECT_EQ(caixa->Cursor(), 5U);
    const auto confere = [&](std::size_t inicio, std::size_t quantos, const std::string &novo, const std::string &texto,
                             std::size_t cursor) {
        EXPECT_TRUE(caixa->Edita(inicio, quantos, novo));
        EXPECT_EQ(caixa->Text(), texto);
        EXPECT_EQ(caixa->Cursor(), cursor);
    };
    confere(1, 3, "íú", "aíúz", 3);
    confere(0, 0, "ABCD", "ABaíúz", 2); // room for two
    confere(1, 900, "", "A", 1);
    confere(9, 9, "c", "Ac", 2); // beyond the text, it works at its end
}

TEST_F(CaixaTest, Digita_WhileItCannot_IsRefusedAndChangesNothing)
{
    caixa->DefineText("x");
    const auto confere = [&] {
        m_Tela.Vistos();
        EXPECT_FALSE(caixa->Digita("y"));
        EXPECT_FALSE(caixa->Apaga());
        EXPECT_FALSE(caixa->Preenche("z"));
        EXPECT_FALSE(caixa->Edita(0, 1, "w"));
        EXPECT_EQ(caixa->Text(), "x");
        EXPECT_FALSE(caixa->TemFoco());
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    };
    caixa->DefineLocked(true);
    confere();
    EXPECT_TRUE(caixa->Foco()); // which a locked field gets all the same
    m_Tela.Form->DefineControleAtivo(nullptr);
    caixa->DefineLocked(false);
    caixa->DefineEnabled(false);
    confere();
    caixa->DefineEnabled(true);
    caixa->DefineVisible(false);
    confere();
    caixa->DefineVisible(true);
    m_Tela.Form->DefineEnabled(false);
    confere();
    m_Tela.Form->DefineEnabled(true);
    m_Tela.Form->DefineVisible(false);
    confere();
    m_Tela.Form->DefineVisible(true);
    EXPECT_TRUE(caixa->Digita("y"));
}

TEST_F(CaixaTest, Digita_WhenTheFirstKeyLocksTheField_StopsBehindIt)
{
    m_Tela.Liga(caixa->Change(), [&] { caixa->DefineLocked(true); });
    EXPECT_FALSE(caixa->Digita("abc"));
    EXPECT_EQ(caixa->Text(), "a");
}

TEST_F(CaixaTest, Digita_WhenAKeyRaisesAFault_PassesItAndKeepsWhatWasTyped)
{
    m_Tela.Liga(caixa->Change(), [&] {
        if (caixa->Text() == "ab") {
            throw Falha(13);
        }
    });
    EXPECT_EQ(NumeroDaFalha([&] { caixa->Digita("abc"); }), 13);
    EXPECT_EQ(caixa->Text(), "ab");
    EXPECT_TRUE(caixa->Digita("c"));
    EXPECT_EQ(caixa->Text(), "abc");
}

TEST_F(CaixaTest, Change_ThatWritesTheTextAgain_IsRaisedForThatToo)
{
    m_Tela.Liga(caixa->Change(), [&] {
        if (caixa->Text() == "ab") {
            caixa->DefineText("AB");
        }
    });
    EXPECT_TRUE(caixa->Digita("abc"));
    EXPECT_EQ(caixa->Text(), "ABc");
}

TEST_F(TextBoxTest, Digita_WhenAKeyReleasesTheForm_EndsInPeace)
{
    TextBox *caixa = Caixa(0).Ponteiro();
    m_Tela.Liga(caixa->Change(), [&] { m_Tela.Solta(); });
    EXPECT_FALSE(caixa->Digita("abc"));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
}

TEST_F(TextBoxTest, DefineText_WhenItsNoticeReleasesTheForm_EndsInPeace)
{
    TextBox *caixa = Caixa(0).Ponteiro();
    m_Tela.Liga(caixa->Mudou(), [&] { m_Tela.Solta(); });
    caixa->DefineText("abc");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
}

TEST_F(CaixaTest, Digita_WhenTheFocusIsLedElsewhereOrLocksTheField_IsRefused)
{
    const Ref<TextBox> outra = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txtOutra"));
    {
        const Conexao levado = caixa->RecebeuFoco().liga([&] { outra->SetFocus(); });
        EXPECT_FALSE(caixa->Digita("a"));
        EXPECT_TRUE(outra->TemFoco());
    }
    const Conexao trancado = caixa->RecebeuFoco().liga([&] { caixa->DefineLocked(true); });
    EXPECT_FALSE(caixa->Digita("a"));
    EXPECT_TRUE(caixa->TemFoco());
    EXPECT_EQ(caixa->Text(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(CaixaTest, Preenche_WhenTheEmptiedFieldIsLocked_LeavesItEmpty)
{
    caixa->DefineText("antes");
    m_Tela.Liga(caixa->Change(), [&] { caixa->DefineLocked(true); });
    EXPECT_FALSE(caixa->Preenche("depois"));
    EXPECT_EQ(caixa->Text(), "");
}

} // namespace
