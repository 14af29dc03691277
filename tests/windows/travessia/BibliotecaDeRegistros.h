#pragma once

#include <windows.h>

namespace nativo {

// While it lives, the host's library of records is registered, for this program alone.
class BibliotecaDeRegistros {
  public:
    BibliotecaDeRegistros();
    BibliotecaDeRegistros(const BibliotecaDeRegistros &) = delete;
    BibliotecaDeRegistros &operator=(const BibliotecaDeRegistros &) = delete;
    ~BibliotecaDeRegistros();

    // Whether its classes can be made.
    bool Registrada() const;

  private:
    HANDLE m_Contexto = INVALID_HANDLE_VALUE;
    ULONG_PTR m_Ativo = 0;
};

} // namespace nativo
