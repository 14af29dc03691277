#include "controls/ztList.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

constexpr const char *Excluir = "mnuZTLObjExcluir";

class ztListTest : public testing::Test {
  protected:
    Ref<ztList> Lista(const Peca &ajustes)
    {
        Ref<ztList> lista = m_Tela.Poe<ztList>(ajustes);
        m_Tela.Anota(lista->ItemClick(), "ItemClick");
        m_Tela.Anota(lista->HabilitaItensMenuLista(), "Habilita");
        m_Tela.Anota(lista->GotFocus(), "GotFocus");
        m_Tela.Anota(lista->BotaoClick(), "BotaoClick");
        m_Tela.Anota(lista->DepoisDeRemoverItem(), "Depois");
        m_Tela.Anota(lista->BotaoLocalizarEnvia(), "Envia");
        m_Tela.Liga(lista->ItemMenuClicado(), [this](const std::string &chave) { m_Tela.Eventos.push_back(chave); });
        m_Tela.Liga(lista->AntesDeRemoverItem(), [this](std::int32_t &linha) {
            m_Tela.Eventos.emplace_back("Antes " + std::to_string(linha));
            linha = m_ManterLinha ? 0 : linha;
        });
        m_Tela.Liga(lista->BotaoLocalizarValida(), [this](bool &cancela) {
            m_Tela.Eventos.emplace_back("Valida");
            cancela = m_Cancela;
        });
        return lista;
    }
    Ref<ztList> Lista() { return Lista(Chamado<AjustesZtList>("ztLista")); }

    // A list with the columns "Número", "Nome" and, hidden, "Chave".
    Ref<ztList> ComColunas()
    {
        Ref<ztList> lista = Lista();
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Número", 1005, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Nome", 4905, 0, "", true);
        lista->AdicionaColuna(3, std::nullopt, "Chave", 0, 0, "", false);
        return lista;
    }

    static void Carrega(const Ref<ztList> &lista, const std::vector<Textos> &linhas)
    {
        TabelaTexto tabela(static_cast<std::int32_t>(lista->Colunas().size()));
        for (const Textos &linha : linhas) {
            const std::int32_t numero = tabela.AdicionaLinha();
            for (std::size_t i = 0; i < linha.size(); ++i) {
                tabela.Celula(static_cast<std::int32_t>(i) + 1, numero) = linha[i];
            }
        }
        lista->CarregaItens(tabela);
    }

    // The same with three rows.
    Ref<ztList> ComTresLinhas()
    {
        Ref<ztList> lista = ComColunas();
        Carrega(lista, {{"1", "um", "K1"}, {"2", "dois", "K2"}, {"3", "três", "K3"}});
        return lista;
    }

    static Textos Nomes(const Ref<ztList> &lista, std::int32_t coluna)
    {
        Textos nomes;
        for (std::int32_t linha = 1; linha <= lista->NroVistas(); ++linha) {
            nomes.push_back(lista->TextoCelula(linha, coluna));
        }
        return nomes;
    }

    // Keys of the items that a person sees.
    static Textos Visiveis(const Ref<ztList> &lista)
    {
        Textos chaves;
        for (std::int32_t i = 1; i <= lista->Menu().Count(); ++i) {
            if (lista->Menu().Item(i)->Visivel()) {
                chaves.push_back(lista->Menu().Item(i)->Chave());
            }
        }
        return chaves;
    }

    bool m_ManterLinha = false;
    bool m_Cancela = false;
    Tela m_Tela;
};

class ListaVazia : public ztListTest {
  protected:
    Ref<ztList> lista = Lista();
};

class ListaComColunas : public ztListTest {
  protected:
    Ref<ztList> lista = ComColunas();
};

class ListaComLinhas : public ztListTest {
  protected:
    Ref<ztList> lista = ComTresLinhas();
};

TEST_F(ListaVazia, Fresh_HasOneColumnAndNoRow)
{
    EXPECT_EQ(lista->NomeTipo(), "ztList");
    EXPECT_EQ(lista->Colunas().size(), 1U);
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->Titulo(), "");
    EXPECT_FALSE(lista->TemMais());
    EXPECT_EQ(lista->ColunaOrdem(), 0);
    EXPECT_FALSE(lista->JanelaExibida());
}

