#include "shell/TransacoesGeral.h"

#include "tests/shell/FormDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <functional>
#include <string>
#include <vector>

namespace {

class TransacoesGeralTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        form->Carregar();
        host->LimpaRegistro();
    }

    void TearDown() override
    {
        host->objMTM->AoEnviar = nullptr;
        form = nullptr;
        oTrans = nullptr;
        HostTeste::TearDown();
    }

    const TransacoesGeral &Transacoes() const { return geral->Transacoes; }

    // Each operation by its name, with flags that tell the arguments apart.
    struct Operacao {
        std::string Nome;
        std::function<void()> Envia;
    };
    std::vector<Operacao> Todas()
    {
        return {{"EnviaTransacao", [&] { Transacoes().EnviaTransacao(form, oTrans, true, false); }},
                {"EnviaTransacao2", [&] { Transacoes().EnviaTransacao2(form, oTrans, true, false); }},
                {"EnviaTransacaoH90", [&] { Transacoes().EnviaTransacaoH90(form, oTrans, true, false, true); }},
                {"EnviaRajada", [&] { Transacoes().EnviaRajada(form, oTrans, true, false); }},
                {"EnviaRajada2", [&] { Transacoes().EnviaRajada2(form, oTrans, aDados, false); }},
                {"EnviaRajadaH90", [&] { Transacoes().EnviaRajadaH90(form, oTrans, aDados, false); }}};
    }
    static std::string ChamadaDaSessao(const std::string &operacao)
    {
        if (operacao == "EnviaTransacao" || operacao == "EnviaRajada") {
            return "objMTM." + operacao + "1";
        }
        return "objMTM." + operacao;
    }

    Ref<FormDeTeste> form = Novo<FormDeTeste>();
    Ref<ITransacao> oTrans = ParaOModulo(Novo<TransacaoRoteirizada>());
    std::vector<std::string> aDados{"A", "B"};
};

TEST_F(TransacoesGeralTeste, Send_EachOperation_MakesItsCallWithTheArgumentsThatItHandsOn)
{
    Transacoes().EnviaTransacao(form, oTrans, true, false);
    Transacoes().EnviaTransacao2(form, oTrans, false, true);
    Transacoes().EnviaTransacaoH90(form, oTrans, true, true, false);
    Transacoes().EnviaTransacaoH90(form, oTrans, false, false, true);
    Transacoes().EnviaRajada(form, oTrans, true, false);
    Transacoes().EnviaRajada2(form, oTrans, aDados, true);
    Transacoes().EnviaRajadaH90(form, oTrans, aDados, true);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objMTM.EnviaTransacao1(Transacao, True) -> True",
                                                 "objMTM.EnviaTransacao2(Transacao, False) -> True",
                                                 "objMTM.EnviaTransacaoH90(Transacao, True, False) -> True",
                                                 "objMTM.EnviaTransacaoH90(Transacao, False, True) -> True",
                                                 "objMTM.EnviaRajada1(Transacao, True) -> 0",
                                                 "objMTM.EnviaRajada2(Transacao, [\"A\", \"B\"]) -> 0",
                                                 "objMTM.EnviaRajadaH90(Transacao, [\"A\", \"B\"], True) -> True"}));
}

TEST_F(TransacoesGeralTeste, Send_Result_IsThatOfTheSession)
{
    for (bool resultado : {false, true}) {
        host->objMTM->ResultadoTransacao = resultado;
        EXPECT_EQ(Transacoes().EnviaTransacao(form, oTrans, false, false), resultado);
        EXPECT_EQ(Transacoes().EnviaTransacao2(form, oTrans, false, false), resultado);
        EXPECT_EQ(Transacoes().EnviaTransacaoH90(form, oTrans, false, false, false), resultado);
        EXPECT_EQ(Transacoes().EnviaRajadaH90(form, oTrans, aDados, false), resultado);
    }
    for (std::int16_t resultado : {std::int16_t{-1}, std::int16_t{32767}}) {
        host->objMTM->ResultadoRajada = resultado;
        EXPECT_EQ(Transacoes().EnviaRajada(form, oTrans, false, false), resultado);
        EXPECT_EQ(Transacoes().EnviaRajada2(form, oTrans, aDados, false), resultado);
    }
}

TEST_F(TransacoesGeralTeste, Send_EachOperation_RunsWithTheFormDisabledAndEnablesItWhateverItWas)
{
    for (const auto &[nome, envia] : Todas()) {
        for (bool antes : {true, false}) {
            bool enviou = false;
            host->objMTM->AoEnviar = [&](EnvioTransacao &) {
                EXPECT_FALSE(form->Enabled()) << nome;
                enviou = true;
            };
            form->DefineEnabled(antes);
            envia();
            EXPECT_TRUE(enviou) << nome;
            EXPECT_TRUE(form->Enabled()) << nome;
        }
    }
}

