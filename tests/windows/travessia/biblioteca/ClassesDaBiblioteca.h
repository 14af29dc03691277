#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string_view>
#include <vector>

namespace nativo {

struct MembroDaClasse {
    const wchar_t *Nome;
    VARTYPE Tipo;
};

// A class of the host's record library: its name, its identifier and its members, as the library has them.
struct ClasseDaBiblioteca {
    const wchar_t *Nome;
    CLSID Numero;
    std::vector<MembroDaClasse> Membros;
};

const std::vector<ClasseDaBiblioteca> &ClassesDaBiblioteca();

} // namespace nativo
