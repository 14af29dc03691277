#include "services/Vigencia.h"

#include "host/Indicador.h"
#include "services/Calendario.h"
#include "services/PeriodoDaAfericao.h"

#include <map>

namespace mesa {

namespace {

bool EDoDia(const AfericaoED &afericao, std::int32_t dia)
{
    return afericao.Ativo.Valor() == Indicador::Sim &&
           AlcanceNoDia({DiaCivil(afericao.DataVerificacao), DiaCivil(afericao.DataVencimento),
                         afericao.NroIntImgCertif.Valor() != 0},
                        dia) == Alcance::EmVigor;
}

} // namespace

SemVigencia PorQuantas(std::size_t quantas)
{
    return quantas == 0 ? SemVigencia::SemAfericao : quantas == 1 ? SemVigencia::Nenhuma : SemVigencia::Varias;
}

Vigencia VigenciaNoDia(std::int32_t dia, const std::vector<AfericaoDeSensor> &afericoes,
                       const AtividadeDoEquipamento &doEquipamento, const AtividadeDoSensor &doSensor)
{
    std::vector<AfericaoDeSensor> doDia;
    for (const AfericaoDeSensor &afericao : afericoes) {
        if (EDoDia(*afericao.Afericao, dia)) {
            doDia.push_back(afericao);
        }
    }
    if (doDia.empty()) {
        return {.Porque = SemVigencia::SemAfericao};
    }
    if (!doEquipamento()) {
        return {.Porque = SemVigencia::EquipamentoNaoConta};
    }
    std::map<Atividade, std::vector<AfericaoDeSensor>> porAtividade;
    for (const AfericaoDeSensor &afericao : doDia) {
        if (const auto atividade = doSensor(afericao.NroIntSensor)) {
            porAtividade[*atividade].push_back(afericao);
        }
    }
    if (porAtividade.empty()) {
        return {.Porque = SemVigencia::SensorNaoConta};
    }
    const std::vector<AfericaoDeSensor> &vigentes = porAtividade.begin()->second;
    if (PorQuantas(vigentes.size()) == SemVigencia::Varias) {
        return {.Porque = SemVigencia::Varias, .Varias = vigentes};
    }
    return {vigentes.front().Afericao, vigentes.front().NroIntSensor, SemVigencia::Nenhuma};
}

} // namespace mesa
