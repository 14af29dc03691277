#pragma once

#include "host/Valor.h"

#include <cstdint>
#include <string>

// One column of the current row of a cursor.
class IFields : public Objeto {
  public:
    virtual Valor Value() const = 0;
};

// Read-only cursor over the answer to a query.
class ICursor : public Objeto {
  public:
    // At the end: no current row.
    virtual bool EOF_() const = 0;
    // Number of rows, known from the start.
    virtual std::int32_t RecordCount() const = 0;
    // Column by name, case ignored. Fault 3265 when there is no such column, 3021 when there is no current row.
    virtual Ref<IFields> Fields(const std::string &nome) const = 0;
    virtual void MoveNext() = 0;
    virtual void Close() = 0;
};

// OpenRecordset: read-only snapshot.
inline constexpr std::int16_t InstantaneoSomenteLeitura = 4;

// The host's local database, read only for the module.
class IMDB : public Objeto {
  public:
    // File of the database; for the report service.
    virtual std::string Name() const = 0;
    // Runs a SELECT. tipo is always InstantaneoSomenteLeitura; the two last arguments are always empty.
    // A statement that cannot be read or run raises the database's fault.
    virtual Ref<ICursor> OpenRecordset(const std::string &sql, std::int16_t tipo, const Valor &opcoes,
                                       const Valor &trava) = 0;
};
