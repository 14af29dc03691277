#pragma once

#include "tests/mortes/Diario.h"

#include <string>
#include <vector>

namespace mortes {

// Rows of an answer; what is not there is an empty text.
using Linhas = std::vector<std::vector<std::string>>;

// A connection straight to the engine, past the services.
class Direta {
  public:
    // Text of the connection as libpq takes it. std::runtime_error with the engine's words when it fails.
    explicit Direta(const std::string &conexao);
    Direta(const Direta &) = delete;
    Direta &operator=(const Direta &) = delete;
    ~Direta();

    Linhas Pergunta(const std::string &sql);

  private:
    void *m_Conexao;
};

// What of a registry is not as those who saved were told.
struct Achados {
    std::vector<std::string> Perdidas; // answered as saved, and not there
    std::vector<std::string> Duplas;   // there more than once
    std::vector<std::string> Metades;  // there in part
    std::vector<std::string> Outros;   // what nobody asked for, other numbers than were answered, a broken history

    bool Nenhum() const { return Perdidas.empty() && Duplas.empty() && Metades.empty() && Outros.empty(); }
    Achados &operator+=(const Achados &outros);
    std::string Texto() const;
};

// Holds the journals of all who ever saved in a registry against what it holds, in one moment of it. In the registry
// nobody else may have kept documents, or equipment whose code begins with "M".
Achados Verifica(Direta &direta, const Diario &diario);

} // namespace mortes
