#include "server/Porteiro.h"

#include "server/Fim.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace servidor {

namespace {

constexpr std::array<std::string_view, 4> DeTodos = {"/registro.v1.Entrada/Apresenta", "/registro.v1.Entrada/Entra",
                                                     "/grpc.health.v1.Health/Check", "/grpc.health.v1.Health/Watch"};

std::string_view Valor(const grpc::AuthMetadataProcessor::InputMetadata &metadados, const char *chave)
{
    const auto achado = metadados.find(chave);
    return achado == metadados.end() ? std::string_view()
                                     : std::string_view(achado->second.data(), achado->second.size());
}

} // namespace

grpc::Status Porteiro::Process(const InputMetadata &metadados, grpc::AuthContext *, OutputMetadata *, OutputMetadata *)
{
    if (std::ranges::find(DeTodos, Valor(metadados, ":path")) != DeTodos.end()) {
        return grpc::Status::OK;
    }
    try {
        m_Sessoes.Exige(std::string(Valor(metadados, "sessao")));
        return grpc::Status::OK;
    } catch (const Fim &fim) {
        ++m_Recusadas;
        return {fim.Codigo, fim.Frase};
    }
}

} // namespace servidor
