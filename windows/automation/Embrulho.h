#pragma once

#include "host/Texto.h"
#include "windows/automation/Falhas.h"
#include "windows/automation/Valores.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <typeindex>
#include <utility>
#include <vector>

namespace nativo {

// Objects and windows of the component that keep it loaded.
class Vivo {
  public:
    Vivo() noexcept;
    Vivo(const Vivo &) noexcept : Vivo() {}
    Vivo &operator=(const Vivo &) noexcept = default;
    ~Vivo();
    static long Quantos() noexcept;
};

// By which our own objects know each other behind their automation objects.
struct IInterno;

namespace detalhe {
using Internos = std::set<const IInterno *>;
}

struct IInterno : IUnknown {
    virtual ::Objeto *STDMETHODCALLTYPE Alvo() = 0;
    virtual Lado STDMETHODCALLTYPE DeQueLado() = 0;

  protected:
    IInterno();
    IInterno(const IInterno &) = delete;
    IInterno &operator=(const IInterno &) = delete;
    ~IInterno();

  private:
    std::shared_ptr<detalhe::Internos> m_Vivos; // may outlive everything else of this room
};

// Ours behind an automation object; empty for any other.
Com<IInterno> InternoDe(const Com<IDispatch> &objeto);

// An argument that cannot be taken as what the member wants it to be.
struct ArgumentoErrado {
    UINT Indice; // as the caller's array counts, in which the last one comes first
    HRESULT Codigo;
};

// Whether a fault tells that an argument is not of the type that is wanted, and is not the caller's own object's.
bool EhDoArgumento(const Falha &falha) noexcept;
// The code by which such an argument is refused.
HRESULT CodigoDoArgumento(const Falha &falha) noexcept;
// Whether the arrays of a call are there, and as long as it says.
bool Coerentes(const DISPPARAMS &parametros) noexcept;

// The arguments of a call that came in, in their order, and its answer.
class Chamada {
  public:
    Chamada(const DISPPARAMS &parametros, VARIANT *resposta, Lado lado);

    // How many were given, absent ones counted.
    std::size_t Quantos() const { return m_Argumentos.size(); }
    // An argument that was left out at the end is absent.
    const VARIANT &Argumento(std::size_t posicao) const;
    // The value that a property is given.
    const VARIANT &Escrito() const { return *m_Escrito; }
    Lado DeQueLado() const { return m_Lado; }

    template <class T> T Le(std::size_t posicao) const { return LeDe<T>(Argumento(posicao)); }
    template <class T> T LeEscrito() const { return LeDe<T>(Escrito()); }
    // Puts a value where an argument by reference refers to. Without effect on one by value.
    template <class T> void Devolve(std::size_t posicao, const T &valor) const
    {
        DevolveEm(Argumento(posicao), ParaVariante(valor, m_Lado));
    }
    template <class T> void Responde(const T &valor) const
    {
        if (m_Resposta != nullptr) {
            ParaVariante(valor, m_Lado).SoltaEm(*m_Resposta);
        }
    }
    // Puts the arguments that have names in their places; the numbers of the names are their positions. Of so many.
    // Raises ArgumentoErrado for a name that there is not, or whose place is taken.
    void Nomeados(std::size_t quantos);
    // Whether an argument was left out. Raises ArgumentoErrado for one that is a reference to nothing.
    bool EhAusente(std::size_t posicao) const;
    // Place of an argument in the caller's array; 0 for one that was left out.
    UINT IndiceDe(const VARIANT &argumento) const;

  private:
    template <class T> T LeDe(const VARIANT &variante) const
    {
        try {
            return DeVariante<T>(variante, m_Lado);
        } catch (const Falha &falha) {
            if (!EhDoArgumento(falha)) {
                throw;
            }
            throw ArgumentoErrado{IndiceDe(variante), CodigoDoArgumento(falha)};
        }
    }
    static void DevolveEm(const VARIANT &referencia, Variante valor);

