#include "tela/EscolhaDeCliente.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char *TodosOsSetores = "Todos os setores";

} // namespace

EscolhaDeCliente::EscolhaDeCliente(Ref<ztClienteSetor> controle, std::vector<ClienteOferecido> clientes)
    : m_Controle(std::move(controle)),
      m_Clientes(std::move(clientes)),
      m_PesquisaDeClientes({[this] { return static_cast<std::int32_t>(m_Clientes.size()); },
                            [this](std::int32_t item) { return m_Clientes[static_cast<std::size_t>(item)].Nome; },
                            [this] { return Cliente(); }, [this] { return Obedece(); },
                            [this](std::int32_t item) { EscolheCliente(item); }}),
      m_PesquisaDeSetores({[this] { return static_cast<std::int32_t>(Setores().size()); },
                           [this](std::int32_t item) { return Setores()[static_cast<std::size_t>(item)]; },
                           [this] { return Setor(); }, [this] { return Obedece(); },
                           [this](std::int32_t item) { EscolheSetor(item); }})
{
}

std::int32_t EscolhaDeCliente::Cliente() const
{
    const auto achado = std::ranges::find(m_Clientes, m_Controle->Cliente(), &ClienteOferecido::Nome);
    return achado == m_Clientes.end() ? -1 : static_cast<std::int32_t>(achado - m_Clientes.begin());
}

std::vector<std::string> EscolhaDeCliente::Setores() const
{
    std::vector<std::string> setores = {TodosOsSetores};
    if (const std::int32_t cliente = Cliente(); cliente >= 0) {
        const std::vector<std::string> &proprios = m_Clientes[static_cast<std::size_t>(cliente)].Setores;
        setores.insert(setores.end(), proprios.begin(), proprios.end());
    }
    return setores;
}

std::int32_t EscolhaDeCliente::Setor() const
{
    if (m_Controle->Setor().empty()) {
        return 0;
    }
    const std::vector<std::string> setores = Setores();
    const auto achado = std::find(setores.begin() + 1, setores.end(), m_Controle->Setor());
    return achado == setores.end() ? -1 : static_cast<std::int32_t>(achado - setores.begin());
}

bool EscolhaDeCliente::EscolheCliente(std::int32_t posicao)
{
    return posicao >= 0 && posicao < static_cast<std::int32_t>(m_Clientes.size()) &&
           m_Controle->Escolhe(m_Clientes[static_cast<std::size_t>(posicao)].Nome, "");
}

bool EscolhaDeCliente::EscolheSetor(std::int32_t posicao)
{
    const std::vector<std::string> setores = Setores();
    return posicao >= 0 && posicao < static_cast<std::int32_t>(setores.size()) &&
           m_Controle->Escolhe(m_Controle->Cliente(), posicao == 0 ? "" : setores[static_cast<std::size_t>(posicao)]);
}
