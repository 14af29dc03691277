#include "desk/windows/LugarDasJanelas.h"

#include "desk/windows/Rolagem.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <vector>

namespace mesa {

namespace {

constexpr const char *Identidade = "identidade";
constexpr const char *Dado = "tamanhoDado"; // that a window has not from the person

Retangulo De(const QRect &area)
{
    return {area.x(), area.y(), area.width(), area.height()};
}

QRect Para(const Retangulo &area)
{
    return {area.X, area.Y, area.Largura, area.Altura};
}

bool EhJanela(const QWidget &widget)
{
    return widget.isWindow() && (widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog);
}

// What sees to its own size as it is shown, by its text.
bool EhCaixa(const QWidget &widget)
{
    return qobject_cast<const QMessageBox *>(&widget) != nullptr;
}

std::string Chave(const QWidget &janela)
{
    const QString propria = janela.property(Identidade).toString();
    const QString nome = propria.isEmpty() ? janela.objectName() : propria;
    return nome.isEmpty() || EhCaixa(janela) ? std::string() : S(nome) + "/lugar";
}

QMargins Moldura(const QWidget &janela)
{
    const QMargins sabida = janela.windowHandle() == nullptr ? QMargins() : janela.windowHandle()->frameMargins();
    if (!sabida.isNull()) {
        return sabida;
    }
    // Not known before the window was seen.
    const int titulo = janela.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &janela);
    const int lado = janela.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &janela);
    return {lado, titulo, lado, lado};
}

} // namespace

void DefineIdentidade(QWidget &janela, const std::string &identidade)
{
    janela.setProperty(Identidade, Q(identidade));
}

LugarDasJanelas &LugarDasJanelas::DaAplicacao()
{
    static QPointer<LugarDasJanelas> unica;
    if (unica.isNull()) {
        unica = new LugarDasJanelas(qApp);
    }
    return *unica;
}

LugarDasJanelas::LugarDasJanelas(QObject *dono)
    : QObject(dono),
      Livre([](const QScreen &tela) { return tela.availableGeometry(); })
{
    qApp->installEventFilter(this);
    for (QScreen *tela : QGuiApplication::screens()) {
        SegueTela(tela);
    }
    connect(qApp, &QGuiApplication::screenAdded, this, [this](QScreen *tela) { SegueTela(tela); });
    connect(qApp, &QGuiApplication::screenRemoved, this, [this] {
        QTimer::singleShot(0, this, [this] { ContemTodas(); }); // after the windows have another screen
    });
}

void LugarDasJanelas::SegueTela(QScreen *tela)
{
    connect(tela, &QScreen::availableGeometryChanged, this, [this] { ContemTodas(); });
}

Retangulo LugarDasJanelas::SemMoldura(const QScreen &tela, const QWidget &janela) const
{
    return De(Livre(tela).marginsRemoved(Moldura(janela)));
}

Retangulo LugarDasJanelas::LivrePara(const QWidget &janela) const
{
    const QWidget *dona = janela.parentWidget();
    return SemMoldura(*(dona != nullptr && dona->window()->isVisible() ? dona->window()->screen() : janela.screen()),
                      janela);
}

std::optional<LugarDeJanela> LugarDasJanelas::Lembrado(const QWidget &janela) const
{
    const std::string chave = Chave(janela);
    return m_Lembrancas && !chave.empty() ? LugarDoTexto(m_Lembrancas->Lembranca(chave)) : std::nullopt;
}

void LugarDasJanelas::Poe(QWidget &janela)
{
    if (EhCaixa(janela)) {
        QTimer::singleShot(0, &janela, [this, &janela] { Contem(janela); });
        return;
    }
    const Retangulo livre = LivrePara(janela);
    const QSize menor = janela.minimumSizeHint().expandedTo(janela.minimumSize());
    if (menor.width() > livre.Largura || menor.height() > livre.Altura) {
        FazRolar(janela);
        janela.setMinimumSize(janela.minimumSize().boundedTo({livre.Largura, livre.Altura}));
    }
    const std::optional<LugarDeJanela> lembrado = Lembrado(janela);
    if (lembrado) { // somebody else may have left it maximised
        janela.setWindowState(janela.windowState() & ~Qt::WindowMaximized);
    }
    const Tamanho natural{janela.width(), janela.height()};
    const QWidget *dona = janela.parentWidget() == nullptr ? nullptr : janela.parentWidget()->window();
    if (dona != nullptr) {
        const Retangulo sobre = dona->isVisible() ? De(dona->geometry()) : livre;
        janela.setGeometry(Para(LugarDaFrente(lembrado, natural, sobre, livre)));
    } else {
        std::vector<Retangulo> livres;
        for (const QScreen *tela : QGuiApplication::screens()) {
            livres.push_back(SemMoldura(*tela, janela));
        }
        janela.setGeometry(Para(LugarDaPrincipal(lembrado, natural, livre, livres)));
    }
    janela.setProperty(Dado, janela.size());
    if (lembrado && lembrado->Maximizada) {
        janela.setWindowState(janela.windowState() | Qt::WindowMaximized);
    }
}

void LugarDasJanelas::Restaura(QWidget &janela)
{
    if (janela.isVisible() && Lembrado(janela)) {
        Poe(janela);
    }
}

void LugarDasJanelas::Guarda(QWidget &janela)
{
    const std::string chave = Chave(janela);
    if (!m_Lembrancas || chave.empty() || janela.isMinimized()) {
        return;
    }
    const bool emFrente = janela.parentWidget() != nullptr; // of which the place is that of its owner
    if (emFrente && !janela.isMaximized() && janela.size() == janela.property(Dado).toSize()) {
        return; // as it opened
    }
    m_Lembrancas->Lembra(chave, TextoDoLugar({De(janela.isMaximized() ? janela.normalGeometry() : janela.geometry()),
                                              janela.isMaximized()}));
}

void LugarDasJanelas::Contem(QWidget &janela)
{
    if (!janela.isVisible() || janela.isMaximized() || janela.isFullScreen() || janela.isMinimized()) {
        return;
    }
    const Retangulo livre = SemMoldura(*janela.screen(), janela);
    const QSize menor = janela.minimumSizeHint().expandedTo(janela.minimumSize());
    if (!EhCaixa(janela) && (menor.width() > livre.Largura || menor.height() > livre.Altura)) {
        FazRolar(janela);
        janela.setMinimumSize(janela.minimumSize().boundedTo({livre.Largura, livre.Altura}));
    }
    const QRect lugar = Para(Dentro(De(janela.geometry()), livre));
    if (lugar != janela.geometry()) {
        janela.setGeometry(lugar);
    }
    janela.setProperty(Dado, janela.size());
}

void LugarDasJanelas::ContemTodas()
{
    for (QWidget *janela : QApplication::topLevelWidgets()) {
        if (EhJanela(*janela)) {
            Contem(*janela);
        }
    }
}

bool LugarDasJanelas::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto->isWidgetType() && !evento->spontaneous()) {
        auto &janela = *static_cast<QWidget *>(objeto);
        if (EhJanela(janela)) {
            switch (evento->type()) {
            case QEvent::Show:
                Poe(janela);
                break;
            case QEvent::Hide:
                Guarda(janela);
                break;
            case QEvent::Resize:        // by the program
                if (!EhCaixa(janela)) { // which still has to find its place over its window
                    Contem(janela);
                }
                break;
            default:
                break;
            }
        }
    }
    return QObject::eventFilter(objeto, evento);
}

} // namespace mesa
