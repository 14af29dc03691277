#include "host/ChamadaRemota.h"

#include "host/AfericaoED.h"
#include "host/ConsultaAfericaoED.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// What the remote side does and what happened, shared by gateway and proxy.
struct Roteiro {
    Linhas Passos;
    bool Sucesso = true;
    Valor Retorno;
    std::function<void(std::vector<Valor> &)> AoExecutar;
    std::function<void(const std::string &)> AntesDe; // may raise
    RefFraca<IGateway> Gateway;
    RefFraca<IProxyRN> Proxy;
    RefFraca<ConsultaAfericaoED> Pedido;

    void Passo(const std::string &nome)
    {
        Passos.push_back(nome);
        if (AntesDe) {
            AntesDe(nome);
        }
    }
};

class ProxyDeTeste : public IProxyRN {
  public:
    explicit ProxyDeTeste(Roteiro &roteiro) : m_Roteiro(roteiro) {}
    std::string_view NomeTipo() const override { return "Proxy"; }

    Valor ObtemRetorno() override
    {
        m_Roteiro.Passo("ObtemRetorno");
        return m_Roteiro.Retorno;
    }
    void MostraErro() override { m_Roteiro.Passo("MostraErro"); }
    bool ExecutaMetodo(Ref<Objeto> &oContexto, std::string &sMetodo, std::vector<Valor> &aParam) override
    {
        m_Roteiro.Passo("ExecutaMetodo " + sMetodo);
        EXPECT_TRUE(oContexto.Nada());
        EXPECT_TRUE(m_Roteiro.Gateway.Nada()) << "the gateway was kept";
        EXPECT_EQ(aParam.size(), 1U);
        EXPECT_TRUE(std::holds_alternative<Valor::Variavel>(aParam.at(0).Interno()));
        if (m_Roteiro.AoExecutar) {
            m_Roteiro.AoExecutar(aParam);
        }
        sMetodo = "changed by the remote side";
        oContexto = aParam.at(0).ComoObjeto();
        return m_Roteiro.Sucesso;
    }

  private:
    Roteiro &m_Roteiro;
};

class GatewayDeTeste : public IGateway {
  public:
    explicit GatewayDeTeste(Roteiro &roteiro) : m_Roteiro(roteiro) {}
    std::string_view NomeTipo() const override { return "Gateway"; }

    Ref<IProxyRN> CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                               const std::string &sBiblioteca, const std::string &sCanal) override
    {
        m_Roteiro.Passo("CriaObjetoRN " + sSistema + " " + sClasseRN + " " + sBiblioteca + " " + sCanal);
        auto proxy = Novo<ProxyDeTeste>(m_Roteiro);
        m_Roteiro.Proxy = proxy;
        return proxy;
    }

  private:
    Roteiro &m_Roteiro;
};

class ChamadaRemota : public testing::Test {
  protected:
    Roteiro roteiro;

    auto ObtemGateway()
    {
        return [this] {
            roteiro.Passo("gateway");
            auto gateway = Novo<GatewayDeTeste>(roteiro);
            roteiro.Gateway = gateway;
            return Ref<IGateway>(gateway);
        };
    }

    auto Pedido()
    {
        return [this] {
            roteiro.Passo("pedido");
            auto oED = Novo<ConsultaAfericaoED>();
            oED->NroIntEquip = 12;
            roteiro.Pedido = oED;
            return oED;
        };
    }

    auto Consulta() { return ConsultaRemota<AfericaoED>(ObtemGateway(), "EquiptoRN", "consulta", Pedido()); }
    bool Comanda() { return ComandaRemoto(ObtemGateway(), "RelatorioRN", "desativa", Pedido()); }

    void ConfereTudoLiberado()
    {
        EXPECT_TRUE(roteiro.Gateway.Nada());
        EXPECT_TRUE(roteiro.Proxy.Nada());
        EXPECT_TRUE(roteiro.Pedido.Nada());
    }
};

TEST_F(ChamadaRemota, ConsultaRemota_Accepted_RunsTheStepsInOrderAndFetchesTheAnswer)
{
    auto afericao = Novo<AfericaoED>();
    roteiro.Retorno = afericao;
    roteiro.AoExecutar = [](std::vector<Valor> &aParam) {
        EXPECT_EQ(aParam[0].Como<ConsultaAfericaoED>()->NroIntEquip.Valor(), 12);
    };
    const auto resposta = Consulta();
    ASSERT_TRUE(resposta.has_value());
    EXPECT_TRUE(*resposta == afericao);
    EXPECT_EQ(roteiro.Passos, (Linhas{"gateway", "CriaObjetoRN VOR EquiptoRN ZTVORLIB 4", "pedido",
                                      "ExecutaMetodo consulta", "ObtemRetorno"}));
    ConfereTudoLiberado();
}

