#include "host/ChamadaRemota.h"

#include "host/EquiptoED.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <optional>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

class ChamadaRemota : public HostTeste {
  protected:
    static Ref<EquiptoED> Pedido()
    {
        auto pedido = Novo<EquiptoED>();
        pedido->NroIntEquip = 12;
        return pedido;
    }

    std::optional<Ref<EquiptoED>> Consulta(const std::string &classe = "EquiptoRN")
    {
        return ConsultaRemota<EquiptoED>([&] { return ParaOModulo(host->objMTM->ObtemGateway()); }, classe, "consulta",
                                         Pedido);
    }

    bool Comanda()
    {
        return ComandaRemoto([&] { return ParaOModulo(host->objMTM->ObtemGateway()); }, "EquiptoRN", "altera", Pedido);
    }

    void Responde(const std::string &metodo, const Resposta &resposta)
    {
        host->Servico("EquiptoRN", metodo, [resposta](const Ref<Registro> &) { return resposta; });
    }
};

TEST_F(ChamadaRemota, ConsultaRemota_OnSuccess_CallsInOrderAndGivesTheAnswer)
{
    auto resposta = Novo<EquiptoED>();
    resposta->Codigo = "R-01";
    Responde("consulta", resposta);
    auto obtida = Consulta();
    ASSERT_TRUE(obtida);
    EXPECT_EQ((*obtida)->Texto(), resposta->Texto()); // a record that crossed a boundary is a copy
    EXPECT_EQ(host->Registro(),
              (Linhas{"objMTM.ObtemGateway()", "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
                      "EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=12}) -> True",
                      "EquiptoRN.ObtemRetorno() -> EquiptoED{Codigo=\"R-01\"}"}));
}

TEST_F(ChamadaRemota, ConsultaRemota_OfARefusal_ShowsItOnceAndGivesNoValue)
{
    host->RecusaOperacao("consulta", "Não encontrado.");
    EXPECT_FALSE(Consulta());
    EXPECT_EQ(host->RegistroDe({"EquiptoRN."}),
              (Linhas{"EquiptoRN.ExecutaMetodo(\"consulta\", EquiptoED{NroIntEquip=12}) -> False",
                      "EquiptoRN.MostraErro() -> \"Não encontrado.\""}));
}

TEST_F(ChamadaRemota, ConsultaRemota_OfNothing_IsAnAnswer)
{
    Responde("consulta", Ref<EquiptoED>());
    auto obtida = Consulta();
    ASSERT_TRUE(obtida);
    EXPECT_TRUE(obtida->Nada());
}

TEST_F(ChamadaRemota, ConsultaRemota_OfAnotherTypeOrNoObject_IsFault13Or424)
{
    Responde("consulta", Novo<SensorED>());
    EXPECT_EQ(FalhaLancada([&] { Consulta(); }).Numero, 13);
    Responde("consulta", Resposta(Valor("texto")));
    EXPECT_EQ(FalhaLancada([&] { Consulta(); }).Numero, 424);
}

TEST_F(ChamadaRemota, ConsultaRemota_WithTheRequestReplaced_MindsItsTypeEvenWhenRefused)
{
    Responde("consulta", Resposta(Novo<EquiptoED>()).Troca(Novo<EquiptoED>()));
    EXPECT_TRUE(Consulta());
    Responde("consulta", Resposta(Novo<EquiptoED>()).Troca(Ref<EquiptoED>()));
    EXPECT_TRUE(Consulta());
    Responde("consulta", Resposta::Recusa("Não.").Troca(Novo<SensorED>()));
    host->LimpaRegistro();
    EXPECT_EQ(FalhaLancada([&] { Consulta(); }).Numero, 13);
    EXPECT_FALSE(host->Contem("EquiptoRN.MostraErro"));
}

TEST_F(ChamadaRemota, ComandaRemoto_OnSuccess_DoesNotFetchTheAnswer)
{
    Responde("altera", Resposta(Valor("unread")));
    EXPECT_TRUE(Comanda());
    EXPECT_FALSE(host->Contem("EquiptoRN.ObtemRetorno"));
    EXPECT_FALSE(host->Contem("EquiptoRN.MostraErro"));
}

TEST_F(ChamadaRemota, ComandaRemoto_OfARefusal_ShowsItAndIsFalse)
{
    host->RecusaOperacao("altera", "Não.");
    EXPECT_FALSE(Comanda());
    EXPECT_EQ(host->Conta("EquiptoRN.MostraErro"), 1);
}

TEST_F(ChamadaRemota, EveryStep_ThatFaults_PassesTheFaultUnchangedAndCallsNothingBehind)
{
    Responde("consulta", Novo<EquiptoED>());
    const Linhas passos{"objMTM.ObtemGateway", "Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo",
                        "EquiptoRN.ObtemRetorno"};
    for (std::size_t passo = 0; passo < passos.size(); ++passo) {
        host->LimpaRegistro();
        host->FalhaEm(passos[passo], 1, 462, "sem servidor");
        EXPECT_TRUE(Lanca(462, passos[passo], "sem servidor", [&] { Consulta(); }));
        EXPECT_EQ(host->Registro().size(), passo + 1);
    }
}

