#pragma once

#include "host/ListaEquiptoED.h"
#include "services/Operacao.h"

#include <QString>
#include <QVariant>

#include <string>

namespace mesa {

// The search for equipment, a page at a time in the order of the internal numbers. Its cost does not grow with the
// registry: every page comes out of an index, whatever is asked for.
class PesquisaEquipamentos {
  public:
    static constexpr std::int32_t TamanhoPagina = 50;

    explicit PesquisaEquipamentos(Operacao &operacao) : m_Operacao(operacao) {}

    // Only what was written in the request narrows the search. Codes match from their beginning, without case and
    // accents. ProxNroIntEquip: 0 when there is no further page.
    Ref<ListaEquiptoED> Lista(const ListaEquiptoED &pedido);

  private:
    void Filtra(const QString &condicao, const QVariant &valor);
    void FiltraCodigo(const QString &coluna, const std::string &inicio);

    Operacao &m_Operacao;
    QString m_Condicoes;
    QVariantList m_Valores;
};

} // namespace mesa
