#pragma once

#include "shell/ControladorLista.h"

#include <cstdint>
#include <string_view>

class clsEquipto;
class clsSensor;

// Drives the list of an equipment's sensors: fills it, keeps its menu in step and opens the sensor's form. A listed
// sensor is never edited itself: the form gets a new sensor or a clone, and only a confirmed one is taken over.
class COSensores : public ControladorLista {
  public:
    COSensores() : ControladorLista("ItemMenuClicado") {}
    std::string_view NomeTipo() const override { return "COSensores"; }

    // Binds the controller to an equipment and a list control, and fills the list. Neither is kept alive.
    bool Carrega(const Ref<clsEquipto> &cEquipto, const Ref<IztList> &oLista, bool bReadOnly);

    // Something in the sensors changed.
    Evento<> &Alterado() { return m_Alterado; }

  private:
    TabelaColunas Colunas() const override;
    bool PodeExcluir(std::int32_t itens) const override;
    bool CarregaSensores();
    void Novo() override;
    void Editar() override;
    void Detalhes() override;
    bool Excluir(std::int32_t lLinha) override;
    Ref<clsSensor> SensorDaLinha(std::int32_t lLinha);

    RefFraca<clsEquipto> m_Equipto;
    Evento<> m_Alterado;
};
