#include "windows/component/PublicoCVorEquip.h"

namespace nativo {

HRESULT PublicoCVorEquip::get_NroIntEquip(LONG *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.NroIntEquip(); });
}

HRESULT PublicoCVorEquip::get_Modelo(BSTR *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.Modelo(); });
}

HRESULT PublicoCVorEquip::get_Codigo(BSTR *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.Codigo(); });
}

HRESULT PublicoCVorEquip::get_VelocPerm(short *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.VelocPerm(); });
}

HRESULT PublicoCVorEquip::get_NroInmetro(BSTR *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.NroInmetro(); });
}

HRESULT PublicoCVorEquip::get_MarcaInmetro(BSTR *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.MarcaInmetro(); });
}

HRESULT PublicoCVorEquip::get_DtVerifInmetro(DATE *valor)
{
    return Responde(valor, [](::CVorEquip &consulta) { return consulta.DtVerifInmetro(); });
}

HRESULT PublicoCVorEquip::SelecionaEquipamento(BSTR sCodEquip, BSTR sTipoEquip, DATE dtInfracao,
                                               VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::CVorEquip &consulta) {
        return consulta.SelecionaEquipamento(TextoDe(sCodEquip), TextoDe(sTipoEquip), Data{dtInfracao});
    });
}

HRESULT PublicoCVorEquip::BuscaEquipamento(BSTR sCodEquip, BSTR sTipoEquip, DATE dtInfracao, VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::CVorEquip &consulta) {
        return consulta.BuscaEquipamento(TextoDe(sCodEquip), TextoDe(sTipoEquip), Data{dtInfracao});
    });
}

HRESULT PublicoCVorEquip::ImpCertificadoAfericaoEquipto(LONG lCodOat, BSTR sSerie, BSTR sTxtIdent,
                                                        VARIANT_BOOL bPreview, VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::CVorEquip &consulta) {
        return consulta.ImpCertificadoAfericaoEquipto(lCodOat, TextoDe(sSerie), TextoDe(sTxtIdent),
                                                      bPreview != VARIANT_FALSE);
    });
}

HRESULT PublicoCVorEquip::LimpaArqTemp()
{
    return Executa([](::CVorEquip &consulta) { consulta.LimpaArqTemp(); });
}

} // namespace nativo
