#include "tests/windows/TelaDeTeste.h"

#include "tests/tela/RuasDeTeste.h"
#include "windows/screen/Enquanto.h"

#include <utility>

namespace nativo {

void TelaDeTeste::SetUp()
{
    HostTeste::SetUp();
    camada = Novo<CamadaWindows>();
    camada->Logradouros = Novo<RuasDeTeste>();
    janelas = Novo<::Janelas>(camada);
    janelas->Descarrega = [this](const Ref<IForm> &form) {
        bool cancela = false;
        form->Unload(cancela);
        if (!cancela) {
            janelas->FechaForm(form);
        }
    };
    janelas->FazInvolucro = [] { return Novo<FormFalso>(); };
    janelas->MostraFalha = [this] {
        try {
            throw;
        } catch (const Falha &falha) {
            falhas.push_back(std::to_string(falha.Numero) + " " + falha.Descricao);
        }
    };
}

void TelaDeTeste::TearDown()
{
    if (m_Relogio != 0) {
        KillTimer(nullptr, m_Relogio);
    }
    EXPECT_TRUE(m_NaFrente.empty());
    janelas->TiraTodas();
    Roda();
    EXPECT_TRUE(camada->Janelas().empty());
    EXPECT_EQ(falhas, std::vector<std::string>());
    descrito.Form = nullptr;
    janelas = nullptr;
    camada = nullptr;
    HostTeste::TearDown();
}

void TelaDeTeste::Abre(Peca raiz, bool modal)
{
    descrito.Faz(raiz);
    Abre(descrito.Form, modal);
}

void CALLBACK TelaDeTeste::Relogio(HWND, UINT, UINT_PTR, DWORD)
{
    g_Esta->Espreita();
}

void TelaDeTeste::NaFrente(const wchar_t *classe, std::function<void(HWND)> ato)
{
    m_NaFrente.push_back({classe, std::move(ato)});
    if (m_Relogio == 0) {
        g_Esta = this;
        m_Relogio = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Relogio);
    }
}

void TelaDeTeste::Espreita()
{
    const HWND ativa = GetActiveWindow();
    wchar_t classe[64]{};
    GetClassNameW(ativa, classe, 64);
    if (!m_NaFrente.empty() && m_NaFrente.front().Classe == classe && IsWindowVisible(ativa)) {
        const auto ato = std::move(m_NaFrente.front().Ato);
        m_NaFrente.erase(m_NaFrente.begin());
        const Enquanto emAto(m_EmAto);
        ato(ativa);
    }
}

void TelaDeTeste::Abre(const Ref<IForm> &form, bool modal)
{
    janelas->MostraForm(form, modal);
    Roda();
}

HWND TelaDeTeste::Filha(const std::string &nome) const
{
    const JanelaForm &janela = Janela();
    for (const Ref<IControle> &controle : janela.Form()->Controles()) {
        if (controle->Nome() == nome) {
            return janela.DoControle(*controle)->Principal();
        }
    }
    return nullptr;
}

std::string TelaDeTeste::Teclado() const
{
    const Renderizador *renderizador = Janela().DaJanela(GetFocus());
    return renderizador == nullptr ? "" : renderizador->Controle()->Nome();
}

namespace {

INPUT DeTecla(WORD tecla, bool sobe)
{
    INPUT entrada{};
    entrada.type = INPUT_KEYBOARD;
    entrada.ki.wVk = tecla;
    entrada.ki.wScan = static_cast<WORD>(MapVirtualKeyW(tecla, MAPVK_VK_TO_VSC));
    entrada.ki.dwFlags = sobe ? KEYEVENTF_KEYUP : 0;
    return entrada;
}

} // namespace

void TelaDeTeste::Tecla(WORD tecla, std::vector<WORD> seguradas)
{
    std::vector<INPUT> entradas;
    for (const WORD segurada : seguradas) {
        entradas.push_back(DeTecla(segurada, false));
    }
    entradas.push_back(DeTecla(tecla, false));
    entradas.push_back(DeTecla(tecla, true));
    for (const WORD segurada : seguradas) {
        entradas.push_back(DeTecla(segurada, true));
    }
    ASSERT_EQ(SendInput(static_cast<UINT>(entradas.size()), entradas.data(), sizeof(INPUT)), entradas.size());
    if (!m_EmAto) { // who waits runs the messages, and knows its keys
        Roda();
    }
}

void TelaDeTeste::Digita(std::wstring_view texto)
{
    for (const wchar_t letra : texto) {
        INPUT entrada{};
        entrada.type = INPUT_KEYBOARD;
        entrada.ki.wScan = static_cast<WORD>(letra);
        entrada.ki.dwFlags = KEYEVENTF_UNICODE;
        ASSERT_EQ(SendInput(1, &entrada, sizeof entrada), 1U);
        entrada.ki.dwFlags |= KEYEVENTF_KEYUP;
        ASSERT_EQ(SendInput(1, &entrada, sizeof entrada), 1U);
        Roda();
    }
}

void TelaDeTeste::Clica(HWND janela)
{
    RECT area{};
    GetClientRect(janela, &area);
    const LPARAM meio = MAKELPARAM(area.right / 2, area.bottom / 2);
    PostMessageW(janela, WM_LBUTTONDOWN, MK_LBUTTON, meio);
    PostMessageW(janela, WM_LBUTTONUP, 0, meio);
    Roda();
}

} // namespace nativo
