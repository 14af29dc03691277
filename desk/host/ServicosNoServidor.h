#pragma once

#include "desk/host/ILigacao.h"
#include "services/Servicos.h"

#include <string>

namespace mesa {

// The services of a server as the desk works with them: every wait is the person's to see and to give up, and a session
// that has ended goes on with a new one of the same person, with the operation that found it ended.
class ServicosNoServidor : public Servicos {
  public:
    // delas: the services over the network, whose sessions check when they are a rede::SessaoDeServidor. ligacao:
    // outlives this object and its sessions.
    ServicosNoServidor(Ref<Servicos> delas, ILigacao &ligacao);
    std::string_view NomeTipo() const override { return "ServicosNoServidor"; }

    Ref<SessaoServico> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                             std::string &recusa, std::int32_t &espera) override;
    void ExigeMotivo(bool exige) override { m_Delas->ExigeMotivo(exige); }
    bool PrimeiroAdministrador(const ClienteCadastrado &cliente, const Operador &quem, const Segredo &senha,
                               std::string &recusa) override
    {
        return m_Delas->PrimeiroAdministrador(cliente, quem, senha, recusa);
    }
    void CadastraUsuario(const Operador &operador, const Segredo &senha, const std::vector<std::string> &acoes,
                         const std::vector<std::string> &administra) override
    {
        m_Delas->CadastraUsuario(operador, senha, acoes, administra);
    }
    void CadastraCliente(const ClienteCadastrado &cliente) override { m_Delas->CadastraCliente(cliente); }
    bool Vazio() override { return m_Delas->Vazio(); }
    const std::string &SomenteLeitura() const override { return m_Delas->SomenteLeitura(); }
    TipoDeRegistro Tipo() const override { return m_Delas->Tipo(); }
    std::string Identificador() const override { return m_Delas->Identificador(); }

  private:
    Ref<Servicos> m_Delas;
    ILigacao &m_Ligacao;
};

} // namespace mesa
