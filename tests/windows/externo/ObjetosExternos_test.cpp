#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/PessoaExterna.h"

namespace nativo {
namespace {

// The host is looked at by itself, so that what it tells about the component can be believed.

TEST_F(CasoExterno, Object_AnswersByName_WhateverTheCase)
{
    Diario livro;
    auto objeto = ObjetoExterno::Novo("COlá", livro);
    objeto->Tem("Titulo", "Ação").Guarda("Valor", std::int32_t{3}).Padrao();
    const ObjetoTardio tardio{Contado<IDispatch>(objeto.Ponteiro())};
    EXPECT_EQ(tardio.Chama("titulo").Texto(), "Ação");
    tardio.Escreve("VALOR", std::int32_t{9});
    EXPECT_EQ(tardio.Chama("Valor").Inteiro(), 9);
    EXPECT_EQ(tardio.PedeNumero(DISPID_VALUE, DISPATCH_PROPERTYGET, {}).Inteiro(), 9);
    EXPECT_EQ(livro.Tudo(), "COlá.Titulo()\nCOlá.Valor = 9\nCOlá.Valor()\nCOlá.Valor()\n");
}

TEST_F(CasoExterno, Object_WithoutTheMember_IsFault438AndTouchesNoArgumentsName)
{
    Diario livro;
    const auto objeto = ObjetoExterno::Novo("C", livro);
    const ObjetoTardio tardio{Contado<IDispatch>(objeto.Ponteiro())};
    EXPECT_EQ(FalhaDo([&] { tardio.Chama("Nada"); }).Numero, 438);
    EXPECT_EQ(FalhaDo([&] { tardio.PedeNumero(77, DISPATCH_METHOD, {}); }).Numero, 438);
}

TEST_F(CasoExterno, Object_TellsTheNameOfItsClass)
{
    Diario livro;
    const auto objeto = ObjetoExterno::Novo("CAutoModulos", livro);
    Contado<ITypeInfo> tipo;
    ASSERT_EQ(objeto->GetClassInfo(tipo.Recebe()), S_OK);
    BSTR nome = nullptr;
    ASSERT_EQ(tipo->GetDocumentation(MEMBERID_NIL, &nome, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(Estreito(nome), "CAutoModulos");
    SysFreeString(nome);
}

TEST_F(CasoExterno, Failure_OrderedForACall_ComesWithNumberSourceAndText)
{
    Diario livro;
    auto objeto = ObjetoExterno::Novo("C", livro);
    objeto->Aceita("Faz");
    const ObjetoTardio tardio{Contado<IDispatch>(objeto.Ponteiro())};
    livro.FalhaNa(2);
    tardio.Chama("Faz");
    EXPECT_EQ(FalhaDo([&] { tardio.Chama("Faz"); }),
              (FalhaExterna{31234, "Hospedeiro.Interno", "Falha ordenada no hospedeiro: ção"}));
    tardio.Chama("Faz");
    EXPECT_TRUE(livro.Falhou());
}

TEST_F(CasoExterno, Record_KnowsWhatWasWritten_AndItsTypes)
{
    Diario livro;
    const auto registro = RegistroExterno::Novo("EquiptoED", livro);
    const ObjetoTardio tardio{Contado<IDispatch>(registro.Ponteiro())};
    EXPECT_EQ(registro->Retrato(), "EquiptoED{}");
    EXPECT_EQ(tardio.Chama("Ativo").Bruta().vt, VT_UI1);
    EXPECT_FALSE(tardio.Chama("Sensores").Objeto());
    tardio.Escreve("Ativo", std::int16_t{1});
    tardio.Escreve("Codigo", "RF-1");
    EXPECT_EQ(FalhaDo([&] { tardio.Escreve("Ativo", std::int32_t{300}); }).Numero, 6);
    EXPECT_EQ(FalhaDo([&] { tardio.Escreve("NroIntEquip", "muitos"); }).Numero, 13);
    EXPECT_EQ(registro->Retrato(), "EquiptoED{Codigo=\"RF-1\", Ativo=1}");
}

TEST_F(CasoExterno, Classes_AreMadeByTheirIdentifiers_AsLongAsTheHostLives)
{
    CLSID classe = {};
    {
        HospedeiroExterno hospedeiro;
        Contado<IDispatch> objeto;
        ASSERT_EQ(CLSIDFromProgID(L"ZTVORLIB.SensorED", &classe), S_OK);
        ASSERT_EQ(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   reinterpret_cast<void **>(objeto.Recebe())),
                  S_OK);
        ObjetoTardio(objeto).Escreve("NroSensor", std::int16_t{4});
    }
    EXPECT_NE(CLSIDFromProgID(L"ZTVORLIB.SensorED", &classe), S_OK);
}

// Calls the services as the component does: one parameter, which refers to a variable.
Var Executa(const ObjetoTardio &proxy, const char *operacao, IDispatch *&registro)
{
    SAFEARRAY *parametros = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    LONG zero = 0;
    VARIANT *elemento = nullptr;
    SafeArrayPtrOfIndex(parametros, &zero, reinterpret_cast<void **>(&elemento));
    elemento->vt = VT_BYREF | VT_DISPATCH;
    elemento->ppdispVal = &registro;
    IDispatch *contexto = nullptr;
    BSTR metodo = SysAllocString(Largo(operacao).c_str());
    const Var resposta =
        proxy.Chama("ExecutaMetodo", {Referencia(contexto), Referencia(metodo), Referencia(parametros, VT_VARIANT)});
    SysFreeString(metodo);
    SafeArrayDestroy(parametros);
    return resposta;
}

TEST_F(CasoExterno, Services_SearchAndSave_TellTheDiary)
{
    HospedeiroExterno hospedeiro;
    const ObjetoTardio proxy(
        ObjetoTardio(Var(hospedeiro.Servicos.Gateway())).Chama("CriaObjetoRN", {"VOR", "EquiptoRN", "ZTVORLIB", "4"}));
    auto criterios = RegistroExterno::Novo("ListaEquiptoED", hospedeiro.Livro);
    criterios->Poe("IndTrabFoto", std::uint8_t{1}).Poe("Ativo", std::uint8_t{1});
    IDispatch *registro = criterios.Ponteiro();
    EXPECT_TRUE(Executa(proxy, "lista2", registro).Verdade());
    const ObjetoTardio pagina(proxy.Chama("ObtemRetorno"));
    EXPECT_EQ(ObjetoTardio(pagina.Chama("Equipamentos")).Chama("Count").Inteiro(), 2);
    EXPECT_EQ(pagina.Chama("ProxNroIntEquip").Inteiro(), 9);

    auto novo = RegistroExterno::Novo("EquiptoED", hospedeiro.Livro);
    novo->Poe("Codigo", "X").Poe("TipoEquip", "R");
    registro = Contado<IDispatch>(novo.Ponteiro()).Como<IDispatch>(IID_IDispatch).Ponteiro();
    registro->AddRef(); // the variable owns what it holds
    EXPECT_TRUE(Executa(proxy, "inclui", registro).Verdade());
    EXPECT_NE(registro, novo.Ponteiro()) << "the variable was to get another object";
    EXPECT_EQ(ObjetoTardio(Contado<IDispatch>(registro)).Chama("NroIntEquip").Inteiro(), 101);
    registro->Release();
    EXPECT_EQ(hospedeiro.Livro.Que("EquiptoRN.inclui").at(0),
              "EquiptoRN.inclui EquiptoED{Codigo=\"X\", TipoEquip=\"R\"}");
}

TEST_F(CasoExterno, Person_TypesAndClicksInRealWindows)
{
    HospedeiroExterno hospedeiro;
    const HWND rotulo = CreateWindowExW(0, L"Static", L"&Nome:", WS_CHILD | WS_VISIBLE, 10, 10, 80, 20,
                                        hospedeiro.Janela(), nullptr, nullptr, nullptr);
    const HWND campo = CreateWindowExW(0, L"Edit", L"", WS_CHILD | WS_VISIBLE | WS_BORDER, 100, 10, 200, 24,
                                       hospedeiro.Janela(), nullptr, nullptr, nullptr);
    CreateWindowExW(0, L"Button", L"&Marca", WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX, 10, 50, 120, 24,
                    hospedeiro.Janela(), nullptr, nullptr, nullptr);
    ASSERT_NE(rotulo, nullptr);
    const std::string diferenca = PessoaExterna::Percorre(
        [&] { SetFocus(campo); },
        [&](PessoaExterna &p) {
            p.EsperaJanela(HospedeiroExterno::Titulo);
            p.Escreve("Ação 1").EsperaTexto("Nome:", "Ação 1");
            const HWND marca = p.Acha("Marca");
            p.Clica("Marca").Espera("a marca", [&] { return SendMessageW(marca, BM_GETCHECK, 0, 0) == BST_CHECKED; });
            p.Fotografa("hospedeiro");
        });
    EXPECT_EQ(diferenca, "");
}

TEST_F(CasoExterno, Person_WhoWaitsInVain_SaysWhatWasSeen)
{
    HospedeiroExterno hospedeiro;
    std::string diferenca = PessoaExterna::Percorre(
        [&] { MessageBoxW(hospedeiro.Janela(), L"Tem certeza?", L"Atenção", MB_OK); },
        [](PessoaExterna &p) { p.EsperaCaixa("certeza").Paciencia(100).EsperaJanela("que não há"); });
    EXPECT_NE(diferenca.find("\"Atenção\""), std::string::npos) << diferenca;
    EXPECT_NE(diferenca.find("[Tem certeza?]"), std::string::npos) << diferenca;
}

} // namespace
} // namespace nativo
