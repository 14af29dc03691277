#include "tela/Pessoa.h"

#include "controls/CheckBox.h"
#include "controls/CommandButton.h"
#include "controls/Label.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztCommand.h"
#include "controls/ztData.h"
#include "controls/ztEndereco.h"
#include "controls/ztList.h"
#include "tests/controls/ControleAlheio.h"
#include "tests/controls/Tela.h"
#include "tests/tela/RuasDeTeste.h"

namespace {

class PessoaTest : public testing::Test {
  protected:
    Ref<TextBox> Campo(const std::string &nome, const Ref<IControle> &container = nullptr, std::int16_t pagina = -1)
    {
        return m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>(nome), container, pagina);
    }
    Ref<CommandButton> Botao(const std::string &nome, const std::string &caption = {})
    {
        auto ajustes = Chamado<AjustesCommandButton>(nome);
        ajustes.Caption = caption;
        Ref<CommandButton> botao = m_Tela.Poe<CommandButton>(ajustes);
        m_Tela.Anota(botao->Click(), nome);
        return botao;
    }
    Ref<SSTab> Abas()
    {
        auto ajustes = Chamado<AjustesSSTab>("sstDados", {.Paginas = {"&Dados", "&Opções"}});
        return m_Tela.Poe<SSTab>(ajustes);
    }
    template <class C, class Ajustes> Ref<C> Com(const std::string &nome, const std::string &caption)
    {
        auto ajustes = Chamado<Ajustes>(nome);
        ajustes.Caption = caption;
        return m_Tela.Poe<C>(ajustes);
    }
    std::string NomeComFoco() const
    {
        const Ref<IControle> ativo = m_Tela.Form->ControleAtivo();
        return ativo ? ativo->Nome() : std::string();
    }

    Tela m_Tela;
    Pessoa m_Pessoa{m_Tela.Form};
};

TEST_F(PessoaTest, AndaOpcoes_ChoosesTheNextOneOfTheGroupThatCanBeChosen)
{
    const auto campo = Campo("txtNome");
    const auto a = Com<OptionButton, AjustesOptionButton>("optA", "A");
    const auto quadro = Com<ztFrame, AjustesZtFrame>("fra", "");
    const auto alheia = m_Tela.Poe<OptionButton>(Chamado<AjustesOptionButton>("optAlheia"), quadro);
    const auto b = Com<OptionButton, AjustesOptionButton>("optB", "B");
    const auto c = Com<OptionButton, AjustesOptionButton>("optC", "C");
    b->DefineEnabled(false);
    campo->Foco();
    EXPECT_FALSE(m_Pessoa.AndaOpcoes(1));
    EXPECT_EQ(m_Pessoa.Motivo(), "o foco não está em uma opção");
    a->Clica();
    EXPECT_TRUE(m_Pessoa.AndaOpcoes(1));
    EXPECT_TRUE(c->Value());
    EXPECT_FALSE(a->Value());
    EXPECT_EQ(NomeComFoco(), "optC");
    EXPECT_TRUE(m_Pessoa.AndaOpcoes(1)); // behind the last comes the first
    EXPECT_TRUE(a->Value());
    EXPECT_TRUE(m_Pessoa.AndaOpcoes(-1));
    EXPECT_TRUE(c->Value());
    EXPECT_FALSE(alheia->Value());
    a->DefineVisible(false);
    EXPECT_FALSE(m_Pessoa.AndaOpcoes(1));
    EXPECT_EQ(m_Pessoa.Motivo(), "não há outra opção que se possa escolher");
    EXPECT_TRUE(c->Value());
}

TEST_F(PessoaTest, Acha_ByNameAndIndex_IgnoresTheCaseOfTheName)
{
    auto ajustes = Chamado<AjustesCheckBox>("chkDia");
    ajustes.Indice = 1;
    const Ref<CheckBox> domingo = m_Tela.Poe<CheckBox>(ajustes);
    ajustes.Indice = 2;
    const Ref<CheckBox> segunda = m_Tela.Poe<CheckBox>(ajustes);
    EXPECT_TRUE(m_Pessoa.Acha("CHKDIA", 2) == segunda);
    EXPECT_TRUE(m_Pessoa.Acha<CheckBox>("chkDia", 1) == domingo);
    EXPECT_TRUE(m_Pessoa.Acha("chkDia").Nada());
    EXPECT_TRUE(m_Pessoa.Acha("chkDia", 3).Nada());
    EXPECT_TRUE(m_Pessoa.Acha<TextBox>("chkDia", 1).Nada());
}

