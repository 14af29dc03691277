#include "desk/services/Permissoes.h"

namespace mesa {

bool Permissoes::Tem(Banco &banco, std::int32_t operador, const std::string &sistema, const std::string &objeto,
                     const std::string &acao)
{
    Consulta achada(banco,
                    "SELECT 1 FROM PERMISSAO p JOIN USUARIO u ON u.Numero = p.Numero AND u.Ativo = 1 "
                    "WHERE p.Ativo = 1 AND p.Numero = ? AND p.Sistema = ? AND p.Objeto = ? AND p.Acao = ?",
                    {operador, Q(sistema), Q(objeto), Q(acao)});
    return achada.Proxima();
}

} // namespace mesa
