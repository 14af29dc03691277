#include "server/Fim.h"

#include "services/LigacaoPostgres.h"

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

std::string SemPalavras(std::string frase, const std::vector<std::string> &palavras, const std::string &registro)
{
    const auto troca = [&](const std::string &oQue, const std::string &porQue) {
        for (std::size_t onde = 0; (onde = frase.find(oQue, onde)) != std::string::npos; onde += porQue.size()) {
            frase.replace(onde, oQue.size(), porQue);
        }
    };
    for (const std::string &umas : palavras) {
        troca(" (" + umas + ")", "");
    }
    if (mesa::EhDeServidor(registro)) {
        troca(mesa::NomeDoServidor(registro), "banco de dados");
    }
    return frase;
}

} // namespace servidor
