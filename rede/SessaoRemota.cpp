#include "rede/SessaoRemota.h"

#include "rede/Mensagens.h"
#include "services/MotivoCorrecao.h"
#include "services/Resumo.h"

#include <QUuid>

#include <google/protobuf/descriptor.h>
#include <registro.grpc.pb.h>
#include <sodium.h>

#include <algorithm>
#include <utility>

namespace rede {

namespace {

namespace v1 = registro::v1;
using google::protobuf::Message;
using google::protobuf::MethodDescriptor;
using std::chrono::steady_clock;

constexpr std::chrono::seconds ValeAPermissao{2};
constexpr std::chrono::minutes ValeSemPerguntar{10};
constexpr std::chrono::milliseconds PrazoDaSaida{1000};
// Octets of a document in one message: each has the time of a try to go out, over a slow line too, and moves what is
// shown of how far it is. The contract takes more.
constexpr std::size_t Pedaco = 64 << 10;
constexpr double ParteDoEnvio = 0.9;              // the rest of it is the storing
constexpr std::int64_t MaiorRecebido = 256 << 20; // far beyond what a registry takes
// Between two pieces of news of a check, which the server cuts off long before when it stands still.
constexpr std::chrono::minutes EntreNoticias{10};

constexpr const char *Cancelada = "A operação foi cancelada: nada foi gravado.";
constexpr const char *JaPedido = "Isto mesmo já foi pedido, e não se sabe se foi gravado. Desde então outra coisa foi "
                                 "gravada, ou passou muito tempo. "
                                 "Confira antes se já está no registro.";
constexpr const char *CanceladaTarde =
    "A operação foi cancelada, e não se sabe se o servidor já a tinha gravado: confirmada de novo com os mesmos dados, "
    "nada é gravado duas vezes.";

// The operation of that name among those that take one record; none when there is no such.
const MethodDescriptor *OperacaoDe(const std::string &classeRN, const std::string &metodo)
{
    if (!classeRN.ends_with("RN")) {
        return nullptr;
    }
    const auto *servico = v1::Vazio::descriptor()->file()->FindServiceByName(classeRN);
    return servico == nullptr ? nullptr : servico->FindMethodByName(metodo);
}

[[noreturn]] void Falhou(const char *onde, const std::string &frase)
{
    throw Falha(NumeroFalha::ErroDeAcesso, std::string("Rede < SessaoServico.") + onde, frase);
}

Falha NaoEntendida(const char *onde, const std::string &porque)
{
    return Falha(NumeroFalha::ErroInterno, std::string("Rede < SessaoServico.") + onde,
                 "O servidor respondeu o que este programa não entende. " + porque);
}

QByteArray SemCopia(const Bytes &bytes)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

double Parte(std::size_t feito, std::size_t todo)
{
    return todo == 0 ? 1 : std::min(1.0, static_cast<double>(feito) / static_cast<double>(todo));
}

// What the server tells of a check until it ends; `ultima` is the last of it.
Desfecho Acompanha(const std::shared_ptr<grpc::Channel> &canal, const std::string &chave,
                   const v1::PedidoDeConferencia &pedido, const mesa::Segue &segue, v1::AndamentoDaConferencia &ultima)
{
    grpc::ClientContext contexto;
    PoeCabecalho(contexto, {chave});
    const auto conferencia = v1::Conferencia::NewStub(canal);
    grpc::Status status;
    Fila fila(&contexto, segue);
    const auto vinda = conferencia->PrepareAsyncConfere(&contexto, pedido, &fila.Alvo());
    vinda->StartCall(&fila);
    // No number counts for none.
    const auto parte = [&] { return ultima.parte() >= 0 ? std::min(ultima.parte(), 1.0) : 0; };
    bool cancelado = false;
    bool vai = fila.Espera(EntreNoticias);
    while (vai) {
        v1::AndamentoDaConferencia noticia;
        vinda->Read(&noticia, &fila);
        vai = fila.Espera(EntreNoticias, parte(), ultima.oque());
        if (vai) {
            ultima = std::move(noticia);
            cancelado = segue && !segue(parte(), ultima.oque());
        }
        if (cancelado) {
            contexto.TryCancel();
            vai = false;
        }
    }
    vinda->Finish(&status, &fila);
    fila.Espera(EntreNoticias, parte(), ultima.oque());
    return Desfecho::De(status, contexto, cancelado || fila.Cancelado());
}

mesa::ResultadoDaConferencia ResultadoDe(const v1::AndamentoDaConferencia &ultima)
{
    const v1::ResultadoDaConferencia &mensagem = ultima.resultado();
    using Como = mesa::ResultadoDaConferencia::Desfecho;
    ConfereMensagem(mensagem);
    if (!ultima.has_resultado() || mensagem.como() < static_cast<int>(Como::Inteira) ||
        mensagem.como() > static_cast<int>(Como::NaoConferida)) {
        throw NaoEntendida("Confere", "Não se sabe o que a conferência achou.");
    }
    mesa::ResultadoDaConferencia resultado;
    resultado.Como = static_cast<Como>(mensagem.como());
    resultado.Frase = mensagem.frase();
    resultado.Achados = {mensagem.achados().begin(), mensagem.achados().end()};
    resultado.Avisos = {mensagem.avisos().begin(), mensagem.avisos().end()};
    return resultado;
}

mesa::ResultadoDaConferencia Confere(Linha &linha, const std::string &chave, const v1::PedidoDeConferencia &pedido,
                                     const mesa::Segue &segue)
try {
    v1::AndamentoDaConferencia ultima;
    const Desfecho desfecho = linha.Insiste(
        [&](const std::shared_ptr<grpc::Channel> &canal) { return Acompanha(canal, chave, pedido, segue, ultima); },
        Efeito::Nenhum, segue);
    switch (desfecho.Como) {
    case Desfecho::Modo::Feito:
        return ResultadoDe(ultima);
    case Desfecho::Modo::Cancelado: {
        mesa::ResultadoDaConferencia cancelada;
        cancelada.Como = mesa::ResultadoDaConferencia::Desfecho::Cancelada;
        cancelada.Frase = "A conferência foi cancelada antes do fim: nada se pode dizer do registro.";
        return cancelada;
    }
    case Desfecho::Modo::Recusado:
        throw PedidoRecusado("Rede < SessaoServico.Confere", desfecho.Frase);
    default:
        Falhou("Confere", desfecho.Frase);
    }
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida("Confere", invalida.what());
}

} // namespace

NumerosEmAberto::NumerosEmAberto(Relogio agora)
    : m_Agora(std::move(agora)),
      m_Segredo(crypto_generichash_KEYBYTES, '\0')
{
    randombytes_buf(m_Segredo.data(), m_Segredo.size());
}

std::string NumerosEmAberto::Chave(std::int32_t usuario, const std::string &operacao, const std::string &pedido) const
{
    const std::string antes = std::to_string(usuario) + " " + operacao + '\0';
    std::string soma(crypto_generichash_BYTES, '\0');
    const auto octetos = [](const auto &texto) { return reinterpret_cast<const unsigned char *>(texto.data()); };
    crypto_generichash_state estado;
    crypto_generichash_init(&estado, octetos(m_Segredo), m_Segredo.size(), soma.size());
    crypto_generichash_update(&estado, octetos(antes), antes.size());
    crypto_generichash_update(&estado, octetos(pedido), pedido.size());
    crypto_generichash_final(&estado, reinterpret_cast<unsigned char *>(soma.data()), soma.size());
    return soma;
}

NumerosEmAberto::Ato &NumerosEmAberto::Abre(const std::string &servico, const std::string &chave)
{
    const auto [aberto, novo] = m_Abertos.try_emplace(chave);
    if (novo) {
        aberto->second = {{QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()}, servico, m_Agora()};
    }
    return aberto->second.Qual;
}

void NumerosEmAberto::Passou(const std::string &servico)
{
    for (auto &[chave, aberto] : m_Abertos) {
        aberto.Passado = aberto.Passado || aberto.Servico == servico;
    }
}

bool NumerosEmAberto::Duvidoso(const std::string &chave) const
{
    const auto aberto = m_Abertos.find(chave);
    return aberto != m_Abertos.end() && (aberto->second.Passado || m_Agora() - aberto->second.Desde > ValeSemPerguntar);
}

SessaoRemota::SessaoRemota(std::shared_ptr<Linha> linha, std::shared_ptr<NumerosEmAberto> numeros,
                           const v1::Sessao &sessao)
    : m_Linha(std::move(linha)),
      m_Numeros(std::move(numeros)),
      m_Chave(sessao.chave()),
      m_Operador(DeMensagem(sessao)),
      m_AvisoDeRelogio(sessao.avisoderelogio())
{
}

SessaoRemota::~SessaoRemota()
{
    IgnoraErro([&] {
        v1::Vazio pedido;
        v1::Vazio resposta;
        m_Linha->ChamaUmaVez("Entrada", "Sai", pedido, resposta, {m_Chave}, PrazoDaSaida);
    });
}

bool SessaoRemota::Conclui(const char *onde, const Desfecho &desfecho, bool muda, std::string &recusa) const
{
    switch (desfecho.Como) {
    case Desfecho::Modo::Feito:
        return true;
    case Desfecho::Modo::Recusado:
        recusa = desfecho.Frase;
        return false;
    case Desfecho::Modo::Cancelado:
        recusa = muda && desfecho.Saiu ? CanceladaTarde : Cancelada;
        return false;
    default:
        Falhou(onde, desfecho.Frase);
    }
}

bool SessaoRemota::Pergunta(const char *onde, const std::string &servico, const std::string &metodo, Message &pedido,
                            Message &resposta, std::string &recusa)
try {
    recusa.clear();
    return Conclui(onde, m_Linha->Chama(servico, metodo, pedido, resposta, {m_Chave}, Efeito::Nenhum, m_Segue), false,
                   recusa);
} catch (const MensagemInvalida &invalida) {
    recusa = invalida.what();
    return false;
}

std::optional<std::string> SessaoRemota::MotivoPara(const Desfecho &falta, std::string &recusa) const
{
    const std::optional<std::string> dado = m_Pergunta ? m_Pergunta(*falta.FaltaMotivo) : std::nullopt;
    recusa = falta.Frase;
    if (!dado) {
        return std::nullopt;
    }
    const std::string porque = mesa::MotivoCorrecao::RecusaDe(*dado);
    if (!porque.empty()) {
        // The refusal says what is not stored, and then that there was no reason.
        const std::size_t dois = recusa.rfind(": ");
        recusa =
            (dois == std::string::npos ? "A correção não foi gravada" : recusa.substr(0, dois)) + ": " + porque + ".";
        return std::nullopt;
    }
    recusa.clear();
    return mesa::MotivoCorrecao::Aparado(*dado);
}

bool SessaoRemota::Muda(const char *onde, const std::string &servico, const std::string &chave, std::string &recusa,
                        const std::function<Desfecho(const Cabecalho &)> &chama)
{
    m_Permitidos.clear();
    if (m_Numeros->Duvidoso(chave)) {
        const std::optional<bool> mesmo = m_Linha->EhOMesmo(JaPedido);
        if (!mesmo) {
            recusa = Cancelada;
            return false;
        }
        if (!*mesmo) {
            m_Numeros->Fecha(chave);
        }
    }
    // Open until it is known what came of it, whatever is raised on the way.
    NumerosEmAberto::Ato &ato = m_Numeros->Abre(servico, chave);
    Cabecalho cabecalho{m_Chave, ato.Numero, ato.Motivo};
    Desfecho desfecho = chama(cabecalho);
    if (desfecho.Como == Desfecho::Modo::Recusado && desfecho.FaltaMotivo) {
        cabecalho.Motivo = MotivoPara(desfecho, recusa);
        if (!cabecalho.Motivo) {
            m_Numeros->Fecha(chave);
            return false;
        }
        ato.Motivo = cabecalho.Motivo; // it is part of what is asked for
        desfecho = chama(cabecalho);
    }
    if (desfecho.Como == Desfecho::Modo::Feito || desfecho.Como == Desfecho::Modo::Recusado || !desfecho.Saiu) {
        m_Numeros->Fecha(chave);
    }
    if (desfecho.Como == Desfecho::Modo::Feito) {
        m_Numeros->Passou(servico);
    }
    return Conclui(onde, desfecho, true, recusa);
}

bool SessaoRemota::DeveTrocarSenha()
{
    v1::Vazio pedido;
    v1::SituacaoDaSessao resposta;
    std::string recusa;
    if (!Pergunta("DeveTrocarSenha", "Entrada", "Situacao", pedido, resposta, recusa)) {
        Falhou("DeveTrocarSenha", recusa);
    }
    m_Linha->ContaRelogio(Data{resposta.agora()});
    return resposta.devetrocarsenha();
}

bool SessaoRemota::TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao)
{
    const auto agora = steady_clock::now();
    const auto chave = std::tuple(sistema, objeto, acao);
    const auto sabida = m_Permitidos.find(chave);
    if (sabida != m_Permitidos.end() && agora < sabida->second.Ate) {
        return sabida->second.Sim;
    }
    v1::Permissao pedido;
    pedido.set_sistema(sistema);
    pedido.set_objeto(objeto);
    pedido.set_acao(acao);
    v1::SimOuNao resposta;
    std::string recusa;
    const bool sim = Pergunta("TemPermissao", "Entrada", "TemPermissao", pedido, resposta, recusa) && resposta.sim();
    m_Permitidos.insert_or_assign(chave, Permitido{sim, steady_clock::now() + ValeAPermissao});
    return sim;
}

