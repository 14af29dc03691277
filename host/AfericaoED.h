#pragma once

#include "host/Registro.h"

// A calibration as it travels.
class AfericaoED : public RegistroDe<AfericaoED> {
  public:
    static constexpr std::string_view Nome = "AfericaoED";

    Campo<double> NroIntAfericao; // 0: none, or not yet saved
    Campo<std::string> Numero;
    Campo<std::string> Marca;
    Campo<Data> DataVerificacao;
    Campo<Data> DataVencimento;
    Campo<std::uint8_t> Ativo; // 1 yes, 2 no
    Campo<double> NroIntImgCertif;
    Campo<std::uint8_t> TipoAfer;
    Campo<std::string> PortDimel;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroIntAfericao", &AfericaoED::NroIntAfericao}, Membro{"Numero", &AfericaoED::Numero},
                          Membro{"Marca", &AfericaoED::Marca}, Membro{"DataVerificacao", &AfericaoED::DataVerificacao},
                          Membro{"DataVencimento", &AfericaoED::DataVencimento}, Membro{"Ativo", &AfericaoED::Ativo},
                          Membro{"NroIntImgCertif", &AfericaoED::NroIntImgCertif},
                          Membro{"TipoAfer", &AfericaoED::TipoAfer}, Membro{"PortDimel", &AfericaoED::PortDimel});
    }
};
