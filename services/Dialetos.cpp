#include "services/Dialetos.h"

#include "services/DialetoPostgres.h"
#include "services/DialetoSQLite.h"

namespace mesa {

std::unique_ptr<Dialeto> DialetoPara(const std::string &onde)
{
    if (DialetoPostgres::Reconhece(onde)) {
        return std::make_unique<DialetoPostgres>();
    }
    return std::make_unique<DialetoSQLite>();
}

} // namespace mesa
