#include "tela/Mnemonicas.h"

#include "controls/CommandButton.h"
#include "controls/Label.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztEndereco.h"
#include "controls/ztList.h"
#include "tests/controls/Tela.h"

namespace {

TEST(Mnemonicas, Mnemonica_OfACaption_IsTheLetterBehindTheFirstSingleMark)
{
    EXPECT_EQ(Mnemonica("&OK"), "o");
    EXPECT_EQ(Mnemonica("A&plicar"), "p");
    EXPECT_EQ(Mnemonica("R&&D &Sim"), "s");
    EXPECT_EQ(Mnemonica("&Índice"), "í");
    EXPECT_EQ(Mnemonica("&1 Código"), "1");
    EXPECT_EQ(Mnemonica("&Um &Dois"), "u");
}

TEST(Mnemonicas, Mnemonica_OfACaptionWithoutOne_IsEmpty)
{
    EXPECT_EQ(Mnemonica(""), "");
    EXPECT_EQ(Mnemonica("Código"), "");
    EXPECT_EQ(Mnemonica("fim &"), "");
    EXPECT_EQ(Mnemonica("R&&D"), "");
    EXPECT_EQ(Mnemonica("&&&&"), "");
}

TEST(Mnemonicas, SemMarca_OfACaption_IsWhatIsRead)
{
    EXPECT_EQ(SemMarca("A&plicar"), "Aplicar");
    EXPECT_EQ(SemMarca("R&&D"), "R&D");
    EXPECT_EQ(SemMarca("Ação"), "Ação");
    EXPECT_EQ(SemMarca("fim &"), "fim ");
}

TEST(Mnemonicas, ComMarca_OfALetter_MarksItWhereItFirstStands)
{
    EXPECT_EQ(ComMarca("Editar", "d"), "E&ditar");
    EXPECT_EQ(ComMarca("Novo", "n"), "&Novo");
    EXPECT_EQ(ComMarca("ação SIM", "s"), "ação &SIM");
    EXPECT_EQ(ComMarca("Novo", ""), "Novo");
    EXPECT_EQ(ComMarca("Novo", "x"), "Novo");
}

TEST(Mnemonicas, Acha_TakesBeginningsOfWordsFirst)
{
    Mnemonicas livres;
    EXPECT_EQ(livres.Acha("Limites Diferenciados"), "l");
    EXPECT_EQ(livres.Acha("Limites Diferenciados"), "d");
    EXPECT_EQ(livres.Acha("Limites Diferenciados"), "i");
    EXPECT_EQ(livres.Acha("Um\nNovo"), "n"); // the menus have "u"
    EXPECT_EQ(livres.Acha("Um\tOutro"), "o");
    EXPECT_EQ(livres.Acha("Um\rTotal"), "t");
}

TEST(Mnemonicas, Acha_LettersOfTheMainMenusAndAccents_AreNeverChosen)
{
    Mnemonicas livres;
    EXPECT_EQ(livres.Acha("Ejú GM 1"), "");
    EXPECT_EQ(livres.Acha("Última"), "l");
    EXPECT_EQ(livres.Acha("JUÍZO"), "z");
    EXPECT_EQ(livres.Acha("[{@`"), ""); // beside the letters
}

TEST(Mnemonicas, Acha_WhenAllLettersAreTaken_FindsNone)
{
    Mnemonicas livres;
    livres.Toma("&Sim");
    livres.Toma("sem marca");
    EXPECT_EQ(livres.Acha("Sim"), "i");
    EXPECT_EQ(livres.Acha("SIM"), ""); // the menus have "m"
    EXPECT_EQ(livres.Acha(""), "");
}

TEST(Mnemonicas, OfAForm_AllItsCaptionsAndItsPickersOwn_AreTaken)
{
    Tela tela;
    auto campo = Chamado<AjustesTextBox>("txtA");
    campo.Rotulo = "&Agente:";
    tela.Poe<TextBox>(campo);
    auto rotulo = Chamado<AjustesLabel>("lblB");
    rotulo.Caption = "&Bairro:";
    tela.Poe<Label>(rotulo);
    auto botao = Chamado<AjustesCommandButton>("cmdC");
    botao.Caption = "&Cancelar";
    botao.Visible = false; // it may be shown later
    tela.Poe<CommandButton>(botao);
    tela.Poe<SSTab>(Chamado<AjustesSSTab>("sst", {.Paginas = {"&Dados", "&Foto"}}));
    tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("end"));
    tela.Poe<ztList>(Chamado<AjustesZtList>("lista"));
    for (const char *tomada : {"a", "b", "c", "d", "f", "u", "l", "r", "e", "j", "m", "g"}) {
        EXPECT_EQ(Mnemonicas(*tela.Form).Acha(tomada), "") << tomada;
    }
    EXPECT_EQ(Mnemonicas(*tela.Form).Acha("abcdfulrejmgn"), "n");
}

} // namespace
