#include "desk/windows/RenderLista.h"

#include "controls/ItemMenu.h"
#include "controls/ztList.h"
#include "desk/windows/ModeloLista.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int TwipsPorPixel = 15;

// Menu keys that have a picture of their own; a key without one shows the general one.
QIcon Icone(const std::string &chave)
{
    static constexpr const char *Prefixo = "mnuZTLObj";
    const QString nome = Q(chave).mid(static_cast<int>(std::string_view(Prefixo).size())).toLower();
    const QString arquivo = ":/icones/" + nome + ".svg";
    return QIcon(QFile::exists(arquivo) ? arquivo : ":/icones/comando.svg");
}

QToolButton *FazBotao(QWidget *dono)
{
    auto *botao = new QToolButton(dono);
    botao->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    botao->setIconSize({20, 20});
    botao->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    botao->setFocusPolicy(Qt::NoFocus); // the list keeps the keyboard; its menu is reached by the menu key
    return botao;
}

} // namespace

RenderLista::RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                         std::function<void()> ajuda)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Titulo(new QLabel(widget)),
      m_Tabela(new QTableView(widget)),
      m_Modelo(new ModeloLista(Como<ztList>(*this), this)),
      m_Barra(new QWidget(widget)),
      m_Comandos(new QVBoxLayout),
      m_Mais(new QPushButton("&Mais registros", widget)),
      m_Fechar(FazBotao(m_Barra)),
      m_Ajuda(FazBotao(m_Barra))
{
    m_Titulo->setObjectName("titulo");
    m_Titulo->setWordWrap(true);
    m_Titulo->setTextFormat(Qt::PlainText);
    m_Tabela->setObjectName("linhas");
    m_Tabela->setModel(m_Modelo);
    m_Tabela->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Tabela->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Tabela->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Tabela->setAlternatingRowColors(true);
    m_Tabela->setTabKeyNavigation(false);
    m_Tabela->setContextMenuPolicy(Qt::CustomContextMenu);
    m_Tabela->setWordWrap(false);
    m_Tabela->verticalHeader()->hide();
    m_Tabela->verticalHeader()->setDefaultSectionSize(m_Tabela->fontMetrics().height() + 8);
    m_Tabela->horizontalHeader()->setSectionsClickable(true);
    m_Tabela->horizontalHeader()->setSortIndicatorShown(true);
    m_Tabela->horizontalHeader()->setHighlightSections(false);
    m_Tabela->setAccessibleName("Lista");

    auto *centro = new QVBoxLayout;
    centro->addWidget(m_Titulo);
    centro->addWidget(m_Tabela, 1);
    centro->addWidget(m_Mais, 0, Qt::AlignLeft);
    auto *lado = new QVBoxLayout(m_Barra);
    lado->setContentsMargins(0, 0, 0, 0);
    lado->addLayout(m_Comandos);
    lado->addStretch(1);
    lado->addWidget(m_Ajuda);
    lado->addWidget(m_Fechar);
    auto *tudo = new QHBoxLayout(widget);
    tudo->setContentsMargins(0, 0, 0, 0);
    tudo->addLayout(centro, 1);
    tudo->addWidget(m_Barra);

    m_Fechar->setText("Fechar");
    m_Fechar->setIcon(QIcon(":/icones/fechar.svg"));
    m_Ajuda->setText("Ajuda");
    m_Ajuda->setIcon(QIcon(":/icones/ajuda.svg"));
    connect(m_Fechar, &QToolButton::clicked, this, [this, fecha] { Age(fecha); });
    connect(m_Ajuda, &QToolButton::clicked, this, [this, ajuda] { Age(ajuda); });
    connect(m_Mais, &QPushButton::clicked, this, [this] { Age([this] { Como<ztList>(*this).PedeMais(); }); });
    connect(m_Tabela->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int coluna) { Age([this, coluna] { Como<ztList>(*this).OrdenaPor(coluna + 1); }); });
    connect(m_Tabela, &QTableView::customContextMenuRequested, this, [this](const QPoint &onde) { AbreMenu(onde); });
    connect(m_Tabela->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &linha) {
                if (linha.isValid() && linha.row() + 1 != Como<ztList>(*this).ItemAtual()) {
                    Age([this, &linha] { Como<ztList>(*this).ClicaLinha(linha.row() + 1); });
                }
            });
    if (auto *localizar = widget->window()->findChild<QPushButton *>(widget->objectName() + "_localizar")) {
        localizar->setIcon(QIcon(":/icones/localizar.svg"));
        connect(localizar, &QPushButton::clicked, this, [this] { Age([this] { Como<ztList>(*this).Localiza(); }); });
    }
    SegueFoco(m_Tabela);
    widget->setFocusProxy(m_Tabela);
}

