#include "desk/host/PaginaAdministracao.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Conversoes.h"
#include "services/Referencias.h"

#include <algorithm>

namespace mesa {

std::optional<RelatoDaPagina> PaginaAdministracao::FazComArquivo(const std::string &, const std::string &,
                                                                 std::string &recusa)
{
    recusa = "Esta página não recebe arquivos.";
    return std::nullopt;
}

std::string Situacao(std::uint8_t ativo)
{
    return ativo == Nao ? "Desativado" : "Ativo";
}

const std::vector<OpcaoDoCampo> &OpcoesDeMunicipio()
{
    static const std::vector<OpcaoDoCampo> opcoes = [] {
        std::vector<std::pair<std::string, OpcaoDoCampo>> ordenadas;
        for (const Municipio &municipio : Referencias::Tabelas().Municipios()) {
            const std::string texto = municipio.Nome + "/" + municipio.UF;
            ordenadas.push_back({ChaveOrdem(texto), {CStr(municipio.Codigo), texto}});
        }
        std::ranges::sort(ordenadas, {}, &std::pair<std::string, OpcaoDoCampo>::first);
        std::vector<OpcaoDoCampo> em;
        for (auto &[chave, opcao] : ordenadas) {
            em.push_back(std::move(opcao));
        }
        return em;
    }();
    return opcoes;
}

std::vector<OpcaoDoCampo> OpcoesDeEstado()
{
    std::vector<OpcaoDoCampo> opcoes;
    for (const std::string &estado : Referencias::Tabelas().Estados()) {
        opcoes.push_back({estado, estado});
    }
    return opcoes;
}

} // namespace mesa
