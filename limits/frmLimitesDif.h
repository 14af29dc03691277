#pragma once

#include "limits/COLimiteDif.h"
#include "shell/Formulario.h"

#include <cstdint>
#include <string>

// Window of the limits, specific days or prohibited hours of one equipment.
class frmLimitesDif : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmLimitesDif"; }
    ::Desenho Desenho() const override;

    // Opens the window modally; when the first search is refused it does not appear.
    // Tipo: 1 differentiated limits, 2 specific days, 3 prohibited hours.
    void CarregaForm(const std::string &CodEquip, std::int32_t NroIntEquip, std::int16_t Tipo);

  protected:
    void LigaControles() override;
    void Form_Unload(bool &cancela) override;

  private:
    Ref<IztList> ztLista;

    Ref<COLimiteDif> m_COLimiteDif;
};
