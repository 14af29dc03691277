#include "desk/tour/Cortes.h"

#include "desk/windows/TextoQueCede.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSizeGrip>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QStyleOptionGroupBox>
#include <QStyleOptionTab>
#include <QStyleOptionTitleBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

constexpr const char *DobraDoMenu = "qt_menubar_ext_button"; // holds the entries for which there is no room
constexpr int SemLimite = 1 << 20;

QString NomeDe(const QWidget &widget)
{
    QString nome;
    for (const QWidget *um = &widget; um != nullptr; um = um->parentWidget()) {
        if (!um->objectName().isEmpty() && !um->objectName().startsWith("qt_")) {
            nome = nome.isEmpty() ? um->objectName() : um->objectName() + "/" + nome;
        }
        if (um->isWindow() || qobject_cast<const QMdiSubWindow *>(um) != nullptr) {
            break;
        }
    }
    return nome + " (" + widget.metaObject()->className() + ")";
}

QString Medida(const QSize &medida)
{
    return QString("%1x%2").arg(medida.width()).arg(medida.height());
}

QString Compara(const QString &texto, const QSize &pede, const QSize &tem)
{
    const bool cabe = pede.width() <= tem.width() && pede.height() <= tem.height();
    return cabe ? QString() : QString("\"%1\" has %2 for %3").arg(texto, Medida(tem), Medida(pede));
}

// Of one line, of which the height is the style's affair.
QString ComparaLargura(const QString &texto, int pede, int tem)
{
    return pede <= tem ? QString() : QString("\"%1\" has width %2 for %3").arg(texto).arg(tem).arg(pede);
}

QSize ComLetra(const QWidget &widget, const QString &texto)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, texto);
}

// Whether all of the text is in the tip, which may say more.
bool NaDica(const QString &dica, const QString &texto)
{
    return dica.contains(texto) || dica.contains(texto.toHtmlEscaped());
}

QString DoRotulo(const QLabel &rotulo)
{
    const int margem = 2 * rotulo.margin();
    const QSize lugar = rotulo.contentsRect().size() - QSize(margem, margem);
    if (!rotulo.pixmap().isNull()) {
        return Compara("imagem", rotulo.pixmap().deviceIndependentSize().toSize(), lugar);
    }
    if (dynamic_cast<const TextoQueCede *>(&rotulo) != nullptr) {
        return {};
    }
    const QString texto = rotulo.text();
    const bool rico =
        rotulo.textFormat() == Qt::RichText || (rotulo.textFormat() == Qt::AutoText && Qt::mightBeRichText(texto));
    if (rico) {
        QTextDocument documento;
        documento.setDocumentMargin(0);
        documento.setDefaultFont(rotulo.font());
        documento.setHtml(texto);
        documento.setTextWidth(rotulo.wordWrap() ? lugar.width() : -1);
        return Compara(texto, QSize(qRound(documento.idealWidth()), qRound(documento.size().height())), lugar);
    }
    if (rotulo.wordWrap()) {
        const QRect onde(0, 0, lugar.width(), SemLimite);
        const QSize pede = rotulo.fontMetrics().boundingRect(onde, Qt::TextWordWrap, texto).size();
        return texto.isEmpty() ? QString() : Compara(texto, pede, lugar);
    }
    return Compara(texto, rotulo.buddy() != nullptr ? ComLetra(rotulo, texto) : rotulo.fontMetrics().size(0, texto),
                   lugar);
}

QString DoBotao(const QAbstractButton &botao)
{
    if (botao.text().isEmpty()) {
        return {};
    }
    if (qobject_cast<const QToolButton *>(&botao) != nullptr) {
        return Compara(botao.text(), botao.sizeHint(), botao.size());
    }
    if (const auto *opcao = qobject_cast<const QCommandLinkButton *>(&botao)) {
        return Compara(botao.text(), {botao.sizeHint().width(), opcao->heightForWidth(botao.width())}, botao.size());
    }
    QStyleOptionButton estilo;
    estilo.initFrom(&botao);
    estilo.text = botao.text();
    estilo.icon = botao.icon();
    estilo.iconSize = botao.iconSize();
    QStyle::SubElement onde = QStyle::SE_PushButtonContents;
    QSize pede = ComLetra(botao, botao.text());
    if (qobject_cast<const QCheckBox *>(&botao) != nullptr) {
        onde = QStyle::SE_CheckBoxContents;
    } else if (qobject_cast<const QRadioButton *>(&botao) != nullptr) {
        onde = QStyle::SE_RadioButtonContents;
    }
    if (!botao.icon().isNull()) {
        constexpr int Distancia = 4;
        pede.rwidth() += botao.iconSize().width() + Distancia;
    }
    const QRect lugar = botao.style()->subElementRect(onde, &estilo, &botao).intersected(botao.rect());
    return Compara(botao.text(), pede, {lugar.width(), botao.height()});
}

