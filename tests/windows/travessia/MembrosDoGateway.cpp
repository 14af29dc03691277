#include "tests/windows/travessia/MembrosDoHost.h"

#include "host/IGateway.h"
#include "tests/windows/travessia/ParametrosRecebidos.h"
#include "windows/automation/Embrulho.h"

namespace nativo {
namespace {

void ExecutaMetodo(IProxyRN &proxy, Chamada &chamada)
{
    auto oContexto = chamada.Le<Ref<Objeto>>(0);
    auto sMetodo = chamada.Le<std::string>(1);
    ParametrosRecebidos recebidos(chamada.Argumento(2));
    const auto devolve = [&] {
        chamada.Devolve(0, oContexto);
        chamada.Devolve(1, sMetodo);
        recebidos.Devolve();
    };
    try {
        const bool sucesso = proxy.ExecutaMetodo(oContexto, sMetodo, recebidos.Parametros());
        devolve();
        chamada.Responde(sucesso);
    } catch (const Falha &) {
        devolve();
        throw;
    }
}

} // namespace

void OfereceGateway()
{
    OfereceMembros<IGateway>([](Membros<IGateway> &m) {
        m.Metodo("CriaObjetoRN", &IGateway::CriaObjetoRN, {"sSistema", "sClasseRN", "sBiblioteca", "sCanal"});
    });
    OfereceMembros<IProxyRN>([](Membros<IProxyRN> &m) {
        m.Metodo("ObtemRetorno", &IProxyRN::ObtemRetorno);
        m.Metodo("MostraErro", &IProxyRN::MostraErro);
        m.Metodo("ExecutaMetodo", 3, {"oContexto", "sMetodo", "aParam"}, ExecutaMetodo);
    });
}

} // namespace nativo
