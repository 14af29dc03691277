#include "windows/host/Remotos.h"

#include "host/HostServices.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/windows/ObjetoAlheio.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Registros.h"
#include "windows/automation/Tardio.h"
#include "windows/host/FormRemoto.h"
#include "windows/host/Oferecidos.h"

#include <gtest/gtest.h>

#include <oleauto.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

class RemotosTest : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        RegistraRemotos();
        OfereceObjetos();
    }

    Com<ObjetoAlheio> Alheio() { return ObjetoAlheio::Novo(diario); }
    template <class C> Ref<C> Um(const Com<ObjetoAlheio> &objeto) { return RemotoDe<C>(ComoDispatch(objeto)); }
    // Some object of a class, of which nothing is asked.
    template <class C> Ref<C> Qualquer() { return Um<C>(Alheio()); }

    Diario diario;
};

Variante Objeto(const Com<ObjetoAlheio> &objeto)
{
    Variante variante;
    V_VT(&variante.Bruta()) = VT_DISPATCH;
    V_DISPATCH(&variante.Bruta()) = ComoDispatch(objeto).Solta();
    return variante;
}

template <class T> Variante De(const T &valor)
{
    return ParaVariante(valor);
}

// One operation of the contract: what the object answers, what is done, and the request that comes of it.
struct Operacao {
    std::string Nome;
    Variante Resposta;
    std::function<void(const Com<IDispatch> &)> Faz;
    Diario Pedidos;
};

template <class C, class Acao> std::function<void(const Com<IDispatch> &)> Com_(Acao acao)
{
    return [acao](const Com<IDispatch> &objeto) { acao(*RemotoDe<C>(objeto)); };
}

