#include "windows/screen/CampoNativo.h"

#include "windows/automation/Texto16.h"

#include <algorithm>
#include <utility>

namespace nativo {

namespace {

bool AbrePar(wchar_t unidade)
{
    return IS_HIGH_SURROGATE(unidade);
}

bool FechaPar(wchar_t unidade)
{
    return IS_LOW_SURROGATE(unidade);
}

bool NoMeioDoPar(std::wstring_view texto, std::size_t unidade)
{
    return unidade > 0 && unidade < texto.size() && AbrePar(texto[unidade - 1]) && FechaPar(texto[unidade]);
}

// A key may take out half of a character: the other half, which stands at the cursor, goes with it.
void CompletaCorte(std::wstring_view antes, std::wstring &depois, std::size_t &cursor)
{
    const std::size_t atras = depois.size() - cursor;
    if (atras > 0 && atras <= antes.size() && NoMeioDoPar(antes, antes.size() - atras) &&
        !NoMeioDoPar(depois, cursor)) {
        depois.erase(cursor, 1);
    }
    if (cursor > 0 && AbrePar(depois[cursor - 1]) && !NoMeioDoPar(depois, cursor)) {
        depois.erase(--cursor, 1);
    }
}

bool Abaixada(int tecla)
{
    return GetKeyState(tecla) < 0;
}

} // namespace

std::size_t CaracteresAte(std::wstring_view texto, std::size_t unidade)
{
    std::size_t caracteres = 0;
    for (std::size_t i = 0; i < std::min(unidade, texto.size()); ++i) {
        caracteres += NoMeioDoPar(texto, i) ? 0U : 1U;
    }
    return caracteres;
}

std::size_t UnidadesAte(std::wstring_view texto, std::size_t carater)
{
    std::size_t unidade = 0;
    for (; unidade < texto.size() && (carater > 0 || NoMeioDoPar(texto, unidade)); ++unidade) {
        carater -= NoMeioDoPar(texto, unidade) ? 0U : 1U;
    }
    return unidade;
}

CampoNativo::CampoNativo(HWND janela, std::function<void(const std::string &, std::size_t)> editou)
    : m_Janela(janela),
      m_Editou(std::move(editou))
{
    SendMessageW(m_Janela, EM_SETLIMITTEXT, 0, 0); // limits are the controls' affair
    // The room that its place has beside the text is the cursor's: a short field would scroll its first letter away.
    SendMessageW(m_Janela, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
}

std::wstring CampoNativo::Texto() const
{
    std::wstring texto(static_cast<std::size_t>(GetWindowTextLengthW(m_Janela)), L'\0');
    const int lidas = GetWindowTextW(m_Janela, texto.data(), static_cast<int>(texto.size()) + 1);
    texto.resize(static_cast<std::size_t>(lidas));
    return texto;
}

void CampoNativo::Avisou(UINT aviso)
{
    if (aviso != EN_CHANGE || m_Mostrando) {
        return;
    }
    std::wstring texto = Texto();
    DWORD fim = 0;
    SendMessageW(m_Janela, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&fim));
    std::size_t cursor = std::min<std::size_t>(fim, texto.size());
    CompletaCorte(m_Mostrado, texto, cursor);
    m_Editou(ParaUtf8(texto), CaracteresAte(texto, cursor));
}

void CampoNativo::Mostra(const std::string &texto, std::optional<std::size_t> cursor)
{
    m_Mostrado = ParaUtf16(texto);
    const std::wstring antes = Texto();
    if (antes == m_Mostrado) { // the cursor stays with what is being typed
        return;
    }
    DWORD fim = 0;
    SendMessageW(m_Janela, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&fim));
    std::size_t lugar = m_Mostrado.size();
    if (cursor) {
        lugar = UnidadesAte(m_Mostrado, *cursor);
    } else if (GetFocus() == m_Janela) {
        const std::size_t sobra = antes.size() > m_Mostrado.size() ? antes.size() - m_Mostrado.size() : 0;
        lugar = fim > sobra ? fim - sobra : 0;
    }
    m_Mostrando = true;
    SetWindowTextW(m_Janela, m_Mostrado.c_str());
    m_Mostrando = false;
    if (GetFocus() != m_Janela) { // its beginning is what is to be seen
        m_Cursor = lugar;
        lugar = 0;
    }
    SendMessageW(m_Janela, EM_SETSEL, lugar, static_cast<LPARAM>(lugar));
    SendMessageW(m_Janela, EM_SCROLLCARET, 0, 0);
}

void CampoNativo::DefineSomenteLeitura(bool valor)
{
    if (((GetWindowLongPtrW(m_Janela, GWL_STYLE) & ES_READONLY) != 0) != valor) {
        SendMessageW(m_Janela, EM_SETREADONLY, valor ? TRUE : FALSE, 0);
        InvalidateRect(m_Janela, nullptr, TRUE);
    }
}

std::optional<LRESULT> CampoNativo::Mensagem(UINT mensagem, WPARAM w)
{
    switch (mensagem) {
    case WM_KEYDOWN:
        if (w == 'A' && Abaixada(VK_CONTROL) && !Abaixada(VK_MENU) && !Abaixada(VK_SHIFT)) {
            SendMessageW(m_Janela, EM_SETSEL, 0, -1);
            return 0;
        }
        return std::nullopt;
    case WM_CHAR:
        return Letra(static_cast<wchar_t>(w));
    case WM_LBUTTONDOWN: // tells another place
        m_Cursor.reset();
        return std::nullopt;
    case WM_SETFOCUS:
        if (const auto cursor = std::exchange(m_Cursor, std::nullopt)) {
            SendMessageW(m_Janela, EM_SETSEL, *cursor, static_cast<LPARAM>(*cursor));
        }
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

// Of what comes in two, nothing is typed until both are there.
std::optional<LRESULT> CampoNativo::Letra(wchar_t unidade)
{
    constexpr wchar_t CtrlA = 1;
    const wchar_t metade = std::exchange(m_Metade, AbrePar(unidade) ? unidade : L'\0');
    if (unidade == CtrlA || AbrePar(unidade)) {
        return 0;
    }
    if (!FechaPar(unidade)) {
        return std::nullopt;
    }
    if (metade != 0 && (GetWindowLongPtrW(m_Janela, GWL_STYLE) & ES_READONLY) == 0) {
        const wchar_t par[] = {metade, unidade, 0};
        SendMessageW(m_Janela, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(par));
    }
    return 0;
}

} // namespace nativo
