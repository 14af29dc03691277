#include "tests/server/Pedidos.h"
#include "tests/server/ServidorDeTeste.h"

#include <gtest/gtest.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <random>
#include <set>
#include <string>
#include <vector>

// What nobody sends who has the contract: a server is to refuse it, to answer nobody without rights, and to go on.

using grpc::StatusCode;

namespace {

const std::set<std::string> DeTodos{"Entrada/Apresenta", "Entrada/Entra"};

std::string AoAcaso(std::mt19937 &sorte, std::size_t quantos)
{
    std::string octetos(quantos, '\0');
    for (char &octeto : octetos) {
        octeto = static_cast<char>(sorte() & 0xFF);
    }
    return octetos;
}

// The message as it may come to be on the way to the server, or in the hands of somebody who means harm.
std::vector<std::string> Danificadas(const std::string &inteira, std::mt19937 &sorte)
{
    std::string virada = inteira;
    for (int n = 0; n < 3 && !virada.empty(); ++n) {
        virada[sorte() % virada.size()] ^= static_cast<char>(1 << sorte() % 8);
    }
    std::string funda;
    for (int n = 0; n < 300; ++n) { // the field 1 of the field 1 of the field 1...
        const std::size_t tamanho = funda.size();
        funda =
            std::string("\x0A") + static_cast<char>(0x80 | (tamanho & 0x7F)) + static_cast<char>(tamanho >> 7) + funda;
    }
    return {"",
            inteira.substr(0, inteira.size() / 2),
            virada,
            inteira + AoAcaso(sorte, 40),
            AoAcaso(sorte, 64),
            std::string("\x0A\xFF\xFF\xFF\xFF\x07") + inteira, // a text of two gigabytes
            inteira + std::string("\x0A\x03\xC3\x28\xFF", 5),  // what is no text
            funda};
}

// Sends the octets to a port, and waits until the other side has had enough of them.
void Despeja(std::uint16_t porta, const std::string &octetos)
{
    const int fio = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in onde{};
    onde.sin_family = AF_INET;
    onde.sin_port = htons(porta);
    onde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(connect(fio, reinterpret_cast<const sockaddr *>(&onde), sizeof onde), 0);
    for (std::size_t ja = 0; ja < octetos.size();) {
        const ssize_t foi = send(fio, octetos.data() + ja, octetos.size() - ja, MSG_NOSIGNAL);
        if (foi <= 0) {
            break; // closed before it was told all
        }
        ja += static_cast<std::size_t>(foi);
    }
    shutdown(fio, SHUT_WR);
    for (std::array<char, 4096> resposta; recv(fio, resposta.data(), resposta.size(), 0) > 0;) {
    }
    close(fio);
}

class DanificadasTeste : public testing::Test {
  protected:
    DanificadasTeste() { Um.Como.SessoesPorUsuario = 100; }

    std::string Historico() { return Um.Registro.Sql("SELECT COUNT(*) FROM HISTORICO"); }
    bool Atende() const { return Um.Chama("Entrada/Apresenta", {pedidos::SoDeUns("Entrada/Apresenta")}).Fim.ok(); }

