#pragma once

#include "desk/services/Banco.h"
#include "desk/services/SessaoServico.h"
#include "host/Data.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// Users and clients of the registry, and the sign-in.
class Usuarios {
  public:
    explicit Usuarios(Banco &banco) : m_Banco(banco) {}

    // The operator of that name and password. Each wrong password after the second doubles the time for which the name
    // is not tried again; it is counted before the password is looked at, so that neither haste nor a kill wins a try.
    std::optional<Operador> Entra(const std::string &usuario, const std::string &senha, Data agora, std::string &recusa,
                                  std::int32_t &espera);

    void CadastraUsuario(const Operador &operador, const std::string &senha, const std::vector<std::string> &acoes,
                         const Instante &agora);
    void CadastraCliente(const ClienteCadastrado &cliente, const Instante &agora);
    bool Vazio();

    std::optional<ClienteCadastrado> Cliente(std::int32_t codCliente);

  private:
    // Seconds still to wait, 0 when the name may be tried; the try is then counted.
    std::int32_t ContaTentativa(std::int32_t numero, std::int64_t agora);
    void GravaTentativas(std::int32_t numero, std::int64_t vezes, std::int64_t esperaAte);
    std::int64_t ProximoNumero();

    Banco &m_Banco;
};

} // namespace mesa
