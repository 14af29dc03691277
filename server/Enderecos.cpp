#include "server/Enderecos.h"

#include <arpa/inet.h>

#include <array>
#include <charconv>

namespace servidor {

namespace {

bool EhNumero4(const std::string &maquina)
{
    in_addr endereco{};
    return ::inet_pton(AF_INET, maquina.c_str(), &endereco) == 1;
}

std::optional<in6_addr> Numero6(const std::string &maquina)
{
    in6_addr endereco{};
    return ::inet_pton(AF_INET6, maquina.c_str(), &endereco) == 1 ? std::optional(endereco) : std::nullopt;
}

} // namespace

std::optional<LugarDeEscuta> LugarDeEscuta::Le(const std::string &texto)
{
    const std::size_t dois = texto.rfind(':');
    if (dois == std::string::npos) {
        return std::nullopt;
    }
    LugarDeEscuta lugar;
    lugar.Maquina = texto.substr(0, dois);
    const char *const fim = texto.data() + texto.size();
    const auto [ate, erro] = std::from_chars(texto.data() + dois + 1, fim, lugar.Porta);
    if (erro != std::errc() || ate != fim) {
        return std::nullopt;
    }
    if (lugar.Maquina.size() > 2 && lugar.Maquina.front() == '[' && lugar.Maquina.back() == ']') {
        lugar.Maquina = lugar.Maquina.substr(1, lugar.Maquina.size() - 2);
        return Numero6(lugar.Maquina) ? std::optional(lugar) : std::nullopt;
    }
    return lugar.Maquina == "localhost" || EhNumero4(lugar.Maquina) ? std::optional(lugar) : std::nullopt;
}

bool LugarDeEscuta::SoNestaMaquina() const
{
    return Maquina == "localhost" || Maquina == "::1" || Maquina.starts_with("127.");
}

std::string LugarDeEscuta::Texto() const
{
    const bool seis = Maquina.find(':') != std::string::npos;
    return (seis ? "[" + Maquina + "]" : Maquina) + ":" + std::to_string(Porta);
}

std::string EnderecoDeQuem(const std::string &ponta)
{
    if (ponta.starts_with("ipv4:")) {
        return ponta.substr(5, ponta.rfind(':') - 5);
    }
    if (!ponta.starts_with("ipv6:")) {
        return ponta.substr(0, ponta.find(':'));
    }
    std::string maquina = ponta.substr(5, ponta.rfind(':') - 5);
    for (const std::string colchete : {"%5B", "%5D", "[", "]"}) {
        if (const std::size_t onde = maquina.find(colchete); onde != std::string::npos) {
            maquina.erase(onde, colchete.size());
        }
    }
    maquina = maquina.substr(0, maquina.find('%')); // the zone
    auto numero = Numero6(maquina);
    if (!numero) {
        return maquina;
    }
    std::array<char, INET6_ADDRSTRLEN> texto{};
    if (IN6_IS_ADDR_V4MAPPED(&*numero)) {
        return ::inet_ntop(AF_INET, &numero->s6_addr[12], texto.data(), texto.size());
    }
    if (IN6_IS_ADDR_LOOPBACK(&*numero)) {
        return "::1";
    }
    for (std::size_t n = 8; n < 16; ++n) {
        numero->s6_addr[n] = 0;
    }
    return std::string(::inet_ntop(AF_INET6, &*numero, texto.data(), texto.size())) + "/64";
}

} // namespace servidor
