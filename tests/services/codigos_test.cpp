#include "services/Codigos.h"
#include "tests/services/ServicosTeste.h"

#include <string>
#include <vector>

using namespace mesa;

namespace {

struct Caso {
    std::string Codigo;
    std::string Ofensa;
};

const std::vector<Caso> &Casos()
{
    const std::string outros = ", e aceita só letras, algarismos, ponto, hífen, sublinhado e espaço";
    static const std::vector<Caso> casos = {
        {"D'ÁGUA", "tem o caractere '" + outros},
        {"A/1", "tem o caractere /" + outros},
        {"A\\1", "tem o caractere \\" + outros},
        {"A:1", "tem o caractere :" + outros},
        {"A*", "tem o caractere *" + outros},
        {"A?", "tem o caractere ?" + outros},
        {"\"A\"", "tem o caractere \"" + outros},
        {"<A", "tem o caractere <" + outros},
        {"A>", "tem o caractere >" + outros},
        {"A|B", "tem o caractere |" + outros},
        {"A%", "tem o caractere %" + outros},
        {"A\u2019B", "tem o caractere \u2019" + outros},        // the apostrophe of word processors
        {"A\u2010B", "tem o caractere \u2010" + outros},        // a hyphen that is not the keyboard's
        {"A\u2212B", "tem o caractere \u2212" + outros},        // minus
        {"A\u00D7B", "tem o caractere \u00D7" + outros},        // the sign of multiplication, between the letters
        {"R\U0001F6A6", "tem o caractere \U0001F6A6" + outros}, // beyond the first plane
        {"\u0661", "tem o caractere \u0661" + outros},          // a digit of another script
        {"\xC3(", "tem o caractere \uFFFD" + outros},           // no text at all
        {"A\tB", "tem um caractere invisível (U+0009)"},
        {std::string("A\0B", 3), "tem um caractere invisível (U+0000)"},
        {"A\u00ADB", "tem um caractere invisível (U+00AD)"},  // soft hyphen
        {"A\u200BB", "tem um caractere invisível (U+200B)"},  // zero width
        {"A\u200D", "tem um caractere invisível (U+200D)"},   // joiner
        {"\uFEFFA", "tem um caractere invisível (U+FEFF)"},   // byte order mark
        {"A\u202EB1", "tem um caractere invisível (U+202E)"}, // right to left
        {"A\u2066B", "tem um caractere invisível (U+2066)"},  // isolate
        {"A\u2028B", "tem um caractere invisível (U+2028)"},  // line
        {"A\uE000", "tem um caractere invisível (U+E000)"},   // of private use
        {"A\u00A0B", "tem um espaço que não é o comum (U+00A0)"},
        {"A\u2003B", "tem um espaço que não é o comum (U+2003)"},
        {"C\u0327A", "tem um acento separado da sua letra (U+0327)"},
        {"\u0410B", "tem uma letra de outro alfabeto (U+0410)"}, // Cyrillic, like an A
        {"R\u039F", "tem uma letra de outro alfabeto (U+039F)"}, // Greek, like an O
        {"\uFF21", "tem uma letra de outro alfabeto (U+FF21)"},  // fullwidth
        {"\u0261", "tem uma letra de outro alfabeto (U+0261)"},  // phonetic, like a g
        {"\u0131", "tem uma letra de outro alfabeto (U+0131)"},  // without its dot
        {"\u00D0", "tem uma letra de outro alfabeto (U+00D0)"},
        {"\u0110", "tem uma letra de outro alfabeto (U+0110)"},
        {"\u0111", "tem uma letra de outro alfabeto (U+0111)"},
        {"1\u00AA", "tem uma letra de outro alfabeto (U+00AA)"}, // ordinal
        {"\u017F", "tem uma letra que é outra com aparência diferente"},
        {"\u0133", "tem uma letra que é outra com aparência diferente"}, // two in one
        {" A", "começa ou termina com espaço"},
        {"A ", "começa ou termina com espaço"},
        {" ", "começa ou termina com espaço"},
        {"A  B", "tem espaços seguidos"},
    };
    return casos;
}

TEST(CodigosTeste, Ofende_WhatCannotBeACode_SaysWhy)
{
    for (const Caso &caso : Casos()) {
        EXPECT_EQ(Codigos::Ofende(caso.Codigo), caso.Ofensa) << caso.Codigo;
    }
}

TEST(CodigosTeste, Ofende_WhatAPersonCanType_IsNothing)
{
    for (const char *codigo :
         {"", "R-001", "r.001_b", "AEC100", "ÇÃO-1", "água 2", "Ñandú", "Ÿ", "Œ", "00000000000000000001"}) {
        EXPECT_EQ(Codigos::Ofende(codigo), "") << codigo;
    }
}

class ServicosCodigos : public ServicosTeste {};

TEST_F(ServicosCodigos, inclui_OfACodeThatOffends_IsRefusedByItsField)
{
    for (const Caso &caso : Casos()) {
        const auto diz = [&](const char *parte) { return caso.Ofensa.find(parte) != std::string::npos; };
        if (diz("U+0000") || diz("U+0009") || diz("U+FEFF") || diz("\uFFFD")) {
            continue; // refused before, as any text is
        }
        if (caso.Codigo != " ") { // empty, for a code
            EXPECT_EQ(RecusaDe(m_Ana, "inclui", EquipamentoDe(caso.Codigo)), "O campo \"código\" " + caso.Ofensa + ".");
        }
        EXPECT_EQ(RecusaDe(m_Ana, "inclui", Com(EquipamentoDe("R-1"), &EquiptoED::SubCodigo, caso.Codigo)),
                  "O campo \"subcódigo\" " + caso.Ofensa + ".");
    }
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
}

TEST_F(ServicosCodigos, altera_OfOneWithACodeThatOffends_IsSavedWithWhatElseChanges)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    m_Registro.Sql("DROP TRIGGER EQUIPAMENTO_FIXA; UPDATE EQUIPAMENTO SET Codigo = 'D''ÁGUA', SubCodigo = 'A/1'");
    const auto lido = Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Com(lido, &EquiptoED::Descricao, "Outra"));
    Faz(m_Ana, "desativa", SoNumero(numero));
    Faz(m_Ana, "reativa", SoNumero(numero));
    Abre(m_Ana, numero);
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::SubCodigo, "A/2")),
              "O campo \"subcódigo\" tem o caractere /, e aceita só letras, algarismos, ponto, hífen, sublinhado e "
              "espaço.");
}

} // namespace
