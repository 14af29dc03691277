#include "desk/windows/TextoDoManual.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mesa {

namespace {

constexpr double PassoDaLetra = 1.15;
constexpr double MenorLetra = 5;

QString SemFigura(const QTextFormat &formato)
{
    const QString texto = formato.stringProperty(QTextFormat::ImageAltText);
    return texto.isEmpty() ? QString("Falta uma figura.") : "Falta a figura: " + texto;
}

} // namespace

void *FigurasDoManual::qt_metacast(const char *nome)
{
    if (std::strcmp(nome, qobject_interface_iid<QTextObjectInterface *>()) == 0) {
        return static_cast<QTextObjectInterface *>(this);
    }
    return QObject::qt_metacast(nome);
}

const QImage &FigurasDoManual::Figura(const QString &nome)
{
    if (!m_Figuras.contains(nome)) {
        // One with a table of few colours would be made smaller with these alone.
        m_Figuras.insert(nome, QImage(m_Pasta + "/" + nome).convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }
    return m_Figuras[nome];
}

QSizeF FigurasDoManual::intrinsicSize(QTextDocument *documento, int, const QTextFormat &formato)
{
    const QImage &figura = Figura(formato.toImageFormat().name());
    QSizeF tamanho = figura.size() * m_Fator;
    if (figura.isNull()) {
        const QFontMetricsF letras(documento->defaultFont());
        tamanho = {letras.horizontalAdvance(SemFigura(formato)) + letras.height(), 2 * letras.height()};
    }
    const qreal cabe = documento->textWidth() - 2 * documento->documentMargin();
    return cabe > 0 && tamanho.width() > cabe ? tamanho * (cabe / tamanho.width()) : tamanho;
}

void FigurasDoManual::drawObject(QPainter *pintor, const QRectF &lugar, QTextDocument *documento, int,
                                 const QTextFormat &formato)
{
    const QString nome = formato.toImageFormat().name();
    const QImage &figura = Figura(nome);
    if (figura.isNull()) {
        pintor->setFont(documento->defaultFont());
        pintor->drawRect(lugar);
        pintor->drawText(lugar, Qt::AlignCenter | Qt::TextWordWrap, SemFigura(formato));
        return;
    }
    const qreal pontos = pintor->device()->devicePixelRatioF();
    const QSize tamanho = (lugar.size() * pontos).toSize();
    QPixmap &desenhada = m_Desenhadas[nome];
    if (desenhada.size() != tamanho) {
        desenhada = QPixmap::fromImage(figura.scaled(tamanho, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    pintor->drawPixmap(lugar, desenhada, desenhada.rect());
}

TextoDoManual::TextoDoManual(const QString &markdown, const QString &figuras, QWidget *dono)
    : QTextBrowser(dono),
      m_Figuras(new FigurasDoManual(figuras, this)),
      m_Letra(font().pointSizeF())
{
    setOpenLinks(false);
    setTabChangesFocus(true);
    document()->documentLayout()->registerHandler(QTextFormat::ImageObject, m_Figuras);
    setMarkdown(markdown);
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { m_Lugar = -1; });
}

int TextoDoManual::EmCima() const
{
    const int margem = static_cast<int>(std::ceil(document()->documentMargin()));
    return cursorForPosition({margem, margem}).position();
}

void TextoDoManual::PoeEmCima(int posicao)
{
    QTextCursor cursor(document());
    cursor.setPosition(std::clamp(posicao, 0, std::max(0, document()->characterCount() - 1)));
    if (!textCursor().hasSelection()) { // the keyboard goes on from there
        setTextCursor(cursor);
    }
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(cursor).top());
    m_Lugar = posicao;
}

void TextoDoManual::Descobre(int posicao, int tamanho)
{
    QTextCursor cursor(document());
    cursor.setPosition(posicao);
    cursor.setPosition(posicao + tamanho, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    const QRect onde = cursorRect(cursor);
    if (onde.top() < 0 || onde.bottom() > viewport()->height()) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() + onde.top() - viewport()->height() / 3);
    }
    m_Lugar = EmCima();
}

void TextoDoManual::DefineZoom(int passos)
{
    const int lugar = EmCima();
    const double fator = std::pow(PassoDaLetra, passos);
    m_Figuras->DefineFator(fator);
    QFont letra = font();
    letra.setPointSizeF(std::max(MenorLetra, m_Letra * fator));
    setFont(letra);
    document()->setDefaultFont(letra);
    PoeEmCima(lugar);
}

void TextoDoManual::resizeEvent(QResizeEvent *evento)
{
    const int lugar = m_Lugar >= 0 ? m_Lugar : EmCima();
    QTextBrowser::resizeEvent(evento);
    PoeEmCima(lugar);
}

} // namespace mesa
