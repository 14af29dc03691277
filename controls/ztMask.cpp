#include "controls/ztMask.h"

#include "controls/TextoGabarito.h"
#include "controls/TextoLimitado.h"
#include "host/Conversoes.h"

namespace {

constexpr std::int16_t SomenteDigitos = 1;
constexpr std::int16_t TextoCodigo = 7;
constexpr std::int16_t MascaraHora = 12;
constexpr std::int16_t SemAcentos = 1;

bool Digito(std::string_view carater)
{
    return carater >= "0" && carater <= "9";
}

bool LetraSimples(std::string_view carater)
{
    const std::string minuscula = LCase(carater);
    return carater.size() == 1 && minuscula >= "a" && minuscula <= "z";
}

bool Letra(std::string_view carater)
{
    return LetraSimples(carater) || UCase(carater) != LCase(carater);
}

std::unique_ptr<TextoCampo> TextoDe(const AjustesZtMask &ajustes)
{
    const auto limite = static_cast<std::size_t>(ajustes.MaxLength);
    switch (ajustes.Tipo) {
    case SomenteDigitos:
        return std::make_unique<TextoLimitado>(limite, Digito, false);
    case TextoCodigo: {
        const bool comAcentos = ajustes.TabelaCaracteres != SemAcentos;
        auto aceita = [comAcentos, aceitos = ajustes.CaracteresAceitos](std::string_view carater) {
            return Digito(carater) || (comAcentos ? Letra(carater) : LetraSimples(carater)) ||
                   aceitos.find(carater) != std::string::npos;
        };
        return std::make_unique<TextoLimitado>(limite, aceita, ajustes.SomenteMaiusculas);
    }
    case MascaraHora:
        return std::make_unique<TextoGabarito>(ajustes.Mascara.empty() ? "00:00" : ajustes.Mascara, '_');
    default:
        return std::make_unique<TextoLimitado>(limite, nullptr, false);
    }
}

} // namespace

ztMask::ztMask(const Ref<IForm> &form, const AjustesZtMask &ajustes)
    : CampoDigitavel(form, ajustes, EspecieControle::ztMask, TextoDe(ajustes)),
      m_AjustesMask(ajustes)
{
    DefineSomenteLeitura(ajustes.ReadOnly);
}

std::string ztMask::Valor() const
{
    const auto *hora = dynamic_cast<const TextoGabarito *>(m_Texto.get());
    return hora != nullptr ? hora->Digitos() : Text();
}

double ztMask::ValorNumerico() const
{
    return Val(Text());
}