TEST_F(PessoaTest, Clica_OnButtonCheckBoxAndOption_ActsOnThem)
{
    Botao("cmdOK");
    const auto caixa = Com<CheckBox, AjustesCheckBox>("chkInativos", "");
    const auto opcao = Com<OptionButton, AjustesOptionButton>("optUrbana", "");
    EXPECT_TRUE(m_Pessoa.Clica("cmdOK"));
    EXPECT_TRUE(m_Pessoa.Clica("chkInativos"));
    EXPECT_TRUE(m_Pessoa.Clica("optUrbana"));
    EXPECT_EQ(m_Pessoa.Motivo(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdOK"});
    EXPECT_EQ(caixa->Value(), 1);
    EXPECT_TRUE(opcao->Value());
}

TEST_F(PessoaTest, Marca_AndDesmarca_ClickOnlyWhenNeeded)
{
    auto ajustes = Chamado<AjustesCheckBox>("chkDia");
    ajustes.Indice = 3;
    const Ref<CheckBox> terca = m_Tela.Poe<CheckBox>(ajustes);
    m_Tela.Anota(terca->Click(), "Click");
    EXPECT_TRUE(m_Pessoa.Marca("chkDia", 3));
    EXPECT_TRUE(m_Pessoa.Marca("chkDia", 3));
    EXPECT_EQ(terca->Value(), 1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
    EXPECT_TRUE(m_Pessoa.Desmarca("chkDia", 3));
    EXPECT_TRUE(m_Pessoa.Desmarca("chkDia", 3));
    EXPECT_EQ(terca->Value(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
    terca->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Marca("chkDia", 3));
    EXPECT_EQ(m_Pessoa.Motivo(), "chkDia(3): está desabilitado");
    EXPECT_EQ(terca->Value(), 0);
}

TEST_F(PessoaTest, Marca_OnAnOption_SwitchesItOn)
{
    const Ref<OptionButton> opcao = Com<OptionButton, AjustesOptionButton>("optSim", "Sim");
    m_Tela.Anota(opcao->Click(), "Click");
    EXPECT_TRUE(m_Pessoa.Marca("optSim"));
    EXPECT_TRUE(m_Pessoa.Marca("optSim"));
    EXPECT_TRUE(opcao->Value());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Click"});
}

TEST_F(PessoaTest, Digita_OnFieldsAndCombos_TypesIntoThem)
{
    const auto campo = Campo("txtModelo");
    auto ajustes =
        Chamado<AjustesZtCombo>("cboMunic", {.Conteudo = "Canoas|1??Caxias do Sul|2??", .PesquisaAoDigitar = true});
    const auto combo = m_Tela.Poe<ztCombo>(ajustes);
    EXPECT_TRUE(m_Pessoa.Digita("txtModelo", "AB"));
    EXPECT_TRUE(m_Pessoa.Digita("txtModelo", "C"));
    EXPECT_EQ(campo->Text(), "ABC");
    EXPECT_TRUE(m_Pessoa.Preenche("txtModelo", "X"));
    EXPECT_EQ(campo->Text(), "X");
    EXPECT_TRUE(m_Pessoa.Apaga("txtModelo"));
    EXPECT_EQ(campo->Text(), "");
    EXPECT_TRUE(m_Pessoa.Digita("cboMunic", "cax"));
    EXPECT_EQ(combo->Valor(), "2");
    EXPECT_FALSE(m_Pessoa.Digita("cboMunic", "x"));
    EXPECT_EQ(m_Pessoa.Motivo(), "cboMunic: não aceita o que se digita");
}

TEST_F(PessoaTest, Escolhe_InACombo_ChoosesByTextOrPosition)
{
    auto ajustes = Chamado<AjustesZtCombo>("cboTipoEquip", {.Conteudo = "Lombada|L??Radar Fotográfico|R??"});
    const auto combo = m_Tela.Poe<ztCombo>(ajustes);
    EXPECT_TRUE(m_Pessoa.Escolhe("cboTipoEquip", "Radar Fotográfico"));
    EXPECT_EQ(combo->Valor(), "R");
    EXPECT_TRUE(m_Pessoa.EscolheIndice("cboTipoEquip", 0));
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_FALSE(m_Pessoa.Escolhe("cboTipoEquip", "Pardal"));
    EXPECT_EQ(m_Pessoa.Motivo(), "cboTipoEquip: não oferece isso");
    EXPECT_FALSE(m_Pessoa.EscolheIndice("cboTipoEquip", 2));
    EXPECT_EQ(combo->Valor(), "L");
}

TEST_F(PessoaTest, List_ByName_IsDriven)
{
    auto ajustes = Chamado<AjustesZtList>("ztLista", {.BarraCriteriosAtiva = true});
    const auto lista = m_Tela.Poe<ztList>(ajustes);
    lista->AlteraPrimeiraColuna(1, std::nullopt, "Nº", 1000, 0, "", true);
    TabelaTexto tabela(1);
    tabela.Celula(1, tabela.AdicionaLinha()) = "2";
    tabela.Celula(1, tabela.AdicionaLinha()) = "1";
    lista->CarregaItens(tabela);
    m_Tela.Liga(lista->ItemMenuClicado(), [&](const std::string &chave) { m_Tela.Eventos.push_back(chave); });
    m_Tela.Anota(lista->BotaoLocalizarEnvia(), "Envia");
    m_Tela.Anota(lista->BotaoClick(), "Mais");

    EXPECT_TRUE(m_Pessoa.ClicaLinha("ztLista", 2));
    EXPECT_TRUE(m_Pessoa.OrdenaPor("ztLista", 1));
    EXPECT_EQ(lista->AtualVista(), 1);
    EXPECT_TRUE(m_Pessoa.TeclaSetas("ztLista", 1));
    EXPECT_EQ(lista->AtualVista(), 2);
    EXPECT_TRUE(m_Pessoa.EscolheMenu("ztLista", "mnuZTLObjEditar"));
    EXPECT_TRUE(m_Pessoa.Localiza("ztLista"));
    EXPECT_FALSE(m_Pessoa.PedeMais("ztLista"));
    EXPECT_EQ(m_Pessoa.Motivo(), "ztLista: não oferece isso");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"mnuZTLObjEditar", "Envia"}));
}

TEST_F(PessoaTest, Pickers_ByName_AreDriven)
{
    const auto endereco = m_Tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1"));
    const auto cliente = m_Tela.Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente"));
    EXPECT_TRUE(m_Pessoa.InformaEndereco("ztEndereco1", 5, 10, "", "", "Rua A, 10"));
    EXPECT_EQ(endereco->Endereco()->CodLogradouro(), 5);
    EXPECT_TRUE(m_Pessoa.LimpaEndereco("ztEndereco1"));
    EXPECT_EQ(endereco->Endereco()->CodLogradouro(), 0);
    EXPECT_TRUE(m_Pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "Sul"));
    EXPECT_EQ(cliente->Setor(), "Sul");
}

