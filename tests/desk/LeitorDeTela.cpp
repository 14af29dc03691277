#include "tests/desk/LeitorDeTela.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTabBar>
#include <QTextEdit>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace {

using Papel = QAccessible::Role;

// Of a class of widgets, and those that come from it, what it may be to a reader.
struct PapeisDaClasse {
    const char *Classe;
    std::set<Papel> Papeis;
};

const std::vector<PapeisDaClasse> &Papeis()
{
    static const std::vector<PapeisDaClasse> papeis = {
        {"QCommandLinkButton", {Papel::PushButton, Papel::Button}},
        {"QCheckBox", {Papel::CheckBox}},
        {"QRadioButton", {Papel::RadioButton}},
        {"QPushButton", {Papel::Button, Papel::PushButton, Papel::ButtonMenu, Papel::CheckBox}},
        {"QToolButton", {Papel::Button, Papel::PushButton, Papel::ButtonMenu, Papel::CheckBox}},
        {"QComboBox", {Papel::ComboBox}},
        {"QAbstractSpinBox", {Papel::SpinBox}},
        {"QLineEdit", {Papel::EditableText}},
        {"QTextBrowser", {Papel::EditableText, Papel::Document, Papel::StaticText}},
        {"QPlainTextEdit", {Papel::EditableText}},
        {"QTextEdit", {Papel::EditableText}},
        {"QTableView", {Papel::Table}},
        {"QTreeView", {Papel::Tree}},
        {"QListView", {Papel::List}},
        {"QTabBar", {Papel::PageTabList}},
        {"QTabWidget", {Papel::Client}},
        {"QGroupBox", {Papel::Grouping}},
        {"QLabel", {Papel::StaticText, Papel::Graphic, Papel::AlertMessage}},
        {"QProgressBar", {Papel::ProgressBar}},
        {"QMenuBar", {Papel::MenuBar}},
        {"QMenu", {Papel::PopupMenu}},
        {"QStatusBar", {Papel::StatusBar}},
        {"QToolBar", {Papel::ToolBar}},
        {"QPdfView", {Papel::Document}},
        {"QMessageBox", {Papel::AlertMessage}},
        {"QDialog", {Papel::Dialog}},
        {"QMainWindow", {Papel::Window}},
    };
    return papeis;
}

// Roles that say something by themselves.
bool Informa(Papel papel)
{
    static const std::set<Papel> informam = {
        Papel::StaticText, Papel::Graphic,     Papel::AlertMessage, Papel::Button,       Papel::PushButton,
        Papel::ButtonMenu, Papel::CheckBox,    Papel::RadioButton,  Papel::ComboBox,     Papel::SpinBox,
        Papel::Table,      Papel::Tree,        Papel::List,         Papel::PageTab,      Papel::Grouping,
        Papel::Dialog,     Papel::ProgressBar, Papel::MenuItem,     Papel::EditableText, Papel::Document};
    return informam.contains(papel);
}

bool EhParteDeTabela(Papel papel)
{
    return papel == Papel::Cell || papel == Papel::ColumnHeader || papel == Papel::RowHeader ||
           papel == Papel::TreeItem || papel == Papel::ListItem;
}

QString NomeDaPeca(const QAccessibleInterface &peca)
{
    const QObject *objeto = peca.object();
    QString nome;
    for (const QAccessibleInterface *uma = &peca; objeto == nullptr && uma != nullptr; uma = uma->parent()) {
        objeto = uma->object();
    }
    for (const QObject *um = objeto; um != nullptr; um = um->parent()) {
        if (!um->objectName().isEmpty()) {
            nome = nome.isEmpty() ? um->objectName() : um->objectName() + "/" + nome;
        }
        if (const auto *widget = qobject_cast<const QWidget *>(um); widget != nullptr && widget->isWindow()) {
            break;
        }
    }
    return QString("%1 (%2 \"%3\")")
        .arg(nome, objeto == nullptr ? "?" : objeto->metaObject()->className(), peca.text(QAccessible::Name));
}

QString LetraDe(const QString &texto)
{
    for (qsizetype n = 0; n + 1 < texto.size(); ++n) {
        if (texto[n] == '&') {
            if (texto[n + 1] != '&') {
                return texto[n + 1].toUpper();
            }
            ++n;
        }
    }
    return {};
}

