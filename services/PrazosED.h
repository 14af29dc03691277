#pragma once

#include "host/Registro.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

// Records of the operations of "PrazosRN", which SessaoServico::Executa runs: the deadlines of the operator's client on
// the day that it is in the registry's time zone, computed as they are asked for. All take the right to look. States
// are the numbers of EstadoDePrazo (Prazos.h).
//
//   consultaPainel     PainelPrazosED -> PainelPrazosED         how many active equipment are in each state, and how
//                                                               many calibrations end in each of the next months
//   listaPrazos        ListaPrazosED -> ListaPrazosED           a page of the rows behind one of those numbers
//   confereDocumentos  DocumentosPrazosED -> DocumentosPrazosED the documents of a few equipment, read whole
//
// Of the criteria those that were written narrow, an empty sector to equipment without one. Documents that are told as
// damaged, a thousand at most, count as missing.

namespace mesa {

inline constexpr std::int32_t MaisDanificados = 1000;

// How many of a group are in a state.
class ContagemPrazoED : public RegistroDe<ContagemPrazoED> {
  public:
    static constexpr std::string_view Nome = "ContagemPrazoED";

    Campo<std::string> Grupo; // sector, number of the municipality, or type; empty when nothing is grouped
    Campo<std::uint8_t> Estado;
    Campo<std::int32_t> Quantos;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Grupo", &ContagemPrazoED::Grupo}, Membro{"Estado", &ContagemPrazoED::Estado},
                          Membro{"Quantos", &ContagemPrazoED::Quantos});
    }
};

// How many calibrations end in a month.
class MesPrazoED : public RegistroDe<MesPrazoED> {
  public:
    static constexpr std::string_view Nome = "MesPrazoED";

    Campo<std::int32_t> Mes; // yyyymm
    Campo<std::int32_t> Quantas;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Mes", &MesPrazoED::Mes}, Membro{"Quantas", &MesPrazoED::Quantas});
    }
};

// An equipment whose state cannot be told, and why.
class FalhaPrazoED : public RegistroDe<FalhaPrazoED> {
  public:
    static constexpr std::string_view Nome = "FalhaPrazoED";

    Campo<std::int32_t> NroIntEquip;
    Campo<std::string> Codigo;
    Campo<std::string> Motivo; // a sentence

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntEquip", &FalhaPrazoED::NroIntEquip}, Membro{"Codigo", &FalhaPrazoED::Codigo},
                          Membro{"Motivo", &FalhaPrazoED::Motivo});
    }
};

// A document that was found damaged, of a calibration of the equipment.
class DocumentoPrazoED : public RegistroDe<DocumentoPrazoED> {
  public:
    static constexpr std::string_view Nome = "DocumentoPrazoED";

    Campo<std::int32_t> NroIntEquip;
    Campo<double> NroIntImgCertif; // its number

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntEquip", &DocumentoPrazoED::NroIntEquip},
                          Membro{"NroIntImgCertif", &DocumentoPrazoED::NroIntImgCertif});
    }
};

// Criteria and answer of the count.
class PainelPrazosED : public RegistroDe<PainelPrazosED> {
  public:
    static constexpr std::string_view Nome = "PainelPrazosED";

    Campo<std::string> SetorInc;
    Campo<std::int32_t> CodMunic;
    Campo<std::string> TipoEquip;
    Campo<std::uint8_t> Agrupa; // 0 nothing, 1 by sector, 2 by municipality, 3 by type
    Campo<ListaDe<DocumentoPrazoED>> Danificados;
    Campo<Data> ComoEm;               // out: the moment of which all this is, in the registry's time zone
    Campo<std::int32_t> Fuso;         // out: minutes that this zone is ahead of UTC
    Campo<std::int32_t> Equipamentos; // out: how many active ones there are: the sum of the counts and of NaoContados
    Campo<std::int32_t> NaoContados;  // out: whose state cannot be told, as Falhas says
    Campo<ListaDe<FalhaPrazoED>> Falhas; // out: the first hundred of them; absent when there are none
    Campo<ListaDe<ContagemPrazoED>>
        Contagens;                    // out: in the order of groups and states, none of them 0; absent for none
    Campo<ListaDe<MesPrazoED>> Meses; // out: 24 of them, the present one first

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"SetorInc", &PainelPrazosED::SetorInc}, Membro{"CodMunic", &PainelPrazosED::CodMunic},
            Membro{"TipoEquip", &PainelPrazosED::TipoEquip}, Membro{"Agrupa", &PainelPrazosED::Agrupa},
            Membro{"Danificados", &PainelPrazosED::Danificados}, Membro{"ComoEm", &PainelPrazosED::ComoEm},
            Membro{"Fuso", &PainelPrazosED::Fuso}, Membro{"Equipamentos", &PainelPrazosED::Equipamentos},
            Membro{"NaoContados", &PainelPrazosED::NaoContados}, Membro{"Falhas", &PainelPrazosED::Falhas},
            Membro{"Contagens", &PainelPrazosED::Contagens}, Membro{"Meses", &PainelPrazosED::Meses});
    }
};

// An equipment with the calibration by which it stands as it does, or a calibration with its equipment.
class PrazoED : public RegistroDe<PrazoED> {
  public:
    static constexpr std::string_view Nome = "PrazoED";