TEST_F(PessoaTest, Action_OnWhatIsNotThereOrOfAnotherKind_IsRefusedWithTheReason)
{
    Campo("txtModelo");
    EXPECT_FALSE(m_Pessoa.Clica("cmdOK"));
    EXPECT_EQ(m_Pessoa.Motivo(), "cmdOK: não existe");
    EXPECT_FALSE(m_Pessoa.Clica("cmdOK", 2));
    EXPECT_EQ(m_Pessoa.Motivo(), "cmdOK(2): não existe");
    EXPECT_FALSE(m_Pessoa.Clica("txtModelo"));
    EXPECT_EQ(m_Pessoa.Motivo(), "txtModelo: não é controle para isso");
    EXPECT_FALSE(m_Pessoa.Escolhe("txtModelo", "x"));
    EXPECT_TRUE(m_Pessoa.Foco("txtModelo"));
    EXPECT_EQ(m_Pessoa.Motivo(), "");
}

TEST_F(PessoaTest, Action_OnWhatThePersonCannotUse_SaysWhatKeepsThemOut)
{
    const auto abas = Abas();
    const auto campo = Campo("txtObs", abas, 1);
    EXPECT_FALSE(m_Pessoa.Digita("txtObs", "x"));
    EXPECT_EQ(m_Pessoa.Motivo(), "txtObs: o que o contém está oculto");
    EXPECT_TRUE(m_Pessoa.Abre("sstDados", 1));
    EXPECT_TRUE(m_Pessoa.Digita("txtObs", "x"));
    campo->DefineLocked(true);
    EXPECT_FALSE(m_Pessoa.Digita("txtObs", "y"));
    EXPECT_EQ(m_Pessoa.Motivo(), "txtObs: não aceita o que se digita");
    m_Tela.Form->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Digita("txtObs", "y"));
    EXPECT_EQ(m_Pessoa.Motivo(), "txtObs: a janela está bloqueada");
    EXPECT_FALSE(m_Pessoa.Abre("sstDados", 0));
    EXPECT_EQ(campo->Text(), "x");
}

TEST_F(PessoaTest, Action_WhenTheFormHasEnded_IsRefused)
{
    Campo("txt");
    Botao("cmdOK");
    m_Tela.Solta();
    m_Pessoa.Ocupa(nullptr, Parte::Todo); // the toolkit tells where it left the keyboard
    EXPECT_FALSE(m_Pessoa.Digita("txt", "x"));
    EXPECT_FALSE(m_Pessoa.Tab());
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_FALSE(m_Pessoa.Esc());
    EXPECT_FALSE(m_Pessoa.Alt(U'o'));
    EXPECT_FALSE(m_Pessoa.Fecha());
}

TEST_F(PessoaTest, Action_WhoseEventFaults_PassesTheFault)
{
    const auto botao = Botao("cmdOK");
    m_Tela.Liga(botao->Click(), [] { throw Falha(91); });
    EXPECT_EQ(NumeroDaFalha([&] { m_Pessoa.Clica("cmdOK"); }), 91);
}

TEST_F(PessoaTest, Action_WhoseEventReleasesTheForm_EndsInPeace)
{
    const Ref<CommandButton> botao = Botao("cmdOK");
    m_Tela.Liga(botao->Click(), [&] { m_Tela.Solta(); });
    EXPECT_TRUE(m_Pessoa.Clica("cmdOK"));
    EXPECT_TRUE(m_Tela.Form.Nada());
}

TEST_F(PessoaTest, Tab_FollowsTabIndexAndWrapsAround)
{
    Campo("a");
    Campo("b");
    Campo("c")->DefineTabIndex(0); // c a b
    const auto anda = [&](bool frente) {
        EXPECT_TRUE(frente ? m_Pessoa.Tab() : m_Pessoa.ShiftTab());
        return NomeComFoco();
    };
    EXPECT_EQ(anda(true), "c");
    EXPECT_EQ(anda(true), "a");
    EXPECT_EQ(anda(true), "b");
    EXPECT_EQ(anda(true), "c");
    EXPECT_EQ(anda(false), "b");
    EXPECT_EQ(anda(false), "a");
    EXPECT_EQ(anda(false), "c");
}

TEST_F(PessoaTest, ShiftTab_WithoutFocus_GoesToTheLast)
{
    Campo("a");
    Campo("b");
    EXPECT_TRUE(m_Pessoa.ShiftTab());
    EXPECT_EQ(NomeComFoco(), "b");
}

