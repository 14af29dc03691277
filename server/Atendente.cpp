#include "server/Atendente.h"

#include "host/Falha.h"
#include "rede/Mensagens.h"
#include "rede/Versao.h"
#include "services/Cabeca.h"
#include "services/Conferidor.h"
#include "services/ConteudoPdf.h"
#include "services/ErroSql.h"
#include "services/Permissoes.h"
#include "services/Recusa.h"
#include "services/Resumo.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace servidor {

using grpc::Status;
using grpc::StatusCode;
using namespace registro::v1;

namespace {

constexpr std::size_t MaiorPedaco = 1 << 20; // octets of a document in one message
// Those of one that the server sends, so that a slow line takes it within the other end's patience.
constexpr std::size_t PedacoEscrito = 64 << 10;
constexpr std::size_t LinhasPorPedaco = 1000; // of the replica
constexpr std::size_t MaiorSenha = 4096;      // octets; longer ones are nobody's
constexpr std::size_t MaiorNome = 1024;       // octets of what signs in
// Octets of a sentence at the end of a call, which goes twice, once with three octets for each: all that goes there
// together has to stay below 8 KB, or whoever calls takes none of it.
constexpr std::size_t MaiorFrase = 1500;
constexpr std::chrono::milliseconds EntreNoticias(200); // of how far a check is

constexpr const char *MuitosFluxos = "há muitos documentos e réplicas a caminho.";

// Of a sign-in whose answer is a refusal.
constexpr const char *FimRecusada = "RECUSADA";

const std::string Incerta =
    "Não foi possível saber se a operação foi gravada. Repita-a: ela não será feita duas vezes.";

std::string NomeDoFim(StatusCode codigo)
{
    switch (codigo) {
    case StatusCode::OK:
        return "OK";
    case StatusCode::CANCELLED:
        return "CANCELLED";
    case StatusCode::INVALID_ARGUMENT:
        return "INVALID_ARGUMENT";
    case StatusCode::DEADLINE_EXCEEDED:
        return "DEADLINE_EXCEEDED";
    case StatusCode::RESOURCE_EXHAUSTED:
        return "RESOURCE_EXHAUSTED";
    case StatusCode::FAILED_PRECONDITION:
        return "FAILED_PRECONDITION";
    case StatusCode::UNAVAILABLE:
        return "UNAVAILABLE";
    case StatusCode::UNAUTHENTICATED:
        return "UNAUTHENTICATED";
    default:
        return "INTERNAL";
    }
}

Fim Invalida(const std::string &frase)
{
    return {StatusCode::INVALID_ARGUMENT, frase};
}

Fim Recusada(const std::string &frase)
{
    return {StatusCode::FAILED_PRECONDITION, frase};
}

Fim DaFalha(const ::Falha &falha)
{
    registro::v1::Falha mensagem;
    rede::ParaMensagem(falha, mensagem);
    mensagem.set_descricao(Cortado(falha.Descricao, MaiorFrase));
    mensagem.set_fonte(Cortado(falha.Fonte, MaiorFrase / 4));
    return {StatusCode::INTERNAL,
            falha.Descricao,
            {{"falha-bin", mensagem.SerializeAsString()}},
            falha.Fonte + " " + std::to_string(falha.Numero),
            falha.Descricao};
}

std::string NomeDo(mesa::MotivoSql motivo)
{
    using mesa::MotivoSql;
    switch (motivo) {
    case MotivoSql::Ocupado:
        return "Ocupado";
    case MotivoSql::Demora:
        return "Demora";
    case MotivoSql::Queda:
        return "Queda";
    case MotivoSql::Incerto:
        return "Incerto";
    case MotivoSql::Unicidade:
        return "Unicidade";
    case MotivoSql::Regra:
        return "Regra";
    case MotivoSql::Coluna:
        return "Coluna";
    case MotivoSql::DiscoCheio:
        return "DiscoCheio";
    case MotivoSql::NaoGravou:
        return "NaoGravou";
    case MotivoSql::ForaDoLugar:
        return "ForaDoLugar";
    case MotivoSql::SoLeitura:
        return "SoLeitura";
    case MotivoSql::Danificado:
        return "Danificado";
    case MotivoSql::Acesso:
        return "Acesso";
    default:
        return "Outro";
    }
}

Fim DoErro(const mesa::ErroSql &erro)
{
    const mesa::ErroSql paraFora = SemDetalhe(erro);
    const auto fim = [&]() -> Fim {
        using mesa::MotivoSql;
        switch (erro.Motivo) {
        case MotivoSql::Incerto:
            return {StatusCode::UNAVAILABLE, Incerta};
        case MotivoSql::Queda:
        case MotivoSql::Acesso:
            return {StatusCode::UNAVAILABLE, paraFora.Descricao};
        case MotivoSql::Demora:
            return {StatusCode::DEADLINE_EXCEEDED, paraFora.Descricao};
        case MotivoSql::Ocupado:
            return Ocupado("outra gravação está em andamento.");
        default:
            return DaFalha(paraFora);
        }
    };
    Fim como = fim();
    como.Motivo = "banco de dados: " + NomeDo(erro.Motivo);
    como.Detalhe = erro.Descricao;
    return como;
}

// How what is being handled ends a call. Only valid inside a catch block.
Fim FimCorrente()
{
    try {
        throw;
    } catch (const Fim &fim) {
        return fim;
    } catch (const rede::MensagemInvalida &recusa) {
        return Invalida(recusa.what());
    } catch (const mesa::RecusaDeEntrada &recusa) {
        return {StatusCode::UNAUTHENTICATED, recusa.what()};
    } catch (const mesa::Recusa &recusa) {
        return Recusada(recusa.what());
    } catch (const mesa::ErroSql &erro) {
        return DoErro(erro);
    } catch (...) {
        return DaFalha(FalhaCorrente());
    }
}

// The version of the contract that both speak.
void ConfereContrato(std::int32_t contrato, std::int32_t minimo)
{
    if (contrato < rede::ContratoMinimo) {
        throw Recusada("Este programa é de uma versão anterior à que o servidor atende (fala a versão " +
                       std::to_string(contrato) + "; o servidor pede ao menos a " +
                       std::to_string(rede::ContratoMinimo) + "). Atualize o programa.");
    }
    if (minimo > rede::Contrato) {
        throw Recusada("Este programa é mais novo que o servidor (pede ao menos a versão " + std::to_string(minimo) +
                       "; o servidor fala a " + std::to_string(rede::Contrato) +
                       "). O servidor precisa ser atualizado.");
    }
}

// The secrets of what was asked are wiped when it is done, however it ends.
class SemSegredos {
  public:
    // The message is the server's own, made for the one call.
    explicit SemSegredos(const google::protobuf::Message &pedido)
        : m_Pedido(const_cast<google::protobuf::Message &>(pedido))
    {
    }
    SemSegredos(const SemSegredos &) = delete;
    SemSegredos &operator=(const SemSegredos &) = delete;
    ~SemSegredos()
    {
        rede::LimpaSegredos(m_Pedido);
        mesa::LimpaMemoria(Octetos.data(), Octetos.size());
    }