bool SessaoRemota::Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                           std::string &recusa)
{
    constexpr const char *onde = "Executa";
    recusa.clear();
    const MethodDescriptor *operacao = OperacaoDe(classeRN, metodo);
    if (operacao == nullptr) {
        recusa = "O serviço " + classeRN + " não tem a operação \"" + metodo + "\".";
        return false;
    }
    // A variable may be given another record meanwhile, by whoever is asked on the way.
    const Ref<Objeto> enviado = pedido;
    auto *registro = dynamic_cast<Registro *>(enviado.Ponteiro());
    if (registro == nullptr || registro->NomeTipo() != operacao->input_type()->name()) {
        recusa = "A operação pede um registro " + operacao->input_type()->name() + " e recebeu " +
                 (enviado.Nada() ? "nenhum" : std::string(enviado->NomeTipo())) + ".";
        return false;
    }
    auto &fabrica = *google::protobuf::MessageFactory::generated_factory();
    const std::unique_ptr<Message> mensagem(fabrica.GetPrototype(operacao->input_type())->New());
    const std::unique_ptr<Message> resposta(fabrica.GetPrototype(operacao->output_type())->New());
    const auto escreve = [&] {
        try {
            ParaMensagem(*registro, *mensagem);
            return true;
        } catch (const MensagemInvalida &invalida) {
            recusa = invalida.what();
            return false;
        }
    };
    if (!escreve()) {
        return false;
    }
    const bool muda = operacao->options().GetExtension(v1::Muda);
    if (muda) {
        std::string octetos;
        octetos.resize(mensagem->ByteSizeLong());
        mensagem->SerializeToArray(octetos.data(), static_cast<int>(octetos.size()));
        const std::string chave = m_Numeros->Chave(m_Operador.Numero, classeRN + "." + metodo, octetos);
        mesa::LimpaMemoria(octetos.data(), octetos.size());
        const bool feita = Muda(onde, classeRN, chave, recusa, [&](const Cabecalho &cabecalho) {
            // Its secrets are gone after a call.
            ParaMensagem(*registro, *mensagem);
            return m_Linha->Chama(classeRN, metodo, *mensagem, *resposta, cabecalho, Efeito::Muda, m_Segue);
        });
        if (!feita) {
            return false;
        }
    } else if (!Pergunta(onde, classeRN, metodo, *mensagem, *resposta, recusa)) {
        return false;
    }

    try {
        if (operacao->options().GetExtension(v1::DevolveOPedido)) {
            PoeMarcas(*DeMensagem(*resposta), *registro);
            retorno = Valor();
        } else if (operacao->output_type() != v1::Vazio::descriptor()) {
            retorno = Valor(DeMensagem(*resposta));
        }
    } catch (const MensagemInvalida &invalida) {
        throw NaoEntendida(onde, std::string(invalida.what()) + (muda ? " A operação foi feita." : ""));
    }
    return true;
}

