#pragma once

#include "host/AfericaoED.h"
#include "host/ConsultaAfericaoED.h"
#include "host/RelatorioAfericaoED.h"
#include "services/Operacao.h"

namespace mesa {

// Questions about calibrations.
class ServicoAfericoes {
  public:
    explicit ServicoAfericoes(Operacao &operacao) : m_Operacao(operacao) {}

    // The calibration in force on a civil day (Vigencia.h). None is NroIntAfericao 0.
    Ref<AfericaoED> Vigente(const ConsultaAfericaoED &pedido);

    // The certificate. CodOat is the number of the calibration and Serie the code of its equipment, whatever its case;
    // TxtIdent comes back as it was sent. Documento is the document's content as base64.
    Ref<RelatorioAfericaoED> Certificado(const RelatorioAfericaoED &pedido);

  private:
    Operacao &m_Operacao;
};

} // namespace mesa