    std::string Octetos; // of the message, on its way

  private:
    google::protobuf::Message &m_Pedido;
};

QByteArray Emprestados(const std::string &octetos)
{
    return QByteArray::fromRawData(octetos.data(), static_cast<qsizetype>(octetos.size()));
}

} // namespace

// A stream on its way: one of those that there may be, with what it holds in memory.
class Atendente::Fluxo {
  public:
    explicit Fluxo(Atendente &quem) : m_Quem(quem)
    {
        if (++m_Quem.m_Fluxos > MaisFluxos) {
            --m_Quem.m_Fluxos;
            throw Ocupado(MuitosFluxos);
        }
    }
    Fluxo(const Fluxo &) = delete;
    Fluxo &operator=(const Fluxo &) = delete;
    ~Fluxo()
    {
        Larga();
        --m_Quem.m_Fluxos;
    }

    // So many more octets are held; false when they are too many, with those of the others.
    bool Cabem(std::size_t octetos)
    {
        m_Octetos += octetos;
        const std::size_t todos = m_Quem.m_Octetos += octetos;
        return todos <= MaisOctetos || todos == m_Octetos;
    }
    void Toma(std::size_t octetos)
    {
        if (!Cabem(octetos)) {
            throw Ocupado(MuitosFluxos);
        }
    }
    // It holds only so many of them after all.
    void Fica(std::size_t octetos) { m_Quem.m_Octetos -= std::exchange(m_Octetos, octetos) - octetos; }
    void Larga() { Fica(0); }
    // By when it has to be over, whatever of it comes or goes meanwhile.
    Momento Ate(std::size_t octetos) const
    {
        return std::chrono::steady_clock::now() +
               m_Quem.m_Configuracao.PrazoDaOperacao * static_cast<int>(1 + octetos / MaiorPedaco);
    }

  private:
    Atendente &m_Quem;
    std::size_t m_Octetos = 0;
};

Fim Atendente::Andamento::Desistiu() const
{
    return Quem.Cancelada()
               ? Fim{StatusCode::CANCELLED, "A operação foi cancelada."}
               : Fim{StatusCode::DEADLINE_EXCEEDED, "A operação passou do tempo que pode durar. Repita-a."};
}

Atendente::Atendente(const Configuracao &configuracao, mesa::Relogio agora, Trabalhadores &trabalhadores,
                     Sessoes &sessoes, EntradasRecusadas &recusadas, Diario &diario, Figuras &figuras)
    : m_Configuracao(configuracao),
      m_Agora(std::move(agora)),
      m_Trabalhadores(trabalhadores),
      m_Sessoes(sessoes),
      m_Recusadas(recusadas),
      m_Diario(diario),
      m_Figuras(figuras),
      m_Entrando(std::max<std::size_t>(1, configuracao.Conexoes / 4),
                 std::max<std::size_t>(1, configuracao.Esperando / 4))
{
    m_Eu.set_contrato(rede::Contrato);
    m_Eu.set_contratominimo(rede::ContratoMinimo);
    m_Eu.set_programa("registro-servidor " VERSAO_DO_PROGRAMA);
    std::chrono::microseconds espera{};
    m_Trabalhadores.Faz([this](Posto &posto) { Retrata(posto.Servicos()); },
                        std::chrono::steady_clock::now() + m_Configuracao.PrazoDaOperacao, [] { return false; },
                        espera);
}

