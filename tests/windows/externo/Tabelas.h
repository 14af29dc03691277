#pragma once

#include <windows.h>

#include <oaidl.h>

namespace nativo {

// The component's interfaces as a client's compiler lays them out that was told their members in order and nothing
// more. Objects are IDispatch throughout.

struct TabelaGeral : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE LeMDB(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoeMDB(IDispatch *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeDepurar(VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoeDepurar(VARIANT_BOOL) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeInstanciarFormsClickMenu(VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoeInstanciarFormsClickMenu(VARIANT_BOOL) = 0;
    virtual HRESULT STDMETHODCALLTYPE LePossuiJanelaEnviaRecebe(VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoePossuiJanelaEnviaRecebe(VARIANT_BOOL) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeActBar(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoeActBar(IDispatch *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeModulo(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE RegistraAM(VARIANT) = 0;
    virtual HRESULT STDMETHODCALLTYPE DesregistraAM(VARIANT) = 0;
    virtual HRESULT STDMETHODCALLTYPE Parametros(IDispatch **, IDispatch **, IDispatch **, IDispatch **, IDispatch **,
                                                 IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE Logon(IDispatch **, IDispatch **, VARIANT) = 0;
    virtual HRESULT STDMETHODCALLTYPE Logoff() = 0;
    virtual HRESULT STDMETHODCALLTYPE FecharJanelasAtivas() = 0;
    virtual HRESULT STDMETHODCALLTYPE ClickMenu(VARIANT, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE Encerra() = 0;
    virtual HRESULT STDMETHODCALLTYPE LeCEspecifica(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE HabilitarItem(VARIANT, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoecGlobal(IDispatch *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LecGlobal(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeTrataBD(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeUsandoModuloQMRauxiliar(VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE PoeObjInterface(IDispatch *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeObjInterface(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeSistemaQMR(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeVersaoSistemaQMR(short *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeQMRModuloID(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeQMRVersaoModulo(short *) = 0;
    virtual HRESULT STDMETHODCALLTYPE ObtemTransacao(BSTR, IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE ObtemTransacao2(BSTR, IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE ObtemTransacao3(BSTR, VARIANT *) = 0;
};

struct TabelaEspecifica : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Inicializa(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClickMenu(VARIANT *, IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE HabilitarItem(BSTR, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE HabilitarMenu() = 0;
    virtual HRESULT STDMETHODCALLTYPE Menu(SAFEARRAY **) = 0;
    virtual HRESULT STDMETHODCALLTYPE MenuAuxiliar(SAFEARRAY **) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCVORPesqEquip(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateCVorEquip(IDispatch **) = 0;
    virtual HRESULT STDMETHODCALLTYPE ImprimeAfericaoVigenteEquipto(long, long, long, BSTR) = 0;
};

struct TabelaCVorEquip : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE LeNroIntEquip(long *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeModelo(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeCodigo(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeVelocPerm(short *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeNroInmetro(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeMarcaInmetro(BSTR *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LeDtVerifInmetro(DATE *) = 0;
    virtual HRESULT STDMETHODCALLTYPE SelecionaEquipamento(BSTR, BSTR, DATE, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE BuscaEquipamento(BSTR, BSTR, DATE, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE ImpCertificadoAfericaoEquipto(long, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE LimpaArqTemp() = 0;
};

struct TabelaCVORPesqEquip : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE CarregaPesqEquip(long *, BSTR *, BSTR *, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE CarregaPesqEquip2(long *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE CarregaPesqEquip3(long *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL,
                                                        VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE BuscaEquipto(long *, BSTR *, BSTR *, short *, BSTR, VARIANT_BOOL,
                                                   VARIANT_BOOL *) = 0;
    virtual HRESULT STDMETHODCALLTYPE ConsultaAfericaoVigente(long, BSTR *, BSTR *, DATE *, DATE, VARIANT_BOOL *) = 0;
};

} // namespace nativo
