#pragma once

#include "host/Data.h"
#include "host/Falha.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// The platform's conversions, in the regional form of Brazil: dd/mm/yyyy, decimal comma, point between thousands.
// Rounding is half to even. A value too large for its type is fault 6, a text that cannot be read is fault 13.

// From text: blanks around, one sign before or after, parentheses for a negative, currency sign, thousands, exponent
// ("1e3", "1d3"), &H and &O. A date is not a number.
std::uint8_t CByte(std::string_view texto); // 0 to 255
std::int16_t CInt(std::string_view texto);  // 16 bits
std::int32_t CLng(std::string_view texto);  // 32 bits
double CDbl(std::string_view texto);
bool CBool(std::string_view texto); // a number (true unless 0), or a truth value by name
Data CDate(std::string_view texto); // what LeData reads, with the present year where the text has none

std::uint8_t CByte(double valor);
std::int16_t CInt(double valor);
std::int32_t CLng(double valor);
Data CDate(double valor); // fault 6 outside the calendar
double CDbl(double valor);
double CDbl(Data data);
bool CBool(double valor);

// 15 significant digits, decimal comma; from 1E+15 on and for very small values, the form with an exponent.
std::string CStr(double valor);
// dd/mm/yyyy, then hh:mm:ss unless it is midnight; the time alone on day 0, so that no date gives "00:00:00".
std::string CStr(Data data);

// True as a number is -1, and 255 as a byte.
template <std::integral T> std::uint8_t CByte(T valor)
{
    if constexpr (std::same_as<T, bool>)
        return valor ? std::uint8_t{255} : std::uint8_t{0};
    else if (!std::in_range<std::uint8_t>(valor))
        throw Falha(NumeroFalha::Estouro);
    else
        return static_cast<std::uint8_t>(valor);
}

template <std::integral T> std::int16_t CInt(T valor)
{
    if constexpr (std::same_as<T, bool>)
        return valor ? std::int16_t{-1} : std::int16_t{0};
    else if (!std::in_range<std::int16_t>(valor))
        throw Falha(NumeroFalha::Estouro);
    else
        return static_cast<std::int16_t>(valor);
}

template <std::integral T> std::int32_t CLng(T valor)
{
    if constexpr (std::same_as<T, bool>)
        return valor ? -1 : 0;
    else if (!std::in_range<std::int32_t>(valor))
        throw Falha(NumeroFalha::Estouro);
    else
        return static_cast<std::int32_t>(valor);
}

template <std::integral T> double CDbl(T valor)
{
    if constexpr (std::same_as<T, bool>)
        return valor ? -1.0 : 0.0;
    else
        return static_cast<double>(valor);
}

template <std::integral T> bool CBool(T valor)
{
    return valor != T{};
}

template <std::integral T> Data CDate(T valor)
{
    return CDate(CDbl(valor));
}

// Truth values by name: "Verdadeiro" and "Falso".
template <std::integral T> std::string CStr(T valor)
{
    if constexpr (std::same_as<T, bool>)
        return valor ? "Verdadeiro" : "Falso";
    else
        return std::to_string(valor);
}

// The number at the start of the text, with a point for the decimals whatever the region; 0 when there is none.
// Blanks, tabs and line ends are skipped anywhere. &H and &O are read, and up to FFFF they are a 16-bit number: &HFFFF
// is -1.
double Val(std::string_view texto);

// Whether CDbl can read the text.
bool IsNumeric(std::string_view texto);

// Whether CDate can read the text.
bool IsDate(std::string_view texto);

// The number in a picture of 0 # . , % and literals such as the colon of "00:00". The picture is written with '.' for
// the decimals and ',' for the thousands, and the result has the region's signs. Halves are rounded away from zero, on
// 15 significant digits. A picture with sections (';') raises fault 5.
std::string Format(double valor, std::string_view figura);

// The date in a picture of d dd m mm yy yyyy h hh n nn s ss and literals; m and mm right after the hours are minutes.
// A letter that is to stand for itself has a backslash before it or stands in double quotes; any other raises fault 5.
// An empty picture is CStr.
std::string Format(Data data, std::string_view figura);

// Whole minutes from one moment to the other, each taken to its second; negative when the second comes first. Fault 6
// when they are more than 32 bits hold.
std::int32_t MinutosDecorridos(Data de, Data ate);
