#pragma once

#include "host/Registro.h"

// A limit for one calendar date.
class DiaEspecificoED : public RegistroDe<DiaEspecificoED> {
  public:
    static constexpr std::string_view Nome = "DiaEspecificoED";

    Campo<std::int32_t> NroInt; // 0 on a new row
    Campo<std::int32_t> NroIntEquip;
    Campo<::Data> Data;
    Campo<std::int32_t> HoraInicio; // HHMM: 730 is 07:30
    Campo<std::int32_t> HoraFim;    // HHMM
    Campo<std::int16_t> VelocPerm;  // km/h
    Campo<std::int16_t> VelocMin;   // km/h, 0: none
    Campo<std::uint8_t> Ativo;      // 1 yes, 2 no

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"NroInt", &DiaEspecificoED::NroInt}, Membro{"NroIntEquip", &DiaEspecificoED::NroIntEquip},
            Membro{"Data", &DiaEspecificoED::Data}, Membro{"HoraInicio", &DiaEspecificoED::HoraInicio},
            Membro{"HoraFim", &DiaEspecificoED::HoraFim}, Membro{"VelocPerm", &DiaEspecificoED::VelocPerm},
            Membro{"VelocMin", &DiaEspecificoED::VelocMin}, Membro{"Ativo", &DiaEspecificoED::Ativo});
    }
};
