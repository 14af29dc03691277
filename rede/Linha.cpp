#include "rede/Linha.h"

#include "rede/Certificado.h"
#include "rede/Mensagens.h"

#include <google/protobuf/descriptor.h>
#include <grpcpp/alarm.h>
#include <grpcpp/create_channel.h>
#include <grpcpp/generic/generic_stub.h>
#include <grpcpp/security/credentials.h>
#include <grpcpp/support/proto_buffer_reader.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <new>
#include <utility>

namespace rede {

namespace {

using google::protobuf::Message;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds Olhada{50}; // how often the caller is asked whether to go on
constexpr milliseconds PrimeiraPausa{20};
constexpr milliseconds MaiorPausa{2000};
constexpr std::chrono::hours MaiorEspera{1}; // the longest that a server lets an operation take
constexpr milliseconds MenorSinal{1000};     // a server takes no more signs of life than that
constexpr milliseconds MaiorSinal{20000};
constexpr int MaiorResposta = 65 << 20; // octets; more than a server sends, or takes, in one message
constexpr const char *NaoSeSabe =
    "Não se sabe se foi gravado: confirme de novo com os mesmos dados, e nada é gravado duas vezes.";

gpr_timespec Daqui(milliseconds quanto)
{
    return gpr_time_add(gpr_now(GPR_CLOCK_MONOTONIC), gpr_time_from_millis(quanto.count(), GPR_TIMESPAN));
}

// What came with the end of a call under that name; nothing when it did not.
std::optional<std::string> DoFim(const grpc::ClientContext &contexto, const char *nome)
{
    const auto &fim = contexto.GetServerTrailingMetadata();
    const auto achado = fim.find(nome);
    if (achado == fim.end()) {
        return std::nullopt;
    }
    return std::string(achado->second.data(), achado->second.size());
}

// A sentence that came with the end of a call; empty when there is none, or it is no text.
std::string FraseDoFim(const grpc::ClientContext &contexto)
{
    const auto frase = DoFim(contexto, "frase-bin");
    return frase && EhTexto(*frase) ? *frase : "";
}

// The octets of a message, which are wiped when nobody needs them any more.
grpc::ByteBuffer Octetos(const Message &mensagem)
{
    const std::size_t tamanho = mensagem.ByteSizeLong();
    void *onde = ::operator new(std::max<std::size_t>(tamanho, 1));
    mensagem.SerializeWithCachedSizesToArray(static_cast<std::uint8_t *>(onde));
    const grpc::Slice pedaco(onde, tamanho, [](void *octetos, std::size_t quantos) {
        mesa::LimpaMemoria(octetos, quantos);
        ::operator delete(octetos);
    });
    return {&pedaco, 1};
}

Desfecho TentaChamada(const std::shared_ptr<grpc::Channel> &canal, const std::string &metodo, const Message &pedido,
                      Message &resposta, const Cabecalho &cabecalho, milliseconds prazo, const mesa::Segue &segue)
{
    grpc::ClientContext contexto;
    PoeCabecalho(contexto, cabecalho);
    contexto.set_deadline(Daqui(prazo));
    grpc::GenericStub chamador(canal);
    grpc::ByteBuffer octetos;
    grpc::Status status;
    Fila fila(&contexto, segue);
    const auto chamada = chamador.PrepareUnaryCall(&contexto, metodo, Octetos(pedido), &fila.Alvo());
    chamada->StartCall();
    chamada->Finish(&octetos, &status, &fila);
    fila.Espera(prazo + milliseconds(1000)); // the call has its own, and ends a little later
    if (status.ok()) {
        grpc::ProtoBufferReader leitor(&octetos);
        if (!leitor.status().ok() || !resposta.ParseFromZeroCopyStream(&leitor)) {
            throw Falha(NumeroFalha::ErroInterno, "Rede",
                        "O servidor respondeu o que este programa não entende. Confira as versões dos dois.");
        }
    }
    return Desfecho::De(status, contexto, fila.Cancelado());
}

std::string Maiusculas(std::string texto)
{
    std::ranges::transform(texto, texto.begin(),
                           [](char letra) { return letra >= 'a' && letra <= 'z' ? char(letra - 32) : letra; });
    return texto;
}

std::string CaminhoDe(const std::string &servico, const std::string &metodo)
{
    return "/" + registro::v1::Vazio::descriptor()->file()->package() + "." + servico + "/" + metodo;
}

} // namespace

void PoeCabecalho(grpc::ClientContext &contexto, const Cabecalho &cabecalho)
{
    // What is not plain in there would end the program.
    if (std::ranges::any_of(cabecalho.Sessao, [](char letra) { return letra <= ' ' || letra > '~'; })) {
        throw Falha(NumeroFalha::ErroInterno, "Rede", "O servidor deu à sessão uma chave que não serve.");
    }
    if (!cabecalho.Sessao.empty()) {
        contexto.AddMetadata("sessao", cabecalho.Sessao);
    }
    if (!cabecalho.Operacao.empty()) {
        contexto.AddMetadata("operacao", cabecalho.Operacao);
    }
    if (cabecalho.Motivo) {
        contexto.AddMetadata("motivo-bin", *cabecalho.Motivo);
    }
}

Desfecho Desfecho::De(const grpc::Status &status, const grpc::ClientContext &contexto, bool cancelado)
{
    std::string frase = FraseDoFim(contexto);
    const auto falha = DoFim(contexto, "falha-bin");
    const auto ou = [&](const char *outra) { return frase.empty() ? std::string(outra) : frase; };
    switch (status.error_code()) {
    case grpc::StatusCode::OK:
        return {};
    case grpc::StatusCode::FAILED_PRECONDITION:
    case grpc::StatusCode::INVALID_ARGUMENT:
    case grpc::StatusCode::PERMISSION_DENIED: {
        Desfecho desfecho{Modo::Recusado, ou("O servidor recusou a operação, sem dizer por quê.")};
        const auto falta = DoFim(contexto, "falta-motivo-bin");
        if (falta && EhTexto(*falta)) {
            desfecho.FaltaMotivo = falta;
        }
        return desfecho;
    }
    case grpc::StatusCode::UNIMPLEMENTED:
        return {Modo::Recusado, ou("O servidor não tem essa operação: a versão dele é outra.")};
    case grpc::StatusCode::UNAUTHENTICATED:
        throw SessaoEncerrada(ou("A sessão com o servidor terminou."));
    case grpc::StatusCode::RESOURCE_EXHAUSTED:
        // Told by the machinery itself, on either side.
        if (frase.empty() && status.error_message().find("larger than max") != std::string::npos) {
            // By the limit one knows whose it is: an answer that is too large says nothing of what was done.
            if (status.error_message().find(" " + std::to_string(MaiorResposta) + ")") != std::string::npos) {
                throw Falha(NumeroFalha::ErroInterno, "Rede",
                            "O servidor respondeu mais do que este programa aceita de uma vez. Se era para gravar, "
                            "confira se foi gravado.");
            }
            return {Modo::Recusado, "O que se pediu é maior do que o servidor aceita de uma vez. Nada foi gravado."};
        }
        return {Modo::Ocupado, ou("O servidor está ocupado.")};
    case grpc::StatusCode::INTERNAL:
    case grpc::StatusCode::UNKNOWN:
        // Without a word of the server's it is the connection that broke.
        if (falha) {
            registro::v1::Falha contada;
            if (contada.ParseFromString(*falha)) {
                throw DeMensagem(contada);
            }
        }
        if (!frase.empty()) {
            throw Falha(NumeroFalha::ErroInterno, "Rede", frase);
        }
        [[fallthrough]];
    case grpc::StatusCode::UNAVAILABLE:
    case grpc::StatusCode::DEADLINE_EXCEEDED:
    case grpc::StatusCode::CANCELLED:
    case grpc::StatusCode::ABORTED:
        if (cancelado) {
            return {Modo::Cancelado};
        }
        return {Modo::SemResposta,
                ou(status.error_code() == grpc::StatusCode::DEADLINE_EXCEEDED ? "não respondeu a tempo"
                                                                              : "a conexão caiu")};
    default:
        throw Falha(NumeroFalha::ErroInterno, "Rede",
                    ou("O servidor terminou a operação de um modo que este programa não conhece."));
    }
}

Fila::~Fila()
{
    m_Alvo.Shutdown();
    void *marca = nullptr;
    bool bem = false;
    while (m_Alvo.Next(&marca, &bem)) {
    }
}

bool Fila::Espera(milliseconds prazo, double parte, const std::string &oQue)
{
    const auto fim = steady_clock::now() + prazo;
    bool desistiu = false;
    for (;;) {
        void *marca = nullptr;
        bool bem = false;
        if (m_Alvo.AsyncNext(&marca, &bem, Daqui(Olhada)) == grpc::CompletionQueue::GOT_EVENT) {
            return bem;
        }
        if (desistiu) {
            continue; // it was cancelled, and ends by itself
        }
        m_Cancelado = m_Segue && !m_Segue(parte, oQue);
        desistiu = m_Cancelado || steady_clock::now() >= fim;
        if (desistiu && m_Contexto == nullptr) {
            return false;
        }
        if (desistiu) {
            m_Contexto->TryCancel();
        }
    }
}

Linha::Linha(const Endereco &endereco, const Confianca &confianca, Insistencia insistencia)
    : m_Endereco(endereco),
      m_Confianca(confianca),
      m_Insistencia(std::move(insistencia))
{
}

std::shared_ptr<Linha> Linha::Outra() const
{
    return std::make_shared<Linha>(m_Endereco, m_Confianca, Insistencia{milliseconds(0), m_Insistencia.Cada, {}});
}

milliseconds Linha::PrazoDe(const mesa::Segue &segue) const
{
    return segue ? milliseconds(MaiorEspera) : m_Insistencia.Cada;
}

bool Linha::TemCanal() const
{
    return m_Canal && m_Canal->GetState(false) != GRPC_CHANNEL_TRANSIENT_FAILURE;
}

std::shared_ptr<grpc::Channel> Linha::Canal(const mesa::Segue &segue)
{
    if (TemCanal()) {
        return m_Canal;
    }
    m_Canal.reset();
    grpc::ChannelArguments argumentos;
    argumentos.SetMaxReceiveMessageSize(MaiorResposta);
    // Each channel is of its own: what went before leaves no waiting behind. And the way is the straight one, on which
    // the certificate was looked at.
    argumentos.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    argumentos.SetInt(GRPC_ARG_ENABLE_HTTP_PROXY, 0);
    // Who waits is not told for long that the server is at work when nobody is there any more.
    const auto sinal = static_cast<int>(std::clamp(m_Insistencia.Cada, MenorSinal, MaiorSinal).count());
    argumentos.SetInt(GRPC_ARG_KEEPALIVE_TIME_MS, sinal);
    argumentos.SetInt(GRPC_ARG_KEEPALIVE_TIMEOUT_MS, sinal);
    argumentos.SetInt(GRPC_ARG_HTTP2_MAX_PINGS_WITHOUT_DATA, 0);
    // What the server has sent is then here, but for 64 kB, and not in a long queue before a slow line.
    argumentos.SetInt(GRPC_ARG_HTTP2_BDP_PROBE, 0);
    if (m_Confianca.Digital.empty() && m_Confianca.Autoridade.empty()) {
        if (!m_Endereco.DestaMaquina()) {
            throw Falha(NumeroFalha::PermissaoNegada, "Rede",
                        "Não se sabe por que certificado reconhecer o servidor " + m_Endereco.Texto() + ".");
        }
        m_Canal = grpc::CreateCustomChannel(m_Endereco.Texto(), grpc::InsecureChannelCredentials(), argumentos);
        return m_Canal;
    }
    const Certificado certificado = Certificado::De(
        m_Endereco, m_Confianca.Digital.empty() ? m_Confianca.Autoridade : "", m_Insistencia.Cada, segue);
    if (!m_Confianca.Digital.empty() && certificado.Digital != Maiusculas(m_Confianca.Digital)) {
        throw Falha(NumeroFalha::PermissaoNegada, "Rede",
                    "O servidor " + m_Endereco.Texto() +
                        " não é mais o mesmo: o certificado que ele mostra é outro. Nada foi enviado. Confirme com "
                        "quem cuida do servidor antes de confiar nele de novo. A digital agora é " +
                        certificado.Digital + ".");
    }
    if (!certificado.Defeito.empty()) {
        throw Falha(NumeroFalha::PermissaoNegada, "Rede",
                    "O servidor " + m_Endereco.Texto() + " não serve: " + certificado.Defeito + ". Nada foi enviado.");
    }
    grpc::SslCredentialsOptions credenciais;
    if (!m_Confianca.Digital.empty()) {
        credenciais.pem_root_certs = certificado.Pem;
        argumentos.SetSslTargetNameOverride(certificado.Nome);
    } else {
        std::ifstream arquivo(m_Confianca.Autoridade, std::ios::binary);
        credenciais.pem_root_certs = {std::istreambuf_iterator<char>(arquivo), std::istreambuf_iterator<char>()};
        argumentos.SetSslTargetNameOverride(m_Endereco.Maquina);
    }
    // To the machine that answered, of all that may have the name.
    m_Canal = grpc::CreateCustomChannel(certificado.Onde.Texto(), grpc::SslCredentials(credenciais), argumentos);
    return m_Canal;
}

Desfecho Linha::TentaUmaVez(const Tentativa &tenta, const mesa::Segue &segue)
{
    std::shared_ptr<grpc::Channel> canal;
    try {
        canal = Canal(segue);
    } catch (const EsperaDesistida &) {
        return {Desfecho::Modo::Cancelado, "", std::nullopt, false};
    } catch (const SemServidor &porque) {
        return {Desfecho::Modo::SemResposta, porque.what(), std::nullopt, false};
    }
    Desfecho desfecho = tenta(canal);
    if (desfecho.Como == Desfecho::Modo::SemResposta) {
        m_Canal.reset(); // the next one begins by looking at who is there
    }
    return desfecho;
}

Desfecho Linha::Insiste(const Tentativa &tenta, Efeito efeito, const mesa::Segue &segue)
{
    bool saiu = false;
    try {
        return Insiste(tenta, efeito, segue, saiu);
    } catch (const SessaoEncerrada &fim) {
        if (efeito != Efeito::Muda || !saiu) {
            throw;
        }
        throw SessaoEncerrada(fim.Descricao + " " + NaoSeSabe);
    } catch (const Falha &falha) {
        if (efeito != Efeito::Muda || !saiu) {
            throw;
        }
        throw Falha(falha.Numero, falha.Fonte, falha.Descricao + " " + NaoSeSabe);
    }
}

Desfecho Linha::Insiste(const Tentativa &tenta, Efeito efeito, const mesa::Segue &segue, bool &saiu)
{
    for (;;) {
        const auto fim = steady_clock::now() + m_Insistencia.PorConta;
        milliseconds pausa = PrimeiraPausa;
        Desfecho desfecho;
        for (;;) {
            desfecho = TentaUmaVez(tenta, segue);
            const bool semResposta = desfecho.Como == Desfecho::Modo::SemResposta;
            if (!semResposta && desfecho.Como != Desfecho::Modo::Ocupado) {
                desfecho.Saiu = saiu || desfecho.Saiu;
                return desfecho;
            }
            saiu = saiu || (semResposta && desfecho.Saiu);
            if (steady_clock::now() + pausa >= fim || (saiu && efeito == Efeito::Conta)) {
                break;
            }
            grpc::Alarm despertador;
            Fila fila(nullptr, segue);
            despertador.Set(&fila.Alvo(), Daqui(pausa), &fila);
            if (!fila.Espera(2 * MaiorPausa)) {
                despertador.Cancel();
                return {Desfecho::Modo::Cancelado, "", std::nullopt, saiu};
            }
            pausa = std::min(2 * pausa, MaiorPausa);
        }
        desfecho.Saiu = saiu;
        const bool ocupado = desfecho.Como == Desfecho::Modo::Ocupado && !saiu;
        const std::string frase = ocupado ? desfecho.Frase
                                  : desfecho.Como == Desfecho::Modo::Ocupado
                                      ? "O servidor " + m_Endereco.Texto() + " está ocupado."
                                      : "O servidor " + m_Endereco.Texto() + " não respondeu: " + desfecho.Frase +
                                            (desfecho.Frase.ends_with('.') ? "" : ".");
        const std::string fecho = efeito != Efeito::Muda ? "Tente de novo daqui a pouco."
                                  : saiu                 ? NaoSeSabe
                                                         : "Nada foi gravado.";
        desfecho.Frase = frase.ends_with(fecho) ? frase : frase + " " + fecho;
        if (!m_Insistencia.TentaDeNovo || !m_Insistencia.TentaDeNovo(desfecho.Frase)) {
            return desfecho;
        }
    }
}

Desfecho Linha::Chama(const std::string &servico, const std::string &metodo, Message &pedido, Message &resposta,
                      const Cabecalho &cabecalho, Efeito efeito, const mesa::Segue &segue)
{
    struct AoFim {
        Message &Pedido;
        ~AoFim() { LimpaSegredos(Pedido); }
    } const aoFim{pedido};
    ConfereMensagem(pedido);
    const auto chama = [&](const mesa::Segue &quem) {
        return Insiste(
            [&](const std::shared_ptr<grpc::Channel> &canal) {
                return TentaChamada(canal, CaminhoDe(servico, metodo), pedido, resposta, cabecalho, PrazoDe(quem),
                                    quem);
            },
            efeito, quem);
    };
    if (segue || !m_Insistencia.Espera) {
        return chama(segue);
    }
    Desfecho desfecho;
    m_Insistencia.Espera([&](const mesa::Segue &quem) { desfecho = chama(quem); });
    return desfecho;
}

Desfecho Linha::ChamaUmaVez(const std::string &servico, const std::string &metodo, Message &pedido, Message &resposta,
                            const Cabecalho &cabecalho, milliseconds prazo)
{
    if (!TemCanal()) {
        return {Desfecho::Modo::SemResposta, "não há conexão", std::nullopt, false};
    }
    return TentaUmaVez(
        [&](const std::shared_ptr<grpc::Channel> &canal) {
            return TentaChamada(canal, CaminhoDe(servico, metodo), pedido, resposta, cabecalho, prazo, {});
        },
        {});
}

} // namespace rede
