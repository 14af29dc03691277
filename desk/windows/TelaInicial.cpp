#include "desk/windows/TelaInicial.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/Rolagem.h"
#include "services/TextoQt.h"

#include <QCommandLinkButton>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

TelaInicial::TelaInicial(Pedidos pedidos, QWidget *dono)
    : QWidget(dono),
      m_Pedidos(std::move(pedidos)),
      m_Acoes(new QVBoxLayout)
{
    setObjectName("Inicio");
    setWindowTitle("Início");
    setAccessibleName("Início");
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    auto *conteudo = new QWidget(this);
    conteudo->setObjectName("conteudo");
    m_Quem = FazTexto("quem", "", conteudo);
    QFont letra = m_Quem->font();
    letra.setPointSizeF(letra.pointSizeF() * 1.25);
    letra.setBold(true);
    m_Quem->setFont(letra);
    m_Impedimento = FazTexto("impedimento", "", conteudo);
    m_Painel = new PainelQt(m_Pedidos.Painel, conteudo);
    m_Lado = new QWidget(conteudo);
    m_Lado->setObjectName("lado");
    QLabel *titulo = FazTexto("tituloDosRecentes", "Equipamentos abertos há pouco", m_Lado);
    m_SemRecentes = FazTexto("semRecentes", "Os equipamentos que você abrir aparecem aqui.", m_Lado);
    m_Recentes = new QTreeWidget(m_Lado);
    m_Recentes->setObjectName("recentes");
    m_Recentes->setAccessibleName("Equipamentos abertos há pouco");
    m_Recentes->setRootIsDecorated(false);
    m_Recentes->setAllColumnsShowFocus(true);
    m_Recentes->setUniformRowHeights(true);
    QStringList colunas;
    for (const std::string &coluna : PaginaInicial::Colunas()) {
        colunas << Q(coluna);
    }
    m_Recentes->setHeaderLabels(colunas);
    m_Abrir = FazBotao("abrir", "Ab&rir", m_Lado);
    connect(m_Abrir, &QPushButton::clicked, this, [this] { AbreEscolhido(); });
    connect(m_Recentes, &QTreeWidget::itemActivated, this, [this] { AbreEscolhido(); });
    auto *lado = new QVBoxLayout(m_Lado);
    lado->setContentsMargins(0, 0, 0, 0);
    lado->addWidget(titulo);
    lado->addWidget(m_SemRecentes);
    lado->addWidget(m_Recentes, 100);
    lado->addLayout(EmLinha({m_Abrir}));
    lado->addStretch(1); // what is left when there is nothing to list
    auto *colunasDaPagina = new QHBoxLayout;
    colunasDaPagina->addLayout(m_Acoes, 2);
    colunasDaPagina->addWidget(m_Lado, 3);
    auto *tudo = new QVBoxLayout(conteudo);
    tudo->addWidget(m_Quem);
    tudo->addWidget(m_Impedimento);
    tudo->addWidget(m_Painel);
    tudo->addLayout(colunasDaPagina, 1);
    auto *pagina = new QVBoxLayout(this);
    pagina->setContentsMargins(0, 0, 0, 0);
    pagina->addWidget(new Rolagem(conteudo, this));
}

void TelaInicial::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    if (!evento->spontaneous()) {
        Mostra();
    }
}

void TelaInicial::focusInEvent(QFocusEvent *evento)
{
    QWidget::focusInEvent(evento);
    if (m_Painel->isVisibleTo(this)) {
        m_Painel->setFocus(evento->reason());
    } else if (QLayoutItem *primeira = m_Acoes->itemAt(0); primeira != nullptr && primeira->widget() != nullptr) {
        primeira->widget()->setFocus(evento->reason());
    }
}

void TelaInicial::VaiAoPainel()
{
    m_Painel->setFocus(Qt::ShortcutFocusReason);
}

void TelaInicial::Mostra()
{
    const std::optional<PaginaInicial> lida = m_Pedidos.Pagina();
    if (!lida) {
        return;
    }
    const PaginaInicial &pagina = *lida;
    while (QLayoutItem *antiga = m_Acoes->takeAt(0)) {
        delete antiga->widget();
        delete antiga;
    }
    m_Quem->setText(Q(pagina.Quem()));
    m_Impedimento->setText(Q(pagina.Impedimento()));
    m_Impedimento->setVisible(!pagina.Impedimento().empty());
    QWidget *anterior = nullptr;
    for (const AcaoInicial &acao : pagina.Acoes()) {
        const QString atalho = QKeySequence(Q(acao.Atalho)).toString(QKeySequence::NativeText);
        auto *botao = new QCommandLinkButton(Q(acao.Titulo),
                                             Q(acao.Explicacao) + (atalho.isEmpty() ? QString() : " (" + atalho + ")"),
                                             m_Lado->parentWidget());
        botao->setObjectName("inicio_" + Q(acao.Nome));
        botao->setIcon(Icone(acao.Nome == "consultaAutuacao" ? "consulta" : "equipamentos"));
        connect(botao, &QPushButton::clicked, this, [this, nome = acao.Nome] { m_Pedidos.Faz(nome); });
        m_Acoes->addWidget(botao);
        if (anterior != nullptr) {
            setTabOrder(anterior, botao);
        }
        anterior = botao;
    }
    m_Acoes->addStretch(1);
    if (anterior != nullptr) {
        setTabOrder(anterior, m_Recentes);
        setTabOrder(m_Recentes, m_Abrir);
    }
    m_Mostrados = pagina.Recentes();
    m_Lado->setVisible(pagina.Impedimento().empty());
    m_Painel->setVisible(pagina.Impedimento().empty());
    m_Painel->LeAoAparecer();
    MostraRecentes();
}

void TelaInicial::MostraRecentes()
{
    m_Recentes->clear();
    for (const RecenteMostrado &mostrado : m_Mostrados) {
        QStringList celulas;
        for (const std::string &celula : mostrado.Celulas) {
            celulas << Q(celula);
        }
        m_Recentes->addTopLevelItem(new QTreeWidgetItem(celulas));
    }
    const bool algum = !m_Mostrados.empty();
    if (algum) {
        m_Recentes->setCurrentItem(m_Recentes->topLevelItem(0));
    }
    for (int coluna = 0; coluna < m_Recentes->columnCount(); ++coluna) {
        m_Recentes->resizeColumnToContents(coluna);
    }
    m_SemRecentes->setVisible(!algum);
    m_Recentes->setVisible(algum);
    m_Abrir->setVisible(algum);
}

void TelaInicial::AbreEscolhido()
{
    const int linha = m_Recentes->indexOfTopLevelItem(m_Recentes->currentItem());
    if (linha >= 0) {
        m_Pedidos.Abre(EquipamentoRecente(m_Mostrados[static_cast<std::size_t>(linha)].Qual)); // the page may go
    }
}

} // namespace mesa
