#include "tela/DistincaoDeJanela.h"

#include "tests/support/FormFalso.h"

#include <gtest/gtest.h>

namespace {

class FormDeLista : public FormFalso {
  public:
    std::string_view NomeTipo() const override { return "frmLista"; }
};

TEST(DistincaoDeJanela, OfATool_IsToldBesideTheCaptionAndInTheKey)
{
    const FormDeLista form;
    const DistincaoDeJanela fotos{"fotografico", "trabalho fotográfico"};
    EXPECT_EQ(IdentidadeDaJanela(form, fotos), "frmLista.fotografico");
    EXPECT_EQ(TextoDaMoldura("Equipamentos", fotos), "Equipamentos - trabalho fotográfico");
}

TEST(DistincaoDeJanela, WithoutOne_TheClassAndTheCaptionSayEnough)
{
    const FormDeLista form;
    EXPECT_EQ(IdentidadeDaJanela(form, {}), "frmLista");
    EXPECT_EQ(TextoDaMoldura("Equipamentos", {}), "Equipamentos");
}

} // namespace
