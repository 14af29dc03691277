#include "windows/component/PublicoGeral.h"

#include "shell/Especifica.h"
#include "shell/ModGeral.h"
#include "windows/component/PublicoEspecifica.h"
#include "windows/host/FazHostWindows.h"

namespace nativo {
namespace {

DWORD FioDoModulo = 0;

// A text that a procedure of the shell is given: one that is none is a fault of the procedure.
std::string TextoPara(const VARIANT &dado, std::string_view cauda)
try {
    return DeVariante<std::string>(dado);
} catch (...) {
    PassaFalha(cauda);
}

Valor NomeDaAplicacao(const VARIANT &NomeAPP)
{
    return DeVariante<std::optional<Valor>>(NomeAPP).value_or("");
}

void TerminaModulo() noexcept
{
    DescarregaModulo();
    InstalaHost(nullptr);
}

} // namespace

Com<_Geral> PublicoGeral::Cria()
try {
    if (!HaVivos()) {
        InstalaHost(FazHostWindows());
        FioDoModulo = GetCurrentThreadId();
    } else if (FioDoModulo != GetCurrentThreadId()) {
        throw Falha(NumeroDe(RPC_E_WRONG_THREAD));
    }
    return Com<_Geral>::Adota(new PublicoGeral(Novo<::Geral>()));
} catch (...) {
    if (!HaVivos()) {
        TerminaModulo();
    }
    throw;
}

PublicoGeral::~PublicoGeral()
{
    Solta();
    if (!HaVivos()) {
        TerminaModulo();
    }
}

HRESULT PublicoGeral::get_MDB(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.MDB()); });
}

HRESULT PublicoGeral::putref_MDB(IDispatch *valor)
{
    return Executa([&](::Geral &geral) { geral.DefineMDB(ObjetoDe<IMDB>(valor)); });
}

HRESULT PublicoGeral::get_Depurar(VARIANT_BOOL *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.Depurar; });
}

HRESULT PublicoGeral::put_Depurar(VARIANT_BOOL valor)
{
    return Executa([&](::Geral &geral) { geral.Depurar = valor != VARIANT_FALSE; });
}

HRESULT PublicoGeral::get_InstanciarFormsClickMenu(VARIANT_BOOL *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.InstanciarFormsClickMenu; });
}

HRESULT PublicoGeral::put_InstanciarFormsClickMenu(VARIANT_BOOL valor)
{
    return Executa([&](::Geral &geral) { geral.InstanciarFormsClickMenu = valor != VARIANT_FALSE; });
}

HRESULT PublicoGeral::get_PossuiJanelaEnviaRecebe(VARIANT_BOOL *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.PossuiJanelaEnviaRecebe; });
}

HRESULT PublicoGeral::put_PossuiJanelaEnviaRecebe(VARIANT_BOOL valor)
{
    return Executa([&](::Geral &geral) { geral.PossuiJanelaEnviaRecebe = valor != VARIANT_FALSE; });
}

HRESULT PublicoGeral::get_ActBar(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.ActBar); });
}

HRESULT PublicoGeral::putref_ActBar(IDispatch *valor)
{
    return Executa([&](::Geral &geral) { geral.ActBar = ObjetoDe<IActBar>(valor); });
}

HRESULT PublicoGeral::get_Modulo(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.Modulo()); });
}

// Errors are ignored by contract, those of the argument too.
HRESULT PublicoGeral::RegistraAM(VARIANT NomeAPP)
{
    return Executa([&](::Geral &geral) { IgnoraErro([&] { geral.RegistraAM(NomeDaAplicacao(NomeAPP)); }); });
}

HRESULT PublicoGeral::DesregistraAM(VARIANT NomeAPP)
{
    return Executa([&](::Geral &geral) { IgnoraErro([&] { geral.DesregistraAM(NomeDaAplicacao(NomeAPP)); }); });
}

HRESULT PublicoGeral::Parametros(IDispatch **FormMDI, IDispatch **MenuDestino, IDispatch **Relatorios,
                                 IDispatch **Ajuda, IDispatch **MDB, IDispatch **oAppEXE)
{
    return Executa([&](::Geral &geral) {
        geral.Parametros(ObjetoDe<IFormMDI>(FormMDI), ObjetoDe<IActBar>(MenuDestino), ObjetoDe<IRelatorios>(Relatorios),
                         ObjetoDe<IAjuda>(Ajuda), ObjetoDe<IMDB>(MDB), ObjetoDe<IoAppEXE>(oAppEXE));
    });
}

