#pragma once

#include "host/EquiptoED.h"
#include "host/Registro.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

// Records of the operation of "ProvaRN", which SessaoServico::Executa runs. It takes the right to consult equipment.
//
//   consultaProva    ConsultaProvaED -> ProvaED    what the registry knows of an equipment as of a day, and by what it
//                                                  can be proved; all of it told by the history alone

namespace mesa {

// Question for what the registry proves of an equipment.
class ConsultaProvaED : public RegistroDe<ConsultaProvaED> {
  public:
    static constexpr std::string_view Nome = "ConsultaProvaED";

    Campo<std::int32_t> NroIntEquip; // 0: by its code
    Campo<std::string> Codigo;       // whatever its case; of several with it, the active one
    Campo<::Data> Dia;               // day of the fact
    Campo<std::int32_t> Hora;        // HHMM; unset: the whole day
    Campo<::Data> ConhecidoEm;       // as the registry knew it at that moment; unset: as it knows it now
    Campo<std::int32_t> Fuso;        // of ConhecidoEm: minutes that its clock is ahead of UTC
    Campo<double> AteEntrada;        // as it knew it with that entry of its history; unset or 0: see ConhecidoEm

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntEquip", &ConsultaProvaED::NroIntEquip},
                          Membro{"Codigo", &ConsultaProvaED::Codigo}, Membro{"Dia", &ConsultaProvaED::Dia},
                          Membro{"Hora", &ConsultaProvaED::Hora}, Membro{"ConhecidoEm", &ConsultaProvaED::ConhecidoEm},
                          Membro{"Fuso", &ConsultaProvaED::Fuso}, Membro{"AteEntrada", &ConsultaProvaED::AteEntrada});
    }
};

// An entry of the history in words.
class EntradaProvadaED : public RegistroDe<EntradaProvadaED> {
  public:
    static constexpr std::string_view Nome = "EntradaProvadaED";

    Campo<double> Entrada;      // its number
    Campo<std::string> Elo;     // its hash, which stands on all entries before it
    Campo<std::string> Momento; // 20/11/2026 às 14:32:10, by the clock of the place
    Campo<std::string> Quem;    // name; empty for the system itself
    Campo<std::string> Assunto; // aferição 123
    Campo<std::string> OQue;    // incluída; data de vencimento: de 30/06/2026 para 31/12/2026
    Campo<std::string> Motivo;  // of a correction

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Entrada", &EntradaProvadaED::Entrada}, Membro{"Elo", &EntradaProvadaED::Elo},
                          Membro{"Momento", &EntradaProvadaED::Momento}, Membro{"Quem", &EntradaProvadaED::Quem},
                          Membro{"Assunto", &EntradaProvadaED::Assunto}, Membro{"OQue", &EntradaProvadaED::OQue},
                          Membro{"Motivo", &EntradaProvadaED::Motivo});
    }
};

// A rule of speed or hour that matches the day and the hour of the fact.
class LimiteProvadoED : public RegistroDe<LimiteProvadoED> {
  public:
    static constexpr std::string_view Nome = "LimiteProvadoED";

    Campo<std::int32_t> Ordem;      // 1 for the first that applies; 0: it does not apply, as Nota says
    Campo<std::uint8_t> Especie;    // 1 prohibited hour, 2 specific day, 3 limit of holidays, 4 limit of the day of the
                                    // week, 5 the equipment's own speed
    Campo<std::int32_t> NroInt;     // of the row; 0 for the equipment's own
    Campo<std::int32_t> HoraInicio; // HHMM
    Campo<std::int32_t> HoraFim;    // HHMM
    Campo<std::int16_t> VelocPerm;  // km/h; 0 for a prohibited hour
    Campo<std::int16_t> VelocMin;   // km/h, 0: none
    Campo<std::string> Nota;        // what else there is to say of it

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"Ordem", &LimiteProvadoED::Ordem}, Membro{"Especie", &LimiteProvadoED::Especie},
            Membro{"NroInt", &LimiteProvadoED::NroInt}, Membro{"HoraInicio", &LimiteProvadoED::HoraInicio},
            Membro{"HoraFim", &LimiteProvadoED::HoraFim}, Membro{"VelocPerm", &LimiteProvadoED::VelocPerm},
            Membro{"VelocMin", &LimiteProvadoED::VelocMin}, Membro{"Nota", &LimiteProvadoED::Nota});
    }
};

// Where a sensor is, in words.
class LocalProvadoED : public RegistroDe<LocalProvadoED> {
  public:
    static constexpr std::string_view Nome = "LocalProvadoED";