TEST_F(PessoaTest, Tab_SkipsWhatCannotHaveTheFocus)
{
    const auto abas = Abas();
    Com<Label, AjustesLabel>("lbl", "x");
    Campo("a", abas, 0);
    Campo("b", abas, 1);
    Campo("c")->DefineEnabled(false);
    Campo("d")->DefineVisible(false);
    Campo("e")->DefineLocked(true);
    const auto anda = [&] {
        EXPECT_TRUE(m_Pessoa.Tab());
        return NomeComFoco();
    };
    EXPECT_EQ(anda(), "sstDados");
    EXPECT_EQ(anda(), "a");
    EXPECT_EQ(anda(), "e"); // a locked field is still read
    EXPECT_EQ(anda(), "sstDados");
    abas->DefineTab(1);
    EXPECT_EQ(anda(), "b");
}

TEST_F(PessoaTest, Tab_FromAControlThatWasDisabledSince_GoesOnFromItsPlace)
{
    Campo("a");
    const auto b = Campo("b");
    Campo("c");
    EXPECT_TRUE(m_Pessoa.Foco("b"));
    b->DefineEnabled(false);
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "c");
}

TEST_F(PessoaTest, Tab_InAPickerOfClients_StopsAtBothOfItsParts)
{
    Campo("a");
    m_Tela.Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("cliente"));
    Campo("b");
    m_Pessoa.Foco("a");
    const auto volta = [&](bool frente) {
        Textos nomes;
        for (int tecla = 0; tecla < 4; ++tecla) {
            EXPECT_TRUE(frente ? m_Pessoa.Tab() : m_Pessoa.ShiftTab());
            nomes.push_back(NomeComFoco());
        }
        return nomes;
    };
    EXPECT_EQ(volta(true), (Textos{"cliente", "cliente", "b", "a"}));
    EXPECT_EQ(volta(false), (Textos{"b", "cliente", "cliente", "a"}));
    m_Pessoa.Foco("cliente"); // at its first part
    EXPECT_EQ(volta(true), (Textos{"cliente", "b", "a", "cliente"}));
    m_Pessoa.Tab();                 // to the second part
    m_Pessoa.Acha("b")->SetFocus(); // the form leads elsewhere
    EXPECT_EQ(volta(true), (Textos{"a", "cliente", "cliente", "b"}));
}

// An address picker between two fields.
class PessoaNoEnderecoTest : public PessoaTest {
  protected:
    // How often Tab has to be pressed to come from one field to the other, either way.
    std::pair<int, int> Paradas()
    {
        const auto conta = [this](const char *de, const char *ate, bool frente) {
            int paradas = 0;
            for (m_Pessoa.Foco(de); paradas < 20 && NomeComFoco() != ate; ++paradas) {
                EXPECT_TRUE(frente ? m_Pessoa.Tab() : m_Pessoa.ShiftTab());
            }
            return paradas - 1;
        };
        return {conta("a", "b", true), conta("b", "a", false)};
    }
    void Acha()
    {
        m_Escolha.EscolheMunicipio(Canoas);
        m_Escolha.DigitaVia("brasil");
    }

    Ref<TextBox> m_Antes = Campo("a");
    Ref<ztEndereco> m_Endereco = m_Tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("endereco"));
    Ref<TextBox> m_Depois = Campo("b");
    EscolhaDeEndereco m_Escolha{m_Endereco, Novo<RuasDeTeste>(), Novo<MemoriaDeEnderecos>()};
};

TEST_F(PessoaNoEnderecoTest, Tab_StopsAtEachPartThatCanBeUsed)
{
    EXPECT_EQ(Paradas(), std::pair(5, 5)); // nothing to use
    m_Pessoa.Conhece(m_Endereco, m_Escolha);
    EXPECT_EQ(Paradas(), std::pair(5, 5));
    Acha();
    EXPECT_EQ(Paradas(), std::pair(6, 6));
    m_Endereco->DefineReadOnly(true);
    EXPECT_EQ(Paradas(), std::pair(3, 3));
    m_Endereco->DefineEnabled(false);
    EXPECT_EQ(Paradas(), std::pair(0, 0));
}

TEST_F(PessoaNoEnderecoTest, Tab_WhenThePartIsGone_GoesOnFromItsPlace)
{
    m_Pessoa.Foco("b");
    m_Pessoa.ShiftTab(); // to the last button
    m_Endereco->DefineReadOnly(true);
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "b");
}

TEST_F(PessoaNoEnderecoTest, Enter_OnAButtonOfThePicker_PressesThatOne)
{
    Botao("cmdOK")->DefineDefault(true);
    m_Pessoa.Conhece(m_Endereco, m_Escolha);
    Acha();
    m_Pessoa.Foco("b");
    EXPECT_TRUE(m_Pessoa.ShiftTab());
    EXPECT_TRUE(m_Pessoa.ShiftTab());
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 3);
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 0);
    EXPECT_EQ(m_Escolha.Via(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(m_Pessoa.ShiftTab()); // the complement: nothing can be used now
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdOK"});
}

TEST_F(PessoaNoEnderecoTest, Enter_OnAButtonOfThePicker_ThatIsRefused_SaysWho)
{
    m_Pessoa.Foco("b");
    m_Pessoa.ShiftTab();
    m_Endereco->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_EQ(m_Pessoa.Motivo(), "endereco: não aceita isso agora");
}

TEST_F(PessoaNoEnderecoTest, Alt_OnTheButtonsOfThePicker_PressesThem)
{
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'u'));
    m_Pessoa.Conhece(m_Endereco, m_Escolha);
    EXPECT_FALSE(m_Pessoa.Alt(U'u'));
    Acha();
    EXPECT_TRUE(m_Pessoa.Alt(U'u'));
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 3);
    EXPECT_TRUE(m_Pessoa.Alt(U'L'));
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 0);
    EXPECT_EQ(m_Escolha.Via(), "");
    Acha();
    m_Endereco->DefineReadOnly(true);
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'u'));
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'l'));
}