Desfecho SessaoRemota::Envia(const std::shared_ptr<grpc::Channel> &canal, const Cabecalho &cabecalho,
                             const Bytes &bytes, const std::string &soma, double &numero)
{
    constexpr const char *oQue = "Enviando o documento";
    const std::chrono::milliseconds prazo = m_Linha->PrazoDeCada();
    grpc::ClientContext contexto;
    PoeCabecalho(contexto, cabecalho);
    const auto documentos = v1::Documentos::NewStub(canal);
    v1::NumeroDeDocumento resposta;
    grpc::Status status;
    Fila fila(&contexto, m_Segue);
    const auto envio = documentos->PrepareAsyncGuarda(&contexto, &resposta, &fila.Alvo());
    envio->StartCall(&fila);
    bool segue = fila.Espera(prazo, 0, oQue);
    std::size_t enviados = 0;
    const auto parte = [&] { return Parte(enviados, bytes.size()) * ParteDoEnvio; };
    for (bool primeiro = true; segue && (primeiro || enviados < bytes.size()); primeiro = false) {
        v1::PedacoDeDocumento pedaco;
        const std::size_t quantos = std::min(Pedaco, bytes.size() - enviados);
        pedaco.set_octetos(bytes.data() + enviados, quantos);
        if (primeiro) {
            pedaco.set_tamanho(static_cast<std::int64_t>(bytes.size()));
            pedaco.set_sha256(soma);
        }
        envio->Write(pedaco, &fila);
        segue = fila.Espera(prazo, bytes.empty() ? 0 : parte(), oQue);
        enviados += quantos;
        if (segue && m_Segue && !m_Segue(parte(), oQue)) {
            contexto.TryCancel();
            envio->Finish(&status, &fila);
            fila.Espera(prazo);
            return {Desfecho::Modo::Cancelado, "", std::nullopt, false};
        }
    }
    // Until it is told that this was all, nothing of it is stored.
    const bool inteiro = segue;
    if (segue) {
        envio->WritesDone(&fila);
        fila.Espera(prazo, ParteDoEnvio, "Gravando o documento");
    }
    envio->Finish(&status, &fila);
    fila.Espera(m_Linha->PrazoDe(m_Segue), ParteDoEnvio, "Gravando o documento");
    Desfecho desfecho = Desfecho::De(status, contexto, fila.Cancelado());
    desfecho.Saiu = inteiro;
    if (status.ok()) {
        numero = resposta.numero();
    }
    return desfecho;
}

