#include "desk/windows/GraficoDeMeses.h"

#include "desk/windows/Cores.h"
#include "services/TextoQt.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int LinhasDeAltura = 9; // of text
constexpr int Folga = 2;

class BarraDoMes : public QAbstractButton {
  public:
    BarraDoMes(MesNoPainel mes, std::int32_t maior, QWidget *dono)
        : QAbstractButton(dono),
          m_Mes(std::move(mes)),
          m_Maior(maior)
    {
        setObjectName(QString("mes%1").arg(m_Mes.Mes));
        setAccessibleName(Q(m_Mes.Frase));
        setToolTip(Q(m_Mes.Frase));
        setFocusPolicy(Qt::ClickFocus);
        setCursor(Qt::PointingHandCursor);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        return {fontMetrics().horizontalAdvance("0000") + 2 * Folga, fontMetrics().height() * LinhasDeAltura};
    }
    QSize minimumSizeHint() const override
    {
        return {fontMetrics().horizontalAdvance("0") + 2 * Folga, sizeHint().height()};
    }

  protected:
    // Number, bar, month and, where a year begins, the year.
    void paintEvent(QPaintEvent *) override
    {
        QPainter pincel(this);
        const int linha = fontMetrics().height();
        const QRect base(0, linha, width(), height() - 3 * linha);
        const QColor texto = palette().color(QPalette::WindowText);
        const QColor cor =
            Legivel(palette().color(QPalette::Highlight), {palette().color(QPalette::Window)}, ContrasteDeSinal);
        if (m_Mes.Quantas > 0) {
            const int alta =
                std::max(2, static_cast<int>(static_cast<double>(base.height()) * m_Mes.Quantas / m_Maior));
            const QRect barra(Folga, base.bottom() + 1 - alta, width() - 2 * Folga, alta);
            pincel.fillRect(barra, underMouse() || isDown() ? cor.darker(115) : cor);
        }
        pincel.setPen(texto);
        pincel.drawLine(0, base.bottom() + 1, width(), base.bottom() + 1);
        const QString quantas = QString::number(m_Mes.Quantas);
        const int topo =
            base.bottom() + 1 -
            (m_Mes.Quantas == 0
                 ? 0
                 : std::max(2, static_cast<int>(static_cast<double>(base.height()) * m_Mes.Quantas / m_Maior)));
        if (fontMetrics().horizontalAdvance(quantas) <= width()) {
            pincel.drawText(QRect(0, topo - linha, width(), linha), Qt::AlignCenter, quantas);
        }
        const QString mes = Q(m_Mes.Curto);
        pincel.drawText(QRect(0, height() - 2 * linha, width(), linha), Qt::AlignCenter,
                        fontMetrics().horizontalAdvance(mes) <= width() ? mes : mes.left(1));
        if (!m_Mes.Ano.empty()) {
            const QString ano = Q(m_Mes.Ano);
            pincel.drawText(QRect(0, height() - linha, width(), linha), Qt::AlignCenter,
                            fontMetrics().horizontalAdvance(ano) <= width() ? ano : ano.right(2));
        }
        if (hasFocus()) {
            QPen pena(CorDe(Cor::Foco));
            pena.setWidth(2);
            pincel.setPen(pena);
            pincel.drawRect(rect().adjusted(1, 1, -1, -1));
        }
    }
    bool event(QEvent *evento) override
    {
        if (evento->type() == QEvent::Enter || evento->type() == QEvent::Leave) {
            update();
        }
        return QAbstractButton::event(evento);
    }
    void keyPressEvent(QKeyEvent *evento) override
    {
        if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
            click();
            return;
        }
        QAbstractButton::keyPressEvent(evento);
    }

  private:
    MesNoPainel m_Mes;
    std::int32_t m_Maior;
};

} // namespace

GraficoDeMeses::GraficoDeMeses(std::function<void(const MesNoPainel &)> abre, QWidget *dono)
    : QWidget(dono),
      m_Abre(std::move(abre)),
      m_Barras(new QHBoxLayout(this))
{
    setObjectName("graficoDeMeses");
    setAccessibleName("Aferições que vencem nos próximos 24 meses");
    m_Barras->setContentsMargins(0, 0, 0, 0);
    m_Barras->setSpacing(0);
}

void GraficoDeMeses::Mostra(const std::vector<MesNoPainel> &meses, QWidget *depoisDe)
{
    while (QLayoutItem *antiga = m_Barras->takeAt(0)) {
        antiga->widget()->hide();
        antiga->widget()->deleteLater(); // it may be the one that was pressed
        delete antiga;
    }
    std::int32_t maior = 1;
    for (const MesNoPainel &mes : meses) {
        maior = std::max(maior, mes.Quantas);
    }
    for (const MesNoPainel &mes : meses) {
        auto *barra = new BarraDoMes(mes, maior, this);
        barra->installEventFilter(this);
        connect(barra, &QAbstractButton::clicked, this, [this, mes] { m_Abre(mes); });
        m_Barras->addWidget(barra);
        setTabOrder(depoisDe, barra);
        depoisDe = barra;
    }
    if (m_Barras->count() > 0) {
        m_Barras->itemAt(0)->widget()->setFocusPolicy(Qt::StrongFocus);
    }
}

bool GraficoDeMeses::eventFilter(QObject *objeto, QEvent *evento)
{
    const int posicao = m_Barras->indexOf(qobject_cast<QWidget *>(objeto));
    if (posicao >= 0 && evento->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(evento)->key()) {
        case Qt::Key_Left:
            VaiPara(posicao - 1);
            return true;
        case Qt::Key_Right:
            VaiPara(posicao + 1);
            return true;
        case Qt::Key_Home:
            VaiPara(0);
            return true;
        case Qt::Key_End:
            VaiPara(m_Barras->count() - 1);
            return true;
        default:
            break;
        }
    }
    if (posicao >= 0 && evento->type() == QEvent::FocusIn) {
        for (int outra = 0; outra < m_Barras->count(); ++outra) {
            m_Barras->itemAt(outra)->widget()->setFocusPolicy(outra == posicao ? Qt::StrongFocus : Qt::ClickFocus);
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void GraficoDeMeses::VaiPara(int posicao)
{
    if (posicao >= 0 && posicao < m_Barras->count()) {
        m_Barras->itemAt(posicao)->widget()->setFocus(Qt::OtherFocusReason);
    }
}

} // namespace mesa
