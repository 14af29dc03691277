#pragma once

#include "services/ArquivoSQLite.h"
#include "services/Copia.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mesa {

// What making and restoring a copy have in common.

// The work was given up by whoever watched it.
struct Desistencia {};

// Tells how much is done; raises Desistencia. `de` to `ate`: the part of the whole that this one's 0 to 1 stands for.
class ParteDoAndamento {
  public:
    ParteDoAndamento(const AndamentoDaCopia &andamento, double de, double ate)
        : m_Andamento(andamento),
          m_De(de),
          m_Ate(ate)
    {
    }
    void Diz(double parte) const;

  private:
    const AndamentoDaCopia &m_Andamento;
    double m_De;
    double m_Ate;
};

// Who a registry is.
struct FichaDoRegistro {
    std::int64_t Versao = 0;   // of its schema
    std::string Identificador; // empty in a schema from before there were any
};

// nome: the file, as the sentence has it that refuses what is no registry ("A cópia x.db").
FichaDoRegistro LeFicha(ArquivoSQLite &arquivo, const std::string &nome);

// The whole database, as it is at one moment, into an empty file, where it stands alone.
void CopiaPaginas(ArquivoSQLite &de, const std::filesystem::path &para, const ParteDoAndamento &andamento);

// What is wrong with the database in a file.
std::vector<std::string> Achados(const std::filesystem::path &arquivo, const ConfereArquivo &confere,
                                 const ParteDoAndamento &andamento);

// Name that no file has yet, of the moment and, when need be, a number: <comeco>AAAAMMDD-HHMMSS[-N].db
std::filesystem::path NomeLivre(const std::filesystem::path &pasta, const std::string &comeco, Data quando);

// The size in MB, with one decimal: "3,2 MB".
std::string TamanhoEmMB(const std::filesystem::path &arquivo);

} // namespace mesa
