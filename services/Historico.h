#pragma once

#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Operacao.h"

#include <QByteArray>
#include <QJsonObject>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mesa {

// Who changed what and when. An entry is written in the transaction of the change, and never again. Each carries a hash
// over itself and over the hash of the one before it, so that none can be changed, put in or taken out without the
// hashes of all that follow telling it. The first stands on the registry's identifier.
class Historico {
  public:
    struct Mudanca {
        std::string Raiz;
        std::int64_t NroRaiz = 0;
        std::int64_t Versao = 0;
        std::string Entidade;
        std::int64_t NroEntidade = 0;
        std::string Acao;        // inclui, altera, desativa, reativa
        std::string Motivo = {}; // why, where somebody was asked
    };

    // The end of the chain.
    struct Cabeca {
        std::int64_t Tamanho = 0; // entries
        std::string Elo;          // hash of the last one; what the first one stands on, where there is none
        std::int64_t Quando = 0;  // of the last one
        bool ComFuso = false;     // and whether that is UTC
    };

    // An entry as it is stored, in the order of the columns.
    struct Entrada {
        std::int64_t Nro = 0;
        QVariantList Campos; // all columns but the first and the hash
        std::string Elo;
    };

    explicit Historico(Banco &banco) : m_Banco(banco) {}

    // Writes the row of the entity down as it now stands. operador: 0 for the system itself.
    void Registra(const Instante &agora, std::int32_t operador, const Mudanca &mudanca);
    // Writes down what is no row of a table.
    void RegistraFato(const Instante &agora, std::int32_t operador, const Mudanca &mudanca, const QJsonObject &dados);

    // The changes of a record after a version, in words: "por Ana Souza em 20/11/2026 às 14:32:10 (descrição)".
    std::string Mudancas(Raiz raiz, std::int32_t numero, std::int64_t depoisDaVersao) const;
    // The last change of a row: "por Ana Souza em 20/11/2026 às 14:32:10"; the system's when nobody ever changed it;
    // empty when there is none.
    std::string Ultima(const std::string &entidade, std::int64_t numero) const;

    Cabeca Fim() const;
    // The row of the table with that key as an entry writes it down: all columns, secrets as their SHA-256, a
    // document's content left out, since its hash is a column of its own. Empty when there is no such row.
    static std::string Retrato(Banco &banco, const std::string &tabela, std::int64_t chave);
    // Columns of a table as Retrato reads them, and the portrait of one row of them that starts at that column.
    static QString ColunasDoRetrato(const std::string &tabela);
    static std::string RetratoDe(const std::string &tabela, const Consulta &linha, int primeira);
    // The same of the values themselves, in that order.
    static std::string RetratoDe(const std::string &tabela, const QVariantList &valores);
    // Whether an entry has the column's hash instead of its value.
    static bool EhSegredo(std::string_view coluna);

    // The hash on which the first entry of a registry stands, and that of an entry that follows another.
    static std::string Origem(const std::string &identificador);
    static std::string Encadeia(const std::string &anterior, std::int64_t nro, const QVariantList &campos);
    // Whether the hash of the entry of that number is over it as it stands and over the hash of the one before it.
    bool EloVale(std::int64_t nro) const;
    // Columns of an entry in the order in which they go into the hash, which is that of the table.
    static QString ColunasDoElo();

    // Puts an entry at the end of the chain as it is, its number apart; for what comes from an older registry.
    void Acrescenta(const QVariantList &campos);

    static std::string Nome(Raiz raiz);

  private:
    // The entry's columns but for its number and hash.
    void Acrescenta(const Instante &agora, std::int32_t operador, const Mudanca &mudanca, const QVariant &antes,
                    const std::string &depois);

    Banco &m_Banco;
};

} // namespace mesa
