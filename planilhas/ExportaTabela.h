#pragma once

#include "planilhas/Celula.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace planilhas {

// Takes a table that a person sees into a file, whose name's ending tells the format.
class ExportaTabela {
  public:
    // What is told on the way: the part that is done, 0 to 1. False gives the work up.
    using Segue = std::function<bool(double parte)>;

    // nome: what the table is; the sheet has it as far as programs accept it as a sheet's name.
    ExportaTabela(std::string nome, std::vector<std::string> titulos, std::vector<Linha> linhas);
    // The cells as they are seen. A column in which every text is a day, a moment, a time of day or a number, written
    // as the registry shows them, has that type; where one is not ("007"), all are texts.
    ExportaTabela(std::string nome, std::vector<std::string> titulos,
                  const std::vector<std::vector<std::string>> &linhas);

    // False when the work was given up: then nothing was changed. Fault 5 with a sentence for a name with another
    // ending; a Falha with a sentence when the file cannot be written.
    bool Grava(const std::filesystem::path &lugar, const Segue &segue) const;

  private:
    std::string m_Nome;
    std::vector<std::string> m_Titulos;
    std::vector<Linha> m_Linhas;
};

} // namespace planilhas