TEST_F(ListaVazia, AdicionaColuna_WithoutKey_HasItsTitleAsKey)
{
    lista->AlteraPrimeiraColuna(1, std::nullopt, "Dt.Verificação", 1650, 2, "data", true);
    lista->AdicionaColuna(2, "K", "Chave", 0, 0, "", false);
    ASSERT_EQ(lista->Colunas().size(), 2U);
    const ztList::Coluna &primeira = lista->Colunas()[0];
    EXPECT_EQ(primeira.Chave, "Dt.Verificação");
    EXPECT_EQ(primeira.Titulo, "Dt.Verificação");
    EXPECT_EQ(primeira.Largura, 1650);
    EXPECT_EQ(primeira.Alinhamento, 2);
    EXPECT_EQ(primeira.Marca, "data");
    EXPECT_TRUE(primeira.Visivel);
    EXPECT_EQ(lista->Colunas()[1].Chave, "K");
    EXPECT_EQ(lista->Colunas()[1].Titulo, "Chave");
    EXPECT_FALSE(lista->Colunas()[1].Visivel);
}

TEST_F(ListaComLinhas, CarregaItens_AppendsAndRaisesNothing)
{
    EXPECT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->Celula(1, "Número"), "1");
    EXPECT_EQ(lista->Celula(3, "Nome"), "três");
    EXPECT_EQ(lista->Celula(2, "chave"), "K2"); // the case of a key does not count
    lista->DefineItemAtual(2);
    m_Tela.Vistos();
    Carrega(lista, {{"4", "quatro", "K4"}});
    EXPECT_EQ(lista->NroItens(), 4);
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_EQ(lista->Celula(4, "Chave"), "K4");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaComColunas, CarregaItens_OfANarrowerOrWiderTable_LeavesCellsEmptyOrAside)
{
    TabelaTexto estreita(1);
    estreita.Celula(1, estreita.AdicionaLinha()) = "só";
    lista->CarregaItens(estreita);
    TabelaTexto larga(5);
    larga.Celula(5, larga.AdicionaLinha()) = "além";
    lista->CarregaItens(larga);
    EXPECT_EQ(lista->Celula(1, "Número"), "só");
    EXPECT_EQ(lista->Celula(1, "Chave"), "");
    EXPECT_EQ(lista->Celula(2, "Chave"), "");
    EXPECT_EQ(NumeroDaFalha([&] { lista->TextoCelula(2, 5); }), 9);
}

