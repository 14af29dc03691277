#pragma once

#include "host/Falha.h"
#include "planilhas/Formatos.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

// A directory of its own for a test, which goes away with it.
class Pasta {
  public:
    Pasta();
    Pasta(const Pasta &) = delete;
    Pasta &operator=(const Pasta &) = delete;
    ~Pasta();

    std::filesystem::path operator/(const std::string &nome) const { return m_Caminho / nome; }
    // A file of that name with these bytes.
    std::filesystem::path Com(const std::string &nome, const std::string &octetos) const;
    // An archive of that name with these parts.
    std::filesystem::path ComPacote(const std::string &nome,
                                    const std::vector<std::pair<std::string, std::string>> &partes) const;
    // A spreadsheet of that name whose first sheet has this between <sheetData> and its end. estilos: the part of the
    // styles; textos: that of the shared texts; livro: what the workbook has before its sheets.
    std::filesystem::path ComXlsx(const std::string &dados, const std::string &estilos = "",
                                  const std::string &textos = "", const std::string &livro = "") const;
    // A spreadsheet of the other format, with this between <office:spreadsheet> and its end.
    std::filesystem::path ComOds(const std::string &folhas) const;
    // Names of what is in it, in order.
    std::vector<std::string> Nomes() const;

  private:
    std::filesystem::path m_Caminho;
};

std::string OctetosDe(const std::filesystem::path &arquivo);

// Rows as text: "3|T:abc||N:5.3", each cell with its type's letter (a formula's in small) after the row's number.
std::vector<std::string> Linhas(planilhas::Leitor &leitor);
std::vector<std::string> Linhas(const std::filesystem::path &arquivo, const planilhas::OpcoesDeLeitura &opcoes = {});

// The sentence with which reading the file to its end fails; "" when it does not. A fault of another number than that
// of formats comes with its number before.
std::string Frase(const std::filesystem::path &arquivo, const planilhas::OpcoesDeLeitura &opcoes = {});

// The fault that it raises, whatever it is; number 0 when there is none.
template <class Ato> Falha FalhaDe(Ato &&ato)
{
    try {
        ato();
    } catch (const Falha &falha) {
        return falha;
    }
    return Falha(0, "", "");
}
