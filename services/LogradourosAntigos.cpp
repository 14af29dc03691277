#include "services/LogradourosAntigos.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/TabelaDeDados.h"

#include <vector>

namespace mesa {

namespace {

constexpr std::int32_t ViasPorMunicipio = 1000;
constexpr std::int32_t PrimeiroCep = 90000; // thousands
constexpr std::int32_t CepsPorMunicipio = 20;

} // namespace

Ref<LogradouroED> LogradouroDoCodigoAntigo(std::int32_t codigo)
{
    static const std::vector<LinhaDeDados> municipios = LeTabelaDeDados("antigos/municipios.tsv");
    static const std::vector<LinhaDeDados> vias = LeTabelaDeDados("antigos/vias.tsv");
    const std::int32_t municipio = codigo / ViasPorMunicipio;
    const std::int32_t via = codigo % ViasPorMunicipio;
    if (municipio < 1 || municipio > static_cast<std::int32_t>(municipios.size()) || via < 1 ||
        via > static_cast<std::int32_t>(vias.size())) {
        return nullptr;
    }
    const LinhaDeDados &dados = vias[static_cast<std::size_t>(via - 1)];
    const std::int32_t cep = (PrimeiroCep + (municipio - 1) * CepsPorMunicipio) * 1000 + via * 10;
    auto logradouro = Novo<LogradouroED>();
    logradouro->CodLograd = codigo;
    logradouro->CodMunic = CLng(municipios[static_cast<std::size_t>(municipio - 1)].at(0));
    logradouro->NomeLograd = dados.at(0) + " " + dados.at(1);
    logradouro->Bairro = dados.at(2);
    logradouro->Cep = Format(CDbl(cep), "00000000");
    logradouro->Ativo = Indicador::Sim;
    return logradouro;
}

} // namespace mesa