    Campo<std::int32_t> NroIntSensor;
    Campo<std::string> Logradouro; // its street; empty for none

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntSensor", &LocalProvadoED::NroIntSensor},
                          Membro{"Logradouro", &LocalProvadoED::Logradouro});
    }
};

// What the registry proves of an equipment.
class ProvaED : public RegistroDe<ProvaED> {
  public:
    static constexpr std::string_view Nome = "ProvaED";

    Campo<std::string> Identificador; // of the registry
    Campo<std::string> Cliente;
    Campo<::Data> Dia;                     // as it was asked
    Campo<std::int32_t> Hora;              // as it was asked; -1 for the whole day
    Campo<std::string> ConhecidoEm;        // the moment that was asked for, in words; empty where none was
    Campo<std::string> EmitidoEm;          // moment of the answer, in words
    Campo<std::string> EmitidoPor;         // who asked
    Campo<double> Corte;                   // number of the last entry of the history that counted
    Campo<std::string> EloDoCorte;         // its hash
    Campo<double> Cabeca;                  // number of the history's last entry
    Campo<std::string> EloDaCabeca;        // its hash
    Campo<std::string> Ressalva;           // what the history of that time cannot tell; empty when it tells everything
    Campo<ListaDe<EquiptoED>> Equipamento; // one: as it was known, with all its rows, those that were not active too
    Campo<std::string> Municipio;          // in words; empty for none
    Campo<std::string> TipoEmPalavras;     // of the equipment
    Campo<ListaDe<LocalProvadoED>> Locais; // of its sensors
    Campo<ListaDe<AfericaoED>> Vigente;    // the calibration in force on the day; none is an empty list
    Campo<std::int32_t> NroIntSensor;      // of that calibration; 0 for none
    Campo<std::string> SemVigente;         // why none is in force; empty when one is
    Campo<ListaDe<EntradaProvadaED>> Versoes; // of the calibrations that have, or once had, the day in their period
    Campo<ListaDe<EntradaProvadaED>> EntradaDaAfericao; // one or none: that of the calibration in force as it was known
    Campo<ListaDe<EntradaProvadaED>> EntradaDoDocumento; // one or none: that of its document
    Campo<double> Documento;                             // number of its document; 0 for none
    Campo<double> TamanhoDoDocumento;                    // in bytes, as the history has it
    Campo<std::string> Sha256DoDocumento;                // as the history has it
    Campo<ListaDe<LimiteProvadoED>> Limites;       // in the order in which they apply, those that do not apply last
    Campo<ListaDe<EntradaProvadaED>> Desativacoes; // of the equipment and its sensors, reactivations too
    Campo<ListaDe<EntradaProvadaED>>
        Posteriores; // all that was written about the equipment after the entry that counted last

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"Identificador", &ProvaED::Identificador}, Membro{"Cliente", &ProvaED::Cliente},
            Membro{"Dia", &ProvaED::Dia}, Membro{"Hora", &ProvaED::Hora}, Membro{"ConhecidoEm", &ProvaED::ConhecidoEm},
            Membro{"EmitidoEm", &ProvaED::EmitidoEm}, Membro{"EmitidoPor", &ProvaED::EmitidoPor},
            Membro{"Corte", &ProvaED::Corte}, Membro{"EloDoCorte", &ProvaED::EloDoCorte},
            Membro{"Cabeca", &ProvaED::Cabeca}, Membro{"EloDaCabeca", &ProvaED::EloDaCabeca},
            Membro{"Ressalva", &ProvaED::Ressalva}, Membro{"Equipamento", &ProvaED::Equipamento},
            Membro{"Municipio", &ProvaED::Municipio}, Membro{"TipoEmPalavras", &ProvaED::TipoEmPalavras},
            Membro{"Locais", &ProvaED::Locais}, Membro{"Vigente", &ProvaED::Vigente},
            Membro{"NroIntSensor", &ProvaED::NroIntSensor}, Membro{"SemVigente", &ProvaED::SemVigente},
            Membro{"Versoes", &ProvaED::Versoes}, Membro{"EntradaDaAfericao", &ProvaED::EntradaDaAfericao},
            Membro{"EntradaDoDocumento", &ProvaED::EntradaDoDocumento}, Membro{"Documento", &ProvaED::Documento},
            Membro{"TamanhoDoDocumento", &ProvaED::TamanhoDoDocumento},
            Membro{"Sha256DoDocumento", &ProvaED::Sha256DoDocumento}, Membro{"Limites", &ProvaED::Limites},
            Membro{"Desativacoes", &ProvaED::Desativacoes}, Membro{"Posteriores", &ProvaED::Posteriores});
    }
};

} // namespace mesa
