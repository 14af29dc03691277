#pragma once

#include "server/Chamada.h"
#include "server/Configuracao.h"
#include "server/Diario.h"
#include "server/EntradasRecusadas.h"
#include "server/Figuras.h"
#include "server/Fim.h"
#include "server/Sessoes.h"
#include "server/Trabalhadores.h"
#include "server/Vagas.h"
#include "server/Vigia.h"
#include "services/SessaoSql.h"

#include <registro.pb.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>

namespace servidor {

// What every call is led through, whatever it asks: who asks, the queue, the work on the registry, how it ends, and the
// line that it leaves. Knows no network.
class Atendente {
  public:
    // Documents, replicas and checks that may be on their way at a time; further ones are told "ocupado".
    static constexpr std::size_t MaisFluxos = 64;
    // Octets of them in memory, all together; a single one may be larger.
    static constexpr std::size_t MaisOctetos = 256UL << 20;
    // Of MaisFluxos, at this moment.
    std::size_t ACaminho() const { return m_Fluxos; }

    Atendente(const Configuracao &configuracao, mesa::Relogio agora, Trabalhadores &trabalhadores, Sessoes &sessoes,
              EntradasRecusadas &recusadas, Diario &diario, Figuras &figuras);

    // One operation of the services (SessaoServico::Executa): one that looks, and one that changes, which has a number.
    grpc::Status Consulta(const Chamada &chamada, const std::string &classe, const std::string &metodo,
                          const google::protobuf::Message &pedido, google::protobuf::Message &resposta);
    grpc::Status Grava(const Chamada &chamada, const std::string &classe, const std::string &metodo,
                       const google::protobuf::Message &pedido, google::protobuf::Message &resposta);

    // What came is no message of the operation, or too large to be looked at.
    grpc::Status RecusaMensagem(const Chamada &chamada, const std::string &operacao, std::size_t octetos);

    // Signing in and out.
    grpc::Status Apresenta(const Chamada &chamada, const registro::v1::Apresentacao &pedido,
                           registro::v1::Servidor &resposta);
    grpc::Status Entra(const Chamada &chamada, const registro::v1::PedidoDeEntrada &pedido,
                       registro::v1::Sessao &resposta);
    grpc::Status Sai(const Chamada &chamada);
    grpc::Status TemPermissao(const Chamada &chamada, const registro::v1::Permissao &pedido,
                              registro::v1::SimOuNao &resposta);
    grpc::Status Situacao(const Chamada &chamada, registro::v1::SituacaoDaSessao &resposta);

    // Documents. leia: the next piece, false at the end. escreve: false when nobody takes it any more.
    grpc::Status GuardaDocumento(const Chamada &chamada,
                                 const std::function<bool(registro::v1::PedacoDeDocumento &)> &leia,
                                 registro::v1::NumeroDeDocumento &resposta);
    grpc::Status LeDocumento(const Chamada &chamada, const registro::v1::PedidoDeDocumento &pedido,
                             const std::function<bool(const registro::v1::PedacoDeDocumento &)> &escreve);
    grpc::Status AfericoesDoDocumento(const Chamada &chamada, const registro::v1::DocumentoOuAfericao &pedido,
                                      registro::v1::AfericoesComDocumento &resposta);

    grpc::Status VersoesDaAfericao(const Chamada &chamada, const registro::v1::PedidoDeVersoes &pedido,
                                   registro::v1::VersoesDaAfericaoED &resposta);
    grpc::Status ComoConhecido(const Chamada &chamada, const registro::v1::PedidoDeConhecido &pedido,
                               registro::v1::EquipamentoConhecido &resposta);

    grpc::Status Clientes(const Chamada &chamada, registro::v1::ClientesDoOperador &resposta);
    grpc::Status LeReplica(const Chamada &chamada, const registro::v1::PedidoDeReplica &pedido,
                           const std::function<bool(const registro::v1::PedacoDeReplica &)> &escreve);

    grpc::Status Confere(const Chamada &chamada, const registro::v1::PedidoDeConferencia &pedido,
                         const std::function<bool(const registro::v1::AndamentoDaConferencia &)> &escreve);
    grpc::Status Cabeca(const Chamada &chamada, registro::v1::CabecaDoHistorico &resposta);

  private:
    // A call on its way.
    struct Andamento {
        const Chamada &Quem;
        Momento Ate; // the earlier of what the caller waits and what an operation may take
        LinhaDoDiario Linha;
        bool Grava = false;

        bool Acabou() const { return Quem.Cancelada() || std::chrono::steady_clock::now() >= Ate; }
        // How a work ends that gave up on its way.
        Fim Desistiu() const;
    };
    class Fluxo;
    using Faz = std::function<void(Andamento &)>;
    using NaSessaoFaz = std::function<void(mesa::SessaoSql &)>;

    grpc::Status Conduz(const Chamada &chamada, const std::string &operacao, const Faz &faz);
    // The session of the call, which has one more operation under way for as long as this lives.
    Sessoes::EmUso Usa(Andamento &andamento);
    // Has the work done in the session, by a worker.
    void NaSessao(Andamento &andamento, Sessoes::EmUso &sessao, const NaSessaoFaz &faz);
    void NaSessao(Andamento &andamento, const NaSessaoFaz &faz);
    // What of the server is the registry's own. Before any work on it: where it is another one than was told, as after
    // a restoration, what it is is told from now on, all sessions end, and the work does with a Fim.
    void Retrata(mesa::ServicosSql &servicos);
    void ExigeOMesmo(Posto &posto);
    // The same with what has to be refused when it says false.
    void Exige(Andamento &andamento, bool feita, const std::string &recusa) const;
    void ExigeDireito(Andamento &andamento, Sessoes::EmUso &sessao, const std::string &acao, const std::string &oQue);
    // Checks and notes the number of a changing operation.
    void TomaNumero(Andamento &andamento) const;
    grpc::Status Executa(const Chamada &chamada, const std::string &classe, const std::string &metodo, bool grava,
                         const google::protobuf::Message &pedido, google::protobuf::Message &resposta);

    const Configuracao &m_Configuracao;
    const mesa::Relogio m_Agora;
    Trabalhadores &m_Trabalhadores;
    Sessoes &m_Sessoes;
    EntradasRecusadas &m_Recusadas;
    Diario &m_Diario;
    Figuras &m_Figuras;
    Vigia m_Vigia;
    std::mutex m_MutexDeMim;
    registro::v1::Servidor m_Eu;
    Vagas m_Entrando; // passwords take their time: those who are signed in go on meanwhile
    std::atomic<std::size_t> m_Fluxos = 0;
    std::atomic<std::size_t> m_Octetos = 0; // of the streams
    std::atomic<bool> m_Conferindo = false;
};

} // namespace servidor
