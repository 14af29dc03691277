#pragma once

#include "host/IControle.h"

#include <cstdint>
#include <string>

// The combo whose items carry a value.
class IztCombo : public IControle {
  public:
    // Empties it; none is chosen then. Raises nothing.
    virtual void Limpa() = 0;
    // Adds an item: its text and, behind the column delimiter, its value. Without a value column, or without a
    // delimiter in the text, the value is the text.
    virtual void AdicionaItem(const std::string &item) = 0;
    // Value of the current item; empty when none is chosen.
    virtual std::string Valor() const = 0;
    // Chooses the first item of that value; none when there is no such item. Raises Click and then Change when the
    // choice becomes another one.
    virtual void DefineValor(const std::string &valor) = 0;
    virtual std::string Texto() const = 0;
    // Position of the current item from 0; -1 when none is chosen.
    virtual std::int16_t IndiceAtual() const = 0;
    // Chooses by position; -1 for none. Raises as DefineValor does. Fault 5 outside the items.
    virtual void DefineIndiceAtual(std::int16_t indice) = 0;
    virtual std::int32_t NroItens() const = 0;
    // Keeps the person from choosing another item.
    virtual bool ComboSomenteLeitura() const = 0;
    virtual void DefineComboSomenteLeitura(bool valor) = 0;
    virtual Evento<> &Click() = 0;
    virtual Evento<> &Change() = 0;
};
