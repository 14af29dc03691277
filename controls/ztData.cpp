#include "controls/ztData.h"

#include "controls/TextoGabarito.h"
#include "host/Conversoes.h"

#include <string_view>

namespace {

constexpr std::string_view Gabarito = "00/00/0000";
constexpr std::string_view Formato = "dd/mm/yyyy";
constexpr std::string_view Digitos = "0123456789";
constexpr std::size_t InicioAno = 6;

// What the field is to show of a text.
std::string ComoData(const std::string &texto)
{
    const bool soDigitos = texto.find_first_not_of(Digitos) == std::string::npos;
    if (soDigitos || TextoGabarito(std::string(Gabarito), ' ').TemForma(texto)) {
        return texto;
    }
    if (!IsDate(texto)) {
        return {};
    }
    const Data data = CDate(texto);
    const bool temDia = data.Valor < 0 || data.Valor >= 1;
    if (!temDia) {
        return {};
    }
    std::string escrita = Format(data, Formato);
    escrita.insert(InicioAno, Gabarito.size() - escrita.size(), '0'); // a year before 1000 has its own place too
    return escrita;
}

} // namespace

ztData::ztData(const Origem &origem)
    : CampoDigitavel(origem, std::make_unique<TextoGabarito>(std::string(Gabarito), ' '))
{
}

std::string ztData::Valor() const
{
    return m_Texto->Fim() == 0 ? std::string() : Text();
}

void ztData::DefineText(const std::string &valor)
{
    CampoDigitavel::DefineText(ComoData(valor));
}

bool ztData::DataValida() const
{
    const std::string texto = Text();
    if (texto.find(' ') != std::string::npos || !IsDate(texto)) {
        return false;
    }
    // The platform takes a day for a month when that makes a date of the text; here each stands in its own place.
    const PartesData partes = CDate(texto).Partes();
    return partes.Dia == CInt(texto.substr(0, 2)) && partes.Ano == CInt(texto.substr(InicioAno));
}

void ztData::Conclui()
{
    const std::string texto = Text();
    const std::string ano = texto.substr(InicioAno);
    if (ano.find_first_not_of(Digitos) != 2 || ano.substr(2) != "  ") {
        return;
    }
    const Data primeiroDia = CDate("01/01/" + ano.substr(0, 2));
    Aplica([&] { m_Texto->Escreve(texto.substr(0, InicioAno) + Format(primeiroDia, "yyyy")); });
}
