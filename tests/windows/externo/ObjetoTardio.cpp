#include "tests/windows/externo/ObjetoTardio.h"

namespace nativo {

namespace {

std::string Leva(BSTR texto)
{
    const std::string levado = texto == nullptr ? "" : Estreito({texto, SysStringLen(texto)});
    SysFreeString(texto);
    return levado;
}

Var DoTipo(VARTYPE tipo, void *onde)
{
    Var var;
    var.Bruta().vt = static_cast<VARTYPE>(VT_BYREF | tipo);
    var.Bruta().byref = onde;
    return var;
}

} // namespace

DISPID ObjetoTardio::Numero(const std::string &membro) const
{
    if (!m_Objeto) {
        throw FalhaExterna{91, "CLIENTE", "sem objeto para " + membro};
    }
    std::wstring nome = Largo(membro);
    LPOLESTR nomes[] = {nome.data()};
    DISPID numero = DISPID_UNKNOWN;
    const HRESULT resposta = m_Objeto->GetIDsOfNames(IID_NULL, nomes, 1, LOCALE_USER_DEFAULT, &numero);
    if (FAILED(resposta)) {
        throw FalhaExterna{NumeroDaResposta(resposta), "CLIENTE", membro};
    }
    return numero;
}

Var ObjetoTardio::Pede(const std::string &membro, WORD como, const std::vector<Var> &args) const
{
    return PedeNumero(Numero(membro), como, args);
}

Var ObjetoTardio::PedeNumero(DISPID numero, WORD como, const std::vector<Var> &args) const
{
    std::vector<VARIANT> trocados; // bare copies: the arguments stay their owner's
    for (std::size_t posicao = args.size(); posicao > 0; --posicao) {
        trocados.push_back(args[posicao - 1].Bruta());
    }
    DISPID nomeado = DISPID_PROPERTYPUT;
    const bool escreve = (como & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parametros = {trocados.data(), escreve ? &nomeado : nullptr, static_cast<UINT>(trocados.size()),
                             escreve ? 1U : 0U};
    Var resultado;
    EXCEPINFO excecao = {};
    UINT argumento = UINT_MAX;
    const HRESULT resposta = m_Objeto->Invoke(numero, IID_NULL, LOCALE_USER_DEFAULT, como, &parametros,
                                              escreve ? nullptr : resultado.Recebe(), &excecao, &argumento);
    if (SUCCEEDED(resposta)) {
        return resultado;
    }
    if (excecao.pfnDeferredFillIn != nullptr) {
        excecao.pfnDeferredFillIn(&excecao);
    }
    FalhaExterna falha;
    falha.Fonte = Leva(excecao.bstrSource);
    falha.Descricao = Leva(excecao.bstrDescription);
    SysFreeString(excecao.bstrHelpFile);
    if (resposta == DISP_E_EXCEPTION) {
        falha.Numero = excecao.wCode != 0 ? excecao.wCode : NumeroDaResposta(excecao.scode);
    } else {
        falha.Numero = NumeroDaResposta(resposta);
        if ((resposta == DISP_E_TYPEMISMATCH || resposta == DISP_E_PARAMNOTFOUND || resposta == DISP_E_OVERFLOW) &&
            argumento != UINT_MAX) {
            falha.Argumento = static_cast<std::int32_t>(args.size()) - 1 - static_cast<std::int32_t>(argumento);
        }
    }
    throw falha;
}

void ObjetoTardio::Escreve(const std::string &membro, const Var &valor) const
{
    const bool objeto = valor.Bruta().vt == VT_DISPATCH;
    Pede(membro, objeto ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, {valor});
}

Var Referencia(Var &variavel)
{
    return DoTipo(VT_VARIANT, &variavel.Bruta());
}
Var Referencia(std::int32_t &variavel)
{
    return DoTipo(VT_I4, &variavel);
}
Var Referencia(std::int16_t &variavel)
{
    return DoTipo(VT_I2, &variavel);
}
Var Referencia(double &variavel, VARTYPE tipo)
{
    return DoTipo(tipo, &variavel);
}
Var Referencia(BSTR &variavel)
{
    return DoTipo(VT_BSTR, static_cast<void *>(&variavel));
}
Var Referencia(IDispatch *&variavel)
{
    return DoTipo(VT_DISPATCH, static_cast<void *>(&variavel));
}
Var Referencia(SAFEARRAY *&variavel, VARTYPE elemento)
{
    return DoTipo(static_cast<VARTYPE>(VT_ARRAY | elemento), static_cast<void *>(&variavel));
}

} // namespace nativo
