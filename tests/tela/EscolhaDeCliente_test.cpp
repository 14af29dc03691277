#include "tela/EscolhaDeCliente.h"

#include "tests/controls/Tela.h"

namespace {

class EscolhaDeClienteTest : public testing::Test {
  protected:
    EscolhaDeClienteTest() { m_Tela.Anota(m_Controle->Change(), "Change"); }

    Tela m_Tela;
    Ref<ztClienteSetor> m_Controle = m_Tela.Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente"));
    EscolhaDeCliente m_Escolha{m_Controle,
                               {{"Autoridade Estadual de Trânsito", {"Metrologia", "Fiscalização"}},
                                {"Autoridade Municipal de Trânsito", {"Fiscalização"}},
                                {"PRF", {}}}};
};

TEST_F(EscolhaDeClienteTest, AtFirst_NoClientAndAllSectors)
{
    EXPECT_EQ(m_Escolha.Cliente(), -1);
    EXPECT_EQ(m_Escolha.Setores(), Textos{"Todos os setores"});
    EXPECT_EQ(m_Escolha.Setor(), 0);
    EXPECT_EQ(m_Escolha.Clientes().size(), 3U);
}

TEST_F(EscolhaDeClienteTest, EscolheCliente_OffersItsSectorsAndBeginsWithAll)
{
    EXPECT_TRUE(m_Escolha.EscolheCliente(0));
    EXPECT_EQ(m_Controle->Cliente(), "Autoridade Estadual de Trânsito");
    EXPECT_EQ(m_Escolha.Setores(), (Textos{"Todos os setores", "Metrologia", "Fiscalização"}));
    EXPECT_TRUE(m_Escolha.EscolheSetor(2));
    EXPECT_EQ(m_Controle->Setor(), "Fiscalização");
    EXPECT_EQ(m_Escolha.Setor(), 2);
    EXPECT_TRUE(m_Escolha.EscolheCliente(1));
    EXPECT_EQ(m_Controle->Setor(), "");
    EXPECT_EQ(m_Escolha.Setor(), 0);
    EXPECT_EQ(m_Escolha.Setores(), (Textos{"Todos os setores", "Fiscalização"}));
    EXPECT_EQ(m_Tela.Vistos(), Textos(3, "Change"));
}

TEST_F(EscolhaDeClienteTest, EscolheSetor_OfTheFirst_StandsForAll)
{
    m_Escolha.EscolheCliente(0);
    m_Escolha.EscolheSetor(1);
    EXPECT_EQ(m_Controle->Setor(), "Metrologia");
    EXPECT_TRUE(m_Escolha.EscolheSetor(0));
    EXPECT_EQ(m_Controle->Setor(), "");
    EXPECT_EQ(m_Controle->Cliente(), "Autoridade Estadual de Trânsito");
}

TEST_F(EscolhaDeClienteTest, Letters_FindClientsAndSectors)
{
    EXPECT_TRUE(m_Escolha.PesquisaDeClientes().Digita("autoridade m"));
    EXPECT_EQ(m_Escolha.Cliente(), 1);
    EXPECT_TRUE(m_Escolha.PesquisaDeSetores().Digita("FISCALIZACAO"));
    EXPECT_EQ(m_Controle->Setor(), "Fiscalização");
    m_Tela.Vistos();
    m_Escolha.PesquisaDeClientes().Encerra();
    EXPECT_TRUE(m_Escolha.PesquisaDeClientes().Digita("autoridade m")); // by way of the other one
    EXPECT_EQ(m_Escolha.Cliente(), 1);
    EXPECT_FALSE(m_Escolha.PesquisaDeClientes().Digita("z"));
    EXPECT_EQ(m_Escolha.Cliente(), 1);
    m_Controle->DefineEnabled(false);
    EXPECT_FALSE(m_Escolha.PesquisaDeSetores().Digita("t"));
}

TEST_F(EscolhaDeClienteTest, Preset_IsShown_AndAClientOrSectorThatIsNotOfferedIsNone)
{
    m_Controle->PresetaCliente("Autoridade Municipal de Trânsito", "Fiscalização");
    EXPECT_EQ(m_Escolha.Cliente(), 1);
    EXPECT_EQ(m_Escolha.Setor(), 1);
    m_Controle->PresetaCliente("Autoridade Municipal de Trânsito", "Metrologia");
    EXPECT_EQ(m_Escolha.Setor(), -1);
    m_Controle->PresetaCliente("Autoridade das Estradas de Rodagem", "Metrologia");
    EXPECT_EQ(m_Escolha.Cliente(), -1);
    EXPECT_EQ(m_Escolha.Setor(), -1);
    m_Controle->PresetaCliente("Autoridade Municipal de Trânsito",
                               "Todos os setores"); // a sector of that name would be one
    EXPECT_EQ(m_Escolha.Setor(), -1);
}

TEST_F(EscolhaDeClienteTest, Choices_OutsideOrRefused_ChangeNothing)
{
    EXPECT_FALSE(m_Escolha.EscolheCliente(-1));
    EXPECT_FALSE(m_Escolha.EscolheCliente(3));
    EXPECT_FALSE(m_Escolha.EscolheSetor(-1));
    EXPECT_FALSE(m_Escolha.EscolheSetor(1));
    m_Controle->DefineEnabled(false);
    EXPECT_FALSE(m_Escolha.EscolheCliente(0));
    EXPECT_FALSE(m_Escolha.EscolheSetor(0));
    EXPECT_EQ(m_Controle->Cliente(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

} // namespace
