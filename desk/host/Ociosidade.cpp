#include "desk/host/Ociosidade.h"

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr double MinutosPorDia = 24 * 60;

} // namespace

Ociosidade::Ociosidade(std::int32_t minutos, std::function<Data()> agora)
    : m_Minutos(minutos),
      m_Agora(std::move(agora)),
      m_Usada(m_Agora())
{
}

void Ociosidade::Usa()
{
    m_Usada = m_Agora();
}

bool Ociosidade::Passou()
{
    constexpr double meioSegundo = 0.5 / 86400;
    const Data agora = m_Agora();
    m_Usada.Valor = std::min(m_Usada.Valor, agora.Valor); // a clock that was set back begins to count anew
    return m_Minutos > 0 && agora.Valor - m_Usada.Valor + meioSegundo >= m_Minutos / MinutosPorDia;
}

} // namespace mesa
