#include "desk/windows/RenderLista.h"

#include "controls/ItemMenu.h"
#include "controls/ztList.h"
#include "desk/windows/CampoDeFiltro.h"
#include "desk/windows/ComandosDeTabela.h"
#include "desk/windows/Icones.h"
#include "desk/windows/ModeloLista.h"
#include "desk/windows/TelaDeAndamento.h"
#include "tela/ComandosDeLista.h"
#include "tela/Partes.h"
#include "tela/Twips.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <optional>

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
    std::function<void()> RolouAoFim = [] {}; // the person, with the mouse

    // Brings the rows to where they were, before they are painted.
    void RolaPara(int onde)
    {
        executeDelayedItemsLayout();
        updateGeometries();
        verticalScrollBar()->setValue(onde);
    }

    // Each row as high as its text, also when that becomes larger.
    void AjustaAltura()
    {
        constexpr int Folga = 8;
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + Folga);
    }

    QSize sizeHint() const override { return {Largura(LarguraDasColunas), QTableView::sizeHint().height()}; }
    QSize minimumSizeHint() const override
    {
        constexpr int LarguraQueBasta = 640;
        return {Largura(std::min(LarguraDasColunas, LarguraQueBasta)), QTableView::minimumSizeHint().height()};
    }

  protected:
    void changeEvent(QEvent *evento) override
    {
        QTableView::changeEvent(evento);
        if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
            AjustaAltura();
        }
    }
    void wheelEvent(QWheelEvent *evento) override
    {
        QTableView::wheelEvent(evento);
        if (evento->angleDelta().y() < 0 && verticalScrollBar()->value() == verticalScrollBar()->maximum()) {
            RolouAoFim();
        }
    }

  private:
    int Largura(int colunas) const
    {
        return colunas + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 2 * frameWidth();
    }
};

RenderLista::RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                         std::function<void()> ajuda, AoRedorDaLista aoRedor)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_AoRedor(std::move(aoRedor)),
      m_Criterios(widget->findChild<QWidget *>(widget->objectName() + "_criterios")),
      m_Titulo(new QLabel(widget)),
      m_Tabela(new Tabela(widget)),
      m_Modelo(new ModeloLista(Como<ztList>(*this), this)),
      m_Barra(new QWidget(widget)),
      m_Comandos(new QVBoxLayout),
      m_Localizar(widget->window()->findChild<QPushButton *>(widget->objectName() + "_localizar")),
      m_Limpar(widget->window()->findChild<QPushButton *>(widget->objectName() + "_limpar")),
      m_Mais(new QPushButton(Q(std::string(Partes::MaisRegistros)), widget)),
      m_Rodape(new QLabel(widget)),
      m_Filtro(new CampoDeFiltro(widget->objectName() + "_filtro", m_Tabela, widget)),
      m_Fechar(FazBotao(m_Barra)),
      m_Ajuda(FazBotao(m_Barra))
{
    m_Titulo->setObjectName("titulo");
    m_Titulo->setWordWrap(true);
    m_Titulo->setTextFormat(Qt::PlainText);
    m_Mais->setObjectName("mais");
    m_Rodape->setObjectName("rodape");
    m_Rodape->setTextFormat(Qt::PlainText);
    m_Rodape->setWordWrap(true);
    MontaTabela();
    MontaLeiaute();

    const std::string lembranca = m_AoRedor.Janela + "/" + Como<ztList>(*this).Nome();
    m_Ordem = lembranca + "/ordem";
    m_ComandosDeTabela = new ComandosDeTabela(m_Tabela, m_AoRedor.Quem, lembranca + "/colunas", [this] {
        QString titulo = Como<ztList>(*this).Form() ? Q(Como<ztList>(*this).Form()->Caption()) : QString();
        return ComandosDeTabela::Cabeca{titulo, Q(Como<ztList>(*this).Titulo())};
    });
    m_ComandosDeTabela->MudouVistas = [this] { Filtra(); };

    m_Fechar->setIcon(Icone("fechar"));
    m_Ajuda->setIcon(Icone("ajuda"));
    connect(m_Fechar, &QToolButton::clicked, this, [this, fecha] { Age(fecha); });
    connect(m_Ajuda, &QToolButton::clicked, this, [this, ajuda] { Age(ajuda); });
    connect(m_Mais, &QPushButton::clicked, this, [this] { Age([this] { Como<ztList>(*this).PedeMais(); }); });
    connect(m_Filtro, &QLineEdit::textChanged, this, [this] { Filtra(); });
    if (m_Localizar != nullptr) {
        m_Localizar->setText(Q(std::string(Partes::Localizar)));
        m_Localizar->setIcon(Icone("localizar"));
        connect(m_Localizar, &QPushButton::clicked, this, [this] { Age([this] { Como<ztList>(*this).Localiza(); }); });
        connect(m_Limpar, &QPushButton::clicked, this,
                [this] { Age([this] { Como<ztList>(*this).LimpaCriterios(); }); });
    }
    SegueFoco(m_Tabela);
}

