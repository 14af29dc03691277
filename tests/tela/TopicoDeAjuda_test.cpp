#include "tela/TopicoDeAjuda.h"

#include "controls/SSTab.h"
#include "tests/tela/FormDescrito.h"

#include <gtest/gtest.h>

namespace {

TEST(TopicoDeAjudaTest, WithoutPages_IsTheFormAlone)
{
    FormDescrito descrito;
    descrito.Faz(UmCampo("txtCodigo", 10));
    EXPECT_EQ(TopicoDeAjuda(*descrito.Form), "FormFalso");
}

TEST(TopicoDeAjudaTest, WithPages_HasTheOneThatIsOpenWithoutItsMark)
{
    FormDescrito descrito;
    descrito.Faz({.Ajustes = AjustesSSTab{.Paginas = {"&Equipamento", "Aferições"}}, .Nome = "sstDados"});
    EXPECT_EQ(TopicoDeAjuda(*descrito.Form), "FormFalso.Equipamento");
    ComoTipo<SSTab>(descrito.Controle("sstDados"))->DefineTab(1);
    EXPECT_EQ(TopicoDeAjuda(*descrito.Form), "FormFalso.Aferições");
}

} // namespace