HRESULT PublicoGeral::Logon(IDispatch **objMTM, IDispatch **objSCA, VARIANT sMunicCreden)
{
    return Executa([&](::Geral &geral) {
        geral.Logon(ObjetoDe<IobjMTM>(objMTM), ObjetoDe<IobjSCA>(objSCA), TextoPara(sMunicCreden, " < Geral.Logon"));
    });
}

HRESULT PublicoGeral::Logoff()
{
    return Executa([](::Geral &geral) { geral.Logoff(); });
}

HRESULT PublicoGeral::FecharJanelasAtivas()
{
    return Executa([](::Geral &geral) { geral.FecharJanelasAtivas(); });
}

HRESULT PublicoGeral::ClickMenu(VARIANT sTool, VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::Geral &geral) { return geral.ClickMenu(TextoPara(sTool, " < Geral.ClickMenu")); });
}

HRESULT PublicoGeral::Encerra()
{
    return Executa([](::Geral &geral) { geral.Encerra(); });
}

HRESULT PublicoGeral::get_CEspecifica(_Especifica **valor)
{
    return Responde(valor, [](::Geral &geral) { return PublicoEspecifica::De(geral.CEspecifica()); });
}

// Errors are ignored by contract: what is no text is no tool.
HRESULT PublicoGeral::HabilitarItem(VARIANT sTool, VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::Geral &geral) {
        bool habilitado = false;
        IgnoraErro([&] { habilitado = geral.HabilitarItem(DeVariante<std::string>(sTool)); });
        return habilitado;
    });
}

HRESULT PublicoGeral::putref_cGlobal(IDispatch *valor)
{
    return Executa([&](::Geral &geral) { geral.cGlobal = ObjetoDe<IcGlobal>(valor); });
}

HRESULT PublicoGeral::get_cGlobal(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.cGlobal); });
}

HRESULT PublicoGeral::get_TrataBD(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.TrataBD()); });
}

HRESULT PublicoGeral::get_UsandoModuloQMRauxiliar(VARIANT_BOOL *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.UsandoModuloQMRauxiliar(); });
}

HRESULT PublicoGeral::putref_ObjInterface(IDispatch *valor)
{
    return Executa([&](::Geral &geral) { geral.ObjInterface = ObjetoDe<IObjInterface>(valor); });
}

HRESULT PublicoGeral::get_ObjInterface(IDispatch **valor)
{
    return Responde(valor, [](::Geral &geral) { return Oferece(geral.ObjInterface); });
}

HRESULT PublicoGeral::get_SistemaQMR(BSTR *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.SistemaQMR(); });
}

HRESULT PublicoGeral::get_VersaoSistemaQMR(short *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.VersaoSistemaQMR(); });
}

HRESULT PublicoGeral::get_QMRModuloID(BSTR *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.QMRModuloID(); });
}

HRESULT PublicoGeral::get_QMRVersaoModulo(short *valor)
{
    return Responde(valor, [](::Geral &geral) { return geral.QMRVersaoModulo(); });
}

HRESULT PublicoGeral::ObtemTransacao(BSTR sTransID, IDispatch **resultado)
{
    return Responde(resultado, [&](::Geral &geral) { return Oferece(geral.ObtemTransacao(TextoDe(sTransID))); });
}

// origem is not even read.
HRESULT PublicoGeral::ObtemTransacao2(BSTR sTransID, IDispatch **)
{
    return Executa([&](::Geral &geral) {
        Ref<ITransacao> origem;
        geral.ObtemTransacao2(TextoDe(sTransID), origem);
    });
}

// What is no object fails where it is used, and there only when there is a transaction to copy.
HRESULT PublicoGeral::ObtemTransacao3(BSTR sTransID, VARIANT *origem)
{
    return Executa([&](::Geral &geral) {
        Ref<ITransacao> destino;
        IgnoraErro([&] {
            if (origem != nullptr) {
                destino = DeVariante<Ref<ITransacao>>(*origem);
            }
        });
        geral.ObtemTransacao3(TextoDe(sTransID), destino);
    });
}

} // namespace nativo
