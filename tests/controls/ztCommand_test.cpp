#include "controls/ztCommand.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

class ztCommandTest : public testing::Test {
  protected:
    Ref<ztCommand> Botao(bool bloqueia)
    {
        auto ajustes = Chamado<AjustesZtCommand>("ztCmdOK", {.LockFormOnClick = bloqueia});
        Ref<ztCommand> botao = m_Tela.Poe<ztCommand>(ajustes);
        m_Tela.Liga(botao->ValidaClick(), [this](bool &cancela) {
            m_Tela.Eventos.emplace_back(m_Tela.Form->Enabled() ? "ValidaClick" : "ValidaClick bloqueado");
            EXPECT_FALSE(cancela);
            cancela = m_Cancela;
        });
        m_Tela.Liga(botao->Click(),
                    [this] { m_Tela.Eventos.emplace_back(m_Tela.Form->Enabled() ? "Click" : "Click bloqueado"); });
        return botao;
    }

    bool m_Cancela = false;
    Tela m_Tela;
};

TEST_F(ztCommandTest, Clica_RaisesValidaClickAndThenClickUnlessCancelled)
{
    const Ref<ztCommand> botao = Botao(false);
    EXPECT_TRUE(botao->Clica());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ValidaClick", "Click"}));
    EXPECT_TRUE(m_Tela.Form->EnabledEscritos.empty());
    m_Cancela = true;
    EXPECT_TRUE(botao->Clica());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"ValidaClick"});
}

TEST_F(ztCommandTest, Clica_WithLock_HasTheFormDisabledInBothEventsAndEnabledBehind)
{
    const Ref<ztCommand> botao = Botao(true);
    EXPECT_TRUE(botao->Clica());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ValidaClick bloqueado", "Click bloqueado"}));
    EXPECT_EQ(m_Tela.Form->EnabledEscritos, (std::vector<bool>{false, true}));
    m_Cancela = true;
    EXPECT_TRUE(botao->Clica());
    EXPECT_TRUE(m_Tela.Form->Enabled());
}

TEST_F(ztCommandTest, Clica_WithLockWhenValidaClickFaults_PassesTheFaultAndEnablesTheForm)
{
    const Ref<ztCommand> botao = Botao(true);
    m_Tela.Liga(botao->ValidaClick(), [](bool &) { throw Falha(13); });
    EXPECT_EQ(NumeroDaFalha([&] { botao->Clica(); }), 13);
    EXPECT_TRUE(m_Tela.Form->Enabled());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"ValidaClick bloqueado"});
}

TEST_F(ztCommandTest, Clica_WithLockWhenClickFaults_PassesTheFaultAndEnablesTheForm)
{
    const Ref<ztCommand> botao = Botao(true);
    m_Tela.Liga(botao->Click(), [] { throw Falha(91); });
    EXPECT_EQ(NumeroDaFalha([&] { botao->Clica(); }), 91);
    EXPECT_TRUE(m_Tela.Form->Enabled());
    EXPECT_TRUE(botao->Foco());
    EXPECT_EQ(m_Tela.Form->EnabledEscritos, (std::vector<bool>{false, true}));
}

TEST_F(ztCommandTest, Clica_AgainWhileTheFormIsLocked_IsRefused)
{
    const Ref<ztCommand> botao = Botao(true);
    m_Tela.Liga(botao->Click(), [&] {
        EXPECT_FALSE(botao->Clica());
        EXPECT_FALSE(botao->Aciona());
        EXPECT_FALSE(botao->Foco());
    });
    EXPECT_TRUE(botao->Clica());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ValidaClick bloqueado", "Click bloqueado"}));
}

TEST_F(ztCommandTest, SetFocus_WhileTheFormIsLocked_LeadsToTheField)
{
    const Ref<ztCommand> botao = Botao(true);
    const Ref<TextBox> campo = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txtCodigo"));
    m_Tela.Liga(botao->ValidaClick(), [&](bool &cancela) {
        campo->SetFocus();
        cancela = true;
    });
    EXPECT_TRUE(botao->Clica());
    EXPECT_TRUE(campo->TemFoco());
    EXPECT_TRUE(campo->Digita("x"));
}

TEST_F(ztCommandTest, Clica_WithLockWhenClickReleasesTheForm_EndsInPeace)
{
    ztCommand *botao = Botao(true).Ponteiro();
    RefFraca<FormFalso> form = m_Tela.Form;
    m_Tela.Liga(botao->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(botao->Clica());
    EXPECT_TRUE(form.Nada());
}

TEST_F(ztCommandTest, Clica_WhenValidaClickReleasesTheForm_StillRaisesClick)
{
    Ref<ztCommand> botao = m_Tela.Poe<ztCommand>(Chamado<AjustesZtCommand>("ztCmdOK"));
    m_Tela.Liga(botao->ValidaClick(), [&](bool &) { m_Tela.Solta(); });
    m_Tela.Anota(botao->Click(), "Click");
    ztCommand *soDoForm = std::exchange(botao, nullptr).Ponteiro();
    EXPECT_TRUE(soDoForm->Clica());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
}

} // namespace
