#pragma once

#include "server/Atendente.h"

#include <grpcpp/impl/rpc_service_method.h>
#include <grpcpp/impl/service_type.h>
#include <grpcpp/support/method_handler.h>
#include <grpcpp/support/proto_buffer_reader.h>
#include <registro.grpc.pb.h>

#include <cstddef>
#include <functional>

// The services of the contract, each operation led to where all of them are led through.
namespace servidor::servicos {

namespace v1 = registro::v1;
using Contexto = grpc::ServerContext;
using grpc::Status;

template <class Mensagem> std::function<bool(const Mensagem &)> Escreve(grpc::ServerWriter<Mensagem> &onde)
{
    return [&onde](const Mensagem &mensagem) { return onde.Write(mensagem); };
}

class EquiptoRN final : public v1::EquiptoRN::Service {
  public:
    explicit EquiptoRN(Atendente &atendente) : m_Atendente(atendente) {}

    Status consulta(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "consulta", *pedido, *resposta);
    }
    Status consultaSimples(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "consultaSimples", *pedido, *resposta);
    }
    Status inclui(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "inclui", *pedido, *resposta);
    }
    Status altera(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "altera", *pedido, *resposta);
    }
    Status desativa(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "desativa", *pedido, *resposta);
    }
    Status reativa(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "reativa", *pedido, *resposta);
    }
    Status lista2(Contexto *contexto, const v1::ListaEquiptoED *pedido, v1::ListaEquiptoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "lista2", *pedido, *resposta);
    }
    Status consultaSimplesAfericaoVigente(Contexto *contexto, const v1::ConsultaAfericaoED *pedido,
                                          v1::AfericaoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "consultaSimplesAfericaoVigente", *pedido,
                                    *resposta);
    }
    Status listaLimiteDif(Contexto *contexto, const v1::LimiteDifED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "listaLimiteDif", *pedido, *resposta);
    }
    Status listaDiaEspecifico(Contexto *contexto, const v1::DiaEspecificoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "listaDiaEspecifico", *pedido, *resposta);
    }
    Status consultaSimplesLimiteDif(Contexto *contexto, const v1::LimiteDifED *pedido,
                                    v1::LimiteDifED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "consultaSimplesLimiteDif", *pedido, *resposta);
    }
    Status consultaSimplesDiaEspecifico(Contexto *contexto, const v1::DiaEspecificoED *pedido,
                                        v1::DiaEspecificoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "EquiptoRN", "consultaSimplesDiaEspecifico", *pedido,
                                    *resposta);
    }
    Status alteraListaLimitesDif(Contexto *contexto, const v1::EquiptoED *pedido, v1::EquiptoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "alteraListaLimitesDif", *pedido, *resposta);
    }
    Status adicionaDiaEspecifico(Contexto *contexto, const v1::DiaEspecificoED *pedido,
                                 v1::DiaEspecificoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "adicionaDiaEspecifico", *pedido, *resposta);
    }
    Status alteraDiaEspecifico(Contexto *contexto, const v1::DiaEspecificoED *pedido,
                               v1::DiaEspecificoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "alteraDiaEspecifico", *pedido, *resposta);
    }
    Status desativaLimiteDif(Contexto *contexto, const v1::LimiteDifED *pedido, v1::LimiteDifED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "desativaLimiteDif", *pedido, *resposta);
    }
    Status desativaDiaEspecifico(Contexto *contexto, const v1::DiaEspecificoED *pedido,
                                 v1::DiaEspecificoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "EquiptoRN", "desativaDiaEspecifico", *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

class RelatorioRN final : public v1::RelatorioRN::Service {
  public:
    explicit RelatorioRN(Atendente &atendente) : m_Atendente(atendente) {}

    Status consultaRelatorioRVOR011(Contexto *contexto, const v1::RelatorioAfericaoED *pedido,
                                    v1::RelatorioAfericaoED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "RelatorioRN", "consultaRelatorioRVOR011", *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

class PrazosRN final : public v1::PrazosRN::Service {
  public:
    explicit PrazosRN(Atendente &atendente) : m_Atendente(atendente) {}

    Status consultaPainel(Contexto *contexto, const v1::PainelPrazosED *pedido, v1::PainelPrazosED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "PrazosRN", "consultaPainel", *pedido, *resposta);
    }
    Status listaPrazos(Contexto *contexto, const v1::ListaPrazosED *pedido, v1::ListaPrazosED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "PrazosRN", "listaPrazos", *pedido, *resposta);
    }
    Status confereDocumentos(Contexto *contexto, const v1::DocumentosPrazosED *pedido,
                             v1::DocumentosPrazosED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "PrazosRN", "confereDocumentos", *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

class AdministracaoRN final : public v1::AdministracaoRN::Service {
  public:
    explicit AdministracaoRN(Atendente &atendente) : m_Atendente(atendente) {}

    Status listaUsuarios(Contexto *contexto, const v1::ListaUsuariosED *pedido, v1::ListaUsuariosED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "listaUsuarios", *pedido, *resposta);
    }
    Status consultaUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "consultaUsuario", *pedido, *resposta);
    }
    Status incluiUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "incluiUsuario", *pedido, *resposta);
    }
    Status alteraUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "alteraUsuario", *pedido, *resposta);
    }
    Status desativaUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "desativaUsuario", *pedido, *resposta);
    }
    Status reativaUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "reativaUsuario", *pedido, *resposta);
    }
    Status desbloqueiaUsuario(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "desbloqueiaUsuario", *pedido, *resposta);
    }
    Status defineSenha(Contexto *contexto, const v1::UsuarioED *pedido, v1::UsuarioED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "defineSenha", *pedido, *resposta);
    }
    Status trocaMinhaSenha(Contexto *contexto, const v1::TrocaSenhaED *pedido, v1::Vazio *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "trocaMinhaSenha", *pedido, *resposta);
    }
    Status listaEntradasRecusadas(Contexto *contexto, const v1::ListaEntradasED *pedido,
                                  v1::ListaEntradasED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "listaEntradasRecusadas", *pedido,
                                    *resposta);
    }
    Status listaClientes(Contexto *contexto, const v1::ListaClientesED *pedido, v1::ListaClientesED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "listaClientes", *pedido, *resposta);
    }
    Status incluiCliente(Contexto *contexto, const v1::ClienteED *pedido, v1::ClienteED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "incluiCliente", *pedido, *resposta);
    }
    Status alteraCliente(Contexto *contexto, const v1::ClienteED *pedido, v1::ClienteED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "alteraCliente", *pedido, *resposta);
    }
    Status listaLogradouros(Contexto *contexto, const v1::ListaLogradourosED *pedido,
                            v1::ListaLogradourosED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "listaLogradouros", *pedido, *resposta);
    }
    Status incluiLogradouro(Contexto *contexto, const v1::LogradouroED *pedido, v1::LogradouroED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "incluiLogradouro", *pedido, *resposta);
    }
    Status alteraLogradouro(Contexto *contexto, const v1::LogradouroED *pedido, v1::LogradouroED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "alteraLogradouro", *pedido, *resposta);
    }
    Status importaLogradouros(Contexto *contexto, const v1::ImportacaoED *pedido, v1::ImportacaoED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "importaLogradouros", *pedido, *resposta);
    }
    Status listaLayouts(Contexto *contexto, const v1::ListaLayoutsED *pedido, v1::ListaLayoutsED *resposta) override
    {
        return m_Atendente.Consulta(Chamada(*contexto), "AdministracaoRN", "listaLayouts", *pedido, *resposta);
    }
    Status incluiLayout(Contexto *contexto, const v1::LayoutED *pedido, v1::LayoutED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "incluiLayout", *pedido, *resposta);
    }
    Status alteraLayout(Contexto *contexto, const v1::LayoutED *pedido, v1::LayoutED *resposta) override
    {
        return m_Atendente.Grava(Chamada(*contexto), "AdministracaoRN", "alteraLayout", *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

// Whoever calls it may be a stranger: its messages are parsed only when they are as small as they all are.
class Entrada final : public grpc::Service {
  public:
    explicit Entrada(Atendente &atendente) : m_Atendente(atendente)
    {
        Poe<v1::Apresentacao, v1::Servidor>("/registro.v1.Entrada/Apresenta",
                                            [&atendente](const Chamada &chamada, auto &pedido, auto &resposta) {
                                                return atendente.Apresenta(chamada, pedido, resposta);
                                            });
        Poe<v1::PedidoDeEntrada, v1::Sessao>("/registro.v1.Entrada/Entra",
                                             [&atendente](const Chamada &chamada, auto &pedido, auto &resposta) {
                                                 return atendente.Entra(chamada, pedido, resposta);
                                             });
        Poe<v1::Vazio, v1::Vazio>("/registro.v1.Entrada/Sai", [&atendente](const Chamada &chamada, auto &, auto &) {
            return atendente.Sai(chamada);
        });
        Poe<v1::Permissao, v1::SimOuNao>("/registro.v1.Entrada/TemPermissao",
                                         [&atendente](const Chamada &chamada, auto &pedido, auto &resposta) {
                                             return atendente.TemPermissao(chamada, pedido, resposta);
                                         });
        Poe<v1::Vazio, v1::SituacaoDaSessao>("/registro.v1.Entrada/Situacao",
                                             [&atendente](const Chamada &chamada, auto &, auto &resposta) {
                                                 return atendente.Situacao(chamada, resposta);
                                             });
    }

  private:
    static constexpr std::size_t MaiorMensagem = 16384; // octets

    template <class Pedido, class Resposta, class Faz> void Poe(const char *caminho, Faz faz)
    {
        const std::string operacao = std::string(caminho).substr(std::string("/registro.v1.").size());
        using Tratador = grpc::internal::RpcMethodHandler<Entrada, grpc::ByteBuffer, Resposta, grpc::ByteBuffer,
                                                          google::protobuf::MessageLite>;
        AddMethod(new grpc::internal::RpcServiceMethod(
            caminho, grpc::internal::RpcMethod::NORMAL_RPC,
            new Tratador(
                [faz, operacao](Entrada *eu, Contexto *contexto, const grpc::ByteBuffer *octetos,
                                Resposta *resposta) -> Status {
                    Pedido pedido;
                    grpc::ByteBuffer lidos(*octetos);
                    grpc::ProtoBufferReader leitor(&lidos);
                    if (octetos->Length() > MaiorMensagem || !leitor.status().ok() ||
                        !pedido.ParseFromZeroCopyStream(&leitor)) {
                        return eu->m_Atendente.RecusaMensagem(Chamada(*contexto), operacao, octetos->Length());
                    }
                    return faz(Chamada(*contexto), pedido, *resposta);
                },
                this)));
    }

    Atendente &m_Atendente;
};

class Documentos final : public v1::Documentos::Service {
  public:
    explicit Documentos(Atendente &atendente) : m_Atendente(atendente) {}

    Status Guarda(Contexto *contexto, grpc::ServerReader<v1::PedacoDeDocumento> *pedacos,
                  v1::NumeroDeDocumento *resposta) override
    {
        return m_Atendente.GuardaDocumento(
            Chamada(*contexto), [&](v1::PedacoDeDocumento &pedaco) { return pedacos->Read(&pedaco); }, *resposta);
    }
    Status Le(Contexto *contexto, const v1::PedidoDeDocumento *pedido,
              grpc::ServerWriter<v1::PedacoDeDocumento> *pedacos) override
    {
        return m_Atendente.LeDocumento(Chamada(*contexto), *pedido, Escreve(*pedacos));
    }
    Status Afericoes(Contexto *contexto, const v1::DocumentoOuAfericao *pedido,
                     v1::AfericoesComDocumento *resposta) override
    {
        return m_Atendente.AfericoesDoDocumento(Chamada(*contexto), *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

class Historia final : public v1::Historia::Service {
  public:
    explicit Historia(Atendente &atendente) : m_Atendente(atendente) {}

    Status VersoesDaAfericao(Contexto *contexto, const v1::PedidoDeVersoes *pedido,
                             v1::VersoesDaAfericaoED *resposta) override
    {
        return m_Atendente.VersoesDaAfericao(Chamada(*contexto), *pedido, *resposta);
    }
    Status ComoConhecido(Contexto *contexto, const v1::PedidoDeConhecido *pedido,
                         v1::EquipamentoConhecido *resposta) override
    {
        return m_Atendente.ComoConhecido(Chamada(*contexto), *pedido, *resposta);
    }

  private:
    Atendente &m_Atendente;
};

class Replica final : public v1::Replica::Service {
  public:
    explicit Replica(Atendente &atendente) : m_Atendente(atendente) {}

    Status Clientes(Contexto *contexto, const v1::Vazio *, v1::ClientesDoOperador *resposta) override
    {
        return m_Atendente.Clientes(Chamada(*contexto), *resposta);
    }
    Status Le(Contexto *contexto, const v1::PedidoDeReplica *pedido,
              grpc::ServerWriter<v1::PedacoDeReplica> *pedacos) override
    {
        return m_Atendente.LeReplica(Chamada(*contexto), *pedido, Escreve(*pedacos));
    }

  private:
    Atendente &m_Atendente;
};

class Conferencia final : public v1::Conferencia::Service {
  public:
    explicit Conferencia(Atendente &atendente) : m_Atendente(atendente) {}

    Status Confere(Contexto *contexto, const v1::PedidoDeConferencia *pedido,
                   grpc::ServerWriter<v1::AndamentoDaConferencia> *noticias) override
    {
        return m_Atendente.Confere(Chamada(*contexto), *pedido, Escreve(*noticias));
    }
    Status Cabeca(Contexto *contexto, const v1::Vazio *, v1::CabecaDoHistorico *resposta) override
    {
        return m_Atendente.Cabeca(Chamada(*contexto), *resposta);
    }

  private:
    Atendente &m_Atendente;
};

} // namespace servidor::servicos
