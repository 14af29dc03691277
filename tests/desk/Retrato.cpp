#include "tests/desk/Retrato.h"

#include "controls/ControleBase.h"
#include "desk/tour/Cortes.h"
#include "desk/windows/JanelaForm.h"
#include "tests/desk/LeitorDeTela.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPixmap>

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

QStringList ForaDaMedida(const QWidget &janela)
{
    QStringList defeitos;
    if (janela.width() < janela.minimumSizeHint().width() || janela.height() < janela.minimumSizeHint().height()) {
        defeitos << "window: " + Medida(janela.size()) + " for " + Medida(janela.minimumSizeHint());
    }
    // One on a tab is as large as the main window makes it.
    const QSize menor = janela.isWindow() ? janela.size().expandedTo(janela.minimumSize()) : janela.minimumSizeHint();
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

QStringList DeQualquerJanela(QWidget &janela)
{
    return TextosCortados(janela) + ForaDoLugar(janela) + ForaDaMedida(janela) + ForaDeLinha(Vistos(janela)) +
           DefeitosDoLeitor(janela);
}

} // namespace

QStringList Defeitos(JanelaForm &janela)
{
    return DeQualquerJanela(janela) + ControlesTrocados(janela) + TabForaDeOrdem(janela);
}

QStringList DefeitosDaJanela(QWidget &janela)
{
    return DeQualquerJanela(janela) + TabForaDaLeitura(janela);
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
