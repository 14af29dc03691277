#include "controls/PreparaDetalhes.h"

#include "controls/FabricaControles.h"
#include "controls/ztList.h"
#include "tests/controls/Tela.h"

namespace {

class PreparaDetalhesTest : public testing::Test {
  protected:
    template <class I> Ref<I> Cria(AjustesPeca ajustes)
    {
        Ref<I> controle = ComoTipo<I>(m_Fabrica->Cria(m_Tela.Form, {.Ajustes = std::move(ajustes)}, nullptr, -1));
        m_Tela.Form->Guarda(controle);
        return controle;
    }

    Tela m_Tela;
    Ref<FabricaControles> m_Fabrica = Novo<FabricaControles>();
};

TEST_F(PreparaDetalhesTest, OnFieldsAndPickers_ClosesThem)
{
    const Ref<IForm> form = m_Tela.Form;
    const auto texto = Cria<ITextBox>(AjustesTextBox{});
    const auto observacao = Cria<IztVeiObservacao>(AjustesZtVeiObservacao{});
    const auto mascara = Cria<IztMask>(AjustesZtMask{});
    const auto data = Cria<IztData>(AjustesZtData{});
    const auto endereco = Cria<IztEndereco>(AjustesZtEndereco{});
    const auto combo = Cria<IztCombo>(AjustesZtCombo{});
    const auto caixa = Cria<ICheckBox>(AjustesCheckBox{});
    const auto opcao = Cria<IOptionButton>(AjustesOptionButton{});
    const auto cliente = Cria<IztClienteSetor>(AjustesZtClienteSetor{});

    PreparaDetalhes(form);

    EXPECT_TRUE(texto->Locked());
    EXPECT_TRUE(observacao->Locked());
    EXPECT_TRUE(mascara->ReadOnly());
    EXPECT_TRUE(data->ReadOnly());
    EXPECT_TRUE(endereco->ReadOnly());
    EXPECT_TRUE(combo->ComboSomenteLeitura());
    EXPECT_FALSE(caixa->Enabled());
    EXPECT_FALSE(opcao->Enabled());
    EXPECT_FALSE(cliente->Enabled());
    for (const Ref<IControle> &aberto :
         std::vector<Ref<IControle>>{texto, observacao, mascara, data, endereco, combo}) {
        EXPECT_TRUE(aberto->Enabled());
        EXPECT_TRUE(aberto->Visible());
    }
}

TEST_F(PreparaDetalhesTest, OnTheRest_LeavesItAsItIs)
{
    const Ref<IForm> form = m_Tela.Form;
    const std::vector<Ref<IControle>> outros = {
        Cria<ILabel>(AjustesLabel{}),
        Cria<IImage>(AjustesImage{}),
        Cria<IztFrame>(AjustesZtFrame{}),
        Cria<ICommandButton>(AjustesCommandButton{}),
        Cria<IztCommand>(AjustesZtCommand{}),
        Cria<ISSTab>(AjustesSSTab{}),
        Cria<ICommonDialog>(AjustesCommonDialog{}),
        Cria<IztList>(AjustesZtList{}),
    };
    for (const Ref<IControle> &controle : outros) {
        m_Tela.Anota(ComoBase(controle)->Mudou(), "Mudou");
    }
    PreparaDetalhes(form);
    for (const Ref<IControle> &controle : outros) {
        EXPECT_TRUE(controle->Enabled()) << controle->NomeTipo();
        EXPECT_TRUE(controle->Visible()) << controle->NomeTipo();
    }
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PreparaDetalhesTest, OnValues_LeavesThemAndRaisesNothing)
{
    const Ref<IForm> form = m_Tela.Form;
    const auto texto = Cria<ITextBox>(AjustesTextBox{});
    const auto caixa = Cria<ICheckBox>(AjustesCheckBox{});
    texto->DefineText("Lombada");
    caixa->DefineValue(1);
    m_Tela.Anota(texto->Change(), "Change");
    m_Tela.Anota(caixa->Click(), "Click");
    PreparaDetalhes(form);
    EXPECT_EQ(texto->Text(), "Lombada");
    EXPECT_EQ(caixa->Value(), 1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PreparaDetalhesTest, WithoutForm_IsFault91)
{
    EXPECT_EQ(NumeroDaFalha([] { PreparaDetalhes(nullptr); }), 91);
}

} // namespace