TEST_F(ListaComLinhas, Celula_OfAnUnknownRowOrColumn_IsFault9)
{
    for (std::int32_t linha : {0, 4, -1}) {
        EXPECT_EQ(NumeroDaFalha([&] { lista->Celula(linha, "Nome"); }), 9);
    }
    EXPECT_EQ(NumeroDaFalha([&] { lista->Celula(1, "Endereço"); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { lista->ValorAtual("Endereço"); }), 9);
    lista->DefineItemAtual(1);
    EXPECT_EQ(NumeroDaFalha([&] { lista->ColunaAtual(0); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { lista->ColunaAtual(4); }), 9);
}

TEST_F(ListaComLinhas, DefineItemAtual_OfAnotherRowOrNone_RaisesHabilitaAndItemClickForARow)
{
    EXPECT_EQ(lista->ValorAtual("Nome"), "");
    EXPECT_EQ(lista->ColunaAtual(1), "");
    lista->DefineItemAtual(0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    for (std::int32_t nenhuma : {0, -1}) {
        lista->DefineItemAtual(3);
        EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita"}));
        EXPECT_EQ(lista->ValorAtual("Nome"), "três");
        EXPECT_EQ(lista->ColunaAtual(1), "3");
        EXPECT_EQ(lista->ColunaAtual(3), "K3");
        lista->DefineItemAtual(3);
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
        lista->DefineItemAtual(nenhuma);
        EXPECT_EQ(m_Tela.Vistos(), Textos{"Habilita"});
        EXPECT_EQ(lista->ItemAtual(), -1);
    }
    EXPECT_EQ(NumeroDaFalha([&] { lista->DefineItemAtual(4); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { lista->DefineItemAtual(-2); }), 9);
    EXPECT_EQ(lista->ItemAtual(), -1);
}

TEST_F(ListaComLinhas, Limpa_WithRows_EmptiesThemAndTheOfferOfMoreAndTheTitleUnlessTold)
{
    lista->DefineTitulo("Cliente [Setor]");
    lista->DefineTemMais(true);
    lista->DefineItemAtual(2);
    m_Tela.Vistos();
    lista->Limpa(false);
    EXPECT_EQ(lista->Titulo(), "Cliente [Setor]");
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_FALSE(lista->TemMais());
    EXPECT_EQ(lista->Colunas().size(), 3U);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Habilita"});
    for (std::optional<bool> argumento : {std::optional<bool>(true), std::optional<bool>()}) {
        lista->DefineTitulo("T");
        lista->Limpa(argumento);
        EXPECT_EQ(lista->Titulo(), "");
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    }
}

TEST_F(ListaVazia, Menu_OfKind2_ShowsTheFirstFourItemsAndOfKind3All)
{
    EXPECT_EQ(Visiveis(lista), (Textos{"mnuZTLObjNovo", "mnuZTLObjEditar", "mnuZTLObjDetalhes", "mnuZTLObjExcluir"}));
    EXPECT_EQ(Visiveis(Lista(Chamado<AjustesZtList>("ztlLista", {.TipoMenu = 3}))).size(), 6U);
    const Textos textos = {"Novo", "Editar", "Detalhes", "Excluir", "Localizar", "Atualizar"};
    ASSERT_EQ(lista->Menu().Count(), 6);
    for (std::int32_t i = 1; i <= 6; ++i) {
        const Ref<ItemMenu> &item = lista->Menu().Item(i);
        const std::string &texto = textos[static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(item->NomeTipo(), "ItemMenu");
        EXPECT_EQ(item->Chave(), "mnuZTLObj" + texto);
        EXPECT_EQ(item->Texto(), texto);
        EXPECT_EQ(item->Dica(), texto);
        EXPECT_EQ(item->TextoBotao(), "");
        EXPECT_FALSE(item->IniciaGrupo() || item->Bloqueado());
        EXPECT_TRUE(item->Enabled());
    }
}

TEST_F(ListaVazia, IncluiItensMenu_PutsThemBehindTheStandardOnesUnlessTheKeyIsInUse)
{
    EXPECT_EQ(NumeroDaFalha([&] { lista->IncluiItensMenu({{"mnuZTLObjNovo", "Outro", "", "", false}}); }), 457);
    EXPECT_EQ(lista->Menu().Count(), 6);
    lista->IncluiItensMenu(
        {{"mnuZTLObjReativar", "Reativar", "", "Reativar/Desativar Equipamento", true},
         {"mnuZTLObjLimitesDif", "Limites Diferenciados", "Limites\r\n Diferenciados", "Limites Diferenciados", true}});
    ASSERT_EQ(lista->Menu().Count(), 8);
    const Ref<ItemMenu> &reativar = lista->Menu().Item(7);
    EXPECT_EQ(reativar->Chave(), "mnuZTLObjReativar");
    EXPECT_EQ(reativar->Texto(), "Reativar");
    EXPECT_EQ(reativar->Dica(), "Reativar/Desativar Equipamento");
    EXPECT_TRUE(reativar->IniciaGrupo());
    EXPECT_EQ(lista->Menu().Item(8)->TextoBotao(), "Limites\r\n Diferenciados");
    EXPECT_TRUE(lista->Menu().Item(8)->Utilizavel());
}

TEST_F(ListaVazia, MenuWrites_ShowOnTheItemAndTellTheScreen)
{
    m_Tela.Anota(lista->Mudou(), "Mudou");
    lista->AtualizaLista();
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
    lista->MenuVisivel("mnuZTLObjAtualizar", true);
    lista->MenuBloqueado("mnuZTLObjNovo", true);
    lista->MenuHabilitado("mnuZTLObjNovo", false);
    lista->MenuTexto("mnuZTLObjNovo", "Criar");
    lista->ItemMenu("mnuZTLObjEditar")->DefineEnabled(false);
    EXPECT_EQ(m_Tela.Vistos().size(), 5U);
    EXPECT_TRUE(lista->Menu().Item("mnuZTLObjAtualizar")->Visivel());
    EXPECT_TRUE(lista->Menu().Item("mnuZTLObjNovo")->Bloqueado());
    EXPECT_FALSE(lista->ItemMenu("mnuZTLObjNovo")->Enabled());
    EXPECT_EQ(lista->Menu().Item("mnuZTLObjNovo")->Texto(), "Criar");
    EXPECT_FALSE(lista->ItemMenu("mnuZTLObjEditar")->Enabled());
    lista->MenuHabilitado("mnuZTLObjNovo", false);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaVazia, MenuWrites_OnAnUnknownKey_AreFault5)
{
    EXPECT_EQ(NumeroDaFalha([&] { lista->ItemMenu("mnuX"); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { lista->MenuVisivel("mnuX", true); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { lista->MenuBloqueado("mnuX", true); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { lista->MenuHabilitado("mnuX", true); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { lista->MenuTexto("mnuX", ""); }), 5);
}

TEST_F(ztListTest, Settings_AsWritten_AreWhatTheScreenReads)
{
    auto ajustes = Chamado<AjustesZtList>(
        "ztlLista", {.BotoesFecharAjuda = false, .BarraCriteriosAtiva = true, .BarraCriteriosAltura = 1500});
    const Ref<ztList> lista = Lista(ajustes);
    EXPECT_EQ(lista->BarraCriteriosAltura(), 1500);
    EXPECT_TRUE(lista->Ajustes().BarraCriteriosAtiva);
    EXPECT_FALSE(lista->Ajustes().BotoesFecharAjuda);
    lista->BarraCriteriosAtiva(false);
    lista->DefineBarraCriteriosAltura(990);
    lista->BotoesFecharAjuda(true);
    lista->EstiloMenu1(3);
    lista->EstiloMenu2(2);
    lista->DefineJanelaExibida(true);
    EXPECT_FALSE(lista->Ajustes().BarraCriteriosAtiva);
    EXPECT_EQ(lista->BarraCriteriosAltura(), 990);
    EXPECT_TRUE(lista->Ajustes().BotoesFecharAjuda);
    const ztList &mostrada = *lista;
    EXPECT_EQ(mostrada.EstiloMenu1(), 3);
    EXPECT_EQ(mostrada.EstiloMenu2(), 2);
    EXPECT_TRUE(mostrada.JanelaExibida());
}

TEST_F(ListaComLinhas, Foco_MakesTheFirstRowCurrentUnlessThereIsOneAndRaisesGotFocus)
{
    EXPECT_TRUE(lista->Foco());
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita", "GotFocus"}));
    lista->DefineItemAtual(3);
    m_Tela.Form->DefineControleAtivo(nullptr);
    m_Tela.Vistos();
    lista->SetFocus();
    EXPECT_EQ(lista->ItemAtual(), 3);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"GotFocus"});
}

TEST_F(ListaComColunas, Foco_OnAnEmptyList_RaisesGotFocusOnceAndOnRowsLoadedSinceMakesTheFirstCurrent)
{
    EXPECT_TRUE(lista->Foco());
    EXPECT_TRUE(lista->Foco());
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"GotFocus"});
    Carrega(lista, {{"1", "um", "K1"}});
    EXPECT_TRUE(lista->Foco());
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita"}));
}

TEST_F(ListaComLinhas, Foco_WhenItemClickLeadsItElsewhere_RaisesNoGotFocus)
{
    const Ref<TextBox> campo = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txt"));
    m_Tela.Liga(lista->ItemClick(), [&] { campo->SetFocus(); });
    EXPECT_FALSE(lista->Foco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita"}));
}

TEST_F(ListaComLinhas, ClicaLinha_OnAListWithoutFocus_MakesThatRowCurrentAndNoOther)
{
    EXPECT_TRUE(lista->ClicaLinha(2));
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita", "GotFocus"}));
    EXPECT_TRUE(lista->ClicaLinha(3));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita"}));
    EXPECT_TRUE(lista->ClicaLinha(3));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaComLinhas, ClicaLinha_WhenItemClickFaults_ForgetsTheRowClicked)
{
    bool falha = true;
    m_Tela.Liga(lista->ItemClick(), [&] {
        if (falha) {
            throw Falha(13);
        }
    });
    EXPECT_EQ(NumeroDaFalha([&] { lista->ClicaLinha(2); }), 13);
    EXPECT_EQ(lista->ItemAtual(), 2);
    falha = false;
    lista->DefineItemAtual(-1);
    EXPECT_TRUE(lista->Foco());
    EXPECT_EQ(lista->ItemAtual(), 1);
}

TEST_F(ListaComLinhas, ClicaLinha_OutsideTheRowsOrDisabled_IsRefused)
{
    EXPECT_FALSE(lista->ClicaLinha(0));
    EXPECT_FALSE(lista->ClicaLinha(4));
    lista->DefineEnabled(false);
    EXPECT_FALSE(lista->ClicaLinha(1));
    EXPECT_FALSE(lista->TeclaSetas(1));
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaComLinhas, TeclaSetas_MovesAsFarAsThereAreRows)
{
    EXPECT_TRUE(lista->TeclaSetas(1));
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_TRUE(lista->TeclaSetas(1));
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_TRUE(lista->TeclaSetas(900));
    EXPECT_EQ(lista->ItemAtual(), 3);
    m_Tela.Vistos();
    EXPECT_TRUE(lista->TeclaSetas(1));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(lista->TeclaSetas(-900));
    EXPECT_EQ(lista->ItemAtual(), 1);
    lista->Limpa(std::nullopt);
    EXPECT_FALSE(lista->TeclaSetas(1));
}

TEST_F(ListaComLinhas, EscolheMenu_OfAnItem_RaisesHabilitaAndThenTheChoiceOnTheFirstRowAtLeast)
{
    EXPECT_TRUE(lista->EscolheMenu("mnuZTLObjDetalhes"));
    EXPECT_EQ(lista->ItemAtual(), 1);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita", "GotFocus", "Habilita", "mnuZTLObjDetalhes"}));
    EXPECT_TRUE(lista->EscolheMenu("mnuZTLObjEditar"));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Habilita", "mnuZTLObjEditar"}));
    EXPECT_TRUE(lista->EscolheMenu("MNUZTLOBJNOVO"));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Habilita", "mnuZTLObjNovo"}));
}

TEST_F(ListaComLinhas, EscolheMenu_OfAnItemHiddenDisabledBarredOrUnknown_IsRefused)
{
    EXPECT_TRUE(lista->ClicaLinha(1));
    m_Tela.Vistos();
    EXPECT_FALSE(lista->EscolheMenu("mnuZTLObjAtualizar"));
    lista->MenuHabilitado("mnuZTLObjEditar", false);
    EXPECT_FALSE(lista->EscolheMenu("mnuZTLObjEditar"));
    lista->MenuBloqueado("mnuZTLObjNovo", true);
    lista->MenuHabilitado("mnuZTLObjNovo", true);
    EXPECT_FALSE(lista->EscolheMenu("mnuZTLObjNovo"));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Habilita", "Habilita", "Habilita"}));
    EXPECT_FALSE(lista->EscolheMenu("mnuX"));
    lista->DefineEnabled(false);
    EXPECT_FALSE(lista->EscolheMenu("mnuZTLObjDetalhes"));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    lista->DefineEnabled(true);
    m_Tela.Liga(lista->HabilitaItensMenuLista(), [&] { lista->MenuHabilitado("mnuZTLObjDetalhes", false); });
    EXPECT_FALSE(lista->EscolheMenu("mnuZTLObjDetalhes"));
}

TEST_F(ListaComLinhas, EscolheMenu_OfExcluir_RemovesTheCurrentRow)
{
    EXPECT_TRUE(lista->ClicaLinha(2));
    m_Tela.Vistos();
    m_Tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &) { EXPECT_EQ(lista->NroItens(), 3); });
    m_Tela.Liga(lista->DepoisDeRemoverItem(), [&] {
        EXPECT_EQ(lista->NroItens(), 2);
        EXPECT_EQ(lista->ValorAtual("Chave"), "K3");
    });
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Habilita", "Antes 2", "Depois", "Habilita"}));
    EXPECT_EQ(Nomes(lista, 3), (Textos{"K1", "K3"}));
    EXPECT_EQ(lista->ItemAtual(), 2);
}

TEST_F(ListaComLinhas, EscolheMenu_OfExcluirOnTheLastRow_LeavesTheRowBeforeCurrent)
{
    EXPECT_TRUE(lista->ClicaLinha(3));
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->ValorAtual("Chave"), "K2");
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(lista->ItemAtual(), -1);
    m_Tela.Vistos();
    EXPECT_FALSE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Habilita"});
}

TEST_F(ListaComLinhas, EscolheMenu_OfExcluirCancelledOrThatFaults_KeepsTheRow)
{
    EXPECT_TRUE(lista->ClicaLinha(2));
    m_Tela.Vistos();
    m_ManterLinha = true;
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Habilita", "Antes 2"}));
    m_ManterLinha = false;
    m_Tela.Liga(lista->AntesDeRemoverItem(), [](std::int32_t &) { throw Falha(91); });
    EXPECT_EQ(NumeroDaFalha([&] { lista->EscolheMenu(Excluir); }), 91);
    EXPECT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(lista->ItemAtual(), 2);
}

TEST_F(ListaComLinhas, EscolheMenu_OfExcluirOfARowThatIsNotThere_RemovesNothing)
{
    {
        const Conexao alem = lista->AntesDeRemoverItem().liga([](std::int32_t &linha) { linha = 4; });
        EXPECT_TRUE(lista->EscolheMenu(Excluir));
        EXPECT_EQ(Nomes(lista, 3), (Textos{"K1", "K2", "K3"}));
        EXPECT_EQ(lista->ItemAtual(), 1);
    }
    m_Tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &) { // the list is reloaded meanwhile
        lista->Limpa(std::nullopt);
        Carrega(lista, {{"9", "nove", "K9"}});
    });
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(Nomes(lista, 3), Textos{"K9"});
}

TEST_F(ListaComLinhas, EscolheMenu_OfExcluirWhenARowBelowBecomesCurrent_KeepsThatRowCurrent)
{
    EXPECT_TRUE(lista->ClicaLinha(1));
    m_Tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &) { lista->DefineItemAtual(2); });
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(Nomes(lista, 3), (Textos{"K2", "K3"}));
    EXPECT_EQ(lista->ValorAtual("Chave"), "K2");
}

