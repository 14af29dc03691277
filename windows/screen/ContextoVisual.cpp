#include "windows/screen/ContextoVisual.h"

#include <commctrl.h>

// The linker's own name for where the module begins.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace nativo {

namespace {

constexpr WORD ManifestoDoModulo = 2;

} // namespace

HINSTANCE EsteModulo()
{
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

ContextoVisual::ContextoVisual()
{
    ACTCTXW pedido{};
    pedido.cbSize = sizeof pedido;
    pedido.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    pedido.hModule = EsteModulo();
    pedido.lpResourceName = MAKEINTRESOURCEW(ManifestoDoModulo);
    m_Contexto = CreateActCtxW(&pedido);

    const Ativo ativo(*this);
    INITCOMMONCONTROLSEX classes{};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_STANDARD_CLASSES | ICC_TAB_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES;
    InitCommonControlsEx(&classes);
}

ContextoVisual::~ContextoVisual()
{
    if (m_Contexto != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(m_Contexto);
    }
}

ContextoVisual::Ativo::Ativo(const ContextoVisual &contexto)
    : m_Ativado(contexto.m_Contexto != INVALID_HANDLE_VALUE && ActivateActCtx(contexto.m_Contexto, &m_Marca))
{
}

ContextoVisual::Ativo::~Ativo()
{
    if (m_Ativado) {
        DeactivateActCtx(0, m_Marca);
    }
}

} // namespace nativo
