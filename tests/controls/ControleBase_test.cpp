#include "controls/ControleBase.h"

#include "controls/CheckBox.h"
#include "controls/Image.h"
#include "controls/Label.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "tests/controls/ControleAlheio.h"
#include "tests/controls/Tela.h"

namespace {

class ControleBaseTest : public testing::Test {
  protected:
    Ref<TextBox> Campo(const std::string &nome, const Ref<IControle> &container = nullptr, std::int16_t pagina = -1)
    {
        return m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>(nome), container, pagina);
    }
    static Peca DuasPaginas() { return Chamado<AjustesSSTab>("sstDados", {.Paginas = {"Dados", "Opções"}}); }

    Tela m_Tela;
};

TEST_F(ControleBaseTest, Fresh_Disabled_IsAsItsSettingsSay)
{
    auto ajustes = Chamado<AjustesLabel>("lblRejeicao");
    ajustes.Caption = "Utilizar a rejeição:";
    ajustes.Enabled = false;
    ajustes.Visible = false;
    const Ref<Label> label = m_Tela.Poe<Label>(ajustes);
    EXPECT_EQ(label->NomeTipo(), "Label");
    EXPECT_EQ(label->Caption(), "Utilizar a rejeição:");
    EXPECT_FALSE(label->Enabled());
    EXPECT_FALSE(label->Visible());
    EXPECT_EQ(label->Indice(), -1);
    EXPECT_EQ(label->Pagina(), -1);
    EXPECT_TRUE(label->Container().Nada());
}

TEST_F(ControleBaseTest, Writing_AnotherValue_TellsTheScreenOncePerChange)
{
    const Ref<Label> label = m_Tela.Poe<Label>(Chamado<AjustesLabel>("lblTolerancia"));
    m_Tela.Anota(label->Mudou(), "Mudou");
    const auto escreve = [&] {
        label->DefineCaption("7 Km/h");
        label->DefineRotulo("Tolerância:");
        label->DefineEnabled(false);
        label->DefineVisible(false);
        label->DefineLeft(1);
        label->DefineTop(2);
        label->DefineWidth(3);
        label->DefineHeight(4);
    };
    escreve();
    EXPECT_EQ(m_Tela.Vistos().size(), 8U);
    escreve();
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_EQ(label->Caption(), "7 Km/h");
    EXPECT_EQ(label->Rotulo(), "Tolerância:");
    EXPECT_EQ(label->Left(), 1);
    EXPECT_EQ(label->Top(), 2);
    EXPECT_EQ(label->Width(), 3);
    EXPECT_EQ(label->Height(), 4);
}

TEST_F(ControleBaseTest, EffectiveState_FollowsContainersPagesAndForm)
{
    const Ref<SSTab> abas = m_Tela.Poe<SSTab>(DuasPaginas());
    const Ref<ztFrame> fora = m_Tela.Poe<ztFrame>(Chamado<AjustesZtFrame>("fraDados"), abas, 0);
    const Ref<ztFrame> dentro = m_Tela.Poe<ztFrame>(Chamado<AjustesZtFrame>("fraTipoVia"), fora);
    const Ref<TextBox> campo = Campo("txt", dentro);
    EXPECT_TRUE(campo->HabilitadoDeFato());
    EXPECT_TRUE(campo->VisivelDeFato());

    for (const Ref<IControle> &dono : std::vector<Ref<IControle>>{abas, fora, dentro}) {
        dono->DefineEnabled(false);
        EXPECT_FALSE(campo->HabilitadoDeFato());
        EXPECT_TRUE(campo->VisivelDeFato());
        EXPECT_TRUE(campo->Enabled());
        dono->DefineEnabled(true);
        dono->DefineVisible(false);
        EXPECT_FALSE(campo->VisivelDeFato());
        EXPECT_TRUE(campo->HabilitadoDeFato());
        EXPECT_TRUE(campo->Visible());
        dono->DefineVisible(true);
    }
    abas->DefineTabEnabled(0, false);
    EXPECT_FALSE(campo->HabilitadoDeFato());
    abas->DefineTabEnabled(0, true);
    abas->DefineTab(1);
    EXPECT_FALSE(campo->VisivelDeFato());
    abas->DefineTab(0);
    m_Tela.Form->DefineEnabled(false);
    EXPECT_FALSE(campo->HabilitadoDeFato());
    m_Tela.Form->DefineEnabled(true);
    m_Tela.Form->DefineVisible(false);
    EXPECT_FALSE(campo->VisivelDeFato());
    m_Tela.Form->DefineVisible(true);
    EXPECT_TRUE(campo->Foco());
}

