#include "desk/host/PaginaClientes.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

namespace mesa {

namespace {

constexpr const char *GrupoDosSetores = "Setores em uso";

std::string NomeDoSetor(const SetorED &setor)
{
    return "setor_" + CStr(setor.NroSetor.Valor());
}

Ref<ClienteED> PedidoDo(const ClienteED &cliente)
{
    auto pedido = Novo<ClienteED>();
    pedido->CodCliente = cliente.CodCliente;
    pedido->Versao = cliente.Versao;
    return pedido;
}

// One a line.
void PoeSetoresNovos(const std::string &texto, const ListaDe<SetorED> &setores)
{
    for (const std::string &linha : Divide(texto, "\n")) {
        if (!Trim(linha).empty()) {
            auto setor = Novo<SetorED>();
            setor->NroSetor = 0;
            setor->NomeSetor = Trim(linha);
            setor->Ativo = Sim;
            setores->Add(setor);
        }
    }
}

} // namespace

std::vector<std::string> PaginaClientes::Colunas() const
{
    return {"Código", "Nome", "Estado", "Setores", "Situação"};
}

std::vector<ComandoDaPagina> PaginaClientes::Comandos() const
{
    using Pede = ComandoDaPagina::Pede;
    return {{"incluir", "&Incluir...", Pede::Ficha},
            {"editar", "&Editar...", Pede::Ficha},
            {"desativar", "&Desativar"},
            {"reativar", "Rea&tivar"}};
}

std::vector<std::string> PaginaClientes::LinhaDe(const ClienteED &cliente) const
{
    std::string setores;
    const auto &lista = cliente.Setores.Valor();
    for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
        if (lista->Item(n)->Ativo != Nao) {
            setores += (setores.empty() ? "" : ", ") + lista->Item(n)->NomeSetor.Valor();
        }
    }
    return {CStr(cliente.CodCliente.Valor()), cliente.NomeCliente, cliente.UF, setores, Situacao(cliente.Ativo)};
}

std::string PaginaClientes::ChaveDe(const ClienteED &cliente) const
{
    return CStr(cliente.CodCliente.Valor());
}

bool PaginaClientes::Carrega(std::string &recusa)
{
    const auto lidos = Pede<ListaClientesED>("listaClientes", Novo<ListaClientesED>(), recusa);
    if (lidos) {
        Mostra(lidos->Clientes);
    }
    return static_cast<bool>(lidos);
}

bool PaginaClientes::Habilitado(const std::string &comando, std::optional<std::size_t> linha) const
{
    if (comando == "incluir") {
        return true;
    }
    const ClienteED *cliente = Registro(linha);
    return cliente != nullptr && (comando == "editar" || (comando == "reativar") == (cliente->Ativo == Nao));
}

std::string PaginaClientes::Pergunta(const std::string &comando, std::optional<std::size_t> linha) const
{
    const ClienteED *cliente = Registro(linha);
    if (cliente == nullptr || comando == "editar" || comando == "incluir") {
        return "";
    }
    return comando == "desativar"
               ? "Desativar o cliente " + cliente->NomeCliente.Valor() + "? O que está registrado dele continua."
               : "Reativar o cliente " + cliente->NomeCliente.Valor() + "?";
}

std::optional<Ficha> PaginaClientes::Abre(const std::string &comando, std::optional<std::size_t> linha, std::string &)
{
    const ClienteED *escolhido = Registro(linha);
    const bool inclusao = comando == "incluir";
    if (!inclusao && escolhido == nullptr) {
        return std::nullopt;
    }
    const Ref<ClienteED> cliente = inclusao ? Novo<ClienteED>() : ComoTipo<ClienteED>(escolhido->Copia());
    Ficha ficha;
    ficha.Nome = "FichaCliente";
    ficha.Titulo = inclusao ? "Cliente novo" : "Cliente " + cliente->NomeCliente.Valor();
    ficha.Campos.push_back({.Nome = "codCliente",
                            .Rotulo = "Có&digo:",
                            .Especie = EspecieDoCampo::Inteiro,
                            .Valor = inclusao ? "" : CStr(cliente->CodCliente.Valor()),
                            .Maximo = 6,
                            .Travado = !inclusao});
    ficha.Campos.push_back({.Nome = "nome",
                            .Rotulo = "&Nome:",
                            .Valor = cliente->NomeCliente,
                            .Maximo = MaximoDe("CLIENTE", "Nome"),
                            .Travado = !inclusao});
    CampoDaFicha estado{.Nome = "estado", .Rotulo = "&Estado:", .Especie = EspecieDoCampo::Escolha};
    estado.Opcoes = OpcoesDeEstado();
    if (inclusao) {
        estado.Opcoes.insert(estado.Opcoes.begin(), {"", ""});
    }
    estado.Valor = cliente->UF;
    ficha.Campos.push_back(estado);
    const auto &setores = cliente->Setores.Valor();
    for (std::int32_t n = 1; setores && n <= setores->Count(); ++n) {
        ficha.Campos.push_back({.Nome = NomeDoSetor(*setores->Item(n)),
                                .Rotulo = setores->Item(n)->NomeSetor,
                                .Especie = EspecieDoCampo::Marca,
                                .Valor = setores->Item(n)->Ativo == Nao ? "2" : "1",
                                .Grupo = GrupoDosSetores});
    }
    ficha.Campos.push_back({.Nome = "novos",
                            .Rotulo = inclusao ? "&Setores, um por linha:" : "&Setores novos, um por linha:",
                            .Especie = EspecieDoCampo::Linhas});
    ficha.Salva = [this, cliente, inclusao](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        constexpr std::int32_t maiorCodigo = 999999;
        const std::string &codigo = aberta.Valor("codCliente");
        if (codigo.empty() || CLng(codigo) < 1 || CLng(codigo) > maiorCodigo) {
            return ProblemaDaFicha{"codCliente", "Informe o código do cliente, um número de 1 a 999999."};
        }
        if (Trim(aberta.Valor("nome")).empty()) {
            return ProblemaDaFicha{"nome", "Informe o nome do cliente."};
        }
        if (aberta.Valor("estado").empty()) {
            return ProblemaDaFicha{"estado", "Informe o estado do cliente."};
        }
        auto pedido = PedidoDo(*cliente);
        pedido->CodCliente = CLng(codigo);
        pedido->UF = aberta.Valor("estado");
        pedido->Setores = Novo<Colecao<Ref<SetorED>>>();
        if (inclusao) {
            pedido->NomeCliente = Trim(aberta.Valor("nome"));
        }
        const auto &deles = cliente->Setores.Valor();
        for (std::int32_t n = 1; deles && n <= deles->Count(); ++n) {
            auto setor = Novo<SetorED>();
            setor->NroSetor = deles->Item(n)->NroSetor;
            setor->Ativo = aberta.Marcado(NomeDoSetor(*deles->Item(n))) ? Sim : Nao;
            pedido->Setores.Valor()->Add(setor);
        }
        PoeSetoresNovos(aberta.Valor("novos"), pedido->Setores);
        return Salva<ClienteED>(inclusao ? "incluiCliente" : "alteraCliente", pedido);
    };
    return ficha;
}

bool PaginaClientes::Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa)
{
    const ClienteED *cliente = Registro(linha);
    if (cliente == nullptr) {
        return false;
    }
    auto pedido = PedidoDo(*cliente);
    pedido->Ativo = comando == "desativar" ? Nao : Sim;
    return Pede<ClienteED>("alteraCliente", pedido, recusa) && Carrega(recusa);
}

} // namespace mesa
