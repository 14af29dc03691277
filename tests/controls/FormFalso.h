#pragma once

#include "host/IForm.h"

#include <string>
#include <vector>

// A form without a module behind it: shown and enabled, with the controls that a test puts on it.
class FormFalso : public IForm {
  public:
    std::string_view NomeTipo() const override { return "FormFalso"; }
    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override;
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override { m_Visible = valor; }
    void SetFocus() override { m_PediuFoco.dispara(); }
    std::string Caption() const override { return {}; }
    void DefineCaption(const std::string &) override {}
    std::int32_t Left() const override { return 0; }
    void DefineLeft(std::int32_t) override {}
    std::int32_t Top() const override { return 0; }
    void DefineTop(std::int32_t) override {}
    std::int32_t Width() const override { return 0; }
    void DefineWidth(std::int32_t) override {}
    std::int32_t Height() const override { return 0; }
    void DefineHeight(std::int32_t) override {}
    std::int16_t WindowState() const override { return JanelaNormal; }
    void DefineWindowState(std::int16_t) override {}
    bool MDIChild() const override { return false; }
    std::int64_t hwnd() const override { return 1; }
    void ZOrder(std::int16_t) override {}
    std::string Icone() const override { return {}; }
    const std::vector<Ref<IControle>> &Controles() const override { return m_Controles; }
    Ref<IControle> ControleAtivo() const override { return m_Ativo.Alvo(); }
    void DefineControleAtivo(const Ref<IControle> &controle) override { m_Ativo = controle; }
    void Unload(bool &cancela) override { cancela = m_RecusaFechar; }
    void Ativada() override {}
    void Desativada() override {}
    void Redimensionada() override {}
    Evento<> &Mudou() override { return m_Mudou; }
    Evento<> &PediuFoco() override { return m_PediuFoco; }
    Evento<std::int16_t> &PediuOrdem() override { return m_PediuOrdem; }

    void Guarda(const Ref<IControle> &controle) { m_Controles.push_back(controle); }
    // Every value that Enabled was given, in order.
    const std::vector<bool> &EnabledEscritos() const { return m_EnabledEscritos; }
    void RecusaFechar() { m_RecusaFechar = true; }

  private:
    bool m_Enabled = true;
    bool m_Visible = true;
    bool m_RecusaFechar = false;
    std::vector<bool> m_EnabledEscritos;
    std::vector<Ref<IControle>> m_Controles;
    RefFraca<IControle> m_Ativo;
    Evento<> m_Mudou;
    Evento<> m_PediuFoco;
    Evento<std::int16_t> m_PediuOrdem;
};
