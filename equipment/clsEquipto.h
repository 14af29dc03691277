#pragma once

#include "host/EquiptoED.h"
#include "host/Ref.h"
#include "sensors/clsListaSensores.h"

#include <cstdint>
#include <string>
#include <string_view>

// An equipment while a detail form is open, with its sensors. The only class that asks the service for an equipment's
// record, or sends it.
class clsEquipto : public Objeto {
  public:
    ~clsEquipto() override;
    std::string_view NomeTipo() const override { return "clsEquipto"; }

    // Ends the list of sensors, and all below it, as does the end of the record.
    void Finaliza();

    std::int32_t NroIntEquip = 0; // given by the service; 0: not yet saved
    std::string ClienteInc;       // client that registered it
    std::string SetorInc;
    std::string Codigo;
    std::string SubCodigo;
    std::string Descricao;
    std::string Modelo;
    std::int32_t CodMunic = 0;
    std::string ArquivoLayout; // without extension, or "NENHUM"
    bool TemImagemEntrelacada = false;
    bool TemLimiteDif = false;
    bool TemPerfilMag = false;
    std::int32_t NroIntRejLimDif = 0; // rejection at differentiated hours, 0 for none
    std::uint8_t TipoAgente = 0;      // 1 fixed, 2 static, 3 portable
    std::string TipoEquip;            // one letter
    std::string TipoVia;              // "R", "U", "I"
    bool Ativo = false;
    std::int16_t VelocPermitida = 0; // km/h
    std::string txtObsNotif;         // printed on the notification

    // The last change, as the service told it, ready for display.
    const std::string &ClienteTrans() const noexcept { return m_ClienteTrans; }
    const std::string &OperadorTrans() const noexcept { return m_OperadorTrans; }
    const std::string &DataTrans() const noexcept { return m_DataTrans; }
    const std::string &HoraTrans() const noexcept { return m_HoraTrans; }

    // Created when first read.
    Ref<clsListaSensores> ListaSensores();
    bool Alterado = false; // the form changed something since the last load

    // With the changed sensors only, and with none while the equipment is not yet saved.
    Ref<EquiptoED> ToEquiptoED();
    // Sends the record; false when the service refused. A new one then holds what the service answered.
    bool Salva();
    void CarregaED(const Ref<EquiptoED> &ed);
    bool ReCarrega();
    // Asks the service for an equipment; false when it refused, and the record keeps its contents.
    bool Carrega(std::int32_t nroIntEquip);

  private:
    std::string m_ClienteTrans;
    std::string m_OperadorTrans;
    std::string m_DataTrans;
    std::string m_HoraTrans;
    std::int64_t m_VersaoLida = 0; // the service's mark, handed back as it came
    Ref<clsListaSensores> m_ListaSensores;
};
