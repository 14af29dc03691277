#include "desk/windows/JanelaDoManual.h"

#include "desk/windows/Cores.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/TextoDoManual.h"
#include "services/TextoQt.h"

#include <QFile>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr const char *Nome = "Ajuda";
constexpr const char *ChaveDoLugar = "Ajuda/lido";
constexpr const char *ChaveDoZoom = "Ajuda/letra";
constexpr std::size_t MaisMostrados = 1000; // in the list, and marked
constexpr int MenorZoom = -4;
constexpr int MaiorZoom = 8;
constexpr int Secao = Qt::UserRole;
// Of the window's width.
constexpr int ParteDoPainel = 1;
constexpr int ParteDoTexto = 3;

} // namespace

void JanelaDoManual::Mostra(const std::string &topico, const Ref<ILembrancas> &lembrancas, QWidget *dono)
{
    JanelaDoManual *janela = nullptr;
    for (QDialog *aberta : dono->findChildren<QDialog *>(Nome, Qt::FindDirectChildrenOnly)) {
        janela = aberta->isVisible() ? dynamic_cast<JanelaDoManual *>(aberta) : janela;
    }
    if (janela == nullptr) {
        QFile manual(":/docs/manual.md");
        janela = new JanelaDoManual(manual.open(QIODevice::ReadOnly) ? QString::fromUtf8(manual.readAll())
                                                                     : QString("O manual não foi encontrado."),
                                    ":/docs", lembrancas, dono);
        janela->setAttribute(Qt::WA_DeleteOnClose);
        janela->show();
    }
    janela->VaiParaTopico(topico);
    janela->raise();
    janela->activateWindow();
}

JanelaDoManual::JanelaDoManual(const QString &markdown, const QString &figuras, Ref<ILembrancas> lembrancas,
                               QWidget *dono)
    : QDialog(dono),
      m_Lembrancas(std::move(lembrancas)),
      m_Painel(new QTabWidget),
      m_Conteudo(new QTreeWidget),
      m_Resultados(new QListWidget),
      m_Texto(new TextoDoManual(markdown, figuras, nullptr)),
      m_Manual(std::make_unique<Manual>(*m_Texto->document())),
      m_Procurado(new QLineEdit(this)),
      m_Contagem(FazTexto("contagem", "", this))
{
    setObjectName(Nome);
    setWindowTitle("Manual do operador");
    setWindowIcon(Icone("ajuda"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Monta();
    MontaConteudo();
    LigaTeclas();
    if (m_Lembrancas) {
        MudaZoom(Q(m_Lembrancas->Lembranca(ChaveDoZoom)).toInt());
        Chega(m_Manual->PosicaoDe(m_Lembrancas->Lembranca(ChaveDoLugar)).value_or(0));
    }
    m_Texto->setFocus();
}

JanelaDoManual::~JanelaDoManual()
{
    if (isVisible()) { // it goes with its owner
        Lembra();
    }
}

void JanelaDoManual::Monta()
{
    m_Texto->setObjectName("texto");
    m_Texto->setAccessibleName("Texto do manual");
    m_Conteudo->setObjectName("conteudo");
    m_Conteudo->setAccessibleName("Conteúdo do manual");
    m_Conteudo->setHeaderHidden(true);
    m_Resultados->setObjectName("resultados");
    m_Resultados->setAccessibleName("Onde o texto foi achado");
    m_Painel->setObjectName("painel");
    m_Painel->addTab(m_Conteudo, "&Conteúdo");
    m_Painel->addTab(m_Resultados, "&Resultados");
    m_Procurado->setObjectName("procurado");
    m_Procurado->setClearButtonEnabled(true);
    auto *rotulo = new QLabel("&Procurar:", this);
    rotulo->setBuddy(m_Procurado);

    auto *acima = new QHBoxLayout;
    auto *abaixo = new QHBoxLayout;
    const auto botao = [this](QHBoxLayout *linha, const char *nome, const char *texto, auto acao) {
        QPushButton *novo = FazBotao(nome, texto, this);
        novo->setAutoDefault(false);
        connect(novo, &QPushButton::clicked, this, acao);
        linha->addWidget(novo);
        return novo;
    };
    m_Voltar = botao(acima, "voltar", "&Voltar", [this] { Volta(m_Atras, m_Adiante); });
    m_Avancar = botao(acima, "avancar", "&Avançar", [this] { Volta(m_Adiante, m_Atras); });
    botao(acima, "aumentar", "Au&mentar", [this] { MudaZoom(1); });
    botao(acima, "diminuir", "&Diminuir", [this] { MudaZoom(-1); });
    acima->addStretch(1);
    QPushButton *fechar = botao(acima, "fechar", "&Fechar", [this] { QDialog::reject(); });
    abaixo->addWidget(rotulo);
    abaixo->addWidget(m_Procurado, 1);
    m_Anterior = botao(abaixo, "anterior", "A&nterior", [this] { Anda(-1); });
    m_Proximo = botao(abaixo, "proximo", "Pró&ximo", [this] { Anda(1); });
    abaixo->addWidget(m_Contagem);

    auto *partes = new QSplitter(this);
    partes->setObjectName("partes");
    partes->setChildrenCollapsible(false);
    partes->addWidget(m_Painel); // joins the window after the buttons, and so comes after them by Tab
    partes->addWidget(m_Texto);
    setTabOrder(fechar, m_Procurado);
    partes->setStretchFactor(0, ParteDoPainel);
    partes->setStretchFactor(1, ParteDoTexto);
    auto *tudo = new QVBoxLayout(this);
    tudo->addLayout(acima);
    tudo->addLayout(abaixo);
    tudo->addWidget(partes, 1);
    const int letra = fontMetrics().averageCharWidth();
    partes->setSizes({ParteDoPainel * 35 * letra, ParteDoTexto * 35 * letra});
    resize(150 * letra, 45 * fontMetrics().height());
    Busca();
    Chega(0);
}

void JanelaDoManual::MontaConteudo()
{
    // Each below the nearest one before it that stands higher.
    std::vector<std::pair<int, QTreeWidgetItem *>> acima;
    for (std::size_t secao = 0; secao < m_Manual->Secoes().size(); ++secao) {
        const SecaoDoManual &esta = m_Manual->Secoes()[secao];
        while (!acima.empty() && acima.back().first >= esta.Nivel) {
            acima.pop_back();
        }
        auto *item = acima.empty() ? new QTreeWidgetItem(m_Conteudo) : new QTreeWidgetItem(acima.back().second);
        item->setText(0, esta.Titulo);
        item->setToolTip(0, esta.Titulo);
        item->setData(0, Secao, static_cast<qulonglong>(secao));
        acima.emplace_back(esta.Nivel, item);
        m_Itens.push_back(item);
    }
    if (m_Conteudo->topLevelItemCount() == 1) { // the title of the whole
        m_Conteudo->topLevelItem(0)->setExpanded(true);
    }
    connect(m_Conteudo, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem *item) {
        if (item != nullptr) {
            VaiPara(m_Manual->Secoes()[item->data(0, Secao).toULongLong()].Posicao);
        }
    });
    connect(m_Texto->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (!m_Indo) {
            MostraOnde(m_Texto->EmCima());
        }
    });
    connect(m_Texto, &QTextBrowser::anchorClicked, this, [this](const QUrl &para) {
        if (para.isRelative() && para.path().isEmpty()) {
            VaiParaAncora(para.fragment());
        }
    });
    connect(m_Procurado, &QLineEdit::textChanged, this, [this] { Busca(); });
    connect(m_Procurado, &QLineEdit::returnPressed, this, [this] { Anda(1); });
    connect(m_Resultados, &QListWidget::currentRowChanged, this, [this](int linha) {
        if (linha >= 0) {
            MostraAchado(static_cast<std::size_t>(linha));
        }
    });
    SeguePaleta(*m_Texto, [this] { Busca(); });
}

