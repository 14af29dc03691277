#include "host/EquiptoED.h"
#include "host/ListaEquiptoED.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Registros.h"
#include "windows/automation/Tardio.h"
#include "windows/automation/Texto16.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

// An object of the scripted foreign world, whose members take and give one of everything.
class Exemplo : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Exemplo"; }

    std::string Texto() const { return m_Texto; }
    void DefineTexto(const std::string &valor) { m_Texto = valor; }
    std::int32_t Soma(std::int32_t a, std::int32_t b) { return a + b; }
    void Troca(std::int32_t &numero, std::string &texto, bool &sim)
    {
        numero *= 2;
        texto += "!";
        sim = !sim;
        if (numero > 1000) {
            throw Falha(numero, "Exemplo.Troca", "Grande demais");
        }
    }
    Ref<Objeto> Eco(const Ref<Objeto> &objeto) { return objeto; }
    void Poe(Ref<Objeto> &variavel) { variavel = m_Outro; }
    void Enche(std::vector<Ref<Objeto>> &itens) { itens = {m_Outro, nullptr}; }
    void Apaga() { m_Outro = nullptr; }
    void EncheBytes(Bytes &bytes) { bytes.push_back(7); }

    bool Sim = false;
    double Numero = 0;
    Data Quando;
    Ref<Objeto> m_Outro;

  private:
    std::string m_Texto;
};

class ExemploRemoto : public Remoto<Exemplo> {
  public:
    using Remoto::Remoto;
};

class Automacao : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        OfereceMembros<Exemplo>([](Membros<Exemplo> &m) {
            m.Propriedade("Texto", &Exemplo::Texto, &Exemplo::DefineTexto);
            m.Padrao("Texto");
            m.Metodo("Soma", &Exemplo::Soma, {"a", "b"});
            m.Metodo("Troca", &Exemplo::Troca);
            m.Metodo("Eco", &Exemplo::Eco, {"objeto"});
            m.Metodo("Poe", &Exemplo::Poe);
            m.Metodo("Enche", &Exemplo::Enche);
            m.Metodo("Apaga", &Exemplo::Apaga);
            m.Metodo("EncheBytes", &Exemplo::EncheBytes);
            m.Campo("Sim", &Exemplo::Sim);
            m.Campo("Numero", &Exemplo::Numero);
            m.Campo("Quando", &Exemplo::Quando);
            m.Campo("Outro", &Exemplo::m_Outro);
            m.Metodo("Talvez", 1, {"Um", "Dois"}, [](Exemplo &, Chamada &chamada) {
                chamada.Responde(chamada.Le<std::string>(0) + "|" +
                                 chamada.Le<std::optional<std::string>>(1).value_or("nada"));
            });
            m.Outros([](Exemplo &exemplo, const std::string &nome) {
                return nome == "cboTipo" ? Eu<Objeto>(exemplo) : Ref<Objeto>();
            });
        });
        RegistraRemoto<Exemplo, ExemploRemoto>();
    }

    Ref<Exemplo> exemplo = Novo<Exemplo>();
    Com<IDispatch> objeto = Embrulha(exemplo, Lado::Hospedeiro);
    Tardio tardio{objeto};
};

Falha FalhaEm(const std::function<void()> &acao)
{
    try {
        acao();
    } catch (const Falha &falha) {
        return falha;
    }
    return Falha(0, "", "no fault");
}

Variante Inteiro64(std::int64_t numero)
{
    Variante variante;
    V_VT(&variante.Bruta()) = VT_I8;
    V_I8(&variante.Bruta()) = numero;
    return variante;
}

TEST(Texto16, OfEveryByteSequence_ComesBackAsItWas)
{
    for (const std::string &texto :
         {std::string("Aferição nº 12 – São João"), std::string("\xF0\x9F\x9A\xA6 semáforo"), std::string("a\0b", 3),
          std::string("\xC3"), std::string("\xFF\xFE"), std::string("\xED\xA0\x80"), std::string("\xED\xA0\x80\x80"),
          std::string("\xED\xA0\x80\xED\xB0\x80"), std::string("\xED\xB2\x80"), std::string("\xC0\xAF"),
          std::string("\xF4\x90\x80\x80")}) {
        EXPECT_EQ(ParaUtf8(ParaUtf16(texto)), texto);
    }
    for (std::uint32_t par = 0; par < 0x10000; ++par) {
        const std::string texto{static_cast<char>(par >> 8), static_cast<char>(par & 0xFF)};
        ASSERT_EQ(ParaUtf8(ParaUtf16(texto)), texto) << par;
    }
}

