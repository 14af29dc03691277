#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Instante.h"
#include "desk/services/Permissoes.h"
#include "desk/services/Senhas.h"
#include "desk/services/SessaoServico.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Kinds of records that are edited as one, each with a version that grows with every change.
enum class Raiz { Equipamento, Limite, Dia, Usuario, Cliente };

// Versions of the records that a session has read.
using VersoesLidas = std::map<std::pair<Raiz, std::int32_t>, std::int64_t>;

// Corrections that were made without a reason. On its way the transaction rolls back, as with a refusal; it ends in the
// session, which asks for the reason.
struct FaltaMotivo {
    std::vector<std::string> Corrigidas; // "aferição 123 do sensor 1"
};

// One operation of a session, under way in a transaction: who asks, when, and what the session will have read once it
// is confirmed.
class Operacao {
  public:
    Operacao(Banco &banco, const Operador &quem, const Instante &agora, const VersoesLidas &lidas,
             const CustoDaSenha &custo, std::string motivo);

    Banco &Dados() const { return m_Banco; }
    const Operador &Quem() const { return m_Quem; }
    const Instante &Agora() const { return m_Agora; }
    const CustoDaSenha &Custo() const { return m_Custo; }

    // Refuses who lacks the permission for the action ("" looks, "I", "A", "E"). oQue: what was tried, for the refusal,
    // as "alterar equipamentos".
    void Exige(const std::string &acao, const std::string &oQue, const std::string &objeto = Permissoes::Objeto) const;
    bool Possui(const std::string &acao) const;

    // A calibration that was stored is corrected, as "aferição 123 do sensor 1"; gives the reason.
    const std::string &Corrige(const std::string &qual);
    // Raises FaltaMotivo when something was corrected and there is no reason.
    void ConfereMotivo() const;

    // Refuses a change of a record that the session has not read, or that was changed since. nome: the record with its
    // article, as "O equipamento R-1".
    void ConfereVersao(Raiz raiz, std::int32_t numero, std::int64_t atual, const std::string &nome) const;
    // The same of a record that carries the version of its copy; 0 for one that was never read.
    void ConfereCopia(Raiz raiz, std::int32_t numero, std::int64_t lida, std::int64_t atual,
                      const std::string &nome) const;
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
    const CustoDaSenha &m_Custo;
    VersoesLidas m_Novas;
    std::string m_Motivo; // for what is corrected
    std::vector<std::string> m_Corrigidas;
};

} // namespace mesa
