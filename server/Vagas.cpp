#include "server/Vagas.h"

#include "server/Fim.h"

#include <algorithm>
#include <chrono>

namespace servidor {

namespace {

constexpr std::chrono::milliseconds PausaDaPergunta(250); // between two looks at whether the caller is still there

} // namespace

Vagas::Uma::Uma(Vagas &vagas, Momento ate, const std::function<bool()> &desiste, const char *ocupado) : m_Vagas(vagas)
{
    std::unique_lock trava(vagas.m_Mutex);
    if (vagas.m_Tomadas >= vagas.m_Quantas) {
        if (vagas.m_NaFila >= vagas.m_Esperando) {
            throw Ocupado(ocupado);
        }
        ++vagas.m_NaFila;
        bool foi = false;
        auto agora = std::chrono::steady_clock::now();
        while (vagas.m_Tomadas >= vagas.m_Quantas && !foi && agora < ate) {
            vagas.m_Mudou.wait_until(trava, std::min(ate, agora + PausaDaPergunta));
            foi = desiste();
            agora = std::chrono::steady_clock::now();
        }
        --vagas.m_NaFila;
        if (vagas.m_Tomadas >= vagas.m_Quantas || foi) {
            vagas.m_Mudou.notify_one(); // the one that woke this may have been for another
            throw foi ? Fim{grpc::StatusCode::CANCELLED, "A operação foi cancelada antes de começar."}
                      : Fim{grpc::StatusCode::DEADLINE_EXCEEDED,
                            "O tempo da operação acabou antes que ela começasse. Nada foi feito."};
        }
    }
    ++vagas.m_Tomadas;
}

Vagas::Uma::~Uma()
{
    const std::lock_guard trava(m_Vagas.m_Mutex);
    --m_Vagas.m_Tomadas;
    m_Vagas.m_Mudou.notify_one();
}

} // namespace servidor
