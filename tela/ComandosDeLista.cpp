#include "tela/ComandosDeLista.h"

#include "controls/Acionavel.h"
#include "host/MenuLista.h"
#include "host/Texto.h"
#include "tela/Mnemonicas.h"
#include "tela/Partes.h"

namespace {

constexpr std::string_view TextoFechar = "Fechar";
constexpr std::string_view TextoAjuda = "Ajuda";
constexpr std::string_view TextoOrdenar = "Ordenar por";
constexpr std::string_view TextoSemOrdem = "&0 Como vieram";
constexpr std::string_view TextoOK = "OK";
// What takes a row away where nothing is ever excluded. The same command says otherwise over rows that are away.
constexpr std::string_view TextoDesativar = "Desativar";

// Lines of a caption without the blanks around each.
std::string Apara(const std::string &texto)
{
    std::string aparado;
    for (const std::string &linha : Divide(texto, QuebraDeLinha)) {
        aparado += (aparado.empty() ? "" : "\n") + Trim(linha);
    }
    return aparado;
}

// The caption with the letter marked, behind it when it is not one of its own.
std::string Marca(std::string_view texto, const std::string &letra)
{
    std::string marcado = ComMarca(texto, letra);
    return letra.empty() || marcado != texto ? marcado : marcado + " (&" + UCase(letra) + ")";
}

// The search of the menu is that of the criteria bar, whose button has the letter while it is there.
std::string LetraDe(Mnemonicas &livres, const ItemMenu &item, const ztList &lista)
{
    if (item.Chave() != MenuLista::Localizar) {
        return livres.Acha(item.PrimeiroTexto());
    }
    return lista.Ajustes().BarraCriteriosAtiva ? std::string() : Mnemonica(Partes::Localizar);
}

// The item, as long as it can be chosen.
bool EscolheItem(ztList &lista, const ItemMenu &item)
{
    return lista.Escolhivel(item) && lista.EscolheMenu(item.Chave());
}

bool EscolheChave(ztList &lista, std::string_view chave)
{
    for (std::int32_t posicao = 1; posicao <= lista.Menu().Count(); ++posicao) {
        if (const Ref<ItemMenu> item = lista.Menu().Item(posicao); item->Chave() == chave) {
            return EscolheItem(lista, *item);
        }
    }
    return false;
}

bool Remove(ztList &lista)
{
    for (std::int32_t posicao = 1; posicao <= lista.Menu().Count(); ++posicao) {
        const Ref<ItemMenu> item = lista.Menu().Item(posicao);
        if ((item->Chave() == MenuLista::Excluir || item->Texto() == TextoDesativar) && item->Visivel()) {
            return EscolheItem(lista, *item);
        }
    }
    return false;
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
        const std::string letra = LetraDe(livres, *item, lista);
        const std::string &noBotao = item->TextoBotao().empty() ? item->Texto() : item->TextoBotao();
        barra.Comandos.push_back({item->Chave(), letra, Marca(Apara(noBotao), letra), Marca(item->Texto(), letra),
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
    entradas.Exportar = Escolhe(livres, "Exportar lista...");
    return entradas;
}

ztList *ListaDosCriterios(const Ref<IControle> &controle)
{
    for (Ref<IControle> dono = controle ? controle->Container() : nullptr; dono; dono = dono->Container()) {
        if (auto *lista = dynamic_cast<ztList *>(dono.Ponteiro())) {
            return lista;
        }
    }
    return nullptr;
}

Ref<IControle> BotaoDeEscolha(const ztList &lista)
{
    const Ref<IForm> form = lista.Form();
    if (!form || lista.Container()) {
        return {};
    }
    for (const Ref<IControle> &controle : form->Controles()) {
        if (dynamic_cast<const Acionavel *>(controle.Ponteiro()) != nullptr &&
            SemMarca(controle->Caption()) == TextoOK && ComoBase(controle)->VisivelDeFato()) {
            return controle;
        }
    }
    return {};
}

bool AbreLinha(ztList &lista)
{
    const Ref<IControle> viva = Eu(static_cast<IControle &>(lista));
    if (lista.AtualVista() < 1) {
        return false;
    }
    if (const Ref<IControle> botao = BotaoDeEscolha(lista)) {
        return dynamic_cast<Acionavel &>(*botao).Aciona();
    }
    if (!lista.OfereceMenu()) {
        return false;
    }
    const bool pesquisa = lista.Ajustes().BarraCriteriosAtiva;
    return (!pesquisa && EscolheChave(lista, MenuLista::Editar)) || EscolheChave(lista, MenuLista::Detalhes);
}

bool FazAtalho(ztList &lista, AtalhoDeLista atalho)
{
    const Ref<IControle> viva = Eu(static_cast<IControle &>(lista));
    if (atalho == AtalhoDeLista::Atualiza) {
        // The search by what the criteria say repeats the one before, since any change of them empties the list.
        return lista.Localiza() || (lista.OfereceMenu() && EscolheChave(lista, MenuLista::Atualizar));
    }
    if (!lista.OfereceMenu()) {
        return false;
    }
    return atalho == AtalhoDeLista::Inclui ? EscolheChave(lista, MenuLista::Novo)
                                           : lista.AtualVista() >= 1 && Remove(lista);
}

std::optional<std::int32_t> LinhaDaTecla(const ztList &lista, TeclaDeLista tecla)
{
    if (lista.NroVistas() == 0) {
        return std::nullopt;
    }
    return tecla == TeclaDeLista::Home ? 1 : lista.NroVistas();
}
