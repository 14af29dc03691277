#include "controls/ztData.h"

#include "controls/TextoGabarito.h"
#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view Gabarito = "00/00/0000";
constexpr std::string_view Formato = "dd/mm/yyyy";
constexpr std::string_view Digitos = "0123456789";
constexpr std::size_t InicioAno = 6;

// What a person types of a date.
class TextoData : public TextoGabarito {
  public:
    TextoData() : TextoGabarito(std::string(Gabarito), ' ') {}

    // A date that begins with its year, as programs write it, is put in order.
    std::string Entende(std::string_view texto) const override
    {
        constexpr std::string_view Forma = "0000-00-00";
        const auto mesma = [](char c, char lugar) {
            return lugar == '0' ? c >= '0' && c <= '9' : c == lugar;
        };
        return std::ranges::equal(texto, Forma, mesma) ? Mid(texto, 9) + "/" + Mid(texto, 6, 2) + "/" + Left(texto, 4)
                                                       : std::string(texto);
    }
};

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

ztData::ztData(const Origem &origem) : CampoDigitavel(origem, std::make_unique<TextoData>()) {}

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
