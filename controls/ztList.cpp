#include "controls/ztList.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Conversoes.h"
#include "host/MenuLista.h"
#include "host/Texto.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <utility>

namespace {

constexpr std::int32_t SemLinha = -1;
constexpr std::string_view MarcaData = "data";

struct ItemPadrao {
    const char *Chave;
    const char *Texto;
    std::int16_t TipoMenu; // from which it shows
};

constexpr std::array<ItemPadrao, 6> ItensPadrao = {{
    {MenuLista::Novo, "Novo", 2},
    {MenuLista::Editar, "Editar", 2},
    {MenuLista::Detalhes, "Detalhes", 2},
    {MenuLista::Excluir, "Excluir", 2},
    {MenuLista::Localizar, "Localizar", 3},
    {MenuLista::Atualizar, "Atualizar", 3},
}};

// Permutation that sorts by the keys; equal keys keep their places, in both directions.
template <class Chave> std::vector<std::size_t> Permuta(const std::vector<Chave> &chaves, bool decrescente)
{
    std::vector<std::size_t> ordem(chaves.size());
    std::iota(ordem.begin(), ordem.end(), std::size_t{0});
    std::ranges::stable_sort(ordem, [&](std::size_t a, std::size_t b) {
        return decrescente ? chaves[b] < chaves[a] : chaves[a] < chaves[b];
    });
    return ordem;
}

// Has another value in a field while it lives.
class Emprestado {
  public:
    Emprestado(std::int32_t &campo, std::int32_t valor) : m_Campo(campo), m_Antes(std::exchange(campo, valor)) {}
    Emprestado(const Emprestado &) = delete;
    Emprestado &operator=(const Emprestado &) = delete;
    ~Emprestado() { m_Campo = m_Antes; }

  private:
    std::int32_t &m_Campo;
    std::int32_t m_Antes;
};

} // namespace

ztList::ztList(const Origem &origem) : Controle(origem), m_AjustesList(origem.Ajustes<AjustesZtList>())
{
    for (const ItemPadrao &padrao : ItensPadrao) {
        IncluiItem({padrao.Chave, padrao.Texto, {}, padrao.Texto, false}, m_AjustesList.TipoMenu >= padrao.TipoMenu);
    }
}

void ztList::Limpa(std::optional<bool> limpaTitulo)
{
    Ref<IControle> vivo = Vivo();
    const bool tinha = !m_Linhas.empty();
    m_Linhas.clear();
    m_ItemAtual = SemLinha;
    m_TemMais = false;
    m_ColunaOrdem = 0;
    if (limpaTitulo.value_or(true)) {
        m_Titulo.clear();
    }
    Rearranja();
    if (tinha) {
        m_HabilitaItensMenuLista.dispara();
    }
}

void ztList::Rearranja()
{
    ++m_Arranjo;
    Mudou().dispara();
}

void ztList::AdicionaColuna(std::int16_t, std::optional<std::string> chave, const std::string &titulo,
                            std::int16_t largura, std::int16_t alinhamento, const std::string &marca, bool visivel)
{
    Ref<IControle> vivo = Vivo();
    m_Colunas.push_back({chave.value_or(titulo), titulo, largura, alinhamento, marca, visivel});
    Rearranja();
}

void ztList::AlteraPrimeiraColuna(std::int16_t, std::optional<std::string> chave, const std::string &titulo,
                                  std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                                  bool visivel)
{
    Ref<IControle> vivo = Vivo();
    m_Colunas.front() = {chave.value_or(titulo), titulo, largura, alinhamento, marca, visivel};
    Rearranja();
}

void ztList::CarregaItens(TabelaTexto &tabela)
{
    Ref<IControle> vivo = Vivo();
    m_Linhas.reserve(m_Linhas.size() + static_cast<std::size_t>(tabela.Linhas()));
    for (std::int32_t linha = 1; linha <= tabela.Linhas(); ++linha) {
        Linha &nova = m_Linhas.emplace_back();
        nova.reserve(static_cast<std::size_t>(tabela.Colunas()));
        for (std::int32_t coluna = 1; coluna <= tabela.Colunas(); ++coluna) {
            nova.push_back(tabela.Celula(coluna, linha));
        }
    }
    m_ColunaOrdem = 0;
    Rearranja();
}

void ztList::AtualizaLista()
{
    Ref<IControle> vivo = Vivo();
    Mudou().dispara();
}

void ztList::DefineItemAtual(std::int32_t linha)
{
    if (linha != 0 && linha != SemLinha) {
        ExigeLinha(linha);
    }
    TornaAtual(linha == 0 ? SemLinha : linha);
}

