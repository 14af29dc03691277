#include "windows/screen/CamadaWindows.h"

#include "windows/automation/Texto16.h"
#include "windows/screen/Caixa.h"

#include <commdlg.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace nativo {

namespace {

constexpr std::size_t MaiorCaminho = 32768;

// The library of the dialog is there while somebody looks at it: some systems keep a handle of the process for each of
// its loadings, and most loadings of the component never ask for a file.
bool PedeArquivo(OPENFILENAMEW &pedido)
{
    const std::unique_ptr<std::remove_pointer_t<HMODULE>, decltype(&FreeLibrary)> biblioteca(
        LoadLibraryExW(L"comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), FreeLibrary);
    if (biblioteca == nullptr) {
        throw Falha(NumeroFalha::ErroInterno);
    }
    const auto pede = reinterpret_cast<decltype(&GetOpenFileNameW)>(
        reinterpret_cast<void *>(GetProcAddress(biblioteca.get(), "GetOpenFileNameW")));
    return pede != nullptr && pede(&pedido) != FALSE;
}

// Runs the messages of this thread until the wait is over. The end of the application ends every wait, and is passed
// on.
void EsperaAte(const bool &terminou)
{
    MSG mensagem{};
    while (!terminou) {
        const BOOL veio = GetMessageW(&mensagem, nullptr, 0, 0);
        if (veio == 0) {
            PostQuitMessage(static_cast<int>(mensagem.wParam));
            return;
        }
        if (veio < 0) { // none could be got, which is no end
            continue;
        }
        TranslateMessage(&mensagem);
        DispatchMessageW(&mensagem);
    }
}

// A form's window, as the window manager knows it.
class JanelaWindows : public IJanela {
  public:
    JanelaWindows(Ref<JanelaForm> janela, HWND dono, RefFraca<CamadaWindows> camada)
        : m_Janela(std::move(janela)),
          m_Dono(dono),
          m_Camada(std::move(camada))
    {
        m_Janela->AoEncerrar = [this] { Termina(); };
        m_Janela->AoEsconder = [this] { Termina(); };
    }
    ~JanelaWindows() override
    {
        m_Janela->AoEncerrar = nullptr;
        m_Janela->AoEsconder = nullptr;
    }
    std::string_view NomeTipo() const override { return "JanelaWindows"; }

    HWND Manipulador() const { return m_Janela->Manipulador(); }

    void Mostra() override { m_Janela->Mostra(); }
    void MostraEEspera() override
    {
        const Vivo modulo; // stays while its code is in the stack
        const Ref<JanelaWindows> viva = Eu(*this);
        if (m_Janela->Encerrada()) {
            return;
        }
        m_Terminou = false;
        m_Bloqueio.emplace(m_Camada->Janelas(), m_Dono, m_Janela->Manipulador());
        m_Janela->Mostra();
        EsperaAte(m_Terminou);
        if (!m_Terminou) { // the application ends
            Retira();
        }
    }
    void Destina(TipoDeJanela tipo, const Ref<IJanela> &dono) override
    {
        m_Dono = m_Camada->ManipuladorDe(dono);
        m_Janela->Destina(tipo, m_Dono);
    }
    void ParaFrente() override { m_Janela->ParaFrente(); }
    void DefineTexto(const std::string &texto) override { m_Janela->DefineTexto(texto); }
    void Retira() override
    {
        const Ref<JanelaWindows> viva = Eu(*this);
        Termina();
        m_Janela->Encerra();
    }

  private:
    // What it stood in front of can be used before it goes: the system leads the keyboard to what can be used.
    void Termina()
    {
        m_Bloqueio.reset();
        if (!std::exchange(m_Terminou, true)) {
            PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0); // the wait looks again
        }
    }

    Ref<JanelaForm> m_Janela;
    HWND m_Dono;
    RefFraca<CamadaWindows> m_Camada;
    std::optional<BloqueioModal> m_Bloqueio;
    bool m_Terminou = true;
};

} // namespace

CamadaWindows::CamadaWindows()
    : Principal([] { return HWND(nullptr); }),
      Clientes([] { return std::vector<ClienteOferecido>(); }),
      m_Contexto(Novo<ContextoVisual>()),
      m_Memoria(Novo<MemoriaDeEnderecos>())
{
}

std::vector<Ref<JanelaForm>> CamadaWindows::Janelas() const
{
    std::vector<Ref<JanelaForm>> janelas;
    for (const RefFraca<JanelaForm> &fraca : m_Janelas) {
        if (const Ref<JanelaForm> janela = fraca.Alvo(); janela && !janela->Encerrada()) {
            janelas.push_back(janela);
        }
    }
    return janelas;
}

HWND CamadaWindows::JanelaDe(const IForm &form) const
{
    for (const Ref<JanelaForm> &janela : Janelas()) {
        if (janela->Form().Ponteiro() == &form) {
            return janela->Manipulador();
        }
    }
    return nullptr;
}

HWND CamadaWindows::ManipuladorDe(const Ref<IJanela> &janela) const
{
    return janela ? ComoTipo<JanelaWindows>(janela)->Manipulador() : Principal();
}

// A box without an owner would be lost behind the windows.
HWND CamadaWindows::AtrasDe(const Ref<IJanela> &dono) const
{
    const HWND deQuem = ManipuladorDe(dono);
    return deQuem != nullptr ? GetAncestor(deQuem, GA_ROOT) : GetActiveWindow();
}

Ref<IJanela> CamadaWindows::FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                                      const PedidosDaJanela &pedidos, const DistincaoDeJanela &)
{
    const auto esperando = [fraca = RefFraca<CamadaWindows>(Eu(*this))] {
        const Ref<CamadaWindows> camada = fraca.Alvo();
        return camada && camada->m_Espera;
    };
    const auto janela = Novo<JanelaForm>(
        form, AoRedorDoForm{pedidos, Clientes, Logradouros, m_Memoria, m_Contexto, esperando, m_Ativa});
    const HWND deQuem = ManipuladorDe(dono);
    janela->Faz(tipo, deQuem);
    std::erase_if(m_Janelas, [](const RefFraca<JanelaForm> &fraca) { return fraca.Nada(); });
    m_Janelas.push_back(janela);
    return Novo<JanelaWindows>(janela, deQuem, RefFraca<CamadaWindows>(Eu(*this)));
}

