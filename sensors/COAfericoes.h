#pragma once

#include "shell/ControladorLista.h"

#include <cstdint>
#include <string_view>

class clsAfericao;
class clsSensor;

// Drives a list of one sensor's calibrations: fills it, keeps its menu in step and opens the calibration's form. The
// sensor may be a listed one, a clone or one that is in no list yet; the work is the same.
class COAfericoes : public ControladorLista {
  public:
    COAfericoes() : ControladorLista("ItemMenuClicado") {}
    std::string_view NomeTipo() const override { return "COAfericoes"; }

    // Binds the controller to a sensor and a list control, and fills the list. Neither is kept alive.
    bool Carrega(const Ref<clsSensor> &cSensor, const Ref<IztList> &oLista, bool bReadOnly);

    // Something in the calibrations changed.
    Evento<> &Alterado() { return m_Alterado; }

  private:
    TabelaColunas Colunas() const override;
    bool CarregaAfericoes();
    void Novo() override;
    void Editar() override;
    void Detalhes() override;
    bool Excluir(std::int32_t lLinha) override;
    Ref<clsAfericao> AfericaoDaLinha(std::int32_t lLinha);

    RefFraca<clsSensor> m_Sensor;
    Evento<> m_Alterado;
};
