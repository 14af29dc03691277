#include "tests/desk/HospedeiroDeTeste.h"

#include "desk/host/Caminhos.h"

using namespace mesa;

HospedeiroDeTeste::HospedeiroDeTeste()
    : Host(Novo<HostMesa>(Janelas, Diretorio() / "dados", [this] { return Registro.Relogio; }))
{
    // What the main window writes when it takes its place.
    Host->FormMDI->Largura = Host->FormMDI->LarguraArea = 15000;
    Host->FormMDI->Altura = Host->FormMDI->AlturaArea = 9000;
}

std::string HospedeiroDeTeste::NoModulo(const std::string &nome) const
{
    return CaminhoDoModulo(Diretorio() / nome);
}
