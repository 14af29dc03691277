#include "desk/windows/RenderLista.h"

#include "controls/ItemMenu.h"
#include "controls/ztList.h"
#include "desk/windows/Icones.h"
#include "desk/windows/ModeloLista.h"
#include "tela/ComandosDeLista.h"
#include "tela/Partes.h"
#include "tela/Twips.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace mesa {

namespace {

// Menu keys that have a picture of their own; a key without one shows the general one.
QIcon IconeDaChave(const std::string &chave)
{
    static constexpr const char *Prefixo = "mnuZTLObj";
    const QString nome = Q(chave).mid(static_cast<int>(std::string_view(Prefixo).size())).toLower();
    return Icone(HaIcone(nome) ? nome : "comando");
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

// The rows, naturally as wide as the columns are told to be. A table of few columns keeps that width, a wider one
// scrolls.
class RenderLista::Tabela : public QTableView {
  public:
    using QTableView::QTableView;

    int LarguraDasColunas = 0;

    QSize sizeHint() const override { return {Largura(LarguraDasColunas), QTableView::sizeHint().height()}; }
    QSize minimumSizeHint() const override
    {
        constexpr int LarguraQueBasta = 640;
        return {Largura(std::min(LarguraDasColunas, LarguraQueBasta)), QTableView::minimumSizeHint().height()};
    }

  private:
    int Largura(int colunas) const
    {
        return colunas + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 2 * frameWidth();
    }
};

RenderLista::RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                         std::function<void()> ajuda)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Criterios(widget->findChild<QWidget *>(widget->objectName() + "_criterios")),
      m_Titulo(new QLabel(widget)),
      m_Tabela(new Tabela(widget)),
      m_Modelo(new ModeloLista(Como<ztList>(*this), this)),
      m_Barra(new QWidget(widget)),
      m_Comandos(new QVBoxLayout),
      m_Localizar(widget->window()->findChild<QPushButton *>(widget->objectName() + "_localizar")),
      m_Mais(new QPushButton(Q(std::string(Partes::MaisRegistros)), widget)),
      m_Fechar(FazBotao(m_Barra)),
      m_Ajuda(FazBotao(m_Barra))
{
    m_Titulo->setObjectName("titulo");
    m_Titulo->setWordWrap(true);
    m_Titulo->setTextFormat(Qt::PlainText);
    m_Tabela->setObjectName("linhas");
    m_Mais->setObjectName("mais");
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
    m_Tabela->setAccessibleName(widget->accessibleName());

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
    auto *baixo = new QHBoxLayout;
    baixo->addLayout(centro, 1);
    baixo->addWidget(m_Barra);
    auto *tudo = new QVBoxLayout(widget);
    tudo->setContentsMargins(0, 0, 0, 0);
    if (m_Criterios != nullptr) {
        tudo->addWidget(m_Criterios);
    }
    tudo->addLayout(baixo, 1);

    m_Fechar->setIcon(Icone("fechar"));
    m_Ajuda->setIcon(Icone("ajuda"));
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
    if (m_Localizar != nullptr) {
        m_Localizar->setText(Q(std::string(Partes::Localizar)));
        m_Localizar->setIcon(Icone("localizar"));
        connect(m_Localizar, &QPushButton::clicked, this, [this] { Age([this] { Como<ztList>(*this).Localiza(); }); });
    }
    SegueFoco(m_Tabela);
}

QWidget *RenderLista::WidgetDe(Parte parte) const
{
    switch (parte) {
    case Parte::Localizar:
        return m_Localizar;
    case Parte::MaisRegistros:
        return m_Mais;
    default:
        return m_Tabela;
    }
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
    if (m_Criterios != nullptr) {
        m_Criterios->setVisible(lista.Ajustes().BarraCriteriosAtiva);
    }
    MostraMenu();
}

void RenderLista::MostraColunas()
{
    const auto &lista = Como<ztList>(*this);
    const auto &colunas = lista.Colunas();
    const ColunasVistas vistas = VistasDaLista(lista);
    m_PrimeiraVisivel = std::max(vistas.Primeira - 1, 0);
    int menor = 0;
    m_Tabela->LarguraDasColunas = 0;
    for (int coluna = 0; coluna < static_cast<int>(colunas.size()); ++coluna) {
        const auto &descricao = colunas[static_cast<std::size_t>(coluna)];
        m_Tabela->setColumnHidden(coluna, !descricao.Visivel);
        if (descricao.Visivel) {
            const int largura = Pixels(descricao.Largura) + 12;
            m_Tabela->setColumnWidth(coluna, largura);
            m_Tabela->LarguraDasColunas += largura;
            menor = menor == 0 ? largura : std::min(menor, largura);
        }
        m_Tabela->horizontalHeader()->setSectionResizeMode(
            coluna, coluna + 1 == vistas.Ultima ? QHeaderView::Stretch : QHeaderView::Interactive);
    }
    m_Tabela->horizontalHeader()->setMinimumSectionSize(menor); // of the last one, when the table is narrow
    m_Tabela->updateGeometry();
}

void RenderLista::MostraMenu()
{
    const BarraDeLista barra = BarraDaLista(Como<ztList>(*this));
    m_Fechar->setText(Q(barra.Fechar));
    m_Fechar->setVisible(barra.ComBotoesProprios);
    m_Ajuda->setText(Q(barra.Ajuda));
    m_Ajuda->setVisible(barra.ComBotoesProprios);
    for (const ComandoDeLista &comando : barra.Comandos) {
        QToolButton *&botao = m_Botoes[comando.Chave];
        if (botao == nullptr) {
            botao = FazBotao(m_Barra);
            botao->setObjectName(Q(comando.Chave));
            botao->setIcon(IconeDaChave(comando.Chave));
            connect(botao, &QToolButton::clicked, this, [this, chave = comando.Chave] { Escolhe(chave); });
            m_Comandos->addWidget(botao);
        }
        botao->setText(Q(comando.NoBotao));
        botao->setToolTip(TextoDeDica(Q(comando.Dica)));
        botao->setVisible(comando.Visivel);
        botao->setEnabled(comando.Utilizavel);
    }
    m_Barra->setVisible(barra.Visivel);
}

void RenderLista::AbreMenu(const QPoint &onde)
{
    bool oferece = false;
    Age([&] { oferece = Como<ztList>(*this).OfereceMenu(); });
    if (!oferece) {
        return;
    }
    QMenu menu(m_Tabela);
    menu.setObjectName("menuDaLista");
    for (const ComandoDeLista &comando : BarraDaLista(Como<ztList>(*this)).Comandos) {
        if (!comando.Visivel) {
            continue;
        }
        if (comando.IniciaGrupo) {
            menu.addSeparator();
        }
        QAction *acao = menu.addAction(IconeDaChave(comando.Chave), Q(comando.NoMenu));
        acao->setEnabled(comando.Utilizavel);
        acao->setData(Q(comando.Chave));
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

void RenderLista::AdicionaOrdens(QMenu &menu)
{
    const OrdensDeLista ordens = OrdensDaLista(Como<ztList>(*this));
    menu.addSeparator();
    QMenu *colunas = menu.addMenu(Q(ordens.Caption));
    for (const OrdensDeLista::Coluna &coluna : ordens.Colunas) {
        QAction *acao = colunas->addAction(Q(coluna.Caption));
        acao->setData(coluna.Numero);
        acao->setCheckable(true);
        acao->setChecked(coluna.Atual);
    }
    colunas->setEnabled(ordens.Utilizavel);
}

bool RenderLista::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == m_Tabela && evento->type() == QEvent::KeyPress && Tecla(*static_cast<QKeyEvent *>(evento))) {
        return true;
    }
    // The toolkit moves the keyboard before it tells where was clicked. A row that is clicked brings the focus with it,
    // and none may become current before it and scroll it away.
    if (objeto == m_Tabela && evento->type() == QEvent::FocusIn &&
        static_cast<QFocusEvent *>(evento)->reason() == Qt::MouseFocusReason) {
        QTimer::singleShot(0, this, [this] {
            if (m_Tabela->hasFocus() && !Como<ztList>(*this).TemFoco()) {
                Age([this] { Como<ztList>(*this).Foco(); });
            }
        });
        return false;
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
        const auto linha =
            LinhaDaTecla(Como<ztList>(*this), tecla.key() == Qt::Key_Home ? TeclaDeLista::Home : TeclaDeLista::End);
        m_Tabela->setCurrentIndex(m_Modelo->index(linha.value_or(0) - 1, m_PrimeiraVisivel));
        return true;
    }
    return false;
}

void RenderLista::Escolhe(const std::string &chave)
{
    const Ref<IControle> vivo = Controle();
    Age([vivo, chave] { dynamic_cast<ztList &>(*vivo).EscolheMenu(chave); });
}

} // namespace mesa