void Atendente::Retrata(mesa::ServicosSql &servicos)
{
    m_Eu.set_registro(servicos.Identificador());
    m_Eu.set_amostra(servicos.Tipo() == mesa::TipoDeRegistro::Amostra);
    m_Eu.set_somenteconsulta(servicos.SomenteLeitura());
}

void Atendente::ExigeOMesmo(Posto &posto)
{
    const auto mesmo = [&] {
        const std::lock_guard trava(m_MutexDeMim);
        return posto.Servicos().Identificador() == m_Eu.registro();
    };
    if (mesmo()) {
        return;
    }
    posto.Renova(); // it may be the worker who still has the one of before
    if (mesmo()) {
        return;
    }
    const std::lock_guard trava(m_MutexDeMim);
    Retrata(posto.Servicos());
    m_Sessoes.TerminaTodas();
    throw Recusada("O registro deste servidor foi trocado por outro. Entre de novo.");
}

Status Atendente::Conduz(const Chamada &chamada, const std::string &operacao, const Faz &faz)
{
    const auto inicio = std::chrono::steady_clock::now();
    Andamento andamento{chamada, std::min(chamada.Ate, inicio + m_Configuracao.PrazoDaOperacao), {}};
    andamento.Linha.Operacao = operacao;
    andamento.Linha.Endereco = chamada.Endereco;
    Status fim;
    try {
        if (chamada.Repetidos) {
            throw Invalida("A chamada traz duas vezes a sessão, o número da operação ou o motivo.");
        }
        faz(andamento);
    } catch (...) {
        const Fim como = FimCorrente();
        const std::string frase = Cortado(como.Frase, MaiorFrase);
        fim = Status(como.Codigo, Cortado(frase, MaiorFrase / 2));
        chamada.NoFim("frase-bin", frase);
        for (const auto &[chave, valor] : como.Metadados) {
            chamada.NoFim(chave, valor);
        }
        andamento.Linha.Motivo = como.Motivo;
        if (!como.Detalhe.empty()) {
            m_Diario.Avisa(operacao + ": " + como.Detalhe);
        }
    }
    if (andamento.Linha.Fim.empty() || !fim.ok()) {
        andamento.Linha.Fim = NomeDoFim(fim.error_code());
    }
    andamento.Linha.Duracao =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - inicio);
    m_Diario.Escreve(andamento.Linha);
    m_Figuras.Conta(andamento.Linha);
    return fim;
}

Sessoes::EmUso Atendente::Usa(Andamento &andamento)
{
    Sessoes::EmUso sessao = m_Sessoes.Usa(andamento.Quem.Sessao);
    andamento.Linha.Usuario = sessao.Entrada().Quem.Numero;
    return sessao;
}

void Atendente::NaSessao(Andamento &andamento, const NaSessaoFaz &faz)
{
    Sessoes::EmUso sessao = Usa(andamento);
    NaSessao(andamento, sessao, faz);
}

void Atendente::NaSessao(Andamento &andamento, Sessoes::EmUso &sessao, const NaSessaoFaz &faz)
{
    const auto trabalha = [&](Posto &posto) {
        ExigeOMesmo(posto);
        const Ref<mesa::SessaoSql> aberta = posto.Servicos().Retoma(sessao.Entrada());
        aberta->Acompanha([&](double, const std::string &) { return !andamento.Acabou(); });
        faz(*aberta);
        if (aberta->Entrada().Prova != sessao.Entrada().Prova) {
            sessao.TrocaProva(aberta->Entrada().Prova);
        }
    };
    try {
        m_Trabalhadores.Faz(
            [&](Posto &posto) {
                try {
                    trabalha(posto);
                } catch (const mesa::ErroSql &erro) {
                    // Over another connection: what was not done is done now. Where that is not known it is asked
                    // with the operation's number; what has none only looks.
                    const bool incerto = erro.Motivo == mesa::MotivoSql::Incerto;
                    if ((erro.Motivo != mesa::MotivoSql::Queda && !incerto) || andamento.Acabou()) {
                        throw;
                    }
                    try {
                        posto.Renova();
                    } catch (const ::Falha &) { // nobody can tell now; the caller asks again
                        throw erro;
                    }
                    try {
                        trabalha(posto);
                    } catch (const mesa::ErroSql &) { // which tells of this time, and not of the first
                        if (incerto && !andamento.Linha.Numero.empty()) {
                            throw erro;
                        }
                        throw;
                    }
                }
            },
            andamento.Ate, andamento.Quem.Cancelada, andamento.Linha.Espera, andamento.Grava);
    } catch (const mesa::RecusaDeEntrada &) {
        sessao.Termina();
        throw;
    }
}

void Atendente::Exige(Andamento &andamento, bool feita, const std::string &recusa) const
{
    if (!feita) {
        throw andamento.Acabou() ? andamento.Desistiu() : Recusada(recusa);
    }
}

void Atendente::ExigeDireito(Andamento &andamento, Sessoes::EmUso &quem, const std::string &acao,
                             const std::string &oQue)
{
    NaSessao(andamento, quem, [&](mesa::SessaoSql &sessao) {
        if (!sessao.TemPermissao(mesa::Permissoes::Sistema, mesa::Permissoes::ObjetoAdministracao, acao)) {
            throw mesa::Recusa(sessao.DeveTrocarSenha()
                                   ? sessao.Operador().Nome +
                                         " precisa trocar a senha antes de fazer qualquer outra coisa."
                                   : sessao.Operador().Nome + " não tem permissão para " + oQue + ".");
        }
    });
}