// The letter that leads to the widget: its own, or that of the label before it.
QString LetraDoWidget(const QWidget &widget)
{
    if (const auto *botao = qobject_cast<const QAbstractButton *>(&widget)) {
        return LetraDe(botao->text());
    }
    if (const auto *grupo = qobject_cast<const QGroupBox *>(&widget)) {
        return LetraDe(grupo->title());
    }
    for (const QLabel *rotulo : widget.window()->findChildren<QLabel *>()) {
        if (rotulo->buddy() == &widget && rotulo->isVisible()) {
            return LetraDe(rotulo->text());
        }
    }
    return {};
}

// What the reader calls a piece. Of a combo the toolkit gives the value for a name, and leaves the name to its label.
QString NomeLido(const QAccessibleInterface &peca)
{
    if (peca.role() != Papel::ComboBox) {
        return peca.text(QAccessible::Name);
    }
    const auto rotulos = peca.relations(QAccessible::Label);
    return rotulos.isEmpty() ? QString() : rotulos.front().first->text(QAccessible::Name);
}

const QRegularExpression &PalavrasInglesas()
{
    static const QRegularExpression ingles(
        "\\b(cancel|close|open|save|yes|folder|file|name|help|search|find|next|previous|apply|restore|show|hide|"
        "minimi[sz]e|maximi[sz]e|look in|files of type|date modified|kind|tab|scroll|toggle|the|of|and)\\b",
        QRegularExpression::CaseInsensitiveOption);
    return ingles;
}

class Leitor {
  public:
    explicit Leitor(QWidget &janela)
    {
        if (QAccessibleInterface *raiz = QAccessible::queryAccessibleInterface(&janela)) {
            Le(*raiz, nullptr);
        } else {
            Acusa("no accessibility: " + janela.objectName());
        }
        for (const auto &[grupo, nomes] : m_Nomes.asKeyValueRange()) {
            for (const auto &[nome, quantos] : nomes.asKeyValueRange()) {
                if (quantos > 1) {
                    Acusa(QString("the same name %1 times in %2: %3").arg(quantos).arg(m_Grupos[grupo], nome));
                }
            }
        }
    }
    QStringList Defeitos;
    QStringList Lido;

  private:
    void Acusa(const QString &defeito) { Defeitos << "reader: " + defeito; }

    void Le(QAccessibleInterface &peca, QAccessibleInterface *grupo)
    {
        const QAccessible::State estado = peca.state();
        if (!peca.isValid() || estado.invisible) {
            return;
        }
        const Papel papel = peca.role();
        auto *widget = qobject_cast<QWidget *>(peca.object());
        if (widget != nullptr && widget->size().isEmpty()) {
            return; // stands behind others, and shows nothing
        }
        if (widget != nullptr) {
            ConferePapel(peca, *widget);
            ConfereEstado(peca, *widget);
        }
        if (EhParteDeTabela(papel)) {
            return; // read from the table
        }
        ConfereNome(peca, grupo);
        if (papel == Papel::MenuItem) {
            return;
        }
        if (papel == Papel::Table || papel == Papel::Tree || papel == Papel::List) {
            ConfereTabela(peca, *qobject_cast<QAbstractItemView *>(widget));
            return;
        }
        if (qobject_cast<QComboBox *>(widget) != nullptr) {
            return; // its items are told as its value, and its popup is a window
        }
        QAccessibleInterface *dentro =
            papel == Papel::Grouping || papel == Papel::ToolBar || papel == Papel::PageTabList ? &peca : grupo;
        for (int n = 0; n < peca.childCount(); ++n) {
            if (QAccessibleInterface *filha = peca.child(n)) {
                Le(*filha, dentro);
            }
        }
    }

    void ConferePapel(const QAccessibleInterface &peca, const QWidget &widget)
    {
        for (const PapeisDaClasse &classe : Papeis()) {
            if (widget.inherits(classe.Classe)) {
                if (!classe.Papeis.contains(peca.role())) {
                    Acusa(QString("role %1 of %2").arg(peca.role()).arg(NomeDaPeca(peca)));
                }
                return;
            }
        }
        if (peca.state().focusable && peca.role() == Papel::Client && !widget.isWindow()) {
            Acusa("takes the keyboard and has no role: " + NomeDaPeca(peca));
        }
    }

