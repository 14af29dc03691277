#pragma once

#include <QVariant>
#include <QVariantList>

#include <cstdint>
#include <string>

namespace mesa {

// A statement that a database took once to run it often, and what its last run answered. Belongs to one connection.
// Raises ErroSql.
class Preparada {
  public:
    Preparada() = default;
    Preparada(const Preparada &) = delete;
    Preparada &operator=(const Preparada &) = delete;
    virtual ~Preparada() = default;

    // valores: one for each place of the statement, in its order.
    virtual void Executa(const QVariantList &valores) = 0;
    // Goes to the next row, which is the first one after a run; false when there is none.
    virtual bool Proxima() = 0;
    // Whether it stands on a row.
    virtual bool TemLinha() const = 0;
    // Of the row on which it stands, columns from 0. What is null is a null value of its type, 0 and "".
    virtual QVariant Valor(int coluna) const = 0;
    virtual std::int64_t Inteiro(int coluna) const = 0;
    virtual std::string Texto(int coluna) const = 0;
    // Lets go what the last run holds, here and in the database.
    virtual void Termina() = 0;
};

} // namespace mesa