void RenderLista::MontaTabela()
{
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
    m_Tabela->AjustaAltura();
    m_Tabela->horizontalHeader()->setSectionsClickable(true);
    m_Tabela->horizontalHeader()->setSortIndicatorShown(true);
    m_Tabela->horizontalHeader()->setHighlightSections(false);
    m_Tabela->setAccessibleName(Widget()->accessibleName());
    connect(m_Tabela->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int coluna) { Ordena(coluna + 1); });
    m_Tabela->viewport()->installEventFilter(this);
    connect(m_Tabela, &QTableView::customContextMenuRequested, this, [this](const QPoint &onde) { AbreMenu(onde); });
    connect(m_Tabela->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &linha) {
                if (linha.isValid() && linha.row() + 1 != Como<ztList>(*this).AtualVista()) {
                    Age([this, &linha] { Como<ztList>(*this).ClicaLinha(linha.row() + 1); });
                }
            });
    m_Tabela->RolouAoFim = [this] { Rola(); };
    // The bar's own actions come before it has moved.
    connect(m_Tabela->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this](int acao) {
        if (acao == QAbstractSlider::SliderSingleStepAdd || acao == QAbstractSlider::SliderPageStepAdd ||
            acao == QAbstractSlider::SliderToMaximum ||
            (acao == QAbstractSlider::SliderMove && m_Tabela->verticalScrollBar()->isSliderDown())) {
            QMetaObject::invokeMethod(
                this,
                [this] {
                    const QScrollBar *barra = m_Tabela->verticalScrollBar();
                    if (barra->value() == barra->maximum()) {
                        Rola();
                    }
                },
                Qt::QueuedConnection);
        }
    });
}

void RenderLista::MontaLeiaute()
{
    auto *pe = new QHBoxLayout;
    pe->addWidget(m_Mais);
    pe->addWidget(m_Rodape, 1);
    pe->addWidget(m_Filtro);
    auto *centro = new QVBoxLayout;
    centro->addWidget(m_Titulo);
    centro->addWidget(m_Tabela, 1);
    centro->addLayout(pe);
    auto *lado = new QVBoxLayout(m_Barra);
    lado->setContentsMargins(0, 0, 0, 0);
    lado->addLayout(m_Comandos);
    lado->addStretch(1);
    lado->addWidget(m_Ajuda);
    lado->addWidget(m_Fechar);
    auto *baixo = new QHBoxLayout;
    baixo->addLayout(centro, 1);
    baixo->addWidget(m_Barra);
    auto *tudo = new QVBoxLayout(Widget());
    tudo->setContentsMargins(0, 0, 0, 0);
    if (m_Criterios != nullptr) {
        tudo->addWidget(m_Criterios);
    }
    tudo->addLayout(baixo, 1);
}

QWidget *RenderLista::WidgetDe(Parte parte) const
{
    switch (parte) {
    case Parte::Localizar:
        return m_Localizar;
    case Parte::LimparCriterios:
        return m_Limpar;
    case Parte::MaisRegistros:
        return m_Mais;
    case Parte::Filtro:
        return m_Filtro;
    default:
        return m_Tabela;
    }
}

