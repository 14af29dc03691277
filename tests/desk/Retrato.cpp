#include "tests/desk/Retrato.h"

#include "controls/ControleBase.h"
#include "desk/windows/JanelaForm.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

const QSize TelaPequena(1024, 768);

QString NomeDe(const QWidget &widget)
{
    QString nome;
    for (const QWidget *um = &widget;
         um != nullptr && dynamic_cast<const JanelaForm *>(um) == nullptr && !um->isWindow(); um = um->parentWidget()) {
        if (!um->objectName().isEmpty()) {
            nome = nome.isEmpty() ? um->objectName() : um->objectName() + "/" + nome;
        }
    }
    return nome + " (" + widget.metaObject()->className() + ")";
}

QString NomeDo(const IControle &controle)
{
    const QString nome = Q(controle.Nome());
    return controle.Indice() < 0 ? nome : nome + "_" + QString::number(controle.Indice());
}

QString Medida(const QSize &medida)
{
    return QString("%1x%2").arg(medida.width()).arg(medida.height());
}

std::vector<QWidget *> Vistos(const QWidget &janela)
{
    std::vector<QWidget *> vistos;
    for (QWidget *widget : janela.findChildren<QWidget *>()) {
        if (widget->isVisibleTo(&janela) && widget->window() == janela.window()) {
            vistos.push_back(widget);
        }
    }
    return vistos;
}

// Room that a widget lacks for its text; empty when it has enough.
QString Falta(const QWidget &widget)
{
    const auto compara = [&](const QSize &pede) {
        const bool cabe = pede.width() <= widget.width() && pede.height() <= widget.height();
        return cabe ? QString() : Medida(widget.size()) + " for " + Medida(pede);
    };
    const auto comparaLargura = [&](int pede, int tem) {
        return pede <= tem ? QString() : QString("width %1 for %2").arg(tem).arg(pede);
    };
    if (const auto *rotulo = qobject_cast<const QLabel *>(&widget)) {
        if (rotulo->wordWrap()) {
            return rotulo->heightForWidth(rotulo->width()) <= rotulo->height() ? QString() : Medida(widget.size());
        }
        return compara(rotulo->sizeHint());
    }
    if (qobject_cast<const QAbstractButton *>(&widget)) {
        if (qobject_cast<const QLineEdit *>(widget.parentWidget())) {
            return {}; // an icon alone, for which the field has made the place
        }
        return compara(widget.sizeHint());
    }
    if (qobject_cast<const QGroupBox *>(&widget)) {
        return compara(widget.minimumSizeHint());
    }
    if (const auto *abas = qobject_cast<const QTabBar *>(&widget)) {
        for (int pagina = 0; pagina < abas->count(); ++pagina) {
            const int texto = abas->fontMetrics().size(Qt::TextShowMnemonic, abas->tabText(pagina)).width();
            if (abas->isTabVisible(pagina) &&
                (abas->tabRect(pagina).width() < texto || abas->tabRect(pagina).right() > abas->width())) {
                return abas->tabText(pagina);
            }
        }
        return {};
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        QStyleOptionComboBox opcao;
        opcao.initFrom(combo);
        const QRect lugar =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &opcao, QStyle::SC_ComboBoxEditField, combo);
        return comparaLargura(combo->fontMetrics().horizontalAdvance(combo->currentText()), lugar.width());
    }
    if (const auto *campo = qobject_cast<const QLineEdit *>(&widget)) {
        QStyleOptionFrame opcao;
        opcao.initFrom(campo);
        opcao.lineWidth = campo->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &opcao, campo);
        const QRect lugar = campo->style()->subElementRect(QStyle::SE_LineEditContents, &opcao, campo);
        constexpr int Margens = 5; // and the cursor
        return comparaLargura(campo->fontMetrics().horizontalAdvance(campo->text()) + Margens, lugar.width());
    }
    if (const auto *cabecalho = qobject_cast<const QHeaderView *>(&widget)) {
        for (int coluna = 0; coluna < cabecalho->count(); ++coluna) {
            const QString titulo = cabecalho->model()->headerData(coluna, cabecalho->orientation()).toString();
            if (cabecalho->sectionSize(coluna) > 0 &&
                cabecalho->sectionSize(coluna) < cabecalho->fontMetrics().horizontalAdvance(titulo)) {
                return titulo;
            }
        }
    }
    return {};
}

QStringList TextosCortados(const std::vector<QWidget *> &vistos)
{
    QStringList defeitos;
    for (const QWidget *widget : vistos) {
        if (const QString falta = Falta(*widget); !falta.isEmpty()) {
            defeitos << "cut: " + NomeDe(*widget) + " " + falta;
        }
    }
    return defeitos;
}

// Parents that put one child over another on purpose, or let it be wider than they are.
bool TemLeiauteProprio(const QWidget &pai)
{
    return qobject_cast<const QAbstractScrollArea *>(&pai) || qobject_cast<const QTabBar *>(&pai) ||
           qobject_cast<const QTabWidget *>(&pai) || qobject_cast<const QComboBox *>(&pai) ||
           qobject_cast<const QAbstractScrollArea *>(pai.parentWidget());
}

