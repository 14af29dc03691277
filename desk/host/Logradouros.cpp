#include "desk/host/Logradouros.h"

#include "controls/OrdemPortuguesa.h"
#include "desk/host/BancoLocalMesa.h"
#include "desk/host/TabelaDeDados.h"
#include "desk/services/Referencias.h"
#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>

namespace mesa {

namespace {

constexpr std::int32_t PrimeiroCep = 90000; // of the state, thousands

struct Via {
    std::string Nome;
    std::string Bairro;
};

const std::vector<Via> &Vias()
{
    static const std::vector<Via> vias = [] {
        std::vector<Via> lidas;
        for (const LinhaDeDados &linha : LeTabelaDeDados("vias.tsv")) {
            lidas.push_back({linha.at(0) + " " + linha.at(1), linha.at(2)});
        }
        return lidas;
    }();
    return vias;
}

// Position of a municipality in the table; none for a code that is not there.
std::optional<std::int32_t> PosicaoDoMunicipio(std::int32_t codMunic)
{
    const auto &municipios = Municipios();
    const auto achado = std::find_if(municipios.begin(), municipios.end(),
                                     [&](const Municipio &municipio) { return municipio.Codigo == codMunic; });
    if (achado == municipios.end()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(achado - municipios.begin());
}

Logradouro FazLogradouro(std::int32_t municipio, std::int32_t via)
{
    const Via &dados = Vias()[static_cast<std::size_t>(via)];
    const std::int32_t cep = (PrimeiroCep + municipio * 20) * 1000 + (via + 1) * 10;
    return {(municipio + 1) * ViasPorMunicipio + via + 1, Municipios()[static_cast<std::size_t>(municipio)].Codigo,
            dados.Nome, dados.Bairro, Format(CDbl(cep), "00000000")};
}

bool SoDigitos(const std::string &texto)
{
    return !texto.empty() && std::all_of(texto.begin(), texto.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool TemPalavras(const std::string &nome, const std::string &procurado)
{
    const std::string dobrado = SemAcentoNemCaixa(nome);
    const std::vector<std::string> palavras = Divide(SemAcentoNemCaixa(procurado), " ");
    return std::all_of(palavras.begin(), palavras.end(),
                       [&](const std::string &palavra) { return dobrado.find(palavra) != std::string::npos; });
}

} // namespace

std::vector<Logradouro> ProcuraLogradouros(std::int32_t codMunic, const std::string &procurado, std::size_t maximo)
{
    const auto municipio = PosicaoDoMunicipio(codMunic);
    std::vector<Logradouro> achados;
    if (!municipio) {
        return achados;
    }
    const std::string cep = Substitui(procurado, "-", "");
    for (std::int32_t via = 0; via < static_cast<std::int32_t>(Vias().size()); ++via) {
        Logradouro logradouro = FazLogradouro(*municipio, via);
        const bool serve =
            SoDigitos(cep) ? logradouro.Cep.compare(0, cep.size(), cep) == 0 || TemPalavras(logradouro.Nome, procurado)
                           : TemPalavras(logradouro.Nome, procurado);
        if (serve) {
            achados.push_back(std::move(logradouro));
        }
    }
    std::sort(achados.begin(), achados.end(),
              [](const auto &a, const auto &b) { return ChaveOrdem(a.Nome) < ChaveOrdem(b.Nome); });
    achados.resize(std::min(achados.size(), maximo));
    return achados;
}

std::optional<Logradouro> LogradouroPorCodigo(std::int32_t codigo)
{
    const std::int32_t municipio = codigo / ViasPorMunicipio - 1;
    const std::int32_t via = codigo % ViasPorMunicipio - 1;
    if (municipio < 0 || municipio >= static_cast<std::int32_t>(Municipios().size()) || via < 0 ||
        via >= static_cast<std::int32_t>(Vias().size())) {
        return std::nullopt;
    }
    return FazLogradouro(municipio, via);
}

std::vector<MunicipioDeEndereco> LogradourosMesa::Municipios() const
{
    std::vector<MunicipioDeEndereco> oferecidos;
    for (const Municipio &municipio : mesa::Municipios()) {
        oferecidos.push_back({municipio.Codigo, municipio.Nome});
    }
    return oferecidos;
}

} // namespace mesa
