#include "server/Vigia.h"

#include <algorithm>
#include <utility>

namespace servidor {

Vigia::Vigia() : m_Fio([this] { Olha(); }) {}

Vigia::~Vigia()
{
    {
        const std::lock_guard trava(m_Mutex);
        m_Fim = true;
    }
    m_Mudou.notify_one();
    m_Fio.join();
}

void Vigia::Olha()
{
    std::unique_lock trava(m_Mutex);
    while (!m_Fim) {
        if (m_Passos.empty()) {
            m_Mudou.wait(trava);
            continue;
        }
        const auto proximo = std::ranges::min_element(m_Passos, {}, [](const auto &um) { return um.second; });
        if (proximo->second > std::chrono::steady_clock::now()) {
            const Momento ate = proximo->second; // the element may go meanwhile
            m_Mudou.wait_until(trava, ate);
            continue;
        }
        Passos &parado = *proximo->first;
        m_Passos.erase(proximo);
        parado.m_Cortado = true;
        parado.m_Corta(); // within the mutex: its owner waits with its end until this is done
    }
}

Vigia::Passos::Passos(Vigia &vigia, std::chrono::milliseconds prazo, Momento ate, std::function<void()> corta)
    : m_Vigia(vigia),
      m_Prazo(prazo),
      m_Ate(ate),
      m_Corta(std::move(corta))
{
    Anda();
}

Vigia::Passos::~Passos()
{
    const std::lock_guard trava(m_Vigia.m_Mutex);
    m_Vigia.m_Passos.erase(this);
}

void Vigia::Passos::Anda()
{
    const std::lock_guard trava(m_Vigia.m_Mutex);
    if (!m_Cortado) {
        m_Vigia.m_Passos[this] = std::min(m_Ate, std::chrono::steady_clock::now() + m_Prazo);
        m_Vigia.m_Mudou.notify_one();
    }
}

bool Vigia::Passos::Cortado() const
{
    const std::lock_guard trava(m_Vigia.m_Mutex);
    return m_Cortado;
}

} // namespace servidor
