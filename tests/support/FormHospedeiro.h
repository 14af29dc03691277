#pragma once

#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <string>
#include <vector>

// A window of the host's own: what it wraps around a form of the module. It has no member frmParent. Bringing it to the
// front is noted in the log as "frmHospedeiro.ZOrder(0)".
class FormHospedeiro : public IForm {
  public:
    FormHospedeiro(RefRegistro registro, std::int64_t hwnd) : m_Registro(std::move(registro)), m_hwnd(hwnd) {}

    std::string_view NomeTipo() const override { return "frmHospedeiro"; }

    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override { m_Enabled = valor; }
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override { m_Visible = valor; }
    void SetFocus() override { m_Registro->Nota("frmHospedeiro.SetFocus()"); }

    std::string Caption() const override { return m_Caption; }
    void DefineCaption(const std::string &valor) override { m_Caption = valor; }
    std::int32_t Left() const override { return m_Left; }
    void DefineLeft(std::int32_t valor) override { m_Left = valor; }
    std::int32_t Top() const override { return m_Top; }
    void DefineTop(std::int32_t valor) override { m_Top = valor; }
    std::int32_t Width() const override { return m_Width; }
    void DefineWidth(std::int32_t valor) override { m_Width = valor; }
    std::int32_t Height() const override { return m_Height; }
    void DefineHeight(std::int32_t valor) override { m_Height = valor; }
    std::int16_t WindowState() const override { return m_WindowState; }
    void DefineWindowState(std::int16_t valor) override { m_WindowState = valor; }
    bool MDIChild() const override { return true; }
    std::int64_t hwnd() const override { return m_hwnd; }
    void ZOrder(std::int16_t posicao) override
    {
        m_Registro->Nota("frmHospedeiro.ZOrder(" + std::to_string(posicao) + ")");
    }
    std::string Icone() const override { return ""; }

    const std::vector<Ref<IControle>> &Controles() const override { return m_Controles; }
    Ref<IControle> ControleAtivo() const override { return nullptr; }
    void DefineControleAtivo(const Ref<IControle> &) override {}

    void Unload(bool &) override {}
    void Ativada() override {}
    void Desativada() override {}
    void Redimensionada() override {}

    Evento<> &Mudou() override { return m_Mudou; }
    Evento<> &PediuFoco() override { return m_PediuFoco; }
    Evento<std::int16_t> &PediuOrdem() override { return m_PediuOrdem; }

  private:
    RefRegistro m_Registro;
    std::int64_t m_hwnd;
    bool m_Enabled = true;
    bool m_Visible = false;
    std::string m_Caption;
    std::int32_t m_Left = 0;
    std::int32_t m_Top = 0;
    std::int32_t m_Width = 0;
    std::int32_t m_Height = 0;
    std::int16_t m_WindowState = JanelaNormal;
    std::vector<Ref<IControle>> m_Controles;
    Evento<> m_Mudou;
    Evento<> m_PediuFoco;
    Evento<std::int16_t> m_PediuOrdem;
};