TEST_F(ListaComLinhas, Person_WhenTheFocusDisablesTheList_IsRefused)
{
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->RecebeuFoco(), [&] { lista->DefineEnabled(false); });
    const auto recusado = [&](const std::function<bool()> &acao) {
        lista->DefineEnabled(true);
        m_Tela.Form->DefineControleAtivo(nullptr);
        m_Tela.Vistos();
        return !acao();
    };
    EXPECT_TRUE(recusado([&] { return lista->ClicaLinha(2); }));
    EXPECT_EQ(lista->ItemAtual(), 2); // the focus came with that row
    EXPECT_TRUE(recusado([&] { return lista->TeclaSetas(1); }));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"GotFocus"});
    EXPECT_TRUE(recusado([&] { return lista->EscolheMenu("mnuZTLObjNovo"); }));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"GotFocus"});
    EXPECT_TRUE(recusado([&] { return lista->PedeMais(); }));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"GotFocus"});
    EXPECT_EQ(lista->ItemAtual(), 2);
}

TEST_F(ListaComLinhas, ClicaLinha_WhenTheFocusTakesTheRowAway_IsRefused)
{
    m_Tela.Liga(lista->RecebeuFoco(), [&] {
        lista->Limpa(std::nullopt);
        Carrega(lista, {{"9", "nove", "K9"}});
    });
    EXPECT_FALSE(lista->ClicaLinha(3));
    EXPECT_EQ(lista->ValorAtual("Chave"), "K9"); // as the focus alone makes the first row current
}

