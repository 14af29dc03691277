#include "server/Servidor.h"

#include "host/Falha.h"
#include "server/Atendente.h"
#include "server/Certificado.h"
#include "server/Enderecos.h"
#include "server/Fim.h"
#include "server/Porteiro.h"
#include "server/ServicosDaRede.h"

#include <absl/synchronization/mutex.h>
#include <google/protobuf/stubs/logging.h>
#include <grpcpp/ext/proto_server_reflection_plugin.h>
#include <grpcpp/health_check_service_interface.h>
#include <grpcpp/resource_quota.h>
#include <grpcpp/security/server_credentials.h>
#include <grpcpp/server.h>
#include <grpcpp/server_builder.h>

#include <atomic>
#include <mutex>
#include <utility>

namespace servidor {

namespace {

constexpr int ChamadasPorConexao = 100;
constexpr int MenorSinal = 900;    // milliseconds from one sign of life of a caller to the next
constexpr int SinalDeVida = 60000; // milliseconds after which an other end that is silent is asked whether it is there
constexpr int FiosQueEsperam = 64; // for calls
constexpr int ConexaoOciosa = 300000;        // milliseconds after which a connection without calls is closed
constexpr int PrazoDaConexao = 20000;        // milliseconds within which one has to come to be
constexpr std::size_t Octetos = 512UL << 20; // of what comes in and goes out; beyond it, calls are cut

[[noreturn]] void Falhou(const std::string &frase)
{
    throw ::Falha(NumeroFalha::ErroDeAcesso, "Servidor", frase);
}

// What of the library is of the whole process.
void PreparaBiblioteca()
{
    static std::once_flag uma;
    std::call_once(uma, [] {
        google::protobuf::SetLogHandler(nullptr); // it would write what strangers send to the standard error
        // The distribution builds its locks with a search for circles, in each of the library's.
        absl::SetMutexDeadlockDetectionMode(absl::OnDeadlockCycle::kIgnore);
        grpc::EnableDefaultHealthCheckService(true);
        grpc::reflection::InitProtoReflectionServerBuilderPlugin();
    });
}

Configuracao Conferida(const Configuracao &configuracao)
{
    std::string erros;
    for (const std::string &erro : configuracao.Confere()) {
        erros += (erros.empty() ? "" : "\n") + erro;
    }
    if (!erros.empty()) {
        Falhou(erros);
    }
    return configuracao;
}

// Where the registry is, with how long a statement, the wait for another writer and a confirmation may take there.
std::string Onde(const Configuracao &configuracao)
{
    if (!configuracao.NoBanco()) {
        return configuracao.Registro;
    }
    std::string onde = configuracao.Registro;
    const auto poe = [&](const std::string &nome, std::chrono::milliseconds prazo) {
        onde += (onde.find('?') == std::string::npos ? "?" : "&") + nome + "=" + std::to_string(prazo.count());
    };
    poe("limite_comando", configuracao.PrazoDaOperacao);
    // Who waits keeps the turn: it ends as a statement that takes too long, and not before.
    poe("limite_trava", configuracao.PrazoDaOperacao + std::chrono::seconds(1));
    poe("limite_confirmacao", configuracao.PrazoDaGravacao);
    return onde;
}

} // namespace

struct Servidor::Interior {
    Interior(const Configuracao &dada, const mesa::Relogio &agora, const mesa::CustoDaSenha &custo)
        : Como(Conferida(dada)),
          OndeAnota(Como.Diario),
          EmMemoria(std::make_shared<mesa::TentativasEmMemoria>()),
          Fios(Como.Conexoes, Como.Esperando, [this, agora, custo] { return Abre(agora, custo); }),
          Entradas(std::chrono::steady_clock::now, Como.Ociosidade, Como.SessoesPorUsuario, Como.PorSessao),
          Medidas(Como.Numeros,
                  [this] {
                      return Retrato{Fios.Esperando(),
                                     Fios.Trabalhando(),
                                     Fios.Conectados(),
                                     Entradas.Quantas(),
                                     Atendendo ? Quem.ACaminho() : 0,
                                     OndeAnota.Perdidas(),
                                     SemSessao};
                  }),
          Quem(Como, agora, Fios, Entradas, Recusadas, OndeAnota, Medidas),
          Entrada(Quem),
          Equipamentos(Quem),
          Relatorios(Quem),
          Prazos(Quem),
          Administracao(Quem),
          Documentos(Quem),
          Historia(Quem),
          Replica(Quem),
          Conferencia(Quem)
    {
        Escuta();
        Atendendo = true;
    }

    ~Interior() { Termina(std::chrono::milliseconds(0)); }

    // The registry, for one worker. What keeps it from that is told to those who call without the database's words.
    Ref<mesa::ServicosSql> Abre(const mesa::Relogio &agora, const mesa::CustoDaSenha &custo)
    try {
        const Ref<mesa::ServicosSql> abertos =
            ComoTipo<mesa::ServicosSql>(mesa::Servicos::Abre(Onde(Como), agora, custo));
        abertos->ExigeMotivo(Como.ExigeMotivo);
        abertos->ContaEm(EmMemoria);
        abertos->EhDeServidor();
        return abertos;
    } catch (const mesa::ErroSql &erro) {
        if (!Atendendo) { // whoever starts it reads it
            throw;
        }
        OndeAnota.Avisa("Abertura do registro: " + erro.Descricao);
        throw SemDetalhe(erro);
    }

