#include "desk/windows/PainelQt.h"

#include "desk/windows/Acessibilidade.h"
#include "desk/windows/ComandosDeTabela.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/GraficoDeMeses.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDePrazos.h"
#include "desk/windows/LeiauteEmFluxo.h"
#include "desk/windows/TelaDeAndamento.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int EstadosPorLinha = 2;
constexpr int LadoDoIcone = 24;
constexpr int LinhasDosGrupos = 8; // that are seen at once
constexpr int MargemDoNumero = 12;
constexpr int AoLado = 6; // of what a state's button has

const QString Contando = "...";

QFont Titulo(const QFont &letra)
{
    QFont titulo = letra;
    titulo.setBold(true);
    return titulo;
}

} // namespace

// A state as a button: icon, number and words.
class PainelQt::BotaoDoEstado : public QPushButton {
  public:
    BotaoDoEstado(const EstadoNoPainel &estado, QWidget *dono)
        : QPushButton(dono),
          m_Nome(Q(estado.Nome)),
          m_Quantos(FazTexto("quantos", "", this)),
          m_Palavras(FazTexto("nome", m_Nome, this))
    {
        setObjectName(QString("estado%1").arg(static_cast<int>(estado.Qual)));
        auto *icone = new QLabel(this);
        PoeIcone(*icone, Q(estado.Icone), LadoDoIcone);
        m_Quantos->setWordWrap(false);
        m_Quantos->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        Mede();
        auto *tudo = new QHBoxLayout(this);
        const QMargins margens = tudo->contentsMargins();
        tudo->setContentsMargins(AoLado, margens.top(), AoLado, margens.bottom());
        tudo->addWidget(icone);
        tudo->addWidget(m_Quantos);
        tudo->addWidget(m_Palavras, 1);
        for (QLabel *rotulo : {icone, m_Quantos, m_Palavras}) {
            rotulo->setAttribute(Qt::WA_TransparentForMouseEvents);
        }
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    }

    void Mostra(const EstadoNoPainel &estado) { Diz(QString::number(estado.Quantos), Q(estado.Frase)); }
    void Espera() { Diz(Contando, m_Nome + ": contando"); }

    QSize sizeHint() const override { return layout()->sizeHint(); }
    QSize minimumSizeHint() const override { return layout()->minimumSize(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int largura) const override { return layout()->totalHeightForWidth(largura); }

  protected:
    void keyPressEvent(QKeyEvent *evento) override
    {
        if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
            click();
            return;
        }
        QPushButton::keyPressEvent(evento);
    }
    void changeEvent(QEvent *evento) override
    {
        QPushButton::changeEvent(evento);
        if (evento->type() == QEvent::FontChange) {
            Mede();
        }
    }

  private:
    void Mede()
    {
        QFont letra = font();
        letra.setPointSizeF(letra.pointSizeF() * 1.4);
        letra.setBold(true);
        m_Quantos->setFont(letra);
        m_Quantos->setMinimumWidth(QFontMetrics(letra).horizontalAdvance("000"));
        int palavra = 0; // no word is cut
        for (const QString &uma : m_Nome.split(' ')) {
            palavra = std::max(palavra, fontMetrics().horizontalAdvance(uma));
        }
        m_Palavras->setMinimumWidth(palavra);
    }
    void Diz(const QString &quantos, const QString &frase)
    {
        m_Quantos->setText(quantos);
        setAccessibleName(frase);
        setToolTip(frase);
    }

    QString m_Nome;
    QLabel *m_Quantos;
    QLabel *m_Palavras;
};

