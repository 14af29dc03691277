#pragma once

#include "host/IPlataforma.h"
#include "services/Operacao.h"

#include <QByteArray>

#include <cstdint>

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
    // Whether the client has the document and all of it is as it was stored. Reads it whole.
    bool EstaInteiro(std::int64_t numero);

  private:
    enum class Achado { Inteiro, Ausente, Danificado };
    // By the document's own row.
    Achado Busca(std::int64_t numero, QByteArray &conteudo);

    Operacao &m_Operacao;
};

} // namespace mesa
