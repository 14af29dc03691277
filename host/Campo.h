#pragma once

#include <utility>

// Member of a remote record: a value, and whether anybody has ever written it. An unwritten member keeps the default of
// a fresh record, and "left unset" is part of the contract with the services.
template <class T> class Campo {
  public:
    const T &Valor() const noexcept { return m_Valor; }
    bool Escrito() const noexcept { return m_Escrito; }
    operator const T &() const noexcept { return m_Valor; }

    Campo &operator=(T valor)
    {
        m_Valor = std::move(valor);
        m_Escrito = true;
        return *this;
    }

  private:
    T m_Valor{};
    bool m_Escrito = false;
};
