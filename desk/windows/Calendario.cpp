#include "desk/windows/Calendario.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QScreen>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace mesa {

namespace {

void Nomeia(const QCalendarWidget &meses, const char *parte, const QString &nome)
{
    if (auto *widget = meses.findChild<QWidget *>(parte)) {
        widget->setAccessibleName(nome);
        widget->setToolTip(nome);
    }
}

} // namespace

bool Calendario::Pede(const QKeyEvent &tecla)
{
    return (tecla.key() == Qt::Key_F4 && tecla.modifiers() == Qt::NoModifier) ||
           (tecla.key() == Qt::Key_Down && (tecla.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier);
}

Calendario::Calendario(QWidget &campo, const QDate &dia, const EscolheDia &escolhe) : QFrame(&campo, Qt::Popup)
{
    setObjectName("calendario");
    setAccessibleName("Calendário");
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(QFrame::StyledPanel);
    auto *meses = new QCalendarWidget(this);
    meses->setObjectName("meses");
    meses->setAccessibleName("Dias do mês");
    meses->setLocale(QLocale(QLocale::Portuguese, QLocale::Brazil));
    meses->setFirstDayOfWeek(Qt::Sunday);
    meses->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    meses->setDateEditEnabled(false);
    for (const Qt::DayOfWeek fim : {Qt::Saturday, Qt::Sunday}) { // in the colour of all text, whatever the palette
        meses->setWeekdayTextFormat(fim, QTextCharFormat());
    }
    meses->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    meses->setSelectedDate(dia);
    Nomeia(*meses, "qt_calendar_prevmonth", "Mês anterior");
    Nomeia(*meses, "qt_calendar_nextmonth", "Próximo mês");
    Nomeia(*meses, "qt_calendar_monthbutton", "Mês");
    Nomeia(*meses, "qt_calendar_yearbutton", "Ano");
    Nomeia(*meses, "qt_calendar_yearedit", "Ano");
    auto *tudo = new QVBoxLayout(this);
    tudo->setContentsMargins(1, 1, 1, 1);
    tudo->addWidget(meses);
    setFocusProxy(meses);
    const auto toma = [this, escolhe](const QDate &escolhido) {
        const EscolheDia diz = escolhe; // what it brings about may end the field, and this with it
        close();
        diz(escolhido);
    };
    connect(meses, &QCalendarWidget::activated, this, toma); // Enter
    connect(meses, &QCalendarWidget::clicked, this, toma);
}

void Calendario::Abre(QWidget &campo, const QDate &dia, const EscolheDia &escolhe)
{
    auto *calendario = new Calendario(campo, dia, escolhe);
    calendario->adjustSize();
    const QRect tela = campo.screen()->availableGeometry();
    QPoint lugar = campo.mapToGlobal(QPoint(0, campo.height()));
    if (lugar.y() + calendario->height() > tela.bottom()) {
        lugar.ry() -= campo.height() + calendario->height();
    }
    lugar.rx() = std::clamp(lugar.x(), tela.left(), std::max(tela.left(), tela.right() - calendario->width()));
    lugar.ry() = std::max(lugar.y(), tela.top());
    calendario->move(lugar);
    calendario->show();
    calendario->setFocus(Qt::PopupFocusReason);
}

BotaoDeCalendario::BotaoDeCalendario(QLineEdit *campo, std::function<QDate()> dia, EscolheDia escolhe)
    : QToolButton(campo),
      m_Campo(campo),
      m_Dia(std::move(dia)),
      m_Escolhe(std::move(escolhe))
{
    setObjectName("abreCalendario");
    setAccessibleName("Abrir o calendário");
    setToolTip("Calendário (F4)");
    setArrowType(Qt::DownArrow);
    setAutoRaise(true);
    setCursor(Qt::ArrowCursor);
    setFocusPolicy(Qt::NoFocus); // the field's own keys open it, and Tab goes from field to field
    connect(this, &QToolButton::clicked, this, [this] { Abre(); });
    campo->installEventFilter(this);
    Cabe();
}

// As high as a letter.
QSize BotaoDeCalendario::sizeHint() const
{
    const int lado = m_Campo->fontMetrics().height();
    return {lado, lado};
}

void BotaoDeCalendario::Cabe()
{
    const bool digita = !m_Campo->isReadOnly();
    const int lado = sizeHint().width();
    m_Campo->setTextMargins(0, 0, digita ? lado : 0, 0);
    const int folga = (m_Campo->height() - lado) / 2;
    setGeometry(m_Campo->width() - lado - folga, folga, lado, lado);
    setVisible(digita);
}

void BotaoDeCalendario::Abre()
{
    if (m_Campo->isReadOnly() || !m_Campo->isEnabled()) {
        return;
    }
    m_Campo->setFocus(Qt::OtherFocusReason);
    Calendario::Abre(*m_Campo, m_Dia(), m_Escolhe);
}

bool BotaoDeCalendario::eventFilter(QObject *objeto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::Resize:
    case QEvent::ReadOnlyChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
        Cabe();
        break;
    case QEvent::KeyPress:
        if (Calendario::Pede(*static_cast<QKeyEvent *>(evento))) {
            Abre();
            return true;
        }
        break;
    default:
        break;
    }
    return QToolButton::eventFilter(objeto, evento);
}

CampoDeDia::CampoDeDia(const QDate &dia, QWidget *dono) : QDateEdit(dia, dono)
{
    setDisplayFormat("dd/MM/yyyy");
    setCalendarPopup(true); // is drawn so; the keyboard does not open that one
}

void CampoDeDia::Abre()
{
    setFocus(Qt::OtherFocusReason);
    Calendario::Abre(*this, date(), [this](const QDate &dia) { setDate(dia); });
}

void CampoDeDia::keyPressEvent(QKeyEvent *evento)
{
    if (Calendario::Pede(*evento)) {
        Abre();
    } else {
        QDateEdit::keyPressEvent(evento);
    }
}

void CampoDeDia::mousePressEvent(QMouseEvent *evento)
{
    QStyleOptionComboBox opcao;
    opcao.initFrom(this);
    opcao.editable = true;
    opcao.subControls = QStyle::SC_All;
    const auto onde = style()->hitTestComplexControl(QStyle::CC_ComboBox, &opcao, evento->position().toPoint(), this);
    if (onde == QStyle::SC_ComboBoxArrow) {
        Abre();
    } else {
        QDateEdit::mousePressEvent(evento);
    }
}

} // namespace mesa
