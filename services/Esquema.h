#pragma once

#include <QVariant>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mesa {

// The tables of the registry, each column told once: from here come the statements that create them, with what the
// database itself refuses, and the sentences of what the services refuse before.
namespace Esquema {

// What a column holds.
enum class Forma {
    Numero,  // from De to Ate
    Texto,   // from De to Ate characters
    SimNao,  // 1 or 2
    Dia,     // a day of the calendar, yyyymmdd
    Momento, // yyyymmddhhmmss
    Hora,    // hhmm
    Octetos  // from De to Ate bytes
};

struct Coluna {
    std::string_view Nome;
    Forma Tipo = Forma::Numero;
    std::int64_t De = 0;
    std::int64_t Ate = 0;
    bool Nula = false;
    std::string_view Referencia = {}; // table and column to which it refers

    // Why the column refuses the value, without the column's name: "aceita até 20 caracteres e veio com 25". Empty when
    // it takes it.
    std::string Recusa(const QVariant &valor) const;
};

// What may not be twice in a table, over the rows for which `Onde` holds: NEW stands for the row that is written, and
// `o` for the other one.
struct Unica {
    std::vector<std::string_view> Colunas;
    std::string_view Onde = {};
};

// A condition over more than one column.
struct Condicao {
    std::string_view Nome;
    std::string_view Expressao;
};

// A guard of its own, beside those that all tables have.
struct Guarda {
    std::string_view Nome;
    std::string_view Quando; // "INSERT" or "UPDATE"
    std::string_view Condicao;
    std::string_view Motivo; // what the database says when it refuses
};

struct Indice {
    std::string_view Nome;
    std::string_view Colunas;
    std::string_view Onde = {}; // of the rows for which it holds
};

// A table. Its rows are never erased nor replaced, and their first column, the key, never changes.
struct Tabela {
    std::string_view Nome;
    std::vector<Coluna> Colunas;
    std::vector<Unica> Unicas = {};
    std::vector<Condicao> Condicoes = {};
    std::vector<Indice> Indices = {};
    bool SoInclui = false;                    // a row never changes
    std::vector<std::string_view> Fixas = {}; // columns that never change
    std::vector<Guarda> Guardas = {};
    bool ComHistorico = true; // every row is as its last entry in the history says
    std::int64_t Desde = 2;   // version of the schema with which it came

    const Coluna &Chave() const { return Colunas.front(); }
    // Null when there is none of that name.
    const mesa::Esquema::Coluna *Acha(std::string_view nome) const;
};

// In an order in which each refers only to those before it.
const std::vector<Tabela> &Tabelas();
// Null when there is none of that name.
const Tabela *Acha(std::string_view nome);

// The document of the calibration that an entry of the history writes down. With no function of JSON: in an index, one
// is not run on a connection that does not trust the file.
inline constexpr std::string_view DocumentoDaEntrada =
    "CAST(substr(Depois, instr(Depois, '\"NroIntImgCertif\":') + 18, 16) AS INTEGER)";

// The present one, which a new registry has.
inline constexpr std::int64_t Versao = 3;

// What marks a file as a registry.
inline constexpr std::int32_t Aplicacao = 0x52455154;

} // namespace Esquema

} // namespace mesa