QStringList Colisoes(const QWidget &janela, const std::vector<QWidget *> &vistos)
{
    QStringList defeitos;
    for (std::size_t um = 0; um < vistos.size(); ++um) {
        const QWidget *pai = vistos[um]->parentWidget();
        if (TemLeiauteProprio(*pai)) {
            continue;
        }
        if (vistos[um]->size().isEmpty()) {
            continue; // stands behind others, and shows nothing
        }
        if (!pai->rect().contains(vistos[um]->geometry())) {
            defeitos << "outside: " + NomeDe(*vistos[um]);
        }
        for (std::size_t outro = um + 1; outro < vistos.size(); ++outro) {
            if (vistos[outro]->parentWidget() == pai && vistos[um]->geometry().intersects(vistos[outro]->geometry())) {
                defeitos << "over one another: " + NomeDe(*vistos[um]) + ", " + NomeDe(*vistos[outro]);
            }
        }
    }
    if (janela.width() < janela.minimumSizeHint().width() || janela.height() < janela.minimumSizeHint().height()) {
        defeitos << "window: " + Medida(janela.size()) + " for " + Medida(janela.minimumSizeHint());
    }
    const QSize menor = janela.size().expandedTo(janela.minimumSize());
    if (menor.width() > TelaPequena.width() || menor.height() > TelaPequena.height()) {
        defeitos << "too large for a small screen: " + Medida(menor);
    }
    return defeitos;
}

QStringList ControlesTrocados(const JanelaForm &janela)
{
    QStringList defeitos;
    for (const Ref<IControle> &controle : janela.Form()->Controles()) {
        if (controle->Especie() == EspecieControle::CommonDialog) {
            continue;
        }
        const QString nome = NomeDo(*controle);
        const bool visto = ComoBase(controle)->VisivelDeFato();
        for (const QString &parte : {nome, "rot_" + nome}) {
            const auto *widget = janela.findChild<QWidget *>(parte);
            if (widget == nullptr ? parte == nome : widget->isVisibleTo(&janela) != visto) {
                defeitos << (visto ? "not to be seen: " : "seen though hidden: ") + parte;
            }
        }
    }
    return defeitos;
}

// Fields that stand first in their rows, each behind its label: in one container they begin at one place, and so do
// their labels.
QStringList ForaDeLinha(const std::vector<QWidget *> &vistos)
{
    QStringList defeitos;
    std::map<const QWidget *, std::pair<const QWidget *, const QWidget *>> primeiros; // by container: label, field
    for (const QWidget *campo : vistos) {
        const QWidget *rotulo = nullptr;
        bool primeiro = true;
        for (const QWidget *outro : vistos) {
            if (outro->parentWidget() != campo->parentWidget() || outro == campo) {
                continue;
            }
            const auto *texto = qobject_cast<const QLabel *>(outro);
            if (texto != nullptr && (texto->buddy() == campo || outro->objectName() == "rot_" + campo->objectName())) {
                rotulo = outro;
            } else if (outro->x() < campo->x() && outro->geometry().bottom() >= campo->y() &&
                       outro->y() <= campo->geometry().bottom()) {
                primeiro = false;
            }
        }
        if (rotulo == nullptr || !primeiro) {
            continue;
        }
        const auto [achado, novo] = primeiros.try_emplace(campo->parentWidget(), rotulo, campo);
        if (!novo && (achado->second.first->x() != rotulo->x() || achado->second.second->x() != campo->x())) {
            defeitos << "out of line: " + NomeDe(*campo) + " with " + NomeDe(*achado->second.second);
        }
    }
    return defeitos;
}

QStringList TabForaDeOrdem(const JanelaForm &janela)
{
    std::map<QString, int> lugares;
    for (const Ref<IControle> &controle : janela.Form()->Controles()) {
        // The search list holds its criteria, and its rows come behind them.
        if (controle->Especie() != EspecieControle::ztFrame && controle->Nome() != "ztlLista") {
            lugares[NomeDo(*controle)] = controle->TabIndex();
        }
    }
    std::vector<int> ordem;
    QStringList nomes;
    for (const QWidget *widget = janela.nextInFocusChain(); widget != &janela; widget = widget->nextInFocusChain()) {
        if (!janela.isAncestorOf(widget) || !(widget->focusPolicy() & Qt::TabFocus)) {
            continue;
        }
        const QWidget *dono = widget;
        while (dono != &janela && lugares.count(dono->objectName()) == 0) {
            dono = dono->parentWidget();
        }
        if (dono != &janela && (ordem.empty() || ordem.back() != lugares[dono->objectName()])) {
            ordem.push_back(lugares[dono->objectName()]);
            nomes << dono->objectName();
        }
    }
    if (ordem.size() > 1 && ordem.front() == ordem.back()) {
        ordem.pop_back();
    }
    std::rotate(ordem.begin(), std::min_element(ordem.begin(), ordem.end()), ordem.end());
    return std::is_sorted(ordem.begin(), ordem.end()) ? QStringList() : QStringList("order of Tab: " + nomes.join(" "));
}

} // namespace

QStringList Defeitos(const JanelaForm &janela)
{
    const std::vector<QWidget *> vistos = Vistos(janela);
    return TextosCortados(vistos) + Colisoes(janela, vistos) + ControlesTrocados(janela) + ForaDeLinha(vistos) +
           TabForaDeOrdem(janela);
}

QStringList DefeitosDaJanela(const QWidget &janela)
{
    const std::vector<QWidget *> vistos = Vistos(janela);
    return TextosCortados(vistos) + Colisoes(janela, vistos) + ForaDeLinha(vistos);
}

void Fotografa(QWidget &janela, const QString &nome)
{
    constexpr int Niveis = 12; // of widgets in one another: each round takes what a layout asks for to the next one
    for (int nivel = 0; nivel < Niveis; ++nivel) {
        QApplication::processEvents();
    }
    QDir().mkpath(PASTA_DOS_RETRATOS);
    janela.grab().save(QString(PASTA_DOS_RETRATOS "/%1.png").arg(nome));
}
