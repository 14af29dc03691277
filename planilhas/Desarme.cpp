#include "planilhas/Desarme.h"

namespace planilhas {

namespace {

// Whether the text, behind any apostrophes, begins as a formula does.
bool Perigoso(std::string_view texto)
{
    const std::size_t inicio = texto.find_first_not_of('\'');
    return inicio != std::string_view::npos &&
           std::string_view("=+-@\t\r\n").find(texto[inicio]) != std::string_view::npos;
}

} // namespace

std::string Desarma(std::string_view texto)
{
    return (Perigoso(texto) ? "'" : "") + std::string(texto);
}

std::string Rearma(std::string_view desarmado)
{
    return std::string(desarmado.substr(desarmado.starts_with('\'') && Perigoso(desarmado) ? 1 : 0));
}

} // namespace planilhas
