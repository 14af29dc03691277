#include "desk/host/VigiaDeMaiusculas.h"

#include "services/TextoQt.h"

namespace mesa {

void VigiaDeMaiusculas::Digitou(const std::string &texto, bool shift)
{
    const QString letra = Q(texto);
    if (letra.size() == 1 && letra[0].isUpper() != letra[0].isLower()) {
        m_Ligado = letra[0].isUpper() != shift;
    }
}

void VigiaDeMaiusculas::Trocou()
{
    if (m_Ligado) {
        m_Ligado = !*m_Ligado;
    }
}

} // namespace mesa
