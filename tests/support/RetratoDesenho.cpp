#include "tests/support/RetratoDesenho.h"

#include "controls/ControleBase.h"
#include "tests/support/ArquivoIgual.h"
#include "tests/support/TextoLog.h"

#include <cstdint>
#include <vector>

namespace {

std::string Numero(const char *nome, std::int32_t valor, std::int32_t comum)
{
    return valor == comum ? "" : std::string(", ") + nome + " " + std::to_string(valor);
}

std::string Proprio(const Peca &peca)
{
    if (const auto *texto = std::get_if<AjustesLabel>(&peca.Ajustes)) {
        static constexpr const char *Papeis[] = {"", " de texto", " de paragrafo", " de valor"};
        return Papeis[static_cast<int>(texto->Papel)];
    }
    if (const auto *figura = std::get_if<AjustesImage>(&peca.Ajustes)) {
        return " " + TextoLog(figura->Icone);
    }
    if (const auto *combo = std::get_if<AjustesZtCombo>(&peca.Ajustes)) {
        return (combo->Conteudo.empty() ? "" : " [" + TextoLog(combo->Conteudo) + "]") +
               (combo->DelimitadorColuna == "|" ? "" : ", delimitador " + TextoLog(combo->DelimitadorColuna)) +
               Numero("valor", combo->ColunaValor, 1) + (combo->PesquisaAoDigitar ? ", pesquisa ao digitar" : "");
    }
    if (const auto *comando = std::get_if<AjustesZtCommand>(&peca.Ajustes)) {
        return comando->LockFormOnClick ? ", trava o form" : "";
    }
    if (const auto *quadro = std::get_if<AjustesZtFrame>(&peca.Ajustes)) {
        return quadro->Contorno ? ", com contorno" : "";
    }
    return {};
}

const char *Disposicao(const Peca &peca)
{
    static constexpr const char *Nomes[] = {"coluna", "linha", "grade"};
    return Nomes[static_cast<int>(peca.Disposicao)];
}

std::string Retrato(const Peca &peca)
{
    std::string linha = Disposicao(peca);
    if (const auto especie = peca.Especie()) {
        linha = std::string(NomeEspecie(*especie)) + " " + peca.Nome +
                (peca.Indice < 0 ? "" : "(" + std::to_string(peca.Indice) + ")") + Proprio(peca) +
                (peca.Pecas.empty() ? "" : std::string(", em ") + Disposicao(peca));
    }
    return linha + Numero("left", peca.Left, 0) + Numero("top", peca.Top, 0) + Numero("width", peca.Width, 0) +
           Numero("height", peca.Height, 0) + Numero("caracteres", peca.Caracteres, 0) + Numero("vao", peca.Vao, 1) +
           (peca.Elastica ? ", elastica" : "") +
           (peca.NomeAcessivel.empty() ? "" : ", nome " + TextoLog(peca.NomeAcessivel));
}

void Junta(const Peca &peca, const std::string &recuo, std::vector<std::string> &linhas)
{
    linhas.push_back(recuo + Retrato(peca));
    for (const Peca &dentro : peca.Pecas) {
        Junta(dentro, recuo + "  ", linhas);
    }
}

} // namespace

testing::AssertionResult DesenhoIgual(const Desenho &desenho, const std::string &nome)
{
    std::vector<std::string> linhas{TextoLog(desenho.Caption) + " " + std::to_string(desenho.Largura) + " x " +
                                    std::to_string(desenho.Altura)};
    Junta(desenho.Raiz, "", linhas);
    return ArquivoIgual(linhas, nome);
}
