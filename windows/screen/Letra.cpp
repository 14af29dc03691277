#include "windows/screen/Letra.h"

#include "tela/Twips.h"
#include "windows/automation/Texto16.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <cwchar>

namespace nativo {

namespace {

constexpr int DpiDoContrato = 96; // at which a pixel is 15 twips
constexpr std::size_t MedidasGuardadas = 4096;

// Functions of later systems than the oldest on which the component runs.
template <class Funcao> Funcao DoSistema(const char *nome)
{
    return reinterpret_cast<Funcao>(reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"user32.dll"), nome)));
}

LOGFONTW FonteDasMensagens(UINT dpi)
{
    NONCLIENTMETRICSW medidas{};
    medidas.cbSize = sizeof medidas;
    using ComDpi = BOOL(WINAPI *)(UINT, UINT, void *, UINT, UINT);
    if (const auto comDpi = DoSistema<ComDpi>("SystemParametersInfoForDpi");
        comDpi != nullptr && comDpi(SPI_GETNONCLIENTMETRICS, sizeof medidas, &medidas, 0, dpi)) {
        return medidas.lfMessageFont;
    }
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof medidas, &medidas, 0);
    medidas.lfMessageFont.lfHeight =
        MulDiv(medidas.lfMessageFont.lfHeight, static_cast<int>(dpi), static_cast<int>(DpiDe(nullptr)));
    return medidas.lfMessageFont;
}

} // namespace

UINT DpiDe(HWND janela)
{
    using DaJanela = UINT(WINAPI *)(HWND);
    if (const auto daJanela = DoSistema<DaJanela>("GetDpiForWindow"); daJanela != nullptr && janela != nullptr) {
        if (const UINT dpi = daJanela(janela); dpi != 0) {
            return dpi;
        }
    }
    HDC tela = GetDC(nullptr);
    const int dpi = GetDeviceCaps(tela, LOGPIXELSY);
    ReleaseDC(nullptr, tela);
    return static_cast<UINT>(dpi);
}

Letra::Letra(UINT dpi) : m_Dpi(dpi), m_Papel(CreateCompatibleDC(nullptr))
{
    const LOGFONTW fonte = FonteDasMensagens(dpi);
    m_Fonte = CreateFontIndirectW(&fonte);
    m_FonteDoPapel = SelectObject(m_Papel, m_Fonte);
}

Letra::~Letra()
{
    SelectObject(m_Papel, m_FonteDoPapel);
    DeleteDC(m_Papel);
    DeleteObject(m_Fonte);
}

bool Letra::Igual(const Letra &outra) const
{
    LOGFONTW esta{};
    LOGFONTW aquela{};
    GetObjectW(m_Fonte, sizeof esta, &esta);
    GetObjectW(outra.m_Fonte, sizeof aquela, &aquela);
    return m_Dpi == outra.m_Dpi && std::memcmp(&esta, &aquela, offsetof(LOGFONTW, lfFaceName)) == 0 &&
           std::wcscmp(esta.lfFaceName, aquela.lfFaceName) == 0;
}

Tamanho Letra::Mede(const std::string &texto, std::int32_t largura) const
{
    if (const auto achada = m_Medidas.find(texto); largura == 0 && achada != m_Medidas.end()) {
        return achada->second;
    }
    const std::wstring largo = texto.empty() ? L" " : ParaUtf16(texto);
    RECT lugar{0, 0, Medida(largura), 0};
    const UINT quebra = largura > 0 ? DT_WORDBREAK : 0;
    DrawTextW(m_Papel, largo.c_str(), static_cast<int>(largo.size()), &lugar,
              DT_CALCRECT | DT_NOPREFIX | DT_EXPANDTABS | quebra);
    const auto inteiros = [this](LONG daTela) {
        return static_cast<std::int32_t>((daTela * DpiDoContrato + static_cast<LONG>(m_Dpi) - 1) /
                                         static_cast<LONG>(m_Dpi));
    };
    const Tamanho tamanho{texto.empty() ? 0 : inteiros(lugar.right), inteiros(lugar.bottom)};
    if (largura == 0) {
        if (m_Medidas.size() >= MedidasGuardadas) {
            m_Medidas.clear();
        }
        m_Medidas.emplace(texto, tamanho);
    }
    return tamanho;
}

int Letra::Medida(std::int32_t pixels) const
{
    return (pixels * static_cast<int>(m_Dpi) + DpiDoContrato - 1) / DpiDoContrato;
}

int Letra::Lugar(std::int32_t pixels) const
{
    return MulDiv(pixels, static_cast<int>(m_Dpi), DpiDoContrato);
}

Retangulo Letra::NaTela(const Retangulo &lugar) const
{
    return {Lugar(lugar.X), Lugar(lugar.Y), Medida(lugar.Largura), Medida(lugar.Altura)};
}

int Letra::DeTwips(std::int32_t twips) const
{
    return MulDiv(twips, static_cast<int>(m_Dpi), DpiDoContrato * TwipsPorPixel);
}

std::int32_t Letra::Cabem(int daTela) const
{
    return daTela * DpiDoContrato / static_cast<int>(m_Dpi);
}

std::int32_t Letra::EmTwips(int daTela) const
{
    return MulDiv(daTela, DpiDoContrato * TwipsPorPixel, static_cast<int>(m_Dpi));
}

} // namespace nativo