    ServidorDeTeste Um;
};

TEST_F(DanificadasTeste, Messages_OfEveryOperation_AreRefusedAndTheServerGoesOn)
{
    Um.Comeca();
    Um.Registro.Cadastra("saulo");
    const std::string carla = Um.Entra("carla");
    std::string saulo = Um.Entra("saulo");
    const std::set<StatusCode> como{StatusCode::OK, StatusCode::INVALID_ARGUMENT, StatusCode::FAILED_PRECONDITION,
                                    StatusCode::UNAUTHENTICATED, StatusCode::RESOURCE_EXHAUSTED};
    std::mt19937 sorte(20260101);
    for (const std::string &operacao : pedidos::Operacoes()) {
        if (operacao == "Entrada/Sai") {
            continue;
        }
        for (const std::string &pedido : Danificadas(pedidos::SoDeUns(operacao), sorte)) {
            const auto pede = [&](const std::string &sessao) {
                ServidorDeTeste::Metadados dados{{"operacao", ServidorDeTeste::Numero()}};
                if (!sessao.empty()) {
                    dados.emplace("sessao", sessao);
                }
                const Feita feita = Um.Chama(operacao, {pedido}, dados);
                // What is no message at all the library refuses by itself, and says no more.
                EXPECT_TRUE(como.contains(feita.Fim.error_code()) ||
                            (feita.Fim.error_code() == StatusCode::INTERNAL && feita.Fim.error_message().empty()))
                    << operacao << ": " << feita.Fim.error_code() << " " << feita.Frase();
                return feita;
            };
            const Feita ninguem = pede("");
            if (!DeTodos.contains(operacao)) {
                EXPECT_EQ(ninguem.Fim.error_code(), StatusCode::UNAUTHENTICATED) << operacao;
                EXPECT_TRUE(ninguem.Respostas.empty()) << operacao;
            }
            const std::string antes = Historico();
            EXPECT_NE(pede(carla).Fim.error_code(), StatusCode::UNAUTHENTICATED) << operacao;
            EXPECT_EQ(Historico(), antes) << operacao; // she has no right to anything
            if (pede(saulo).Fim.error_code() == StatusCode::UNAUTHENTICATED) {
                saulo = Um.Entra("saulo"); // he may have signed himself out by a new password
            }
        }
    }
    EXPECT_TRUE(Atende());
}

TEST_F(DanificadasTeste, Metadata_LongAndOfAnyOctets_IsRefused)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    std::mt19937 sorte(7);
    const std::string pedido = pedidos::SoDeUns("EquiptoRN/altera");
    const std::string antes = Historico();
    for (const std::string &longo : {std::string(4000, 'A'), std::string("a b c"), std::string(43, '-')}) {
        EXPECT_EQ(Um.Chama("EquiptoRN/altera", {pedido}, {{"sessao", longo}, {"operacao", ServidorDeTeste::Numero()}})
                      .Fim.error_code(),
                  StatusCode::UNAUTHENTICATED);
        const Feita feita = Um.Chama("EquiptoRN/altera", {pedido}, {{"sessao", ana}, {"operacao", longo}});
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::INVALID_ARGUMENT) << feita.Frase();
    }
    for (int n = 0; n < 20; ++n) {
        const Feita feita = Um.Chama("EquiptoRN/altera", {pedido},
                                     {{"sessao", ana},
                                      {"operacao", ServidorDeTeste::Numero()},
                                      {"motivo-bin", AoAcaso(sorte, 1 + sorte() % 2000)}});
        EXPECT_TRUE(feita.Fim.error_code() == StatusCode::INVALID_ARGUMENT ||
                    feita.Fim.error_code() == StatusCode::FAILED_PRECONDITION)
            << feita.Fim.error_code() << " " << feita.Frase();
    }
    EXPECT_EQ(Historico(), antes);
    EXPECT_TRUE(Atende());
}

TEST_F(DanificadasTeste, Octets_OnEveryPort_AreNoCalls)
{
    std::mt19937 sorte(11);
    const std::string comeco = "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n";
    const std::string ajustes("\0\0\0\x04\0\0\0\0\0", 9); // a frame of no settings
    for (const bool semTls : {false, true}) {
        Um.Como.SemTls = semTls;
        Um.Como.Numeros = "127.0.0.1:0";
        Um.Comeca();
        for (const std::string &octetos :
             {AoAcaso(sorte, 5000), comeco + AoAcaso(sorte, 5000), comeco + ajustes + AoAcaso(sorte, 5000),
              comeco + ajustes + std::string("\0\0\x08\x01\x05\0\0\0\x01", 9) +
                  AoAcaso(sorte, 8), // headers of nonsense
              std::string("GET / HTTP/1.1\r\n\r\n"), std::string(200000, 'A')}) {
            Despeja(Um.Rodando().Porta(), octetos);
            Despeja(Um.Rodando().PortaDosNumeros(), octetos);
            EXPECT_TRUE(Atende());
        }
        Um.Acaba();
    }
}

} // namespace
