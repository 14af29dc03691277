#pragma once

#include "host/Ref.h"

#include <windows.h>

namespace nativo {

// The module that this code is part of, be it the component or a test.
HINSTANCE EsteModulo();

// The manifest that the module carries as its resource 2: with it common controls 6 are taken, whatever its host has.
class ContextoVisual : public Objeto {
  public:
    ContextoVisual();
    ~ContextoVisual() override;
    std::string_view NomeTipo() const override { return "ContextoVisual"; }

    // Counts while it lives: around the making of windows.
    class Ativo {
      public:
        explicit Ativo(const ContextoVisual &contexto);
        Ativo(const Ativo &) = delete;
        Ativo &operator=(const Ativo &) = delete;
        ~Ativo();

      private:
        ULONG_PTR m_Marca = 0;
        bool m_Ativado = false;
    };

  private:
    HANDLE m_Contexto;
};

} // namespace nativo