    void ConfereNome(const QAccessibleInterface &peca, QAccessibleInterface *grupo)
    {
        const QAccessible::State estado = peca.state();
        const auto *rotulo = qobject_cast<const QLabel *>(peca.object());
        if (rotulo != nullptr && rotulo->text().isEmpty() && rotulo->accessibleName().isEmpty()) {
            return; // shows nothing, or decorates
        }
        const auto *widget = qobject_cast<const QWidget *>(peca.object());
        if (widget != nullptr && widget->focusProxy() != nullptr) {
            return; // another one takes the keyboard
        }
        if (!Informa(peca.role()) && !(estado.focusable && widget != nullptr && !widget->isWindow())) {
            return;
        }
        const QString nome = NomeLido(peca);
        const QString descricao = peca.text(QAccessible::Description);
        Lido << QString("%1|%2|%3|%4|%5")
                    .arg(peca.role())
                    .arg(nome, peca.text(QAccessible::Value), descricao, peca.text(QAccessible::Accelerator));
        if (peca.role() == Papel::MenuItem && nome.isEmpty() && peca.childCount() == 0 && estado.disabled) {
            return; // a line between entries
        }
        if (nome.trimmed().isEmpty()) {
            Acusa("no name: " + NomeDaPeca(peca));
        } else if (nome.contains('&') && peca.role() != Papel::StaticText) {
            Acusa("the mark of a letter is read: " + NomeDaPeca(peca));
        }
        for (const QString &texto : {nome, descricao}) {
            if (peca.role() != Papel::StaticText && PalavrasInglesas().match(texto).hasMatch()) {
                Acusa("English: " + texto + " of " + NomeDaPeca(peca));
            }
        }
        if (estado.focusable && peca.role() != Papel::PageTab && peca.role() != Papel::PageTabList && !nome.isEmpty()) {
            ++m_Nomes[grupo][nome];
            m_Grupos[grupo] = grupo == nullptr ? QString("the window") : NomeDaPeca(*grupo);
        }
        if (widget != nullptr && estado.focusable && !LetraDoWidget(*widget).isEmpty() &&
            peca.text(QAccessible::Accelerator).isEmpty()) {
            Acusa("no key: " + NomeDaPeca(peca));
        }
    }