QString DoGrupo(const QGroupBox &grupo)
{
    QStyleOptionGroupBox estilo;
    estilo.initFrom(&grupo);
    estilo.text = grupo.title();
    estilo.textAlignment = grupo.alignment();
    estilo.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const QRect lugar = grupo.style()->subControlRect(QStyle::CC_GroupBox, &estilo, QStyle::SC_GroupBoxLabel, &grupo);
    return grupo.title().isEmpty()
               ? QString()
               : Compara(grupo.title(), ComLetra(grupo, grupo.title()), lugar.intersected(grupo.rect()).size());
}

QString DasAbas(const QTabBar &abas)
{
    const auto botoes = abas.findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
    const bool anda = std::ranges::any_of(
        botoes, [](const QToolButton *botao) { return botao->isVisible() && botao->arrowType() != Qt::NoArrow; });
    for (int pagina = 0; pagina < abas.count(); ++pagina) {
        if (!abas.isTabVisible(pagina)) {
            continue;
        }
        const QRect aba = abas.tabRect(pagina);
        if (!anda && !abas.rect().contains(aba)) {
            return "\"" + abas.tabText(pagina) + "\" stands outside";
        }
        QStyleOptionTab estilo;
        estilo.initFrom(&abas);
        estilo.rect = aba;
        estilo.text = abas.tabText(pagina);
        estilo.shape = abas.shape();
        estilo.icon = abas.tabIcon(pagina);
        estilo.iconSize = abas.iconSize();
        for (const auto lado : {QTabBar::LeftSide, QTabBar::RightSide}) {
            if (const QWidget *botao = abas.tabButton(pagina, lado)) {
                (lado == QTabBar::LeftSide ? estilo.leftButtonSize : estilo.rightButtonSize) = botao->size();
            }
        }
        const QRect lugar = abas.style()->subElementRect(QStyle::SE_TabBarTabText, &estilo, &abas);
        const QString falta =
            ComparaLargura(abas.tabText(pagina), ComLetra(abas, abas.tabText(pagina)).width(), lugar.width());
        if (!falta.isEmpty() && !NaDica(abas.tabToolTip(pagina), abas.tabText(pagina))) {
            return falta;
        }
    }
    return {};
}

QString DoCombo(const QComboBox &combo)
{
    if (combo.isEditable()) {
        return {}; // its line is a field
    }
    QStyleOptionComboBox estilo;
    estilo.initFrom(&combo);
    estilo.subControls = QStyle::SC_All;
    estilo.currentText = combo.currentText();
    const QRect lugar =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &estilo, QStyle::SC_ComboBoxEditField, &combo);
    const int icone = combo.itemIcon(combo.currentIndex()).isNull() ? 0 : combo.iconSize().width() + 4;
    constexpr int Margens = 2;
    const QString falta =
        ComparaLargura(combo.currentText(), combo.fontMetrics().horizontalAdvance(combo.currentText()),
                       lugar.width() - Margens - icone);
    return NaDica(combo.toolTip(), combo.currentText()) ? QString() : falta;
}

QString DoCampo(const QLineEdit &campo)
{
    QStyleOptionFrame estilo;
    estilo.initFrom(&campo);
    estilo.lineWidth = campo.hasFrame() ? campo.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &estilo, &campo) : 0;
    constexpr int Margens = 5; // and the cursor
    const QMargins proprias = campo.textMargins();
    int lugar = campo.style()->subElementRect(QStyle::SE_LineEditContents, &estilo, &campo).width() - Margens -
                proprias.left() - proprias.right();
    for (const QToolButton *dentro : campo.findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly)) {
        lugar -= dentro->isVisible() ? dentro->width() : 0;
    }
    if (campo.text().isEmpty()) {
        return ComparaLargura(campo.placeholderText(), campo.fontMetrics().horizontalAdvance(campo.placeholderText()),
                              lugar);
    }
    if (campo.echoMode() != QLineEdit::Normal || NaDica(campo.toolTip(), campo.text())) {
        return {};
    }
    return ComparaLargura(campo.text(), campo.fontMetrics().horizontalAdvance(campo.displayText()), lugar);
}

