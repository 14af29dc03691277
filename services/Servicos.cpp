#include "services/Servicos.h"

#include "services/Copia.h"
#include "services/DialetoPostgres.h"
#include "services/Dialetos.h"
#include "services/ErroSql.h"
#include "services/Fundacao.h"
#include "services/ServicosSql.h"

#include <memory>
#include <utility>

namespace mesa {

Ref<Servicos> Servicos::Abre(const std::string &caminho, Relogio agora, const CustoDaSenha &custo,
                             const std::string &pastaDasCopias)
try {
    const Instante momento = agora();
    auto banco = std::make_shared<Banco>(DialetoPara(caminho), caminho, momento, [&] {
        if (DialetoPostgres::Reconhece(caminho)) {
            return; // whoever administers the server looks after its copies
        }
        // What the schema was is looked through by no check of today.
        const DesfechoDaCopia copia =
            Copia(caminho, {}).Faz(pastaDasCopias.empty() ? Copia::PastaPadrao(caminho) : pastaDasCopias, momento);
        if (!copia.Feita) {
            throw Falha(NumeroFalha::ErroDeAcesso, "Servicos",
                        "O registro é de uma versão anterior e não foi atualizado, porque antes se faz uma cópia. " +
                            copia.Frase);
        }
    });
    return Novo<ServicosSql>(std::move(banco), std::move(agora), custo);
} catch (...) {
    PassaErro(" < Servicos.Abre");
}

Ref<Servicos> Servicos::Cria(const std::string &caminho, TipoDeRegistro tipo, Relogio agora, const CustoDaSenha &custo)
try {
    auto banco = std::make_shared<Banco>(DialetoPara(caminho), caminho,
                                         [&](Banco &novo) { Fundacao::Funda(novo, tipo, agora()); });
    return Novo<ServicosSql>(std::move(banco), std::move(agora), custo);
} catch (...) {
    PassaErro(" < Servicos.Cria");
}

} // namespace mesa