    const DISPPARAMS &m_Parametros;
    VARIANT *m_Resposta;
    Lado m_Lado;
    std::vector<const VARIANT *> m_Argumentos;
    const VARIANT *m_Escrito = nullptr;
};

namespace detalhe {

struct MembroOferecido {
    using Acao = std::function<void(::Objeto &, Chamada &)>;

    std::string Nome;
    DISPID Numero = DISPID_UNKNOWN;
    std::vector<std::string> Argumentos{}; // names; of a method alone
    std::size_t Minimo = 0;                // arguments that must be there
    std::size_t Maximo = 0;
    std::size_t Indices = 0;  // before the value that is written
    bool Propriedade = false; // whose arguments, if any, are an index of the object that it gives
    Acao Le{};                // a method or the reading of a property
    Acao Escreve{};           // of a property
};

struct TabelaDeMembros {
    using Outro = std::function<Ref<::Objeto>(::Objeto &, const std::string &)>;

    std::string Classe; // empty: the object's own
    std::vector<MembroOferecido> Membros;
    Outro Outros; // members that each object has of its own
};

void RegistraTabela(std::type_index classe, std::function<bool(::Objeto &)> ehDela, TabelaDeMembros tabela);
const TabelaDeMembros &TabelaDe(std::type_index classe);

template <class T> struct Decompoe;
template <class R, class C, class... A> struct Decompoe<R (C::*)(A...)> {
    using Resposta = R;
    using Argumentos = std::tuple<A...>;
};
template <class R, class C, class... A> struct Decompoe<R (C::*)(A...) const> : Decompoe<R (C::*)(A...)> {
};
template <class R, class C, class... A> struct Decompoe<R (C::*)(A...) noexcept> : Decompoe<R (C::*)(A...)> {
};
template <class R, class C, class... A> struct Decompoe<R (C::*)(A...) const noexcept> : Decompoe<R (C::*)(A...)> {
};

template <class A> using ValorDe = std::remove_cvref_t<A>;
// What goes back to the caller.
template <class A>
inline constexpr bool Volta = std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

// Calls `acao(objeto, arguments...)` with the arguments of the call, from position `primeiro` on.
template <class R, class Tupla, class Acao, std::size_t... I>
void Executa(Chamada &chamada, Acao &&acao, std::index_sequence<I...>)
{
    std::tuple<ValorDe<std::tuple_element_t<I, Tupla>>...> valores{
        chamada.Le<ValorDe<std::tuple_element_t<I, Tupla>>>(I)...};
    const auto devolve = [&] {
        (
            [&] {
                if constexpr (Volta<std::tuple_element_t<I, Tupla>>) {
                    chamada.Devolve(I, std::get<I>(valores));
                }
            }(),
            ...);
    };
    try {
        if constexpr (std::is_void_v<R>) {
            acao(std::get<I>(valores)...);
            devolve();
        } else {
            const ValorDe<R> resposta = acao(std::get<I>(valores)...);
            devolve();
            chamada.Responde(resposta);
        }
    } catch (const Falha &) {
        IgnoraErro(devolve); // what the caller's variables hold has changed all the same
        throw;
    }
}

} // namespace detalhe

// The members by which objects of a class are offered by name, told once for each class.
template <class C> class Membros {
  public:
    explicit Membros(detalhe::TabelaDeMembros &tabela) : m_Tabela(tabela) {}

    // All members of a class from which this one is derived.
    template <class Base> void Herda()
    {
        const detalhe::TabelaDeMembros &base = detalhe::TabelaDe(typeid(Base));
        m_Tabela.Membros.insert(m_Tabela.Membros.end(), base.Membros.begin(), base.Membros.end());
        m_Tabela.Outros = base.Outros;
    }

    // What is read alone: a member function, or a function of the object.
    template <class Le> void Leitura(const std::string &nome, Le le) { JuntaPropriedade(nome).Le = Leitor(le); }
    // What is read and written.
    template <class Le, class Escreve> void Propriedade(const std::string &nome, Le le, Escreve escreve)
    {
        detalhe::MembroOferecido &membro = JuntaPropriedade(nome);
        membro.Le = Leitor(le);
        membro.Escreve = Escritor(escreve);
    }
    // What is written alone.
    template <class Escreve> void Escrita(const std::string &nome, Escreve escreve)
    {
        Junta(nome).Escreve = Escritor(escreve);
    }
    // What is written with an index, `object.name(index) = value`, of a member that was told before: its reading, or
    // the method of the same arguments.
    template <class Base, class I, class T> void EscritaComIndice(std::string_view nome, void (Base::*escreve)(I, T))
    {
        detalhe::MembroOferecido &membro = Acha(nome);
        membro.Indices = 1;
        membro.Escreve = [escreve](::Objeto &objeto, Chamada &chamada) {
            (Este(objeto).*escreve)(chamada.template Le<detalhe::ValorDe<I>>(0),
                                    chamada.template LeEscrito<detalhe::ValorDe<T>>());
        };
    }
    // The same of functions that convert by themselves.
    void PropriedadeBruta(const std::string &nome, std::function<Variante(C &, Lado)> le,
                          std::function<void(C &, const VARIANT &, Lado)> escreve)
    {
        detalhe::MembroOferecido &membro = JuntaPropriedade(nome);
        membro.Le = [le = std::move(le)](::Objeto &objeto, Chamada &chamada) {
            chamada.Responde(le(Este(objeto), chamada.DeQueLado()));
        };
        membro.Escreve = [escreve = std::move(escreve)](::Objeto &objeto, Chamada &chamada) {
            escreve(Este(objeto), chamada.Escrito(), chamada.DeQueLado());
        };
    }
    // A public data member.
    template <class T> void Campo(const std::string &nome, T C::*onde)
    {
        detalhe::MembroOferecido &membro = JuntaPropriedade(nome);
        membro.Le = [onde](::Objeto &objeto, Chamada &chamada) { chamada.Responde(Este(objeto).*onde); };
        membro.Escreve = [onde](::Objeto &objeto, Chamada &chamada) {
            Este(objeto).*onde = chamada.template LeEscrito<T>();
        };
    }
    // A member function; what it takes by reference goes back. opcionais: at the end, of optional type or told their
    // default by the type's own.
    template <class M>
    requires std::is_member_function_pointer_v<M>
    void Metodo(const std::string &nome, M metodo, std::vector<std::string> argumentos = {}, std::size_t opcionais = 0)
    {
        using Partes = detalhe::Decompoe<M>;
        using Tupla = typename Partes::Argumentos;
        detalhe::MembroOferecido &membro = Junta(nome);
        membro.Argumentos = std::move(argumentos);
        membro.Maximo = std::tuple_size_v<Tupla>;
        membro.Minimo = membro.Maximo - opcionais;
        membro.Le = [metodo](::Objeto &objeto, Chamada &chamada) {
            detalhe::Executa<typename Partes::Resposta, Tupla>(
                chamada,
                [&](auto &...valores) -> typename Partes::Resposta { return (Este(objeto).*metodo)(valores...); },
                std::make_index_sequence<std::tuple_size_v<Tupla>>());
        };
    }
    // A function of the object and the call, which takes its arguments and gives its answer by itself.
    void Metodo(const std::string &nome, std::size_t minimo, std::vector<std::string> argumentos,
                std::function<void(C &, Chamada &)> acao)
    {
        detalhe::MembroOferecido &membro = Junta(nome);
        membro.Minimo = minimo;
        membro.Maximo = argumentos.size();
        membro.Argumentos = std::move(argumentos);
        membro.Le = [acao = std::move(acao)](::Objeto &objeto, Chamada &chamada) { acao(Este(objeto), chamada); };
    }
    // The member of that name is the default value.
    void Padrao(std::string_view nome) { Acha(nome).Numero = DISPID_VALUE; }
    // The objects over which a client goes in turn.
    void Enumera(std::function<std::vector<Variante>(C &, Lado)> elementos);
    // Members that each object has of its own, such as a form's controls; Nothing for a name that it does not know.
    void Outros(std::function<Ref<::Objeto>(C &, const std::string &)> outros)
    {
        m_Tabela.Outros = [outros = std::move(outros)](::Objeto &objeto, const std::string &nome) {
            return outros(Este(objeto), nome);
        };
    }

  private:
    static C &Este(::Objeto &objeto) { return dynamic_cast<C &>(objeto); }

    template <class Le> static detalhe::MembroOferecido::Acao Leitor(Le le)
    {
        return [le](::Objeto &objeto, Chamada &chamada) { chamada.Responde(ValorLido(std::invoke(le, Este(objeto)))); };
    }
    template <class T> static detalhe::ValorDe<T> ValorLido(T &&valor) { return std::forward<T>(valor); }
    template <class Base, class T> static detalhe::MembroOferecido::Acao Escritor(void (Base::*escreve)(T))
    {
        return [escreve](::Objeto &objeto, Chamada &chamada) {
            (Este(objeto).*escreve)(chamada.template LeEscrito<detalhe::ValorDe<T>>());
        };
    }
    template <class T> static detalhe::MembroOferecido::Acao Escritor(void (*escreve)(C &, T))
    {
        return [escreve](::Objeto &objeto, Chamada &chamada) {
            escreve(Este(objeto), chamada.template LeEscrito<detalhe::ValorDe<T>>());
        };
    }

    detalhe::MembroOferecido &Acha(std::string_view nome)
    {
        for (detalhe::MembroOferecido &membro : m_Tabela.Membros) {
            if (IgualSemCaixa(membro.Nome, nome)) {
                return membro;
            }
        }
        throw Falha(NumeroFalha::MembroInexistente);
    }
    detalhe::MembroOferecido &JuntaPropriedade(const std::string &nome)
    {
        detalhe::MembroOferecido &membro = Junta(nome);
        membro.Propriedade = true;
        return membro;
    }
    detalhe::MembroOferecido &Junta(const std::string &nome)
    {
        // A derived class may tell a member of its base anew.
        std::erase_if(m_Tabela.Membros, [&](const auto &membro) { return IgualSemCaixa(membro.Nome, nome); });
        return m_Tabela.Membros.emplace_back(detalhe::MembroOferecido{.Nome = nome});
    }

    detalhe::TabelaDeMembros &m_Tabela;
};

// Tells the members of a class, before its first object is offered. Objects are offered as the class that was told last
// of those that they are: base classes are told first.
template <class C> void OfereceMembros(const std::function<void(Membros<C> &)> &conta)
{
    detalhe::TabelaDeMembros tabela;
    Membros<C> membros(tabela);
    conta(membros);
    detalhe::RegistraTabela(
        typeid(C), [](::Objeto &objeto) { return dynamic_cast<C *>(&objeto) != nullptr; }, std::move(tabela));
}

// Tells how objects of a class become automation objects that are not made here, such as those with an interface of
// their own. The maker gives the same one for the same object.
void OfereceComo(const std::type_info &classe, std::function<Com<IDispatch>(const Ref<::Objeto> &)> faz);

// Our automation object for an object by the members told for its class; fault 438 when none were told.
Com<IDispatch> Embrulha(const Ref<::Objeto> &objeto, Lado lado = Lado::Componente);

// What a client goes over in turn.
Com<IUnknown> Enumerador(std::vector<Variante> elementos);

template <class C> void Membros<C>::Enumera(std::function<std::vector<Variante>(C &, Lado)> elementos)
{
    detalhe::MembroOferecido &membro = Junta("_NewEnum");
    membro.Numero = DISPID_NEWENUM;
    membro.Le = [elementos = std::move(elementos)](::Objeto &objeto, Chamada &chamada) {
        Variante resposta;
        V_VT(&resposta.Bruta()) = VT_UNKNOWN;
        V_UNKNOWN(&resposta.Bruta()) = Enumerador(elementos(Este(objeto), chamada.DeQueLado())).Solta();
        chamada.Responde(resposta);
    };
}

} // namespace nativo

__CRT_UUID_DECL(nativo::IInterno, 0xb6b1c3c7, 0x53b0, 0x4b36, 0x9d, 0x6b, 0x5f, 0x0a, 0x4a, 0x6f, 0x2c, 0x19)
