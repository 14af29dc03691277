#pragma once

#include "host/EquiptoED.h"
#include "host/Registro.h"

// Criteria and answer of the search for equipment.
class ListaEquiptoED : public RegistroDe<ListaEquiptoED> {
  public:
    static constexpr std::string_view Nome = "ListaEquiptoED";

    Campo<ListaDe<EquiptoED>> Equipamentos; // out: the page found, absent when nothing was found
    Campo<std::string> ClienteInc;
    Campo<std::string> SetorInc;
    Campo<std::string> Codigo;
    Campo<std::string> SubCodigo;
    Campo<std::string> TipoEquip;
    Campo<std::uint8_t> Ativo; // 1 active, 2 inactive
    Campo<std::uint8_t> TipoAgente;
    Campo<std::int32_t> ProxNroIntEquip; // in: where the page starts; out: where the next one would, below 1 for none
    Campo<std::uint8_t> IndTrabFoto;     // 1 photo-work mode, 2 otherwise

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"Equipamentos", &ListaEquiptoED::Equipamentos}, Membro{"ClienteInc", &ListaEquiptoED::ClienteInc},
            Membro{"SetorInc", &ListaEquiptoED::SetorInc}, Membro{"Codigo", &ListaEquiptoED::Codigo},
            Membro{"SubCodigo", &ListaEquiptoED::SubCodigo}, Membro{"TipoEquip", &ListaEquiptoED::TipoEquip},
            Membro{"Ativo", &ListaEquiptoED::Ativo}, Membro{"TipoAgente", &ListaEquiptoED::TipoAgente},
            Membro{"ProxNroIntEquip", &ListaEquiptoED::ProxNroIntEquip},
            Membro{"IndTrabFoto", &ListaEquiptoED::IndTrabFoto});
    }
};
