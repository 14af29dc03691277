#include "windows/screen/CamadaWindows.h"

#include "tests/windows/Fotografia.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/Enumera.h"

#include <commctrl.h>

namespace nativo {

namespace {

class CamadaWindowsTest : public TelaDeTeste {
  protected:
    void SetUp() override
    {
        TelaDeTeste::SetUp();
        Abre(EmColuna({UmCampo("txtNome", 20)}));
    }

    // Texts of the buttons of a box, with the one that has the keyboard in brackets.
    static std::string Botoes(HWND caixa)
    {
        std::string botoes;
        for (const HWND filha : FilhasDe(caixa)) {
            wchar_t classe[32]{};
            GetClassNameW(filha, classe, 32);
            if (std::wstring(classe) == WC_BUTTONW && IsWindowVisible(filha)) {
                const std::string texto = TextoDe(filha);
                botoes += filha == GetFocus() ? "[" + texto + "]" : texto;
            }
        }
        return botoes;
    }
    // The box is about to go: whether its owner can take its place.
    static LRESULT CALLBACK NoFim(int codigo, WPARAM w, LPARAM l)
    {
        if (codigo == HCBT_DESTROYWND && reinterpret_cast<HWND>(w) == m_Caixa) {
            m_Utilizavel = IsWindowEnabled(m_Dono) != FALSE;
        }
        return CallNextHookEx(nullptr, codigo, w, l);
    }
    static inline HWND m_Caixa = nullptr;
    static inline HWND m_Dono = nullptr;
    static inline bool m_Utilizavel = false;
    // In the box in front.
    void NaCaixa(std::function<void(HWND)> ato) { NaFrente(ClasseDaCaixa, std::move(ato)); }
};

TEST_F(CamadaWindowsTest, Pergunta_TemSimENaoEOPadrao)
{
    std::string botoes;
    NaCaixa([&](HWND caixa) {
        botoes = Botoes(caixa);
        EXPECT_EQ(TextoDe(caixa), "Atenção");
        Fotografa(GetWindow(caixa, GW_OWNER), "pergunta");
        Tecla(VK_RETURN);
    });
    EXPECT_FALSE(janelas->PerguntaSimNao("Confirma a exclusão de 'A & B'?\n\nNão há volta.", "Atenção", false));
    EXPECT_EQ(botoes, "&Sim[&Não]");
    NaCaixa([&](HWND caixa) {
        botoes = Botoes(caixa);
        Tecla(VK_RETURN);
    });
    EXPECT_TRUE(janelas->PerguntaSimNao("Confirma?", "Atenção", true));
    EXPECT_EQ(botoes, "[&Sim]&Não");
}

TEST_F(CamadaWindowsTest, Pergunta_PelaLetra)
{
    NaCaixa([&](HWND) { Tecla('S'); });
    EXPECT_TRUE(janelas->PerguntaSimNao("Confirma?", "Atenção", false));
    NaCaixa([&](HWND) { Tecla('N', {VK_MENU}); });
    EXPECT_FALSE(janelas->PerguntaSimNao("Confirma?", "Atenção", true));
}

TEST_F(CamadaWindowsTest, Pergunta_Fechada_ENao)
{
    NaCaixa([&](HWND) { Tecla(VK_ESCAPE); });
    EXPECT_FALSE(janelas->PerguntaSimNao("Confirma?", "Atenção", true));
    NaCaixa([&](HWND caixa) {
        EXPECT_EQ(GetMenuState(GetSystemMenu(caixa, FALSE), SC_CLOSE, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED), 0U);
        PostMessageW(caixa, WM_CLOSE, 0, 0);
    });
    EXPECT_FALSE(janelas->PerguntaSimNao("Confirma?", "Atenção", true));
}

TEST_F(CamadaWindowsTest, Caixa_DeixaODonoUtilizavelAntesDeSair)
{
    const HWND dono = CreateWindowExW(0, WC_STATICW, L"dono", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                      EsteModulo(), nullptr);
    camada->Principal = [dono] { return dono; };
    m_Dono = dono;
    HHOOK espreita = nullptr;
    NaCaixa([&](HWND caixa) {
        m_Caixa = caixa;
        EXPECT_EQ(GetWindow(caixa, GW_OWNER), dono);
        EXPECT_FALSE(IsWindowEnabled(dono));
        EXPECT_FALSE(IsWindowEnabled(Manipulador()));
        // The caption changes meanwhile, and with it nothing else.
        descrito.Form->DefineCaption("Outro");
        EXPECT_FALSE(IsWindowEnabled(Manipulador()));
        espreita = SetWindowsHookExW(WH_CBT, NoFim, nullptr, GetCurrentThreadId());
        Tecla(VK_RETURN);
    });
    janelas->Informa("Gravado.", "Cadastro");
    UnhookWindowsHookEx(espreita);
    EXPECT_TRUE(m_Utilizavel);
    EXPECT_TRUE(IsWindowEnabled(dono));
    EXPECT_TRUE(IsWindowEnabled(Manipulador()));
    camada->Principal = [] { return HWND(nullptr); };
    DestroyWindow(dono);
}

TEST_F(CamadaWindowsTest, Caixas_BloqueiamOsFormsEMostramOTextoInteiro)
{
    const HWND form = Manipulador();
    NaCaixa([&](HWND caixa) {
        EXPECT_FALSE(IsWindowEnabled(form));
        EXPECT_EQ(Botoes(caixa), "[OK]");
        Fotografa(caixa, "erro");
        Tecla(VK_RETURN);
    });
    janelas->MostraErro("frmLista.Localizar", 91, "Variável de objeto não definida", "ZTAVOREQUIP < COEquipamentos",
                        "Cadastro");
    EXPECT_TRUE(IsWindowEnabled(form));
    EXPECT_EQ(GetActiveWindow(), form);
    EXPECT_EQ(Teclado(), "txtNome");
    NaCaixa([&](HWND caixa) {
        Fotografa(caixa, "informacao");
        Tecla(VK_ESCAPE);
    });
    janelas->Informa("Gravado.", "Cadastro");
}

TEST_F(CamadaWindowsTest, Espera_MudaOPonteiroSobreOsForms)
{
    janelas->DefineEspera(true);
    SendMessageW(Manipulador(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Filha("txtNome")),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    janelas->DefineEspera(false);
    SendMessageW(Manipulador(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Manipulador()),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(CamadaWindowsTest, Dialogo_DaOArquivoEscolhidoENadaQuandoSeDesiste)
{
    wchar_t pasta[MAX_PATH]{};
    GetTempPathW(MAX_PATH, pasta);
    const std::wstring caminho = std::wstring(pasta) + L"certidão.pdf";
    CloseHandle(CreateFileW(caminho.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    NaCaixa([&](HWND caixa) {
        EXPECT_EQ(TextoDe(caixa), "Selecione o certificado");
        constexpr int NomeDoArquivo = 0x47C; // cmb13
        SetDlgItemTextW(caixa, NomeDoArquivo, caminho.c_str());
        PostMessageW(caixa, WM_COMMAND, IDOK, 0);
    });
    const auto escolhido =
        janelas->EscolheArquivo("Documentos (*.pdf)|*.pdf|Todos|*.*", "Selecione o certificado", "*.pdf", "");
    ASSERT_TRUE(escolhido.has_value());
    EXPECT_EQ(ParaUtf16(*escolhido), caminho);
    // The file of the last time is offered.
    NaCaixa([&](HWND caixa) { PostMessageW(caixa, WM_COMMAND, IDOK, 0); });
    EXPECT_EQ(janelas->EscolheArquivo("Documentos (*.pdf)|*.pdf", "", "*.pdf", ParaUtf8(caminho)), *escolhido);
    // One that is no longer there is not offered, and the dialog opens all the same.
    NaCaixa([&](HWND caixa) { PostMessageW(caixa, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(janelas->EscolheArquivo("Todos|*.*", "", "*.*", "Z:\\nenhum?.pdf"), std::nullopt);
    DeleteFileW(caminho.c_str());
}

TEST_F(CamadaWindowsTest, FimDoAplicativo_TerminaAEspera)
{
    FormDescrito form;
    form.Faz(EmColuna({UmCampo("txtNome", 20)}));
    NaFrente(ClasseDoForm, [](HWND) { PostQuitMessage(7); });
    janelas->MostraForm(form.Form, true);
    MSG fim{};
    ASSERT_TRUE(PeekMessageW(&fim, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(fim.wParam, 7U);
    janelas->FechaForm(form.Form);
}

TEST_F(CamadaWindowsTest, Tela_EmPixelsDeQuinzeTwips)
{
    EXPECT_EQ(janelas->LarguraTela(), MulDiv(GetSystemMetrics(SM_CXSCREEN), 96, static_cast<int>(DpiDe(nullptr))));
    EXPECT_EQ(janelas->AlturaTela(), MulDiv(GetSystemMetrics(SM_CYSCREEN), 96, static_cast<int>(DpiDe(nullptr))));
}

} // namespace

} // namespace nativo
