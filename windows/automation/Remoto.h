#pragma once

#include "host/Ref.h"
#include "windows/automation/Com.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

namespace nativo {

namespace detalhe {

// A class of the contract, by the name that the compiler gives it: the order of type_index is not to be relied upon for
// classes of one file alone.
template <class Contrato> std::string_view NomeDoContrato()
{
    return typeid(Contrato).name();
}

// Those that live, by the identity of what they stand for and by the class that they offer.
using RemotosVivos = std::map<IUnknown *, std::map<std::string_view, std::weak_ptr<::Objeto>>>;

} // namespace detalhe

// What the component has in the place of an object of the foreign host.
class ObjetoRemoto {
  public:
    ObjetoRemoto(const ObjetoRemoto &) = delete;
    ObjetoRemoto &operator=(const ObjetoRemoto &) = delete;
    virtual ~ObjetoRemoto();

    const Com<IDispatch> &Objeto() const noexcept { return m_Objeto; }
    // The number by which it has a member, asked once for each name.
    DISPID Membro(std::string_view nome) const;
    // Name of the object's class by its type information; "Object" when it has none.
    const std::string &Classe() const;

  protected:
    explicit ObjetoRemoto(Com<IDispatch> objeto);

  private:
    Com<IDispatch> m_Objeto;
    // Shared with who is asking: what is asked may let go of this object.
    std::shared_ptr<std::vector<std::pair<std::string, DISPID>>> m_Membros;
    mutable std::string m_Classe;
    IUnknown *m_Identidade = nullptr;
    std::shared_ptr<detalhe::RemotosVivos> m_Vivos; // may outlive everything else of this room
};

// Base of what stands for a foreign object that offers a class of the contract.
template <class Contrato> class Remoto : public Contrato, public ObjetoRemoto {
  public:
    explicit Remoto(Com<IDispatch> objeto) : ObjetoRemoto(std::move(objeto)) {}
    std::string_view NomeTipo() const override { return Classe(); }
};

// The number by which an object has a member. Fault 438 when it has none of that name.
DISPID NumeroDoMembro(const Com<IDispatch> &objeto, std::string_view nome);

// Name of an object's class by its type information, as a program of the platform reads it; empty when it has none.
std::string ClasseDe(const Com<IDispatch> &objeto);

// Tells once what stands for foreign objects that offer a class of the contract.
template <class Contrato, class Classe> void RegistraRemoto();

// What stands for the object; the same one as long as it lives, so that references compare as the objects do. Fault 13
// for a class for which nothing was told.
template <class Contrato> Ref<Contrato> RemotoDe(const Com<IDispatch> &objeto);

namespace detalhe {

using FazRemoto = std::function<Ref<::Objeto>(Com<IDispatch>)>;

void RegistraRemoto(std::string_view contrato, FazRemoto faz);
Ref<::Objeto> RemotoDe(std::string_view contrato, const Com<IDispatch> &objeto);

} // namespace detalhe

template <class Contrato, class Classe> void RegistraRemoto()
{
    detalhe::RegistraRemoto(detalhe::NomeDoContrato<Contrato>(),
                            [](Com<IDispatch> objeto) -> Ref<::Objeto> { return Novo<Classe>(std::move(objeto)); });
}

template <class Contrato> Ref<Contrato> RemotoDe(const Com<IDispatch> &objeto)
{
    return ComoTipo<Contrato>(detalhe::RemotoDe(detalhe::NomeDoContrato<Contrato>(), objeto));
}

} // namespace nativo
