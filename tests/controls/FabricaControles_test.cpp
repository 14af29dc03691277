#include "controls/FabricaControles.h"

#include "controls/ControleBase.h"
#include "tests/controls/Tela.h"

namespace {

TEST(FabricaControles, Cria_EachKind_MakesItWithItsSettingsAndTellsTheHost)
{
    Tela tela;
    const Ref<FabricaControles> fabrica = Novo<FabricaControles>();
    const Ref<IForm> form = tela.Form;
    std::vector<Ref<IControle>> criados;
    tela.Liga(fabrica->CriouControle(), [&](const Ref<IControle> &controle) { criados.push_back(controle); });

    auto botao = Chamado<AjustesCommandButton>("CommandButton");
    botao.Cancel = true;
    auto texto = Chamado<AjustesTextBox>("TextBox");
    texto.MaxLength = 50;
    auto abas = Chamado<AjustesSSTab>("SSTab");
    abas.Paginas = {"Geral"};
    const std::vector<Ref<IControle>> controles = {
        fabrica->CriaLabel(form, Chamado<AjustesControle>("Label")),
        fabrica->CriaTextBox(form, texto),
        fabrica->CriaCheckBox(form, Chamado<AjustesControle>("CheckBox")),
        fabrica->CriaOptionButton(form, Chamado<AjustesControle>("OptionButton")),
        fabrica->CriaCommandButton(form, botao),
        fabrica->CriaSSTab(form, abas),
        fabrica->CriaImage(form, Chamado<AjustesControle>("Image")),
        fabrica->CriaCommonDialog(form, Chamado<AjustesControle>("CommonDialog")),
        fabrica->CriaZtList(form, Chamado<AjustesZtList>("ztList")),
        fabrica->CriaZtCombo(form, Chamado<AjustesZtCombo>("ztCombo")),
        fabrica->CriaZtMask(form, Chamado<AjustesZtMask>("ztMask")),
        fabrica->CriaZtData(form, Chamado<AjustesControle>("ztData")),
        fabrica->CriaZtCommand(form, Chamado<AjustesZtCommand>("ztCommand")),
        fabrica->CriaZtFrame(form, Chamado<AjustesControle>("ztFrame")),
        fabrica->CriaZtVeiObservacao(form, Chamado<AjustesTextBox>("ztVeiObservacao")),
        fabrica->CriaZtEndereco(form, Chamado<AjustesZtEndereco>("ztEndereco")),
        fabrica->CriaZtClienteSetor(form, Chamado<AjustesControle>("ztClienteSetor")),
    };
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
    EXPECT_EQ(NumeroDaFalha([] { Novo<FabricaControles>()->CriaLabel(nullptr, {}); }), 91);
}

} // namespace
