#include "windows/host/ClientesWindows.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Classes.h"

namespace nativo::ClientesWindows {
namespace {

struct Cliente {
    std::int32_t Codigo = 0;
    ClienteOferecido Oferecido;
};

// None where the table of classes tells nobody who knows them.
std::vector<Cliente> DeQuemSabe()
{
    std::vector<Cliente> clientes;
    if (Classes::Identificador(Classes::Clientes).empty()) {
        return clientes;
    }
    const Tardio lista(LeObjeto(Tardio(Classes::CriaObjeto(Classes::Clientes)).Chama<Variante>("Lista").Bruta()));
    const auto quantos = lista.Chama<std::int32_t>("Count");
    for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
        const Tardio cliente(LeObjeto(lista.Chama<Variante>("Item", posicao).Bruta()));
        clientes.push_back({cliente.Chama<std::int32_t>("Codigo"),
                            {cliente.Chama<std::string>("Nome"), cliente.Chama<std::vector<std::string>>("Setores")}});
    }
    return clientes;
}

} // namespace

std::vector<ClienteOferecido> Oferecidos()
{
    std::vector<ClienteOferecido> oferecidos;
    for (Cliente &cliente : DeQuemSabe()) {
        oferecidos.push_back(std::move(cliente.Oferecido));
    }
    if (oferecidos.empty()) {
        const Ref<IobjMTM> sessao = goGeral->objMTM();
        const std::string setor = sessao->SetorLogado();
        oferecidos.push_back(
            {sessao->ClienteLogado(), setor.empty() ? std::vector<std::string>() : std::vector{setor}});
    }
    return oferecidos;
}

std::string NomeDo(std::int32_t codCliente)
{
    for (const Cliente &cliente : DeQuemSabe()) {
        if (cliente.Codigo == codCliente) {
            return cliente.Oferecido.Nome;
        }
    }
    return goGeral->objMTM()->ClienteLogado();
}

} // namespace nativo::ClientesWindows
