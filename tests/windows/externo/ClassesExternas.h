#pragma once

#include "tests/windows/externo/Contado.h"

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <string>
#include <vector>

namespace nativo {

// Classes of the host's libraries, known to the platform by their programmatic identifiers while this object lives, and
// made by this process.
class ClassesExternas {
  public:
    using Fabrica = std::function<Contado<IDispatch>()>;

    ClassesExternas() = default;
    ClassesExternas(const ClassesExternas &) = delete;
    ClassesExternas &operator=(const ClassesExternas &) = delete;
    ~ClassesExternas();

    void Oferece(const std::string &progId, Fabrica fabrica);
    // The class is not there any more.
    void Retira(const std::string &progId);

    static CLSID NumeroDa(std::size_t ordem);

  private:
    struct Classe {
        std::string ProgId;
        std::wstring Clsid;
        DWORD Registro;
    };
    static void Esquece(const Classe &classe);

    std::vector<Classe> m_Classes;
    std::size_t m_Ordem = 0;
};

} // namespace nativo
