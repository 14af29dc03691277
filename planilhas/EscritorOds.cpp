#include "planilhas/EscritorOds.h"

#include "planilhas/Falhas.h"
#include "planilhas/InstanteIso.h"

#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace planilhas {

namespace {

constexpr std::string_view Tipo = "application/vnd.oasis.opendocument.spreadsheet";

constexpr std::string_view Lista =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" manifest:version="1.2">
<manifest:file-entry manifest:full-path="/" manifest:version="1.2" manifest:media-type="application/vnd.oasis.opendocument.spreadsheet"/>
<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/>
</manifest:manifest>
)";

constexpr std::string_view Inicio =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document-content xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" office:version="1.2">
<office:automatic-styles>
<number:date-style style:name="nd"><number:day number:style="long"/><number:text>/</number:text><number:month number:style="long"/><number:text>/</number:text><number:year number:style="long"/></number:date-style>
<number:date-style style:name="nm"><number:day number:style="long"/><number:text>/</number:text><number:month number:style="long"/><number:text>/</number:text><number:year number:style="long"/><number:text> </number:text><number:hours number:style="long"/><number:text>:</number:text><number:minutes number:style="long"/><number:text>:</number:text><number:seconds number:style="long"/></number:date-style>
<number:time-style style:name="nh" number:truncate-on-overflow="false"><number:hours number:style="long"/><number:text>:</number:text><number:minutes number:style="long"/><number:text>:</number:text><number:seconds number:style="long"/></number:time-style>
<style:style style:name="titulo" style:family="table-cell"><style:text-properties fo:font-weight="bold"/></style:style>
<style:style style:name="data" style:family="table-cell" style:data-style-name="nd"/>
<style:style style:name="momento" style:family="table-cell" style:data-style-name="nm"/>
<style:style style:name="hora" style:family="table-cell" style:data-style-name="nh"/>
</office:automatic-styles>
<office:body><office:spreadsheet>
)";

constexpr std::string_view FimDaFolha = "</table:table>\n";
constexpr std::string_view Fim = "</office:spreadsheet></office:body></office:document-content>\n";

std::string EmAtributo(const std::string &texto)
{
    if (texto.find_first_of("&<>\"\t\n\r") == std::string::npos) {
        return texto; // as most are
    }
    std::string escrito;
    for (const char letra : texto) {
        switch (letra) {
        case '&':
            escrito += "&amp;";
            break;
        case '<':
            escrito += "&lt;";
            break;
        case '>':
            escrito += "&gt;";
            break;
        case '"':
            escrito += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r': // as they stand, they would be read as blanks
            escrito += "&#" + std::to_string(static_cast<int>(letra)) + ";";
            break;
        default:
            escrito += letra;
        }
    }
    return escrito;
}

// The text as paragraphs, in which blanks beyond the first of a run are elements.
std::string EmParagrafos(const std::string &texto)
{
    std::string escrito = "<text:p>";
    if (texto.find_first_of("&<>\"\t\n\r") == std::string::npos && texto.find("  ") == std::string::npos &&
        !texto.starts_with(' ')) {
        return escrito.append(texto).append("</text:p>"); // as most are
    }
    bool branco = true;
    for (const char letra : texto) {
        if (letra == '\n') {
            escrito += "</text:p><text:p>";
        } else if (letra == '\t') {
            escrito += "<text:tab/>";
        } else if (letra == ' ' && branco) {
            escrito += "<text:s/>";
        } else if (letra != '\r') {
            escrito += letra == ' ' ? " " : EmAtributo(std::string(1, letra));
        }
        branco = letra == ' ' || letra == '\n' || (branco && letra == '\t');
    }
    return escrito + "</text:p>";
}

// Whether the paragraphs alone would not give the text back.
bool PrecisaDoAtributo(const std::string &texto)
{
    return texto.find('\r') != std::string::npos || texto.ends_with(' ') || texto.find(" \n") != std::string::npos;
}

void ConfereCaracteres(const std::string &texto)
{
    ConfereTexto(texto);
    constexpr const char *controle =
        "\x01\x02\x03\x04\x05\x06\x07\x08\x0B\x0C\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1A\x1B"
        "\x1C\x1D\x1E\x1F";
    // Two characters at the end of a plane are none in any document.
    if (texto.find_first_of(controle) != std::string::npos || texto.find("\xEF\xBF\xBE") != std::string::npos ||
        texto.find("\xEF\xBF\xBF") != std::string::npos) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas",
                    "Um texto da tabela tem um caractere de controle, que uma planilha ODS não guarda.");
    }
}

} // namespace

EscritorOds::EscritorOds(const std::filesystem::path &lugar)
    : m_Arquivo(lugar),
      m_Gravacao(m_Documento.Aberto(), "Não foi possível gravar um arquivo temporário")
{
    m_Gravacao.Poe(Inicio);
}

void EscritorOds::Folha(const std::string &nome)
{
    ConfereCaracteres(nome);
    m_Regras.NovaFolha(nome);
    if (m_TemFolha) {
        m_Gravacao.Poe(FimDaFolha);
    }
    m_TemFolha = true;
    m_Gravacao.Poe("<table:table table:name=\"" + EmAtributo(nome) +
                   "\"><table:table-column table:number-columns-repeated=\"" + std::to_string(MaximoDeColunasEscritas) +
                   "\"/>\n");
}

