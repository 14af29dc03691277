#pragma once

#include "shell/Especifica.h"
#include "windows/component/Publico.h"

namespace nativo {

// The module's particular side as the host and sibling modules have it, without what is for the shell alone.
class PublicoEspecifica final : public Publico<_Especifica, ::Especifica> {
  public:
    using Publico::Publico;
    static Com<_Especifica> De(const Ref<::Especifica> &alvo) { return Publico::De<PublicoEspecifica>(alvo); }

    HRESULT STDMETHODCALLTYPE Inicializa(IDispatch **oGeral) override;
    HRESULT STDMETHODCALLTYPE ClickMenu(VARIANT *sTool, IDispatch **resultado) override;
    HRESULT STDMETHODCALLTYPE HabilitarItem(BSTR sTool, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE HabilitarMenu() override;
    HRESULT STDMETHODCALLTYPE Menu(SAFEARRAY **oItens) override;
    HRESULT STDMETHODCALLTYPE MenuAuxiliar(SAFEARRAY **oItens) override;
    HRESULT STDMETHODCALLTYPE CreateCVORPesqEquip(_CVORPesqEquip **resultado) override;
    HRESULT STDMETHODCALLTYPE CreateCVorEquip(_CVorEquip **resultado) override;
    HRESULT STDMETHODCALLTYPE ImprimeAfericaoVigenteEquipto(LONG lSamdInfr, LONG lNroIntEquipto, LONG lCodOat,
                                                            BSTR sSerie) override;
};

} // namespace nativo
