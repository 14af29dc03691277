#include "tests/fuzz/Alvo.h"

#include "planilhas/Formatos.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"

#include <unistd.h>
#include <zip.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The reading of tables: any bytes are a table or a fault with a sentence; and what is written is read as it was.

namespace {

using namespace planilhas;

// The file that the inputs are put into, one behind the other.
class Arquivo {
  public:
    ~Arquivo()
    {
        std::error_code ignorado;
        std::filesystem::remove(m_Caminho, ignorado);
    }
    const std::filesystem::path &Caminho() const { return m_Caminho; }

  private:
    std::filesystem::path m_Caminho =
        std::filesystem::temp_directory_path() / ("planilhas-fuzz-" + std::to_string(getpid()));
};

const std::filesystem::path &Caminho()
{
    static const Arquivo arquivo;
    return arquivo.Caminho();
}

void Le(const OpcoesDeLeitura &opcoes)
{
    try {
        const auto leitor = AbreLeitor(Caminho(), opcoes);
        const std::size_t folhas = leitor->Folhas().size();
        Exige(folhas > 0, "what opens has a sheet");
        for (std::size_t folha = 0; folha < folhas && folha < 3; ++folha) {
            leitor->Escolhe(folha);
            std::uint32_t antes = 0;
            for (LinhaLida linha; leitor->Le(linha); antes = linha.Numero) {
                Exige(linha.Numero > antes, "rows come in their order");
                Exige(!linha.Celulas.empty() && !linha.Celulas.back().Nada(), "a row ends with something");
                Exige(linha.Celulas.size() <= opcoes.Limites.Colunas, "a row has no more columns than it may");
            }
        }
    } catch (const Falha &falha) {
        Exige(falha.Descricao.ends_with('.') && falha.Descricao.find(' ') != std::string::npos, "a fault is a sentence",
              falha.Descricao);
    }
}

OpcoesDeLeitura Apertadas()
{
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Octetos = 1000000;
    opcoes.Limites.Linhas = 1000;
    opcoes.Limites.Colunas = 50;
    return opcoes;
}

void Grava(const std::string &octetos)
{
    std::ofstream(Caminho(), std::ios::binary) << octetos;
}

void Qualquer(Octetos &octetos)
{
    Grava(octetos.Resto());
    Le(Apertadas());
}

void Texto(Octetos &octetos)
{
    OpcoesDeLeitura opcoes = Apertadas();
    opcoes.Codificacao = static_cast<Codificacao>(octetos.Ate(3));
    opcoes.Separador = ";,\t"[octetos.Ate(2)];
    Grava(octetos.Resto());
    Le(opcoes);
}

void GravaPacote(const std::vector<std::pair<std::string, std::string>> &partes)
{
    int erro = 0;
    zip_t *const pacote = zip_open(Caminho().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &erro);
    Exige(pacote != nullptr, "the archive can be made");
    for (const auto &[nome, conteudo] : partes) {
        const zip_int64_t lugar =
            zip_file_add(pacote, nome.c_str(), zip_source_buffer(pacote, conteudo.data(), conteudo.size(), 0), 0);
        zip_set_file_compression(pacote, static_cast<zip_uint64_t>(lugar), ZIP_CM_STORE, 0);
    }
    Exige(zip_close(pacote) == 0, "the archive can be written");
}

// A sheet, a style and a text of the input's.
void Xlsx(Octetos &octetos)
{
    const std::string rels = "<Relationships><Relationship Id=\"a\" Type=\"/";
    const std::string estilos = octetos.Texto(100);
    const std::string textos = octetos.Texto(100);
    const std::string dados = octetos.Resto();
    GravaPacote(
        {{"_rels/.rels", rels + "officeDocument\" Target=\"w.xml\"/></Relationships>"},
         {"w.xml", "<workbook xmlns:r=\"x/relationships\"><sheet name=\"a\" r:id=\"a\"/></workbook>"},
         {"_rels/w.xml.rels",
          rels + "worksheet\" Target=\"s.xml\"/><Relationship Id=\"t\" Type=\"/sharedStrings\" Target=\"t.xml\"/>"
                 "<Relationship Id=\"e\" Type=\"/styles\" Target=\"e.xml\"/></Relationships>"},
         {"e.xml", "<styleSheet><numFmts><numFmt numFmtId=\"200\" formatCode=\"dd/mm/yyyy\"/></numFmts><cellXfs>"
                   "<xf numFmtId=\"0\"/><xf numFmtId=\"200\"/>" +
                       estilos + "</cellXfs></styleSheet>"},
         {"t.xml", "<sst><si><t>a</t></si>" + textos + "</sst>"},
         {"s.xml", "<worksheet><sheetData>" + dados + "</sheetData></worksheet>"}});
    Le(Apertadas());
}

void Ods(Octetos &octetos)
{
    GravaPacote(
        {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
         {"content.xml", "<o:d xmlns:o=\"x:office:1.0\" xmlns:t=\"x:table:1.0\" xmlns:x=\"x:text:1.0\"><o:spreadsheet>"
                         "<t:table t:name=\"a\">" +
                             octetos.Resto() + "</t:table></o:spreadsheet></o:d>"}});
    Le(Apertadas());
}

// Cells of the input's, written and read.
void IdaEVolta(Octetos &octetos)
{
    const auto formato = static_cast<Formato>(octetos.Ate(2));
    std::vector<Linha> linhas;
    while (!octetos.Acabou() && linhas.size() < 20) {
        Linha linha;
        for (int i = octetos.Ate(3); i >= 0; --i) {
            switch (octetos.Ate(4)) {
            case 0:
                linha.push_back(CelulaDeNumero(static_cast<double>(octetos.Longo()) / 100));
                break;
            case 1:
                linha.push_back(CelulaDeData(octetos.Ate(27) + 1, octetos.Ate(11) + 1, 1900 + octetos.Ate(200)));
                break;
            case 2:
                linha.push_back(CelulaLogica(octetos.Sim()));
                break;
            case 3:
                linha.push_back(CelulaDeHora(octetos.Ate(200), octetos.Ate(59), octetos.Ate(59)));
                break;
            default:
                linha.push_back(CelulaDeTexto(octetos.Texto(30)));
            }
        }
        linhas.push_back(std::move(linha));
    }
    try {
        const auto escritor = FazEscritor(Caminho(), formato);
        escritor->Folha("a");
        for (const Linha &linha : linhas) {
            escritor->Escreve(linha);
        }
        escritor->Conclui();
    } catch (const Falha &falha) { // a text that is none
        Exige(falha.Numero == NumeroFalha::ArgumentoInvalido, "only what is no text is not written", falha.Descricao);
        return;
    }
    OpcoesDeLeitura opcoes;
    opcoes.Separador = ';';
    std::vector<Linha> lidas;
    if (formato != Formato::Csv || std::filesystem::file_size(Caminho()) > 3) {
        const auto leitor = AbreLeitor(Caminho(), opcoes);
        for (LinhaLida linha; leitor->Le(linha);) {
            lidas.resize(linha.Numero - 1);
            lidas.push_back(linha.Celulas);
        }
    }
    lidas.resize(linhas.size());
    for (std::size_t i = 0; i < linhas.size(); ++i) {
        lidas[i].resize(linhas[i].size());
        for (std::size_t j = 0; j < linhas[i].size(); ++j) {
            const std::string escrita = TextoDaCelula(linhas[i][j]);
            Exige(TextoDaCelula(lidas[i][j]) == escrita, "what is written is read", escrita);
            Exige(formato == Formato::Csv || lidas[i][j].Tipo == linhas[i][j].Tipo, "and is of the same type", escrita);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Qualquer, Texto, Xlsx, Ods, IdaEVolta});
}
