#include "tests/windows/Fotografia.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace nativo {

void Fotografa(HWND janela, const std::string &nome)
{
    RedrawWindow(janela, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    GdiFlush(); // what was painted is on the screen
    RECT lugar{};
    GetWindowRect(janela, &lugar);
    const RECT tudo{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    IntersectRect(&lugar, &lugar, &tudo); // of what is beyond it the screen gives nothing at all
    const int largura = lugar.right - lugar.left;
    const int altura = lugar.bottom - lugar.top;
    HDC tela = GetDC(nullptr);
    HDC papel = CreateCompatibleDC(tela);
    HBITMAP folha = CreateCompatibleBitmap(tela, largura, altura);
    const HGDIOBJ antes = SelectObject(papel, folha);
    BitBlt(papel, 0, 0, largura, altura, tela, lugar.left, lugar.top, SRCCOPY);
    SelectObject(papel, antes);
    BITMAPINFO forma{};
    forma.bmiHeader = {sizeof(BITMAPINFOHEADER), largura, altura, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<std::uint32_t> pontos(static_cast<std::size_t>(largura) * static_cast<std::size_t>(altura));
    GetDIBits(papel, folha, 0, static_cast<UINT>(altura), pontos.data(), &forma, DIB_RGB_COLORS);
    DeleteObject(folha);
    DeleteDC(papel);
    ReleaseDC(nullptr, tela);

    wchar_t programa[MAX_PATH]{};
    GetModuleFileNameW(nullptr, programa, MAX_PATH);
    const auto pasta = std::filesystem::path(programa).parent_path() / "retratos";
    std::filesystem::create_directories(pasta);
    std::ofstream arquivo(pasta / (nome + ".bmp"), std::ios::binary);
    BITMAPFILEHEADER cabeca{};
    cabeca.bfType = 0x4D42;
    cabeca.bfOffBits = sizeof cabeca + sizeof forma.bmiHeader;
    cabeca.bfSize = static_cast<DWORD>(cabeca.bfOffBits + pontos.size() * sizeof(std::uint32_t));
    arquivo.write(reinterpret_cast<const char *>(&cabeca), sizeof cabeca);
    arquivo.write(reinterpret_cast<const char *>(&forma.bmiHeader), sizeof forma.bmiHeader);
    arquivo.write(reinterpret_cast<const char *>(pontos.data()),
                  static_cast<std::streamsize>(pontos.size() * sizeof(std::uint32_t)));
}

} // namespace nativo
