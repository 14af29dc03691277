#include "windows/component/ArquivoDoModulo.h"

#include "windows/automation/Falhas.h"

#include <windows.h>

// Where the linker put the file's beginning in memory, which is the handle by which the platform knows it.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace nativo {

std::wstring PorExtenso(const std::wstring &caminho)
{
    std::wstring extenso(caminho.size() + MAX_PATH, L'\0');
    for (;;) {
        const DWORD escritos = GetLongPathNameW(caminho.c_str(), extenso.data(), static_cast<DWORD>(extenso.size()));
        if (escritos == 0) {
            return caminho;
        }
        const bool coube = escritos < extenso.size();
        extenso.resize(escritos);
        if (coube) {
            return extenso;
        }
    }
}

std::wstring ArquivoDoModulo()
{
    std::wstring caminho(MAX_PATH, L'\0');
    for (;;) {
        const DWORD escritos = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), caminho.data(),
                                                  static_cast<DWORD>(caminho.size()));
        if (escritos == 0) {
            Exige(HRESULT_FROM_WIN32(GetLastError()));
        }
        if (escritos < caminho.size()) {
            caminho.resize(escritos);
            return PorExtenso(caminho);
        }
        caminho.resize(caminho.size() * 2);
    }
}

} // namespace nativo
