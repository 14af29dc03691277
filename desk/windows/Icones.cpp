#include "desk/windows/Icones.h"

#include "desk/windows/Cores.h"

#include <QFile>
#include <QIconEngine>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <utility>

namespace mesa {

namespace {

constexpr double ForcaDoDesabilitado = 0.4;

QString Arquivo(const QString &nome)
{
    return ":/icones/" + nome + ".svg";
}

// The drawing with each of its colours as it can be seen, or with the one of what is selected.
QByteArray Desenho(const QString &nome, QIcon::Mode modo)
{
    static const QRegularExpression cor("#[0-9a-fA-F]{6}");
    QFile arquivo(Arquivo(nome));
    if (!arquivo.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QPalette paleta = QGuiApplication::palette();
    const QString original = QString::fromUtf8(arquivo.readAll());
    QString recolorido;
    qsizetype ate = 0;
    for (auto achadas = cor.globalMatch(original); achadas.hasNext();) {
        const QRegularExpressionMatch achada = achadas.next();
        const QColor vista =
            modo == QIcon::Selected
                ? paleta.color(QPalette::HighlightedText)
                : Legivel(QColor(achada.captured()), {paleta.color(QPalette::Window), paleta.color(QPalette::Button),
                                                      paleta.color(QPalette::Base)});
        recolorido += original.mid(ate, achada.capturedStart() - ate) + vista.name();
        ate = achada.capturedEnd();
    }
    return (recolorido + original.mid(ate)).toUtf8();
}

class MotorDeIcone : public QIconEngine {
  public:
    explicit MotorDeIcone(QString nome) : m_Nome(std::move(nome)) {}

    void paint(QPainter *pincel, const QRect &lugar, QIcon::Mode modo, QIcon::State) override
    {
        QSvgRenderer desenho(Desenho(m_Nome, modo));
        pincel->save();
        if (modo == QIcon::Disabled) {
            pincel->setOpacity(pincel->opacity() * ForcaDoDesabilitado);
        }
        desenho.render(pincel, lugar);
        pincel->restore();
    }
    QPixmap pixmap(const QSize &tamanho, QIcon::Mode modo, QIcon::State estado) override
    {
        QPixmap imagem(tamanho);
        imagem.fill(Qt::transparent);
        QPainter pincel(&imagem);
        paint(&pincel, imagem.rect(), modo, estado);
        return imagem;
    }
    QIconEngine *clone() const override { return new MotorDeIcone(*this); }
    QString key() const override { return "mesa"; }
    QString iconName() override { return m_Nome; }

  private:
    QString m_Nome;
};

} // namespace

bool HaIcone(const QString &nome)
{
    return QFile::exists(Arquivo(nome));
}

QIcon Icone(const QString &nome)
{
    return HaIcone(nome) ? QIcon(new MotorDeIcone(nome)) : QIcon();
}

void PoeIcone(QLabel &rotulo, const QString &nome, int lado)
{
    SeguePaleta(rotulo, [alvo = &rotulo, nome, lado] {
        alvo->setPixmap(Icone(nome).pixmap(QSize(lado, lado), alvo->devicePixelRatio()));
    });
}

} // namespace mesa
