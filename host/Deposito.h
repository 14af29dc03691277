#pragma once

#include "host/Ref.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace DetalheDeposito {

// The sanitizers are to watch over objects that have their memory to themselves.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool Desligado = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool Desligado = true;
#else
inline constexpr bool Desligado = false;
#endif
#else
inline constexpr bool Desligado = false;
#endif

} // namespace DetalheDeposito

// Store of memory for shared objects of one kind that come and go by the thousand. Places are asked for many at a time,
// and a place that an object leaves is the next one's. All of it goes back when the last object has ended and nobody
// keeps the store open; nothing stays with the program, so whoever counts memory still finds what was not ended.
// For one thread, that of the objects.
template <class T> class Deposito {
  public:
    // Creates a shared object.
    template <class... Args> static Ref<T> Novo(Args &&...args)
    {
        if constexpr (DetalheDeposito::Desligado) {
            return ::Novo<T>(std::forward<Args>(args)...);
        } else {
            const Uso uso; // closes the store again when its first object cannot be created
            return Ref<T>(std::allocate_shared<T>(Alocador<T>(*uso.m_Deposito), std::forward<Args>(args)...));
        }
    }

    // While it lives, the places of objects that have ended are kept for those to come.
    class Uso {
      public:
        Uso() : m_Deposito(&Aberto()) { ++m_Deposito->m_Usos; }
        Uso(const Uso &) = delete;
        Uso &operator=(const Uso &) = delete;
        ~Uso() { m_Deposito->Larga(); }

      private:
        friend Deposito;
        Deposito *m_Deposito;
    };

  private:
    // As a shared reference lays it out: how the object ends, its counts, where it has its memory, and the object.
    struct Compartilhado {
        void *Fim;
        int Contagens[2];
        struct {
            void *Alocador;
            alignas(T) std::byte Espaco[sizeof(T)];
        } Objeto;
    };
    // While it is free, the next free one.
    union Lugar {
        Lugar *Seguinte;
        Compartilhado Ocupado;
    };

    template <class U> class Alocador {
      public:
        using value_type = U;
        explicit Alocador(Deposito &deposito) noexcept : m_Deposito(&deposito) {}
        template <class V> Alocador(const Alocador<V> &outro) noexcept : m_Deposito(outro.m_Deposito) {}
        U *allocate(std::size_t) const
        {
            static_assert(sizeof(U) <= sizeof(Lugar) && alignof(U) <= alignof(Lugar));
            return static_cast<U *>(static_cast<void *>(m_Deposito->Toma()));
        }
        void deallocate(U *lugar, std::size_t) const noexcept
        {
            m_Deposito->Devolve(static_cast<Lugar *>(static_cast<void *>(lugar)));
        }
        template <class V> bool operator==(const Alocador<V> &outro) const noexcept
        {
            return m_Deposito == outro.m_Deposito;
        }

        Deposito *m_Deposito;
    };

    static Deposito &Aberto()
    {
        if (s_Aberto == nullptr) {
            auto novo = std::make_unique<Deposito>();
            s_Aberto = novo.get();
            s_Aberto->m_Dono = std::move(novo);
        }
        return *s_Aberto;
    }

    Lugar *Toma()
    {
        if (m_Livre == nullptr) {
            m_Trechos.push_back(std::make_unique_for_overwrite<Lugar[]>(LugaresPorTrecho));
            for (std::size_t i = LugaresPorTrecho; i > 0; --i) {
                Lugar &lugar = m_Trechos.back()[i - 1];
                lugar.Seguinte = m_Livre;
                m_Livre = &lugar;
            }
        }
        ++m_Usos;
        return std::exchange(m_Livre, m_Livre->Seguinte);
    }

    void Devolve(Lugar *lugar) noexcept
    {
        lugar->Seguinte = m_Livre;
        m_Livre = lugar;
        Larga();
    }

    void Larga() noexcept
    {
        if (--m_Usos == 0) {
            s_Aberto = nullptr;
            const auto fim = std::move(m_Dono);
        }
    }

    static constexpr std::size_t LugaresPorTrecho = 64;

    // Never owned here: at the end of the program, objects held by others may end after anything static has.
    static inline Deposito *s_Aberto = nullptr;

    std::unique_ptr<Deposito> m_Dono; // itself
    std::vector<std::unique_ptr<Lugar[]>> m_Trechos;
    Lugar *m_Livre = nullptr;
    std::size_t m_Usos = 0; // objects, and those who keep it open
};
