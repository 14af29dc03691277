#pragma once

#include "host/Campo.h"
#include "host/Colecao.h"
#include "host/Conversoes.h"
#include "host/Data.h"
#include "host/Ref.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

// One entry of a record's list of members: the member's name and where it is.
template <class R, class T> struct Membro {
    std::string_view Nome;
    Campo<T> R::*Onde;
};
template <class R, class T> Membro(const char *, Campo<T> R::*) -> Membro<R, T>;

// Any record of the remote library.
class Registro : public Objeto {
  public:
    // The written members as text, in the record's order, for logs and for telling two records apart.
    virtual std::string Texto() const = 0;
    // A new record with the same members written; records inside it are copied too.
    virtual Ref<Registro> Copia() const = 0;

    // A mark of the service on what it answers: who changes what was read hands it back, so that a change over somebody
    // else's is noticed. 0 for none. It is no member of the record, and nobody else asks what it means.
    std::int64_t VersaoLida = 0;
};

template <class T> using ListaDe = Ref<Colecao<Ref<T>>>;

namespace DetalheRegistro {

template <class T> struct EhListaDe : std::false_type {
};
template <class T> struct EhListaDe<Ref<Colecao<Ref<T>>>> : std::true_type {
    using Item = T;
};

template <class T> std::string TextoDoValor(const T &valor)
{
    if constexpr (EhListaDe<T>::value) {
        if (valor.Nada()) {
            return "Nothing";
        }
        std::string texto = "[";
        for (std::int32_t posicao = 1; posicao <= valor->Count(); ++posicao) {
            texto += (posicao > 1 ? ", " : "") + valor->Item(posicao)->Texto();
        }
        return texto + "]";
    } else if constexpr (std::is_same_v<T, std::string>) {
        return "\"" + valor + "\"";
    } else {
        return CStr(valor);
    }
}

template <class T> T CopiaDoValor(const T &valor)
{
    if constexpr (EhListaDe<T>::value) {
        using Item = typename EhListaDe<T>::Item;
        if (valor.Nada()) {
            return {};
        }
        auto copia = Novo<Colecao<Ref<Item>>>();
        for (std::int32_t posicao = 1; posicao <= valor->Count(); ++posicao) {
            copia->Add(ComoTipo<Item>(valor->Item(posicao)->Copia()));
        }
        return copia;
    } else {
        return valor;
    }
}

} // namespace DetalheRegistro

// Base of the record R, which lists its members once, in the record's order, in a static function `Membros` that
// returns a tuple of Membro, and names itself in a static `Nome`.
template <class R> class RegistroDe : public Registro {
  public:
    std::string_view NomeTipo() const override { return R::Nome; }

    // Calls `visita(nome, campo)` for every member, in the record's order.
    template <class Visita> void CadaMembro(Visita &&visita)
    {
        std::apply([&](const auto &...membro) { (visita(membro.Nome, Eu_().*membro.Onde), ...); }, R::Membros());
    }
    template <class Visita> void CadaMembro(Visita &&visita) const
    {
        std::apply([&](const auto &...membro) { (visita(membro.Nome, Eu_().*membro.Onde), ...); }, R::Membros());
    }

    std::string Texto() const override
    {
        std::string texto(R::Nome);
        std::string_view separador = "{";
        CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
            if (campo.Escrito()) {
                texto +=
                    std::string(separador) + std::string(nome) + "=" + DetalheRegistro::TextoDoValor(campo.Valor());
                separador = ", ";
            }
        });
        return texto + (separador == "{" ? "{}" : "}");
    }

    Ref<Registro> Copia() const override
    {
        auto copia = ::Novo<R>();
        std::apply([&](const auto &...membro) { (CopiaMembro(*copia, membro.Onde), ...); }, R::Membros());
        copia->VersaoLida = VersaoLida;
        return copia;
    }

  private:
    R &Eu_() { return static_cast<R &>(*this); }
    const R &Eu_() const { return static_cast<const R &>(*this); }

    template <class T> void CopiaMembro(R &destino, Campo<T> R::*onde) const
    {
        const Campo<T> &origem = Eu_().*onde;
        if (origem.Escrito()) {
            destino.*onde = DetalheRegistro::CopiaDoValor(origem.Valor());
        }
    }
};