TEST_F(ListaComLinhas, PedeMais_WhenTheFocusEndsTheOffer_IsRefused)
{
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->RecebeuFoco(), [&] { lista->DefineTemMais(false); });
    EXPECT_FALSE(lista->PedeMais());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita", "GotFocus"}));
}

TEST_F(ListaComLinhas, PedeMais_OnlyWhenOffered_RaisesBotaoClickWhichMayAppend)
{
    EXPECT_FALSE(lista->PedeMais());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->BotaoClick(), [&] {
        Carrega(lista, {{"4", "quatro", "K4"}});
        lista->DefineItemAtual(lista->NroItens());
    });
    EXPECT_TRUE(lista->PedeMais());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"ItemClick", "Habilita", "GotFocus", "BotaoClick", "ItemClick", "Habilita"}));
    EXPECT_EQ(Nomes(lista, 1), (Textos{"1", "2", "3", "4"}));
    EXPECT_EQ(lista->ItemAtual(), 4);
    lista->DefineTemMais(false);
    EXPECT_FALSE(lista->PedeMais());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaVazia, Localiza_WithTheCriteriaBar_ValidatesAndSends)
{
    EXPECT_FALSE(lista->Localiza());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    lista->BarraCriteriosAtiva(true);
    EXPECT_TRUE(lista->Localiza());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Valida", "Envia"}));
    m_Cancela = true;
    EXPECT_TRUE(lista->Localiza());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Valida"});
    lista->DefineEnabled(false);
    EXPECT_FALSE(lista->Localiza());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaComColunas, OrdenaPor_AColumnOfText_SortsInPortugueseOrderBothWays)
{
    Carrega(lista,
            {{"1", "Ôlho"}, {"2", "zebra"}, {"3", "Água"}, {"4", "agua"}, {"5", "ovo"}, {"6", "Cão"}, {"7", ""}});
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Nomes(lista, 2), (Textos{"", "agua", "Água", "Cão", "Ôlho", "ovo", "zebra"}));
    EXPECT_EQ(lista->ColunaOrdem(), 2);
    EXPECT_FALSE(lista->OrdemDecrescente());
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Nomes(lista, 2), (Textos{"zebra", "ovo", "Ôlho", "Cão", "Água", "agua", ""}));
    EXPECT_TRUE(lista->OrdemDecrescente());
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_EQ(Nomes(lista, 1), (Textos{"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_FALSE(lista->OrdemDecrescente());
}

TEST_F(ListaVazia, OrdenaPor_AColumn_SortsByWhatItHolds)
{
    struct Caso {
        std::string Marca;
        Textos Celulas;
        Textos EmOrdem;
    };
    for (const Caso &caso : std::vector<Caso>{
             {"", {"10", "9", "", "1,5", "-2", "100"}, {"", "-2", "1,5", "9", "10", "100"}},
             {"", {"10", "9", "A1"}, {"10", "9", "A1"}}, // one text among numbers
             {"data", {"02/01/2024", "31/12/2023", "x", "01/02/2023"}, {"x", "01/02/2023", "31/12/2023", "02/01/2024"}},
         }) {
        lista = Lista();
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Coluna", 1650, 0, caso.Marca, true);
        for (const std::string &celula : caso.Celulas) {
            Carrega(lista, {{celula}});
        }
        EXPECT_TRUE(lista->OrdenaPor(1));
        EXPECT_EQ(Nomes(lista, 1), caso.EmOrdem);
    }
}

TEST_F(ListaComColunas, OrdenaPor_EqualCells_KeepsTheirOrderBothWays)
{
    Carrega(lista, {{"1", "b"}, {"2", "a"}, {"3", "b"}, {"4", "a"}});
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Nomes(lista, 1), (Textos{"2", "4", "1", "3"}));
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Nomes(lista, 1), (Textos{"1", "3", "2", "4"}));
}

