#pragma once

#include "windows/automation/Embrulho.h"

#include <cstddef>
#include <memory>

namespace nativo {

// An argument of a late-bound call on its way to the interface's table: the value that the table takes, or the place of
// one.
class ArgumentoDaTabela {
  public:
    // An array of objects; the other types of a member's arguments have their own numbers.
    static constexpr VARTYPE Objetos = VT_ARRAY | VT_DISPATCH;

    // How the address of a value is passed.
    static constexpr VARTYPE Endereco = sizeof(void *) == 8 ? VT_I8 : VT_I4;

    // Converts what the caller gave as a variable of the platform would; its faults where that cannot be. dado lives as
    // long as the argument.
    static std::unique_ptr<ArgumentoDaTabela> De(const VARIANT &dado, VARTYPE tipo, bool porReferencia);

    ArgumentoDaTabela(const ArgumentoDaTabela &) = delete;
    ArgumentoDaTabela &operator=(const ArgumentoDaTabela &) = delete;
    virtual ~ArgumentoDaTabela() = default;

    VARTYPE Tipo() const noexcept { return m_Tipo; }
    VARIANT &Passado() noexcept { return m_Passado; }
    // Puts what the table wrote into the caller's variable, when it wrote anything.
    virtual void Devolve(const Chamada &, std::size_t) {}

  protected:
    ArgumentoDaTabela() = default;

    void PassaValor(const VARIANT &valor, VARTYPE tipo) noexcept;
    void PassaEndereco(void *endereco) noexcept;

  private:
    VARTYPE m_Tipo = VT_EMPTY;
    VARIANT m_Passado{}; // owns nothing
};

} // namespace nativo