TEST_F(RemotosTest, EveryOperation_GoesByItsNameWithItsArguments)
{
    const Com<ObjetoAlheio> alheio = Alheio();
    const Variante objeto = Objeto(alheio);
    const Variante sim = De(true);
    const Variante texto = De(std::string("texto"));
    const Variante nada;
    const auto form = Novo<FormFalso>();

    Ref<ITransacao> trans = Qualquer<ITransacao>();
    bool b1 = true;
    bool b2 = false;
    bool b3 = false;
    std::uint8_t n1 = 3;
    std::vector<std::string> dados{"a", "b"};
    std::string s1 = "s";
    Ref<::Objeto> o1;
    Ref<::Objeto> o2 = Qualquer<::Objeto>();
    double numero = 0;
    Bytes bytes;
    Ref<IForm> dono;
    Ref<IActBar> barra = Qualquer<IActBar>();
    ItensMenu itens{nullptr, Novo<ItemMenuModulo>()};
    Ref<::Objeto> contexto;
    std::string metodo = "altera";
    Ref<::Objeto> registro = Novo<EquiptoED>();
    std::vector<Valor> parametros{Valor::PorReferencia(registro)};

    const std::vector<Operacao> operacoes{
        // The session.
        {"CreateQMR", objeto, Com_<IobjMTM>([](IobjMTM &o) { EXPECT_FALSE(o.CreateQMR().Nada()); }), {"CreateQMR MG"}},
        {"ClienteLogado",
         texto,
         Com_<IobjMTM>([](IobjMTM &o) { EXPECT_EQ(o.ClienteLogado(), "texto"); }),
         {"ClienteLogado MG"}},
        {"SetorLogado",
         texto,
         Com_<IobjMTM>([](IobjMTM &o) { EXPECT_EQ(o.SetorLogado(), "texto"); }),
         {"SetorLogado MG"}},
        {"ObtemGateway",
         objeto,
         Com_<IobjMTM>([](IobjMTM &o) { EXPECT_FALSE(o.ObtemGateway().Nada()); }),
         {"ObtemGateway MG"}},
        {"CWebComm", objeto, Com_<IobjMTM>([](IobjMTM &o) { EXPECT_FALSE(o.CWebComm().Nada()); }), {"CWebComm MG"}},
        {"EnviaTransacao1",
         sim,
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_TRUE(o.EnviaTransacao1(trans, b1)); }),
         {"EnviaTransacao1 MG &DISPATCH, &BOOL:-1"}},
        {"EnviaTransacao2",
         sim,
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_TRUE(o.EnviaTransacao2(trans, b2)); }),
         {"EnviaTransacao2 MG &DISPATCH, &BOOL:0"}},
        {"EnviaTransacaoH90",
         sim,
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_TRUE(o.EnviaTransacaoH90(trans, b1, b3)); }),
         {"EnviaTransacaoH90 MG &DISPATCH, &BOOL:-1, &BOOL:0"}},
        {"EnviaRajada1",
         De(std::int16_t{7}),
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_EQ(o.EnviaRajada1(trans, b1), 7); }),
         {"EnviaRajada1 MG &DISPATCH, &BOOL:-1"}},
        {"EnviaRajada2",
         De(std::int16_t{7}),
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_EQ(o.EnviaRajada2(trans, dados), 7); }),
         {"EnviaRajada2 MG &DISPATCH, &BSTR[0..1]"}},
        {"EnviaRajadaH90",
         sim,
         Com_<IobjMTM>([&](IobjMTM &o) { EXPECT_TRUE(o.EnviaRajadaH90(trans, dados, b1)); }),
         {"EnviaRajadaH90 MG &DISPATCH, &BSTR[0..1], &BOOL:-1"}},
        {"Logado", sim, Com_<IobjSCA>([](IobjSCA &o) { EXPECT_TRUE(o.Logado()); }), {"Logado MG"}},
        {"PossuiPerm2",
         sim,
         Com_<IobjSCA>([](IobjSCA &o) { EXPECT_TRUE(o.PossuiPerm2("NAB", "VOR-EQP-CS", "")); }),
         {"PossuiPerm2 MG BSTR:NAB, BSTR:VOR-EQP-CS, BSTR:"}},
        {"CreateNewTrataBD",
         objeto,
         Com_<IQMR>([](IQMR &o) { EXPECT_FALSE(o.CreateNewTrataBD().Nada()); }),
         {"CreateNewTrataBD MG"}},
        {"Sessao", objeto, Com_<IQMR>([](IQMR &o) { EXPECT_FALSE(o.Sessao().Nada()); }), {"Sessao MG"}},
        {"pQMR", objeto, Com_<ITrataBD>([](ITrataBD &o) { EXPECT_FALSE(o.pQMR().Nada()); }), {"pQMR MG"}},
        {"AbreZTBanco",
         objeto,
         Com_<ITrataBD>([](ITrataBD &o) { EXPECT_FALSE(o.AbreZTBanco(99).Nada()); }),
         {"AbreZTBanco MG I2:99"}},
        {"CreateCFisJur",
         objeto,
         Com_<ITrataBD>([](ITrataBD &o) { EXPECT_FALSE(o.CreateCFisJur().Nada()); }),
         {"CreateCFisJur MG"}},
        {"CreateCEndereco",
         objeto,
         Com_<ITrataBD>([](ITrataBD &o) { EXPECT_FALSE(o.CreateCEndereco().Nada()); }),
         {"CreateCEndereco MG"}},
        {"CreateCVeiGen",
         objeto,
         Com_<ITrataBD>([](ITrataBD &o) { EXPECT_FALSE(o.CreateCVeiGen().Nada()); }),
         {"CreateCVeiGen MG"}},
        {"InicializaInfoSistema",
         nada,
         Com_<ITrataBD>([](ITrataBD &o) { o.InicializaInfoSistema("VOR", 1); }),
         {"InicializaInfoSistema M BSTR:VOR, I2:1"}},
        {"TabelaAlterada",
         nada,
         Com_<ITrataBD>([](ITrataBD &o) { o.TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor()); }),
         {"TabelaAlterada M BSTR:VOREQUIPTO, BOOL:-1, BOOL:0, absent, absent"}},
        {"CriaObjetoSoap",
         objeto,
         Com_<IWebComm>([](IWebComm &o) { EXPECT_FALSE(o.CriaObjetoSoap("ConsGen", "ZTAVOREQUIP").Nada()); }),
         {"CriaObjetoSoap MG BSTR:ConsGen, BSTR:ZTAVOREQUIP"}},
        {"Metodo",
         sim,
         Com_<IObjetoSoap>([](IObjetoSoap &o) { EXPECT_TRUE(o.Metodo(nullptr, "consultaDataUltimaReplica", "VOR")); }),
         {"Metodo MG DISPATCH:Nothing, BSTR:consultaDataUltimaReplica, BSTR:VOR"}},
        {"Resultado",
         texto,
         Com_<IObjetoSoap>([](IObjetoSoap &o) { EXPECT_EQ(o.Resultado().CStr(), "texto"); }),
         {"Resultado MG"}},
        {"sWindow", texto, Com_<ITransacao>([](ITransacao &o) { EXPECT_EQ(o.sWindow(), "texto"); }), {"sWindow MG"}},
        {"sWindow", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinesWindow("W"); }), {"sWindow P BSTR:W"}},
        {"sTransacao",
         texto,
         Com_<ITransacao>([](ITransacao &o) { EXPECT_EQ(o.sTransacao(), "texto"); }),
         {"sTransacao MG"}},
        {"sTransacao", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinesTransacao("T"); }), {"sTransacao P BSTR:T"}},
        {"sSistema", texto, Com_<ITransacao>([](ITransacao &o) { EXPECT_EQ(o.sSistema(), "texto"); }), {"sSistema MG"}},
        {"sSistema", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinesSistema("S"); }), {"sSistema P BSTR:S"}},
        {"sJob", texto, Com_<ITransacao>([](ITransacao &o) { EXPECT_EQ(o.sJob(), "texto"); }), {"sJob MG"}},
        {"sJob", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinesJob("J"); }), {"sJob P BSTR:J"}},
        {"sPrograma",
         texto,
         Com_<ITransacao>([](ITransacao &o) { EXPECT_EQ(o.sPrograma(), "texto"); }),
         {"sPrograma MG"}},
        {"sPrograma", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinesPrograma("P"); }), {"sPrograma P BSTR:P"}},
        {"bGCI", sim, Com_<ITransacao>([](ITransacao &o) { EXPECT_TRUE(o.bGCI()); }), {"bGCI MG"}},
        {"bGCI", nada, Com_<ITransacao>([](ITransacao &o) { o.DefinebGCI(true); }), {"bGCI P BOOL:-1"}},
        {"SisJava", sim, Com_<ITransacao>([](ITransacao &o) { EXPECT_TRUE(o.SisJava()); }), {"SisJava MG"}},
        {"SisJava", nada, Com_<ITransacao>([](ITransacao &o) { o.DefineSisJava(false); }), {"SisJava P BOOL:0"}},
        {"Cin",
         nada,
         Com_<ITransacao>([](ITransacao &o) { o.DefineCin(Novo<Colecao<Ref<CampoTransacao>>>()); }),
         {"Cin R DISPATCH"}},
        {"Cout", nada, Com_<ITransacao>([](ITransacao &o) { o.DefineCout(nullptr); }), {"Cout R DISPATCH:Nothing"}},

        // The local database.
        {"Name", texto, Com_<IMDB>([](IMDB &o) { EXPECT_EQ(o.Name(), "texto"); }), {"Name MG"}},
        {"OpenRecordset",
         objeto,
         Com_<IMDB>([](IMDB &o) {
             EXPECT_FALSE(o.OpenRecordset("SELECT 1", InstantaneoSomenteLeitura, Valor(), Valor()).Nada());
         }),
         {"OpenRecordset MG BSTR:SELECT 1, I2:4, absent, absent"}},
        {"EOF", sim, Com_<ICursor>([](ICursor &o) { EXPECT_TRUE(o.EOF_()); }), {"EOF MG"}},
        {"RecordCount",
         De(std::int32_t{5}),
         Com_<ICursor>([](ICursor &o) { EXPECT_EQ(o.RecordCount(), 5); }),
         {"RecordCount MG"}},
        {"Fields",
         objeto,
         Com_<ICursor>([](ICursor &o) { EXPECT_FALSE(o.Fields("COD_MUNIC").Nada()); }),
         {"Fields MG BSTR:COD_MUNIC"}},
        {"MoveNext", nada, Com_<ICursor>([](ICursor &o) { o.MoveNext(); }), {"MoveNext MG"}},
        {"Close", nada, Com_<ICursor>([](ICursor &o) { o.Close(); }), {"Close MG"}},
        {"Value",
         De(Valor(Valor::Nulo{})),
         Com_<IFields>([](IFields &o) { EXPECT_TRUE(o.Value().EhNulo()); }),
         {"Value MG"}},

        // The remote services.
        {"CriaObjetoRN",
         objeto,
         Com_<IGateway>([](IGateway &o) { EXPECT_FALSE(o.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4").Nada()); }),
         {"CriaObjetoRN MG BSTR:VOR, BSTR:EquiptoRN, BSTR:ZTVORLIB, BSTR:4"}},
        {"ExecutaMetodo",
         sim,
         Com_<IProxyRN>([&](IProxyRN &o) { EXPECT_TRUE(o.ExecutaMetodo(contexto, metodo, parametros)); }),
         {"ExecutaMetodo MG &DISPATCH:Nothing, &BSTR:altera, &VARIANT[0..0]{&DISPATCH}"}},
        {"ObtemRetorno",
         texto,
         Com_<IProxyRN>([](IProxyRN &o) { EXPECT_EQ(o.ObtemRetorno().CStr(), "texto"); }),
         {"ObtemRetorno MG"}},
        {"MostraErro", nada, Com_<IProxyRN>([](IProxyRN &o) { o.MostraErro(); }), {"MostraErro MG"}},

        // The application around the module.
        {"MontaEstruturaMenus",
         nada,
         Com_<IcGlobal>([&](IcGlobal &o) { o.MontaEstruturaMenus(s1, "ZTAVOREQUIP"); }),
         {"MontaEstruturaMenus M &BSTR:s, BSTR:ZTAVOREQUIP"}},
        {"gsubSetaAutoModuloAtivo",
         nada,
         Com_<IcGlobal>([](IcGlobal &o) { o.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"); }),
         {"gsubSetaAutoModuloAtivo M BSTR:ZTAVOREQUIP"}},
        {"PegaAutoModulo",
         objeto,
         Com_<IcGlobal>([](IcGlobal &o) { EXPECT_FALSE(o.PegaAutoModulo("X").Nada()); }),
         {"PegaAutoModulo MG BSTR:X"}},
        {"gfunRetornaAutoModulo",
         objeto,
         Com_<IcGlobal>([](IcGlobal &o) { EXPECT_FALSE(o.gfunRetornaAutoModulo("X").Nada()); }),
         {"gfunRetornaAutoModulo MG BSTR:X"}},
        {"MostraJanela",
         nada,
         Com_<IObjInterface>([&](IObjInterface &o) { o.MostraJanela(form, -1, dono, 0, o1); }),
         {"MostraJanela M DISPATCH, I2:-1, &DISPATCH:Nothing, I2:0, &DISPATCH:Nothing"}},
        {"pTrataBD",
         objeto,
         Com_<IObjInterface>([](IObjInterface &o) { EXPECT_FALSE(o.pTrataBD().Nada()); }),
         {"pTrataBD MG"}},
        {"AutoShowChildren",
         sim,
         Com_<IFormMDI>([](IFormMDI &o) { EXPECT_TRUE(o.AutoShowChildren()); }),
         {"AutoShowChildren MG"}},
        {"objZTP", objeto, Com_<IFormMDI>([](IFormMDI &o) { EXPECT_FALSE(o.objZTP().Nada()); }), {"objZTP MG"}},
        {"PossuiJanelaEnviaRecebe",
         sim,
         Com_<IFormMDI>([](IFormMDI &o) { EXPECT_TRUE(o.PossuiJanelaEnviaRecebe()); }),
         {"PossuiJanelaEnviaRecebe MG"}},
        {"ScaleWidth",
         De(12000.5),
         Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.ScaleWidth(), 12000); }),
         {"ScaleWidth MG"}},
        {"ScaleHeight",
         De(8000.0),
         Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.ScaleHeight(), 8000); }),
         {"ScaleHeight MG"}},
        {"Left", De(-60.0), Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.Left(), -60); }), {"Left MG"}},
        {"Top", De(30.0), Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.Top(), 30); }), {"Top MG"}},
        {"Width", De(30.0), Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.Width(), 30); }), {"Width MG"}},
        {"Height", De(30.0), Com_<IFormMDI>([](IFormMDI &o) { EXPECT_EQ(o.Height(), 30); }), {"Height MG"}},
        {"MsgEnviaRecebe",
         nada,
         Com_<IFormMDI>([&](IFormMDI &o) { o.MsgEnviaRecebe(s1); }),
         {"MsgEnviaRecebe M &BSTR:s"}},
        {"AbrirEnviaRecebe", nada, Com_<IFormMDI>([](IFormMDI &o) { o.AbrirEnviaRecebe(); }), {"AbrirEnviaRecebe MG"}},
        {"FecharEnviaRecebe",
         nada,
         Com_<IFormMDI>([](IFormMDI &o) { o.FecharEnviaRecebe(true); }),
         {"FecharEnviaRecebe M BOOL:-1"}},
        {"Title", texto, Com_<IoAppEXE>([](IoAppEXE &o) { EXPECT_EQ(o.Title(), "texto"); }), {"Title MG"}},
        {"Path", texto, Com_<IoAppEXE>([](IoAppEXE &o) { EXPECT_EQ(o.Path(), "texto"); }), {"Path MG"}},
        {"ProductName",
         texto,
         Com_<IoAppEXE>([](IoAppEXE &o) { EXPECT_EQ(o.ProductName(), "texto"); }),
         {"ProductName MG"}},
        {"Bands", objeto, Com_<IActBar>([](IActBar &o) { EXPECT_FALSE(o.Bands().Nada()); }), {"Bands MG"}},
        {"Count", De(std::int32_t{2}), Com_<IBands>([](IBands &o) { EXPECT_EQ(o.Count(), 2); }), {"Count MG"}},
        {"", objeto, Com_<IBands>([](IBands &o) { EXPECT_FALSE(o.ItemPosicao(1).Nada()); }), {"(value) MG I4:1"}},
        {"", objeto, Com_<IBands>([](IBands &o) { EXPECT_FALSE(o.ItemNome("mnu").Nada()); }), {"(value) MG BSTR:mnu"}},
        {"Item",
         objeto,
         Com_<IBands>([](IBands &o) { EXPECT_FALSE(o.ItemNome("mnu").Nada()); }),
         {"(value) MG BSTR:mnu", "Item MG BSTR:mnu"}},
        {"Name", texto, Com_<IBand>([](IBand &o) { EXPECT_EQ(o.Name(), "texto"); }), {"Name MG"}},
        {"Tools", objeto, Com_<IBand>([](IBand &o) { EXPECT_FALSE(o.Tools().Nada()); }), {"Tools MG"}},
        {"TrackPopup", nada, Com_<IBand>([](IBand &o) { o.TrackPopup(10, 20); }), {"TrackPopup M I4:10, I4:20"}},
        {"Count", De(std::int32_t{2}), Com_<ITools>([](ITools &o) { EXPECT_EQ(o.Count(), 2); }), {"Count MG"}},
        {"", objeto, Com_<ITools>([](ITools &o) { EXPECT_FALSE(o.ItemPosicao(0).Nada()); }), {"(value) MG I4:0"}},
        {"Item",
         objeto,
         Com_<ITools>([](ITools &o) { EXPECT_FALSE(o.ItemPosicao(0).Nada()); }),
         {"(value) MG I4:0", "Item MG I4:0"}},
        {"",
         objeto,
         Com_<ITools>([](ITools &o) { EXPECT_FALSE(o.ItemNome("mnuX").Nada()); }),
         {"(value) MG BSTR:mnuX"}},
        {"Visible", sim, Com_<ITool>([](ITool &o) { EXPECT_TRUE(o.Visible()); }), {"Visible MG"}},
        {"Visible", nada, Com_<ITool>([](ITool &o) { o.DefineVisible(false); }), {"Visible P BOOL:0"}},
        {"Enabled", sim, Com_<ITool>([](ITool &o) { EXPECT_TRUE(o.Enabled()); }), {"Enabled MG"}},
        {"Enabled", nada, Com_<ITool>([](ITool &o) { o.DefineEnabled(true); }), {"Enabled P BOOL:-1"}},
        {"SetaTituloAvisos",
         nada,
         Com_<ICFunGen>([](ICFunGen &o) { o.SetaTituloAvisos("T"); }),
         {"SetaTituloAvisos M BSTR:T"}},
        {"AppTitle", nada, Com_<ICFunGen>([](ICFunGen &o) { o.DefineAppTitle("T"); }), {"AppTitle P BSTR:T"}},
        {"TrataAjuda2",
         nada,
         Com_<IAjuda>([&](IAjuda &o) { o.TrataAjuda2(nullptr, s1); }),
         {"TrataAjuda2 M DISPATCH:Nothing, &BSTR:s"}},
        {"PathRPT",
         nada,
         Com_<IRelatorios>([](IRelatorios &o) { o.DefinePathRPT("C:\\X"); }),
         {"PathRPT P BSTR:C:\\X"}},
        {"PathMDB",
         nada,
         Com_<IRelatorios>([](IRelatorios &o) { o.DefinePathMDB("C:\\M"); }),
         {"PathMDB P BSTR:C:\\M"}},
        {"CurrentRecordSet",
         nada,
         Com_<IRelatorios>([&](IRelatorios &o) { o.DefineCurrentRecordSet(Qualquer<ICursor>()); }),
         {"CurrentRecordSet R DISPATCH"}},
        {"CurrentRecordSet",
         nada,
         Com_<IRelatorios>([](IRelatorios &o) { o.DefineCurrentRecordSet(nullptr); }),
         {"CurrentRecordSet R DISPATCH:Nothing"}},
        {"Imprimir",
         sim,
         Com_<IRelatorios>(
             [&](IRelatorios &o) {
                 ParametrosRelatorio p{"RVOR011", dados, b1, n1, b2, o1, s1, o2};
                 EXPECT_TRUE(o.Imprimir(p));
             }),
         {"Imprimir MG BSTR:RVOR011, &BSTR[0..1], &BOOL:-1, &UI1:3, &BOOL:0, &DISPATCH:Nothing, &BSTR:s, &DISPATCH"}},
        {"ImprimirDesigner",
         sim,
         Com_<IRelatorios>(
             [&](IRelatorios &o) {
                 ParametrosRelatorio p{Valor(Qualquer<::Objeto>()), dados, b1, n1, b2, o1, s1, o2};
                 EXPECT_TRUE(o.ImprimirDesigner(p));
             }),
         {"ImprimirDesigner MG DISPATCH, &BSTR[0..1], &BOOL:-1, &UI1:3, &BOOL:0, &DISPATCH:Nothing, &BSTR:s, "
          "&DISPATCH"}},
        {"RegistraAM",
         nada,
         Com_<IAMRegistro>([](IAMRegistro &o) { o.RegistraAM("ZTAVOREQUIP", "ZTAVOREQUIP.Geral", "APP"); }),
         {"RegistraAM M BSTR:ZTAVOREQUIP, BSTR:ZTAVOREQUIP.Geral, BSTR:APP"}},
        {"DesregistraAM",
         nada,
         Com_<IAMRegistro>([](IAMRegistro &o) { o.DesregistraAM("ZTAVOREQUIP", std::int32_t{7}); }),
         {"DesregistraAM M BSTR:ZTAVOREQUIP, I4:7"}},
        {"IncorporaMenu",
         nada,
         Com_<IAMEditMenu>([&](IAMEditMenu &o) { o.IncorporaMenu(barra, itens, false); }),
         {"IncorporaMenu M &DISPATCH, &DISPATCH[0..1], BOOL:0"}},
        {"RemoveMenu",
         nada,
         Com_<IAMEditMenu>([&](IAMEditMenu &o) { o.RemoveMenu(barra, itens); }),
         {"RemoveMenu M &DISPATCH, &DISPATCH[0..1]"}},

        // The system library.
        {"Titulo", nada, Com_<IMensagem>([](IMensagem &o) { o.DefineTitulo("T"); }), {"Titulo P BSTR:T"}},
        {"FormataData",
         texto,
         Com_<IMensagem>([](IMensagem &o) { EXPECT_EQ(o.FormataData(20261122, 0), "texto"); }),
         {"FormataData MG I4:20261122, I2:0"}},
        {"FormataHora",
         texto,
         Com_<IMensagem>([](IMensagem &o) { EXPECT_EQ(o.FormataHora(101500, 0), "texto"); }),
         {"FormataHora MG I4:101500, I2:0"}},
        {"ExibeMensagem",
         nada,
         Com_<IMensagem>([](IMensagem &o) { o.ExibeMensagem("Informe!", nullptr); }),
         {"ExibeMensagem M BSTR:Informe!, absent"}},
        {"ExibeMensagem",
         nada,
         Com_<IMensagem>([&](IMensagem &o) { o.ExibeMensagem("Informe!", form); }),
         {"ExibeMensagem M BSTR:Informe!, DISPATCH"}},
        {"PreparaDetalhes",
         nada,
         Com_<IMensagem>([&](IMensagem &o) { o.PreparaDetalhes(form); }),
         {"PreparaDetalhes M DISPATCH"}},
        {"ExibeErro",
         nada,
         Com_<IMensagem>([](IMensagem &o) { o.ExibeErro("frmLista.cmdOK_Click", -1, "Ruiu", "X < Y", "Título"); }),
         {"ExibeErro M BSTR:frmLista.cmdOK_Click, I4:-1, BSTR:Ruiu, BSTR:X < Y, BSTR:Título"}},
        {"TextoParaBytes",
         De(Bytes{37, 80}),
         Com_<IMensagem>(
             [](IMensagem &o) {
                 EXPECT_EQ(o.TextoParaBytes("%P"), (Bytes{37, 80}));
             }),
         {"TextoParaBytes MG BSTR:%P"}},
        {"Inicializa",
         nada,
         Com_<IDadosVor>([&](IDadosVor &o) { o.Inicializa(Qualquer<IObjInterface>()); }),
         {"Inicializa M DISPATCH"}},
        {"Finaliza", nada, Com_<IDadosVor>([](IDadosVor &o) { o.Finaliza(); }), {"Finaliza MG"}},
        {"ObtemOrgao",
         objeto,
         Com_<IDadosVor>([](IDadosVor &o) { EXPECT_FALSE(o.ObtemOrgao().Nada()); }),
         {"ObtemOrgao MG"}},
        {"CodCliente",
         De(std::int32_t{2}),
         Com_<IOrgao>([](IOrgao &o) { EXPECT_EQ(o.CodCliente(), 2); }),
         {"CodCliente MG"}},
        {"PreencheRejeicoes",
         nada,
         Com_<IDadosVor>([](IDadosVor &o) { o.PreencheRejeicoes(nullptr, 0, 0); }),
         {"PreencheRejeicoes M DISPATCH:Nothing, I4:0, I4:0"}},
        {"DirLayouts",
         texto,
         Com_<IDadosVor>([](IDadosVor &o) { EXPECT_EQ(o.DirLayouts(), "texto"); }),
         {"DirLayouts MG"}},
        {"PreencheTipoAgente",
         nada,
         Com_<IDadosVor>([](IDadosVor &o) { o.PreencheTipoAgente(nullptr, true, false, false); }),
         {"PreencheTipoAgente M DISPATCH:Nothing, BOOL:-1, BOOL:0, BOOL:0"}},
        {"PreencheTipoAgente",
         nada,
         Com_<IDadosVor>([](IDadosVor &o) { o.PreencheTipoAgente(nullptr, false, true, false); }),
         {"PreencheTipoAgente M DISPATCH:Nothing, BOOL:0, BOOL:-1, BOOL:0"}},
        {"PreencheTipoEquip",
         nada,
         Com_<IDadosVor>([](IDadosVor &o) { o.PreencheTipoEquip(nullptr, 2, true, false, false); }),
         {"PreencheTipoEquip M DISPATCH:Nothing, I2:2, BOOL:-1, BOOL:0, BOOL:0"}},
        {"PreencheTipoEquip",
         nada,
         Com_<IDadosVor>([](IDadosVor &o) { o.PreencheTipoEquip(nullptr, 2, false, true, false); }),
         {"PreencheTipoEquip M DISPATCH:Nothing, I2:2, BOOL:0, BOOL:-1, BOOL:0"}},
        {"EnviaDocumento",
         sim,
         Com_<IDadosVor>([&](IDadosVor &o) { EXPECT_TRUE(o.EnviaDocumento("C:\\a.pdf", numero, 0)); }),
         {"EnviaDocumento MG BSTR:C:\\a.pdf, &R8:0.000000, I4:0"}},
        {"RecebeDocumento",
         sim,
         Com_<IDadosVor>([&](IDadosVor &o) { EXPECT_TRUE(o.RecebeDocumento(12, bytes, true)); }),
         {"RecebeDocumento MG R8:12.000000, &UI1[0..-1], BOOL:-1"}},
        {"ObtemDiretorio",
         texto,
         Com_<IDiretorios>([](IDiretorios &o) { EXPECT_EQ(o.ObtemDiretorio(99, ""), "texto"); }),
         {"ObtemDiretorio MG I2:99, BSTR:"}},
        {"InicializaSessao",
         nada,
         Com_<IObjGlobalVor>(
             [&](IObjGlobalVor &o) {
                 o.InicializaSessao(Qualquer<IobjMTM>(), Qualquer<IobjSCA>(), Qualquer<IoAppEXE>(), nullptr);
             }),
         {"InicializaSessao M DISPATCH, DISPATCH, DISPATCH, DISPATCH:Nothing"}},
        {"ObtemCredencial",
         objeto,
         Com_<IObjGlobalVor>([](IObjGlobalVor &o) { EXPECT_FALSE(o.ObtemCredencial().Nada()); }),
         {"ObtemCredencial MG"}},
        {"Credencial",
         De(std::int32_t{4711}),
         Com_<ICredencial>([](ICredencial &o) { EXPECT_EQ(o.Credencial(), 4711); }),
         {"Credencial MG"}},
        {"CodMunic",
         De(std::int16_t{88}),
         Com_<ICredencial>([](ICredencial &o) { EXPECT_EQ(o.CodMunic(), 88); }),
         {"CodMunic MG"}},
        {"ArquivoPDF",
         nada,
         Com_<IDocumentoPDF>([](IDocumentoPDF &o) { o.DefineArquivoPDF("C:\\a.pdf"); }),
         {"ArquivoPDF P BSTR:C:\\a.pdf"}},
        {"Mostra",
         sim,
         Com_<IDocumentoPDF>([](IDocumentoPDF &o) { EXPECT_TRUE(o.Mostra(true)); }),
         {"Mostra MG BOOL:-1"}},

        // The host's own form around one of the module's.
        {"Caption", texto, Com_<IForm>([](IForm &o) { EXPECT_EQ(o.Caption(), "texto"); }), {"Caption MG"}},
        {"Caption", nada, Com_<IForm>([](IForm &o) { o.DefineCaption("C"); }), {"Caption P BSTR:C"}},
        {"Left", De(15.0), Com_<IForm>([](IForm &o) { EXPECT_EQ(o.Left(), 15); }), {"Left MG"}},
        {"Left", nada, Com_<IForm>([](IForm &o) { o.DefineLeft(30); }), {"Left P I4:30"}},
        {"Top", De(15.0), Com_<IForm>([](IForm &o) { EXPECT_EQ(o.Top(), 15); }), {"Top MG"}},
        {"Top", nada, Com_<IForm>([](IForm &o) { o.DefineTop(30); }), {"Top P I4:30"}},
        {"Width", De(15.0), Com_<IForm>([](IForm &o) { EXPECT_EQ(o.Width(), 15); }), {"Width MG"}},
        {"Width", nada, Com_<IForm>([](IForm &o) { o.DefineWidth(30); }), {"Width P I4:30"}},
        {"Height", De(15.0), Com_<IForm>([](IForm &o) { EXPECT_EQ(o.Height(), 15); }), {"Height MG"}},
        {"Height", nada, Com_<IForm>([](IForm &o) { o.DefineHeight(30); }), {"Height P I4:30"}},
        {"Enabled", sim, Com_<IForm>([](IForm &o) { EXPECT_TRUE(o.Enabled()); }), {"Enabled MG"}},
        {"Enabled", nada, Com_<IForm>([](IForm &o) { o.DefineEnabled(false); }), {"Enabled P BOOL:0"}},
        {"Visible", sim, Com_<IForm>([](IForm &o) { EXPECT_TRUE(o.Visible()); }), {"Visible MG"}},
        {"Visible", nada, Com_<IForm>([](IForm &o) { o.DefineVisible(false); }), {"Visible P BOOL:0"}},
        {"WindowState",
         De(std::int16_t{1}),
         Com_<IForm>([](IForm &o) { EXPECT_EQ(o.WindowState(), JanelaMinimizada); }),
         {"WindowState MG"}},
        {"WindowState", nada, Com_<IForm>([](IForm &o) { o.DefineWindowState(JanelaNormal); }), {"WindowState P I2:0"}},
        {"MDIChild", sim, Com_<IForm>([](IForm &o) { EXPECT_TRUE(o.MDIChild()); }), {"MDIChild MG"}},
        {"ZOrder", nada, Com_<IForm>([](IForm &o) { o.ZOrder(0); }), {"ZOrder M I2:0"}},
        {"SetFocus", nada, Com_<IForm>([](IForm &o) { o.SetFocus(); }), {"SetFocus MG"}},
    };
    for (const Operacao &operacao : operacoes) {
        SCOPED_TRACE(operacao.Pedidos.front());
        const Com<ObjetoAlheio> hospedeiro = Alheio();
        hospedeiro->Membro(operacao.Nome, operacao.Resposta);
        diario.clear();
        operacao.Faz(ComoDispatch(hospedeiro));
        EXPECT_EQ(diario, operacao.Pedidos);
        // The platform's fault where the host has no such member.
        EXPECT_EQ(FalhaLancada([&] { operacao.Faz(ComoDispatch(Alheio())); }).Numero, 438);
    }
}

