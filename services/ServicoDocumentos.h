#pragma once

#include "host/IPlataforma.h"
#include "services/Operacao.h"

namespace mesa {

// The certificates: PDF documents of a client, stored once and never changed, with size and SHA-256.
class ServicoDocumentos {
  public:
    explicit ServicoDocumentos(Operacao &operacao) : m_Operacao(operacao) {}

    void ExigeGuardar() const;
    // The caller has found no defect in the content.
    double Guarda(const Bytes &bytes);
    // Size and SHA-256 are verified, the latter with the history as well.
    Bytes Le(double numero);

  private:
    Operacao &m_Operacao;
};

} // namespace mesa
