#include "controls/ztEndereco.h"

#include "controls/TextBox.h"
#include "tests/controls/Tela.h"

namespace {

class ztEnderecoTest : public testing::Test {
  protected:
    ztEnderecoTest()
    {
        m_Tela.Anota(m_Controle->EntradaOK(), "EntradaOK");
        m_Tela.Anota(m_Controle->Mudou(), "Mudou");
    }

    Tela m_Tela;
    Ref<ztEndereco> m_Controle = m_Tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1"));
    Ref<IEndereco> m_Endereco = m_Controle->Endereco();
};

TEST_F(ztEnderecoTest, Fresh_HasNoAddress)
{
    EXPECT_EQ(m_Controle->NomeTipo(), "ztEndereco");
    EXPECT_EQ(m_Endereco->NomeTipo(), "Endereco");
    EXPECT_EQ(m_Endereco->CodLogradouro(), 0);
    EXPECT_EQ(m_Endereco->Numero(), 0);
    EXPECT_EQ(m_Endereco->Complemento(), "");
    EXPECT_EQ(m_Endereco->Cep(), "");
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "");
    EXPECT_FALSE(m_Controle->ReadOnly());
    EXPECT_TRUE(m_Controle->Ajustes().ObrigarCodigoLogradouro);
    EXPECT_TRUE(m_Controle->Endereco() == m_Endereco);
}

TEST_F(ztEnderecoTest, SetaEndereco_PresetsAndRaisesNothingOfTheModules)
{
    m_Endereco->SetaEndereco(4309209, 12, 340, "ap 2", "93010000", "", 0);
    EXPECT_EQ(m_Endereco->CodLogradouro(), 12);
    EXPECT_EQ(m_Endereco->Numero(), 340);
    EXPECT_EQ(m_Endereco->Complemento(), "ap 2");
    EXPECT_EQ(m_Endereco->Cep(), "93010000");
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "");
    EXPECT_EQ(m_Controle->EnderecoProprio()->CodMunic(), 4309209);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

TEST_F(ztEnderecoTest, SetaEndereco_WhenSomeoneKnowsTheStreet_HasItsText)
{
    const Ref<Endereco> proprio = m_Controle->EnderecoProprio();
    m_Tela.Liga(proprio->AoSetar(), [&] {
        EXPECT_EQ(proprio->CodMunic(), 4309209);
        EXPECT_EQ(proprio->CodLogradouro(), 12);
        proprio->DefineDescricao("Rua da Praia, 340");
    });
    m_Endereco->SetaEndereco(4309209, 12, 340, "", "", "", 0);
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "Rua da Praia, 340");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "Mudou"}));
}

TEST_F(ztEnderecoTest, InformaEndereco_ByThePerson_HoldsItAndRaisesEntradaOKEachTimeUntilItIsEmptied)
{
    for (int vez = 0; vez < 2; ++vez) { // the same again is an entry too
        EXPECT_TRUE(m_Controle->InformaEndereco(7, 90, "fundos", "90000000", "Av. Ipiranga, 90"));
        EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "EntradaOK"}));
    }
    EXPECT_EQ(m_Endereco->CodLogradouro(), 7);
    EXPECT_EQ(m_Endereco->Numero(), 90);
    EXPECT_EQ(m_Endereco->Complemento(), "fundos");
    EXPECT_EQ(m_Endereco->Cep(), "90000000");
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "Av. Ipiranga, 90");
    EXPECT_TRUE(m_Controle->TemFoco());
    EXPECT_TRUE(m_Controle->LimpaEndereco());
    EXPECT_EQ(m_Endereco->CodLogradouro(), 0);
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Mudou", "EntradaOK"}));
}

TEST_F(ztEnderecoTest, InformaEndereco_WithoutStreetCode_IsRefusedWhenTheSettingsAskForOne)
{
    EXPECT_FALSE(m_Controle->InformaEndereco(0, 90, "", "", "Sem código"));
    EXPECT_EQ(m_Endereco->DescricaoEndereco(), "");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    auto ajustes = Chamado<AjustesZtEndereco>("ztEndereco2", {.ObrigarCodigoLogradouro = false});
    const Ref<ztEndereco> livre = m_Tela.Poe<ztEndereco>(ajustes);
    EXPECT_TRUE(livre->InformaEndereco(0, 90, "", "", "Sem código"));
    EXPECT_EQ(livre->Endereco()->DescricaoEndereco(), "Sem código");
}

TEST_F(ztEnderecoTest, InformaEndereco_WhileReadOnlyOrDisabled_IsRefused)
{
    m_Controle->DefineReadOnly(true);
    m_Tela.Vistos();
    EXPECT_FALSE(m_Controle->InformaEndereco(7, 90, "", "", "Av."));
    EXPECT_FALSE(m_Controle->LimpaEndereco());
    m_Controle->DefineReadOnly(false);
    m_Controle->DefineEnabled(false);
    m_Tela.Vistos();
    EXPECT_FALSE(m_Controle->InformaEndereco(7, 90, "", "", "Av."));
    EXPECT_EQ(m_Endereco->CodLogradouro(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztEnderecoTest, InformaEndereco_WhenEntradaOKReleasesTheForm_EndsInPeace)
{
    Tela tela;
    ztEndereco *controle = tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1")).Ponteiro();
    tela.Liga(controle->EntradaOK(), [&] { tela.Solta(); });
    EXPECT_TRUE(controle->InformaEndereco(7, 90, "", "", "Av."));
    EXPECT_TRUE(tela.Form.Nada());
}

TEST_F(ztEnderecoTest, Endereco_KeptLongerThanItsControl_CanStillBeWritten)
{
    Ref<IEndereco> endereco;
    {
        Tela tela;
        endereco = tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1"))->Endereco();
    }
    endereco->SetaEndereco(1, 2, 3, "", "", "", 0);
    EXPECT_EQ(endereco->CodLogradouro(), 2);
}

TEST_F(ztEnderecoTest, InformaEndereco_WhenTheFocusIsLedElsewhereOrClosesIt_IsRefused)
{
    const Ref<TextBox> outro = m_Tela.Poe<TextBox>(Chamado<AjustesTextBox>("txt"));
    {
        const Conexao levado = m_Controle->RecebeuFoco().liga([&] { outro->SetFocus(); });
        EXPECT_FALSE(m_Controle->InformaEndereco(12, 340, "", "", "Rua"));
    }
    const Conexao trancado = m_Controle->RecebeuFoco().liga([&] { m_Controle->DefineReadOnly(true); });
    EXPECT_FALSE(m_Controle->InformaEndereco(12, 340, "", "", "Rua"));
    EXPECT_EQ(m_Endereco->CodLogradouro(), 0);
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Mudou"});
}

} // namespace
