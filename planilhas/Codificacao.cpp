#include "planilhas/Codificacao.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace planilhas {

namespace {

constexpr std::size_t TamanhoDoPedaco = 65536;
constexpr std::string_view MarcaUtf8 = "\xEF\xBB\xBF";
constexpr std::string_view MarcaUtf16LE = "\xFF\xFE";
constexpr std::string_view MarcaUtf16BE = "\xFE\xFF";

// What Windows-1252 has from 80 to 9F; 0 where it has nothing.
constexpr std::array<char16_t, 32> Windows1252De80 = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

unsigned Octeto(std::string_view texto, std::size_t onde)
{
    return static_cast<unsigned char>(texto[onde]);
}

// Bytes of the well-formed character at the front; 0 when there is none.
std::size_t UmEmUtf8(std::string_view texto)
{
    const unsigned primeiro = Octeto(texto, 0);
    if (primeiro < 0x80) {
        return 1;
    }
    const std::size_t quantos = primeiro >= 0xC2 && primeiro < 0xE0   ? 2
                                : primeiro >= 0xE0 && primeiro < 0xF0 ? 3
                                : primeiro >= 0xF0 && primeiro < 0xF5 ? 4
                                                                      : 0;
    if (quantos == 0 || texto.size() < quantos) {
        return 0;
    }
    const unsigned menor = primeiro == 0xE0 ? 0xA0 : primeiro == 0xF0 ? 0x90 : 0x80;
    const unsigned maior = primeiro == 0xED ? 0x9F : primeiro == 0xF4 ? 0x8F : 0xBF;
    if (Octeto(texto, 1) < menor || Octeto(texto, 1) > maior) {
        return 0;
    }
    for (std::size_t i = 2; i < quantos; ++i) {
        if ((Octeto(texto, i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return quantos;
}

// A cut-off character at the end of a piece, which the next piece goes on with.
bool PodeSerCortado(std::string_view resto)
{
    if (resto.size() > 3) {
        return false;
    }
    for (const std::string_view fim : {"\x80\x80\x80", "\xBF\xBF\xBF"}) {
        for (std::size_t i = 1; i <= fim.size(); ++i) {
            if (UmEmUtf8(std::string(resto).append(fim.substr(0, i))) == resto.size() + i) {
                return true;
            }
        }
    }
    return false;
}

std::string NomeDe(Codificacao codificacao)
{
    switch (codificacao) {
    case Codificacao::Utf8:
        return "UTF-8";
    case Codificacao::Windows1252:
        return "Windows-1252";
    default:
        return "UTF-16";
    }
}

// Its name where the order of the bytes of UTF-16 matters.
std::string NomeComOrdem(Codificacao codificacao)
{
    return NomeDe(codificacao) + (codificacao == Codificacao::Utf16LE   ? "LE"
                                  : codificacao == Codificacao::Utf16BE ? "BE"
                                                                        : "");
}

std::string_view MarcaDe(Codificacao codificacao)
{
    switch (codificacao) {
    case Codificacao::Utf8:
        return MarcaUtf8;
    case Codificacao::Utf16LE:
        return MarcaUtf16LE;
    case Codificacao::Utf16BE:
        return MarcaUtf16BE;
    default:
        return "";
    }
}

// The first bytes of a file.
std::string Comeco(const std::filesystem::path &arquivo)
{
    const int aberto = open(arquivo.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<char, 3> octetos{};
    const ssize_t lidos = aberto < 0 ? -1 : read(aberto, octetos.data(), octetos.size());
    const int erro = errno;
    if (aberto >= 0) {
        close(aberto);
    }
    if (lidos < 0) {
        FalhaDeArquivo(erro, "Não foi possível ler " + arquivo.string());
    }
    return {octetos.data(), static_cast<std::size_t>(lidos)};
}

} // namespace

std::size_t OctetosEmUtf8(std::string_view texto)
{
    std::size_t onde = 0;
    for (std::size_t quantos = 1; onde < texto.size() && quantos > 0; onde += quantos) {
        quantos = Octeto(texto, onde) < 0x80 ? 1 : UmEmUtf8(texto.substr(onde));
    }
    return onde;
}

void PoeEmUtf8(std::string &texto, std::uint32_t caractere)
{
    const auto poe = [&texto](std::uint32_t octeto) { texto += static_cast<char>(octeto); };
    if (caractere < 0x80) {
        poe(caractere);
    } else if (caractere < 0x800) {
        poe(0xC0 | (caractere >> 6));
        poe(0x80 | (caractere & 0x3F));
    } else if (caractere < 0x10000) {
        poe(0xE0 | (caractere >> 12));
        poe(0x80 | ((caractere >> 6) & 0x3F));
        poe(0x80 | (caractere & 0x3F));
    } else {
        poe(0xF0 | (caractere >> 18));
        poe(0x80 | ((caractere >> 12) & 0x3F));
        poe(0x80 | ((caractere >> 6) & 0x3F));
        poe(0x80 | (caractere & 0x3F));
    }
}

std::optional<Codificacao> CodificacaoDoArquivo(const std::filesystem::path &arquivo, std::uint64_t limite)
{
    const std::string comeco = Comeco(arquivo);
    for (const Codificacao marcada : {Codificacao::Utf16LE, Codificacao::Utf16BE}) {
        if (comeco.starts_with(MarcaDe(marcada))) {
            return marcada;
        }
    }
    try {
        TextoDoArquivo texto(arquivo, Codificacao::Utf8, limite);
        while (!texto.Proximo().empty()) {
        }
        return Codificacao::Utf8;
    } catch (const CodificacaoErrada &) {
        return std::nullopt;
    }
}

void ConfereMarca(std::string_view comeco, Codificacao dita)
{
    for (const Codificacao marcada : {Codificacao::Utf8, Codificacao::Utf16LE, Codificacao::Utf16BE}) {
        if (marcada != dita && comeco.starts_with(MarcaDe(marcada))) {
            throw CodificacaoErrada("O arquivo não está em " + NomeComOrdem(dita) + ": começa com a marca de " +
                                    NomeComOrdem(marcada) + ".");
        }
    }
}

TextoDoArquivo::TextoDoArquivo(const std::filesystem::path &arquivo, Codificacao codificacao, std::uint64_t limite)
    : m_Arquivo(arquivo),
      m_Codificacao(codificacao),
      m_Limite(limite),
      m_Aberto(open(arquivo.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (m_Aberto < 0) {
        FalhaDeArquivo(errno, "Não foi possível ler " + m_Arquivo.string());
    }
}

TextoDoArquivo::~TextoDoArquivo()
{
    close(m_Aberto);
}

std::string_view TextoDoArquivo::Proximo()
{
    m_Linhas += static_cast<std::uint64_t>(std::ranges::count(m_Texto, '\n'));
    m_Texto.clear();
    while (m_Texto.empty() && Enche()) {
        switch (m_Codificacao) {
        case Codificacao::Utf8:
            DecodificaUtf8();
            break;
        case Codificacao::Windows1252:
            DecodificaWindows1252();
            break;
        default:
            DecodificaUtf16();
        }
    }
    if (m_Texto.find('\0') != std::string::npos) {
        FalhaDeFormato(
            "O arquivo não é um texto: tem caracteres nulos. Se for um texto em UTF-16, salve-o como \"CSV UTF-8\".");
    }
    return m_Texto;
}

bool TextoDoArquivo::Enche()
{
    if (m_Fim) {
        return false;
    }
    const std::size_t havia = m_Octetos.size();
    m_Octetos.resize(havia + TamanhoDoPedaco);
    ssize_t lidos = 0;
    do {
        lidos = read(m_Aberto, m_Octetos.data() + havia, TamanhoDoPedaco);
    } while (lidos < 0 && errno == EINTR);
    if (lidos < 0) {
        FalhaDeArquivo(errno, "Não foi possível ler " + m_Arquivo.string());
    }
    const auto quantos = static_cast<std::size_t>(lidos);
    m_Octetos.resize(havia + quantos);
    m_Fim = quantos == 0;
    if (quantos > m_Limite) {
        FalhaDeFormato("O arquivo é grande demais para ser lido como tabela.");
    }
    m_Limite -= quantos;
    if (m_Comeco && m_Octetos.starts_with(MarcaDe(m_Codificacao))) {
        m_Octetos.erase(0, MarcaDe(m_Codificacao).size());
    }
    m_Comeco = false;
    return !m_Fim || !m_Octetos.empty();
}

void TextoDoArquivo::DecodificaUtf8()
{
    const std::size_t validos = OctetosEmUtf8(m_Octetos);
    const std::string_view resto = std::string_view(m_Octetos).substr(validos);
    m_Texto.assign(m_Octetos, 0, validos);
    if (!resto.empty() && (m_Fim || !PodeSerCortado(resto))) {
        Recusa(m_Texto);
    }
    m_Octetos.erase(0, validos);
}

void TextoDoArquivo::DecodificaUtf16()
{
    const std::size_t baixo = m_Codificacao == Codificacao::Utf16LE ? 0 : 1;
    const auto unidade = [&](std::size_t onde) {
        return Octeto(m_Octetos, onde + baixo) | (Octeto(m_Octetos, onde + 1 - baixo) << 8);
    };
    std::size_t onde = 0;
    while (onde + 2 <= m_Octetos.size()) {
        std::uint32_t caractere = unidade(onde);
        std::size_t quantos = 2;
        if (caractere >= 0xD800 && caractere < 0xE000) {
            if (onde + 4 > m_Octetos.size() && !m_Fim) {
                break;
            }
            const std::uint32_t segunda = onde + 4 > m_Octetos.size() ? 0 : unidade(onde + 2);
            if (caractere >= 0xDC00 || segunda < 0xDC00 || segunda >= 0xE000) {
                Recusa(m_Texto);
            }
            caractere = 0x10000 + ((caractere - 0xD800) << 10) + (segunda - 0xDC00);
            quantos = 4;
        }
        PoeEmUtf8(m_Texto, caractere);
        onde += quantos;
    }
    m_Octetos.erase(0, onde);
    if (m_Fim && !m_Octetos.empty()) {
        Recusa(m_Texto);
    }
}

void TextoDoArquivo::DecodificaWindows1252()
{
    for (std::size_t i = 0; i < m_Octetos.size(); ++i) {
        const unsigned octeto = Octeto(m_Octetos, i);
        const bool especial = octeto >= 0x80 && octeto < 0xA0;
        const std::uint32_t caractere = especial ? Windows1252De80[octeto - 0x80] : octeto;
        if (especial && caractere == 0) {
            Recusa(m_Texto);
        }
        PoeEmUtf8(m_Texto, caractere);
    }
    m_Octetos.clear();
}

void TextoDoArquivo::Recusa(std::string_view lidos) const
{
    const std::uint64_t linha = m_Linhas + 1 + static_cast<std::uint64_t>(std::ranges::count(lidos, '\n'));
    throw CodificacaoErrada("O arquivo não está em " + NomeDe(m_Codificacao) + ": na linha " + std::to_string(linha) +
                            " há octetos que não são texto nessa codificação.");
}

} // namespace planilhas