void CamadaWindows::MostraEspera(bool espera)
{
    m_Espera = espera;
    POINT onde{};
    GetCursorPos(&onde);
    const HWND sob = WindowFromPoint(onde);
    if (!espera && sob != nullptr && GetWindowThreadProcessId(sob, nullptr) == GetCurrentThreadId()) {
        // Which pointer it is now, the window knows over which it stands.
        const LRESULT parte = SendMessageW(sob, WM_NCHITTEST, 0, MAKELPARAM(onde.x, onde.y));
        SendMessageW(sob, WM_SETCURSOR, reinterpret_cast<WPARAM>(sob), MAKELPARAM(parte, WM_MOUSEMOVE));
    } else {
        SetCursor(LoadCursorW(nullptr, espera ? IDC_WAIT : IDC_ARROW));
    }
}

// What is in it now, and what comes of that.
void CamadaWindows::ProcessaMensagens()
{
    MSG mensagem{};
    while (PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE)) {
        if (mensagem.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(mensagem.wParam));
            return;
        }
        TranslateMessage(&mensagem);
        DispatchMessageW(&mensagem);
    }
}

namespace {

// In pixels of 15 twips, however many the screen has.
std::int32_t MedidaDaTela(int qual)
{
    constexpr int DpiDoContrato = 96;
    return MulDiv(GetSystemMetrics(qual), DpiDoContrato, static_cast<int>(DpiDe(nullptr)));
}

} // namespace

