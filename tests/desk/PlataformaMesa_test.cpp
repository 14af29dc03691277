#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"

#include <filesystem>

using namespace mesa;

namespace {

class PlataformaMesaTeste : public HospedeiroTeste {};

TEST_F(PlataformaMesaTeste, File_ThatCannotBeHad_IsTheFaultOfItsCase)
{
    const auto grava = [&](const char *nome) {
        return FalhaLancada([&] { Plataforma()->GravaArquivo(mesa.NoModulo(nome), {1}); }).Numero;
    };
    Plataforma()->GravaArquivo(mesa.NoModulo("um.bin"), {1});
    EXPECT_EQ(grava("um.bin\\dois.bin"), 76);
    std::filesystem::create_directory(mesa.Diretorio() / "pasta");
    EXPECT_EQ(grava("pasta"), 75);
    EXPECT_EQ(FalhaLancada([&] { Plataforma()->TamanhoArquivo(mesa.NoModulo("falta.bin")); }).Numero, 53);
    EXPECT_EQ(FalhaLancada([&] { Plataforma()->ApagaArquivo(mesa.NoModulo("pasta")); }).Numero, 53);
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
    EXPECT_EQ(FalhaLancada([&] { form->Fecha(); }).Numero, 5);
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
