#include "tela/LinhasDeLista.h"

#include "host/Texto.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view EntreDados = "\t";
constexpr std::string_view Decrescente = "-";

// What the rows of a list are called.
struct Nome {
    std::string_view Lista;
    std::string_view Um;
    std::string_view Muitos;
    bool Feminino = false;
};

constexpr std::array<Nome, 3> Nomes = {{
    {"ztlLista", "equipamento", "equipamentos"},
    {"ztListaSensor", "sensor", "sensores"},
    {"ztListaAfericao", "aferição", "aferições", true},
}};
constexpr Nome Outro = {"", "registro", "registros"};

const Nome &NomeDe(const ztList &lista)
{
    const auto achado = std::ranges::find(Nomes, std::string_view(lista.Nome()), &Nome::Lista);
    return achado == Nomes.end() ? Outro : *achado;
}

std::string Numero(std::int32_t valor)
{
    std::string texto = std::to_string(valor);
    for (auto lugar = static_cast<std::ptrdiff_t>(texto.size()) - 3; lugar > 0; lugar -= 3) {
        texto.insert(static_cast<std::size_t>(lugar), ".");
    }
    return texto;
}

std::string Quantos(const ztList &lista)
{
    const Nome &nome = NomeDe(lista);
    return Numero(lista.NroItens()) + " " + std::string(lista.NroItens() == 1 ? nome.Um : nome.Muitos);
}

std::string Pergunta(const ztList &lista)
{
    const bool feminino = NomeDe(lista).Feminino;
    const bool uma = lista.NroItens() == 1;
    const std::string foram = uma        ? feminino ? " foi carregada" : " foi carregado"
                              : feminino ? " foram carregadas"
                                         : " foram carregados";
    return "Só " + Quantos(lista) + foram + ", e há mais. Carregar " + (feminino ? "as" : "os") +
           " demais antes de ordenar?";
}

// Until there are no more, the person has had enough, or none come.
void CarregaOsDemais(ztList &lista, const TelaDaCarga &tela)
{
    while (lista.TemMais() && tela.Segue(Quantos(lista)) && lista.TrazMais()) {
    }
}

} // namespace

std::string RodapeDaLista(const ztList &lista)
{
    if (lista.NroItens() == 0) {
        return "";
    }
    std::string rodape = lista.Filtrada() ? Numero(lista.NroVistas()) + " de " + Quantos(lista) : Quantos(lista);
    if (lista.TemMais()) {
        rodape += "; há mais";
        if (lista.ColunaOrdem() != 0) {
            rodape += NomeDe(lista).Feminino ? "; ordenadas só as carregadas" : "; ordenados só os carregados";
        }
    }
    return rodape;
}

void OrdenaLista(const Ref<ztList> &lista, std::int32_t coluna, const TelaDaCarga &tela)
{
    if (!lista->PodeOrdenarPor(coluna)) {
        return;
    }
    if (coluna != 0 && lista->TemMais() && !lista->BastamEstas()) {
        if (tela.Pergunta(Pergunta(*lista))) {
            CarregaOsDemais(*lista, tela);
        }
        lista->DefineBastamEstas();
    }
    lista->OrdenaPor(coluna);
}

std::string OrdemLembrada(const ztList &lista)
{
    const std::int32_t coluna = lista.ColunaOrdem();
    if (coluna == 0) {
        return "";
    }
    std::string texto = lista.Colunas()[static_cast<std::size_t>(coluna - 1)].Chave;
    if (lista.OrdemDecrescente()) {
        texto.append(EntreDados).append(Decrescente);
    }
    return texto;
}

void LembraOrdem(ztList &lista, const std::string &texto)
{
    const std::vector<std::string> dados = Divide(texto, EntreDados);
    std::int32_t numero = 0;
    for (const ztList::Coluna &coluna : lista.Colunas()) {
        ++numero;
        if (coluna.Visivel && coluna.Largura > 0 && !dados.empty() && coluna.Chave == dados.front()) {
            lista.DefineOrdem(numero, dados.size() > 1 && dados[1] == Decrescente);
            return;
        }
    }
}
