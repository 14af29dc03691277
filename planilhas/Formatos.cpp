#include "planilhas/Formatos.h"

#include "host/Texto.h"
#include "planilhas/EscritorCsv.h"
#include "planilhas/EscritorOds.h"
#include "planilhas/EscritorXlsx.h"
#include "planilhas/Falhas.h"
#include "planilhas/LeitorCsv.h"
#include "planilhas/LeitorOds.h"
#include "planilhas/LeitorXlsx.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace planilhas {

namespace {

constexpr std::size_t TamanhoDoComeco = 65536;
constexpr std::size_t TamanhoDoTipo = 100;
constexpr std::string_view InicioDePacote = "PK\x03\x04";
constexpr std::string_view InicioDePacoteVazio = "PK\x05\x06";
constexpr std::string_view InicioDeComposto = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
// Name of the stream in which a compound file has what is under a password.
constexpr std::string_view PacoteCifrado("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);

void ConfereArquivo(const std::filesystem::path &arquivo)
{
    const std::string ato = "Não foi possível ler " + arquivo.string();
    std::error_code erro;
    const std::filesystem::file_status estado = std::filesystem::status(arquivo, erro);
    if (!std::filesystem::exists(estado)) {
        FalhaDeArquivo(erro && erro.value() != ENOTDIR ? erro.value() : ENOENT, ato);
    }
    if (!std::filesystem::is_regular_file(estado)) {
        FalhaDeArquivo(std::filesystem::is_directory(estado) ? EISDIR : ENODEV, ato);
    }
    if (std::filesystem::file_size(arquivo, erro) == 0 && !erro) {
        FalhaDeFormato("O arquivo está vazio.");
    }
}

std::string Comeco(const std::filesystem::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    std::string comeco(TamanhoDoComeco, '\0');
    lido.read(comeco.data(), static_cast<std::streamsize>(comeco.size()));
    comeco.resize(static_cast<std::size_t>(lido.gcount()));
    if (comeco.empty()) {
        FalhaDeArquivo(errno != 0 ? errno : EIO, "Não foi possível ler " + arquivo.string());
    }
    return comeco;
}

[[noreturn]] void RecusaComposto(const std::filesystem::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    std::string pedaco;
    bool cifrado = false;
    for (std::array<char, TamanhoDoComeco> octetos{}; !cifrado && lido;) {
        lido.read(octetos.data(), octetos.size());
        pedaco.erase(0, pedaco.size() - std::min(pedaco.size(), PacoteCifrado.size()));
        pedaco.append(octetos.data(), static_cast<std::size_t>(lido.gcount()));
        cifrado = pedaco.find(PacoteCifrado) != std::string::npos;
    }
    FalhaDeFormato(cifrado
                       ? "O arquivo está protegido por senha: salve-o sem senha e tente de novo."
                       : "O arquivo está num formato antigo, que não se lê aqui: salve-o como XLSX e tente de novo.");
}

Formato FormatoDoPacote(const std::filesystem::path &arquivo, std::uint64_t limite)
{
    Pacote pacote(arquivo, limite);
    if (pacote.Tem("mimetype")) {
        std::array<char, TamanhoDoTipo> octetos{};
        const std::size_t lidos = pacote.AbrePequena("mimetype")->Le(octetos.data(), octetos.size());
        if (std::string_view(octetos.data(), lidos).starts_with("application/vnd.oasis.opendocument.spreadsheet")) {
            return Formato::Ods;
        }
        FalhaDeFormato("O arquivo é um documento, e não uma planilha.");
    }
    if (LivroDoPacote(pacote).empty()) {
        FalhaDeFormato("O arquivo não é uma tabela: são lidos CSV, XLSX e ODS.");
    }
    return Formato::Xlsx;
}

void RecusaOutros(std::string_view comeco)
{
    for (const std::string_view inicio :
         {"%PDF-", "\x89PNG", "\xFF\xD8\xFF", "GIF8", "\x1F\x8B", "Rar!", "7z\xBC\xAF"}) {
        if (comeco.starts_with(inicio)) {
            FalhaDeFormato("O arquivo não é uma tabela: são lidos CSV, XLSX e ODS.");
        }
    }
    const std::string_view sem = comeco.substr(comeco.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    const std::string inicio = LCase(sem.substr(0, TamanhoDoTipo));
    const std::size_t onde = std::min(inicio.find_first_not_of(" \t\r\n"), inicio.size());
    for (const std::string_view marca : {"<?xml", "<!doctype", "<html", "<table", "<meta"}) {
        if (std::string_view(inicio).substr(onde).starts_with(marca)) {
            FalhaDeFormato(
                "O arquivo é uma página ou um documento XML, e não uma tabela: abra-o no programa de planilhas e "
                "salve-o como XLSX ou ODS.");
        }
    }
}

// The beginning of a text file's text, and whether that is all.
std::pair<std::string, bool> ComecoDoTexto(const std::filesystem::path &arquivo, Codificacao codificacao,
                                           std::uint64_t limite)
{
    TextoDoArquivo texto(arquivo, codificacao, limite);
    std::string comeco(texto.Proximo());
    return {comeco, texto.Proximo().empty()};
}

} // namespace

Reconhecimento Reconhece(const std::filesystem::path &arquivo, const OpcoesDeLeitura &opcoes)
{
    ConfereArquivo(arquivo);
    const std::string comeco = Comeco(arquivo);
    if (comeco.starts_with(InicioDeComposto)) {
        RecusaComposto(arquivo);
    }
    Reconhecimento e;
    e.Separador = opcoes.Separador;
    if (comeco.starts_with(InicioDePacote) || comeco.starts_with(InicioDePacoteVazio)) {
        e.Formato = FormatoDoPacote(arquivo, opcoes.Limites.Octetos);
        return e;
    }
    RecusaOutros(comeco);
    if (opcoes.Codificacao) {
        ConfereMarca(comeco, *opcoes.Codificacao);
    }
    e.Codificacao = opcoes.Codificacao ? opcoes.Codificacao : CodificacaoDoArquivo(arquivo, opcoes.Limites.Octetos);
    if (e.Codificacao && !e.Separador) {
        const auto [texto, inteiro] = ComecoDoTexto(arquivo, *e.Codificacao, opcoes.Limites.Octetos);
        e.Separador = SeparadorDoTexto(texto, inteiro);
    }
    return e;
}

std::unique_ptr<Leitor> AbreLeitor(const std::filesystem::path &arquivo, const OpcoesDeLeitura &opcoes)
{
    const Reconhecimento e = Reconhece(arquivo, opcoes);
    if (e.Formato == Formato::Xlsx) {
        return std::make_unique<LeitorXlsx>(arquivo, opcoes.Limites);
    }
    if (e.Formato == Formato::Ods) {
        return std::make_unique<LeitorOds>(arquivo, opcoes.Limites);
    }
    if (!e.Codificacao) {
        FalhaDeFormato("O arquivo não está em UTF-8, e não diz em que codificação está: escolha-a.");
    }
    if (!e.Separador) {
        FalhaDeFormato("Não se vê o que separa as células do arquivo: escolha o separador.");
    }
    return std::make_unique<LeitorCsv>(arquivo, *e.Codificacao, *e.Separador, opcoes.Limites);
}

std::optional<Formato> FormatoDoNome(const std::filesystem::path &arquivo)
{
    const std::string fim = LCase(arquivo.extension().string());
    if (fim == ".csv") {
        return Formato::Csv;
    }
    if (fim == ".xlsx") {
        return Formato::Xlsx;
    }
    return fim == ".ods" ? std::optional(Formato::Ods) : std::nullopt;
}

std::unique_ptr<Escritor> FazEscritor(const std::filesystem::path &lugar, Formato formato, char separador)
{
    switch (formato) {
    case Formato::Xlsx:
        return std::make_unique<EscritorXlsx>(lugar);
    case Formato::Ods:
        return std::make_unique<EscritorOds>(lugar);
    default:
        return std::make_unique<EscritorCsv>(lugar, separador);
    }
}

} // namespace planilhas
