#pragma once

#include "controls/ControleBase.h"

// Gives what every control is made of the face that the contract asks of one kind.
template <class Contrato> class Controle : public Contrato, public ControleBase {
  public:
    std::string_view NomeTipo() const override { return NomeEspecie(m_Especie); }
    const std::string &Nome() const override { return m_Ajustes.Nome; }
    std::int16_t Indice() const override { return m_Ajustes.Indice; }
    EspecieControle Especie() const override { return m_Especie; }
    std::string Caption() const override { return m_Ajustes.Caption; }
    void DefineCaption(const std::string &valor) override { Redefine(m_Ajustes.Caption, valor); }
    const std::string &Rotulo() const override { return m_Ajustes.Rotulo; }
    Ref<IControle> Container() const override { return m_Ajustes.Container; }
    std::int16_t Pagina() const override { return m_Ajustes.Pagina; }
    bool Enabled() const override { return m_Ajustes.Enabled; }
    void DefineEnabled(bool valor) override { Redefine(m_Ajustes.Enabled, valor); }
    bool Visible() const override { return m_Ajustes.Visible; }
    void DefineVisible(bool valor) override { Redefine(m_Ajustes.Visible, valor); }
    void SetFocus() override { DaFoco(); }
    std::int32_t Left() const override { return m_Ajustes.Left; }
    void DefineLeft(std::int32_t valor) override { Redefine(m_Ajustes.Left, valor); }
    std::int32_t Top() const override { return m_Ajustes.Top; }
    void DefineTop(std::int32_t valor) override { Redefine(m_Ajustes.Top, valor); }
    std::int32_t Width() const override { return m_Ajustes.Width; }
    void DefineWidth(std::int32_t valor) override { Redefine(m_Ajustes.Width, valor); }
    std::int32_t Height() const override { return m_Ajustes.Height; }
    void DefineHeight(std::int32_t valor) override { Redefine(m_Ajustes.Height, valor); }
    std::int16_t TabIndex() const override { return m_TabIndex; }
    void DefineTabIndex(std::int16_t valor) override { Renumera(valor); }

  protected:
    Controle(const Ref<IForm> &form, const AjustesControle &ajustes, EspecieControle especie)
        : ControleBase(form, ajustes, especie)
    {
    }

    IControle &EsteControle() override { return *this; }
};
