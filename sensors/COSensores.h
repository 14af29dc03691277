#pragma once

#include "host/IztList.h"
#include "shell/Assinante.h"
#include "shell/Coluna.h"

#include <cstdint>
#include <string>
#include <string_view>

class clsEquipto;
class clsSensor;

// Drives the list of an equipment's sensors: fills it, keeps its menu in step and opens the sensor's form. A listed
// sensor is never edited itself: the form gets a new sensor or a clone, and only a confirmed one is taken over.
class COSensores : public Objeto, public Assinante {
  public:
    std::string_view NomeTipo() const override { return "COSensores"; }

    // Binds the controller to an equipment and a list control, and fills the list. Neither is kept alive.
    // A fault changes nothing of the binding.
    bool Carrega(const Ref<clsEquipto> &cEquipto, const Ref<IztList> &oLista, bool bReadOnly);

    // Something in the sensors changed.
    Evento<> &Alterado() { return m_Alterado; }

  private:
    static TabelaColunas Colunas();
    void LigaEventos();
    void MenuInicial();
    bool CarregaSensores();
    void HabilitaMenu();
    void Novo();
    void Editar();
    void Detalhes();
    bool Excluir(std::int32_t lLinha);
    Ref<clsSensor> SensorDaLinha(std::int32_t lLinha);

    void m_ZtList_AntesDeRemoverItem(std::int32_t &lLinha);
    void m_ZtList_DepoisDeRemoverItem();
    void ItemMenuClicado(std::string sChave);

    RefFraca<IztList> m_ZtList;
    RefFraca<clsEquipto> m_Equipto;
    bool m_SomenteLeitura = false;
    Evento<> m_Alterado;
};
