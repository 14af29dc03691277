#pragma once

#include "host/Registro.h"
#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Permissoes.h"
#include "services/Segue.h"
#include "services/Senhas.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Kinds of records that are edited as one, each with a version that grows with every change.
enum class Raiz { Equipamento, Limite, Dia, Usuario, Cliente };

// Corrections that were made without a reason. On its way the transaction rolls back, as with a refusal; it ends in the
// session, which asks for the reason.
struct FaltaMotivo {
    std::vector<std::string> Corrigidas; // "aferição 123 do sensor 1"
};

// One operation of a session, under way in a transaction: who asks, when, and which version the records that were sent
// are of once it is confirmed. Goes with the transaction: what it wrote into those records is taken back with it.
class Operacao {
  public:
    // custo: of the passwords that are set in it. motivo: why what was stored is corrected. segue: told how far it is;
    // may be empty.
    Operacao(Banco &banco, const Operador &quem, const Instante &agora, const CustoDaSenha &custo, std::string motivo,
             Segue segue);
    Operacao(const Operacao &) = delete;
    Operacao &operator=(const Operacao &) = delete;
    ~Operacao();

    Banco &Dados() const { return m_Banco; }
    const Operador &Quem() const { return m_Quem; }
    const Instante &Agora() const { return m_Agora; }
    const CustoDaSenha &Custo() const { return m_Custo; }

    // Tells how far it is. Refuses to go on when it was given up.
    void Anda(double parte, const std::string &oQue) const;

    // Refuses who lacks the permission for the action ("" looks, "I", "A", "E"). oQue: what was tried, for the refusal,
    // as "alterar equipamentos".
    void Exige(const std::string &acao, const std::string &oQue, const std::string &objeto = Permissoes::Objeto) const;
    bool Possui(const std::string &acao) const;

    // A calibration that was stored is corrected, as "aferição 123 do sensor 1"; gives the reason.
    const std::string &Corrige(const std::string &qual);
    // Raises FaltaMotivo when something was corrected and there is no reason.
    void ConfereMotivo() const;

    // Refuses a change by a record without the mark of a reading, or that was changed since. nome: the record with its
    // article, as "O equipamento R-1".
    void ConfereVersao(const Registro &enviado, Raiz raiz, std::int32_t numero, std::int64_t atual,
                       const std::string &nome) const;
    // The same of a record that has the version among its members; 0 for one that was never read.
    void ConfereCopia(Raiz raiz, std::int32_t numero, std::int64_t lida, std::int64_t atual,
                      const std::string &nome) const;
    // What was sent is of this version once all is done.
    void Marca(Registro &enviado, std::int64_t versao);
    // All is done: marks what was sent.
    void Entrega();
    // The transaction is confirmed: what was marked stays so.
    void Confirma() { m_Marcas.clear(); }

  private:
    Banco &m_Banco;
    const Operador &m_Quem;
    Instante m_Agora;
    const CustoDaSenha &m_Custo;
    std::string m_Motivo; // for what is corrected
    Segue m_Segue;
    std::vector<std::string> m_Corrigidas;
    std::vector<std::pair<Registro *, std::int64_t>> m_Marcas; // once delivered, those that were there before
    bool m_Entregue = false;
};

} // namespace mesa
