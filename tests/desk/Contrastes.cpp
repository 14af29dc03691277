#include "tests/desk/Contrastes.h"

#include "desk/windows/Cores.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QToolButton>

#include <algorithm>
#include <optional>

using namespace mesa;

namespace {

using Papel = QPalette::ColorRole;

// The colour that most of it has.
QColor Fundo(const QImage &desenho)
{
    QHash<QRgb, int> quantos;
    QRgb mais = 0;
    for (int y = 0; y < desenho.height(); ++y) {
        for (int x = 0; x < desenho.width(); ++x) {
            const QRgb ponto = desenho.pixel(x, y);
            if (++quantos[ponto] > quantos[mais]) {
                mais = ponto;
            }
        }
    }
    return QColor(mais);
}

// What of it stands out most.
double MaisForte(const QImage &desenho, const QColor &fundo)
{
    double maior = 1;
    for (int y = 0; y < desenho.height(); ++y) {
        for (int x = 0; x < desenho.width(); ++x) {
            maior = std::max(maior, Contraste(desenho.pixelColor(x, y), fundo));
        }
    }
    return maior;
}

// The role of the widget's text; nothing when it shows none.
std::optional<Papel> PapelDoTexto(const QWidget &widget)
{
    if (const auto *rotulo = qobject_cast<const QLabel *>(&widget)) {
        return rotulo->text().isEmpty() ? std::nullopt : std::optional(rotulo->foregroundRole());
    }
    if (const auto *campo = qobject_cast<const QLineEdit *>(&widget)) {
        return campo->text().isEmpty() ? std::nullopt : std::optional(Papel::Text);
    }
    if (const auto *linhas = qobject_cast<const QPlainTextEdit *>(&widget)) {
        return linhas->toPlainText().isEmpty() ? std::nullopt : std::optional(Papel::Text);
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        return combo->isEditable() || combo->currentText().isEmpty() ? std::nullopt : std::optional(Papel::ButtonText);
    }
    if (qobject_cast<const QCheckBox *>(&widget) != nullptr || qobject_cast<const QRadioButton *>(&widget) != nullptr) {
        return Papel::WindowText;
    }
    if (const auto *botao = qobject_cast<const QAbstractButton *>(&widget)) {
        return botao->text().isEmpty() || qobject_cast<const QLineEdit *>(widget.parentWidget()) != nullptr
                   ? std::nullopt
                   : std::optional(Papel::ButtonText);
    }
    if (qobject_cast<const QGroupBox *>(&widget) != nullptr || qobject_cast<const QTabBar *>(&widget) != nullptr) {
        return Papel::WindowText;
    }
    if (qobject_cast<const QHeaderView *>(&widget) != nullptr || qobject_cast<const QMenuBar *>(&widget) != nullptr) {
        return Papel::ButtonText;
    }
    if (qobject_cast<const QAbstractItemView *>(&widget) != nullptr) {
        return Papel::Text;
    }
    return std::nullopt;
}

QString NomeDe(const QWidget &widget)
{
    return QString("%1 (%2)").arg(widget.objectName(), widget.metaObject()->className());
}

// Of what is not in the picture: what is selected, examples, rows of the other colour.
QStringList ParesDe(const QWidget &widget)
{
    QStringList fracos;
    const QPalette &paleta = widget.palette();
    for (const auto &[texto, fundo] :
         {std::pair(Papel::HighlightedText, Papel::Highlight), std::pair(Papel::PlaceholderText, Papel::Base),
          std::pair(Papel::Text, Papel::Base), std::pair(Papel::Text, Papel::AlternateBase),
          std::pair(Papel::Link, Papel::Window), std::pair(Papel::LinkVisited, Papel::Window),
          std::pair(Papel::ToolTipText, Papel::ToolTipBase)}) {
        for (const auto grupo : {QPalette::Active, QPalette::Inactive}) {
            if (Contraste(paleta.color(grupo, texto), paleta.color(grupo, fundo)) < ContrasteDeTexto) {
                fracos << QString("%1: role %2").arg(NomeDe(widget)).arg(static_cast<int>(texto));
            }
        }
    }
    return fracos;
}

// Without the text that may stand beside it.
QImage DesenhoDoIcone(const QAbstractButton &botao, const QColor &fundo)
{
    QImage desenho(botao.iconSize(), QImage::Format_RGB32);
    desenho.fill(fundo);
    QPainter pincel(&desenho);
    botao.icon().paint(&pincel, desenho.rect());
    return desenho;
}

} // namespace

QStringList PoucoContraste(QWidget &janela)
{
    const QImage tudo = janela.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QStringList fracos = ParesDe(janela);
    for (const QWidget *widget : janela.findChildren<QWidget *>()) {
        // Behind its text: not its frame, nor the one that a button draws around the text while it has the keyboard.
        const int moldura = qobject_cast<const QPushButton *>(widget) == nullptr ? 2 : 4;
        const QRect lugar = QRect(widget->mapTo(&janela, QPoint()), widget->size())
                                .intersected(janela.rect())
                                .adjusted(moldura, moldura, -moldura, -moldura);
        if (!widget->isVisible() || widget->window() != &janela || widget->visibleRegion().isEmpty() ||
            lugar.isEmpty()) {
            continue;
        }
        const QImage desenho = tudo.copy(lugar);
        const QColor fundo = Fundo(desenho);
        if (const auto papel = PapelDoTexto(*widget)) {
            const double minimo = widget->isEnabled() ? ContrasteDeTexto : ContrasteDeSinal;
            const auto grupo = !widget->isEnabled()       ? QPalette::Disabled
                               : widget->isActiveWindow() ? QPalette::Active
                                                          : QPalette::Inactive;
            const double daPaleta = Contraste(widget->palette().color(grupo, *papel), fundo);
            const bool soTexto = qobject_cast<const QLabel *>(widget) != nullptr;
            if (daPaleta < minimo || (soTexto && MaisForte(desenho, fundo) < minimo)) {
                fracos << QString("%1: %2 drawn %3").arg(NomeDe(*widget)).arg(daPaleta).arg(MaisForte(desenho, fundo));
            }
        }
        if (const auto *botao = qobject_cast<const QAbstractButton *>(widget);
            botao != nullptr && !botao->icon().isNull() && botao->isEnabled()) {
            if (const double visto = MaisForte(DesenhoDoIcone(*botao, fundo), fundo); visto < ContrasteDeSinal) {
                fracos << QString("%1: icon %2").arg(NomeDe(*widget)).arg(visto);
            }
        }
        fracos << ParesDe(*widget);
    }
    return fracos;
}
