#pragma once

#include "planilhas/Codificacao.h"
#include "planilhas/Escritor.h"
#include "planilhas/Leitor.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace planilhas {

enum class Formato { Csv, Xlsx, Ods };

// What a file is, by what it holds and not by its name.
struct Reconhecimento {
    planilhas::Formato Formato = Formato::Csv;
    // Of a file of text, nothing where its bytes do not tell: then a person has to say, and it is never guessed.
    std::optional<planilhas::Codificacao> Codificacao;
    std::optional<char> Separador; // which needs the encoding
};

// How a file is read.
struct OpcoesDeLeitura {
    // Of a file of text, what the caller knows; otherwise what is recognised.
    std::optional<planilhas::Codificacao> Codificacao;
    std::optional<char> Separador; // one of ; , and the tab
    LimitesDeLeitura Limites;
};

// A Falha with a sentence for what is no table that is read here: an empty file, another format, one under a password;
// CodificacaoErrada where the file's mark is of another encoding than the caller says.
// opcoes: what the caller knows of the file already.
Reconhecimento Reconhece(const std::filesystem::path &arquivo, const OpcoesDeLeitura &opcoes = {});

// Opens the table at its first sheet. A Falha besides where encoding or separator are in doubt and the caller does not
// say.
std::unique_ptr<Leitor> AbreLeitor(const std::filesystem::path &arquivo, const OpcoesDeLeitura &opcoes = {});

// The format that a name's ending stands for, whatever its case; nothing for others.
std::optional<Formato> FormatoDoNome(const std::filesystem::path &arquivo);

// Begins a table in that place. separador: of a file of text.
std::unique_ptr<Escritor> FazEscritor(const std::filesystem::path &lugar, Formato formato, char separador = ';');

} // namespace planilhas
