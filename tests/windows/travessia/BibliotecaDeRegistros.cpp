#include "tests/windows/travessia/BibliotecaDeRegistros.h"

#include "windows/automation/Com.h"

#include <objbase.h>

#include <string>

namespace nativo {
namespace {

std::wstring PastaDoPrograma()
{
    std::wstring caminho(MAX_PATH, L'\0');
    caminho.resize(GetModuleFileNameW(nullptr, caminho.data(), MAX_PATH));
    return caminho.substr(0, caminho.rfind(L'\\') + 1);
}

} // namespace

BibliotecaDeRegistros::BibliotecaDeRegistros()
{
    const std::wstring manifesto = PastaDoPrograma() + L"ZTVORLIB.manifest";
    ACTCTXW pedido{};
    pedido.cbSize = sizeof pedido;
    pedido.lpSource = manifesto.c_str();
    m_Contexto = CreateActCtxW(&pedido);
    if (m_Contexto != INVALID_HANDLE_VALUE) {
        ActivateActCtx(m_Contexto, &m_Ativo);
    }
}

BibliotecaDeRegistros::~BibliotecaDeRegistros()
{
    if (m_Contexto != INVALID_HANDLE_VALUE) {
        DeactivateActCtx(0, m_Ativo);
        ReleaseActCtx(m_Contexto);
    }
}

bool BibliotecaDeRegistros::Registrada() const
{
    CLSID numero{};
    Com<IDispatch> registro;
    return SUCCEEDED(CLSIDFromProgID(L"ZTVORLIB.EquiptoED", &numero)) &&
           SUCCEEDED(CoCreateInstance(numero, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, registro.RecebeVazio()));
}

} // namespace nativo
