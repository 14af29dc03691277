#include "tests/windows/scripts/Roteiro.h"

#include "tests/windows/externo/Var.h"

#include <cstdio>
#include <stdexcept>

namespace nativo {

Roteiro::Roteiro(const std::string &caminho)
{
    wchar_t temporaria[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temporaria);
    m_Saida = std::wstring(temporaria) + L"roteiro-" + std::to_wstring(GetCurrentProcessId()) + L".txt";
    DeleteFileW(m_Saida.c_str());
    wchar_t inteiro[MAX_PATH] = {};
    GetFullPathNameW(Largo(caminho).c_str(), MAX_PATH, inteiro, nullptr);
    std::wstring comando = std::wstring(L"cscript.exe //nologo \"") + inteiro + L"\" \"" + m_Saida + L"\"";
    STARTUPINFOW inicio = {};
    inicio.cb = sizeof inicio;
    if (CreateProcessW(nullptr, comando.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &inicio, &m_Processo) ==
        FALSE) {
        throw std::runtime_error("não começou: " + Estreito(comando));
    }
}

Roteiro::~Roteiro()
{
    TerminateProcess(m_Processo.hProcess, 1); // one that has ended does not mind
    CloseHandle(m_Processo.hThread);
    CloseHandle(m_Processo.hProcess);
    DeleteFileW(m_Saida.c_str());
}

void Roteiro::Espera()
{
    while (MsgWaitForMultipleObjects(1, &m_Processo.hProcess, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        for (MSG mensagem; PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
            TranslateMessage(&mensagem);
            DispatchMessageW(&mensagem);
        }
    }
}

std::vector<std::string> Roteiro::Linhas() const
{
    std::vector<std::string> linhas;
    std::FILE *arquivo = _wfopen(m_Saida.c_str(), L"rb");
    if (arquivo == nullptr) {
        return linhas;
    }
    std::wstring texto;
    for (wchar_t letra = 0; std::fread(&letra, sizeof letra, 1, arquivo) == 1;) {
        texto += letra;
    }
    std::fclose(arquivo);
    std::wstring linha;
    for (const wchar_t letra : texto) {
        if (letra == L'\n') {
            linhas.push_back(Estreito(linha));
            linha.clear();
        } else if (letra != L'\r' && letra != L'\xFEFF') {
            linha += letra;
        }
    }
    return linhas;
}

} // namespace nativo
