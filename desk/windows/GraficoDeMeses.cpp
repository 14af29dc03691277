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
constexpr int FolgaDaBarra = 2;

} // namespace

class GraficoDeMeses::Barra : public QAbstractButton {
  public:
    explicit Barra(QWidget *dono) : QAbstractButton(dono)
    {
        setFocusPolicy(Qt::ClickFocus);
        setCursor(Qt::PointingHandCursor);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    // maior: the most of all months.
    void Mostra(const MesNoPainel &mes, std::int32_t maior)
    {
        m_Mes = mes;
        m_Maior = maior;
        m_Contada = true;
        setObjectName(QString("mes%1").arg(mes.Mes));
        setAccessibleName(Q(mes.Frase));
        setToolTip(Q(mes.Frase));
        update();
    }
    void Espera()
    {
        m_Contada = false;
        const QString frase = Q(NomeDoMes(m_Mes.Mes)) + ": contando";
        setAccessibleName(frase);
        setToolTip(frase);
        update();
    }
    const MesNoPainel &Mes() const { return m_Mes; }

    QSize sizeHint() const override
    {
        return {fontMetrics().horizontalAdvance("0000") + 2 * FolgaDaBarra, fontMetrics().height() * LinhasDeAltura};
    }
    QSize minimumSizeHint() const override
    {
        return {fontMetrics().horizontalAdvance("0") + 2 * FolgaDaBarra, sizeHint().height()};
    }

  protected:
    // Number, bar, month and, where a year begins, the year.
    void paintEvent(QPaintEvent *) override
    {
        QPainter pincel(this);
        const int linha = fontMetrics().height();
        const int chao = height() - 2 * linha;
        const int alta =
            m_Contada && m_Mes.Quantas > 0
                ? std::max(2, static_cast<int>(static_cast<double>(chao - linha) * m_Mes.Quantas / m_Maior))
                : 0;
        const QColor cor =
            Legivel(palette().color(QPalette::Highlight), {palette().color(QPalette::Window)}, ContrasteDeSinal);
        pincel.fillRect(QRect(FolgaDaBarra, chao - alta, width() - 2 * FolgaDaBarra, alta), cor);
        pincel.setPen(palette().color(QPalette::WindowText));
        pincel.drawLine(0, chao, width(), chao);
        const auto escreve = [&](int topo, const QString &texto, const QString &curto) {
            pincel.drawText(QRect(0, topo, width(), linha), Qt::AlignCenter,
                            fontMetrics().horizontalAdvance(texto) <= width() ? texto : curto);
        };
        if (m_Contada) {
            escreve(chao - alta - linha, QString::number(m_Mes.Quantas), "");
        }
        const QString mes = Q(m_Mes.Curto);
        const QString ano = Q(m_Mes.Ano);
        escreve(chao, mes, mes.left(1));
        escreve(chao + linha, ano, ano.right(2));
        if (hasFocus()) {
            QPen pena(CorDe(Cor::Foco));
            pena.setWidth(2);
            pincel.setPen(pena);
            pincel.drawRect(rect().adjusted(1, 1, -1, -1));
        }
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
    std::int32_t m_Maior = 1;
    bool m_Contada = false;
};

GraficoDeMeses::GraficoDeMeses(std::function<void(const MesNoPainel &)> abre, QWidget *dono)
    : QWidget(dono),
      m_Abre(std::move(abre)),
      m_Barras(new QHBoxLayout(this))
{
    setObjectName("graficoDeMeses");
    setAccessibleName("Aferições que vencem nos próximos 24 meses");
    m_Barras->setContentsMargins(0, 0, 0, 0);
    m_Barras->setSpacing(0);
    m_Barras->addStrut(fontMetrics().height() * LinhasDeAltura); // before there are any
}

void GraficoDeMeses::Mostra(const std::vector<MesNoPainel> &meses, QWidget *depoisDe)
{
    std::int32_t maior = 1;
    for (const MesNoPainel &mes : meses) {
        maior = std::max(maior, mes.Quantas);
    }
    for (std::size_t n = 0; n < meses.size(); ++n) {
        if (n == m_DosMeses.size()) {
            auto *barra = new Barra(this);
            barra->installEventFilter(this);
            connect(barra, &QAbstractButton::clicked, this, [this, barra] { m_Abre(MesNoPainel(barra->Mes())); });
            m_Barras->addWidget(barra);
            setTabOrder(n == 0 ? depoisDe : m_DosMeses.back(), barra);
            barra->setFocusPolicy(n == 0 ? Qt::StrongFocus : Qt::ClickFocus);
            m_DosMeses.push_back(barra);
        }
        m_DosMeses[n]->Mostra(meses[n], maior);
    }
}

void GraficoDeMeses::Espera()
{
    for (Barra *barra : m_DosMeses) {
        barra->Espera();
    }
}

bool GraficoDeMeses::eventFilter(QObject *objeto, QEvent *evento)
{
    const auto posicao = static_cast<int>(std::ranges::find(m_DosMeses, objeto) - m_DosMeses.begin());
    const auto quantas = static_cast<int>(m_DosMeses.size());
    if (posicao < quantas && evento->type() == QEvent::KeyPress) {
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
            VaiPara(quantas - 1);
            return true;
        default:
            break;
        }
    }
    if (posicao < quantas && evento->type() == QEvent::FocusIn) {
        for (Barra *outra : m_DosMeses) {
            outra->setFocusPolicy(outra == objeto ? Qt::StrongFocus : Qt::ClickFocus);
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void GraficoDeMeses::VaiPara(int posicao)
{
    if (posicao >= 0 && posicao < static_cast<int>(m_DosMeses.size())) {
        m_DosMeses[static_cast<std::size_t>(posicao)]->setFocus(Qt::OtherFocusReason);
    }
}

} // namespace mesa
