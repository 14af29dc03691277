#include "host/Falha.h"

#include <gtest/gtest.h>

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

Falha FalhaDe(const std::function<void()> &lanca)
{
    try {
        lanca();
    } catch (...) {
        return FalhaCorrente();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {0, "", ""};
}

void ConfereDoComponente(const Falha &falha, std::int32_t numero, const std::string &descricao)
{
    EXPECT_EQ(falha.Numero, numero);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
    EXPECT_EQ(falha.Descricao, descricao);
}

struct Base {
    virtual ~Base() = default;
};
struct Derivada : Base {};

void Profundo()
try {
    throw Falha(91);
} catch (...) {
    PassaFalha(" < clsFundo.Carrega");
}

void Meio()
try {
    Profundo();
} catch (...) {
    PassaFalha(" < clsMeio.Atualiza");
}

void Topo()
try {
    Meio();
} catch (...) {
    PassaFalha(" < frmTopo.cmdOK_Click");
}

} // namespace

TEST(Falha, construct_NumberOnly_TakesComponentAndPlatformText)
{
    ConfereDoComponente(Falha(91), 91, "Variável de objeto não definida");
}

TEST(Falha, construct_ThreeParts_KeepsThemUnaltered)
{
    const Falha falha(1001, "RN.Grava", "Equipamento em uso");

    EXPECT_EQ(falha.Numero, 1001);
    EXPECT_EQ(falha.Fonte, "RN.Grava");
    EXPECT_EQ(falha.Descricao, "Equipamento em uso");
}

TEST(Falha, construct_EmptySourceAndDescription_StayEmpty)
{
    const Falha falha(13, "", "");

    EXPECT_EQ(falha.Fonte, "");
    EXPECT_EQ(falha.Descricao, "");
}

TEST(Falha, what_AnyFault_IsItsDescription)
{
    const Falha falha(1001, "RN.Grava", "Equipamento em uso");

    EXPECT_STREQ(falha.what(), "Equipamento em uso");
    const std::exception &geral = falha;
    EXPECT_STREQ(geral.what(), "Equipamento em uso");
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
        {424, "Era esperado um objeto"},
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
    const Falha falha = FalhaDe([] { throw Falha(1001, "RN.Grava < X", "Equipamento em uso"); });

    EXPECT_EQ(falha.Numero, 1001);
    EXPECT_EQ(falha.Fonte, "RN.Grava < X");
    EXPECT_EQ(falha.Descricao, "Equipamento em uso");
}

TEST(FalhaCorrente, ask_OutOfMemory_Is7)
{
    ConfereDoComponente(FalhaDe([] { throw std::bad_alloc(); }), 7, "Memória insuficiente");
    ConfereDoComponente(FalhaDe([] { throw std::bad_array_new_length(); }), 7, "Memória insuficiente");
}

TEST(FalhaCorrente, ask_LengthError_Is7)
{
    ConfereDoComponente(FalhaDe([] { std::string().reserve(std::string().max_size() + 1); }), 7,
                        "Memória insuficiente");
}

TEST(FalhaCorrente, ask_OutOfRange_Is9)
{
    ConfereDoComponente(FalhaDe([] { std::string().substr(1); }), 9, "Posição ou chave fora do intervalo");
}

TEST(FalhaCorrente, ask_Overflow_Is6)
{
    ConfereDoComponente(FalhaDe([] { throw std::overflow_error("x"); }), 6, "Valor grande demais para o seu tipo");
}

TEST(FalhaCorrente, ask_BadCast_Is13)
{
    const std::string texto = "Tipo de dado incompatível";
    const Base base;
    ConfereDoComponente(FalhaDe([&base] { static_cast<void>(dynamic_cast<const Derivada &>(base)); }), 13, texto);
}

TEST(FalhaCorrente, ask_InvalidArgument_Is5)
{
    ConfereDoComponente(FalhaDe([] { throw std::invalid_argument("x"); }), 5,
                        "Chamada de procedimento ou argumento inválido");
}

