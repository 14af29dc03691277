#include "desk/windows/Rolagem.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QPointer>
#include <QScrollBar>

#include <memory>

namespace mesa {

namespace {

// Commands of the window, which stand in a row at its end.
bool EhDeBotoes(const QLayoutItem *item)
{
    QLayout *linha = item == nullptr ? nullptr : const_cast<QLayoutItem *>(item)->layout();
    if (linha == nullptr) {
        return false;
    }
    bool algum = false;
    for (int n = 0; n < linha->count(); ++n) {
        if (QWidget *widget = linha->itemAt(n)->widget()) {
            algum = true;
            if (qobject_cast<QAbstractButton *>(widget) == nullptr) {
                return false;
            }
        } else if (linha->itemAt(n)->layout() != nullptr) {
            return false;
        }
    }
    return algum;
}

} // namespace

Rolagem::Rolagem(QWidget *conteudo, QWidget *dono) : QScrollArea(dono)
{
    setObjectName("rolagem");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(conteudo);
    conteudo->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, QWidget *agora) {
        if (agora != nullptr && widget() != nullptr && widget()->isAncestorOf(agora)) {
            ensureWidgetVisible(agora);
        }
    });
}

// The focus may leave what goes with the area, when that is no longer whole.
Rolagem::~Rolagem()
{
    disconnect(qApp, nullptr, this, nullptr);
}

QSize Rolagem::Pedida() const
{
    return widget() == nullptr ? QSize() : widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
}

QSize Rolagem::sizeHint() const
{
    return widget() == nullptr ? QScrollArea::sizeHint() : widget()->sizeHint().expandedTo(Pedida());
}

QSize Rolagem::minimumSizeHint() const
{
    constexpr int Letras = 24;
    constexpr int Linhas = 5;
    const QSize basta(Letras * fontMetrics().averageCharWidth(), Linhas * fontMetrics().height());
    return basta.boundedTo(Pedida());
}

bool Rolagem::eventFilter(QObject *objeto, QEvent *evento)
{
    const bool tratado = QScrollArea::eventFilter(objeto, evento);
    if (objeto == widget() && evento->type() == QEvent::LayoutRequest) {
        updateGeometry();
        Cresce();
    }
    return tratado;
}

void Rolagem::Cresce()
{
    QWidget *janela = parentWidget();
    if (!janela->isWindow() || !janela->isVisible() || janela->isMaximized() || widget() == nullptr) {
        return;
    }
    QSize pedida = Pedida();
    if (widget()->layout() != nullptr && widget()->layout()->hasHeightForWidth()) {
        const int largura = qMax(pedida.width(), maximumViewportSize().width());
        pedida.setHeight(qMax(pedida.height(), widget()->layout()->totalHeightForWidth(largura)));
    }
    const QSize falta = (pedida - maximumViewportSize()).expandedTo({0, 0});
    if (!falta.isNull()) {
        janela->resize(janela->size() + falta);
    }
}

Rolagem *FazRolar(QWidget &janela)
{
    auto *antes = qobject_cast<QBoxLayout *>(janela.layout());
    if (antes == nullptr || janela.findChild<Rolagem *>("rolagem", Qt::FindDirectChildrenOnly) != nullptr) {
        return nullptr;
    }
    const QPointer<QWidget> comTeclado = janela.focusWidget();
    QLayoutItem *botoes = EhDeBotoes(antes->itemAt(antes->count() - 1)) ? antes->takeAt(antes->count() - 1) : nullptr;
    auto *conteudo = new QWidget(&janela);
    conteudo->setObjectName("conteudo");
    const QMargins margens = antes->contentsMargins();
    antes->setContentsMargins(margens.left(), margens.top(), margens.right(), botoes == nullptr ? margens.bottom() : 0);
    conteudo->setLayout(antes); // which takes the widgets along
    auto *tudo = new QVBoxLayout(&janela);
    tudo->setContentsMargins(0, 0, 0, 0);
    auto *rolagem = new Rolagem(conteudo, &janela);
    tudo->addWidget(rolagem, 1);
    if (botoes != nullptr) {
        auto *linha = static_cast<QBoxLayout *>(botoes->layout());
        linha->setContentsMargins(margens.left(), 0, margens.right(), margens.bottom());
        tudo->addLayout(linha);
    }
    conteudo->show();
    rolagem->show();
    if (!comTeclado.isNull()) {
        comTeclado->setFocus();
    }
    return rolagem;
}

} // namespace mesa
