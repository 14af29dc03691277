#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/support/FormFalso.h"

#include "host/Falha.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace mesa;

namespace {

std::int32_t FalhaDe(const std::function<void()> &comando)
{
    try {
        comando();
    } catch (...) {
        return FalhaCorrente().Numero;
    }
    return 0;
}

class PlataformaMesaTeste : public testing::Test {
  protected:
    void SetUp() override { InstalaHost(mesa.Host); }
    void TearDown() override { InstalaHost(nullptr); }

    HospedeiroDeTeste mesa;
};

TEST_F(PlataformaMesaTeste, GravaArquivo_WhereAFileStandsForADirectory_IsFault76)
{
    Plataforma()->GravaArquivo(mesa.NoModulo("um.bin"), {1});
    EXPECT_EQ(FalhaDe([&] { Plataforma()->GravaArquivo(mesa.NoModulo("um.bin\\dois.bin"), {1}); }), 76);
}

TEST_F(PlataformaMesaTeste, GravaArquivo_OverADirectory_IsFault75)
{
    std::filesystem::create_directory(mesa.Diretorio() / "pasta");
    EXPECT_EQ(FalhaDe([&] { Plataforma()->GravaArquivo(mesa.NoModulo("pasta"), {1}); }), 75);
}

TEST_F(PlataformaMesaTeste, TamanhoArquivo_OfWhatIsNotThere_IsFault53)
{
    EXPECT_EQ(FalhaDe([&] { Plataforma()->TamanhoArquivo(mesa.NoModulo("falta.bin")); }), 53);
}

TEST_F(PlataformaMesaTeste, ApagaArquivo_OfADirectory_LeavesIt)
{
    std::filesystem::create_directory(mesa.Diretorio() / "pasta");
    EXPECT_EQ(FalhaDe([&] { Plataforma()->ApagaArquivo(mesa.NoModulo("pasta")); }), 53);
    EXPECT_TRUE(std::filesystem::exists(mesa.Diretorio() / "pasta"));
}

TEST_F(PlataformaMesaTeste, GravaArquivo_WithAccentsInTheName_IsFoundByThem)
{
    const std::string caminho = mesa.NoModulo("Aferição é.pdf");
    Plataforma()->GravaArquivo(caminho, {1, 2});
    EXPECT_TRUE(std::filesystem::exists(mesa.Diretorio() / "Aferição é.pdf"));
    EXPECT_EQ(Plataforma()->TamanhoArquivo(caminho), 2);
    EXPECT_EQ(Plataforma()->PrimeiroArquivo(mesa.NoModulo("AFERIÇÃO*.PDF")), "Aferição é.pdf");
}

TEST_F(PlataformaMesaTeste, PrimeiroArquivo_AndTheNextOnes_ComeInTheFileSystemsOrder)
{
    const std::filesystem::path pasta = mesa.Diretorio() / "leiautes";
    std::filesystem::create_directory(pasta);
    for (const char *nome : {"M", "C", "T", "A", "Z", "F", "B", "S", "D", "X", "E", "R"}) {
        Plataforma()->GravaArquivo(mesa.NoModulo("leiautes\\" + std::string(nome) + ".LAY"), {1});
    }
    std::vector<std::string> doSistema;
    for (const auto &entrada : std::filesystem::directory_iterator(pasta)) {
        doSistema.push_back(entrada.path().filename().string());
    }
    std::vector<std::string> lidos;
    for (std::string nome = Plataforma()->PrimeiroArquivo(mesa.NoModulo("leiautes\\*.LAY")); !nome.empty();
         nome = Plataforma()->ProximoArquivo()) {
        lidos.push_back(nome);
    }
    EXPECT_EQ(lidos, doSistema);
}

TEST_F(PlataformaMesaTeste, Descarrega_WhoseUnloadRaises_CanBeTriedAgain)
{
    auto form = Novo<FormFalso>();
    form->Carrega();
    form->NoUnload = [] { throw Falha(5); };
    EXPECT_EQ(FalhaDe([&] { form->Fecha(); }), 5);
    EXPECT_EQ(Plataforma()->NroForms(), 1);
    form->NoUnload = nullptr;
    form->Fecha();
    EXPECT_EQ(form->Unloads, 2);
    EXPECT_EQ(Plataforma()->NroForms(), 0);
}

TEST_F(PlataformaMesaTeste, Descarrega_OfAnotherFormInsideAnUnload_TakesBoth)
{
    auto um = Novo<FormFalso>();
    auto dois = Novo<FormFalso>();
    um->Carrega();
    dois->Carrega();
    um->NoUnload = [&] { dois->Fecha(); };
    um->Fecha();
    EXPECT_EQ(Plataforma()->NroForms(), 0);
    EXPECT_EQ(dois->Unloads, 1);
    um->NoUnload = nullptr;
}

TEST_F(PlataformaMesaTeste, Ponteiro_OfWaiting_ReachesTheWindowsAndLeavesThem)
{
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    Plataforma()->DefinePonteiro(PonteiroNormal);
    EXPECT_EQ(mesa.Janelas->Esperas, (std::vector<bool>{true, false}));
}

} // namespace