TEST_F(RemotosTest, ArgumentsByReference_ComeBack)
{
    const Com<ObjetoAlheio> objeto = Alheio();
    objeto->Membro("EnviaDocumento", [](const std::vector<VARIANT *> &argumentos) {
        *V_R8REF(argumentos[1]) = 77;
        return De(true);
    });
    objeto->Membro("RecebeDocumento", [](const std::vector<VARIANT *> &argumentos) {
        SafeArrayDestroy(*V_ARRAYREF(argumentos[1]));
        Variante novos = De(Bytes{1, 2, 3});
        *V_ARRAYREF(argumentos[1]) = std::exchange(V_ARRAY(&novos.Bruta()), nullptr);
        novos.Limpa();
        return De(true);
    });
    const auto dados = Um<IDadosVor>(objeto);
    double numero = 0;
    EXPECT_TRUE(dados->EnviaDocumento("a.pdf", numero, 0));
    EXPECT_EQ(numero, 77);
    Bytes bytes{9};
    EXPECT_TRUE(dados->RecebeDocumento(77, bytes, true));
    EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
}

TEST_F(RemotosTest, MostraJanela_GetsTheOwnerAndTheFormClicked)
{
    const Com<ObjetoAlheio> objeto = Alheio();
    objeto->Membro("MostraJanela", [](const std::vector<VARIANT *> &argumentos) {
        V_DISPATCH(argumentos[0])->AddRef();
        *V_DISPATCHREF(argumentos[4]) = V_DISPATCH(argumentos[0]);
        return Variante();
    });
    const auto form = Novo<FormFalso>();
    Ref<IForm> dono;
    Ref<::Objeto> clicado;
    Um<IObjInterface>(objeto)->MostraJanela(form, 0, dono, -1, clicado);
    EXPECT_TRUE(clicado == form);
    EXPECT_TRUE(dono.Nada());
    EXPECT_EQ(diario, (Diario{"MostraJanela M DISPATCH, I2:0, &DISPATCH:Nothing, I2:-1, &DISPATCH:Nothing"}));
}

