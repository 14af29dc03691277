#include "desk/host/Versao.h"

namespace mesa {

const char *Versao()
{
    return VERSAO;
}

} // namespace mesa
