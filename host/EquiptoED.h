#pragma once

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "host/Registro.h"
#include "host/SensorED.h"

// An equipment as it travels, with its changed sensors or its limits.
class EquiptoED : public RegistroDe<EquiptoED> {
  public:
    static constexpr std::string_view Nome = "EquiptoED";

    Campo<std::int32_t> NroIntEquip;
    Campo<std::string> ClienteInc;
    Campo<std::string> SetorInc;
    Campo<std::string> Codigo;
    Campo<std::string> SubCodigo;
    Campo<std::string> Descricao;
    Campo<std::int32_t> CodMunic;
    Campo<std::string> TipoVia;
    Campo<std::string> TipoEquip;
    Campo<std::int16_t> VelocPermitida; // km/h
    Campo<std::string> ArquivoLayout;
    Campo<std::uint8_t> TemImagemEntrelacada; // 1 yes, 2 no
    Campo<std::string> Modelo;
    Campo<std::uint8_t> TemLimiteDif; // 1 yes, 2 no
    Campo<std::uint8_t> TemPerfilMag; // 1 yes, 2 no
    Campo<std::int32_t> NroIntRejLimDif;
    Campo<std::uint8_t> Ativo; // 2 no, anything else yes
    Campo<std::string> ClienteTrans;
    Campo<double> OperadorTrans;
    Campo<std::int32_t> DataTrans;     // in the message service's numeric form
    Campo<std::int32_t> HoraTrans;     // in the message service's numeric form
    Campo<ListaDe<SensorED>> Sensores; // absent: none travels
    Campo<std::uint8_t> TipoAgente;    // 1 fixed, 2 static, 3 portable
    Campo<std::string> txtObsNotif;
    Campo<ListaDe<LimiteDifED>> ListaLimiteDif;
    Campo<ListaDe<DiaEspecificoED>> ListaDiaEspecifico;

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"NroIntEquip", &EquiptoED::NroIntEquip}, Membro{"ClienteInc", &EquiptoED::ClienteInc},
            Membro{"SetorInc", &EquiptoED::SetorInc}, Membro{"Codigo", &EquiptoED::Codigo},
            Membro{"SubCodigo", &EquiptoED::SubCodigo}, Membro{"Descricao", &EquiptoED::Descricao},
            Membro{"CodMunic", &EquiptoED::CodMunic}, Membro{"TipoVia", &EquiptoED::TipoVia},
            Membro{"TipoEquip", &EquiptoED::TipoEquip}, Membro{"VelocPermitida", &EquiptoED::VelocPermitida},
            Membro{"ArquivoLayout", &EquiptoED::ArquivoLayout},
            Membro{"TemImagemEntrelacada", &EquiptoED::TemImagemEntrelacada}, Membro{"Modelo", &EquiptoED::Modelo},
            Membro{"TemLimiteDif", &EquiptoED::TemLimiteDif}, Membro{"TemPerfilMag", &EquiptoED::TemPerfilMag},
            Membro{"NroIntRejLimDif", &EquiptoED::NroIntRejLimDif}, Membro{"Ativo", &EquiptoED::Ativo},
            Membro{"ClienteTrans", &EquiptoED::ClienteTrans}, Membro{"OperadorTrans", &EquiptoED::OperadorTrans},
            Membro{"DataTrans", &EquiptoED::DataTrans}, Membro{"HoraTrans", &EquiptoED::HoraTrans},
            Membro{"Sensores", &EquiptoED::Sensores}, Membro{"TipoAgente", &EquiptoED::TipoAgente},
            Membro{"txtObsNotif", &EquiptoED::txtObsNotif}, Membro{"ListaLimiteDif", &EquiptoED::ListaLimiteDif},
            Membro{"ListaDiaEspecifico", &EquiptoED::ListaDiaEspecifico});
    }
};
