#include "desk/host/CompletaEntrada.h"

namespace mesa {

bool CompletaEntrada(SessaoServico &sessao, const std::function<void(const std::string &aviso)> &avisa,
                     const std::function<bool()> &trocaSenha)
{
    if (!sessao.AvisoDeRelogio().empty()) {
        avisa(sessao.AvisoDeRelogio());
    }
    return !sessao.DeveTrocarSenha() || trocaSenha(); // and the server's clock comes with the answer
}

} // namespace mesa
