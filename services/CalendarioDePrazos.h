#pragma once

#include "services/Instante.h"
#include "services/PrazosED.h"

#include <string>
#include <string_view>

namespace mesa {

// Deadlines as a file that calendars import (iCalendar, RFC 5545): one event for the last day of each, which lasts that
// whole day, takes no time of whoever has it, and reminds of nothing by itself. An event keeps its identity from file
// to file, which is that of its calibration, so that what was imported before moves and is not doubled.
class CalendarioDePrazos {
  public:
    // registro: what tells the registry from others. agora: the moment at which the file is made.
    CalendarioDePrazos(std::string registro, const Instante &agora);

    // A deadline without a calibration is none and is left out. tipo: of the equipment, in words.
    void Poe(const PrazoED &prazo, const std::string &tipo);
    int Quantos() const { return m_Quantos; }

    // The whole file, UTF-8.
    std::string Texto() const;

    // The value of a text, in which what means something to the format stands for itself.
    static std::string Escapado(std::string_view texto);
    // The line as it is written: pieces of at most 75 octets, none of which divides a character, with their line ends.
    static std::string Dobrada(std::string_view linha);

  private:
    std::string m_Registro;
    std::string m_Carimbo;
    std::string m_Eventos;
    int m_Quantos = 0;
};

} // namespace mesa
