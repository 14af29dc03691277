#include "tela/FormsAbertos.h"

#include "tela/Janelas.h"
#include "tests/tela/CamadaFalsa.h"

namespace {

class FormsAbertosTest : public testing::Test {
  protected:
    static std::int32_t Numero(const std::function<void()> &acao) { return FalhaLancada(acao).Numero; }

    Ref<CamadaFalsa> m_Camada = Novo<CamadaFalsa>();
    Ref<Janelas> m_Janelas = Novo<Janelas>(m_Camada);
    FormsAbertos m_Forms{m_Janelas};
    Ref<FormFalso> m_Um = Novo<FormFalso>();
    Ref<FormFalso> m_Dois = Novo<FormFalso>();
};

TEST_F(FormsAbertosTest, Form_LoadedTwice_IsOpenOnceAtItsPosition)
{
    EXPECT_EQ(Numero([&] { m_Forms.Form(0); }), 9);
    m_Forms.Carrega(m_Um);
    m_Forms.Carrega(m_Dois);
    m_Forms.Carrega(m_Um);
    EXPECT_EQ(m_Forms.Quantos(), 2);
    EXPECT_TRUE(m_Forms.Tem(m_Dois));
    EXPECT_FALSE(m_Forms.Tem(Novo<FormFalso>()));
    EXPECT_TRUE(m_Forms.Form(0) == m_Um);
    EXPECT_TRUE(m_Forms.Form(1) == m_Dois);
    EXPECT_EQ(Numero([&] { m_Forms.Form(2); }), 9);
    EXPECT_EQ(Numero([&] { m_Forms.Form(-1); }), 9);
}

TEST_F(FormsAbertosTest, Descarrega_ThatTheFormCancels_LeavesItOpenWithItsWindow)
{
    m_Forms.Carrega(m_Um);
    m_Janelas->MostraForm(m_Um, false);
    m_Camada->Anotados.clear();
    m_Um->CancelaUnload = true;
    m_Forms.Descarrega(m_Um);
    EXPECT_EQ(m_Forms.Quantos(), 1);
    EXPECT_EQ(m_Camada->Anotados, Textos{});
    m_Um->CancelaUnload = false;
    m_Forms.Descarrega(m_Um);
    EXPECT_EQ(m_Forms.Quantos(), 0);
    EXPECT_EQ(m_Camada->Anotados, (Textos{"retira FormFalso"}));
    m_Forms.Descarrega(m_Um);
    EXPECT_EQ(m_Um->Unloads, 2);
}

TEST_F(FormsAbertosTest, Descarrega_FromWithinTheUnload_IsNotBegunAgain)
{
    m_Forms.Carrega(m_Um);
    m_Forms.Carrega(m_Dois);
    m_Um->NoUnload = [&] {
        m_Forms.Descarrega(m_Um);
        m_Forms.Descarrega(m_Dois);
    };
    m_Forms.Descarrega(m_Forms.Form(0));
    EXPECT_EQ(m_Um->Unloads, 1);
    EXPECT_EQ(m_Dois->Unloads, 1);
    EXPECT_EQ(m_Forms.Quantos(), 0);
    m_Um->NoUnload = nullptr;
}

TEST_F(FormsAbertosTest, Descarrega_WhoseUnloadRaises_CanBeTriedAgain)
{
    m_Forms.Carrega(m_Um);
    m_Um->NoUnload = [] { throw Falha(5); };
    EXPECT_EQ(Numero([&] { m_Forms.Descarrega(m_Um); }), 5);
    EXPECT_EQ(m_Forms.Quantos(), 1);
    m_Um->NoUnload = nullptr;
    m_Forms.Descarrega(m_Um);
    EXPECT_EQ(m_Forms.Quantos(), 0);
}

TEST_F(FormsAbertosTest, DefineTexto_IsOfOpenFormsOnly)
{
    EXPECT_FALSE(m_Forms.DefineTexto(m_Um->hwnd(), "cedo"));
    m_Forms.Carrega(m_Um);
    m_Janelas->MostraForm(m_Um, false);
    m_Camada->Anotados.clear();
    EXPECT_TRUE(m_Forms.DefineTexto(m_Um->hwnd(), "Título"));
    EXPECT_FALSE(m_Forms.DefineTexto(m_Dois->hwnd(), "de outra"));
    EXPECT_EQ(m_Camada->Anotados, (Textos{"texto Título FormFalso"}));
}

} // namespace
