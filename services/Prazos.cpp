#include "services/Prazos.h"

#include "services/Calendario.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace mesa {

namespace {

struct Faixa {
    std::int32_t Dias;
    EstadoDePrazo Estado;
};

// The last day of a period is its own: with 0 days left it is in force.
constexpr std::array Faixas{Faixa{30, EstadoDePrazo::Em30}, Faixa{60, EstadoDePrazo::Em60},
                            Faixa{90, EstadoDePrazo::Em90}};

EstadoDePrazo PelosDias(std::int32_t dias)
{
    for (const Faixa &faixa : Faixas) {
        if (dias <= faixa.Dias) {
            return faixa.Estado;
        }
    }
    return EstadoDePrazo::Valido;
}

} // namespace

std::span<const EstadoDePrazo> Prazos::Estados()
{
    static constexpr std::array estados{
        EstadoDePrazo::Valido,       EstadoDePrazo::Em90,         EstadoDePrazo::Em60,
        EstadoDePrazo::Em30,         EstadoDePrazo::Vencido,      EstadoDePrazo::Lacuna,
        EstadoDePrazo::NuncaAferido, EstadoDePrazo::SemDocumento, EstadoDePrazo::Dispensado};
    return estados;
}

const std::string &Prazos::Nome(EstadoDePrazo estado)
{
    static const std::array<std::string, 10> nomes{"",
                                                   "Válido por mais de 90 dias",
                                                   "Vence em 61 a 90 dias",
                                                   "Vence em 31 a 60 dias",
                                                   "Vence em até 30 dias",
                                                   "Vencido",
                                                   "Entre dois certificados",
                                                   "Nunca aferido",
                                                   "Documento ausente ou danificado",
                                                   "Dispensado de aferição"};
    return nomes.at(static_cast<std::size_t>(estado));
}

const std::string &Prazos::Regra()
{
    static const std::string regra =
        "Cada equipamento ativo conta uma vez, pelo primeiro destes estados que algum dos seus sensores ativos tiver "
        "no "
        "dia: documento ausente ou danificado, nunca aferido, entre dois certificados, vencido, vence em até 30, até "
        "60 "
        "e até 90 dias, válido por mais de 90 dias; o primeiro e o último dia de cada período contam, e os tipos de "
        "equipamento que não têm aferições estão dispensados.";
    return regra;
}

std::int32_t Prazos::DiasEntre(std::int32_t de, std::int32_t ate)
{
    return static_cast<std::int32_t>(std::lround(DataDoDia(ate).Valor - DataDoDia(de).Valor));
}

Prazos::Situacao Prazos::DaAfericao(const Afericao &afericao, std::int32_t dia)
{
    const std::int32_t ate = afericao.Periodo.Ate;
    const std::int32_t dias = DiasEntre(dia, ate);
    switch (AlcanceNoDia(afericao.Periodo, dia)) {
    case Alcance::EmVigor:
        return {PelosDias(dias), ate, dias, afericao.Numero};
    case Alcance::SemDocumento:
        return {EstadoDePrazo::SemDocumento, ate, dias, afericao.Numero};
    case Alcance::Acabou:
        return {EstadoDePrazo::Vencido, ate, dias, afericao.Numero};
    default:
        return {EstadoDePrazo::Nenhum, ate, dias, afericao.Numero};
    }
}

std::optional<Prazos::Situacao> Prazos::DoSensor(std::span<const Afericao> afericoes, std::int32_t dia)
{
    const Afericao *emVigor = nullptr;
    const Afericao *semDocumento = nullptr;
    const Afericao *acabada = nullptr; // the latest
    bool outraVem = false;
    for (const Afericao &afericao : afericoes) {
        switch (AlcanceNoDia(afericao.Periodo, dia)) {
        case Alcance::EmVigor:
            if (emVigor != nullptr) {
                return std::nullopt;
            }
            emVigor = &afericao;
            break;
        case Alcance::SemDocumento:
            semDocumento = &afericao;
            break;
        case Alcance::Acabou:
            if (acabada == nullptr || acabada->Periodo.Ate < afericao.Periodo.Ate) {
                acabada = &afericao;
            }
            break;
        case Alcance::NaoComecou:
            outraVem = true;
        }
    }
    if (emVigor != nullptr) {
        return DaAfericao(*emVigor, dia);
    }
    if (semDocumento != nullptr) {
        return DaAfericao(*semDocumento, dia);
    }
    if (acabada == nullptr) {
        return Situacao{};
    }
    Situacao situacao = DaAfericao(*acabada, dia);
    situacao.Estado = outraVem ? EstadoDePrazo::Lacuna : EstadoDePrazo::Vencido;
    return situacao;
}

bool Prazos::Pior(const Situacao &um, const Situacao &outro)
{
    return um.Estado != outro.Estado ? um.Estado > outro.Estado : um.Vencimento < outro.Vencimento;
}

} // namespace mesa
