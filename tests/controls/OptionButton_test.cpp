#include "controls/OptionButton.h"

#include "tests/controls/Tela.h"

namespace {

class OptionButtonTest : public testing::Test {
  protected:
    Ref<OptionButton> Opcao(const std::string &nome, const Ref<IControle> &container)
    {
        Ref<OptionButton> opcao = m_Tela.Poe<OptionButton>(Chamado<AjustesOptionButton>(nome), container);
        m_Tela.Anota(opcao->Click(), nome + ".Click");
        m_Tela.Anota(opcao->Mudou(), nome + ".Mudou");
        return opcao;
    }

    Tela m_Tela;
    Ref<ztFrame> m_Via = m_Tela.PoeFrame("fraTipoVia");
    Ref<ztFrame> m_Limite = m_Tela.PoeFrame("fraLimiteDif");
    Ref<OptionButton> m_Rodovia = Opcao("optRodovia", m_Via);
    Ref<OptionButton> m_Urbana = Opcao("optUrbana", m_Via);
    Ref<OptionButton> m_Sim = Opcao("optSim", m_Limite);
};

TEST_F(OptionButtonTest, DefineValue_OnWhatIsOnOrOff_RaisesNoClick)
{
    EXPECT_EQ(m_Rodovia->NomeTipo(), "OptionButton");
    EXPECT_FALSE(m_Rodovia->Value());
    m_Rodovia->DefineValue(true);
    m_Tela.Vistos();
    m_Rodovia->DefineValue(true);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    m_Rodovia->DefineValue(false);
    EXPECT_FALSE(m_Rodovia->Value() || m_Urbana->Value()); // none is on
    EXPECT_EQ(m_Tela.Vistos(), Textos{"optRodovia.Mudou"});
}

TEST_F(OptionButtonTest, DefineValue_On_SwitchesTheOthersOfItsContainerOffSilently)
{
    m_Rodovia->DefineValue(true);
    m_Sim->DefineValue(true);
    m_Tela.Vistos();
    m_Tela.Liga(m_Urbana->Click(), [&] {
        EXPECT_TRUE(m_Urbana->Value());
        EXPECT_FALSE(m_Rodovia->Value());
    });
    m_Urbana->DefineValue(true);
    EXPECT_TRUE(m_Urbana->Value());
    EXPECT_FALSE(m_Rodovia->Value());
    EXPECT_TRUE(m_Sim->Value());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"optRodovia.Mudou", "optUrbana.Mudou", "optUrbana.Click"}));
}

TEST_F(OptionButtonTest, DefineValue_OnWithoutContainer_ExcludesThoseOfTheFormAlone)
{
    const Ref<OptionButton> a = Opcao("optA", nullptr);
    const Ref<OptionButton> b = Opcao("optB", nullptr);
    m_Rodovia->DefineValue(true);
    a->DefineValue(true);
    b->DefineValue(true);
    EXPECT_FALSE(a->Value());
    EXPECT_TRUE(b->Value());
    EXPECT_TRUE(m_Rodovia->Value());
}

TEST_F(OptionButtonTest, Clica_OnOne_SwitchesItOnAndStaysOnAtTheNextClick)
{
    EXPECT_TRUE(m_Rodovia->Clica());
    EXPECT_TRUE(m_Rodovia->Value());
    EXPECT_TRUE(m_Rodovia->TemFoco());
    m_Tela.Vistos();
    EXPECT_TRUE(m_Rodovia->Clica());
    EXPECT_TRUE(m_Rodovia->Value());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(OptionButtonTest, Clica_WhileHiddenWithItsFrame_IsRefused)
{
    m_Via->DefineVisible(false);
    EXPECT_FALSE(m_Rodovia->Clica());
    EXPECT_FALSE(m_Rodovia->Value());
    m_Rodovia->DefineValue(true); // the module can
    EXPECT_TRUE(m_Rodovia->Value());
}

TEST_F(OptionButtonTest, Clica_WhenClickReleasesTheForm_EndsInPeace)
{
    OptionButton *opcao = std::exchange(m_Rodovia, nullptr).Ponteiro();
    m_Urbana = nullptr;
    m_Tela.Liga(opcao->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(opcao->Clica());
}

TEST_F(OptionButtonTest, Clica_WhenTheFocusDisablesIt_IsRefused)
{
    m_Tela.Liga(m_Rodovia->RecebeuFoco(), [&] { m_Via->DefineEnabled(false); });
    EXPECT_FALSE(m_Rodovia->Clica());
    EXPECT_FALSE(m_Rodovia->Value());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(OptionButtonTest, DefineValue_OnWhenTheFormHasEnded_SwitchesThatOneAlone)
{
    m_Urbana->DefineValue(true);
    m_Tela.Solta();
    m_Tela.Vistos();
    m_Rodovia->DefineValue(true);
    EXPECT_TRUE(m_Rodovia->Value());
    EXPECT_TRUE(m_Urbana->Value());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"optRodovia.Mudou", "optRodovia.Click"}));
}

} // namespace
