#pragma once

#include "services/Banco.h"
#include "services/Portaria.h"
#include "services/Servicos.h"
#include "services/SessaoSql.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// The services over a registry in a database.
class ServicosSql : public Servicos {
  public:
    ServicosSql(std::shared_ptr<Banco> banco, Relogio agora, const CustoDaSenha &custo = {});

    Ref<SessaoServico> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                             std::string &recusa, std::int32_t &espera) override;
    // The first half of Entra: who comes in; nothing with the reason.
    std::optional<Portaria::Entrada> Autentica(const std::string &usuario, const Segredo &senha,
                                               const std::string &estacao, std::string &recusa, std::int32_t &espera);
    // A session for one who came in here, or at another connection to the registry. When the sign-in no longer stands,
    // its operations raise RecusaDeEntrada.
    Ref<SessaoSql> Retoma(const Portaria::Entrada &entrada);
    // Whoever comes in is told of the clock as a server's.
    void EhDeServidor() { m_Portaria->EhDeServidor(); }
    // Sign-ins that the registry does not count are counted there from now on, with those of other connections.
    void ContaEm(std::shared_ptr<TentativasEmMemoria> emMemoria) { m_Portaria->ContaEm(std::move(emMemoria)); }
    // What is asked here, or at sessions that began here, has time until then. See Banco::Limita.
    void Limita(Prazo ate) { m_Banco->Limita(ate); }
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
