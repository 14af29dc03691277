#include "desk/host/Andamento.h"

#include <algorithm>
#include <utility>

namespace mesa {

Andamento::Andamento(ITelaDeAndamento &tela, std::string frase, bool cancelavel, Relogio relogio)
    : m_Tela(tela),
      m_Frase(std::move(frase)),
      m_Cancelavel(cancelavel),
      m_Relogio(std::move(relogio)),
      m_Proxima(m_Relogio() + Paciencia)
{
}

Andamento::~Andamento()
{
    if (m_Aberta) {
        m_Tela.Fecha();
    }
}

bool Andamento::Anda(double parte, const std::string &oQue)
{
    if (m_Desistiu) {
        return false;
    }
    if (m_Relogio() < m_Proxima) {
        return true;
    }
    if (!std::exchange(m_Aberta, true)) {
        m_Tela.Abre(m_Frase, m_Cancelavel);
    }
    const bool continua = m_Tela.Mostra(std::clamp(parte, 0.0, 1.0), oQue);
    m_Desistiu = m_Cancelavel && !continua;
    m_Proxima = m_Relogio() + EntreMostras;
    return !m_Desistiu;
}

Segue Andamento::ComoSegue()
{
    return [this](double parte, const std::string &oQue) { return Anda(parte, oQue); };
}

std::chrono::milliseconds Andamento::RelogioDoSistema()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace mesa
