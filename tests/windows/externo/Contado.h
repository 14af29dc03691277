#pragma once

#include <windows.h>

#include <utility>

namespace nativo {

// A counted reference to an object of automation, for the program that stands outside of the component.
template <class T> class Contado {
  public:
    Contado() = default;
    // Takes one more reference.
    Contado(T *objeto) : m_Objeto(objeto)
    {
        if (m_Objeto != nullptr) {
            m_Objeto->AddRef();
        }
    }
    Contado(const Contado &outro) : Contado(outro.m_Objeto) {}
    Contado(Contado &&outro) noexcept : m_Objeto(std::exchange(outro.m_Objeto, nullptr)) {}
    Contado &operator=(Contado outro) noexcept
    {
        std::swap(m_Objeto, outro.m_Objeto);
        return *this;
    }
    ~Contado()
    {
        if (m_Objeto != nullptr) {
            m_Objeto->Release();
        }
    }

    // Keeps a reference that was already taken.
    static Contado Adota(T *objeto)
    {
        Contado contado;
        contado.m_Objeto = objeto;
        return contado;
    }

    T *Ponteiro() const noexcept { return m_Objeto; }
    T *operator->() const noexcept { return m_Objeto; }
    T &operator*() const noexcept { return *m_Objeto; }
    explicit operator bool() const noexcept { return m_Objeto != nullptr; }
    // Where a call puts a reference.
    T **Recebe()
    {
        *this = Contado();
        return &m_Objeto;
    }
    // The object's other face; empty when it has none.
    template <class U> Contado<U> Como(REFIID iid) const
    {
        Contado<U> outro;
        if (m_Objeto != nullptr) {
            m_Objeto->QueryInterface(iid, reinterpret_cast<void **>(outro.Recebe()));
        }
        return outro;
    }

  private:
    T *m_Objeto = nullptr;
};

} // namespace nativo
