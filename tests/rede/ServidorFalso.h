#pragma once

#include <grpcpp/server.h>
#include <grpcpp/server_context.h>
#include <registro.grpc.pb.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// A server that does as each test says, on a port of this machine. What is told to it is told before it is asked.
class ServidorFalso {
  public:
    template <class Pedido, class Resposta>
    using Atende = std::function<grpc::Status(grpc::ServerContext &, const Pedido &, Resposta &)>;

    // Without a certificate it speaks without TLS. porta 0: any.
    explicit ServidorFalso(const std::string &certificado = "", const std::string &chave = "", int porta = 0);
    ~ServidorFalso();

    std::uint16_t Porta() const { return static_cast<std::uint16_t>(m_Porta); }
    void Termina();

    // What it is asked for under one number is done once, and answered as the first time.
    template <class Pedido, class Resposta>
    static Atende<Pedido, Resposta> UmaVez(std::shared_ptr<std::atomic<int>> feitas,
                                           std::function<void(const Pedido &, Resposta &)> faz)
    {
        auto antes = std::make_shared<std::map<std::string, Resposta>>();
        auto tranca = std::make_shared<std::mutex>();
        return [=](grpc::ServerContext &contexto, const Pedido &pedido, Resposta &resposta) {
            const std::lock_guard guarda(*tranca);
            const std::string numero = Dado(contexto, "operacao");
            const auto achada = antes->find(numero);
            if (achada != antes->end()) {
                resposta = achada->second;
                return grpc::Status::OK;
            }
            faz(pedido, resposta);
            ++*feitas;
            antes->emplace(numero, resposta);
            return grpc::Status::OK;
        };
    }

    // Of the metadata of a call; empty when it is not there.
    static std::string Dado(const grpc::ServerContext &contexto, const std::string &nome);
    // The end of a call, with its sentence where the contract has it.
    static grpc::Status Fim(grpc::ServerContext &contexto, grpc::StatusCode como, const std::string &frase);

    registro::v1::Servidor Quem;
    Atende<registro::v1::Apresentacao, registro::v1::Servidor> Apresenta;
    Atende<registro::v1::PedidoDeEntrada, registro::v1::Sessao> Entra;
    Atende<registro::v1::Permissao, registro::v1::SimOuNao> TemPermissao;
    Atende<registro::v1::EquiptoED, registro::v1::EquiptoED> Altera;
    Atende<registro::v1::EquiptoED, registro::v1::EquiptoED> Inclui;
    Atende<registro::v1::EquiptoED, registro::v1::EquiptoED> Consulta;
    Atende<registro::v1::TrocaSenhaED, registro::v1::Vazio> TrocaMinhaSenha;
    std::function<grpc::Status(grpc::ServerContext &, grpc::ServerReader<registro::v1::PedacoDeDocumento> &,
                               registro::v1::NumeroDeDocumento &)>
        Guarda;
    std::function<grpc::Status(grpc::ServerContext &, const registro::v1::PedidoDeDocumento &,
                               grpc::ServerWriter<registro::v1::PedacoDeDocumento> &)>
        LeDocumento;
    std::function<grpc::Status(grpc::ServerContext &, const registro::v1::PedidoDeReplica &,
                               grpc::ServerWriter<registro::v1::PedacoDeReplica> &)>
        LeReplica;
    std::function<grpc::Status(grpc::ServerContext &, grpc::ServerWriter<registro::v1::AndamentoDaConferencia> &)>
        Confere;
    Atende<registro::v1::Vazio, registro::v1::CabecaDoHistorico> Cabeca;
    Atende<registro::v1::Vazio, registro::v1::SituacaoDaSessao> Situacao;
    std::atomic<int> Saidas{0};
    std::atomic<double> Agora{0}; // its clock

  private:
    struct Servicos;
    std::unique_ptr<Servicos> m_Servicos;
    std::unique_ptr<grpc::Server> m_Servidor;
    int m_Porta = 0;
};
