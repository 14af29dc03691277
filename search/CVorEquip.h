#pragma once

#include "host/AfericaoED.h"
#include "host/Data.h"
#include "host/EquiptoED.h"
#include "host/Ref.h"

#include <cstdint>
#include <string>
#include <string_view>

// What other modules ask of the registry: let the person pick an equipment, find one by its code without a window,
// print a calibration certificate. The properties hold the equipment of the last answer.
class CVorEquip : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "CVorEquip"; }

    std::int32_t NroIntEquip() const { return m_NroIntEquip; }
    const std::string &Modelo() const { return m_Modelo; }
    const std::string &Codigo() const { return m_Codigo; }
    std::int16_t VelocPerm() const { return m_VelocPerm; } // km/h
    const std::string &NroInmetro() const { return m_NroInmetro; }
    const std::string &MarcaInmetro() const { return m_MarcaInmetro; }
    Data DtVerifInmetro() const { return m_DtVerifInmetro; }

    // Opens the search window; true when the person picked a row. The properties are cleared first.
    bool SelecionaEquipamento(const std::string &sCodEquip, const std::string &sTipoEquip = {}, Data dtInfracao = {});
    // Looks the equipment up by its code; false, without a word, when there is not exactly one, and with a message
    // when no calibration was in force on the date. The properties change only on success, and those of the calibration
    // only with a date.
    bool BuscaEquipamento(const std::string &sCodEquip, const std::string &sTipoEquip = {}, Data dtInfracao = {});
    // Shows the certificate in the viewer. bPreview changes nothing.
    bool ImpCertificadoAfericaoEquipto(std::int32_t lCodOat, const std::string &sSerie, const std::string &sTxtIdent,
                                       bool bPreview = true);
    // Deletes the certificates left in the folder of temporary documents; the caller's duty.
    void LimpaArqTemp();

  private:
    std::int32_t m_NroIntEquip = 0;
    std::string m_Modelo;
    std::string m_Codigo;
    std::int16_t m_VelocPerm = 0;
    std::string m_NroInmetro;
    std::string m_MarcaInmetro;
    Data m_DtVerifInmetro;

    static Ref<EquiptoED> ConsultaSimplesEquipto(std::int32_t lNroIntEquip);
    void SetaDadosEquipto(const Ref<EquiptoED> &oEquiptoED, const Ref<AfericaoED> &oAfericaoED);
    static void GravaNoArquivo(const std::string &sConteudo, const std::string &sArquivo);
};
