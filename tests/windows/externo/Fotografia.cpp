#include "tests/windows/externo/Fotografia.h"

#include "tests/windows/externo/Var.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <vector>

namespace nativo {

namespace {

constexpr ULONGLONG Calma = 150;   // ms in which the screen shows nothing new
constexpr ULONGLONG Demora = 3000; // ms, at most

} // namespace

int Fotografa(HWND janela, const std::string &nome)
{
    RedrawWindow(janela, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT area = {};
    GetWindowRect(janela, &area);
    const int largura = area.right - area.left;
    const int altura = area.bottom - area.top;
    const HDC tela = GetDC(nullptr);
    const HDC memoria = CreateCompatibleDC(tela);
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), largura, altura, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void *bits = nullptr;
    const HBITMAP imagem = CreateDIBSection(tela, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ anterior = SelectObject(memoria, imagem);
    const auto *pontos = static_cast<const std::uint32_t *>(bits);
    const auto quantos = static_cast<std::size_t>(largura) * static_cast<std::size_t>(altura);
    // What was painted comes to the screen a little later.
    std::vector<std::uint32_t> antes(quantos);
    const ULONGLONG inicio = GetTickCount64();
    for (ULONGLONG desde = inicio; GetTickCount64() < desde + Calma && GetTickCount64() < inicio + Demora; Sleep(10)) {
        BitBlt(memoria, 0, 0, largura, altura, tela, area.left, area.top, SRCCOPY);
        GdiFlush();
        if (!std::equal(antes.begin(), antes.end(), pontos)) {
            antes.assign(pontos, pontos + quantos);
            desde = GetTickCount64();
        }
    }
    const std::set<std::uint32_t> cores(pontos, pontos + quantos);

    wchar_t pasta[MAX_PATH] = {};
    if (GetEnvironmentVariableW(L"FIGURAS", pasta, MAX_PATH) > 0) {
        std::FILE *arquivo = _wfopen((std::wstring(pasta) + L"\\" + Largo(nome) + L".bmp").c_str(), L"wb");
        if (arquivo != nullptr) {
            const auto bytes = static_cast<DWORD>(quantos * 4);
            BITMAPFILEHEADER cabecalho = {};
            cabecalho.bfType = 0x4D42;
            cabecalho.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
            cabecalho.bfSize = cabecalho.bfOffBits + bytes;
            std::fwrite(&cabecalho, sizeof cabecalho, 1, arquivo);
            std::fwrite(&info.bmiHeader, sizeof info.bmiHeader, 1, arquivo);
            std::fwrite(bits, 1, bytes, arquivo);
            std::fclose(arquivo);
        }
    }
    SelectObject(memoria, anterior);
    DeleteObject(imagem);
    DeleteDC(memoria);
    ReleaseDC(nullptr, tela);
    return static_cast<int>(cores.size());
}

} // namespace nativo