void Atendente::TomaNumero(Andamento &andamento) const
{
    const std::optional<std::string> &numero = andamento.Quem.Numero;
    constexpr std::size_t tamanho = 36; // of a UUID
    const auto serve = [](char letra) {
        return (letra >= '0' && letra <= '9') || (letra >= 'a' && letra <= 'f') || (letra >= 'A' && letra <= 'F') ||
               letra == '-';
    };
    if (!numero || numero->size() != tamanho || !std::ranges::all_of(*numero, serve)) {
        throw Invalida("Uma operação que grava traz o seu número, um UUID, em \"operacao\".");
    }
    andamento.Linha.Numero = *numero;
}

Status Atendente::Consulta(const Chamada &chamada, const std::string &classe, const std::string &metodo,
                           const google::protobuf::Message &pedido, google::protobuf::Message &resposta)
{
    return Executa(chamada, classe, metodo, false, pedido, resposta);
}

Status Atendente::Grava(const Chamada &chamada, const std::string &classe, const std::string &metodo,
                        const google::protobuf::Message &pedido, google::protobuf::Message &resposta)
{
    return Executa(chamada, classe, metodo, true, pedido, resposta);
}

Status Atendente::Executa(const Chamada &chamada, const std::string &classe, const std::string &metodo, bool grava,
                          const google::protobuf::Message &pedido, google::protobuf::Message &resposta)
{
    return Conduz(chamada, classe + "/" + metodo, [&](Andamento &andamento) {
        SemSegredos guarda(pedido);
        const std::size_t tamanho = pedido.ByteSizeLong();
        andamento.Linha.Octetos = tamanho;
        std::string &oQue = guarda.Octetos; // what is asked, as a repetition has to ask it
        if (grava) {
            // The reason of a correction is part of it.
            oQue = classe + "/" + metodo + "\n" + mesa::Resumo(Emprestados(chamada.Motivo.value_or(""))) + "\n";
            const std::size_t antes = oQue.size();
            oQue.resize(antes + tamanho); // at once, while there is nothing in it: growing leaves copies
            pedido.SerializeToArray(oQue.data() + antes, static_cast<int>(tamanho));
        }
        std::string faltaMotivo;
        andamento.Grava = grava;
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            if (grava) {
                TomaNumero(andamento);
            }
            if (chamada.Motivo && !rede::EhTexto(*chamada.Motivo)) {
                throw Invalida("O motivo da correção não está em UTF-8.");
            }
            Ref<Objeto> enviado = rede::DeMensagem(pedido);
            Valor retorno;
            const auto monta = [&] {
                resposta.Clear();
                const bool ecoa = retorno.EhVazio() && resposta.GetDescriptor() == pedido.GetDescriptor();
                const Ref<Registro> dado = ecoa                ? ComoTipo<Registro>(enviado)
                                           : retorno.EhVazio() ? Ref<Registro>()
                                                               : retorno.Como<Registro>();
                if (dado) {
                    rede::ParaMensagem(*dado, resposta);
                }
            };
            if (chamada.Motivo || m_Configuracao.ExigeMotivo) { // where none has to be, nobody is asked for one
                sessao.PerguntaMotivo([&](const std::string &correcao) {
                    if (!chamada.Motivo) {
                        faltaMotivo = correcao;
                    }
                    return chamada.Motivo;
                });
            }
            if (grava) {
                // The session is made for this one operation, so that the number is of no other.
                sessao.Numera({andamento.Linha.Numero, mesa::Resumo(Emprestados(oQue)), [&] {
                                   monta();
                                   return resposta.SerializeAsString();
                               }});
            }
            std::string recusa;
            if (!sessao.Executa(classe, metodo, enviado, retorno, recusa)) {
                resposta.Clear();
                if (!faltaMotivo.empty()) {
                    throw Fim{StatusCode::FAILED_PRECONDITION,
                              recusa,
                              {{"falta-motivo-bin", Cortado(faltaMotivo, MaiorFrase / 2)}}};
                }
                Exige(andamento, false, recusa);
            }
            if (!sessao.Repetida()) {
                monta();
            } else if (!resposta.ParseFromString(*sessao.Repetida())) {
                throw ::Falha(NumeroFalha::ErroInterno, "Servidor", "A resposta guardada da operação está estragada.");
            }
            andamento.Linha.Octetos += resposta.ByteSizeLong();
        });
    });
}

Status Atendente::RecusaMensagem(const Chamada &chamada, const std::string &operacao, std::size_t octetos)
{
    return Conduz(chamada, operacao, [&](Andamento &andamento) {
        andamento.Linha.Octetos = octetos;
        throw Invalida("A mensagem é grande demais ou está estragada.");
    });
}

Status Atendente::Apresenta(const Chamada &chamada, const Apresentacao &pedido, registro::v1::Servidor &resposta)
{
    return Conduz(chamada, "Entrada/Apresenta", [&](Andamento &andamento) {
        ConfereContrato(pedido.contrato(), pedido.contratominimo());
        {
            const std::lock_guard trava(m_MutexDeMim);
            resposta = m_Eu;
        }
        andamento.Linha.Octetos = pedido.ByteSizeLong() + resposta.ByteSizeLong();
    });
}

