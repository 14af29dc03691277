#include "tests/windows/travessia/HostAtravessado.h"

#include "tests/windows/travessia/Cerca.h"
#include "windows/automation/Embrulho.h"

namespace nativo {

HostAtravessado::HostAtravessado(const Ref<HostServices> &proprio)
    : m_Proprio(proprio),
      m_Tardio(Cerca::Em(Embrulha(proprio, Lado::Hospedeiro)))
{
}

} // namespace nativo