PainelQt::PainelQt(Pedidos pedidos, QWidget *dono)
    : QWidget(dono),
      m_Pedidos(std::move(pedidos)),
      m_Painel(m_Pedidos.Sessao),
      m_Numeros(new QWidget(this)),
      m_Estados(new QGridLayout)
{
    setObjectName("painelDePrazosNaTela");
    setAccessibleName("Painel de prazos");
    setFocusPolicy(Qt::NoFocus);
    auto *tudo = new QVBoxLayout(this);
    tudo->setContentsMargins(0, 0, 0, 0);
    QLabel *titulo = FazTexto("tituloDoPainel", "Painel de prazos", this);
    titulo->setFont(Titulo(titulo->font()));
    m_Resumo = FazTexto("resumoDosPrazos", "", this);
    m_Falhas = FazTexto("falhasDosPrazos", "", this);
    Colore(*m_Falhas, Cor::Erro);
    m_TentarDeNovo = FazBotao("tentarDeNovo", "Tentar de &novo", this);
    connect(m_TentarDeNovo, &QPushButton::clicked, this, [this] { Le(); });
    tudo->addWidget(titulo);
    tudo->addWidget(m_Resumo);
    tudo->addWidget(m_Falhas);
    tudo->addLayout(EmLinha({m_TentarDeNovo}));
    m_Numeros->setObjectName("numerosDosPrazos");
    auto *numeros = new QVBoxLayout(m_Numeros);
    numeros->setContentsMargins(0, 0, 0, 0);
    numeros->addLayout(m_Estados);
    MontaEstados();
    m_Regra = FazTexto("regraDosPrazos", Q(Prazos::Regra()), m_Numeros);
    numeros->addWidget(m_Regra);
    m_TituloDosMeses = FazTexto("tituloDosMeses", "Aferições que vencem em cada mês", m_Numeros);
    m_TituloDosMeses->setFont(Titulo(m_TituloDosMeses->font()));
    m_Meses =
        new GraficoDeMeses([this](const MesNoPainel &mes) { m_Pedidos.AbreLista(m_Painel.Atras(mes)); }, m_Numeros);
    MontaCabeca();
    MontaGrupos();
    auto *comandos = new LeiauteEmFluxo;
    auto *agrupar = new QWidget(m_Numeros); // which do not part
    auto *rotulo = new QLabel("&Agrupar por:", agrupar);
    rotulo->setBuddy(m_Agrupar);
    auto *juntos = new QHBoxLayout(agrupar);
    juntos->setContentsMargins(0, 0, 0, 0);
    juntos->addWidget(rotulo);
    juntos->addWidget(m_Agrupar);
    for (QWidget *comando : std::initializer_list<QWidget *>{agrupar, m_Atualizar, m_Conferir, m_Calendario}) {
        comandos->addWidget(comando);
    }
    numeros->addLayout(comandos);
    numeros->addWidget(m_Grupos);
    numeros->addWidget(m_TituloDosMeses);
    numeros->addWidget(m_Meses);
    tudo->addWidget(m_Numeros);
    Mostra();
}

void PainelQt::MontaEstados()
{
    for (const EstadoDePrazo estado : Prazos::Estados()) {
        auto *botao = new BotaoDoEstado(NoPainel(estado, 0), m_Numeros);
        connect(botao, &QPushButton::clicked, this, [this, estado] { m_Pedidos.AbreLista(m_Painel.Atras(estado)); });
        const int posicao = static_cast<int>(m_Botoes.size());
        m_Estados->addWidget(botao, posicao / EstadosPorLinha, posicao % EstadosPorLinha);
        m_Botoes.push_back(botao);
    }
}

void PainelQt::MontaCabeca()
{
    m_Agrupar = new Combo(m_Numeros);
    m_Agrupar->setObjectName("agruparPrazos");
    m_Agrupar->setAccessibleName("Agrupar por");
    for (const char *por : {"Nada", "Setor", "Município", "Tipo"}) {
        m_Agrupar->addItem(por);
    }
    m_Atualizar = FazBotao("atualizarPrazos", "A&tualizar", m_Numeros);
    m_Conferir = FazBotao("conferirDocumentos", "C&onferir documentos", m_Numeros);
    m_Calendario = FazBotao("salvarCalendario", "&Salvar calendário...", m_Numeros);
    connect(m_Agrupar, &QComboBox::activated, this, [this](int qual) {
        m_Painel.Agrupa(static_cast<AgrupamentoDePrazos>(qual));
        Le();
    });
    connect(m_Atualizar, &QPushButton::clicked, this, [this] { Le(); });
    connect(m_Conferir, &QPushButton::clicked, this, [this] { Confere(); });
    connect(m_Calendario, &QPushButton::clicked, this, [this] { m_Pedidos.Borda([this] { SalvaTodos(); }); });
}

void PainelQt::MontaGrupos()
{
    m_Grupos = new QTableWidget(m_Numeros);
    m_Grupos->setObjectName("gruposDosPrazos");
    m_Grupos->setAccessibleName("Prazos por grupo");
    m_Grupos->verticalHeader()->hide();
    m_Grupos->horizontalHeader()->setHighlightSections(false);
    m_Grupos->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Grupos->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Grupos->setTabKeyNavigation(false);
    m_Grupos->setAlternatingRowColors(true);
    m_Grupos->setWordWrap(false);
    m_Grupos->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_Grupos, &QTableWidget::activated, this, [this] { AbreGrupo(); });
    connect(m_Grupos, &QTableWidget::customContextMenuRequested, this, [this](const QPoint &onde) {
        QMenu menu(m_Grupos);
        menu.setObjectName("menuDaTabela");
        m_ComandosDosGrupos->AdicionaAoMenu(menu, {});
        menu.exec(m_Grupos->viewport()->mapToGlobal(onde));
    });
}