Status Atendente::Entra(const Chamada &chamada, const PedidoDeEntrada &pedido, registro::v1::Sessao &resposta)
{
    return Conduz(chamada, "Entrada/Entra", [&](Andamento &andamento) {
        const SemSegredos guarda(pedido);
        andamento.Linha.Octetos = pedido.ByteSizeLong();
        ConfereContrato(pedido.contrato(), pedido.contrato());
        rede::ConfereMensagem(pedido);
        if (pedido.senha().size() > MaiorSenha || pedido.usuario().size() > MaiorNome ||
            pedido.estacao().size() > MaiorNome) {
            throw Invalida("O usuário, a senha ou o nome da estação é longo demais.");
        }
        // Where within the address: the station, and the name that is tried there.
        const std::string quem = pedido.estacao() + "\n" + pedido.usuario();
        const bool conhecido = m_Recusadas.EhConhecido(chamada.Endereco, quem);
        const auto espera = [&](std::int32_t falta) {
            if (falta > 0) {
                andamento.Linha.Fim = FimRecusada;
                resposta.set_recusa("Foram muitas entradas recusadas deste endereço. Aguarde " + std::to_string(falta) +
                                    (falta == 1 ? " segundo" : " segundos") + " e tente de novo.");
                resposta.set_espera(falta);
            }
            return falta > 0;
        };
        if (!conhecido && espera(m_Recusadas.Falta(chamada.Endereco, std::chrono::steady_clock::now()))) {
            return;
        }
        const Vagas::Uma vaga(m_Entrando, andamento.Ate, chamada.Cancelada, "muitos estão entrando ao mesmo tempo.");
        if (!conhecido && espera(m_Recusadas.Tenta(chamada.Endereco, std::chrono::steady_clock::now()))) {
            return;
        }
        struct Tentativa {
            EntradasRecusadas &Onde;
            const std::string &Endereco;
            bool Conta; // it stays counted
            ~Tentativa()
            {
                if (!Conta) {
                    Onde.Devolve(Endereco);
                }
            }
        } tentativa{m_Recusadas, chamada.Endereco, conhecido};
        std::optional<mesa::Portaria::Entrada> entrada;
        const auto entra = [&] {
            m_Trabalhadores.Faz(
                [&](Posto &posto) {
                    ExigeOMesmo(posto);
                    std::string recusa;
                    std::int32_t espera = 0;
                    entrada = posto.Servicos().Autentica(pedido.usuario(), mesa::Segredo(pedido.senha()),
                                                         pedido.estacao(), recusa, espera);
                    if (!entrada) {
                        resposta.set_recusa(recusa);
                        resposta.set_espera(espera);
                        return;
                    }
                    rede::ParaMensagem(entrada->Quem, resposta);
                    resposta.set_devetrocarsenha(posto.Servicos().Retoma(*entrada)->DeveTrocarSenha());
                    resposta.set_avisoderelogio(entrada->AvisoDeRelogio);
                },
                andamento.Ate, chamada.Cancelada, andamento.Linha.Espera, /*grava=*/true);
        };
        try {
            entra();
        } catch (const mesa::ErroSql &erro) {
            if (erro.Motivo != mesa::MotivoSql::Incerto) {
                throw;
            }
            Fim incerta = DoErro(erro); // it has no number by which it would be done once
            incerta.Frase = "A entrada não foi confirmada pelo banco de dados. Tente entrar de novo daqui a pouco.";
            throw incerta;
        }
        if (!entrada) {
            tentativa.Conta = true;
            andamento.Linha.Fim = FimRecusada;
            return;
        }
        m_Recusadas.Conhece(chamada.Endereco, quem, std::chrono::steady_clock::now());
        andamento.Linha.Usuario = entrada->Quem.Numero;
        resposta.set_chave(m_Sessoes.Comeca(*entrada));
        andamento.Linha.Octetos += resposta.ByteSizeLong();
    });
}

Status Atendente::Sai(const Chamada &chamada)
{
    return Conduz(chamada, "Entrada/Sai", [&](Andamento &andamento) {
        // Signing out takes no worker, and counts as no operation: it is done however much is going on.
        andamento.Linha.Usuario = m_Sessoes.Termina(chamada.Sessao);
        if (andamento.Linha.Usuario == 0) {
            throw Fim{StatusCode::UNAUTHENTICATED, "A sessão já tinha terminado."};
        }
    });
}

Status Atendente::TemPermissao(const Chamada &chamada, const Permissao &pedido, SimOuNao &resposta)
{
    return Conduz(chamada, "Entrada/TemPermissao", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            rede::ConfereMensagem(pedido);
            resposta.set_sim(sessao.TemPermissao(pedido.sistema(), pedido.objeto(), pedido.acao()));
        });
    });
}

Status Atendente::Situacao(const Chamada &chamada, SituacaoDaSessao &resposta)
{
    return Conduz(chamada, "Entrada/Situacao", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            resposta.set_devetrocarsenha(sessao.DeveTrocarSenha());
            resposta.set_agora(m_Agora().Local.Valor);
        });
    });
}

