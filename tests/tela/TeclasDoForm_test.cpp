#include "controls/CommandButton.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztCommand.h"
#include "controls/ztList.h"
#include "host/MenuLista.h"
#include "host/TabelaTexto.h"
#include "tela/PaginasDeAbas.h"
#include "tela/Pessoa.h"
#include "tests/controls/Tela.h"

namespace {

// What Enter, Esc and the keys of lists do on a form, and where the keyboard goes by itself.
class TeclasDoFormTest : public testing::Test {
  protected:
    Ref<TextBox> Campo(const std::string &nome, const Ref<IControle> &container = nullptr, std::int16_t pagina = -1)
    {
        return m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>(nome), container, pagina);
    }
    Ref<CommandButton> Botao(const std::string &nome, const std::string &caption, AjustesCommandButton proprios = {})
    {
        auto ajustes = Chamado<AjustesCommandButton>(nome, std::move(proprios));
        ajustes.Caption = caption;
        Ref<CommandButton> botao = m_Tela.Poe<CommandButton>(ajustes);
        m_Tela.Anota(botao->Click(), nome);
        return botao;
    }
    // With that many rows, the first one current.
    Ref<ztList> Lista(std::int32_t linhas, AjustesZtList proprios = {}, const Ref<IControle> &container = nullptr,
                      std::int16_t pagina = -1)
    {
        const Ref<ztList> lista =
            m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista", std::move(proprios)), container, pagina);
        TabelaTexto tabela(1);
        for (std::int32_t linha = 0; linha < linhas; ++linha) {
            tabela.Celula(1, tabela.AdicionaLinha()) = std::to_string(linha);
        }
        lista->CarregaItens(tabela);
        lista->DefineItemAtual(linhas > 0 ? 1 : -1);
        m_Tela.Liga(lista->ItemMenuClicado(), [this](const std::string &chave) { m_Tela.Eventos.push_back(chave); });
        m_Tela.Anota(lista->BotaoLocalizarEnvia(), "localiza");
        m_Tela.Anota(lista->AntesDeRemoverItem(), "exclui");
        return lista;
    }
    Ref<SSTab> Abas() { return m_Tela.Poe<SSTab>(Chamado<AjustesSSTab>("sstDados", {.Paginas = {"Dados", "Lista"}})); }
    std::string NomeComFoco() const
    {
        const Ref<IControle> ativo = m_Tela.Form->ControleAtivo();
        return ativo ? ativo->Nome() : std::string();
    }

    Tela m_Tela;
    Pessoa m_Pessoa{m_Tela.Form};
};

TEST_F(TeclasDoFormTest, Retoma_OfANewForm_IsItsFirstFieldPastTheStripOfPages)
{
    EXPECT_FALSE(m_Pessoa.Retoma());
    const auto abas = Abas();
    EXPECT_TRUE(m_Pessoa.Retoma()); // there is nothing else
    EXPECT_EQ(NomeComFoco(), "sstDados");
    m_Tela.Form->DefineControleAtivo(nullptr);
    Campo("txtFechado", abas, 0)->DefineEnabled(false);
    Campo("txtPrimeiro", abas, 0);
    EXPECT_TRUE(m_Pessoa.Retoma());
    EXPECT_EQ(NomeComFoco(), "txtPrimeiro");
}

TEST_F(TeclasDoFormTest, Retoma_WithAControlThatHasTheFocus_StaysAndOtherwiseGoesOn)
{
    const auto um = Campo("txtUm");
    const auto dois = Campo("txtDois");
    Campo("txtTres");
    dois->Foco();
    EXPECT_TRUE(m_Pessoa.Retoma());
    EXPECT_EQ(NomeComFoco(), "txtDois");
    dois->DefineEnabled(false);
    EXPECT_TRUE(m_Pessoa.Retoma());
    EXPECT_EQ(NomeComFoco(), "txtTres");
    m_Tela.Form->DefineEnabled(false);
    EXPECT_FALSE(m_Pessoa.Retoma());
}

// What a message leads to while the form is locked has the focus when it is not any more.
TEST_F(TeclasDoFormTest, Retoma_AfterAClickThatLockedTheForm_IsWhereTheClickLedTheFocus)
{
    const auto campo = Campo("txtNome");
    const auto botao = m_Tela.Poe<ztCommand>(Chamado<AjustesZtCommand>("ztCmdOK", {.LockFormOnClick = true}));
    m_Tela.Liga(botao->ValidaClick(), [&](bool &cancela) {
        EXPECT_FALSE(m_Pessoa.Retoma()); // locked
        campo->SetFocus();
        cancela = true;
    });
    botao->Clica();
    EXPECT_TRUE(m_Pessoa.Retoma());
    EXPECT_EQ(NomeComFoco(), "txtNome");
}

