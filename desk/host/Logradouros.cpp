#include "desk/host/Logradouros.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Indicador.h"
#include "services/Referencias.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace mesa {

namespace {

// By name, those of the state first; the others tell theirs, since some have the same name.
std::vector<MunicipioDeEndereco> MunicipiosComAntes(const std::string &uf)
{
    struct Lugar {
        bool DeFora;
        std::string Chave;
        MunicipioDeEndereco Oferecido;
    };
    std::vector<Lugar> lugares;
    for (const Municipio &municipio : Referencias::Tabelas().Municipios()) {
        const bool deFora = municipio.UF != uf;
        const std::string nome = municipio.Nome + (deFora ? " - " + municipio.UF : "");
        lugares.push_back({deFora, ChaveOrdem(nome), {municipio.Codigo, nome}});
    }
    std::ranges::sort(lugares, {}, [](const Lugar &lugar) { return std::tie(lugar.DeFora, lugar.Chave); });
    std::vector<MunicipioDeEndereco> municipios;
    for (Lugar &lugar : lugares) {
        municipios.push_back(std::move(lugar.Oferecido));
    }
    return municipios;
}

} // namespace

const std::vector<MunicipioDeEndereco> &LogradourosMesa::Municipios() const
{
    const std::string uf = UFDoCliente(*m_Sessao());
    auto &municipios = m_Municipios[uf];
    if (municipios.empty()) {
        municipios = MunicipiosComAntes(uf);
    }
    return municipios;
}

std::vector<Logradouro> LogradourosMesa::Procura(std::int32_t codMunic, const std::string &procurado,
                                                 std::size_t maximo) const
{
    if (codMunic == 0) {
        return {};
    }
    auto pedido = Novo<ListaLogradourosED>();
    pedido->CodMunic = codMunic;
    pedido->Procurado = procurado;
    pedido->Ativo = Indicador::Sim;
    pedido->Maximo = static_cast<std::int32_t>(maximo);
    return Pede(pedido);
}

std::optional<Logradouro> LogradourosMesa::PorCodigo(std::int32_t codigo) const
{
    auto pedido = Novo<ListaLogradourosED>();
    pedido->CodLograd = codigo;
    const std::vector<Logradouro> achados = Pede(pedido);
    return achados.empty() ? std::nullopt : std::optional(achados.front());
}

// Who may not look finds nothing: the window behind the picker has said why already.
std::vector<Logradouro> LogradourosMesa::Pede(const Ref<ListaLogradourosED> &pedido) const
{
    Ref<Objeto> enviado = pedido;
    Valor retorno;
    std::string recusa;
    std::vector<Logradouro> achados;
    if (!m_Sessao()->Executa("AdministracaoRN", "listaLogradouros", enviado, retorno, recusa)) {
        return achados;
    }
    const ListaDe<LogradouroED> lista = retorno.Como<ListaLogradourosED>()->Logradouros;
    for (std::int32_t posicao = 1; !lista.Nada() && posicao <= lista->Count(); ++posicao) {
        const LogradouroED &achado = *lista->Item(posicao);
        achados.push_back({achado.CodLograd, achado.CodMunic, achado.NomeLograd, achado.Bairro, achado.Cep});
    }
    return achados;
}

} // namespace mesa
