#pragma once

#include "sensors/clsAfericao.h"
#include "shell/Formulario.h"

#include <cstdint>
#include <string>
#include <string_view>

// Creates, changes and shows one calibration of a sensor, keeps the periods of the sensor apart, and sends and fetches
// the document. The record is written only on OK; the one exception is the due date of another calibration, which
// DataVerificacaoEmConflito may shorten.
class frmEquipAfericoes : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmEquipAfericoes"; }
    ::Desenho Desenho() const override;

    // Opens a new record, modally; true when it was confirmed.
    bool CarregaInclusao(const Ref<clsAfericao> &cAfericao);
    // Opens a listed record, modally; true when it was confirmed.
    bool CarregaEdicao(const Ref<clsAfericao> &cAfericao);
    // Shows a record, not modally.
    void CarregaDetalhes(const Ref<clsAfericao> &cAfericao);

  protected:
    void LigaControles() override;
    void Form_Unload(bool &cancela) override;

  private:
    Ref<ILabel> lblCodEquip;
    Ref<ILabel> lblNroSensor;
    Ref<IztCombo> cboTipo;
    Ref<ITextBox> txtNroINMETRO;
    Ref<ILabel> lblMarcaINMETRO;
    Ref<IztMask> txtMarcaINMETRO;
    Ref<IztData> txtDtVerifINMETRO;
    Ref<IztData> txtDtVencINMETRO;
    Ref<IztFrame> fraPortariaDIMEL;
    Ref<IztMask> txtNroPortDIMEL;
    Ref<IztMask> txtAnoPortDIMEL;
    Ref<IztFrame> fraDocumento;
    Ref<ICommandButton> cmdProcurar;
    Ref<ICommandButton> cmdVisualizar;
    Ref<ICommandButton> cmdUpload;
    Ref<ILabel> lblMsgCert;
    Ref<ICommandButton> cmdOK;
    Ref<ICommandButton> cmdCancelar;
    Ref<ICommonDialog> cdAbreArquivos;

    bool m_OK = false; // the user confirmed
    Ref<clsAfericao> m_Afericao;
    bool m_Inclusao = false;
    bool m_Detalhes = false;
    double m_NroIntImgCertif = 0; // document as the screen knows it, 0 for none; the record gets it on OK
    std::string m_Arquivo;        // handed to the last upload
    bool m_FezUpload = false;     // the last upload was a good one

    void Inicia(const Ref<clsAfericao> &cAfericao, bool bInclusao, bool bDetalhes);
    void Solta() override;
    void MontaCabecalho();
    void MontaTela();
    void MontaComboTipo();
    void MontaDocumento();
    void SetaTipoAfer(std::uint8_t iTipo);

    bool ValidouOk();
    bool Recusa(const std::string &sTexto, const Ref<IFocavel> &ctl);
    bool VerificaConflitoDatas(Data dtVerif, Data dtVenc);
    bool DataVerificacaoEmConflito(Data dtVerif);

    bool ProcurarPDF();
    bool VisualizaPDF(const std::string &sCaminho);

    void cboTipo_Click();
    void cmdProcurar_Click();
    void cmdVisualizar_Click();
    void cmdUpload_Click();
    void cmdOK_Click();
    void cmdCancelar_Click();
};
