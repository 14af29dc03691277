#include "services/Usuarios.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Historico.h"
#include "services/Permissoes.h"

namespace mesa {

std::int32_t Usuarios::Inclui(const Novo &novo)
{
    std::int32_t numero = novo.Quem.Numero;
    if (numero == 0) {
        // The database's own numbering would not count those that came with a number.
        Consulta maior(m_Banco, "SELECT COALESCE(MAX(Numero), 0) FROM USUARIO");
        maior.Proxima();
        numero = CLng(maior.Inteiro(0) + 1);
    }
    m_Banco.Insere("USUARIO", {{"Numero", numero},
                               {"Usuario", Q(novo.Quem.Usuario)},
                               {"Chave", Q(ChaveSemCaixa(novo.Quem.Usuario))},
                               {"Nome", Q(novo.Quem.Nome)},
                               {"CodCliente", novo.Quem.CodCliente},
                               {"Setor", Q(novo.Quem.Setor)},
                               {"CodMunic", novo.Quem.CodMunic},
                               {"Senha", Q(novo.Senha)},
                               {"Ativo", Indicador::Sim},
                               {"TrocaSenha", novo.TrocaSenha ? Indicador::Sim : Indicador::Nao},
                               {"Versao", 1}});
    Registra("USUARIO", numero, 1, "USUARIO", numero, "inclui");
    for (const ChaveDeDireito &direito : novo.Direitos) {
        DefineDireito(numero, 1, direito, true);
    }
    return numero;
}

void Usuarios::DefineDireito(std::int32_t numero, std::int64_t versao, const ChaveDeDireito &direito, bool tem)
{
    std::int64_t permissao = 0;
    bool tinha = false;
    {
        Consulta linha(m_Banco,
                       "SELECT NroPermissao, Ativo FROM PERMISSAO "
                       "WHERE Numero = ? AND Sistema = ? AND Objeto = ? AND Acao = ?",
                       {numero, Q(Permissoes::Sistema), Q(direito.first), Q(direito.second)});
        if (linha.Proxima()) {
            permissao = linha.Inteiro(0);
            tinha = linha.Inteiro(1) == Indicador::Sim;
        }
    }
    if (tem == tinha) {
        return;
    }
    const bool nova = permissao == 0;
    if (nova) {
        permissao = m_Banco
                        .Insere("PERMISSAO", {{"Numero", numero},
                                              {"Sistema", Q(Permissoes::Sistema)},
                                              {"Objeto", Q(direito.first)},
                                              {"Acao", Q(direito.second)},
                                              {"Ativo", Indicador::Sim}})
                        .NumeroNovo();
    } else {
        m_Banco.Atualiza("PERMISSAO", {{"Ativo", tem ? Indicador::Sim : Indicador::Nao}},
                         {"NroPermissao", qlonglong(permissao)});
    }
    Registra("USUARIO", numero, versao, "PERMISSAO", permissao, nova ? "inclui" : tem ? "reativa" : "desativa");
}

void Usuarios::IncluiCliente(const ClienteCadastrado &cliente)
{
    m_Banco.Insere("CLIENTE", {{"CodCliente", cliente.CodCliente},
                               {"Nome", Q(cliente.Nome)},
                               {"UF", Q(cliente.UF)},
                               {"Ativo", Indicador::Sim},
                               {"Versao", 1}});
    Registra("CLIENTE", cliente.CodCliente, 1, "CLIENTE", cliente.CodCliente, "inclui");
    for (const std::string &setor : cliente.Setores) {
        IncluiSetor(cliente.CodCliente, 1, setor);
    }
}

void Usuarios::IncluiSetor(std::int32_t codCliente, std::int64_t versao, const std::string &nome)
{
    const std::int64_t setor =
        m_Banco.Insere("SETOR", {{"CodCliente", codCliente}, {"Nome", Q(nome)}, {"Ativo", Indicador::Sim}})
            .NumeroNovo();
    Registra("CLIENTE", codCliente, versao, "SETOR", setor, "inclui");
}

bool Usuarios::HaUsuarios(Banco &banco)
{
    return Consulta(banco, "SELECT 1 FROM USUARIO LIMIT 1").Proxima();
}

std::optional<ClienteCadastrado> Usuarios::Cliente(Banco &banco, std::int32_t codCliente)
{
    std::optional<ClienteCadastrado> cliente;
    {
        Consulta linha(banco, "SELECT Nome, UF FROM CLIENTE WHERE CodCliente = ?", {codCliente});
        if (linha.Proxima()) {
            cliente = ClienteCadastrado{codCliente, linha.Texto(0), {}, linha.Texto(1)};
        }
    }
    if (cliente) {
        Consulta setores(banco, "SELECT Nome FROM SETOR WHERE CodCliente = ? AND Ativo = 1 ORDER BY Nome",
                         {codCliente});
        while (setores.Proxima()) {
            cliente->Setores.push_back(setores.Texto(0));
        }
    }
    return cliente;
}

void Usuarios::Registra(const std::string &raiz, std::int64_t nroRaiz, std::int64_t versao, const std::string &entidade,
                        std::int64_t nroEntidade, const std::string &acao)
{
    Historico(m_Banco).Registra(m_Agora, m_Operador, {raiz, nroRaiz, versao, entidade, nroEntidade, acao});
}

} // namespace mesa
