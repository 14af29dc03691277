#include "tests/host_contract/ContratoHost.h"

#include <algorithm>
#include <vector>

namespace {

TEST_P(ContratoHost, GravaArquivo_OfANewFile_HoldsTheBytes)
{
    const std::string caminho = adaptador->Diretorio() + "novo.bin";
    EXPECT_FALSE(Plataforma()->ExisteArquivo(caminho));
    Plataforma()->GravaArquivo(caminho, {0, 10, 13, 255});
    EXPECT_TRUE(Plataforma()->ExisteArquivo(caminho));
    EXPECT_EQ(Plataforma()->TamanhoArquivo(caminho), 4);
    EXPECT_EQ(adaptador->LeArquivo(caminho), (Bytes{0, 10, 13, 255}));
}

TEST_P(ContratoHost, GravaArquivo_OfNoBytes_CreatesAnEmptyFile)
{
    const std::string caminho = adaptador->Diretorio() + "vazio.bin";
    Plataforma()->GravaArquivo(caminho, {});
    EXPECT_TRUE(Plataforma()->ExisteArquivo(caminho));
    EXPECT_EQ(Plataforma()->TamanhoArquivo(caminho), 0);
}

TEST_P(ContratoHost, GravaArquivo_OverALongerFile_LeavesTheOldTail)
{
    const std::string caminho = adaptador->Diretorio() + "cauda.bin";
    Plataforma()->GravaArquivo(caminho, {1, 2, 3, 4});
    Plataforma()->GravaArquivo(caminho, {9, 8});
    EXPECT_EQ(adaptador->LeArquivo(caminho), (Bytes{9, 8, 3, 4}));
    Plataforma()->GravaArquivo(caminho, {});
    EXPECT_EQ(Plataforma()->TamanhoArquivo(caminho), 4);
    Plataforma()->GravaArquivo(caminho, {1, 1, 1, 1, 1});
    EXPECT_EQ(adaptador->LeArquivo(caminho), (Bytes{1, 1, 1, 1, 1}));
}

TEST_P(ContratoHost, GravaArquivo_IntoADirectoryThatIsNotThere_IsFault76)
{
    EXPECT_EQ(NumeroDaFalha([&] { Plataforma()->GravaArquivo(adaptador->Diretorio() + "falta\\a.bin", {1}); }), 76);
}

TEST_P(ContratoHost, ApagaArquivo_OfAFile_TakesItAway)
{
    const std::string caminho = adaptador->Diretorio() + "a.bin";
    Plataforma()->GravaArquivo(caminho, {1});
    Plataforma()->ApagaArquivo(caminho);
    EXPECT_FALSE(Plataforma()->ExisteArquivo(caminho));
    EXPECT_FALSE(adaptador->LeArquivo(caminho));
}

TEST_P(ContratoHost, FileOperations_OnAFileThatIsNotThere_AreFault53)
{
    const std::string caminho = adaptador->Diretorio() + "falta.bin";
    EXPECT_EQ(NumeroDaFalha([&] { Plataforma()->TamanhoArquivo(caminho); }), 53);
    EXPECT_EQ(NumeroDaFalha([&] { Plataforma()->ApagaArquivo(caminho); }), 53);
    EXPECT_NO_THROW(static_cast<void>(Plataforma()->ExisteArquivo(caminho)));
}

TEST_P(ContratoHost, PrimeiroArquivo_OfAPattern_GivesEachNameOnceWithoutItsDirectory)
{
    const std::string diretorio = adaptador->Diretorio();
    for (const char *nome : {"UM.LAY", "dois.lay", "X.LAY", "outro.txt"}) {
        Plataforma()->GravaArquivo(diretorio + nome, {1});
    }
    std::vector<std::string> nomes;
    std::string nome = Plataforma()->PrimeiroArquivo(diretorio + "*.LAY");
    while (!nome.empty() && nomes.size() < 10) {
        nomes.push_back(UCase(nome));
        nome = Plataforma()->ProximoArquivo();
    }
    std::sort(nomes.begin(), nomes.end());
    EXPECT_EQ(nomes, (std::vector<std::string>{"DOIS.LAY", "UM.LAY", "X.LAY"}));
}

TEST_P(ContratoHost, PrimeiroArquivo_WithoutAMatch_IsEmpty)
{
    EXPECT_EQ(Plataforma()->PrimeiroArquivo(adaptador->Diretorio() + "*.LAY"), "");
    EXPECT_EQ(Plataforma()->PrimeiroArquivo(adaptador->Diretorio() + "falta.bin"), "");
}

TEST_P(ContratoHost, PrimeiroArquivo_OfASecondPattern_StartsANewListing)
{
    const std::string diretorio = adaptador->Diretorio();
    Plataforma()->GravaArquivo(diretorio + "a1.x", {});
    Plataforma()->GravaArquivo(diretorio + "a2.x", {});
    Plataforma()->GravaArquivo(diretorio + "b.y", {});
    EXPECT_FALSE(Plataforma()->PrimeiroArquivo(diretorio + "*.x").empty());
    EXPECT_EQ(UCase(Plataforma()->PrimeiroArquivo(diretorio + "b*")), "B.Y");
    EXPECT_EQ(Plataforma()->ProximoArquivo(), "");
}

TEST_P(ContratoHost, PrimeiroArquivo_WhileTheFilesFoundAreDeleted_ComesToItsEnd)
{
    const std::string diretorio = adaptador->Diretorio();
    for (const char *nome : {"~VORAFER1-A.pdf", "~VORAFER2-B.pdf", "~VORAFER3-C.pdf", "fica.pdf"}) {
        Plataforma()->GravaArquivo(diretorio + nome, {1});
    }
    int apagados = 0;
    for (std::string nome = Plataforma()->PrimeiroArquivo(diretorio + "~VORAFER*.pdf"); !nome.empty();
         nome = Plataforma()->ProximoArquivo()) {
        Plataforma()->ApagaArquivo(diretorio + nome);
        ++apagados;
    }
    EXPECT_EQ(apagados, 3);
    EXPECT_TRUE(Plataforma()->ExisteArquivo(diretorio + "fica.pdf"));
}

} // namespace
