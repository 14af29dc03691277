#include "tela/PaginasDeAbas.h"

#include "controls/SSTab.h"
#include "tests/controls/Tela.h"

namespace {

class PaginasDeAbasTest : public testing::Test {
  protected:
    static Peca CincoPaginas() { return Chamado<AjustesSSTab>("sstDados", {.Paginas = {"A", "B", "C", "D", "E"}}); }

    Tela m_Tela;
    Ref<SSTab> m_Abas = m_Tela.Poe<SSTab>(CincoPaginas());
};

TEST_F(PaginasDeAbasTest, PaginaVizinha_IsTheNextOneInTheDirection)
{
    m_Abas->DefineTab(2);
    EXPECT_EQ(PaginaVizinha(*m_Abas, 1), std::int16_t{3});
    EXPECT_EQ(PaginaVizinha(*m_Abas, -1), std::int16_t{1});
}

TEST_F(PaginasDeAbasTest, PaginaVizinha_PassesOverPagesThatCannotBeOpened)
{
    m_Abas->DefineTabEnabled(1, false);
    m_Abas->DefineTabVisible(2, false);
    EXPECT_EQ(PaginaVizinha(*m_Abas, 1), std::int16_t{3});
    m_Abas->DefineTab(3);
    EXPECT_EQ(PaginaVizinha(*m_Abas, -1), std::int16_t{0});
}

TEST_F(PaginasDeAbasTest, PaginaVizinha_AtEitherEnd_IsNone)
{
    EXPECT_EQ(PaginaVizinha(*m_Abas, -1), std::nullopt);
    m_Abas->DefineTab(3);
    m_Abas->DefineTabEnabled(4, false);
    EXPECT_EQ(PaginaVizinha(*m_Abas, 1), std::nullopt);
}

TEST_F(PaginasDeAbasTest, PodeAbrir_OnlyWhatIsSeenAndEnabled)
{
    EXPECT_TRUE(PodeAbrir(*m_Abas, 4));
    m_Abas->DefineTabEnabled(4, false);
    EXPECT_FALSE(PodeAbrir(*m_Abas, 4));
    m_Abas->DefineTabEnabled(4, true);
    m_Abas->DefineTabVisible(4, false);
    EXPECT_FALSE(PodeAbrir(*m_Abas, 4));
}

} // namespace
