#pragma once

#include "host/IControle.h"

#include <cstdint>
#include <string>

// The masked text field.
class IztMask : public IControle {
  public:
    // Text with its mask characters. An hour mask shows "_" for a digit not typed, so an incomplete hour is no valid
    // time.
    virtual std::string Text() const = 0;
    // Writes a text, with or without mask characters; what the field does not take is left out, what is too long is
    // cut. Raises Change when the text becomes another one.
    virtual void DefineText(const std::string &valor) = 0;
    // Text without mask characters; empty when nothing was typed.
    virtual std::string Valor() const = 0;
    // Leading number of the text; 0 when there is none.
    virtual double ValorNumerico() const = 0;
    virtual bool ReadOnly() const = 0;
    virtual void DefineReadOnly(bool valor) = 0;
    virtual Evento<> &Change() = 0;
};

struct AjustesZtMask : AjustesControle {
    std::int32_t MaxLength = 0;        // characters, mask characters included; 0 for no limit
    std::int16_t Tipo = 0;             // 0 anything, 1 digits only, 7 code text, 12 hour mask
    std::string Mascara;               // "00:00" with Tipo 12
    std::string CaracteresAceitos;     // taken besides the letters and digits of a code text
    std::int16_t TabelaCaracteres = 0; // 1: of the letters, a code text takes only those without accents
    bool SomenteMaiusculas = true;     // letters become upper case as they are typed (Tipo 7)
    bool ReadOnly = false;
};
