#include "host/Data.h"

#include "host/Falha.h"

#include <chrono>
#include <cmath>

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days DiaZero{year_month_day{std::chrono::year{1899}, std::chrono::month{12}, std::chrono::day{30}}};
constexpr sys_days PrimeiroDia{year_month_day{std::chrono::year{100}, std::chrono::month{1}, std::chrono::day{1}}};
constexpr sys_days UltimoDia{year_month_day{std::chrono::year{9999}, std::chrono::month{12}, std::chrono::day{31}}};
constexpr std::int64_t SegundosPorDia = 86400;

// The whole days and the time of day, which always counts forward.
struct DiaEHora {
    double Dia;
    double Hora;
};

DiaEHora Separa(double valor)
{
    const double dia = std::trunc(valor);
    return {dia, std::fabs(valor - dia)};
}

double Junta(double dia, double hora)
{
    return dia < 0 ? dia - hora : dia + hora;
}

bool ExisteDia(double dia)
{
    return dia >= (PrimeiroDia - DiaZero).count() && dia <= (UltimoDia - DiaZero).count();
}

} // namespace

bool Data::NoCalendario() const
{
    return ExisteDia(std::trunc(Valor));
}

Data Data::MaisDias(std::int32_t n) const
{
    const auto [dia, hora] = Separa(Valor);
    if (!ExisteDia(dia + n))
        throw Falha(NumeroFalha::ArgumentoInvalido);
    return {Junta(dia + n, hora)};
}

PartesData Data::Partes() const
{
    const auto [dia, hora] = Separa(Valor);
    if (!ExisteDia(dia))
        throw Falha(NumeroFalha::Estouro);
    const auto segundos = static_cast<std::int64_t>(std::llround(hora * static_cast<double>(SegundosPorDia)));
    // A fraction within half a second of midnight is midnight of the next day.
    const sys_days data = DiaZero + days{static_cast<int>(dia)} + days{segundos / SegundosPorDia};
    if (data > UltimoDia)
        throw Falha(NumeroFalha::Estouro);
    const year_month_day ymd{data};
    const int resto = static_cast<int>(segundos % SegundosPorDia);
    return {static_cast<int>(static_cast<unsigned>(ymd.day())),
            static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(ymd.year()),
            resto / 3600,
            resto / 60 % 60,
            resto % 60};
}

Data DataDe(int dia, int mes, int ano)
{
    if (dia < 1 || dia > 31 || mes < 1 || mes > 12 || ano < 100 || ano > 9999)
        throw Falha(NumeroFalha::ArgumentoInvalido);
    const year_month_day ymd{std::chrono::year{ano}, std::chrono::month{static_cast<unsigned>(mes)},
                             std::chrono::day{static_cast<unsigned>(dia)}};
    if (!ymd.ok())
        throw Falha(NumeroFalha::ArgumentoInvalido);
    return {static_cast<double>((sys_days{ymd} - DiaZero).count())};
}

Data DataDe(int dia, int mes, int ano, int hora, int minuto, int segundo)
{
    const Data data = DataDe(dia, mes, ano);
    if (hora < 0 || hora > 23 || minuto < 0 || minuto > 59 || segundo < 0 || segundo > 59)
        throw Falha(NumeroFalha::ArgumentoInvalido);
    const int segundos = (hora * 60 + minuto) * 60 + segundo;
    return {Junta(data.Valor, static_cast<double>(segundos) / static_cast<double>(SegundosPorDia))};
}
