#pragma once

#include "host/Registro.h"
#include "host/Valor.h"
#include "windows/automation/Com.h"

#include <deque>
#include <vector>

namespace nativo {

// The array of parameters of a remote call as the host gets it: one element, which refers to the caller's variable. The
// record in it is read by late binding, and what the service makes of it goes back the same way.
class ParametrosRecebidos {
  public:
    explicit ParametrosRecebidos(const VARIANT &arranjo);

    std::vector<Valor> &Parametros() { return m_Parametros; }
    void Devolve();

  private:
    struct Variavel {
        IDispatch **Lugar;
        Com<IDispatch> Vindo;
        Ref<Objeto> Objeto_; // as it came; a record as a copy
        Ref<Registro> Antes; // the record when it came
        Ref<Objeto> Atual;
    };

    std::deque<Variavel> m_Variaveis; // to which the parameters refer
    std::vector<Valor> m_Parametros;
};

} // namespace nativo
