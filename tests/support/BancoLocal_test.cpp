#include "tests/support/HostTeste.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

class BancoLocalTeste : public HostTeste {
  protected:
    Ref<ICursor> Abre(const std::string &sql)
    {
        return host->MDB->OpenRecordset(sql, InstantaneoSomenteLeitura, Valor(), Valor());
    }

    // First column asked for of every row.
    std::vector<std::string> Coluna(const std::string &coluna, const std::string &sql)
    {
        std::vector<std::string> valores;
        auto cursor = Abre(sql);
        for (; !cursor->EOF_(); cursor->MoveNext()) {
            valores.push_back(cursor->Fields(coluna)->Value().Texto());
        }
        cursor->Close();
        return valores;
    }

    std::int32_t NumeroDaFalha(const std::string &sql)
    {
        try {
            Abre(sql);
        } catch (const Falha &falha) {
            return falha.Numero;
        }
        return 0;
    }

    // The statement with which the module finds an equipment by its code.
    static std::string PorCodigo(const std::string &cliente, const std::string &codigo, const std::string &tipo)
    {
        return "         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = '" + cliente +
               "'     AND UCASE(Codigo) = '" + codigo + "'     AND Ativo = 1 " +
               (tipo.empty() ? "" : " AND TipoEquip = '" + tipo + "'");
    }
};

using Textos = std::vector<std::string>;

TEST_F(BancoLocalTeste, OpenRecordset_OfTheMunicipalitiesOfTheState_FiltersAndSorts)
{
    EXPECT_EQ(Coluna("NOME_MUNICIPIO",
                     "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO"),
              (Textos{"Agudo", "Caxias do Sul", "Não-Me-Toque", "Porto Alegre"}));
}

TEST_F(BancoLocalTeste, OpenRecordset_ByCode_ComparesInUpperCaseAndTheOtherColumnsAsTheyAre)
{
    host->MDB->PoeEquipamento(5, "Autoridade das Estradas de Rodagem", "ção-1", 1, "R");
    host->MDB->PoeEquipamento(6, "Autoridade das Estradas de Rodagem", "ÇÃO-1", 2, "R");
    host->MDB->PoeEquipamento(7, "OUTRO", "ÇÃO-1", 1, "R");
    EXPECT_EQ(Coluna("NroIntEquip", PorCodigo("Autoridade das Estradas de Rodagem", "ÇÃO-1", "")), Textos{"5"});
    EXPECT_EQ(Coluna("NroIntEquip", PorCodigo("Autoridade das Estradas de Rodagem", "ÇÃO-1", "R")), Textos{"5"});
    EXPECT_EQ(Coluna("NroIntEquip", PorCodigo("Autoridade das Estradas de Rodagem", "ÇÃO-1", "A")), Textos{});
    EXPECT_EQ(Coluna("NroIntEquip", PorCodigo("Autoridade das Estradas de Rodagem", "ção-1", "")), Textos{});
    EXPECT_EQ(Coluna("NroIntEquip", PorCodigo("autoridade das estradas de rodagem", "ÇÃO-1", "")), Textos{});
}

TEST_F(BancoLocalTeste, OpenRecordset_WithAnApostropheInAValue_IsFault3075)
{
    EXPECT_EQ(NumeroDaFalha(PorCodigo("Autoridade das Estradas de Rodagem", "D'AGUA", "")), 3075);
    EXPECT_EQ(NumeroDaFalha(PorCodigo("Autoridade das Estradas de Rodagem", "'", "")), 3075);
    EXPECT_EQ(NumeroDaFalha(PorCodigo("Autoridade das Estradas de Rodagem", "D''AGUA", "")), 0); // two of them are one
}

TEST_F(BancoLocalTeste, OpenRecordset_OfWhatCannotBeRead_IsFault3075)
{
    for (const char *sql :
         {"", "SELECT", "SELECT FROM Municipio", "SELECT * Municipio", "SELECT * FROM", "DELETE FROM Municipio",
          "SELECT * FROM Municipio WHERE", "SELECT * FROM Municipio WHERE COD_MUNIC = ",
          "SELECT * FROM Municipio WHERE COD_MUNIC 1", "SELECT * FROM Municipio WHERE COD_MUNIC = 1 OR COD_MUNIC = 2",
          "SELECT * FROM Municipio WHERE LCASE(UF_MUNIC) = 'rs'", "SELECT * FROM Municipio WHERE COD_MUNIC = 1x",
          "SELECT * FROM Municipio ORDER NOME_MUNICIPIO", "SELECT * FROM Municipio; SELECT * FROM VOREQUIPTO",
          "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS"}) {
        EXPECT_EQ(NumeroDaFalha(sql), 3075) << sql;
    }
}

TEST_F(BancoLocalTeste, OpenRecordset_OfUnknownNames_IsTheDatabasesFault)
{
    EXPECT_EQ(NumeroDaFalha("SELECT * FROM Estado"), 3078);
    EXPECT_EQ(NumeroDaFalha("SELECT Nome FROM Municipio"), 3061);
    EXPECT_EQ(NumeroDaFalha("SELECT * FROM VOREQUIPTO WHERE Cor = 1"), 3061); // of an empty table too
    EXPECT_EQ(NumeroDaFalha("SELECT * FROM Municipio ORDER BY Cor"), 3061);
    EXPECT_EQ(NumeroDaFalha("SELECT * FROM Municipio WHERE UF_MUNIC = 1"), 3464);
}

TEST_F(BancoLocalTeste, OpenRecordset_WithNulls_MatchesNoneAndSortsThemFirst)
{
    host->MDB->TabelaDe("Municipio").Linhas.push_back({1, Valor(Valor::Nulo{}), "RS", Valor(Valor::Nulo{})});
    EXPECT_EQ(Coluna("COD_MUNIC", "SELECT * FROM Municipio WHERE COD_RENAVAM <> 0 AND COD_MUNIC < 8"), Textos{"7"});
    EXPECT_EQ(Coluna("COD_MUNIC", "SELECT COD_MUNIC FROM Municipio WHERE COD_MUNIC <= 7 ORDER BY NOME_MUNICIPIO"),
              (Textos{"1", "7"}));
}

TEST_F(BancoLocalTeste, Log_OfAQuery_HasTheStatementTheRowCountAndTheClosing)
{
    Coluna("COD_MUNIC", "SELECT * FROM Municipio WHERE COD_MUNIC = 7");
    EXPECT_EQ(host->Registro(),
              (Textos{"MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE COD_MUNIC = 7\", 4, ausente, ausente) -> "
                      "1 linhas",
                      "Cursor.Close()"}));
}

TEST_F(BancoLocalTeste, Cursor_BehindItsLastRowOrClosed_Faults)
{
    auto cursor = Abre("SELECT NOME_MUNICIPIO FROM Municipio WHERE COD_MUNIC = 7");
    EXPECT_THROW(cursor->Fields("COD_MUNIC"), Falha); // not asked for
    cursor->MoveNext();
    EXPECT_THROW(cursor->MoveNext(), Falha);
    cursor->Close();
    EXPECT_THROW(cursor->EOF_(), Falha);
}

} // namespace
