#pragma once

#include "services/Operacao.h"
#include "services/Prazos.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// How the active equipment of the operator's client stands on a day. The database counts together what has the same to
// show, and Prazos says which state that is. What may count otherwise than its rows say now is read by itself, by the
// rule of the calibration in force (Vigencia.h): equipment that was saved behind the day; equipment with a sensor
// that is not active and was saved on the day or in the two before, which is as much as clocks of different places
// differ; and, when a clock is known to have gone back, equipment of which the history has a moment that is still to
// come. Of the others the history says what the rows say. Of the calibrations only those are looked at that have not
// ended, and whether another one has: so what an equipment costs does not grow with its history.
class LeituraDePrazos {
  public:
    struct Afericao {
        PeriodoDaAfericao Periodo;
        std::int64_t NroIntAfericao = 0;
        std::int64_t NroIntSensor = 0;
        std::int64_t Documento = 0;
    };
    struct Situacao {
        EstadoDePrazo Estado = EstadoDePrazo::NuncaAferido;
        std::optional<Afericao> Por; // by which it stands so
    };
    struct Contagens {
        std::map<QString, std::map<EstadoDePrazo, std::int32_t>> PorGrupo;
        // How many calibrations of active sensors end in each month (yyyymm), from the day on.
        std::map<std::int32_t, std::int32_t> PorMes;
        std::vector<std::int32_t> SemEstado; // equipment of which it cannot be told
    };
    // Equipment that follow each other in the order of their numbers: how many there were, and the last one.
    struct Trecho {
        std::int32_t Quantos = 0;
        std::int32_t Ultimo = 0;
    };

    LeituraDePrazos(Operacao &operacao, std::int32_t dia);

    // Only equipment for which the column has the value.
    void Filtra(const QString &coluna, const QVariant &valor);
    // A document of the equipment that counts as missing.
    void Danificado(std::int32_t nroIntEquip, std::int64_t documento);

    // grupo: a column of EQUIPAMENTO, or empty for one group. ate: the last day of the months.
    Contagens Conta(const QString &grupo, std::int32_t ate) const;

    // How many there are, asked for by itself.
    std::int32_t Ativos() const;

    // Of at most so many behind that internal number, of those with photo work (1) or without (2), the states; none
    // where it cannot be told.
    Trecho Estados(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos,
                   const std::function<void(std::int32_t nroIntEquip, std::optional<EstadoDePrazo>)> &visita) const;
    // Of the same the calibrations of active sensors that end from that day to that other one.
    Trecho Afericoes(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos, std::int32_t de,
                     std::int32_t ate,
                     const std::function<void(std::int32_t nroIntEquip, const Afericao &)> &visita) const;

    // One equipment by itself; none when the history does not have it as active on the day.
    std::optional<Situacao> De(std::int32_t nroIntEquip, const std::string &tipoEquip) const;

  private:
    // A part of a statement with the values of its places.
    struct Parte {
        QString Sql;
        QVariantList Valores;
    };
    Parte Onde(std::uint8_t comFoto) const;
    // Those behind the one number, up to the other.
    Parte Entre(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t ate) const;
    Parte Pedaco(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos) const;
    Parte Balancos(const QString &grupo, const Parte &tabela, const Parte &onde) const;
    std::int32_t FimDoTrecho(std::uint8_t comFoto, std::int32_t depoisDe) const;
    bool ContaPelasLinhas(const QString &grupo, const Parte &onde, Contagens &contagens) const;
    void ContaAParte(const QString &grupo, const Parte &onde, Contagens &contagens) const;
    void ContaMeses(const Parte &onde, std::int32_t ate, Contagens &contagens) const;
    void TrocaDanificados(const QString &grupo, Contagens &contagens) const;
    std::optional<Situacao> De(std::int32_t nroIntEquip, const std::string &tipoEquip,
                               const std::set<std::int64_t> &danificados) const;

    Operacao &m_Operacao;
    std::int32_t m_Dia;
    Parte m_AParte; // what is read by itself
    QString m_Condicoes;
    QVariantList m_Valores;
    std::map<std::int32_t, std::set<std::int64_t>> m_Danificados; // documents, by equipment
};

} // namespace mesa
