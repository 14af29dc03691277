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
    // A value beside the component's registration tells it that it finds a class there: its programmatic identifier, or
    // its number in braces.
    void Aponta(const std::string &classe, const std::string &progId, bool peloNumero = false);

  private:
    struct Classe {
        std::string ProgId;
        std::wstring Clsid;
        DWORD Registro;
    };
    static void Esquece(const Classe &classe);

    std::vector<Classe> m_Classes;
    std::size_t m_Ordem = 0;
    bool m_Apontou = false;
};

} // namespace nativo
