#include "controls/ztClienteSetor.h"

#include "tests/controls/Tela.h"

namespace {

class ztClienteSetorTest : public testing::Test {
  protected:
    ztClienteSetorTest()
    {
        m_Tela.Anota(m_Cliente->Change(), "Change");
        m_Tela.Anota(m_Cliente->Mudou(), "Mudou");
        m_Tela.Liga(m_Cliente->AoAvisar(), [this](const std::string &aviso) { m_Tela.Eventos.push_back(aviso); });
    }

    Tela m_Tela;
    Ref<ztClienteSetor> m_Cliente = m_Tela.Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente"));
};

TEST_F(ztClienteSetorTest, Fresh_HasNoClient)
{
    EXPECT_EQ(m_Cliente->NomeTipo(), "ztClienteSetor");
    EXPECT_EQ(m_Cliente->Cliente(), "");
    EXPECT_EQ(m_Cliente->Setor(), "");
    EXPECT_EQ(m_Cliente->CodCliente(), 0);
}

TEST_F(ztClienteSetorTest, Escolhe_OfAnother_RaisesChange)
{
    EXPECT_TRUE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", "Sul"));
    EXPECT_EQ(m_Cliente->Cliente(), "Autoridade das Estradas de Rodagem");
    EXPECT_EQ(m_Cliente->Setor(), "Sul");
    EXPECT_TRUE(m_Cliente->TemFoco());
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
    EXPECT_TRUE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", "Sul"));
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", ""));
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Change"}));
}

TEST_F(ztClienteSetorTest, Escolhe_WhileDisabled_IsRefused)
{
    m_Cliente->DefineEnabled(false);
    m_Tela.Vistos();
    EXPECT_FALSE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", ""));
    EXPECT_EQ(m_Cliente->Cliente(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztClienteSetorTest, Valida_WithoutClient_AnswersFalseAndTellsThePerson)
{
    EXPECT_FALSE(m_Cliente->Valida());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Informe o cliente!"});
    EXPECT_TRUE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", ""));
    m_Tela.Vistos();
    EXPECT_TRUE(m_Cliente->Valida());
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztClienteSetorTest, DefineCodCliente_AsksForTheClientThatItStartsWith)
{
    m_Tela.Liga(m_Cliente->AoDefinirCodCliente(), [&] {
        EXPECT_EQ(m_Cliente->CodCliente(), 2);
        m_Cliente->PresetaCliente("Autoridade Municipal de Trânsito", "Centro");
    });
    m_Cliente->DefineCodCliente(2);
    EXPECT_EQ(m_Cliente->Cliente(), "Autoridade Municipal de Trânsito");
    EXPECT_EQ(m_Cliente->Setor(), "Centro");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(ztClienteSetorTest, Escolhe_WhenChangeReleasesTheForm_EndsInPeace)
{
    Tela tela;
    ztClienteSetor *cliente = tela.Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente")).Ponteiro();
    tela.Liga(cliente->Mudou(), [&] { tela.Solta(); });
    tela.Anota(cliente->Change(), "Change");
    EXPECT_TRUE(cliente->Escolhe("Autoridade das Estradas de Rodagem", ""));
    EXPECT_EQ(tela.Vistos(), Textos{"Change"});
}

TEST_F(ztClienteSetorTest, Escolhe_WhenTheFocusDisablesIt_IsRefused)
{
    m_Tela.Liga(m_Cliente->RecebeuFoco(), [&] { m_Cliente->DefineEnabled(false); });
    EXPECT_FALSE(m_Cliente->Escolhe("Autoridade das Estradas de Rodagem", ""));
    EXPECT_EQ(m_Cliente->Cliente(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

} // namespace
