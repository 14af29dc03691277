#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// What ./test makes of a JUnit file of ctest.
class ContaTestes : public testing::Test {
  protected:
    Execucao Conta(const std::string &casos, int saidaDoCtest = 0) const
    {
        m_Pasta.Escreve("testes.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"(empty)\"\n\t>\n" +
                                          casos + "</testsuite>\n");
        return Executa("awk -v saida=" + std::to_string(saidaDoCtest) + " -f cmake/conta_testes.awk '" +
                       (m_Pasta.Caminho / "testes.xml").string() + "'");
    }

    static std::string Caso(const std::string &nome, const std::string &tempo, const std::string &estado,
                            const std::string &dentro = "\t\t<system-out></system-out>\n")
    {
        return "\t<testcase name=\"" + nome + "\" classname=\"" + nome + "\" time=\"" + tempo + "\" status=\"" +
               estado + "\">\n" + dentro + "\t</testcase>\n";
    }

    PastaTemporaria m_Pasta;
};

} // namespace

TEST_F(ContaTestes, count_TestsOfSeveralParts_EachPartHasItsLineInTheOrderOfTheFile)
{
    const Execucao execucao = Conta(Caso("host.Texto.Divide", "0.25", "run") + Caso("mesa.Janelas.abre", "1.5", "run") +
                                    Caso("host.Data.Soma", "2e-05", "run") + Caso("mesa.roteiro", "40.26", "run"));
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "host               2 tests      0.3 s\n"
                              "mesa               2 tests     41.8 s\n"
                              "4 passed, 0 failed, 0 skipped\n");
}

TEST_F(ContaTestes, count_FailedTestAndOneThatDidNotStart_AreFailures)
{
    const std::string semPrograma = "\t\t<skipped message=\"Unable to find executable\"/>\n"
                                    "\t\t<system-out>Unable to find executable: /x</system-out>\n";
    const std::string falhou = "\t\t<failure message=\"\"/>\n\t\t<system-out>no\n</system-out>\n";
    const Execucao execucao = Conta(Caso("host.A.a", "0", "run") + Caso("host.A.b", "0", "fail", falhou) +
                                        Caso("shell.A.c", "0", "notrun", semPrograma),
                                    8);
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "host               2 tests      0.0 s, 1 failed\n"
                              "shell              1 tests      0.0 s, 1 failed\n"
                              "failed: host.A.b\n"
                              "  | no\n"
                              "failed: shell.A.c\n"
                              "  | Unable to find executable: /x\n"
                              "1 passed, 2 failed, 0 skipped\n");
}

TEST_F(ContaTestes, count_FailedTestThatSaidMuch_TheEndOfItIsTold)
{
    std::string disse;
    for (int linha = 1; linha <= 30; ++linha) {
        disse += "line " + std::to_string(linha) + " &lt;\n\n";
    }
    const Execucao execucao =
        Conta(Caso("host.A.a", "0", "fail", "\t\t<system-out>[ RUN ] A.a\n" + disse + "</system-out>\n") +
                  Caso("host.A.b", "0", "fail", "\t\t<system-out>alone</system-out>\n") + Caso("host.A.c", "0", "run"),
              8);
    std::string fim;
    for (int linha = 11; linha <= 30; ++linha) {
        fim += "  | line " + std::to_string(linha) + " <\n";
    }
    EXPECT_EQ(execucao.Saida, "host               3 tests      0.0 s, 2 failed\n"
                              "failed: host.A.a\n" +
                                  fim +
                                  "failed: host.A.b\n"
                                  "  | alone\n"
                                  "1 passed, 2 failed, 0 skipped\n");
}

TEST_F(ContaTestes, count_SkippedTests_AreToldWithTheirReasonsBeforeTheParts)
{
    const std::string pulado = "\t\t<skipped message=\"SKIP_REGULAR_EXPRESSION_MATCHED\"/>\n"
                               "\t\t<system-out>[ RUN      ] A.b\n"
                               "tests/host/A_test.cpp:3: Skipped\n"
                               "needs &lt;two&gt; cores\n"
                               "&amp; a disk\n"
                               "\n"
                               "[  SKIPPED ] A.b (0 ms)\n"
                               "</system-out>\n";
    const std::string semMotivo = "\t\t<skipped message=\"SKIP_REGULAR_EXPRESSION_MATCHED\"/>\n";
    const Execucao execucao = Conta(Caso("host.A.a", "0", "run") + Caso("host.A.b", "0", "notrun", pulado) +
                                    Caso("host.A.c", "0", "notrun", semMotivo) + Caso("mesa.d", "0", "disabled", "") +
                                    Caso("mesa.e", "0", "run"));
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "skipped: host.A.b: needs <two> cores & a disk\n"
                              "skipped: host.A.c: no reason given\n"
                              "skipped: mesa.d: disabled\n"
                              "host               3 tests      0.0 s, 2 skipped\n"
                              "mesa               2 tests      0.0 s, 1 skipped\n"
                              "2 passed, 0 failed, 3 skipped\n");
}

TEST_F(ContaTestes, count_SweepsThatTellTheirFaults_AreSummedOverAllTests)
{
    const auto disse = [](const std::string &linhas) { return "\t\t<system-out>" + linhas + "</system-out>\n"; };
    const Execucao execucao =
        Conta(Caso("sensors.A.a", "0", "run", disse("[ RUN      ] A.a\nfaults survived: 120\n[       OK ]\n")) +
              Caso("sensors.A.b", "0", "run", disse("faults survived: 7\nfaults survived: 3\n")) +
              Caso("shell.A.c", "0", "run", disse("faults survived: 1")) +
              Caso("shell.A.d", "0", "run", disse("no faults survived: 900\nfaults survived: 900 of 1000\n")));
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "sensors            2 tests      0.0 s\n"
                              "shell              2 tests      0.0 s\n"
                              "faults survived: 131\n"
                              "4 passed, 0 failed, 0 skipped\n");
}

TEST_F(ContaTestes, count_CtestFailedButNoTestDid_IsAFailure)
{
    const Execucao execucao = Conta(Caso("host.A.a", "0", "run"), 8);
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "host               1 tests      0.0 s\n"
                              "ctest ended with status 8\n"
                              "1 passed, 1 failed, 0 skipped\n");
}

TEST_F(ContaTestes, count_NothingRan_IsNoSuccess)
{
    const Execucao execucao = Conta(Caso("mesa.d", "0", "disabled", ""));
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "skipped: mesa.d: disabled\n"
                              "mesa               1 tests      0.0 s, 1 skipped\n"
                              "0 passed, 0 failed, 1 skipped\n");
}
