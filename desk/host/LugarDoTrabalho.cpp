#include "desk/host/LugarDoTrabalho.h"

#include "host/Texto.h"

#include <filesystem>
#include <system_error>

namespace mesa {

std::string OndeFica(const LugarDoTrabalho &lugar)
{
    return lugar.Servidor ? "servidor " + lugar.Servidor->Texto() : "este computador";
}

std::optional<LugarDoTrabalho> LeServidor(const std::string &endereco, const std::string &digital,
                                          const std::string &autoridade, ProblemaDoLugar &problema)
{
    LugarDoTrabalho lugar;
    problema.Campo = CampoDoLugar::Servidor;
    lugar.Servidor = rede::Endereco::Le(Trim(endereco), problema.Frase);
    if (!lugar.Servidor) {
        return std::nullopt;
    }
    if (!Trim(digital).empty()) {
        const auto lida = LeDigital(digital);
        if (!lida) {
            problema = {CampoDoLugar::Digital,
                        "A digital tem 64 algarismos de 0 a 9 e de A a F, em pares. Copie-a inteira."};
            return std::nullopt;
        }
        lugar.Digital = *lida;
    }
    lugar.Autoridade = Trim(autoridade);
    std::error_code naoHa;
    if (!lugar.Autoridade.empty() && !std::filesystem::is_regular_file(lugar.Autoridade, naoHa)) {
        problema = {CampoDoLugar::Autoridade,
                    "O arquivo " + lugar.Autoridade + " não existe. Escolha o do certificado da autoridade."};
        return std::nullopt;
    }
    if (!lugar.Digital.empty() && !lugar.Autoridade.empty()) {
        problema = {CampoDoLugar::Autoridade, "Informe a digital ou o arquivo da autoridade, e não os dois."};
        return std::nullopt;
    }
    return lugar;
}

} // namespace mesa