TEST_F(TeclasDoFormTest, Page_ThatBeginsWithAList_GivesItTheFocusWhenItIsOpened)
{
    const auto abas = Abas();
    Campo("txtNome", abas, 0);
    Lista(1, {}, abas, 1);
    Campo("txtDepois", abas, 1);
    EXPECT_TRUE(m_Pessoa.Abre("sstDados", 1));
    EXPECT_EQ(NomeComFoco(), "ztLista");
    EXPECT_TRUE(m_Pessoa.AndaPaginas(-1));
    EXPECT_EQ(NomeComFoco(), "sstDados"); // which begins with a field
    EXPECT_TRUE(abas->Abre(1));           // along the strip
    EXPECT_EQ(NomeComFoco(), "sstDados");
    EXPECT_TRUE(AbrePagina(*abas, 1));
    EXPECT_EQ(NomeComFoco(), "ztLista");
}

TEST_F(TeclasDoFormTest, Page_WhoseFirstStopIsNoList_LeavesTheFocusInTheStrip)
{
    const auto abas = Abas();
    Campo("txtNome", abas, 1);
    Lista(1, {}, abas, 1);
    EXPECT_TRUE(m_Pessoa.Abre("sstDados", 1));
    EXPECT_EQ(NomeComFoco(), "sstDados");
}

TEST_F(TeclasDoFormTest, Enter_OnARow_EditsWhereItCanAndShowsDetailsOtherwise)
{
    const auto lista = Lista(2);
    Botao("cmdPadrao", "&Gravar", {.Default = true});
    lista->ClicaLinha(2);
    EXPECT_TRUE(m_Pessoa.Enter());
    lista->MenuHabilitado(MenuLista::Editar, false);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_TRUE(m_Pessoa.AbreLinha("ztLista", 1)); // twice with the mouse
    EXPECT_EQ(m_Tela.Vistos(), (Textos{MenuLista::Editar, MenuLista::Detalhes, MenuLista::Detalhes}));
    lista->MenuVisivel(MenuLista::Detalhes, false);
    EXPECT_FALSE(m_Pessoa.AbreLinha("ztLista", 1));
    EXPECT_TRUE(m_Pessoa.Enter()); // the default button, where nothing can be done with a row
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdPadrao"});
}

TEST_F(TeclasDoFormTest, Enter_InAListThatIsSearchedIn_ShowsDetailsOfARowAndSearchesFromACriterion)
{
    const auto lista = Lista(1, {.BarraCriteriosAtiva = true});
    const auto criterio = Campo("txtCodigo", lista);
    Botao("cmdPadrao", "&Gravar", {.Default = true});
    lista->Foco();
    EXPECT_TRUE(m_Pessoa.Enter());
    criterio->Foco();
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{MenuLista::Detalhes, "localiza"}));
    EXPECT_EQ(NomeComFoco(), "txtCodigo");
    lista->BarraCriteriosAtiva(false);
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"cmdPadrao"});
}

TEST_F(TeclasDoFormTest, Enter_InAWindowForChoosing_PressesOKOnARowAlone)
{
    const auto lista = Lista(1, {.BarraCriteriosAtiva = true});
    const auto criterio = Campo("txtCodigo", lista);
    const auto ok = Botao("cmdOK", "&OK");
    const auto cancelar = Botao("cmdCancelar", "&Cancelar");
    lista->Foco();
    EXPECT_TRUE(m_Pessoa.Enter());
    criterio->Foco();
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_TRUE(m_Pessoa.AbreLinha("ztLista", 1));
    EXPECT_TRUE(m_Pessoa.Esc());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"cmdOK", "localiza", "cmdOK", "cmdCancelar"}));
    ok->DefineEnabled(false);
    lista->Foco();
    EXPECT_FALSE(m_Pessoa.Enter());
    ok->DefineVisible(false); // not for choosing any more
    EXPECT_TRUE(m_Pessoa.Enter());
    EXPECT_FALSE(m_Pessoa.Esc());
    EXPECT_EQ(m_Tela.Vistos(), Textos{MenuLista::Detalhes});
}

TEST_F(TeclasDoFormTest, Enter_WithoutARow_LeavesTheListAlone)
{
    const auto lista = Lista(0);
    lista->Foco();
    EXPECT_FALSE(m_Pessoa.Enter());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(TeclasDoFormTest, Esc_InDetails_PressesFecharWhateverWasItsButton)
{
    Botao("cmdVisualizar", "&Visualizar", {.Cancel = true});
    const auto cancelar = Botao("cmdCancelar", "&Cancelar");
    EXPECT_TRUE(m_Pessoa.Esc());
    cancelar->DefineCaption("&Fechar");
    EXPECT_TRUE(m_Pessoa.Esc());
    cancelar->DefineVisible(false);
    EXPECT_TRUE(m_Pessoa.Esc());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"cmdVisualizar", "cmdCancelar", "cmdVisualizar"}));
}

