#include "controls/CheckBox.h"

#include "tests/controls/Tela.h"

namespace {

class CheckBoxTest : public testing::Test {
  protected:
    CheckBoxTest()
    {
        m_Tela.Anota(m_Caixa->Click(), "Click");
        m_Tela.Anota(m_Caixa->Mudou(), "Mudou");
    }

    Tela m_Tela;
    Ref<ztFrame> m_Frame = m_Tela.PoeFrame("fraDiasSemana");
    Ref<CheckBox> m_Caixa = m_Tela.Poe<CheckBox>(Chamado<AjustesCheckBox>("chkDia"), m_Frame);
};

TEST_F(CheckBoxTest, DefineValue_OfAnother_RaisesClick)
{
    m_Caixa->DefineValue(1);
    EXPECT_EQ(m_Caixa->Value(), 1);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click"}));
    m_Caixa->DefineValue(0);
    EXPECT_EQ(m_Caixa->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click"}));
}

TEST_F(CheckBoxTest, DefineValue_OfTheSameOrOfNeither_RaisesNothingOrIsFault5)
{
    m_Caixa->DefineValue(0);
    EXPECT_EQ(NumeroDaFalha([&] { m_Caixa->DefineValue(2); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { m_Caixa->DefineValue(-1); }), 5);
    EXPECT_EQ(m_Caixa->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(CheckBoxTest, Clica_Twice_ChecksAndUnchecks)
{
    EXPECT_TRUE(m_Caixa->Clica());
    EXPECT_EQ(m_Caixa->Value(), 1);
    EXPECT_TRUE(m_Caixa->TemFoco());
    EXPECT_TRUE(m_Caixa->Clica());
    EXPECT_EQ(m_Caixa->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click", "Mudou", "Click"}));
}

TEST_F(CheckBoxTest, Clica_WhileItOrItsFrameIsDisabledOrHidden_IsRefused)
{
    m_Caixa->DefineEnabled(false);
    m_Tela.Vistos();
    EXPECT_FALSE(m_Caixa->Clica());
    m_Caixa->DefineEnabled(true);
    m_Frame->DefineEnabled(false);
    m_Tela.Vistos();
    EXPECT_FALSE(m_Caixa->Clica());
    EXPECT_TRUE(m_Caixa->Enabled());
    m_Frame->DefineEnabled(true);
    m_Frame->DefineVisible(false);
    EXPECT_FALSE(m_Caixa->Clica());
    EXPECT_TRUE(m_Caixa->Visible());
    EXPECT_EQ(m_Caixa->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(CheckBoxTest, Clica_WhenClickFaults_StaysChecked)
{
    m_Tela.Liga(m_Caixa->Click(), [] { throw Falha(91); });
    EXPECT_EQ(NumeroDaFalha([&] { m_Caixa->Clica(); }), 91);
    EXPECT_EQ(m_Caixa->Value(), 1);
}

TEST_F(CheckBoxTest, Clica_WhenClickReleasesTheForm_EndsInPeace)
{
    CheckBox *caixa = std::exchange(m_Caixa, nullptr).Ponteiro();
    m_Tela.Liga(caixa->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(caixa->Clica());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click"}));
}

TEST_F(CheckBoxTest, Clica_WhenTheFocusDisablesIt_IsRefused)
{
    m_Tela.Liga(m_Caixa->RecebeuFoco(), [&] { m_Frame->DefineEnabled(false); });
    EXPECT_FALSE(m_Caixa->Clica());
    EXPECT_EQ(m_Caixa->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

} // namespace
