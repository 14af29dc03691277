#include "controls/CommonDialog.h"

#include "tests/controls/Tela.h"

namespace {

class CommonDialogTest : public testing::Test {
  protected:
    Tela m_Tela;
    Ref<CommonDialog> m_Dialogo = m_Tela.Poe<CommonDialog>(Chamado<AjustesCommonDialog>("cdAbreArquivos"));
};

TEST_F(CommonDialogTest, Settings_AreWhatTheScreenReads)
{
    EXPECT_EQ(m_Dialogo->NomeTipo(), "CommonDialog");
    EXPECT_EQ(m_Dialogo->FileName(), "");
    m_Dialogo->DefineFilter("PDF (*.pdf)|*.pdf");
    m_Dialogo->DefineDefaultExt("*.pdf");
    m_Dialogo->DefineDialogTitle("Selecione o arquivo");
    m_Dialogo->DefineFileName("C:\\a.pdf");
    EXPECT_EQ(m_Dialogo->Filter(), "PDF (*.pdf)|*.pdf");
    EXPECT_EQ(m_Dialogo->DefaultExt(), "*.pdf");
    EXPECT_EQ(m_Dialogo->DialogTitle(), "Selecione o arquivo");
    EXPECT_EQ(m_Dialogo->FileName(), "C:\\a.pdf");
}

TEST_F(CommonDialogTest, ShowOpen_WhenAFileIsChosen_HasItsName)
{
    m_Tela.Liga(m_Dialogo->AoMostrar(), [&] { EXPECT_TRUE(m_Dialogo->Escolhe("C:\\certificado.pdf")); });
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Dialogo->FileName(), "C:\\certificado.pdf");
}

TEST_F(CommonDialogTest, ShowOpen_WhenCancelled_KeepsTheNameOfTheLastUse)
{
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Dialogo->FileName(), "");
    m_Dialogo->DefineFileName("C:\\antes.pdf");
    m_Tela.Anota(m_Dialogo->AoMostrar(), "AoMostrar");
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Dialogo->FileName(), "C:\\antes.pdf");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"AoMostrar"});
}

TEST_F(CommonDialogTest, Escolhe_WhenTheDialogIsNotShown_IsRefused)
{
    EXPECT_FALSE(m_Dialogo->Escolhe("C:\\x.pdf"));
    m_Tela.Liga(m_Dialogo->AoMostrar(), [&] { EXPECT_FALSE(m_Dialogo->Escolhe("")); });
    m_Dialogo->ShowOpen();
    EXPECT_FALSE(m_Dialogo->Escolhe("C:\\x.pdf"));
    EXPECT_EQ(m_Dialogo->FileName(), "");
}

TEST_F(CommonDialogTest, ShowOpen_WhenShowingFaults_PassesTheFaultAndIsClosed)
{
    m_Tela.Liga(m_Dialogo->AoMostrar(), [] { throw Falha(51); });
    EXPECT_EQ(NumeroDaFalha([&] { m_Dialogo->ShowOpen(); }), 51);
    EXPECT_FALSE(m_Dialogo->Escolhe("C:\\x.pdf"));
}

TEST_F(CommonDialogTest, Traz_AnswersTheNextUseWithoutBeingShown)
{
    m_Tela.Anota(m_Dialogo->AoMostrar(), "AoMostrar");
    m_Dialogo->Traz("C:\\trazido.pdf");
    EXPECT_EQ(m_Dialogo->FileName(), "");
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Dialogo->FileName(), "C:\\trazido.pdf");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Tela.Vistos(), Textos{"AoMostrar"});
    m_Dialogo->Traz("C:\\outro.pdf");
    m_Dialogo->Traz("");
    m_Dialogo->ShowOpen();
    EXPECT_EQ(m_Dialogo->FileName(), "C:\\trazido.pdf");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"AoMostrar"});
}

TEST_F(CommonDialogTest, Focus_IsNotForIt)
{
    EXPECT_FALSE(m_Dialogo->Foco());
    EXPECT_FALSE(m_Dialogo->VisivelDeFato());
    EXPECT_EQ(NumeroDaFalha([&] { m_Dialogo->SetFocus(); }), 438);
}

} // namespace
