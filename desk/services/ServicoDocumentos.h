#pragma once

#include "desk/services/Operacao.h"
#include "host/IPlataforma.h"

namespace mesa {

// The certificates: PDF documents of a client, stored once and never changed, with size and SHA-256.
class ServicoDocumentos {
  public:
    static constexpr std::size_t MaiorTamanho = 5242880;

    explicit ServicoDocumentos(Operacao &operacao) : m_Operacao(operacao) {}

    double Guarda(const Bytes &bytes);
    // Size and SHA-256 are verified.
    Bytes Le(double numero);

  private:
    Operacao &m_Operacao;
};

} // namespace mesa