TEST_F(ListaComLinhas, OrdenaPor_AColumnHiddenUnknownOrWithoutWidth_IsRefused)
{
    lista->AdicionaColuna(4, std::nullopt, "Ordem", 0, 0, "", true);
    for (std::int32_t coluna : {3, -1, 4, 5}) {
        EXPECT_FALSE(lista->OrdenaPor(coluna));
    }
    lista->DefineEnabled(false);
    EXPECT_FALSE(lista->OrdenaPor(1));
    EXPECT_EQ(lista->ColunaOrdem(), 0);
    EXPECT_EQ(Nomes(lista, 3), (Textos{"K1", "K2", "K3"}));
}

TEST_F(ListaComLinhas, OrdenaPor_ThreeTimes_SortsUpwardsAgainAndKeepsTheCurrentRow)
{
    lista->DefineItemAtual(2);
    m_Tela.Vistos();
    for (const Textos &ordem : {Textos{"K2", "K3", "K1"}, Textos{"K1", "K3", "K2"}, Textos{"K2", "K3", "K1"}}) {
        EXPECT_TRUE(lista->OrdenaPor(2)); // dois, três, um
        EXPECT_EQ(Nomes(lista, 3), ordem);
        EXPECT_EQ(lista->ValorAtual("Chave"), "K2");
        EXPECT_EQ(lista->ItemAtual(), 2); // as the module counts
    }
    EXPECT_EQ(lista->AtualVista(), 1);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ListaComColunas, OrdenaPor_AColumnOfBlanks_KeepsTheRowsInTheirOrder)
{
    Carrega(lista, {{"2", "", "K1"}, {"1", "", "K2"}});
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(Nomes(lista, 3), (Textos{"K1", "K2"}));
}

