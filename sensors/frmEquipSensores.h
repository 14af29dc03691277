#pragma once

#include "sensors/COAfericoes.h"
#include "sensors/clsSensor.h"
#include "shell/Formulario.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// Creates, changes and shows one sensor; the second tab holds its calibrations. It works on the record that it was
// given, which is why an edit is done on a clone.
class frmEquipSensores : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmEquipSensores"; }
    ::Desenho Desenho() const override;

    // Opens a new sensor, modally; true when it was confirmed.
    bool CarregaInclusao(const Ref<clsSensor> &cSensor);
    // Opens a clone, modally; true when it was confirmed.
    bool CarregaEdicao(const Ref<clsSensor> &cSensor);
    // Shows a sensor, not modally.
    void CarregaDetalhes(const Ref<clsSensor> &cSensor);

  protected:
    void LigaControles() override;
    void Form_Unload(bool &cancela) override;

  private:
    Ref<ILabel> lblCodEquip;
    Ref<ISSTab> sstDados;
    std::array<Ref<IztFrame>, 2> fraDados; // one per tab
    Ref<IztMask> txtNroSensor;
    Ref<IztEndereco> ztEndereco1;
    Ref<ITextBox> txtLocalInfr;
    Ref<IztList> ztListaAfericao;
    Ref<ICommandButton> cmdOK;
    Ref<ICommandButton> cmdCancelar;

    bool m_OK = false; // the user confirmed
    bool m_Detalhes = false;
    bool m_Carregando = false; // the form is being filled: the controls' events are no changes
    Ref<clsSensor> m_Sensor;
    Ref<COAfericoes> m_COAfericoes; // from the first visit to its tab

    void Inicia(const Ref<clsSensor> &cSensor, bool bDetalhes);
    void Solta() override;
    void MontaTela();
    bool validouOk();
    void Change();

    void sstDados_Click(std::int16_t anterior);
    void ztEndereco1_EntradaOK();
    void cmdOK_Click();
    void cmdCancelar_Click();
};
