#pragma once

#include "host/Data.h"
#include "host/Ref.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

// A general value: what the host's late-bound arguments, answers and database fields hold.
// A default one is empty (no value given).
class Valor {
  public:
    struct Vazio {
        bool operator==(const Vazio &) const = default;
    };
    // The database's null.
    struct Nulo {
        bool operator==(const Nulo &) const = default;
    };
    // Reference to a caller's object variable, not to its value: who receives it may put another object there.
    struct Variavel {
        Ref<Objeto> *Alvo;
        bool operator==(const Variavel &) const = default;
    };
    using Conteudo =
        std::variant<Vazio, Nulo, bool, std::int16_t, std::int32_t, double, Data, std::string, Ref<Objeto>, Variavel>;

    Valor() = default;
    Valor(Nulo nulo) : m_Conteudo(nulo) {}
    Valor(bool valor) : m_Conteudo(valor) {}
    Valor(std::int16_t valor) : m_Conteudo(valor) {}
    Valor(std::int32_t valor) : m_Conteudo(valor) {}
    Valor(double valor) : m_Conteudo(valor) {}
    Valor(Data valor) : m_Conteudo(valor) {}
    Valor(std::string valor) : m_Conteudo(std::move(valor)) {}
    Valor(const char *valor) : m_Conteudo(std::string(valor)) {}
    template <class T> Valor(const Ref<T> &valor) : m_Conteudo(Ref<Objeto>(valor)) {}

    // A reference to the variable itself. The variable must outlive this value.
    static Valor PorReferencia(Ref<Objeto> &variavel);

    bool EhVazio() const noexcept { return std::holds_alternative<Vazio>(m_Conteudo); }
    bool EhNulo() const noexcept { return std::holds_alternative<Nulo>(m_Conteudo); }
    // True for an object, Nothing included, and for a reference to an object variable.
    bool EhObjeto() const noexcept;

    // The object held, or the one now in the variable referred to. Fault 424 if this is no object.
    Ref<Objeto> ComoObjeto() const;
    // As above, as a given class. Nothing stays Nothing; fault 13 if it is of another class.
    template <class T> Ref<T> Como() const { return ComoTipo<T>(ComoObjeto()); }
    // Puts an object into the variable that this value refers to. Fault 424 if it refers to none.
    void Substitui(Ref<Objeto> novo) const;

    // What the platform gives when this is assigned to a variable of the type: conversion faults 6 and 13,
    // 94 for the database's null, 438 for an object.
    std::string CStr() const;
    bool CBool() const;
    std::int16_t CInt() const;
    std::int32_t CLng() const;
    double CDbl() const;
    Data CDate() const;

    // Text for joining: like CStr, but the database's null joins as nothing.
    std::string Texto() const;

    const Conteudo &Interno() const noexcept { return m_Conteudo; }
    bool operator==(const Valor &) const = default;

  private:
    Conteudo m_Conteudo;
};
