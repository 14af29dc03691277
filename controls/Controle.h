#pragma once

#include "controls/ControleBase.h"

// Gives what every control is made of the face that the contract asks of one kind.
template <class Contrato> class Controle : public Contrato, public ControleBase {
  public:
    explicit Controle(const Origem &origem) : ControleBase(origem) {}

    std::string_view NomeTipo() const override { return NomeEspecie(m_Especie); }
    const std::string &Nome() const override { return m_Nome; }
    std::int16_t Indice() const override { return m_Indice; }
    EspecieControle Especie() const override { return m_Especie; }
    std::string Caption() const override { return m_Caption; }
    void DefineCaption(const std::string &valor) override { Redefine(m_Caption, valor); }
    std::string Rotulo() const override { return m_Rotulo; }
    void DefineRotulo(const std::string &valor) override { Redefine(m_Rotulo, valor); }
    Ref<IControle> Container() const override { return m_Container; }
    std::int16_t Pagina() const override { return m_Pagina; }
    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override { Redefine(m_Enabled, valor); }
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override { Redefine(m_Visible, valor); }
    void SetFocus() override { DaFoco(); }
    std::int32_t Left() const override { return m_Left; }
    void DefineLeft(std::int32_t valor) override { Redefine(m_Left, valor); }
    std::int32_t Top() const override { return m_Top; }
    void DefineTop(std::int32_t valor) override { Redefine(m_Top, valor); }
    std::int32_t Width() const override { return m_Width; }
    void DefineWidth(std::int32_t valor) override { Redefine(m_Width, valor); }
    std::int32_t Height() const override { return m_Height; }
    void DefineHeight(std::int32_t valor) override { Redefine(m_Height, valor); }
    std::int16_t TabIndex() const override { return m_TabIndex; }
    void DefineTabIndex(std::int16_t valor) override { Renumera(valor); }

  protected:
    IControle &EsteControle() override { return *this; }
};
