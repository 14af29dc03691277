#pragma once

#include "host/Data.h"

#include <optional>
#include <string_view>

// A date, a time or both as an operator writes them; nothing when the text cannot be read as such.
//
// Numbers of a date stand apart by one of / - , or by blanks, those of a time by : or . and the two parts come in any
// order. A month may be written by name or by its first three letters. Names of weekdays are passed over, AM and PM are
// obeyed. Three numbers are day, month and year; when that is no date they are tried as month-day-year, year-month-day
// and year-day-month. Two are day and month of `anoCorrente`, else month and day, else month and year, else year and
// month. Years of one or two digits are those from 1930 to 2029.
std::optional<Data> LeData(std::string_view texto, int anoCorrente);
