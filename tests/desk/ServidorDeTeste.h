#pragma once

#include "rede/ServicosRemotos.h"
#include "server/Servidor.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <memory>
#include <string>

// A server over the registry of a test, on the loopback, which can be stopped and begin again at the same place.
class ServidorDeTeste {
  public:
    explicit ServidorDeTeste(RegistroDeTeste &registro);
    ServidorDeTeste(const ServidorDeTeste &) = delete;
    ServidorDeTeste &operator=(const ServidorDeTeste &) = delete;
    ~ServidorDeTeste() = default;

    rede::Endereco Onde() const { return {"127.0.0.1", m_Porta}; }
    std::string Digital() const { return m_Servidor->Digital(); }

    Ref<mesa::Servicos> Conecta(rede::Insistencia insistencia = {}) const;
    // A session of that user over the network.
    Ref<mesa::SessaoServico> Sessao(const std::string &usuario);

    void Para() { m_Servidor.reset(); }
    void Comeca();

  private:
    RegistroDeTeste &m_Registro;
    QTemporaryDir m_Pasta;
    std::uint16_t m_Porta = 0;
    std::unique_ptr<servidor::Servidor> m_Servidor;
    Ref<mesa::Servicos> m_Servicos;
};
