#include "windows/host/TabelaDaVariante.h"

#include "windows/automation/Falhas.h"
#include "windows/automation/Valores.h"

#include <oleauto.h>

#include <array>

namespace nativo {

TabelaTexto TabelaDaVariante(const VARIANT &variante)
{
    VARIANT apoio;
    const VARIANT &valor = detalhe::SemReferencia(variante, apoio);
    const auto tipo = static_cast<VARTYPE>(V_VT(&valor) & VT_TYPEMASK);
    if ((V_VT(&valor) & VT_ARRAY) == 0 || (tipo != VT_BSTR && tipo != VT_VARIANT)) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    SAFEARRAY *arranjo = (V_VT(&valor) & VT_BYREF) != 0 ? *V_ARRAYREF(&valor) : V_ARRAY(&valor);
    if (arranjo == nullptr || SafeArrayGetDim(arranjo) != 2) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    detalhe::ConfereElementos(arranjo, tipo);
    std::array<LONG, 2> primeiro{};
    std::array<LONG, 2> ultimo{};
    for (UINT dimensao = 0; dimensao < 2; ++dimensao) {
        Exige(SafeArrayGetLBound(arranjo, dimensao + 1, &primeiro[dimensao]));
        Exige(SafeArrayGetUBound(arranjo, dimensao + 1, &ultimo[dimensao]));
    }
    TabelaTexto tabela(ultimo[0] - primeiro[0] + 1);
    for (std::int64_t linha = primeiro[1]; linha <= ultimo[1]; ++linha) {
        const std::int32_t nova = tabela.AdicionaLinha();
        for (std::int64_t coluna = primeiro[0]; coluna <= ultimo[0]; ++coluna) {
            std::array<LONG, 2> lugar{static_cast<LONG>(coluna), static_cast<LONG>(linha)};
            Variante celula;
            if (tipo == VT_VARIANT) {
                Exige(SafeArrayGetElement(arranjo, lugar.data(), &celula.Bruta()));
            } else {
                Exige(SafeArrayGetElement(arranjo, lugar.data(), &V_BSTR(&celula.Bruta())));
                V_VT(&celula.Bruta()) = VT_BSTR;
            }
            tabela.Celula(static_cast<std::int32_t>(coluna - primeiro[0] + 1), nova) =
                DeVariante<std::string>(celula.Bruta());
        }
    }
    return tabela;
}

} // namespace nativo
