#include "windows/host/RespostasRemotas.h"

#include "host/AfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/LimiteDifED.h"
#include "host/ListaEquiptoED.h"
#include "host/RelatorioAfericaoED.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nativo {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 10> Respostas{{
    {"consulta", EquiptoED::Nome},
    {"inclui", EquiptoED::Nome},
    {"lista2", ListaEquiptoED::Nome},
    {"consultaSimples", EquiptoED::Nome},
    {"consultaSimplesAfericaoVigente", AfericaoED::Nome},
    {"listaLimiteDif", EquiptoED::Nome},
    {"listaDiaEspecifico", EquiptoED::Nome},
    {"consultaSimplesLimiteDif", LimiteDifED::Nome},
    {"consultaSimplesDiaEspecifico", DiaEspecificoED::Nome},
    {"consultaRelatorioRVOR011", RelatorioAfericaoED::Nome},
}};

} // namespace

std::string_view RespostaDa(std::string_view operacao) noexcept
{
    const auto achada = std::ranges::find(Respostas, operacao, &std::pair<std::string_view, std::string_view>::first);
    return achada == Respostas.end() ? std::string_view() : achada->second;
}

} // namespace nativo
