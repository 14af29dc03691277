#include "tests/support/Oferta.h"
#include "tests/support/RegistroChamadas.h"
#include "tests/windows/travessia/Cerca.h"
#include "tests/windows/travessia/HostAtravessado.h"
#include "tests/windows/travessia/MembrosDoHost.h"
#include "windows/automation/Embrulho.h"
#include "windows/host/Oferecidos.h"
#include "windows/host/Remotos.h"

#include <gtest/gtest.h>

#include <objbase.h>

#include <iostream>

// Linked into a test program, this puts the boundary between the module and the scripted host.

namespace nativo {
namespace {

template <class Interface> Ref<Interface> Atravessa(const Ref<Interface> &objeto)
{
    return RemotoDe<Interface>(Cerca::Em(Embrulha(objeto, Lado::Hospedeiro)));
}

Ref<HostServices> AtravessaHost(const Ref<HostServices> &host)
{
    return Novo<HostAtravessado>(host);
}

template <class... Interfaces> void Liga()
{
    ((::Travessia<Interfaces>::Leva = &Atravessa<Interfaces>), ...);
}

// Calls of host objects that did not come across the boundary, by name: a test's own.
std::map<std::string, std::int64_t> &Diretas()
{
    static std::map<std::string, std::int64_t> diretas;
    return diretas;
}

void AoChamar(std::string_view nome)
{
    if (!Cerca::Atravessando()) {
        ++Diretas()[std::string(nome)];
    }
}

class Fronteira : public testing::Environment {
  public:
    void SetUp() override { OleInitialize(nullptr); }
    void TearDown() override
    {
        std::int64_t chamadas = 0;
        for (const auto &[nome, vezes] : Cerca::Chamadas()) {
            chamadas += vezes;
        }
        std::cout << "crossed: " << chamadas << " calls of " << Cerca::Chamadas().size() << " members\n";
        for (const auto &[nome, vezes] : Diretas()) {
            std::cout << "not crossed: " << nome << ' ' << vezes << '\n';
        }
        OleUninitialize();
    }
};

const bool Ligada = [] {
    RegistraRemotos();
    OfereceObjetos();
    OfereceAplicacao();
    OfereceSessao();
    OfereceGateway();
    OfereceServicos();
    OfereceMenus();
    Liga<IobjMTM, IobjSCA, IoAppEXE, IFormMDI, IcGlobal, IObjInterface, IActBar, IRelatorios, IAjuda, IMDB, ICursor,
         ITransacao, IGateway, ::Objeto>();
    ::Travessia<HostServices>::Leva = &AtravessaHost;
    RegistroChamadas::AoChamar = &AoChamar;
    testing::AddGlobalTestEnvironment(new Fronteira);
    return true;
}();

} // namespace
} // namespace nativo