void PainelQt::LeAoAparecer()
{
    m_Pendente = true;
    Espera();
    update();
}

void PainelQt::Espera()
{
    m_Resumo->setText("Contando os prazos...");
    m_Resumo->show();
    m_Falhas->hide();
    m_TentarDeNovo->hide();
    m_Numeros->show();
    for (BotaoDoEstado *botao : m_Botoes) {
        botao->Espera();
    }
    m_Grupos->hide();
    m_Meses->Espera();
}

// What was shown has its room before anybody sees it: the texts may take more lines than those before them, which the
// layouts around hear of one after another.
void PainelQt::Assenta()
{
    for (QWidget *um = m_Numeros; um != nullptr; um = um->parentWidget()) {
        if (um->layout() != nullptr) {
            um->layout()->activate();
        }
        QCoreApplication::sendPostedEvents(um, QEvent::LayoutRequest);
    }
}

// What is read takes its time: the page is there before.
void PainelQt::paintEvent(QPaintEvent *evento)
{
    QWidget::paintEvent(evento);
    if (m_Pendente) {
        m_Pendente = false;
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (isVisible()) {
                    Le();
                } else {
                    m_Pendente = true;
                }
            },
            Qt::QueuedConnection);
    }
}

void PainelQt::focusInEvent(QFocusEvent *evento)
{
    QWidget::focusInEvent(evento);
    RecebeFoco();
}

void PainelQt::RecebeFoco()
{
    if (m_TentarDeNovo->isVisibleTo(this)) {
        m_TentarDeNovo->setFocus();
    } else {
        m_Botoes.front()->setFocus();
    }
}

void PainelQt::Le()
{
    const Ref<SessaoServico> sessao = m_Pedidos.Sessao();
    if (sessao.Nada()) {
        return;
    }
    const QPointer<PainelQt> vivo(this);
    Espera();
    m_Pedidos.Borda([&] {
        FazNaFrente("Os prazos estão sendo contados.", true, this, [&](const Segue &segue) {
            const Acompanhamento acompanha(*sessao, segue);
            m_Painel.Le();
        });
    });
    if (!vivo.isNull()) {
        Mostra();
        Assenta();
    }
}

// In pages, each of which looks at whether to go on.
void PainelQt::Confere()
{
    if (m_Pedidos.Sessao().Nada()) {
        return;
    }
    const QPointer<PainelQt> vivo(this);
    std::string recusa;
    bool conferidos = false;
    m_Pedidos.Borda([&] {
        FazNaFrente("Os documentos estão sendo conferidos.", true, this,
                    [&](const Segue &segue) { conferidos = m_Painel.ConfereDocumentos(recusa, segue); });
        if (!conferidos && !vivo.isNull()) {
            AvisaEmCaixa(Q(recusa), this);
        }
    });
    if (conferidos && !vivo.isNull()) {
        Le();
    }
}

void PainelQt::Mostra()
{
    const bool lido = m_Painel.Impedimento().empty();
    const bool comTeclado = isAncestorOf(QApplication::focusWidget());
    m_Resumo->setText(Q(m_Painel.Resumo()));
    m_Resumo->setVisible(lido);
    QStringList falhas;
    if (!lido) {
        falhas << Q(m_Painel.Impedimento());
    }
    for (const std::string &falha : m_Painel.Falhas()) {
        falhas << Q(falha);
    }
    m_Falhas->setText(falhas.join("\n"));
    m_Falhas->setVisible(!falhas.isEmpty());
    m_TentarDeNovo->setVisible(!falhas.isEmpty());
    m_Numeros->setVisible(lido);
    if (!lido) {
        Anuncia(*m_Falhas);
    }
    MostraEstados();
    MostraGrupos();
    m_Meses->Mostra(m_Painel.Meses(), m_Grupos);
    if (comTeclado && !isAncestorOf(QApplication::focusWidget())) { // it was on what is gone
        RecebeFoco();
    }
}