TEST(Texto16, OfUtf16_KeepsEveryUnitButThoseThatStandForBytes)
{
    EXPECT_EQ(ParaUtf16("ção"), L"\u00E7\u00E3o");
    EXPECT_EQ(ParaUtf16("\xF0\x9F\x9A\xA6"),
              std::wstring({static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDEA6)}));
    for (const std::uint32_t unidade : {0xD800U, 0xDBFFU, 0xDC00U, 0xDC7FU, 0xDD00U, 0xDFFFU}) {
        const std::wstring solta{L'a', static_cast<wchar_t>(unidade), L'b'};
        EXPECT_EQ(ParaUtf16(ParaUtf8(solta)), solta);
    }
}

TEST(Falhas, NumeroDe_OfTheCodeOfANumber_IsThatNumber)
{
    for (const std::int32_t numero : {1, 5, 13, 51, 91, 429, 438, 457, 1033, 3021, 3265, 65535, -1, -2147221504,
                                      static_cast<std::int32_t>(0x80004005)}) {
        EXPECT_EQ(NumeroDe(HResultDe(numero)), numero);
        EXPECT_TRUE(FAILED(HResultDe(numero))) << numero;
    }
    EXPECT_EQ(HResultDe(-1), static_cast<HRESULT>(-1));
    EXPECT_EQ(HResultDe(1033), static_cast<HRESULT>(0x800A0409));
    EXPECT_EQ(NumeroDe(HResultDe(0)), 51);
    EXPECT_EQ(NumeroDe(HResultDe(65536)), 51);
}

TEST(Falhas, NumeroDe_OfThePlatformsCodes_IsWhatItsLanguagesShow)
{
    EXPECT_EQ(NumeroDe(DISP_E_UNKNOWNNAME), 438);
    EXPECT_EQ(NumeroDe(DISP_E_MEMBERNOTFOUND), 438);
    EXPECT_EQ(NumeroDe(REGDB_E_CLASSNOTREG), 429);
    EXPECT_EQ(NumeroDe(DISP_E_TYPEMISMATCH), 13);
    EXPECT_EQ(NumeroDe(DISP_E_OVERFLOW), 6);
    EXPECT_EQ(NumeroDe(DISP_E_BADPARAMCOUNT), 450);
    EXPECT_EQ(NumeroDe(E_OUTOFMEMORY), 7);
    EXPECT_EQ(NumeroDe(E_FAIL), static_cast<std::int32_t>(E_FAIL));
}

TEST(Valores, DeVariante_OfPlainValues_ConvertsAsThePlatformDoes)
{
    EXPECT_EQ(DeVariante<std::int16_t>(ParaVariante(true).Bruta()), -1);
    EXPECT_EQ(V_BOOL(&ParaVariante(true).Bruta()), VARIANT_TRUE);
    EXPECT_EQ(DeVariante<std::int32_t>(ParaVariante(std::string("1.234")).Bruta()), 1234);
    EXPECT_EQ(DeVariante<std::string>(ParaVariante(1.5).Bruta()), "1,5");
    EXPECT_EQ(DeVariante<Data>(ParaVariante(std::string("03/04/2026")).Bruta()), DataDe(3, 4, 2026));
    EXPECT_EQ(V_VT(&ParaVariante(DataDe(3, 4, 2026)).Bruta()), VT_DATE);
    EXPECT_EQ(V_VT(&ParaVariante(std::int16_t{4}).Bruta()), VT_I2);
    EXPECT_EQ(V_VT(&ParaVariante(std::uint8_t{4}).Bruta()), VT_UI1);
    EXPECT_EQ(DeVariante<std::uint8_t>(ParaVariante(true).Bruta()), 255);
    EXPECT_EQ(DeVariante<std::int32_t>(Inteiro64(7).Bruta()), 7);
    EXPECT_EQ(FalhaEm([] { DeVariante<std::int16_t>(ParaVariante(std::int32_t{40000}).Bruta()); }).Numero, 6);
    EXPECT_EQ(FalhaEm([] { DeVariante<std::int32_t>(Inteiro64(std::int64_t{1} << 40).Bruta()); }).Numero, 6);
    EXPECT_EQ(FalhaEm([] { DeVariante<std::int32_t>(ParaVariante(std::string("x")).Bruta()); }).Numero, 13);
    EXPECT_EQ(FalhaEm([] { DeVariante<std::string>(FazVariante(Valor::Nulo{}).Bruta()); }).Numero, 94);
    EXPECT_EQ(FalhaEm([] { DeVariante<Ref<Objeto>>(ParaVariante(1.0).Bruta()); }).Numero, 424);
    EXPECT_TRUE(DeVariante<Ref<Objeto>>(FazVariante(Valor::Nulo{}).Bruta()).Nada());
    EXPECT_EQ(DeVariante<std::optional<std::int32_t>>(ParaVariante(Ausente{}).Bruta()), std::nullopt);
}