// The toolkit's own columns of files, which a person makes wider.
bool EhDeArquivos(const QWidget &widget)
{
    return qobject_cast<const QFileDialog *>(widget.window()) != nullptr;
}

QString DosTitulos(const QHeaderView &titulos)
{
    if (titulos.orientation() != Qt::Horizontal || EhDeArquivos(titulos)) {
        return {};
    }
    const int margem = titulos.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &titulos);
    for (int coluna = 0; coluna < titulos.count(); ++coluna) {
        if (titulos.isSectionHidden(coluna) || titulos.sectionSize(coluna) == 0) {
            continue;
        }
        const QString titulo = titulos.model()->headerData(coluna, Qt::Horizontal).toString();
        const QString dica = titulos.model()->headerData(coluna, Qt::Horizontal, Qt::ToolTipRole).toString();
        const bool comSeta = titulos.isSortIndicatorShown() && titulos.sortIndicatorSection() == coluna;
        const int seta = comSeta ? titulos.style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, &titulos) : 0;
        const QString falta = ComparaLargura(
            titulo, titulos.fontMetrics().horizontalAdvance(titulo) + 2 * margem + seta, titulos.sectionSize(coluna));
        if (!falta.isEmpty() && !NaDica(dica, titulo)) {
            return falta;
        }
    }
    return {};
}

// Those that are seen.
QString DasCelulas(const QAbstractItemView &visao)
{
    if (visao.model() == nullptr || EhDeArquivos(visao)) {
        return {};
    }
    const int margem = visao.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &visao) + 1;
    const QAbstractItemModel &modelo = *visao.model();
    for (int linha = 0; linha < modelo.rowCount(); ++linha) {
        bool vista = false;
        for (int coluna = 0; coluna < modelo.columnCount(); ++coluna) {
            const QModelIndex indice = modelo.index(linha, coluna);
            const QRect lugar = visao.visualRect(indice);
            if (!lugar.intersects(visao.viewport()->rect())) {
                continue;
            }
            vista = true;
            const QString texto = indice.data().toString();
            const QString falta =
                ComparaLargura(texto, visao.fontMetrics().size(0, texto).width() + 2 * margem, lugar.width());
            if (!falta.isEmpty() && !NaDica(indice.data(Qt::ToolTipRole).toString(), texto)) {
                return falta;
            }
            if (lugar.height() < visao.fontMetrics().height()) {
                return QString("\"%1\" has height %2 for %3")
                    .arg(texto)
                    .arg(lugar.height())
                    .arg(visao.fontMetrics().height());
            }
        }
        if (!vista && linha > 0 && visao.visualRect(modelo.index(linha, 0)).top() > visao.viewport()->height()) {
            break;
        }
    }
    return {};
}

QString DoMenu(const QMenuBar &menus)
{
    const auto *dobra = menus.findChild<QToolButton *>(DobraDoMenu);
    if (dobra != nullptr && dobra->isVisible()) {
        return {};
    }
    for (QAction *acao : menus.actions()) {
        const QRect lugar = menus.actionGeometry(acao);
        if (acao->isVisible() &&
            (!menus.rect().contains(lugar) || lugar.width() < ComLetra(menus, acao->text()).width())) {
            return "\"" + acao->text() + "\" stands outside";
        }
    }
    return {};
}

QString DaJanelaFilha(const QMdiSubWindow &filha)
{
    if (filha.isMaximized()) {
        return {};
    }
    QStyleOptionTitleBar estilo;
    estilo.initFrom(&filha);
    estilo.text = filha.windowTitle();
    estilo.titleBarFlags = filha.windowFlags();
    estilo.titleBarState = static_cast<int>(filha.windowState());
    estilo.subControls = QStyle::SC_All;
    estilo.rect.setHeight(filha.style()->pixelMetric(QStyle::PM_TitleBarHeight, &estilo, &filha));
    const QRect lugar = filha.style()->subControlRect(QStyle::CC_TitleBar, &estilo, QStyle::SC_TitleBarLabel, &filha);
    const QString falta =
        ComparaLargura(estilo.text, filha.fontMetrics().horizontalAdvance(estilo.text), lugar.width());
    return NaDica(filha.toolTip(), estilo.text) ? QString() : falta;
}

QString DoTextoCorrido(const QAbstractScrollArea &texto)
{
    const int sobra = texto.horizontalScrollBar()->maximum();
    return sobra == 0 ? QString() : QString("the text is %1 wider than its place").arg(sobra);
}

