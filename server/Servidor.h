#pragma once

#include "server/Configuracao.h"
#include "services/Instante.h"
#include "services/Senhas.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace servidor {

// The services of one registry, offered over a network until the end of this object. It can stand in a program with
// others of its kind, on one registry or on several.
class Servidor {
  public:
    // Falha with a sentence when the registry, the certificate or the address cannot be had. agora: the clock; every
    // moment written comes from it, and it is asked on several threads at once. custo: of the passwords.
    Servidor(const Configuracao &configuracao, mesa::Relogio agora, const mesa::CustoDaSenha &custo = {});
    Servidor(const Servidor &) = delete;
    Servidor &operator=(const Servidor &) = delete;
    ~Servidor();

    // The port on which it listens; of use where the settings ask for port 0.
    std::uint16_t Porta() const;
    // The same of the figures; 0 where there are none.
    std::uint16_t PortaDosNumeros() const;
    // Fingerprint of its certificate; empty without TLS.
    const std::string &Digital() const;

    // Takes nothing new, lets what is under way come to its end for so long, and ends.
    void Termina(std::chrono::milliseconds prazo);

  private:
    struct Interior;
    std::unique_ptr<Interior> m_Interior;
};

} // namespace servidor