TEST_F(ControleBaseTest, Impedimento_SaysWhatKeepsThePersonOut)
{
    const Ref<ztFrame> frame = m_Tela.PoeFrame("fra");
    const Ref<TextBox> campo = Campo("txt", frame);
    EXPECT_EQ(campo->Impedimento(), "");
    frame->DefineEnabled(false);
    EXPECT_EQ(campo->Impedimento(), "o que o contém está desabilitado");
    campo->DefineEnabled(false);
    EXPECT_EQ(campo->Impedimento(), "está desabilitado");
    frame->DefineVisible(false);
    EXPECT_EQ(campo->Impedimento(), "o que o contém está oculto");
    campo->DefineVisible(false);
    EXPECT_EQ(campo->Impedimento(), "está oculto");
    m_Tela.Form->DefineEnabled(false);
    EXPECT_EQ(campo->Impedimento(), "a janela está bloqueada");
    m_Tela.Form->DefineVisible(false);
    EXPECT_EQ(campo->Impedimento(), "a janela não está aberta");
    m_Tela.Solta();
    EXPECT_EQ(campo->Impedimento(), "a janela não está aberta");
}

TEST_F(ControleBaseTest, SetFocus_WhereItCannotBe_IsFault5AndLeavesTheFocus)
{
    const Ref<ztFrame> frame = m_Tela.PoeFrame("fra");
    const Ref<TextBox> outro = Campo("txtOutro");
    const Ref<TextBox> campo = Campo("txt", frame);
    outro->SetFocus();
    const auto confere = [&] {
        EXPECT_EQ(NumeroDaFalha([&] { campo->SetFocus(); }), 5);
        EXPECT_FALSE(campo->Foco());
        EXPECT_TRUE(outro->TemFoco());
    };
    campo->DefineEnabled(false);
    confere();
    campo->DefineEnabled(true);
    campo->DefineVisible(false);
    confere();
    campo->DefineVisible(true);
    frame->DefineEnabled(false);
    confere();
    frame->DefineEnabled(true);
    frame->DefineVisible(false);
    confere();
    frame->DefineVisible(true);
    m_Tela.Form->DefineVisible(false);
    confere();
    m_Tela.Form->DefineVisible(true);
    campo->SetFocus();
    EXPECT_TRUE(campo->TemFoco());
    EXPECT_FALSE(outro->TemFoco());
}

TEST_F(ControleBaseTest, SetFocus_OnAKindWithoutFocus_IsFault438)
{
    const Ref<Label> label = m_Tela.Poe<Label>(Chamado<AjustesLabel>("lbl"));
    const Ref<Image> imagem = m_Tela.Poe<Image>(Chamado<AjustesImage>("Image1"));
    const Ref<ztFrame> frame = m_Tela.PoeFrame("fra");
    EXPECT_EQ(imagem->NomeTipo(), "Image");
    EXPECT_EQ(frame->NomeTipo(), "ztFrame");
    for (const Ref<IControle> &controle : std::vector<Ref<IControle>>{label, imagem, frame}) {
        EXPECT_EQ(NumeroDaFalha([&] { controle->SetFocus(); }), 438);
        EXPECT_FALSE(ComoBase(controle)->Foco());
        EXPECT_FALSE(ComoBase(controle)->AceitaFoco());
    }
    EXPECT_TRUE(m_Tela.Form->ControleAtivo().Nada());
}

TEST_F(ControleBaseTest, SetFocus_WhenTheFormHasEnded_IsFault5)
{
    const Ref<TextBox> campo = Campo("txt");
    m_Tela.Solta();
    EXPECT_EQ(NumeroDaFalha([&] { campo->SetFocus(); }), 5);
    EXPECT_FALSE(campo->Foco());
    EXPECT_FALSE(campo->TemFoco());
    EXPECT_TRUE(campo->Form().Nada());
    campo->DefineText("x"); // still the module's to write
    EXPECT_EQ(campo->Text(), "x");
}

