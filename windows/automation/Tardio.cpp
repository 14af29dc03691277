#include "windows/automation/Tardio.h"

#include "windows/automation/Texto16.h"

namespace nativo {

namespace {

// How objects of various makers say that a property is not written by reference: by a code, or by the number that the
// languages have for it.
bool NaoTemEssaEscrita(HRESULT codigo)
{
    if (codigo == DISP_E_EXCEPTION) { // the property is there, and has failed
        return false;
    }
    switch (NumeroDe(codigo)) {
    case NumeroFalha::TipoIncompativel:
    case NumeroFalha::MembroInexistente:
    case NumeroAutomacao::NumeroDeArgumentos:
        return true;
    default:
        return NumeroDe(codigo) == NumeroDe(E_NOTIMPL);
    }
}

} // namespace

Tardio::Tardio(Com<IDispatch> objeto, Lado lado) : m_Objeto(std::move(objeto)), m_Lado(lado)
{
    if (!m_Objeto) {
        throw Falha(NumeroFalha::ObjetoNaoDefinido);
    }
}

Tardio::Tardio(const ObjetoRemoto &remoto, Lado lado) : Tardio(remoto.Objeto(), lado)
{
    m_Remoto = &remoto;
}

bool Tardio::Tem(std::string_view nome) const
{
    try {
        Numero(nome);
        return true;
    } catch (const Falha &) {
        return false;
    }
}

DISPID Tardio::Numero(std::string_view nome) const
{
    return m_Remoto != nullptr ? m_Remoto->Membro(nome) : NumeroDoMembro(m_Objeto, nome);
}

void Tardio::Invoca(DISPID membro, int modo, VARIANT *argumentos, UINT quantos, VARIANT *resposta) const
{
    DISPPARAMS parametros{argumentos, nullptr, quantos, 0};
    EXCEPINFO informacao{};
    UINT errado = 0;
    // The object may let go of its last reference to itself while it runs.
    const Com<IDispatch> objeto = m_Objeto;
    const HRESULT codigo = objeto->Invoke(membro, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(modo), &parametros,
                                          resposta, &informacao, &errado);
    if (FAILED(codigo)) {
        throw FalhaDe(codigo, informacao);
    }
}

void Tardio::EscreveBruto(DISPID membro, std::vector<VARIANT> &argumentos) const
{
    DISPID escrita = DISPID_PROPERTYPUT;
    DISPPARAMS parametros{argumentos.data(), &escrita, static_cast<UINT>(argumentos.size()), 1};
    const Com<IDispatch> objeto = m_Objeto;
    const auto tenta = [&](WORD modo) {
        EXCEPINFO informacao{};
        UINT errado = 0;
        const HRESULT codigo =
            objeto->Invoke(membro, IID_NULL, LOCALE_USER_DEFAULT, modo, &parametros, nullptr, &informacao, &errado);
        if (SUCCEEDED(codigo)) {
            return true;
        }
        const Falha falha = FalhaDe(codigo, informacao);
        // Only an object that has no such writing is asked in the other way.
        if (modo == DISPATCH_PROPERTYPUTREF && NaoTemEssaEscrita(codigo)) {
            return false;
        }
        throw falha;
    };
    if (V_VT(&argumentos.front()) == VT_DISPATCH && tenta(DISPATCH_PROPERTYPUTREF)) {
        return;
    }
    tenta(DISPATCH_PROPERTYPUT);
}

} // namespace nativo
