#pragma once

#include "planilhas/Codificacao.h"
#include "planilhas/Contagem.h"
#include "planilhas/Leitor.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

// A table in a file of text: cells between separators, rows between line ends (CR LF, LF or CR). A cell with either of
// them in it stands between quotation marks, which are doubled inside. Every cell is a text; what the writer put before
// a text that a spreadsheet would take for a formula is taken off again.
class LeitorCsv : public Leitor {
  public:
    // separador: what stands between the cells, one of ; , and the tab.
    LeitorCsv(std::filesystem::path arquivo, Codificacao codificacao, char separador, const LimitesDeLeitura &limites);

    const std::vector<std::string> &Folhas() override;
    void Escolhe(std::size_t folha) override;
    bool Le(LinhaLida &linha) override;

  private:
    enum class Apos { Separador, FimDeLinha, FimDoArquivo };

    // The character at hand, -1 at the end of the file.
    int Atual();
    void Anda() { ++m_Onde; }
    // One cell, and what ended it.
    Apos LeCelula(std::string &texto);
    void LeEntreAspas(std::string &texto);
    Apos LeFim();
    void Poe(std::string &texto, int letra) const;
    std::string DaLinha() const;

    std::filesystem::path m_Arquivo;
    Codificacao m_Codificacao;
    char m_Separador;
    LimitesDeLeitura m_Limites;
    Contagem m_Contagem;
    std::vector<std::string> m_Folhas{""};
    std::unique_ptr<TextoDoArquivo> m_Texto;
    std::string_view m_Pedaco;
    std::size_t m_Onde = 0;
    std::uint32_t m_Linha = 0;
    bool m_Acabou = false;
};

// What stands between the cells of a text, by its beginning; nothing when in doubt. A text with one cell a row has no
// separator to be seen: the semicolon then.
// inteiro: whether the text is the whole file, so that its last row is whole too.
std::optional<char> SeparadorDoTexto(std::string_view comeco, bool inteiro);

} // namespace planilhas
