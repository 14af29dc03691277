#pragma once

#include "server/Sessoes.h"

#include <grpcpp/security/auth_metadata_processor.h>

#include <atomic>
#include <cstdint>

namespace servidor {

// Turns away, before anything of the message is taken in, the calls of whoever has no living session; signing in and
// asking for the health are for everybody. The sentence is the status's own: nothing else can go with this end.
class Porteiro final : public grpc::AuthMetadataProcessor {
  public:
    // recusadas: counts those that were turned away.
    Porteiro(Sessoes &sessoes, std::atomic<std::uint64_t> &recusadas) : m_Sessoes(sessoes), m_Recusadas(recusadas) {}

    bool IsBlocking() const override { return false; }
    grpc::Status Process(const InputMetadata &metadados, grpc::AuthContext *contexto, OutputMetadata *consumidos,
                         OutputMetadata *resposta) override;

  private:
    Sessoes &m_Sessoes;
    std::atomic<std::uint64_t> &m_Recusadas;
};

} // namespace servidor
