#pragma once

#include "host/IFabricaControles.h"

// Makes the controls of this folder.
class FabricaControles : public IFabricaControles {
  public:
    std::string_view NomeTipo() const override { return "FabricaControles"; }

    Ref<IControle> Cria(const Ref<IForm> &form, const Peca &peca, const Ref<IControle> &container,
                        std::int16_t pagina) override;

    // A control was made and nobody has used it yet: the host connects here what the control needs of it.
    Evento<Ref<IControle>> &CriouControle() { return m_CriouControle; }

  private:
    Evento<Ref<IControle>> m_CriouControle;
};
