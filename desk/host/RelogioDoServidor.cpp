#include "desk/host/RelogioDoServidor.h"

#include "services/Relogio.h"

#include <utility>

namespace mesa {

RelogioDoServidor::RelogioDoServidor(Contagem conta) : m_Conta(std::move(conta)) {}

void RelogioDoServidor::Acerta(const Data &agora)
{
    m_Dito = agora;
    m_Quando = m_Conta();
}

Data RelogioDoServidor::Agora() const
{
    if (!m_Dito) {
        return mesa::Agora().Local;
    }
    using Dias = std::chrono::duration<double, std::ratio<86400>>;
    return Data{m_Dito->Valor + Dias(m_Conta() - m_Quando).count()};
}

} // namespace mesa
