#pragma once

#include "host/HostServices.h"
#include "shell/Assinante.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Base of the module's forms: the window's state, its controls and the life between load and unload. A form is loaded
// with all its controls at their stored settings, and can be loaded again after it was unloaded; its own fields keep
// their values meanwhile. Its subscriptions end when it is unloaded.
class Formulario : public IForm, public Assinante {
  public:
    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override;
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override;
    void SetFocus() override;

    std::string Caption() const override { return m_Caption; }
    void DefineCaption(const std::string &valor) override;
    std::int32_t Left() const override { return m_Left; }
    void DefineLeft(std::int32_t valor) override;
    std::int32_t Top() const override { return m_Top; }
    void DefineTop(std::int32_t valor) override;
    std::int32_t Width() const override { return m_Width; }
    void DefineWidth(std::int32_t valor) override;
    std::int32_t Height() const override { return m_Height; }
    void DefineHeight(std::int32_t valor) override;
    std::int16_t WindowState() const override { return m_WindowState; }
    void DefineWindowState(std::int16_t valor) override;
    bool MDIChild() const override { return false; }
    std::int64_t hwnd() const override { return m_hwnd; }
    void ZOrder(std::int16_t posicao) override;
    std::string Icone() const override { return m_Icone; }

    Ref<IForm> frmParent() const override { return m_frmParent; }
    void DefinefrmParent(const Ref<IForm> &form) override { m_frmParent = form; }

    const std::vector<Ref<IControle>> &Controles() const override { return m_Controles; }
    Ref<IControle> ControleAtivo() const override { return m_ControleAtivo.Alvo(); }
    void DefineControleAtivo(const Ref<IControle> &controle) override { m_ControleAtivo = controle; }

    void Unload(bool &cancela) override;
    void Ativada() override;
    void Desativada() override;
    void Redimensionada() override;

    Evento<> &Mudou() override { return m_Mudou; }
    Evento<> &PediuFoco() override { return m_PediuFoco; }
    Evento<std::int16_t> &PediuOrdem() override { return m_PediuOrdem; }

  protected:
    // The controls of the description stand: takes those that the form uses, by name, and connects their events.
    virtual void LigaControles() {}
    // The form's own events. A fault in one of them reaches the host, so they end their own chain.
    virtual void Form_Unload(bool &cancela);
    virtual void Form_Activate();
    virtual void Form_Deactivate();
    virtual void Form_Resize();

    // Loads the form unless it is loaded: window state and controls as designed, and among the open forms from now on.
    void Carregar();
    bool Carregado() const { return m_Carregado; }
    // The platform's unload of this form.
    void Descarregar();
    // Unloads the form if it is loaded but not shown: an entry point gave up, nothing of the attempt stays, and the
    // next opening starts from the design.
    void AbandonaCarga() noexcept;
    // Lets go of what the entry point took; for a form that could not be loaded, which is never unloaded either.
    virtual void Solta() {}

    void DefineIcone(const std::string &chave);

    // The control of that name; fault 5 when the description tells none.
    template <class Controle> void Toma(Ref<Controle> &membro, const std::string &nome, std::int16_t indice = -1) const
    {
        membro = ComoTipo<Controle>(ControleChamado(nome, indice));
    }
    // The control array of that name, from its first index on.
    template <class Controle, std::size_t N>
    void Toma(std::array<Ref<Controle>, N> &membros, const std::string &nome, std::int16_t primeiro = 0) const
    {
        for (Ref<Controle> &membro : membros) {
            Toma(membro, nome, primeiro++);
        }
    }

    // A reference to this form, for handing it on.
    Ref<IForm> EsteForm() { return Eu(static_cast<IForm &>(*this)); }

  private:
    // What holds a control: another control, at one of its pages, or Nothing for the form itself.
    struct Recipiente {
        Ref<IControle> Controle;
        std::int16_t Pagina = -1;
    };

    // Creates the control of a piece, if it is one. What holds the pieces in it.
    Recipiente Cria(IFabricaControles &fabrica, const Peca &peca, const Recipiente &recipiente);
    // Creates what is in a piece. Frames that are the pages of a tab strip come before what is on the pages.
    void CriaConteudo(IFabricaControles &fabrica, const Peca &peca, const Recipiente &recipiente);
    Ref<IControle> ControleChamado(const std::string &nome, std::int16_t indice) const;

    bool m_Carregado = false;
    bool m_Enabled = true;
    bool m_Visible = false;
    std::string m_Caption;
    std::int32_t m_Left = 0;
    std::int32_t m_Top = 0;
    std::int32_t m_Width = 0;
    std::int32_t m_Height = 0;
    std::int16_t m_WindowState = JanelaNormal;
    std::int64_t m_hwnd = 0; // 0 while not loaded
    std::string m_Icone;
    Ref<IForm> m_frmParent;
    std::vector<Ref<IControle>> m_Controles;
    RefFraca<IControle> m_ControleAtivo;
    Evento<> m_Mudou;
    Evento<> m_PediuFoco;
    Evento<std::int16_t> m_PediuOrdem;
};
