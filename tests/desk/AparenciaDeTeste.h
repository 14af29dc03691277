#pragma once

#include "desk/windows/Aparencia.h"

#include <QApplication>

// The program's look of a test, which tells the windows at once.
class AparenciaDeTeste {
  public:
    explicit AparenciaDeTeste(mesa::Preferencias &preferencias)
        : m_Preferencias(preferencias),
          m_Aparencia(preferencias)
    {
        QCoreApplication::processEvents();
    }

    void Poe(mesa::Tema tema, std::int32_t tamanho = 100)
    {
        mesa::Aspecto aspecto = m_Preferencias.Aspecto();
        aspecto.Cores = tema;
        aspecto.TamanhoDoTexto = tamanho;
        m_Preferencias.DefineAspecto(aspecto);
        QCoreApplication::processEvents();
    }
    void Deseja(mesa::DesejoDeCores desejo)
    {
        m_Aparencia.DefineDesejo(desejo);
        QCoreApplication::processEvents();
    }

  private:
    mesa::Preferencias &m_Preferencias;
    mesa::Aparencia m_Aparencia;
};