std::int32_t CamadaWindows::LarguraTela() const
{
    return MedidaDaTela(SM_CXSCREEN);
}

std::int32_t CamadaWindows::AlturaTela() const
{
    return MedidaDaTela(SM_CYSCREEN);
}

bool CamadaWindows::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                                   const Ref<IJanela> &dono)
{
    const HWND deQuem = AtrasDe(dono);
    const BloqueioModal bloqueio(Janelas(), deQuem);
    return ::nativo::MostraCaixa(*m_Contexto, deQuem, ParaUtf16(texto), ParaUtf16(titulo),
                                 MB_YESNO | MB_ICONQUESTION | (padraoSim ? MB_DEFBUTTON1 : MB_DEFBUTTON2)) == IDYES;
}

namespace {

UINT IconeDe(TipoDeCaixa tipo)
{
    switch (tipo) {
    case TipoDeCaixa::Informacao:
        return MB_ICONINFORMATION;
    case TipoDeCaixa::Aviso:
        return MB_ICONWARNING;
    case TipoDeCaixa::Erro:
        break;
    }
    return MB_ICONERROR;
}

} // namespace

void CamadaWindows::MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo,
                                const std::string &detalhes, const Ref<IJanela> &dono)
{
    const std::string inteiro = detalhes.empty() ? texto : texto + "\n\n" + detalhes;
    const HWND deQuem = AtrasDe(dono);
    const BloqueioModal bloqueio(Janelas(), deQuem);
    ::nativo::MostraCaixa(*m_Contexto, deQuem, ParaUtf16(inteiro), ParaUtf16(titulo), MB_OK | IconeDe(tipo));
}

namespace {

// The dialog goes through folders, whatever flag forbids that; the application stays in its own.
class PastaAtual {
  public:
    PastaAtual() : m_Pasta(GetCurrentDirectoryW(0, nullptr), L'\0')
    {
        GetCurrentDirectoryW(static_cast<DWORD>(m_Pasta.size()), m_Pasta.data());
    }
    PastaAtual(const PastaAtual &) = delete;
    PastaAtual &operator=(const PastaAtual &) = delete;
    ~PastaAtual() { SetCurrentDirectoryW(m_Pasta.c_str()); }

  private:
    std::wstring m_Pasta;
};

} // namespace

std::optional<std::string> CamadaWindows::EscolheArquivo(const std::vector<FiltroDeArquivo> &filtros,
                                                         const std::string &titulo, const Ref<IJanela> &dono)
{
    std::wstring padroes; // pairs, each text ended by a zero, and another one at the end
    for (const FiltroDeArquivo &filtro : filtros) {
        padroes += ParaUtf16(filtro.Texto) + L'\0' + ParaUtf16(filtro.Padrao) + L'\0';
    }
    const std::wstring nome = ParaUtf16(titulo);
    std::wstring caminho(MaiorCaminho, L'\0');
    OPENFILENAMEW pedido{};
    pedido.lStructSize = sizeof pedido;
    pedido.hwndOwner = AtrasDe(dono);
    pedido.lpstrFilter = padroes.empty() ? nullptr : padroes.c_str();
    pedido.lpstrFile = caminho.data();
    pedido.nMaxFile = static_cast<DWORD>(caminho.size());
    pedido.lpstrTitle = nome.empty() ? nullptr : nome.c_str();
    pedido.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    const BloqueioModal bloqueio(Janelas(), pedido.hwndOwner);
    const ContextoVisual::Ativo ativo(*m_Contexto);
    const PastaAtual pasta;
    if (!PedeArquivo(pedido)) {
        return std::nullopt;
    }
    return ParaUtf8(caminho.c_str());
}

Ref<IJanela> CamadaWindows::FazVisor(const std::string &, const Ref<IJanela> &, const std::function<void()> &)
{
    return nullptr;
}

void CamadaWindows::MostraAjuda(const std::string &, const Ref<IJanela> &) {}

} // namespace nativo
