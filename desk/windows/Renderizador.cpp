#include "desk/windows/Renderizador.h"

#include "desk/windows/Cores.h"

#include <QEvent>
#include <QLineEdit>
#include <QPalette>
#include <QTextDocument>
#include <QWidget>

namespace mesa {

QString TextoDeDica(const QString &texto)
{
    return Qt::mightBeRichText(texto) ? Qt::convertFromPlainText(texto) : texto;
}

void DefineSomenteLeitura(QLineEdit &campo, bool valor)
{
    if (campo.isReadOnly() == valor) {
        return;
    }
    campo.setReadOnly(valor);
    SeguePaleta(campo, [alvo = &campo] {
        QPalette cores;
        if (alvo->isReadOnly()) {
            cores.setColor(QPalette::Base, cores.color(QPalette::Window));
        }
        alvo->setPalette(cores);
    });
}

Renderizador::Renderizador(Ref<IControle> controle, QWidget *widget, Borda borda)
    : QObject(widget),
      m_Controle(std::move(controle)),
      m_Widget(widget),
      m_Borda(std::move(borda))
{
    ControleBase *base = ComoBase(m_Controle);
    m_Conexoes.push_back(base->Mudou().liga([this] { Atualiza(); }));
    m_Conexoes.push_back(base->RecebeuFoco().liga([this] {
        if (QWidget *alvo = WidgetDe(ParteDoFoco(m_Controle->Especie())); alvo != nullptr && !ParteComTeclado()) {
            alvo->setFocus(Qt::OtherFocusReason);
        }
    }));
    SegueFoco(widget);
}

QWidget *Renderizador::Widget() const
{
    return m_Widget;
}

std::vector<QWidget *> Renderizador::Partes() const
{
    std::vector<QWidget *> partes;
    for (const Parte parte : PartesDe(m_Controle->Especie())) {
        if (QWidget *widget = WidgetDe(parte)) {
            partes.push_back(widget);
        }
    }
    return partes;
}

std::optional<Parte> Renderizador::ParteComTeclado() const
{
    for (const Parte parte : PartesDe(m_Controle->Especie())) {
        if (const QWidget *widget = WidgetDe(parte); widget != nullptr && widget->hasFocus()) {
            return parte;
        }
    }
    return std::nullopt;
}

QWidget *Renderizador::WidgetDe(Parte) const
{
    return m_Widget;
}

void Renderizador::SegueFoco(QWidget *widget)
{
    widget->installEventFilter(this);
}

void Renderizador::Atualiza()
{
    if (m_Widget.isNull() || m_Mostrando) {
        return;
    }
    m_Mostrando = true;
    m_Widget->setEnabled(m_Controle->Enabled());
    m_Widget->setVisible(m_Controle->Visible());
    Mostra();
    m_Mostrando = false;
}

void Renderizador::Age(const std::function<void()> &acao)
{
    if (m_Mostrando) {
        return;
    }
    const QPointer<Renderizador> vivo = this;
    m_Borda(acao);
    if (!vivo.isNull()) {
        Atualiza();
    }
}

bool Renderizador::eventFilter(QObject *objeto, QEvent *evento)
{
    ControleBase *base = ComoBase(m_Controle);
    if (evento->type() == QEvent::FocusIn && !base->TemFoco()) {
        m_Borda([&] { base->Foco(); });
    } else if (evento->type() == QEvent::FocusOut) {
        m_Borda([&] { base->Conclui(); });
    }
    return QObject::eventFilter(objeto, evento);
}

} // namespace mesa
