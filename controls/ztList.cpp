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

// Sorts the rows by the keys; equal keys keep their places, in both directions.
template <class Chave> void Ordena(std::vector<std::size_t> &ordem, const std::vector<Chave> &chaves, bool decrescente)
{
    std::ranges::stable_sort(ordem, [&](std::size_t a, std::size_t b) {
        return decrescente ? chaves[b] < chaves[a] : chaves[a] < chaves[b];
    });
}

// Has another value in a field while it lives.
template <class T> class Emprestado {
  public:
    Emprestado(T &campo, T valor) : m_Campo(campo), m_Antes(std::exchange(campo, valor)) {}
    Emprestado(const Emprestado &) = delete;
    Emprestado &operator=(const Emprestado &) = delete;
    ~Emprestado() { m_Campo = m_Antes; }

  private:
    T &m_Campo;
    T m_Antes;
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
    m_NadaVeio = false;
    m_BastamEstas = false;
    ++m_Retiradas;
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
    m_EmOrdem.reset();
    m_Chaves.reset();
    MudaAVista();
}

void ztList::MudaAVista()
{
    m_Vista.reset();
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
    m_NadaVeio = false;
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
    if (ItemAtual() != SemLinha) {
        m_ItemClick.dispara();
    }
    m_HabilitaItensMenuLista.dispara();
}

std::int32_t ztList::ItemAtual() const
{
    return Filtrada() && AtualVista() == 0 ? SemLinha : m_ItemAtual;
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
    const std::int32_t atual = ItemAtual();
    return atual == SemLinha ? std::string() : Texto(ExigeLinha(atual), coluna);
}

std::string ztList::ColunaAtual(std::int16_t coluna) const
{
    const std::int32_t atual = AtualVista();
    return atual == 0 ? std::string() : TextoCelula(atual, coluna);
}