    void ConfereEstado(QAccessibleInterface &peca, const QWidget &widget)
    {
        const QAccessible::State estado = peca.state();
        const auto compara = [&](const char *oQue, bool dito, bool ha) {
            if (dito != ha) {
                Acusa(QString("%1 is %2 and told as %3: %4")
                          .arg(oQue, ha ? "true" : "false", dito ? "true" : "false", NomeDaPeca(peca)));
            }
        };
        compara("disabled", estado.disabled, !widget.isEnabled());
        compara("focused", estado.focused, widget.hasFocus());
        if (const auto *botao = qobject_cast<const QAbstractButton *>(&widget)) {
            compara("checked", estado.checked, botao->isChecked());
        }
        if (const auto *campo = qobject_cast<const QLineEdit *>(&widget)) {
            const bool senha = campo->echoMode() != QLineEdit::Normal;
            compara("read only", estado.readOnly, campo->isReadOnly());
            compara("password", estado.passwordEdit, senha);
            if (!senha && peca.text(QAccessible::Value) != campo->text()) {
                Acusa("value \"" + peca.text(QAccessible::Value) + "\" of " + NomeDaPeca(peca));
            }
            if (senha && !campo->text().isEmpty() && peca.text(QAccessible::Value).contains(campo->text())) {
                Acusa("a password is read: " + NomeDaPeca(peca));
            }
        }
        if (const auto *texto = qobject_cast<const QPlainTextEdit *>(&widget)) {
            compara("read only", estado.readOnly, texto->isReadOnly());
        }
        if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
            if (peca.text(QAccessible::Value) != combo->currentText()) {
                Acusa("value \"" + peca.text(QAccessible::Value) + "\" of " + NomeDaPeca(peca));
            }
            compara("expandable", estado.expandable, true);
        }
        if (const auto *abas = qobject_cast<const QTabBar *>(&widget)) {
            ConfereAbas(peca, *abas);
        }
        ConfereCor(peca, widget);
    }

    // Of the current page the toolkit says that it has the keyboard, wherever that is.
    void ConfereAbas(QAccessibleInterface &peca, const QTabBar &abas)
    {
        int escolhidas = 0;
        for (int n = 0; n < peca.childCount(); ++n) {
            QAccessibleInterface *aba = peca.child(n);
            if (aba != nullptr && aba->role() == Papel::PageTab) {
                escolhidas += aba->state().focused || aba->state().selected ? 1 : 0;
            }
        }
        if (abas.count() > 0 && escolhidas != 1) {
            Acusa(QString("%1 pages are selected: %2").arg(escolhidas).arg(NomeDaPeca(peca)));
        }
    }

    // A text that is drawn in a colour of its own says by it what it is; a reader needs words for that.
    void ConfereCor(const QAccessibleInterface &peca, const QWidget &widget)
    {
        const auto *rotulo = qobject_cast<const QLabel *>(&widget);
        const auto *combo = qobject_cast<const QComboBox *>(&widget);
        const auto papel = combo != nullptr ? QPalette::Text : QPalette::WindowText;
        if ((rotulo == nullptr || rotulo->text().isEmpty()) && combo == nullptr) {
            return;
        }
        const bool colorido = widget.palette().color(QPalette::Active, papel) !=
                              QApplication::palette(&widget).color(QPalette::Active, papel);
        if (colorido && widget.accessibleDescription().isEmpty()) {
            Acusa("told by its colour alone: " + NomeDaPeca(peca));
        }
    }

    void ConfereTabela(QAccessibleInterface &peca, const QAbstractItemView &visao)
    {
        const QAbstractItemModel *modelo = visao.model();
        QAccessibleTableInterface *tabela = peca.tableInterface();
        if (tabela == nullptr || modelo == nullptr) {
            Acusa("no cells: " + NomeDaPeca(peca));
            return;
        }
        const auto *colunas = visao.findChild<QHeaderView *>();
        const bool comTitulos = visao.inherits("QTableView") && colunas != nullptr;
        std::set<QString> titulos;
        for (int coluna = 0; coluna < modelo->columnCount(); ++coluna) {
            if (!comTitulos || qobject_cast<const QHeaderView *>(visao.findChild<QHeaderView *>()) == nullptr) {
                break;
            }
            const QString titulo = modelo->headerData(coluna, Qt::Horizontal).toString();
            if (tabela->columnDescription(coluna) != titulo) {
                Acusa(QString("heading of column %1: %2").arg(coluna).arg(NomeDaPeca(peca)));
            }
            const QModelIndex primeira = modelo->index(0, coluna);
            const bool vista = primeira.isValid() && !visao.visualRect(primeira).isEmpty();
            if (vista && (titulo.trimmed().isEmpty() || !titulos.insert(titulo).second)) {
                Acusa(QString("column %1 has no heading of its own: %2").arg(coluna).arg(NomeDaPeca(peca)));
            }
        }
        for (int linha = 0; linha < modelo->rowCount(); ++linha) {
            for (int coluna = 0; coluna < modelo->columnCount(); ++coluna) {
                const QModelIndex indice = modelo->index(linha, coluna);
                const QString texto = indice.data().toString();
                QAccessibleInterface *celula = tabela->cellAt(linha, coluna);
                if (celula == nullptr || celula->text(QAccessible::Name) != texto) {
                    Acusa(QString("cell %1, %2 is not read: %3").arg(linha).arg(coluna).arg(NomeDaPeca(peca)));
                    return;
                }
                const bool atual = visao.selectionModel()->isSelected(indice);
                if (!visao.visualRect(indice).isEmpty() && celula->state().selected != atual) {
                    Acusa(QString("cell %1, %2 is told as %3: %4")
                              .arg(linha)
                              .arg(coluna)
                              .arg(atual ? "not selected" : "selected", NomeDaPeca(peca)));
                    return;
                }
            }
        }
        const QModelIndex atual = visao.currentIndex();
        const QAccessibleInterface *focada = atual.isValid() && visao.hasFocus() ? peca.focusChild() : nullptr;
        if (atual.isValid() && visao.hasFocus() &&
            (focada == nullptr || focada->text(QAccessible::Name) != atual.data().toString())) {
            Acusa("the current row is not told: " + NomeDaPeca(peca));
        }
    }

    QMap<QAccessibleInterface *, QMap<QString, int>> m_Nomes;
    QMap<QAccessibleInterface *, QString> m_Grupos;
};

