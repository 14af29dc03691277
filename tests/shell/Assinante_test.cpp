#include "shell/Assinante.h"

#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <functional>
#include <string>

namespace {

struct Fonte {
    Evento<> Sinal;
    Evento<bool &> Pergunta;
    Evento<std::string> Chave;
};

class Ouvinte : public Objeto, public Assinante {
  public:
    std::string_view NomeTipo() const override { return "COOuvinte"; }

    void LigaTudo(Fonte &fonte)
    {
        Liga(fonte.Sinal, &Ouvinte::fonte_Sinal, "fonte_Sinal");
        Liga(fonte.Pergunta, &Ouvinte::fonte_Pergunta, "fonte_Pergunta");
        Liga(fonte.Chave, &Ouvinte::fonte_Chave);
    }
    using Assinante::Desliga;

    std::function<void()> AoReceber;
    std::int32_t Sinais = 0;
    std::string UltimaChave;

  private:
    void fonte_Sinal()
    {
        const std::function<void()> aoReceber = AoReceber;
        if (aoReceber) {
            aoReceber();
        }
        ++Sinais;
    }
    void fonte_Pergunta(bool &cancela)
    {
        cancela = true;
        throw Falha(457);
    }
    void fonte_Chave(const std::string &chave)
    {
        UltimaChave = chave;
        if (chave.empty()) {
            throw Falha(13);
        }
    }
};

class AssinanteTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        ouvinte->LigaTudo(fonte);
    }

    void TearDown() override
    {
        ouvinte = nullptr;
        HostTeste::TearDown();
    }

    Fonte fonte;
    Ref<Ouvinte> ouvinte = Novo<Ouvinte>();
};

TEST_F(AssinanteTeste, Liga_WithName_FaultIsShownUnderClassAndNameAndGoesNoFurther)
{
    bool seguinte = false;
    bool cancela = false;
    Conexao outra = fonte.Pergunta.liga([&](bool &) { seguinte = true; });
    fonte.Pergunta.dispara(cancela);
    EXPECT_TRUE(cancela); // written before the fault
    EXPECT_TRUE(seguinte);
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(), {"COOuvinte.fonte_Pergunta|457|*"}));
}

TEST_F(AssinanteTeste, Liga_WithoutName_FaultGoesOnToWhoeverRaisedTheEvent)
{
    EXPECT_EQ(FalhaLancada([&] { fonte.Chave.dispara(""); }).Numero, 13);
    EXPECT_TRUE(host->Erros().empty());
    fonte.Chave.dispara("mnuZTLObjNovo");
    EXPECT_EQ(ouvinte->UltimaChave, "mnuZTLObjNovo");
}

TEST_F(AssinanteTeste, Liga_ProcedureThatDropsItsObject_ObjectLivesUntilItReturns)
{
    std::int32_t sinais = -1;
    RefFraca<Ouvinte> fraca = ouvinte;
    ouvinte->AoReceber = [&] {
        ouvinte->Desliga();
        ouvinte = nullptr;
        ASSERT_FALSE(fraca.Nada());
        sinais = fraca->Sinais;
    };
    fonte.Sinal.dispara();
    EXPECT_EQ(sinais, 0);
    EXPECT_TRUE(fraca.Nada());
    fonte.Sinal.dispara();
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(AssinanteTeste, Liga_ProcedureThatDropsItsObjectAndFails_FaultIsShown)
{
    ouvinte->AoReceber = [&] {
        ouvinte = nullptr;
        throw Falha(91);
    };
    fonte.Sinal.dispara();
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(), {"COOuvinte.fonte_Sinal|91|*"}));
}

TEST_F(AssinanteTeste, Desliga_Connected_NothingIsHeardAnyMoreUntilConnectedAgain)
{
    ouvinte->Desliga();
    bool cancela = false;
    fonte.Sinal.dispara();
    fonte.Pergunta.dispara(cancela);
    fonte.Chave.dispara("");
    EXPECT_EQ(ouvinte->Sinais, 0);
    EXPECT_FALSE(cancela);

    ouvinte->LigaTudo(fonte);
    fonte.Sinal.dispara();
    EXPECT_EQ(ouvinte->Sinais, 1);
}

TEST_F(AssinanteTeste, Liga_ObjectEnded_NothingIsHeard)
{
    RefFraca<Ouvinte> fraca = ouvinte;
    ouvinte = nullptr;
    EXPECT_TRUE(fraca.Nada()); // a subscription does not keep its object
    fonte.Chave.dispara("");   // would raise
    EXPECT_TRUE(host->Erros().empty());
}

} // namespace
