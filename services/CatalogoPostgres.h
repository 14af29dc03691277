#pragma once

#include "services/LigacaoPostgres.h"

#include <string>
#include <vector>

namespace mesa {

struct ResultadoDoCatalogo {
    std::vector<std::string> Achados;  // a sentence each
    std::vector<std::string> Avisos;   // what could not be looked at, and why
    std::vector<std::string> Palavras; // of the server, each of which stands in parentheses in a finding
};

// Holds the tables, guards, functions and rights of a registry on a server against those of a new one, which is made
// beside it for that and taken back. What hides rows or switches guards off for a role counts too. Raises
// ErroDoServidor when the server cannot be asked.
ResultadoDoCatalogo ConfereCatalogo(LigacaoPostgres &ligacao);

} // namespace mesa
