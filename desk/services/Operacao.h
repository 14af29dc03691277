#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Instante.h"
#include "desk/services/SessaoServico.h"
#include "host/Registro.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Kinds of records that are edited as one, each with a version that grows with every change.
enum class Raiz { Equipamento, Limite, Dia };

// One operation of a session, under way in a transaction: who asks, when, and which version the records that were sent
// are of once it is confirmed.
class Operacao {
  public:
    Operacao(Banco &banco, const Operador &quem, const Instante &agora);

    Banco &Dados() const { return m_Banco; }
    const Operador &Quem() const { return m_Quem; }
    const Instante &Agora() const { return m_Agora; }

    // Refuses who lacks the permission for the action ("" looks, "I", "A", "E"). oQue: what was tried, for the refusal,
    // as "alterar equipamentos".
    void Exige(const std::string &acao, const std::string &oQue) const;
    bool Possui(const std::string &acao) const;

    // Refuses a change by a record without the mark of a reading, or that was changed since. nome: the record with its
    // article, as "O equipamento R-1".
    void ConfereVersao(const Registro &enviado, Raiz raiz, std::int32_t numero, std::int64_t atual,
                       const std::string &nome) const;
    // What was sent is of this version now.
    void Marca(Registro &enviado, std::int64_t versao);
    // Marks what was sent, now that the operation is confirmed.
    void Entrega() const;

  private:
    Banco &m_Banco;
    const Operador &m_Quem;
    Instante m_Agora;
    std::vector<std::pair<Registro *, std::int64_t>> m_Marcas;
};

} // namespace mesa
