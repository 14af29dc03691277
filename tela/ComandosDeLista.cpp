#include "tela/ComandosDeLista.h"

#include "host/Texto.h"
#include "tela/Mnemonicas.h"

namespace {

constexpr std::string_view TextoFechar = "Fechar";
constexpr std::string_view TextoAjuda = "Ajuda";
constexpr std::string_view TextoOrdenar = "Ordenar por";
constexpr std::string_view TextoSemOrdem = "&0 Como vieram";

// Lines of a caption without the blanks around each.
std::string Apara(const std::string &texto)
{
    std::string aparado;
    for (const std::string &linha : Divide(texto, QuebraDeLinha)) {
        aparado += (aparado.empty() ? "" : "\n") + Trim(linha);
    }
    return aparado;
}

std::string Escolhe(Mnemonicas &livres, std::string_view texto)
{
    return ComMarca(texto, livres.Acha(texto));
}

} // namespace

BarraDeLista BarraDaLista(const ztList &lista)
{
    const Ref<IForm> form = lista.Form();
    Mnemonicas livres = form ? Mnemonicas(*form) : Mnemonicas();
    BarraDeLista barra;
    barra.Fechar = Escolhe(livres, TextoFechar);
    barra.Ajuda = Escolhe(livres, TextoAjuda);
    barra.ComBotoesProprios = lista.Ajustes().BotoesFecharAjuda;
    barra.Visivel = lista.Menu().Count() > 0;
    for (std::int32_t posicao = 1; posicao <= lista.Menu().Count(); ++posicao) {
        const Ref<ItemMenu> &item = lista.Menu().Item(posicao);
        const std::string letra = item->Visivel() ? livres.Acha(item->Texto()) : std::string();
        const std::string &noBotao = item->TextoBotao().empty() ? item->Texto() : item->TextoBotao();
        barra.Comandos.push_back({item->Chave(), letra, ComMarca(Apara(noBotao), letra), ComMarca(item->Texto(), letra),
                                  item->Dica(), item->IniciaGrupo(), item->Visivel(), lista.Escolhivel(*item)});
    }
    return barra;
}

OrdensDeLista OrdensDaLista(const ztList &lista)
{
    Mnemonicas livres;
    for (const ComandoDeLista &comando : BarraDaLista(lista).Comandos) {
        livres.Toma(comando.NoMenu);
    }
    OrdensDeLista ordens;
    ordens.Caption = Escolhe(livres, TextoOrdenar);
    std::int32_t numero = 0;
    for (const ztList::Coluna &coluna : lista.Colunas()) {
        ++numero;
        if (coluna.Visivel && coluna.Largura > 0) {
            ordens.Colunas.push_back({"&" + std::to_string(ordens.Colunas.size() + 1) + " " + coluna.Titulo, numero,
                                      lista.ColunaOrdem() == numero});
        }
    }
    ordens.Utilizavel = !ordens.Colunas.empty() && lista.NroItens() > 0;
    ordens.Colunas.push_back({std::string(TextoSemOrdem), 0, lista.ColunaOrdem() == 0});
    return ordens;
}

EntradasDeTabela EntradasDaTabela(const std::vector<std::string> &antes)
{
    Mnemonicas livres;
    for (const std::string &caption : antes) {
        livres.Toma(caption);
    }
    EntradasDeTabela entradas;
    entradas.Copiar = Escolhe(livres, "Copiar");
    entradas.CopiarTudo = Escolhe(livres, "Copiar tudo");
    entradas.Imprimir = Escolhe(livres, "Imprimir lista...");
    entradas.Colunas = Escolhe(livres, "Colunas");
    return entradas;
}

std::optional<std::int32_t> LinhaDaTecla(const ztList &lista, TeclaDeLista tecla)
{
    if (lista.NroVistas() == 0) {
        return std::nullopt;
    }
    return tecla == TeclaDeLista::Home ? 1 : lista.NroVistas();
}
