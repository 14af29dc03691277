#include "tests/mortes/Cenario.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <array>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace mortes;
using namespace mesa;

namespace {

TEST(DoisServidores, TwoEditOneRecord_TheSecondIsToldWhoWasFirst)
{
    const Cenario cenario({.Clientes = 2, .ComReserva = false, .Duravel = false});
    const auto ana = cenario.Sessao(0, 0);
    const auto bia = cenario.Sessao(1, 1);
    const std::int32_t numero = Inclui(ana, EquipamentoDe("E1"));
    Abre(ana, numero);
    Abre(bia, numero);
    Exigido(Pede(ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "de ana")));

    const Retorno tarde = Pede(bia, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "de bia"));
    EXPECT_FALSE(tarde.Feita);
    EXPECT_NE(tarde.Recusa.find("Operador 0"), std::string::npos) << tarde.Recusa;
    EXPECT_NE(tarde.Recusa.find("depois de aberto aqui"), std::string::npos) << tarde.Recusa;
    EXPECT_EQ(Abre(bia, numero)->Descricao.Valor(), "de ana");
    Exigido(Pede(bia, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "de bia")));
    EXPECT_EQ(Abre(ana, numero)->Descricao.Valor(), "de bia");
}

TEST(DoisServidores, TwoEditOneRecordAtOnce_EachChangeStandsOnTheOneBefore)
{
    constexpr int mudancas = 40;
    const Cenario cenario({.Clientes = 2, .ComReserva = false, .Duravel = false});
    const std::array sessoes{cenario.Sessao(0, 0), cenario.Sessao(1, 1)};
    const std::int32_t numero = Inclui(sessoes[0], Com(EquipamentoDe("E1"), &EquiptoED::SubCodigo, "0"));
    std::array<int, 2> recusas{};
    std::latch comecam(2);
    std::vector<std::thread> fios;
    for (std::size_t qual = 0; qual < 2; ++qual) {
        fios.emplace_back([&, qual] {
            comecam.arrive_and_wait();
            for (int feitas = 0; feitas < mudancas;) {
                Valor lido;
                std::string recusa;
                Ref<Objeto> pergunta = SoNumero(numero);
                ASSERT_TRUE(sessoes[qual]->Executa("EquiptoRN", "consulta", pergunta, lido, recusa)) << recusa;
                const auto aberto = lido.Como<EquiptoED>();
                auto mudado = Com(SoNumero(numero), &EquiptoED::SubCodigo,
                                  std::to_string(std::stoi(aberto->SubCodigo.Valor()) + 1));
                mudado->VersaoLida = aberto->VersaoLida;
                Ref<Objeto> pedido = mudado;
                Valor retorno;
                if (sessoes[qual]->Executa("EquiptoRN", "altera", pedido, retorno, recusa)) {
                    ++feitas;
                } else {
                    ASSERT_NE(recusa.find("depois de aberto aqui"), std::string::npos) << recusa;
                    ++recusas[qual];
                }
            }
        });
    }
    for (std::thread &fio : fios) {
        fio.join();
    }
    const auto fim = Abre(sessoes[0], numero);
    EXPECT_EQ(fim->SubCodigo.Valor(), std::to_string(2 * mudancas));
    EXPECT_GT(recusas[0] + recusas[1], 0); // they were in each other's way
}

} // namespace