bool SessaoRemota::GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa)
{
    recusa.clear();
    const std::string soma = mesa::Resumo(SemCopia(bytes));
    const std::string chave = m_Numeros->Chave(m_Operador.Numero, "Documentos.Guarda", soma);
    double guardado = 0;
    const bool feita = Muda("GuardaDocumento", "Documentos", chave, recusa, [&](const Cabecalho &cabecalho) {
        return m_Linha->Insiste(
            [&](const std::shared_ptr<grpc::Channel> &canal) { return Envia(canal, cabecalho, bytes, soma, guardado); },
            Efeito::Muda, m_Segue);
    });
    if (feita) {
        numero = guardado;
    }
    return feita;
}

Desfecho SessaoRemota::Recebe(const std::shared_ptr<grpc::Channel> &canal, double numero, Recebido &recebido)
{
    constexpr const char *oQue = "Recebendo o documento";
    const std::chrono::milliseconds prazo = m_Linha->PrazoDeCada();
    grpc::ClientContext contexto;
    PoeCabecalho(contexto, {m_Chave});
    v1::PedidoDeDocumento pedido;
    pedido.set_numero(numero);
    pedido.set_apartirde(static_cast<std::int64_t>(recebido.Octetos.size()));
    const auto documentos = v1::Documentos::NewStub(canal);
    grpc::Status status;
    Fila fila(&contexto, m_Segue);
    const auto vinda = documentos->PrepareAsyncLe(&contexto, pedido, &fila.Alvo());
    vinda->StartCall(&fila);
    // Before its size is known, as nothing; after a cut, as what came before it.
    const auto parte = [&] {
        return recebido.Sha256.empty() ? 0 : Parte(recebido.Octetos.size(), static_cast<std::size_t>(recebido.Tamanho));
    };
    bool segue = fila.Espera(prazo, parte(), oQue);
    bool cancelado = false;
    bool estranho = false;
    for (bool primeiro = true; segue; primeiro = false) {
        v1::PedacoDeDocumento pedaco;
        vinda->Read(&pedaco, &fila);
        segue = fila.Espera(prazo, parte(), oQue);
        if (!segue) {
            break;
        }
        if (primeiro) {
            // What came before was of another document, or there is far more of it than a document has.
            estranho = pedaco.tamanho() < 0 || pedaco.tamanho() > MaiorRecebido ||
                       (!recebido.Octetos.empty() &&
                        (pedaco.tamanho() != recebido.Tamanho || pedaco.sha256() != recebido.Sha256));
            recebido.Tamanho = pedaco.tamanho();
            recebido.Sha256 = pedaco.sha256();
        }
        estranho =
            estranho || pedaco.octetos().size() > static_cast<std::size_t>(recebido.Tamanho) - recebido.Octetos.size();
        if (!estranho) {
            recebido.Octetos.insert(recebido.Octetos.end(), pedaco.octetos().begin(), pedaco.octetos().end());
            cancelado = m_Segue && !m_Segue(parte(), oQue);
        }
        segue = !estranho && !cancelado;
        if (!segue) {
            contexto.TryCancel();
        }
    }
    vinda->Finish(&status, &fila);
    fila.Espera(prazo, parte(), oQue);
    if (estranho) {
        throw NaoEntendida("LeDocumento", "O que veio não é um documento inteiro.");
    }
    Desfecho desfecho = Desfecho::De(status, contexto, cancelado || fila.Cancelado());
    if (cancelado) {
        desfecho.Como = Desfecho::Modo::Cancelado;
    }
    return desfecho;
}

