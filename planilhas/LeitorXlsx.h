#pragma once

#include "planilhas/FormatoNumerico.h"
#include "planilhas/Leitor.h"
#include "planilhas/LeitorXml.h"
#include "planilhas/Pacote.h"
#include "planilhas/TextosPartilhados.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

// A table in a spreadsheet of the format XLSX. Which numbers are dates is told by the formats of their cells.
class LeitorXlsx : public Leitor {
  public:
    LeitorXlsx(const std::filesystem::path &arquivo, const LimitesDeLeitura &limites);
    ~LeitorXlsx() override;

    const std::vector<std::string> &Folhas() override;
    void Escolhe(std::size_t folha) override;
    bool Le(LinhaLida &linha) override;

  private:
    class Folha;

    // What a part names, by the number that it gives them.
    struct Relacao {
        std::string Tipo; // the last word of its address
        std::string Parte;
    };
    // How a cell shows its number.
    struct FormatoDasCelulas {
        SentidoDoNumero Sentido = SentidoDoNumero::Numero;
        std::shared_ptr<const std::string> Mascara; // none for most
    };
    std::map<std::string, Relacao, std::less<>> Relacoes(const std::string &parte);
    void LeLivro();
    void LeEstilos(const std::string &parte);
    std::string_view TextoPartilhado(std::size_t numero);

    LimitesDeLeitura m_Limites;
    Pacote m_Pacote;
    std::vector<std::string> m_Nomes;
    std::vector<std::string> m_Partes; // of the sheets
    std::string m_ParteDosTextos;      // empty when there is none
    std::unique_ptr<TextosPartilhados> m_Textos;
    bool m_Desde1904 = false;
    std::vector<FormatoDasCelulas> m_Formatos; // that cells name by number
    std::unique_ptr<Folha> m_Folha;
    std::unique_ptr<LeitorXml> m_Xml;
};

// Where the workbook of a package is, empty when it has none.
std::string LivroDoPacote(Pacote &pacote);

} // namespace planilhas