// A host that puts something else where each argument by reference refers to: the texts, and the objects that it has
// for them, tell the argument's place, from 0.
class TrocaTest : public RemotosTest {
  protected:
    template <class C> Ref<C> Que(const std::string &operacao, const Variante &resposta = {})
    {
        const Com<ObjetoAlheio> objeto = Alheio();
        objeto->Membro(operacao, [this, resposta](const std::vector<VARIANT *> &argumentos) {
            for (std::size_t lugar = 0; lugar < argumentos.size(); ++lugar) {
                Troca(*argumentos[lugar], lugar);
            }
            return resposta;
        });
        return Um<C>(objeto);
    }
    // Whether it is the object that was put in that place.
    bool Veio(const Ref<::Objeto> &objeto, std::size_t lugar) const
    {
        return Oferece(objeto) == ComoDispatch(postos.at(lugar));
    }

    std::vector<Com<ObjetoAlheio>> postos = [this] {
        std::vector<Com<ObjetoAlheio>> objetos;
        for (int lugar = 0; lugar < 8; ++lugar) {
            objetos.push_back(Alheio());
        }
        return objetos;
    }();
    Ref<ItemMenuModulo> item = Novo<ItemMenuModulo>();

  private:
    void Troca(VARIANT &argumento, std::size_t lugar)
    {
        switch (V_VT(&argumento)) {
        case VT_BYREF | VT_BOOL:
            *V_BOOLREF(&argumento) = *V_BOOLREF(&argumento) == VARIANT_FALSE ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case VT_BYREF | VT_UI1:
            *V_UI1REF(&argumento) = 77;
            break;
        case VT_BYREF | VT_BSTR:
            SysFreeString(*V_BSTRREF(&argumento));
            *V_BSTRREF(&argumento) = NovoBstr("volta " + std::to_string(lugar));
            break;
        case VT_BYREF | VT_DISPATCH:
            if (*V_DISPATCHREF(&argumento) != nullptr) {
                (*V_DISPATCHREF(&argumento))->Release();
            }
            *V_DISPATCHREF(&argumento) = ComoDispatch(postos.at(lugar)).Solta();
            break;
        case VT_BYREF | VT_ARRAY | VT_BSTR:
            TrocaArranjo(argumento, De(std::vector<std::string>{"x", "y", "z"}));
            break;
        case VT_BYREF | VT_ARRAY | VT_DISPATCH:
            TrocaArranjo(argumento, De(ItensMenu{nullptr, item, nullptr}));
            break;
        default:
            break;
        }
    }
    static void TrocaArranjo(VARIANT &argumento, Variante novos)
    {
        SafeArrayDestroy(*V_ARRAYREF(&argumento));
        *V_ARRAYREF(&argumento) = std::exchange(V_ARRAY(&novos.Bruta()), nullptr);
        novos.Limpa();
    }
};