TEST(Valores, DeVariante_OfArrays_TakesEachElement)
{
    const Bytes octetos{0, 255, 13};
    EXPECT_EQ(DeVariante<Bytes>(ParaVariante(octetos).Bruta()), octetos);
    EXPECT_EQ(DeVariante<Bytes>(ParaVariante(Bytes()).Bruta()), Bytes());
    const std::vector<std::string> textos{"á", "", "b"};
    EXPECT_EQ(DeVariante<std::vector<std::string>>(ParaVariante(textos).Bruta()), textos);
    EXPECT_EQ(FalhaEm([] { DeVariante<Bytes>(ParaVariante(std::string("x")).Bruta()); }).Numero, 13);
}

TEST_F(Automacao, Chama_OfMembers_GoesByNameWhateverTheCase)
{
    tardio.Escreve("TEXTO", std::string("Aferição"));
    EXPECT_EQ(exemplo->Texto(), "Aferição");
    EXPECT_EQ(tardio.Chama<std::string>("texto"), "Aferição");
    EXPECT_EQ(tardio.Chama<std::int32_t>("Soma", 2, std::string("40")), 42);
    EXPECT_EQ(DeVariante<std::string>(tardio.Padrao().Bruta()), "Aferição");
    tardio.Escreve("Sim", true);
    EXPECT_TRUE(exemplo->Sim);
    tardio.Escreve("Quando", DataDe(1, 2, 2026));
    EXPECT_EQ(tardio.Chama<Data>("Quando"), DataDe(1, 2, 2026));
    EXPECT_EQ(tardio.Chama<std::string>("Talvez", "a"), "a|nada");
    EXPECT_EQ(tardio.Chama<std::string>("Talvez", "a", Ausente{}), "a|nada");
    EXPECT_EQ(tardio.Chama<std::string>("Talvez", "a", "b"), "a|b");
}

TEST_F(Automacao, Chama_WithReferences_WritesThemBackEvenWhenItFails)
{
    std::int32_t numero = 4;
    std::string texto = "a";
    bool sim = true;
    tardio.Chama("Troca", PorRef(numero), PorRef(texto), PorRef(sim));
    EXPECT_EQ(numero, 8);
    EXPECT_EQ(texto, "a!");
    EXPECT_FALSE(sim);
    numero = 600;
    const Falha falha = FalhaEm([&] { tardio.Chama("Troca", PorRef(numero), PorRef(texto), PorRef(sim)); });
    EXPECT_EQ(falha.Numero, 1200);
    EXPECT_EQ(falha.Fonte, "Exemplo.Troca");
    EXPECT_EQ(falha.Descricao, "Grande demais");
    EXPECT_EQ(numero, 1200);
    EXPECT_EQ(texto, "a!!");
}

TEST_F(Automacao, Chama_WithGeneralValuesByReference_WritesThemBack)
{
    Valor numero = std::int32_t{4};
    std::string texto;
    bool sim = false;
    tardio.Chama("Troca", PorRef(numero), PorRef(texto), PorRef(sim));
    EXPECT_EQ(numero, Valor(std::int32_t{8}));
}