TEST_F(ChamadaRemota, Request_OfACall_IsBuiltAfterTheProxyAndTheGatewayIsLetGo)
{
    Responde("altera", Resposta());
    RefFraca<IGateway> vigia;
    bool montado = false;
    ComandaRemoto(
        [&] {
            Ref<IGateway> gateway = ParaOModulo(host->objMTM->ObtemGateway());
            vigia = gateway;
            return gateway;
        },
        "EquiptoRN", "altera",
        [&] {
            EXPECT_TRUE(host->Contem("Gateway.CriaObjetoRN"));
            EXPECT_TRUE(vigia.Nada());
            montado = true;
            return Pedido();
        });
    EXPECT_TRUE(montado);
}

TEST_F(ChamadaRemota, Request_AfterAnyCall_IsLetGoWithTheProxy)
{
    RefFraca<EquiptoED> vigia;
    const auto comanda = [&] {
        ComandaRemoto([&] { return ParaOModulo(host->objMTM->ObtemGateway()); }, "EquiptoRN", "altera",
                      [&] {
                          auto pedido = Pedido();
                          vigia = pedido;
                          return pedido;
                      });
    };
    Responde("altera", Resposta());
    comanda();
    EXPECT_TRUE(vigia.Nada());
    host->RecusaOperacao("altera", "Não.");
    comanda();
    EXPECT_TRUE(vigia.Nada());
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    EXPECT_EQ(FalhaLancada(comanda).Numero, 51);
    EXPECT_TRUE(vigia.Nada());
} // the host reports a proxy that still lives

// Keeps an eye on what it was given.
class ProxyAtento : public IProxyRN {
  public:
    explicit ProxyAtento(bool resposta) : m_Resposta(resposta) {}
    std::string_view NomeTipo() const override { return "EquiptoRN"; }
    bool ExecutaMetodo(Ref<Objeto> &oContexto, std::string &, std::vector<Valor> &aParam) override
    {
        Ref<Objeto> contexto = Novo<EquiptoED>();
        Contexto = contexto;
        oContexto = contexto;
        m_Parametros = &aParam;
        return m_Resposta;
    }
    Valor ObtemRetorno() override
    {
        Confere();
        return Ref<Objeto>(Novo<EquiptoED>());
    }
    void MostraErro() override { Confere(); }

    RefFraca<Objeto> Contexto;
    RefFraca<EquiptoED> Enviado;
    bool Conferiu = false;

  private:
    void Confere()
    {
        Conferiu = true;
        EXPECT_TRUE(m_Parametros->empty());
        EXPECT_TRUE(Contexto.Nada());
        EXPECT_FALSE(Enviado.Nada());
    }

    bool m_Resposta;
    std::vector<Valor> *m_Parametros = nullptr;
};

TEST_F(ChamadaRemota, Parameters_AfterTheCall_AreReleasedBeforeTheAnswerAndTheRecordAfterIt)
{
    class GatewayAtento : public IGateway {
      public:
        std::string_view NomeTipo() const override { return "Gateway"; }
        Ref<IProxyRN> CriaObjetoRN(const std::string &, const std::string &, const std::string &,
                                   const std::string &) override
        {
            return Proxy;
        }
        Ref<ProxyAtento> Proxy;
    };
    for (const bool resposta : {true, false}) {
        auto gateway = Novo<GatewayAtento>();
        gateway->Proxy = Novo<ProxyAtento>(resposta);
        ConsultaRemota<EquiptoED>([&]() -> Ref<IGateway> { return gateway; }, "EquiptoRN", "consulta",
                                  [&] {
                                      auto pedido = Pedido();
                                      gateway->Proxy->Enviado = pedido;
                                      return pedido;
                                  });
        EXPECT_TRUE(gateway->Proxy->Conferiu);
        EXPECT_TRUE(gateway->Proxy->Enviado.Nada());
    }
}

TEST_F(ChamadaRemota, Gateway_OrProxyThatIsNothing_IsFault91)
{
    class GatewayVazio : public IGateway {
      public:
        std::string_view NomeTipo() const override { return "Gateway"; }
        Ref<IProxyRN> CriaObjetoRN(const std::string &, const std::string &, const std::string &,
                                   const std::string &) override
        {
            return nullptr;
        }
    };
    for (const Ref<IGateway> &gateway : {Ref<IGateway>(), ParaOModulo(Novo<GatewayVazio>())}) {
        EXPECT_EQ(FalhaLancada([&] { ComandaRemoto([&] { return gateway; }, "EquiptoRN", "inclui", Pedido); }).Numero,
                  91);
    }
}

} // namespace
