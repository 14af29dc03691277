#pragma once

#include "host/Registro.h"

// A differentiated limit or, with TipoLimite 2, a prohibited hour.
class LimiteDifED : public RegistroDe<LimiteDifED> {
  public:
    static constexpr std::string_view Nome = "LimiteDifED";

    Campo<std::int32_t> NroInt; // 0 on a new row
    Campo<std::int32_t> NroIntEquip;
    Campo<std::uint8_t> Dia;        // 1 Sunday to 7 Saturday, 8 holiday
    Campo<std::int32_t> HoraInicio; // HHMM: 730 is 07:30
    Campo<std::int32_t> HoraFim;    // HHMM
    Campo<std::int16_t> VelocPerm;  // km/h
    Campo<std::int16_t> VelocMin;   // km/h, 0: none
    Campo<std::uint8_t> Ativo;      // 1 yes, 2 no
    Campo<std::uint8_t> TipoLimite; // 1 limit, 2 prohibited hour

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroInt", &LimiteDifED::NroInt}, Membro{"NroIntEquip", &LimiteDifED::NroIntEquip},
                          Membro{"Dia", &LimiteDifED::Dia}, Membro{"HoraInicio", &LimiteDifED::HoraInicio},
                          Membro{"HoraFim", &LimiteDifED::HoraFim}, Membro{"VelocPerm", &LimiteDifED::VelocPerm},
                          Membro{"VelocMin", &LimiteDifED::VelocMin}, Membro{"Ativo", &LimiteDifED::Ativo},
                          Membro{"TipoLimite", &LimiteDifED::TipoLimite});
    }
};
