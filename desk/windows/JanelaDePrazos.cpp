#include "desk/windows/JanelaDePrazos.h"

#include "controls/FiltroDeLinhas.h"
#include "desk/windows/CampoDeFiltro.h"
#include "desk/windows/ComandosDeTabela.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "desk/windows/TelaDeAndamento.h"
#include "services/TextoQt.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSaveFile>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int MargemDaCelula = 12; // of a cell's text, both sides
constexpr int MenorColuna = 60;
constexpr int LarguraEmLetras = 115;
constexpr int AlturaEmLinhas = 24;

} // namespace

bool SalvaCalendario(const std::string &texto, QWidget *dono)
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = "Salvar calendário de prazos";
    escolha.Filtros = "Calendários (*.ics);;Todos os arquivos (*)";
    escolha.Uso = "calendarios";
    escolha.Nome = "prazos.ics";
    escolha.Extensao = "ics";
    const QString onde = EscolheParaSalvar(escolha, dono);
    if (onde.isEmpty()) {
        return true;
    }
    QSaveFile arquivo(onde);
    const QByteArray octetos = QByteArray::fromStdString(texto);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(octetos) != octetos.size() || !arquivo.commit()) {
        AvisaEmCaixa("O calendário não pôde ser gravado em " + onde + ": " + arquivo.errorString() + ".", dono);
        return false;
    }
    return true;
}

JanelaDePrazos::JanelaDePrazos(ListaDePrazos lista, std::function<void(const EquipamentoRecente &)> abre,
                               BordaDaJanela borda, const QuemUsa &quem, QWidget *dono)
    : QWidget(dono),
      m_Lista(std::make_shared<ListaDePrazos>(std::move(lista))),
      m_Abre(std::move(abre)),
      m_Borda(std::move(borda)),
      m_Linhas(new QTableWidget(this)),
      m_Nota(FazTexto("nota", "", this))
{
    setObjectName("JanelaDePrazos");
    setWindowTitle(Q(m_Lista->Titulo()));
    setWindowIcon(Icone("consulta"));
    QStringList colunas;
    for (const std::string &coluna : ListaDePrazos::Colunas()) {
        colunas << Q(coluna);
    }
    m_Linhas->setObjectName("linhas");
    m_Linhas->setAccessibleName(Q(m_Lista->Titulo()));
    m_Linhas->setColumnCount(static_cast<int>(colunas.size()));
    m_Linhas->setHorizontalHeaderLabels(colunas);
    m_Linhas->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_Linhas->horizontalHeader()->setHighlightSections(false);
    m_Linhas->verticalHeader()->hide();
    m_Linhas->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Linhas->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Linhas->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Linhas->setTabKeyNavigation(false);
    m_Linhas->setShowGrid(false);
    m_Linhas->setAlternatingRowColors(true);
    m_Linhas->setWordWrap(false);
    m_Linhas->setContextMenuPolicy(Qt::CustomContextMenu);
    m_ComandosDeTabela = new ComandosDeTabela(m_Linhas, quem, "Prazos/colunas", [this] {
        return ComandosDeTabela::Cabeca{Q(m_Lista->Titulo()), Q(m_Lista->Nota())};
    });
    m_ComandosDeTabela->MudouVistas = [this] { Filtra(); };
    m_ComandosDeTabela->Completa = [this] { return Completa(); };
    m_Filtro = new CampoDeFiltro("prazos_filtro", m_Linhas, this);
    m_Abrir = FazBotao("abrir", "Ab&rir equipamento", this);
    m_Mais = FazBotao("mais", "Mostrar mai&s", this);
    QPushButton *atualizar = FazBotao("atualizar", "A&tualizar", this);
    m_Calendario = FazBotao("calendario", "Salvar ca&lendário...", this);

    auto *pe = new QHBoxLayout;
    pe->addWidget(m_Nota, 1);
    pe->addWidget(m_Filtro);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(m_Linhas, 1);
    tudo->addLayout(pe);
    tudo->addLayout(EmLinha({m_Abrir, m_Mais, atualizar, m_Calendario}));
    setFocusProxy(m_Linhas);

    connect(m_Filtro, &QLineEdit::textChanged, this, [this] { Filtra(); });
    connect(m_Linhas, &QTableWidget::itemSelectionChanged, this, [this] { Habilita(); });
    connect(m_Linhas, &QTableWidget::activated, this, [this] { AbreEscolhido(); });
    connect(m_Linhas, &QTableWidget::customContextMenuRequested, this, [this](const QPoint &onde) { AbreMenu(onde); });
    connect(m_Abrir, &QPushButton::clicked, this, [this] { AbreEscolhido(); });
    connect(m_Mais, &QPushButton::clicked, this, [this] { Le(&ListaDePrazos::CarregaMais, false); });
    connect(atualizar, &QPushButton::clicked, this, [this] { Le(&ListaDePrazos::Atualiza, true); });
    m_Linhas->horizontalHeader()->setSectionsClickable(true);
    connect(m_Linhas->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int coluna) { Ordena(coluna); });
    connect(m_Calendario, &QPushButton::clicked, this, [this] {
        m_Borda([this] {
            if (Completa()) {
                SalvaCalendario(m_Lista->Calendario(), this);
            }
        });
    });
}

QSize JanelaDePrazos::sizeHint() const
{
    return {fontMetrics().horizontalAdvance('0') * LarguraEmLetras, fontMetrics().height() * AlturaEmLinhas};
}

void JanelaDePrazos::Carrega()
{
    Le(&ListaDePrazos::Carrega, true);
}

bool JanelaDePrazos::Completa()
{
    return !m_Lista->HaMais() || Le(&ListaDePrazos::CarregaResto, false);
}