QWidget *RenderLista::AlvoDoFoco()
{
    return m_Tabela;
}

void RenderLista::Mostra()
{
    const auto &lista = Como<ztList>(*this);
    m_Titulo->setText(Q(lista.Titulo()));
    m_Titulo->setVisible(!lista.Titulo().empty());
    if (m_Arranjo != lista.Arranjo()) {
        m_Arranjo = lista.Arranjo();
        m_Modelo->Rearranja();
        MostraColunas();
    }
    if (lista.ItemAtual() >= 1) {
        const QModelIndex atual = m_Modelo->index(lista.ItemAtual() - 1, m_PrimeiraVisivel);
        m_Tabela->selectionModel()->setCurrentIndex(atual,
                                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_Tabela->scrollTo(atual);
    } else {
        m_Tabela->clearSelection();
        m_Tabela->setCurrentIndex({});
    }
    m_Tabela->horizontalHeader()->setSortIndicator(lista.ColunaOrdem() - 1,
                                                   lista.OrdemDecrescente() ? Qt::DescendingOrder : Qt::AscendingOrder);
    m_Mais->setVisible(lista.TemMais());
    m_Fechar->setVisible(lista.Ajustes().BotoesFecharAjuda);
    m_Ajuda->setVisible(lista.Ajustes().BotoesFecharAjuda);
    MostraMenu();
}

void RenderLista::MostraColunas()
{
    const auto &colunas = Como<ztList>(*this).Colunas();
    int ultimaVisivel = -1;
    m_PrimeiraVisivel = 0;
    for (int coluna = 0; coluna < static_cast<int>(colunas.size()); ++coluna) {
        const auto &descricao = colunas[static_cast<std::size_t>(coluna)];
        m_Tabela->setColumnHidden(coluna, !descricao.Visivel);
        if (descricao.Visivel) {
            m_Tabela->setColumnWidth(coluna, descricao.Largura / TwipsPorPixel + 12);
            m_PrimeiraVisivel = ultimaVisivel < 0 ? coluna : m_PrimeiraVisivel;
            ultimaVisivel = coluna;
        }
    }
    for (int coluna = 0; coluna < static_cast<int>(colunas.size()); ++coluna) {
        m_Tabela->horizontalHeader()->setSectionResizeMode(coluna, coluna == ultimaVisivel ? QHeaderView::Stretch
                                                                                           : QHeaderView::Interactive);
    }
}

void RenderLista::MostraMenu()
{
    const auto &menu = Como<ztList>(*this).Menu();
    for (std::int32_t posicao = 1; posicao <= menu.Count(); ++posicao) {
        const Ref<ItemMenu> &item = menu.Item(posicao);
        QToolButton *&botao = m_Botoes[item->Chave()];
        if (botao == nullptr) {
            botao = FazBotao(m_Barra);
            botao->setObjectName(Q(item->Chave()));
            botao->setIcon(Icone(item->Chave()));
            const std::string chave = item->Chave();
            connect(botao, &QToolButton::clicked, this, [this, chave] { Escolhe(chave); });
            m_Comandos->addWidget(botao);
        }
        const std::string &texto = item->TextoBotao().empty() ? item->Texto() : item->TextoBotao();
        botao->setText(Q(texto));
        botao->setToolTip(Q(item->Dica()));
        botao->setVisible(item->Visivel());
        botao->setEnabled(item->Utilizavel());
    }
    m_Barra->setVisible(menu.Count() > 0);
}

void RenderLista::AbreMenu(const QPoint &onde)
{
    Age([this] { Como<ztList>(*this).OfereceMenu(); });
    QMenu menu(m_Tabela);
    const auto &itens = Como<ztList>(*this).Menu();
    for (std::int32_t posicao = 1; posicao <= itens.Count(); ++posicao) {
        const Ref<ItemMenu> item = itens.Item(posicao);
        if (!item->Visivel()) {
            continue;
        }
        if (item->IniciaGrupo()) {
            menu.addSeparator();
        }
        QAction *acao = menu.addAction(Icone(item->Chave()), Q(item->Texto()));
        acao->setEnabled(item->Utilizavel());
        acao->setData(Q(item->Chave()));
    }
    const QPointer<RenderLista> vivo = this;
    if (const QAction *escolhida = menu.exec(m_Tabela->viewport()->mapToGlobal(onde)); escolhida != nullptr && vivo) {
        Escolhe(S(escolhida->data().toString()));
    }
}

void RenderLista::Escolhe(const std::string &chave)
{
    const Ref<IControle> vivo = Controle();
    Age([vivo, chave] { dynamic_cast<ztList &>(*vivo).EscolheMenu(chave); });
}
