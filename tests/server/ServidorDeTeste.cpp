#include "tests/server/ServidorDeTeste.h"

#include "tests/services/PapelDeTrabalho.h"

#include <QUuid>

#include <fstream>
#include <sstream>
#include <stdexcept>

using namespace registro::v1;

namespace {

grpc::ByteBuffer Octetos(const std::string &texto)
{
    const grpc::Slice pedaco(texto);
    return {&pedaco, 1};
}

std::string Texto(const grpc::ByteBuffer &octetos)
{
    std::vector<grpc::Slice> pedacos;
    std::string texto;
    if (octetos.Dump(&pedacos).ok()) {
        for (const grpc::Slice &pedaco : pedacos) {
            texto.append(reinterpret_cast<const char *>(pedaco.begin()), pedaco.size());
        }
    }
    return texto;
}

} // namespace

std::string Feita::Frase() const
{
    const auto frase = NoFim.find("frase-bin");
    return frase == NoFim.end() ? Fim.error_message() : frase->second;
}

ServidorDeTeste::ServidorDeTeste(std::shared_ptr<RegistroDeTeste> registro)
    : DoRegistro(std::move(registro)),
      m_Agora(Registro.Relogio.Valor)
{
    Como.Registro = papel::DeTrabalho(Registro.Caminho());
    Como.Escuta = "127.0.0.1:0";
    Como.SemTls = true;
    Como.Conexoes = 2;
    Como.PastaDoCertificado = Pasta();
    Como.Diario = Pasta() + "/diario";
}

void ServidorDeTeste::Comeca()
{
    m_Servidor = std::make_unique<servidor::Servidor>(
        Como, [this] { return mesa::Instante(Data{m_Agora.load()}); }, CustoDeTeste);
}

std::vector<std::string> ServidorDeTeste::Diario() const
{
    std::ifstream arquivo(Como.Diario);
    std::vector<std::string> linhas;
    for (std::string linha; std::getline(arquivo, linha);) {
        linhas.push_back(linha);
    }
    return linhas;
}

std::shared_ptr<grpc::Channel> ServidorDeTeste::Canal() const
{
    grpc::ChannelArguments argumentos;
    argumentos.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    argumentos.SetMaxReceiveMessageSize(-1);
    const std::string porta = ":" + std::to_string(m_Servidor->Porta());
    if (Como.SemTls) {
        return grpc::CreateCustomChannel("127.0.0.1" + porta, grpc::InsecureChannelCredentials(), argumentos);
    }
    std::stringstream certificado;
    certificado << std::ifstream(Pasta() + "/servidor.crt").rdbuf();
    grpc::SslCredentialsOptions confia;
    confia.pem_root_certs = certificado.str();
    return grpc::CreateCustomChannel("localhost" + porta, grpc::SslCredentials(confia), argumentos);
}

Feita ServidorDeTeste::Chama(const std::string &nome, const std::vector<std::string> &pedidos,
                             const Metadados &metadados, std::chrono::milliseconds prazo) const
{
    grpc::GenericStub fio(Canal());
    grpc::ClientContext contexto;
    contexto.set_deadline(std::chrono::system_clock::now() + prazo);
    contexto.set_wait_for_ready(true);
    for (const auto &[chave, valor] : metadados) {
        contexto.AddMetadata(chave, valor);
    }
    grpc::CompletionQueue fila;
    const auto espera = [&] {
        void *marca = nullptr;
        bool feito = false;
        fila.Next(&marca, &feito);
        return feito;
    };
    const auto chamada = fio.PrepareCall(&contexto, "/registro.v1." + nome, &fila);
    chamada->StartCall(nullptr);
    bool aberta = espera();
    for (const std::string &pedido : pedidos) {
        if (aberta) {
            chamada->Write(Octetos(pedido), nullptr);
            aberta = espera();
        }
    }
    if (aberta) {
        chamada->WritesDone(nullptr);
        espera();
    }
    Feita feita;
    for (;;) {
        grpc::ByteBuffer resposta;
        chamada->Read(&resposta, nullptr);
        if (!espera()) {
            break;
        }
        feita.Respostas.push_back(Texto(resposta));
    }
    chamada->Finish(&feita.Fim, nullptr);
    espera();
    for (const auto &[chave, valor] : contexto.GetServerTrailingMetadata()) {
        feita.NoFim.emplace(std::string(chave.data(), chave.size()), std::string(valor.data(), valor.size()));
    }
    return feita;
}

Feita ServidorDeTeste::Chama(const std::string &nome, const google::protobuf::Message &pedido,
                             const std::string &sessao, Metadados metadados) const
{
    if (!sessao.empty()) {
        metadados.emplace("sessao", sessao);
    }
    return Chama(nome, std::vector<std::string>{pedido.SerializeAsString()}, metadados);
}

Feita ServidorDeTeste::Grava(const std::string &nome, const google::protobuf::Message &pedido,
                             const std::string &sessao, Metadados metadados) const
{
    metadados.emplace("operacao", Numero());
    return Chama(nome, pedido, sessao, std::move(metadados));
}

std::string ServidorDeTeste::Numero()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}

Feita ServidorDeTeste::TentaEntrar(const std::string &usuario, const std::string &senha, int contrato,
                                   std::chrono::milliseconds prazo) const
{
    PedidoDeEntrada pedido;
    pedido.set_usuario(usuario);
    pedido.set_senha(senha);
    pedido.set_estacao("estação de teste");
    pedido.set_contrato(contrato);
    return Chama("Entrada/Entra", {pedido.SerializeAsString()}, {}, prazo);
}

std::string ServidorDeTeste::Entra(const std::string &usuario)
{
    Registro.Cadastra(usuario);
    const Feita feita = TentaEntrar(usuario, "senha de " + usuario);
    const auto sessao = feita.Como<Sessao>();
    if (!feita.Fim.ok() || sessao.chave().empty()) {
        throw std::runtime_error(usuario + ": " + feita.Frase() + sessao.recusa());
    }
    return sessao.chave();
}
