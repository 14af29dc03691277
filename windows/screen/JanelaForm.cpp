#include "windows/screen/JanelaForm.h"

#include "tela/Partes.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/Enquanto.h"
#include "windows/screen/Enumera.h"
#include "windows/screen/FazRenderizador.h"

#include <algorithm>
#include <set>
#include <utility>

namespace nativo {

namespace {

constexpr wchar_t NomeDaClasse[] = L"ZTAVOREQUIP.Form";
constexpr UINT_PTR Subclasse = 1;
constexpr std::int16_t JanelaMaximizada = 2;

// Put off until the act that led to them is over.
constexpr UINT PedidoDeArranjo = WM_APP + 1;
constexpr UINT ChegadaDoTeclado = WM_APP + 2; // w: the child
constexpr UINT SaidaDoTeclado = WM_APP + 3;
constexpr UINT VoltaDoTeclado = WM_APP + 4;

bool Apertada(int tecla)
{
    return GetKeyState(tecla) < 0;
}

std::string ParaAnsi(const std::wstring &texto)
{
    const int tamanho = static_cast<int>(texto.size());
    std::string ansi(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, texto.data(), tamanho, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_ACP, 0, texto.data(), tamanho, ansi.data(), static_cast<int>(ansi.size()), nullptr, nullptr);
    return ansi;
}

RECT AreaDeTrabalho(HWND janela)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(janela, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

SIZE TamanhoDe(const RECT &lugar)
{
    return {lugar.right - lugar.left, lugar.bottom - lugar.top};
}

DWORD BotoesDe(TipoDeJanela tipo)
{
    return tipo == TipoDeJanela::Filha ? WS_MINIMIZEBOX | WS_MAXIMIZEBOX : WS_MAXIMIZEBOX;
}

HWND RaizDe(HWND janela)
{
    return janela != nullptr ? GetAncestor(janela, GA_ROOT) : nullptr;
}

[[noreturn]] void NaoHaJanela()
{
    throw Falha(NumeroFalha::SemMemoria, std::string(NomeComponente), "O sistema não fez a janela");
}

} // namespace

// Holds the window while one of its messages, or one of its operations, runs: a handler may unload the form.
class JanelaForm::Entrada {
  public:
    explicit Entrada(JanelaForm &janela) : m_Janela(Eu(janela)) { ++janela.m_Entradas; }
    Entrada(const Entrada &) = delete;
    Entrada &operator=(const Entrada &) = delete;
    ~Entrada()
    {
        if (--m_Janela->m_Entradas == 0 && m_Janela->m_Encerrando) {
            m_Janela->Destroi();
        }
    }

  private:
    Vivo m_Vivo; // the module stays while its code is in the stack
    Ref<JanelaForm> m_Janela;
};

// The class of the forms' windows, which must not outlive the module.
class JanelaForm::Classe {
  public:
    Classe()
    {
        WNDCLASSEXW classe{};
        classe.cbSize = sizeof classe;
        classe.style = CS_DBLCLKS;
        classe.lpfnWndProc = Procedimento;
        classe.hInstance = EsteModulo();
        classe.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        classe.lpszClassName = NomeDaClasse;
        RegisterClassExW(&classe);
    }
    Classe(const Classe &) = delete;
    Classe &operator=(const Classe &) = delete;
    ~Classe() { UnregisterClassW(NomeDaClasse, EsteModulo()); }

