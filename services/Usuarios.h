#pragma once

#include "services/Banco.h"
#include "services/Instante.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Object and action of a right.
using ChaveDeDireito = std::pair<std::string, std::string>;

// Users, clients and their sectors as rows, each with its entry in the history. Within the caller's transaction; what
// the rows may hold is the caller's to check.
class Usuarios {
  public:
    // operador: who does it; 0 for the system itself.
    Usuarios(Banco &banco, const Instante &agora, std::int32_t operador)
        : m_Banco(banco),
          m_Agora(agora),
          m_Operador(operador)
    {
    }

    struct Novo {
        Operador Quem; // number 0: the one behind the highest
        std::string Senha;
        bool TrocaSenha = false; // before anything else
        std::vector<ChaveDeDireito> Direitos;
    };

    // Its number.
    std::int32_t Inclui(const Novo &novo);
    // versao: of the user, with which this goes.
    void DefineDireito(std::int32_t numero, std::int64_t versao, const ChaveDeDireito &direito, bool tem);
    void IncluiCliente(const ClienteCadastrado &cliente);
    void IncluiSetor(std::int32_t codCliente, std::int64_t versao, const std::string &nome);

    static bool HaUsuarios(Banco &banco);
    // A client with its active sectors, in order of name.
    static std::optional<ClienteCadastrado> Cliente(Banco &banco, std::int32_t codCliente);

  private:
    void Registra(const std::string &raiz, std::int64_t nroRaiz, std::int64_t versao, const std::string &entidade,
                  std::int64_t nroEntidade, const std::string &acao);

    Banco &m_Banco;
    Instante m_Agora;
    std::int32_t m_Operador;
};

} // namespace mesa
