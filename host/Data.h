#pragma once

#include <compare>
#include <cstdint>

// Calendar parts of a moment, to the nearest second.
struct PartesData {
    int Dia = 0;
    int Mes = 0;
    int Ano = 0;
    int Hora = 0;
    int Minuto = 0;
    int Segundo = 0;

    bool operator==(const PartesData &) const = default;
};

// The platform's date: days since 30/12/1899, with the time of day as the fraction. Before that day the whole part
// is negative and the fraction still counts forward from midnight: -1.25 is 29/12/1899 06:00. The calendar goes
// from 01/01/100 to 31/12/9999.
struct Data {
    double Valor = 0;

    // No date.
    bool Vazia() const { return Valor == 0; }

    // Whether the day exists.
    bool NoCalendario() const;

    // The same time of day, n days later; earlier when n is negative. Fault 5 outside the calendar.
    Data MaisDias(std::int32_t n) const;

    // Fault 6 outside the calendar.
    PartesData Partes() const;

    auto operator<=>(const Data &) const = default;
};

// The day, at midnight. The year is taken as it is, so those below 100 are outside the calendar. A day that does not
// exist is fault 5 and not, as with the platform's DateSerial, the day that many days further on.
Data DataDe(int dia, int mes, int ano);

// The moment. Hours up to 23, minutes and seconds up to 59, else fault 5.
Data DataDe(int dia, int mes, int ano, int hora, int minuto, int segundo);
