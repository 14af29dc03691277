#pragma once

#include "tests/windows/externo/Var.h"

#include <string>

namespace nativo {

// A script in a host's own process, in the thread of its windows: the engine gets one named item from the host, runs
// the file and stops at its end.
class MotorDeScript {
  public:
    // Of a plain text file; the item under the name that the script knows it by.
    MotorDeScript(const std::string &caminho, const std::string &item, const Var &objeto);

    // Runs it and answers the variable that it left; a FalhaExterna when the engine does not take the script or the
    // script breaks off.
    std::string Roda(const std::string &variavel) const;

  private:
    std::wstring m_Texto;
    std::wstring m_Item;
    Var m_Objeto;
};

} // namespace nativo
