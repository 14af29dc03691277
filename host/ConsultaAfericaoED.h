#pragma once

#include "host/Registro.h"

// Question for the calibration in force on a day.
class ConsultaAfericaoED : public RegistroDe<ConsultaAfericaoED> {
  public:
    static constexpr std::string_view Nome = "ConsultaAfericaoED";

    Campo<Data> DtInfracao;
    Campo<std::int32_t> NroIntEquip;
    Campo<std::int16_t> TipoConsulta; // always 1

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"DtInfracao", &ConsultaAfericaoED::DtInfracao},
                          Membro{"NroIntEquip", &ConsultaAfericaoED::NroIntEquip},
                          Membro{"TipoConsulta", &ConsultaAfericaoED::TipoConsulta});
    }
};
