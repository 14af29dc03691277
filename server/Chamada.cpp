#include "server/Chamada.h"

#include "server/Enderecos.h"

#include <iterator>

namespace servidor {

Chamada::Chamada(grpc::ServerContext &contexto)
    : Endereco(EnderecoDeQuem(contexto.peer())),
      Cancelada([&contexto] { return contexto.IsCancelled(); }),
      Corta([&contexto] { contexto.TryCancel(); }),
      NoFim([&contexto](const std::string &chave, const std::string &valor) {
          contexto.AddTrailingMetadata(chave, valor);
      })
{
    const auto &metadados = contexto.client_metadata();
    const auto unico = [&](const char *chave) -> std::optional<std::string> {
        const auto [primeiro, fim] = metadados.equal_range(chave);
        if (primeiro == fim) {
            return std::nullopt;
        }
        Repetidos = Repetidos || std::next(primeiro) != fim;
        return std::string(primeiro->second.data(), primeiro->second.size());
    };
    Sessao = unico("sessao").value_or("");
    Numero = unico("operacao");
    Motivo = unico("motivo-bin");
    const auto falta = contexto.deadline() - std::chrono::system_clock::now();
    const auto agora = std::chrono::steady_clock::now();
    if (falta < Momento::max() - agora) {
        Ate = agora + std::chrono::duration_cast<Momento::duration>(falta);
    }
}

} // namespace servidor
