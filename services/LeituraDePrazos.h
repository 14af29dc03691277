#pragma once

#include "services/Operacao.h"
#include "services/Prazos.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace mesa {

// Reads the active equipment of the operator's client with how each active sensor stands on a day. Of a sensor's
// calibrations only those are read that have not ended, and of the others the last day on which there was one: so what
// an equipment costs does not grow with its history.
class LeituraDePrazos {
  public:
    struct Sensor {
        std::int32_t NroIntSensor = 0;
        std::int32_t NroSensor = 0;
        Prazos::Situacao Situacao;
    };
    struct Equipamento {
        std::int32_t NroIntEquip = 0;
        bool Dispensado = false; // its type has no calibrations
        QString Grupo;
        std::vector<Sensor> Sensores;        // of which it can be told how they stand
        std::optional<std::int32_t> Confuso; // number of a sensor of which it cannot

        EstadoDePrazo Estado() const;
        // By which it stands so; null where there is none.
        const Sensor *Decide() const;
    };
    using Visita = std::function<void(const Equipamento &)>;

    LeituraDePrazos(Operacao &operacao, std::int32_t dia);

    // Only equipment for which the column has the value.
    void Filtra(const QString &coluna, const QVariant &valor);
    // Documents are read whole, and those that are not as they were stored are none.
    void ConfereDocumentos() { m_ConfereDocumentos = true; }

    // Every one. grupo: a column of EQUIPAMENTO for their group, or empty.
    void Todos(const QString &grupo, const Visita &visita) const;
    // At most so many behind that internal number, in the order of these numbers, of those with photo work (1) or
    // without (2); how many there were.
    std::int32_t Trecho(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos, const Visita &visita) const;

  private:
    // The equipment of a statement: a table under the name e with its parameters, and the conditions with theirs.
    struct Fonte {
        QString Tabela;
        QVariantList DaTabela;
        QString Onde;
        QVariantList DoOnde;
    };
    Fonte FonteDe(std::uint8_t comFoto, const QString &mais, const QVariantList &seus) const;
    std::set<std::int64_t> Danificados(const Fonte &fonte) const;
    void Le(const Fonte &fonte, const QString &grupo, const Visita &visita) const;

    Operacao &m_Operacao;
    std::int32_t m_Dia;
    QString m_Condicoes;
    QVariantList m_Valores;
    bool m_ConfereDocumentos = false;
};

} // namespace mesa
