#include "planilhas/ExportaTabela.h"

#include "host/Falha.h"
#include "host/Texto.h"
#include "planilhas/Formatos.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

namespace planilhas {

namespace {

constexpr std::size_t MaiorNome = 31;
constexpr std::size_t MaisDigitos = 15; // that every program keeps of a number
constexpr std::size_t LinhasPorPergunta = 500;

using Leitura = std::optional<Celula> (*)(const std::string &);

// The cell, when it is written as the text.
std::optional<Celula> SeEscrita(const Celula &celula, const std::string &texto)
{
    return TextoDaCelula(celula) == texto ? std::optional(celula) : std::nullopt;
}

std::optional<Celula> LeNumero(const std::string &texto)
{
    std::string comPonto = texto;
    std::ranges::replace(comPonto, ',', '.');
    const auto digitos = std::ranges::count_if(texto, [](char letra) { return letra >= '0' && letra <= '9'; });
    const auto decimal = NumeroDecimal(comPonto);
    return decimal && static_cast<std::size_t>(digitos) <= MaisDigitos ? SeEscrita(CelulaDeNumero(*decimal), texto)
                                                                       : std::nullopt;
}

std::optional<Celula> LeData(const std::string &texto)
{
    PartesData p;
    if (std::sscanf(texto.c_str(), "%2d/%2d/%4d", &p.Dia, &p.Mes, &p.Ano) != 3) {
        return std::nullopt;
    }
    try {
        return SeEscrita(CelulaDeData(p.Dia, p.Mes, p.Ano), texto);
    } catch (const Falha &) { // not in the calendar
        return std::nullopt;
    }
}

std::optional<Celula> LeDataHora(const std::string &texto)
{
    PartesData p;
    if (std::sscanf(texto.c_str(), "%2d/%2d/%4d %2d:%2d:%2d", &p.Dia, &p.Mes, &p.Ano, &p.Hora, &p.Minuto, &p.Segundo) <
        5) {
        return std::nullopt;
    }
    try {
        return SeEscrita(CelulaDeDataHora(p), texto);
    } catch (const Falha &) {
        return std::nullopt;
    }
}

std::optional<Celula> LeHora(const std::string &texto)
{
    PartesData p;
    if (std::sscanf(texto.c_str(), "%2d:%2d:%2d", &p.Hora, &p.Minuto, &p.Segundo) < 2) {
        return std::nullopt;
    }
    try {
        return SeEscrita(CelulaDeHora(p.Hora, p.Minuto, p.Segundo), texto);
    } catch (const Falha &) {
        return std::nullopt;
    }
}

std::optional<Celula> LeTexto(const std::string &texto)
{
    return CelulaDeTexto(texto);
}

// How all texts of a column can be read.
Leitura LeituraDaColuna(const std::vector<std::vector<std::string>> &linhas, std::size_t coluna)
{
    for (const Leitura leitura : {LeData, LeDataHora, LeHora, LeNumero}) {
        const bool todas = std::ranges::all_of(linhas, [&](const std::vector<std::string> &linha) {
            return coluna >= linha.size() || linha[coluna].empty() || leitura(linha[coluna]);
        });
        if (todas) {
            return leitura;
        }
    }
    return LeTexto;
}

std::vector<Linha> ComTipos(const std::vector<std::vector<std::string>> &textos)
{
    std::vector<Leitura> leituras;
    std::vector<Linha> linhas;
    linhas.reserve(textos.size());
    for (const std::vector<std::string> &daLinha : textos) {
        Linha &linha = linhas.emplace_back();
        for (std::size_t coluna = 0; coluna < daLinha.size(); ++coluna) {
            if (coluna == leituras.size()) {
                leituras.push_back(LeituraDaColuna(textos, coluna));
            }
            linha.push_back(daLinha[coluna].empty() ? Celula() : leituras[coluna](daLinha[coluna]).value());
        }
    }
    return linhas;
}

// As much of the name as every program accepts.
std::string NomeDeFolha(const std::string &nome)
{
    std::string aceito;
    for (const char letra : nome) {
        const bool recusada = static_cast<unsigned char>(letra) < ' ' || std::string_view("[]:*?/\\'").find(letra) < 8;
        aceito += recusada ? ' ' : letra;
    }
    aceito = Trim(Left(aceito, MaiorNome));
    return aceito.empty() ? "Tabela" : aceito;
}

} // namespace

ExportaTabela::ExportaTabela(std::string nome, std::vector<std::string> titulos, std::vector<Linha> linhas)
    : m_Nome(std::move(nome)),
      m_Titulos(std::move(titulos)),
      m_Linhas(std::move(linhas))
{
}

ExportaTabela::ExportaTabela(std::string nome, std::vector<std::string> titulos,
                             const std::vector<std::vector<std::string>> &linhas)
    : ExportaTabela(std::move(nome), std::move(titulos), ComTipos(linhas))
{
}

bool ExportaTabela::Grava(const std::filesystem::path &lugar, const Segue &segue) const
{
    const std::optional<Formato> formato = FormatoDoNome(lugar);
    if (!formato) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas",
                    "O fim do nome do arquivo diz em que formato ele é gravado: .xlsx, .ods ou .csv.");
    }
    const std::unique_ptr<Escritor> escritor = FazEscritor(lugar, *formato);
    escritor->Folha(NomeDeFolha(m_Nome));
    escritor->Cabecalho(m_Titulos);
    for (std::size_t i = 0; i < m_Linhas.size(); ++i) {
        if (i % LinhasPorPergunta == 0 && !segue(static_cast<double>(i) / static_cast<double>(m_Linhas.size()))) {
            return false;
        }
        escritor->Escreve(m_Linhas[i]);
    }
    if (!segue(1)) {
        return false;
    }
    escritor->Conclui();
    return true;
}

} // namespace planilhas
