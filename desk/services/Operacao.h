#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Instante.h"
#include "desk/services/SessaoServico.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Kinds of records that are edited as one, each with a version that grows with every change.
enum class Raiz { Equipamento, Limite, Dia };

// Versions of the records that a session has read.
using VersoesLidas = std::map<std::pair<Raiz, std::int32_t>, std::int64_t>;

// One operation of a session, under way in a transaction: who asks, when, and what the session will have read once it
// is confirmed.
class Operacao {
  public:
    Operacao(Banco &banco, const Operador &quem, const Instante &agora, const VersoesLidas &lidas);

    Banco &Dados() const { return m_Banco; }
    const Operador &Quem() const { return m_Quem; }
    const Instante &Agora() const { return m_Agora; }

    // Refuses who lacks the permission for the action ("" looks, "I", "A", "E"). oQue: what was tried, for the refusal,
    // as "alterar equipamentos".
    void Exige(const std::string &acao, const std::string &oQue) const;
    bool Possui(const std::string &acao) const;

    // Refuses a change of a record that the session has not read, or that was changed since. nome: the record with its
    // article, as "O equipamento R-1".
    void ConfereVersao(Raiz raiz, std::int32_t numero, std::int64_t atual, const std::string &nome) const;
    // The session has now seen this version.
    void Lembra(Raiz raiz, std::int32_t numero, std::int64_t versao);
    // The session itself made the version that follows `anterior`: if it had seen that one, it has seen the new one.
    void LembraAMinha(Raiz raiz, std::int32_t numero, std::int64_t anterior);
    // What the session is to remember, now that the operation is confirmed.
    void Entrega(VersoesLidas &lidas) const;

  private:
    Banco &m_Banco;
    const Operador &m_Quem;
    Instante m_Agora;
    const VersoesLidas &m_Lidas;
    VersoesLidas m_Novas;
};

} // namespace mesa
