#pragma once

#include "host/Colecao.h"
#include "host/Conversoes.h"
#include "host/IPlataforma.h"
#include "host/Registro.h"
#include "host/Valor.h"
#include "windows/automation/Com.h"
#include "windows/automation/Remoto.h"

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace nativo {

// On which side of the boundary a conversion is done. The component knows its own objects again when they come back;
// what is offered from the host's side stays foreign to it.
enum class Lado { Componente, Hospedeiro };

// An argument that is left out.
struct Ausente {};

// An object as the foreign world gets it: the foreign object itself where one is stood for, a record as the library's
// class when that is registered, otherwise our own automation object, the same for the same object as long as that
// lives. Empty for Nothing.
Com<IDispatch> Oferece(const Ref<::Objeto> &objeto, Lado lado = Lado::Componente);

// One of our objects behind an automation object, as this side may know it; Nothing for any other.
Ref<::Objeto> Interno(const Com<IDispatch> &objeto, Lado lado);

// The object that a value holds. No object at all is fault 424.
Com<IDispatch> LeObjeto(const VARIANT &variante);

// A general value. An array is fault 13. Objects of unknown class stand as such.
Valor LeValor(const VARIANT &variante, Lado lado = Lado::Componente);
Variante FazVariante(const Valor &valor, Lado lado = Lado::Componente);

// The same as the type that a variable of the platform would have. An object is asked for its default value where a
// plain one is needed. Faults as of the platform's conversions: 6, 13, 94, 424.
template <class T> T DeVariante(const VARIANT &variante, Lado lado = Lado::Componente);
template <class T> Variante ParaVariante(const T &valor, Lado lado = Lado::Componente);

namespace detalhe {

// What references to general values lead to: a plain value, or a reference to one. Fault 13 for a reference to nothing,
// and for one that leads on and on.
const VARIANT &Referido(const VARIANT &variante);
// The value without a reference around it.
const VARIANT &SemReferencia(const VARIANT &variante, VARIANT &apoio);
// A value that is no object: that of an object is its default one.
Valor LeSimples(const VARIANT &variante, Lado lado);
// An array from 0 that whoever gets it may dimension anew, which one of the platform's vectors may not be.
SAFEARRAY *NovoArranjo(VARTYPE tipo, std::size_t elementos);
Bytes LeOctetos(const VARIANT &variante);
Variante FazOctetos(const Bytes &octetos);
// Refuses an array whose elements are not what its type says, or of a type that is not known, with fault 13.
void ConfereElementos(SAFEARRAY *arranjo, VARTYPE tipo);
// The elements of an array of one dimension, each as a general value.
std::vector<Variante> LeArranjo(const VARIANT &variante);
// An array from 0 of elements of one kind.
Variante FazArranjo(VARTYPE tipo, std::vector<Variante> elementos);
Ref<Registro> LeRegistro(const VARIANT &variante, std::string_view classe, Lado lado);

template <class T> struct EhRef : std::false_type {
};
template <class T> struct EhRef<Ref<T>> : std::true_type {
    using Alvo = T;
};
template <class T> struct EhOpcional : std::false_type {
};
template <class T> struct EhOpcional<std::optional<T>> : std::true_type {
    using Alvo = T;
};
template <class T> struct EhVetorDeRefs : std::false_type {
};
template <class T> struct EhVetorDeRefs<std::vector<Ref<T>>> : std::true_type {
    using Alvo = T;
};
template <class T> inline constexpr bool Sempre = true;

bool EhAusente(const VARIANT &variante);

} // namespace detalhe

// A collection of records or fields as an automation object, and back. Told in Colecoes.h.
template <class T> Com<IDispatch> OfereceColecao(const Ref<Colecao<Ref<T>>> &colecao, Lado lado);
template <class T> Ref<Colecao<Ref<T>>> LeColecao(const Com<IDispatch> &objeto, Lado lado);

// The object behind an automation object, as a class of the contract: our own one, or what stands for a foreign one.
template <class T> Ref<T> ObjetoComo(const Com<IDispatch> &objeto, Lado lado)
{
    if (!objeto) {
        return {};
    }
    if (const Ref<::Objeto> interno = Interno(objeto, lado)) {
        return ComoTipo<T>(interno);
    }
    return RemotoDe<T>(objeto);
}

template <class T> T DeVariante(const VARIANT &variante, Lado lado)
{
    if constexpr (detalhe::EhOpcional<T>::value) {
        if (detalhe::EhAusente(variante)) {
            return std::nullopt;
        }
        return DeVariante<typename detalhe::EhOpcional<T>::Alvo>(variante, lado);
    } else if constexpr (std::is_same_v<T, Valor>) {
        return LeValor(variante, lado);
    } else if constexpr (std::is_same_v<T, bool>) {
        return detalhe::LeSimples(variante, lado).CBool();
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        const Valor valor = detalhe::LeSimples(variante, lado);
        const bool *logico = std::get_if<bool>(&valor.Interno());
        return logico != nullptr ? CByte(*logico) : CByte(valor.CInt());
    } else if constexpr (std::is_same_v<T, std::int16_t>) {
        return detalhe::LeSimples(variante, lado).CInt();
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
        return detalhe::LeSimples(variante, lado).CLng();
    } else if constexpr (std::is_same_v<T, double>) {
        return detalhe::LeSimples(variante, lado).CDbl();
    } else if constexpr (std::is_same_v<T, Data>) {
        return detalhe::LeSimples(variante, lado).CDate();
    } else if constexpr (std::is_same_v<T, std::string>) {
        return detalhe::LeSimples(variante, lado).CStr();
    } else if constexpr (std::is_same_v<T, Bytes>) {
        return detalhe::LeOctetos(variante);
    } else if constexpr (std::is_same_v<T, std::vector<std::string>>) {
        std::vector<std::string> textos;
        for (const Variante &elemento : detalhe::LeArranjo(variante)) {
            textos.push_back(DeVariante<std::string>(elemento.Bruta(), lado));
        }
        return textos;
    } else if constexpr (detalhe::EhVetorDeRefs<T>::value) {
        T objetos;
        for (const Variante &elemento : detalhe::LeArranjo(variante)) {
            objetos.push_back(DeVariante<typename T::value_type>(elemento.Bruta(), lado));
        }
        return objetos;
    } else if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        return LeColecao<typename DetalheRegistro::EhListaDe<T>::Item>(LeObjeto(variante), lado);
    } else if constexpr (detalhe::EhRef<T>::value) {
        using Alvo = typename detalhe::EhRef<T>::Alvo;
        if constexpr (std::is_base_of_v<Registro, Alvo> && !std::is_same_v<Registro, Alvo>) {
            return ComoTipo<Alvo>(detalhe::LeRegistro(variante, Alvo::Nome, lado));
        } else {
            return ObjetoComo<Alvo>(LeObjeto(variante), lado);
        }
    } else {
        static_assert(!detalhe::Sempre<T>, "no automation type");
    }
}

