#include "ServidorFalso.h"

#include <grpcpp/security/server_credentials.h>
#include <grpcpp/server_builder.h>

#include <chrono>
#include <stdexcept>

namespace v1 = registro::v1;
using grpc::ServerContext;
using grpc::Status;

struct ServidorFalso::Servicos {
    explicit Servicos(ServidorFalso &dono) : Dono(dono) {}

    struct DeEntrada : v1::Entrada::Service {
        explicit DeEntrada(ServidorFalso &dono) : Dono(dono) {}
        Status Apresenta(ServerContext *contexto, const v1::Apresentacao *pedido, v1::Servidor *resposta) override
        {
            *resposta = Dono.Quem;
            return Dono.Apresenta ? Dono.Apresenta(*contexto, *pedido, *resposta) : Status::OK;
        }
        Status Entra(ServerContext *contexto, const v1::PedidoDeEntrada *pedido, v1::Sessao *resposta) override
        {
            resposta->set_chave("chave-da-sessao");
            resposta->set_numero(7);
            resposta->set_usuario("ana");
            resposta->set_nome("Ana");
            resposta->set_codcliente(3);
            resposta->set_cliente("Autoridade");
            resposta->set_avisoderelogio("o relógio voltou");
            return Dono.Entra ? Dono.Entra(*contexto, *pedido, *resposta) : Status::OK;
        }
        Status Sai(ServerContext *, const v1::Vazio *, v1::Vazio *) override
        {
            ++Dono.Saidas;
            return Status::OK;
        }
        Status Situacao(ServerContext *contexto, const v1::Vazio *pedido, v1::SituacaoDaSessao *resposta) override
        {
            resposta->set_agora(Dono.Agora);
            return Dono.Situacao ? Dono.Situacao(*contexto, *pedido, *resposta) : Status::OK;
        }
        Status TemPermissao(ServerContext *contexto, const v1::Permissao *pedido, v1::SimOuNao *resposta) override
        {
            return Dono.TemPermissao(*contexto, *pedido, *resposta);
        }
        ServidorFalso &Dono;
    };
    struct DeEquipamentos : v1::EquiptoRN::Service {
        explicit DeEquipamentos(ServidorFalso &dono) : Dono(dono) {}
        Status altera(ServerContext *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
        {
            return Dono.Altera(*contexto, *pedido, *resposta);
        }
        Status inclui(ServerContext *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
        {
            return Dono.Inclui(*contexto, *pedido, *resposta);
        }
        Status consulta(ServerContext *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
        {
            return Dono.Consulta(*contexto, *pedido, *resposta);
        }
        ServidorFalso &Dono;
    };
    struct DeAdministracao : v1::AdministracaoRN::Service {
        explicit DeAdministracao(ServidorFalso &dono) : Dono(dono) {}
        Status trocaMinhaSenha(ServerContext *contexto, const v1::TrocaSenhaED *pedido, v1::Vazio *resposta) override
        {
            return Dono.TrocaMinhaSenha(*contexto, *pedido, *resposta);
        }
        ServidorFalso &Dono;
    };
    struct DeDocumentos : v1::Documentos::Service {
        explicit DeDocumentos(ServidorFalso &dono) : Dono(dono) {}
        Status Guarda(ServerContext *contexto, grpc::ServerReader<v1::PedacoDeDocumento> *pedacos,
                      v1::NumeroDeDocumento *resposta) override
        {
            return Dono.Guarda(*contexto, *pedacos, *resposta);
        }
        Status Le(ServerContext *contexto, const v1::PedidoDeDocumento *pedido,
                  grpc::ServerWriter<v1::PedacoDeDocumento> *pedacos) override
        {
            return Dono.LeDocumento(*contexto, *pedido, *pedacos);
        }
        ServidorFalso &Dono;
    };
    struct DeReplica : v1::Replica::Service {
        explicit DeReplica(ServidorFalso &dono) : Dono(dono) {}
        Status Le(ServerContext *contexto, const v1::PedidoDeReplica *pedido,
                  grpc::ServerWriter<v1::PedacoDeReplica> *pedacos) override
        {
            return Dono.LeReplica(*contexto, *pedido, *pedacos);
        }
        ServidorFalso &Dono;
    };
    struct DeConferencia : v1::Conferencia::Service {
        explicit DeConferencia(ServidorFalso &dono) : Dono(dono) {}
        Status Confere(ServerContext *contexto, const v1::PedidoDeConferencia *,
                       grpc::ServerWriter<v1::AndamentoDaConferencia> *noticias) override
        {
            return Dono.Confere(*contexto, *noticias);
        }
        Status Cabeca(ServerContext *contexto, const v1::Vazio *pedido, v1::CabecaDoHistorico *resposta) override
        {
            return Dono.Cabeca(*contexto, *pedido, *resposta);
        }
        ServidorFalso &Dono;
    };

    ServidorFalso &Dono;
    DeEntrada Entrada{Dono};
    DeEquipamentos Equipamentos{Dono};
    DeAdministracao Administracao{Dono};
    DeDocumentos Documentos{Dono};
    DeReplica Replica{Dono};
    DeConferencia Conferencia{Dono};
};

ServidorFalso::ServidorFalso(const std::string &certificado, const std::string &chave, int porta)
    : m_Servicos(std::make_unique<Servicos>(*this))
{
    Quem.set_contrato(1);
    Quem.set_contratominimo(1);
    Quem.set_registro("registro de teste");
    grpc::ServerBuilder construtor;
    construtor.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
    std::shared_ptr<grpc::ServerCredentials> credenciais = grpc::InsecureServerCredentials();
    if (!certificado.empty()) {
        grpc::SslServerCredentialsOptions opcoes;
        opcoes.pem_key_cert_pairs.push_back({chave, certificado});
        credenciais = grpc::SslServerCredentials(opcoes);
    }
    construtor.AddListeningPort("127.0.0.1:" + std::to_string(porta), credenciais, &m_Porta);
    construtor.RegisterService(&m_Servicos->Entrada);
    construtor.RegisterService(&m_Servicos->Equipamentos);
    construtor.RegisterService(&m_Servicos->Administracao);
    construtor.RegisterService(&m_Servicos->Documentos);
    construtor.RegisterService(&m_Servicos->Replica);
    construtor.RegisterService(&m_Servicos->Conferencia);
    m_Servidor = construtor.BuildAndStart();
    if (!m_Servidor) {
        throw std::runtime_error("the server of the test does not start");
    }
}

ServidorFalso::~ServidorFalso()
{
    Termina();
}

void ServidorFalso::Termina()
{
    if (m_Servidor) {
        m_Servidor->Shutdown(std::chrono::system_clock::now());
        m_Servidor->Wait();
        m_Servidor.reset();
    }
}

std::string ServidorFalso::Dado(const ServerContext &contexto, const std::string &nome)
{
    const auto achado = contexto.client_metadata().find(nome);
    return achado == contexto.client_metadata().end() ? "" : std::string(achado->second.data(), achado->second.size());
}

Status ServidorFalso::Fim(ServerContext &contexto, grpc::StatusCode como, const std::string &frase)
{
    contexto.AddTrailingMetadata("frase-bin", frase);
    return {como, "em outras palavras"};
}