    Campo<std::int32_t> NroIntEquip;
    Campo<std::string> Codigo;
    Campo<std::string> SubCodigo;
    Campo<std::string> TipoEquip;
    Campo<std::string> SetorInc;
    Campo<std::int32_t> CodMunic;     // 0 for none
    Campo<std::int32_t> NroIntSensor; // of the calibration; 0 without one, as what follows
    Campo<std::int16_t> NroSensor;
    Campo<double> NroIntAfericao;
    Campo<std::string> Marca;   // of the certificate, or of the declaration of conformity
    Campo<std::string> Numero;  // INMETRO
    Campo<Data> DataVencimento; // empty without a calibration
    Campo<std::int32_t> Dias;   // until that day, which is the last one; negative when it is past
    Campo<std::uint8_t> Estado;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntEquip", &PrazoED::NroIntEquip}, Membro{"Codigo", &PrazoED::Codigo},
                          Membro{"SubCodigo", &PrazoED::SubCodigo}, Membro{"TipoEquip", &PrazoED::TipoEquip},
                          Membro{"SetorInc", &PrazoED::SetorInc}, Membro{"CodMunic", &PrazoED::CodMunic},
                          Membro{"NroIntSensor", &PrazoED::NroIntSensor}, Membro{"NroSensor", &PrazoED::NroSensor},
                          Membro{"NroIntAfericao", &PrazoED::NroIntAfericao}, Membro{"Marca", &PrazoED::Marca},
                          Membro{"Numero", &PrazoED::Numero}, Membro{"DataVencimento", &PrazoED::DataVencimento},
                          Membro{"Dias", &PrazoED::Dias}, Membro{"Estado", &PrazoED::Estado});
    }
};

// Criteria and answer of a list.
class ListaPrazosED : public RegistroDe<ListaPrazosED> {
  public:
    static constexpr std::string_view Nome = "ListaPrazosED";

    Campo<std::string> SetorInc;
    Campo<std::int32_t> CodMunic;
    Campo<std::string> TipoEquip;
    Campo<ListaDe<DocumentoPrazoED>> Danificados;
    // Written: the equipment in that state. Otherwise the calibrations that end on the day or later, those that have
    // not begun too; with Mes (yyyymm) only those that end in it.
    Campo<std::uint8_t> Estado;
    Campo<std::int32_t> Mes;
    // in: where the page starts, as the one before told; out: where the next one does, TrabFoto 0 when there is none. A
    // page may be short, and even empty, and not be the last.
    Campo<std::int32_t> DepoisDe; // internal number of an equipment
    Campo<std::uint8_t> TrabFoto;
    // out: as in the count. in: as the page before told it, or the count in front, so that all are of one day; unset:
    // the day that it is.
    Campo<Data> ComoEm;
    Campo<std::int32_t> Fuso;       // out
    Campo<std::string> Registro;    // out: what tells this registry from all others
    Campo<ListaDe<PrazoED>> Prazos; // out: absent when the page is empty

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"SetorInc", &ListaPrazosED::SetorInc}, Membro{"CodMunic", &ListaPrazosED::CodMunic},
                          Membro{"TipoEquip", &ListaPrazosED::TipoEquip},
                          Membro{"Danificados", &ListaPrazosED::Danificados}, Membro{"Estado", &ListaPrazosED::Estado},
                          Membro{"Mes", &ListaPrazosED::Mes}, Membro{"DepoisDe", &ListaPrazosED::DepoisDe},
                          Membro{"TrabFoto", &ListaPrazosED::TrabFoto}, Membro{"ComoEm", &ListaPrazosED::ComoEm},
                          Membro{"Fuso", &ListaPrazosED::Fuso}, Membro{"Registro", &ListaPrazosED::Registro},
                          Membro{"Prazos", &ListaPrazosED::Prazos});
    }
};

// Where the check of the documents is, and what was found there.
class DocumentosPrazosED : public RegistroDe<DocumentosPrazosED> {
  public:
    static constexpr std::string_view Nome = "DocumentosPrazosED";

    Campo<std::int32_t> DepoisDe; // as in the list
    Campo<std::uint8_t> TrabFoto;
    Campo<Data> ComoEm;               // as in the list: the documents are those of calibrations that have the day
    Campo<std::int32_t> Fuso;         // out
    Campo<std::int32_t> Equipamentos; // out: how many active ones were gone through
    Campo<std::int32_t> Conferidos;   // out: how many documents were read
    Campo<ListaDe<DocumentoPrazoED>> Danificados; // out: those that are not as they were stored; absent for none

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"DepoisDe", &DocumentosPrazosED::DepoisDe},
                          Membro{"TrabFoto", &DocumentosPrazosED::TrabFoto},
                          Membro{"ComoEm", &DocumentosPrazosED::ComoEm}, Membro{"Fuso", &DocumentosPrazosED::Fuso},
                          Membro{"Equipamentos", &DocumentosPrazosED::Equipamentos},
                          Membro{"Conferidos", &DocumentosPrazosED::Conferidos},
                          Membro{"Danificados", &DocumentosPrazosED::Danificados});
    }
};

} // namespace mesa
