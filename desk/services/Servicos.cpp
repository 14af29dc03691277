#include "desk/services/Servicos.h"

#include "desk/services/DialetoSQLite.h"
#include "desk/services/Fundacao.h"
#include "desk/services/ServicosSql.h"

#include <memory>
#include <utility>

namespace mesa {

Ref<Servicos> Servicos::Abre(const std::string &caminho, Relogio agora, const CustoDaSenha &custo)
try {
    auto banco = std::make_shared<Banco>(std::make_unique<DialetoSQLite>(), caminho, agora());
    return Novo<ServicosSql>(std::move(banco), std::move(agora), custo);
} catch (...) {
    PassaFalha(" < Servicos.Abre");
}

Ref<Servicos> Servicos::Cria(const std::string &caminho, TipoDeRegistro tipo, Relogio agora, const CustoDaSenha &custo)
try {
    auto banco = std::make_shared<Banco>(std::make_unique<DialetoSQLite>(), caminho,
                                         [&](Banco &novo) { Fundacao::Funda(novo, tipo, agora()); });
    return Novo<ServicosSql>(std::move(banco), std::move(agora), custo);
} catch (...) {
    PassaFalha(" < Servicos.Cria");
}

} // namespace mesa
