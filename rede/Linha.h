#pragma once

#include "rede/ServicosRemotos.h"
#include "services/Segue.h"

#include <google/protobuf/message.h>
#include <grpcpp/channel.h>
#include <grpcpp/client_context.h>
#include <grpcpp/completion_queue.h>
#include <grpcpp/support/status.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace rede {

// What goes with a call besides its message.
struct Cabecalho {
    std::string Sessao = {};                // token
    std::string Operacao = {};              // number of the act
    std::optional<std::string> Motivo = {}; // of a correction
};

// What a call does, and so whether it is made again by itself when it was not answered.
enum class Efeito {
    Nenhum,
    Muda,  // something in the registry, under its number
    Conta, // as one more try each time: only a person makes it again, unless it never went out
};

// What came of a call that the server, or nobody, answered. A failure of the server, and the end of the session, are
// Falhas instead.
struct Desfecho {
    enum class Modo {
        Feito,
        Recusado,    // nothing was changed
        Ocupado,     // nothing was changed, and it may be called again
        SemResposta, // whether it was done is not known, unless it never went out
        Cancelado,   // by the caller; as above
    };

    Modo Como = Modo::Feito;
    std::string Frase = {};
    std::optional<std::string> FaltaMotivo = {};
    bool Saiu = true; // it may have reached the server

    // How a call ended, by its status and what came with its end. Raises the Falhas.
    static Desfecho De(const grpc::Status &status, const grpc::ClientContext &contexto, bool cancelado);
};

// Waits for one thing at a time that is under way, in the thread of the caller, who is told of it and may give up.
class Fila {
  public:
    // segue: asked now and then; empty: nobody is.
    Fila(grpc::ClientContext *contexto, const mesa::Segue &segue) : m_Contexto(contexto), m_Segue(segue) {}
    Fila(const Fila &) = delete;
    Fila &operator=(const Fila &) = delete;
    ~Fila();

    grpc::CompletionQueue &Alvo() { return m_Alvo; }
    // Until what was begun with the mark `this` ends, however that may be; after the time, or when the caller gives up,
    // its call is cancelled, and what is of no call is not waited for any longer. Gives whether it went well. parte,
    // oQue: what is told meanwhile.
    bool Espera(std::chrono::milliseconds prazo, double parte = 0, const std::string &oQue = "Esperando o servidor");
    bool Cancelado() const { return m_Cancelado; } // by the caller

  private:
    grpc::CompletionQueue m_Alvo;
    grpc::ClientContext *m_Contexto;
    const mesa::Segue &m_Segue;
    bool m_Cancelado = false;
};

// The way to a server. Calls are waited for in the thread of the caller, and no other touches what is the caller's.
class Linha {
  public:
    Linha(const Endereco &endereco, const Confianca &confianca, Insistencia insistencia);

    // Another way to the same server, for another thread; a call on it is tried once, and nobody is asked.
    std::shared_ptr<Linha> Outra() const;

    const Endereco &Onde() const { return m_Endereco; }
    std::chrono::milliseconds PrazoDeCada() const { return m_Insistencia.Cada; }
    // For how long the answer to what was sent is waited for: as long as the server may work at it where somebody sees
    // the wait and can give it up, which ends as well when nobody is there any more; otherwise as long as a try lasts.
    std::chrono::milliseconds PrazoDe(const mesa::Segue &segue) const;
    // Insistencia::Relogio.
    void ContaRelogio(const Data &agora) const
    {
        if (m_Insistencia.Relogio && !agora.Vazia() && agora.NoCalendario()) {
            m_Insistencia.Relogio(agora);
        }
    }
    // Insistencia::EhOMesmo.
    std::optional<bool> EhOMesmo(const std::string &frase) const
    {
        return m_Insistencia.EhOMesmo ? m_Insistencia.EhOMesmo(frase) : true;
    }

    // One unary call, however often it takes: until it is answered, the caller gives up, or nobody is for trying on.
    // servico, metodo: by the contract's names; the messages are those of the contract for it, the question without
    // secrets afterwards.
    Desfecho Chama(const std::string &servico, const std::string &metodo, google::protobuf::Message &pedido,
                   google::protobuf::Message &resposta, const Cabecalho &cabecalho, Efeito efeito,
                   const mesa::Segue &segue);

    // Runs `tenta` with a channel until it is answered, as above.
    using Tentativa = std::function<Desfecho(const std::shared_ptr<grpc::Channel> &)>;
    Desfecho Insiste(const Tentativa &tenta, Efeito efeito, const mesa::Segue &segue);

    // One call that is not made again, and for which nobody is asked; none when there is no connection.
    Desfecho ChamaUmaVez(const std::string &servico, const std::string &metodo, google::protobuf::Message &pedido,
                         google::protobuf::Message &resposta, const Cabecalho &cabecalho,
                         std::chrono::milliseconds prazo);

  private:
    bool TemCanal() const;
    // The channel to the server that is trusted, a new one after a cut. SemServidor; Falha when it is another server.
    std::shared_ptr<grpc::Channel> Canal(const mesa::Segue &segue);
    Desfecho TentaUmaVez(const Tentativa &tenta, const mesa::Segue &segue);
    // saiu: whether a try that was not answered may have reached the server.
    Desfecho Insiste(const Tentativa &tenta, Efeito efeito, const mesa::Segue &segue, bool &saiu);

    Endereco m_Endereco;
    Confianca m_Confianca;
    Insistencia m_Insistencia;
    std::shared_ptr<grpc::Channel> m_Canal;
};

// Puts the metadata into the call. Falha when the token is none.
void PoeCabecalho(grpc::ClientContext &contexto, const Cabecalho &cabecalho);

} // namespace rede
