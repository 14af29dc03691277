#include "windows/screen/RenderEndereco.h"

#include "controls/CommandButton.h"
#include "controls/ztEndereco.h"
#include "tests/tela/RuasDeTeste.h"
#include "tests/windows/Entradas.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/Enumera.h"

namespace nativo {

namespace {

using Textos = std::vector<std::string>;

class RenderEnderecoTest : public TelaDeTeste {
  protected:
    void AbreEndereco(AjustesZtEndereco ajustes = {})
    {
        camada->Logradouros = comRuas ? Novo<RuasDeTeste>() : Ref<ILogradouros>();
        const Peca cancela = {.Ajustes = AjustesCommandButton{.Default = true, .Cancel = true}, .Nome = "ok"};
        Abre(EmColuna({{.Ajustes = ajustes, .Nome = "endereco"}, cancela}));
        endereco = Controle<ztEndereco>("endereco");
        m_Aperto = Controle<CommandButton>("ok")->Click().liga([this] { ++apertos; });
    }
    void TearDown() override
    {
        m_Aperto.desliga();
        endereco = nullptr;
        camada->Logradouros = nullptr;
        TelaDeTeste::TearDown();
    }
    HWND De(Parte parte) const { return Janela().DoControle(*endereco)->JanelaDe(parte); }
    std::string Visto(Parte parte) const { return TextoDe(De(parte)); }
    Parte ParteDoTeclado() const { return Janela().DoControle(*endereco)->ParteComTeclado().value_or(Parte::Todo); }
    // The streets offered below the field; none while they are not.
    HWND Sugestoes() const
    {
        HWND lista = nullptr;
        for (const HWND janela : JanelasDesteFio()) {
            wchar_t classe[20]{};
            GetClassNameW(janela, classe, 20);
            if (std::wstring_view(classe) == WC_LISTBOXW && IsWindowVisible(janela)) {
                lista = janela;
            }
        }
        return lista;
    }
    Textos Oferecidas() const
    {
        Textos linhas;
        const HWND lista = Sugestoes();
        const int quantas = lista == nullptr ? 0 : static_cast<int>(SendMessageW(lista, LB_GETCOUNT, 0, 0));
        for (int linha = 0; linha < quantas; ++linha) {
            wchar_t texto[200]{};
            SendMessageW(lista, LB_GETTEXT, static_cast<WPARAM>(linha), reinterpret_cast<LPARAM>(texto));
            linhas.push_back(ParaUtf8(texto));
        }
        return linhas;
    }
    void Clica(HWND janela)
    {
        Entradas().Clica(janela).Envia();
        Roda();
    }
    void EscolheCanoas()
    {
        Tecla(VK_TAB, {VK_SHIFT});
        if (ParteDoTeclado() != Parte::Municipio) {
            Janela().LevaTeclado(De(Parte::Municipio));
            Roda();
        }
        Digita(L"can");
        Tecla(VK_TAB);
    }
    // The text of what is said of the address now.
    std::string EmPalavras() const
    {
        for (HWND filha = GetWindow(Manipulador(), GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
            if (GetWindow(filha, GW_HWNDPREV) == De(Parte::Limpar)) {
                return TextoDe(filha);
            }
        }
        return "?";
    }

    bool comRuas = true;
    Ref<ztEndereco> endereco;
    int apertos = 0;

  private:
    Conexao m_Aperto;
};

TEST_F(RenderEnderecoTest, Parts_AreNamedByTheLabelsBeforeThem)
{
    AbreEndereco();
    const auto antes = [&](Parte parte) { return TextoDe(GetWindow(De(parte), GW_HWNDPREV)); };
    EXPECT_EQ(antes(Parte::Municipio), "Município:");
    EXPECT_EQ(antes(Parte::Via), "Logradouro ou CEP:");
    EXPECT_EQ(antes(Parte::Numero), "Número:");
    EXPECT_EQ(antes(Parte::Complemento), "Complemento:");
    EXPECT_EQ(Visto(Parte::Usar), "&Usar endereço");
    EXPECT_EQ(Visto(Parte::Limpar), "&Limpar");
}

TEST_F(RenderEnderecoTest, Municipality_IsFoundByTyping)
{
    AbreEndereco();
    Janela().LevaTeclado(De(Parte::Municipio));
    Roda();
    EXPECT_EQ(SendMessageW(De(Parte::Municipio), CB_GETCOUNT, 0, 0), 3);
    Digita(L"ag");
    EXPECT_EQ(SendMessageW(De(Parte::Municipio), CB_GETCURSEL, 0, 0), 2); // Água Santa
    Tecla(VK_HOME);                                                       // Erebango, and the next key begins anew
    Digita(L"c");
    EXPECT_EQ(SendMessageW(De(Parte::Municipio), CB_GETCURSEL, 0, 0), 1); // Canoas
}

TEST_F(RenderEnderecoTest, Street_Typed_IsOfferedAndTakenWithTheKeys)
{
    AbreEndereco();
    EscolheCanoas();
    EXPECT_EQ(ParteDoTeclado(), Parte::Via);
    EXPECT_FALSE(IsWindowEnabled(De(Parte::Usar)));
    Digita(L"bent");
    EXPECT_EQ(Oferecidas(), (Textos{"Rua Bento - Centro - 92000-010", "Rua Benta - Norte - 92000-020"}));
    Tecla(VK_DOWN);
    Tecla(VK_DOWN);
    Tecla(VK_RETURN);
    EXPECT_EQ(apertos, 0);
    EXPECT_EQ(Sugestoes(), nullptr);
    EXPECT_EQ(Visto(Parte::Via), "Rua Benta - Norte - 92000-020");
    EXPECT_EQ(ParteDoTeclado(), Parte::Numero);
    Digita(L"1x2");
    EXPECT_EQ(Visto(Parte::Numero), "12");
    Tecla(VK_TAB);
    Digita(L"fundos");
    EXPECT_TRUE(IsWindowEnabled(De(Parte::Usar)));
    Tecla(VK_TAB);
    EXPECT_EQ(ParteDoTeclado(), Parte::Usar);
    Tecla(VK_RETURN);
    EXPECT_EQ(apertos, 0);
    EXPECT_EQ(endereco->EnderecoProprio()->CodLogradouro(), 2);
    EXPECT_EQ(endereco->EnderecoProprio()->Numero(), 12);
    EXPECT_EQ(endereco->EnderecoProprio()->Complemento(), "fundos");
    EXPECT_EQ(EmPalavras(), endereco->EnderecoProprio()->DescricaoEndereco());
}

TEST_F(RenderEnderecoTest, Streets_Offered_GoWhenTheWindowMovesOrChangesItsSize)
{
    AbreEndereco();
    EscolheCanoas();
    RECT lugar{};
    GetWindowRect(Manipulador(), &lugar);
    for (const UINT como : {SWP_NOSIZE, SWP_NOMOVE}) {
        Digita(L"bent");
        ASSERT_NE(Sugestoes(), nullptr);
        SetWindowPos(Manipulador(), nullptr, lugar.left + 7, lugar.top + 7, lugar.right - lugar.left + 20,
                     lugar.bottom - lugar.top + 20, como | SWP_NOZORDER);
        EXPECT_EQ(Sugestoes(), nullptr);
        Tecla(VK_HOME);
        Tecla(VK_END, {VK_SHIFT});
    }
}

TEST_F(RenderEnderecoTest, Street_OfferedAndClicked_IsTaken)
{
    AbreEndereco();
    EscolheCanoas();
    Digita(L"bent");
    ASSERT_NE(Sugestoes(), nullptr);
    RECT primeira{};
    SendMessageW(Sugestoes(), LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&primeira));
    Entradas().Clica(Sugestoes(), {10, (primeira.top + primeira.bottom) / 2}).Envia();
    Roda();
    EXPECT_EQ(Visto(Parte::Via), "Rua Bento - Centro - 92000-010");
    EXPECT_EQ(ParteDoTeclado(), Parte::Numero);
    EXPECT_EQ(Sugestoes(), nullptr);
}

TEST_F(RenderEnderecoTest, Offer_GoesWithEscAndWithTheKeyboard)
{
    AbreEndereco();
    EscolheCanoas();
    Digita(L"rua");
    ASSERT_EQ(Oferecidas().size(), 2U);
    Tecla(VK_ESCAPE);
    EXPECT_EQ(Sugestoes(), nullptr);
    EXPECT_EQ(apertos, 0);
    EXPECT_EQ(Visto(Parte::Via), "rua");
    Tecla(VK_DOWN);
    EXPECT_NE(Sugestoes(), nullptr);
    Tecla(VK_TAB);
    EXPECT_EQ(Sugestoes(), nullptr);
    EXPECT_EQ(ParteDoTeclado(), Parte::Numero);
    Janela().LevaTeclado(De(Parte::Via));
    Roda();
    Tecla(VK_RETURN); // nothing is offered: the form's
    EXPECT_EQ(apertos, 1);
}

TEST_F(RenderEnderecoTest, Offer_IsNoPlaceForTheKeyboard)
{
    AbreEndereco();
    EscolheCanoas();
    Digita(L"rua");
    const HWND lista = Sugestoes();
    ASSERT_NE(lista, nullptr);
    EXPECT_EQ(SendMessageW(lista, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
    EXPECT_EQ(ParteDoTeclado(), Parte::Via);
    RECT via{};
    RECT lugar{};
    GetWindowRect(De(Parte::Via), &via);
    GetWindowRect(lista, &lugar);
    EXPECT_TRUE(lugar.top == via.bottom || lugar.bottom == via.top);
    janelas->TiraTodas();
    EXPECT_FALSE(IsWindow(lista));
}

TEST_F(RenderEnderecoTest, Clear_EmptiesTheAddressAndTheFields)
{
    AbreEndereco();
    EscolheCanoas();
    Digita(L"brasil");
    Clica(De(Parte::Usar)); // the only street found need not be chosen
    EXPECT_EQ(endereco->EnderecoProprio()->CodLogradouro(), 3);
    Clica(De(Parte::Limpar));
    EXPECT_EQ(endereco->EnderecoProprio()->CodLogradouro(), 0);
    EXPECT_EQ(Visto(Parte::Via), "");
    EXPECT_EQ(EmPalavras(), "Nenhum endereço escolhido.");
    EXPECT_FALSE(IsWindowEnabled(De(Parte::Usar)));
}

TEST_F(RenderEnderecoTest, Address_OfTheForm_IsShownInTheFields)
{
    AbreEndereco();
    endereco->Endereco()->SetaEndereco(Canoas, 2, 77, "casa", "92000020", "", 0);
    Roda();
    EXPECT_EQ(Visto(Parte::Via), "Rua Benta - Norte - 92000-020");
    EXPECT_EQ(Visto(Parte::Numero), "77");
    EXPECT_EQ(Visto(Parte::Complemento), "casa");
    EXPECT_EQ(SendMessageW(De(Parte::Municipio), CB_GETCURSEL, 0, 0), 1);
}

TEST_F(RenderEnderecoTest, ReadOnly_ShowsWithoutButtons)
{
    AbreEndereco();
    endereco->DefineReadOnly(true);
    Roda();
    for (const Parte parte : {Parte::Via, Parte::Numero, Parte::Complemento}) {
        EXPECT_NE(GetWindowLongPtrW(De(parte), GWL_STYLE) & ES_READONLY, 0);
    }
    EXPECT_FALSE(IsWindowEnabled(De(Parte::Municipio)));
    EXPECT_FALSE(IsWindowVisible(De(Parte::Usar)));
    EXPECT_FALSE(IsWindowVisible(De(Parte::Limpar)));
    Janela().LevaTeclado(De(Parte::Via));
    Roda();
    Digita(L"rua");
    EXPECT_EQ(Visto(Parte::Via), "");
    EXPECT_EQ(Sugestoes(), nullptr);
}

TEST_F(RenderEnderecoTest, Application_WithoutStreets_HasTheFieldsAllTheSame)
{
    comRuas = false;
    AbreEndereco();
    EXPECT_EQ(SendMessageW(De(Parte::Municipio), CB_GETCOUNT, 0, 0), 0);
    Janela().LevaTeclado(De(Parte::Via));
    Roda();
    Digita(L"rua");
    EXPECT_EQ(Visto(Parte::Via), "rua");
    EXPECT_EQ(Sugestoes(), nullptr);
}

} // namespace

} // namespace nativo
