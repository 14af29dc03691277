#include "services/Codigos.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QStringConverter>

#include <string_view>

namespace mesa {

namespace {

constexpr std::u32string_view Sinais = U"._- ";
// Beyond these are other alphabets and letters that hardly anybody tells from ours.
constexpr char32_t PrimeiraComAcento = 0xC0;
constexpr char32_t UltimaComAcento = 0x17F;
constexpr std::u32string_view Parecidas =
    U"\u0131\u0138\u00D0\u00F0\u0110\u0111"; // dotless i, kra, eth and d with stroke, like i, k, D

bool EhLetraNossa(char32_t letra)
{
    if ((letra >= U'A' && letra <= U'Z') || (letra >= U'a' && letra <= U'z')) {
        return true;
    }
    return letra >= PrimeiraComAcento && letra <= UltimaComAcento && QChar::isLetter(letra) &&
           Parecidas.find(letra) == std::u32string_view::npos;
}

std::string Numero(char32_t letra)
{
    return " (U+" + QString::number(letra, 16).toUpper().rightJustified(4, '0').toStdString() + ")";
}

std::string OfensaDa(char32_t letra)
{
    if (EhLetraNossa(letra) || (letra >= U'0' && letra <= U'9') || Sinais.find(letra) != std::u32string_view::npos) {
        return {};
    }
    switch (QChar::category(letra)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return "tem um caractere invisível" + Numero(letra);
    case QChar::Separator_Space:
        return "tem um espaço que não é o comum" + Numero(letra);
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
        return "tem um acento separado da sua letra" + Numero(letra);
    case QChar::Letter_Lowercase:
    case QChar::Letter_Uppercase:
    case QChar::Letter_Titlecase:
    case QChar::Letter_Modifier:
    case QChar::Letter_Other:
        return "tem uma letra de outro alfabeto" + Numero(letra);
    default:
        return "tem o caractere " + QString::fromUcs4(&letra, 1).toStdString() +
               ", e aceita só letras, algarismos, ponto, hífen, sublinhado e espaço";
    }
}

} // namespace

std::string Codigos::Ofende(const std::string &texto)
{
    // A mark at the beginning that tells the order of bytes is a character like any other here.
    QStringDecoder decodifica(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString lido = decodifica(QByteArray::fromStdString(texto));
    for (const char32_t letra : lido.toUcs4()) {
        std::string ofensa = OfensaDa(letra);
        if (!ofensa.empty()) {
            return ofensa;
        }
    }
    if (lido.startsWith(' ') || lido.endsWith(' ')) {
        return "começa ou termina com espaço";
    }
    if (lido.contains("  ")) {
        return "tem espaços seguidos";
    }
    // Two letters in one, and the long s.
    if (lido.normalized(QString::NormalizationForm_KC) != lido) {
        return "tem uma letra que é outra com aparência diferente";
    }
    return {};
}

} // namespace mesa
