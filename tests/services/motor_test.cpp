#include "tests/services/Motor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace motor;

TEST(Motor, CadaLugarTemOSeuBancoQueSaiComEle)
{
    std::string nome;
    {
        const RegistroVazio um;
        const RegistroVazio outro;
        EXPECT_NE(um.Onde(), outro.Onde());
        nome = um.Onde();
    }
    if (DeTeste() == Qual::SQLite) {
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(nome).parent_path()));
    } else {
        EXPECT_THROW(Linhas(nome, "SELECT 1"), std::runtime_error);
    }
}

TEST(Aglomerado, VoltaDepoisDeMortoComOQueTinha)
{
    Aglomerado um({.Duravel = true});
    Linhas(um.Texto("postgres"), "CREATE TABLE T (N int); INSERT INTO T VALUES (7)");
    um.Mata();
    EXPECT_FALSE(um.Anda());
    EXPECT_THROW(Linhas(um.Texto("postgres"), "SELECT N FROM T"), std::runtime_error);
    um.Inicia();
    EXPECT_EQ(Linhas(um.Texto("postgres"), "SELECT N FROM T"), std::vector<std::string>{"7"});
    um.Encerra();
    um.Inicia();
    EXPECT_EQ(Linhas(um.Texto("postgres"), "SELECT N, N + 1 FROM T"), std::vector<std::string>{"7|8"});
}

TEST(Aglomerado, AReservaSegueEPassaAGravar)
{
    auto primario = std::make_unique<Aglomerado>();
    const auto reserva = primario->Reserva("reserva");
    primario->ExigeReserva("reserva");
    Linhas(primario->Texto("postgres"), "CREATE TABLE T (N int); INSERT INTO T VALUES (7)");
    EXPECT_THROW(Linhas(reserva->Texto("postgres"), "CREATE TABLE U (N int)"), std::runtime_error);
    primario->Mata();
    reserva->Promove();
    const std::string texto =
        Aglomerado::TextoDeTodos({primario.get(), reserva.get()}, "postgres") + "?target_session_attrs=read-write";
    EXPECT_EQ(Linhas(texto, "INSERT INTO T VALUES (8); SELECT COUNT(*) FROM T"), std::vector<std::string>{"2"});
    const std::filesystem::path pasta = primario->Pasta();
    primario.reset();
    EXPECT_FALSE(std::filesystem::exists(pasta));
}
