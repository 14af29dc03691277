#pragma once

#include "host/Falha.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

template <class T> class RefFraca;

// Owning reference to a shared object; empty is Nothing.
// Using it while it is Nothing raises fault 91.
template <class T> class Ref {
  public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(std::shared_ptr<T> alvo) noexcept : m_Alvo(std::move(alvo)) {}

    template <class U>
    requires std::is_convertible_v<U *, T *> Ref(const Ref<U> &outra)
    noexcept : m_Alvo(outra.m_Alvo) {}

    template <class U>
    requires std::is_convertible_v<U *, T *> Ref(Ref<U> &&outra)
    noexcept : m_Alvo(std::move(outra.m_Alvo)) {}

    T *operator->() const { return &**this; }

    T &operator*() const
    {
        if (!m_Alvo) {
            throw Falha(NumeroFalha::ObjetoNaoDefinido);
        }
        return *m_Alvo;
    }

    bool Nada() const noexcept { return !m_Alvo; }
    explicit operator bool() const noexcept { return static_cast<bool>(m_Alvo); }

    // The object's address for comparing or probing; null when Nothing. Never to be kept.
    T *Ponteiro() const noexcept { return m_Alvo.get(); }

    // Both are the same object, or both Nothing.
    template <class U> bool operator==(const Ref<U> &outra) const noexcept { return m_Alvo == outra.m_Alvo; }
    bool operator==(std::nullptr_t) const noexcept { return !m_Alvo; }

  private:
    template <class U> friend class Ref;
    template <class U> friend class RefFraca;
    template <class U, class V> friend Ref<U> ComoTipo(const Ref<V> &referencia);

    std::shared_ptr<T> m_Alvo;
};

// Back reference: never keeps the object alive. Reads as Nothing once the object has ended, and using it then raises
// fault 91.
template <class T> class RefFraca {
  public:
    RefFraca() noexcept = default;
    RefFraca(std::nullptr_t) noexcept {}

    template <class U>
    requires std::is_convertible_v<U *, T *> RefFraca(const Ref<U> &dono)
    noexcept : m_Alvo(dono.m_Alvo) {}

    // The object while it lives, otherwise Nothing.
    Ref<T> Alvo() const noexcept { return Ref<T>(m_Alvo.lock()); }
    bool Nada() const noexcept { return m_Alvo.expired(); }

    // Keeps the object alive for the expression in which it is used.
    Ref<T> operator->() const
    {
        Ref<T> alvo = Alvo();
        if (alvo.Nada()) {
            throw Falha(NumeroFalha::ObjetoNaoDefinido);
        }
        return alvo;
    }

  private:
    std::weak_ptr<T> m_Alvo;
};

// Creates a shared object.
template <class T, class... Args> Ref<T> Novo(Args &&...args)
{
    return Ref<T>(std::make_shared<T>(std::forward<Args>(args)...));
}

// Root of everything that travels by reference between host and module.
class Objeto : public std::enable_shared_from_this<Objeto> {
  public:
    Objeto() = default;
    Objeto(const Objeto &) = delete;
    Objeto &operator=(const Objeto &) = delete;
    virtual ~Objeto() = default;

    // Name of the object's class, as the platform reports it.
    virtual std::string_view NomeTipo() const = 0;
};

// The same reference as another type. Nothing stays Nothing; an object of another type raises fault 13.
template <class T, class U> Ref<T> ComoTipo(const Ref<U> &referencia)
{
    if (referencia.Nada()) {
        return {};
    }
    auto convertida = std::dynamic_pointer_cast<T>(referencia.m_Alvo);
    if (!convertida) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    return Ref<T>(std::move(convertida));
}

// Reference to an object that is running one of its own operations; Nothing when it is not held by any reference.
template <class T> Ref<T> Eu(T &objeto)
{
    return Ref<T>(std::static_pointer_cast<T>(objeto.weak_from_this().lock()));
}
