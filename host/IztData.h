#pragma once

#include "host/IControle.h"

#include <string>

// The date field, dd/mm/yyyy.
class IztData : public IControle {
  public:
    // Empty when nothing was typed, otherwise the text.
    virtual std::string Valor() const = 0;
    // Text with the template's characters; "  /  /    " when nothing was typed.
    virtual std::string Text() const = 0;
    // Writes a date as text. A text without a day, such as the one of no date, empties the field.
    // Raises Change when the text becomes another one.
    virtual void DefineText(const std::string &valor) = 0;
    // The text is a whole date of the calendar.
    virtual bool DataValida() const = 0;
    virtual bool ReadOnly() const = 0;
    virtual void DefineReadOnly(bool valor) = 0;
    virtual Evento<> &Change() = 0;
};
