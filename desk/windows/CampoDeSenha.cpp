#include "desk/windows/CampoDeSenha.h"

#include "desk/windows/Cores.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "services/TextoQt.h"

#include <QAccessible>
#include <QAction>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

#include <utility>

namespace mesa {

namespace {

constexpr quint32 TravaNoSistema = 2; // the bit of Caps Lock in what these window systems give with a key

bool SistemaDizTrava()
{
    return QGuiApplication::platformName() == "xcb" || QGuiApplication::platformName().startsWith("wayland");
}

} // namespace

CampoDeSenha::CampoDeSenha(const QString &nome, QWidget *dono)
    : QLineEdit(dono),
      m_Mostrar(new QAction(this)),
      m_AvisoDeMaiusculas(FazTexto(nome + "Maiusculas", "", dono))
{
    setObjectName(nome);
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhSensitiveData);
    Colore(*m_AvisoDeMaiusculas, Cor::Aviso);
    m_AvisoDeMaiusculas->hide();
    m_Mostrar->setObjectName(nome + "Mostrar");
    m_Mostrar->setCheckable(true);
    m_Mostrar->setShortcut(QKeySequence("Ctrl+M"));
    m_Mostrar->setShortcutContext(Qt::WidgetShortcut);
    connect(m_Mostrar, &QAction::toggled, this, [this](bool valor) { Mostra(valor); });
    Mostra(false);
    addAction(m_Mostrar, QLineEdit::TrailingPosition);
    if (auto *botao = findChild<QToolButton *>()) {
        botao->setObjectName(m_Mostrar->objectName());
    }
}

CampoDeSenha::~CampoDeSenha()
{
    Limpa();
}

Segredo CampoDeSenha::Senha() const
{
    QString digitada = text();
    return Segredo::Toma(digitada);
}

void CampoDeSenha::Limpa()
{
    QString digitada = text();
    setText(QString()); // now only this one holds it
    Segredo::Toma(digitada);
    Esconde();
}

void CampoDeSenha::Esconde()
{
    m_Mostrar->setChecked(false);
}

void CampoDeSenha::Mostra(bool valor)
{
    const QString oQue = valor ? "Esconder a senha" : "Mostrar a senha";
    setEchoMode(valor ? QLineEdit::Normal : QLineEdit::Password);
    m_Mostrar->setText(oQue);
    m_Mostrar->setToolTip(oQue + " (" + m_Mostrar->shortcut().toString(QKeySequence::NativeText) + ")");
    m_Mostrar->setIcon(Icone(valor ? "olhofechado" : "olho"));
}

void CampoDeSenha::ContaMaiusculas()
{
    const bool ligado = m_Vigia.Ligado();
    if (ligado == m_AvisoDeMaiusculas->isVisibleTo(m_AvisoDeMaiusculas->parentWidget())) {
        return;
    }
    const QString frase = ligado ? "Caps Lock está ligado." : "";
    m_AvisoDeMaiusculas->setVisible(ligado);
    MostraAviso(*m_AvisoDeMaiusculas, frase);
    setAccessibleDescription(frase);
    if (ligado) {
        QAccessibleEvent contado(m_AvisoDeMaiusculas, QAccessible::Alert);
        QAccessible::updateAccessibility(&contado);
    }
}

void CampoDeSenha::keyPressEvent(QKeyEvent *evento)
{
    if (SistemaDizTrava()) {
        const bool antes = (evento->nativeModifiers() & TravaNoSistema) != 0; // this key is not yet in it
        m_Vigia.Soube(evento->key() == Qt::Key_CapsLock ? !antes : antes);
    } else if (evento->key() == Qt::Key_CapsLock) {
        m_Vigia.Trocou();
    } else {
        m_Vigia.Digitou(S(evento->text()), evento->modifiers().testFlag(Qt::ShiftModifier));
    }
    ContaMaiusculas();
    QLineEdit::keyPressEvent(evento);
}

} // namespace mesa
