#include "tests/desk/HospedeiroDeTeste.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace mesa;

namespace {

class AplicacaoMesaTeste : public testing::Test {
  protected:
    std::string Registrados() const
    {
        std::ifstream arquivo(mesa.Diretorio() / "dados" / "modulos.tsv");
        std::ostringstream texto;
        texto << arquivo.rdbuf();
        return texto.str();
    }
    static Ref<ItemMenuModulo> Item(const std::string &banda, const std::string &nome)
    {
        auto item = Novo<ItemMenuModulo>();
        item->Band = banda;
        item->Name = nome;
        return item;
    }

    HospedeiroDeTeste mesa;
};

TEST_F(AplicacaoMesaTeste, IncorporaMenu_OfAModulesItems_AddsEachToItsBand)
{
    Ref<IActBar> menus = mesa.Host->ActBar;
    ItensMenu itens{nullptr, Item("mnuVOR", "mnuUm"), Item("mnuVOR", "mnuDois"), Item("mnuNAB", "mnuTres")};
    mesa.Host->CriaAMEditMenu()->IncorporaMenu(menus, itens, false);
    EXPECT_EQ(menus->Bands()->Count(), 2);
    EXPECT_EQ(menus->Bands()->ItemNome("MNUVOR")->Tools()->Count(), 2);
    EXPECT_EQ(menus->Bands()->ItemNome("mnuNAB")->Tools()->Count(), 1);
    EXPECT_TRUE(menus->Bands()->ItemNome("mnuVOR")->Tools()->ItemNome("mnuDois")->Enabled());

    ItensMenu alguns{nullptr, Item("mnuVOR", "mnuUm"), Item("mnuVOR", "mnuQueNaoHa")};
    mesa.Host->CriaAMEditMenu()->RemoveMenu(menus, alguns);
    EXPECT_EQ(menus->Bands()->ItemNome("mnuVOR")->Tools()->Count(), 1);
    EXPECT_THROW(menus->Bands()->ItemNome("mnuVOR")->Tools()->ItemNome("mnuUm"), Falha);
}

TEST_F(AplicacaoMesaTeste, IncorporaMenu_Again_DoesNotDoubleTheItems)
{
    Ref<IActBar> menus = mesa.Host->ActBar;
    ItensMenu itens{nullptr, Item("mnuVOR", "mnuUm")};
    mesa.Host->CriaAMEditMenu()->IncorporaMenu(menus, itens, false);
    mesa.Host->CriaAMEditMenu()->IncorporaMenu(menus, itens, false);
    EXPECT_EQ(menus->Bands()->ItemNome("mnuVOR")->Tools()->Count(), 1);
}

TEST_F(AplicacaoMesaTeste, RegistraAM_OfComponents_KeepsOneLineEach)
{
    const Ref<IAMRegistro> registro = mesa.Host->CriaAMRegistro();
    registro->RegistraAM("UM", "UM.Geral", "Mesa");
    registro->RegistraAM("UMDOIS", "UMDOIS.Geral", "Mesa");
    registro->RegistraAM("UM", "UM.Outra", "Mesa");
    EXPECT_EQ(Registrados(), "UMDOIS\tUMDOIS.Geral\tMesa\nUM\tUM.Outra\tMesa\n");
    registro->DesregistraAM("UM", "Mesa");
    EXPECT_EQ(Registrados(), "UMDOIS\tUMDOIS.Geral\tMesa\n");
    registro->DesregistraAM("QUEM", "Mesa");
    EXPECT_EQ(Registrados(), "UMDOIS\tUMDOIS.Geral\tMesa\n");
}

TEST_F(AplicacaoMesaTeste, PegaAutoModulo_ByName_GivesTheRegisteredOneOrFault9)
{
    const Ref<Objeto> modulo = Novo<ItemMenuModulo>();
    mesa.Host->cGlobal->Registra("ZTAOUTRO", modulo);
    EXPECT_TRUE(mesa.Host->cGlobal->PegaAutoModulo("ztaoutro") == modulo);
    EXPECT_EQ(FalhaLancada([&] { mesa.Host->cGlobal->PegaAutoModulo("ZTAFALTA"); }).Numero, 9);
}

} // namespace