bool SessaoRemota::LeDocumento(double numero, Bytes &bytes, std::string &recusa)
{
    constexpr const char *onde = "LeDocumento";
    recusa.clear();
    Recebido recebido;
    const Desfecho desfecho =
        m_Linha->Insiste([&](const std::shared_ptr<grpc::Channel> &canal) { return Recebe(canal, numero, recebido); },
                         Efeito::Nenhum, m_Segue);
    if (!Conclui(onde, desfecho, false, recusa)) {
        return false;
    }
    if (recebido.Octetos.size() != static_cast<std::size_t>(recebido.Tamanho) ||
        mesa::Resumo(SemCopia(recebido.Octetos)) != recebido.Sha256) {
        Falhou(onde, "O documento chegou danificado. Tente de novo.");
    }
    bytes = std::move(recebido.Octetos);
    return true;
}

std::vector<mesa::AfericaoComDocumento> SessaoRemota::AfericoesCom(const char *onde, v1::DocumentoOuAfericao pedido)
try {
    v1::AfericoesComDocumento resposta;
    std::string recusa;
    std::vector<mesa::AfericaoComDocumento> afericoes;
    if (Pergunta(onde, "Documentos", "Afericoes", pedido, resposta, recusa)) {
        for (const auto &item : resposta.itens()) {
            afericoes.push_back(DeMensagem(item));
        }
    }
    return afericoes;
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida(onde, invalida.what());
}