Status Atendente::GuardaDocumento(const Chamada &chamada, const std::function<bool(PedacoDeDocumento &)> &leia,
                                  NumeroDeDocumento &resposta)
{
    return Conduz(chamada, "Documentos/Guarda", [&](Andamento &andamento) {
        // Who may not, or has too much under way, is told before anything is taken in.
        Sessoes::EmUso quem = Usa(andamento);
        TomaNumero(andamento);
        Fluxo fluxo(*this);
        std::string octetos;
        PedacoDeDocumento pedaco;
        std::int64_t tamanho = 0;
        std::string sha256;
        {
            Vigia::Passos passos(m_Vigia, m_Configuracao.PrazoDaOperacao, fluxo.Ate(mesa::MaiorDocumento),
                                 chamada.Corta);
            for (bool primeiro = true; leia(pedaco); primeiro = false) {
                passos.Anda();
                if (primeiro) {
                    tamanho = pedaco.tamanho();
                    sha256 = pedaco.sha256();
                    if (tamanho < 1 || tamanho > static_cast<std::int64_t>(mesa::MaiorDocumento)) {
                        throw Recusada("O documento tem " + std::to_string(tamanho) + " octetos; vão de 1 a " +
                                       std::to_string(mesa::MaiorDocumento) + ".");
                    }
                    fluxo.Toma(static_cast<std::size_t>(tamanho));
                    octetos.reserve(static_cast<std::size_t>(tamanho));
                } else if (pedaco.octetos().empty()) {
                    throw Invalida("O documento veio com um pedaço vazio.");
                }
                if (pedaco.octetos().size() > MaiorPedaco ||
                    octetos.size() + pedaco.octetos().size() > static_cast<std::size_t>(tamanho)) {
                    throw Invalida("O documento veio em pedaços de mais de 1 MB, ou com mais octetos do que anunciou.");
                }
                octetos += pedaco.octetos();
            }
            if (passos.Cortado()) {
                throw Fim{StatusCode::DEADLINE_EXCEEDED, "O documento parou de chegar. Envie-o de novo."};
            }
        }
        if (chamada.Cancelada()) {
            throw Fim{StatusCode::CANCELLED, "O envio do documento foi cancelado."};
        }
        andamento.Linha.Octetos = octetos.size();
        if (octetos.empty() || octetos.size() != static_cast<std::size_t>(tamanho) ||
            mesa::Resumo(Emprestados(octetos)) != sha256) {
            throw Invalida("O documento não chegou como foi anunciado: o tamanho ou o resumo SHA-256 não confere.");
        }
        // The time that it took to come in is the line's, not the work's.
        andamento.Ate = std::min(chamada.Ate, std::chrono::steady_clock::now() + m_Configuracao.PrazoDaOperacao);
        andamento.Grava = true;
        quem.Atualiza();
        NaSessao(andamento, quem, [&](mesa::SessaoSql &sessao) {
            double numero = 0;
            std::string recusa;
            sessao.Numera({andamento.Linha.Numero, mesa::Resumo(Emprestados("Documentos/Guarda\n" + sha256)), [&] {
                               NumeroDeDocumento resposta;
                               resposta.set_numero(numero);
                               return resposta.SerializeAsString();
                           }});
            const Bytes bytes(octetos.begin(), octetos.end());
            Exige(andamento, sessao.GuardaDocumento(bytes, numero, recusa), recusa);
            resposta.set_numero(numero);
            if (sessao.Repetida() && !resposta.ParseFromString(*sessao.Repetida())) {
                throw ::Falha(NumeroFalha::ErroInterno, "Servidor", "A resposta guardada da operação está estragada.");
            }
        });
    });
}

Status Atendente::LeDocumento(const Chamada &chamada, const PedidoDeDocumento &pedido,
                              const std::function<bool(const PedacoDeDocumento &)> &escreve)
{
    return Conduz(chamada, "Documentos/Le", [&](Andamento &andamento) {
        Sessoes::EmUso quem = Usa(andamento);
        Fluxo fluxo(*this);
        fluxo.Toma(mesa::MaiorDocumento); // as long as nobody knows how large it is
        Bytes octetos;
        NaSessao(andamento, quem, [&](mesa::SessaoSql &sessao) {
            rede::ConfereMensagem(pedido);
            std::string recusa;
            Exige(andamento, sessao.LeDocumento(pedido.numero(), octetos, recusa), recusa);
        });
        fluxo.Fica(octetos.size());
        const auto tamanho = static_cast<std::int64_t>(octetos.size());
        if (pedido.apartirde() < 0 || pedido.apartirde() > tamanho) {
            throw Invalida("O documento tem " + std::to_string(tamanho) + " octetos, e foi pedido a partir de " +
                           std::to_string(pedido.apartirde()) + ".");
        }
        andamento.Linha.Octetos = static_cast<std::size_t>(tamanho - pedido.apartirde());
        Vigia::Passos passos(m_Vigia, m_Configuracao.PrazoDaOperacao, fluxo.Ate(octetos.size()), chamada.Corta);
        PedacoDeDocumento pedaco;
        pedaco.set_tamanho(tamanho);
        pedaco.set_sha256(mesa::Resumo(
            QByteArray::fromRawData(reinterpret_cast<const char *>(octetos.data()), static_cast<qsizetype>(tamanho))));
        // The first piece is sent even when there is nothing left: it tells size and hash.
        auto onde = static_cast<std::size_t>(pedido.apartirde());
        do {
            const std::size_t quantos = std::min(PedacoEscrito, octetos.size() - onde);
            pedaco.set_octetos(octetos.data() + onde, quantos);
            onde += quantos;
            if (!escreve(pedaco)) {
                throw Fim{StatusCode::CANCELLED, "O documento deixou de ser recebido."};
            }
            passos.Anda();
            pedaco.clear_tamanho();
            pedaco.clear_sha256();
        } while (onde < octetos.size());
    });
}

