#include "host/Correspondencia.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>

namespace {

struct Viajante {
    Campo<std::int32_t> Numero;
    Campo<std::string> Nome;
    Campo<std::string> Marca;
    Campo<std::int16_t> Veloc;
    Campo<std::uint8_t> Indicado;
};

struct Guardado {
    std::int32_t Numero = 0;
    std::string Nome;
    std::string Marca;
    std::int16_t Veloc = 0;
    bool Indicado = false;
};

constexpr std::tuple Campos{Par{&Viajante::Numero, &Guardado::Numero, Escreve::SeHouver},
                            Par{&Viajante::Nome, &Guardado::Nome, Escreve::SeHouver},
                            Par{&Viajante::Marca, &Guardado::Marca}, Par{&Viajante::Veloc, &Guardado::Veloc},
                            Par{&Viajante::Indicado, &Guardado::Indicado}};

TEST(Correspondencia, EscreveCampos_OfAnEmptyRecord_LeavesUnsetWhatTravelsOnlyWhenThere)
{
    Viajante ed;
    EscreveCampos<Campos>(Guardado{}, ed);
    EXPECT_FALSE(ed.Numero.Escrito());
    EXPECT_FALSE(ed.Nome.Escrito());
    EXPECT_TRUE(ed.Marca.Escrito());
    EXPECT_TRUE(ed.Veloc.Escrito());
    EXPECT_EQ(ed.Indicado.Valor(), 2);
}

TEST(Correspondencia, EscreveCampos_OfAFullRecord_WritesEachValue)
{
    Viajante ed;
    EscreveCampos<Campos>(Guardado{7, "sensor", "A", 80, true}, ed);
    EXPECT_EQ(ed.Numero.Valor(), 7);
    EXPECT_EQ(ed.Nome.Valor(), "sensor");
    EXPECT_EQ(ed.Marca.Valor(), "A");
    EXPECT_EQ(ed.Veloc.Valor(), 80);
    EXPECT_EQ(ed.Indicado.Valor(), 1);
}

TEST(Correspondencia, EscreveCampos_OfANegativeNumber_LeavesItUnset)
{
    Viajante ed;
    EscreveCampos<Campos>(Guardado{-1, "", "", -5, false}, ed);
    EXPECT_FALSE(ed.Numero.Escrito());
    EXPECT_EQ(ed.Veloc.Valor(), -5); // always travels
}

TEST(Correspondencia, LeCampos_OfWhatTravelled_TakesOverEveryMemberSetOrNot)
{
    Viajante ed;
    ed.Numero = 7;
    ed.Nome = "sensor";
    ed.Indicado = 1;
    Guardado guardado{1, "outro", "B", 40, false};
    LeCampos<Campos>(guardado, ed);
    EXPECT_EQ(guardado.Numero, 7);
    EXPECT_EQ(guardado.Nome, "sensor");
    EXPECT_EQ(guardado.Marca, "");
    EXPECT_EQ(guardado.Veloc, 0);
    EXPECT_TRUE(guardado.Indicado);
}

TEST(Correspondencia, LeCampos_OfAFlag_IsYesForOneAlone)
{
    for (const int octeto : {0, 2, 3, 255}) {
        Viajante ed;
        ed.Indicado = static_cast<std::uint8_t>(octeto);
        Guardado guardado{0, "", "", 0, true};
        LeCampos<Campos>(guardado, ed);
        EXPECT_FALSE(guardado.Indicado) << octeto;
    }
}

} // namespace
