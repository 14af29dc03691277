#pragma once

#include "host/HostServices.h"

#include <concepts>
#include <type_traits>
#include <utility>

// How the objects of the scripted host reach the module. Where the program has a way for an interface of the contract,
// the module gets what stands at its end, and otherwise the object itself.
template <class Interface> struct Travessia {
    static inline Ref<Interface> (*Leva)(const Ref<Interface> &) = nullptr;
};

namespace DetalheOferta {

template <class T, class... Interfaces> struct PrimeiraBase;
template <class T, class Primeira, class... Outras>
struct PrimeiraBase<T, Primeira, Outras...>
    : std::conditional_t<std::derived_from<T, Primeira>, std::type_identity<Primeira>, PrimeiraBase<T, Outras...>> {
};

} // namespace DetalheOferta

// The interface by which an object is given to the module.
template <class T>
using InterfaceDe = typename DetalheOferta::PrimeiraBase<T, HostServices, IobjMTM, IobjSCA, IoAppEXE, IFormMDI,
                                                         IcGlobal, IObjInterface, IActBar, IRelatorios, IAjuda, IMDB,
                                                         ICursor, ITransacao, IGateway, Objeto>::type;

// What the module gets for an object of the host; Nothing stays Nothing.
template <class T> Ref<InterfaceDe<T>> ParaOModulo(const Ref<T> &objeto)
{
    const auto leva = Travessia<InterfaceDe<T>>::Leva;
    return leva == nullptr || objeto.Nada() ? Ref<InterfaceDe<T>>(objeto) : leva(objeto);
}

// An object of the scripted host that tests set and give to the module: whoever uses it has the object, and whoever
// takes it as a reference of the contract has what the module gets.
template <class T> class Oferta {
  public:
    Oferta(Ref<T> objeto) : m_Objeto(std::move(objeto)) {}

    T *operator->() const { return m_Objeto.operator->(); }
    T &operator*() const { return *m_Objeto; }
    // The object itself, for the host's own objects.
    const Ref<T> &Propria() const noexcept { return m_Objeto; }

    template <class I>
    requires std::derived_from<InterfaceDe<T>, I>
    operator Ref<I>() const { return ParaOModulo(m_Objeto); }

    template <class I> bool operator==(const Ref<I> &outra) const { return ParaOModulo(m_Objeto) == outra; }

  private:
    Ref<T> m_Objeto;
};
