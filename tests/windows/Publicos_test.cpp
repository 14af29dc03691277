#include "host/Falha.h"
#include "tests/windows/ComponenteDeTeste.h"
#include "tests/windows/HospedeiroDeTeste.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Tardio.h"
#include "windows/automation/Texto16.h"

#include <ocidl.h>
#include <oleauto.h>

#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

// What a late-bound call answered.
struct Resultado {
    HRESULT Codigo = S_OK;
    UINT Errado = 77; // untouched
    Falha Excecao{0, "", ""};
    Variante Resposta;
};

DISPID Numero(IDispatch &objeto, std::wstring nome)
{
    LPOLESTR ponteiro = nome.data();
    DISPID numero = DISPID_UNKNOWN;
    EXPECT_EQ(objeto.GetIDsOfNames(IID_NULL, &ponteiro, 1, LOCALE_USER_DEFAULT, &numero), S_OK);
    return numero;
}

// argumentos: the first one first.
Resultado Invoca(IDispatch &objeto, DISPID numero, int modo, std::vector<VARIANT> argumentos,
                 std::vector<DISPID> nomeados = {})
{
    Resultado resultado;
    std::vector<VARIANT> aoContrario(argumentos.rbegin(), argumentos.rend());
    std::vector<DISPID> nomes(nomeados.rbegin(), nomeados.rend());
    DISPPARAMS parametros{aoContrario.data(), nomes.data(), static_cast<UINT>(aoContrario.size()),
                          static_cast<UINT>(nomes.size())};
    EXCEPINFO excecao{};
    resultado.Codigo = objeto.Invoke(numero, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(modo), &parametros,
                                     &resultado.Resposta.Bruta(), &excecao, &resultado.Errado);
    if (resultado.Codigo == DISP_E_EXCEPTION) {
        resultado.Excecao = FalhaDe(resultado.Codigo, excecao);
    }
    return resultado;
}

Resultado Chama(IDispatch &objeto, const std::wstring &nome, const std::vector<Variante> &argumentos)
{
    std::vector<VARIANT> brutos;
    for (const Variante &argumento : argumentos) {
        brutos.push_back(argumento.Bruta());
    }
    return Invoca(objeto, Numero(objeto, nome), DISPATCH_METHOD, brutos);
}

Variante Faz(VARTYPE tipo)
{
    Variante variante;
    V_VT(&variante.Bruta()) = tipo;
    return variante;
}
Variante Texto(const std::string &texto)
{
    return ParaVariante(texto);
}
Variante Numero(std::int32_t numero)
{
    return ParaVariante(numero);
}
Variante Objeto(const Com<IDispatch> &objeto)
{
    Variante variante = Faz(VT_DISPATCH);
    V_DISPATCH(&variante.Bruta()) = Com<IDispatch>(objeto).Solta();
    return variante;
}
// References to variables of the caller.
Variante PorReferencia(Variante &variavel)
{
    Variante variante = Faz(VT_BYREF | VT_VARIANT);
    V_VARIANTREF(&variante.Bruta()) = &variavel.Bruta();
    return variante;
}
Variante PorReferencia(VARTYPE tipo, void *variavel)
{
    Variante variante = Faz(static_cast<VARTYPE>(VT_BYREF | tipo));
    V_BYREF(&variante.Bruta()) = variavel;
    return variante;
}

class PublicosTeste : public testing::Test {
  protected:
    ComponenteDeTeste Componente;
    HospedeiroDeTeste Hospedeiro;
    Com<_Geral> Geral = Componente.NovoGeral();

    Com<_Especifica> Especifica()
    {
        Com<_Especifica> especifica;
        EXPECT_EQ(Hospedeiro.Configura(*Geral.Ponteiro()), S_OK);
        EXPECT_EQ(Geral->get_CEspecifica(especifica.Recebe()), S_OK);
        return especifica;
    }
    Com<_CVORPesqEquip> Pesquisa()
    {
        Com<_CVORPesqEquip> pesquisa;
        EXPECT_EQ(Especifica()->CreateCVORPesqEquip(pesquisa.Recebe()), S_OK);
        return pesquisa;
    }
    Com<_CVorEquip> Consulta()
    {
        Com<_CVorEquip> consulta;
        EXPECT_EQ(Especifica()->CreateCVorEquip(consulta.Recebe()), S_OK);
        return consulta;
    }
};

// --- names

TEST_F(PublicosTeste, GetIDsOfNames_InAnyCase_TellsTheMemberAndItsArguments)
{
    std::wstring nomes[] = {L"PARAMETROS", L"oappexe", L"FormMDI"};
    LPOLESTR ponteiros[] = {nomes[0].data(), nomes[1].data(), nomes[2].data()};
    DISPID numeros[3]{};
    EXPECT_EQ(Geral->GetIDsOfNames(IID_NULL, ponteiros, 3, LOCALE_USER_DEFAULT, numeros), S_OK);
    EXPECT_EQ(numeros[0], 9);
    EXPECT_EQ(numeros[1], 5);
    EXPECT_EQ(numeros[2], 0);
}

TEST_F(PublicosTeste, GetIDsOfNames_WithAnUnknownName_FailsForAll)
{
    for (const std::vector<std::wstring> &nomes : std::vector<std::vector<std::wstring>>{
             {L"Inexistente"}, {L"Parametros", L"FormMDI", L"Outro"}, {L"MDB", L"valor"}, {L""}}) {
        std::vector<LPOLESTR> ponteiros;
        for (const std::wstring &nome : nomes) {
            ponteiros.push_back(const_cast<LPOLESTR>(nome.c_str()));
        }
        std::vector<DISPID> numeros(nomes.size(), 5);
        EXPECT_EQ(Geral->GetIDsOfNames(IID_NULL, ponteiros.data(), static_cast<UINT>(nomes.size()), LOCALE_USER_DEFAULT,
                                       numeros.data()),
                  DISP_E_UNKNOWNNAME);
        EXPECT_EQ(numeros, std::vector<DISPID>(nomes.size(), DISPID_UNKNOWN));
    }
}

