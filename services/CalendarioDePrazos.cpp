#include "services/CalendarioDePrazos.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"

#include <cstddef>
#include <utility>

namespace mesa {

namespace {

constexpr std::size_t MaisOctetos = 75; // of a line, its end not counted
constexpr const char *FimDeLinha = "\r\n";

// yyyymmddhhmmss as yyyymmddThhmmssZ.
std::string Carimbo(std::int64_t utc)
{
    const std::string algarismos = Format(CDbl(utc), "00000000000000");
    return algarismos.substr(0, 8) + "T" + algarismos.substr(8) + "Z";
}

bool ContinuaLetra(char octeto)
{
    return (static_cast<unsigned char>(octeto) & 0xC0u) == 0x80u;
}

std::string Linha(const std::string &nome, const std::string &valor)
{
    return CalendarioDePrazos::Dobrada(nome + ":" + valor);
}

} // namespace

CalendarioDePrazos::CalendarioDePrazos(std::string registro, const Instante &agora)
    : m_Registro(std::move(registro)),
      m_Carimbo(Carimbo(agora.Utc()))
{
}

std::string CalendarioDePrazos::Escapado(std::string_view texto)
{
    std::string escapado;
    for (std::size_t n = 0; n < texto.size(); ++n) {
        switch (texto[n]) {
        case '\\':
        case ';':
        case ',':
            escapado += {'\\', texto[n]};
            break;
        case '\r': // a line end is one, however it is written
            escapado += n + 1 < texto.size() && texto[n + 1] == '\n' ? "" : "\\n";
            break;
        case '\n':
            escapado += "\\n";
            break;
        default:
            if ((static_cast<unsigned char>(texto[n]) >= ' ' && texto[n] != '\x7f') || texto[n] == '\t') {
                escapado += texto[n];
            }
        }
    }
    return escapado;
}

std::string CalendarioDePrazos::Dobrada(std::string_view linha)
{
    std::string dobrada;
    std::size_t cabem = MaisOctetos;
    while (linha.size() > cabem) {
        std::size_t corte = cabem;
        while (corte > 0 && ContinuaLetra(linha[corte])) {
            --corte;
        }
        corte = corte == 0 ? cabem : corte; // what has no beginning of a letter is none
        dobrada += std::string(linha.substr(0, corte)) + FimDeLinha + " ";
        linha.remove_prefix(corte);
        cabem = MaisOctetos - 1; // the blank before it counts
    }
    return dobrada + std::string(linha) + FimDeLinha;
}

void CalendarioDePrazos::Poe(const PrazoED &prazo, const std::string &tipo)
{
    if (prazo.DataVencimento.Valor().Vazia()) {
        return;
    }
    const std::int32_t dia = DiaCivil(prazo.DataVencimento);
    const std::string sensor = CStr(prazo.NroSensor.Valor());
    std::string oQue = tipo + ", sensor " + sensor;
    oQue += prazo.Marca.Valor().empty() ? "" : ", certificado " + prazo.Marca.Valor();
    oQue += ". Último dia em que a aferição vale: " + TextoDoDia(dia) + ".";
    m_Eventos += Linha("BEGIN", "VEVENT");
    m_Eventos += Linha("UID", "afericao-" + CStr(prazo.NroIntAfericao.Valor()) + "@" + m_Registro);
    m_Eventos += Linha("DTSTAMP", m_Carimbo);
    m_Eventos += Linha("DTSTART;VALUE=DATE", CStr(dia));
    m_Eventos += Linha("DTEND;VALUE=DATE", CStr(DiaCivil(prazo.DataVencimento.Valor().MaisDias(1)))); // not its own
    m_Eventos += Linha("SUMMARY", Escapado("Vence a aferição de " + prazo.Codigo.Valor() + ", sensor " + sensor));
    m_Eventos += Linha("DESCRIPTION", Escapado(oQue));
    m_Eventos += Linha("TRANSP", "TRANSPARENT");
    m_Eventos += Linha("END", "VEVENT");
    ++m_Quantos;
}

std::string CalendarioDePrazos::Texto() const
{
    return Linha("BEGIN", "VCALENDAR") + Linha("VERSION", "2.0") +
           Linha("PRODID", "-//Registro de Equipamentos//Prazos//PT") + Linha("CALSCALE", "GREGORIAN") + m_Eventos +
           Linha("END", "VCALENDAR");
}

} // namespace mesa
