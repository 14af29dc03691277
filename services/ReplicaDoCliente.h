#pragma once

#include "services/Banco.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <functional>
#include <string>

namespace mesa {

// What the replica of a client's equipment tells, read within the caller's transaction in pieces of bounded size.
class ReplicaDoCliente {
  public:
    // Of those that the history has an entry of after that number; of all after 0.
    ReplicaDoCliente(Banco &banco, std::string cliente, std::int64_t depoisDe);

    // Hash of that entry; empty where there is none.
    std::string EloDeAntes() const;
    std::int64_t Quantas() const;
    // Each once. Further statements may run meanwhile.
    void CadaLinha(const std::function<void(const LinhaReplica &)> &faz) const;

  private:
    Banco &m_Banco;
    std::string m_Cliente;
    std::int64_t m_DepoisDe;
};

} // namespace mesa
