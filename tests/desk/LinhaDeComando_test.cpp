#include "desk/host/LinhaDeComando.h"

#include "services/Cabeca.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/RegistroDeTeste.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sstream>

using namespace mesa;

namespace {

using Ato = LinhaDeComando::Ato;

LinhaDeComando Le(const QStringList &argumentos)
{
    return LinhaDeComando::Le(QStringList{"registro-de-equipamentos"} + argumentos);
}

TEST(LinhaDeComando, WithoutOptions_WorksOnTheUsersOwnDirectory)
{
    const LinhaDeComando linha = Le({});
    EXPECT_EQ(linha.OQue, Ato::Trabalha);
    EXPECT_EQ(linha.Erro, "");
    EXPECT_EQ(linha.Dados.filename(), "registro-de-equipamentos");
}

TEST(LinhaDeComando, Options_SayWhatIsDoneAndWhere)
{
    EXPECT_EQ(Le({"--dados", "aqui"}).Dados, "aqui");
    EXPECT_EQ(Le({"--dados=aqui", "--amostra"}).OQue, Ato::Amostra);
    EXPECT_EQ(Le({"--help"}).OQue, Ato::Ajuda);
    EXPECT_EQ(Le({"-h", "--nada"}).OQue, Ato::Ajuda);
}

TEST(LinhaDeComando, NewRegistry_TakesWhatItBeginsWith)
{
    const LinhaDeComando linha =
        Le({"--novo", "--cliente", "12", "--nome-cliente", "Autoridade Estadual de Trânsito", "--uf", "rs", "--setor",
            "Norte", "--setor=Sul", "--usuario", "olga", "--nome", "Olga Reis"});
    EXPECT_EQ(linha.OQue, Ato::Novo);
    EXPECT_EQ(linha.Erro, "");
    EXPECT_EQ(linha.Novo.Cliente.CodCliente, 12);
    EXPECT_EQ(linha.Novo.Cliente.Nome, "Autoridade Estadual de Trânsito");
    EXPECT_EQ(linha.Novo.Cliente.UF, "RS");
    EXPECT_EQ(linha.Novo.Cliente.Setores, (std::vector<std::string>{"Norte", "Sul"}));
    EXPECT_EQ(linha.Novo.Usuario, "olga");
    EXPECT_EQ(linha.Novo.Nome, "Olga Reis");
    EXPECT_TRUE(linha.Novo.Senha.Vazio());
}

TEST(LinhaDeComando, Server_IsWhereToWork_AndGoesWithNothingElse)
{
    EXPECT_FALSE(Le({}).Servidor);
    EXPECT_EQ(Le({"--servidor", "central:1234"}).Servidor, (rede::Endereco{"central", 1234}));
    EXPECT_EQ(Le({"--servidor=central"}).Servidor, (rede::Endereco{"central", 50443}));
    EXPECT_EQ(Le({"--servidor=central"}).Erro, "");
    EXPECT_EQ(Le({"--servidor", "central:x"}).Erro, "A porta do servidor é um número de 1 a 65535: \"máquina:porta\".");
    EXPECT_EQ(Le({"--servidor", "central", "--amostra"}).Erro, "As opções --servidor e --amostra não vão juntas.");
    EXPECT_EQ(Le({"--confere", "--servidor", "central"}).Erro, "As opções --servidor e --confere não vão juntas.");
    EXPECT_EQ(Le({"--servidor", "central", "registro.db"}).Erro, "Um ARQUIVO e a opção --servidor não vão juntos.");
}

TEST(LinhaDeComando, File_IsTheRegistryToWorkOn)
{
    EXPECT_EQ(Le({}).Registro, "");
    const LinhaDeComando linha = Le({"--dados", "aqui", "dali/registro.db"});
    EXPECT_EQ(linha.OQue, Ato::Trabalha);
    EXPECT_EQ(linha.Erro, "");
    EXPECT_EQ(linha.Dados, "aqui");
    EXPECT_EQ(linha.Registro, std::filesystem::absolute("dali/registro.db"));
}

TEST(LinhaDeComando, Mistakes_AreSentences)
{
    EXPECT_EQ(Le({"--nada"}).Erro, "A opção \"nada\" não existe.");
    EXPECT_EQ(Le({"--vazio"}).Erro, "A opção \"vazio\" não existe.");
    EXPECT_EQ(Le({"--dados"}).Erro, "Falta o valor de uma opção, ou veio um para uma opção que não o tem.");
    EXPECT_EQ(Le({"--novo=sim"}).Erro, "Falta o valor de uma opção, ou veio um para uma opção que não o tem.");
    EXPECT_EQ(Le({"um.db", "solto"}).Erro, "\"solto\" não é uma opção.");
    EXPECT_EQ(Le({"--confere", "solto"}).Erro, "\"solto\" não é uma opção.");
    EXPECT_EQ(Le({"--amostra", "solto"}).Erro, "\"solto\" não é uma opção.");
    EXPECT_EQ(Le({"--uf", "RS"}).Erro, "A opção --uf só vai com --novo.");
    EXPECT_EQ(Le({"--novo", "--amostra"}).Erro, "As opções --novo e --amostra não vão juntas.");
}

TEST(LinhaDeComando, CareOfTheRegistry_TakesItsFiles)
{
    EXPECT_EQ(Le({"--confere"}).OQue, Ato::Confere);
    EXPECT_EQ(Le({"--confere"}).Desde, "");
    EXPECT_EQ(Le({"--confere", "--desde", "cabeca.txt"}).Desde, "cabeca.txt");
    EXPECT_EQ(Le({"--copia", "copias"}).OQue, Ato::Copia);
    EXPECT_EQ(Le({"--copia=copias"}).Pasta, "copias");
    EXPECT_EQ(Le({"--restaura", "a.db"}).OQue, Ato::Restaura);
    EXPECT_EQ(Le({"--restaura", "a.db"}).Arquivo, "a.db");
    EXPECT_FALSE(Le({"--restaura", "a.db"}).DeOutro);
    EXPECT_TRUE(Le({"--restaura", "a.db", "--de-outro"}).DeOutro);
    EXPECT_EQ(Le({"--desde", "c.txt"}).Erro, "A opção --desde só vai com --confere.");
    EXPECT_EQ(Le({"--confere", "--de-outro"}).Erro, "A opção --de-outro só vai com --restaura.");
    EXPECT_EQ(Le({"--confere", "--copia", "x"}).Erro, "As opções --confere e --copia não vão juntas.");
    EXPECT_EQ(Le({"--copia="}).Erro, "A opção --copia veio sem o seu valor.");
    EXPECT_EQ(Le({"--confere", "--desde="}).Erro, "A opção --desde veio sem o seu valor.");
    EXPECT_EQ(Le({"--copia", "x", "--uf", "RS"}).Erro, "A opção --uf só vai com --novo.");
}

// The program itself, without a screen.
class ProgramaTeste : public testing::Test {
  protected:
    struct Saida {
        int Codigo = -1;
        std::string Texto;
        std::string Erro;
    };
    Saida Roda(const QStringList &argumentos, const QByteArray &entrada)
    {
        QProcess programa;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("XDG_CONFIG_HOME", pasta.filePath("config"));
        ambiente.remove("DISPLAY");
        ambiente.remove("QT_QPA_PLATFORM");
        programa.setProcessEnvironment(ambiente);
        programa.start(PROGRAMA, argumentos);
        programa.write(entrada);
        programa.closeWriteChannel();
        if (!programa.waitForFinished(60000) || programa.exitStatus() != QProcess::NormalExit) {
            return {};
        }
        return {programa.exitCode(), programa.readAllStandardOutput().toStdString(),
                programa.readAllStandardError().toStdString()};
    }
    Saida Novo(const QByteArray &senha)
    {
        return Roda({"--novo", "--dados", pasta.filePath("d"), "--cliente", "3", "--nome-cliente",
                     "Autoridade das Estradas de Rodagem", "--uf", "MG", "--setor", "Norte", "--usuario", "olga",
                     "--nome", "Olga Reis"},
                    senha);
    }
    std::string Registro() const { return pasta.filePath("d/registro.db").toStdString(); }