TEST_F(TrocaTest, TransactionFlagsAndData_ComeBack)
{
    const Variante sim = De(true);
    const std::vector<std::string> novos{"x", "y", "z"};
    const auto confere = [&](const std::string &operacao, const auto &faz) {
        SCOPED_TRACE(operacao);
        Ref<ITransacao> trans = Qualquer<ITransacao>();
        const Variante resposta = operacao.starts_with("EnviaRajada") ? De(std::int16_t{1}) : sim;
        faz(*Que<IobjMTM>(operacao, resposta), trans);
        EXPECT_TRUE(Veio(trans, 0));
    };
    confere("EnviaTransacao1", [](IobjMTM &mtm, Ref<ITransacao> &trans) {
        bool b1 = true;
        mtm.EnviaTransacao1(trans, b1);
        EXPECT_FALSE(b1);
    });
    confere("EnviaTransacao2", [](IobjMTM &mtm, Ref<ITransacao> &trans) {
        bool b1 = false;
        mtm.EnviaTransacao2(trans, b1);
        EXPECT_TRUE(b1);
    });
    confere("EnviaTransacaoH90", [](IobjMTM &mtm, Ref<ITransacao> &trans) {
        bool b1 = true;
        bool b3 = false;
        mtm.EnviaTransacaoH90(trans, b1, b3);
        EXPECT_FALSE(b1);
        EXPECT_TRUE(b3);
    });
    confere("EnviaRajada1", [](IobjMTM &mtm, Ref<ITransacao> &trans) {
        bool b1 = true;
        mtm.EnviaRajada1(trans, b1);
        EXPECT_FALSE(b1);
    });
    confere("EnviaRajada2", [&](IobjMTM &mtm, Ref<ITransacao> &trans) {
        std::vector<std::string> dados{"a"};
        mtm.EnviaRajada2(trans, dados);
        EXPECT_EQ(dados, novos);
    });
    confere("EnviaRajadaH90", [&](IobjMTM &mtm, Ref<ITransacao> &trans) {
        std::vector<std::string> dados{"a"};
        bool b2 = false;
        mtm.EnviaRajadaH90(trans, dados, b2);
        EXPECT_EQ(dados, novos);
        EXPECT_TRUE(b2);
    });
}

