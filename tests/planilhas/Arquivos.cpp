#include "tests/planilhas/Arquivos.h"

#include "planilhas/Falhas.h"

#include <stdlib.h>
#include <zip.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

using namespace planilhas;

Pasta::Pasta()
{
    std::string nome = (fs::temp_directory_path() / "teste-planilhas-XXXXXX").string();
    if (mkdtemp(nome.data()) == nullptr) {
        throw std::runtime_error("no directory");
    }
    m_Caminho = nome;
}

Pasta::~Pasta()
{
    std::error_code ignorado;
    fs::remove_all(m_Caminho, ignorado);
}

fs::path Pasta::Com(const std::string &nome, const std::string &octetos) const
{
    const fs::path arquivo = m_Caminho / nome;
    if (!(std::ofstream(arquivo, std::ios::binary) << octetos << std::flush)) {
        throw std::runtime_error("not written: " + arquivo.string());
    }
    return arquivo;
}

fs::path Pasta::ComPacote(const std::string &nome, const std::vector<std::pair<std::string, std::string>> &partes) const
{
    const fs::path arquivo = m_Caminho / nome;
    int erro = 0;
    zip_t *const pacote = zip_open(arquivo.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &erro);
    if (pacote == nullptr) {
        throw std::runtime_error("no archive");
    }
    for (const auto &[parte, octetos] : partes) {
        zip_file_add(pacote, parte.c_str(), zip_source_buffer(pacote, octetos.data(), octetos.size(), 0),
                     ZIP_FL_ENC_UTF_8);
    }
    if (zip_close(pacote) != 0) {
        throw std::runtime_error(zip_strerror(pacote));
    }
    return arquivo;
}

fs::path Pasta::ComXlsx(const std::string &dados, const std::string &estilos, const std::string &textos,
                        const std::string &livro) const
{
    const std::string principal = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string relacoes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const std::string abre = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    std::vector<std::pair<std::string, std::string>> partes{
        {"_rels/.rels", abre + "<Relationship Id=\"a\" Type=\"" + relacoes +
                            "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>"},
        {"xl/workbook.xml", "<workbook xmlns=\"" + principal + "\" xmlns:r=\"" + relacoes + "\">" + livro +
                                "<sheets><sheet name=\"Dados\" sheetId=\"1\" r:id=\"f1\"/></sheets></workbook>"},
        {"xl/worksheets/sheet1.xml",
         "<worksheet xmlns=\"" + principal + "\"><sheetData>" + dados + "</sheetData></worksheet>"}};
    std::string alvos =
        abre + "<Relationship Id=\"f1\" Type=\"" + relacoes + "/worksheet\" Target=\"worksheets/sheet1.xml\"/>";
    if (!estilos.empty()) {
        partes.emplace_back("xl/styles.xml", "<styleSheet xmlns=\"" + principal + "\">" + estilos + "</styleSheet>");
        alvos += "<Relationship Id=\"e\" Type=\"" + relacoes + "/styles\" Target=\"/xl/styles.xml\"/>";
    }
    if (!textos.empty()) {
        partes.emplace_back("xl/sharedStrings.xml", "<sst xmlns=\"" + principal + "\">" + textos + "</sst>");
        alvos += "<Relationship Id=\"t\" Type=\"" + relacoes + "/sharedStrings\" Target=\"../xl/sharedStrings.xml\"/>";
    }
    partes.emplace_back("xl/_rels/workbook.xml.rels", alvos + "</Relationships>");
    return ComPacote("planilha.xlsx", partes);
}

fs::path Pasta::ComOds(const std::string &folhas) const
{
    return ComPacote(
        "planilha.ods",
        {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
         {"content.xml",
          "<office:document-content xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
          "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
          "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
          "xmlns:calcext=\"urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0\" "
          "xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\"><office:body><office:spreadsheet>" +
              folhas + "</office:spreadsheet></office:body></office:document-content>"}});
}

std::vector<std::string> Pasta::Nomes() const
{
    std::vector<std::string> nomes;
    for (const auto &entrada : fs::directory_iterator(m_Caminho)) {
        nomes.push_back(entrada.path().filename().string());
    }
    std::ranges::sort(nomes);
    return nomes;
}

std::string OctetosDe(const fs::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    return {std::istreambuf_iterator<char>(lido), std::istreambuf_iterator<char>()};
}

std::vector<std::string> Linhas(Leitor &leitor)
{
    constexpr std::string_view letras = "-TNDMHLE";
    constexpr std::string_view dasFormulas = "=tndmhle";
    std::vector<std::string> linhas;
    for (LinhaLida linha; leitor.Le(linha);) {
        std::string texto = std::to_string(linha.Numero);
        for (const Celula &celula : linha.Celulas) {
            texto += "|";
            if (!celula.Nada()) {
                texto += (celula.Formula ? dasFormulas : letras)[static_cast<std::size_t>(celula.Tipo)];
                texto += ":" + TextoDaCelula(celula, '.');
            }
        }
        linhas.push_back(texto);
    }
    return linhas;
}

std::vector<std::string> Linhas(const fs::path &arquivo, const OpcoesDeLeitura &opcoes)
{
    return Linhas(*AbreLeitor(arquivo, opcoes));
}

std::string Frase(const fs::path &arquivo, const OpcoesDeLeitura &opcoes)
{
    const Falha falha = FalhaDe([&] { Linhas(arquivo, opcoes); });
    return (falha.Numero == 0 || falha.Numero == FormatoInvalido ? "" : std::to_string(falha.Numero) + " ") +
           falha.Descricao;
}