Status Atendente::AfericoesDoDocumento(const Chamada &chamada, const DocumentoOuAfericao &pedido,
                                       AfericoesComDocumento &resposta)
{
    return Conduz(chamada, "Documentos/Afericoes", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            rede::ConfereMensagem(pedido);
            if (pedido.has_documento() == pedido.has_afericao()) {
                throw Invalida("Pede-se por um documento ou por uma aferição.");
            }
            const auto achadas = pedido.has_documento() ? sessao.AfericoesDoDocumento(pedido.documento())
                                                        : sessao.AfericoesDoDocumentoDa(pedido.afericao());
            for (const mesa::AfericaoComDocumento &achada : achadas) {
                rede::ParaMensagem(achada, *resposta.add_itens());
            }
        });
        andamento.Linha.Octetos = pedido.ByteSizeLong() + resposta.ByteSizeLong();
    });
}

Status Atendente::VersoesDaAfericao(const Chamada &chamada, const PedidoDeVersoes &pedido,
                                    VersoesDaAfericaoED &resposta)
{
    return Conduz(chamada, "Historia/VersoesDaAfericao", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            rede::ConfereMensagem(pedido);
            std::vector<mesa::VersaoAfericao> versoes;
            std::string recusa;
            Exige(andamento, sessao.VersoesDaAfericao(pedido.nrointafericao(), versoes, recusa), recusa);
            for (const mesa::VersaoAfericao &versao : versoes) {
                rede::ParaMensagem(versao, *resposta.add_itens());
            }
        });
        andamento.Linha.Octetos = pedido.ByteSizeLong() + resposta.ByteSizeLong();
    });
}

Status Atendente::ComoConhecido(const Chamada &chamada, const PedidoDeConhecido &pedido,
                                registro::v1::EquipamentoConhecido &resposta)
{
    return Conduz(chamada, "Historia/ComoConhecido", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            rede::ConfereMensagem(pedido);
            constexpr double primeiro = -657434; // 1 January 100
            constexpr double depois = 2958466;   // of 31 December 9999
            constexpr std::int32_t maiorFuso = 24 * 60;
            if (!(pedido.quando() >= primeiro && pedido.quando() < depois) || std::abs(pedido.fuso()) > maiorFuso) {
                throw Invalida("O momento pedido não existe no calendário.");
            }
            mesa::EquipamentoConhecido conhecido;
            std::string recusa;
            Exige(andamento,
                  sessao.ComoConhecido(pedido.nrointequip(), {Data{pedido.quando()}, pedido.fuso()}, conhecido, recusa),
                  recusa);
            rede::ParaMensagem(conhecido, resposta);
        });
        andamento.Linha.Octetos = pedido.ByteSizeLong() + resposta.ByteSizeLong();
    });
}

Status Atendente::Clientes(const Chamada &chamada, ClientesDoOperador &resposta)
{
    return Conduz(chamada, "Replica/Clientes", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            for (const mesa::ClienteCadastrado &cliente : sessao.Clientes()) {
                rede::ParaMensagem(cliente, *resposta.add_itens());
            }
        });
        andamento.Linha.Octetos = resposta.ByteSizeLong();
    });
}

Status Atendente::LeReplica(const Chamada &chamada, const PedidoDeReplica &pedido,
                            const std::function<bool(const PedacoDeReplica &)> &escreve)
{
    return Conduz(chamada, "Replica/Le", [&](Andamento &andamento) {
        Sessoes::EmUso quem = Usa(andamento);
        Fluxo fluxo(*this);
        // Kept until the registry is free again, as it goes over the network: whoever takes the pieces slowly holds
        // nobody up.
        std::vector<std::string> pedacos;
        PedacoDeReplica ultimo;
        NaSessao(andamento, quem, [&](mesa::SessaoSql &sessao) {
            if (pedido.depoisde() < 0) {
                throw Invalida("A réplica é pedida depois de uma anotação do histórico, ou inteira depois de 0.");
            }
            pedacos.clear(); // of a connection that was lost
            ultimo.Clear();
            fluxo.Larga();
            bool cabem = true; // what does not is read over, and refused afterwards
            const auto guarda = [&] {
                cabem = cabem && fluxo.Cabem(ultimo.ByteSizeLong());
                if (cabem) {
                    pedacos.push_back(ultimo.SerializeAsString());
                }
                ultimo.Clear();
            };
            const mesa::Replicado replicado = sessao.LeReplica(pedido.depoisde(), [&](const mesa::LinhaReplica &linha) {
                if (ultimo.linhas_size() >= static_cast<int>(LinhasPorPedaco)) {
                    guarda();
                }
                rede::ParaMensagem(linha, *ultimo.add_linhas());
            });
            if (andamento.Acabou()) {
                throw andamento.Desistiu();
            }
            ultimo.set_dequando(replicado.DeQuando.Valor);
            ultimo.set_ate(replicado.Ate);
            ultimo.set_elo(replicado.Elo);
            ultimo.set_elodeantes(replicado.EloDeAntes);
            guarda();
            if (!cabem) {
                throw Ocupado(MuitosFluxos);
            }
            PedacoDeReplica primeiro; // octets of two messages one after the other are those of both in one
            primeiro.set_quantas(replicado.Quantas);
            pedacos.front() += primeiro.SerializeAsString();
        });
        std::size_t todos = 0;
        for (const std::string &pedaco : pedacos) {
            todos += pedaco.size();
        }
        Vigia::Passos passos(m_Vigia, m_Configuracao.PrazoDaOperacao, fluxo.Ate(todos), chamada.Corta);
        for (const std::string &pedaco : pedacos) {
            andamento.Linha.Octetos += pedaco.size();
            if (!ultimo.ParseFromString(pedaco) || !escreve(ultimo)) {
                throw Fim{StatusCode::CANCELLED, "A réplica deixou de ser recebida."};
            }
            passos.Anda();
        }
    });
}

