#include "services/PesquisaEquipamentos.h"

#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/TextoBusca.h"

#include <utility>

namespace mesa {

namespace {

// Up to so many matches of a code are gathered and put in order; more than that are frequent enough to be met on the
// way along the numbers.
constexpr int CodigosReunidos = 2000;

} // namespace

void PesquisaEquipamentos::Filtra(const QString &condicao, const QVariant &valor)
{
    m_Condicoes += " AND " + condicao;
    m_Valores.push_back(valor);
}

void PesquisaEquipamentos::FiltraCodigo(const QString &coluna, const std::string &inicio)
{
    if (inicio.empty()) {
        return;
    }
    const std::string de = TextoBusca(inicio);
    const QVariantList faixa{Q(m_Operacao.Quem().Cliente), Q(de), Q(FimDaFaixa(de))};
    const QString achados = QString("SELECT NroIntEquip FROM EQUIPAMENTO WHERE ClienteInc = ? AND %1 >= ? AND %1 < ? "
                                    "LIMIT %2")
                                .arg(coluna)
                                .arg(CodigosReunidos);
    mesa::Consulta contados(m_Operacao.Dados(), "SELECT COUNT(*) FROM (" + achados + ") a", faixa);
    contados.Proxima();
    if (contados.Inteiro(0) < CodigosReunidos) {
        m_Condicoes += " AND NroIntEquip IN (" + achados + ")";
        m_Valores += faixa;
    } else {
        // As an expression, so that no index on the column is chosen.
        m_Condicoes += QString(" AND %1 || '' >= ? AND %1 || '' < ?").arg(coluna);
        m_Valores += faixa.mid(1);
    }
}

Ref<ListaEquiptoED> PesquisaEquipamentos::Lista(const ListaEquiptoED &pedido)
{
    m_Operacao.Exige("", "consultar equipamentos");
    const Operador &quem = m_Operacao.Quem();
    if (!pedido.ClienteInc.Valor().empty() && pedido.ClienteInc.Valor() != quem.Cliente) {
        throw Recusa(quem.Nome + " consulta equipamentos do cliente " + quem.Cliente + ", e não de " +
                     pedido.ClienteInc.Valor() + ".");
    }
    m_Condicoes.clear();
    m_Valores = {Q(quem.Cliente), pedido.ProxNroIntEquip.Valor()};
    if (pedido.Ativo.Escrito()) {
        Filtra("Ativo = ?", pedido.Ativo.Valor());
    }
    if (pedido.IndTrabFoto.Escrito()) {
        Filtra("TrabFoto = ?", pedido.IndTrabFoto.Valor());
    }
    if (!pedido.SetorInc.Valor().empty()) {
        Filtra("SetorInc = ?", Q(pedido.SetorInc));
    }
    if (pedido.TipoAgente.Escrito()) {
        Filtra("TipoAgente = ?", pedido.TipoAgente.Valor());
    }
    if (!pedido.TipoEquip.Valor().empty()) {
        Filtra("TipoEquip = ?", Q(pedido.TipoEquip));
    }
    FiltraCodigo("CodigoBusca", pedido.Codigo);
    FiltraCodigo("SubCodigoBusca", pedido.SubCodigo);

    const QString sql = "SELECT " + MapaRegistro::Lista<EquiptoED>() +
                        ", Versao FROM EQUIPAMENTO WHERE ClienteInc = ? AND NroIntEquip >= ?" + m_Condicoes +
                        QString(" ORDER BY NroIntEquip LIMIT %1").arg(TamanhoPagina + 1);
    static const auto colunas = static_cast<int>(MapaRegistro::Colunas<EquiptoED>().size());
    auto lista = Novo<ListaEquiptoED>();
    lista->ProxNroIntEquip = 0;
    ListaDe<EquiptoED> pagina = Novo<Colecao<Ref<EquiptoED>>>();
    mesa::Consulta linhas(m_Operacao.Dados(), sql, m_Valores);
    while (linhas.Proxima()) {
        if (pagina->Count() == TamanhoPagina) {
            lista->ProxNroIntEquip = static_cast<std::int32_t>(linhas.Inteiro(0));
            break;
        }
        auto equipto = Novo<EquiptoED>();
        MapaRegistro::Preenche(*equipto, linhas);
        equipto->VersaoLida = linhas.Inteiro(colunas);
        pagina->Add(equipto);
    }
    if (pagina->Count() > 0) {
        lista->Equipamentos = pagina;
    }
    return lista;
}

} // namespace mesa