// In the order of Tab, what takes the keyboard and is seen.
std::vector<QWidget *> Percurso(const QWidget &janela)
{
    std::vector<QWidget *> percurso;
    auto *inicio = const_cast<QWidget *>(&janela);
    for (QWidget *widget = inicio->nextInFocusChain(); widget != inicio; widget = widget->nextInFocusChain()) {
        if (janela.isAncestorOf(widget) && widget->window() == janela.window() && widget->isVisible() &&
            widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) && widget->focusProxy() == nullptr &&
            !widget->visibleRegion().isEmpty()) {
            percurso.push_back(widget);
        }
    }
    return percurso;
}

// The widget in which both are, and of each what stands in that and holds it.
std::pair<const QWidget *, const QWidget *> NoMesmoLugar(const QWidget *um, const QWidget *outro)
{
    while (!um->parentWidget()->isAncestorOf(outro)) {
        um = um->parentWidget();
    }
    while (outro->parentWidget() != um->parentWidget()) {
        outro = outro->parentWidget();
    }
    return {um, outro};
}

} // namespace

// The toolkit hands events on where a reader listens. On a screen in memory none can: the tests listen in its place.
void QAccessible::updateAccessibility(QAccessibleEvent *evento)
{
    if (evento->type() == QAccessible::Alert) {
        const QAccessibleInterface *peca = evento->accessibleInterface();
        Anunciados() << peca->text(QAccessible::Description) + ": " + peca->text(QAccessible::Name);
    }
}

QStringList &Anunciados()
{
    static QStringList anunciados;
    return anunciados;
}

QStringList DefeitosDoLeitor(QWidget &janela)
{
    return Leitor(janela).Defeitos;
}

QStringList LidoNa(QWidget &janela)
{
    return Leitor(janela).Lido;
}

QStringList TabForaDaLeitura(const QWidget &janela)
{
    QStringList defeitos;
    const std::vector<QWidget *> percurso = Percurso(janela);
    for (std::size_t n = 1; n < percurso.size(); ++n) {
        if (percurso[n - 1]->isAncestorOf(percurso[n]) || percurso[n]->isAncestorOf(percurso[n - 1])) {
            continue;
        }
        const auto [antes, depois] = NoMesmoLugar(percurso[n - 1], percurso[n]);
        const QRect a = antes->geometry();
        const QRect d = depois->geometry();
        const bool mesmaLinha =
            std::min(a.bottom(), d.bottom()) - std::max(a.top(), d.top()) > std::min(a.height(), d.height()) / 2;
        if (mesmaLinha ? d.right() <= a.left() : d.bottom() <= a.top()) {
            defeitos << "Tab goes back: " + percurso[n - 1]->objectName() + " to " + percurso[n]->objectName();
        }
    }
    return defeitos;
}

QStringList FocoInvisivel(QWidget &janela)
{
    QStringList defeitos;
    const auto retrata = [&](const QWidget &widget) {
        constexpr int Ao_redor = 3; // where a frame may be
        const QRect onde(widget.mapTo(&janela, QPoint()), widget.size());
        return janela.grab(onde.adjusted(-Ao_redor, -Ao_redor, Ao_redor, Ao_redor)).toImage();
    };
    for (QWidget *widget : Percurso(janela)) {
        if (QWidget *outro = janela.focusWidget()) {
            outro->clearFocus();
        }
        QApplication::processEvents();
        const QImage sem = retrata(*widget);
        widget->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        if (!widget->hasFocus()) {
            defeitos << "does not take the keyboard: " + widget->objectName();
        } else if (retrata(*widget) == sem) {
            defeitos << QString("looks the same with the keyboard: %1 (%2)")
                            .arg(widget->objectName(), widget->metaObject()->className());
        }
    }
    return defeitos;
}
