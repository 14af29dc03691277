#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

// .ci/run in a tree whose ./test is a script of the test's own, given "--asan" or "--resto".
class IntegracaoContinua : public testing::Test {
  protected:
    Execucao Roda(const std::string &teste) const
    {
        std::filesystem::create_directories(m_Arvore.Caminho / ".ci");
        std::filesystem::copy_file(".ci/run", m_Arvore.Caminho / ".ci/run");
        m_Arvore.Escreve("test", "#!/bin/sh\n" + teste);
        std::filesystem::permissions(m_Arvore.Caminho / "test", std::filesystem::perms::owner_all);
        return Executa("'" + (m_Arvore.Caminho / ".ci/run").string() + "'");
    }

    PastaTemporaria m_Arvore;
};

} // namespace

TEST_F(IntegracaoContinua, run_BothRunsPass_CountsThemTogetherAndShowsWhatTheySaid)
{
    const Execucao execucao = Roda("echo \"run $*.\"\n"
                                   "if [ \"$1\" = --asan ]; then echo '30 passed, 0 failed, 4 skipped'\n"
                                   "else echo '200 passed, 0 failed, 1 skipped'; fi\n");
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "run --resto.\n"
                              "200 passed, 0 failed, 1 skipped\n"
                              "run --asan.\n"
                              "30 passed, 0 failed, 4 skipped\n"
                              "\n"
                              "230 passed, 0 failed, 5 skipped\n");
}

TEST_F(IntegracaoContinua, run_FirstFails_SecondRunsAllTheSameAndTheWholeFails)
{
    const Execucao execucao = Roda("if [ \"$1\" = --asan ]; then echo '30 passed, 0 failed, 0 skipped'\n"
                                   "else echo '7 passed, 2 failed, 0 skipped'; exit 1; fi\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "7 passed, 2 failed, 0 skipped\n"
                              "30 passed, 0 failed, 0 skipped\n"
                              "\n"
                              "37 passed, 2 failed, 0 skipped\n");
}

TEST_F(IntegracaoContinua, run_SecondFails_TheWholeFails)
{
    const Execucao execucao = Roda("if [ \"$1\" = --asan ]; then echo '30 passed, 1 failed, 0 skipped'; exit 1\n"
                                   "else echo '7 passed, 0 failed, 0 skipped'; fi\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "7 passed, 0 failed, 0 skipped\n"
                              "30 passed, 1 failed, 0 skipped\n"
                              "\n"
                              "37 passed, 1 failed, 0 skipped\n");
}

TEST_F(IntegracaoContinua, run_TestsFailed_AreToldAgainAtTheEnd)
{
    const Execucao execucao = Roda(
        "if [ \"$1\" = --asan ]; then echo 'failed: mesa.b'; echo '  | why'; echo '3 passed, 1 failed, 0 skipped'\n"
        "else echo 'failed: host.a'; echo '7 passed, 1 failed, 0 skipped'; fi; exit 1\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "failed: host.a\n"
                              "7 passed, 1 failed, 0 skipped\n"
                              "failed: mesa.b\n"
                              "  | why\n"
                              "3 passed, 1 failed, 0 skipped\n"
                              "\n"
                              "failed: host.a\n"
                              "failed: mesa.b\n"
                              "  | why\n"
                              "10 passed, 2 failed, 0 skipped\n");
}

TEST_F(IntegracaoContinua, run_OneDiesBeforeItsCount_IsAFailure)
{
    const Execucao execucao = Roda("if [ \"$1\" = --asan ]; then echo '3 passed, as far as it went'; exit 137\n"
                                   "else echo '7 passed, 0 failed, 0 skipped'; fi\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "7 passed, 0 failed, 0 skipped\n"
                              "3 passed, as far as it went\n"
                              "\n"
                              "7 passed, 1 failed, 0 skipped\n");
}

TEST_F(IntegracaoContinua, run_NeitherSaysAnything_IsAFailureOfBoth)
{
    const Execucao execucao = Roda("exit 0\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "\n0 passed, 2 failed, 0 skipped\n");
}

TEST_F(IntegracaoContinua, run_EndsBadlyThoughNothingIsCountedAsFailed_TheWholeFails)
{
    const Execucao execucao = Roda("echo '7 passed, 0 failed, 0 skipped'; exit 1\n");
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "7 passed, 0 failed, 0 skipped\n"
                              "7 passed, 0 failed, 0 skipped\n"
                              "\n"
                              "14 passed, 0 failed, 0 skipped\n");
}