TEST_F(PessoaNoEnderecoTest, Alt_OnLimpar_OfAPickerThatNobodyTypedIn_EmptiesTheAddress)
{
    m_Pessoa.InformaEndereco("endereco", 5, 10, "", "", "Rua A, 10");
    EXPECT_TRUE(m_Pessoa.Alt(U'l'));
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 0);
}

TEST_F(PessoaTest, Tab_InAList_StopsAtItsButtonsWithoutGivingItTheFocus)
{
    const auto data = m_Tela.Poe<ztData>(Chamado<AjustesZtData>("data"));
    const Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista", {.BarraCriteriosAtiva = true}));
    m_Tela.Anota(lista->GotFocus(), "GotFocus");
    m_Tela.Anota(lista->BotaoLocalizarEnvia(), "localiza");
    m_Tela.Anota(lista->BotaoClick(), "mais");
    lista->DefineTemMais(true);
    m_Pessoa.Digita("data", "010324");
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "data");
    EXPECT_EQ(data->Text(), "01/03/2024"); // it was left
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"localiza"});
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "ztLista");
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"GotFocus", "mais"}));
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "data");
    lista->DefineEnabled(false);
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PessoaTest, Tab_ToTheButtonOfAListWhereNothingHadTheFocus_StopsThere)
{
    const Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista", {.BarraCriteriosAtiva = true}));
    m_Tela.Anota(lista->BotaoLocalizarEnvia(), "localiza");
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "");
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"localiza"});
}

TEST_F(PessoaTest, Tab_WhenNothingTakesTheFocus_IsRefused)
{
    Com<Label, AjustesLabel>("lbl", "x");
    EXPECT_FALSE(m_Pessoa.Tab());
    EXPECT_EQ(m_Pessoa.Motivo(), "nenhum controle pode receber o foco");
}

TEST_F(PessoaTest, ShiftTab_OnAFormWithoutControls_IsRefused)
{
    EXPECT_FALSE(m_Pessoa.ShiftTab());
    EXPECT_EQ(m_Pessoa.Motivo(), "nenhum controle pode receber o foco");
}

TEST_F(PessoaTest, Keys_OnAFormWithAControlOfAnotherMaker_PassItBy)
{
    m_Tela.Form->Guarda(Novo<ControleAlheio>("alheio"));
    Campo("a");
    Campo("b");
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(NomeComFoco(), "a");
    EXPECT_TRUE(m_Pessoa.ShiftTab());
    EXPECT_EQ(NomeComFoco(), "b");
    EXPECT_FALSE(m_Pessoa.Alt(U'a'));
    EXPECT_EQ(m_Pessoa.Motivo(), "nenhum controle responde a essa tecla");
    EXPECT_FALSE(m_Pessoa.Foco("alheio"));
    EXPECT_EQ(m_Pessoa.Motivo(), "alheio: não é controle para isso");
    EXPECT_EQ(NomeComFoco(), "b");
}

TEST_F(PessoaTest, Alt_OnALabelBeforeAControlOfAnotherMaker_LeadsToTheNextOneOfOurs)
{
    Com<Label, AjustesLabel>("lblA", "&Código:");
    EXPECT_FALSE(m_Pessoa.Alt(U'c')); // nothing to lead to
    EXPECT_EQ(m_Pessoa.Motivo(), "nenhum controle responde a essa tecla");
    m_Tela.Form->Guarda(Novo<ControleAlheio>("alheio"));
    Campo("a");
    EXPECT_TRUE(m_Pessoa.Alt(U'c'));
    EXPECT_EQ(NomeComFoco(), "a");
}

TEST_F(PessoaTest, Clica_OnAButtonOfAnotherMaker_IsRefused)
{
    class BotaoAlheio : public ControleAlheio, public Clicavel {
      public:
        using ControleAlheio::ControleAlheio;
        bool Clica() override { return Clicado = true; }
        bool Clicado = false;
    };
    const auto botao = Novo<BotaoAlheio>("cmdAlheio");
    m_Tela.Form->Guarda(botao);
    EXPECT_FALSE(m_Pessoa.Clica("cmdAlheio"));
    EXPECT_EQ(m_Pessoa.Motivo(), "cmdAlheio: não é controle para isso");
    EXPECT_FALSE(botao->Clicado);
}

TEST_F(PessoaTest, Tab_OutOfADate_MakesItsYearWhole)
{
    const auto data = m_Tela.Poe<ztData>(Chamado<AjustesZtData>("ztdData"));
    Campo("a");
    EXPECT_TRUE(m_Pessoa.Digita("ztdData", "010324"));
    EXPECT_TRUE(m_Pessoa.Tab());
    EXPECT_EQ(data->Text(), "01/03/2024");
}

