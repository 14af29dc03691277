#include "tests/mortes/Ponte.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <thread>

using namespace mortes;

namespace {

// Answers each octet with two of them, on the first connection that comes, until that ends.
class Eco {
  public:
    Eco() : m_Escuta(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in endereco{};
        endereco.sin_family = AF_INET;
        endereco.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t tamanho = sizeof endereco;
        if (bind(m_Escuta, reinterpret_cast<sockaddr *>(&endereco), tamanho) != 0 || listen(m_Escuta, 1) != 0 ||
            getsockname(m_Escuta, reinterpret_cast<sockaddr *>(&endereco), &tamanho) != 0) {
            throw std::runtime_error("no place to listen");
        }
        Porta = ntohs(endereco.sin_port);
        m_Fio = std::thread([this] {
            const int ligado = accept(m_Escuta, nullptr, nullptr);
            char octeto = 0;
            while (recv(ligado, &octeto, 1, 0) == 1) {
                Recebido += octeto;
                const std::array<char, 2> resposta{octeto, octeto};
                send(ligado, resposta.data(), resposta.size(), MSG_NOSIGNAL);
            }
            close(ligado);
        });
    }
    Eco(const Eco &) = delete;
    Eco &operator=(const Eco &) = delete;
    ~Eco()
    {
        Termina();
        close(m_Escuta);
    }
    // What came, when the connection has ended.
    void Termina()
    {
        if (m_Fio.joinable()) {
            m_Fio.join();
        }
    }

    std::uint16_t Porta = 0;
    std::string Recebido;

  private:
    int m_Escuta;
    std::thread m_Fio;
};

// Says the text to the port, and gives what is answered until so many octets came or the connection is broken.
std::string Conversa(std::uint16_t porta, const std::string &texto, std::size_t ate)
{
    const int soquete = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in endereco{};
    endereco.sin_family = AF_INET;
    endereco.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    endereco.sin_port = htons(porta);
    std::string resposta;
    if (connect(soquete, reinterpret_cast<sockaddr *>(&endereco), sizeof endereco) == 0) {
        send(soquete, texto.data(), texto.size(), MSG_NOSIGNAL);
        char octeto = 0;
        while (resposta.size() < ate && recv(soquete, &octeto, 1, 0) == 1) {
            resposta += octeto;
        }
    }
    close(soquete);
    return resposta;
}

TEST(Ponte, NothingIsCut_AllGoesThrough)
{
    Eco eco;
    Ponte ponte(NasPortas({eco.Porta}));
    EXPECT_EQ(Conversa(ponte.Porta(), "abc", 6), "aabbcc");
    EXPECT_EQ(ponte.Cortes(), 0U);
    EXPECT_EQ(ponte.Passaram(Ponte::Sentido::Ida), 3U);
    EXPECT_EQ(ponte.Passaram(Ponte::Sentido::Volta), 6U);
}

TEST(Ponte, NobodyAtTheFirstPlace_LeadsToTheSecond)
{
    Eco eco;
    Ponte ponte(NasPortas({PortaLivre(), eco.Porta}));
    EXPECT_EQ(Conversa(ponte.Porta(), "abc", 6), "aabbcc");
}

TEST(Ponte, NobodyAnywhere_IsBroken)
{
    Ponte ponte(NasPortas({PortaLivre()}));
    EXPECT_EQ(Conversa(ponte.Porta(), "abc", 6), "");
}

TEST(Ponte, CutOnTheWayThere_OnlyWhatCameBeforeArrives)
{
    for (std::size_t octeto = 0; octeto < 3; ++octeto) {
        Eco eco;
        Ponte ponte(NasPortas({eco.Porta}));
        ponte.CortaAntesDe(Ponte::Sentido::Ida, octeto);
        Conversa(ponte.Porta(), "abc", 6);
        eco.Termina();
        EXPECT_EQ(eco.Recebido, std::string("abc").substr(0, octeto));
        EXPECT_EQ(ponte.Cortes(), 1U);
    }
}

TEST(Ponte, CutOnTheWayBack_AllArrivesAndTheAnswerIsCut)
{
    for (std::size_t octeto = 0; octeto < 6; ++octeto) {
        Eco eco;
        Ponte ponte(NasPortas({eco.Porta}));
        ponte.CortaAntesDe(Ponte::Sentido::Volta, octeto);
        EXPECT_EQ(Conversa(ponte.Porta(), "abc", 6), std::string("aabbcc").substr(0, octeto));
        EXPECT_EQ(ponte.Cortes(), 1U);
    }
}

TEST(Ponte, CutTakenBack_AllGoesThrough)
{
    Eco eco;
    Ponte ponte(NasPortas({eco.Porta}));
    ponte.CortaAntesDe(Ponte::Sentido::Ida, 1);
    ponte.NaoCorta();
    EXPECT_EQ(Conversa(ponte.Porta(), "abc", 6), "aabbcc");
}

} // namespace
