#include "rede/Endereco.h"

#include <arpa/inet.h>

#include <charconv>

namespace rede {

std::optional<Endereco> Endereco::Le(const std::string &texto, std::string &recusa)
{
    recusa.clear();
    Endereco endereco;
    std::string porta;
    const bool entreColchetes = texto.starts_with('[');
    const std::size_t fim = entreColchetes ? texto.find(']') : texto.find(':');
    endereco.Maquina =
        texto.substr(entreColchetes ? 1 : 0, fim == std::string::npos ? fim : fim - (entreColchetes ? 1 : 0));
    const std::size_t dois = entreColchetes && fim != std::string::npos ? fim + 1 : fim;
    const bool temPorta = dois != std::string::npos && dois < texto.size();
    if (temPorta) {
        porta = texto.substr(dois + 1);
        const auto [ate, erro] = std::from_chars(porta.data(), porta.data() + porta.size(), endereco.Porta);
        if (texto[dois] != ':' || erro != std::errc() || ate != porta.data() + porta.size() || endereco.Porta == 0) {
            recusa = "A porta do servidor é um número de 1 a 65535: \"máquina:porta\".";
            return std::nullopt;
        }
    }
    if (endereco.Maquina.empty() || endereco.Maquina.find_first_of(" /\t") != std::string::npos ||
        (entreColchetes && fim == std::string::npos)) {
        recusa = "Informe o servidor pelo nome ou número da máquina, como \"registro.exemplo\" ou "
                 "\"registro.exemplo:50443\".";
        return std::nullopt;
    }
    return endereco;
}

std::string Endereco::Texto() const
{
    const bool seis = Maquina.find(':') != std::string::npos;
    return (seis ? "[" + Maquina + "]" : Maquina) + ":" + std::to_string(Porta);
}

bool Endereco::DestaMaquina() const
{
    in6_addr numero{}; // a name that begins like a number is another machine's
    return Maquina == "localhost" || Maquina == "::1" ||
           (Maquina.starts_with("127.") && inet_pton(AF_INET, Maquina.c_str(), &numero) == 1);
}

} // namespace rede
