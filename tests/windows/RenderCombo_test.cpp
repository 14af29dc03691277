#include "windows/screen/RenderCombo.h"

#include "controls/CommandButton.h"
#include "controls/ztCombo.h"
#include "tests/windows/Entradas.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"

namespace nativo {

namespace {

class RenderComboTest : public TelaDeTeste {
  protected:
    void AbreCombo(const std::vector<std::string> &itens, AjustesZtCombo ajustes = {.ColunaValor = -1})
    {
        const Peca campo = {.Ajustes = AjustesTextBox{}, .Nome = "antes", .Caracteres = 10};
        const Peca padrao = {.Ajustes = AjustesCommandButton{.Default = true, .Cancel = true}, .Nome = "ok"};
        Abre(EmColuna({campo, {.Ajustes = ajustes, .Nome = "combo"}, padrao}));
        combo = Controle<ztCombo>("combo");
        for (const std::string &item : itens) {
            combo->AdicionaItem(item);
        }
        m_Cliques = combo->Click().liga([this] { escolhidos.push_back(combo->Texto()); });
        m_Padrao = Controle<CommandButton>("ok")->Click().liga([this] { ++apertos; });
        Roda();
    }
    void TearDown() override
    {
        m_Cliques.desliga();
        m_Padrao.desliga();
        combo = nullptr;
        TelaDeTeste::TearDown();
    }
    HWND Caixa() const { return Filha("combo"); }
    int Pergunta(UINT mensagem, WPARAM w = 0) const { return static_cast<int>(SendMessageW(Caixa(), mensagem, w, 0)); }
    bool Aberto() const { return Pergunta(CB_GETDROPPEDSTATE) != 0; }
    // What the person sees in it.
    std::string Visto() const
    {
        const int atual = Pergunta(CB_GETCURSEL);
        return atual < 0 ? "" : Item(atual);
    }
    std::string Item(int qual) const
    {
        std::wstring texto(static_cast<std::size_t>(Pergunta(CB_GETLBTEXTLEN, static_cast<WPARAM>(qual))), L'\0');
        SendMessageW(Caixa(), CB_GETLBTEXT, static_cast<WPARAM>(qual), reinterpret_cast<LPARAM>(texto.data()));
        return ParaUtf8(texto);
    }
    void Clica()
    {
        Entradas().Clica(Caixa()).Envia();
        Roda();
    }

    Ref<ztCombo> combo;
    std::vector<std::string> escolhidos;
    int apertos = 0;

