#pragma once

#include "planilhas/Leitor.h"
#include "planilhas/LeitorXml.h"
#include "planilhas/Pacote.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace planilhas {

// A table in a spreadsheet of the format ODS. All sheets are in one document: the names are told by a look through all
// of it, and a sheet is reached through those before it.
class LeitorOds : public Leitor {
  public:
    LeitorOds(const std::filesystem::path &arquivo, const LimitesDeLeitura &limites);
    ~LeitorOds() override;

    const std::vector<std::string> &Folhas() override;
    void Escolhe(std::size_t folha) override;
    bool Le(LinhaLida &linha) override;

  private:
    class Folha;
    class NomesDasFolhas;

    void ConfereSenha();
    // Goes to the beginning of the sheet; false when there is none of that number.
    bool Vai(std::size_t folha);

    LimitesDeLeitura m_Limites;
    Pacote m_Pacote;
    std::vector<std::string> m_Nomes;
    std::unique_ptr<Folha> m_Folha;
    std::unique_ptr<LeitorXml> m_Xml;
    LinhaLida m_Repetida;           // the last row that was read, and
    std::uint64_t m_Repeticoes = 0; // how often it comes once more
};

} // namespace planilhas
