#include "controls/PreparaDetalhes.h"

#include "controls/FabricaControles.h"
#include "controls/ztList.h"
#include "tests/controls/Tela.h"

namespace {

class PreparaDetalhesTest : public testing::Test {
  protected:
    template <class I> Ref<I> Guarda(const Ref<I> &controle)
    {
        m_Tela.Form->Guarda(controle);
        return controle;
    }

    Tela m_Tela;
    Ref<FabricaControles> m_Fabrica = Novo<FabricaControles>();
};

TEST_F(PreparaDetalhesTest, OnFieldsAndPickers_ClosesThem)
{
    const Ref<IForm> form = m_Tela.Form;
    const auto texto = Guarda(m_Fabrica->CriaTextBox(form, {}));
    const auto observacao = Guarda(m_Fabrica->CriaZtVeiObservacao(form, {}));
    const auto mascara = Guarda(m_Fabrica->CriaZtMask(form, {}));
    const auto data = Guarda(m_Fabrica->CriaZtData(form, {}));
    const auto endereco = Guarda(m_Fabrica->CriaZtEndereco(form, {}));
    const auto combo = Guarda(m_Fabrica->CriaZtCombo(form, {}));
    const auto caixa = Guarda(m_Fabrica->CriaCheckBox(form, {}));
    const auto opcao = Guarda(m_Fabrica->CriaOptionButton(form, {}));
    const auto cliente = Guarda(m_Fabrica->CriaZtClienteSetor(form, {}));

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
        Guarda(m_Fabrica->CriaLabel(form, {})),        Guarda(m_Fabrica->CriaImage(form, {})),
        Guarda(m_Fabrica->CriaZtFrame(form, {})),      Guarda(m_Fabrica->CriaCommandButton(form, {})),
        Guarda(m_Fabrica->CriaZtCommand(form, {})),    Guarda(m_Fabrica->CriaSSTab(form, {})),
        Guarda(m_Fabrica->CriaCommonDialog(form, {})), Guarda(m_Fabrica->CriaZtList(form, {})),
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
    const auto texto = Guarda(m_Fabrica->CriaTextBox(form, {}));
    const auto caixa = Guarda(m_Fabrica->CriaCheckBox(form, {}));
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
