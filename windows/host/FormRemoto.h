#pragma once

#include "host/IForm.h"
#include "windows/automation/Remoto.h"

#include <windows.h>

namespace nativo {

// A form of the foreign host: one that wraps a form of the module, or that owns its window. The window of none of them
// is ours, and none has controls that we know.
class FormRemoto : public Remoto<IForm> {
  public:
    using Remoto::Remoto;

    // The window itself; null when the form does not tell it.
    HWND Manipulador() const;

    bool Enabled() const override;
    void DefineEnabled(bool valor) override;
    bool Visible() const override;
    void DefineVisible(bool valor) override;
    void SetFocus() override;
    std::string Caption() const override;
    void DefineCaption(const std::string &valor) override;
    std::int32_t Left() const override;
    void DefineLeft(std::int32_t valor) override;
    std::int32_t Top() const override;
    void DefineTop(std::int32_t valor) override;
    std::int32_t Width() const override;
    void DefineWidth(std::int32_t valor) override;
    std::int32_t Height() const override;
    void DefineHeight(std::int32_t valor) override;
    std::int16_t WindowState() const override;
    void DefineWindowState(std::int16_t valor) override;
    bool MDIChild() const override;
    // Of no form of the module, whatever number that has.
    std::int64_t hwnd() const override;
    void ZOrder(std::int16_t posicao) override;
    std::string Icone() const override { return {}; }

    const std::vector<Ref<IControle>> &Controles() const override;
    Ref<IControle> ControleAtivo() const override { return nullptr; }
    void DefineControleAtivo(const Ref<IControle> &controle) override;

    // Told to forms of the module alone: fault 438.
    void Unload(bool &cancela) override;
    void Ativada() override;
    void Desativada() override;
    void Redimensionada() override;

    Evento<> &Mudou() override { return m_Mudou; }
    Evento<> &PediuFoco() override { return m_PediuFoco; }
    Evento<std::int16_t> &PediuOrdem() override { return m_PediuOrdem; }

  private:
    Evento<> m_Mudou;
    Evento<> m_PediuFoco;
    Evento<std::int16_t> m_PediuOrdem;
};

// The window behind a number that FormRemoto::hwnd gave; null for any other.
HWND JanelaAlheia(std::int64_t hwnd);
// The window that a foreign object tells as its hWnd; null when it tells none.
HWND ManipuladorDe(const ObjetoRemoto &objeto);

} // namespace nativo
