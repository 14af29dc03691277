#include "host/IAplicacaoHost.h"

#include "tests/support/AplicacaoRoteirizada.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

class GlobalSemMembros : public IcGlobal {
  public:
    std::string_view NomeTipo() const override { return "cGlobal"; }
};

TEST(IFormMDI, Probes_OfAnObjectThatLacksThem_AreFault438)
{
    FormQualquer form;
    std::string texto = "enviando";
    const std::vector<std::function<void()>> membros = {
        [&] { form.AutoShowChildren(); },
        [&] { form.objZTP(); },
        [&] { form.PossuiJanelaEnviaRecebe(); },
        [&] { form.ScaleWidth(); },
        [&] { form.ScaleHeight(); },
        [&] { form.Left(); },
        [&] { form.Top(); },
        [&] { form.Width(); },
        [&] { form.Height(); },
        [&] { form.MsgEnviaRecebe(texto); },
        [&] { form.AbrirEnviaRecebe(); },
        [&] { form.FecharEnviaRecebe(true); },
    };
    for (const auto &membro : membros) {
        EXPECT_EQ(FalhaLancada(membro).Numero, 438);
    }
    EXPECT_EQ(texto, "enviando");
}

TEST(IcGlobal, Members_OfAHostThatLacksThem_AreFault438)
{
    GlobalSemMembros global;
    std::string tool = "mnuModVOREquiptos";
    EXPECT_EQ(FalhaLancada([&] { global.MontaEstruturaMenus(tool, "ZTAVOREQUIP"); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { global.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { global.PegaAutoModulo("ZTAVORINFR"); }).Numero, 438);
    EXPECT_EQ(FalhaLancada([&] { global.gfunRetornaAutoModulo("ZTAVORINFR"); }).Numero, 438);
}

TEST(ItemMenuModulo, Fresh_IsAlwaysShownAndCanBeDisabled)
{
    const ItemMenuModulo item;
    EXPECT_EQ(item.NomeTipo(), "ItemMenuModulo");
    EXPECT_EQ(item.Name, "");
    EXPECT_FALSE(item.NeverDisabled);
    EXPECT_FALSE(item.HideWhenDisable);
}

} // namespace
