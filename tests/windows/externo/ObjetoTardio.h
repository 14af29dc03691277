#pragma once

#include "tests/windows/externo/Var.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace nativo {

// An object of the component, reached by the names of its members alone.
class ObjetoTardio {
  public:
    ObjetoTardio() = default;
    ObjetoTardio(Contado<IDispatch> objeto) : m_Objeto(std::move(objeto)) {}
    ObjetoTardio(const Var &objeto) : m_Objeto(objeto.Objeto()) {}

    explicit operator bool() const { return static_cast<bool>(m_Objeto); }
    const Contado<IDispatch> &Objeto() const { return m_Objeto; }
    operator Var() const { return Var(m_Objeto.Ponteiro()); }

    // A method, or a property that is read: whatever the name says. Raises FalhaExterna.
    Var Chama(const std::string &membro, const std::vector<Var> &args = {}) const
    {
        return Pede(membro, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args);
    }
    void Escreve(const std::string &membro, const Var &valor) const;
    // The same with arguments that the caller made, which may be references; in the order of the call.
    Var Pede(const std::string &membro, WORD como, const std::vector<Var> &args) const;
    // Without the look-up of the name.
    Var PedeNumero(DISPID numero, WORD como, const std::vector<Var> &args) const;
    DISPID Numero(const std::string &membro) const;

  private:
    Contado<IDispatch> m_Objeto;
};

// Arguments that refer to variables of the caller.
Var Referencia(Var &variavel);
Var Referencia(std::int32_t &variavel);
Var Referencia(std::int16_t &variavel);
Var Referencia(double &variavel, VARTYPE tipo = VT_DATE);
Var Referencia(BSTR &variavel);
Var Referencia(IDispatch *&variavel);
Var Referencia(SAFEARRAY *&variavel, VARTYPE elemento);

} // namespace nativo
