#include "tests/windows/travessia/Ligacao.h"

#include "tests/support/Oferta.h"
#include "tests/windows/travessia/Cerca.h"
#include "tests/windows/travessia/HostAtravessado.h"
#include "tests/windows/travessia/MembrosDoHost.h"
#include "windows/automation/Embrulho.h"
#include "windows/host/Oferecidos.h"
#include "windows/host/Remotos.h"

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

} // namespace

void LigaTravessia()
{
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
}

} // namespace nativo
