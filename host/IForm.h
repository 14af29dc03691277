#pragma once

#include "host/Desenho.h"
#include "host/Evento.h"
#include "host/IControle.h"
#include "host/IFocavel.h"

#include <cstdint>
#include <string>
#include <vector>

// Codes of IForm::WindowState.
inline constexpr std::int16_t JanelaNormal = 0;
inline constexpr std::int16_t JanelaMinimizada = 1;

// A window: a form of the module, or one of the host's own around it. Positions and sizes are in twips.
// NomeTipo() is the form's class, such as "frmLista".
class IForm : public IFocavel {
  public:
    virtual std::string Caption() const = 0;
    virtual void DefineCaption(const std::string &valor) = 0;
    virtual std::int32_t Left() const = 0;
    virtual void DefineLeft(std::int32_t valor) = 0;
    virtual std::int32_t Top() const = 0;
    virtual void DefineTop(std::int32_t valor) = 0;
    virtual std::int32_t Width() const = 0;
    virtual void DefineWidth(std::int32_t valor) = 0;
    virtual std::int32_t Height() const = 0;
    virtual void DefineHeight(std::int32_t valor) = 0;
    virtual std::int16_t WindowState() const = 0;
    virtual void DefineWindowState(std::int16_t valor) = 0;
    virtual bool MDIChild() const = 0;
    // Window handle, unique among the open windows.
    virtual std::int64_t hwnd() const = 0;
    // 0: brings the window to the front.
    virtual void ZOrder(std::int16_t posicao) = 0;
    // Key of the window's icon; empty for the platform's.
    virtual std::string Icone() const = 0;

    // The host's wrapping form, or Nothing. A form without this member raises fault 438, as these bodies do.
    virtual Ref<IForm> frmParent() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinefrmParent(const Ref<IForm> &) { throw Falha(NumeroFalha::MembroInexistente); }

    // How its controls stand, for the screen layer; empty for a form that was never described.
    virtual ::Desenho Desenho() const { return {}; }
    // Controls in the order of creation.
    virtual const std::vector<Ref<IControle>> &Controles() const = 0;
    // The control that has the focus, or Nothing. Written by the controls.
    virtual Ref<IControle> ControleAtivo() const = 0;
    virtual void DefineControleAtivo(const Ref<IControle> &controle) = 0;

    // What the host tells a form of the module.

    // The form is about to be unloaded; writing true to the flag keeps it open. When it stays false the form has
    // released what it held and the host closes the window.
    virtual void Unload(bool &cancela) = 0;
    // The wrapping form became active, or stopped being so.
    virtual void Ativada() = 0;
    virtual void Desativada() = 0;
    virtual void Redimensionada() = 0;

    // What a screen layer follows: something that it shows of the window itself has changed; the form wants the focus;
    // the form wants another place among the windows (argument as of ZOrder).
    virtual Evento<> &Mudou() = 0;
    virtual Evento<> &PediuFoco() = 0;
    virtual Evento<std::int16_t> &PediuOrdem() = 0;
};