TEST_F(ChamadaRemota, ConsultaRemota_Refused_ShowsTheErrorAndFetchesNothing)
{
    roteiro.Sucesso = false;
    EXPECT_FALSE(Consulta().has_value());
    EXPECT_EQ(roteiro.Passos, (Linhas{"gateway", "CriaObjetoRN VOR EquiptoRN ZTVORLIB 4", "pedido",
                                      "ExecutaMetodo consulta", "MostraErro"}));
    ConfereTudoLiberado();
}

TEST_F(ChamadaRemota, ConsultaRemota_AnswerNothing_IsAValueThatIsNothing)
{
    roteiro.Retorno = Ref<Objeto>();
    const auto resposta = Consulta();
    ASSERT_TRUE(resposta.has_value());
    EXPECT_TRUE(resposta->Nada());
}

TEST_F(ChamadaRemota, ConsultaRemota_AnswerOfAnotherClass_RaisesThirteen)
{
    roteiro.Retorno = Novo<ConsultaAfericaoED>();
    EXPECT_EQ(FalhaLancada([&] { Consulta(); }).Numero, 13);
    ConfereTudoLiberado();
}

TEST_F(ChamadaRemota, ConsultaRemota_AnswerThatIsNoObject_RaisesFourHundredTwentyFour)
{
    roteiro.Retorno = Valor("sim");
    EXPECT_EQ(FalhaLancada([&] { Consulta(); }).Numero, 424);
}

TEST_F(ChamadaRemota, ComandaRemoto_AcceptedOrRefused_NeverFetchesAnAnswer)
{
    EXPECT_TRUE(Comanda());
    EXPECT_EQ(roteiro.Passos,
              (Linhas{"gateway", "CriaObjetoRN VOR RelatorioRN ZTVORLIB 4", "pedido", "ExecutaMetodo desativa"}));
    ConfereTudoLiberado();
    roteiro.Passos.clear();
    roteiro.Sucesso = false;
    EXPECT_FALSE(Comanda());
    EXPECT_EQ(roteiro.Passos, (Linhas{"gateway", "CriaObjetoRN VOR RelatorioRN ZTVORLIB 4", "pedido",
                                      "ExecutaMetodo desativa", "MostraErro"}));
}

TEST_F(ChamadaRemota, RequestReplaced_ByARecordOfItsTypeOrNothing_IsTaken)
{
    for (const Ref<Objeto> &outro : {Ref<Objeto>(Novo<ConsultaAfericaoED>()), Ref<Objeto>()}) {
        roteiro.AoExecutar = [&](std::vector<Valor> &aParam) { aParam[0].Substitui(outro); };
        EXPECT_TRUE(Comanda());
        ConfereTudoLiberado();
    }
}

TEST_F(ChamadaRemota, RequestReplaced_ByAnotherRecord_RaisesThirteenWhateverTheResult)
{
    roteiro.AoExecutar = [](std::vector<Valor> &aParam) { aParam[0].Substitui(Novo<AfericaoED>()); };
    for (bool sucesso : {true, false}) {
        roteiro.Sucesso = sucesso;
        roteiro.Passos.clear();
        EXPECT_EQ(FalhaLancada([&] { Comanda(); }).Numero, 13);
        EXPECT_EQ(roteiro.Passos.back(), "ExecutaMetodo desativa"); // neither answer nor message
        ConfereTudoLiberado();
    }
}

TEST_F(ChamadaRemota, AnyStepThatFails_PassesItsFaultUnchangedAndReleasesAll)
{
    for (const char *passo :
         {"gateway", "CriaObjetoRN VOR EquiptoRN ZTVORLIB 4", "pedido", "ExecutaMetodo consulta", "ObtemRetorno"}) {
        SCOPED_TRACE(passo);
        roteiro.AntesDe = [passo](const std::string &este) {
            if (este == passo) {
                throw Falha(1010, "Rede", "Sem rede");
            }
        };
        const Falha falha = FalhaLancada([&] { Consulta(); });
        EXPECT_EQ(falha.Numero, 1010);
        EXPECT_EQ(falha.Fonte, "Rede");
        EXPECT_EQ(falha.Descricao, "Sem rede");
        EXPECT_EQ(roteiro.Passos.back(), passo);
        ConfereTudoLiberado();
    }
}

TEST_F(ChamadaRemota, GatewayOrProxyThatIsNothing_RaisesNinetyOne)
{
    EXPECT_EQ(
        FalhaLancada([&] { ComandaRemoto([] { return Ref<IGateway>(); }, "EquiptoRN", "inclui", Pedido()); }).Numero,
        91);
    EXPECT_TRUE(roteiro.Passos.empty());

    class GatewayVazio : public IGateway {
      public:
        std::string_view NomeTipo() const override { return "Gateway"; }
        Ref<IProxyRN> CriaObjetoRN(const std::string &, const std::string &, const std::string &,
                                   const std::string &) override
        {
            return nullptr;
        }
    };
    EXPECT_EQ(FalhaLancada([&] {
                  ComandaRemoto([] { return Ref<IGateway>(Novo<GatewayVazio>()); }, "EquiptoRN", "inclui", Pedido());
              }).Numero,
              91);
}

} // namespace