void EscritorOds::Cabecalho(const std::vector<std::string> &titulos)
{
    Escreve(LinhaDeTextos(titulos), "titulo");
}

void EscritorOds::Escreve(const Linha &linha)
{
    Escreve(linha, "");
}

void EscritorOds::Escreve(const Linha &linha, std::string_view estiloDosTextos)
{
    m_Regras.NovaLinha(linha);
    m_Gravacao.Poe("<table:table-row>");
    for (const Celula &celula : linha) {
        PoeCelula(celula, estiloDosTextos);
    }
    m_Gravacao.Poe(linha.empty() ? "<table:table-cell/></table:table-row>\n" : "</table:table-row>\n");
}

void EscritorOds::PoeCelula(const Celula &celula, std::string_view estiloDosTextos)
{
    ConfereCaracteres(celula.Texto);
    const std::string texto = TextoDaCelula(celula);
    std::string atributos;
    const auto atributo = [&atributos](std::string_view nome, const std::string &valor) {
        atributos.append(" ").append(nome).append("=\"").append(EmAtributo(valor)).append("\"");
    };
    switch (celula.Tipo) {
    case TipoDeCelula::Vazia:
        m_Gravacao.Poe("<table:table-cell/>");
        return;
    case TipoDeCelula::Numero:
        atributo("office:value-type", "float");
        atributo("office:value", celula.Texto);
        break;
    case TipoDeCelula::Data:
    case TipoDeCelula::DataHora:
        atributo("table:style-name", celula.Tipo == TipoDeCelula::Data ? "data" : "momento");
        atributo("office:value-type", "date");
        atributo("office:date-value", InstanteEmIso(celula));
        break;
    case TipoDeCelula::Hora:
        atributo("table:style-name", "hora");
        atributo("office:value-type", "time");
        atributo("office:time-value", InstanteEmIso(celula));
        break;
    case TipoDeCelula::Logico:
        atributo("office:value-type", "boolean");
        atributo("office:boolean-value", celula.Verdade ? "true" : "false");
        break;
    default:
        if (!estiloDosTextos.empty()) {
            atributo("table:style-name", std::string(estiloDosTextos));
        }
        atributo("office:value-type", "string");
        if (PrecisaDoAtributo(texto)) {
            atributo("office:string-value", texto);
        }
    }
    m_Gravacao.Poe("<table:table-cell" + atributos + ">" + EmParagrafos(texto) + "</table:table-cell>");
}

void EscritorOds::Conclui()
{
    if (!m_TemFolha) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas", "A planilha ainda não tem uma folha.");
    }
    m_Gravacao.Poe(FimDaFolha);
    m_Gravacao.Poe(Fim);
    m_Gravacao.Descarrega();
    Empacota();
    m_Arquivo.TomaOLugar();
}

void EscritorOds::Empacota()
{
    const std::string ato = m_Arquivo.Ato();
    int numero = 0;
    errno = 0;
    std::unique_ptr<zip_t, void (*)(zip_t *)> pacote(
        zip_open(m_Arquivo.Caminho().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &numero), zip_discard);
    if (!pacote) {
        FalhaDeArquivo(errno != 0 ? errno : EIO, ato);
    }
    const auto junta = [&](const char *nome, zip_source_t *fonte, zip_int32_t metodo) {
        const zip_int64_t lugar = fonte == nullptr ? -1 : zip_file_add(pacote.get(), nome, fonte, ZIP_FL_ENC_UTF_8);
        if (lugar < 0) {
            zip_source_free(fonte);
            throw Falha(NumeroFalha::SemMemoria);
        }
        zip_set_file_compression(pacote.get(), static_cast<zip_uint64_t>(lugar), metodo, 0);
    };
    const auto texto = [&](std::string_view conteudo) {
        return zip_source_buffer(pacote.get(), conteudo.data(), conteudo.size(), 0);
    };
    // What the file is stands first and uncompressed, so that it is known by its first bytes.
    junta("mimetype", texto(Tipo), ZIP_CM_STORE);
    junta("META-INF/manifest.xml", texto(Lista), ZIP_CM_DEFLATE);
    const int documento = dup(m_Documento.Aberto());
    std::FILE *const aberto = documento < 0 ? nullptr : fdopen(documento, "rb");
    if (aberto == nullptr) {
        FalhaDeArquivo(errno, ato);
    }
    std::rewind(aberto); // the place in the file is shared with whoever wrote it
    junta("content.xml", zip_source_filep(pacote.get(), aberto, 0, -1), ZIP_CM_DEFLATE);
    if (zip_close(pacote.get()) != 0) {
        const zip_error_t &erro = *zip_get_error(pacote.get());
        const bool doSistema = zip_error_system_type(&erro) == ZIP_ET_SYS && zip_error_code_system(&erro) != 0;
        FalhaDeArquivo(doSistema ? zip_error_code_system(&erro) : EIO, ato);
    }
    static_cast<void>(pacote.release()); // closed, it is no more
}

} // namespace planilhas
