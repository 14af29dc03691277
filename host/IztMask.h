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
    // Writes a text as it is: what the field takes and how much of it is asked of a person's keys alone. An hour mask
    // keeps its places, and takes a text with or without its mask characters. Raises Change when the text becomes
    // another one.
    virtual void DefineText(const std::string &valor) = 0;
    // Text without mask characters; empty when nothing was typed.
    virtual std::string Valor() const = 0;
    // Leading number of the text; 0 when there is none.
    virtual double ValorNumerico() const = 0;
    virtual bool ReadOnly() const = 0;
    virtual void DefineReadOnly(bool valor) = 0;
    virtual Evento<> &Change() = 0;
};