TEST_F(PessoaTest, Enter_InAField_PressesTheDefaultButtonOfEitherKind)
{
    Campo("txt");
    const auto comum = Botao("cmdOK");
    const auto proprio = m_Tela.Poe<ztCommand>(Chamado<AjustesZtCommand>("ztCmdAplicar"));
    m_Tela.Anota(proprio->ValidaClick(), "Valida");
    m_Tela.Anota(proprio->Click(), "ztCmdAplicar");
    EXPECT_TRUE(m_Pessoa.Foco("txt"));
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_EQ(m_Pessoa.Motivo(), "não há botão padrão");
    comum->DefineDefault(true);
    EXPECT_TRUE(m_Pessoa.Enter());
    proprio->DefineDefault(true);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"cmdOK", "Valida", "ztCmdAplicar"}));
    EXPECT_EQ(NomeComFoco(), "txt");
}

TEST_F(PessoaTest, Enter_WhenTheDefaultButtonIsDisabled_IsRefused)
{
    Campo("txt");
    const auto botao = Botao("cmdOK");
    botao->DefineDefault(true);
    botao->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_EQ(m_Pessoa.Motivo(), "cmdOK: está desabilitado");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PessoaTest, Enter_OnAButton_PressesThatOne)
{
    Botao("cmdOK")->DefineDefault(true);
    const auto cancelar = Botao("cmdCancelar");
    EXPECT_TRUE(m_Pessoa.Foco("cmdCancelar"));
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdCancelar"});
    cancelar->DefineVisible(false); // it went away under the focus
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdOK"});
}

TEST_F(PessoaTest, Enter_InADate_MakesItsYearWholeBeforeTheButton)
{
    const auto data = m_Tela.Poe<ztData>(Chamado<AjustesZtData>("ztdData"));
    const auto botao = Botao("cmdOK");
    botao->DefineDefault(true);
    m_Tela.Liga(botao->Click(), [&] { EXPECT_TRUE(data->DataValida()); });
    EXPECT_TRUE(m_Pessoa.Digita("ztdData", "010324"));
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(data->Text(), "01/03/2024");
    EXPECT_TRUE(data->TemFoco());
}

TEST_F(PessoaTest, Esc_PressesTheCancelButton)
{
    Campo("txt");
    Botao("cmdOK");
    EXPECT_FALSE(m_Pessoa.Esc());
    EXPECT_EQ(m_Pessoa.Motivo(), "não há botão de cancelar");
    auto ajustes = Chamado<AjustesCommandButton>("cmdVisualizar", {.Cancel = true});
    const auto cancelador = m_Tela.Poe<CommandButton>(ajustes);
    m_Tela.Anota(cancelador->Click(), "cmdVisualizar");
    EXPECT_TRUE(m_Pessoa.Esc());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdVisualizar"});
    cancelador->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Esc());
    EXPECT_EQ(m_Pessoa.Motivo(), "cmdVisualizar: está desabilitado");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PessoaTest, Alt_OnAButton_ClicksItWithTheFocus)
{
    Botao("cmdOK", "&OK");
    Botao("ztCmdAplicar", "A&plicar");
    EXPECT_TRUE(m_Pessoa.Alt(U'p'));
    EXPECT_TRUE(m_Pessoa.Alt(U'O'));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ztCmdAplicar", "cmdOK"}));
    EXPECT_EQ(NomeComFoco(), "cmdOK");
    EXPECT_FALSE(m_Pessoa.Alt(U'x'));
    EXPECT_FALSE(m_Pessoa.Alt(U'€'));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(PessoaTest, Alt_OfALetterOfTwoBytes_IsFound)
{
    Botao("cmdIndice", "&Índice");
    EXPECT_TRUE(m_Pessoa.Alt(U'í'));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdIndice"});
}

TEST_F(PessoaTest, Alt_OnADoubledOrLoneAmpersand_IsNoMnemonic)
{
    Botao("cmdA", "R&&D &Sim");
    Botao("cmdB", "fim &");
    EXPECT_FALSE(m_Pessoa.Alt(U'd'));
    EXPECT_FALSE(m_Pessoa.Alt(U'&'));
    EXPECT_TRUE(m_Pessoa.Alt(U's'));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdA"});
}

TEST_F(PessoaTest, Alt_OnALabelOrFrame_LeadsToTheControlAfterIt)
{
    Com<Label, AjustesLabel>("lblA", "&Código:");
    Com<Label, AjustesLabel>("lblB", "Descrição:");
    const auto depois = Campo("txtCodigo");
    const auto frame = Com<ztFrame, AjustesZtFrame>("fraTipoVia", "Tipo &Via:");
    const auto opcao = m_Tela.Poe<OptionButton>(Chamado<AjustesOptionButton>("optRodovia"), frame);
    EXPECT_TRUE(m_Pessoa.Alt(U'v'));
    EXPECT_EQ(NomeComFoco(), "optRodovia");
    EXPECT_FALSE(opcao->Value());
    EXPECT_TRUE(m_Pessoa.Alt(U'c'));
    EXPECT_EQ(NomeComFoco(), "txtCodigo");
    depois->DefineEnabled(false);
    EXPECT_TRUE(m_Pessoa.Alt(U'c'));
    EXPECT_EQ(NomeComFoco(), "optRodovia");
}

TEST_F(PessoaTest, Alt_OnTheTextBesideAField_LeadsToTheField)
{
    auto ajustes = Chamado<AjustesTextBox>("txtModelo");
    ajustes.Rotulo = "&Marca/Modelo:";
    m_Tela.Poe<TextBox>(ajustes);
    EXPECT_TRUE(m_Pessoa.Alt(U'm'));
    EXPECT_EQ(NomeComFoco(), "txtModelo");
}

TEST_F(PessoaTest, Alt_OnBoxesAndPages_ActsOnThem)
{
    const auto abas = Abas();
    const auto caixa = Com<CheckBox, AjustesCheckBox>("chk", "&Inativos");
    EXPECT_TRUE(m_Pessoa.Alt(U'i'));
    EXPECT_EQ(caixa->Value(), 1);
    EXPECT_TRUE(m_Pessoa.Alt(U'o'));
    EXPECT_EQ(abas->Tab(), 1);
    abas->DefineTabEnabled(0, false);
    EXPECT_FALSE(m_Pessoa.Alt(U'd'));
    EXPECT_EQ(abas->Tab(), 1);
}

TEST_F(PessoaTest, Alt_OfALetterTwice_GoesToTheNextBehindTheFocus)
{
    Botao("cmdProcurar", "&Procurar");
    Botao("cmdAplicar", "A&plicar");
    Botao("cmdPular", "&Pular")->DefineEnabled(false);
    EXPECT_TRUE(m_Pessoa.Alt(U'p'));
    EXPECT_TRUE(m_Pessoa.Alt(U'p'));
    EXPECT_TRUE(m_Pessoa.Alt(U'p'));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"cmdProcurar", "cmdAplicar", "cmdProcurar"}));
}

