#pragma once

#include "windows/automation/Falhas.h"
#include "windows/automation/Valores.h"

#include <array>
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace nativo {

// An argument by reference: what the called object puts there is in the variable afterwards, even if the call fails.
template <class T> struct PorReferencia {
    T &Variavel;
};
template <class T> PorReferencia<T> PorRef(T &variavel)
{
    return {variavel};
}

namespace detalhe {

// The variable behind an argument by reference, as the platform has it.
template <class T> class ArgumentoPorReferencia {
  public:
    ArgumentoPorReferencia(T &variavel, Lado lado)
        : m_Variavel(variavel),
          m_Lado(lado),
          m_Valor(ParaVariante(variavel, lado)),
          m_Antes(m_Valor.Tipo() == VT_DISPATCH ? Com<IDispatch>(V_DISPATCH(&m_Valor.Bruta())) : nullptr)
    {
    }

    // Good as long as this stays in its place.
    VARIANT Bruto()
    {
        VARIANT referencia{};
        VARIANT &valor = m_Valor.Bruta();
        if constexpr (std::is_same_v<T, Valor>) {
            V_VT(&referencia) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&referencia) = &valor;
        } else {
            V_VT(&referencia) = static_cast<VARTYPE>(V_VT(&valor) | VT_BYREF);
            V_BYREF(&referencia) = &V_R8(&valor);
        }
        return referencia;
    }

    void Devolve()
    {
        if constexpr (EhRef<T>::value) {
            // The same object is the same reference, of which the variable may know more than the object tells.
            if (V_DISPATCH(&m_Valor.Bruta()) == m_Antes.Ponteiro()) {
                return;
            }
        }
        m_Variavel = DeVariante<T>(m_Valor.Bruta(), m_Lado);
    }

  private:
    T &m_Variavel;
    Lado m_Lado;
    Variante m_Valor;
    Com<IDispatch> m_Antes;
};

// An argument by value.
class ArgumentoPorValor {
  public:
    template <class T> ArgumentoPorValor(const T &valor, Lado lado) : m_Valor(ParaVariante(valor, lado)) {}

    VARIANT Bruto() { return m_Valor.Bruta(); }
    void Devolve() {}

  private:
    Variante m_Valor;
};

template <class T> struct ArgumentoDe {
    using Tipo = ArgumentoPorValor;
    static Tipo Faz(const T &valor, Lado lado) { return Tipo(valor, lado); }
};
template <> struct ArgumentoDe<const char *> {
    using Tipo = ArgumentoPorValor;
    static Tipo Faz(const char *valor, Lado lado) { return Tipo(std::string(valor), lado); }
};
template <class T> struct ArgumentoDe<PorReferencia<T>> {
    using Tipo = ArgumentoPorReferencia<T>;
    static Tipo Faz(const PorReferencia<T> &referencia, Lado lado) { return Tipo(referencia.Variavel, lado); }
};

} // namespace detalhe

// Calls a foreign object by the names of its members, as the platform's own late binding does. What the object answers
// as a fault is raised with its number, source and description.
class Tardio {
  public:
    // lado: on which the caller is.
    explicit Tardio(Com<IDispatch> objeto, Lado lado = Lado::Componente);
    // Of an object that is stood for, which knows the numbers of its members' names.
    explicit Tardio(const ObjetoRemoto &remoto, Lado lado = Lado::Componente);

    // A method, or a property that is read: where an answer is wanted, and without arguments, both in one request.
    // R: void drops the answer; Variante gives it as it came.
    template <class R = void, class... A> R Chama(std::string_view nome, const A &...argumentos) const
    {
        return ChamaMembro<R>(Numero(nome), argumentos...);
    }
    // The default value, with an index where it has one.
    template <class... A> Variante Padrao(const A &...argumentos) const
    {
        return ChamaMembro<Variante>(DISPID_VALUE, argumentos...);
    }
    // A property that is written, with an index before the value where it has one. An object is written by reference,
    // and by value where the property does not take it so.
    template <class T, class... I> void Escreve(std::string_view nome, const T &valor, const I &...indices) const
    {
        const Variante escrito = ParaVariante(valor, m_Lado);
        const std::array<Variante, sizeof...(I)> lugares{ParaVariante(indices, m_Lado)...};
        std::vector<VARIANT> brutos{escrito.Bruta()};
        for (std::size_t i = lugares.size(); i > 0; --i) {
            brutos.push_back(lugares[i - 1].Bruta());
        }
        EscreveBruto(Numero(nome), brutos);
    }
    bool Tem(std::string_view nome) const;

  private:
    template <class R, class... A> R ChamaMembro(DISPID membro, const A &...argumentos) const
    {
        std::tuple<typename detalhe::ArgumentoDe<std::decay_t<const A>>::Tipo...> guardados{
            detalhe::ArgumentoDe<std::decay_t<const A>>::Faz(argumentos, m_Lado)...};
        // The last argument comes first.
        std::array<VARIANT, sizeof...(A) + 1> brutos{};
        std::size_t onde = sizeof...(A);
        std::apply([&](auto &...guardado) { ((brutos[--onde] = guardado.Bruto()), ...); }, guardados);
        constexpr bool semArgumentos = sizeof...(A) == 0;
        constexpr bool comResposta = !std::is_void_v<R>;
        // One that cannot be taken back does not keep the others from it; the first fault is the call's.
        const auto devolve = [&] {
            std::exception_ptr primeira;
            const auto um = [&](auto &guardado) {
                try {
                    guardado.Devolve();
                } catch (...) {
                    primeira = primeira ? primeira : std::current_exception();
                }
            };
            std::apply([&](auto &...guardado) { (um(guardado), ...); }, guardados);
            if (primeira) {
                std::rethrow_exception(primeira);
            }
        };
        Variante resposta;
        try {
            Invoca(membro, comResposta || semArgumentos ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_METHOD,
                   brutos.data(), static_cast<UINT>(sizeof...(A)),
                   comResposta || semArgumentos ? &resposta.Bruta() : nullptr);
        } catch (const Falha &) {
            IgnoraErro(devolve);
            throw;
        }
        devolve();
        if constexpr (std::is_same_v<R, Variante>) {
            return resposta;
        } else if constexpr (comResposta) {
            return DeVariante<R>(resposta.Bruta(), m_Lado);
        }
    }

    DISPID Numero(std::string_view nome) const;
    void Invoca(DISPID membro, int modo, VARIANT *argumentos, UINT quantos, VARIANT *resposta) const;
    // argumentos: the value first.
    void EscreveBruto(DISPID membro, std::vector<VARIANT> &argumentos) const;

    Com<IDispatch> m_Objeto;
    const ObjetoRemoto *m_Remoto = nullptr;
    Lado m_Lado;
};

} // namespace nativo