QString DoProgresso(const QProgressBar &progresso)
{
    return progresso.isTextVisible()
               ? ComparaLargura(progresso.text(), progresso.fontMetrics().horizontalAdvance(progresso.text()),
                                progresso.width())
               : QString();
}

// Room that a widget lacks for its text; empty when it has enough.
QString Falta(const QWidget &widget)
{
    if (const auto *rotulo = qobject_cast<const QLabel *>(&widget)) {
        return DoRotulo(*rotulo);
    }
    if (const auto *botao = qobject_cast<const QAbstractButton *>(&widget)) {
        return DoBotao(*botao);
    }
    if (const auto *grupo = qobject_cast<const QGroupBox *>(&widget)) {
        return DoGrupo(*grupo);
    }
    if (const auto *abas = qobject_cast<const QTabBar *>(&widget)) {
        return DasAbas(*abas);
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        return DoCombo(*combo);
    }
    if (const auto *campo = qobject_cast<const QLineEdit *>(&widget)) {
        return DoCampo(*campo);
    }
    if (const auto *titulos = qobject_cast<const QHeaderView *>(&widget)) {
        return DosTitulos(*titulos);
    }
    if (const auto *visao = qobject_cast<const QAbstractItemView *>(&widget)) {
        return DasCelulas(*visao);
    }
    if (const auto *menus = qobject_cast<const QMenuBar *>(&widget)) {
        return DoMenu(*menus);
    }
    if (const auto *filha = qobject_cast<const QMdiSubWindow *>(&widget)) {
        return DaJanelaFilha(*filha);
    }
    if (const auto *texto = qobject_cast<const QPlainTextEdit *>(&widget)) {
        return texto->lineWrapMode() == QPlainTextEdit::NoWrap ? QString() : DoTextoCorrido(*texto);
    }
    if (const auto *texto = qobject_cast<const QTextBrowser *>(&widget)) {
        return DoTextoCorrido(*texto);
    }
    if (const auto *progresso = qobject_cast<const QProgressBar *>(&widget)) {
        return DoProgresso(*progresso);
    }
    return {};
}

std::vector<const QWidget *> Vistos(const QWidget &janela)
{
    std::vector<const QWidget *> vistos;
    for (const QWidget *widget : janela.findChildren<QWidget *>()) {
        if (widget->isVisibleTo(&janela) && widget->window() == janela.window()) {
            vistos.push_back(widget);
        }
    }
    return vistos;
}

// Parents that put one child over another on purpose, or let it be wider than they are.
bool TemLeiauteProprio(const QWidget &pai)
{
    return qobject_cast<const QAbstractScrollArea *>(&pai) || qobject_cast<const QTabBar *>(&pai) ||
           qobject_cast<const QTabWidget *>(&pai) || qobject_cast<const QComboBox *>(&pai) ||
           qobject_cast<const QLineEdit *>(&pai) || qobject_cast<const QAbstractScrollArea *>(pai.parentWidget());
}

} // namespace

QStringList TextosCortados(const QWidget &janela)
{
    QStringList defeitos;
    for (const QWidget *widget : Vistos(janela)) {
        if (const QString falta = Falta(*widget); !falta.isEmpty()) {
            defeitos << "cut: " + NomeDe(*widget) + " " + falta;
        }
    }
    return defeitos;
}

QStringList ForaDoLugar(const QWidget &janela)
{
    QStringList defeitos;
    const std::vector<const QWidget *> vistos = Vistos(janela);
    for (std::size_t um = 0; um < vistos.size(); ++um) {
        const QWidget *pai = vistos[um]->parentWidget();
        if (TemLeiauteProprio(*pai)) {
            continue;
        }
        if (vistos[um]->size().isEmpty() || qobject_cast<const QSizeGrip *>(vistos[um]) != nullptr) {
            continue; // stands behind others and shows nothing, or over a corner
        }
        if (!pai->rect().contains(vistos[um]->geometry())) {
            defeitos << "outside: " + NomeDe(*vistos[um]);
        }
        for (std::size_t outro = um + 1; outro < vistos.size(); ++outro) {
            if (vistos[outro]->parentWidget() == pai && qobject_cast<const QSizeGrip *>(vistos[outro]) == nullptr &&
                vistos[um]->geometry().intersects(vistos[outro]->geometry())) {
                defeitos << "over one another: " + NomeDe(*vistos[um]) + ", " + NomeDe(*vistos[outro]);
            }
        }
    }
    return defeitos;
}

} // namespace mesa