std::vector<mesa::AfericaoComDocumento> SessaoRemota::AfericoesDoDocumento(double numero)
{
    v1::DocumentoOuAfericao pedido;
    pedido.set_documento(numero);
    return AfericoesCom("AfericoesDoDocumento", pedido);
}

std::vector<mesa::AfericaoComDocumento> SessaoRemota::AfericoesDoDocumentoDa(double nroIntAfericao)
{
    v1::DocumentoOuAfericao pedido;
    pedido.set_afericao(nroIntAfericao);
    return AfericoesCom("AfericoesDoDocumentoDa", pedido);
}

bool SessaoRemota::VersoesDaAfericao(double nroIntAfericao, std::vector<mesa::VersaoAfericao> &versoes,
                                     std::string &recusa)
try {
    v1::PedidoDeVersoes pedido;
    pedido.set_nrointafericao(nroIntAfericao);
    v1::VersoesDaAfericaoED resposta;
    if (!Pergunta("VersoesDaAfericao", "Historia", "VersoesDaAfericao", pedido, resposta, recusa)) {
        return false;
    }
    std::vector<mesa::VersaoAfericao> lidas;
    for (const auto &item : resposta.itens()) {
        lidas.push_back(DeMensagem(item));
    }
    versoes = std::move(lidas);
    return true;
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida("VersoesDaAfericao", invalida.what());
}

