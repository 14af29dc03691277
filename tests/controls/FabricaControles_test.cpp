#include "controls/FabricaControles.h"

#include "controls/ControleBase.h"
#include "controls/SSTab.h"
#include "tests/controls/Tela.h"

namespace {

TEST(FabricaControles, Cria_EachKind_MakesItWithItsSettingsAndTellsTheHost)
{
    Tela tela;
    const Ref<FabricaControles> fabrica = Novo<FabricaControles>();
    const Ref<IForm> form = tela.Form;
    std::vector<Ref<IControle>> criados;
    tela.Liga(fabrica->CriouControle(), [&](const Ref<IControle> &controle) { criados.push_back(controle); });

    const std::vector<Peca> pecas = {
        Chamado<AjustesLabel>("Label"),
        Chamado<AjustesTextBox>("TextBox", {.MaxLength = 50}),
        Chamado<AjustesCheckBox>("CheckBox"),
        Chamado<AjustesOptionButton>("OptionButton"),
        Chamado<AjustesCommandButton>("CommandButton", {.Cancel = true}),
        Chamado<AjustesSSTab>("SSTab", {.Paginas = {"Geral"}}),
        Chamado<AjustesImage>("Image"),
        Chamado<AjustesCommonDialog>("CommonDialog"),
        Chamado<AjustesZtList>("ztList"),
        Chamado<AjustesZtCombo>("ztCombo"),
        Chamado<AjustesZtMask>("ztMask"),
        Chamado<AjustesZtData>("ztData"),
        Chamado<AjustesZtCommand>("ztCommand"),
        Chamado<AjustesZtFrame>("ztFrame"),
        Chamado<AjustesZtVeiObservacao>("ztVeiObservacao"),
        Chamado<AjustesZtEndereco>("ztEndereco"),
        Chamado<AjustesZtClienteSetor>("ztClienteSetor"),
    };
    std::vector<Ref<IControle>> controles;
    for (const Peca &peca : pecas) {
        controles.push_back(fabrica->Cria(form, peca, nullptr, -1));
    }
    ASSERT_EQ(controles.size(), 17U);
    EXPECT_TRUE(criados == controles);
    for (std::size_t i = 0; i < controles.size(); ++i) {
        EXPECT_EQ(controles[i]->Nome(), controles[i]->NomeTipo());
        EXPECT_EQ(controles[i]->Nome(), NomeEspecie(controles[i]->Especie()));
        EXPECT_EQ(static_cast<std::size_t>(controles[i]->Especie()), i);
        ASSERT_NE(ComoBase(controles[i]), nullptr);
        EXPECT_TRUE(ComoBase(controles[i])->Form() == tela.Form);
    }
    EXPECT_EQ(ComoTipo<ITextBox>(controles[1])->MaxLength(), 50);
    EXPECT_TRUE(ComoTipo<ICommandButton>(controles[4])->Cancel());
    EXPECT_EQ(ComoTipo<ISSTab>(controles[5])->TabCaption(0), "Geral");
    EXPECT_TRUE(form->Controles().empty()); // the form keeps them by itself
}

TEST(FabricaControles, Cria_ForNoForm_IsFault91)
{
    EXPECT_EQ(NumeroDaFalha([] { Novo<FabricaControles>()->Cria(nullptr, Chamado<AjustesLabel>("lbl"), nullptr, -1); }),
              91);
}

TEST(FabricaControles, Cria_OfAnArrangement_IsFault5AndTellsNobody)
{
    Tela tela;
    const Ref<FabricaControles> fabrica = Novo<FabricaControles>();
    tela.Anota(fabrica->CriouControle(), "CriouControle");
    EXPECT_EQ(NumeroDaFalha([&] { fabrica->Cria(tela.Form, EmLinha({}), nullptr, -1); }), 5);
    EXPECT_EQ(tela.Vistos(), Textos{});
}

TEST(FabricaControles, Cria_OnAPage_KnowsWhatHoldsIt)
{
    Tela tela;
    const auto abas = tela.Poe<SSTab>(Chamado<AjustesSSTab>("sstDados", {.Paginas = {"Dados", "Opções"}}));
    const auto quadro = Novo<FabricaControles>()->Cria(tela.Form, Chamado<AjustesZtFrame>("fraDados"), abas, 1);
    EXPECT_TRUE(quadro->Container() == abas);
    EXPECT_EQ(quadro->Pagina(), 1);
}

} // namespace