    static std::shared_ptr<Classe> Comum()
    {
        static std::weak_ptr<Classe> comum;
        auto classe = comum.lock();
        if (!classe) {
            classe = std::make_shared<Classe>();
            comum = classe;
        }
        return classe;
    }
};

JanelaForm::JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor)
    : m_Form(std::move(form)),
      m_AoRedor(std::move(aoRedor)),
      m_Pessoa(m_Form, m_AoRedor.Pedidos),
      m_Desenho(m_Form->Desenho()),
      m_Controles(*m_Form),
      m_Classe(Classe::Comum())
{
}

void JanelaForm::Faz(TipoDeJanela tipo, HWND dono)
{
    m_Tipo = tipo;
    m_Letra = std::make_unique<Letra>(DpiDe(dono));
    const ContextoVisual::Ativo ativo(*m_AoRedor.Contexto);
    if (CreateWindowExW(WS_EX_CONTROLPARENT, NomeDaClasse, L"",
                        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN | BotoesDe(tipo), 0, 0, 0,
                        0, RaizDe(dono), nullptr, EsteModulo(), this) == nullptr) {
        m_Encerrando = true;
        NaoHaJanela();
    }
    m_Viva = Eu(*this);
    const Entrada entrada(*this);
    try {
        FazControles(m_Desenho.Raiz);
    } catch (...) {
        Encerra();
        throw;
    }
    for (auto renderizador = m_Renderizadores.rbegin(); renderizador != m_Renderizadores.rend(); ++renderizador) {
        (*renderizador)->Atualiza();
        const AjustesPeca &ajustes = (*renderizador)->Descricao().Ajustes;
        if (std::holds_alternative<AjustesSSTab>(ajustes) || std::holds_alternative<AjustesZtFrame>(ajustes)) {
            // What it holds stands in front of it, and was made after it.
            SetWindowPos((*renderizador)->Principal(), HWND_BOTTOM, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        }
    }
    // The underlined letters are seen from the start, whatever opened the window.
    SendMessageW(m_Janela, WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
    m_Conexoes.push_back(m_Form->Mudou().liga([this] { MostraForm(); }));
    Dimensiona(dono);
    MostraForm();
}

void JanelaForm::Destina(TipoDeJanela tipo, HWND dono)
{
    if (m_Janela == nullptr || m_Encerrando) {
        return;
    }
    const Entrada entrada(*this);
    m_Tipo = tipo;
    constexpr LONG_PTR Botoes = WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    const LONG_PTR estilo = GetWindowLongPtrW(m_Janela, GWL_STYLE) & ~Botoes;
    SetWindowLongPtrW(m_Janela, GWL_STYLE, estilo | static_cast<LONG_PTR>(BotoesDe(tipo)));
    SetWindowLongPtrW(m_Janela, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(RaizDe(dono)));
    SetWindowPos(m_Janela, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void JanelaForm::FazControles(const Peca &peca)
{
    if (peca.Especie()) {
        const Ref<IControle> &controle = m_Controles.De(peca);
        if (auto renderizador = FazRenderizador(controle, peca, *this)) {
            m_DosControles[controle.Ponteiro()] = renderizador.get();
            m_Renderizadores.push_back(std::move(renderizador));
        }
    }
    for (const Peca &contida : peca.Pecas) {
        FazControles(contida);
    }
}

HWND JanelaForm::FazFilha(const wchar_t *classe, DWORD estilo, DWORD estiloExtra)
{
    const ContextoVisual::Ativo ativo(*m_AoRedor.Contexto);
    HWND filha = CreateWindowExW(estiloExtra, classe, L"", WS_CHILD | estilo, 0, 0, 0, 0, m_Janela, nullptr,
                                 EsteModulo(), nullptr);
    if (filha == nullptr) {
        NaoHaJanela();
    }
    SendMessageW(filha, WM_SETFONT, reinterpret_cast<WPARAM>(m_Letra->Fonte()), FALSE);
    SetWindowSubclass(filha, DaFilha, Subclasse, reinterpret_cast<DWORD_PTR>(this));
    return filha;
}

// A system without the service has the text before the child only.
void JanelaForm::Nomeia(HWND filha, const std::string &nome)
{
    if (!m_Nomes) {
        CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                         reinterpret_cast<void **>(m_Nomes.Recebe()));
    }
    if (m_Nomes) {
        m_Nomes->SetHwndPropStr(filha, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                                ParaUtf16(nome).c_str());
    }
}

SIZE JanelaForm::ComMoldura(SIZE miolo) const
{
    RECT lugar{0, 0, miolo.cx, miolo.cy};
    const auto estilo = static_cast<DWORD>(GetWindowLongPtrW(m_Janela, GWL_STYLE));
    const auto extra = static_cast<DWORD>(GetWindowLongPtrW(m_Janela, GWL_EXSTYLE));
    using ComDpi = BOOL(WINAPI *)(RECT *, DWORD, BOOL, DWORD, UINT);
    static const auto comDpi = reinterpret_cast<ComDpi>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "AdjustWindowRectExForDpi")));
    if (comDpi != nullptr) {
        comDpi(&lugar, estilo, FALSE, extra, m_Letra->Dpi());
    } else {
        AdjustWindowRectEx(&lugar, estilo, FALSE, extra);
    }
    return TamanhoDe(lugar);
}

FormArrumado JanelaForm::Arrumado() const
{
    RECT area{};
    GetClientRect(m_Janela, &area);
    return Arruma(m_Desenho, *m_Form, *m_Letra, {m_Letra->Cabem(area.right), m_Letra->Cabem(area.bottom)});
}

// As large as what is in it needs, and not smaller than the form was made; in the middle of where the form was put, or
// of what it stands in front of.
void JanelaForm::Dimensiona(HWND dono)
{
    const FormArrumado arrumado = Arruma(m_Desenho, *m_Form, *m_Letra, {});
    m_Menor = arrumado.Menor;
    const SIZE pedido{m_Letra->DeTwips(m_Form->Width()), m_Letra->DeTwips(m_Form->Height())};
    const SIZE preciso =
        ComMoldura({m_Letra->Medida(arrumado.Natural.Largura), m_Letra->Medida(arrumado.Natural.Altura)});
    const RECT area = AreaDeTrabalho(dono);
    const SIZE tamanho{std::min(std::max(pedido.cx, preciso.cx), TamanhoDe(area).cx),
                       std::min(std::max(pedido.cy, preciso.cy), TamanhoDe(area).cy)};
    POINT meio{m_Letra->DeTwips(m_Form->Left()) + pedido.cx / 2, m_Letra->DeTwips(m_Form->Top()) + pedido.cy / 2};
    if (m_Form->Left() == 0 && m_Form->Top() == 0) {
        RECT atras = area;
        if (dono != nullptr && IsWindowVisible(dono) && !IsIconic(dono)) {
            GetWindowRect(dono, &atras);
        }
        meio = {(atras.left + atras.right) / 2, (atras.top + atras.bottom) / 2};
    }
    const LONG x = std::clamp(meio.x - tamanho.cx / 2, area.left, area.right - tamanho.cx);
    const LONG y = std::clamp(meio.y - tamanho.cy / 2, area.top, area.bottom - tamanho.cy);
    SetWindowPos(m_Janela, nullptr, x, y, tamanho.cx, tamanho.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    DizLugar();
}

Renderizador *JanelaForm::DaJanela(HWND janela) const
{
    const auto achado = m_DasJanelas.find(janela);
    return achado == m_DasJanelas.end() ? nullptr : achado->second;
}

Renderizador *JanelaForm::DoControle(const IControle &controle) const
{
    const auto achado = m_DosControles.find(&controle);
    return achado == m_DosControles.end() ? nullptr : achado->second;
}

void JanelaForm::Mostra()
{
    const Entrada entrada(*this);
    MostraForm();
    Arranja();
    m_Mostrada = true;
    const std::int16_t estado = m_Form->WindowState();
    ShowWindow(m_Janela, estado == JanelaMinimizada   ? SW_SHOWMINIMIZED
                         : estado == JanelaMaximizada ? SW_SHOWMAXIMIZED
                                                      : SW_SHOW);
    if (!m_Encerrando) {
        DizEstado(IsIconic(m_Janela) ? SIZE_MINIMIZED : SIZE_RESTORED);
        UpdateWindow(m_Janela);
    }
}

void JanelaForm::ParaFrente()
{
    if (m_Janela == nullptr || m_Encerrando || m_Bloqueios > 0) { // it would come in front of what blocks it
        return;
    }
    const Entrada entrada(*this);
    if (IsIconic(m_Janela)) {
        ShowWindow(m_Janela, SW_RESTORE);
    }
    BringWindowToTop(m_Janela);
    SetForegroundWindow(m_Janela);
}

void JanelaForm::DefineTexto(const std::string &texto)
{
    m_Texto = texto;
    MostraTitulo();
}

void JanelaForm::Encerra()
{
    if (m_Encerrando) {
        return;
    }
    const Ref<JanelaForm> viva = Eu(*this);
    m_Encerrando = true;
    m_Conexoes.clear();
    if (m_Janela != nullptr) {
        const Entrada entrada(*this);
        ShowWindow(m_Janela, SW_HIDE);
    }
}

void JanelaForm::Destroi()
{
    if (m_Janela == nullptr) {
        return;
    }
    // The system takes away what stands in front of it. The forms there end by themselves, in front of its owner.
    const auto dono = reinterpret_cast<LONG_PTR>(GetWindow(m_Janela, GW_OWNER));
    for (const HWND janela : JanelasDesteFio()) {
        wchar_t classe[std::size(NomeDaClasse) + 1]{};
        GetClassNameW(janela, classe, static_cast<int>(std::size(classe)));
        if (GetWindow(janela, GW_OWNER) == m_Janela && std::wstring_view(classe) == NomeDaClasse) {
            SetWindowLongPtrW(janela, GWLP_HWNDPARENT, dono);
        }
    }
    DestroyWindow(std::exchange(m_Janela, nullptr));
}

// Whoever took the window away: with it the form has nothing to be seen in.
void JanelaForm::Sumiu()
{
    const Ref<JanelaForm> viva = std::exchange(m_Viva, nullptr);
    m_Janela = nullptr;
    if (!std::exchange(m_Encerrando, true)) {
        m_Conexoes.clear();
        m_AoRedor.Pedidos.Fecha();
    }
    if (const auto encerrou = std::exchange(AoEncerrar, nullptr)) {
        encerrou();
    }
}

// The one that is being handled, which came of the window's own work.
void JanelaForm::MostraFalha() const noexcept
{
    try {
        NaBorda([] { throw; });
    } catch (...) { // nobody can be told that not even this could be told
    }
}

void JanelaForm::Bloqueia()
{
    ++m_Bloqueios;
    HabilitaJanela();
}

void JanelaForm::Desbloqueia()
{
    --m_Bloqueios;
    HabilitaJanela();
}

void JanelaForm::HabilitaJanela()
{
    if (m_Janela == nullptr || m_Encerrando) {
        return;
    }
    const bool habilitada = m_Form->Enabled() && m_Bloqueios == 0;
    if (habilitada == (IsWindowEnabled(m_Janela) != FALSE)) {
        return;
    }
    if (!habilitada) {
        m_EraAtiva = GetActiveWindow() == m_Janela;
    }
    EnableWindow(m_Janela, habilitada);
    // What stood in front of it while it could not be used, such as a question, has left the keyboard to another one.
    if (habilitada && m_EraAtiva && GetActiveWindow() != m_Janela && IsWindowVisible(m_Janela)) {
        DaVez(m_Janela);
    }
}

void JanelaForm::MostraForm()
{
    if (m_Encerrando || m_Dizendo || m_Janela == nullptr) {
        return;
    }
    MostraTitulo();
    MostraIcone();
    MostraLugar();
    MostraEstado();
    HabilitaJanela();
    PedeArranjo();
}

void JanelaForm::MostraTitulo()
{
    if (m_Encerrando || m_Janela == nullptr) {
        return;
    }
    if (m_Texto.empty()) {
        EscreveTexto(m_Janela, m_Form->Caption());
    } else {
        SetWindowTextA(m_Janela, ParaAnsi(ParaUtf16(m_Texto)).c_str());
    }
}

void JanelaForm::MostraIcone()
{
    if (m_Icone == m_Form->Icone()) {
        return;
    }
    m_Icone = m_Form->Icone();
    const std::wstring nome = ParaUtf16(m_Icone);
    for (const auto &[qual, medida] : {std::pair(ICON_BIG, SM_CXICON), std::pair(ICON_SMALL, SM_CXSMICON)}) {
        const int lado = GetSystemMetrics(medida);
        // The system keeps shared ones as long as the module is there.
        const HANDLE icone = LoadImageW(EsteModulo(), nome.c_str(), IMAGE_ICON, lado, lado, LR_SHARED);
        SendMessageW(m_Janela, WM_SETICON, static_cast<WPARAM>(qual), reinterpret_cast<LPARAM>(icone));
    }
}

void JanelaForm::MostraLugar()
{
    const Retangulo pedido = {m_Form->Left(), m_Form->Top(), m_Form->Width(), m_Form->Height()};
    if (pedido == m_LugarDito) {
        return;
    }
    m_LugarDito = pedido;
    const SIZE menor = ComMoldura({m_Letra->Medida(m_Menor.Largura), m_Letra->Medida(m_Menor.Altura)});
    SetWindowPos(m_Janela, nullptr, m_Letra->DeTwips(pedido.X), m_Letra->DeTwips(pedido.Y),
                 std::max<int>(m_Letra->DeTwips(pedido.Largura), menor.cx),
                 std::max<int>(m_Letra->DeTwips(pedido.Altura), menor.cy), SWP_NOZORDER | SWP_NOACTIVATE);
}

void JanelaForm::MostraEstado()
{
    const std::int16_t estado = m_Form->WindowState();
    if (m_Mostrada && estado != m_EstadoDito) {
        m_EstadoDito = estado;
        ShowWindow(m_Janela, estado == JanelaMinimizada   ? SW_MINIMIZE
                             : estado == JanelaMaximizada ? SW_MAXIMIZE
                                                          : SW_RESTORE);
    }
    if (m_Mostrada && (IsWindowVisible(m_Janela) != FALSE) != m_Form->Visible()) {
        if (!m_Form->Visible() && AoEsconder) {
            AoEsconder();
        }
        ShowWindow(m_Janela, m_Form->Visible() ? SW_SHOW : SW_HIDE);
    }
}

void JanelaForm::DizLugar()
{
    if (m_Encerrando || IsIconic(m_Janela)) {
        return;
    }
    RECT lugar{};
    GetWindowRect(m_Janela, &lugar);
    const SIZE tamanho = TamanhoDe(lugar);
    m_LugarDito = {m_Letra->EmTwips(lugar.left), m_Letra->EmTwips(lugar.top), m_Letra->EmTwips(tamanho.cx),
                   m_Letra->EmTwips(tamanho.cy)};
    const auto diz = [this](std::int32_t (IForm::*le)() const, void (IForm::*escreve)(std::int32_t),
                            std::int32_t valor) {
        if (((*m_Form).*le)() != valor) {
            ((*m_Form).*escreve)(valor);
        }
    };
    const Enquanto dizendo(m_Dizendo);
    NaBorda([&] {
        diz(&IForm::Left, &IForm::DefineLeft, m_LugarDito.X);
        diz(&IForm::Top, &IForm::DefineTop, m_LugarDito.Y);
        diz(&IForm::Width, &IForm::DefineWidth, m_LugarDito.Largura);
        diz(&IForm::Height, &IForm::DefineHeight, m_LugarDito.Altura);
    });
}

// tamanho: as WM_SIZE tells it.
void JanelaForm::DizEstado(WPARAM tamanho)
{
    if (!m_Mostrada || m_Encerrando) {
        return;
    }
    m_EstadoDito = tamanho == SIZE_MINIMIZED ? JanelaMinimizada : IsZoomed(m_Janela) ? JanelaMaximizada : JanelaNormal;
    if (m_Form->WindowState() != m_EstadoDito) {
        const Enquanto dizendo(m_Dizendo);
        NaBorda([this] { m_Form->DefineWindowState(m_EstadoDito); });
    }
    RECT area{};
    GetClientRect(m_Janela, &area);
    const SIZE agora = TamanhoDe(area);
    if (!m_Encerrando && (agora.cx != m_TamanhoDito.cx || agora.cy != m_TamanhoDito.cy)) {
        m_TamanhoDito = agora;
        m_AoRedor.Pedidos.Redimensionou();
    }
}

// It stands in front of this one, such as a box that was opened from here.
bool JanelaForm::EstaNaFrente(HWND janela) const
{
    HWND dono = RaizDe(janela);
    while (dono != nullptr && dono != m_Janela) {
        dono = GetWindow(dono, GW_OWNER);
    }
    return dono != nullptr;
}

// As the child of a main window would, the form stays the active one until the person goes to another window of the
// application: neither what stands in front of it nor another application takes that from it.
void JanelaForm::DizAtivacao(bool ativa, HWND outra)
{
    if (m_Tipo != TipoDeJanela::Filha || m_Bloqueios > 0) {
        return;
    }
    const Ref<JanelaForm> antes = m_AoRedor.Ativa->Alvo();
    const bool era = antes.Ponteiro() == this;
    if (ativa && !era) {
        *m_AoRedor.Ativa = Eu(*this);
        if (antes && !antes->Encerrada()) {
            antes->m_AoRedor.Pedidos.Desativou();
        }
        if (!m_Encerrando) {
            m_AoRedor.Pedidos.Ativou();
        }
    }
    if (!ativa && era && outra != nullptr && GetWindowThreadProcessId(outra, nullptr) == GetCurrentThreadId() &&
        !EstaNaFrente(outra)) {
        *m_AoRedor.Ativa = nullptr;
        m_AoRedor.Pedidos.Desativou();
    }
}

void JanelaForm::PedeArranjo()
{
    if (!m_Encerrando && m_Janela != nullptr && !std::exchange(m_ArranjoPedido, true)) {
        PostMessageW(m_Janela, PedidoDeArranjo, 0, 0);
    }
}

void JanelaForm::Arranja()
{
    if (!m_ArranjoPedido || m_Arranjando || m_Encerrando || m_Janela == nullptr || IsIconic(m_Janela)) {
        return;
    }
    const Entrada entrada(*this);
    {
        const Enquanto arranjando(m_Arranjando);
        FormArrumado arrumado = Arrumado();
        if (arrumado.Menor != m_Menor) {
            Cresce(arrumado.Menor);
            arrumado = Arrumado();
        }
        m_ArranjoPedido = false;
        Coloca(arrumado);
    }
    if (m_Mostrada && GetActiveWindow() == m_Janela && !PodeTerTeclado(GetFocus())) {
        PostMessageW(m_Janela, VoltaDoTeclado, 0, 0);
    }
}

void JanelaForm::Coloca(const FormArrumado &arrumado)
{
    std::set<const IControle *> postos;
    for (const PecaArrumada &peca : arrumado.Pecas) {
        postos.insert(m_Controles.De(*peca.Quem).Ponteiro());
    }
    for (const auto &renderizador : m_Renderizadores) {
        const Ref<IControle> &controle = renderizador->Controle();
        const ControleBase *base = ComoBase(controle);
        // What has no place, such as in a criteria bar that is not shown, is not seen. While the whole form cannot be
        // used, what is in it stays as it is.
        renderizador->MostraOndeEsta(base->VisivelDeFato() && postos.contains(controle.Ponteiro()),
                                     !m_Form->Enabled() || base->HabilitadoDeFato());
    }
    for (PecaArrumada peca : arrumado.Pecas) {
        for (Retangulo *lugar : {&peca.Lugar, &peca.Rotulo, &peca.Miolo, &peca.Localizar}) {
            *lugar = m_Letra->NaTela(*lugar);
        }
        peca.LarguraDosRotulos = m_Letra->Medida(peca.LarguraDosRotulos);
        if (Renderizador *renderizador = DoControle(*m_Controles.De(*peca.Quem))) {
            renderizador->Coloca(peca);
        }
    }
}

void JanelaForm::Cresce(Tamanho menor)
{
    m_Menor = menor;
    RECT lugar{};
    GetWindowRect(m_Janela, &lugar);
    const SIZE preciso = ComMoldura({m_Letra->Medida(menor.Largura), m_Letra->Medida(menor.Altura)});
    const SIZE agora = TamanhoDe(lugar);
    if (agora.cx < preciso.cx || agora.cy < preciso.cy) {
        SetWindowPos(m_Janela, nullptr, 0, 0, std::max(agora.cx, preciso.cx), std::max(agora.cy, preciso.cy),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

bool JanelaForm::PodeTerTeclado(HWND filha) const
{
    return filha != nullptr && filha != m_Janela && IsChild(m_Janela, filha) && IsWindowVisible(filha) &&
           IsWindowEnabled(filha);
}

void JanelaForm::LevaTeclado(HWND filha)
{
    if (m_Encerrando || m_Janela == nullptr) {
        return;
    }
    m_Teclado = filha;
    if (m_Mostrada && GetActiveWindow() == m_Janela) {
        Arranja();
        if (PodeTerTeclado(filha)) {
            SetFocus(filha);
        }
    }
}

// Tab goes on from where the keyboard is, whatever has led it there.
void JanelaForm::DizOndeEstaOTeclado()
{
    m_Pessoa.Ocupa(nullptr, Parte::Todo);
    for (const auto &renderizador : m_Renderizadores) {
        if (const auto parte = renderizador->ParteComTeclado()) {
            m_Pessoa.Ocupa(renderizador->Controle(), *parte);
        }
    }
}

// The keyboard goes to where the person has come with Tab.
void JanelaForm::SegueParada()
{
    const auto [controle, parte] = m_Pessoa.ParadaAtual();
    const Renderizador *renderizador = controle ? DoControle(*controle) : nullptr;
    const HWND alvo = renderizador != nullptr ? renderizador->JanelaDe(parte) : nullptr;
    if (m_Encerrando || alvo == nullptr) {
        return;
    }
    LevaTeclado(alvo);
    if (SendMessageW(alvo, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) {
        SendMessageW(alvo, EM_SETSEL, 0, -1);
    }
}

// The window has the keyboard, and none of its children: the one that had it last, the active control, or the next.
void JanelaForm::DevolveTeclado()
{
    if (m_Encerrando || GetActiveWindow() != m_Janela || PodeTerTeclado(GetFocus())) {
        return;
    }
    Arranja();
    HWND alvo = m_Teclado;
    if (const Ref<IControle> ativo = m_Form->ControleAtivo(); !PodeTerTeclado(alvo) && ativo) {
        const Renderizador *renderizador = DoControle(*ativo);
        alvo = renderizador != nullptr ? renderizador->JanelaDe(ParteDoFoco(ativo->Especie())) : nullptr;
    }
    if (PodeTerTeclado(alvo)) {
        SetFocus(alvo);
        return;
    }
    NaBorda([this] {
        if (m_Pessoa.Retoma()) {
            SegueParada();
        }
    });
    if (!m_Encerrando && !PodeTerTeclado(GetFocus())) {
        SetFocus(m_Janela);
    }
}

void JanelaForm::MudaAparencia(UINT dpi)
{
    auto anterior = std::make_unique<Letra>(dpi);
    if (!anterior->Igual(*m_Letra)) {
        std::swap(anterior, m_Letra); // the children have it until now
        for (const HWND filha : FilhasDe(m_Janela)) {
            SendMessageW(filha, WM_SETFONT, reinterpret_cast<WPARAM>(m_Letra->Fonte()), FALSE);
        }
    }
    for (const auto &renderizador : m_Renderizadores) {
        renderizador->MudouAparencia();
    }
    PedeArranjo();
    RedrawWindow(m_Janela, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void JanelaForm::AvisaQueMudouDeLugar() const
{
    for (const auto &renderizador : m_Renderizadores) {
        renderizador->MudouDeLugar();
    }
}

COLORREF JanelaForm::FundoDe(const Renderizador &renderizador) const
{
    for (Ref<IControle> dono = renderizador.Controle()->Container(); dono; dono = dono->Container()) {
        if (const Renderizador *doDono = DoControle(*dono)) {
            if (const auto cor = doDono->CorDoMiolo()) {
                return *cor;
            }
        }
    }
    return GetSysColor(COLOR_BTNFACE);
}

COLORREF JanelaForm::FundoEm(HWND filha) const
{
    const Renderizador *renderizador = DaJanela(filha);
    return renderizador != nullptr ? FundoDe(*renderizador) : GetSysColor(COLOR_BTNFACE);
}

HBRUSH JanelaForm::Pinta(HDC papel, HWND filha) const
{
    const COLORREF cor = FundoEm(filha);
    SetTextColor(papel, GetSysColor(COLOR_BTNTEXT));
    SetBkColor(papel, cor);
    SetDCBrushColor(papel, cor);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

// Children that are not opaque ask for what is behind them, which may be a page.
void JanelaForm::PintaFundo(HDC papel) const
{
    RECT area{};
    GetClientRect(m_Janela, &area);
    FillRect(papel, &area, GetSysColorBrush(COLOR_BTNFACE));
    for (const auto &renderizador : m_Renderizadores) {
        const auto cor = renderizador->CorDoMiolo();
        const HWND principal = renderizador->Principal();
        if (cor && principal != nullptr && IsWindowVisible(principal)) {
            RECT lugar{};
            GetWindowRect(principal, &lugar);
            MapWindowPoints(HWND_DESKTOP, m_Janela, reinterpret_cast<POINT *>(&lugar), 2);
            SetDCBrushColor(papel, *cor);
            FillRect(papel, &lugar, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        }
    }
}

bool JanelaForm::MudaPagina(WPARAM tecla)
{
    if ((tecla != VK_NEXT && tecla != VK_PRIOR) || !Apertada(VK_CONTROL) || Apertada(VK_MENU)) {
        return false;
    }
    NaBorda([&] { m_Pessoa.AndaPaginas(tecla == VK_NEXT ? 1 : -1); });
    return true;
}

bool JanelaForm::VaiAosCriterios(WPARAM tecla)
{
    if (tecla != 'F' || !Apertada(VK_CONTROL) || Apertada(VK_MENU)) {
        return false;
    }
    NaBorda([this] {
        if (m_Pessoa.VaiAosCriterios()) {
            SegueParada();
        }
    });
    return true;
}

bool JanelaForm::AtoDaTecla(WPARAM tecla)
{
    if (Apertada(VK_CONTROL) || Apertada(VK_MENU)) {
        return false;
    }
    switch (tecla) {
    case VK_TAB:
        NaBorda([this] {
            DizOndeEstaOTeclado();
            if (Apertada(VK_SHIFT) ? m_Pessoa.ShiftTab() : m_Pessoa.Tab()) {
                SegueParada();
            }
        });
        return true;
    case VK_RETURN:
        NaBorda([this] {
            DizOndeEstaOTeclado();
            m_Pessoa.Enter();
        });
        return true;
    case VK_ESCAPE:
        NaBorda([this] { m_Pessoa.Esc(); });
        return true;
    case VK_F1:
        m_AoRedor.Pedidos.Ajuda();
        return true;
    case VK_F5:
        NaBorda([this] { m_Pessoa.Atalho(AtalhoDeLista::Atualiza); });
        return true;
    default:
        return false;
    }
}

// Keys that are the form's whatever has the keyboard.
std::optional<LRESULT> JanelaForm::TrataTecla(HWND filha, UINT mensagem, WPARAM w)
{
    constexpr WPARAM CtrlF = 6;
    const Renderizador *renderizador = DaJanela(filha);
    switch (mensagem) {
    case WM_KEYDOWN:
        if (MudaPagina(w) || VaiAosCriterios(w)) {
            return 0;
        }
        if ((renderizador == nullptr || !renderizador->FicaComTecla(filha, w)) && AtoDaTecla(w)) {
            return 0;
        }
        break;
    case WM_CHAR: // of a key that was taken above
        if (w == CtrlF) {
            return 0;
        }
        if ((w == VK_TAB || w == VK_RETURN || w == VK_ESCAPE) &&
            (renderizador == nullptr || !renderizador->FicaComTecla(filha, w))) {
            return 0;
        }
        break;
    case WM_SYSCHAR:
        if (m_Pessoa.RespondeAlt(static_cast<char32_t>(w))) {
            NaBorda([&] { m_Pessoa.Alt(static_cast<char32_t>(w)); });
            return 0;
        }
        break;
    default:
        break;
    }
    return std::nullopt;
}

std::optional<LRESULT> JanelaForm::TrataDaFilha(HWND filha, UINT mensagem, WPARAM w, LPARAM l)
{
    if (mensagem == WM_KEYDOWN && MudaPagina(w)) { // whatever a list or a combo does with the key alone
        return 0;
    }
    if (Renderizador *renderizador = DaJanela(filha)) {
        if (const auto resposta = renderizador->Mensagem(filha, mensagem, w, l); resposta || m_Encerrando) {
            return resposta;
        }
    }
    switch (mensagem) {
    case WM_SETFOCUS:
        m_Teclado = filha;
        PostMessageW(m_Janela, ChegadaDoTeclado, reinterpret_cast<WPARAM>(filha), 0);
        break;
    case WM_KILLFOCUS:
        PostMessageW(m_Janela, SaidaDoTeclado, reinterpret_cast<WPARAM>(filha), 0);
        break;
    default:
        break;
    }
    return TrataTecla(filha, mensagem, w);
}

LRESULT CALLBACK JanelaForm::DaFilha(HWND janela, UINT mensagem, WPARAM w, LPARAM l, UINT_PTR, DWORD_PTR dados) noexcept
{
    auto &esta = *reinterpret_cast<JanelaForm *>(dados);
    if (mensagem == WM_NCDESTROY) {
        if (esta.m_Nomes) {
            esta.m_Nomes->ClearHwndProps(janela, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &PROPID_ACC_NAME, 1);
        }
        RemoveWindowSubclass(janela, DaFilha, Subclasse);
        return DefSubclassProc(janela, mensagem, w, l);
    }
    const Entrada entrada(esta);
    if (!esta.m_Encerrando) {
        try {
            if (const auto resposta = esta.TrataDaFilha(janela, mensagem, w, l)) {
                return *resposta;
            }
        } catch (...) {
            esta.MostraFalha();
        }
    }
    return DefSubclassProc(janela, mensagem, w, l);
}

std::optional<LRESULT> JanelaForm::Trata(UINT mensagem, WPARAM w, LPARAM l)
{
    switch (mensagem) {
    case WM_COMMAND:
        if (Renderizador *renderizador = DaJanela(reinterpret_cast<HWND>(l))) {
            renderizador->Comando(reinterpret_cast<HWND>(l), HIWORD(w));
            return 0;
        }
        break;
    case WM_NOTIFY:
        if (auto &aviso = *reinterpret_cast<NMHDR *>(l); Renderizador *renderizador = DaJanela(aviso.hwndFrom)) {
            return renderizador->Notifica(aviso);
        }
        break;
    case WM_DRAWITEM:
        if (const auto &item = *reinterpret_cast<const DRAWITEMSTRUCT *>(l);
            Renderizador *renderizador = DaJanela(item.hwndItem)) {
            return renderizador->Desenha(item);
        }
        break;
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(Pinta(reinterpret_cast<HDC>(w), reinterpret_cast<HWND>(l)));
    case WM_ERASEBKGND:
    case WM_PRINTCLIENT:
        PintaFundo(reinterpret_cast<HDC>(w));
        return 1;
    case WM_SETCURSOR:
        if (m_AoRedor.Esperando()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case WM_CLOSE:
        if (m_Bloqueios == 0) {
            m_AoRedor.Pedidos.Fecha();
        }
        return 0;
    case WM_ACTIVATE:
        DizAtivacao(LOWORD(w) != WA_INACTIVE, reinterpret_cast<HWND>(l));
        break;
    case WM_SETFOCUS:
    case VoltaDoTeclado:
        DevolveTeclado();
        return 0;
    case WM_GETMINMAXINFO:
        if (m_Letra) {
            const SIZE menor = ComMoldura({m_Letra->Medida(m_Menor.Largura), m_Letra->Medida(m_Menor.Altura)});
            reinterpret_cast<MINMAXINFO *>(l)->ptMinTrackSize = {menor.cx, menor.cy};
            return 0;
        }
        break;
    case WM_MOVE:
        AvisaQueMudouDeLugar();
        if (m_Mostrada) {
            DizLugar();
        }
        return 0;
    case WM_SIZE:
        AvisaQueMudouDeLugar();
        if (m_Mostrada) {
            m_ArranjoPedido = true;
            Arranja();
            DizLugar();
            DizEstado(w);
        }
        return 0;
    case WM_DPICHANGED: {
        if (HIWORD(w) == m_Letra->Dpi()) {
            return 0;
        }
        MudaAparencia(HIWORD(w));
        const RECT &lugar = *reinterpret_cast<const RECT *>(l);
        SetWindowPos(m_Janela, nullptr, lugar.left, lugar.top, lugar.right - lugar.left, lugar.bottom - lugar.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        for (const HWND filha : FilhasDe(m_Janela)) {
            SendMessageW(filha, mensagem, 0, 0);
        }
        MudaAparencia(m_Letra->Dpi());
        break;
    case PedidoDeArranjo:
        Arranja();
        return 0;
    case ChegadaDoTeclado:
        if (const auto filha = reinterpret_cast<HWND>(w); GetFocus() == filha) {
            if (Renderizador *renderizador = DaJanela(filha)) {
                renderizador->ChegouTeclado();
            }
        }
        return 0;
    case SaidaDoTeclado:
        if (const auto filha = reinterpret_cast<HWND>(w); GetFocus() != filha) {
            if (Renderizador *renderizador = DaJanela(filha)) {
                renderizador->SaiuTeclado();
            }
        }
        return 0;
    default:
        break;
    }
    return TrataTecla(m_Janela, mensagem, w);
}

LRESULT CALLBACK JanelaForm::Procedimento(HWND janela, UINT mensagem, WPARAM w, LPARAM l) noexcept
{
    if (mensagem == WM_NCCREATE) {
        auto *nova = static_cast<JanelaForm *>(reinterpret_cast<const CREATESTRUCTW *>(l)->lpCreateParams);
        nova->m_Janela = janela;
        SetWindowLongPtrW(janela, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(nova));
    }
    auto *esta = reinterpret_cast<JanelaForm *>(GetWindowLongPtrW(janela, GWLP_USERDATA));
    if (esta == nullptr) {
        return DefWindowProcW(janela, mensagem, w, l);
    }
    const Entrada entrada(*esta);
    if (mensagem == WM_NCDESTROY) {
        SetWindowLongPtrW(janela, GWLP_USERDATA, 0);
        esta->Sumiu();
        return DefWindowProcW(janela, mensagem, w, l);
    }
    if (!esta->m_Encerrando) {
        try {
            if (const auto resposta = esta->Trata(mensagem, w, l)) {
                return *resposta;
            }
        } catch (...) {
            esta->MostraFalha();
        }
    }
    return DefWindowProcW(janela, mensagem, w, l);
}

} // namespace nativo
