#pragma once

#include "search/CVorEquip.h"
#include "windows/component/Publico.h"

namespace nativo {

// The query service as other modules have it.
class PublicoCVorEquip final : public Publico<_CVorEquip, ::CVorEquip> {
  public:
    using Publico::Publico;
    static Com<_CVorEquip> De(const Ref<::CVorEquip> &alvo) { return Publico::De<PublicoCVorEquip>(alvo); }

    HRESULT STDMETHODCALLTYPE get_NroIntEquip(LONG *valor) override;
    HRESULT STDMETHODCALLTYPE get_Modelo(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_Codigo(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_VelocPerm(short *valor) override;
    HRESULT STDMETHODCALLTYPE get_NroInmetro(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_MarcaInmetro(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_DtVerifInmetro(DATE *valor) override;
    HRESULT STDMETHODCALLTYPE SelecionaEquipamento(BSTR sCodEquip, BSTR sTipoEquip, DATE dtInfracao,
                                                   VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE BuscaEquipamento(BSTR sCodEquip, BSTR sTipoEquip, DATE dtInfracao,
                                               VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE ImpCertificadoAfericaoEquipto(LONG lCodOat, BSTR sSerie, BSTR sTxtIdent,
                                                            VARIANT_BOOL bPreview, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE LimpaArqTemp() override;
};

} // namespace nativo
