#include "windows/screen/ComboNativo.h"

#include "windows/automation/Texto16.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace nativo {

namespace {

constexpr int ItensVistos = 18;

int Pergunta(HWND combo, UINT mensagem, WPARAM w = 0, LPARAM l = 0)
{
    return static_cast<int>(SendMessageW(combo, mensagem, w, l));
}

AtoNoCombo AtoDe(UINT mensagem, WPARAM w)
{
    switch (mensagem) {
    case WM_KEYDOWN:
        switch (w) {
        case VK_F4:
            return AtoNoCombo::Abre;
        case VK_UP:
        case VK_DOWN:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_HOME:
        case VK_END:
            return AtoNoCombo::Anda;
        default:
            return AtoNoCombo::Outro;
        }
    case WM_SYSKEYDOWN: // with Alt
        return w == VK_UP || w == VK_DOWN ? AtoNoCombo::Abre : AtoNoCombo::Outro;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        return AtoNoCombo::Abre;
    case CB_SHOWDROPDOWN:
        return w != 0 ? AtoNoCombo::Abre : AtoNoCombo::Outro;
    default:
        return AtoNoCombo::Outro;
    }
}

bool EhTeclaQueNaoEscreve(UINT mensagem, WPARAM w)
{
    const bool acompanha = w == VK_SHIFT || w == VK_CONTROL || w == VK_MENU;
    // What writes something comes as a letter as well.
    return mensagem == WM_KEYDOWN && !acompanha && MapVirtualKeyW(static_cast<UINT>(w), MAPVK_VK_TO_CHAR) == 0 &&
           w != VK_PACKET && w != VK_PROCESSKEY;
}

} // namespace

ComboNativo::ComboNativo(HWND janela, Atos atos) : m_Janela(janela), m_Atos(std::move(atos))
{
    SendMessageW(m_Janela, CB_SETMINVISIBLE, ItensVistos, 0);
}

bool ComboNativo::Aberto() const
{
    return Pergunta(m_Janela, CB_GETDROPPEDSTATE) != 0;
}

bool ComboNativo::FicaComTecla(WPARAM tecla) const
{
    return (tecla == VK_RETURN || tecla == VK_ESCAPE) && Aberto();
}

// While the list is open only the item that the person takes out of it is chosen, and not those on the way there.
void ComboNativo::Avisou(UINT aviso)
{
    switch (aviso) {
    case CBN_DROPDOWN:
        m_Aceitou = false;
        AlargaLista();
        break;
    case CBN_SELENDOK:
        m_Aceitou = true;
        break;
    case CBN_SELENDCANCEL:
        m_Aceitou = false;
        break;
    case CBN_CLOSEUP: {
        const int indice = Pergunta(m_Janela, CB_GETCURSEL);
        if (std::exchange(m_Aceitou, false) && indice >= 0) {
            m_Atos.Escolhe(indice);
        } else {
            SendMessageW(m_Janela, CB_SETCURSEL, static_cast<WPARAM>(m_Escolhido), 0);
        }
        break;
    }
    case CBN_SELCHANGE:
        if (const int indice = Pergunta(m_Janela, CB_GETCURSEL); !Aberto() && indice >= 0 && indice != m_Escolhido) {
            m_Atos.Escolhe(indice);
        }
        break;
    case CBN_KILLFOCUS:
        FezOutro();
        break;
    default:
        break;
    }
}

std::optional<LRESULT> ComboNativo::Mensagem(UINT mensagem, WPARAM w)
{
    if (mensagem == WM_SYSKEYDOWN && w == VK_F4) { // closes the window; not every platform's combo passes it on
        PostMessageW(GetAncestor(m_Janela, GA_ROOT), WM_SYSCOMMAND, SC_CLOSE, 0);
        return 0;
    }
    if (mensagem == WM_MOUSEWHEEL && !Aberto()) { // is for what is read, and chooses nothing unseen
        return 0;
    }
    if (m_Atos.Obedece && !m_Atos.Obedece(AtoDe(mensagem, w))) {
        if (mensagem == WM_LBUTTONDOWN) {
            SetFocus(m_Janela);
        }
        return 0;
    }
    if (mensagem == WM_CHAR && m_Atos.Pesquisa) {
        return Letra(static_cast<wchar_t>(w));
    }
    if (EhTeclaQueNaoEscreve(mensagem, w)) {
        FezOutro();
    }
    return std::nullopt;
}

