#include "controls/SSTab.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

class SSTabTest : public testing::Test {
  protected:
    SSTabTest()
    {
        m_Tela.Liga(m_Abas->Click(), [this](std::int16_t anterior) {
            m_Tela.Eventos.push_back("Click " + std::to_string(anterior) + " " + std::to_string(m_Abas->Tab()));
        });
        m_Tela.Anota(m_Abas->Mudou(), "Mudou");
    }

    static Peca Ajustes()
    {
        return Chamado<AjustesSSTab>("sstDados", {.Paginas = {"Equipamento", "Dados", "Sensores"}});
    }

    Tela m_Tela;
    Ref<SSTab> m_Abas = m_Tela.Poe<SSTab>(Ajustes());
};

TEST_F(SSTabTest, Fresh_ShowsItsFirstPageAndOffersAll)
{
    EXPECT_EQ(m_Abas->NomeTipo(), "SSTab");
    EXPECT_EQ(m_Abas->Tabs(), 3);
    EXPECT_EQ(m_Abas->Tab(), 0);
    EXPECT_EQ(m_Abas->TabCaption(2), "Sensores");
    for (std::int16_t pagina = 0; pagina < 3; ++pagina) {
        EXPECT_TRUE(m_Abas->TabEnabled(pagina));
        EXPECT_TRUE(m_Abas->TabVisible(pagina));
    }
}

TEST_F(SSTabTest, DefineTab_OfAnotherPage_OpensItAndRaisesClickWithThePageLeft)
{
    m_Abas->DefineTab(0); // the current one
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    m_Abas->DefineTab(2);
    EXPECT_EQ(m_Abas->Tab(), 2);
    m_Abas->DefineTab(1);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click 0 2", "Mudou", "Click 2 1"}));
    m_Abas->DefineTabEnabled(1, false);
    m_Abas->DefineTabEnabled(1, false);
    EXPECT_FALSE(m_Abas->TabEnabled(1));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(SSTabTest, DefineTab_OfAPageNotAvailable_DoesNothingAndAbreIsRefused)
{
    m_Abas->DefineTabEnabled(1, false);
    m_Abas->DefineTabVisible(2, false);
    m_Tela.Vistos();
    for (std::int16_t pagina : {std::int16_t{1}, std::int16_t{2}}) {
        m_Abas->DefineTab(pagina);
        EXPECT_FALSE(m_Abas->Abre(pagina));
    }
    EXPECT_FALSE(m_Abas->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    m_Abas->DefineTabEnabled(1, true);
    m_Abas->DefineEnabled(false);
    EXPECT_FALSE(m_Abas->Abre(1));
    EXPECT_EQ(m_Abas->Tab(), 0);
}

TEST_F(SSTabTest, DefineTab_OfAPageThatIsNone_IsFault5)
{
    for (std::int16_t pagina : {std::int16_t{-1}, std::int16_t{3}}) {
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->DefineTab(pagina); }), 5);
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->TabCaption(pagina); }), 5);
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->TabEnabled(pagina); }), 5);
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->DefineTabEnabled(pagina, true); }), 5);
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->TabVisible(pagina); }), 5);
        EXPECT_EQ(NumeroDaFalha([&] { m_Abas->DefineTabVisible(pagina, true); }), 5);
        EXPECT_FALSE(m_Abas->Abre(pagina));
    }
    EXPECT_EQ(m_Abas->Tab(), 0);
}

TEST_F(SSTabTest, Abre_ByThePerson_RaisesTheSame)
{
    EXPECT_TRUE(m_Abas->Abre(1));
    EXPECT_TRUE(m_Abas->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click 0 1"}));
    EXPECT_TRUE(m_Abas->Abre(1));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(SSTabTest, Abre_WhenClickFaults_HasOpenedThePage)
{
    m_Tela.Liga(m_Abas->Click(), [](std::int16_t) { throw Falha(13); });
    EXPECT_EQ(NumeroDaFalha([&] { m_Abas->Abre(1); }), 13);
    EXPECT_EQ(m_Abas->Tab(), 1);
}

TEST_F(SSTabTest, Abre_WhenClickOpensAnotherPage_RaisesClickForThatToo)
{
    m_Tela.Liga(m_Abas->Click(), [this](std::int16_t) {
        if (m_Abas->Tab() == 1) {
            m_Abas->DefineTab(2);
        }
    });
    EXPECT_TRUE(m_Abas->Abre(1));
    EXPECT_EQ(m_Abas->Tab(), 2);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Click 0 1", "Mudou", "Click 1 2"}));
}

TEST_F(SSTabTest, Abre_WhenClickReleasesTheForm_EndsInPeace)
{
    Tela outra;
    SSTab *soDoForm = outra.Poe<SSTab>(Ajustes()).Ponteiro();
    outra.Liga(soDoForm->Click(), [&](std::int16_t) { outra.Solta(); });
    EXPECT_TRUE(soDoForm->Abre(1));
}

TEST_F(SSTabTest, Controls_OnAPage_AreThePersonsOnlyWhileItIsOpen)
{
    const Ref<TextBox> naSegunda = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txtModelo"), m_Abas, 1);
    const auto frame = m_Tela.Poe<ztFrame>(Chamado<AjustesZtFrame>("fraDados"), m_Abas, 1);
    const Ref<TextBox> noFrame = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txtVelocPerm"), frame);
    for (const Ref<TextBox> &campo : {naSegunda, noFrame}) {
        m_Abas->DefineTab(0);
        EXPECT_FALSE(campo->Digita("x"));
        EXPECT_EQ(NumeroDaFalha([&] { campo->SetFocus(); }), 5);
        EXPECT_TRUE(campo->Visible());
        m_Abas->DefineTab(1);
        EXPECT_TRUE(campo->Digita("x"));
        m_Abas->DefineTabEnabled(1, false); // the open page closes under the person
        EXPECT_FALSE(campo->Digita("x"));
        m_Abas->DefineTabEnabled(1, true);
        m_Abas->DefineTabVisible(1, false);
        EXPECT_FALSE(campo->Digita("x"));
        m_Abas->DefineTabVisible(1, true);
        EXPECT_EQ(campo->Text(), "x");
    }
}

TEST_F(SSTabTest, Abre_WhenTheFocusDisablesTheTabsOrThePage_IsRefused)
{
    m_Tela.Liga(m_Abas->RecebeuFoco(), [&] { m_Abas->DefineTabEnabled(1, false); });
    EXPECT_FALSE(m_Abas->Abre(1));
    m_Tela.Liga(m_Abas->RecebeuFoco(), [&] { m_Abas->DefineEnabled(false); });
    m_Tela.Form->DefineControleAtivo(nullptr);
    EXPECT_FALSE(m_Abas->Abre(2));
    EXPECT_EQ(m_Abas->Tab(), 0);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Mudou"}));
}

} // namespace
