#include "planilhas/RegrasDaEscrita.h"

#include "host/Texto.h"
#include "planilhas/Codificacao.h"
#include "planilhas/Falhas.h"

#include <algorithm>

namespace planilhas {

namespace {

constexpr std::size_t MaiorNome = 31;

[[noreturn]] void Recusa(const std::string &frase)
{
    throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas", frase);
}

bool AceitoEmNome(std::string_view nome)
{
    const bool controle = std::ranges::any_of(nome, [](char letra) { return static_cast<unsigned char>(letra) < ' '; });
    return !controle && nome.find_first_of("[]:*?/\\") == std::string_view::npos && !nome.starts_with('\'') &&
           !nome.ends_with('\'');
}

} // namespace

void ConfereTexto(std::string_view texto)
{
    if (OctetosEmUtf8(texto) != texto.size()) {
        Recusa("Um texto da tabela não está em UTF-8, e não pode ser gravado.");
    }
    if (texto.find('\0') != std::string_view::npos) {
        Recusa("Um texto da tabela tem um caractere nulo, que não pode ser gravado.");
    }
}

void RegrasDaPlanilha::NovaFolha(const std::string &nome)
{
    ConfereTexto(nome);
    if (nome.empty() || Len(nome) > MaiorNome || !AceitoEmNome(nome)) {
        Recusa("\"" + nome + "\" não serve de nome de uma folha.");
    }
    std::string chave = ChaveSemCaixa(nome);
    if (std::ranges::find(m_Nomes, chave) != m_Nomes.end()) {
        Recusa("Já há uma folha com o nome \"" + nome + "\".");
    }
    m_Nomes.push_back(std::move(chave));
    m_Linhas = 0;
}

void RegrasDaPlanilha::NovaLinha(const Linha &linha)
{
    if (m_Nomes.empty()) {
        Recusa("A planilha ainda não tem uma folha.");
    }
    if (m_Linhas == MaximoDeLinhasEscritas) {
        FalhaDeFormato("A tabela tem mais de 1.048.576 linhas, que é o máximo de uma folha: grave-a em CSV.");
    }
    if (linha.size() > MaximoDeColunasEscritas) {
        FalhaDeFormato("A tabela tem mais de 1.000 colunas.");
    }
    ++m_Linhas;
}

Linha LinhaDeTextos(const std::vector<std::string> &textos)
{
    Linha linha;
    for (const std::string &texto : textos) {
        linha.push_back(CelulaDeTexto(texto));
    }
    return linha;
}

} // namespace planilhas
