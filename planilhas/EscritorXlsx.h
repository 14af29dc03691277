#pragma once

#include "planilhas/ArquivoNovo.h"
#include "planilhas/Escritor.h"
#include "planilhas/RegrasDaEscrita.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

namespace planilhas {

// A table as a spreadsheet of the format XLSX. What the format cannot keep is written as a text: days before 1900, and
// numbers with more digits than it has (15 to 17). The library does not tell of every write that fails, so the file is
// read once, and held against what was written, before it takes its place.
class EscritorXlsx : public Escritor {
  public:
    explicit EscritorXlsx(const std::filesystem::path &lugar);
    ~EscritorXlsx() override;

    void Folha(const std::string &nome) override;
    void Cabecalho(const std::vector<std::string> &titulos) override;
    void Escreve(const Linha &linha) override;
    void Conclui() override;

  private:
    // What was written into a sheet, to be found there.
    struct Escrita {
        lxw_worksheet *Folha = nullptr;
        std::uint64_t Linhas = 0;
        std::uint64_t Soma = 0;
    };

    void Escreve(const Linha &linha, lxw_format *formatoDosTextos);
    void Escreve(std::size_t coluna, const Celula &celula, lxw_format *formatoDosTextos);
    lxw_format *Formato(const char *codigo);
    // Ends the library's work; its number of what failed.
    int Fecha();
    void Confere();

    ArquivoNovo m_Arquivo;
    lxw_workbook *m_Livro;
    lxw_worksheet *m_Folha = nullptr;
    lxw_format *m_Titulo;
    lxw_format *m_Data;
    lxw_format *m_DataHora;
    lxw_format *m_Hora;
    RegrasDaPlanilha m_Regras;
    std::vector<Escrita> m_Escritas;
};

} // namespace planilhas
