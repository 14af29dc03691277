#pragma once

#include <locale.h>

namespace planilhas {

// For its scope, the C library writes and reads the numbers of this thread with a point, whatever the program's
// language: with a comma, as in Brazil, a document that a library writes with it is broken.
class NumerosComPonto {
  public:
    NumerosComPonto();
    NumerosComPonto(const NumerosComPonto &) = delete;
    NumerosComPonto &operator=(const NumerosComPonto &) = delete;
    ~NumerosComPonto();

  private:
    locale_t m_Antes;
};

} // namespace planilhas