TEST_F(PublicosTeste, GetIDsOfNames_OfWhatIsForTheShellAloneOrForTheTable_KnowsNone)
{
    const Com<_Especifica> especifica = Especifica();
    for (const wchar_t *nome : {L"LiberaServicos", L"EfetuaLogon", L"SistemaQMR", L"VersaoSistemaQMR", L"QMRModuloID",
                                L"QMRVersaoModulo", L"ModuloQMRAuxiliar", L"UsandoModuloQMRauxiliar", L"Finaliza",
                                L"ObtemTransacao", L"QueryInterface", L"AddRef", L"Invoke"}) {
        LPOLESTR ponteiro = const_cast<LPOLESTR>(nome);
        DISPID numero = 0;
        EXPECT_EQ(especifica->GetIDsOfNames(IID_NULL, &ponteiro, 1, LOCALE_USER_DEFAULT, &numero), DISP_E_UNKNOWNNAME)
            << ParaUtf8(nome);
    }
}

TEST_F(PublicosTeste, Dispatch_WithWhatIsNoCall_SaysSo)
{
    DISPID numero = 0;
    LPOLESTR nome = const_cast<LPOLESTR>(L"MDB");
    DISPPARAMS nenhum{};
    ITypeInfo *tipo = nullptr;
    EXPECT_EQ(Geral->GetIDsOfNames(IID_IDispatch, &nome, 1, 0, &numero), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(Geral->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &numero), E_INVALIDARG);
    EXPECT_EQ(Geral->GetIDsOfNames(IID_NULL, &nome, 1, 0, nullptr), E_INVALIDARG);
    EXPECT_EQ(Geral->Invoke(2, IID_IDispatch, 0, DISPATCH_PROPERTYGET, &nenhum, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(Geral->Invoke(2, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(Geral->GetTypeInfo(1, 0, &tipo), DISP_E_BADINDEX);
    EXPECT_EQ(Geral->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(Geral->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(Geral->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(PublicosTeste, Dispatch_WithFewerValuesThanTheCallSays_IsRefused)
{
    VARIANT valor{};
    DISPID nomeado = 0;
    DISPPARAMS semValores{nullptr, nullptr, 1, 0};
    DISPPARAMS semNomes{&valor, nullptr, 1, 1};
    DISPPARAMS maisNomes{&valor, &nomeado, 1, 2};
    for (DISPPARAMS *parametros : {&semValores, &semNomes, &maisNomes}) {
        EXPECT_EQ(Geral->Invoke(13, IID_NULL, 0, DISPATCH_METHOD, parametros, nullptr, nullptr, nullptr), E_INVALIDARG);
    }
}

// --- reading and writing

TEST_F(PublicosTeste, Property_OfAPlainValue_IsReadAsEitherAndWrittenFromWhatConverts)
{
    const Tardio tardio(Geral.Como<IDispatch>());
    EXPECT_FALSE(tardio.Chama<bool>("Depurar"));
    for (const int modo : {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_METHOD | DISPATCH_PROPERTYGET}) {
        const Resultado lida = Invoca(*Geral.Ponteiro(), 2, modo, {});
        EXPECT_EQ(lida.Codigo, S_OK);
        EXPECT_EQ(lida.Resposta.Tipo(), VT_BOOL);
    }
    for (const Variante &verdade : {ParaVariante(true), Numero(7), Texto("Verdadeiro"), Texto("-1")}) {
        tardio.Escreve("Depurar", false);
        EXPECT_EQ(Invoca(*Geral.Ponteiro(), 2, DISPATCH_PROPERTYPUT, {verdade.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
                  S_OK);
        VARIANT_BOOL escrita = 0;
        EXPECT_EQ(Geral->get_Depurar(&escrita), S_OK);
        EXPECT_EQ(escrita, VARIANT_TRUE);
    }
    EXPECT_EQ(Geral->put_Depurar(1), S_OK); // any other than zero is true, and true is -1
    VARIANT_BOOL escrita = 0;
    EXPECT_EQ(Geral->get_Depurar(&escrita), S_OK);
    EXPECT_EQ(escrita, VARIANT_TRUE);
}

TEST_F(PublicosTeste, Property_OfAnObject_GivesTheSameObjectBackAsWritten)
{
    const Com<IDispatch> coisa = HospedeiroDeTeste::Coisa();
    for (const wchar_t *nome : {L"MDB", L"ActBar", L"cGlobal", L"ObjInterface"}) {
        for (const int modo :
             {DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF}) {
            const DISPID numero = Numero(*Geral.Ponteiro(), nome);
            const Variante dada = Objeto(coisa);
            ASSERT_EQ(Invoca(*Geral.Ponteiro(), numero, modo, {dada.Bruta()}, {DISPID_PROPERTYPUT}).Codigo, S_OK);
            const Resultado lida = Invoca(*Geral.Ponteiro(), numero, DISPATCH_PROPERTYGET, {});
            ASSERT_EQ(lida.Resposta.Tipo(), VT_DISPATCH);
            EXPECT_EQ(V_DISPATCH(&lida.Resposta.Bruta()), coisa.Ponteiro());
        }
    }
    ASSERT_EQ(Geral->putref_ActBar(nullptr), S_OK);
    IDispatch *lida = coisa.Ponteiro();
    EXPECT_EQ(Geral->get_ActBar(&lida), S_OK);
    EXPECT_EQ(lida, nullptr);
}

TEST_F(PublicosTeste, Property_WhenItIsNotOfThatKind_IsNoMember)
{
    const Variante valor = Numero(1);
    const Variante coisa = Objeto(HospedeiroDeTeste::Coisa());
    IDispatch &geral = *Geral.Ponteiro();
    EXPECT_EQ(Invoca(geral, 22, DISPATCH_PROPERTYPUT, {valor.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
              DISP_E_MEMBERNOTFOUND); // read alone
    EXPECT_EQ(Invoca(geral, 15, DISPATCH_PROPERTYPUTREF, {coisa.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Invoca(geral, 2, DISPATCH_PROPERTYPUTREF, {coisa.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
              DISP_E_MEMBERNOTFOUND); // no object
    EXPECT_EQ(Invoca(geral, 13, DISPATCH_PROPERTYPUT, {valor.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
              DISP_E_MEMBERNOTFOUND);                                                    // a method
    EXPECT_EQ(Invoca(geral, 0, DISPATCH_PROPERTYGET, {}).Codigo, DISP_E_MEMBERNOTFOUND); // no default value
    EXPECT_EQ(Invoca(geral, 28, DISPATCH_METHOD, {}).Codigo, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Invoca(geral, -1, DISPATCH_METHOD, {}).Codigo, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Invoca(geral, 2, 0, {}).Codigo, DISP_E_MEMBERNOTFOUND);
}

TEST_F(PublicosTeste, DataDictionary_OnBothRoads_IsTheSame)
{
    EXPECT_EQ(Hospedeiro.Configura(*Geral.Ponteiro()), S_OK);
    const Tardio tardio(Geral.Como<IDispatch>());
    BSTR texto = nullptr;
    short versao = 0;
    VARIANT_BOOL auxiliar = 0;
    EXPECT_EQ(Geral->get_SistemaQMR(&texto), S_OK);
    EXPECT_EQ(ParaUtf8(texto), tardio.Chama<std::string>("SistemaQMR"));
    EXPECT_EQ(ParaUtf8(texto), "VOR");
    SysFreeString(texto);
    EXPECT_EQ(Geral->get_VersaoSistemaQMR(&versao), S_OK);
    EXPECT_EQ(versao, 1);
    EXPECT_EQ(tardio.Chama<Variante>("VersaoSistemaQMR").Tipo(), VT_I2);
    EXPECT_EQ(tardio.Chama<std::string>("QMRModuloID"), "VOR");
    EXPECT_EQ(tardio.Chama<std::int16_t>("QMRVersaoModulo"), 1);
    EXPECT_EQ(Geral->get_UsandoModuloQMRauxiliar(&auxiliar), S_OK);
    EXPECT_EQ(auxiliar, VARIANT_TRUE);
}

// --- arguments

TEST_F(PublicosTeste, Parametros_WithNamedArgumentsInAnyOrder_PutsEachInItsPlace)
{
    const Variante vazio = Objeto(nullptr);
    const Variante menu = Objeto(Hospedeiro.MenuDestino);
    const Variante relatorios = Objeto(Hospedeiro.Relatorios);
    const Variante ajuda = Objeto(Hospedeiro.Ajuda);
    const Variante banco = Objeto(Hospedeiro.MDB);
    const Variante aplicacao = Objeto(Hospedeiro.oAppEXE);
    // FormMDI by place, the rest by name.
    const Resultado feito =
        Invoca(*Geral.Ponteiro(), 9, DISPATCH_METHOD,
               {vazio.Bruta(), aplicacao.Bruta(), banco.Bruta(), ajuda.Bruta(), menu.Bruta(), relatorios.Bruta()},
               {5, 4, 3, 1, 2});
    ASSERT_EQ(feito.Codigo, S_OK) << feito.Excecao.Descricao;
    const Tardio tardio(Geral.Como<IDispatch>());
    const Variante lido = tardio.Chama<Variante>("ActBar");
    EXPECT_EQ(V_DISPATCH(&lido.Bruta()), Hospedeiro.MenuDestino.Ponteiro());
    const Variante bancoLido = tardio.Chama<Variante>("MDB");
    EXPECT_EQ(V_DISPATCH(&bancoLido.Bruta()), Hospedeiro.MDB.Ponteiro());
}

TEST_F(PublicosTeste, Parametros_WithObjectsInEveryFormThatCallersHave_TakesThem)
{
    IDispatch *variavel = Hospedeiro.MenuDestino.Ponteiro();
    Variante geral = Objeto(Hospedeiro.Relatorios);
    Variante deOutra = PorReferencia(geral);
    const Resultado feito = Chama(*Geral.Ponteiro(), L"Parametros",
                                  {Faz(VT_NULL), PorReferencia(VT_DISPATCH, &variavel), PorReferencia(deOutra),
                                   Objeto(Hospedeiro.Ajuda), Objeto(nullptr), Objeto(Hospedeiro.oAppEXE)});
    ASSERT_EQ(feito.Codigo, S_OK) << feito.Excecao.Descricao;
    EXPECT_EQ(variavel, Hospedeiro.MenuDestino.Ponteiro());
    IDispatch *lido = nullptr;
    ASSERT_EQ(Geral->get_ActBar(&lido), S_OK);
    EXPECT_EQ(lido, Hospedeiro.MenuDestino.Ponteiro());
    lido->Release();
}

TEST_F(PublicosTeste, Method_WithTooFewOrTooManyArguments_CountsThem)
{
    EXPECT_EQ(Chama(*Geral.Ponteiro(), L"Parametros", {}).Codigo, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Chama(*Geral.Ponteiro(), L"Logoff", {Numero(1)}).Codigo, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Chama(*Geral.Ponteiro(), L"ClickMenu", {Texto("a"), Texto("b")}).Codigo, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Chama(*Geral.Ponteiro(), L"Depurar", {Texto("a")}).Codigo, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Invoca(*Geral.Ponteiro(), 2, DISPATCH_PROPERTYPUT, {}).Codigo, DISP_E_BADPARAMCOUNT);
    const Variante um = Numero(1);
    EXPECT_EQ(Invoca(*Geral.Ponteiro(), 2, DISPATCH_PROPERTYPUT, {um.Bruta(), um.Bruta()}, {DISPID_PROPERTYPUT}).Codigo,
              DISP_E_BADPARAMCOUNT);
}

TEST_F(PublicosTeste, Method_WithARequiredArgumentLeftOut_TellsWhich)
{
    const Resultado feito = Chama(*Especifica().Ponteiro(), L"ImprimeAfericaoVigenteEquipto",
                                  {ParaVariante(Ausente{}), Numero(2), Numero(3), Texto("A")});
    EXPECT_EQ(feito.Codigo, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(feito.Errado, 3U); // the last one is 0
    const Variante texto = Texto("x");
    const Resultado nomeado =
        Invoca(*Consulta().Ponteiro(), 10, DISPATCH_METHOD, {texto.Bruta(), texto.Bruta()}, {1, 2});
    EXPECT_EQ(nomeado.Codigo, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(PublicosTeste, Method_WithNamesThatAreNone_TellsWhich)
{
    const Variante texto = Texto("x");
    const Com<_CVorEquip> consulta = Consulta();
    for (const DISPID nome : {DISPID{3}, DISPID{-3}, DISPID{0}}) { // beyond, a property's value, taken by place already
        const Resultado feito =
            Invoca(*consulta.Ponteiro(), 9, DISPATCH_METHOD, {texto.Bruta(), texto.Bruta()}, {nome});
        EXPECT_EQ(feito.Codigo, DISP_E_PARAMNOTFOUND) << nome;
        EXPECT_EQ(feito.Errado, 0U) << nome;
    }
}

TEST_F(PublicosTeste, Method_WithTheSameNameTwice_TellsTheSecond)
{
    const Variante texto = Texto("x");
    const Resultado feito =
        Invoca(*Consulta().Ponteiro(), 9, DISPATCH_METHOD, {texto.Bruta(), texto.Bruta(), texto.Bruta()}, {1, 1});
    EXPECT_EQ(feito.Codigo, DISP_E_PARAMNOTFOUND);
}

TEST_F(PublicosTeste, Method_WithAnArgumentOfAnotherType_TellsWhichAndWhy)
{
    struct Caso {
        std::wstring Membro;
        std::vector<Variante> Argumentos;
        HRESULT Codigo;
        UINT Errado;
    };
    Variante arranjo = detalhe::FazArranjo(VT_VARIANT, {});
    const Com<_Especifica> especifica = Especifica();
    const Com<_CVorEquip> consulta = Consulta();
    const Com<_CVORPesqEquip> pesquisa = Pesquisa();
    const std::vector<std::pair<IDispatch *, Caso>> casos{
        {Geral.Ponteiro(), {L"Logon", {Numero(1), Objeto(nullptr), Texto("")}, DISP_E_TYPEMISMATCH, 2}},
        {Geral.Ponteiro(), {L"Logon", {Objeto(nullptr), Texto("sca"), Texto("")}, DISP_E_TYPEMISMATCH, 1}},
        {Geral.Ponteiro(), {L"ObtemTransacao", {arranjo}, DISP_E_TYPEMISMATCH, 0}},
        {Geral.Ponteiro(), {L"ObtemTransacao", {Faz(VT_NULL)}, DISP_E_TYPEMISMATCH, 0}},
        {especifica.Ponteiro(), {L"HabilitarItem", {Objeto(HospedeiroDeTeste::Coisa())}, DISP_E_TYPEMISMATCH, 0}},
        {especifica.Ponteiro(), {L"Menu", {Texto("x")}, DISP_E_TYPEMISMATCH, 0}},
        {especifica.Ponteiro(), {L"ImprimeAfericaoVigenteEquipto", {Texto("doze")}, DISP_E_TYPEMISMATCH, 0}},
        {especifica.Ponteiro(), {L"ImprimeAfericaoVigenteEquipto", {Numero(1), ParaVariante(3e9)}, DISP_E_OVERFLOW, 0}},
        {consulta.Ponteiro(),
         {L"BuscaEquipamento", {Texto("a"), Texto("b"), Texto("31/02/2020")}, DISP_E_TYPEMISMATCH, 0}},
        {consulta.Ponteiro(), {L"BuscaEquipamento", {Texto("a"), Texto("b"), ParaVariante(1e9)}, DISP_E_OVERFLOW, 0}},
        {pesquisa.Ponteiro(),
         {L"CarregaPesqEquip2", {Numero(1), Texto("a"), Texto("b"), Numero(40000)}, DISP_E_OVERFLOW, 0}},
        {pesquisa.Ponteiro(), {L"CarregaPesqEquip", {Texto("1"), arranjo, Texto("b")}, DISP_E_TYPEMISMATCH, 1}},
    };
    for (const auto &[objeto, caso] : casos) {
        const Resultado feito = Chama(*objeto, caso.Membro, caso.Argumentos);
        EXPECT_EQ(feito.Codigo, caso.Codigo) << ParaUtf8(caso.Membro) << " " << feito.Excecao.Descricao;
        EXPECT_EQ(feito.Errado, caso.Errado) << ParaUtf8(caso.Membro);
    }
    const Variante semNumero = Texto("abc");
    const Resultado escrita =
        Invoca(*Geral.Ponteiro(), 2, DISPATCH_PROPERTYPUT, {semNumero.Bruta()}, {DISPID_PROPERTYPUT});
    EXPECT_EQ(escrita.Codigo, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(escrita.Errado, 0U);
}

TEST_F(PublicosTeste, Method_WithArgumentsThatConvert_TakesThem)
{
    // What refuses has taken all its arguments before.
    const Com<_CVORPesqEquip> pesquisa = Pesquisa();
    const auto recusou = [](const Resultado &feito) {
        return feito.Codigo == DISP_E_EXCEPTION && feito.Excecao.Numero == -1;
    };
    EXPECT_TRUE(recusou(Chama(*pesquisa.Ponteiro(), L"CarregaPesqEquip", {Texto(" 12 "), Numero(5), Faz(VT_EMPTY)})));
    EXPECT_TRUE(recusou(Chama(*pesquisa.Ponteiro(), L"CarregaPesqEquip2",
                              {Numero(1), Texto("a"), Texto("b"), ParaVariante(Ausente{}), ParaVariante(Ausente{})})));
    EXPECT_TRUE(recusou(Chama(*pesquisa.Ponteiro(), L"BuscaEquipto", {Numero(1), Texto("a"), Texto("b")})));
    EXPECT_TRUE(recusou(Chama(*pesquisa.Ponteiro(), L"ConsultaAfericaoVigente",
                              {Numero(1), Texto("a"), Texto("b"), ParaVariante(Data{0}), Texto("03/04/2020")})));
}

TEST_F(PublicosTeste, Arguments_ByReference_StayAsTheyWereWhenNothingIsWritten)
{
    Variante numero = Texto("12"); // a script's variable, of another type than the member takes
    LONG longo = 12;
    BSTR texto = SysAllocString(L"abc");
    const BSTR antes = texto;
    const Resultado feito = Chama(*Pesquisa().Ponteiro(), L"CarregaPesqEquip",
                                  {PorReferencia(numero), PorReferencia(VT_BSTR, &texto), Texto("x")});
    EXPECT_EQ(feito.Codigo, DISP_E_EXCEPTION);
    EXPECT_EQ(numero.Tipo(), VT_BSTR);
    EXPECT_EQ(DeVariante<std::string>(numero.Bruta()), "12");
    EXPECT_EQ(texto, antes);
    EXPECT_EQ(Chama(*Pesquisa().Ponteiro(), L"CarregaPesqEquip", {PorReferencia(VT_I4, &longo), Texto("a"), Texto("b")})
                  .Codigo,
              DISP_E_EXCEPTION);
    EXPECT_EQ(longo, 12);
    SysFreeString(texto);
}

// --- arrays

Variante ArranjoDe(VARTYPE tipo, std::vector<Variante> elementos)
{
    return detalhe::FazArranjo(tipo, std::move(elementos));
}

std::string Formato(const Variante &arranjo)
{
    std::string texto = std::to_string(arranjo.Tipo()) + ":";
    for (const Variante &elemento : detalhe::LeArranjo(arranjo.Bruta())) {
        texto += " " + std::to_string(elemento.Tipo()) + (V_DISPATCH(&elemento.Bruta()) == nullptr ? "-" : "+");
    }
    return texto;
}

TEST_F(PublicosTeste, Menu_OfAnyArray_LeavesItAsItIs)
{
    const Com<_Especifica> especifica = Especifica();
    const Com<IDispatch> coisa = HospedeiroDeTeste::Coisa();
    for (const VARTYPE tipo : {VT_DISPATCH, VT_VARIANT}) {
        Variante itens = ArranjoDe(tipo, {Objeto(nullptr), Objeto(coisa)});
        const std::string antes = Formato(itens);
        EXPECT_EQ(Chama(*especifica.Ponteiro(), L"Menu", {PorReferencia(itens)}).Codigo, S_OK);
        EXPECT_EQ(Formato(itens), antes);
        EXPECT_EQ(Chama(*especifica.Ponteiro(), L"Menu", {itens}).Codigo, S_OK);
        EXPECT_EQ(Chama(*especifica.Ponteiro(), L"Menu",
                        {PorReferencia(static_cast<VARTYPE>(VT_ARRAY | tipo), &V_ARRAY(&itens.Bruta()))})
                      .Codigo,
                  S_OK);
        EXPECT_EQ(Formato(itens), antes);
    }
    Variante vazia;
    EXPECT_EQ(Chama(*especifica.Ponteiro(), L"Menu", {PorReferencia(vazia)}).Codigo, S_OK);
    EXPECT_EQ(vazia.Tipo(), VT_EMPTY);
}

TEST_F(PublicosTeste, MenuAuxiliar_OfAnyArray_LeavesOneEmptyElementAtZero)
{
    const Com<_Especifica> especifica = Especifica();
    const Com<IDispatch> coisa = HospedeiroDeTeste::Coisa();
    const std::string objetos = std::to_string(VT_ARRAY | VT_DISPATCH) + ": 9-";
    const std::string gerais = std::to_string(VT_ARRAY | VT_VARIANT) + ": 9-";
    for (const VARTYPE tipo : {VT_DISPATCH, VT_VARIANT}) {
        Variante itens = ArranjoDe(tipo, {Objeto(coisa), Objeto(coisa), Objeto(nullptr)});
        EXPECT_EQ(Chama(*especifica.Ponteiro(), L"MenuAuxiliar", {PorReferencia(itens)}).Codigo, S_OK);
        EXPECT_EQ(Formato(itens), tipo == VT_DISPATCH ? objetos : gerais);
        Variante outros = ArranjoDe(tipo, {Objeto(coisa), Objeto(coisa)});
        EXPECT_EQ(Chama(*especifica.Ponteiro(), L"MenuAuxiliar",
                        {PorReferencia(static_cast<VARTYPE>(VT_ARRAY | tipo), &V_ARRAY(&outros.Bruta()))})
                      .Codigo,
                  S_OK);
        EXPECT_EQ(Formato(outros), tipo == VT_DISPATCH ? objetos : gerais);
        LONG primeiro = 1;
        EXPECT_EQ(SafeArrayGetLBound(V_ARRAY(&outros.Bruta()), 1, &primeiro), S_OK);
        EXPECT_EQ(primeiro, 0);
    }
    SAFEARRAY *semDimensao = nullptr;
    EXPECT_EQ(especifica->MenuAuxiliar(&semDimensao), S_OK);
    ASSERT_NE(semDimensao, nullptr);
    EXPECT_EQ(semDimensao->rgsabound[0].cElements, 1U);
    SafeArrayDestroy(semDimensao);
}

TEST_F(PublicosTeste, MenuAuxiliar_OfAnArrayThatTheCallerFixed_IsThePlatformsFaultOrNothing)
{
    const Com<_Especifica> especifica = Especifica();
    Variante certo = ArranjoDe(VT_DISPATCH, {Objeto(nullptr)});
    Variante outro = ArranjoDe(VT_DISPATCH, {Objeto(nullptr), Objeto(nullptr)});
    for (Variante *arranjo : {&certo, &outro}) {
        ASSERT_EQ(SafeArrayLock(V_ARRAY(&arranjo->Bruta())), S_OK);
    }
    EXPECT_EQ(especifica->MenuAuxiliar(&V_ARRAY(&certo.Bruta())), S_OK); // is so already
    const HRESULT codigo = especifica->MenuAuxiliar(&V_ARRAY(&outro.Bruta()));
    EXPECT_EQ(FalhaDaTabela(codigo).Numero, 10);
    EXPECT_EQ(Chama(*especifica.Ponteiro(), L"MenuAuxiliar", {PorReferencia(outro)}).Excecao.Numero, 10);
    for (Variante *arranjo : {&certo, &outro}) {
        SafeArrayUnlock(V_ARRAY(&arranjo->Bruta()));
    }
    EXPECT_EQ(V_ARRAY(&outro.Bruta())->rgsabound[0].cElements, 2U);
}

// --- faults

// The same call on both roads: the numbers, sources and descriptions are the same.
void ConfereEstradas(HRESULT pelaTabela, const Resultado &peloNome, std::int32_t numero, const std::string &fonte,
                     const std::string &descricao)
{
    const Falha daTabela = FalhaDaTabela(pelaTabela);
    EXPECT_EQ(daTabela.Numero, numero);
    EXPECT_EQ(daTabela.Fonte, fonte);
    EXPECT_EQ(daTabela.Descricao, descricao);
    ASSERT_EQ(peloNome.Codigo, DISP_E_EXCEPTION);
    EXPECT_EQ(peloNome.Excecao.Numero, numero);
    EXPECT_EQ(peloNome.Excecao.Fonte, fonte);
    EXPECT_EQ(peloNome.Excecao.Descricao, descricao);
}

TEST_F(PublicosTeste, Refusals_OnBothRoads_AreTheSame)
{
    const Com<_Especifica> especifica = Especifica();
    ConfereEstradas(especifica->ImprimeAfericaoVigenteEquipto(1, 0, 0, nullptr),
                    Chama(*especifica.Ponteiro(), L"ImprimeAfericaoVigenteEquipto", {Numero(1)}), -1,
                    "ZTAVOREQUIP.Especifica", "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado");
    ConfereEstradas(Geral->ObtemTransacao2(nullptr, nullptr),
                    Chama(*Geral.Ponteiro(), L"ObtemTransacao2", {Texto("AB"), Objeto(nullptr)}), -1,
                    "ZTAVOREQUIP.Geral.ObtemTransacao2", "Método depreciado. Não utilizar.");
    const Com<_CVORPesqEquip> pesquisa = Pesquisa();
    LONG numero = 0;
    BSTR um = nullptr;
    BSTR outro = nullptr;
    short veloc = 0;
    DATE dia = 0;
    VARIANT_BOOL sim = VARIANT_TRUE;
    const std::vector<Variante> tres{Numero(1), Texto("a"), Texto("b")};
    const auto descricao = [](const std::string &metodo) { return "AVISO: Método " + metodo + " depreciado"; };
    ConfereEstradas(pesquisa->CarregaPesqEquip(&numero, &um, &outro, &sim),
                    Chama(*pesquisa.Ponteiro(), L"CarregaPesqEquip", tres), -1, "ZTAVOREQUIP.CVORPesqEquip",
                    descricao("CarregaPesqEquip"));
    ConfereEstradas(pesquisa->CarregaPesqEquip2(&numero, &um, &outro, &veloc, nullptr, &sim),
                    Chama(*pesquisa.Ponteiro(), L"CarregaPesqEquip2", tres), -1, "ZTAVOREQUIP.CVORPesqEquip",
                    descricao("CarregaPesqEquip2"));
    ConfereEstradas(pesquisa->CarregaPesqEquip3(&numero, &um, &outro, &veloc, nullptr, VARIANT_FALSE, &sim),
                    Chama(*pesquisa.Ponteiro(), L"CarregaPesqEquip3", tres), -1, "ZTAVOREQUIP.CVORPesqEquip",
                    descricao("CarregaPesqEquip3"));
    ConfereEstradas(pesquisa->BuscaEquipto(&numero, &um, &outro, &veloc, nullptr, VARIANT_FALSE, &sim),
                    Chama(*pesquisa.Ponteiro(), L"BuscaEquipto", tres), -1, "ZTAVOREQUIP.CVORPesqEquip",
                    descricao("BuscaEquipto"));
    ConfereEstradas(pesquisa->ConsultaAfericaoVigente(1, &um, &outro, &dia, 0, &sim),
                    Chama(*pesquisa.Ponteiro(), L"ConsultaAfericaoVigente",
                          {Numero(1), Texto("a"), Texto("b"), Numero(0), Numero(0)}),
                    -1, "ZTAVOREQUIP.CVORPesqEquip", descricao("ConsultaAfericaoVigente"));
    EXPECT_EQ(sim, VARIANT_FALSE); // an answer is written at once, so that nobody reads what was there before
}

TEST_F(PublicosTeste, Faults_OnBothRoads_AreTheSame)
{
    BSTR texto = nullptr;
    ConfereEstradas(Geral->get_SistemaQMR(&texto), Chama(*Geral.Ponteiro(), L"SistemaQMR", {}),
                    NumeroFalha::ObjetoNaoDefinido, "ZTAVOREQUIP", DescricaoFalha(NumeroFalha::ObjetoNaoDefinido));
    EXPECT_EQ(texto, nullptr);
    ConfereEstradas(Geral->Logoff(), Chama(*Geral.Ponteiro(), L"Logoff", {}), NumeroFalha::ObjetoNaoDefinido,
                    "ZTAVOREQUIP < Geral.Logoff", DescricaoFalha(NumeroFalha::ObjetoNaoDefinido));
    VARIANT nulo{};
    V_VT(&nulo) = VT_NULL;
    IDispatch *nenhum = nullptr;
    ConfereEstradas(Geral->Logon(&nenhum, &nenhum, nulo),
                    Chama(*Geral.Ponteiro(), L"Logon", {Objeto(nullptr), Objeto(nullptr), Faz(VT_NULL)}),
                    NumeroFalha::NuloInvalido, "ZTAVOREQUIP < Geral.Logon", DescricaoFalha(NumeroFalha::NuloInvalido));
    VARIANT_BOOL tratado = VARIANT_TRUE;
    ConfereEstradas(Geral->ClickMenu(nulo, &tratado), Chama(*Geral.Ponteiro(), L"ClickMenu", {Faz(VT_NULL)}),
                    NumeroFalha::NuloInvalido, "ZTAVOREQUIP < Geral.ClickMenu",
                    DescricaoFalha(NumeroFalha::NuloInvalido));
    EXPECT_EQ(tratado, VARIANT_FALSE);
}

TEST_F(PublicosTeste, Faults_WithoutAPlaceForThem_AreStillCodes)
{
    DISPPARAMS nenhum{};
    const HRESULT codigo = Geral->Invoke(11, IID_NULL, 0, DISPATCH_METHOD, &nenhum, nullptr, nullptr, nullptr);
    EXPECT_EQ(codigo, static_cast<HRESULT>(0x800A005B));
}

TEST_F(PublicosTeste, Invoke_WithAReferenceToItselfOrToNothing_TellsWhichArgument)
{
    VARIANT circulo{};
    V_VT(&circulo) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&circulo) = &circulo;
    VARIANT nada{};
    V_VT(&nada) = VT_BYREF | VT_BSTR;
    for (const VARIANT &errado : {circulo, nada}) {
        const Resultado feito = Invoca(*Geral.Ponteiro(), 16, DISPATCH_METHOD, {errado}, {});
        EXPECT_EQ(feito.Codigo, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(feito.Errado, 0U);
    }
}

TEST_F(PublicosTeste, Table_WithNullPlaces_RefusesThem)
{
    VARIANT texto{};
    IDispatch *objeto = nullptr;
    const Com<_Especifica> especifica = Especifica();
    for (const HRESULT codigo :
         {Geral->get_MDB(nullptr), Geral->get_Depurar(nullptr), Geral->get_CEspecifica(nullptr),
          Geral->get_SistemaQMR(nullptr), Geral->ClickMenu(texto, nullptr), Geral->HabilitarItem(texto, nullptr),
          Geral->Parametros(nullptr, &objeto, &objeto, &objeto, &objeto, &objeto),
          Geral->Logon(&objeto, nullptr, texto), Geral->ObtemTransacao(nullptr, nullptr),
          especifica->Inicializa(nullptr), especifica->ClickMenu(nullptr, &objeto), especifica->Menu(nullptr),
          especifica->MenuAuxiliar(nullptr), especifica->CreateCVorEquip(nullptr),
          Pesquisa()->CarregaPesqEquip(nullptr, nullptr, nullptr, nullptr)}) {
        EXPECT_EQ(codigo, E_POINTER);
    }
}

TEST_F(PublicosTeste, ObtemTransacao_OnBothRoads_IsNothing)
{
    BSTR codigo = SysAllocString(L"ab-c");
    IDispatch *lida = Hospedeiro.MDB.Ponteiro();
    EXPECT_EQ(Geral->ObtemTransacao(codigo, &lida), S_OK);
    EXPECT_EQ(lida, nullptr);
    const Resultado feito = Chama(*Geral.Ponteiro(), L"ObtemTransacao", {Texto("ab-c")});
    EXPECT_EQ(feito.Codigo, S_OK);
    EXPECT_EQ(feito.Resposta.Tipo(), VT_DISPATCH);
    EXPECT_EQ(V_DISPATCH(&feito.Resposta.Bruta()), nullptr);
    Variante origem = Numero(5);
    EXPECT_EQ(Geral->ObtemTransacao3(codigo, &origem.Bruta()), S_OK);
    EXPECT_EQ(Geral->ObtemTransacao3(codigo, nullptr), S_OK);
    EXPECT_EQ(Chama(*Geral.Ponteiro(), L"ObtemTransacao3", {Texto("ab-c"), PorReferencia(origem)}).Codigo, S_OK);
    EXPECT_EQ(DeVariante<std::int32_t>(origem.Bruta()), 5);
    SysFreeString(codigo);
}

// --- the shell over automation

TEST_F(PublicosTeste, HabilitarItem_OfTheTools_AsksTheHostAndIgnoresWhatIsNoTool)
{
    ASSERT_EQ(Hospedeiro.Configura(*Geral.Ponteiro()), S_OK);
    ASSERT_EQ(Hospedeiro.Entra(*Geral.Ponteiro()), S_OK);
    Hospedeiro.Logado = true;
    const Tardio tardio(Geral.Como<IDispatch>());
    EXPECT_TRUE(tardio.Chama<bool>("HabilitarItem", "mnuModVOREquiptos"));
    EXPECT_EQ(Hospedeiro.Permissoes, std::vector<std::string>{"NAB/VOR-EQP-CS/"});
    EXPECT_FALSE(tardio.Chama<bool>("HabilitarItem", "outra"));
    const Resultado feito = Chama(*Geral.Ponteiro(), L"HabilitarItem", {Objeto(HospedeiroDeTeste::Coisa())});
    EXPECT_EQ(feito.Codigo, S_OK);
    EXPECT_EQ(V_BOOL(&feito.Resposta.Bruta()), VARIANT_FALSE);
}

TEST_F(PublicosTeste, RegistraAM_WithWhateverArgument_IgnoresErrors)
{
    for (const wchar_t *membro : {L"RegistraAM", L"DesregistraAM"}) {
        for (const std::vector<Variante> &argumentos : std::vector<std::vector<Variante>>{
                 {}, {Texto("APP")}, {ParaVariante(Ausente{})}, {Faz(VT_NULL)}, {ArranjoDe(VT_VARIANT, {})}}) {
            EXPECT_EQ(Chama(*Geral.Ponteiro(), membro, argumentos).Codigo, S_OK);
        }
    }
}

TEST_F(PublicosTeste, Modulo_OfTheComponent_TellsItsNameAndTitle)
{
    IDispatch *modulo = nullptr;
    ASSERT_EQ(Geral->get_Modulo(&modulo), S_OK);
    const Tardio tardio{Com<IDispatch>::Adota(modulo)};
    EXPECT_EQ(tardio.Chama<std::string>("EXEName"), "ZTAVOREQUIP");
    EXPECT_FALSE(tardio.Chama<std::string>("Title").empty());
    EXPECT_TRUE(tardio.Tem("FileDescription"));
}

TEST_F(PublicosTeste, Inicializa_WithOurOwnShell_TakesItAndRefusesAnother)
{
    const Com<_Especifica> especifica = Especifica();
    IDispatch *geral = Geral.Ponteiro();
    EXPECT_EQ(especifica->Inicializa(&geral), S_OK);
    IDispatch *alheio = Hospedeiro.MDB.Ponteiro();
    ConfereEstradas(especifica->Inicializa(&alheio),
                    Chama(*especifica.Ponteiro(), L"Inicializa", {Objeto(Hospedeiro.MDB)}),
                    NumeroFalha::TipoIncompativel, "ZTAVOREQUIP", DescricaoFalha(NumeroFalha::TipoIncompativel));
}

// --- identity

TEST_F(PublicosTeste, CEspecifica_AskedTwice_IsTheSameObject)
{
    Com<_Especifica> nenhuma;
    EXPECT_EQ(Geral->get_CEspecifica(nenhuma.Recebe()), S_OK);
    EXPECT_FALSE(nenhuma); // before Parametros
    const Com<_Especifica> uma = Especifica();
    Com<_Especifica> outra;
    EXPECT_EQ(Geral->get_CEspecifica(outra.Recebe()), S_OK);
    EXPECT_EQ(uma.Ponteiro(), outra.Ponteiro());
    const Resultado tardia = Chama(*Geral.Ponteiro(), L"CEspecifica", {});
    EXPECT_EQ(Com<IDispatch>(V_DISPATCH(&tardia.Resposta.Bruta())).Como<IUnknown>().Ponteiro(),
              uma.Como<IUnknown>().Ponteiro());
    Com<_CVorEquip> consulta;
    Com<_CVorEquip> segunda;
    EXPECT_EQ(uma->CreateCVorEquip(consulta.Recebe()), S_OK);
    EXPECT_EQ(uma->CreateCVorEquip(segunda.Recebe()), S_OK);
    EXPECT_NE(consulta.Ponteiro(), segunda.Ponteiro());
}

TEST_F(PublicosTeste, Objects_OfTheFourClasses_TellTheirClassAndThatTheyExplainFaults)
{
    struct Caso {
        Com<IUnknown> Objeto;
        CLSID Classe;
        IID Face;
        std::string Nome;
    };
    for (const Caso &caso :
         {Caso{Geral.Como<IUnknown>(), __uuidof(::Geral), __uuidof(_Geral), "Geral"},
          Caso{Especifica().Como<IUnknown>(), __uuidof(::Especifica), __uuidof(_Especifica), "Especifica"},
          Caso{Consulta().Como<IUnknown>(), __uuidof(CVorEquip), __uuidof(_CVorEquip), "CVorEquip"},
          Caso{Pesquisa().Como<IUnknown>(), __uuidof(CVORPesqEquip), __uuidof(_CVORPesqEquip), "CVORPesqEquip"}}) {
        Com<ITypeInfo> classe;
        ASSERT_EQ(caso.Objeto.Como<IProvideClassInfo>()->GetClassInfo(classe.Recebe()), S_OK);
        TYPEATTR *atributos = nullptr;
        ASSERT_EQ(classe->GetTypeAttr(&atributos), S_OK);
        EXPECT_EQ(atributos->typekind, TKIND_COCLASS);
        EXPECT_TRUE(atributos->guid == caso.Classe);
        classe->ReleaseTypeAttr(atributos);
        const Com<ISupportErrorInfo> explica = caso.Objeto.Como<ISupportErrorInfo>();
        EXPECT_EQ(explica->InterfaceSupportsErrorInfo(caso.Face), S_OK);
        EXPECT_EQ(explica->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
        EXPECT_EQ(explica.Como<IUnknown>().Ponteiro(), caso.Objeto.Ponteiro());
        EXPECT_EQ(explica.Como<IDispatch>().Como<IUnknown>().Ponteiro(), caso.Objeto.Ponteiro());
        EXPECT_FALSE(caso.Objeto.Como<IPersist>());
        EXPECT_EQ(ClasseDe(caso.Objeto.Como<IDispatch>()), caso.Nome);
    }
}

TEST_F(PublicosTeste, Call_WhenTheClientLetsGoMeanwhile_EndsInOrder)
{
    ASSERT_EQ(Hospedeiro.Configura(*Geral.Ponteiro()), S_OK);
    ASSERT_EQ(Hospedeiro.Entra(*Geral.Ponteiro()), S_OK);
    Hospedeiro.AoPerguntarLogado = [&] { Geral = nullptr; };
    Variante texto = Texto("mnuModVOREquiptos");
    VARIANT_BOOL resultado = VARIANT_TRUE;
    EXPECT_EQ(Geral->HabilitarItem(texto.Bruta(), &resultado), S_OK);
    EXPECT_EQ(resultado, VARIANT_FALSE);
    EXPECT_FALSE(Geral);
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

} // namespace
} // namespace nativo