  private:
    Conexao m_Cliques;
    Conexao m_Padrao;
};

using Textos = std::vector<std::string>;

TEST_F(RenderComboTest, Items_AndChoice_FollowTheControl)
{
    AbreCombo({"Bagé", "Canoas"});
    EXPECT_EQ(Pergunta(CB_GETCOUNT), 2);
    EXPECT_EQ(Visto(), "");
    combo->AdicionaItem("Água Santa");
    combo->DefineIndiceAtual(2);
    EXPECT_EQ(Pergunta(CB_GETCOUNT), 3);
    EXPECT_EQ(Visto(), "Água Santa");
    combo->DefineIndiceAtual(-1);
    EXPECT_EQ(Visto(), "");
    combo->DefineIndiceAtual(0);
    combo->Limpa();
    EXPECT_EQ(Pergunta(CB_GETCOUNT), 0);
    combo->AdicionaItem("Outro");
    EXPECT_EQ(Item(0), "Outro");
    EXPECT_EQ(Visto(), "");
}

TEST_F(RenderComboTest, Items_ByTheThousand_AreAllOffered)
{
    std::vector<std::string> itens;
    for (int item = 0; item < 6000; ++item) {
        itens.push_back("Item " + std::to_string(item));
    }
    AbreCombo(itens);
    EXPECT_EQ(Pergunta(CB_GETCOUNT), 6000);
    EXPECT_EQ(Item(5999), "Item 5999");
    combo->DefineIndiceAtual(5999);
    EXPECT_EQ(Visto(), "Item 5999");
}

TEST_F(RenderComboTest, Letters_InACombo_GoToTheNextItemThatBeginsSo)
{
    AbreCombo({"Bagé", "Canoas", "Água Santa", "Caxias"});
    Tecla(VK_TAB);
    Digita(L"c");
    EXPECT_EQ(Visto(), "Canoas");
    Digita(L"c");
    EXPECT_EQ(Visto(), "Caxias");
    Digita(L"C");
    EXPECT_EQ(Visto(), "Canoas");
    Tecla(VK_HOME); // Bagé, and the next letter begins anew
    Digita(L"a");
    EXPECT_EQ(Visto(), "Água Santa");
    Digita(L"x");
    EXPECT_EQ(Visto(), "Água Santa");
    EXPECT_EQ(escolhidos, (Textos{"Canoas", "Caxias", "Canoas", "Bagé", "Água Santa"}));
}

TEST_F(RenderComboTest, Letters_InAComboThatSearches_AreOneWord)
{
    AbreCombo({"Bagé", "Canoas", "Água Santa", "Caxias do Sul", "Caxambu do Norte"},
              {.ColunaValor = -1, .PesquisaAoDigitar = true});
    Tecla(VK_TAB);
    Digita(L"caxi");
    EXPECT_EQ(Visto(), "Caxias do Sul");
    Digita(L"zas do");
    EXPECT_EQ(Visto(), "Caxias do Sul");
    EXPECT_EQ(combo->Pesquisa().Procurado(), "caxias do");
    Tecla(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(combo->Pesquisa().Procurado(), "");
    Tecla(VK_TAB);
    Digita(L"\u00e1");
    EXPECT_EQ(Visto(), "Água Santa");
}

TEST_F(RenderComboTest, Arrows_WhileItIsClosed_ChooseEachItem)
{
    AbreCombo({"A", "B", "C"});
    Tecla(VK_TAB);
    Tecla(VK_DOWN);
    Tecla(VK_DOWN);
    Tecla(VK_UP);
    Tecla(VK_END);
    Tecla(VK_DOWN);
    Tecla(VK_HOME);
    EXPECT_EQ(escolhidos, (Textos{"A", "B", "A", "C", "A"}));
    EXPECT_EQ(combo->IndiceAtual(), 0);
}

TEST_F(RenderComboTest, OpenList_ChoosesOnlyWhatIsTakenOutOfIt)
{
    AbreCombo({"A", "B", "C"});
    Tecla(VK_TAB);
    Tecla(VK_F4);
    ASSERT_TRUE(Aberto());
    Tecla(VK_DOWN);
    Tecla(VK_DOWN);
    EXPECT_EQ(escolhidos, Textos());
    Tecla(VK_RETURN);
    EXPECT_FALSE(Aberto());
    EXPECT_EQ(escolhidos, Textos{"B"});
    EXPECT_EQ(apertos, 0);
    Tecla(VK_RETURN); // closed: the form's
    EXPECT_EQ(apertos, 1);
}

TEST_F(RenderComboTest, OpenList_LeftWithEsc_ChoosesNothing)
{
    AbreCombo({"A", "B", "C"});
    combo->DefineIndiceAtual(0);
    escolhidos.clear();
    Tecla(VK_TAB);
    Tecla(VK_DOWN, {VK_MENU});
    ASSERT_TRUE(Aberto());
    Tecla(VK_DOWN);
    Tecla(VK_ESCAPE);
    EXPECT_FALSE(Aberto());
    EXPECT_EQ(Visto(), "A");
    EXPECT_EQ(escolhidos, Textos());
    EXPECT_EQ(apertos, 0);
}

TEST_F(RenderComboTest, OpenList_LeftForAnotherField_ChoosesNothing)
{
    AbreCombo({"A", "B", "C"});
    Clica();
    ASSERT_TRUE(Aberto());
    Tecla(VK_DOWN);
    Tecla(VK_TAB, {VK_SHIFT});
    EXPECT_FALSE(Aberto());
    EXPECT_EQ(Teclado(), "antes");
    EXPECT_EQ(Visto(), "");
    EXPECT_EQ(escolhidos, Textos());
}

TEST_F(RenderComboTest, Choice_ThatTheFormTurnsBack_IsNotShown)
{
    AbreCombo({"A", "B", "C"});
    combo->DefineIndiceAtual(0);
    const Conexao volta = combo->Change().liga([this] {
        if (combo->IndiceAtual() == 1) {
            combo->DefineIndiceAtual(0);
        }
    });
    Tecla(VK_TAB);
    Tecla(VK_DOWN);
    EXPECT_EQ(Visto(), "A");
    Clica();
    Tecla(VK_DOWN);
    Tecla(VK_RETURN);
    EXPECT_EQ(Visto(), "A");
}

TEST_F(RenderComboTest, Wheel_OverTheClosedCombo_ChoosesNothing)
{
    AbreCombo({"A", "B", "C"});
    combo->DefineIndiceAtual(0);
    escolhidos.clear();
    Tecla(VK_TAB);
    SendMessageW(Caixa(), WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(0, -WHEEL_DELTA)), 0);
    EXPECT_EQ(Visto(), "A");
    EXPECT_EQ(escolhidos, Textos());
}

TEST_F(RenderComboTest, Locked_HasTheKeyboardButNeitherOpensNorChanges)
{
    AbreCombo({"A", "B", "C"});
    combo->DefineIndiceAtual(0);
    combo->DefineComboSomenteLeitura(true);
    escolhidos.clear();
    Roda();
    Clica();
    EXPECT_EQ(Teclado(), "combo");
    EXPECT_FALSE(Aberto());
    for (const WORD tecla : std::initializer_list<WORD>{VK_DOWN, VK_END, VK_NEXT, VK_RIGHT, VK_F4, VK_SPACE}) {
        Tecla(tecla);
        EXPECT_FALSE(Aberto());
    }
    Tecla(VK_DOWN, {VK_MENU});
    Digita(L"b");
    SendMessageW(Caixa(), WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(0, -WHEEL_DELTA)), 0);
    SendMessageW(Caixa(), CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_FALSE(Aberto());
    EXPECT_EQ(Visto(), "A");
    EXPECT_EQ(escolhidos, Textos());
    Tecla(VK_TAB);
    EXPECT_EQ(Teclado(), "ok");
}

TEST_F(RenderComboTest, Disabled_TakesNothing)
{
    AbreCombo({"A", "B"});
    combo->DefineEnabled(false);
    Roda();
    EXPECT_FALSE(IsWindowEnabled(Caixa()));
    Tecla(VK_TAB);
    EXPECT_EQ(Teclado(), "ok");
}

TEST_F(RenderComboTest, Field_IsAsHighAsItsPlace)
{
    AbreCombo({"A", "B"});
    RECT campo{};
    RECT caixa{};
    GetWindowRect(Filha("antes"), &campo);
    GetWindowRect(Caixa(), &caixa);
    EXPECT_EQ(caixa.bottom - caixa.top, campo.bottom - campo.top);
}

} // namespace

} // namespace nativo