bool JanelaDePrazos::Le(bool (ListaDePrazos::*le)(std::string &, const Segue &), bool doComeco)
{
    bool lida = false;
    const QPointer<JanelaDePrazos> viva(this);
    const std::shared_ptr<ListaDePrazos> lista = m_Lista;
    const std::size_t antes = lista->Quantas();
    m_Borda([&] {
        std::string recusa;
        FazNaFrente("Os prazos estão sendo lidos.", true, this,
                    [&](const Segue &segue) { lida = (lista.get()->*le)(recusa, segue); });
        if (!lida && viva) {
            AvisaEmCaixa(Q(recusa), this);
        }
    });
    if (viva) {
        Mostra(doComeco ? 0 : antes);
    }
    return lida && viva;
}

void JanelaDePrazos::Mostra(std::size_t desde)
{
    const int antes = std::max(m_Linhas->currentRow(), 0);
    const auto quantas = static_cast<int>(m_Lista->Quantas());
    if (desde == 0) {
        m_Linhas->setRowCount(0);
        m_Ordenada = -1;
        m_Linhas->horizontalHeader()->setSortIndicatorShown(false);
        m_Larguras.assign(ListaDePrazos::Colunas().size(), MenorColuna);
    }
    m_Linhas->setRowCount(quantas);
    for (auto linha = static_cast<int>(desde); linha < quantas; ++linha) {
        const std::vector<std::string> textos = m_Lista->Linha(static_cast<std::size_t>(linha));
        for (std::size_t coluna = 0; coluna < textos.size(); ++coluna) {
            const QString texto = Q(textos[coluna]);
            auto *celula = new QTableWidgetItem(texto);
            int icone = 0;
            if (coluna + 1 == textos.size()) {
                celula->setIcon(Icone(Q(m_Lista->Icone(static_cast<std::size_t>(linha)))));
                icone = m_Linhas->style()->pixelMetric(QStyle::PM_SmallIconSize);
            }
            m_Linhas->setItem(linha, static_cast<int>(coluna), celula);
            m_Larguras[coluna] =
                std::max(m_Larguras[coluna], m_Linhas->fontMetrics().horizontalAdvance(texto) + icone + MargemDaCelula);
        }
    }
    std::vector<ComandosDeTabela::Coluna> colunas;
    for (std::size_t coluna = 0; coluna < m_Larguras.size(); ++coluna) {
        const std::string &titulo = ListaDePrazos::Colunas()[coluna];
        const int doTitulo = m_Linhas->horizontalHeader()->sectionSizeHint(static_cast<int>(coluna));
        colunas.push_back({titulo, titulo, std::max(m_Larguras[coluna], doTitulo)});
    }
    m_ComandosDeTabela->DefineColunas(colunas);
    Filtra();
    if (quantas > 0) {
        const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
        m_Linhas->setCurrentCell(std::min(antes, quantas - 1), vistas.empty() ? 0 : vistas.front() - 1);
    }
    m_Nota->setText(Q(m_Lista->Nota()));
    Habilita();
}

// Of all rows: those that are not there yet are brought before. The column that they are in the order of, the other way
// round.
void JanelaDePrazos::Ordena(int coluna)
{
    if (!Completa()) {
        return;
    }
    QHeaderView *titulos = m_Linhas->horizontalHeader();
    const bool crescente = m_Ordenada != coluna || !m_Crescente;
    m_Lista->Ordena(static_cast<std::size_t>(coluna), crescente);
    Mostra(0);
    m_Ordenada = coluna;
    m_Crescente = crescente;
    titulos->setSortIndicatorShown(true);
    titulos->setSortIndicator(coluna, crescente ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void JanelaDePrazos::Filtra()
{
    const FiltroDeLinhas filtro(S(m_Filtro->text()));
    const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
    for (int linha = 0; linha < m_Linhas->rowCount(); ++linha) {
        std::string chave;
        for (const std::int32_t coluna : vistas) {
            FiltroDeLinhas::Acrescenta(chave, S(m_Linhas->model()->index(linha, coluna - 1).data().toString()));
        }
        m_Linhas->setRowHidden(linha, !filtro.Aceita(chave));
    }
    Habilita();
}

void JanelaDePrazos::Habilita()
{
    m_Abrir->setEnabled(Escolhida().has_value());
    m_Mais->setEnabled(m_Lista->HaMais());
    m_Calendario->setEnabled(m_Lista->TemCalendario());
}

void JanelaDePrazos::AbreMenu(const QPoint &onde)
{
    QMenu menu(m_Linhas);
    menu.setObjectName("menuDaTabela");
    QMenu *ordenar = menu.addMenu("&Ordenar por");
    for (const std::int32_t coluna : m_ComandosDeTabela->Vistas()) {
        ordenar->addAction(
            Q(ListaDePrazos::Colunas()[static_cast<std::size_t>(coluna - 1)]), this,
            [this, coluna] { Ordena(coluna - 1); }, Qt::QueuedConnection); // once the menu has gone
    }
    m_ComandosDeTabela->AdicionaAoMenu(menu, {"&Ordenar por"});
    menu.exec(m_Linhas->viewport()->mapToGlobal(onde));
}

void JanelaDePrazos::AbreEscolhido()
{
    if (const auto linha = Escolhida()) {
        m_Abre(m_Lista->Equipamento(*linha));
    }
}

std::optional<std::size_t> JanelaDePrazos::Escolhida() const
{
    const int linha = m_Linhas->currentRow();
    return linha < 0 || m_Linhas->isRowHidden(linha) ? std::nullopt
                                                     : std::optional<std::size_t>(static_cast<std::size_t>(linha));
}

} // namespace mesa
