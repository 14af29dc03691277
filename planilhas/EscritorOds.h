#pragma once

#include "planilhas/ArquivoNovo.h"
#include "planilhas/Escritor.h"
#include "planilhas/RegrasDaEscrita.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

// A table as a spreadsheet of the format ODS. Its document is written into a temporary file, and packed at the end. A
// text with a control character, which the format has no place for, is a Falha.
class EscritorOds : public Escritor {
  public:
    explicit EscritorOds(const std::filesystem::path &lugar);

    void Folha(const std::string &nome) override;
    void Cabecalho(const std::vector<std::string> &titulos) override;
    void Escreve(const Linha &linha) override;
    void Conclui() override;

  private:
    void Escreve(const Linha &linha, std::string_view estiloDosTextos);
    void PoeCelula(const Celula &celula, std::string_view estiloDosTextos);
    void Empacota();

    ArquivoNovo m_Arquivo;
    ArquivoTemporario m_Documento;
    Gravacao m_Gravacao;
    RegrasDaPlanilha m_Regras;
    bool m_TemFolha = false;
};

} // namespace planilhas
