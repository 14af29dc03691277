#include "desk/windows/Aparencia.h"

#include "desk/windows/Acessibilidade.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EstiloDaMesa.h"
#include "desk/windows/Impressora.h"
#include "desk/windows/Paletas.h"
#include "desk/windows/RodaDoMouse.h"
#include "desk/windows/Traducao.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLocale>
#include <QToolTip>

namespace mesa {

namespace {

constexpr double Inteiro = 100; // percent

} // namespace

void PreparaAparencia(QApplication &aplicacao)
{
    QApplication::setStyle(new EstiloDaMesa);
    PreparaAcessibilidade();
    AquietaRoda(aplicacao);
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    Traduz(aplicacao);
}

Aparencia::Aparencia(Preferencias &preferencias)
    : m_Preferencias(preferencias),
      m_Letra(QApplication::font()),
      m_AoMudar(preferencias.MudouAspecto().liga([this] { Aplica(); }))
{
    qApp->installEventFilter(this);
    Aplica();
}

Aparencia::~Aparencia()
{
    qApp->removeEventFilter(this);
    QApplication::setPalette(QPalette());
    QToolTip::setPalette(QApplication::palette());
    PoeTexto(static_cast<std::int32_t>(Inteiro));
    DefineImpressora("");
}

void Aparencia::DefineDesejo(DesejoDeCores desejo)
{
    m_Desejo = desejo;
    Aplica();
}

void Aparencia::Aplica()
{
    const Aspecto aspecto = m_Preferencias.Aspecto();
    PoeCores(aspecto.Cores);
    PoeTexto(aspecto.TamanhoDoTexto);
    DefineImpressora(aspecto.Impressora);
}

void Aparencia::PoeCores(Tema tema)
{
    m_Pondo = true;
    QApplication::setPalette(QPalette()); // the system's own again
    const QPalette doSistema = QApplication::palette();
    bool escura = EhEscura(doSistema);
    if (tema != Tema::Sistema) {
        escura = tema == Tema::Escuro;
    } else if (m_Desejo != DesejoDeCores::Nenhum) {
        escura = m_Desejo == DesejoDeCores::Escuro;
    }
    if (escura != EhEscura(doSistema)) {
        QApplication::setPalette(escura ? PaletaEscura() : PaletaClara());
    } else {
        QApplication::setPalette(Retoques(doSistema));
    }
    m_Postas = QApplication::palette();
    QToolTip::setPalette(m_Postas);
    m_Pondo = false;
}

void Aparencia::PoeTexto(std::int32_t tamanho)
{
    QFont letra = m_Letra;
    if (letra.pointSizeF() > 0) {
        letra.setPointSizeF(letra.pointSizeF() * tamanho / Inteiro);
    } else {
        letra.setPixelSize(static_cast<int>(letra.pixelSize() * tamanho / Inteiro));
    }
    if (letra == QApplication::font()) {
        return;
    }
    QApplication::setFont(letra);
    for (QWidget *janela : QApplication::topLevelWidgets()) { // as soon as what is in them has the new size
        if (qobject_cast<QDialog *>(janela) != nullptr) {
            QMetaObject::invokeMethod(
                janela, [janela] { Cresce(*janela); }, Qt::QueuedConnection);
        }
    }
}

// The system's palette is another one; the desk's own change comes here too, at once and once more.
bool Aparencia::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::ApplicationPaletteChange && !m_Pondo && QApplication::palette() != m_Postas) {
        PoeCores(m_Preferencias.Aspecto().Cores);
    }
    return QObject::eventFilter(objeto, evento);
}

} // namespace mesa
