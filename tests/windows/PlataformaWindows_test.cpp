#include "windows/host/PlataformaWindows.h"

#include "tela/Janelas.h"
#include "tests/support/FalhaLancada.h"
#include "tests/tela/CamadaFalsa.h"
#include "windows/automation/Texto16.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace nativo {
namespace {

class PlataformaWindowsTest : public testing::Test {
  protected:
    PlataformaWindowsTest()
    {
        std::array<wchar_t, MAX_PATH> temporarios{};
        GetTempPathW(static_cast<DWORD>(temporarios.size()), temporarios.data());
        pasta = std::filesystem::path(temporarios.data()) / (L"plataforma-" + std::to_wstring(GetCurrentProcessId()));
        std::filesystem::create_directory(pasta);
    }
    ~PlataformaWindowsTest() override { std::filesystem::remove_all(pasta); }

    std::string Em(const std::string &nome) const { return ParaUtf8(pasta.wstring()) + "\\" + nome; }
    std::int32_t Grava(const std::string &nome)
    {
        return FalhaLancada([&] { plataforma.GravaArquivo(Em(nome), {1}); }).Numero;
    }
    std::vector<std::string> Lista(const std::string &padrao)
    {
        std::vector<std::string> nomes;
        for (std::string nome = plataforma.PrimeiroArquivo(Em(padrao)); !nome.empty();
             nome = plataforma.ProximoArquivo()) {
            nomes.push_back(nome);
        }
        std::ranges::sort(nomes);
        return nomes;
    }

