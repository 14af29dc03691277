#include "controls/ztMask.h"

#include "controls/TextoGabarito.h"
#include "controls/TextoLimitado.h"
#include "host/Conversoes.h"

namespace {

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
    case TipoMascara::Digitos:
        return std::make_unique<TextoLimitado>(limite, Digito, false, "Só algarismos.");
    case TipoMascara::Codigo: {
        const bool comAcentos = ajustes.TabelaCaracteres != SemAcentos;
        auto aceita = [comAcentos, aceitos = ajustes.CaracteresAceitos](std::string_view carater) {
            return Digito(carater) || (comAcentos ? Letra(carater) : LetraSimples(carater)) ||
                   aceitos.find(carater) != std::string::npos;
        };
        return std::make_unique<TextoLimitado>(limite, aceita, ajustes.SomenteMaiusculas);
    }
    case TipoMascara::Hora:
        return std::make_unique<TextoGabarito>(GabaritoDe(ajustes), '_');
    case TipoMascara::Livre:
        break;
    }
    return std::make_unique<TextoLimitado>(limite, nullptr, false);
}

} // namespace

ztMask::ztMask(const Origem &origem)
    : CampoDigitavel(origem, TextoDe(origem.Ajustes<AjustesZtMask>())),
      m_AjustesMask(origem.Ajustes<AjustesZtMask>())
{
    DefineSomenteLeitura(m_AjustesMask.ReadOnly);
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
