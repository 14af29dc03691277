#include "tests/windows/externo/Figuras.h"

#include "tests/windows/externo/Var.h"

#include <windows.h>

#include <cstdio>

namespace nativo {

void Publica(const std::string &arquivo, const std::string &linhas)
{
    std::printf("%s", linhas.c_str());
    wchar_t pasta[MAX_PATH] = {};
    if (GetEnvironmentVariableW(L"FIGURAS", pasta, MAX_PATH) > 0) {
        std::FILE *saida = _wfopen((std::wstring(pasta) + L"\\" + Largo(arquivo)).c_str(), L"wb");
        if (saida != nullptr) {
            std::fwrite(linhas.data(), 1, linhas.size(), saida);
            std::fclose(saida);
        }
    }
}

} // namespace nativo
