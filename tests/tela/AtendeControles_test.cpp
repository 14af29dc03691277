#include "tela/AtendeControles.h"

#include "controls/CommonDialog.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztEndereco.h"
#include "tela/Janelas.h"
#include "tests/tela/CamadaFalsa.h"
#include "tests/tela/RuasDeTeste.h"

namespace {

class AtendeControlesTest : public testing::Test {
  protected:
    template <class C> Ref<C> Poe(const Peca &peca)
    {
        return m_Form->Guarda(ComoTipo<C>(m_Fabrica->Cria(m_Form, peca, nullptr, -1)));
    }

    Ref<CamadaFalsa> m_Camada = Novo<CamadaFalsa>();
    Ref<Janelas> m_Janelas = Novo<Janelas>(m_Camada);
    Ref<FabricaControles> m_Fabrica = Novo<FabricaControles>();
    AtendeControles m_Atende{*m_Fabrica, m_Janelas, Novo<RuasDeTeste>(),
                             [](std::int32_t codigo) { return "CLIENTE " + std::to_string(codigo); }, "Título"};
    Ref<FormFalso> m_Form = FormNaTela();
};

TEST_F(AtendeControlesTest, ShowOpen_TakesTheFileChosen_AndKeepsItWhenTheNextIsCancelled)
{
    const auto dialogo = Poe<CommonDialog>(Chamado<AjustesCommonDialog>("cdAbreArquivos"));
    dialogo->DefineFilter("PDF (*.pdf)|*.pdf");
    dialogo->DefineDialogTitle("Selecione o arquivo");
    dialogo->ShowOpen();
    EXPECT_EQ(m_Camada->Anotados, (Textos{"arquivo Selecione o arquivo <PDF (*.pdf)=*.pdf>"}));
    EXPECT_EQ(dialogo->FileName(), "C:\\a.pdf");
    m_Camada->ArquivoEscolhido.reset();
    dialogo->ShowOpen();
    EXPECT_EQ(dialogo->FileName(), "C:\\a.pdf");
}

TEST_F(AtendeControlesTest, ClientPicker_WithoutAClient_SaysSoUnderTheHostsTitle)
{
    const auto cliente = Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente"));
    EXPECT_FALSE(cliente->Valida());
    EXPECT_EQ(m_Camada->Anotados, (Textos{"avisa Título: Informe o cliente!"}));
}

TEST_F(AtendeControlesTest, ClientPicker_GivenANumber_StartsWithThatClientAndAllSectors)
{
    const auto cliente = Poe<ztClienteSetor>(Chamado<AjustesZtClienteSetor>("ztCliente"));
    int mudancas = 0;
    const Conexao conexao = cliente->Change().liga([&] { ++mudancas; });
    cliente->DefineCodCliente(7);
    EXPECT_EQ(cliente->Cliente(), "CLIENTE 7");
    EXPECT_EQ(cliente->Setor(), "");
    EXPECT_TRUE(cliente->Valida());
    EXPECT_EQ(mudancas, 0);
}

TEST_F(AtendeControlesTest, Address_PresetByItsCodes_GetsTheTextOfAStreetThatIsKnown)
{
    const auto endereco = Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1"));
    endereco->Endereco()->SetaEndereco(Canoas, 2, 15, "casa", "92000020", "", 0);
    EXPECT_EQ(endereco->Endereco()->DescricaoEndereco(), "Rua Benta, 15 - casa - Norte");
    endereco->Endereco()->SetaEndereco(Canoas, 99, 15, "", "", "", 0);
    EXPECT_EQ(endereco->Endereco()->DescricaoEndereco(), "");
}

} // namespace
