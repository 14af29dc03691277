#pragma once

#include "services/Operacao.h"
#include "services/RegistrosAdministracao.h"

#include <cstdint>
#include <string>

namespace mesa {

// Clients and their sectors, for whoever has the right to administer them. Their names are in the records of equipment:
// they never change.
class ServicoClientes {
  public:
    explicit ServicoClientes(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<ListaClientesED> Lista(const ListaClientesED &pedido);
    Ref<ClienteED> Inclui(const ClienteED &pedido);
    Ref<ClienteED> Altera(const ClienteED &pedido);

    // The client as it is stored: number and name that no other one has, texts as the rules give them. Refused
    // otherwise.
    static ClienteCadastrado Conferido(Banco &banco, const ClienteCadastrado &pedido);

  private:
    Ref<ClienteED> Acha(std::int32_t codCliente) const;
    // Refuses while users are active in it. oQue: "O setor Metrologia".
    void ConfereSemUsuarios(const std::string &oQue, const QString &onde, const QVariantList &valores) const;

    Operacao &m_Operacao;
};

} // namespace mesa