void JanelaDoManual::LigaTeclas()
{
    const auto tecla = [this](const QKeySequence &sequencia, auto acao) { new QShortcut(sequencia, this, acao); };
    tecla(QKeySequence::Find, [this] {
        m_Procurado->setFocus();
        m_Procurado->selectAll();
    });
    tecla(QKeySequence("F3"), [this] { Anda(1); });
    tecla(QKeySequence("Shift+F3"), [this] { Anda(-1); });
    tecla(QKeySequence("Alt+Left"), [this] { Volta(m_Atras, m_Adiante); });
    tecla(QKeySequence("Alt+Right"), [this] { Volta(m_Adiante, m_Atras); });
    tecla(QKeySequence::ZoomIn, [this] { MudaZoom(1); });
    tecla(QKeySequence::ZoomOut, [this] { MudaZoom(-1); });
    tecla(QKeySequence("Ctrl+0"), [this] { MudaZoom(-m_Zoom); });
}

void JanelaDoManual::VaiParaTopico(const std::string &topico)
{
    VaiParaAncora(Manual::AncoraDoTopico(topico));
}

void JanelaDoManual::VaiParaAncora(const QString &ancora)
{
    if (const auto secao = m_Manual->SecaoDe(ancora)) {
        VaiPara(m_Manual->Secoes()[*secao].Posicao);
    }
}

void JanelaDoManual::VaiPara(int posicao)
{
    m_Atras.push_back(m_Texto->EmCima());
    m_Adiante.clear();
    Chega(posicao);
}

void JanelaDoManual::Volta(std::vector<int> &daqui, std::vector<int> &praLa)
{
    if (daqui.empty()) {
        return;
    }
    praLa.push_back(m_Texto->EmCima());
    const int posicao = daqui.back();
    daqui.pop_back();
    Chega(posicao);
}

