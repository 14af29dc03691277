#include "tests/windows/travessia/Cerca.h"

#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "windows/automation/Falhas.h"
#include "windows/automation/Registros.h"

#include <functional>
#include <string>
#include <vector>

// What a foreign object can answer to a call, whoever made it, and what the component makes of that.

namespace nativo {
namespace {

class CercaTeste : public HostTeste {
  protected:
    void TearDown() override
    {
        Cerca::Responde("Logado", nullptr);
        HostTeste::TearDown();
    }

    // The fault that the component has when the host answers that.
    Falha Falhando(Cerca::Resposta resposta)
    {
        Cerca::Responde("Logado", std::move(resposta));
        return FalhaLancada([&] { Ref<IobjSCA>(host->objSCA)->Logado(); });
    }
    Falha FalhandoCom(HRESULT codigo)
    {
        return Falhando([codigo](VARIANT *, EXCEPINFO *) { return codigo; });
    }
    Falha FalhandoCom(const EXCEPINFO &informacao)
    {
        return Falhando([informacao](VARIANT *, EXCEPINFO *saida) {
            *saida = informacao;
            return DISP_E_EXCEPTION;
        });
    }
    static EXCEPINFO Informacao(WORD wCode, SCODE scode, const wchar_t *fonte, const wchar_t *descricao)
    {
        EXCEPINFO informacao{};
        informacao.wCode = wCode;
        informacao.scode = scode;
        informacao.bstrSource = fonte == nullptr ? nullptr : SysAllocString(fonte);
        informacao.bstrDescription = descricao == nullptr ? nullptr : SysAllocString(descricao);
        return informacao;
    }
};

constexpr SCODE Familia = static_cast<SCODE>(0x800A0000);

TEST_F(CercaTeste, Fault_ByItsNumberInEitherPlace_ArrivesWithItsNumberAndTexts)
{
    struct Caso {
        WORD wCode;
        SCODE scode;
        std::int32_t Numero;
    };
    for (const Caso &caso : std::vector<Caso>{{1004, 0, 1004},
                                              {0, Familia | 1004, 1004},
                                              {1004, Familia | 1033, 1004}, // the shorter one is the one that counts
                                              {65535, 0, 65535},
                                              {0, -1, -1},
                                              {0, static_cast<SCODE>(0x80040201), -2147220991},
                                              {0, E_FAIL, -2147467259},
                                              {0, E_OUTOFMEMORY, 7},
                                              {0, DISP_E_TYPEMISMATCH, 13},
                                              {0, Familia | 438, 438}}) {
        SCOPED_TRACE(caso.Numero);
        EXPECT_TRUE(FalhaIgual(FalhandoCom(Informacao(caso.wCode, caso.scode, L"Serviço < X", L"Não é possível")),
                               caso.Numero, "Serviço < X", "Não é possível"));
    }
}

TEST_F(CercaTeste, Fault_WithoutTextsOrWithHugeOnes_ArrivesAsItIs)
{
    EXPECT_TRUE(FalhaIgual(FalhandoCom(Informacao(1033, 0, nullptr, nullptr)), 1033, "", ""));
    EXPECT_TRUE(FalhaIgual(FalhandoCom(Informacao(1033, 0, L"", L"")), 1033, "", ""));
    const std::wstring longo(1'000'000, L'ã');
    const Falha falha = FalhandoCom(Informacao(1033, 0, L"X", longo.c_str()));
    EXPECT_EQ(falha.Descricao.size(), 2'000'000U);
    EXPECT_TRUE(falha.Descricao.starts_with("ãã"));
    EXPECT_TRUE(falha.Descricao.ends_with("ãã"));
}

TEST_F(CercaTeste, Fault_FilledInWhenItIsAskedFor_Arrives)
{
    EXCEPINFO informacao{};
    informacao.pfnDeferredFillIn = [](EXCEPINFO *cheia) -> HRESULT {
        cheia->wCode = 1006;
        cheia->bstrSource = SysAllocString(L"Tarde");
        cheia->bstrDescription = SysAllocString(L"Linha caiu");
        return S_OK;
    };
    EXPECT_TRUE(FalhaIgual(FalhandoCom(informacao), 1006, "Tarde", "Linha caiu"));
}

TEST_F(CercaTeste, Fault_OfNoNumberAtAll_IsAnErrorOfAutomation)
{
    EXPECT_EQ(FalhandoCom(EXCEPINFO{}).Numero, NumeroAutomacao::ErroDeAutomacao);
}

TEST_F(CercaTeste, Code_OfTheCallItself_HasThePlatformsNumberAndTheComponentAsItsSource)
{
    struct Caso {
        HRESULT Codigo;
        std::int32_t Numero;
    };
    for (const Caso &caso : std::vector<Caso>{{DISP_E_MEMBERNOTFOUND, 438},
                                              {DISP_E_UNKNOWNNAME, 438},
                                              {DISP_E_TYPEMISMATCH, 13},
                                              {DISP_E_OVERFLOW, 6},
                                              {DISP_E_BADPARAMCOUNT, 450},
                                              {DISP_E_PARAMNOTOPTIONAL, 449},
                                              {E_NOTIMPL, 445},
                                              {E_OUTOFMEMORY, 7},
                                              {E_ACCESSDENIED, 70},
                                              {RPC_E_DISCONNECTED, 462},
                                              {E_FAIL, -2147467259},
                                              {static_cast<HRESULT>(0x800403E8), -2147220504}}) {
        SCOPED_TRACE(caso.Numero);
        EXPECT_TRUE(FalhaIgual(FalhandoCom(caso.Codigo), caso.Numero, "ZTAVOREQUIP"));
    }
}

// An answer that is not what was asked for.
class RespostaTeste : public CercaTeste {
  protected:
    static Cerca::Resposta Valor(const VARIANT &valor)
    {
        return [valor](VARIANT *saida, EXCEPINFO *) {
            if (saida != nullptr) {
                *saida = valor;
            }
            return S_OK;
        };
    }
    static VARIANT Texto(const wchar_t *texto)
    {
        VARIANT valor{};
        V_VT(&valor) = VT_BSTR;
        V_BSTR(&valor) = SysAllocString(texto);
        return valor;
    }
    static VARIANT Vazio(VARTYPE tipo)
    {
        VARIANT valor{};
        V_VT(&valor) = tipo;
        return valor;
    }
    static VARIANT Numero(std::int32_t numero)
    {
        VARIANT valor = Vazio(VT_I4);
        V_I4(&valor) = numero;
        return valor;
    }
};

TEST_F(RespostaTeste, TruthValue_OfOtherTypes_IsConvertedAsThePlatformDoes)
{
    const auto responde = [&](const VARIANT &valor) {
        Cerca::Responde("Logado", Valor(valor));
        return Ref<IobjSCA>(host->objSCA)->Logado();
    };
    EXPECT_TRUE(responde(Numero(2)));
    EXPECT_FALSE(responde(Numero(0)));
    EXPECT_FALSE(responde(Vazio(VT_EMPTY)));
    EXPECT_TRUE(responde(Texto(L"-1")));
    EXPECT_EQ(Falhando(Valor(Texto(L"talvez"))).Numero, 13);
    EXPECT_EQ(Falhando(Valor(Vazio(VT_NULL))).Numero, 94);
    EXPECT_EQ(Falhando(Valor(Vazio(VT_DISPATCH))).Numero, 91); // Nothing has no value
}

TEST_F(RespostaTeste, Object_AnsweredAsSomethingElse_IsFault424AndNothingIsNothing)
{
    Ref<IobjMTM> sessao = host->objMTM;
    const auto pede = [&](const VARIANT &valor) {
        Cerca::Responde("CreateQMR", Valor(valor));
        return sessao->CreateQMR();
    };
    EXPECT_EQ(FalhaLancada([&] { pede(Texto(L"QMR")); }).Numero, 424);
    EXPECT_EQ(FalhaLancada([&] { pede(Numero(1)); }).Numero, 424);
    EXPECT_EQ(FalhaLancada([&] { pede(Vazio(VT_EMPTY)); }).Numero, 424);
    EXPECT_TRUE(pede(Vazio(VT_DISPATCH)).Nada());
    EXPECT_TRUE(pede(Vazio(VT_UNKNOWN)).Nada());
}

TEST_F(RespostaTeste, Record_OfAnotherClassOrNone_IsFaultThirteenOr424)
{
    const auto consulta = [&](Resposta resposta) {
        host->Servico("EquiptoRN", "consulta", [resposta](const Ref<Registro> &) { return resposta; });
        return FalhaLancada([&] {
                   ConsultaRemota<EquiptoED>([&] { return ParaOModulo(host->objMTM->ObtemGateway()); }, "EquiptoRN",
                                             "consulta", [] { return Novo<EquiptoED>(); });
               })
            .Numero;
    };
    EXPECT_EQ(consulta(Novo<SensorED>()), 13);
    EXPECT_EQ(consulta(::Valor("EquiptoED")), 424);
    EXPECT_EQ(consulta(Resposta().Troca(Novo<SensorED>())), 13);
}

// Every member of every record, written and left out.
TEST_F(RespostaTeste, Record_AnyMembersWritten_CrossesBothWaysWithThoseAndNoOthers)
{
    auto afericao = Novo<AfericaoED>();
    afericao->NroIntAfericao = 1e15;
    afericao->DataVerificacao = Data{-1.25};
    afericao->Ativo = 255;
    afericao->PortDimel = "";
    auto sensor = Novo<SensorED>();
    sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    sensor->Afericoes.Valor()->Add(afericao);
    sensor->NroSensor = std::int16_t{-32768};
    auto pedido = Novo<EquiptoED>();
    pedido->NroIntEquip = 2147483647;
    pedido->Descricao = "ção \xF0\x9F\x9A\x97 \"x\"\r\n";
    pedido->OperadorTrans = 0.1;
    pedido->Sensores = Novo<Colecao<Ref<SensorED>>>();
    pedido->Sensores.Valor()->Add(sensor);
    pedido->Sensores.Valor()->Add(Novo<SensorED>());
    pedido->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>(); // there, and empty
    pedido->VersaoLida = 9;
    const std::string inteiro = pedido->Texto();
    host->Atende<EquiptoED>("EquiptoRN", "altera", [&](const Ref<EquiptoED> &vindo) -> Resposta {
        EXPECT_FALSE(vindo == pedido);
        EXPECT_EQ(vindo->Texto(), inteiro);
        EXPECT_EQ(vindo->VersaoLida, 9);
        return ComoTipo<EquiptoED>(vindo->Copia());
    });
    const auto resposta = ConsultaRemota<EquiptoED>([&] { return ParaOModulo(host->objMTM->ObtemGateway()); },
                                                    "EquiptoRN", "altera", [&] { return pedido; });
    ASSERT_TRUE(resposta);
    EXPECT_FALSE(*resposta == pedido);
    EXPECT_EQ((*resposta)->Texto(), inteiro);
    EXPECT_EQ((*resposta)->VersaoLida, 9);
    EXPECT_EQ(pedido->Texto(), inteiro);
}

} // namespace
} // namespace nativo
