#pragma once

#include "shell/Geral.h"
#include "windows/component/Publico.h"

namespace nativo {

// The shell as the host has it. With the first one the host's services are installed, and with the last one the
// module's state ends and they go. Meanwhile the state belongs to one thread, for there is one set of it.
class PublicoGeral final : public Publico<_Geral, ::Geral> {
  public:
    // A new shell; the platform's fault for one in another thread than those that live.
    static Com<_Geral> Cria();

    HRESULT STDMETHODCALLTYPE get_MDB(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE putref_MDB(IDispatch *valor) override;
    HRESULT STDMETHODCALLTYPE get_Depurar(VARIANT_BOOL *valor) override;
    HRESULT STDMETHODCALLTYPE put_Depurar(VARIANT_BOOL valor) override;
    HRESULT STDMETHODCALLTYPE get_InstanciarFormsClickMenu(VARIANT_BOOL *valor) override;
    HRESULT STDMETHODCALLTYPE put_InstanciarFormsClickMenu(VARIANT_BOOL valor) override;
    HRESULT STDMETHODCALLTYPE get_PossuiJanelaEnviaRecebe(VARIANT_BOOL *valor) override;
    HRESULT STDMETHODCALLTYPE put_PossuiJanelaEnviaRecebe(VARIANT_BOOL valor) override;
    HRESULT STDMETHODCALLTYPE get_ActBar(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE putref_ActBar(IDispatch *valor) override;
    HRESULT STDMETHODCALLTYPE get_Modulo(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE RegistraAM(VARIANT NomeAPP) override;
    HRESULT STDMETHODCALLTYPE DesregistraAM(VARIANT NomeAPP) override;
    HRESULT STDMETHODCALLTYPE Parametros(IDispatch **FormMDI, IDispatch **MenuDestino, IDispatch **Relatorios,
                                         IDispatch **Ajuda, IDispatch **MDB, IDispatch **oAppEXE) override;
    HRESULT STDMETHODCALLTYPE Logon(IDispatch **objMTM, IDispatch **objSCA, VARIANT sMunicCreden) override;
    HRESULT STDMETHODCALLTYPE Logoff() override;
    HRESULT STDMETHODCALLTYPE FecharJanelasAtivas() override;
    HRESULT STDMETHODCALLTYPE ClickMenu(VARIANT sTool, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE Encerra() override;
    HRESULT STDMETHODCALLTYPE get_CEspecifica(_Especifica **valor) override;
    HRESULT STDMETHODCALLTYPE HabilitarItem(VARIANT sTool, VARIANT_BOOL *resultado) override;
    HRESULT STDMETHODCALLTYPE putref_cGlobal(IDispatch *valor) override;
    HRESULT STDMETHODCALLTYPE get_cGlobal(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE get_TrataBD(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE get_UsandoModuloQMRauxiliar(VARIANT_BOOL *valor) override;
    HRESULT STDMETHODCALLTYPE putref_ObjInterface(IDispatch *valor) override;
    HRESULT STDMETHODCALLTYPE get_ObjInterface(IDispatch **valor) override;
    HRESULT STDMETHODCALLTYPE get_SistemaQMR(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_VersaoSistemaQMR(short *valor) override;
    HRESULT STDMETHODCALLTYPE get_QMRModuloID(BSTR *valor) override;
    HRESULT STDMETHODCALLTYPE get_QMRVersaoModulo(short *valor) override;
    HRESULT STDMETHODCALLTYPE ObtemTransacao(BSTR sTransID, IDispatch **resultado) override;
    HRESULT STDMETHODCALLTYPE ObtemTransacao2(BSTR sTransID, IDispatch **origem) override;
    HRESULT STDMETHODCALLTYPE ObtemTransacao3(BSTR sTransID, VARIANT *origem) override;

  private:
    using Publico::Publico;
    ~PublicoGeral() override;
};

} // namespace nativo
