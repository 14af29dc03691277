#pragma once

#include <sqlite3.h>

// The disk under the embedded database, which fills up while one of these lives: so many more writes succeed, and none
// after them. There is one at a time.
class DiscoDeTeste {
  public:
    // Puts it under every database that is opened from now on.
    static void Instala();

    // codigo: what the database is told of a write that does not fit. With SQLITE_IOERR_FSYNC it is the
    // synchronisations that are counted and fail.
    explicit DiscoDeTeste(int cabem, int codigo = SQLITE_FULL);
    DiscoDeTeste(const DiscoDeTeste &) = delete;
    DiscoDeTeste &operator=(const DiscoDeTeste &) = delete;
    ~DiscoDeTeste();

    bool Recusou() const;
};