std::optional<LRESULT> ComboNativo::Letra(wchar_t unidade)
{
    const wchar_t metade = std::exchange(m_Metade, IS_HIGH_SURROGATE(unidade) ? unidade : L'\0');
    if (IS_HIGH_SURROGATE(unidade)) {
        return 0;
    }
    const std::string letra =
        ParaUtf8(IS_LOW_SURROGATE(unidade) ? std::wstring{metade, unidade} : std::wstring{unidade});
    const Momento agora(static_cast<DWORD>(GetMessageTime()));
    if (letra == "\b") {
        m_Atos.Pesquisa([&](PesquisaPorLetras &pesquisa) { pesquisa.Encurta(agora); });
        return 0;
    }
    if (!EhLetraDeCombo(letra)) {
        FezOutro();
        return std::nullopt;
    }
    m_Atos.Pesquisa([&](PesquisaPorLetras &pesquisa) { pesquisa.Digita(letra, agora); });
    return 0;
}

void ComboNativo::FezOutro() const
{
    if (m_Atos.Pesquisa) {
        m_Atos.Pesquisa([](PesquisaPorLetras &pesquisa) { pesquisa.Encerra(); });
    }
}

void ComboNativo::MostraItens(std::size_t quantos, const std::function<const std::string &(std::size_t)> &item)
{
    std::size_t iguais = 0;
    while (iguais < std::min(quantos, m_Itens.size()) && m_Itens[iguais] == item(iguais)) {
        ++iguais;
    }
    if (iguais == quantos && iguais == m_Itens.size()) {
        return;
    }
    if (iguais < m_Itens.size()) { // otherwise there are only more of them
        SendMessageW(m_Janela, CB_RESETCONTENT, 0, 0);
        m_Itens.clear();
        m_Escolhido = -1;
    }
    SendMessageW(m_Janela, WM_SETREDRAW, FALSE, 0);
    m_Itens.reserve(quantos);
    while (m_Itens.size() < quantos) {
        m_Itens.push_back(item(m_Itens.size()));
        SendMessageW(m_Janela, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ParaUtf16(m_Itens.back()).c_str()));
    }
    SendMessageW(m_Janela, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_Janela, nullptr, TRUE);
}

void ComboNativo::MostraEscolhido(int indice)
{
    if (Aberto() && indice == m_Escolhido) { // what the person has come to in the list stays
        return;
    }
    m_Escolhido = indice;
    if (Pergunta(m_Janela, CB_GETCURSEL) != indice) {
        SendMessageW(m_Janela, CB_SETCURSEL, static_cast<WPARAM>(indice), 0);
    }
}

// The height of the window is that of the list; that of the field is asked of the items.
void ComboNativo::Posiciona(const Retangulo &lugar)
{
    SetWindowPos(m_Janela, nullptr, lugar.X, lugar.Y, lugar.Largura, lugar.Altura, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT atual{};
    GetWindowRect(m_Janela, &atual);
    if (const int falta = lugar.Altura - (atual.bottom - atual.top); falta != 0) {
        SendMessageW(m_Janela, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                     std::max(1, Pergunta(m_Janela, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)) + falta));
    }
}

// The list is as wide as its widest item, as far as the screen goes.
void ComboNativo::AlargaLista() const
{
    HDC papel = GetDC(m_Janela);
    const HGDIOBJ antes = SelectObject(papel, reinterpret_cast<HFONT>(SendMessageW(m_Janela, WM_GETFONT, 0, 0)));
    LONG maior = 0;
    for (const std::string &item : m_Itens) {
        const std::wstring texto = ParaUtf16(item);
        SIZE tamanho{};
        GetTextExtentPoint32W(papel, texto.c_str(), static_cast<int>(texto.size()), &tamanho);
        maior = std::max(maior, tamanho.cx);
    }
    SelectObject(papel, antes);
    ReleaseDC(m_Janela, papel);
    const int bordas = GetSystemMetrics(SM_CXVSCROLL) + 4 * GetSystemMetrics(SM_CXEDGE);
    const int tela = GetSystemMetrics(SM_CXVIRTUALSCREEN);
    SendMessageW(m_Janela, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min<int>(maior + bordas, tela)), 0);
}

} // namespace nativo
