#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text is UTF-8. Every length and position counts characters (code points), and a byte that is not part of a
// well-formed sequence counts as one character and is copied unchanged.

// Line break in a text for the screen.
inline const std::string QuebraDeLinha = "\r\n";

// Number of characters.
std::size_t Len(std::string_view texto) noexcept;

// The first n characters; the whole text when it is shorter.
std::string Left(std::string_view texto, std::size_t n);

// The last n characters; the whole text when it is shorter.
std::string Right(std::string_view texto, std::size_t n);

// Up to n characters from position `inicio`, which counts from 1. Empty past the end. Position 0 raises fault 5.
std::string Mid(std::string_view texto, std::size_t inicio, std::size_t n = std::string_view::npos);

// Without the blanks (U+0020 and nothing else) at both ends.
std::string Trim(std::string_view texto);

// Upper and lower case of the ASCII, Latin-1 and Latin Extended-A letters, one for one. Letters without a partner of
// their own in these blocks stay: sharp s, micro sign, long s, the Turkish dotted I and dotless i.
std::string UCase(std::string_view texto);
std::string LCase(std::string_view texto);

// Two texts that differ only in case have the same key. Accents count.
std::string ChaveSemCaixa(std::string_view texto);
bool IgualSemCaixa(std::string_view a, std::string_view b);

// Every occurrence of `de`, exact in case, replaced by `para`. An empty `de` replaces nothing.
std::string Substitui(std::string_view texto, std::string_view de, std::string_view para);

// The pieces between the separators, empty ones included. No piece for an empty text; one piece, the whole text,
// for an empty separator.
std::vector<std::string> Divide(std::string_view texto, std::string_view separador);