TEST_F(Automacao, Chama_OfAnObjectOrAnArrayByReference_GetsWhatWasPutThere)
{
    exemplo->m_Outro = Novo<Exemplo>();
    Ref<Exemplo> variavel;
    tardio.Chama("Poe", PorRef(variavel));
    ASSERT_FALSE(variavel.Nada());
    EXPECT_EQ(Oferece(variavel), Embrulha(exemplo->m_Outro, Lado::Hospedeiro));
    std::vector<Ref<Objeto>> itens(1);
    tardio.Chama("Enche", PorRef(itens));
    ASSERT_EQ(itens.size(), 2U);
    EXPECT_FALSE(itens[0].Nada());
    EXPECT_TRUE(itens[1].Nada());
    Bytes octetos{1};
    tardio.Chama("EncheBytes", PorRef(octetos));
    EXPECT_EQ(octetos, (Bytes{1, 7}));
}

TEST_F(Automacao, Chama_OfWhatTheObjectHasNot_IsThePlatformsFault)
{
    EXPECT_EQ(FalhaEm([&] { tardio.Chama("NaoHa"); }).Numero, 438);
    EXPECT_EQ(FalhaEm([&] { tardio.Chama<std::int32_t>("Soma", 1); }).Numero, 450);
    EXPECT_EQ(FalhaEm([&] { tardio.Chama<std::int32_t>("Soma", 1, 2, 3); }).Numero, 450);
    EXPECT_EQ(FalhaEm([&] { tardio.Chama<std::int32_t>("Soma", 1, "x"); }).Numero, 13);
    EXPECT_EQ(FalhaEm([&] { tardio.Chama<std::int32_t>("Soma", 1, 1e300); }).Numero, 6);
    EXPECT_EQ(FalhaEm([&] { tardio.Chama<std::int32_t>("Soma", Ausente{}, 1); }).Numero, 449);
    EXPECT_EQ(FalhaEm([&] { tardio.Escreve("Soma", 1); }).Numero, 438);
}

TEST_F(Automacao, Invoke_WithAWrongArgument_TellsItsIndex)
{
    std::wstring nome = L"Soma";
    LPOLESTR ponteiro = nome.data();
    DISPID numero = 0;
    ASSERT_EQ(objeto->GetIDsOfNames(IID_NULL, &ponteiro, 1, 0, &numero), S_OK);
    Variante certo = ParaVariante(std::int32_t{1});
    Variante errado = ParaVariante(std::string("x"));
    for (const UINT qual : {0U, 1U}) {
        VARIANT argumentos[2] = {certo.Bruta(), certo.Bruta()};
        argumentos[qual] = errado.Bruta();
        DISPPARAMS parametros{argumentos, nullptr, 2, 0};
        UINT indice = 99;
        EXPECT_EQ(objeto->Invoke(numero, IID_NULL, 0, DISPATCH_METHOD, &parametros, nullptr, nullptr, &indice),
                  DISP_E_TYPEMISMATCH);
        EXPECT_EQ(indice, qual);
    }
}

TEST_F(Automacao, Invoke_WithNamedArguments_PutsThemInTheirPlaces)
{
    std::wstring nomes[] = {L"soma", L"B", L"A"};
    LPOLESTR ponteiros[] = {nomes[0].data(), nomes[1].data(), nomes[2].data()};
    DISPID numeros[3] = {};
    ASSERT_EQ(objeto->GetIDsOfNames(IID_NULL, ponteiros, 3, 0, numeros), S_OK);
    VARIANT argumentos[2] = {ParaVariante(std::int32_t{40}).Bruta(), ParaVariante(std::int32_t{2}).Bruta()};
    DISPPARAMS parametros{argumentos, numeros + 1, 2, 2};
    Variante resposta;
    EXPECT_EQ(
        objeto->Invoke(numeros[0], IID_NULL, 0, DISPATCH_METHOD, &parametros, &resposta.Bruta(), nullptr, nullptr),
        S_OK);
    EXPECT_EQ(DeVariante<std::int32_t>(resposta.Bruta()), 42);
}

