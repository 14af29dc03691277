#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

namespace servidor {

// Ends what does not get on: the other end of a stream that neither sends nor takes would keep a thread for ever.
class Vigia {
  public:
    using Momento = std::chrono::steady_clock::time_point;

    Vigia();
    Vigia(const Vigia &) = delete;
    Vigia &operator=(const Vigia &) = delete;
    ~Vigia();

    // While this lives, `corta` is called once, on another thread, when `prazo` has passed since the last Anda, and at
    // `ate` whatever was done.
    class Passos {
      public:
        Passos(Vigia &vigia, std::chrono::milliseconds prazo, Momento ate, std::function<void()> corta);
        Passos(const Passos &) = delete;
        Passos &operator=(const Passos &) = delete;
        ~Passos();

        void Anda();
        // Whether it was cut.
        bool Cortado() const;

      private:
        friend class Vigia;

        Vigia &m_Vigia;
        const std::chrono::milliseconds m_Prazo;
        const Momento m_Ate;
        const std::function<void()> m_Corta;
        bool m_Cortado = false;
    };

  private:
    void Olha();

    mutable std::mutex m_Mutex;
    std::condition_variable m_Mudou;
    std::map<Passos *, Momento> m_Passos;
    bool m_Fim = false;
    std::thread m_Fio;
};

} // namespace servidor
