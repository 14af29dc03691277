#pragma once

#include "host/IControle.h"

#include <string>
#include <utility>

// A control of another maker, as a host may put on a form: it has the contract's face and no other.
class ControleAlheio : public IControle {
  public:
    explicit ControleAlheio(std::string nome) : m_Nome(std::move(nome)) {}

    std::string_view NomeTipo() const override { return "ControleAlheio"; }
    bool Enabled() const override { return true; }
    void DefineEnabled(bool) override {}
    bool Visible() const override { return true; }
    void DefineVisible(bool) override {}
    void SetFocus() override {}
    const std::string &Nome() const override { return m_Nome; }
    std::int16_t Indice() const override { return -1; }
    EspecieControle Especie() const override { return EspecieControle::Label; }
    std::string Caption() const override { return "&Alheio"; }
    void DefineCaption(const std::string &) override {}
    std::string Rotulo() const override { return {}; }
    void DefineRotulo(const std::string &) override {}
    Ref<IControle> Container() const override { return {}; }
    std::int16_t Pagina() const override { return -1; }
    std::int32_t Left() const override { return 0; }
    void DefineLeft(std::int32_t) override {}
    std::int32_t Top() const override { return 0; }
    void DefineTop(std::int32_t) override {}
    std::int32_t Width() const override { return 0; }
    void DefineWidth(std::int32_t) override {}
    std::int32_t Height() const override { return 0; }
    void DefineHeight(std::int32_t) override {}
    std::int16_t TabIndex() const override { return 0; }
    void DefineTabIndex(std::int16_t) override {}

  private:
    std::string m_Nome;
};