void JanelaDoManual::Chega(int posicao)
{
    m_Indo = true;
    m_Texto->PoeEmCima(posicao);
    m_Indo = false;
    MostraOnde(posicao);
    m_Voltar->setEnabled(!m_Atras.empty());
    m_Avancar->setEnabled(!m_Adiante.empty());
}

// The contents follow the text.
void JanelaDoManual::MostraOnde(int posicao)
{
    const auto secao = m_Manual->SecaoEm(posicao);
    if (secao && *secao < m_Itens.size()) {
        const QSignalBlocker cala(m_Conteudo);
        m_Conteudo->setCurrentItem(m_Itens[*secao]);
    }
}

void JanelaDoManual::Busca()
{
    m_Achados = m_Manual->Procura(m_Procurado->text());
    const bool ha = !m_Achados.empty();
    const std::size_t mostrados = std::min(m_Achados.size(), MaisMostrados);
    QList<QTextEdit::ExtraSelection> marcas;
    {
        const QSignalBlocker cala(m_Resultados);
        m_Resultados->clear();
        for (std::size_t n = 0; n < mostrados; ++n) {
            const auto secao = m_Manual->SecaoEm(m_Achados[n].Posicao);
            const QString capitulo = secao ? m_Manual->Secoes()[*secao].Titulo + ": " : QString();
            m_Resultados->addItem(capitulo + m_Manual->Trecho(m_Achados[n]));
            QTextEdit::ExtraSelection marca;
            marca.cursor = QTextCursor(m_Texto->document());
            marca.cursor.setPosition(m_Achados[n].Posicao);
            marca.cursor.setPosition(m_Achados[n].Posicao + m_Achados[n].Tamanho, QTextCursor::KeepAnchor);
            marca.format.setBackground(CorDe(Cor::Achado, m_Texto->palette()));
            marca.format.setForeground(m_Texto->palette().color(QPalette::Text));
            marcas.append(marca);
        }
    }
    m_Texto->setExtraSelections(marcas);
    m_Anterior->setEnabled(ha);
    m_Proximo->setEnabled(ha);
    m_Contagem->setText(m_Procurado->text().trimmed().isEmpty() ? "" : ha ? "" : "Não encontrado");
    m_Painel->setTabEnabled(1, ha);
    m_Painel->setCurrentIndex(ha ? 1 : 0);
    if (!ha) {
        if (QTextCursor cursor = m_Texto->textCursor(); cursor.hasSelection()) {
            cursor.clearSelection();
            m_Texto->setTextCursor(cursor);
        }
        return;
    }
    // From what is read onwards; behind the last comes the first.
    const auto depois = std::ranges::lower_bound(m_Achados, m_Texto->EmCima(), {}, &AchadoNoManual::Posicao);
    MostraAchado(depois == m_Achados.end() ? 0 : static_cast<std::size_t>(depois - m_Achados.begin()));
}

void JanelaDoManual::Anda(int passo)
{
    if (m_Achados.empty()) {
        return;
    }
    const std::size_t total = m_Achados.size();
    MostraAchado((m_Achado + (passo > 0 ? 1 : total - 1)) % total);
}

void JanelaDoManual::MostraAchado(std::size_t qual)
{
    m_Achado = qual;
    m_Indo = true;
    m_Texto->Descobre(m_Achados[qual].Posicao, m_Achados[qual].Tamanho);
    m_Indo = false;
    MostraOnde(m_Achados[qual].Posicao);
    {
        const QSignalBlocker cala(m_Resultados);
        m_Resultados->setCurrentRow(qual < MaisMostrados ? static_cast<int>(qual) : -1);
    }
    m_Contagem->setText(QString("%1 de %2").arg(qual + 1).arg(m_Achados.size()));
}

void JanelaDoManual::MudaZoom(int passos)
{
    m_Zoom = std::clamp(m_Zoom + passos, MenorZoom, MaiorZoom);
    m_Indo = true;
    m_Texto->DefineZoom(m_Zoom);
    m_Indo = false;
}

// Esc gives up the search before the window.
void JanelaDoManual::reject()
{
    if (m_Procurado->text().isEmpty()) {
        QDialog::reject();
        return;
    }
    m_Procurado->clear();
    m_Texto->setFocus();
}

void JanelaDoManual::hideEvent(QHideEvent *evento)
{
    QDialog::hideEvent(evento);
    Lembra();
}

void JanelaDoManual::Lembra()
{
    if (m_Lembrancas) {
        m_Lembrancas->Lembra(ChaveDoLugar, m_Manual->Lugar(m_Texto->EmCima()));
        m_Lembrancas->Lembra(ChaveDoZoom, m_Zoom == 0 ? std::string() : std::to_string(m_Zoom));
    }
}

} // namespace mesa