void PainelQt::MostraEstados()
{
    const std::vector<EstadoNoPainel> &estados = m_Painel.Estados();
    for (std::size_t n = 0; n < m_Botoes.size(); ++n) {
        if (estados.empty()) {
            m_Botoes[n]->Espera();
        } else {
            m_Botoes[n]->Mostra(estados[n]);
        }
    }
}

void PainelQt::MostraGrupos()
{
    const std::vector<GrupoNoPainel> &grupos = m_Painel.Grupos();
    m_Grupos->setVisible(!grupos.empty());
    if (grupos.empty()) {
        return;
    }
    if (m_ComandosDosGrupos == nullptr) {
        m_ComandosDosGrupos = new ComandosDeTabela(m_Grupos, m_Pedidos.Quem(), "Painel/colunas", [this] {
            return ComandosDeTabela::Cabeca{"Painel de prazos", Q(m_Painel.Resumo())};
        });
    }
    const std::vector<std::string> titulos = m_Painel.ColunasDosGrupos();
    QStringList colunas;
    for (const std::string &titulo : titulos) {
        colunas << Q(titulo);
    }
    m_Grupos->setColumnCount(static_cast<int>(colunas.size()));
    m_Grupos->setHorizontalHeaderLabels(colunas);
    m_Grupos->setRowCount(static_cast<int>(grupos.size()));
    for (int linha = 0; linha < m_Grupos->rowCount(); ++linha) {
        const GrupoNoPainel &grupo = grupos[static_cast<std::size_t>(linha)];
        int coluna = 0;
        const auto escreve = [&](const QString &texto) {
            if (m_Grupos->item(linha, coluna) == nullptr) {
                m_Grupos->setItem(linha, coluna, new QTableWidgetItem);
                m_Grupos->item(linha, coluna)
                    ->setTextAlignment(coluna == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
            }
            m_Grupos->item(linha, coluna++)->setText(texto);
        };
        escreve(Q(grupo.Nome));
        for (const std::int32_t quantos : grupo.Quantos) {
            escreve(QString::number(quantos));
        }
        escreve(QString::number(grupo.Todos));
    }
    std::vector<ComandosDeTabela::Coluna> larguras;
    for (int coluna = 0; coluna < m_Grupos->columnCount(); ++coluna) {
        int largura = m_Grupos->horizontalHeader()->sectionSizeHint(coluna);
        for (int linha = 0; linha < m_Grupos->rowCount(); ++linha) {
            largura =
                std::max(largura, m_Grupos->fontMetrics().horizontalAdvance(m_Grupos->item(linha, coluna)->text()) +
                                      MargemDoNumero);
        }
        const std::string &titulo = titulos[static_cast<std::size_t>(coluna)];
        // The first one is called by what is grouped, and is the same column all the same.
        larguras.push_back({coluna == 0 ? "Grupo" : titulo, titulo, largura});
    }
    m_ComandosDosGrupos->DefineColunas(larguras);
    if (m_Grupos->currentRow() < 0) {
        m_Grupos->setCurrentCell(0, 0);
    }
    const int vistas = std::min(m_Grupos->rowCount(), LinhasDosGrupos);
    m_Grupos->setFixedHeight(m_Grupos->horizontalHeader()->sizeHint().height() +
                             (vistas + 1) * m_Grupos->verticalHeader()->defaultSectionSize());
}

// The number in the cell that was activated.
void PainelQt::AbreGrupo()
{
    const int linha = m_Grupos->currentRow();
    const int estado = m_Grupos->currentColumn() - 1;
    if (linha < 0 || estado < 0 || estado >= static_cast<int>(Prazos::Estados().size())) {
        return;
    }
    m_Pedidos.AbreLista(m_Painel.Atras(Prazos::Estados()[static_cast<std::size_t>(estado)],
                                       &m_Painel.Grupos()[static_cast<std::size_t>(linha)]));
}

void PainelQt::SalvaTodos()
{
    ListaDePrazos lista(m_Pedidos.Sessao, {});
    std::string recusa;
    bool lida = false;
    FazNaFrente("Os prazos estão sendo lidos.", true, this,
                [&](const Segue &segue) { lida = lista.Carrega(recusa, segue) && lista.CarregaResto(recusa, segue); });
    if (!lida) {
        AvisaEmCaixa(Q(recusa), this);
    } else if (!lista.TemCalendario()) {
        InformaEmCaixa("Nenhuma aferição está por vencer: não há prazos para um calendário.", this);
    } else {
        SalvaCalendario(lista.Calendario(), this);
    }
}

} // namespace mesa
