#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Servicos.h"

#include <memory>
#include <string>
#include <vector>

namespace mesa {

// The services over a registry in a database.
class ServicosSql : public Servicos {
  public:
    ServicosSql(std::shared_ptr<Banco> banco, Relogio agora);

    Ref<SessaoServico> Entra(const std::string &usuario, const std::string &senha, std::string &recusa,
                             std::int32_t &espera) override;
    void CadastraUsuario(const Operador &operador, const std::string &senha,
                         const std::vector<std::string> &acoes) override;
    void CadastraCliente(const ClienteCadastrado &cliente) override;
    bool Vazio() override;
    const std::string &SomenteLeitura() const override { return m_Banco->SomenteLeitura(); }
    TipoDeRegistro Tipo() const override { return m_Tipo; }
    std::string Identificador() const override { return m_Identificador; }

  private:
    std::shared_ptr<Banco> m_Banco; // the sessions keep it open
    Relogio m_Agora;
    TipoDeRegistro m_Tipo = TipoDeRegistro::Registro;
    std::string m_Identificador;
};

} // namespace mesa
