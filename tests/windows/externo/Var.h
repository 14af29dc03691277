#pragma once

#include "tests/windows/externo/Contado.h"

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nativo {

std::wstring Largo(std::string_view utf8);
std::string Estreito(std::wstring_view utf16);

// What a program outside of the component makes of one of its failures, or wants it to be told.
struct FalhaExterna {
    std::int32_t Numero = 0; // as a script shows it: 438, -1
    std::string Fonte;
    std::string Descricao;
    std::int32_t Argumento = -1; // the argument that did not fit, from 0 in the order of the call; -1: none was told

    bool operator==(const FalhaExterna &) const = default;
    std::string Texto() const;
};

// The number that a script shows for an answer, and the answer that tells it.
std::int32_t NumeroDaResposta(HRESULT resposta);
HRESULT RespostaDoNumero(std::int32_t numero);

// A source that is only read: the platform's headers here do not say so.
inline VARIANT *SoLida(const VARIANT &valor)
{
    return const_cast<VARIANT *>(&valor);
}

// A value of automation that frees itself.
class Var {
  public:
    Var() noexcept { VariantInit(&m_Valor); }
    Var(const char *texto) : Var(std::string_view(texto)) {}
    Var(const std::string &texto) : Var(std::string_view(texto)) {}
    Var(std::string_view texto);
    Var(bool valor);
    Var(std::uint8_t valor);
    Var(std::int16_t valor);
    Var(std::int32_t valor);
    Var(double valor);
    Var(IDispatch *objeto);
    template <class T> Var(const Contado<T> &objeto) : Var(static_cast<IDispatch *>(objeto.Ponteiro())) {}
    Var(const Var &outro) : Var() { VariantCopy(&m_Valor, SoLida(outro.m_Valor)); }
    Var(Var &&outro) noexcept : m_Valor(outro.m_Valor) { VariantInit(&outro.m_Valor); }
    Var &operator=(Var outro) noexcept
    {
        std::swap(m_Valor, outro.m_Valor);
        return *this;
    }
    ~Var() { VariantClear(&m_Valor); }

    static Var Data(double dias);
    static Var Ausente();
    static Var Nulo();
    static Var Bytes(std::string_view bytes);
    static Var Textos(const std::vector<std::string> &textos);
    // A copy of what is there, references followed.
    static Var De(const VARIANT &valor);

    VARIANT &Bruta() noexcept { return m_Valor; }
    const VARIANT &Bruta() const noexcept { return m_Valor; }
    VARIANT *Recebe()
    {
        VariantClear(&m_Valor);
        return &m_Valor;
    }

    // As the platform converts; a FalhaExterna when it cannot.
    std::string Texto() const;
    std::int32_t Inteiro() const;
    double Numero() const;
    bool Verdade() const;
    // Empty for Nothing; a FalhaExterna for what is no object.
    Contado<IDispatch> Objeto() const;
    std::string ComoBytes() const;
    Var Como(VARTYPE tipo) const;

    // The value as a diary shows it, with its type where the text alone would not tell.
    std::string Retrato() const;

  private:
    std::string Convertido() const;

    VARIANT m_Valor;
};

} // namespace nativo
