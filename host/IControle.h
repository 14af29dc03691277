#pragma once

#include "host/Evento.h"
#include "host/IFocavel.h"

#include <cstdint>
#include <string>

// Kinds of control, by the name of the control's class.
enum class EspecieControle {
    Label,
    TextBox,
    CheckBox,
    OptionButton,
    CommandButton,
    SSTab,
    Image,
    CommonDialog,
    ztList,
    ztCombo,
    ztMask,
    ztData,
    ztCommand,
    ztFrame,
    ztVeiObservacao,
    ztEndereco,
    ztClienteSetor,
};

// What every control on a form offers. Positions and sizes are in twips.
class IControle : public IFocavel {
  public:
    virtual const std::string &Nome() const = 0;
    // Index inside a control array; -1 for a control that is in none.
    virtual std::int16_t Indice() const = 0;
    virtual EspecieControle Especie() const = 0;
    // Text that the control itself shows (label, frame, button, box); "&" marks the mnemonic.
    virtual std::string Caption() const = 0;
    virtual void DefineCaption(const std::string &valor) = 0;
    // Text beside the control that has no label control of its own; empty when there is none.
    virtual std::string Rotulo() const = 0;
    virtual void DefineRotulo(const std::string &valor) = 0;
    // Frame or tab strip that holds the control; Nothing when the form itself does.
    virtual Ref<IControle> Container() const = 0;
    // Page of the tab strip in Container, from 0; -1 when the container is no tab strip.
    virtual std::int16_t Pagina() const = 0;
    virtual std::int32_t Left() const = 0;
    virtual void DefineLeft(std::int32_t valor) = 0;
    virtual std::int32_t Top() const = 0;
    virtual void DefineTop(std::int32_t valor) = 0;
    virtual std::int32_t Width() const = 0;
    virtual void DefineWidth(std::int32_t valor) = 0;
    virtual std::int32_t Height() const = 0;
    virtual void DefineHeight(std::int32_t valor) = 0;
    // Place in the tab order, from 0; at first the order of creation. Writing it moves the control to that place and
    // the others of the form close up around it.
    virtual std::int16_t TabIndex() const = 0;
    virtual void DefineTabIndex(std::int16_t valor) = 0;
};
