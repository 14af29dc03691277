#include "desk/host/ServicosNoServidor.h"

#include "tests/desk/RedeDeTeste.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;

namespace {

using Acaso = RedeDeTeste::Acaso;

// A person who signs in again as often as is arranged, and never waits.
class LigacaoDeTeste : public ILigacao {
  public:
    std::vector<std::string> Vistos;
    std::vector<Ref<SessaoServico>> Novas; // the last first
    bool Insiste = true;
    bool Aguenta = true; // the wait

    void Espera(const std::function<void(const Segue &)> &espera) override
    {
        Vistos.push_back("espera");
        espera([this](double, const std::string &) { return Aguenta; });
    }
    bool TentaDeNovo(const std::string &frase) override
    {
        Vistos.push_back("tenta: " + frase);
        return Insiste;
    }
    void Respondeu() override { Vistos.push_back("respondeu"); }
    Ref<SessaoServico> EntraDeNovo(const Operador &quem, const std::string &frase) override
    {
        Vistos.push_back("entra " + quem.Usuario + ": " + frase);
        if (Novas.empty()) {
            return nullptr;
        }
        const Ref<SessaoServico> nova = Novas.back();
        Novas.pop_back();
        return nova;
    }
};

class ServicosNoServidorTeste : public testing::Test {
  protected:
    ServicosNoServidorTeste()
    {
        registro.Cadastra("ana");
        rede = Novo<RedeDeTeste>(registro.Aberto(), ligacao);
        std::string recusa;
        std::int32_t espera = 0;
        sessao = Novo<ServicosNoServidor>(rede, ligacao)->Entra("ana", "senha de ana", "mesa", recusa, espera);
        ligacao.Vistos.clear();
    }
    Ref<SessaoServico> Nova()
    {
        std::string recusa;
        std::int32_t espera = 0;
        return rede->Entra("ana", "senha de ana", "mesa", recusa, espera);
    }
    using Vistos = std::vector<std::string>;

    RegistroDeTeste registro;
    LigacaoDeTeste ligacao;
    Ref<RedeDeTeste> rede;
    Ref<SessaoServico> sessao;
};

TEST_F(ServicosNoServidorTeste, Operation_IsWaitedForAndAnswered)
{
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("A1")).Feita);
    EXPECT_EQ(ligacao.Vistos, (Vistos{"espera", "respondeu"}));
    EXPECT_EQ(registro.Sql("SELECT Codigo FROM EQUIPAMENTO"), "A1");
}

TEST_F(ServicosNoServidorTeste, Operation_ThatSomebodyFollows_IsNotShownASecondTime)
{
    bool seguiu = false;
    const Acompanhamento acompanhamento(*sessao, [&](double, const std::string &) {
        seguiu = true;
        return false;
    });
    rede->Acasos = {Acaso::Demora};
    const Retorno retorno = Pede(sessao, "inclui", EquipamentoDe("A1"));
    EXPECT_EQ(retorno.Recusa, "A operação foi cancelada: nada foi gravado.");
    EXPECT_TRUE(seguiu);
    EXPECT_EQ(ligacao.Vistos, Vistos{"respondeu"});
}

TEST_F(ServicosNoServidorTeste, Wait_GivenUp_IsARefusal)
{
    ligacao.Aguenta = false;
    rede->Acasos = {Acaso::Demora};
    EXPECT_EQ(Pede(sessao, "inclui", EquipamentoDe("A1")).Recusa, "A operação foi cancelada: nada foi gravado.");
    EXPECT_EQ(rede->Feitas, 0);
}

TEST_F(ServicosNoServidorTeste, SessionThatEnded_GoesOnWithANewOne_AndWhoeverIsAskedStays)
{
    std::string pedido;
    sessao->PerguntaMotivo([&](const std::string &oQue) {
        pedido = oQue;
        return std::optional<std::string>("O certificado tinha outro número.");
    });
    const std::int32_t numero =
        Inclui(sessao,
               Poe(EquipamentoDe("A1"), Poe(SensorDe(1), AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027)))));
    const Ref<EquiptoED> lido = Abre(sessao, numero);
    lido->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->Numero = "222";
    ligacao.Vistos.clear();
    ligacao.Novas = {Nova()};
    rede->Acasos = {Acaso::Terminou};
    EXPECT_TRUE(Pede(sessao, "altera", lido).Feita);
    EXPECT_EQ(ligacao.Vistos,
              (Vistos{"espera", "entra ana: A sessão com o servidor terminou.", "espera", "respondeu"}));
    EXPECT_NE(pedido, "");
    EXPECT_EQ(registro.Sql("SELECT Numero FROM AFERICAO"), "222");
}

TEST_F(ServicosNoServidorTeste, SessionThatEnded_NobodySignsIn_IsAFaultAndTheNextOperationAsksAgain)
{
    rede->Acasos = {Acaso::Terminou, Acaso::Terminou};
    for (int vez = 0; vez < 2; ++vez) {
        EXPECT_THROW(Pede(sessao, "inclui", EquipamentoDe("A1")), rede::SessaoEncerrada);
    }
    EXPECT_EQ(rede->Feitas, 0);
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("A1")).Feita);
}

TEST_F(ServicosNoServidorTeste, SessionThatEndsAgainAndAgain_IsBegunAsOften)
{
    ligacao.Novas = {Nova(), Nova()};
    rede->Acasos = {Acaso::Terminou, Acaso::Terminou};
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("A1")).Feita);
    EXPECT_EQ(rede->Feitas, 1);
}

} // namespace
