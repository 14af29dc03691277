#include "tela/Partes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<Parte> De(EspecieControle especie)
{
    const auto partes = PartesDe(especie);
    return {partes.begin(), partes.end()};
}

TEST(PartesTest, PartesDe_EachKind_StandInTheOrderOfTab)
{
    using enum Parte;
    EXPECT_EQ(De(EspecieControle::ztEndereco), (std::vector{Municipio, Via, Numero, Complemento, Usar, Limpar}));
    EXPECT_EQ(De(EspecieControle::ztClienteSetor), (std::vector{Cliente, Setor}));
    EXPECT_EQ(De(EspecieControle::ztList), (std::vector{Localizar, Linhas, MaisRegistros, Filtro}));
    EXPECT_EQ(De(EspecieControle::TextBox), std::vector{Todo});
}

TEST(PartesTest, ParteDoFoco_IsOneOfTheControls)
{
    EXPECT_EQ(ParteDoFoco(EspecieControle::ztEndereco), Parte::Via);
    EXPECT_EQ(ParteDoFoco(EspecieControle::ztClienteSetor), Parte::Cliente);
    EXPECT_EQ(ParteDoFoco(EspecieControle::ztList), Parte::Linhas);
    EXPECT_EQ(ParteDoFoco(EspecieControle::CommandButton), Parte::Todo);
}

TEST(PartesTest, RotulosDasPartes_AreThoseWithWhichRowsOfAPickerBegin)
{
    const auto rotulos = [](EspecieControle especie) {
        const auto captions = RotulosDasPartes(especie);
        return std::vector<std::string_view>(captions.begin(), captions.end());
    };
    EXPECT_EQ(rotulos(EspecieControle::ztEndereco),
              (std::vector<std::string_view>{"Município:", "Logradouro ou CEP:", "Número:"}));
    EXPECT_EQ(rotulos(EspecieControle::ztClienteSetor), std::vector<std::string_view>{"Cliente:"});
    EXPECT_TRUE(rotulos(EspecieControle::ztList).empty());
}

} // namespace
