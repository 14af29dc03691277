#include "tests/host_contract/ContratoHost.h"

#include <cctype>

namespace {

const std::string Municipios =
    "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO";

bool TemAcento(const std::string &texto)
{
    return Len(texto) != texto.size();
}

TEST_P(ContratoHost, Banco_OfTheMunicipalities_GivesThoseOfTheStateByName)
{
    const auto nomes = Coluna("NOME_MUNICIPIO", Municipios);
    ASSERT_GE(nomes.size(), 2U);
    // How accents sort is the database's own affair.
    for (std::size_t indice = 1; indice < nomes.size(); ++indice) {
        const std::string anterior = Left(nomes[indice - 1], 1);
        const std::string este = Left(nomes[indice], 1);
        if (!TemAcento(anterior) && !TemAcento(este)) {
            EXPECT_LE(UCase(anterior), UCase(este)) << nomes[indice - 1] << ", " << nomes[indice];
        }
    }
    for (const auto &uf : Coluna("UF_MUNIC", Municipios)) {
        EXPECT_EQ(uf, "RS");
    }
    for (const auto &renavam : Coluna("COD_RENAVAM", Municipios)) {
        EXPECT_GT(CLng(renavam), 0);
    }
}

TEST_P(ContratoHost, Banco_OfAMunicipalityByItsCode_GivesItsOneRow)
{
    const std::string codigo = Coluna("COD_MUNIC", Municipios).at(0);
    const std::string nome = Coluna("NOME_MUNICIPIO", Municipios).at(0);
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", "SELECT * FROM Municipio WHERE COD_MUNIC = " + codigo),
              std::vector<std::string>{nome});
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", "SELECT * FROM Municipio WHERE COD_MUNIC = -5").size(), 0U);
}

TEST_P(ContratoHost, Banco_UCASE_RaisesTheAccentedLettersToo)
{
    std::string acentuado;
    for (const auto &nome : Coluna("NOME_MUNICIPIO", Municipios)) {
        if (TemAcento(nome) && nome.find('\'') == std::string::npos) {
            acentuado = nome;
        }
    }
    ASSERT_FALSE(acentuado.empty());
    const auto achados =
        Coluna("NOME_MUNICIPIO",
               "SELECT NOME_MUNICIPIO FROM Municipio WHERE UCASE(NOME_MUNICIPIO) = '" + UCase(acentuado) + "'");
    ASSERT_GE(achados.size(), 1U);
    EXPECT_EQ(achados[0], acentuado);
}

TEST_P(ContratoHost, Banco_OfABrokenText_Raises)
{
    EXPECT_NE(NumeroDaFalha([&] { Consulta("SELECT * FROM Municipio WHERE NOME_MUNICIPIO = 'D'OESTE'"); }), 0);
    EXPECT_NE(NumeroDaFalha([&] { Consulta("SELECT * FROM TabelaQueNaoExiste"); }), 0);
}

TEST_P(ContratoHost, Cursor_OfRows_CountsThemFromTheStartAndEndsBehindTheLast)
{
    Ref<ICursor> cursor = Consulta(Municipios);
    const std::int32_t linhas = cursor->RecordCount();
    std::int32_t lidas = 0;
    for (; !cursor->EOF_() && lidas <= linhas; cursor->MoveNext()) {
        ++lidas;
    }
    EXPECT_EQ(lidas, linhas);
    EXPECT_EQ(cursor->RecordCount(), linhas);
    EXPECT_EQ(NumeroDaFalha([&] { cursor->Fields("COD_MUNIC"); }), 3021);
    cursor->Close();
}

TEST_P(ContratoHost, Cursor_WithoutRows_IsAtItsEndFromTheStart)
{
    Ref<ICursor> cursor = Consulta("SELECT * FROM Municipio WHERE COD_MUNIC = -5");
    EXPECT_TRUE(cursor->EOF_());
    EXPECT_EQ(cursor->RecordCount(), 0);
    cursor->Close();
}

TEST_P(ContratoHost, Cursor_Fields_IgnoresTheCaseOfTheName)
{
    Ref<ICursor> cursor = Consulta(Municipios);
    EXPECT_EQ(cursor->Fields("nome_municipio")->Value().CStr(), cursor->Fields("NOME_MUNICIPIO")->Value().CStr());
    EXPECT_EQ(NumeroDaFalha([&] { cursor->Fields("COR"); }), 3265);
    cursor->Close();
}

TEST_P(ContratoHost, Cursor_ValueOfARow_StaysWhenTheCursorMovesOn)
{
    Ref<ICursor> cursor = Consulta(Municipios);
    const std::string primeiro = Coluna("NOME_MUNICIPIO", Municipios).at(0);
    const Valor valor = cursor->Fields("NOME_MUNICIPIO")->Value();
    cursor->MoveNext();
    EXPECT_EQ(valor.CStr(), primeiro);
    cursor->Close();
}

TEST_P(ContratoHost, Banco_OfTheEquipment_FindsASavedOneByItsCode)
{
    const std::int32_t numero = Incluido("CTR_1");
    Ref<ITrataBD> trataBD = adaptador->objMTM()->CreateQMR()->CreateNewTrataBD();
    trataBD->TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor());
    const std::string sql = "         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = '" +
                            adaptador->objMTM()->ClienteLogado() + "'     AND UCASE(Codigo) = 'CTR_1'";
    EXPECT_EQ(Coluna("NroIntEquip", sql + "     AND Ativo = 1 "), std::vector<std::string>{CStr(numero)});
    EXPECT_EQ(Coluna("NroIntEquip", sql + "     AND Ativo = 1  AND TipoEquip = 'R'").size(), 1U);
    EXPECT_EQ(Coluna("NroIntEquip", sql + "     AND Ativo = 1  AND TipoEquip = 'A'").size(), 0U);

    ASSERT_TRUE(Comanda("desativa", Lido(numero)));
    trataBD->TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor());
    EXPECT_EQ(Coluna("NroIntEquip", sql + "     AND Ativo = 1 ").size(), 0U);
}

TEST_P(ContratoHost, TrataBD_OfTheSession_LeadsBackToIt)
{
    Ref<ITrataBD> trataBD = adaptador->objMTM()->CreateQMR()->CreateNewTrataBD();
    EXPECT_TRUE(trataBD->pQMR()->Sessao() == adaptador->objMTM());
    EXPECT_FALSE(trataBD->CreateCFisJur().Nada());
    EXPECT_FALSE(trataBD->CreateCEndereco().Nada());
    EXPECT_FALSE(trataBD->CreateCVeiGen().Nada());
    EXPECT_FALSE(Banco()->Name().empty());
    EXPECT_FALSE(adaptador->ObjInterface()->pTrataBD().Nada());
}

} // namespace
