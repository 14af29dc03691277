#include "tests/support/NomesAcessiveis.h"

namespace {

bool DizSeuNome(const Peca &peca)
{
    switch (*peca.Especie()) {
    case EspecieControle::TextBox:
    case EspecieControle::CheckBox:
    case EspecieControle::OptionButton:
    case EspecieControle::CommandButton:
    case EspecieControle::ztCombo:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
    case EspecieControle::ztCommand:
    case EspecieControle::ztVeiObservacao:
        return !peca.Caption.empty() || !peca.Rotulo.empty() || !peca.NomeAcessivel.empty();
    case EspecieControle::ztList:
        return !peca.NomeAcessivel.empty();
    case EspecieControle::ztFrame:
        return !std::get<AjustesZtFrame>(peca.Ajustes).Contorno || !peca.Caption.empty() || !peca.NomeAcessivel.empty();
    default:
        return true; // no place for the keyboard, or one that names its own parts
    }
}

void Percorre(const Peca &peca, bool &rotulada, std::vector<std::string> &semNome)
{
    if (peca.Especie()) {
        if (!rotulada && !DizSeuNome(peca)) {
            semNome.push_back(peca.Nome);
        }
        const auto *label = std::get_if<AjustesLabel>(&peca.Ajustes);
        rotulada = label != nullptr && label->Papel == PapelLabel::Rotulo && !peca.Caption.empty();
    }
    for (const Peca &contida : peca.Pecas) {
        Percorre(contida, rotulada, semNome);
    }
}

} // namespace

std::vector<std::string> SemNomeAcessivel(const Desenho &desenho)
{
    std::vector<std::string> semNome;
    bool rotulada = false;
    Percorre(desenho.Raiz, rotulada, semNome);
    return semNome;
}