    QTemporaryDir pasta;
};

TEST_F(ProgramaTeste, New_MakesARegistryWhoseAdministratorSignsIn)
{
    const Saida saida = Novo("cavalo grampeador azul\n");
    EXPECT_EQ(saida.Codigo, 0) << saida.Erro;
    EXPECT_EQ(saida.Texto, "O registro foi criado em " + Registro() + ".\n");
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Tipo FROM REGISTRO"), std::vector<std::string>{"1"});
    EXPECT_EQ(LinhasSql(Registro(), "SELECT u.Usuario || '|' || c.Nome || '|' || c.UF FROM USUARIO u JOIN CLIENTE c "
                                    "ON c.CodCliente = u.CodCliente"),
              std::vector<std::string>{"olga|Autoridade das Estradas de Rodagem|MG"});
    EXPECT_EQ(saida.Erro.find("cavalo"), std::string::npos);
}

TEST_F(ProgramaTeste, New_WhereThereIsOne_EndsWithASentenceAndLeavesIt)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    const auto antes = LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO");
    const Saida saida = Novo("cavalo grampeador azul\n");
    EXPECT_EQ(saida.Codigo, 1);
    EXPECT_NE(saida.Erro.find("já tem um registro"), std::string::npos) << saida.Erro;
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO"), antes);
}

