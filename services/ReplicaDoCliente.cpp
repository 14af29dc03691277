#include "services/ReplicaDoCliente.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace mesa {

namespace {

constexpr std::size_t LinhasPorVez = 1000;

// By its number.
const QString Todas = "FROM EQUIPAMENTO e WHERE e.NroIntEquip > ? AND e.ClienteInc = ?";

// By the number of its last entry. That is looked for along the chain: by its index over the entities every entry of
// the kind would be read. Each has few entries of its own, which that index finds.
const QString Mudadas = "FROM HISTORICO h JOIN EQUIPAMENTO e ON e.NroIntEquip = h.NroEntidade "
                        "WHERE h.Nro > ? AND h.Entidade || '' = 'EQUIPAMENTO' AND e.ClienteInc = ? "
                        "AND NOT EXISTS (SELECT 1 FROM HISTORICO p WHERE p.Entidade = 'EQUIPAMENTO' "
                        "AND p.NroEntidade = h.NroEntidade AND p.Nro > h.Nro)";

} // namespace

ReplicaDoCliente::ReplicaDoCliente(Banco &banco, std::string cliente, std::int64_t depoisDe)
    : m_Banco(banco),
      m_Cliente(std::move(cliente)),
      m_DepoisDe(std::max<std::int64_t>(depoisDe, 0))
{
}

std::string ReplicaDoCliente::EloDeAntes() const
{
    Consulta entrada(m_Banco, "SELECT Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(m_DepoisDe)});
    return entrada.Proxima() ? entrada.Texto(0) : "";
}

std::int64_t ReplicaDoCliente::Quantas() const
{
    Consulta contadas(m_Banco, "SELECT COUNT(*) " + (m_DepoisDe == 0 ? Todas : Mudadas),
                      {qlonglong(m_DepoisDe), Q(m_Cliente)});
    contadas.Proxima();
    return contadas.Inteiro(0);
}

void ReplicaDoCliente::CadaLinha(const std::function<void(const LinhaReplica &)> &faz) const
{
    const QString chave = m_DepoisDe == 0 ? "e.NroIntEquip" : "h.Nro";
    const QString sql = "SELECT " + chave + ", e.NroIntEquip, e.ClienteInc, e.Codigo, e.TipoEquip, e.Ativo " +
                        (m_DepoisDe == 0 ? Todas : Mudadas) + " ORDER BY " + chave +
                        QString(" LIMIT %1").arg(LinhasPorVez);
    std::int64_t ultima = m_DepoisDe;
    std::vector<LinhaReplica> linhas;
    do {
        linhas.clear();
        {
            Consulta achadas(m_Banco, sql, {qlonglong(ultima), Q(m_Cliente)});
            while (achadas.Proxima()) {
                ultima = achadas.Inteiro(0);
                linhas.push_back({static_cast<std::int32_t>(achadas.Inteiro(1)), achadas.Texto(2), achadas.Texto(3),
                                  achadas.Texto(4), static_cast<std::int32_t>(achadas.Inteiro(5))});
            }
        }
        for (const LinhaReplica &linha : linhas) {
            faz(linha);
        }
    } while (linhas.size() == LinhasPorVez);
}

} // namespace mesa
