#pragma once

#include "controls/ControleBase.h"
#include "host/Evento.h"
#include "host/IControle.h"
#include "services/TextoQt.h"
#include "tela/Partes.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLineEdit;
class QWidget;

namespace mesa {

// The text for a tip, which the toolkit would otherwise read for tags.
QString TextoDeDica(const QString &texto);

// A field that can be read and copied but not changed looks like the window that it is in.
void DefineSomenteLeitura(QLineEdit &campo, bool valor);

// Runs what a person did at the edge of the windows: a fault that comes out of the module is shown and ends there.
using Borda = std::function<void(const std::function<void()> &)>;

// Shows one control in one widget and hands what the person does there to the control's person's face. No rule lives
// here: what the control answers is what the widget shows.
class Renderizador : public QObject {
  public:
    Renderizador(Ref<IControle> controle, QWidget *widget, Borda borda);

    const Ref<IControle> &Controle() const { return m_Controle; }
    QWidget *Widget() const;
    // Brings the widget to what the control is now.
    void Atualiza();
    // What of the widget takes the keyboard, in the order of the Tab key.
    std::vector<QWidget *> Partes() const;
    // That has the keyboard; none when it is elsewhere.
    std::optional<Parte> ParteComTeclado() const;
    // The keyboard goes there, whatever the control says; nothing without a widget for it.
    void LevaTeclado(Parte parte);

  protected:
    // What is particular to the kind of control; enabled and visible are done before.
    virtual void Mostra() = 0;
    // Of a control of several parts, the widget of each; null for one that it does not show.
    virtual QWidget *WidgetDe(Parte parte) const;

    bool eventFilter(QObject *objeto, QEvent *evento) override;
    // Follows the keyboard's way to another widget of this control.
    void SegueFoco(QWidget *widget);

    // Something that the person did. Afterwards the widget shows what came of it.
    void Age(const std::function<void()> &acao);

    std::vector<Conexao> m_Conexoes;

  private:
    Ref<IControle> m_Controle;
    QPointer<QWidget> m_Widget;
    Borda m_Borda;
    bool m_Mostrando = false;
};

// The control as its own class and face.
template <class C> C &Como(const Renderizador &renderizador)
{
    return dynamic_cast<C &>(*renderizador.Controle());
}

} // namespace mesa
