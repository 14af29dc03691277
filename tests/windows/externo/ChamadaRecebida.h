#pragma once

#include "tests/windows/externo/Var.h"

#include <string>
#include <vector>

namespace nativo {

// A call of a member, as it came.
class ChamadaRecebida {
  public:
    ChamadaRecebida(std::string membro, bool escreve, const DISPPARAMS &parametros);

    const std::string &Membro() const { return m_Membro; }
    // Writing a property, whose value is the last argument.
    bool Escreve() const { return m_Escreve; }
    std::size_t Quantos() const { return m_Args.size(); }
    bool Tem(std::size_t n) const;

    // The arguments in the order of the call, from 0; references are followed. Absent ones are empty.
    Var Arg(std::size_t n) const;
    std::string Texto(std::size_t n) const { return Arg(n).Texto(); }
    std::int32_t Inteiro(std::size_t n) const { return Arg(n).Inteiro(); }
    bool Verdade(std::size_t n) const { return Arg(n).Verdade(); }
    Contado<IDispatch> Objeto(std::size_t n) const { return Arg(n).Objeto(); }
    // The argument as it travelled.
    VARIANT &Bruto(std::size_t n) const;
    // Whether it can be written.
    bool PorReferencia(std::size_t n) const { return (Bruto(n).vt & VT_BYREF) != 0; }
    void Devolve(std::size_t n, const Var &valor) const { DevolveEm(Bruto(n), valor); }
    // Writes through a reference of any type.
    static void DevolveEm(VARIANT &onde, const Var &valor);

    std::string Retrato() const;

  private:
    std::string m_Membro;
    bool m_Escreve;
    std::vector<VARIANT *> m_Args;
};

} // namespace nativo