void ztList::TornaAtual(std::int32_t linha)
{
    if (linha == m_ItemAtual) {
        return;
    }
    Ref<IControle> vivo = Vivo();
    m_ItemAtual = linha;
    Mudou().dispara();
    if (linha != SemLinha) {
        m_ItemClick.dispara();
    }
    m_HabilitaItensMenuLista.dispara();
}

std::size_t ztList::IndiceColuna(const std::string &chave) const
{
    const auto achada =
        std::ranges::find_if(m_Colunas, [&](const Coluna &coluna) { return IgualSemCaixa(coluna.Chave, chave); });
    if (achada == m_Colunas.end()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return static_cast<std::size_t>(achada - m_Colunas.begin());
}

const ztList::Linha &ztList::ExigeLinha(std::int32_t linha) const
{
    if (linha < 1 || linha > NroItens()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return m_Linhas[static_cast<std::size_t>(linha - 1)];
}

const std::string &ztList::Texto(const Linha &linha, std::size_t coluna)
{
    static const std::string vazio;
    return coluna < linha.size() ? linha[coluna] : vazio;
}

std::string ztList::Celula(std::int32_t linha, const std::string &chaveColuna) const
{
    const Linha &celulas = ExigeLinha(linha);
    return Texto(celulas, IndiceColuna(chaveColuna));
}

std::string ztList::ValorAtual(const std::string &chaveColuna) const
{
    const std::size_t coluna = IndiceColuna(chaveColuna);
    return m_ItemAtual == SemLinha ? std::string() : Texto(ExigeLinha(m_ItemAtual), coluna);
}

std::string ztList::ColunaAtual(std::int16_t coluna) const
{
    return m_ItemAtual == SemLinha ? std::string() : TextoCelula(m_ItemAtual, coluna);
}

const std::string &ztList::TextoCelula(std::int32_t linha, std::int32_t coluna) const
{
    const Linha &celulas = ExigeLinha(linha);
    if (coluna < 1 || coluna > static_cast<std::int32_t>(m_Colunas.size())) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return Texto(celulas, static_cast<std::size_t>(coluna - 1));
}

void ztList::IncluiItem(const ItemMenuLista &item, bool visivel)
{
    Ref<::ItemMenu> novo = Novo<::ItemMenu>(item, visivel);
    m_Menu.Add(novo, item.Chave);
    m_MudouMenu.push_back(novo->Mudou().liga([this] { Mudou().dispara(); }));
}

void ztList::IncluiItensMenu(const std::vector<ItemMenuLista> &itens)
{
    Ref<IControle> vivo = Vivo();
    for (const ItemMenuLista &item : itens) {
        IncluiItem(item, true);
    }
    Mudou().dispara();
}

void ztList::MenuVisivel(const std::string &chave, bool valor)
{
    m_Menu.Item(chave)->DefineVisivel(valor);
}

void ztList::MenuBloqueado(const std::string &chave, bool valor)
{
    m_Menu.Item(chave)->DefineBloqueado(valor);
}

void ztList::MenuHabilitado(const std::string &chave, bool valor)
{
    m_Menu.Item(chave)->DefineEnabled(valor);
}

void ztList::MenuTexto(const std::string &chave, const std::string &valor)
{
    m_Menu.Item(chave)->DefineTexto(valor);
}

void ztList::AoReceberFoco(bool chegou)
{
    if (m_ItemAtual == SemLinha && !m_Linhas.empty()) {
        TornaAtual(std::min(m_LinhaAoEntrar, NroItens()));
    }
    if (chegou && TemFoco()) {
        m_GotFocus.dispara();
    }
}

bool ztList::ClicaLinha(std::int32_t linha)
{
    Ref<IControle> vivo = Vivo();
    if (linha < 1 || linha > NroItens()) {
        return false;
    }
    {
        const Emprestado aoEntrar(m_LinhaAoEntrar, linha);
        if (!Foco() || !Usavel() || linha > NroItens()) {
            return false;
        }
    }
    TornaAtual(linha);
    return true;
}

bool ztList::TeclaSetas(std::int32_t passos)
{
    Ref<IControle> vivo = Vivo();
    const bool semLinha = m_ItemAtual == SemLinha;
    if (!Foco() || !Usavel() || m_Linhas.empty()) {
        return false;
    }
    if (!semLinha) {
        const std::int64_t destino = std::int64_t{m_ItemAtual} + passos;
        TornaAtual(static_cast<std::int32_t>(std::clamp<std::int64_t>(destino, 1, NroItens())));
    }
    return true;
}

bool ztList::OfereceMenu()
{
    Ref<IControle> vivo = Vivo();
    if (!Foco() || !Usavel()) {
        return false;
    }
    m_HabilitaItensMenuLista.dispara();
    return Usavel();
}

bool ztList::EscolheMenu(const std::string &chave)
{
    Ref<IControle> vivo = Vivo();
    Ref<::ItemMenu> item;
    for (std::int32_t i = 1; i <= m_Menu.Count() && !item; ++i) {
        if (IgualSemCaixa(m_Menu.Item(i)->Chave(), chave)) {
            item = m_Menu.Item(i);
        }
    }
    if (!item || !OfereceMenu() || !item->Utilizavel()) {
        return false;
    }
    if (item->Chave() != MenuLista::Excluir) {
        m_ItemMenuClicado.dispara(item->Chave());
        if (Usavel() && TemFoco()) { // the person is still here, perhaps in rows that were loaded again
            AoReceberFoco(false);
        }
    } else if (m_ItemAtual != SemLinha) {
        Exclui();
    } else {
        return false;
    }
    return true;
}

void ztList::Exclui()
{
    std::int32_t linha = m_ItemAtual;
    const std::int64_t arranjo = m_Arranjo;
    m_AntesDeRemoverItem.dispara(linha);
    // Rows that were moved or taken away meanwhile have other numbers.
    if (linha < 1 || linha > NroItens() || arranjo != m_Arranjo) {
        return;
    }
    m_Linhas.erase(m_Linhas.begin() + (linha - 1));
    if (m_ItemAtual > linha) {
        --m_ItemAtual;
    }
    m_ItemAtual = m_Linhas.empty() ? SemLinha : std::min(m_ItemAtual, NroItens());
    Rearranja();
    m_DepoisDeRemoverItem.dispara();
    m_HabilitaItensMenuLista.dispara();
}

bool ztList::PedeMais()
{
    Ref<IControle> vivo = Vivo();
    if (!m_TemMais || !Foco() || !Usavel() || !m_TemMais) {
        return false;
    }
    m_BotaoClick.dispara();
    return true;
}

bool ztList::Localiza()
{
    Ref<IControle> vivo = Vivo();
    if (!m_AjustesList.BarraCriteriosAtiva || !Usavel()) {
        return false;
    }
    bool cancela = false;
    m_BotaoLocalizarValida.dispara(cancela);
    if (!cancela) {
        m_BotaoLocalizarEnvia.dispara();
    }
    return true;
}

bool ztList::OrdenaPor(std::int32_t coluna)
{
    Ref<IControle> vivo = Vivo();
    if (!Usavel() || coluna < 1 || coluna > static_cast<std::int32_t>(m_Colunas.size())) {
        return false;
    }
    const auto indice = static_cast<std::size_t>(coluna - 1);
    if (!m_Colunas[indice].Visivel || m_Colunas[indice].Largura == 0) {
        return false;
    }
    m_Decrescente = m_ColunaOrdem == coluna && !m_Decrescente;
    m_ColunaOrdem = coluna;
    const std::vector<std::size_t> ordem = Ordem(indice, m_Decrescente);
    std::vector<Linha> ordenadas;
    ordenadas.reserve(m_Linhas.size());
    std::int32_t atual = SemLinha;
    for (std::size_t antiga : ordem) {
        ordenadas.push_back(std::move(m_Linhas[antiga]));
        if (static_cast<std::int32_t>(antiga) + 1 == m_ItemAtual) {
            atual = static_cast<std::int32_t>(ordenadas.size());
        }
    }
    m_Linhas = std::move(ordenadas);
    m_ItemAtual = atual;
    Rearranja();
    return true;
}

std::vector<std::size_t> ztList::Ordem(std::size_t coluna, bool decrescente) const
{
    constexpr double Antes = -std::numeric_limits<double>::infinity(); // of what holds no date or number
    const bool datas = m_Colunas[coluna].Marca == MarcaData;
    auto emBranco = [&](const Linha &linha) { return Trim(Texto(linha, coluna)).empty(); };
    auto numero = [&](const Linha &linha) { return emBranco(linha) || IsNumeric(Texto(linha, coluna)); };
    if (datas || (!std::ranges::all_of(m_Linhas, emBranco) && std::ranges::all_of(m_Linhas, numero))) {
        std::vector<double> chaves;
        chaves.reserve(m_Linhas.size());
        for (const Linha &linha : m_Linhas) {
            const std::string &texto = Texto(linha, coluna);
            if (datas) {
                chaves.push_back(IsDate(texto) ? CDate(texto).Valor : Antes);
            } else {
                chaves.push_back(emBranco(linha) ? Antes : CDbl(texto));
            }
        }
        return Permuta(chaves, decrescente);
    }
    std::vector<std::string> chaves;
    chaves.reserve(m_Linhas.size());
    for (const Linha &linha : m_Linhas) {
        chaves.push_back(ChaveOrdem(Texto(linha, coluna)));
    }
    return Permuta(chaves, decrescente);
}