TEST_F(PessoaTest, Alt_OnTheCommandsOfAList_ChoosesThem)
{
    const Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista"));
    m_Tela.Liga(lista->ItemMenuClicado(), [this](const std::string &chave) { m_Tela.Eventos.push_back(chave); });
    EXPECT_TRUE(m_Pessoa.Alt(U'n'));
    EXPECT_TRUE(m_Pessoa.Alt(U'D'));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"mnuZTLObjNovo", "mnuZTLObjEditar"}));
    EXPECT_EQ(NomeComFoco(), "ztLista");
    lista->MenuHabilitado("mnuZTLObjNovo", false);
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'n'));
    EXPECT_FALSE(m_Pessoa.Alt(U'n'));
    lista->MenuVisivel("mnuZTLObjEditar", false);
    EXPECT_TRUE(m_Pessoa.Alt(U'd')); // "Detalhes" has it now
    EXPECT_EQ(m_Tela.Vistos(), Textos{"mnuZTLObjDetalhes"});
}

TEST_F(PessoaTest, Alt_OnTheOwnButtonsOfAList_SearchesAndAsksForMore)
{
    const Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista", {.BarraCriteriosAtiva = true}));
    m_Tela.Anota(lista->BotaoClick(), "mais");
    m_Tela.Anota(lista->BotaoLocalizarEnvia(), "localiza");
    EXPECT_TRUE(m_Pessoa.Alt(U'l'));
    EXPECT_FALSE(m_Pessoa.Alt(U'm'));
    lista->DefineTemMais(true);
    EXPECT_TRUE(m_Pessoa.Alt(U'm'));
    lista->BarraCriteriosAtiva(false);
    EXPECT_FALSE(m_Pessoa.Alt(U'l'));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"localiza", "mais"}));
}

TEST_F(PessoaTest, Alt_OnCloseAndHelpOfAList_AsksTheWindow)
{
    const Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista"));
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'f')); // nobody to close or help
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'a'));
    PedidosDaJanela pedidos;
    pedidos.Fecha = [this] {
        m_Tela.Eventos.emplace_back("fecha");
        m_Tela.Form->DefineVisible(false);
    };
    pedidos.Ajuda = [this] { m_Tela.Eventos.emplace_back("ajuda"); };
    Pessoa pessoa(m_Tela.Form, pedidos);
    EXPECT_TRUE(pessoa.Alt(U'a'));
    EXPECT_TRUE(pessoa.Alt(U'f'));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ajuda", "fecha"}));
    m_Tela.Form->DefineVisible(true);
    lista->BotoesFecharAjuda(false);
    EXPECT_FALSE(pessoa.RespondeAlt(U'f'));
    EXPECT_FALSE(pessoa.RespondeAlt(U'a'));
}

TEST_F(PessoaTest, Ajuda_IsTheWindows)
{
    EXPECT_FALSE(m_Pessoa.Ajuda());
    EXPECT_EQ(m_Pessoa.Motivo(), "não há quem mostre a ajuda");
    PedidosDaJanela pedidos;
    pedidos.Ajuda = [this] { m_Tela.Eventos.emplace_back("ajuda"); };
    EXPECT_TRUE(Pessoa(m_Tela.Form, pedidos).Ajuda());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"ajuda"});
}

TEST_F(PessoaTest, RespondeAlt_OnlyWhileSomethingWouldAnswer_AndDoesNothing)
{
    const auto ok = Botao("cmdOK", "&OK");
    const auto abas = Abas();
    EXPECT_TRUE(m_Pessoa.RespondeAlt(U'o'));
    EXPECT_TRUE(m_Pessoa.RespondeAlt(U'D'));
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'x'));
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'€'));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_EQ(NomeComFoco(), "");
    abas->DefineTabEnabled(0, false);
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'd'));
    abas->DefineTabEnabled(1, false);
    ok->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.RespondeAlt(U'o'));
}

