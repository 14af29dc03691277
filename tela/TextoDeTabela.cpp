#include "tela/TextoDeTabela.h"

#include "host/Texto.h"

#include <string_view>

namespace {

std::string EntreAspas(const std::string &celula)
{
    if (celula.find_first_of("\t\r\n\"") == std::string::npos) {
        return celula;
    }
    std::string texto = "\"";
    for (const char letra : celula) {
        texto += letra;
        if (letra == '"') {
            texto += letra;
        }
    }
    return texto + '"';
}

std::string Linha(const std::vector<std::string> &celulas)
{
    std::string linha;
    for (std::size_t i = 0; i < celulas.size(); ++i) {
        linha += (i > 0 ? "\t" : "") + EntreAspas(celulas[i]);
    }
    return linha + QuebraDeLinha;
}

std::string EmHtml(const std::string &celula)
{
    std::string texto;
    for (const char letra : celula) {
        switch (letra) {
        case '&':
            texto += "&amp;";
            break;
        case '<':
            texto += "&lt;";
            break;
        case '>':
            texto += "&gt;";
            break;
        case '\r':
            break;
        case '\n':
            texto += "<br>";
            break;
        default:
            texto += letra;
        }
    }
    return texto;
}

std::string LinhaHtml(const std::vector<std::string> &celulas, std::string_view abre, std::string_view fecha)
{
    std::string linha = "<tr>";
    for (const std::string &celula : celulas) {
        linha.append(abre).append(EmHtml(celula)).append(fecha);
    }
    return linha + "</tr>\n";
}

} // namespace

std::string TextoTabulado(const TabelaVista &tabela)
{
    std::string texto = Linha(tabela.Titulos);
    for (const std::vector<std::string> &linha : tabela.Linhas) {
        texto += Linha(linha);
    }
    return texto;
}

std::string TabelaEmHtml(const TabelaVista &tabela)
{
    std::string texto = "<meta charset=\"utf-8\"><table border=\"1\">\n" + LinhaHtml(tabela.Titulos, "<th>", "</th>");
    for (const std::vector<std::string> &linha : tabela.Linhas) {
        texto += LinhaHtml(linha, "<td style=\"mso-number-format:'\\@'\">", "</td>");
    }
    return texto + "</table>\n";
}
