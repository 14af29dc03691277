#pragma once

#include "host/IForm.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

// What a control is made from: its form, its piece of the form's description, and what holds it.
struct Origem {
    const Ref<IForm> &Form;
    const Peca &Descricao;
    const Ref<IControle> &Container;
    std::int16_t Pagina;

    template <class Proprios> const Proprios &Ajustes() const { return std::get<Proprios>(Descricao.Ajustes); }
};

// What every control is made of, whatever its kind: the settings, the place on the form, the focus, and the notices
// that a screen layer follows. Reached from an IControle by ComoBase.
class ControleBase {
  public:
    ControleBase(const ControleBase &) = delete;
    ControleBase &operator=(const ControleBase &) = delete;
    virtual ~ControleBase() = default;

    // Something that a screen shows of the control has changed; raised before the event that tells the module. What a
    // container or a page does to the controls in it is told by the container alone.
    Evento<> &Mudou() { return m_Mudou; }
    // The control got the focus, or was given it again by the module: the screen layer brings its own to it.
    Evento<> &RecebeuFoco() { return m_RecebeuFoco; }

    // Whether this kind of control takes the focus at all.
    bool AceitaFoco() const;
    // Enabled with everything around it: containers, pages of tab strips, form.
    bool HabilitadoDeFato() const;
    // To be seen with everything around it; on a page of a tab strip, only while that page is the current one.
    bool VisivelDeFato() const;
    bool TemFoco() const;
    // Why the person cannot use the control; empty when they can.
    std::string Impedimento() const;
    // Nothing once the form has ended.
    Ref<IForm> Form() const { return m_Form.Alvo(); }

    // The person goes to the control, with the tab key or the mouse.
    bool Foco();
    // The person is done with what they typed: leaves the control, or presses Enter in it.
    virtual void Conclui() {}

  protected:
    explicit ControleBase(const Origem &origem);

    virtual IControle &EsteControle() = 0;
    // The focus is here; chegou: it was elsewhere before.
    virtual void AoReceberFoco(bool chegou);

    // Holds the control while one of its operations raises events: a handler may release it.
    Ref<IControle> Vivo() { return Eu(EsteControle()); }
    // The person can act on it now.
    bool Usavel() const { return HabilitadoDeFato() && VisivelDeFato(); }
    void DaFoco();
    void Renumera(std::int16_t tabIndex);

    template <class T> void Redefine(T &campo, const T &valor)
    {
        if (campo != valor) {
            Ref<IControle> vivo = Vivo();
            campo = valor;
            m_Mudou.dispara();
        }
    }

    EspecieControle m_Especie;
    std::string m_Nome;
    std::int16_t m_Indice;
    std::string m_Caption;
    std::string m_Rotulo;
    Ref<IControle> m_Container;
    std::int16_t m_Pagina;
    bool m_Enabled;
    bool m_Visible;
    std::int32_t m_Left;
    std::int32_t m_Top;
    std::int32_t m_Width;
    std::int32_t m_Height;
    std::int16_t m_TabIndex;

  private:
    bool HabilitadoComContainers() const;
    // pedido: by the module, which may ask for what it cannot know to be so already.
    void EntraFoco(bool pedido);

    RefFraca<IForm> m_Form;
    Evento<> m_Mudou;
    Evento<> m_RecebeuFoco;
};

// Name of the class of a kind of control.
std::string_view NomeEspecie(EspecieControle especie);

// The control as what it is made of; null for Nothing and for a control of another maker. Never to be kept.
ControleBase *ComoBase(const Ref<IControle> &controle);
