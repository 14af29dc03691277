#include "desk/services/Servicos.h"

#include "desk/services/DialetoSQLite.h"
#include "desk/services/ServicosSql.h"

#include <memory>
#include <utility>

namespace mesa {

Ref<Servicos> Servicos::Abre(const std::string &caminho, std::function<Data()> agora)
try {
    return Novo<ServicosSql>(std::make_unique<DialetoSQLite>(), caminho, std::move(agora));
} catch (...) {
    PassaFalha(" < Servicos.Abre");
}

} // namespace mesa