TEST_F(Automacao, Invoke_WithAWrongNamedArgument_TellsItsIndexInTheCallersArray)
{
    std::wstring nomes[] = {L"soma", L"b", L"a"};
    LPOLESTR ponteiros[] = {nomes[0].data(), nomes[1].data(), nomes[2].data()};
    DISPID numeros[3] = {};
    ASSERT_EQ(objeto->GetIDsOfNames(IID_NULL, ponteiros, 3, 0, numeros), S_OK);
    Variante errado = ParaVariante(std::string("x"));
    VARIANT argumentos[2] = {ParaVariante(std::int32_t{40}).Bruta(), errado.Bruta()};
    DISPPARAMS parametros{argumentos, numeros + 1, 2, 2};
    UINT indice = 99;
    EXPECT_EQ(objeto->Invoke(numeros[0], IID_NULL, 0, DISPATCH_METHOD, &parametros, nullptr, nullptr, &indice),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(indice, 1U);
}

TEST_F(Automacao, GetIDsOfNames_WithOneUnknownName_FailsAsAWhole)
{
    std::wstring nomes[] = {L"Soma", L"c"};
    LPOLESTR ponteiros[] = {nomes[0].data(), nomes[1].data()};
    DISPID numeros[2] = {5, 5};
    EXPECT_EQ(objeto->GetIDsOfNames(IID_NULL, ponteiros, 2, 0, numeros), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(numeros[0], DISPID_UNKNOWN);
    EXPECT_EQ(numeros[1], DISPID_UNKNOWN);
}

TEST_F(Automacao, Objects_KeepTheirIdentity)
{
    // One of the host's side stays foreign, and the same object is the same reference.
    const Ref<Exemplo> remoto = RemotoDe<Exemplo>(objeto);
    EXPECT_EQ(RemotoDe<Exemplo>(objeto), remoto);
    EXPECT_EQ(DeVariante<Ref<Exemplo>>(ParaVariante(remoto).Bruta()), remoto);
    EXPECT_EQ(Oferece(remoto), objeto);
    EXPECT_EQ(remoto->NomeTipo(), "Exemplo");
    // One of the component's is known again.
    const Ref<Exemplo> nosso = Novo<Exemplo>();
    EXPECT_EQ(DeVariante<Ref<Exemplo>>(ParaVariante(nosso).Bruta()), nosso);
    EXPECT_EQ(tardio.Chama<Ref<Objeto>>("Eco", nosso), nosso);
    EXPECT_EQ(tardio.Chama<Ref<Objeto>>("Eco", Ref<Objeto>()), nullptr);
    EXPECT_EQ(tardio.Chama<Ref<Exemplo>>("cboTipo"), remoto);
}

TEST_F(Automacao, Objects_ThatAreLetGo_Leave)
{
    const long antes = Vivo::Quantos();
    {
        const Ref<Exemplo> nosso = Novo<Exemplo>();
        const Com<IDispatch> fora = Embrulha(nosso);
        EXPECT_EQ(Vivo::Quantos(), antes + 1);
        EXPECT_EQ(Embrulha(nosso), fora);
    }
    EXPECT_EQ(Vivo::Quantos(), antes);
}

// A foreign object that does what it likes.
class Hostil : public IDispatch {
  public:
    std::function<HRESULT(DISPID, DISPPARAMS &, VARIANT *)> AoInvocar = [](DISPID, DISPPARAMS &, VARIANT *) {
        return S_OK;
    };
    std::function<HRESULT(const std::wstring &, DISPID &)> AoProcurar = [](const std::wstring &, DISPID &numero) {
        numero = 1;
        return S_OK;
    };
    bool ETudo = false;

    virtual ~Hostil() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        *saida = ETudo || iid == IID_IUnknown || iid == IID_IDispatch ? static_cast<IDispatch *>(this) : nullptr;
        return *saida != nullptr ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR *nomes, UINT, LCID, DISPID *numeros) override
    {
        return AoProcurar(nomes[0], *numeros);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID, LCID, WORD, DISPPARAMS *parametros, VARIANT *resposta,
                                     EXCEPINFO *, UINT *) override
    {
        return AoInvocar(numero, *parametros, resposta);
    }
};

TEST_F(Automacao, HostileObject_ThatFindsNoNumber_HasNoMember)
{
    Hostil hostil;
    hostil.AoProcurar = [](const std::wstring &, DISPID &numero) {
        numero = DISPID_UNKNOWN;
        return S_OK;
    };
    const Tardio dele{Com<IDispatch>(&hostil)};
    EXPECT_FALSE(dele.Tem("Nome"));
    EXPECT_EQ(FalhaEm([&] { dele.Chama("Nome"); }).Numero, 438);
}

TEST_F(Automacao, HostileObject_ThatIsWhateverItIsAskedFor_IsNotOurs)
{
    Hostil hostil;
    hostil.ETudo = true;
    EXPECT_TRUE(Interno(Com<IDispatch>(&hostil), Lado::Hospedeiro).Nada());
}

TEST_F(Automacao, HostileObject_ThatHoldsItselfAsARecord_IsRefused)
{
    Hostil hostil;
    hostil.AoInvocar = [&](DISPID, DISPPARAMS &, VARIANT *resposta) {
        if (resposta != nullptr) {
            V_VT(resposta) = VT_DISPATCH;
            V_DISPATCH(resposta) = &hostil;
        }
        return S_OK;
    };
    EXPECT_EQ(FalhaEm([&] { LeRegistro(Com<IDispatch>(&hostil), "EquiptoED"); }).Numero, 13);
}

TEST_F(Automacao, HostileObject_ThatLeavesNonsenseInAVariable_KeepsTheOthers)
{
    Hostil hostil;
    hostil.AoInvocar = [](DISPID, DISPPARAMS &parametros, VARIANT *) {
        SysReAllocString(V_BSTRREF(&parametros.rgvarg[1]), L"x");
        *V_BOOLREF(&parametros.rgvarg[0]) = VARIANT_TRUE;
        V_VT(V_VARIANTREF(&parametros.rgvarg[2])) = VT_RECORD;
        return S_OK;
    };
    const Tardio dele{Com<IDispatch>(&hostil)};
    Valor valor;
    std::string texto;
    bool sim = false;
    EXPECT_EQ(FalhaEm([&] { dele.Chama("Troca", PorRef(valor), PorRef(texto), PorRef(sim)); }).Numero, 13);
    EXPECT_EQ(texto, "x");
    EXPECT_TRUE(sim);
}

TEST_F(Automacao, HostileValue_ThatRefersToItselfOrToNothing_IsRefused)
{
    VARIANT circulo{};
    V_VT(&circulo) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&circulo) = &circulo;
    EXPECT_EQ(FalhaEm([&] { LeValor(circulo); }).Numero, 13);
    VARIANT nada{};
    V_VT(&nada) = VT_BYREF | VT_I4;
    EXPECT_EQ(FalhaEm([&] { LeValor(nada); }).Numero, 13);
}

