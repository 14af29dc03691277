#include "services/PreparadaQt.h"

#include <utility>

namespace mesa {

PreparadaQt::PreparadaQt(const QSqlDatabase &banco, const QString &sql, Falhou falhou)
    : m_Comando(banco),
      m_Falhou(std::move(falhou))
{
    m_Comando.setForwardOnly(true);
    if (!m_Comando.prepare(sql)) {
        throw m_Falhou(m_Comando.lastError());
    }
}

void PreparadaQt::Executa(const QVariantList &valores)
{
    for (int posicao = 0; posicao < valores.size(); ++posicao) {
        m_Comando.bindValue(posicao, valores[posicao]);
    }
    if (!m_Comando.exec()) {
        const ErroSql erro = m_Falhou(m_Comando.lastError());
        Termina();
        throw erro;
    }
}

bool PreparadaQt::Proxima()
{
    if (m_Comando.next()) {
        return true;
    }
    if (m_Comando.lastError().isValid()) {
        throw m_Falhou(m_Comando.lastError());
    }
    return false;
}

} // namespace mesa
