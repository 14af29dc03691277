#include "windows/screen/Caixa.h"

#include <commctrl.h>

#include <utility>
#include <vector>

namespace nativo {

namespace {

constexpr int Sim = 100;
constexpr int Nao = 101;
constexpr int Ok = 102;

PCWSTR IconeDe(TipoDeCaixa tipo)
{
    switch (tipo) {
    case TipoDeCaixa::Informacao:
        return TD_INFORMATION_ICON;
    case TipoDeCaixa::Aviso:
        return TD_WARNING_ICON;
    case TipoDeCaixa::Erro:
        break;
    }
    return TD_ERROR_ICON;
}

// The button that was pressed; 0 when the box was closed.
int Mostra(const ContextoVisual &contexto, TASKDIALOGCONFIG caixa, const std::vector<TASKDIALOG_BUTTON> &botoes)
{
    caixa.cbSize = sizeof caixa;
    caixa.dwFlags |= TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW | TDF_SIZE_TO_CONTENT;
    caixa.cButtons = static_cast<UINT>(botoes.size());
    caixa.pButtons = botoes.data();
    const ContextoVisual::Ativo ativo(contexto);
    // Only common controls 6 have it, which the context brings.
    using Funcao = HRESULT(WINAPI *)(const TASKDIALOGCONFIG *, int *, int *, BOOL *);
    const auto mostra = reinterpret_cast<Funcao>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"comctl32.dll"), "TaskDialogIndirect")));
    int apertado = 0;
    if (mostra == nullptr || FAILED(mostra(&caixa, &apertado, nullptr, nullptr))) {
        return 0;
    }
    return apertado;
}

} // namespace

bool MostraPergunta(const ContextoVisual &contexto, HWND dono, const std::wstring &texto, const std::wstring &titulo,
                    bool padraoSim)
{
    TASKDIALOGCONFIG caixa{};
    caixa.hwndParent = dono;
    caixa.pszWindowTitle = titulo.c_str();
    caixa.pszContent = texto.c_str();
    caixa.nDefaultButton = padraoSim ? Sim : Nao;
    return Mostra(contexto, caixa, {{Sim, L"&Sim"}, {Nao, L"&Não"}}) == Sim;
}

void MostraAviso(const ContextoVisual &contexto, HWND dono, TipoDeCaixa tipo, const std::wstring &texto,
                 const std::wstring &titulo, const std::wstring &detalhes)
{
    const std::wstring inteiro = detalhes.empty() ? texto : texto + L"\n\n" + detalhes;
    TASKDIALOGCONFIG caixa{};
    caixa.hwndParent = dono;
    caixa.pszWindowTitle = titulo.c_str();
    caixa.pszMainIcon = IconeDe(tipo);
    caixa.pszContent = inteiro.c_str();
    Mostra(contexto, caixa, {{Ok, L"&OK"}});
}

} // namespace nativo