void RenderLista::Mostra()
{
    const auto &lista = Como<ztList>(*this);
    if (lista.Trazendo() || m_Carregando) { // the rows are shown once they are there
        MostraRodape();
        return;
    }
    m_Titulo->setText(Q(lista.Titulo()));
    m_Titulo->setVisible(!lista.Titulo().empty());
    const bool outras = m_Arranjo != lista.Arranjo();
    if (outras) {
        m_Arranjo = lista.Arranjo();
        m_Modelo->Rearranja();
        MostraColunas();
    }
    MostraAtual(outras);
    m_Tabela->horizontalHeader()->setSortIndicator(lista.ColunaOrdem() - 1,
                                                   lista.OrdemDecrescente() ? Qt::DescendingOrder : Qt::AscendingOrder);
    m_Mais->setVisible(lista.TemMais());
    MostraRodape();
    if (m_Criterios != nullptr) {
        m_Criterios->setVisible(lista.Ajustes().BarraCriteriosAtiva);
    }
    MostraMenu();
}

// A row that becomes current is brought to where it is seen; afterwards the person may roll it away.
void RenderLista::MostraAtual(bool outras)
{
    const std::int32_t atual = Como<ztList>(*this).AtualVista();
    if (!outras && atual == m_Atual && m_Tabela->currentIndex().row() + 1 == atual) {
        return;
    }
    m_Atual = atual;
    if (atual < 1) {
        m_Tabela->clearSelection();
        m_Tabela->setCurrentIndex({});
        return;
    }
    const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
    const QModelIndex linha = m_Modelo->index(atual - 1, vistas.empty() ? 0 : vistas.front() - 1);
    m_Tabela->selectionModel()->setCurrentIndex(linha, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!m_Rolando) {
        m_Tabela->scrollTo(linha);
    }
}

void RenderLista::MostraRodape()
{
    const auto &lista = Como<ztList>(*this);
    m_Rodape->setText(Q(RodapeDaLista(lista)));
    m_Filtro->setEnabled(lista.NroItens() > 0 || !m_Filtro->text().isEmpty());
}

void RenderLista::MostraColunas()
{
    auto &lista = Como<ztList>(*this);
    std::vector<ComandosDeTabela::Coluna> colunas;
    m_Tabela->LarguraDasColunas = 0;
    bool oferecidas = false;
    for (const ztList::Coluna &coluna : lista.Colunas()) {
        const bool oferecida = coluna.Visivel && coluna.Largura > 0;
        oferecidas = oferecidas || oferecida;
        const int largura = Pixels(coluna.Largura) + 12;
        colunas.push_back({coluna.Chave, coluna.Titulo, largura, oferecida});
        m_Tabela->LarguraDasColunas += oferecida ? largura : 0;
    }
    m_ComandosDeTabela->DefineColunas(colunas);
    m_Tabela->updateGeometry();
    if (oferecidas && !m_OrdemLida && m_AoRedor.Quem.Lembrancas) {
        m_OrdemLida = true;
        LembraOrdem(lista, m_AoRedor.Quem.Lembrancas->Lembranca(m_Ordem));
    }
}

void RenderLista::Filtra()
{
    Age([this] { Como<ztList>(*this).Filtra(S(m_Filtro->text()), m_ComandosDeTabela->Vistas()); });
}

// The person sorts by a column; 0: as the rows came.
void RenderLista::Ordena(int coluna)
{
    const QPointer<RenderLista> vivo = this;
    TelaDeAndamento janela(m_Tabela->window());
    std::optional<Andamento> andamento; // from when rows are loaded
    const TelaDaCarga tela{m_AoRedor.Pergunta, [&](const std::string &quantos) {
                               if (!andamento) {
                                   andamento.emplace(janela, "Carregando as demais linhas.", true);
                               }
                               return andamento->Anda(0, "Carregados: " + quantos) && vivo;
                           }};
    const Ref<ztList> lista = ComoTipo<ztList>(Controle());
    m_Carregando = true;
    Age([&] { OrdenaLista(lista, coluna, tela); });
    andamento.reset();
    if (!vivo) {
        return;
    }
    m_Carregando = false;
    Atualiza();
    if (m_AoRedor.Quem.Lembrancas) {
        m_AoRedor.Quem.Lembrancas->Lembra(m_Ordem, OrdemLembrada(*lista));
    }
}