TEST_F(ListaComLinhas, CarregaItens_OnASortedList_PutsTheRowsInTheirPlace)
{
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(lista->OrdenaPor(1));
    Carrega(lista, {{"9", "nove", "K9"}});
    EXPECT_EQ(Nomes(lista, 1), (Textos{"9", "3", "2", "1"}));
    EXPECT_EQ(lista->ColunaOrdem(), 1);
    EXPECT_TRUE(lista->OrdemDecrescente());
    EXPECT_EQ(lista->Celula(4, "Número"), "9") << "the module's rows stay where it put them";
}

TEST_F(ListaComLinhas, Arranjo_GrowsOnlyWhenRowsOrColumnsDo)
{
    std::int64_t antes = lista->Arranjo();
    lista->DefineItemAtual(2);
    lista->DefineTitulo("T");
    lista->DefineTemMais(true);
    lista->MenuHabilitado(Excluir, true);
    lista->AtualizaLista();
    EXPECT_EQ(lista->Arranjo(), antes);
    const auto cresceu = [&] { return lista->Arranjo() > std::exchange(antes, lista->Arranjo()); };
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_TRUE(cresceu());
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_TRUE(cresceu());
    lista->AdicionaColuna(4, std::nullopt, "Mais", 1, 0, "", true);
    EXPECT_TRUE(cresceu());
    lista->Limpa(std::nullopt);
    EXPECT_TRUE(cresceu());
    Carrega(lista, {{"1"}});
    EXPECT_TRUE(cresceu());
}

