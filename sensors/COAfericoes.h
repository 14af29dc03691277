#pragma once

#include "host/IztList.h"
#include "shell/Assinante.h"
#include "shell/Coluna.h"

#include <cstdint>
#include <string>
#include <string_view>

class clsAfericao;
class clsSensor;

// Drives a list of one sensor's calibrations: fills it, keeps its menu in step and opens the calibration's form. The
// sensor may be a listed one, a clone or one that is in no list yet; the work is the same.
class COAfericoes : public Objeto, public Assinante {
  public:
    std::string_view NomeTipo() const override { return "COAfericoes"; }

    // Binds the controller to a sensor and a list control, and fills the list. Neither is kept alive.
    // A fault changes nothing of the binding.
    bool Carrega(const Ref<clsSensor> &cSensor, const Ref<IztList> &oLista, bool bReadOnly);

    // Something in the calibrations changed.
    Evento<> &Alterado() { return m_Alterado; }

  private:
    static TabelaColunas Colunas();
    void LigaEventos();
    void MenuInicial();
    bool CarregaAfericoes();
    void HabilitaMenu();
    void Novo();
    void Editar();
    void Detalhes();
    bool Excluir(std::int32_t lLinha);
    Ref<clsAfericao> AfericaoDaLinha(std::int32_t lLinha);

    void m_ZtList_AntesDeRemoverItem(std::int32_t &lLinha);
    void m_ZtList_DepoisDeRemoverItem();
    void ItemMenuClicado(std::string sChave);

    RefFraca<IztList> m_ZtList;
    RefFraca<clsSensor> m_Sensor;
    bool m_SomenteLeitura = false;
    Evento<> m_Alterado;
};