TEST_F(TeclasDoFormTest, Esc_InAWindowOfAListAlone_ClosesItUnlessThereAreCriteria)
{
    int fechadas = 0;
    PedidosDaJanela pedidos;
    pedidos.Fecha = [&] { ++fechadas; };
    Pessoa pessoa(m_Tela.Form, pedidos);
    const auto lista = Lista(1);
    pessoa.Esc();
    EXPECT_EQ(fechadas, 1);
    lista->BarraCriteriosAtiva(true);
    EXPECT_FALSE(pessoa.Esc());
    EXPECT_EQ(fechadas, 1);
}

TEST_F(TeclasDoFormTest, Atalhos_RunTheCommandsOfTheList)
{
    const auto lista = Lista(1, {.TipoMenu = 3});
    const auto campo = Campo("txtNome");
    campo->Foco();
    EXPECT_TRUE(m_Pessoa.Atalho(AtalhoDeLista::Atualiza)); // from anywhere
    campo->Foco();
    EXPECT_FALSE(m_Pessoa.Atalho(AtalhoDeLista::Inclui));
    EXPECT_FALSE(m_Pessoa.Atalho(AtalhoDeLista::Remove));
    lista->Foco();
    EXPECT_TRUE(m_Pessoa.Atalho(AtalhoDeLista::Inclui));
    EXPECT_TRUE(m_Pessoa.Atalho(AtalhoDeLista::Remove));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{MenuLista::Atualizar, MenuLista::Novo, "exclui"}));
    EXPECT_FALSE(m_Pessoa.Atalho(AtalhoDeLista::Remove)) << "no row is left";
}

TEST_F(TeclasDoFormTest, Atualiza_WithCriteria_SearchesByThemAndLeavesTheFocus)
{
    const auto lista = Lista(1, {.TipoMenu = 3, .BarraCriteriosAtiva = true});
    Campo("txtCodigo", lista)->Foco();
    EXPECT_TRUE(m_Pessoa.Atalho(AtalhoDeLista::Atualiza));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"localiza"});
    EXPECT_EQ(NomeComFoco(), "txtCodigo");
}

TEST_F(TeclasDoFormTest, Remove_WhereNothingIsExcluded_IsDesativarAndNeverReativar)
{
    const auto lista = Lista(1);
    lista->MenuVisivel(MenuLista::Excluir, false);
    lista->IncluiItensMenu({{"mnuZTLObjReativar", "Reativar", "", "", true}});
    lista->Foco();
    EXPECT_FALSE(m_Pessoa.Atalho(AtalhoDeLista::Remove));
    lista->MenuTexto("mnuZTLObjReativar", "Desativar");
    EXPECT_TRUE(m_Pessoa.Atalho(AtalhoDeLista::Remove));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"mnuZTLObjReativar"});
    lista->MenuBloqueado("mnuZTLObjReativar", true);
    EXPECT_FALSE(m_Pessoa.Atalho(AtalhoDeLista::Remove));
}

TEST_F(TeclasDoFormTest, VaiAosCriterios_LeadsToTheFirstThatCanBeUsed)
{
    EXPECT_FALSE(m_Pessoa.VaiAosCriterios());
    const auto lista = Lista(1, {.BarraCriteriosAtiva = true});
    Campo("txtFora");
    Campo("txtFechado", lista)->DefineEnabled(false);
    Campo("txtCodigo", lista);
    lista->Foco();
    EXPECT_TRUE(m_Pessoa.VaiAosCriterios());
    EXPECT_EQ(NomeComFoco(), "txtCodigo");
}

// Its rows may have been loaded again.
TEST_F(TeclasDoFormTest, Command_ThatLeavesNoRowCurrent_LeavesTheFirstOneWhileTheListHasTheFocus)
{
    const auto lista = Lista(2);
    m_Tela.Liga(lista->ItemMenuClicado(), [&](const std::string &) {
        TabelaTexto tabela(1);
        tabela.Celula(1, tabela.AdicionaLinha()) = "outra";
        lista->Limpa(std::nullopt);
        lista->CarregaItens(tabela);
    });
    lista->Foco();
    EXPECT_TRUE(lista->EscolheMenu(MenuLista::Novo));
    EXPECT_EQ(lista->ItemAtual(), 1);
}

} // namespace