    std::filesystem::path pasta;
    Ref<CamadaFalsa> camada = Novo<CamadaFalsa>();
    Ref<Janelas> janelas = Novo<Janelas>(camada);
    PlataformaWindows plataforma{janelas, [] { return HWND(nullptr); }};
};

TEST_F(PlataformaWindowsTest, File_ThatCannotBeHad_IsTheFaultOfItsCase)
{
    plataforma.GravaArquivo(Em("um.bin"), {1, 2});
    std::filesystem::create_directory(pasta / L"pasta");
    EXPECT_EQ(Grava("falta\\a.bin"), 76);
    EXPECT_EQ(Grava("pasta"), 75);
    const HANDLE preso = CreateFileW((pasta / L"um.bin").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(Grava("um.bin"), 70);
    EXPECT_EQ(FalhaLancada([&] { plataforma.ApagaArquivo(Em("um.bin")); }).Numero, 70);
    CloseHandle(preso);
    EXPECT_EQ(FalhaLancada([&] { plataforma.TamanhoArquivo(Em("falta.bin")); }).Numero, 53);
    EXPECT_EQ(FalhaLancada([&] { plataforma.TamanhoArquivo(Em("pasta")); }).Numero, 53);
    EXPECT_EQ(FalhaLancada([&] { plataforma.ApagaArquivo(Em("falta.bin")); }).Numero, 53);
    EXPECT_EQ(FalhaLancada([&] { plataforma.ApagaArquivo(Em("pasta")); }).Numero, 53);
    EXPECT_TRUE(std::filesystem::exists(pasta / L"pasta"));
    EXPECT_EQ(plataforma.TamanhoArquivo(Em("um.bin")), 2);
    EXPECT_FALSE(plataforma.ExisteArquivo(Em("pasta")));
}

TEST_F(PlataformaWindowsTest, SizeAndRemoval_WhereThereIsNoSuchFolderOrName_AreTheFaultsOfThePath)
{
    const auto tamanho = [&](const std::string &nome) {
        return FalhaLancada([&] { plataforma.TamanhoArquivo(Em(nome)); }).Numero;
    };
    const auto apaga = [&](const std::string &nome) {
        return FalhaLancada([&] { plataforma.ApagaArquivo(Em(nome)); }).Numero;
    };
    EXPECT_EQ(tamanho("falta\\a.bin"), 76);
    EXPECT_EQ(apaga("falta\\a.bin"), 76);
    EXPECT_EQ(tamanho("que?.bin"), 75);
    EXPECT_EQ(apaga("que?.bin"), 75);
    EXPECT_EQ(Grava("que?.bin"), 75);
}

TEST_F(PlataformaWindowsTest, ReadOnlyFile_IsReadAndStays)
{
    plataforma.GravaArquivo(Em("so.bin"), {1, 2});
    const std::wstring arquivo = (pasta / L"so.bin").wstring();
    ASSERT_TRUE(SetFileAttributesW(arquivo.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(plataforma.TamanhoArquivo(Em("so.bin")), 2);
    const HANDLE aberto = CreateFileW(arquivo.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (aberto != INVALID_HANDLE_VALUE) {
        CloseHandle(aberto);
        SetFileAttributesW(arquivo.c_str(), FILE_ATTRIBUTE_NORMAL);
        GTEST_SKIP() << "the layer's user may write read-only files";
    }
    EXPECT_EQ(FalhaLancada([&] { plataforma.ApagaArquivo(Em("so.bin")); }).Numero, 70);
    EXPECT_EQ(Grava("so.bin"), 70);
    EXPECT_EQ(plataforma.TamanhoArquivo(Em("so.bin")), 2);
    SetFileAttributesW(arquivo.c_str(), FILE_ATTRIBUTE_NORMAL);
    plataforma.ApagaArquivo(Em("so.bin"));
    EXPECT_FALSE(plataforma.ExisteArquivo(Em("so.bin")));
}

TEST_F(PlataformaWindowsTest, GravaArquivo_OverALongerFile_LeavesTheOldTail)
{
    plataforma.GravaArquivo(Em("Aferição é.pdf"), {1, 2, 3, 4});
    plataforma.GravaArquivo(Em("Aferição é.pdf"), {9});
    EXPECT_EQ(plataforma.TamanhoArquivo(Em("Aferição é.pdf")), 4);
    plataforma.GravaArquivo(Em("vazio.bin"), {});
    EXPECT_EQ(plataforma.TamanhoArquivo(Em("vazio.bin")), 0);
    plataforma.ApagaArquivo(Em("vazio.bin"));
    EXPECT_FALSE(plataforma.ExisteArquivo(Em("vazio.bin")));
}

TEST_F(PlataformaWindowsTest, PrimeiroArquivo_GivesPlainFilesThatTheirWholeNameMatches)
{
    for (const char *nome : {"UM.LAY", "dois.lay", "TRES.LAYOUT", "Ação.lay", "lay.txt"}) {
        plataforma.GravaArquivo(Em(nome), {1});
    }
    std::filesystem::create_directory(pasta / L"pasta.lay");
    plataforma.GravaArquivo(Em("oculto.lay"), {1});
    SetFileAttributesW((pasta / L"oculto.lay").c_str(), FILE_ATTRIBUTE_HIDDEN);
    const bool escondeu = (GetFileAttributesW((pasta / L"oculto.lay").c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
    std::vector<std::string> esperados{"Ação.lay", "UM.LAY", "dois.lay"};
    if (!escondeu) { // the file system under the layer need not keep the flag
        esperados.emplace_back("oculto.lay");
    }
    std::ranges::sort(esperados);
    EXPECT_EQ(Lista("*.LAY"), esperados);
    EXPECT_EQ(Lista("U?.lay"), (std::vector<std::string>{"UM.LAY"}));
    EXPECT_EQ(Lista("falta*"), std::vector<std::string>{});
    EXPECT_EQ(plataforma.PrimeiroArquivo(Em("naoha\\*.LAY")), "");
    EXPECT_EQ(plataforma.ProximoArquivo(), "");
}

TEST_F(PlataformaWindowsTest, CaminhoModulo_IsTheFolderOfThisProgram)
{
    std::array<wchar_t, MAX_PATH> arquivo{};
    GetModuleFileNameW(nullptr, arquivo.data(), static_cast<DWORD>(arquivo.size()));
    EXPECT_EQ(plataforma.CaminhoModulo(), ParaUtf8(std::filesystem::path(arquivo.data()).parent_path().wstring()));
}

TEST_F(PlataformaWindowsTest, DataCurta_IsAsTheRegionWritesADay)
{
    const Data dia = DataDe(5, 3, 2026, 10, 20, 30);
    SYSTEMTIME sistema{};
    sistema.wDay = 5;
    sistema.wMonth = 3;
    sistema.wYear = 2026;
    std::array<wchar_t, 80> texto{};
    GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &sistema, nullptr, texto.data(), 80, nullptr);
    EXPECT_EQ(plataforma.DataCurta(dia), ParaUtf8(texto.data()));
    EXPECT_EQ(plataforma.DataCurta(DataDe(1, 2, 1500, 10, 0, 0)), "01/02/1500"); // before the system's calendar
}

TEST_F(PlataformaWindowsTest, Agora_IsTheSystemsClock)
{
    SYSTEMTIME antes;
    GetLocalTime(&antes);
    const Data agora = plataforma.Agora();
    SYSTEMTIME depois;
    GetLocalTime(&depois);
    const auto data = [](const SYSTEMTIME &t) {
        return DataDe(t.wDay, t.wMonth, t.wYear, t.wHour, t.wMinute, t.wSecond);
    };
    EXPECT_LE(data(antes), agora);
    EXPECT_LE(agora, data(depois));
}

TEST_F(PlataformaWindowsTest, Pointer_IsTheWaitOfTheWindows)
{
    plataforma.DefinePonteiro(PonteiroAmpulheta);
    EXPECT_EQ(plataforma.Ponteiro(), PonteiroAmpulheta);
    plataforma.DefinePonteiro(PonteiroNormal);
    EXPECT_EQ(camada->Anotados, (Textos{"espera", "não espera"}));
    EXPECT_EQ(plataforma.LarguraTela(), 1920 * 15);
    EXPECT_EQ(plataforma.AlturaTela(), 1080 * 15);
}

} // namespace
} // namespace nativo
