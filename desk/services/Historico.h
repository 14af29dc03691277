#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Operacao.h"

#include <QJsonObject>

#include <cstdint>
#include <string>

namespace mesa {

// Who changed what and when. A row is written in the transaction of the change, and never again.
class Historico {
  public:
    struct Mudanca {
        std::string Raiz;
        std::int64_t NroRaiz = 0;
        std::int64_t Versao = 0;
        std::string Entidade;
        std::int64_t NroEntidade = 0;
        std::string Acao; // inclui, altera, desativa, reativa
    };

    explicit Historico(Banco &banco) : m_Banco(banco) {}

    // antes: empty for what is new. operador: 0 for the system itself.
    void Registra(std::int64_t quando, std::int32_t operador, const Mudanca &mudanca, const QJsonObject &antes,
                  const QJsonObject &depois);

    // The changes of a record after a version, in words: "por Ana Souza em 20/11/2026 às 14:32:10 (descrição)".
    std::string Mudancas(Raiz raiz, std::int32_t numero, std::int64_t depoisDaVersao) const;
    // The last change of a row: "por Ana Souza em 20/11/2026 às 14:32:10"; empty when there is none.
    std::string Ultima(const std::string &entidade, std::int64_t numero) const;

    static std::string Nome(Raiz raiz);

  private:
    Banco &m_Banco;
};

} // namespace mesa
