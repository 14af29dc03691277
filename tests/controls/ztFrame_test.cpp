#include "controls/ztFrame.h"

#include "tests/controls/Tela.h"

namespace {

TEST(ztFrame, PintaComoBotao_TellsTheScreenOnceAndStaysSo)
{
    Tela tela;
    const Ref<ztFrame> quadro = tela.PoeFrame("fraDados");
    tela.Anota(quadro->Mudou(), "Mudou");
    EXPECT_FALSE(quadro->ComoBotao());
    quadro->PintaComoBotao();
    quadro->PintaComoBotao();
    EXPECT_TRUE(quadro->ComoBotao());
    EXPECT_EQ(tela.Vistos(), Textos{"Mudou"});
}

} // namespace
