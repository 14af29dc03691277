#include "windows/component/PublicoCVORPesqEquip.h"

namespace nativo {

HRESULT PublicoCVORPesqEquip::CarregaPesqEquip(LONG *, BSTR *, BSTR *, VARIANT_BOOL *resultado)
{
    return Recusa(resultado, [](::CVORPesqEquip &pesquisa, Lugares &este) {
        return pesquisa.CarregaPesqEquip(este.Numero, este.Texto1, este.Texto2);
    });
}

HRESULT PublicoCVORPesqEquip::CarregaPesqEquip2(LONG *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL *resultado)
{
    return Recusa(resultado, [](::CVORPesqEquip &pesquisa, Lugares &este) {
        return pesquisa.CarregaPesqEquip2(este.Numero, este.Texto1, este.Texto2);
    });
}

HRESULT PublicoCVORPesqEquip::CarregaPesqEquip3(LONG *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL,
                                                VARIANT_BOOL *resultado)
{
    return Recusa(resultado, [](::CVORPesqEquip &pesquisa, Lugares &este) {
        return pesquisa.CarregaPesqEquip3(este.Numero, este.Texto1, este.Texto2);
    });
}

HRESULT PublicoCVORPesqEquip::BuscaEquipto(LONG *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL, VARIANT_BOOL *resultado)
{
    return Recusa(resultado, [](::CVORPesqEquip &pesquisa, Lugares &este) {
        return pesquisa.BuscaEquipto(este.Numero, este.Texto1, este.Texto2);
    });
}

HRESULT PublicoCVORPesqEquip::ConsultaAfericaoVigente(LONG lNroEquip, BSTR *, BSTR *, DATE *, DATE dDtInfracao,
                                                      VARIANT_BOOL *resultado)
{
    return Recusa(resultado, [&](::CVORPesqEquip &pesquisa, Lugares &este) {
        return pesquisa.ConsultaAfericaoVigente(lNroEquip, este.Texto1, este.Texto2, este.Dia, Data{dDtInfracao});
    });
}

} // namespace nativo