Status Atendente::Confere(const Chamada &chamada, const PedidoDeConferencia &pedido,
                          const std::function<bool(const AndamentoDaConferencia &)> &escreve)
{
    return Conduz(chamada, "Conferencia/Confere", [&](Andamento &andamento) {
        Sessoes::EmUso quem = Usa(andamento); // to the end: a long check is no idle session
        const auto exige = [&] { ExigeDireito(andamento, quem, mesa::Permissoes::Copias, "conferir o registro"); };
        exige();
        rede::ConfereMensagem(pedido);
        std::optional<mesa::CabecaAssinada> desde;
        if (!pedido.desde().empty()) {
            try {
                desde = mesa::CabecaAssinada::Le(pedido.desde());
            } catch (const ::Falha &falha) {
                throw Recusada(falha.Descricao);
            }
        }
        // It takes as long as it takes, on no worker's connection; one at a time.
        if (m_Conferindo.exchange(true)) {
            throw Ocupado("o registro já está sendo conferido.");
        }
        const struct Livra {
            std::atomic<bool> &Qual;
            ~Livra() { Qual = false; }
        } livra{m_Conferindo};
        const Fluxo fluxo(*this);
        Vigia::Passos passos(m_Vigia, m_Configuracao.PrazoDaOperacao, Momento::max(), chamada.Corta);
        Momento noticia{};
        const auto segue = [&](double parte, const std::string &oQue) {
            passos.Anda();
            const auto agora = std::chrono::steady_clock::now();
            if (agora - noticia >= EntreNoticias) {
                noticia = agora;
                AndamentoDaConferencia mensagem;
                mensagem.set_parte(parte);
                mensagem.set_oque(oQue);
                if (!escreve(mensagem)) {
                    return false;
                }
            }
            return !chamada.Cancelada() && agora < chamada.Ate;
        };
        const mesa::Conferidor conferidor(m_Configuracao.Registro);
        const mesa::CabecaAssinada *cabeca = desde ? &*desde : nullptr;
        const mesa::ResultadoDaConferencia resultado =
            pedido.rapida() ? conferidor.ConfereRapido(segue, cabeca) : conferidor.Confere(segue, cabeca);
        // What was found is for who still may have it.
        passos.Anda();
        andamento.Ate = std::min(chamada.Ate, std::chrono::steady_clock::now() + m_Configuracao.PrazoDaOperacao);
        quem.Atualiza();
        exige();
        const auto paraFora = [&](const std::string &frase) {
            std::string fora = SemPalavras(frase, resultado.Palavras, m_Configuracao.Registro);
            if (fora != frase) {
                m_Diario.Avisa("Conferencia/Confere: " + frase);
            }
            return fora;
        };
        AndamentoDaConferencia ultima;
        ultima.set_parte(1);
        registro::v1::ResultadoDaConferencia &dito = *ultima.mutable_resultado();
        dito.set_como(static_cast<std::int32_t>(resultado.Como));
        dito.set_frase(paraFora(resultado.Frase));
        for (const std::string &achado : resultado.Achados) {
            dito.add_achados(paraFora(achado));
        }
        for (const std::string &aviso : resultado.Avisos) {
            dito.add_avisos(aviso);
        }
        andamento.Linha.Octetos = ultima.ByteSizeLong();
        if (!escreve(ultima)) {
            throw Fim{StatusCode::CANCELLED, "A conferência foi cancelada."};
        }
    });
}

Status Atendente::Cabeca(const Chamada &chamada, CabecaDoHistorico &resposta)
{
    return Conduz(chamada, "Conferencia/Cabeca", [&](Andamento &andamento) {
        NaSessao(andamento, [&](mesa::SessaoSql &sessao) {
            mesa::CabecaAssinada cabeca;
            std::string recusa;
            Exige(andamento, sessao.LeCabeca(cabeca, recusa), recusa);
            resposta.set_texto(cabeca.Texto());
        });
    });
}

} // namespace servidor