bool SessaoRemota::ComoConhecido(std::int32_t nroIntEquip, const mesa::Instante &quando,
                                 mesa::EquipamentoConhecido &conhecido, std::string &recusa)
try {
    v1::PedidoDeConhecido pedido;
    pedido.set_nrointequip(nroIntEquip);
    pedido.set_quando(quando.Local.Valor);
    pedido.set_fuso(quando.Fuso);
    v1::EquipamentoConhecido resposta;
    if (!Pergunta("ComoConhecido", "Historia", "ComoConhecido", pedido, resposta, recusa)) {
        return false;
    }
    conhecido = DeMensagem(resposta);
    return true;
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida("ComoConhecido", invalida.what());
}

std::vector<mesa::ClienteCadastrado> SessaoRemota::Clientes()
try {
    v1::Vazio pedido;
    v1::ClientesDoOperador resposta;
    std::string recusa;
    std::vector<mesa::ClienteCadastrado> clientes;
    if (Pergunta("Clientes", "Replica", "Clientes", pedido, resposta, recusa)) {
        for (const auto &item : resposta.itens()) {
            clientes.push_back(DeMensagem(item));
        }
    }
    return clientes;
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida("Clientes", invalida.what());
}

Desfecho SessaoRemota::RecebeReplica(const std::shared_ptr<grpc::Channel> &canal, std::int64_t depoisDe,
                                     std::vector<mesa::LinhaReplica> &linhas, mesa::Replicado &replicado)
{
    constexpr const char *oQue = "Recebendo os equipamentos";
    const std::chrono::milliseconds prazo = m_Linha->PrazoDeCada();
    // From the start after a cut: all of it is of one moment.
    linhas.clear();
    replicado = {};
    grpc::ClientContext contexto;
    PoeCabecalho(contexto, {m_Chave});
    v1::PedidoDeReplica pedido;
    pedido.set_depoisde(depoisDe);
    const auto replica = v1::Replica::NewStub(canal);
    grpc::Status status;
    Fila fila(&contexto, m_Segue);
    const auto vinda = replica->PrepareAsyncLe(&contexto, pedido, &fila.Alvo());
    vinda->StartCall(&fila);
    std::size_t quantas = 0;
    double parte = 0;
    bool segue = fila.Espera(prazo, 0, oQue);
    while (segue) {
        v1::PedacoDeReplica pedaco;
        vinda->Read(&pedaco, &fila);
        segue = fila.Espera(prazo, parte, oQue);
        if (!segue) {
            break;
        }
        for (const auto &linha : pedaco.linhas()) {
            linhas.push_back(DeMensagem(linha));
        }
        quantas = std::max(quantas, static_cast<std::size_t>(std::max<std::int64_t>(pedaco.quantas(), 0)));
        parte = Parte(linhas.size(), quantas);
        replicado.DeQuando = Data{pedaco.dequando()};
        replicado.Ate = pedaco.ate();
        replicado.Elo = pedaco.elo();
        replicado.EloDeAntes = pedaco.elodeantes();
    }
    vinda->Finish(&status, &fila);
    fila.Espera(prazo, parte, oQue);
    Desfecho desfecho = Desfecho::De(status, contexto, fila.Cancelado());
    if (desfecho.Como == Desfecho::Modo::Feito && linhas.size() != quantas) {
        throw NaoEntendida("LeReplica", "Vieram " + std::to_string(linhas.size()) + " equipamentos, e seriam " +
                                            std::to_string(quantas) + ".");
    }
    return desfecho;
}

