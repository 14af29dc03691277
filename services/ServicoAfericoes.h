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

    // The calibration in force on a civil day: of a sensor and an equipment that counted on that day (Atividade.h),
    // first day <= day <= last day, with its document. One that was withdrawn since was wrong, and is in force on no
    // day. The sensors that the registry knew as active on that day go before those that it came to know later.
    // One or none, never a guess: when more than one sensor has a calibration in force there is no telling which is
    // meant, and the answer is none. None is NroIntAfericao 0.
    Ref<AfericaoED> Vigente(const ConsultaAfericaoED &pedido);

    // The certificate. CodOat is the number of the calibration and Serie the code of its equipment, whatever its case;
    // TxtIdent comes back as it was sent. Documento is the document's content as base64.
    Ref<RelatorioAfericaoED> Certificado(const RelatorioAfericaoED &pedido);

  private:
    Operacao &m_Operacao;
};

} // namespace mesa
