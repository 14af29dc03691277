#include "comando/Versao.h"

namespace comando {

const char *Versao()
{
    return VERSAO;
}

} // namespace comando
