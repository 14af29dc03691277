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
    return CaminhoDoModulo(Diretorio()) + "\\" + nome;
}

Ref<Geral> HospedeiroTeste::Loga(const std::string &usuario)
{
    auto geral = Novo<Geral>();
    geral->cGlobal = mesa.Host->cGlobal;
    geral->Parametros(mesa.Host->FormMDI, mesa.Host->ActBar, nullptr, nullptr, nullptr, mesa.Host->oAppEXE);
    geral->ObjInterface = mesa.Host->ObjInterface;
    mesa.Host->cGlobal->Registra(std::string(NomeComponente), geral);
    mesa.Entra(usuario);
    geral->Logon(mesa.Host->objMTM(), mesa.Host->objSCA(), "");
    return geral;
}
