#include "planilhas/NumerosComPonto.h"

#include "host/Falha.h"

namespace planilhas {

namespace {

// Made once; the program keeps it.
locale_t ComPonto()
{
    static const locale_t comPonto = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    if (comPonto == nullptr) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    return comPonto;
}

} // namespace

NumerosComPonto::NumerosComPonto() : m_Antes(uselocale(ComPonto())) {}

NumerosComPonto::~NumerosComPonto()
{
    uselocale(m_Antes);
}

} // namespace planilhas