TEST_F(TransacoesGeralTeste, Send_EachOperationThatFails_EnablesTheFormAndRaisesWithItsOwnName)
{
    for (const auto &[nome, envia] : Todas()) {
        host->FalhaEm(ChamadaDaSessao(nome), 1, 1006, "Linha caiu");
        EXPECT_TRUE(Lanca(1006, ChamadaDaSessao(nome) + " < Geral." + nome, "Linha caiu", envia));
        EXPECT_TRUE(form->Enabled()) << nome;
    }
}

TEST_F(TransacoesGeralTeste, Send_EachOperationThatFailsWithNumberZero_RaisesNothing)
{
    for (const auto &[nome, envia] : Todas()) {
        host->FalhaEm(ChamadaDaSessao(nome), 1, 0, "Nada");
        EXPECT_NO_THROW(envia()) << nome;
        EXPECT_EQ(host->Conta(ChamadaDaSessao(nome) + "("), 1) << nome;
        EXPECT_TRUE(form->Enabled()) << nome;
    }
}

TEST_F(TransacoesGeralTeste, Send_WithoutSession_RaisesNinetyOneWithTheFormEnabled)
{
    geral->Logon(nullptr, nullptr, "");
    for (const auto &[nome, envia] : Todas()) {
        EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < Geral." + nome, envia));
        EXPECT_TRUE(form->Enabled());
    }
}

TEST_F(TransacoesGeralTeste, Send_WithoutForm_SendsAllTheSame)
{
    EXPECT_TRUE(Transacoes().EnviaTransacao(nullptr, oTrans, false, false));
    host->FalhaEm("objMTM.EnviaTransacao1", 1, 1006, "Linha caiu");
    EXPECT_EQ(FalhaLancada([&] { Transacoes().EnviaTransacao(nullptr, oTrans, false, false); }).Numero, 1006);
}

// A form on which Enabled cannot be written.
class FormTeimoso : public FormDeTeste {
  public:
    void DefineEnabled(bool) override { throw Falha(438); }
};

TEST_F(TransacoesGeralTeste, Send_FormThatCannotBeDisabled_SendsAllTheSame)
{
    EXPECT_TRUE(Transacoes().EnviaTransacao(Novo<FormTeimoso>(), oTrans, false, false));
    EXPECT_EQ(host->Conta("objMTM.EnviaTransacao1"), 1);
}

TEST_F(TransacoesGeralTeste, Send_TransactionAndDataChangedByTheSession_ReachTheCaller)
{
    Oferta outra = Novo<TransacaoRoteirizada>();
    host->objMTM->AoEnviar = [&](EnvioTransacao &envio) {
        envio.Transacao = outra.Propria();
        if (envio.b1 != nullptr) {
            *envio.b1 = !*envio.b1;
        }
        if (envio.b2 != nullptr) {
            *envio.b2 = !*envio.b2;
        }
        if (envio.b3 != nullptr) {
            *envio.b3 = !*envio.b3;
        }
        if (envio.Dados != nullptr) {
            envio.Dados->push_back(envio.Operacao);
        }
    };
    for (const auto &[nome, envia] : Todas()) {
        oTrans = ParaOModulo(Novo<TransacaoRoteirizada>());
        envia();
        EXPECT_TRUE(oTrans == outra) << nome;
    }
    EXPECT_EQ(aDados, (std::vector<std::string>{"A", "B", "EnviaRajada2", "EnviaRajadaH90"}));
}

// The end of a burst.

class RajadaTeste : public TransacoesGeralTeste {
  protected:
    static Ref<ITransacao> Com(const std::string &valor, const std::string &nome = "HDR-FIM-RAJADA")
    {
        auto transacao = Novo<TransacaoRoteirizada>();
        transacao->Entrada = Novo<Colecao<Ref<CampoTransacao>>>();
        auto campo = Novo<CampoTransacao>();
        campo->Nome = nome;
        campo->Valor = valor;
        transacao->Entrada->Add(campo, nome);
        return ParaOModulo(transacao);
    }
};

TEST_F(RajadaTeste, RajadaTerminou_FieldComparedAsANumber_IsTrueForFiveAlone)
{
    for (const char *valor : {"5", "05", " 5,0 "}) {
        EXPECT_TRUE(Transacoes().RajadaTerminou(Com(valor))) << valor;
    }
    for (const char *valor : {"4", "0", "55", "-5"}) {
        EXPECT_FALSE(Transacoes().RajadaTerminou(Com(valor))) << valor;
    }
}

TEST_F(RajadaTeste, RajadaTerminou_ValueFieldOrTransactionThatIsNone_Raises)
{
    const std::vector<std::pair<Ref<ITransacao>, std::int32_t>> casos = {
        {Com(""), 13},
        {Com("fim"), 13},
        {Com("5", "HDR-FIM"), 5},
        {ParaOModulo(Novo<TransacaoRoteirizada>()), 91},
        {nullptr, 91}};
    for (const auto &[transacao, numero] : casos) {
        EXPECT_TRUE(Lanca(numero, "ZTAVOREQUIP", [&, &oTrans = transacao] { Transacoes().RajadaTerminou(oTrans); }));
    }
}

} // namespace
