#pragma once

#include "services/ErroSql.h"

#include <grpcpp/support/status.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace servidor {

// How a call ends that does not end with its answer, on its way out of the work. It ends in Atendente.
struct Fim {
    grpc::StatusCode Codigo;
    std::string Frase; // for the person
    std::vector<std::pair<std::string, std::string>> Metadados = {};
    std::string Motivo = {};  // of a failure, for the log: short, and nobody's words
    std::string Detalhe = {}; // of a failure, for whoever looks after the server
};

inline Fim Ocupado(const std::string &porque)
{
    return {grpc::StatusCode::RESOURCE_EXHAUSTED, "ocupado: " + porque + " Tente de novo daqui a pouco."};
}

// The beginning of a UTF-8 text, of at most so many octets, at the end of a character.
std::string Cortado(const std::string &texto, std::size_t octetos);

// The failure without the database's own words, which tell of machines and users: its sentence may go to anybody.
mesa::ErroSql SemDetalhe(mesa::ErroSql erro);

// The same of a sentence in which those words stand in parentheses, and the name of the registry's database. registro:
// its place.
std::string SemPalavras(std::string frase, const std::vector<std::string> &palavras, const std::string &registro);

} // namespace servidor
