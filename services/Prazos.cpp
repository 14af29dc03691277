#include "services/Prazos.h"

#include "services/Calendario.h"
#include "services/Vigencia.h"

#include <cmath>

namespace mesa {

namespace {

struct Trecho {
    std::int32_t Dias;
    EstadoDePrazo Estado;
};

// The last day of a period is its own: with 0 days left it is in force.
constexpr std::array Trechos{Trecho{30, EstadoDePrazo::Em30}, Trecho{60, EstadoDePrazo::Em60},
                             Trecho{90, EstadoDePrazo::Em90}};

EstadoDePrazo PelosDias(std::int32_t dias)
{
    for (const Trecho &trecho : Trechos) {
        if (dias <= trecho.Dias) {
            return trecho.Estado;
        }
    }
    return EstadoDePrazo::Valido;
}

} // namespace

std::span<const EstadoDePrazo> Prazos::Estados()
{
    static constexpr std::array estados{EstadoDePrazo::Valido,        EstadoDePrazo::Em90,
                                        EstadoDePrazo::Em60,          EstadoDePrazo::Em30,
                                        EstadoDePrazo::Vencido,       EstadoDePrazo::Lacuna,
                                        EstadoDePrazo::NuncaAferido,  EstadoDePrazo::SemDocumento,
                                        EstadoDePrazo::VariasEmVigor, EstadoDePrazo::Dispensado};
    return estados;
}

const std::string &Prazos::Nome(EstadoDePrazo estado)
{
    static const std::array<std::string, 11> nomes{"Ainda não começou",
                                                   "Válido por mais de 90 dias",
                                                   "Vence em 61 a 90 dias",
                                                   "Vence em 31 a 60 dias",
                                                   "Vence em até 30 dias",
                                                   "Vencido",
                                                   "Entre dois certificados",
                                                   "Nunca aferido",
                                                   "Documento ausente ou danificado",
                                                   "Mais de uma aferição em vigor",
                                                   "Dispensado de aferição"};
    return nomes.at(static_cast<std::size_t>(estado));
}

const std::string &Prazos::Regra()
{
    static const std::string regra =
        "Cada equipamento ativo conta uma vez, e os números, com os que ficam à parte, somam os equipamentos ativos. "
        "Os tipos que não têm "
        "aferições "
        "estão dispensados. Dos outros vale o que a consulta da aferição em vigor responde para hoje: se há uma, "
        "contam "
        "os dias até o seu último dia, que ainda é dela; se mais de um sensor tem uma, não se sabe qual vale, e o "
        "equipamento está em \"Mais de uma aferição em vigor\". Se não há nenhuma, vale o primeiro destes casos: a do "
        "dia está sem documento, ou com ele danificado; nenhuma começou até hoje; uma acabou, e outra está por "
        "começar; "
        "a última acabou. O equipamento com uma aferição em vigor conta só por ela, mesmo que a de outro sensor tenha "
        "acabado. O equipamento que o histórico não confirma como ativo hoje fica à parte, dito um a um.";
    return regra;
}

std::int32_t Prazos::DiasEntre(std::int32_t de, std::int32_t ate)
{
    return static_cast<std::int32_t>(std::lround(DataDoDia(ate).Valor - DataDoDia(de).Valor));
}

std::array<std::int32_t, 3> Prazos::FimDosTrechos(std::int32_t dia)
{
    std::array<std::int32_t, Trechos.size()> fins{};
    for (std::size_t n = 0; n < Trechos.size(); ++n) {
        fins[n] = DiaCivil(DataDoDia(dia).MaisDias(Trechos[n].Dias));
    }
    return fins;
}

EstadoDePrazo Prazos::DoEquipamento(const Balanco &balanco, std::int32_t dia)
{
    switch (PorQuantas(balanco.EmVigor)) {
    case SemVigencia::Nenhuma:
        return PelosDias(DiasEntre(dia, balanco.Vencimento));
    case SemVigencia::Varias:
        return EstadoDePrazo::VariasEmVigor;
    default:
        return balanco.TemSemDocumento ? EstadoDePrazo::SemDocumento
               : !balanco.TemAcabada   ? EstadoDePrazo::NuncaAferido
               : balanco.TemPorComecar ? EstadoDePrazo::Lacuna
                                       : EstadoDePrazo::Vencido;
    }
}

EstadoDePrazo Prazos::DaAfericao(const PeriodoDaAfericao &afericao, std::int32_t dia)
{
    switch (AlcanceNoDia(afericao, dia)) {
    case Alcance::EmVigor:
        return PelosDias(DiasEntre(dia, afericao.Ate));
    case Alcance::SemDocumento:
        return EstadoDePrazo::SemDocumento;
    case Alcance::Acabou:
        return EstadoDePrazo::Vencido;
    default:
        return EstadoDePrazo::NaoComecou;
    }
}

} // namespace mesa
