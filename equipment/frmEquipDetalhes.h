#pragma once

#include "equipment/clsEquipto.h"
#include "sensors/COAfericoes.h"
#include "sensors/COSensores.h"
#include "shell/Formulario.h"

#include <array>
#include <cstdint>
#include <string>

// Detail form of one equipment, in the modes inclusão, edição and detalhes.
class frmEquipDetalhes : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmEquipDetalhes"; }
    ::Desenho Desenho() const override;

    // Opens the form modally for a new equipment. trabFoto: photo-work mode. True when something was saved.
    bool CarregaInclusao(bool trabFoto);
    // The same for a saved equipment, by its internal number; false without a window when the service refuses it.
    bool CarregaEdicao(std::int32_t nroIntEquip, bool trabFoto);
    // Shows a saved equipment read-only, modally.
    void CarregaDetalhes(std::int32_t nroIntEquip, bool trabFoto);

  protected:
    void LigaControles() override;
    void Form_Unload(bool &cancela) override;

  private:
    static constexpr std::int16_t NroPaginas = 5;

    Ref<ILabel> lblClienteInc;
    Ref<ILabel> lblSetorInc;
    Ref<ISSTab> sstDados;
    std::array<Ref<IztFrame>, NroPaginas> fraDados;

    Ref<IztMask> txtCodEquip;
    Ref<IztMask> txtSubCodEquip;
    Ref<ITextBox> txtDescricao;
    Ref<IztCombo> cboTipoMedidor;
    Ref<IztCombo> cboTipoEquip;
    Ref<ITextBox> txtModelo;
    Ref<IztFrame> frUltAtu;
    Ref<ILabel> lblCliente;
    Ref<ILabel> lblOperador;
    Ref<ILabel> lblData;
    Ref<ILabel> lblHora;

    Ref<IztCombo> cboMunic;
    Ref<IztFrame> fraLayout;
    Ref<IztCombo> cboArqLayout;
    Ref<IztFrame> fraLimiteVel;
    Ref<IztMask> txtVelocPerm;
    Ref<ILabel> lblTolerancia;
    Ref<IztFrame> fraTipoVia;
    Ref<IOptionButton> optRodovia;
    Ref<IOptionButton> optUrbana;
    Ref<IOptionButton> optInfGeraBanco;

    Ref<IztList> ztListaSensor;
    Ref<IztList> ztListaAfericao;

    Ref<ICheckBox> chkEntrelacada;
    Ref<ICheckBox> chkPerfilMagnetico;
    Ref<IztFrame> fraLimiteDif;
    std::array<Ref<IOptionButton>, 2> optTrabDiasDif; // 0 no, 1 yes
    Ref<ICheckBox> chkRejeicaoAuto;
    Ref<ILabel> lblTextoRejLimDif;
    Ref<ILabel> lblRejeicao;
    Ref<IztCombo> cboRejeicao;
    Ref<IztFrame> fraObsNotif;
    Ref<ICheckBox> chkIncObsNotif;
    Ref<IztVeiObservacao> txtObsNotif;

    Ref<IztCommand> ztCmdOK;
    Ref<ICommandButton> cmdCancelar;
    Ref<IztCommand> ztCmdAplicar;

    Ref<clsEquipto> m_Equipto;
    bool m_Salvou = false;
    bool m_Inclusao = false;
    bool m_Detalhes = false;
    bool m_Carregando = false;
    bool m_TrabFoto = false;
    Ref<COSensores> m_COSensores;
    Ref<COAfericoes> m_COAfericoes;

    // Ends the record and drops the controllers.
    void Solta() override;
    bool MontaTela(std::int32_t nroIntEquip);
    void MostraDados();
    void MostraPaginasDoTipo(const std::string &tipoEquip);
    std::string obtemTipoVia();
    void CarregaPaginaSensores();
    void CarregaPaginaAfericoes();
    bool ValidouOk();
    bool Recusa(std::int16_t pagina, const Ref<IControle> &controle, const std::string &mensagem);
    bool Aplicar();
    void EscreveRegistro();
    void Change();

    void cboTipoMedidor_Change();
    void cboTipoEquip_Change();
    void txtVelocPerm_Change();
    void optTrabDiasDif_Click();
    void chkRejeicaoAuto_Click();
    void chkIncObsNotif_Click();
    void sstDados_Click(std::int16_t abaAnterior);
    void ztCmdOK_ValidaClick(bool &cancela);
    void ztCmdOK_Click();
    void ztCmdAplicar_ValidaClick(bool &cancela);
    void ztCmdAplicar_Click();
    void cmdCancelar_Click();
};
