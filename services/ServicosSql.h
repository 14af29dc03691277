#pragma once

#include "services/Banco.h"
#include "services/Portaria.h"
#include "services/Servicos.h"

#include <memory>
#include <string>
#include <vector>

namespace mesa {

// The services over a registry in a database.
class ServicosSql : public Servicos {
  public:
    ServicosSql(std::shared_ptr<Banco> banco, Relogio agora, const CustoDaSenha &custo = {});

    Ref<SessaoServico> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                             std::string &recusa, std::int32_t &espera) override;
    void ExigeMotivo(bool exige) override { m_ExigeMotivo = exige; }
    bool PrimeiroAdministrador(const ClienteCadastrado &cliente, const Operador &quem, const Segredo &senha,
                               std::string &recusa) override;
    void CadastraUsuario(const Operador &operador, const Segredo &senha, const std::vector<std::string> &acoes,
                         const std::vector<std::string> &administra) override;
    void CadastraCliente(const ClienteCadastrado &cliente) override;
    bool Vazio() override;
    const std::string &SomenteLeitura() const override { return m_Banco->SomenteLeitura(); }
    TipoDeRegistro Tipo() const override { return m_Tipo; }
    std::string Identificador() const override { return m_Identificador; }

  private:
    std::shared_ptr<Banco> m_Banco; // the sessions keep it open, and ask at the same door
    std::shared_ptr<Portaria> m_Portaria;
    Relogio m_Agora;
    bool m_ExigeMotivo = false;
    TipoDeRegistro m_Tipo = TipoDeRegistro::Registro;
    std::string m_Identificador;
};

} // namespace mesa