TEST_F(Automacao, HostileArray_OfOtherElementsThanItSays_IsRefused)
{
    Variante variante;
    V_VT(&variante.Bruta()) = VT_ARRAY | VT_DISPATCH;
    V_ARRAY(&variante.Bruta()) = SafeArrayCreateVector(VT_VARIANT, 0, 3);
    EXPECT_EQ(FalhaEm([&] { DeVariante<std::vector<Ref<Objeto>>>(variante.Bruta()); }).Numero, 13);
    V_VT(&variante.Bruta()) = VT_ARRAY | VT_VARIANT;
    Variante decimais;
    V_VT(&decimais.Bruta()) = VT_ARRAY | VT_DECIMAL;
    V_ARRAY(&decimais.Bruta()) = SafeArrayCreateVector(VT_DECIMAL, 0, 3);
    EXPECT_EQ(FalhaEm([&] { DeVariante<std::vector<std::string>>(decimais.Bruta()); }).Numero, 13);
}

TEST_F(Automacao, Invoke_WithArraysThatAreNotThere_IsRefused)
{
    DISPPARAMS semArgumentos{nullptr, nullptr, 2, 0};
    EXPECT_EQ(objeto->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &semArgumentos, nullptr, nullptr, nullptr), E_INVALIDARG);
    VARIANT um{};
    DISPID nomes[2] = {0, 1};
    DISPPARAMS maisNomes{&um, nomes, 1, 2};
    EXPECT_EQ(objeto->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &maisNomes, nullptr, nullptr, nullptr), E_INVALIDARG);
    LPOLESTR semNome = nullptr;
    DISPID numero = 0;
    EXPECT_EQ(objeto->GetIDsOfNames(IID_NULL, &semNome, 1, 0, &numero), E_INVALIDARG);
}

