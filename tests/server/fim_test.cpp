#include "server/Fim.h"

#include "server/Diario.h"

#include <gtest/gtest.h>

#include <string>

using mesa::ErroSql;
using mesa::LugarDoRegistro;
using mesa::MotivoSql;

TEST(Fim, SemDetalhe_EveryMotive_NothingOfTheDatabasesWords)
{
    const std::string palavras = "connection to server at \"10.0.0.5\", user \"registro_servidor\"";
    for (const LugarDoRegistro onde : {LugarDoRegistro::Arquivo, LugarDoRegistro::Servidor}) {
        for (int n = 0; n <= static_cast<int>(MotivoSql::Outro); ++n) {
            const ErroSql erro(static_cast<MotivoSql>(n), palavras, onde);
            const ErroSql fora = servidor::SemDetalhe(erro);
            EXPECT_EQ(fora.Descricao.find("10.0.0.5"), std::string::npos) << fora.Descricao;
            EXPECT_EQ(fora.Descricao.find("registro_servidor"), std::string::npos) << fora.Descricao;
            EXPECT_EQ(fora.Descricao.find(" ."), std::string::npos) << fora.Descricao;
            EXPECT_FALSE(fora.Descricao.empty());
            EXPECT_EQ(fora.Motivo, erro.Motivo);
        }
    }
    EXPECT_EQ(servidor::SemDetalhe(ErroSql(MotivoSql::Acesso, palavras, LugarDoRegistro::Servidor)).Descricao,
              "Não foi possível conectar ao banco de dados do registro.");
}

TEST(Fim, SemPalavras_SentenceOfACheck_NeitherTheDatabasesWordsNorItsName)
{
    const std::string onde = "postgresql://registro_servidor@10.0.0.5:5432/registro";
    EXPECT_EQ(servidor::SemPalavras("Não foi possível ligar ao banco de dados registro em 10.0.0.5:5432 (timeout).",
                                    {"denied", "timeout"}, onde),
              "Não foi possível ligar ao banco de dados.");
    EXPECT_EQ(servidor::SemPalavras("A tabela X (aferições) não pôde ser lida (bad page).", {"bad page"}, "/r.db"),
              "A tabela X (aferições) não pôde ser lida.");
}

TEST(Fim, Cortado_LongerThanThat_WholeCharactersOfIt)
{
    EXPECT_EQ(servidor::Cortado("ação", 4), "aç");
    EXPECT_EQ(servidor::Cortado("ação", 5), "açã");
    EXPECT_EQ(servidor::Cortado("ação", 6), "ação");
    EXPECT_EQ(servidor::Cortado("ação", 2), "a");
    EXPECT_EQ(servidor::Cortado("ç", 1), "");
}

TEST(Diario, Avisa_TheSameAgain_OnceOnTheStandardError)
{
    servidor::Diario diario("/dev/null");
    testing::internal::CaptureStderr();
    diario.Avisa("uma");
    diario.Avisa("uma");
    diario.Avisa("outra");
    diario.Avisa("uma");
    diario.Avisa("outra");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "uma\noutra\n");
}
