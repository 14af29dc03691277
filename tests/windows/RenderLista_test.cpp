#include "windows/screen/RenderLista.h"

#include "controls/ztList.h"
#include "host/TabelaTexto.h"
#include "tests/windows/Entradas.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/Enumera.h"

namespace nativo {

namespace {

using Textos = std::vector<std::string>;

class RenderListaTest : public TelaDeTeste {
  protected:
    // Three columns, of which the second is not seen.
    void AbreLista(std::int32_t linhas, AjustesZtList ajustes = {}, std::vector<Peca> criterios = {})
    {
        Peca peca = {.Ajustes = ajustes, .Nome = "lista", .Elastica = true, .Pecas = std::move(criterios)};
        const Peca outro = {.Ajustes = AjustesTextBox{}, .Nome = "outro", .Caracteres = 10};
        Peca raiz = EmColuna({outro, peca});
        Abre(raiz);
        lista = Controle<ztList>("lista");
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", 1500, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Interno", 3000, 0, "", false);
        lista->AdicionaColuna(3, std::nullopt, "Descrição", 1200, 0, "", true);
        Enche(linhas);
        clicadas.clear();
        m_Cliques = lista->ItemClick().liga([this] { clicadas.push_back(lista->ItemAtual()); });
        m_Menu = lista->ItemMenuClicado().liga([this](const std::string &chave) { escolhidos.push_back(chave); });
        Roda();
    }
    void TearDown() override
    {
        m_Cliques.desliga();
        m_Menu.desliga();
        lista = nullptr;
        TelaDeTeste::TearDown();
    }
    void Enche(std::int32_t linhas)
    {
        TabelaTexto tabela(3);
        for (std::int32_t linha = 1; linha <= linhas; ++linha) {
            const std::int32_t nova = tabela.AdicionaLinha();
            tabela.Celula(1, nova) = "C" + std::to_string(linha);
            tabela.Celula(2, nova) = "oculto";
            tabela.Celula(3, nova) = "ção " + std::to_string(linhas - linha);
        }
        lista->CarregaItens(tabela);
        Roda();
    }
    HWND De(Parte parte) const { return Janela().DoControle(*lista)->JanelaDe(parte); }
    HWND Linhas() const { return De(Parte::Linhas); }
    HWND Titulos() const { return reinterpret_cast<HWND>(SendMessageW(Linhas(), LVM_GETHEADER, 0, 0)); }
    // What the platform's list shows.
    std::string Celula(int linha, int coluna) const
    {
        wchar_t texto[300]{};
        LVITEMW item{};
        item.iSubItem = coluna;
        item.pszText = texto;
        item.cchTextMax = 300;
        SendMessageW(Linhas(), LVM_GETITEMTEXTW, static_cast<WPARAM>(linha), reinterpret_cast<LPARAM>(&item));
        return ParaUtf8(texto);
    }
    int Quantas() const { return static_cast<int>(SendMessageW(Linhas(), LVM_GETITEMCOUNT, 0, 0)); }
    // The row that is chosen, from 1; 0 for none, and -1 when it is another one that has the frame of the keyboard.
    int Escolhida() const
    {
        const auto escolhida = SendMessageW(Linhas(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
        const auto comMoldura = SendMessageW(Linhas(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
        return escolhida == comMoldura ? static_cast<int>(escolhida) + 1 : -1;
    }
    POINT Meio(int linha) const
    {
        RECT lugar{};
        lugar.left = LVIR_LABEL;
        SendMessageW(Linhas(), LVM_GETITEMRECT, static_cast<WPARAM>(linha - 1), reinterpret_cast<LPARAM>(&lugar));
        return {(lugar.left + lugar.right) / 2, (lugar.top + lugar.bottom) / 2};
    }
    bool NaVista(int linha) const
    {
        RECT dentro{};
        GetClientRect(Linhas(), &dentro);
        const POINT meio = Meio(linha);
        return meio.y > 0 && meio.y < dentro.bottom;
    }
    void Faz(Entradas &entradas)
    {
        entradas.Envia();
        Roda();
    }
    // The buttons of the side bar that are seen, from above; those that cannot be used in brackets.
    Textos Barra() const
    {
        std::map<LONG, std::string> botoes;
        for (HWND filha = GetWindow(Manipulador(), GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
            wchar_t classe[20]{};
            GetClassNameW(filha, classe, 20);
            RECT lugar{};
            GetWindowRect(filha, &lugar);
            if (std::wstring_view(classe) == L"Button" && IsWindowVisible(filha) && filha != De(Parte::Localizar) &&
                filha != De(Parte::MaisRegistros)) {
                const std::string texto = TextoDe(filha);
                botoes[lugar.top] = IsWindowEnabled(filha) ? texto : "(" + texto + ")";
            }
        }
        Textos textos;
        for (const auto &[acima, texto] : botoes) {
            textos.push_back(texto);
        }
        return textos;
    }
    HWND Botao(const std::string &texto) const
    {
        for (HWND filha = GetWindow(Manipulador(), GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
            if (TextoDe(filha) == texto && IsWindowVisible(filha)) {
                return filha;
            }
        }
        return nullptr;
    }

    Ref<ztList> lista;
    std::vector<std::int32_t> clicadas;
    Textos escolhidos;

  private:
    Conexao m_Cliques;
    Conexao m_Menu;
};

TEST_F(RenderListaTest, Rows_OfALongList_AreAskedForWhenTheyAreSeen)
{
    AbreLista(30000);
    EXPECT_EQ(Quantas(), 30000);
    EXPECT_EQ(Celula(0, 0), "C1");
    EXPECT_EQ(Celula(29999, 0), "C30000");
    EXPECT_EQ(Celula(29999, 1), "ção 0"); // the one that is not seen is left out
    Enche(70000);
    EXPECT_EQ(Quantas(), 100000);
    EXPECT_EQ(Celula(99999, 0), "C70000");
    lista->Limpa(std::nullopt);
    EXPECT_EQ(Quantas(), 0);
}

TEST_F(RenderListaTest, Cell_LongerThanThePlatformAsksFor_IsShownWhole)
{
    AbreLista(0);
    TabelaTexto tabela(3);
    const std::int32_t linha = tabela.AdicionaLinha();
    tabela.Celula(1, linha) = std::string(280, 'x');
    lista->CarregaItens(tabela);
    EXPECT_EQ(Celula(0, 0), std::string(280, 'x'));
    EXPECT_EQ(Celula(0, 1), "");
}

TEST_F(RenderListaTest, Columns_AreThoseSeen_AsWideAsDescribedAndTheLastOneTheRest)
{
    AbreLista(3);
    ASSERT_EQ(SendMessageW(Titulos(), HDM_GETITEMCOUNT, 0, 0), 2);
    wchar_t titulo[50]{};
    LVCOLUMNW coluna{};
    coluna.mask = LVCF_TEXT;
    coluna.pszText = titulo;
    coluna.cchTextMax = 50;
    SendMessageW(Linhas(), LVM_GETCOLUMNW, 1, reinterpret_cast<LPARAM>(&coluna));
    EXPECT_EQ(ParaUtf8(titulo), "Descrição");
    const auto largura = [&](WPARAM qual) {
        return static_cast<int>(SendMessageW(Linhas(), LVM_GETCOLUMNWIDTH, qual, 0));
    };
    EXPECT_EQ(largura(0), 1500 / 15 + 12);
    RECT dentro{};
    GetClientRect(Linhas(), &dentro);
    EXPECT_EQ(largura(0) + largura(1), dentro.right);
    SetWindowPos(Manipulador(), nullptr, 0, 0, 900, 500, SWP_NOMOVE | SWP_NOZORDER);
    Roda();
    const int antes = dentro.right;
    GetClientRect(Linhas(), &dentro);
    EXPECT_GT(dentro.right, antes);
    EXPECT_EQ(largura(0) + largura(1), dentro.right);
    Enche(5000); // which brings a scroll bar
    GetClientRect(Linhas(), &dentro);
    EXPECT_EQ(largura(0) + largura(1), dentro.right);
}

TEST_F(RenderListaTest, Column_WithATitleWiderThanItself_ShowsTheTitleWhole)
{
    AbreLista(1);
    lista->AlteraPrimeiraColuna(1, std::nullopt, "Um título que é longo", 150, 0, "", true);
    const int titulo = Janela().Escrita().Medida(Janela().Escrita().Mede("Um título que é longo", 0).Largura);
    EXPECT_GE(SendMessageW(Linhas(), LVM_GETCOLUMNWIDTH, 0, 0), titulo);
}

TEST_F(RenderListaTest, Heading_Clicked_SortsAndShowsTheArrow)
{
    AbreLista(3);
    const auto seta = [&](WPARAM coluna) {
        HDITEMW titulo{};
        titulo.mask = HDI_FORMAT;
        SendMessageW(Titulos(), HDM_GETITEMW, coluna, reinterpret_cast<LPARAM>(&titulo));
        return titulo.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    };
    RECT lugar{};
    SendMessageW(Titulos(), HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&lugar));
    const POINT descricao = {(lugar.left + lugar.right) / 2, (lugar.top + lugar.bottom) / 2};
    lista->DefineItemAtual(1);
    Faz(Entradas().Clica(Titulos(), descricao));
    EXPECT_EQ(lista->ColunaOrdem(), 3);
    EXPECT_EQ(Celula(0, 1), "ção 0");
    EXPECT_EQ(seta(0), 0);
    EXPECT_EQ(seta(1), HDF_SORTUP);
    EXPECT_EQ(Escolhida(), 3);                                         // the row itself, where it has gone
    Faz(Entradas().Clica(Titulos(), {descricao.x + 20, descricao.y})); // no double click
    EXPECT_TRUE(lista->OrdemDecrescente());
    EXPECT_EQ(Celula(0, 1), "ção 2");
    EXPECT_EQ(seta(1), HDF_SORTDOWN);
    EXPECT_EQ(Escolhida(), 1);
}

TEST_F(RenderListaTest, Row_MadeCurrentByTheForm_IsChosenAndBroughtIntoView)
{
    AbreLista(30000);
    EXPECT_EQ(Escolhida(), 0);
    lista->DefineItemAtual(29000);
    EXPECT_EQ(Escolhida(), 29000);
    EXPECT_TRUE(NaVista(29000));
    lista->DefineItemAtual(-1);
    EXPECT_EQ(Escolhida(), 0);
}

TEST_F(RenderListaTest, Row_Clicked_IsTheOnlyOneMadeCurrent)
{
    AbreLista(5);
    Faz(Entradas().Clica(Linhas(), Meio(3)));
    EXPECT_EQ(clicadas, std::vector<std::int32_t>{3});
    EXPECT_EQ(Escolhida(), 3);
    EXPECT_EQ(Teclado(), "lista");
    RECT dentro{};
    GetClientRect(Linhas(), &dentro);
    Faz(Entradas().Clica(Linhas(), {10, dentro.bottom - 5})); // below the rows
    EXPECT_EQ(Escolhida(), 3);
}

TEST_F(RenderListaTest, List_GivenTheKeyboard_MakesItsFirstRowCurrent)
{
    AbreLista(5);
    Tecla(VK_TAB);
    EXPECT_EQ(Teclado(), "lista");
    EXPECT_EQ(Escolhida(), 1);
    EXPECT_EQ(clicadas, std::vector<std::int32_t>{1});
}

TEST_F(RenderListaTest, Keys_LeadThroughTheRows)
{
    AbreLista(1000);
    Tecla(VK_TAB);
    Tecla(VK_DOWN);
    EXPECT_EQ(Escolhida(), 2);
    Tecla(VK_END);
    EXPECT_EQ(Escolhida(), 1000);
    EXPECT_TRUE(NaVista(1000));
    Tecla(VK_UP);
    EXPECT_EQ(Escolhida(), 999);
    Tecla(VK_HOME);
    EXPECT_EQ(Escolhida(), 1);
    Tecla(VK_UP);
    EXPECT_EQ(Escolhida(), 1);
    const auto pagina = static_cast<int>(SendMessageW(Linhas(), LVM_GETCOUNTPERPAGE, 0, 0));
    ASSERT_GT(pagina, 1);
    Tecla(VK_NEXT);
    EXPECT_EQ(Escolhida(), 1 + pagina);
    Tecla(VK_PRIOR);
    EXPECT_EQ(Escolhida(), 1);
    EXPECT_EQ(lista->ItemAtual(), 1);
}

TEST_F(RenderListaTest, Keys_ThatOnlyThePlatformKnows_LeaveTheRow)
{
    AbreLista(100);
    Tecla(VK_TAB);
    Tecla(VK_DOWN);
    Digita(L"C7 ");
    Tecla(VK_SPACE, {VK_CONTROL});
    Tecla(VK_LEFT);
    Tecla(VK_RIGHT);
    EXPECT_EQ(Escolhida(), 2);
    EXPECT_EQ(lista->ItemAtual(), 2);
}

TEST_F(RenderListaTest, Keys_InAnEmptyList_DoNothing)
{
    AbreLista(0);
    Tecla(VK_TAB);
    for (const WORD tecla : std::initializer_list<WORD>{VK_DOWN, VK_UP, VK_END, VK_HOME, VK_NEXT, VK_PRIOR}) {
        Tecla(tecla);
    }
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(clicadas, std::vector<std::int32_t>());
}

TEST_F(RenderListaTest, Row_ChosenByAScreenReader_BecomesCurrent)
{
    AbreLista(5);
    LVITEMW estado{};
    estado.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    estado.state = estado.stateMask;
    SendMessageW(Linhas(), LVM_SETITEMSTATE, 3, reinterpret_cast<LPARAM>(&estado));
    Roda();
    EXPECT_EQ(lista->ItemAtual(), 4);
    EXPECT_EQ(clicadas.back(), 4);
}

TEST_F(RenderListaTest, SideBar_ShowsTheCommandsThatThereAreWithTheirLetters)
{
    AbreLista(2, {.TipoMenu = 2});
    EXPECT_EQ(Barra(), (Textos{"&Novo", "E&ditar", "De&talhes", "E&xcluir", "&Ajuda", "&Fechar"}));
    lista->MenuHabilitado("mnuZTLObjEditar", false);
    lista->MenuVisivel("mnuZTLObjDetalhes", false);
    lista->BotoesFecharAjuda(false);
    Roda();
    EXPECT_EQ(Barra(), (Textos{"&Novo", "(E&ditar)", "E&xcluir"}));
    lista->IncluiItensMenu({{"mnuLimites", "Limites Diferenciados", "Limites\r\nDiferenc.", "Abre os limites", true}});
    Roda();
    EXPECT_EQ(Barra().back(), "Limite&s\nDiferenc."); // as its longer caption says
    RECT limites{};
    RECT novo{};
    GetWindowRect(Botao("Limite&s\nDiferenc."), &limites);
    GetWindowRect(Botao("&Novo"), &novo);
    EXPECT_GT(limites.bottom - limites.top, novo.bottom - novo.top);
}

TEST_F(RenderListaTest, Command_ClickedInTheSideBar_IsChosenAndTheListHasTheKeyboard)
{
    AbreLista(2);
    EXPECT_EQ(Teclado(), "outro");
    Faz(Entradas().Clica(Botao("&Novo")));
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjNovo"});
    EXPECT_EQ(GetFocus(), Linhas());
    lista->MenuHabilitado("mnuZTLObjNovo", false);
    Roda();
    Faz(Entradas().Clica(Botao("&Novo")));
    EXPECT_EQ(escolhidos.size(), 1U);
}

TEST_F(RenderListaTest, Command_PressedAndLetGoBesideIt_IsNotChosen)
{
    AbreLista(2);
    const HWND botao = Botao("&Novo");
    SendMessageW(botao, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_NE(SendMessageW(botao, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(botao, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-20, 5));
    EXPECT_EQ(SendMessageW(botao, BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    SendMessageW(botao, WM_LBUTTONUP, 0, MAKELPARAM(-20, 5));
    EXPECT_EQ(escolhidos, Textos());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(RenderListaTest, Command_ByItsLetterWithAlt_IsChosen)
{
    AbreLista(2);
    Tecla('D', {VK_MENU});
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjEditar"});
}

TEST_F(RenderListaTest, Row_ClickedTwice_IsOpened)
{
    AbreLista(5);
    Faz(Entradas().ClicaDuasVezes(Linhas(), Meio(3)));
    EXPECT_EQ(Escolhida(), 3);
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjEditar"});
    RECT dentro{};
    GetClientRect(Linhas(), &dentro);
    Faz(Entradas().ClicaDuasVezes(Linhas(), {10, dentro.bottom - 5})); // below the rows
    EXPECT_EQ(escolhidos.size(), 1U);
}

TEST_F(RenderListaTest, Row_OfAListThatIsSearchedIn_ShowsItsDetails)
{
    AbreLista(5, {.BarraCriteriosAtiva = true}, {UmQuadro("criterios", {UmCampo("codigo", 10)})});
    Faz(Entradas().ClicaDuasVezes(Linhas(), Meio(2)));
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjDetalhes"});
    Tecla(VK_RETURN);
    EXPECT_EQ(escolhidos, (Textos{"mnuZTLObjDetalhes", "mnuZTLObjDetalhes"}));
}

TEST_F(RenderListaTest, Row_OpenedByAListThatGoesWithIt_LeavesNothingBehind)
{
    AbreLista(2);
    const Conexao fecha =
        lista->ItemMenuClicado().liga([this](const std::string &) { janelas->Descarrega(descrito.Form); });
    Faz(Entradas().ClicaDuasVezes(Linhas(), Meio(1)));
    EXPECT_TRUE(camada->Janelas().empty());
}

TEST_F(RenderListaTest, InsertAndDelete_InTheRows_AreTheListsCommands)
{
    AbreLista(4);
    Tecla(VK_INSERT);
    Tecla(VK_DELETE);
    EXPECT_EQ(escolhidos, Textos()); // the keyboard is in another control
    EXPECT_EQ(Quantas(), 4);
    Tecla(VK_TAB);
    Tecla(VK_RETURN);
    Tecla(VK_INSERT);
    EXPECT_EQ(escolhidos, (Textos{"mnuZTLObjEditar", "mnuZTLObjNovo"}));
    Tecla(VK_DELETE);
    EXPECT_EQ(Quantas(), 3);
    EXPECT_EQ(Celula(0, 0), "C2");
    Tecla(VK_DELETE, {VK_SHIFT});
    Tecla(VK_INSERT, {VK_CONTROL});
    SendMessageW(Linhas(), WM_KEYDOWN, VK_DELETE, static_cast<LPARAM>(KF_REPEAT) << 16); // held
    EXPECT_EQ(Quantas(), 3);
    EXPECT_EQ(escolhidos.size(), 2U);
    lista->MenuHabilitado("mnuZTLObjExcluir", false);
    Tecla(VK_DELETE);
    EXPECT_EQ(Quantas(), 3);
}

TEST_F(RenderListaTest, CriteriaKeys_SearchAndComeBack)
{
    AbreLista(3, {.BarraCriteriosAtiva = true}, {UmQuadro("criterios", {UmCampo("codigo", 10)})});
    int buscas = 0;
    const Conexao envia = lista->BotaoLocalizarEnvia().liga([&] { ++buscas; });
    EXPECT_EQ(Teclado(), "outro");
    Tecla(VK_F5);
    EXPECT_EQ(buscas, 1);
    Tecla('F', {VK_CONTROL});
    EXPECT_EQ(Teclado(), "codigo");
    Digita(L"7");
    EXPECT_EQ(TextoDe(Filha("codigo")), "7");
    Tecla(VK_RETURN);
    EXPECT_EQ(buscas, 2);
    Faz(Entradas().Clica(Linhas(), Meio(2)));
    Tecla('F', {VK_CONTROL});
    EXPECT_EQ(Teclado(), "codigo");
}

TEST_F(RenderListaTest, Menu_ByTheKeys_OffersTheCommands)
{
    AbreLista(3);
    Tecla(VK_TAB);
    Faz(Entradas().Tecla(VK_F10, {VK_SHIFT}).Tecla(VK_DOWN).Tecla(VK_DOWN).Tecla(VK_RETURN));
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjEditar"});
    Faz(Entradas().Tecla(VK_APPS).Tecla('T'));
    EXPECT_EQ(escolhidos, (Textos{"mnuZTLObjEditar", "mnuZTLObjDetalhes"}));
    Faz(Entradas().Tecla(VK_APPS).Tecla(VK_ESCAPE));
    EXPECT_EQ(escolhidos.size(), 2U);
}

TEST_F(RenderListaTest, Menu_ByTheMouse_IsOfTheRowUnderIt)
{
    AbreLista(3);
    Faz(Entradas().Clica(Linhas(), Meio(2), true).Tecla(VK_DOWN).Tecla(VK_RETURN));
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_EQ(escolhidos, Textos{"mnuZTLObjNovo"});
}

TEST_F(RenderListaTest, Menu_SortsByAColumnUnderItsDigit)
{
    AbreLista(3);
    Tecla(VK_TAB);
    Faz(Entradas().Tecla(VK_APPS).Tecla('O').Tecla('2'));
    EXPECT_EQ(lista->ColunaOrdem(), 3);
    EXPECT_EQ(Celula(0, 1), "ção 0");
    EXPECT_EQ(escolhidos, Textos());
}

TEST_F(RenderListaTest, Menu_CommandThatCannotBeUsed_IsNotChosen)
{
    AbreLista(3);
    lista->MenuHabilitado("mnuZTLObjNovo", false);
    Tecla(VK_TAB);
    Faz(Entradas().Tecla(VK_APPS).Tecla('N').Tecla(VK_ESCAPE).Tecla(VK_ESCAPE));
    EXPECT_EQ(escolhidos, Textos());
}

TEST_F(RenderListaTest, OwnButtons_CloseTheWindow)
{
    AbreLista(1);
    Faz(Entradas().Clica(Botao("&Fechar")));
    EXPECT_TRUE(camada->Janelas().empty());
}

TEST_F(RenderListaTest, Title_IsShownAboveTheRowsAsLongAsThereIsOne)
{
    AbreLista(1);
    RECT antes{};
    GetWindowRect(Linhas(), &antes);
    lista->DefineTitulo("Equipamentos & sensores");
    Roda();
    const HWND titulo = Botao("Equipamentos & sensores");
    ASSERT_NE(titulo, nullptr);
    RECT lugar{};
    RECT linhas{};
    GetWindowRect(titulo, &lugar);
    GetWindowRect(Linhas(), &linhas);
    EXPECT_LE(lugar.bottom, linhas.top);
    lista->DefineTitulo("");
    Roda();
    GetWindowRect(Linhas(), &linhas);
    EXPECT_EQ(linhas.top, antes.top);
}

TEST_F(RenderListaTest, MoreRows_AreAskedForByTheirButton)
{
    AbreLista(1);
    EXPECT_FALSE(IsWindowVisible(De(Parte::MaisRegistros)));
    lista->DefineTemMais(true);
    int pedidos = 0;
    const Conexao clique = lista->BotaoClick().liga([&] { ++pedidos; });
    Roda();
    EXPECT_TRUE(IsWindowVisible(De(Parte::MaisRegistros)));
    EXPECT_EQ(TextoDe(De(Parte::MaisRegistros)), "Mais &registros");
    Faz(Entradas().Clica(De(Parte::MaisRegistros)));
    EXPECT_EQ(pedidos, 1);
    Tecla('R', {VK_MENU});
    EXPECT_EQ(pedidos, 2);
}

TEST_F(RenderListaTest, SearchButton_StandsBesideTheCriteriaWhileTheyAreSeen)
{
    AbreLista(1, {.BarraCriteriosAtiva = true}, {UmQuadro("criterios", {UmCampo("codigo", 10)})});
    const HWND localizar = De(Parte::Localizar);
    ASSERT_TRUE(IsWindowVisible(localizar));
    RECT botao{};
    RECT quadro{};
    RECT linhas{};
    GetWindowRect(localizar, &botao);
    GetWindowRect(Filha("criterios"), &quadro);
    GetWindowRect(Linhas(), &linhas);
    EXPECT_GE(botao.left, quadro.right);
    EXPECT_LE(quadro.bottom, linhas.top);
    int buscas = 0;
    const Conexao envia = lista->BotaoLocalizarEnvia().liga([&] { ++buscas; });
    Faz(Entradas().Clica(localizar));
    EXPECT_EQ(buscas, 1);
    lista->BarraCriteriosAtiva(false);
    Roda();
    EXPECT_FALSE(IsWindowVisible(localizar));
    EXPECT_FALSE(IsWindowVisible(Filha("codigo")));
    GetWindowRect(Linhas(), &linhas);
    EXPECT_LT(linhas.top, quadro.bottom);
}

TEST_F(RenderListaTest, SideBar_HigherThanTheList_GoesOnBesideItself)
{
    AbreLista(1);
    std::vector<ItemMenuLista> itens;
    for (int item = 1; item <= 30; ++item) {
        itens.push_back({"mnu" + std::to_string(item), "Comando " + std::to_string(item), "", "", false});
    }
    lista->IncluiItensMenu(itens);
    Roda();
    RECT dentro{};
    GetClientRect(Manipulador(), &dentro);
    for (HWND filha = GetWindow(Manipulador(), GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
        RECT lugar{};
        GetWindowRect(filha, &lugar);
        MapWindowPoints(HWND_DESKTOP, Manipulador(), reinterpret_cast<POINT *>(&lugar), 2);
        if (IsWindowVisible(filha)) {
            EXPECT_LE(lugar.bottom, dentro.bottom) << TextoDe(filha);
        }
    }
}

TEST_F(RenderListaTest, Window_OpenedAThousandTimes_LeavesNoWindowBehind)
{
    const Peca raiz = EmColuna({{.Ajustes = AjustesZtCombo{.Conteudo = "A|1??B|2??"}, .Nome = "combo"},
                                {.Ajustes = AjustesZtEndereco{}, .Nome = "endereco"},
                                {.Ajustes = AjustesZtClienteSetor{}, .Nome = "cliente"},
                                {.Ajustes = AjustesZtList{}, .Nome = "lista"}});
    const auto conta = [&] {
        return std::vector<DWORD>{GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS),
                                  GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS),
                                  static_cast<DWORD>(JanelasDesteFio().size())};
    };
    const auto abreEFecha = [&] {
        Abre(raiz);
        janelas->Descarrega(descrito.Form);
        Roda();
    };
    abreEFecha(); // what the system keeps from the first time
    const std::vector<DWORD> antes = conta();
    for (int vez = 0; vez < 1000; ++vez) {
        abreEFecha();
    }
    EXPECT_EQ(conta(), antes);
}

TEST_F(RenderListaTest, Form_UnloadedByACommand_LeavesNothingBehind)
{
    AbreLista(2);
    const Conexao fecha =
        lista->ItemMenuClicado().liga([this](const std::string &) { janelas->Descarrega(descrito.Form); });
    Faz(Entradas().Clica(Botao("&Novo")));
    EXPECT_TRUE(camada->Janelas().empty());
}

TEST_F(RenderListaTest, AparenciaDoSistema_DeixaAsColunasComoAPessoaAsFez)
{
    AbreLista(3);
    SendMessageW(Linhas(), LVM_SETCOLUMNWIDTH, 0, 222);
    SendMessageW(Manipulador(), WM_SETTINGCHANGE, 0, 0);
    SendMessageW(Manipulador(), WM_SYSCOLORCHANGE, 0, 0);
    Roda();
    EXPECT_EQ(SendMessageW(Linhas(), LVM_GETCOLUMNWIDTH, 0, 0), 222);
}

} // namespace

} // namespace nativo
