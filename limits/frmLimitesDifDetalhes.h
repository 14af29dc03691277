#pragma once

#include "limits/TipoDeLimite.h"
#include "shell/Formulario.h"

#include <array>
#include <cstdint>
#include <string>

// The one screen that creates, changes and shows a differentiated limit (Tipo 1), a specific day (2) or a prohibited
// hour (3).
class frmLimitesDifDetalhes : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmLimitesDifDetalhes"; }
    ::Desenho Desenho() const override;

    // Opens the form modally for new rows of an equipment. True when rows were saved.
    bool CarregaInclusao(std::int16_t Tipo, std::int32_t NroIntEquip, const std::string &codEquip);
    // The same for one row, by its number.
    bool CarregaEdicao(std::int16_t Tipo, const std::string &codEquip, std::int32_t NroInt);
    // Shows one row read-only, without modality.
    void CarregaDetalhes(std::int16_t Tipo, const std::string &codEquip, std::int32_t NroInt);

  protected:
    void LigaControles() override;

  private:
    static constexpr std::size_t NroDias = 8;

    Ref<ILabel> lblCodEquip;
    Ref<ISSTab> sstDados;
    std::array<Ref<IztFrame>, 2> fraDados;
    Ref<IztFrame> fraDiasSemana;
    std::array<Ref<ICheckBox>, NroDias> chkDia; // in the order of the days' codes, from 1
    Ref<IztFrame> fraData;
    Ref<IztData> ztdData;
    Ref<IztMask> ztmHInicial;
    Ref<IztMask> ztmHFinal;
    Ref<IztFrame> fraVelocPerm;
    Ref<IztMask> txtVelocPerm;
    Ref<ICheckBox> chkVelocMin;
    Ref<IztMask> txtVelocMin;
    Ref<IztCommand> ztCmdOK;
    Ref<ICommandButton> cmdCancelar;

    bool m_Salvou = false;
    bool m_Inclusao = false;
    bool m_Detalhes = false;
    TipoDeLimite m_Tipo;
    std::int32_t m_NroIntEquip = 0;
    std::int32_t m_NroInt = 0;
    std::int64_t m_VersaoLida = 0; // the service's mark of the row

    bool MontaTela(const std::string &codEquip);
    void BuscaLimitesDif();
    void BuscaDiasEspec();
    void MostraVelocMin(std::int16_t velocMin);
    bool ValidouOk();
    bool Recusa(std::int16_t pagina, const Ref<IControle> &controle, const std::string &mensagem);
    bool SalvaLimiteDif();
    bool SalvaDiaEspec();
    Ref<EquiptoED> LimitesInformados() const;
    Ref<DiaEspecificoED> DiaInformado() const;
    bool TemDiaMarcado() const;
    std::int16_t VelocMinInformada() const;

    void chkVelocMin_Click();
    void sstDados_Click(std::int16_t abaAnterior);
    void ztCmdOK_ValidaClick(bool &cancela);
    void ztCmdOK_Click();
    void cmdCancelar_Click();
};