mesa::Replicado SessaoRemota::LeReplica(std::int64_t depoisDe,
                                        const std::function<void(const mesa::LinhaReplica &)> &cadaLinha)
try {
    constexpr const char *onde = "LeReplica";
    std::vector<mesa::LinhaReplica> linhas;
    mesa::Replicado replicado;
    const Desfecho desfecho = m_Linha->Insiste(
        [&](const std::shared_ptr<grpc::Channel> &canal) { return RecebeReplica(canal, depoisDe, linhas, replicado); },
        Efeito::Nenhum, m_Segue);
    std::string recusa;
    if (!Conclui(onde, desfecho, false, recusa)) {
        if (desfecho.Como == Desfecho::Modo::Cancelado) {
            return {};
        }
        Falhou(onde, recusa);
    }
    for (const mesa::LinhaReplica &linha : linhas) {
        if (m_Segue && !m_Segue(Parte(static_cast<std::size_t>(replicado.Quantas), linhas.size()), linha.Codigo)) {
            return {};
        }
        cadaLinha(linha);
        ++replicado.Quantas;
    }
    return replicado;
} catch (const MensagemInvalida &invalida) {
    throw NaoEntendida("LeReplica", invalida.what());
}

SessaoDeServidor::Conferencia SessaoRemota::PreparaConferencia(const std::optional<mesa::CabecaAssinada> &desde)
{
    DeveTrocarSenha(); // whoever runs the check elsewhere can ask nobody to sign in again
    v1::PedidoDeConferencia pedido;
    if (desde) {
        pedido.set_desde(desde->Texto());
    }
    return [linha = m_Linha->Outra(), chave = m_Chave, pedido](const mesa::Segue &segue) {
        return Confere(*linha, chave, pedido, segue);
    };
}

mesa::CabecaAssinada SessaoRemota::Cabeca()
{
    v1::Vazio pedido;
    v1::CabecaDoHistorico resposta;
    std::string recusa;
    if (!Pergunta("Cabeca", "Conferencia", "Cabeca", pedido, resposta, recusa)) {
        throw PedidoRecusado("Rede < SessaoServico.Cabeca", recusa);
    }
    try {
        return mesa::CabecaAssinada::Le(resposta.texto());
    } catch (const Falha &falha) {
        throw NaoEntendida("Cabeca", falha.Descricao);
    }
}

} // namespace rede
