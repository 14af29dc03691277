#include "desk/windows/RenderLista.h"

#include "controls/ItemMenu.h"
#include "controls/ztList.h"
#include "desk/windows/ModeloLista.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int TwipsPorPixel = 15;
constexpr const char *TextoOrdenar = "Ordenar por";

// Menu keys that have a picture of their own; a key without one shows the general one.
QIcon Icone(const std::string &chave)
{
    static constexpr const char *Prefixo = "mnuZTLObj";
    const QString nome = Q(chave).mid(static_cast<int>(std::string_view(Prefixo).size())).toLower();
    const QString arquivo = ":/icones/" + nome + ".svg";
    return QIcon(QFile::exists(arquivo) ? arquivo : ":/icones/comando.svg");
}

// Lines of a caption without the blanks around each.
QString Apara(const QString &texto)
{
    QStringList linhas = texto.split('\n');
    for (QString &linha : linhas) {
        linha = linha.trimmed();
    }
    return linhas.join('\n');
}

QToolButton *FazBotao(QWidget *dono)
{
    auto *botao = new QToolButton(dono);
    botao->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    botao->setIconSize({20, 20});
    botao->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    botao->setFocusPolicy(Qt::NoFocus); // the list keeps the keyboard: Alt with the letter, or its menu, does the same
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
}

std::vector<QWidget *> RenderLista::Partes() const
{
    return {m_Tabela, m_Mais};
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

void RenderLista::RecebeMnemonicas(const Mnemonicas &livres)
{
    m_Livres = livres;
    EscolheLetras();
    MostraMenu();
}

// The list's own two buttons come first, so that their letters are the same whatever the commands are.
void RenderLista::EscolheLetras()
{
    Mnemonicas livres = m_Livres;
    for (QToolButton *botao : {m_Fechar, m_Ajuda}) {
        const QString texto = botao->text().remove('&');
        botao->setText(Mnemonicas::Marca(texto, livres.Acha(texto)));
    }
    m_Letras.clear();
    const auto &menu = Como<ztList>(*this).Menu();
    for (std::int32_t posicao = 1; posicao <= menu.Count(); ++posicao) {
        if (const Ref<ItemMenu> &item = menu.Item(posicao); item->Visivel()) {
            m_Letras[item->Chave()] = livres.Acha(Q(item->Texto()));
        }
    }
}

void RenderLista::MostraMenu()
{
    const auto &menu = Como<ztList>(*this).Menu();
    QStringList textos;
    for (std::int32_t posicao = 1; posicao <= menu.Count(); ++posicao) {
        textos << (menu.Item(posicao)->Visivel() ? Q(menu.Item(posicao)->Texto()) : QString());
    }
    if (textos != m_Textos) {
        m_Textos = textos;
        EscolheLetras();
    }
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
        botao->setText(Mnemonicas::Marca(Apara(Q(texto)), m_Letras[item->Chave()]));
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
    menu.setObjectName("menuDaLista");
    const auto &itens = Como<ztList>(*this).Menu();
    for (std::int32_t posicao = 1; posicao <= itens.Count(); ++posicao) {
        const Ref<ItemMenu> item = itens.Item(posicao);
        if (!item->Visivel()) {
            continue;
        }
        if (item->IniciaGrupo()) {
            menu.addSeparator();
        }
        QAction *acao =
            menu.addAction(Icone(item->Chave()), Mnemonicas::Marca(Q(item->Texto()), m_Letras[item->Chave()]));
        acao->setEnabled(item->Utilizavel());
        acao->setData(Q(item->Chave()));
    }
    AdicionaOrdens(menu);
    const QPointer<RenderLista> vivo = this;
    const QAction *escolhida = menu.exec(m_Tabela->viewport()->mapToGlobal(onde));
    if (escolhida == nullptr || !vivo) {
        return;
    }
    if (escolhida->data().typeId() == QMetaType::Int) {
        Age([this, coluna = escolhida->data().toInt()] { Como<ztList>(*this).OrdenaPor(coluna); });
    } else {
        Escolhe(S(escolhida->data().toString()));
    }
}

// The columns as the heading shows them, each under a digit.
void RenderLista::AdicionaOrdens(QMenu &menu)
{
    const auto &lista = Como<ztList>(*this);
    menu.addSeparator();
    Mnemonicas livres;
    for (const auto &[chave, letra] : m_Letras) {
        livres.Toma(letra);
    }
    QMenu *ordens = menu.addMenu(Mnemonicas::Marca(TextoOrdenar, livres.Acha(TextoOrdenar)));
    int numero = 0;
    for (std::size_t coluna = 0; coluna < lista.Colunas().size(); ++coluna) {
        const auto &descricao = lista.Colunas()[coluna];
        if (descricao.Visivel && descricao.Largura > 0) {
            QAction *acao = ordens->addAction(QString("&%1 %2").arg(++numero).arg(Q(descricao.Titulo)));
            acao->setData(static_cast<int>(coluna) + 1);
            acao->setCheckable(true);
            acao->setChecked(lista.ColunaOrdem() == static_cast<int>(coluna) + 1);
        }
    }
    ordens->setEnabled(numero > 0 && lista.NroItens() > 0);
}

bool RenderLista::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == m_Tabela && evento->type() == QEvent::KeyPress && Tecla(*static_cast<QKeyEvent *>(evento))) {
        return true;
    }
    return Renderizador::eventFilter(objeto, evento);
}

// Keys that the table does not know, or takes for a way inside the row.
bool RenderLista::Tecla(const QKeyEvent &tecla)
{
    const bool menu = tecla.key() == Qt::Key_Menu ||
                      (tecla.key() == Qt::Key_F10 && tecla.modifiers() == Qt::KeyboardModifiers(Qt::ShiftModifier));
    if (menu) {
        const QModelIndex atual = m_Tabela->currentIndex();
        AbreMenu(atual.isValid() ? m_Tabela->visualRect(atual).center() : QPoint());
        return true;
    }
    if (tecla.modifiers() == Qt::NoModifier && (tecla.key() == Qt::Key_Home || tecla.key() == Qt::Key_End)) {
        const int linha = tecla.key() == Qt::Key_Home ? 0 : m_Modelo->rowCount() - 1;
        m_Tabela->setCurrentIndex(m_Modelo->index(linha, m_PrimeiraVisivel));
        return true;
    }
    return false;
}

void RenderLista::Escolhe(const std::string &chave)
{
    const Ref<IControle> vivo = Controle();
    Age([vivo, chave] { dynamic_cast<ztList &>(*vivo).EscolheMenu(chave); });
}
