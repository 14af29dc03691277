#include "desk/windows/Dica.h"

#include "desk/windows/Acessibilidade.h"

#include <QAccessibleWidget>
#include <QEvent>

#include <algorithm>

namespace mesa {

namespace {

constexpr const char *Nome = "dica";
constexpr int TempoDeLeitura = 6000; // ms

// Announced as what it is.
class DicaAcessivel : public QAccessibleWidget {
  public:
    explicit DicaAcessivel(QLabel *dica) : QAccessibleWidget(dica, QAccessible::AlertMessage) {}

    QString text(QAccessible::Text qual) const override
    {
        return qual == QAccessible::Name ? static_cast<QLabel *>(widget())->text() : QAccessibleWidget::text(qual);
    }
};

QAccessibleInterface *FazAcessivel(const QString &, QObject *objeto)
{
    auto *dica = dynamic_cast<Dica *>(objeto);
    return dica == nullptr ? nullptr : new DicaAcessivel(dica);
}

} // namespace

Dica::Dica(QWidget *janela) : QLabel(janela)
{
    setObjectName(Nome);
    setTextFormat(Qt::PlainText);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    setFrameShape(QFrame::Box);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_Prazo.setSingleShot(true);
    m_Prazo.setInterval(TempoDeLeitura);
    connect(&m_Prazo, &QTimer::timeout, this, [this] { Vai(); });
}

void Dica::Mostra(QWidget &campo, const QString &texto, bool urgente)
{
    static const bool conhecida = [] {
        QAccessible::installFactory(FazAcessivel);
        return true;
    }();
    Q_UNUSED(conhecida)
    auto *dica = dynamic_cast<Dica *>(campo.window()->findChild<QLabel *>(Nome, Qt::FindDirectChildrenOnly));
    if (texto.isEmpty()) {
        if (dica != nullptr) {
            dica->Vai();
        }
        return;
    }
    if (dica == nullptr) {
        dica = new Dica(campo.window());
    }
    dica->setText(texto);
    dica->Fica(campo);
    if (urgente) {
        Anuncia(*dica);
    }
}

// Below the field, or above it where the window ends or its list is open.
void Dica::Fica(QWidget &campo)
{
    if (m_Campo != &campo) {
        Vai();
        m_Campo = &campo;
        campo.installEventFilter(this);
    }
    setMargin(fontMetrics().height() / 4);
    adjustSize();
    const QWidget &janela = *parentWidget();
    QPoint lugar = campo.mapTo(&janela, QPoint(0, campo.height()));
    if (lugar.y() + height() > janela.height() || campo.property("listaAberta").toBool()) {
        lugar.ry() -= campo.height() + height();
    }
    lugar.rx() = std::clamp(lugar.x(), 0, std::max(0, janela.width() - width()));
    move(lugar);
    show();
    raise();
    m_Prazo.start();
}

void Dica::Vai()
{
    if (!m_Campo.isNull()) {
        m_Campo->removeEventFilter(this);
        m_Campo.clear();
    }
    m_Prazo.stop();
    hide();
}

bool Dica::eventFilter(QObject *objeto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::FocusOut:
    case QEvent::Hide:
        Vai();
        break;
    default:
        break;
    }
    return QLabel::eventFilter(objeto, evento);
}

} // namespace mesa