TEST_F(TrocaTest, TextsOfTheApplication_ComeBack)
{
    std::string texto = "mnuModVOREquiptos";
    Que<IcGlobal>("MontaEstruturaMenus")->MontaEstruturaMenus(texto, "ZTAVOREQUIP");
    EXPECT_EQ(texto, "volta 0");
    texto.clear();
    Que<IFormMDI>("MsgEnviaRecebe")->MsgEnviaRecebe(texto);
    EXPECT_EQ(texto, "volta 0");
    texto.clear();
    Que<IAjuda>("TrataAjuda2")->TrataAjuda2(nullptr, texto);
    EXPECT_EQ(texto, "volta 1");
}

TEST_F(TrocaTest, ArgumentsOfAReport_ComeBack)
{
    for (const std::string operacao : {"Imprimir", "ImprimirDesigner"}) {
        SCOPED_TRACE(operacao);
        std::vector<std::string> dados{"a"};
        bool b1 = true;
        std::uint8_t n1 = 3;
        bool b2 = false;
        Ref<::Objeto> o1;
        std::string s1;
        Ref<::Objeto> o2;
        ParametrosRelatorio parametros{"RVOR011", dados, b1, n1, b2, o1, s1, o2};
        const auto relatorios = Que<IRelatorios>(operacao, De(true));
        if (operacao == "Imprimir") {
            relatorios->Imprimir(parametros);
        } else {
            relatorios->ImprimirDesigner(parametros);
        }
        EXPECT_EQ(dados, (std::vector<std::string>{"x", "y", "z"}));
        EXPECT_FALSE(b1);
        EXPECT_EQ(n1, 77);
        EXPECT_TRUE(b2);
        EXPECT_TRUE(Veio(o1, 5));
        EXPECT_EQ(s1, "volta 6");
        EXPECT_TRUE(Veio(o2, 7));
    }
}

