#pragma once

#include "planilhas/Falhas.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace planilhas {

// How a file of text has its characters.
enum class Codificacao { Utf8, Utf16LE, Utf16BE, Windows1252 };

// A file is not in the encoding in which it is read.
class CodificacaoErrada : public Falha {
  public:
    explicit CodificacaoErrada(const std::string &frase) : Falha(FormatoInvalido, "planilhas", frase) {}
};

// How many bytes from the front are well-formed UTF-8: no overlong forms, no surrogates, nothing beyond the last
// character.
std::size_t OctetosEmUtf8(std::string_view texto);

// Adds the character to the text.
void PoeEmUtf8(std::string &texto, std::uint32_t caractere);

// What a file's bytes tell: UTF-16 by its mark, otherwise UTF-8 when all of it is. Nothing when in doubt: then only who
// knows where the file comes from can tell. Reads the whole file, up to `limite` bytes.
std::optional<Codificacao> CodificacaoDoArquivo(const std::filesystem::path &arquivo, std::uint64_t limite);

// CodificacaoErrada for a file whose first bytes are the mark of another encoding than whoever chose it says.
void ConfereMarca(std::string_view comeco, Codificacao dita);

// The text of a file as UTF-8, piece by piece, without its mark.
class TextoDoArquivo {
  public:
    // limite: bytes after which the file is refused.
    TextoDoArquivo(const std::filesystem::path &arquivo, Codificacao codificacao, std::uint64_t limite);
    TextoDoArquivo(const TextoDoArquivo &) = delete;
    TextoDoArquivo &operator=(const TextoDoArquivo &) = delete;
    ~TextoDoArquivo();

    // The next piece, which holds until the one after it; empty at the end. CodificacaoErrada at what is not of the
    // encoding, another Falha at a null character, which no text has.
    std::string_view Proximo();

  private:
    // More bytes behind those that were left over; false when there are no more.
    bool Enche();
    // What of the bytes makes whole characters goes into the text.
    void DecodificaUtf8();
    void DecodificaUtf16();
    void DecodificaWindows1252();
    [[noreturn]] void Recusa(std::string_view lidos) const;

    std::filesystem::path m_Arquivo;
    Codificacao m_Codificacao;
    std::uint64_t m_Limite;
    int m_Aberto;
    bool m_Comeco = true;
    bool m_Fim = false;
    std::uint64_t m_Linhas = 0; // ended so far
    std::string m_Octetos;
    std::string m_Texto;
};

} // namespace planilhas
