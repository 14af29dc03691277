#include "services/Permissoes.h"

#include <vector>

namespace mesa {

std::span<const Direito> Permissoes::Direitos()
{
    static const std::vector<Direito> direitos = {
        {Objeto, "", "Consultar equipamentos, aferições e limites"},
        {Objeto, "I", "Incluir equipamentos e limites"},
        {Objeto, "A", "Alterar equipamentos, sensores, aferições e limites"},
        {Objeto, "E", "Desativar e reativar equipamentos, excluir limites"},
        {ObjetoAdministracao, Usuarios, "Administrar usuários, clientes e setores"},
        {ObjetoAdministracao, Tabelas, "Manter logradouros e layouts"},
        {ObjetoAdministracao, Copias, "Conferir o registro, fazer e restaurar cópias"},
    };
    return direitos;
}

std::string Permissoes::EmPalavras(const std::string &objeto, const std::string &acao)
{
    for (const Direito &direito : Direitos()) {
        if (direito.Objeto == objeto && direito.Acao == acao) {
            return direito.Palavras;
        }
    }
    return objeto + " " + acao;
}

bool Permissoes::Tem(Banco &banco, std::int32_t operador, const std::string &sistema, const std::string &objeto,
                     const std::string &acao)
{
    Consulta achada(
        banco,
        "SELECT 1 FROM PERMISSAO p JOIN USUARIO u ON u.Numero = p.Numero AND u.Ativo = 1 AND u.TrocaSenha = 2 "
        "WHERE p.Ativo = 1 AND p.Numero = ? AND p.Sistema = ? AND p.Objeto = ? AND p.Acao = ?",
        {operador, Q(sistema), Q(objeto), Q(acao)});
    return achada.Proxima();
}

} // namespace mesa