TEST_F(TrocaTest, MenuHolderAndItems_ComeBack)
{
    const auto confere = [&](const Ref<IActBar> &barra, const ItensMenu &itens) {
        EXPECT_TRUE(Veio(barra, 0));
        ASSERT_EQ(itens.size(), 3U);
        EXPECT_TRUE(itens[1] == item);
    };
    Ref<IActBar> barra = Qualquer<IActBar>();
    ItensMenu itens{nullptr};
    Que<IAMEditMenu>("IncorporaMenu")->IncorporaMenu(barra, itens, false);
    confere(barra, itens);
    barra = Qualquer<IActBar>();
    itens = {nullptr};
    Que<IAMEditMenu>("RemoveMenu")->RemoveMenu(barra, itens);
    confere(barra, itens);
}

TEST_F(TrocaTest, ContextAndOperationOfAService_ComeBack)
{
    Ref<::Objeto> contexto;
    std::string metodo = "altera";
    std::vector<Valor> parametros;
    EXPECT_TRUE(Que<IProxyRN>("ExecutaMetodo", De(true))->ExecutaMetodo(contexto, metodo, parametros));
    EXPECT_TRUE(Veio(contexto, 0));
    EXPECT_EQ(metodo, "volta 1");
}

TEST_F(TrocaTest, OwnerAndFormClicked_ComeBack)
{
    Ref<IForm> dono;
    Ref<::Objeto> clicado;
    Que<IObjInterface>("MostraJanela")->MostraJanela(Novo<FormFalso>(), 0, dono, 0, clicado);
    EXPECT_TRUE(Veio(dono, 2));
    EXPECT_TRUE(Veio(clicado, 4));
}

TEST_F(RemotosTest, InicializaSessao_GivesEachObjectInItsPlace)
{
    const std::vector<Com<ObjetoAlheio>> objetos{Alheio(), Alheio(), Alheio(), Alheio()};
    std::vector<bool> noLugar;
    const Com<ObjetoAlheio> global = Alheio();
    global->Membro("InicializaSessao", [&](const std::vector<VARIANT *> &argumentos) {
        for (std::size_t lugar = 0; lugar < argumentos.size(); ++lugar) {
            noLugar.push_back(LeObjeto(*argumentos[lugar]) == ComoDispatch(objetos.at(lugar)));
        }
        return Variante();
    });
    Um<IObjGlobalVor>(global)->InicializaSessao(Um<IobjMTM>(objetos[0]), Um<IobjSCA>(objetos[1]),
                                                Um<IoAppEXE>(objetos[2]), Um<::Objeto>(objetos[3]));
    EXPECT_EQ(noLugar, (std::vector<bool>{true, true, true, true}));
}

TEST_F(RemotosTest, Write_OfAnObject_GoesByReferenceAndThenByValue)
{
    const Com<ObjetoAlheio> objeto = Alheio();
    objeto->Membro("CurrentRecordSet", Variante(), DISPATCH_PROPERTYPUT);
    Um<IRelatorios>(objeto)->DefineCurrentRecordSet(Qualquer<ICursor>());
    EXPECT_EQ(diario, (Diario{"CurrentRecordSet R DISPATCH", "CurrentRecordSet P DISPATCH"}));
}

// A collection that a member gives, which takes no index itself.
class ColecaoSemIndiceTest : public RemotosTest {
  protected:
    Com<ObjetoAlheio> DonoDe(const std::string &membro)
    {
        const Com<ObjetoAlheio> dono = Alheio();
        dono->Membro(membro, [this](const std::vector<VARIANT *> &argumentos) -> Variante {
            if (!argumentos.empty()) {
                throw static_cast<HRESULT>(DISP_E_BADPARAMCOUNT);
            }
            return Objeto(colecao);
        });
        return dono;
    }
    Com<ObjetoAlheio> colecao = Alheio();
};

TEST_F(ColecaoSemIndiceTest, Index_IsGivenToTheDefaultValueOfWhatItGives)
{
    colecao->Membro("", Objeto(Alheio()));
    EXPECT_FALSE(Um<ICursor>(DonoDe("Fields"))->Fields("COD").Nada());
    EXPECT_EQ(diario, (Diario{"Fields MG BSTR:COD", "Fields MG", "(value) MG BSTR:COD"}));
}

TEST_F(ColecaoSemIndiceTest, Index_IsGivenToItemWhereThereIsNoDefaultValue)
{
    colecao->Membro("Item", Objeto(Alheio()));
    EXPECT_FALSE(Um<ICursor>(DonoDe("Fields"))->Fields("COD").Nada());
    EXPECT_EQ(std::exchange(diario, {}),
              (Diario{"Fields MG BSTR:COD", "Fields MG", "(value) MG BSTR:COD", "Item MG BSTR:COD"}));
}

TEST_F(RemotosTest, FaultOfTheHost_KeepsItsNumber)
{
    const Com<ObjetoAlheio> objeto = Alheio();
    objeto->Falha("Fields", static_cast<HRESULT>(0x800A0CC1)); // 3265
    EXPECT_EQ(FalhaLancada([&] { Um<ICursor>(objeto)->Fields("FALTA"); }).Numero, 3265);
}

// A remote service that answers with an object, and may put another one into the caller's variable.
class ServicoRemoto : public RemotosTest {
  protected:
    Com<ObjetoAlheio> servico = Alheio();
    Ref<IProxyRN> proxy;
    Ref<::Objeto> registro = Novo<EquiptoED>();

    bool Executa(const std::string &operacao)
    {
        proxy = Um<IProxyRN>(servico);
        Ref<::Objeto> contexto;
        std::string metodo = operacao;
        std::vector<Valor> parametros{Valor::PorReferencia(registro)};
        return proxy->ExecutaMetodo(contexto, metodo, parametros);
    }
    // A record as a host without our library has it: members that are there, and no name of a class.
    template <class R> Com<ObjetoAlheio> RegistroAlheio(const std::map<std::string, Variante> &membros)
    {
        const Com<ObjetoAlheio> alheio = Alheio();
        R().CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &) {
            const auto membro = membros.find(std::string(nome));
            alheio->Membro(std::string(nome), membro == membros.end() ? Variante() : membro->second);
        });
        return alheio;
    }
};

TEST_F(ServicoRemoto, ObtemRetorno_OfAnObjectWithoutAClass_IsTheRecordOfTheOperation)
{
    const std::vector<std::pair<std::string, std::string>> operacoes{
        {"consulta", "EquiptoED"},
        {"inclui", "EquiptoED"},
        {"consultaSimples", "EquiptoED"},
        {"listaLimiteDif", "EquiptoED"},
        {"listaDiaEspecifico", "EquiptoED"},
        {"lista2", "ListaEquiptoED"},
        {"consultaSimplesAfericaoVigente", "AfericaoED"},
        {"consultaSimplesLimiteDif", "LimiteDifED"},
        {"consultaSimplesDiaEspecifico", "DiaEspecificoED"},
        {"consultaRelatorioRVOR011", "RelatorioAfericaoED"}};
    const std::map<std::string, std::function<Com<ObjetoAlheio>()>> alheios{
        {"EquiptoED", [&] { return RegistroAlheio<EquiptoED>({}); }},
        {"ListaEquiptoED", [&] { return RegistroAlheio<ListaEquiptoED>({}); }},
        {"AfericaoED", [&] { return RegistroAlheio<AfericaoED>({}); }},
        {"LimiteDifED", [&] { return RegistroAlheio<LimiteDifED>({}); }},
        {"DiaEspecificoED", [&] { return RegistroAlheio<DiaEspecificoED>({}); }},
        {"RelatorioAfericaoED", [&] { return RegistroAlheio<RelatorioAfericaoED>({}); }}};
    for (const auto &[operacao, classe] : operacoes) {
        SCOPED_TRACE(operacao);
        servico = Alheio();
        servico->Membro("ExecutaMetodo", De(true));
        servico->Membro("ObtemRetorno", Objeto(alheios.at(classe)()));
        EXPECT_TRUE(Executa(operacao));
        EXPECT_EQ(proxy->ObtemRetorno().ComoObjeto()->NomeTipo(), classe);
    }
}

