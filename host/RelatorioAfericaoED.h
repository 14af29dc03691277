#pragma once

#include "host/Registro.h"

// Question for, and answer with, the certificate of a calibration.
class RelatorioAfericaoED : public RegistroDe<RelatorioAfericaoED> {
  public:
    static constexpr std::string_view Nome = "RelatorioAfericaoED";

    Campo<std::int32_t> CodOat; // first key of the document
    Campo<std::string> Serie;   // second key
    Campo<std::string> TxtIdent;
    Campo<std::string> Documento; // out: the certificate's content

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"CodOat", &RelatorioAfericaoED::CodOat}, Membro{"Serie", &RelatorioAfericaoED::Serie},
                          Membro{"TxtIdent", &RelatorioAfericaoED::TxtIdent},
                          Membro{"Documento", &RelatorioAfericaoED::Documento});
    }
};
