#pragma once

#include "host/AfericaoED.h"
#include "host/Registro.h"

// A sensor as it travels, with its changed calibrations.
class SensorED : public RegistroDe<SensorED> {
  public:
    static constexpr std::string_view Nome = "SensorED";

    Campo<ListaDe<AfericaoED>> Afericoes; // absent: none travels
    Campo<std::int32_t> NroIntSensor;
    Campo<std::int16_t> NroSensor;
    Campo<std::int32_t> CodLograd;
    Campo<std::int32_t> EndCep;
    Campo<std::int32_t> EndNro;
    Campo<std::string> EndCompl;
    Campo<std::string> EndDescr;
    Campo<std::string> SentidoVia;
    Campo<std::uint8_t> Ativo; // 1 yes, 2 no
    Campo<std::string> LocalInfr;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Afericoes", &SensorED::Afericoes}, Membro{"NroIntSensor", &SensorED::NroIntSensor},
                          Membro{"NroSensor", &SensorED::NroSensor}, Membro{"CodLograd", &SensorED::CodLograd},
                          Membro{"EndCep", &SensorED::EndCep}, Membro{"EndNro", &SensorED::EndNro},
                          Membro{"EndCompl", &SensorED::EndCompl}, Membro{"EndDescr", &SensorED::EndDescr},
                          Membro{"SentidoVia", &SensorED::SentidoVia}, Membro{"Ativo", &SensorED::Ativo},
                          Membro{"LocalInfr", &SensorED::LocalInfr});
    }
};