TEST_F(Automacao, Invoke_OfAMethodWithAnArgumentTooMany_DoesNotRunIt)
{
    exemplo->m_Outro = Novo<Exemplo>();
    EXPECT_EQ(FalhaEm([&] { tardio.Chama("Apaga", 1); }).Numero, 450);
    EXPECT_FALSE(exemplo->m_Outro.Nada());
    tardio.Chama("Apaga");
    EXPECT_TRUE(exemplo->m_Outro.Nada());
}

TEST_F(Automacao, Devolve_IntoEveryTypeThatIsRead_Arrives)
{
    const auto troca = [&](VARTYPE tipo, VARIANT &lugar) {
        VARIANT argumentos[3]{};
        VARIANT_BOOL sim = VARIANT_FALSE;
        BSTR texto = nullptr;
        V_VT(&argumentos[0]) = VT_BYREF | VT_BOOL;
        V_BOOLREF(&argumentos[0]) = &sim;
        V_VT(&argumentos[1]) = VT_BYREF | VT_BSTR;
        V_BSTRREF(&argumentos[1]) = &texto;
        V_VT(&argumentos[2]) = static_cast<VARTYPE>(VT_BYREF | tipo);
        V_BYREF(&argumentos[2]) = tipo == VT_DECIMAL ? static_cast<void *>(&lugar) : &V_R8(&lugar);
        DISPPARAMS parametros{argumentos, nullptr, 3, 0};
        std::wstring nome = L"Troca";
        LPOLESTR ponteiro = nome.data();
        DISPID numero = 0;
        EXPECT_EQ(objeto->GetIDsOfNames(IID_NULL, &ponteiro, 1, 0, &numero), S_OK);
        EXPECT_EQ(objeto->Invoke(numero, IID_NULL, 0, DISPATCH_METHOD, &parametros, nullptr, nullptr, nullptr), S_OK)
            << tipo;
        SysFreeString(texto);
        V_VT(&lugar) = tipo;
        return DeVariante<std::int32_t>(lugar);
    };
    for (const VARTYPE tipo : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I8, VT_UI8}) {
        VARIANT lugar{};
        V_I8(&lugar) = 21;
        EXPECT_EQ(troca(tipo, lugar), 42) << tipo;
    }
    VARIANT real{};
    V_R4(&real) = 21;
    EXPECT_EQ(troca(VT_R4, real), 42);
    V_R8(&real) = 21;
    EXPECT_EQ(troca(VT_R8, real), 42);
    V_CY(&real).int64 = 210000;
    EXPECT_EQ(troca(VT_CY, real), 42);
    VARIANT decimal{};
    V_DECIMAL(&decimal).Lo64 = 21;
    EXPECT_EQ(troca(VT_DECIMAL, decimal), 42);
}

TEST_F(Automacao, Devolve_IntoALockedArray_IsFault10)
{
    SAFEARRAY *arranjo = SafeArrayCreateVector(VT_DISPATCH, 0, 1);
    ASSERT_EQ(SafeArrayLock(arranjo), S_OK);
    VARIANT argumento{};
    V_VT(&argumento) = VT_BYREF | VT_ARRAY | VT_DISPATCH;
    V_ARRAYREF(&argumento) = &arranjo;
    DISPPARAMS parametros{&argumento, nullptr, 1, 0};
    std::wstring nome = L"Enche";
    LPOLESTR ponteiro = nome.data();
    DISPID numero = 0;
    ASSERT_EQ(objeto->GetIDsOfNames(IID_NULL, &ponteiro, 1, 0, &numero), S_OK);
    EXCEPINFO informacao{};
    const HRESULT codigo =
        objeto->Invoke(numero, IID_NULL, 0, DISPATCH_METHOD, &parametros, nullptr, &informacao, nullptr);
    EXPECT_EQ(FalhaDe(codigo, informacao).Numero, 10);
    SafeArrayUnlock(arranjo);
    SafeArrayDestroy(arranjo);
}

