#pragma once

#include "host/IForm.h"
#include "host/Valor.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace nativo {

// The controls of a form as the foreign host goes over them: by name, or by position from 0. Of one name that several
// have, the control array of that name.
class ControlesDoForm : public Objeto {
  public:
    explicit ControlesDoForm(Ref<IForm> form) : m_Form(std::move(form)) {}
    std::string_view NomeTipo() const override { return "Controls"; }

    const std::vector<Ref<IControle>> &Todos() const { return m_Form->Controles(); }
    std::int32_t Count() const { return static_cast<std::int32_t>(Todos().size()); }
    // Fault 9 for a position, 438 for a name that there is not.
    Ref<::Objeto> Item(const Valor &indice) const;
    // Nothing when there is none of that name.
    static Ref<::Objeto> Chamado(const Ref<IForm> &form, std::string_view nome);

  private:
    Ref<IForm> m_Form;
};

// The controls of one name, by their index.
class ArranjoDeControles : public Objeto {
  public:
    ArranjoDeControles(Ref<IForm> form, std::string nome) : m_Form(std::move(form)), m_Nome(std::move(nome)) {}
    std::string_view NomeTipo() const override { return "ControlArray"; }

    // Fault 340 for an index that no control has.
    Ref<IControle> Item(std::int16_t indice) const;
    std::vector<Ref<IControle>> Todos() const;
    std::int32_t Count() const { return static_cast<std::int32_t>(Todos().size()); }

  private:
    Ref<IForm> m_Form;
    std::string m_Nome;
};

} // namespace nativo
