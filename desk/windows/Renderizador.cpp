#include "desk/windows/Renderizador.h"

#include <QEvent>
#include <QLineEdit>
#include <QPalette>
#include <QTextDocument>
#include <QWidget>

#include <algorithm>

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
    QPalette cores;
    if (valor) {
        cores.setColor(QPalette::Base, cores.color(QPalette::Window));
    }
    campo.setPalette(cores);
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
        const std::vector<QWidget *> partes = Partes();
        const bool aqui =
            std::any_of(partes.begin(), partes.end(), [](const QWidget *parte) { return parte->hasFocus(); });
        if (QWidget *alvo = AlvoDoFoco(); alvo != nullptr && !aqui) {
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
    return {m_Widget};
}

QWidget *Renderizador::AlvoDoFoco()
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
