#include "services/Banco.h"
#include "services/Dialetos.h"
#include "services/PreparadaPostgres.h"
#include "tests/services/Motor.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

using namespace mesa;

namespace {

// A connection with the engine that the tests run on.
class PreparadaTeste : public testing::Test {
  protected:
    PreparadaTeste() : m_Banco(DialetoPara(m_Registro.Caminho()), m_Registro.Caminho(), DataDe(20, 11, 2026)) {}

    RegistroDeTeste m_Registro;
    Banco m_Banco;
};

class PreparadaPostgresTeste : public PreparadaTeste {};

} // namespace

TEST_F(PreparadaTeste, Values_OfEachType_ComeBackAsTheyWent)
{
    constexpr qlonglong maior = std::numeric_limits<qlonglong>::max();
    const QByteArray octetos("\0\x01'\\x\xff", 6);
    m_Banco.Le([&] {
        Consulta linha(m_Banco,
                       "SELECT CAST(? AS bigint), CAST(? AS bigint), CAST(? AS text), CAST(? AS text), "
                       "Versao, 'o quê? \"sim\"' FROM ESQUEMA WHERE Versao > ?",
                       {maior, -2, "É d'água? ação \U0001F600", "", 0});
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Inteiro(0), maior);
        EXPECT_EQ(linha.Valor(0), QVariant(maior));
        EXPECT_EQ(linha.Texto(0), "9223372036854775807");
        EXPECT_EQ(linha.Inteiro(1), -2);
        EXPECT_EQ(linha.Texto(1), "-2");
        EXPECT_EQ(linha.Texto(2), "É d'água? ação \U0001F600");
        EXPECT_EQ(linha.Valor(2).toString(), QString::fromUtf8("É d'água? ação \U0001F600"));
        EXPECT_EQ(linha.Texto(3), "");
        EXPECT_EQ(linha.Texto(5), "o quê? \"sim\"");
        EXPECT_FALSE(linha.Proxima());
        EXPECT_FALSE(linha.Proxima());
    });
    m_Banco.Le([&] {
        Consulta linha(m_Banco, "SELECT Sha256, Conteudo FROM DOCUMENTO WHERE Conteudo = ?", {octetos});
        EXPECT_FALSE(linha.Proxima());
    });
}

TEST_F(PreparadaTeste, Null_OfEachType_IsNullZeroAndNoText)
{
    m_Banco.Le([&] {
        Consulta linha(
            m_Banco, "SELECT CAST(? AS bigint), CAST(? AS text), NULL, CAST(? AS text)",
            {QVariant(QMetaType::fromType<qlonglong>()), QVariant(QMetaType::fromType<QString>()), QString()});
        ASSERT_TRUE(linha.Proxima());
        for (const int coluna : {0, 1, 2, 3}) {
            EXPECT_TRUE(linha.Valor(coluna).isNull()) << coluna;
            EXPECT_EQ(linha.Inteiro(coluna), 0) << coluna;
            EXPECT_EQ(linha.Texto(coluna), "") << coluna;
        }
    });
}

TEST_F(PreparadaTeste, Statement_RunAgain_AnswersOfThisTime)
{
    const QString soma = "SELECT CAST(? AS bigint) + 1";
    m_Banco.Le([&] {
        for (const int numero : {1, 41, -8}) {
            Consulta linha(m_Banco, soma, {numero});
            ASSERT_TRUE(linha.Proxima());
            EXPECT_EQ(linha.Inteiro(0), numero + 1);
        }
    });
}

TEST_F(PreparadaTeste, Statement_ThatTheDatabaseDoesNotTake_RaisesEachTimeAndLeavesTheOthers)
{
    for (int vez = 0; vez < 2; ++vez) {
        EXPECT_THROW(m_Banco.Le([&] { Consulta(m_Banco, "SELECT Nada FROM ESQUEMA"); }), ErroSql);
    }
    m_Banco.Le([&] {
        Consulta linha(m_Banco, "SELECT COUNT(*) FROM ESQUEMA");
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Inteiro(0), 1);
    });
}

TEST_F(PreparadaTeste, Row_BeforeTheFirstOne_HasNothing)
{
    m_Banco.Le([&] {
        const Consulta linha(m_Banco, "SELECT 7");
        EXPECT_EQ(linha.Inteiro(0), 0);
        EXPECT_EQ(linha.Texto(0), "");
        EXPECT_TRUE(linha.Valor(0).isNull());
    });
}

TEST(PreparadaPostgresTexto, Places_QuestionMarksOutsideOfQuotes_AreNumbered)
{
    EXPECT_EQ(PreparadaPostgres::ComLugares("SELECT ?, '?', \"a?\", 'it''s ?' || ? FROM T WHERE a=?"),
              "SELECT $1, '?', \"a?\", 'it''s ?' || $2 FROM T WHERE a=$3");
    EXPECT_EQ(PreparadaPostgres::ComLugares(""), "");
}

TEST_F(PreparadaPostgresTeste, Values_OfTypesThatOnlyTheServerHas_ComeAsText)
{
    m_Banco.Le([&] {
        Consulta linha(m_Banco, "SELECT CAST(12.50 AS numeric), CAST(7 AS bigint), CAST('2026-11-20' AS date), "
                                "CAST(12 AS numeric)");
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Texto(0), "12.50");
        EXPECT_EQ(linha.Inteiro(1), 7);
        EXPECT_EQ(linha.Texto(2), "2026-11-20");
        EXPECT_EQ(linha.Inteiro(3), 12);
    });
    m_Banco.Le([&] {
        Consulta linha(m_Banco, "SELECT current_user, TRUE, FALSE, CAST('\\x00ff5c' AS bytea), CAST(NULL AS boolean), "
                                "CAST(-8 AS bigint)");
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Texto(0), "postgres");
        EXPECT_EQ(linha.Valor(1), QVariant(true));
        EXPECT_EQ(linha.Valor(2), QVariant(false));
        EXPECT_EQ(linha.Inteiro(1), 1);
        EXPECT_EQ(linha.Inteiro(2), 0);
        EXPECT_EQ(linha.Valor(3).toByteArray(), QByteArray("\0\xff\\", 3));
        EXPECT_TRUE(linha.Valor(4).isNull());
        EXPECT_EQ(linha.Valor(5), QVariant(qlonglong(-8)));
    });
    m_Banco.Le([&] {
        Consulta linha(m_Banco, "SELECT CAST(-3 AS smallint), CAST(-70000 AS integer), TRUE, FALSE, "
                                "CAST('\\x00ff' AS bytea), CAST(NULL AS boolean), CAST(NULL AS bytea)");
        ASSERT_TRUE(linha.Proxima());
        EXPECT_EQ(linha.Inteiro(0), -3);
        EXPECT_EQ(linha.Inteiro(1), -70000);
        EXPECT_EQ(linha.Valor(2), QVariant(true));
        EXPECT_EQ(linha.Valor(3), QVariant(false));
        EXPECT_EQ(linha.Valor(4).toByteArray(), QByteArray("\0\xff", 2));
        EXPECT_TRUE(linha.Valor(5).isNull());
        EXPECT_TRUE(linha.Valor(6).isNull());
    });
}