TEST_F(Automacao, OurRecord_IsItselfOnTheWayBackAndACopyOnTheOtherSide)
{
    auto registro = Novo<EquiptoED>();
    registro->Codigo = std::string("RAD-01");
    registro->Ativo = std::uint8_t{2};
    registro->VersaoLida = 7;
    auto sensor = Novo<SensorED>();
    sensor->NroSensor = std::int16_t{3};
    auto sensores = Novo<Colecao<Ref<SensorED>>>();
    sensores->Add(sensor);
    registro->Sensores = sensores;
    const Com<IDispatch> fora = Oferece(registro);
    EXPECT_EQ(DeVariante<Ref<EquiptoED>>(ParaVariante(registro).Bruta()), registro);
    const Ref<Registro> copia = LeRegistro(fora, "EquiptoED", Lado::Hospedeiro);
    EXPECT_NE(copia.Ponteiro(), static_cast<const Registro *>(registro.Ponteiro()));
    EXPECT_EQ(copia->Texto(), registro->Texto());
    EXPECT_EQ(copia->VersaoLida, 7);
    // What another language reads and writes.
    const Tardio alheio(fora);
    EXPECT_EQ(alheio.Chama<Variante>("VelocPermitida").Tipo(), VT_EMPTY);
    EXPECT_TRUE(alheio.Chama<Ref<Objeto>>("ListaLimiteDif").Nada());
    alheio.Escreve("VelocPermitida", std::int32_t{60});
    EXPECT_EQ(registro->VelocPermitida.Valor(), 60);
    EXPECT_TRUE(registro->VelocPermitida.Escrito());
    EXPECT_EQ(FalhaEm([&] { alheio.Escreve("VelocPermitida", std::int32_t{60000}); }).Numero, 6);
    const Tardio lista(LeObjeto(alheio.Chama<Variante>("Sensores").Bruta()));
    EXPECT_EQ(lista.Chama<std::int32_t>("Count"), 1);
    EXPECT_EQ(Tardio(LeObjeto(lista.Padrao(std::int32_t{1}).Bruta())).Chama<std::int16_t>("NroSensor"), 3);
    EXPECT_EQ(FalhaEm([&] { lista.Chama<Ref<Objeto>>("Item", std::int32_t{2}); }).Numero, 9);
    lista.Chama("Add", Novo<SensorED>());
    EXPECT_EQ(sensores->Count(), 2);
}

TEST_F(Automacao, RemoteParameters_MayGetAnotherObject)
{
    auto registro = Novo<EquiptoED>();
    registro->NroIntEquip = 5;
    Ref<Objeto> oED = registro;
    std::vector<Valor> aParam{Valor::PorReferencia(oED)};
    ParametrosRemotos parametros(aParam);
    VARIANT arranjo = parametros.Arranjo();
    ASSERT_EQ(V_VT(&arranjo), VT_BYREF | VT_ARRAY | VT_VARIANT);
    LONG indice = 0;
    Variante elemento;
    ASSERT_EQ(SafeArrayGetElement(*V_ARRAYREF(&arranjo), &indice, &elemento.Bruta()), S_OK);
    ASSERT_EQ(elemento.Tipo(), VT_BYREF | VT_DISPATCH);
    auto outro = Novo<EquiptoED>();
    outro->NroIntEquip = 9;
    IDispatch *antigo = std::exchange(*V_DISPATCHREF(&elemento.Bruta()), Embrulha(outro, Lado::Hospedeiro).Solta());
    antigo->Release();
    parametros.Devolve();
    EXPECT_EQ(ComoTipo<EquiptoED>(oED)->NroIntEquip.Valor(), 9);
    EXPECT_NE(oED, outro);
}

TEST_F(Automacao, RemoteParameters_ThatWereLeftAlone_AreTheSameObject)
{
    auto registro = Novo<EquiptoED>();
    Ref<Objeto> oED = registro;
    std::vector<Valor> aParam{Valor::PorReferencia(oED), Valor(std::string("x"))};
    ParametrosRemotos parametros(aParam);
    parametros.Devolve();
    EXPECT_EQ(oED, registro);
}

} // namespace
} // namespace nativo
