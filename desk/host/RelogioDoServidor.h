#pragma once

#include "host/Data.h"

#include <chrono>
#include <functional>
#include <optional>

namespace mesa {

// The clock of a server as a desk knows it: what the server told last, and the time that has passed since. The day and
// hour of this computer count for nothing.
class RelogioDoServidor {
  public:
    using Contagem = std::function<std::chrono::steady_clock::time_point()>;

    explicit RelogioDoServidor(Contagem conta = std::chrono::steady_clock::now);

    void Acerta(const Data &agora);
    // As long as no server has told, this computer's.
    Data Agora() const;

  private:
    Contagem m_Conta;
    std::optional<Data> m_Dito;
    std::chrono::steady_clock::time_point m_Quando;
};

} // namespace mesa
