#include "shell/Componente.h"

#include "shell/ModGeral.h"

#include <utility>

namespace {

Componente g_Componente;

} // namespace

Componente &EsteComponente() noexcept
{
    return g_Componente;
}

RefFraca<Geral> &goGeral = g_Componente.Shell;
std::int32_t &glCredencial = g_Componente.Credencial;
std::int32_t &glCodMunicLogon = g_Componente.CodMunicLogon;

HostServices &Host()
{
    return *g_Componente.Host;
}

void InstalaHost(Ref<HostServices> host)
{
    g_Componente.Host = std::move(host);
}

Ref<IPlataforma> Plataforma()
{
    return Host().Plataforma();
}
