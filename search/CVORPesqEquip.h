#pragma once

#include "host/Data.h"
#include "host/Ref.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The former query service for other modules, kept for those that still hold it. Every method refuses with fault -1
// and writes none of its arguments.
class CVORPesqEquip : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "CVORPesqEquip"; }

    // An optional argument by reference is a pointer, null when left out.
    bool CarregaPesqEquip(std::int32_t &lNroEquip, std::string &sCodEquip, std::string &sModelo);
    bool CarregaPesqEquip2(std::int32_t &lNroEquip, std::string &sCodEquip, std::string &sModelo,
                           std::int16_t *iVelPerm = nullptr, std::optional<std::string> sTipoEquipto = std::nullopt);
    bool CarregaPesqEquip3(std::int32_t &lNroEquip, std::string &sCodEquip, std::string &sModelo,
                           std::int16_t *iVelPerm = nullptr, std::optional<std::string> sTipoEquipto = std::nullopt,
                           std::optional<bool> bUsaSetor = std::nullopt);
    bool BuscaEquipto(std::int32_t &lNroEquip, std::string &sCodEquip, std::string &sModelo,
                      std::int16_t *iVelPerm = nullptr, std::optional<std::string> sTipoEquipto = std::nullopt,
                      std::optional<bool> bUsaSetor = std::nullopt);
    bool ConsultaAfericaoVigente(std::int32_t lNroEquip, std::string &sNroInmetro, std::string &sMarcaInmetro,
                                 Data &dDtInmetro, Data dDtInfracao);
};
