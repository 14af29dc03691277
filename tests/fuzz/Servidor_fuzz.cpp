#include "tests/fuzz/Alvo.h"

#include "server/Atendente.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/services/RegistroDeTeste.h"

#include <QCoreApplication>

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

// Octets as the messages of any operation, from nobody, from somebody without rights and from somebody with all of
// them, through what every call is led through on the server.

using namespace registro::v1;
using grpc::StatusCode;

namespace {

using google::protobuf::Message;
using google::protobuf::MethodDescriptor;

// What a server consists of, without its network.
class ServidorSemRede {
  public:
    ServidorSemRede()
    {
        Registro.Cadastra("ana");
        Registro.Cadastra("carla");
        Registro.Cadastra("saulo");
        m_Como.Registro = Registro.Caminho();
        m_Trabalhadores = std::make_unique<servidor::Trabalhadores>(
            1, 4, [this] { return ComoTipo<mesa::ServicosSql>(Registro.AbreOutro()); });
        Quem = std::make_unique<servidor::Atendente>(
            m_Como, [this] { return mesa::Instante(Registro.Relogio); }, *m_Trabalhadores, m_Sessoes, m_Recusadas,
            m_Diario, m_Figuras);
        Carla = Entra("carla");
        Saulo = Entra("saulo");
    }

