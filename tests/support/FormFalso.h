#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// A form without a module behind it, as simple as a host may meet, with the controls that a test puts on it. It knows
// the contract alone, and counts what the host tells it.
class FormFalso : public IForm {
  public:
    std::string_view NomeTipo() const override { return "FormFalso"; }

    // What the unload answers, and what it does before.
    bool CancelaUnload = false;
    std::function<void()> NoUnload;
    int Unloads = 0;
    int Ativacoes = 0;
    int Desativacoes = 0;
    // Every value that Enabled was given, in order.
    std::vector<bool> EnabledEscritos;

    // Loads the form, shows it through the host, and closes it.
    void Carrega() { Plataforma()->Carrega(Este()); }
    void Mostra(const Ref<IObjInterface> &objInterface, bool modal, Ref<Objeto> &formClick)
    {
        Carrega();
        Ref<IForm> dono;
        objInterface->MostraJanela(Este(), modal ? std::int16_t{-1} : std::int16_t{0}, dono, 0, formClick);
    }
    void Fecha() { Plataforma()->Descarrega(Este()); }

    template <class Controle> Ref<Controle> Guarda(Ref<Controle> controle)
    {
        m_Controles.push_back(controle);
        return controle;
    }
    Ref<IForm> Este() { return Eu(static_cast<IForm &>(*this)); }

    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override
    {
        EnabledEscritos.push_back(valor);
        Poe(m_Enabled, valor);
    }
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override { Poe(m_Visible, valor); }
    void SetFocus() override { m_PediuFoco.dispara(); }
    std::string Caption() const override { return m_Caption; }
    void DefineCaption(const std::string &valor) override { Poe(m_Caption, valor); }
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
    bool MDIChild() const override { return false; }
    std::int64_t hwnd() const override { return m_hwnd; }
    void ZOrder(std::int16_t posicao) override { m_PediuOrdem.dispara(posicao); }
    std::string Icone() const override { return ""; }
    Ref<IForm> frmParent() const override { return m_frmParent; }
    void DefinefrmParent(const Ref<IForm> &form) override { m_frmParent = form; }
    const std::vector<Ref<IControle>> &Controles() const override { return m_Controles; }
    Ref<IControle> ControleAtivo() const override { return m_ControleAtivo.Alvo(); }
    void DefineControleAtivo(const Ref<IControle> &controle) override { m_ControleAtivo = controle; }
    void Unload(bool &cancela) override
    {
        ++Unloads;
        if (NoUnload) {
            NoUnload();
        }
        cancela = CancelaUnload;
        if (!cancela) {
            m_Visible = false;
            m_frmParent = nullptr;
        }
    }
    void Ativada() override { ++Ativacoes; }
    void Desativada() override { ++Desativacoes; }
    void Redimensionada() override {}
    Evento<> &Mudou() override { return m_Mudou; }
    Evento<> &PediuFoco() override { return m_PediuFoco; }
    Evento<std::int16_t> &PediuOrdem() override { return m_PediuOrdem; }

  private:
    template <class T> void Poe(T &membro, const T &valor)
    {
        membro = valor;
        m_Mudou.dispara();
    }

    static inline std::int64_t g_UltimoHwnd = 0;

    bool m_Enabled = true;
    bool m_Visible = false;
    std::string m_Caption = "Falso";
    std::int32_t m_Left = 0;
    std::int32_t m_Top = 0;
    std::int32_t m_Width = 6000;
    std::int32_t m_Height = 4000;
    std::int16_t m_WindowState = JanelaNormal;
    std::int64_t m_hwnd = ++g_UltimoHwnd;
    Ref<IForm> m_frmParent;
    std::vector<Ref<IControle>> m_Controles;
    RefFraca<IControle> m_ControleAtivo;
    Evento<> m_Mudou;
    Evento<> m_PediuFoco;
    Evento<std::int16_t> m_PediuOrdem;
};

// The same without the member for the host's wrapping form.
class FormSemParent : public FormFalso {
  public:
    Ref<IForm> frmParent() const override { return IForm::frmParent(); }
    void DefinefrmParent(const Ref<IForm> &form) override { IForm::DefinefrmParent(form); }
};

inline Ref<FormFalso> FormNaTela()
{
    auto form = Novo<FormFalso>();
    form->DefineVisible(true);
    return form;
}