TEST_F(PessoaTest, AndaPaginas_OpensTheNextThatCanBeOpened)
{
    EXPECT_FALSE(m_Pessoa.AndaPaginas(1));
    EXPECT_EQ(m_Pessoa.Motivo(), "não há outra página que se possa abrir");
    Campo("txtModelo");
    const auto abas = Abas();
    EXPECT_TRUE(m_Pessoa.AndaPaginas(1));
    EXPECT_EQ(abas->Tab(), 1);
    EXPECT_EQ(m_Pessoa.Motivo(), "");
    EXPECT_FALSE(m_Pessoa.AndaPaginas(1));
    EXPECT_EQ(abas->Tab(), 1);
    EXPECT_TRUE(m_Pessoa.AndaPaginas(-1));
    EXPECT_EQ(abas->Tab(), 0);
    abas->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.AndaPaginas(1));
    EXPECT_EQ(abas->Tab(), 0);
}

TEST_F(PessoaNoEnderecoTest, Enter_WhereAToolkitHasLedTheKeyboard_PressesThatButtonAlone)
{
    Botao("cmdOK")->DefineDefault(true);
    m_Pessoa.InformaEndereco("endereco", 5, 10, "", "", "Rua A, 10");
    m_Pessoa.Ocupa(m_Endereco, Parte::Limpar);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Endereco->Endereco()->CodLogradouro(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    m_Pessoa.Ocupa(m_Endereco, Parte::Numero);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdOK"});
    m_Pessoa.Ocupa(m_Endereco, Parte::Limpar);
    m_Pessoa.Ocupa(nullptr, Parte::Todo);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdOK"});
}

TEST_F(PessoaNoEnderecoTest, ParadaAtual_AfterTab_IsThePartToWhichItHasLed)
{
    m_Pessoa.Foco("endereco");
    EXPECT_TRUE(m_Pessoa.ParadaAtual().Controle == m_Endereco);
    EXPECT_TRUE(m_Pessoa.ParadaAtual().Qual == Parte::Via);
    m_Pessoa.Tab();
    EXPECT_TRUE(m_Pessoa.ParadaAtual().Controle == m_Endereco);
    EXPECT_TRUE(m_Pessoa.ParadaAtual().Qual == Parte::Numero);
    m_Tela.Solta();
    EXPECT_TRUE(m_Pessoa.ParadaAtual().Controle == nullptr);
}

// A platform that can do nothing but unload forms, as the contract tells it.
class PlataformaFalsa : public IPlataforma {
  public:
    std::string_view NomeTipo() const override { return "PlataformaFalsa"; }
    void Descarrega(const Ref<IForm> &form) override
    {
        bool cancela = false;
        form->Unload(cancela);
        if (!cancela) {
            form->DefineVisible(false);
        }
    }

    Ref<IAplicacao> Aplicacao() override { return {}; }
    std::int16_t Ponteiro() const override { return PonteiroNormal; }
    void DefinePonteiro(std::int16_t) override {}
    void ProcessaMensagens() override {}
    std::int32_t LarguraTela() const override { return 0; }
    std::int32_t AlturaTela() const override { return 0; }
    bool PerguntaSimNao(const std::string &, const std::string &, bool) override { return false; }
    void CaixaInformacao(const std::string &, const std::string &) override {}
    std::int32_t NroForms() const override { return 0; }
    Ref<IForm> FormAberto(std::int32_t) const override { return {}; }
    void Carrega(const Ref<IForm> &) override {}
    void DefineTextoJanela(std::int64_t, const std::string &) override {}
    bool TemIcone(const std::string &) const override { return false; }
    Data Agora() const override { return {}; }
    std::string DataCurta(Data) const override { return {}; }
    std::string CaminhoModulo() const override { return {}; }
    bool ExisteArquivo(const std::string &) const override { return false; }
    std::int64_t TamanhoArquivo(const std::string &) const override { return 0; }
    void ApagaArquivo(const std::string &) override {}
    void GravaArquivo(const std::string &, const Bytes &) override {}
    std::string PrimeiroArquivo(const std::string &) override { return {}; }
    std::string ProximoArquivo() override { return {}; }
};

TEST_F(PessoaTest, Fecha_UnloadsTheForm)
{
    Pessoa pessoa(m_Tela.Form, Novo<PlataformaFalsa>());
    EXPECT_TRUE(pessoa.Fecha());
    EXPECT_FALSE(m_Tela.Form->Visible());
    EXPECT_FALSE(pessoa.Fecha());
    EXPECT_EQ(pessoa.Motivo(), "a janela não está aberta");
}

TEST_F(PessoaTest, Fecha_WhenTheFormRefuses_SaysSo)
{
    Pessoa pessoa(m_Tela.Form, Novo<PlataformaFalsa>());
    m_Tela.Form->CancelaUnload = true;
    EXPECT_FALSE(pessoa.Fecha());
    EXPECT_EQ(pessoa.Motivo(), "a janela não aceitou fechar");
    EXPECT_TRUE(m_Tela.Form->Visible());
}

TEST_F(PessoaTest, Fecha_OnALockedFormOrWithoutPlatform_IsRefused)
{
    EXPECT_FALSE(m_Pessoa.Fecha());
    EXPECT_EQ(m_Pessoa.Motivo(), "não há quem feche a janela");
    Pessoa pessoa(m_Tela.Form, Novo<PlataformaFalsa>());
    m_Tela.Form->DefineEnabled(false);
    EXPECT_FALSE(pessoa.Fecha());
    EXPECT_EQ(pessoa.Motivo(), "a janela está bloqueada");
    EXPECT_TRUE(m_Tela.Form->Visible());
}

} // namespace
