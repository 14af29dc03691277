#pragma once

#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Senhas.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace mesa {

// A changing operation under a number of its caller's, so that one that is asked for again after its answer was lost is
// done once and answered as the first time.
struct Numerada {
    std::string Numero; // a UUID that the caller makes anew for each act
    std::string Soma;   // hash of what is asked: class, method, request
    // The answer's octets, asked inside the transaction when all is done.
    std::function<std::string()> Resposta;
};

// What the registry keeps of one, within the transaction of the change.
class Repeticao {
  public:
    // operador: who asks. comSenha: the request has a password in it, which nobody may find out by trying its hash;
    // then that takes as long as trying the password, and making this does so too.
    Repeticao(Banco &banco, Numerada numerada, std::int32_t operador, const CustoDaSenha &custo, bool comSenha);

    // Whether an operation of the number was done before.
    bool HaDeAntes() const;
    // The answer that it had when it was done before, and nothing when it never was. Being asked again is written down,
    // so that the end of this transaction waits for other machines as the end of that one did. Refuses a number that is
    // another operation's, or is none.
    std::optional<std::string> DeAntes(const Instante &agora) const;
    // It is done: keeps its answer.
    void Guarda(const Instante &agora) const;

    // What the last column of a row of OPERACAO or REPETICAO has to be, by the others in their order.
    static std::string Elo(const std::string &tabela, const QVariantList &outras);

  private:
    // A new row, with its number before the cells and that hash behind them; the statement ends with this.
    void Insere(const std::string &tabela, Celulas celulas) const;

    Banco &m_Banco;
    Numerada m_Numerada;
    std::int32_t m_Operador;
};

} // namespace mesa
