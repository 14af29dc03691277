#include "tests/windows/externo/ChamadaRecebida.h"

namespace nativo {

ChamadaRecebida::ChamadaRecebida(std::string membro, bool escreve, const DISPPARAMS &parametros)
    : m_Membro(std::move(membro)),
      m_Escreve(escreve)
{
    // The last argument comes first, and the value of a property, which has a name, before all.
    for (UINT posicao = parametros.cArgs; posicao > 0; --posicao) {
        m_Args.push_back(&parametros.rgvarg[posicao - 1]);
    }
}

VARIANT &ChamadaRecebida::Bruto(std::size_t n) const
{
    if (n >= m_Args.size()) {
        throw FalhaExterna{450, "HOSPEDEIRO", m_Membro + ": faltam argumentos"};
    }
    return *m_Args[n];
}

bool ChamadaRecebida::Tem(std::size_t n) const
{
    return n < m_Args.size() && !(m_Args[n]->vt == VT_ERROR && m_Args[n]->scode == DISP_E_PARAMNOTFOUND);
}

Var ChamadaRecebida::Arg(std::size_t n) const
{
    return Tem(n) ? Var::De(Bruto(n)) : Var();
}

void ChamadaRecebida::DevolveEm(VARIANT &onde, const Var &valor)
{
    if ((onde.vt & VT_BYREF) == 0) {
        throw FalhaExterna{13, "HOSPEDEIRO", "o argumento não veio por referência"};
    }
    if (onde.vt == (VT_BYREF | VT_VARIANT)) {
        VARIANT &dentro = *onde.pvarVal;
        if ((dentro.vt & VT_BYREF) != 0) {
            DevolveEm(dentro, valor);
        } else {
            VariantCopy(&dentro, SoLida(valor.Bruta()));
        }
        return;
    }
    const auto tipo = static_cast<VARTYPE>(onde.vt & ~VT_BYREF);
    if ((tipo & VT_ARRAY) != 0) {
        if (valor.Bruta().vt != tipo) {
            throw FalhaExterna{13, "HOSPEDEIRO", "outro tipo de vetor"};
        }
        SAFEARRAY *copia = nullptr;
        SafeArrayCopy(valor.Bruta().parray, &copia);
        SafeArrayDestroy(*onde.pparray);
        *onde.pparray = copia;
        return;
    }
    Var convertido = tipo == VT_DISPATCH ? Var(valor.Objeto()) : valor.Como(tipo);
    VARIANT &novo = convertido.Bruta();
    switch (tipo) {
    case VT_BSTR:
        SysFreeString(*onde.pbstrVal);
        *onde.pbstrVal = novo.bstrVal;
        VariantInit(&novo);
        break;
    case VT_DISPATCH:
        if (*onde.ppdispVal != nullptr) {
            (*onde.ppdispVal)->Release();
        }
        *onde.ppdispVal = novo.pdispVal;
        VariantInit(&novo);
        break;
    case VT_I2:
        *onde.piVal = novo.iVal;
        break;
    case VT_I4:
        *onde.plVal = novo.lVal;
        break;
    case VT_UI1:
        *onde.pbVal = novo.bVal;
        break;
    case VT_R8:
        *onde.pdblVal = novo.dblVal;
        break;
    case VT_DATE:
        *onde.pdate = novo.date;
        break;
    case VT_BOOL:
        *onde.pboolVal = novo.boolVal;
        break;
    default:
        throw FalhaExterna{13, "HOSPEDEIRO", "referência de tipo desconhecido"};
    }
}

std::string ChamadaRecebida::Retrato() const
{
    std::string retrato = m_Membro + (m_Escreve ? " = " : "(");
    for (std::size_t n = 0; n < m_Args.size(); ++n) {
        retrato += (n > 0 ? ", " : "") + (Tem(n) ? Arg(n).Retrato() : std::string("ausente"));
    }
    return retrato + (m_Escreve ? "" : ")");
}

} // namespace nativo
