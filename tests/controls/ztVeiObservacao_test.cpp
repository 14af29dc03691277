#include "controls/ztVeiObservacao.h"

#include "host/Texto.h"
#include "tests/controls/Tela.h"

namespace {

class ztVeiObservacaoTest : public testing::Test {
  protected:
    Ref<ztVeiObservacao> Observacao()
    {
        auto ajustes = Chamado<AjustesZtVeiObservacao>("txtObsNotif", {.MaxLength = 70});
        Ref<ztVeiObservacao> observacao = m_Tela.Poe<ztVeiObservacao>(ajustes);
        m_Tela.Anota(observacao->Change(), "Change");
        return observacao;
    }

    Tela m_Tela;
};

TEST_F(ztVeiObservacaoTest, Fresh_IsEmptyAndOpen)
{
    const Ref<ztVeiObservacao> observacao = Observacao();
    EXPECT_EQ(observacao->NomeTipo(), "ztVeiObservacao");
    EXPECT_EQ(observacao->Text(), "");
    EXPECT_EQ(observacao->MaxLength(), 70);
    EXPECT_FALSE(observacao->Locked());
}

TEST_F(ztVeiObservacaoTest, DefineText_AboveTheLimit_CutsAtSeventyLetters)
{
    const Ref<ztVeiObservacao> observacao = Observacao();
    std::string setenta;
    for (int i = 0; i < 70; ++i) {
        setenta += "ã";
    }
    observacao->DefineText(setenta);
    EXPECT_EQ(observacao->Text(), setenta);
    observacao->DefineText(setenta + "x");
    EXPECT_EQ(observacao->Text(), setenta);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
    EXPECT_TRUE(observacao->Digita("x"));
    EXPECT_EQ(Len(observacao->Text()), 70U);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztVeiObservacaoTest, DefineText_WithoutALimit_StandsWhole)
{
    const auto observacao = m_Tela.Poe<ztVeiObservacao>(Chamado<AjustesZtVeiObservacao>("txtObs", {.MaxLength = 0}));
    observacao->DefineText(std::string(100, 'x'));
    EXPECT_EQ(observacao->Text(), std::string(100, 'x'));
}

TEST_F(ztVeiObservacaoTest, Digita_WhileLocked_IsRefusedUntilUnlocked)
{
    const Ref<ztVeiObservacao> observacao = Observacao();
    observacao->DefineLocked(true);
    EXPECT_FALSE(observacao->Digita("a"));
    EXPECT_EQ(observacao->Text(), "");
    observacao->DefineLocked(false);
    EXPECT_TRUE(observacao->Digita("a"));
    EXPECT_EQ(observacao->Text(), "a");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
}

} // namespace
