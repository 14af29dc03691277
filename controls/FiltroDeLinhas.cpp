#include "controls/FiltroDeLinhas.h"

#include "controls/OrdemPortuguesa.h"

#include <algorithm>

namespace {

constexpr std::string_view Brancos = " \t\r\n";

} // namespace

FiltroDeLinhas::FiltroDeLinhas(std::string_view texto)
{
    const std::string procurado = SemAcentoNemCaixa(texto);
    for (std::size_t comeco = procurado.find_first_not_of(Brancos); comeco != std::string::npos;) {
        const std::size_t fim = std::min(procurado.find_first_of(Brancos, comeco), procurado.size());
        m_Palavras.push_back(procurado.substr(comeco, fim - comeco));
        comeco = procurado.find_first_not_of(Brancos, fim);
    }
}

bool FiltroDeLinhas::Aceita(std::string_view chave) const
{
    return std::ranges::all_of(
        m_Palavras, [&](const std::string &palavra) { return chave.find(palavra) != std::string_view::npos; });
}

// No word has the blank that keeps the cells apart.
void FiltroDeLinhas::Acrescenta(std::string &chave, std::string_view celula)
{
    chave += SemAcentoNemCaixa(celula);
    chave += '\n';
}