template <class T> Variante ParaVariante(const T &valor, Lado lado)
{
    if constexpr (std::is_same_v<T, Ausente>) {
        Variante ausente;
        V_VT(&ausente.Bruta()) = VT_ERROR;
        V_ERROR(&ausente.Bruta()) = DISP_E_PARAMNOTFOUND;
        return ausente;
    } else if constexpr (detalhe::EhOpcional<T>::value) {
        return valor ? ParaVariante(*valor, lado) : ParaVariante(Ausente{}, lado);
    } else if constexpr (std::is_same_v<T, Variante>) {
        return valor;
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        Variante octeto;
        V_VT(&octeto.Bruta()) = VT_UI1;
        V_UI1(&octeto.Bruta()) = valor;
        return octeto;
    } else if constexpr (std::is_same_v<T, Bytes>) {
        return detalhe::FazOctetos(valor);
    } else if constexpr (std::is_same_v<T, std::vector<std::string>>) {
        std::vector<Variante> textos;
        for (const std::string &texto : valor) {
            textos.push_back(FazVariante(texto, lado));
        }
        return detalhe::FazArranjo(VT_BSTR, std::move(textos));
    } else if constexpr (detalhe::EhVetorDeRefs<T>::value) {
        std::vector<Variante> objetos;
        for (const auto &objeto : valor) {
            objetos.push_back(ParaVariante(objeto, lado));
        }
        return detalhe::FazArranjo(VT_DISPATCH, std::move(objetos));
    } else if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        Variante colecao;
        V_VT(&colecao.Bruta()) = VT_DISPATCH;
        V_DISPATCH(&colecao.Bruta()) = OfereceColecao(valor, lado).Solta();
        return colecao;
    } else {
        return FazVariante(Valor(valor), lado);
    }
}

} // namespace nativo
