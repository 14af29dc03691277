#include "tela/OrdemDeTab.h"

#include "controls/Label.h"
#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

Textos Nomes(const Ref<FormFalso> &form)
{
    Textos nomes;
    for (const Ref<IControle> &controle : EmOrdemDeTab(*form)) {
        nomes.push_back(controle->Nome());
    }
    return nomes;
}

TEST(OrdemDeTab, EmOrdemDeTab_AtFirst_IsTheOrderOfCreation)
{
    Tela tela;
    tela.Poe<TextBox>(Chamado<AjustesTextBox>("c"));
    tela.Poe<Label>(Chamado<AjustesLabel>("b"));
    tela.Poe<TextBox>(Chamado<AjustesTextBox>("a"));
    EXPECT_EQ(Nomes(tela.Form), (Textos{"c", "b", "a"}));
}

TEST(OrdemDeTab, EmOrdemDeTab_AfterTabIndexWasWritten_FollowsIt)
{
    Tela tela;
    tela.Poe<TextBox>(Chamado<AjustesTextBox>("a"));
    tela.Poe<TextBox>(Chamado<AjustesTextBox>("b"));
    const Ref<TextBox> ultimo = tela.Poe<TextBox>(Chamado<AjustesTextBox>("c"));
    ultimo->DefineTabIndex(0);
    EXPECT_EQ(Nomes(tela.Form), (Textos{"c", "a", "b"}));
    ultimo->DefineTabIndex(1);
    EXPECT_EQ(Nomes(tela.Form), (Textos{"a", "c", "b"}));
}

TEST(OrdemDeTab, EmOrdemDeTab_OfAFormWithoutControls_IsEmpty)
{
    EXPECT_EQ(Nomes(Novo<FormFalso>()), Textos{});
}

} // namespace
