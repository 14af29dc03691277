#include "services/LogradourosAntigos.h"
#include "services/Referencias.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace mesa;

namespace {

// What each state's codes begin with.
const std::map<std::string, std::int32_t> Prefixos = {
    {"RO", 11}, {"AC", 12}, {"AM", 13}, {"RR", 14}, {"PA", 15}, {"AP", 16}, {"TO", 17}, {"MA", 21}, {"PI", 22},
    {"CE", 23}, {"RN", 24}, {"PB", 25}, {"PE", 26}, {"AL", 27}, {"SE", 28}, {"BA", 29}, {"MG", 31}, {"ES", 32},
    {"RJ", 33}, {"SP", 35}, {"PR", 41}, {"SC", 42}, {"RS", 43}, {"MS", 50}, {"MT", 51}, {"GO", 52}, {"DF", 53}};

TEST(ReferenciasTeste, Municipios_OfTheCountry_AreAllThereInOrderOfCode)
{
    const auto &municipios = Referencias::Tabelas().Municipios();
    EXPECT_EQ(municipios.size(), 5571U);
    std::map<std::string, int> porEstado;
    std::set<std::int32_t> codigosDaReceita;
    std::int32_t anterior = 0;
    for (const Municipio &municipio : municipios) {
        EXPECT_GT(municipio.Codigo, anterior) << municipio.Nome;
        anterior = municipio.Codigo;
        EXPECT_EQ(municipio.Codigo / 100000, Prefixos.at(municipio.UF)) << municipio.Nome;
        EXPECT_FALSE(municipio.Nome.empty()) << municipio.Codigo;
        EXPECT_TRUE(municipio.CodReceita > 0 && municipio.CodReceita <= 9999) << municipio.Nome;
        codigosDaReceita.insert(municipio.CodReceita);
        ++porEstado[municipio.UF];
    }
    EXPECT_EQ(codigosDaReceita.size(), municipios.size());
    EXPECT_EQ(porEstado.size(), 27U);
    EXPECT_EQ(porEstado["DF"], 1);
    EXPECT_EQ(porEstado["RR"], 15);
    EXPECT_EQ(porEstado["AP"], 16);
    EXPECT_EQ(porEstado["RJ"], 92);
    EXPECT_EQ(porEstado["RS"], 497);
    EXPECT_EQ(porEstado["SP"], 645);
    EXPECT_EQ(porEstado["MG"], 853);
}

TEST(ReferenciasTeste, AchaMunicipio_ByItsCode_IsThatOneAlone)
{
    const Referencias &tabelas = Referencias::Tabelas();
    const Municipio *cidade = tabelas.AchaMunicipio(3550308);
    ASSERT_NE(cidade, nullptr);
    EXPECT_EQ(cidade->Nome, "São Paulo");
    EXPECT_EQ(cidade->UF, "SP");
    EXPECT_EQ(cidade->CodReceita, 7107);
    EXPECT_EQ(tabelas.AchaMunicipio(1100015)->Nome, "Alta Floresta D'Oeste");
    EXPECT_EQ(tabelas.AchaMunicipio(5300108)->UF, "DF");
    for (const std::int32_t codigo : {-1, 0, 1, 1100014, 3550309, 5300109, 9999999}) {
        EXPECT_EQ(tabelas.AchaMunicipio(codigo), nullptr) << codigo;
        EXPECT_FALSE(tabelas.TemMunicipio(codigo)) << codigo;
    }
    EXPECT_TRUE(tabelas.TemMunicipio(4314902));
}

TEST(ReferenciasTeste, Estados_OfTheCountry_AreThese27)
{
    const Referencias &tabelas = Referencias::Tabelas();
    EXPECT_EQ(tabelas.Estados().size(), 27U);
    for (const auto &[uf, prefixo] : Prefixos) {
        EXPECT_TRUE(tabelas.TemEstado(uf)) << uf;
    }
    EXPECT_FALSE(tabelas.TemEstado("") || tabelas.TemEstado("rs") || tabelas.TemEstado("XX"));
}

// Codes that the first version of the program gave, with the streets that it showed for them.
TEST(LogradourosAntigosTeste, LogradouroDoCodigoAntigo_OfACodeOfTheFirstRegistries_IsThatStreet)
{
    const auto texto = [](std::int32_t codigo) { return LogradouroDoCodigoAntigo(codigo)->Texto(); };
    EXPECT_EQ(texto(1001), "LogradouroED{CodLograd=1001, CodMunic=4300034, Nome=\"Rua Bento Gonçalves\", "
                           "Bairro=\"Centro\", Cep=\"90000010\", Ativo=1}");
    EXPECT_EQ(texto(1040), "LogradouroED{CodLograd=1040, CodMunic=4300034, Nome=\"Avenida Ipiranga\", "
                           "Bairro=\"Jardim Botânico\", Cep=\"90000400\", Ativo=1}");
    EXPECT_EQ(texto(2031), "LogradouroED{CodLograd=2031, CodMunic=4300059, Nome=\"Rodovia RS-020\", "
                           "Bairro=\"Zona Rural\", Cep=\"90020310\", Ativo=1}");
    EXPECT_EQ(texto(497039), "LogradouroED{CodLograd=497039, CodMunic=4323804, Nome=\"Rua Anita Garibaldi\", "
                             "Bairro=\"Mont'Serrat\", Cep=\"99920390\", Ativo=1}");
}

TEST(LogradourosAntigosTeste, LogradouroDoCodigoAntigo_OfACodeThatNoStreetHad_IsNothing)
{
    for (const std::int32_t codigo : {-1001, -1, 0, 1, 40, 1000, 1041, 1999, 497000, 497041, 498001, INT32_MAX}) {
        EXPECT_TRUE(LogradouroDoCodigoAntigo(codigo).Nada()) << codigo;
    }
    int ruas = 0;
    for (std::int32_t codigo = 0; codigo < 600000; ++codigo) {
        ruas += LogradouroDoCodigoAntigo(codigo).Nada() ? 0 : 1;
    }
    EXPECT_EQ(ruas, 497 * 40);
}

} // namespace