TEST_F(ControleBaseTest, Focus_WhenItComes_IsToldToTheScreen)
{
    const Ref<TextBox> campo = Campo("txt");
    m_Tela.Anota(campo->RecebeuFoco(), "RecebeuFoco");
    campo->SetFocus();
    EXPECT_EQ(m_Tela.Vistos(), Textos{"RecebeuFoco"});
    EXPECT_TRUE(m_Tela.Form->ControleAtivo() == campo);
    EXPECT_TRUE(campo->Foco());
    EXPECT_TRUE(campo->Digita("x"));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    campo->SetFocus();
    EXPECT_EQ(m_Tela.Vistos(), Textos{"RecebeuFoco"});
}

TEST_F(ControleBaseTest, Foco_WhenItsNoticeReleasesTheForm_EndsInPeace)
{
    TextBox *campo = Campo("txt").Ponteiro();
    m_Tela.Liga(campo->RecebeuFoco(), [&] { m_Tela.Solta(); });
    EXPECT_FALSE(campo->Foco());
}

TEST_F(ControleBaseTest, DefineTabIndex_MovesTheControlAndClosesUpTheOthers)
{
    const Ref<TextBox> a = Campo("a");
    const Ref<TextBox> b = Campo("b");
    const Ref<TextBox> c = Campo("c");
    const Ref<TextBox> d = Campo("d");
    const auto ordem = [&] { return std::vector<int>{a->TabIndex(), b->TabIndex(), c->TabIndex(), d->TabIndex()}; };
    c->DefineTabIndex(0);
    EXPECT_EQ(ordem(), (std::vector<int>{1, 2, 0, 3}));
    d->DefineTabIndex(1);
    EXPECT_EQ(ordem(), (std::vector<int>{2, 3, 0, 1}));
    c->DefineTabIndex(3);
    EXPECT_EQ(ordem(), (std::vector<int>{1, 2, 3, 0}));
    a->DefineTabIndex(99);
    EXPECT_EQ(ordem(), (std::vector<int>{3, 1, 2, 0}));
    EXPECT_EQ(NumeroDaFalha([&] { a->DefineTabIndex(-1); }), 5);
}

TEST_F(ControleBaseTest, Mudou_WhenItsHandlerReleasesTheForm_EndsInPeace)
{
    CheckBox *caixa = m_Tela.Poe<CheckBox>(Chamado<AjustesCheckBox>("chk")).Ponteiro();
    m_Tela.Liga(caixa->Mudou(), [&] { m_Tela.Solta(); });
    caixa->DefineEnabled(false);
    EXPECT_TRUE(m_Tela.Form.Nada());
}

TEST_F(ControleBaseTest, EffectiveState_OnTheStripItselfAndOnNoPage_FollowsTheStripAlone)
{
    const Ref<SSTab> abas = m_Tela.Poe<SSTab>(DuasPaginas());
    const Ref<TextBox> campo = Campo("txt", abas);
    abas->DefineTabEnabled(0, false);
    abas->DefineTab(1);
    EXPECT_TRUE(campo->HabilitadoDeFato());
    EXPECT_TRUE(campo->VisivelDeFato());
    abas->DefineEnabled(false);
    EXPECT_FALSE(campo->HabilitadoDeFato());
    EXPECT_TRUE(campo->VisivelDeFato());
}

TEST_F(ControleBaseTest, DefineTabIndex_BesideAControlOfAnotherMakerOrWithoutForm_PassesThemBy)
{
    const Ref<TextBox> a = Campo("a");
    m_Tela.Form->Guarda(Novo<ControleAlheio>("alheio"));
    const Ref<TextBox> b = Campo("b");
    b->DefineTabIndex(0);
    EXPECT_EQ(b->TabIndex(), 0);
    EXPECT_EQ(a->TabIndex(), 1);
    m_Tela.Solta(); // the form has ended
    a->DefineTabIndex(7);
    EXPECT_EQ(b->TabIndex(), 0);
    EXPECT_EQ(a->TabIndex(), 0);
}

} // namespace
