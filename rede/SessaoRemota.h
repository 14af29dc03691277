#pragma once

#include "rede/Linha.h"
#include "rede/SessaoDeServidor.h"
#include "services/SessaoServico.h"

#include <registro.pb.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

namespace rede {

// Numbers of acts of which nobody knows whether they were done: whoever asks for the same again asks with the same
// number. What was asked for is kept as a hash that is of use in this program alone.
class NumerosEmAberto {
  public:
    using Relogio = std::function<std::chrono::steady_clock::time_point()>;
    struct Ato {
        std::string Numero;
        std::optional<std::string> Motivo = {}; // the reason that was given for a correction
    };

    explicit NumerosEmAberto(Relogio agora = std::chrono::steady_clock::now);

    // What one user asks for.
    std::string Chave(std::int32_t usuario, const std::string &operacao, const std::string &pedido) const;
    // As what it is asked for of a service: the act that is open, or a new one, which is open from now on.
    Ato &Abre(const std::string &servico, const std::string &chave);
    void Fecha(const std::string &chave) { m_Abertos.erase(chave); }
    // Something of the service was done: what is open was asked for by somebody who had not seen that.
    void Passou(const std::string &servico);
    // Whether one is open of which it is doubtful that who asks now has the same act in mind.
    bool Duvidoso(const std::string &chave) const;

  private:
    struct Aberto {
        Ato Qual;
        std::string Servico;
        std::chrono::steady_clock::time_point Desde;
        bool Passado = false;
    };
    Relogio m_Agora;
    std::string m_Segredo;
    std::map<std::string, Aberto> m_Abertos;
};

// A session with the services behind a network.
class SessaoRemota : public SessaoDeServidor {
  public:
    SessaoRemota(std::shared_ptr<Linha> linha, std::shared_ptr<NumerosEmAberto> numeros,
                 const registro::v1::Sessao &sessao);
    // Signs out, without waiting long for it.
    ~SessaoRemota() override;

    const mesa::Operador &Operador() const override { return m_Operador; }
    bool DeveTrocarSenha() override;
    std::string AvisoDeRelogio() const override { return m_AvisoDeRelogio; }
    // The server's answer is believed for a short while, or until something is changed here.
    bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) override;
    bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                 std::string &recusa) override;
    void PerguntaMotivo(mesa::PerguntaDeMotivo pergunta) override { m_Pergunta = std::move(pergunta); }
    void Acompanha(mesa::Segue segue) override { m_Segue = std::move(segue); }
    bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) override;
    bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) override;
    std::vector<mesa::AfericaoComDocumento> AfericoesDoDocumento(double numero) override;
    std::vector<mesa::AfericaoComDocumento> AfericoesDoDocumentoDa(double nroIntAfericao) override;
    bool VersoesDaAfericao(double nroIntAfericao, std::vector<mesa::VersaoAfericao> &versoes,
                           std::string &recusa) override;
    bool ComoConhecido(std::int32_t nroIntEquip, const mesa::Instante &quando, mesa::EquipamentoConhecido &conhecido,
                       std::string &recusa) override;
    std::vector<mesa::ClienteCadastrado> Clientes() override;
    mesa::Replicado LeReplica(std::int64_t depoisDe,
                              const std::function<void(const mesa::LinhaReplica &)> &cadaLinha) override;
    Conferencia PreparaConferencia(const std::optional<mesa::CabecaAssinada> &desde) override;
    mesa::CabecaAssinada Cabeca() override;

  private:
    // A call that changes nothing: false with the reason when it was refused. onde: the procedure, for a failure.
    bool Pergunta(const char *onde, const std::string &servico, const std::string &metodo,
                  google::protobuf::Message &pedido, google::protobuf::Message &resposta, std::string &recusa);
    // One act of a service with its number: `chama` calls with the metadata that it is given. False with the reason;
    // what is not known is a Falha.
    bool Muda(const char *onde, const std::string &servico, const std::string &chave, std::string &recusa,
              const std::function<Desfecho(const Cabecalho &)> &chama);
    // The reason for a correction, of whoever is asked; nothing with the refusal.
    std::optional<std::string> MotivoPara(const Desfecho &falta, std::string &recusa) const;
    // False with the reason in recusa when it was refused or given up; a Falha when it was not answered.
    bool Conclui(const char *onde, const Desfecho &desfecho, bool muda, std::string &recusa) const;
    std::vector<mesa::AfericaoComDocumento> AfericoesCom(const char *onde, registro::v1::DocumentoOuAfericao pedido);

    Desfecho Envia(const std::shared_ptr<grpc::Channel> &canal, const Cabecalho &cabecalho, const Bytes &bytes,
                   const std::string &soma, double &numero);
    // What arrived of a document, over as many calls as it took.
    struct Recebido {
        Bytes Octetos;
        std::int64_t Tamanho = 0;
        std::string Sha256;
    };
    Desfecho Recebe(const std::shared_ptr<grpc::Channel> &canal, double numero, Recebido &recebido);
    Desfecho RecebeReplica(const std::shared_ptr<grpc::Channel> &canal, std::int64_t depoisDe,
                           std::vector<mesa::LinhaReplica> &linhas, mesa::Replicado &replicado);

    std::shared_ptr<Linha> m_Linha;
    std::shared_ptr<NumerosEmAberto> m_Numeros;
    std::string m_Chave;
    mesa::Operador m_Operador;
    std::string m_AvisoDeRelogio;
    mesa::PerguntaDeMotivo m_Pergunta;
    mesa::Segue m_Segue;

    struct Permitido {
        bool Sim;
        std::chrono::steady_clock::time_point Ate;
    };
    std::map<std::tuple<std::string, std::string, std::string>, Permitido> m_Permitidos;
};

} // namespace rede
