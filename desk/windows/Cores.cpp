#include "desk/windows/Cores.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mesa {

namespace {

constexpr const char *NomeDoSeguidor = "seguidorDaPaleta";
constexpr double Passo = 0.01; // of lightness
constexpr int SombraClara = 108;
constexpr int SombraEscura = 140;

// How much light a channel gives, as the eye takes it.
double Luz(double canal)
{
    return canal <= 0.04045 ? canal / 12.92 : std::pow((canal + 0.055) / 1.055, 2.4);
}

double Luminancia(const QColor &cor)
{
    return 0.2126 * Luz(cor.redF()) + 0.7152 * Luz(cor.greenF()) + 0.0722 * Luz(cor.blueF());
}

// What a text may stand on, in a window and in a field.
QColor ComoTexto(const char *cor, const QPalette &paleta)
{
    return Legivel(QColor(cor), {paleta.color(QPalette::Window), paleta.color(QPalette::Base),
                                 paleta.color(QPalette::AlternateBase)});
}

class SeguidorDaPaleta : public QObject {
  public:
    SeguidorDaPaleta(QWidget &widget, std::function<void()> faz) : QObject(&widget), m_Faz(std::move(faz))
    {
        setObjectName(NomeDoSeguidor);
        widget.installEventFilter(this);
        Faz();
    }

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (evento->type() == QEvent::PaletteChange) {
            Faz();
        }
        return QObject::eventFilter(objeto, evento);
    }

  private:
    // What it does may itself change the widget's palette.
    void Faz()
    {
        if (!m_Fazendo) {
            m_Fazendo = true;
            m_Faz();
            m_Fazendo = false;
        }
    }

    std::function<void()> m_Faz;
    bool m_Fazendo = false;
};

} // namespace

double Contraste(const QColor &um, const QColor &outro)
{
    const auto [menor, maior] = std::minmax({Luminancia(um), Luminancia(outro)});
    return (maior + 0.05) / (menor + 0.05);
}

QColor Legivel(const QColor &cor, std::initializer_list<QColor> fundos, double minimo)
{
    const auto pior = [&](const QColor &tentada) {
        double menor = Contraste(Qt::black, Qt::white);
        for (const QColor &fundo : fundos) {
            menor = std::min(menor, Contraste(tentada, fundo));
        }
        return menor;
    };
    float matiz = 0;
    float saturacao = 0;
    float luz = 0;
    cor.getHslF(&matiz, &saturacao, &luz);
    // The nearest that will do, to whichever side; where none does, the better of the two ends.
    for (double distancia = 0; distancia <= 1; distancia += Passo) {
        for (const double tentada : {luz - distancia, luz + distancia}) {
            const QColor outra =
                QColor::fromHslF(matiz, saturacao, static_cast<float>(std::clamp(tentada, 0.0, 1.0))).toRgb();
            if (pior(outra) >= minimo) {
                return outra;
            }
        }
    }
    return pior(Qt::black) > pior(Qt::white) ? Qt::black : Qt::white;
}

bool EhEscura(const QPalette &paleta)
{
    return Luminancia(paleta.color(QPalette::Window)) < Luminancia(paleta.color(QPalette::WindowText));
}

QColor CorDe(Cor cor, const QPalette &paleta)
{
    const bool escura = EhEscura(paleta);
    switch (cor) {
    case Cor::Erro:
        return ComoTexto(escura ? "#ff8a8a" : "#a4161a", paleta);
    case Cor::Aviso:
        return ComoTexto(escura ? "#ffc46b" : "#8a4b00", paleta);
    case Cor::Amostra:
        return ComoTexto(escura ? "#ffa26b" : "#9a3412", paleta);
    case Cor::Area:
        return Legivel(paleta.color(QPalette::Window).darker(escura ? SombraEscura : SombraClara),
                       {paleta.color(QPalette::WindowText)});
    case Cor::Achado:
        return Legivel(escura ? "#6b5200" : "#ffe08a", {paleta.color(QPalette::Text)});
    case Cor::Foco:
        break;
    }
    return Legivel(paleta.color(QPalette::Highlight), {paleta.color(QPalette::Window), paleta.color(QPalette::Base)},
                   ContrasteDeSinal);
}

QPalette PaletaDePapel()
{
    QPalette papel(Qt::black, Qt::white, Qt::lightGray, Qt::darkGray, Qt::gray, Qt::black, Qt::white, Qt::white,
                   Qt::white);
    papel.setColor(QPalette::Highlight, QColor("#1d5fa8"));
    papel.setColor(QPalette::HighlightedText, Qt::white);
    papel.setColor(QPalette::AlternateBase, QColor("#f0f0f0"));
    return papel;
}

void SeguePaleta(QWidget &widget, const std::function<void()> &faz)
{
    delete widget.findChild<QObject *>(NomeDoSeguidor, Qt::FindDirectChildrenOnly);
    new SeguidorDaPaleta(widget, faz);
}

namespace {

QString NomeDa(Cor cor)
{
    switch (cor) {
    case Cor::Erro:
        return "Erro";
    case Cor::Aviso:
        return "Aviso";
    case Cor::Amostra:
        return "Amostra";
    default:
        return {}; // no text has it
    }
}

} // namespace

void Colore(QWidget &widget, Cor cor)
{
    widget.setAccessibleDescription(NomeDa(cor));
    SeguePaleta(widget, [alvo = &widget, cor] {
        QPalette cores;
        cores.setColor(QPalette::WindowText, CorDe(cor));
        alvo->setPalette(cores);
    });
}

} // namespace mesa