    std::string Escritos()
    {
        return Registro.Sql("SELECT (SELECT COUNT(*) FROM HISTORICO) || ' ' || (SELECT COUNT(*) FROM OPERACAO)");
    }
    // Who has all rights may take them from anybody, from himself too: others take their places then.
    void Substitui()
    {
        SituacaoDaSessao situacao;
        for (const bool sabeTudo : {false, true}) {
            std::string &sessao = sabeTudo ? Saulo : Carla;
            servidor::Chamada chamada;
            chamada.Sessao = sessao;
            if (Quem->Situacao(chamada, situacao).ok()) {
                continue;
            }
            const std::string nome = "outro" + std::to_string(++m_Outros);
            Registro.Aberto().CadastraUsuario(
                {100000 + m_Outros, nome, "Outra Pessoa", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
                "senha de " + nome, sabeTudo ? std::vector<std::string>{"", "I", "A", "E"} : std::vector<std::string>(),
                sabeTudo ? std::vector<std::string>{"U", "T", "C"} : std::vector<std::string>());
            sessao = Entra(nome);
        }
    }

    RegistroDeTeste Registro;
    std::unique_ptr<servidor::Atendente> Quem;
    std::string Carla;
    std::string Saulo;

  private:
    std::string Entra(const std::string &usuario)
    {
        PedidoDeEntrada pedido;
        pedido.set_usuario(usuario);
        pedido.set_senha("senha de " + usuario);
        pedido.set_contrato(1);
        Sessao sessao;
        Quem->Entra({}, pedido, sessao);
        return sessao.chave();
    }

    std::int32_t m_Outros = 0;
    servidor::Configuracao m_Como;
    std::unique_ptr<servidor::Trabalhadores> m_Trabalhadores;
    servidor::Sessoes m_Sessoes{std::chrono::steady_clock::now, std::chrono::minutes(30), 8, 4};
    servidor::EntradasRecusadas m_Recusadas;
    servidor::Diario m_Diario{"/dev/null"};
    servidor::Figuras m_Figuras{"", [] { return servidor::Retrato(); }};
};

ServidorSemRede &Um()
{
    static int quantos = 1;
    static char nome[] = "fuzz";
    static char *argumentos[] = {nome, nullptr};
    static const QCoreApplication aplicacao(quantos, argumentos);
    static ServidorSemRede um;
    return um;
}

const std::vector<const MethodDescriptor *> &Operacoes()
{
    static const std::vector<const MethodDescriptor *> operacoes = [] {
        std::vector<const MethodDescriptor *> todas;
        const auto *arquivo = Vazio::descriptor()->file();
        for (int s = 0; s < arquivo->service_count(); ++s) {
            for (int m = 0; m < arquivo->service(s)->method_count(); ++m) {
                todas.push_back(arquivo->service(s)->method(m));
            }
        }
        return todas;
    }();
    return operacoes;
}

std::unique_ptr<Message> Nova(const google::protobuf::Descriptor *qual)
{
    return std::unique_ptr<Message>(google::protobuf::MessageFactory::generated_factory()->GetPrototype(qual)->New());
}

std::string NomeDe(const MethodDescriptor &operacao)
{
    return operacao.service()->name() + "/" + operacao.name();
}

// How the operation ends, and with how many messages it answered; of the replica the rows count.
grpc::Status Chama(const MethodDescriptor &operacao, const servidor::Chamada &chamada, Message &pedido,
                   Message &resposta, int &respostas)
{
    const std::string nome = NomeDe(operacao);
    servidor::Atendente &quem = *Um().Quem;
    const auto conta = [&]<class Mensagem>(const Mensagem &mensagem) {
        if constexpr (std::is_same_v<Mensagem, PedacoDeReplica>) {
            respostas += mensagem.linhas_size();
        } else {
            ++respostas;
        }
        return true;
    };
    const auto de = [&]<class Mensagem>(Mensagem *) -> const Mensagem & { return dynamic_cast<Mensagem &>(pedido); };
    const auto para = [&]<class Mensagem>(Mensagem *) -> Mensagem & { return dynamic_cast<Mensagem &>(resposta); };
#define DE(Mensagem) de(static_cast<Mensagem *>(nullptr))
#define PARA(Mensagem) para(static_cast<Mensagem *>(nullptr))
    if (nome == "Entrada/Apresenta") {
        return quem.Apresenta(chamada, DE(Apresentacao), PARA(registro::v1::Servidor));
    }
    if (nome == "Entrada/Entra") {
        return quem.Entra(chamada, DE(PedidoDeEntrada), PARA(Sessao));
    }
    if (nome == "Entrada/Sai") {
        // The two who are here stay for the next input.
        return chamada.Sessao == Um().Carla || chamada.Sessao == Um().Saulo ? grpc::Status() : quem.Sai(chamada);
    }
    if (nome == "Entrada/TemPermissao") {
        return quem.TemPermissao(chamada, DE(Permissao), PARA(SimOuNao));
    }
    if (nome == "Entrada/Situacao") {
        return quem.Situacao(chamada, PARA(SituacaoDaSessao));
    }
    if (nome == "Documentos/Guarda") {
        int lidas = 0;
        return quem.GuardaDocumento(
            chamada,
            [&](PedacoDeDocumento &pedaco) {
                pedaco = DE(PedacoDeDocumento);
                return lidas++ == 0;
            },
            PARA(NumeroDeDocumento));
    }
    if (nome == "Documentos/Le") {
        return quem.LeDocumento(chamada, DE(PedidoDeDocumento), conta);
    }
    if (nome == "Documentos/Afericoes") {
        return quem.AfericoesDoDocumento(chamada, DE(DocumentoOuAfericao), PARA(AfericoesComDocumento));
    }
    if (nome == "Historia/VersoesDaAfericao") {
        return quem.VersoesDaAfericao(chamada, DE(PedidoDeVersoes), PARA(VersoesDaAfericaoED));
    }
    if (nome == "Historia/ComoConhecido") {
        return quem.ComoConhecido(chamada, DE(PedidoDeConhecido), PARA(registro::v1::EquipamentoConhecido));
    }
    if (nome == "Replica/Clientes") {
        return quem.Clientes(chamada, PARA(ClientesDoOperador));
    }
    if (nome == "Replica/Le") {
        return quem.LeReplica(chamada, DE(PedidoDeReplica), conta);
    }
    if (nome == "Conferencia/Confere") {
        return quem.Confere(chamada, DE(PedidoDeConferencia), conta);
    }
    if (nome == "Conferencia/Cabeca") {
        return quem.Cabeca(chamada, PARA(CabecaDoHistorico));
    }
#undef DE
#undef PARA
    const std::string &classe = operacao.service()->name();
    return operacao.options().GetExtension(Muda) ? quem.Grava(chamada, classe, operacao.name(), pedido, resposta)
                                                 : quem.Consulta(chamada, classe, operacao.name(), pedido, resposta);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    ServidorSemRede &um = Um();
    Octetos octetos(dados, tamanho);
    const auto &operacoes = Operacoes();
    const MethodDescriptor &operacao = *operacoes[octetos.Octeto() % operacoes.size()];
    const std::string nome = NomeDe(operacao);
    servidor::Chamada chamada;
    chamada.Endereco = "10.0.0." + std::to_string(octetos.Octeto());
    const int quem = octetos.Ate(4);
    chamada.Sessao = quem == 0 ? octetos.Texto(50) : quem == 1 ? std::string(43, 'A') : quem == 2 ? um.Carla : um.Saulo;
    switch (octetos.Ate(3)) {
    case 0:
        chamada.Numero = octetos.Texto(40);
        break;
    case 1:
        chamada.Motivo = octetos.Texto(20);
        [[fallthrough]];
    default: { // one of a few, so that they come again
        chamada.Numero = "00000000-0000-4000-8000-0000000000" + std::to_string(10 + octetos.Ate(89));
        break;
    }
    }
    const std::unique_ptr<Message> pedido = Nova(operacao.input_type());
    const std::unique_ptr<Message> resposta = Nova(operacao.output_type());
    pedido->ParsePartialFromString(octetos.Resto());
    const std::string antes = um.Escritos();
    int respostas = 0;
    const grpc::Status fim = Chama(operacao, chamada, *pedido, *resposta, respostas);
    const bool deTodos = nome == "Entrada/Apresenta" || nome == "Entrada/Entra";
    if (quem < 2 && !deTodos) {
        Exige(fim.error_code() == StatusCode::UNAUTHENTICATED, "nobody has no answer", nome);
        Exige(respostas == 0 && resposta->ByteSizeLong() == 0, "nobody is answered nothing", nome);
    }
    if (quem >= 2 && !deTodos) {
        Exige(fim.error_code() != StatusCode::UNAUTHENTICATED, "who is signed in stays so", nome);
    }
    static const std::set<std::string> daSessao{"Entrada/Sai", "Entrada/TemPermissao", "Entrada/Situacao",
                                                "Replica/Clientes", "AdministracaoRN/trocaMinhaSenha"};
    if (quem == 2 && !deTodos && !daSessao.contains(nome)) {
        Exige(um.Escritos() == antes, "who has no right changes nothing", nome);
        Exige(respostas == 0 && (!fim.ok() || resposta->ByteSizeLong() == 0), "who has no right is told nothing", nome);
    }
    if (!fim.ok() && nome != "Entrada/Entra") {
        Exige(!fim.error_message().empty(), "what is refused has a sentence", nome);
        Exige(fim.error_code() != StatusCode::INTERNAL, "nothing fails for what it was asked", nome);
    }
    if (quem >= 2 && operacao.service()->name() == "AdministracaoRN" && fim.ok()) {
        um.Substitui();
    }
    return 0;
}
