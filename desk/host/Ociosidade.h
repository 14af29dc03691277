#pragma once

#include "host/Data.h"

#include <cstdint>
#include <functional>

namespace mesa {

// Whether a desk has gone without use for so long that it locks.
class Ociosidade {
  public:
    // minutos: 0 never.
    Ociosidade(std::int32_t minutos, std::function<Data()> agora);

    // A key, a click, a movement.
    void Usa();
    bool Passou();
    void DefineMinutos(std::int32_t minutos) { m_Minutos = minutos; }

  private:
    std::int32_t m_Minutos;
    std::function<Data()> m_Agora;
    Data m_Usada;
};

} // namespace mesa