    void Escuta()
    {
        PreparaBiblioteca();
        // Without TLS too, these are the ones that can have somebody at the door.
        std::shared_ptr<grpc::ServerCredentials> credenciais =
            grpc::experimental::LocalServerCredentials(grpc_local_connect_type::LOCAL_TCP);
        if (!Como.SemTls) {
            const ParDeChaves par = Como.Certificado.empty() ? ParDeChaves::Proprio(Como.PastaDoCertificado)
                                                             : ParDeChaves::DosArquivos(Como.Certificado, Como.Chave);
            Digital = par.Digital();
            grpc::SslServerCredentialsOptions opcoes;
            opcoes.pem_key_cert_pairs.push_back({par.Chave, par.Certificado});
            credenciais = grpc::SslServerCredentials(opcoes);
        }
        credenciais->SetAuthMetadataProcessor(std::make_shared<Porteiro>(Entradas, SemSessao));
        grpc::ServerBuilder construtor;
        int porta = 0;
        construtor.AddListeningPort(LugarDeEscuta::Le(Como.Escuta)->Texto(), credenciais, &porta);
        // Otherwise a second server takes the same port in silence, and each has half of the calls.
        construtor.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
        construtor.AddChannelArgument(GRPC_ARG_MAX_CONCURRENT_STREAMS, ChamadasPorConexao);
        construtor.AddChannelArgument(GRPC_ARG_KEEPALIVE_TIME_MS, SinalDeVida);
        // What a caller has sent is then here, but for 64 kB, and not in a long queue before a slow line.
        construtor.AddChannelArgument(GRPC_ARG_HTTP2_BDP_PROBE, 0);
        // A caller that waits for a long operation may ask so often whether anybody is there.
        construtor.AddChannelArgument(GRPC_ARG_HTTP2_MIN_RECV_PING_INTERVAL_WITHOUT_DATA_MS, MenorSinal);
        construtor.AddChannelArgument(GRPC_ARG_MAX_CONNECTION_IDLE_MS, ConexaoOciosa);
        construtor.AddChannelArgument(GRPC_ARG_SERVER_HANDSHAKE_TIMEOUT_MS, PrazoDaConexao);
        // A few octets may stand for as many as one likes.
        construtor.SetCompressionAlgorithmSupportStatus(GRPC_COMPRESS_DEFLATE, false);
        construtor.SetCompressionAlgorithmSupportStatus(GRPC_COMPRESS_GZIP, false);
        construtor.SetMaxReceiveMessageSize(static_cast<int>(Como.MaiorPedido));
        grpc::ResourceQuota quota;
        quota.Resize(Octetos);
        // Enough for all that work, wait and stream, and for those who are told "ocupado" or sign out.
        quota.SetMaxThreads(static_cast<int>((Como.Conexoes + Como.Esperando) * 2 + Atendente::MaisFluxos));
        construtor.SetResourceQuota(quota);
        // A thread that has done a call stays for the next one: making one for each call costs more than some calls.
        construtor.SetSyncServerOption(grpc::ServerBuilder::SyncServerOption::MAX_POLLERS, FiosQueEsperam);
        for (grpc::Service *servico :
             std::initializer_list<grpc::Service *>{&Entrada, &Equipamentos, &Relatorios, &Prazos, &Administracao,
                                                    &Documentos, &Historia, &Replica, &Conferencia}) {
            construtor.RegisterService(servico);
        }
        Rede = construtor.BuildAndStart();
        if (!Rede || porta == 0) {
            Falhou("O servidor não pôde escutar em " + Como.Escuta +
                   ": o endereço não é desta máquina, ou outro programa já usa a porta.");
        }
        Porta = static_cast<std::uint16_t>(porta);
        Fios.AoLigar([this](bool ha) { Rede->GetHealthCheckService()->SetServingStatus(ha); });
    }

    void Termina(std::chrono::milliseconds prazo)
    {
        if (!Rede) {
            return;
        }
        Fios.AoLigar({});
        Rede->GetHealthCheckService()->SetServingStatus(false);
        Rede->Shutdown(std::chrono::system_clock::now() + prazo);
        Rede->Wait();
        Fios.Termina();
        Rede.reset();
        Medidas.Fecha();
    }

    const Configuracao Como;
    Diario OndeAnota;
    std::atomic<bool> Atendendo = false;
    std::shared_ptr<mesa::TentativasEmMemoria> EmMemoria;
    Trabalhadores Fios;
    Sessoes Entradas;
    std::atomic<std::uint64_t> SemSessao = 0;
    EntradasRecusadas Recusadas;
    Figuras Medidas;
    Atendente Quem;
    servicos::Entrada Entrada;
    servicos::EquiptoRN Equipamentos;
    servicos::RelatorioRN Relatorios;
    servicos::PrazosRN Prazos;
    servicos::AdministracaoRN Administracao;
    servicos::Documentos Documentos;
    servicos::Historia Historia;
    servicos::Replica Replica;
    servicos::Conferencia Conferencia;
    std::string Digital;
    std::uint16_t Porta = 0;
    std::unique_ptr<grpc::Server> Rede;
};

Servidor::Servidor(const Configuracao &configuracao, mesa::Relogio agora, const mesa::CustoDaSenha &custo)
try : m_Interior(std::make_unique<Interior>(configuracao, agora, custo)) {
} catch (const Fim &fim) { // of the look at the registry
    Falhou(fim.Frase);
}

Servidor::~Servidor() = default;

std::uint16_t Servidor::Porta() const
{
    return m_Interior->Porta;
}

std::uint16_t Servidor::PortaDosNumeros() const
{
    return m_Interior->Medidas.Porta();
}

const std::string &Servidor::Digital() const
{
    return m_Interior->Digital;
}

void Servidor::Termina(std::chrono::milliseconds prazo)
{
    m_Interior->Termina(prazo);
}

} // namespace servidor