TEST(FalhaCorrente, ask_SystemError_IsTheNumberOfItsCode)
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
        const Falha falha = FalhaDe([codigo = codigo] { throw std::system_error(std::make_error_code(codigo)); });
        ConfereDoComponente(falha, numero, DescricaoFalha(numero));
    }
}

TEST(FalhaCorrente, ask_FileSystemError_IsTheNumberOfItsCode)
{
    const Falha falha = FalhaDe([] {
        throw std::filesystem::filesystem_error("x", std::make_error_code(std::errc::no_such_file_or_directory));
    });

    ConfereDoComponente(falha, 53, "Arquivo não encontrado");
}

TEST(FalhaCorrente, ask_AnythingElse_Is51)
{
    ConfereDoComponente(FalhaDe([] { throw std::runtime_error("x"); }), 51, "Erro interno");
    ConfereDoComponente(FalhaDe([] { throw std::logic_error("x"); }), 51, "Erro interno");
    ConfereDoComponente(FalhaDe([] { throw std::exception(); }), 51, "Erro interno");
    ConfereDoComponente(FalhaDe([] { throw 3; }), 51, "Erro interno");
    ConfereDoComponente(FalhaDe([] { throw "text"; }), 51, "Erro interno");
}

TEST(PassaFalha, pass_ThreeProcedures_PathHasDeepestFirst)
{
    const Falha falha = FalhaDe(Topo);

    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsFundo.Carrega < clsMeio.Atualiza < frmTopo.cmdOK_Click");
    EXPECT_EQ(falha.Descricao, "Variável de objeto não definida");
}

TEST(PassaFalha, pass_FaultOfAService_KeepsNumberAndDescriptionAndItsSource)
{
    const Falha falha = FalhaDe([] {
        try {
            throw Falha(1001, "EquiptoRN.Inclui", "Equipamento em uso");
        } catch (...) {
            PassaFalha(" < clsEquipto.Inclui");
        }
    });

    EXPECT_EQ(falha.Numero, 1001);
    EXPECT_EQ(falha.Fonte, "EquiptoRN.Inclui < clsEquipto.Inclui");
    EXPECT_EQ(falha.Descricao, "Equipamento em uso");
}

TEST(PassaFalha, pass_ForeignException_BecomesFaultOnFirstTail)
{
    try {
        try {
            throw std::bad_alloc();
        } catch (...) {
            PassaFalha(" < clsEquipto.Clona");
        }
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Numero, 7);
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < clsEquipto.Clona");
        EXPECT_EQ(falha.Descricao, "Memória insuficiente");
        return;
    }
    FAIL() << "no fault was raised";
}

TEST(PassaFalha, pass_TailWithoutSeparator_IsAddedLetterByLetter)
{
    const Falha falha = FalhaDe([] {
        try {
            throw Falha(13);
        } catch (...) {
            PassaFalha("<x");
        }
    });

    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP<x");
}

TEST(PassaFalha, pass_CopyGrows_FaultHeldElsewhereDoesNot)
{
    const Falha original(9, "A", "B");
    const Falha passada = FalhaDe([&original] {
        try {
            throw original;
        } catch (...) {
            PassaFalha(" < C");
        }
    });

    EXPECT_EQ(passada.Fonte, "A < C");
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

TEST(IgnoraErro, run_StatementThatFailsWithForeignException_HasNoEffect)
{
    EXPECT_NO_THROW(IgnoraErro([] { throw 3; }));
    EXPECT_NO_THROW(IgnoraErro([] { throw std::bad_alloc(); }));
}

TEST(IgnoraErro, run_StatementThatSucceeds_RunsOnce)
{
    int vezes = 0;
    IgnoraErro([&vezes] { ++vezes; });
    EXPECT_EQ(vezes, 1);
}

TEST(IgnoraErro, run_InsideATail_FaultBeingHandledSurvives)
{
    const Falha falha = FalhaDe([] {
        try {
            throw Falha(91);
        } catch (...) {
            IgnoraErro([] { throw Falha(13); });
            PassaFalha(" < frmLista.Finaliza");
        }
    });

    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < frmLista.Finaliza");
}
