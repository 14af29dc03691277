#include "controls/CommandButton.h"
#include "controls/ztCommand.h"

#include "tests/controls/Tela.h"

namespace {

// What both kinds of button share.
class BotaoTest : public testing::Test {
  protected:
    Tela m_Tela;
    Ref<ztFrame> m_Frame = m_Tela.PoeFrame("fraDocumento");
    Ref<CommandButton> m_Cancelar = m_Tela.Poe<CommandButton>(Chamado<AjustesCommandButton>("cmdCancelar"), m_Frame);
    Ref<ztCommand> m_Ok = m_Tela.Poe<ztCommand>(Chamado<AjustesZtCommand>("ztCmdOK"));
    Ref<ztCommand> m_Aplicar = m_Tela.Poe<ztCommand>(Chamado<AjustesZtCommand>("ztCmdAplicar"));
};

TEST_F(BotaoTest, Fresh_IsNeitherDefaultNorCancelUnlessSetSoWhichTakesItFromTheOthers)
{
    EXPECT_EQ(m_Cancelar->NomeTipo(), "CommandButton");
    EXPECT_EQ(m_Ok->NomeTipo(), "ztCommand");
    EXPECT_FALSE(m_Cancelar->Default() || m_Cancelar->Cancel() || m_Ok->Default());
    m_Ok->DefineDefault(true);
    const auto outro =
        m_Tela.Poe<CommandButton>(Chamado<AjustesCommandButton>("cmdOK", {.Default = true, .Cancel = true}));
    EXPECT_TRUE(outro->Default() && outro->Cancel());
    EXPECT_FALSE(m_Ok->Default());
}

TEST_F(BotaoTest, DefineDefault_OnASecondButton_TakesItFromTheFirst)
{
    m_Ok->DefineDefault(true);
    m_Cancelar->DefineDefault(true);
    EXPECT_FALSE(m_Ok->Default());
    EXPECT_TRUE(m_Cancelar->Default());
    m_Aplicar->DefineDefault(true);
    EXPECT_FALSE(m_Cancelar->Default());
    EXPECT_TRUE(m_Aplicar->Default());
    m_Aplicar->DefineDefault(false);
    EXPECT_FALSE(m_Ok->Default());
    EXPECT_FALSE(m_Cancelar->Default());
    EXPECT_FALSE(m_Aplicar->Default());
}

TEST_F(BotaoTest, DefineDefault_TellsTheScreenOfBothButtons)
{
    m_Ok->DefineDefault(true);
    m_Tela.Anota(m_Ok->Mudou(), "ok");
    m_Tela.Anota(m_Aplicar->Mudou(), "aplicar");
    m_Aplicar->DefineDefault(true);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ok", "aplicar"}));
    m_Aplicar->DefineDefault(true);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(BotaoTest, Clica_RaisesClickAndTakesTheFocusWhichAKeyLeaves)
{
    m_Tela.Anota(m_Cancelar->Click(), "Click");
    m_Ok->SetFocus();
    EXPECT_TRUE(m_Cancelar->Aciona());
    EXPECT_TRUE(m_Ok->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
    EXPECT_TRUE(m_Cancelar->Clica());
    EXPECT_TRUE(m_Cancelar->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
}

TEST_F(BotaoTest, Clica_WhileItCannot_IsRefused)
{
    m_Tela.Anota(m_Cancelar->Click(), "Click");
    const auto confere = [&] {
        EXPECT_FALSE(m_Cancelar->Clica());
        EXPECT_FALSE(m_Cancelar->Aciona());
    };
    m_Cancelar->DefineEnabled(false);
    confere();
    m_Cancelar->DefineEnabled(true);
    m_Cancelar->DefineVisible(false);
    confere();
    m_Cancelar->DefineVisible(true);
    m_Frame->DefineEnabled(false);
    confere();
    m_Frame->DefineEnabled(true);
    m_Frame->DefineVisible(false);
    confere();
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(BotaoTest, Clica_WhenClickReleasesTheForm_EndsInPeace)
{
    CommandButton *botao = std::exchange(m_Cancelar, nullptr).Ponteiro();
    m_Tela.Liga(botao->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(botao->Clica());
    EXPECT_TRUE(m_Tela.Form.Nada());
}

TEST_F(BotaoTest, Clica_WhenLeavingAFieldDisablesTheButton_IsRefused)
{
    m_Tela.Anota(m_Cancelar->Click(), "Click");
    m_Tela.Liga(m_Cancelar->RecebeuFoco(), [&] { m_Cancelar->DefineEnabled(false); });
    EXPECT_FALSE(m_Cancelar->Clica());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(BotaoTest, DefineDefault_WhenTheFormHasEnded_IsKept)
{
    m_Tela.Solta();
    m_Ok->DefineDefault(true);
    EXPECT_TRUE(m_Ok->Default());
    EXPECT_FALSE(m_Aplicar->Default());
}

} // namespace
