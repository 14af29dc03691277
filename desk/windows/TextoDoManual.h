#pragma once

#include <QHash>
#include <QPixmap>
#include <QTextBrowser>
#include <QTextObjectInterface>

namespace mesa {

// The pictures of a text: no wider than the text is, drawn for the place that they have; one that is not there is its
// words in a frame.
class FigurasDoManual : public QObject, public QTextObjectInterface {
  public:
    FigurasDoManual(QString pasta, QObject *dono) : QObject(dono), m_Pasta(std::move(pasta)) {}

    // By how much a picture grows with the letters, as far as there is room.
    void DefineFator(double fator) { m_Fator = fator; }

    QSizeF intrinsicSize(QTextDocument *documento, int posicao, const QTextFormat &formato) override;
    void drawObject(QPainter *pintor, const QRectF &lugar, QTextDocument *documento, int posicao,
                    const QTextFormat &formato) override;
    // By this the layout asks whether it can draw.
    void *qt_metacast(const char *nome) override;

  private:
    const QImage &Figura(const QString &nome);

    QString m_Pasta;
    double m_Fator = 1;
    QHash<QString, QImage> m_Figuras;
    QHash<QString, QPixmap> m_Desenhadas; // in the size in which they were drawn last
};

// The text of the manual, which keeps the place that is being read when it gets another width.
class TextoDoManual : public QTextBrowser {
  public:
    TextoDoManual(const QString &markdown, const QString &figuras, QWidget *dono);

    // What is read: the first place that is seen.
    int EmCima() const;
    void PoeEmCima(int posicao);
    // Scrolls no further than it takes to see it.
    void Descobre(int posicao, int tamanho);
    void DefineZoom(int passos);

  protected:
    void resizeEvent(QResizeEvent *evento) override;

  private:
    FigurasDoManual *m_Figuras;
    qreal m_Letra;
    int m_Lugar = 0; // that was put at the top, while nobody has scrolled
};

} // namespace mesa
