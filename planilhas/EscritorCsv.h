#pragma once

#include "planilhas/ArquivoNovo.h"
#include "planilhas/Escritor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace planilhas {

// A table as a file of text in UTF-8 with its mark, rows ended by CR LF. Values are written as TextoDaCelula has them,
// with a decimal comma, or with a point where the comma parts the cells. Texts that a spreadsheet would take for
// formulas have an apostrophe before them (Desarma).
class EscritorCsv : public Escritor {
  public:
    // separador: one of ; , and the tab.
    EscritorCsv(const std::filesystem::path &lugar, char separador);
    ~EscritorCsv() override;

    // Fault 5 at a second one.
    void Folha(const std::string &nome) override;
    void Cabecalho(const std::vector<std::string> &titulos) override;
    void Escreve(const Linha &linha) override;
    void Conclui() override;

  private:
    void PoeCelula(const Celula &celula);

    ArquivoNovo m_Arquivo;
    int m_Aberto;
    Gravacao m_Gravacao;
    char m_Separador;
    std::string m_Especiais;
    bool m_TemFolha = false;
};

} // namespace planilhas
