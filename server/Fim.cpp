#include "server/Fim.h"

#include <utility>

namespace servidor {

std::string Cortado(const std::string &texto, std::size_t octetos)
{
    if (texto.size() <= octetos) {
        return texto;
    }
    while (octetos > 0 && (static_cast<unsigned char>(texto[octetos]) & 0xC0) == 0x80) {
        --octetos;
    }
    return texto.substr(0, octetos);
}

mesa::ErroSql SemDetalhe(mesa::ErroSql erro)
{
    const std::string detalhe = std::exchange(erro.Detalhe, "");
    const std::string entre = " (" + detalhe + ")";
    if (const auto onde = erro.Descricao.find(entre); onde != std::string::npos) {
        erro.Descricao.erase(onde, entre.size());
    }
    if (!detalhe.empty() && erro.Descricao.find(detalhe) != std::string::npos) {
        erro.Descricao = "O registro não está onde devia estar: avise quem administra o servidor.";
    }
    return erro;
}

} // namespace servidor