TEST_F(ztListTest, ThirtyThousandRows_AreLoadedToldOnceAndSorted)
{
    constexpr std::int32_t Linhas = 30000;
    const Ref<ztList> lista = ComColunas();
    TabelaTexto tabela(3);
    for (std::int32_t i = 0; i < Linhas; ++i) {
        const std::int32_t linha = tabela.AdicionaLinha();
        const std::int32_t embaralhado = (i * 7919) % Linhas + 1;
        tabela.Celula(1, linha) = std::to_string(embaralhado);
        tabela.Celula(2, linha) = "Equipamento " + std::to_string(embaralhado);
    }
    m_Tela.Anota(lista->Mudou(), "Mudou");
    lista->CarregaItens(tabela);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
    for (std::int32_t linha = 1; linha <= Linhas; ++linha) {
        ASSERT_EQ(lista->TextoCelula(linha, 1), std::to_string(linha));
    }
    EXPECT_TRUE(lista->OrdenaPor(2));
    EXPECT_EQ(lista->TextoCelula(2, 2), "Equipamento 10");
    lista->DefineItemAtual(Linhas);
    EXPECT_TRUE(lista->EscolheMenu(Excluir));
    EXPECT_EQ(lista->NroItens(), Linhas - 1);
}

// Each of these runs an event of a list that only its form holds, and the form goes in it.
TEST_F(ztListTest, Events_ThatReleaseTheForm_EndInPeace)
{
    using Acao = std::function<void(ztList &)>;
    const std::vector<Acao> acoes = {
        [](ztList &lista) { EXPECT_FALSE(lista.ClicaLinha(2)); },
        [](ztList &lista) { EXPECT_FALSE(lista.TeclaSetas(1)); },
        [](ztList &lista) { EXPECT_FALSE(lista.Foco()); },
        [](ztList &lista) { EXPECT_FALSE(lista.EscolheMenu(Excluir)); },
        [](ztList &lista) { EXPECT_FALSE(lista.PedeMais()); },
        [](ztList &lista) { lista.SetFocus(); },
        [](ztList &lista) { lista.DefineItemAtual(2); },
        [](ztList &lista) { lista.Limpa(std::nullopt); },
    };
    for (const Acao &acao : acoes) {
        Tela tela;
        ztList *lista = tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista")).Ponteiro();
        TabelaTexto tabela(1);
        tabela.AdicionaLinha();
        tabela.AdicionaLinha();
        lista->CarregaItens(tabela);
        lista->DefineTemMais(true);
        tela.Liga(lista->HabilitaItensMenuLista(), [&] { tela.Solta(); });
        acao(*lista);
        EXPECT_TRUE(tela.Form.Nada());
    }
}

TEST_F(ztListTest, EscolheMenu_WhenTheChoiceOrARemovalReleasesTheForm_EndsInPeace)
{
    for (const char *chave : {"mnuZTLObjNovo", Excluir}) {
        Tela tela;
        ztList *lista = tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista")).Ponteiro();
        TabelaTexto tabela(1);
        tabela.AdicionaLinha();
        lista->CarregaItens(tabela);
        tela.Liga(lista->ItemMenuClicado(), [&](const std::string &) { tela.Solta(); });
        tela.Liga(lista->AntesDeRemoverItem(), [&](std::int32_t &) { tela.Solta(); });
        tela.Anota(lista->DepoisDeRemoverItem(), "Depois");
        EXPECT_TRUE(lista->EscolheMenu(chave));
        EXPECT_TRUE(tela.Form.Nada());
    }
}

TEST_F(ztListTest, ItemMenu_KeptLongerThanItsList_CanStillBeWritten)
{
    Ref<IItemMenu> item;
    {
        Tela tela;
        item = tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista"))->ItemMenu("mnuZTLObjNovo");
    }
    item->DefineEnabled(false);
    EXPECT_FALSE(item->Enabled());
}

} // namespace
