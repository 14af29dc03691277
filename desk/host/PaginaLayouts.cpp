#include "desk/host/PaginaLayouts.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

namespace mesa {

namespace {

Ref<LayoutED> PedidoDo(const LayoutED &layout)
{
    auto pedido = Novo<LayoutED>();
    pedido->NroLayout = layout.NroLayout;
    pedido->Versao = layout.Versao;
    return pedido;
}

} // namespace

std::vector<std::string> PaginaLayouts::Colunas() const
{
    return {"Nome", "Situação"};
}

std::vector<ComandoDaPagina> PaginaLayouts::Comandos() const
{
    using Pede = ComandoDaPagina::Pede;
    return {{"incluir", "&Incluir...", Pede::Ficha},
            {"editar", "&Editar...", Pede::Ficha},
            {"desativar", "&Desativar"},
            {"reativar", "Rea&tivar"}};
}

std::vector<std::string> PaginaLayouts::LinhaDe(const LayoutED &layout) const
{
    return {layout.NomeLayout, Situacao(layout.Ativo)};
}

std::string PaginaLayouts::ChaveDe(const LayoutED &layout) const
{
    return CStr(layout.NroLayout.Valor());
}

bool PaginaLayouts::Carrega(std::string &recusa)
{
    const auto lidos = Pede<ListaLayoutsED>("listaLayouts", Novo<ListaLayoutsED>(), recusa);
    if (lidos) {
        Mostra(lidos->Layouts);
    }
    return static_cast<bool>(lidos);
}

bool PaginaLayouts::Habilitado(const std::string &comando, std::optional<std::size_t> linha) const
{
    if (comando == "incluir") {
        return true;
    }
    const LayoutED *layout = Registro(linha);
    return layout != nullptr && (comando == "editar" || (comando == "reativar") == (layout->Ativo == Nao));
}

std::string PaginaLayouts::Pergunta(const std::string &comando, std::optional<std::size_t> linha) const
{
    const LayoutED *layout = Registro(linha);
    if (layout == nullptr || comando != "desativar") {
        return "";
    }
    return "Desativar o layout " + layout->NomeLayout.Valor() +
           "? Ele deixa de ser oferecido; os equipamentos que o têm continuam com ele.";
}

std::optional<Ficha> PaginaLayouts::Abre(const std::string &comando, std::optional<std::size_t> linha, std::string &)
{
    const LayoutED *escolhido = Registro(linha);
    const bool inclusao = comando == "incluir";
    if (!inclusao && escolhido == nullptr) {
        return std::nullopt;
    }
    const Ref<LayoutED> layout = inclusao ? Novo<LayoutED>() : ComoTipo<LayoutED>(escolhido->Copia());
    Ficha ficha;
    ficha.Nome = "FichaLayout";
    ficha.Titulo = inclusao ? "Layout novo" : "Layout " + layout->NomeLayout.Valor();
    ficha.Campos.push_back({.Nome = "nome",
                            .Rotulo = "&Nome:",
                            .Valor = layout->NomeLayout,
                            .Maximo = MaximoDe("LAYOUT", "Nome"),
                            .Travado = !inclusao});
    ficha.Campos.push_back(
        {.Nome = "conteudo", .Rotulo = "C&onteúdo:", .Especie = EspecieDoCampo::Linhas, .Valor = layout->Conteudo});
    ficha.Salva = [this, layout, inclusao](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        if (Trim(aberta.Valor("nome")).empty()) {
            return ProblemaDaFicha{"nome", "Informe o nome do layout."};
        }
        auto pedido = inclusao ? Novo<LayoutED>() : PedidoDo(*layout);
        if (inclusao) {
            pedido->NomeLayout = Trim(aberta.Valor("nome"));
            pedido->Ativo = Sim;
        }
        pedido->Conteudo = aberta.Valor("conteudo");
        return Salva<LayoutED>(inclusao ? "incluiLayout" : "alteraLayout", pedido);
    };
    return ficha;
}

bool PaginaLayouts::Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa)
{
    const LayoutED *layout = Registro(linha);
    if (layout == nullptr) {
        return false;
    }
    auto pedido = PedidoDo(*layout);
    pedido->Ativo = comando == "desativar" ? Nao : Sim;
    return Pede<LayoutED>("alteraLayout", pedido, recusa) && Carrega(recusa);
}

} // namespace mesa
