#include "tests/desk/RegistroDeTeste.h"

#include <gtest/gtest.h>

namespace {

TEST(ServicosEquipamento, inclui_OfAWholeEquipment_AnswersWhatWasStored)
{
    RegistroDeTeste registro;
    const auto ana = registro.Sessao("ana");
    const Retorno retorno = Pede(ana, "inclui", EquipamentoDe("R-001"));
    ASSERT_TRUE(retorno.Feita) << retorno.Recusa;
    const auto e = retorno.Como<EquiptoED>();
    EXPECT_EQ(e->NroIntEquip.Valor(), 1);
    EXPECT_EQ(e->ClienteInc.Valor(), "DETRAN/RS");
    EXPECT_EQ(e->SetorInc.Valor(), "");
    EXPECT_EQ(e->Codigo.Valor(), "R-001");
    EXPECT_EQ(e->Descricao.Valor(), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(e->TipoEquip.Valor(), "P");
    EXPECT_EQ(e->VelocPermitida.Valor(), 60);
    EXPECT_EQ(e->Ativo.Valor(), 1); // whatever byte came
    EXPECT_EQ(e->ClienteTrans.Valor(), "DETRAN/RS");
    EXPECT_EQ(e->OperadorTrans.Valor(), 1.0);
    EXPECT_EQ(e->DataTrans.Valor(), 20261120);
    EXPECT_EQ(e->HoraTrans.Valor(), 100000);
    EXPECT_EQ(Consulta(ana, 1)->Texto(), e->Texto());
}

} // namespace
