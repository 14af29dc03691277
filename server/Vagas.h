#pragma once

#include "server/Trabalhadores.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>

namespace servidor {

// Places for a few who work at a time, and for a few more who wait for one.
class Vagas {
  public:
    Vagas(std::size_t quantas, std::size_t esperando) : m_Quantas(quantas), m_Esperando(esperando) {}

    // A place, for as long as this lives.
    class Uma {
      public:
        // Waits for one. Raises a Fim, with `ocupado`, when too many wait already; when `ate` comes before, or
        // `desiste` is true.
        Uma(Vagas &vagas, Momento ate, const std::function<bool()> &desiste, const char *ocupado);
        Uma(const Uma &) = delete;
        Uma &operator=(const Uma &) = delete;
        ~Uma();

      private:
        Vagas &m_Vagas;
    };

  private:
    const std::size_t m_Quantas;
    const std::size_t m_Esperando;
    std::mutex m_Mutex;
    std::condition_variable m_Mudou;
    std::size_t m_Tomadas = 0;
    std::size_t m_NaFila = 0;
};

} // namespace servidor
