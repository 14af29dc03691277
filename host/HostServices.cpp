#include "host/HostServices.h"

namespace {

Ref<HostServices> g_Host;

} // namespace

HostServices &Host()
{
    return *g_Host;
}

void InstalaHost(Ref<HostServices> host)
{
    g_Host = std::move(host);
}

Ref<IPlataforma> Plataforma()
{
    return Host().Plataforma();
}