// The person has come to the end of the rows.
void RenderLista::Rola()
{
    if (m_Rolando) {
        return;
    }
    const QPointer<RenderLista> vivo = this;
    const int onde = m_Tabela->verticalScrollBar()->value();
    m_Rolando = true;
    Age([this] { Como<ztList>(*this).RolaAteOFim(); });
    if (vivo) {
        m_Rolando = false;
        m_Tabela->RolaPara(onde);
    }
}

bool RenderLista::NoFim() const
{
    const auto &lista = Como<ztList>(*this);
    return lista.AtualVista() > 0 && lista.AtualVista() == lista.NroVistas();
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
    std::vector<std::string> captions;
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
        captions.push_back(comando.NoMenu);
    }
    AdicionaOrdens(menu);
    captions.push_back(OrdensDaLista(Como<ztList>(*this)).Caption);
    m_ComandosDeTabela->AdicionaAoMenu(menu, captions);
    const QPointer<RenderLista> vivo = this;
    const QAction *escolhida = menu.exec(m_Tabela->viewport()->mapToGlobal(onde));
    if (escolhida == nullptr || !vivo) {
        return;
    }
    if (escolhida->data().typeId() == QMetaType::Int) {
        Ordena(escolhida->data().toInt());
    } else if (escolhida->data().typeId() == QMetaType::QString) { // others do what they do by themselves
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
    if (evento->type() == QEvent::MouseButtonDblClick && objeto == m_Tabela->viewport()) { // the headings have another
        const auto &clique = *static_cast<QMouseEvent *>(evento);
        if (clique.button() == Qt::LeftButton && m_Tabela->indexAt(clique.pos()).isValid()) {
            Abre();
            return true;
        }
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
    const bool so = (tecla.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier; // those of the keypad do the same
    const bool menu = tecla.key() == Qt::Key_Menu ||
                      (tecla.key() == Qt::Key_F10 && tecla.modifiers() == Qt::KeyboardModifiers(Qt::ShiftModifier));
    if (menu) {
        const QModelIndex atual = m_Tabela->currentIndex();
        AbreMenu(atual.isValid() ? m_Tabela->visualRect(atual).center() : QPoint());
        return true;
    }
    if (so && (tecla.key() == Qt::Key_Home || tecla.key() == Qt::Key_End)) {
        const auto linha =
            LinhaDaTecla(Como<ztList>(*this), tecla.key() == Qt::Key_Home ? TeclaDeLista::Home : TeclaDeLista::End);
        const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
        m_Tabela->setCurrentIndex(m_Modelo->index(linha.value_or(0) - 1, vistas.empty() ? 0 : vistas.front() - 1));
        if (tecla.key() == Qt::Key_End && NoFim()) {
            Rola();
        }
        return true;
    }
    if (so && (tecla.key() == Qt::Key_Down || tecla.key() == Qt::Key_PageDown)) {
        // Once the table has gone there.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (NoFim()) {
                    Rola();
                }
            },
            Qt::QueuedConnection);
    }
    if (so && (tecla.key() == Qt::Key_Insert || tecla.key() == Qt::Key_Delete)) {
        if (!tecla.isAutoRepeat()) {
            const AtalhoDeLista atalho = tecla.key() == Qt::Key_Insert ? AtalhoDeLista::Inclui : AtalhoDeLista::Remove;
            const Ref<IControle> vivo = Controle();
            Age([vivo, atalho] { FazAtalho(dynamic_cast<ztList &>(*vivo), atalho); });
        }
        return true;
    }
    return false;
}

void RenderLista::Abre()
{
    const Ref<IControle> vivo = Controle(); // what is done with the row may close the window and end this object
    Age([vivo] { AbreLinha(dynamic_cast<ztList &>(*vivo)); });
}

void RenderLista::Escolhe(const std::string &chave)
{
    const Ref<IControle> vivo = Controle();
    Age([vivo, chave] { dynamic_cast<ztList &>(*vivo).EscolheMenu(chave); });
}

} // namespace mesa