TEST_F(ProgramaTeste, New_WhereTheKnownOneIsAbsent_EndsWithASentenceAndMakesNothing)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    std::filesystem::remove(Registro());
    const Saida saida = Novo("cavalo grampeador azul\n");
    EXPECT_EQ(saida.Codigo, 1);
    EXPECT_NE(saida.Erro.find("não está lá agora"), std::string::npos) << saida.Erro;
    EXPECT_FALSE(std::filesystem::exists(Registro()));
}

TEST_F(ProgramaTeste, New_WithAWeakPasswordOrNone_MakesNothing)
{
    for (const char *senha : {"registro2026\n", "\n", ""}) {
        const Saida saida = Novo(senha);
        EXPECT_EQ(saida.Codigo, 1) << senha;
        EXPECT_NE(saida.Erro, "") << senha;
        EXPECT_FALSE(std::filesystem::exists(pasta.filePath("d").toStdString())) << senha;
    }
}

TEST_F(ProgramaTeste, Check_TellsAWholeRegistryFromOneThatWasChanged)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    const QStringList confere{"--confere", "--dados", pasta.filePath("d")};
    const Saida inteira = Roda(confere, "");
    EXPECT_EQ(inteira.Codigo, 0) << inteira.Texto;
    EXPECT_NE(inteira.Texto.find("Arquivo: " + Registro()), std::string::npos) << inteira.Texto;
    LinhasSql(Registro(), "UPDATE USUARIO SET Nome = 'Outra'");
    const Saida mudada = Roda(confere, "");
    EXPECT_EQ(mudada.Codigo, 1);
    EXPECT_NE(mudada.Texto.find("Outra"), std::string::npos) << mudada.Texto;
    std::filesystem::remove(Registro());
    EXPECT_EQ(Roda(confere, "").Codigo, 2);
}

