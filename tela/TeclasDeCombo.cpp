#include "tela/TeclasDeCombo.h"

bool EhLetraDeCombo(std::string_view digitado)
{
    constexpr unsigned char Espaco = 0x20;
    constexpr unsigned char Delete = 0x7F;
    if (digitado.empty()) {
        return false;
    }
    const auto primeiro = static_cast<unsigned char>(digitado.front());
    return primeiro >= Espaco && primeiro != Delete;
}

bool ComboObedece(const ztCombo &combo, AtoNoCombo ato)
{
    return ato == AtoNoCombo::Outro || !combo.ComboSomenteLeitura();
}
