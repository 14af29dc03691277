#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Servicos.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mesa {

// The services over a registry in a database.
class ServicosSql : public Servicos {
  public:
    ServicosSql(std::unique_ptr<Dialeto> dialeto, const std::string &onde, std::function<Data()> agora);

    Ref<SessaoServico> Entra(const std::string &usuario, const std::string &senha, std::string &recusa,
                             std::int32_t &espera) override;
    void CadastraUsuario(const Operador &operador, const std::string &senha,
                         const std::vector<std::string> &acoes) override;
    void CadastraCliente(const ClienteCadastrado &cliente) override;
    bool Vazio() override;

  private:
    std::shared_ptr<Banco> m_Banco; // the sessions keep it open
    std::function<Data()> m_Agora;
};

} // namespace mesa