TEST_F(ServicoRemoto, ObtemRetorno_OfAForeignRecord_HasItsMembersAndLeavesUnsetWhatIsEmpty)
{
    servico->Membro("ExecutaMetodo", De(true));
    servico->Membro("ObtemRetorno",
                    Objeto(RegistroAlheio<EquiptoED>({{"NroIntEquip", De(12.0)}, {"Codigo", De(std::string("ABC"))}})));
    EXPECT_TRUE(Executa("consulta"));
    const auto equipto = proxy->ObtemRetorno().Como<EquiptoED>();
    EXPECT_EQ(equipto->Texto(), "EquiptoED{NroIntEquip=12, Codigo=\"ABC\"}");
}

TEST_F(ServicoRemoto, ObtemRetorno_OfARecordWhoseClassIsAnother_IsThatAndSoFault13ToItsCaller)
{
    servico->Membro("ExecutaMetodo", De(true));
    Variante retorno;
    V_VT(&retorno.Bruta()) = VT_DISPATCH;
    V_DISPATCH(&retorno.Bruta()) = OfereceRegistro(Novo<SensorED>(), Lado::Hospedeiro).Solta();
    servico->Membro("ObtemRetorno", retorno);
    EXPECT_TRUE(Executa("consulta"));
    const Valor valor = proxy->ObtemRetorno();
    EXPECT_EQ(valor.ComoObjeto()->NomeTipo(), "SensorED");
    EXPECT_EQ(FalhaLancada([&] { valor.Como<EquiptoED>(); }).Numero, 13);
}

TEST_F(ServicoRemoto, ObtemRetorno_OfNothing_IsNothing)
{
    servico->Membro("ExecutaMetodo", De(true));
    servico->Membro("ObtemRetorno", De(Ref<::Objeto>()));
    EXPECT_TRUE(Executa("consulta"));
    EXPECT_TRUE(proxy->ObtemRetorno().ComoObjeto().Nada());
}

TEST_F(ServicoRemoto, ObtemRetorno_OfAnUnknownOperation_StandsAsItCame)
{
    servico->Membro("ExecutaMetodo", De(true));
    servico->Membro("ObtemRetorno", De(std::int32_t{5}));
    EXPECT_TRUE(Executa("altera"));
    EXPECT_EQ(proxy->ObtemRetorno().CLng(), 5);
}

TEST_F(ServicoRemoto, ExecutaMetodo_MayPutAnotherObjectIntoTheVariable_EvenWhenItRefuses)
{
    const Com<ObjetoAlheio> novo = RegistroAlheio<EquiptoED>({{"Codigo", De(std::string("NOVO"))}});
    servico->Membro("ExecutaMetodo", [&](const std::vector<VARIANT *> &argumentos) {
        VARIANT *elementos = nullptr;
        SafeArrayAccessData(*V_ARRAYREF(argumentos[2]), reinterpret_cast<void **>(&elementos));
        EXPECT_EQ(V_VT(&elementos[0]), VT_BYREF | VT_DISPATCH);
        (*V_DISPATCHREF(&elementos[0]))->Release();
        *V_DISPATCHREF(&elementos[0]) = ComoDispatch(novo).Solta();
        SafeArrayUnaccessData(*V_ARRAYREF(argumentos[2]));
        return De(false);
    });
    EXPECT_FALSE(Executa("altera"));
    EXPECT_EQ(ComoTipo<EquiptoED>(registro)->Codigo.Valor(), "NOVO");
}

TEST_F(ServicoRemoto, ExecutaMetodo_ThatLeavesTheVariableAlone_KeepsTheRecordItself)
{
    servico->Membro("ExecutaMetodo", De(true));
    const Ref<::Objeto> antes = registro;
    EXPECT_TRUE(Executa("altera"));
    EXPECT_TRUE(registro == antes);
}

TEST_F(RemotosTest, Transacao_FieldsOfAForeignCollection_AreFoundByTheirNames)
{
    const Com<ObjetoAlheio> campo = Alheio();
    campo->Membro("Nome", De(std::string("HDR-FIM-RAJADA")));
    campo->Membro("Valor", De(std::int32_t{5}));
    const Com<ObjetoAlheio> colecao = Alheio();
    colecao->Membro("Count", De(std::int32_t{1}));
    colecao->Membro("Item", Objeto(campo));
    const Com<ObjetoAlheio> transacao = Alheio();
    transacao->Membro("Cin", Objeto(colecao));
    transacao->Membro("Cout", De(Ref<::Objeto>()));

    const auto trans = Um<ITransacao>(transacao);
    const CamposTransacao campos = trans->Cin();
    EXPECT_EQ(campos->Item("hdr-fim-rajada")->Valor, "5");
    EXPECT_TRUE(trans->Cout().Nada());
    // The same object goes on, and not a copy.
    EXPECT_TRUE(Oferece(campos->Item(1)) == ComoDispatch(campo));
}

TEST_F(RemotosTest, FormOfTheHost_IsNoFormOfTheModule)
{
    const Com<ObjetoAlheio> objeto = Alheio();
    const auto form = Um<IForm>(objeto);
    EXPECT_TRUE(form->Controles().empty());
    EXPECT_TRUE(form->ControleAtivo().Nada());
    bool cancela = false;
    EXPECT_EQ(FalhaLancada([&] { form->Unload(cancela); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { form->frmParent(); }).Numero, 438);
    EXPECT_EQ(JanelaAlheia(form->hwnd()), nullptr);
    EXPECT_EQ(JanelaAlheia(12), nullptr);
}

TEST_F(RemotosTest, FormOfTheHost_TellsItsWindowInWhateverNumber)
{
    const HWND janela = CreateWindowW(L"STATIC", L"alheia", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(janela, nullptr);
    const auto numero = static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(janela));
    for (const Variante &como : {De(numero), De(static_cast<double>(numero)), De(std::to_string(numero))}) {
        const Com<ObjetoAlheio> objeto = Alheio();
        objeto->Membro("hWnd", como);
        EXPECT_EQ(JanelaAlheia(Um<IForm>(objeto)->hwnd()), janela);
    }
    DestroyWindow(janela);
}

TEST_F(RemotosTest, Global_NameOfItsClass_IsThatOfItsTypeInformation)
{
    class CAutoModulos : public IcGlobal {
      public:
        std::string_view NomeTipo() const override { return "CAutoModulos"; }
    };
    OfereceMembros<CAutoModulos>([](Membros<CAutoModulos> &) {});
    const auto global = RemotoDe<IcGlobal>(Embrulha(Novo<CAutoModulos>(), Lado::Hospedeiro));
    EXPECT_EQ(global->NomeTipo(), "CAutoModulos");
    EXPECT_EQ(Qualquer<IcGlobal>()->NomeTipo(), "Object");
    EXPECT_EQ(FalhaLancada([&] { global->PegaAutoModulo("X"); }).Numero, 438);
}

} // namespace
} // namespace nativo
