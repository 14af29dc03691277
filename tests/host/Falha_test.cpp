#include "host/Falha.h"

#include "tests/support/FalhaLancada.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeinfo>
#include <utility>
#include <variant>
#include <vector>

namespace {

struct Base {
    virtual ~Base() = default;
};
struct Derivada : Base {};

// Runs a procedure with this passing tail.
void ComCauda(const std::function<void()> &procedimento, std::string_view cauda)
try {
    procedimento();
} catch (...) {
    PassaFalha(cauda);
}

} // namespace

TEST(Falha, construct_NumberOnly_TakesComponentAndPlatformText)
{
    EXPECT_TRUE(FalhaIgual(Falha(91), 91, "ZTAVOREQUIP", "Variável de objeto não definida"));
}

TEST(Falha, construct_ThreeParts_KeepsThemUnalteredAndIsItsDescription)
{
    const Falha falha(1001, "RN.Grava", "Equipamento em uso");
    EXPECT_TRUE(FalhaIgual(falha, 1001, "RN.Grava", "Equipamento em uso"));
    const std::exception &geral = falha;
    EXPECT_STREQ(geral.what(), "Equipamento em uso");
    EXPECT_TRUE(FalhaIgual(Falha(13, "", ""), 13, "", ""));
}

TEST(DescricaoFalha, ask_EveryPlatformNumber_HasItsOwnText)
{
    const std::vector<std::pair<std::int32_t, std::string>> tabela = {
        {5, "Chamada de procedimento ou argumento inválido"},
        {6, "Valor grande demais para o seu tipo"},
        {7, "Memória insuficiente"},
        {9, "Posição ou chave fora do intervalo"},
        {11, "Divisão por zero"},
        {13, "Tipo de dado incompatível"},
        {51, "Erro interno"},
        {53, "Arquivo não encontrado"},
        {61, "Disco cheio"},
        {70, "Permissão negada"},
        {75, "Erro de acesso ao caminho ou arquivo"},
        {76, "Caminho não encontrado"},
        {91, "Variável de objeto não definida"},
        {94, "Uso inválido de um valor nulo"},
        {424, "Era esperado um objeto"},
        {429, "Não foi possível criar o objeto"},
        {438, "O objeto não tem esta propriedade ou método"},
        {457, "A chave já está em uso nesta coleção"},
    };
    for (const auto &[numero, descricao] : tabela) {
        EXPECT_EQ(DescricaoFalha(numero), descricao) << numero;
    }
}

TEST(DescricaoFalha, ask_UnknownNumber_IsTheGeneralText)
{
    for (const std::int32_t numero : {0, -1, 1, 8, 92, 1001, -2147483647}) {
        EXPECT_EQ(DescricaoFalha(numero), "Erro definido pela aplicação ou pelo objeto") << numero;
    }
}

TEST(FalhaCorrente, ask_Fault_IsThatFaultUnaltered)
{
    EXPECT_TRUE(Lanca(1001, "RN.Grava < X", "Equipamento em uso",
                      [] { throw Falha(1001, "RN.Grava < X", "Equipamento em uso"); }));
}

TEST(FalhaCorrente, ask_ForeignException_IsTheFaultThatItStandsFor)
{
    const Base base;
    const std::vector<std::pair<std::int32_t, std::function<void()>>> tabela = {
        {7, [] { throw std::bad_alloc(); }},
        {7, [] { throw std::bad_array_new_length(); }},
        {7, [] { std::string().reserve(std::string().max_size() + 1); }},
        {9, [] { std::string().substr(1); }},
        {6, [] { throw std::overflow_error("x"); }},
        {13, [&] { static_cast<void>(dynamic_cast<const Derivada &>(base)); }},
        {5, [] { throw std::invalid_argument("x"); }},
        {51, [] { throw std::runtime_error("x"); }},
        {51, [] { throw std::logic_error("x"); }},
        {51, [] { throw std::exception(); }},
        {51, [] { throw 3; }},
        {51, [] { throw "text"; }},
    };
    for (const auto &[numero, lanca] : tabela) {
        EXPECT_TRUE(Lanca(numero, "ZTAVOREQUIP", DescricaoFalha(numero), lanca));
    }
}