TEST_F(ProgramaTeste, Check_HoldsTheRegistryAgainstAHeadKeptElsewhere)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    const std::string cabeca = pasta.filePath("cabeca.txt").toStdString();
    ExportacaoDeCabeca::Grava(ExportacaoDeCabeca::Le(Registro(), DataDe(20, 11, 2026, 10, 0, 0)), cabeca);
    const QStringList confere{"--confere", "--desde", pasta.filePath("cabeca.txt"), "--dados", pasta.filePath("d")};
    EXPECT_EQ(Roda(confere, "").Codigo, 0);
    const std::string alheio = pasta.filePath("alheio.db").toStdString();
    Servicos::Cria(alheio, TipoDeRegistro::Registro, [] { return DataDe(20, 11, 2026, 9, 0, 0); });
    std::filesystem::remove(cabeca);
    ExportacaoDeCabeca::Grava(ExportacaoDeCabeca::Le(alheio, DataDe(20, 11, 2026, 10, 0, 0)), cabeca);
    EXPECT_EQ(Roda(confere, "").Codigo, 1);
    EXPECT_EQ(Roda({"--confere", "--desde", pasta.filePath("nada.txt"), "--dados", pasta.filePath("d")}, "").Codigo, 2);
}

TEST_F(ProgramaTeste, CopyAndRestore_BringBackWhatWasThere)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    const auto dados = [&](const QStringList &argumentos) {
        return Roda(argumentos + QStringList{"--dados", pasta.filePath("d")}, "");
    };
    const auto antes = LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO");
    const Saida copia = dados({"--copia", pasta.filePath("copias")});
    ASSERT_EQ(copia.Codigo, 0) << copia.Erro;
    const auto nomes = Nomes(pasta.filePath("copias").toStdString());
    ASSERT_EQ(nomes.size(), 1U);
    EXPECT_NE(copia.Texto.find(nomes[0]), std::string::npos) << copia.Texto;
    std::filesystem::remove(Registro());
    const QString guardada = pasta.filePath("copias/" + QString::fromStdString(nomes[0]));
    const Saida restaurada = dados({"--restaura", guardada});
    EXPECT_EQ(restaurada.Codigo, 0) << restaurada.Erro;
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO"), antes);
    EXPECT_EQ(ModoDe(Registro()), 0600U);
    EXPECT_EQ(dados({"--confere"}).Codigo, 0);
    const Saida nenhuma = dados({"--restaura", pasta.filePath("nada.db")});
    EXPECT_EQ(nenhuma.Codigo, 1);
    EXPECT_NE(nenhuma.Erro.find("Nada foi restaurado."), std::string::npos) << nenhuma.Erro;
}

TEST_F(ProgramaTeste, Restore_OfAnotherRegistry_IsTakenOnlyWhenToldSo)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    const std::string alheio = pasta.filePath("alheio.db").toStdString();
    const std::string identificador =
        Servicos::Cria(alheio, TipoDeRegistro::Registro, [] { return DataDe(20, 11, 2026, 9, 0, 0); })->Identificador();
    const QStringList restaura{"--restaura", pasta.filePath("alheio.db"), "--dados", pasta.filePath("d")};
    const Saida recusada = Roda(restaura, "");
    EXPECT_EQ(recusada.Codigo, 1);
    EXPECT_NE(recusada.Erro.find("A cópia é de outro registro."), std::string::npos) << recusada.Erro;
    EXPECT_NE(LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO")[0], identificador);
    EXPECT_EQ(Roda(restaura + QStringList{"--de-outro"}, "").Codigo, 0);
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Identificador FROM REGISTRO")[0], identificador);
}

TEST_F(ProgramaTeste, WhatItWrites_IsTheUsersOwn)
{
    ASSERT_EQ(Novo("cavalo grampeador azul\n").Codigo, 0);
    EXPECT_EQ(ModoDe(pasta.filePath("d").toStdString()), 0700U);
    EXPECT_EQ(ModoDe(Registro()), 0600U);
    EXPECT_EQ(ModoDe(pasta.filePath("config/registro-de-equipamentos/preferencias.ini").toStdString()), 0600U);
}

TEST_F(ProgramaTeste, Help_IsTheDesksOwnAndMistakesEndWithTwo)
{
    EXPECT_EQ(Roda({"--help"}, "").Texto, LinhaDeComando::Ajuda());
    EXPECT_EQ(Roda({"--novo", "--nada"}, "").Codigo, 2);
}

} // namespace
