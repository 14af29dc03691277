#include "desk/host/PaginaEntradas.h"

namespace mesa {

std::vector<std::string> PaginaEntradas::Colunas() const
{
    return {"Quando", "Usuário", "Nome", "Motivo", "Estação"};
}

std::vector<ComandoDaPagina> PaginaEntradas::Comandos() const
{
    return {{"atualizar", "&Atualizar"}, {"mais", "&Mais antigas"}};
}

std::vector<std::string> PaginaEntradas::LinhaDe(const EntradaRecusadaED &entrada) const
{
    return {entrada.Momento, entrada.Usuario.Valor().empty() ? "(desconhecido)" : entrada.Usuario.Valor(),
            entrada.NomePessoa, entrada.Motivo, entrada.Estacao};
}

std::string PaginaEntradas::ChaveDe(const EntradaRecusadaED &entrada) const
{
    return entrada.Texto();
}

bool PaginaEntradas::Carrega(std::string &recusa)
{
    Mostra(nullptr);
    m_Proxima = 0;
    return LePagina(recusa);
}

bool PaginaEntradas::LePagina(std::string &recusa)
{
    auto pedido = Novo<ListaEntradasED>();
    pedido->Proxima = m_Proxima;
    const auto lidas = Pede<ListaEntradasED>("listaEntradasRecusadas", pedido, recusa);
    if (lidas) {
        Acrescenta(lidas->Entradas);
        m_Proxima = lidas->Proxima;
    }
    return static_cast<bool>(lidas);
}

bool PaginaEntradas::Habilitado(const std::string &comando, std::optional<std::size_t>) const
{
    return comando == "atualizar" || m_Proxima != 0;
}

std::string PaginaEntradas::Pergunta(const std::string &, std::optional<std::size_t>) const
{
    return "";
}

std::optional<Ficha> PaginaEntradas::Abre(const std::string &, std::optional<std::size_t>, std::string &)
{
    return std::nullopt;
}

bool PaginaEntradas::Faz(const std::string &comando, std::optional<std::size_t>, std::string &recusa)
{
    return comando == "mais" ? LePagina(recusa) : Carrega(recusa);
}

} // namespace mesa