const std::string &ztList::TextoCelula(std::int32_t linha, std::int32_t coluna) const
{
    if (linha < 1 || linha > NroVistas()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    const Linha &celulas = ExigeLinha(Vistas().Linhas[static_cast<std::size_t>(linha - 1)]);
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
    if (AtualVista() == 0 && NroVistas() > 0) {
        TornaAtual(Vistas().Linhas[static_cast<std::size_t>(std::min(m_LinhaAoEntrar, NroVistas()) - 1)]);
    }
    if (chegou && TemFoco()) {
        m_GotFocus.dispara();
    }
}

bool ztList::ClicaLinha(std::int32_t linha)
{
    Ref<IControle> vivo = Vivo();
    if (linha < 1 || linha > NroVistas()) {
        return false;
    }
    {
        const Emprestado aoEntrar(m_LinhaAoEntrar, linha);
        if (!Foco() || !Usavel() || linha > NroVistas()) {
            return false;
        }
    }
    TornaAtual(Vistas().Linhas[static_cast<std::size_t>(linha - 1)]);
    return true;
}

bool ztList::TeclaSetas(std::int32_t passos)
{
    Ref<IControle> vivo = Vivo();
    const bool semLinha = AtualVista() == 0;
    if (!Foco() || !Usavel() || NroVistas() == 0) {
        return false;
    }
    if (!semLinha) {
        const std::int64_t destino = std::clamp<std::int64_t>(std::int64_t{AtualVista()} + passos, 1, NroVistas());
        TornaAtual(Vistas().Linhas[static_cast<std::size_t>(destino - 1)]);
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

// A command that stands in every list and needs no row, or of which there is something to do it to.
bool ztList::Escolhivel(const ::ItemMenu &item) const
{
    constexpr std::array<std::string_view, 3> SemLinhas = {MenuLista::Novo, MenuLista::Localizar, MenuLista::Atualizar};
    return item.Utilizavel() && (!Filtrada() || NroVistas() > 0 || m_Linhas.empty() ||
                                 std::ranges::find(SemLinhas, item.Chave()) != SemLinhas.end());
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
    if (!item || !OfereceMenu() || !Escolhivel(*item)) {
        return false;
    }
    if (item->Chave() != MenuLista::Excluir) {
        m_ItemMenuClicado.dispara(item->Chave());
        if (Usavel() && TemFoco()) { // the person is still here, perhaps in rows that were loaded again
            AoReceberFoco(false);
        }
    } else if (ItemAtual() != SemLinha) {
        Exclui();
    } else {
        return false;
    }
    return true;
}

void ztList::Exclui()
{
    std::int32_t linha = m_ItemAtual;
    const std::int64_t retiradas = m_Retiradas;
    m_AntesDeRemoverItem.dispara(linha);
    // Where rows were taken away meanwhile, others have their numbers.
    if (linha < 1 || linha > NroItens() || retiradas != m_Retiradas) {
        return;
    }
    const bool aAtual = m_ItemAtual == linha;
    const std::int32_t lugar = AtualVista();
    m_Linhas.erase(m_Linhas.begin() + (linha - 1));
    ++m_Retiradas;
    m_EmOrdem.reset();
    m_Chaves.reset();
    m_Vista.reset();
    if (aAtual) { // the row that comes into its place, or the last one
        m_ItemAtual = NroVistas() == 0
                          ? SemLinha
                          : Vistas().Linhas[static_cast<std::size_t>(std::clamp(lugar, 1, NroVistas()) - 1)];
    } else if (m_ItemAtual > linha) {
        --m_ItemAtual;
    }
    Rearranja();
    m_DepoisDeRemoverItem.dispara();
    m_HabilitaItensMenuLista.dispara();
}

bool ztList::PedeMais()
{
    Ref<IControle> vivo = Vivo();
    if (!m_TemMais || m_Trazendo || !Foco() || !Usavel() || !m_TemMais) {
        return false;
    }
    m_NadaVeio = false;
    m_BotaoClick.dispara();
    return true;
}

bool ztList::TrazMais()
{
    Ref<IControle> vivo = Vivo();
    if (!m_TemMais || m_Trazendo || !Usavel()) {
        return false;
    }
    const std::int32_t antes = NroItens();
    const std::int32_t atual = m_ItemAtual;
    const std::int64_t retiradas = m_Retiradas;
    {
        const Emprestado trazendo(m_Trazendo, true);
        m_NadaVeio = true; // unless some come, also when the module faults
        m_BotaoClick.dispara();
        if (retiradas != m_Retiradas || NroItens() <= antes) {
            return false;
        }
        m_NadaVeio = false;
        TornaAtual(atual);
    }
    Mudou().dispara();
    return true;
}

bool ztList::RolaAteOFim()
{
    return !m_NadaVeio && TrazMais();
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

bool ztList::LimpaCriterios()
{
    Ref<IControle> vivo = Vivo();
    if (!PodeLimparCriterios() || !Usavel()) {
        return false;
    }
    const std::function<void()> limpa = m_LimpaCriterios; // which may be offered no more behind it
    limpa();
    return true;
}

bool ztList::PodeOrdenarPor(std::int32_t coluna) const
{
    if (!Usavel() || coluna < 0 || coluna > static_cast<std::int32_t>(m_Colunas.size())) {
        return false;
    }
    if (coluna == 0) {
        return true;
    }
    const Coluna &qual = m_Colunas[static_cast<std::size_t>(coluna - 1)];
    return qual.Visivel && qual.Largura != 0;
}

bool ztList::OrdenaPor(std::int32_t coluna)
{
    if (!PodeOrdenarPor(coluna)) {
        return false;
    }
    DefineOrdem(coluna, coluna != 0 && ColunaOrdem() == coluna && !OrdemDecrescente());
    return true;
}

// Rows that are equal in the column keep the order that they had.
void ztList::DefineOrdem(std::int32_t coluna, bool decrescente)
{
    Ref<IControle> vivo = Vivo();
    if (coluna == 0) {
        m_Ordens.clear();
    } else {
        std::erase_if(m_Ordens, [&](const UmaOrdem &antes) { return antes.Coluna == coluna; });
        m_Ordens.push_back({coluna, decrescente});
    }
    m_EmOrdem.reset();
    MudaAVista();
}

void ztList::Filtra(const std::string &texto, const std::vector<std::int32_t> &colunas)
{
    Ref<IControle> vivo = Vivo();
    const std::int32_t antes = ItemAtual();
    if (m_ColunasDoFiltro != colunas) {
        m_ColunasDoFiltro = colunas;
        m_Chaves.reset();
    }
    m_Filtro = FiltroDeLinhas(texto);
    MudaAVista();
    if (ItemAtual() != antes) {
        m_HabilitaItensMenuLista.dispara();
    }
}

std::int32_t ztList::NroVistas() const
{
    return static_cast<std::int32_t>(Vistas().Linhas.size());
}

std::int32_t ztList::AtualVista() const
{
    return m_ItemAtual == SemLinha ? 0 : Vistas().Lugares[static_cast<std::size_t>(m_ItemAtual - 1)];
}

const ztList::Vista &ztList::Vistas() const
{
    if (!m_Vista) {
        Vista vista;
        vista.Linhas.reserve(m_Linhas.size());
        vista.Lugares.resize(m_Linhas.size());
        for (const std::size_t linha : EmOrdem()) {
            if (!Filtrada() || m_Filtro.Aceita(Chaves()[linha])) {
                vista.Linhas.push_back(static_cast<std::int32_t>(linha) + 1);
                vista.Lugares[linha] = static_cast<std::int32_t>(vista.Linhas.size());
            }
        }
        m_Vista = std::move(vista);
    }
    return *m_Vista;
}

const std::vector<std::size_t> &ztList::EmOrdem() const
{
    if (!m_EmOrdem) {
        m_EmOrdem.emplace(m_Linhas.size());
        std::iota(m_EmOrdem->begin(), m_EmOrdem->end(), std::size_t{0});
        for (const UmaOrdem &ordem : m_Ordens) {
            OrdenaPela(*m_EmOrdem, static_cast<std::size_t>(ordem.Coluna - 1), ordem.Decrescente);
        }
    }
    return *m_EmOrdem;
}

const std::vector<std::string> &ztList::Chaves() const
{
    if (!m_Chaves) {
        m_Chaves.emplace();
        m_Chaves->reserve(m_Linhas.size());
        for (const Linha &linha : m_Linhas) {
            std::string &chave = m_Chaves->emplace_back();
            for (const std::int32_t coluna : m_ColunasDoFiltro) {
                FiltroDeLinhas::Acrescenta(chave, Texto(linha, static_cast<std::size_t>(coluna - 1)));
            }
        }
    }
    return *m_Chaves;
}

void ztList::OrdenaPela(std::vector<std::size_t> &ordem, std::size_t coluna, bool decrescente) const
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
        Ordena(ordem, chaves, decrescente);
        return;
    }
    std::vector<std::string> chaves;
    chaves.reserve(m_Linhas.size());
    for (const Linha &linha : m_Linhas) {
        chaves.push_back(ChaveOrdem(Texto(linha, coluna)));
    }
    Ordena(ordem, chaves, decrescente);
}