TEST(FalhaCorrente, ask_SystemOrFileSystemError_IsTheNumberOfItsCode)
{
    const std::vector<std::pair<std::errc, std::int32_t>> tabela = {
        {std::errc::no_such_file_or_directory, 53},
        {std::errc::no_space_on_device, 61},
        {std::errc::permission_denied, 70},
        {std::errc::operation_not_permitted, 70},
        {std::errc::not_enough_memory, 7},
        {std::errc::io_error, 75},
        {std::errc::is_a_directory, 75},
    };
    for (const auto &[codigo, numero] : tabela) {
        const std::error_code erro = std::make_error_code(codigo);
        EXPECT_TRUE(Lanca(numero, "ZTAVOREQUIP", DescricaoFalha(numero), [&] { throw std::system_error(erro); }));
        EXPECT_TRUE(Lanca(numero, "ZTAVOREQUIP", DescricaoFalha(numero),
                          [&] { throw std::filesystem::filesystem_error("x", erro); }));
    }
}

TEST(PassaFalha, pass_ThreeProcedures_PathHasDeepestFirst)
{
    const auto fundo = [] { ComCauda([] { throw Falha(91); }, " < clsFundo.Carrega"); };
    const auto meio = [&] { ComCauda(fundo, " < clsMeio.Atualiza"); };
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < clsFundo.Carrega < clsMeio.Atualiza < frmTopo.cmdOK_Click",
                      "Variável de objeto não definida", [&] { ComCauda(meio, " < frmTopo.cmdOK_Click"); }));
}

TEST(PassaFalha, pass_FaultOfAService_KeepsNumberAndDescriptionAndItsSource)
{
    EXPECT_TRUE(Lanca(1001, "EquiptoRN.Inclui < clsEquipto.Inclui", "Equipamento em uso", [] {
        ComCauda([] { throw Falha(1001, "EquiptoRN.Inclui", "Equipamento em uso"); }, " < clsEquipto.Inclui");
    }));
}

TEST(PassaFalha, pass_ForeignException_BecomesFaultOnFirstTail)
{
    try {
        ComCauda([] { throw std::bad_alloc(); }, " < clsEquipto.Clona");
    } catch (const Falha &falha) {
        EXPECT_TRUE(FalhaIgual(falha, 7, "ZTAVOREQUIP < clsEquipto.Clona", "Memória insuficiente"));
        return;
    }
    FAIL() << "no fault was raised";
}

TEST(PassaFalha, pass_TailWithoutSeparator_IsAddedLetterByLetter)
{
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP<x", [] { ComCauda([] { throw Falha(13); }, "<x"); }));
}

TEST(PassaFalha, pass_CopyGrows_FaultHeldElsewhereDoesNot)
{
    const Falha original(9, "A", "B");
    EXPECT_TRUE(Lanca(9, "A < C", [&] { ComCauda([&] { throw original; }, " < C"); }));
    EXPECT_EQ(original.Fonte, "A");
}

TEST(IgnoraErro, run_StatementThatFails_EndsOnlyTheStatement)
{
    bool antes = false;
    bool depois = false;
    EXPECT_NO_THROW(IgnoraErro([&] {
        antes = true;
        if (antes) {
            throw Falha(91);
        }
        depois = true;
    }));
    EXPECT_TRUE(antes);
    EXPECT_FALSE(depois);
}

TEST(IgnoraErro, run_StatementThatFailsWithForeignExceptionOrSucceeds_EndsWithIt)
{
    EXPECT_NO_THROW(IgnoraErro([] { throw 3; }));
    EXPECT_NO_THROW(IgnoraErro([] { throw std::bad_alloc(); }));
    int vezes = 0;
    IgnoraErro([&vezes] { ++vezes; });
    EXPECT_EQ(vezes, 1);
}

TEST(IgnoraErro, run_InsideATail_FaultBeingHandledSurvives)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < frmLista.Finaliza", [] {
        try {
            throw Falha(91);
        } catch (...) {
            IgnoraErro([] { throw Falha(13); });
            PassaFalha(" < frmLista.Finaliza");
        }
    }));
}
