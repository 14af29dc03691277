#pragma once

#include "rede/Versao.h"
#include "server/Servidor.h"
#include "tests/services/RegistroDeTeste.h"

#include <grpcpp/create_channel.h>
#include <grpcpp/generic/generic_stub.h>
#include <grpcpp/grpcpp.h>

#include <registro.grpc.pb.h>

#include <QTemporaryDir>

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// A call as a test makes it, and what came of it.
struct Feita {
    grpc::Status Fim;
    std::multimap<std::string, std::string> NoFim;
    std::vector<std::string> Respostas; // octets of each message

    std::string Frase() const;
    // The only answer, as a message.
    template <class Mensagem> Mensagem Como() const
    {
        Mensagem mensagem;
        if (!Respostas.empty()) {
            mensagem.ParseFromString(Respostas.front());
        }
        return mensagem;
    }
};

// A server over a registry of its own, on the loopback, and whoever calls it with nothing but the contract.
class ServidorDeTeste {
  public:
    // registro: of another one, so that both are on the same.
    explicit ServidorDeTeste(std::shared_ptr<RegistroDeTeste> registro = std::make_shared<RegistroDeTeste>());

    const std::shared_ptr<RegistroDeTeste> DoRegistro;
    RegistroDeTeste &Registro = *DoRegistro;
    // As a test wants it before the server begins.
    servidor::Configuracao Como;

    void Comeca();
    void PassaMinutos(int n) { m_Agora = m_Agora + n / (24.0 * 60); }
    servidor::Servidor &Rodando() { return *m_Servidor; }
    void Acaba() { m_Servidor = nullptr; }
    const std::string Pasta() const { return m_Pasta.path().toStdString(); }
    // The lines of the log, after the server has ended.
    std::vector<std::string> Diario() const;

    std::shared_ptr<grpc::Channel> Canal() const;

    using Metadados = std::multimap<std::string, std::string>;
    // Calls "registro.v1.<nome>", "Entrada/Entra", with these messages.
    Feita Chama(const std::string &nome, const std::vector<std::string> &pedidos, const Metadados &metadados = {},
                std::chrono::milliseconds prazo = std::chrono::seconds(30)) const;
    Feita Chama(const std::string &nome, const google::protobuf::Message &pedido, const std::string &sessao,
                Metadados metadados = {}) const;
    // The same of one that changes, with a number of its own.
    Feita Grava(const std::string &nome, const google::protobuf::Message &pedido, const std::string &sessao,
                Metadados metadados = {}) const;

    // A number for a changing operation.
    static std::string Numero();

    Feita TentaEntrar(const std::string &usuario, const std::string &senha, int contrato = rede::Contrato,
                      std::chrono::milliseconds prazo = std::chrono::seconds(30)) const;
    // The key of a new session of one of the registry's users.
    std::string Entra(const std::string &usuario);

  private:
    QTemporaryDir m_Pasta;
    std::atomic<double> m_Agora;
    std::unique_ptr<servidor::Servidor> m_Servidor;
};
