#pragma once

#include "search/CVORPesqEquip.h"
#include "windows/component/Publico.h"

namespace nativo {

// The former query service as other modules have it. It refuses without a look at its arguments.
class PublicoCVORPesqEquip final : public Publico<_CVORPesqEquip, ::CVORPesqEquip> {
  public:
    using Publico::Publico;
    static Com<_CVORPesqEquip> De(const Ref<::CVORPesqEquip> &alvo) { return Publico::De<PublicoCVORPesqEquip>(alvo); }

    HRESULT STDMETHODCALLTYPE CarregaPesqEquip(LONG *lNroEquip, BSTR *sCodEquip, BSTR *sModelo,
                                               VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE CarregaPesqEquip2(LONG *lNroEquip, BSTR *sCodEquip, BSTR *sModelo, short *iVelPerm,
                                                BSTR sTipoEquipto, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE CarregaPesqEquip3(LONG *lNroEquip, BSTR *sCodEquip, BSTR *sModelo, short *iVelPerm,
                                                BSTR sTipoEquipto, VARIANT_BOOL bUsaSetor,
                                                VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE BuscaEquipto(LONG *lNroEquip, BSTR *sCodEquip, BSTR *sModelo, short *iVelPerm,
                                           BSTR sTipoEquipto, VARIANT_BOOL bUsaSetor, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE ConsultaAfericaoVigente(LONG lNroEquip, BSTR *sNroInmetro, BSTR *sMarcaInmetro,
                                                      DATE *dDtInmetro, DATE dDtInfracao,
                                                      VARIANT_BOOL *resultado) override;

  private:
    // What the refusing methods are given in the place of the caller's variables.
    struct Lugares {
        std::int32_t Numero = 0;
        std::string Texto1;
        std::string Texto2;
        Data Dia;
    };
    template <class Acao> HRESULT Recusa(VARIANT_BOOL *resultado, Acao acao)
    {
        return Responde(resultado, [&](::CVORPesqEquip &pesquisa) {
            Lugares lugares;
            return acao(pesquisa, lugares);
        });
    }
};

} // namespace nativo
