#include "tests/server/ServidorDeTeste.h"

#include "host/Falha.h"
#include "rede/Mensagens.h"
#include "rede/ServicosRemotos.h"
#include "server/Atendente.h"
#include "server/Certificado.h"
#include "server/EntradasRecusadas.h"
#include "services/Cabeca.h"
#include "services/ConteudoPdf.h"
#include "services/DialetoPostgres.h"
#include "services/LigacaoPostgres.h"
#include "services/RegistrosAdministracao.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <thread>

using grpc::StatusCode;
using namespace registro::v1;

namespace {

class ServidorTeste : public testing::Test {
  protected:
    ServidorDeTeste Um;

    static registro::v1::EquiptoED Novo(const std::string &codigo)
    {
        registro::v1::EquiptoED equipto;
        rede::ParaMensagem(*EquipamentoDe(codigo), equipto);
        return equipto;
    }
    // A document in pieces of that size.
    static std::vector<std::string> EmPedacos(const std::string &octetos, std::size_t quanto, std::int64_t tamanho = -1,
                                              const std::string &sha256 = "")
    {
        std::vector<std::string> pedacos;
        for (std::size_t onde = 0; onde < octetos.size(); onde += quanto) {
            PedacoDeDocumento pedaco;
            pedaco.set_octetos(octetos.substr(onde, quanto));
            if (onde == 0) {
                pedaco.set_tamanho(tamanho < 0 ? static_cast<std::int64_t>(octetos.size()) : tamanho);
                pedaco.set_sha256(sha256.empty() ? mesa::Resumo(QByteArray::fromStdString(octetos)) : sha256);
            }
            pedacos.push_back(pedaco.SerializeAsString());
        }
        return pedacos;
    }
    static std::string UmPdf(std::size_t tamanho)
    {
        const Bytes bytes = Pdf("um", tamanho);
        return {bytes.begin(), bytes.end()};
    }
    ServidorDeTeste::Metadados Da(const std::string &sessao) const
    {
        return {{"sessao", sessao}, {"operacao", ServidorDeTeste::Numero()}};
    }
};

// What the server tells of itself over HTTP.
std::string Numeros(ServidorDeTeste &um)
{
    const int fio = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in onde{};
    onde.sin_family = AF_INET;
    onde.sin_port = htons(um.Rodando().PortaDosNumeros());
    onde.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(fio, reinterpret_cast<const sockaddr *>(&onde), sizeof onde), 0);
    const std::string pedido = "GET /metrics HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n";
    EXPECT_EQ(::write(fio, pedido.data(), pedido.size()), static_cast<ssize_t>(pedido.size()));
    std::string tudo(1 << 16, 0);
    std::size_t lidos = 0;
    for (ssize_t n = 0; (n = ::read(fio, tudo.data() + lidos, tudo.size() - lidos)) > 0;) {
        lidos += static_cast<std::size_t>(n);
    }
    ::close(fio);
    tudo.resize(lidos);
    return tudo;
}

// Until the figures say so.
void EsperaNumero(ServidorDeTeste &um, const std::string &linha)
{
    const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Numeros(um).find(linha + "\n") == std::string::npos) {
        ASSERT_LT(std::chrono::steady_clock::now(), ate) << linha;
    }
}

// HealthCheckResponse { status = SERVING }, and NOT_SERVING.
const std::string Servindo = "\x08\x01";
const std::string SemServir = "\x08\x02";

// What it says of its health.
std::string Saude(const ServidorDeTeste &um)
{
    grpc::GenericStub fio(um.Canal());
    grpc::ClientContext contexto;
    grpc::CompletionQueue fila;
    const grpc::Slice vazio("");
    const grpc::ByteBuffer nada(&vazio, 1);
    const auto chamada = fio.PrepareUnaryCall(&contexto, "/grpc.health.v1.Health/Check", nada, &fila);
    chamada->StartCall();
    grpc::ByteBuffer resposta;
    grpc::Status fim;
    chamada->Finish(&resposta, &fim, nullptr);
    void *marca = nullptr;
    bool feito = false;
    fila.Next(&marca, &feito);
    grpc::Slice octetos;
    if (!fim.ok() || !resposta.DumpToSingleSlice(&octetos).ok()) {
        return fim.error_message();
    }
    return {reinterpret_cast<const char *>(octetos.begin()), octetos.size()};
}

// The same once it is as awaited, or after a long time.
std::string SaudeAte(const ServidorDeTeste &um, const std::string &esperada)
{
    const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    std::string saude = Saude(um);
    while (saude != esperada && std::chrono::steady_clock::now() < ate) {
        saude = Saude(um);
    }
    return saude;
}

// Keeps everybody else from writing while it lives.
class Gravando {
  public:
    explicit Gravando(const std::string &onde)
    {
        if (mesa::EhDeServidor(onde)) {
            m_NoServidor.emplace(onde).Comanda(mesa::S(mesa::DialetoPostgres().IniciaEscrita()));
            return;
        }
        EXPECT_EQ(sqlite3_open(onde.c_str(), &m_Banco), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(m_Banco, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    Gravando(const Gravando &) = delete;
    Gravando &operator=(const Gravando &) = delete;
    ~Gravando() { sqlite3_close(m_Banco); }

  private:
    std::optional<mesa::LigacaoPostgres> m_NoServidor;
    sqlite3 *m_Banco = nullptr;
};

// The reason for which a server does not begin.
std::string NaoComeca(ServidorDeTeste &um)
{
    try {
        um.Comeca();
        return "";
    } catch (const ::Falha &falha) {
        return falha.Descricao;
    }
}

} // namespace

TEST_F(ServidorTeste, Apresenta_OurContract_SaysWhichRegistryThisIs)
{
    Um.Comeca();
    Apresentacao eu;
    eu.set_contrato(rede::Contrato);
    eu.set_contratominimo(rede::ContratoMinimo);
    const Feita feita = Um.Chama("Entrada/Apresenta", eu, "");
    ASSERT_TRUE(feita.Fim.ok()) << feita.Frase();
    const auto dela = feita.Como<registro::v1::Servidor>();
    EXPECT_EQ(dela.registro(), Um.Registro.Aberto().Identificador());
    EXPECT_EQ(dela.contrato(), rede::Contrato);
    EXPECT_FALSE(dela.amostra());
    EXPECT_EQ(dela.somenteconsulta(), "");
    EXPECT_TRUE(dela.programa().starts_with("registro-servidor "));
}

TEST_F(ServidorTeste, ApresentaEEntra_ContractOutOfRange_RefusedInWords)
{
    Um.Comeca();
    Um.Registro.Cadastra("ana");
    Apresentacao velho;
    velho.set_contrato(0);
    const Feita deVelho = Um.Chama("Entrada/Apresenta", velho, "");
    EXPECT_EQ(deVelho.Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_NE(deVelho.Frase().find("Atualize o programa."), std::string::npos) << deVelho.Frase();
    Apresentacao novo;
    novo.set_contrato(9);
    novo.set_contratominimo(9);
    const Feita deNovo = Um.Chama("Entrada/Apresenta", novo, "");
    EXPECT_EQ(deNovo.Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_NE(deNovo.Frase().find("O servidor precisa ser atualizado."), std::string::npos) << deNovo.Frase();
    EXPECT_EQ(Um.TentaEntrar("ana", "senha de ana", 0).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.TentaEntrar("ana", "senha de ana", 9).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
}

TEST_F(ServidorTeste, Entra_RightAndWrongPassword_KeyOrReason)
{
    Um.Comeca();
    Um.Registro.Cadastra("ana");
    const auto sessao = Um.TentaEntrar("ana", "senha de ana").Como<Sessao>();
    EXPECT_EQ(sessao.chave().size(), 43U);
    EXPECT_EQ(sessao.numero(), 1);
    EXPECT_EQ(sessao.cliente(), "Autoridade Estadual de Trânsito");
    EXPECT_FALSE(sessao.devetrocarsenha());
    EXPECT_NE(Um.TentaEntrar("ana", "senha de ana").Como<Sessao>().chave(), sessao.chave());
    const Feita errada = Um.TentaEntrar("ana", "outra");
    EXPECT_TRUE(errada.Fim.ok());
    EXPECT_EQ(errada.Como<Sessao>().chave(), "");
    EXPECT_EQ(errada.Como<Sessao>().recusa(), "Usuário ou senha incorretos.");
}

TEST_F(ServidorTeste, Entra_ClockBehindTheHistory_SpeaksOfTheServersClock)
{
    Um.Comeca();
    Um.Entra("ana");
    Um.PassaMinutos(-24 * 60);
    const std::string aviso = Um.TentaEntrar("ana", "senha de ana").Como<Sessao>().avisoderelogio();
    EXPECT_TRUE(aviso.starts_with("O relógio do servidor marca ")) << aviso;
    EXPECT_NE(aviso.find("Avise quem administra o servidor"), std::string::npos) << aviso;
    EXPECT_EQ(aviso.find("estação"), std::string::npos) << aviso;
}

TEST_F(ServidorTeste, Grava_ThenReads_RecordIsThereWithItsMark)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const Feita incluida = Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana);
    ASSERT_TRUE(incluida.Fim.ok()) << incluida.Frase();
    registro::v1::EquiptoED qual;
    qual.set_nrointequip(incluida.Como<registro::v1::EquiptoED>().nrointequip());
    const Feita lida = Um.Chama("EquiptoRN/consulta", qual, ana);
    ASSERT_TRUE(lida.Fim.ok()) << lida.Frase();
    EXPECT_EQ(lida.Como<registro::v1::EquiptoED>().codigo(), "R-001");
    EXPECT_NE(lida.Como<registro::v1::EquiptoED>().versaolida(), 0);
}

TEST_F(ServidorTeste, Grava_SameNumberAgain_DoneOnceAndAnsweredAsTheFirstTime)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string numero = ServidorDeTeste::Numero();
    const Feita primeira = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
    ASSERT_TRUE(primeira.Fim.ok()) << primeira.Frase();
    // Over another session of the user too, as after the death of a server.
    const Feita segunda = Um.Chama("EquiptoRN/inclui", Novo("R-001"), Um.Entra("ana"), {{"operacao", numero}});
    ASSERT_TRUE(segunda.Fim.ok()) << segunda.Frase();
    EXPECT_EQ(primeira.Respostas, segunda.Respostas);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
    const Feita outra = Um.Chama("EquiptoRN/inclui", Novo("R-002"), ana, {{"operacao", numero}});
    EXPECT_EQ(outra.Fim.error_code(), StatusCode::FAILED_PRECONDITION) << outra.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(ServidorTeste, Grava_SameNumberWithAnotherReason_IsRefusedAndTheFirstOneStands)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const Ref<mesa::SessaoServico> sessao = Um.Registro.Sessao("ana");
    const std::int32_t numero =
        IncluiComSensores(sessao, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(31, 12, 2026))}});
    const Ref<::EquiptoED> lido = Abre(sessao, numero);
    lido->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->Numero = "C-2";
    registro::v1::EquiptoED pedido;
    rede::ParaMensagem(*lido, pedido);
    const std::string ato = ServidorDeTeste::Numero();
    const auto altera = [&](const char *motivo) {
        return Um.Chama("EquiptoRN/altera", pedido, ana, {{"operacao", ato}, {"motivo-bin", motivo}});
    };
    const Feita primeira = altera("erro de digitação");
    ASSERT_TRUE(primeira.Fim.ok()) << primeira.Frase();
    EXPECT_EQ(altera("erro de digitação").Respostas, primeira.Respostas);
    EXPECT_EQ(altera("o certificado era outro").Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.Registro.Sql("SELECT Numero FROM AFERICAO"), "C-2");
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Motivo LIKE 'o certificado%'"), "0");
}

TEST_F(ServidorTeste, Grava_CorrectionWithoutAReason_RefusedOrDoneAsTheSettingSays)
{
    for (const bool exige : {true, false}) {
        SCOPED_TRACE(exige);
        ServidorDeTeste um;
        um.Como.ExigeMotivo = exige;
        um.Comeca();
        const std::string ana = um.Entra("ana");
        const Ref<mesa::SessaoServico> sessao = um.Registro.Sessao("ana");
        const std::int32_t numero =
            IncluiComSensores(sessao, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(31, 12, 2026))}});
        const auto corrige = [&](const std::string &para, const ServidorDeTeste::Metadados &motivo) {
            const Ref<::EquiptoED> lido = Abre(sessao, numero);
            lido->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->Numero = para;
            registro::v1::EquiptoED pedido;
            rede::ParaMensagem(*lido, pedido);
            return um.Grava("EquiptoRN/altera", pedido, ana, motivo);
        };
        const auto motivo = [&] {
            return um.Registro.Sql("SELECT Motivo FROM HISTORICO WHERE Entidade = 'AFERICAO' ORDER BY Nro DESC");
        };
        const Feita sem = corrige("C-2", {});
        EXPECT_EQ(sem.Fim.error_code(), exige ? StatusCode::FAILED_PRECONDITION : StatusCode::OK) << sem.Frase();
        EXPECT_EQ(sem.NoFim.count("falta-motivo-bin"), exige ? 1U : 0U);
        EXPECT_EQ(um.Registro.Sql("SELECT Numero FROM AFERICAO"), exige ? "C-1" : "C-2");
        EXPECT_EQ(motivo(), exige ? "" : "sem motivo");
        const Feita com = corrige("C-3", {{"motivo-bin", "erro de digitação"}});
        EXPECT_TRUE(com.Fim.ok()) << com.Frase();
        EXPECT_EQ(motivo(), "erro de digitação");
    }
}

TEST_F(ServidorTeste, Grava_WithoutNumberOrWithANonsenseOne_NothingIsDone)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    for (const std::string numero : {"", "1", "zzzzzzzz-zzzz-zzzz-zzzz-zzzzzzzzzzzz"}) {
        const Feita feita = Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana, {{"operacao", numero}});
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::INVALID_ARGUMENT) << numero;
    }
    EXPECT_EQ(Um.Chama("EquiptoRN/inclui", Novo("R-001"), ana).Fim.error_code(), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
}

TEST_F(ServidorTeste, Chama_MetadataTwiceOrNotText_InvalidArgument)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string nada = Vazio().SerializeAsString();
    EXPECT_EQ(Um.Chama("Entrada/Situacao", {nada}, {{"sessao", ana}, {"sessao", ana}}).Fim.error_code(),
              StatusCode::INVALID_ARGUMENT);
    ServidorDeTeste::Metadados comMotivo = Da(ana);
    comMotivo.emplace("motivo-bin", "\xff\xfe");
    EXPECT_EQ(Um.Chama("EquiptoRN/altera", {Novo("R-001").SerializeAsString()}, comMotivo).Fim.error_code(),
              StatusCode::INVALID_ARGUMENT);
    registro::v1::EquiptoED comLixo = Novo("R-001");
    std::string octetos = comLixo.SerializeAsString();
    octetos.replace(octetos.find("R-001"), 5, "R\xff\xff\xff\xff");
    EXPECT_FALSE(Um.Chama("EquiptoRN/inclui", {octetos}, Da(ana)).Fim.ok());
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
}

TEST_F(ServidorTeste, Chama_Refused_SentenceInStatusAndMetadata)
{
    Um.Comeca();
    registro::v1::EquiptoED qual;
    qual.set_nrointequip(77);
    const Feita feita = Um.Chama("EquiptoRN/consulta", qual, Um.Entra("ana"));
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_TRUE(feita.NoFim.contains("frase-bin"));
    EXPECT_EQ(feita.NoFim.find("frase-bin")->second, feita.Fim.error_message());
    EXPECT_TRUE(feita.Respostas.empty());
}

TEST_F(ServidorTeste, Chama_RefusedWithAHugeSentence_ArrivesCut)
{
    Um.Comeca();
    registro::v1::EquiptoED novo = Novo("R-001");
    std::string acentos;
    for (int n = 0; n < 100000; ++n) {
        acentos += "ç";
    }
    novo.set_tipoequip(acentos);
    const Feita feita = Um.Grava("EquiptoRN/inclui", novo, Um.Entra("ana"));
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::FAILED_PRECONDITION) << feita.Frase();
    EXPECT_TRUE(rede::EhTexto(feita.Frase()));
    EXPECT_GT(feita.Frase().size(), 1000U) << feita.Frase();
    EXPECT_LT(feita.Frase().size(), 2000U);
    EXPECT_TRUE(feita.Frase().starts_with(feita.Fim.error_message()));
}

TEST_F(ServidorTeste, Sessao_AfterSignOut_IsNoMore)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string outra = Um.Entra("ana");
    EXPECT_TRUE(Um.Chama("Entrada/Sai", Vazio(), ana).Fim.ok());
    EXPECT_EQ(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(Um.Chama("Entrada/Sai", Vazio(), ana).Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), outra).Fim.ok());
}

TEST_F(ServidorTeste, Sessao_ClockOfTheDayIsSet_StandsOn)
{
    Um.Como.Ociosidade = std::chrono::minutes(30);
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    for (const int minutos : {24 * 60, -48 * 60}) {
        Um.PassaMinutos(minutos);
        EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok());
    }
}

TEST_F(ServidorTeste, Sessao_IdleForTooLong_IsNoMore)
{
    Um.Como.Ociosidade = std::chrono::minutes(0);
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const Feita feita = Um.Chama("Entrada/Situacao", Vazio(), ana);
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(feita.Frase(), "A sessão terminou. Entre de novo com usuário e senha.");
}

TEST_F(ServidorTeste, Sessao_OneTooManyOfAUser_LeastRecentlyUsedEnds)
{
    Um.Como.SessoesPorUsuario = 2;
    Um.Comeca();
    const std::string primeira = Um.Entra("ana");
    Um.PassaMinutos(1);
    const std::string segunda = Um.Entra("ana");
    const std::string deBia = Um.Entra("bia");
    Um.PassaMinutos(1);
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), primeira).Fim.ok());
    const std::string terceira = Um.Entra("ana");
    EXPECT_EQ(Um.Chama("Entrada/Situacao", Vazio(), segunda).Fim.error_code(), StatusCode::UNAUTHENTICATED);
    for (const std::string &chave : {primeira, terceira, deBia}) {
        EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), chave).Fim.ok());
    }
}

TEST_F(ServidorTeste, Sessao_OwnPasswordChanged_StandsWhileOthersOfTheUserEnd)
{
    Um.Comeca();
    const std::string aqui = Um.Entra("ana");
    const std::string alhures = Um.Entra("ana");
    TrocaSenhaED troca;
    troca.set_atual("senha de ana");
    troca.set_nova("vinte ovelhas no telhado");
    const Feita feita = Um.Grava("AdministracaoRN/trocaMinhaSenha", troca, aqui);
    ASSERT_TRUE(feita.Fim.ok()) << feita.Frase();
    registro::v1::EquiptoED qual;
    qual.set_nrointequip(1);
    EXPECT_EQ(Um.Chama("EquiptoRN/consulta", qual, aqui).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.Chama("EquiptoRN/consulta", qual, alhures).Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(Um.Chama("Entrada/Situacao", Vazio(), alhures).Fim.error_code(), StatusCode::UNAUTHENTICATED);
}

TEST_F(ServidorTeste, Sessao_UserDeactivatedAndReactivated_EndsAndTheNewOneStands)
{
    Um.Comeca();
    const std::string roubada = Um.Entra("ana");
    const auto marta = Um.Registro.Sessao("marta");
    const auto ana = Com(::Novo<mesa::UsuarioED>(), &mesa::UsuarioED::Numero, 1);
    for (const auto &[metodo, versao] : {std::pair("desativaUsuario", 1), std::pair("reativaUsuario", 2)}) {
        Exigido(Pede(marta, metodo, Com(ana, &mesa::UsuarioED::Versao, versao), "AdministracaoRN"));
    }
    const std::string nova = Um.Entra("ana");
    const Feita feita = Um.Grava("EquiptoRN/inclui", Novo("R-001"), roubada);
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(feita.Frase(), "O usuário ana foi desativado e reativado depois da entrada. Entre de novo.");
    EXPECT_EQ(Um.Chama("Entrada/Situacao", Vazio(), roubada).Fim.error_code(), StatusCode::UNAUTHENTICATED);
    EXPECT_TRUE(Um.Grava("EquiptoRN/inclui", Novo("R-001"), nova).Fim.ok());
}

TEST_F(ServidorTeste, Entra_ManyRefusedFromAnAddress_NextOnesWait)
{
    Um.Comeca();
    Um.Registro.Cadastra("ana");
    Um.Entra("bia");
    Sessao recusada;
    int quantas = -1; // those that were tried
    while (recusada.espera() == 0 && ++quantas < 1000) {
        recusada = Um.TentaEntrar("ninguém " + std::to_string(quantas), "senha errada").Como<Sessao>();
    }
    EXPECT_GE(quantas, servidor::EntradasRecusadas::SemEspera);
    recusada = Um.TentaEntrar("ana", "senha de ana").Como<Sessao>();
    EXPECT_EQ(recusada.chave(), "");
    EXPECT_EQ(recusada.recusa(), "Foram muitas entradas recusadas deste endereço. Aguarde " +
                                     std::to_string(recusada.espera()) + " segundos e tente de novo.");
    EXPECT_GT(recusada.espera(), 1);
    EXPECT_LE(recusada.espera(), servidor::EntradasRecusadas::Esquece.count());
    // Who has been there before comes in.
    EXPECT_NE(Um.TentaEntrar("bia", "senha de bia").Como<Sessao>().chave(), "");
}

TEST_F(ServidorTeste, Entra_WrongPasswordsOfAName_ThatNameWaitsAndOthersDoNot)
{
    Um.Comeca();
    Um.Registro.Cadastra("ana");
    Um.Registro.Cadastra("bia");
    for (int n = 0; n < 3; ++n) {
        EXPECT_EQ(Um.TentaEntrar("ana", "errada " + std::to_string(n)).Como<Sessao>().chave(), "");
    }
    const auto recusada = Um.TentaEntrar("ana", "senha de ana").Como<Sessao>();
    EXPECT_EQ(recusada.chave(), "");
    EXPECT_GT(recusada.espera(), 0);
    EXPECT_NE(recusada.recusa(), "");
    EXPECT_NE(Um.TentaEntrar("bia", "senha de bia").Como<Sessao>().chave(), "");
    Um.PassaMinutos(10);
    EXPECT_NE(Um.TentaEntrar("ana", "senha de ana").Como<Sessao>().chave(), "");
}

TEST_F(ServidorTeste, Entra_ManyAtATime_OneWorksAndTheOthersKeepNobodyUp)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Como.Conexoes = 4;
    Um.Como.Esperando = 8; // two of them for those who sign in
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    EsperaNumero(Um, "registro_conexoes 4"); // who opens a file proves that it can be written to
    std::optional<Gravando> outro(std::in_place, Um.Registro.Caminho());
    std::vector<std::future<Feita>> entrando;
    for (int n = 0; n < 3; ++n) {
        entrando.push_back(std::async(std::launch::async, [&] {
            Feita feita;
            do { // again when bia, below, was in the place before
                feita = Um.TentaEntrar("ana", "senha de ana");
            } while (feita.Fim.error_code() == StatusCode::RESOURCE_EXHAUSTED);
            return feita;
        }));
    }
    // One has a worker, two wait for a place, and no more do.
    EsperaNumero(Um, "registro_em_andamento 1");
    Feita aMais;
    const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    do {
        aMais = Um.TentaEntrar("bia", "senha de bia", rede::Contrato, std::chrono::seconds(2));
    } while (aMais.Fim.error_code() != StatusCode::RESOURCE_EXHAUSTED && std::chrono::steady_clock::now() < ate);
    EXPECT_EQ(aMais.Frase(), "ocupado: muitos estão entrando ao mesmo tempo. Tente de novo daqui a pouco.");
    EXPECT_NE(Numeros(Um).find("registro_em_andamento 1\n"), std::string::npos);
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok());
    outro.reset();
    for (std::future<Feita> &uma : entrando) {
        const Feita feita = uma.get();
        EXPECT_FALSE(feita.Como<Sessao>().chave().empty()) << feita.Frase() << feita.Como<Sessao>().recusa();
    }
}

TEST_F(ServidorTeste, Documento_StoredInPieces_ReadWholeAndFromTheMiddle)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string pdf = UmPdf((5 << 19) + 7);
    const Feita guardado = Um.Chama("Documentos/Guarda", EmPedacos(pdf, 1 << 20), Da(ana));
    ASSERT_TRUE(guardado.Fim.ok()) << guardado.Frase();
    PedidoDeDocumento pedido;
    pedido.set_numero(guardado.Como<NumeroDeDocumento>().numero());
    const auto le = [&](std::int64_t de) {
        pedido.set_apartirde(de);
        const Feita lido = Um.Chama("Documentos/Le", pedido, ana);
        EXPECT_TRUE(lido.Fim.ok()) << lido.Frase();
        EXPECT_EQ(lido.Como<PedacoDeDocumento>().tamanho(), static_cast<std::int64_t>(pdf.size()));
        EXPECT_EQ(lido.Como<PedacoDeDocumento>().sha256(), mesa::Resumo(QByteArray::fromStdString(pdf)));
        std::string octetos;
        for (const std::string &resposta : lido.Respostas) {
            PedacoDeDocumento pedaco;
            EXPECT_TRUE(pedaco.ParseFromString(resposta));
            EXPECT_LE(pedaco.octetos().size(), 1U << 20);
            octetos += pedaco.octetos();
        }
        return octetos;
    };
    EXPECT_TRUE(le(0) == pdf);
    EXPECT_TRUE(le(1234567) == pdf.substr(1234567));
    EXPECT_EQ(le(static_cast<std::int64_t>(pdf.size())), "");
    pedido.set_apartirde(static_cast<std::int64_t>(pdf.size()) + 1);
    EXPECT_EQ(Um.Chama("Documentos/Le", pedido, ana).Fim.error_code(), StatusCode::INVALID_ARGUMENT);
    pedido.set_apartirde(-1);
    EXPECT_EQ(Um.Chama("Documentos/Le", pedido, ana).Fim.error_code(), StatusCode::INVALID_ARGUMENT);
}

TEST_F(ServidorTeste, Documento_OneOperationAtATimeOfASession_Stored)
{
    Um.Como.PorSessao = 1;
    Um.Comeca();
    const Feita guardado = Um.Chama("Documentos/Guarda", EmPedacos(UmPdf(3000), 1000), Da(Um.Entra("ana")));
    EXPECT_TRUE(guardado.Fim.ok()) << guardado.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
}

TEST_F(ServidorTeste, Documento_NotAsAnnouncedOrTooBig_NothingIsStored)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string pdf = UmPdf(3000);
    const auto fim = [&](const std::vector<std::string> &pedacos) {
        return Um.Chama("Documentos/Guarda", pedacos, Da(ana)).Fim.error_code();
    };
    EXPECT_EQ(fim(EmPedacos(pdf, 1000, 2999)), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(fim(EmPedacos(pdf, 1000, 3001)), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(fim(EmPedacos(pdf, 1000, -1, std::string(64, '0'))), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(fim(EmPedacos(UmPdf((1 << 20) + 5), (1 << 20) + 5)), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(fim({}), StatusCode::INVALID_ARGUMENT);
    std::vector<std::string> comVazio = EmPedacos(pdf, 1000);
    comVazio.insert(comVazio.begin() + 1, "");
    EXPECT_EQ(fim(comVazio), StatusCode::INVALID_ARGUMENT);
    EXPECT_EQ(fim(EmPedacos(pdf, 1000, mesa::MaiorDocumento + 1)), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(fim(EmPedacos(pdf, 1000, 0)), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(fim(EmPedacos("isto não é um PDF", 1000)), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "0");
}

TEST_F(ServidorTeste, Documento_NothingMoreComes_EndsInTime)
{
    Um.Como.PrazoDaOperacao = std::chrono::seconds(5);
    Um.Comeca();
    const auto fio = registro::v1::Documentos::NewStub(Um.Canal());
    grpc::ClientContext contexto;
    contexto.AddMetadata("sessao", Um.Entra("ana"));
    contexto.AddMetadata("operacao", ServidorDeTeste::Numero());
    contexto.set_deadline(std::chrono::system_clock::now() + std::chrono::minutes(2));
    NumeroDeDocumento resposta;
    const auto pedacos = fio->Guarda(&contexto, &resposta);
    PedacoDeDocumento primeiro;
    primeiro.set_tamanho(100);
    primeiro.set_octetos("%PDF");
    primeiro.set_sha256(std::string(64, '0'));
    EXPECT_TRUE(pedacos->Write(primeiro));
    const grpc::Status fim = pedacos->Finish();                                // without the end of what is written
    EXPECT_EQ(fim.error_code(), StatusCode::CANCELLED) << fim.error_message(); // by the server
}

TEST_F(ServidorTeste, Documento_SmallPiecesWithoutEnd_EndsInTime)
{
    Um.Como.PrazoDaOperacao = std::chrono::seconds(2);
    Um.Comeca();
    const auto fio = registro::v1::Documentos::NewStub(Um.Canal());
    grpc::ClientContext contexto;
    contexto.AddMetadata("sessao", Um.Entra("ana"));
    contexto.AddMetadata("operacao", ServidorDeTeste::Numero());
    NumeroDeDocumento resposta;
    const auto envio = fio->Guarda(&contexto, &resposta);
    PedacoDeDocumento pedaco;
    pedaco.set_tamanho(mesa::MaiorDocumento);
    pedaco.set_octetos("%");
    pedaco.set_sha256(std::string(64, '0'));
    const auto inicio = std::chrono::steady_clock::now();
    const auto ate = inicio + std::chrono::seconds(60);
    while (envio->Write(pedaco) && std::chrono::steady_clock::now() < ate) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // as one would who keeps within the time of each
    }
    EXPECT_LT(std::chrono::steady_clock::now(), ate);
    EXPECT_EQ(envio->Finish().error_code(), StatusCode::CANCELLED);
}

TEST_F(ServidorTeste, Fluxos_AsManyAsThereMayBe_OcupadoAndTheRestGoesOn)
{
    Um.Como.PorSessao = servidor::Atendente::MaisFluxos;
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string bia = Um.Entra("bia");
    const auto canal = Um.Canal();
    const auto outro = Um.Canal();
    struct Envio {
        std::unique_ptr<registro::v1::Documentos::Stub> Fio;
        grpc::ClientContext Contexto;
        NumeroDeDocumento Resposta;
        std::unique_ptr<grpc::ClientWriter<PedacoDeDocumento>> Pedacos;
    };
    PedacoDeDocumento primeiro;
    primeiro.set_tamanho(100);
    primeiro.set_octetos("%PDF");
    std::vector<std::unique_ptr<Envio>> envios;
    for (std::size_t n = 0; n < servidor::Atendente::MaisFluxos; ++n) {
        envios.push_back(std::make_unique<Envio>());
        Envio &envio = *envios.back();
        envio.Fio = registro::v1::Documentos::NewStub(n % 2 == 0 ? canal : outro);
        envio.Contexto.AddMetadata("sessao", ana);
        envio.Contexto.AddMetadata("operacao", ServidorDeTeste::Numero());
        envio.Pedacos = envio.Fio->Guarda(&envio.Contexto, &envio.Resposta);
        ASSERT_TRUE(envio.Pedacos->Write(primeiro));
    }
    // Not by asking in the session: the question would take the place of the last of them.
    EsperaNumero(Um, "registro_a_caminho " + std::to_string(servidor::Atendente::MaisFluxos));
    EXPECT_EQ(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    const Feita aMais = Um.Chama("Documentos/Guarda", EmPedacos(UmPdf(3000), 1000), Da(bia));
    EXPECT_EQ(aMais.Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_EQ(aMais.Frase(), "ocupado: há muitos documentos e réplicas a caminho. Tente de novo daqui a pouco.");
    EXPECT_EQ(Um.Chama("Replica/Le", PedidoDeReplica(), bia).Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), bia).Fim.ok());
    EXPECT_TRUE(Um.Chama("Entrada/Sai", Vazio(), bia).Fim.ok());
    for (const auto &envio : envios) {
        envio->Contexto.TryCancel();
        envio->Pedacos->Finish();
    }
}

TEST_F(ServidorTeste, Pedido_LargerThanAllowed_Refused)
{
    Um.Como.MaiorPedido = 2 << 20;
    Um.Comeca();
    registro::v1::EquiptoED grande = Novo("R-001");
    grande.set_txtobsnotif(std::string(3 << 20, 'x'));
    EXPECT_EQ(Um.Grava("EquiptoRN/inclui", grande, Um.Entra("ana")).Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
}

TEST_F(ServidorTeste, Replica_AfterANumber_OnlyWhatChangedSince)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    ASSERT_TRUE(Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.ok());
    PedidoDeReplica pedido;
    const Feita toda = Um.Chama("Replica/Le", pedido, ana);
    ASSERT_TRUE(toda.Fim.ok()) << toda.Frase();
    ASSERT_EQ(toda.Como<PedacoDeReplica>().linhas_size(), 1);
    EXPECT_EQ(toda.Como<PedacoDeReplica>().linhas(0).codigo(), "R-001");
    EXPECT_EQ(toda.Como<PedacoDeReplica>().quantas(), 1);
    ASSERT_TRUE(Um.Grava("EquiptoRN/inclui", Novo("R-002"), ana).Fim.ok());
    pedido.set_depoisde(toda.Como<PedacoDeReplica>().ate());
    const auto resto = Um.Chama("Replica/Le", pedido, ana).Como<PedacoDeReplica>();
    ASSERT_EQ(resto.linhas_size(), 1);
    EXPECT_EQ(resto.linhas(0).codigo(), "R-002");
    EXPECT_GT(resto.ate(), pedido.depoisde());
}

TEST_F(ServidorTeste, Confere_SoundRegistry_WholeAndHeadIsSigned)
{
    Um.Comeca();
    const std::string marta = Um.Entra("marta");
    const Feita feita = Um.Chama("Conferencia/Confere", PedidoDeConferencia(), marta);
    ASSERT_TRUE(feita.Fim.ok()) << feita.Frase();
    AndamentoDaConferencia ultima;
    ASSERT_TRUE(ultima.ParseFromString(feita.Respostas.back()));
    EXPECT_EQ(ultima.resultado().como(), 0) << ultima.resultado().frase();
    const Feita cabeca = Um.Chama("Conferencia/Cabeca", Vazio(), marta);
    ASSERT_TRUE(cabeca.Fim.ok()) << cabeca.Frase();
    EXPECT_TRUE(mesa::CabecaAssinada::Le(cabeca.Como<CabecaDoHistorico>().texto()).AssinaturaVale());
    PedidoDeConferencia desde;
    desde.set_desde("isto não é uma cabeça");
    EXPECT_EQ(Um.Chama("Conferencia/Confere", desde, marta).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
}

TEST_F(ServidorTeste, Chama_DeadlineIsOver_NothingIsDone)
{
    Um.Comeca();
    const Feita feita = Um.Chama("EquiptoRN/inclui", {Novo("R-001").SerializeAsString()}, Da(Um.Entra("ana")),
                                 std::chrono::milliseconds(0));
    EXPECT_EQ(feita.Fim.error_code(), StatusCode::DEADLINE_EXCEEDED);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
}

TEST_F(ServidorTeste, Diario_OperationsDone_OneWholeLineEachWithoutAnythingPersonal)
{
    const std::string cpf = "123.456.789-09";
    Um.Comeca();
    testing::internal::CaptureStderr();
    const std::string ana = Um.Entra("ana");
    const std::string marta = Um.Entra("marta");
    registro::v1::EquiptoED novo = Novo("CODIGOSECRETO");
    novo.set_txtobsnotif("Fulano de Tal, CPF " + cpf);
    Um.Grava("EquiptoRN/inclui", novo, ana);
    Um.TentaEntrar("ana", "palavra errada");
    Um.TentaEntrar(cpf, "palavra errada " + cpf);
    UsuarioED pessoa;
    pessoa.set_usuario("fulano");
    pessoa.set_nomepessoa("Fulano de Tal " + cpf);
    pessoa.set_senha("palavra de Fulano");
    Um.Grava("AdministracaoRN/incluiUsuario", pessoa, marta);
    TrocaSenhaED troca;
    troca.set_atual("senha de ana");
    troca.set_nova("palavra bem comprida");
    Um.Grava("AdministracaoRN/trocaMinhaSenha", troca, ana);
    Um.Chama("EquiptoRN/altera", {novo.SerializeAsString()}, {{"sessao", cpf}, {"operacao", cpf}, {"motivo-bin", cpf}});
    std::string comLixo = novo.SerializeAsString();
    comLixo.replace(comLixo.find("Fulano"), 1, "\xff");
    Um.Chama("EquiptoRN/inclui", {comLixo}, Da(ana));
    Um.Acaba();
    const std::vector<std::string> linhas = Um.Diario();
    std::vector<std::string> nomes;
    for (const std::string &linha : linhas) {
        const QJsonObject objeto = QJsonDocument::fromJson(QByteArray::fromStdString(linha)).object();
        nomes.push_back(mesa::S(objeto["operacao"].toString()));
        EXPECT_EQ(objeto["endereco"].toString(), "127.0.0.1") << linha;
        for (const char *chave : {"momento", "usuario", "fim", "ms", "octetos", "espera_ms"}) {
            EXPECT_TRUE(objeto.contains(chave)) << chave << " " << linha;
        }
    }
    EXPECT_EQ(nomes, (std::vector<std::string>{"Entrada/Entra", "Entrada/Entra", "EquiptoRN/inclui", "Entrada/Entra",
                                               "Entrada/Entra", "AdministracaoRN/incluiUsuario",
                                               "AdministracaoRN/trocaMinhaSenha"}));
    // Nor does anything else that the program says.
    const std::string dito = testing::internal::GetCapturedStderr();
    for (const std::string &pessoal :
         {std::string("CODIGOSECRETO"), std::string("palavra"), std::string("ulano"), std::string("456.789"), ana,
          marta, std::string("Souza"), std::string("senha de"), std::string("ana")}) {
        EXPECT_EQ(dito.find(pessoal), std::string::npos) << dito;
        for (const std::string &linha : linhas) {
            EXPECT_EQ(linha.find(pessoal), std::string::npos) << linha;
        }
    }
    ASSERT_EQ(nomes.size(), 7U);
    EXPECT_NE(linhas[0].find("\"fim\":\"OK\""), std::string::npos) << linhas[0];
    EXPECT_NE(linhas[3].find("\"fim\":\"RECUSADA\""), std::string::npos) << linhas[3];
    const QJsonObject gravada = QJsonDocument::fromJson(QByteArray::fromStdString(linhas[2])).object();
    EXPECT_EQ(gravada["usuario"].toInt(), 1);
    EXPECT_EQ(gravada["numero"].toString().size(), 36);
}

TEST_F(ServidorTeste, Numeros_AskedOverHttp_CountTheOperations)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Comeca();
    Um.Entra("ana");
    EsperaNumero(Um, "registro_conexoes 2"); // the second connection may take its time
    const std::string tudo = Numeros(Um);
    EXPECT_NE(tudo.find("registro_operacoes_total{fim=\"OK\",operacao=\"Entrada/Entra\"} 1"), std::string::npos)
        << tudo;
    EXPECT_NE(tudo.find("registro_operacao_segundos_count{operacao=\"Entrada/Entra\"} 1"), std::string::npos);
    EXPECT_NE(tudo.find("registro_sessoes 1"), std::string::npos);
    EXPECT_NE(tudo.find("registro_esperando 0"), std::string::npos);
}

TEST_F(ServidorTeste, Saude_WhileServing_Serving)
{
    Um.Comeca();
    EXPECT_EQ(Saude(Um), Servindo);
}

TEST_F(ServidorTeste, Saude_RegistryIsGone_NotServingUntilItIsBack)
{
    Um.Como.Conexoes = 1;
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string fora = Um.Registro.Caminho() + ".fora";
    std::filesystem::rename(Um.Registro.Caminho(), fora);
    EXPECT_FALSE(Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.ok());
    EXPECT_EQ(SaudeAte(Um, SemServir), SemServir);
    std::filesystem::rename(fora, Um.Registro.Caminho());
    EXPECT_EQ(SaudeAte(Um, Servindo), Servindo);
    EXPECT_TRUE(Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.ok());
}

TEST_F(ServidorTeste, Reflexao_Asked_NamesTheServicesAndNoOthers)
{
    Um.Comeca();
    grpc::GenericStub fio(Um.Canal());
    grpc::ClientContext contexto;
    contexto.AddMetadata("sessao", Um.Entra("ana"));
    grpc::CompletionQueue fila;
    const auto espera = [&] {
        void *marca = nullptr;
        bool feito = false;
        fila.Next(&marca, &feito);
        return feito;
    };
    const auto chamada =
        fio.PrepareCall(&contexto, "/grpc.reflection.v1alpha.ServerReflection/ServerReflectionInfo", &fila);
    chamada->StartCall(nullptr);
    ASSERT_TRUE(espera());
    const grpc::Slice pedido(std::string("\x3a\x01*")); // list_services
    chamada->Write(grpc::ByteBuffer(&pedido, 1), nullptr);
    ASSERT_TRUE(espera());
    grpc::ByteBuffer resposta;
    chamada->Read(&resposta, nullptr);
    ASSERT_TRUE(espera());
    grpc::Slice octetos;
    ASSERT_TRUE(resposta.DumpToSingleSlice(&octetos).ok());
    const std::string texto(reinterpret_cast<const char *>(octetos.begin()), octetos.size());
    std::set<std::string> servicos;
    const std::regex nome(R"([a-z][a-z0-9]*(\.[a-z0-9]+)*\.[A-Z]\w*)");
    for (std::sregex_iterator achado(texto.begin(), texto.end(), nome), fim; achado != fim; ++achado) {
        servicos.insert(achado->str());
    }
    // What anybody may ask without signing in is the first two, and what Entrada says of itself.
    std::set<std::string> doContrato{"grpc.health.v1.Health", "grpc.reflection.v1alpha.ServerReflection"};
    const auto *arquivo = Vazio::descriptor()->file();
    for (int s = 0; s < arquivo->service_count(); ++s) {
        doContrato.insert(arquivo->service(s)->full_name());
    }
    EXPECT_EQ(servicos, doContrato);
    chamada->WritesDone(nullptr);
    espera();
    grpc::Status fim;
    chamada->Finish(&fim, nullptr);
    espera();
}

TEST_F(ServidorTeste, Chama_OperationThatThereIsNot_Unimplemented)
{
    Um.Comeca();
    EXPECT_EQ(Um.Chama("EquiptoRN/apaga", Vazio(), Um.Entra("ana")).Fim.error_code(), StatusCode::UNIMPLEMENTED);
    EXPECT_EQ(Um.Chama("BancoRN/comanda", Vazio(), "").Fim.error_code(), StatusCode::UNAUTHENTICATED);
}

// What is no message fails once it is parsed: whoever is told to sign in was not read.
TEST_F(ServidorTeste, Estranho_AnyOperation_TurnedAwayUnread)
{
    for (const bool semTls : {true, false}) {
        ServidorDeTeste um;
        um.Como.SemTls = semTls;
        um.Como.MaiorPedido = 2 << 20;
        um.Comeca();
        const std::string nada = "\xff\xff\xff";
        const std::string grande(3 << 20, 'x');
        for (const std::string nome : {"EquiptoRN/inclui", "EquiptoRN/lista2", "AdministracaoRN/importaLogradouros",
                                       "Documentos/Le", "Replica/Le", "Entrada/TemPermissao", "Nada/nenhuma"}) {
            for (const std::string &pedido : {nada, grande}) {
                const Feita feita = um.Chama(nome, {pedido}, {{"operacao", ServidorDeTeste::Numero()}});
                EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome << ": " << feita.Frase();
                EXPECT_EQ(feita.Frase(), "É preciso entrar com usuário e senha.") << nome;
            }
        }
        const std::string ana = um.Entra("ana");
        EXPECT_NE(um.Chama("EquiptoRN/inclui", {nada}, Da(ana)).Fim.error_code(), StatusCode::UNAUTHENTICATED);
        EXPECT_TRUE(um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.ok());
    }
}

TEST_F(ServidorTeste, Estranho_LargeOrCompressedMessageWhereSignedIn_Refused)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Comeca();
    PedidoDeEntrada grande;
    grande.set_usuario(std::string(17000, 'x'));
    grande.set_contrato(rede::Contrato);
    for (const char *nome : {"Entrada/Entra", "Entrada/Apresenta"}) {
        const Feita feita = Um.Chama(nome, grande, "");
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::INVALID_ARGUMENT) << nome << ": " << feita.Frase();
        EXPECT_EQ(feita.Frase(), "A mensagem é grande demais ou está estragada.");
        EXPECT_NE(Numeros(Um).find("registro_operacoes_total{fim=\"INVALID_ARGUMENT\",operacao=\"" + std::string(nome) +
                                   "\"} 1\n"),
                  std::string::npos);
    }
    const auto fio = registro::v1::Entrada::NewStub(Um.Canal());
    grpc::ClientContext contexto;
    contexto.set_compression_algorithm(GRPC_COMPRESS_GZIP);
    Sessao sessao;
    EXPECT_EQ(fio->Entra(&contexto, grande, &sessao).error_code(), StatusCode::UNIMPLEMENTED);
    Um.Acaba();
    const std::vector<std::string> linhas = Um.Diario();
    ASSERT_EQ(linhas.size(), 2U);
    for (const std::string &linha : linhas) {
        EXPECT_NE(linha.find("\"fim\":\"INVALID_ARGUMENT\""), std::string::npos) << linha;
        EXPECT_NE(linha.find("\"octetos\":17"), std::string::npos) << linha;
    }
}

TEST_F(ServidorTeste, Comeca_PortInUse_SaysSo)
{
    Um.Comeca();
    ServidorDeTeste outro;
    outro.Como.Escuta = "127.0.0.1:" + std::to_string(Um.Rodando().Porta());
    EXPECT_EQ(NaoComeca(outro), "O servidor não pôde escutar em " + outro.Como.Escuta +
                                    ": o endereço não é desta máquina, ou outro programa já usa a porta.");
}

TEST_F(ServidorTeste, Comeca_NoRegistryOrNoTlsForOthers_SaysSo)
{
    ServidorDeTeste semRegistro;
    semRegistro.Como.Registro = semRegistro.Pasta() + "/nada.db";
    EXPECT_NE(NaoComeca(semRegistro).find("nada.db"), std::string::npos);
    Um.Como.Escuta = "0.0.0.0:0";
    EXPECT_NE(NaoComeca(Um).find("\"sem_tls\" só vale na própria máquina"), std::string::npos);
}

TEST_F(ServidorTeste, Comeca_RegistryOpensOnceAndNotAgain_SaysWhy)
{
    std::atomic<int> aberturas = 0;
    try {
        const servidor::Servidor servidor(
            Um.Como,
            [&] {
                if (++aberturas > 1) {
                    throw ::Falha(NumeroFalha::ErroDeAcesso, "Teste", "Não há mais lugar.");
                }
                return mesa::Instante(Um.Registro.Relogio);
            },
            CustoDeTeste);
        ADD_FAILURE() << "begun";
    } catch (const ::Falha &falha) {
        EXPECT_EQ(falha.Descricao, "O registro não pôde ser aberto: Não há mais lugar.");
    }
}

TEST_F(ServidorTeste, Tls_OwnCertificate_PinnedByItsFingerprintAndKept)
{
    Um.Como.SemTls = false;
    Um.Comeca();
    const std::string digital = Um.Rodando().Digital();
    EXPECT_EQ(digital.size(), 95U);
    struct stat chave {};
    ASSERT_EQ(::stat((Um.Pasta() + "/servidor.key").c_str(), &chave), 0);
    EXPECT_EQ(chave.st_mode & 0777, 0600U);
    const auto fio = registro::v1::Entrada::NewStub(Um.Canal());
    grpc::ClientContext contexto;
    contexto.set_deadline(std::chrono::system_clock::now() + std::chrono::seconds(20));
    Apresentacao eu;
    eu.set_contrato(rede::Contrato);
    eu.set_contratominimo(rede::ContratoMinimo);
    registro::v1::Servidor ela;
    const grpc::Status fim = fio->Apresenta(&contexto, eu, &ela);
    EXPECT_TRUE(fim.ok()) << fim.error_message();
    Um.Acaba();
    Um.Comeca();
    EXPECT_EQ(Um.Rodando().Digital(), digital);
}

TEST_F(ServidorTeste, Tls_FilesOfAnAuthority_AreServedAndNoneIsMade)
{
    const QTemporaryDir deAutoridade;
    const std::string pasta = deAutoridade.path().toStdString();
    const std::string digital = servidor::ParDeChaves::Proprio(pasta).Digital();
    Um.Como.SemTls = false;
    Um.Como.Certificado = pasta + "/servidor.crt";
    Um.Como.Chave = pasta + "/servidor.key";
    Um.Comeca();
    EXPECT_EQ(Um.Rodando().Digital(), digital);
    EXPECT_EQ(rede::DigitalDoServidor({"127.0.0.1", Um.Rodando().Porta()}), digital);
    EXPECT_FALSE(std::filesystem::exists(Um.Pasta() + "/servidor.key"));
}

TEST_F(ServidorTeste, Termina_NobodyAtWork_TakesNothingNew)
{
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    Um.Rodando().Termina(std::chrono::seconds(5));
    const Feita feita =
        Um.Chama("Entrada/Situacao", {Vazio().SerializeAsString()}, {{"sessao", ana}}, std::chrono::milliseconds(300));
    EXPECT_FALSE(feita.Fim.ok());
}

TEST_F(ServidorTeste, Termina_OperationUnderWay_EndsAsItShould)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    EsperaNumero(Um, "registro_conexoes 2"); // who opens a file proves that it can be written to
    std::optional<Gravando> outro(std::in_place, Um.Registro.Caminho());
    auto andando = std::async(std::launch::async, [&] { return Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana); });
    EsperaNumero(Um, "registro_em_andamento 1");
    auto fim = std::async(std::launch::async, [&] { Um.Rodando().Termina(std::chrono::seconds(20)); });
    EXPECT_EQ(fim.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    outro.reset();
    const Feita feita = andando.get();
    EXPECT_TRUE(feita.Fim.ok()) << feita.Frase();
    fim.get();
    EXPECT_EQ(Um.Registro.Sql("SELECT Codigo FROM EQUIPAMENTO"), "R-001");
}

TEST_F(ServidorTeste, Chama_AllWhoWriteWait_WhoReadsIsAnswered)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    Um.Registro.Cadastra("bia");
    EsperaNumero(Um, "registro_conexoes 2"); // who opens a file proves that it can be written to
    std::optional<Gravando> outro(std::in_place, Um.Registro.Caminho());
    auto inclui = std::async(std::launch::async, [&] { return Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana); });
    EsperaNumero(Um, "registro_em_andamento 1");
    auto guarda = std::async(std::launch::async, [&] {
        const std::string pdf = UmPdf(1000);
        return Um.Chama("Documentos/Guarda", EmPedacos(pdf, pdf.size()), Da(ana));
    });
    EsperaNumero(Um, "registro_esperando 1");
    auto entra = std::async(std::launch::async, [&] { return Um.TentaEntrar("bia", "senha de bia"); });
    EsperaNumero(Um, "registro_esperando 2");
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok());
    outro.reset();
    for (auto *feita : {&inclui, &guarda, &entra}) {
        const Feita como = feita->get();
        EXPECT_TRUE(como.Fim.ok()) << como.Frase();
    }
}

// The registry alone would have it wait for half a minute, and its worker with it.
TEST_F(ServidorTeste, Chama_TimeIsOverWhileOthersWrite_WorkerIsFreeAgain)
{
    Um.Como.Conexoes = 1;
    Um.Como.PrazoDaOperacao = std::chrono::seconds(5);
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const Gravando outro(Um.Registro.Caminho());
    const auto inicio = std::chrono::steady_clock::now();
    EXPECT_EQ(Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana).Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(25));
}

TEST_F(ServidorTeste, Termina_DocumentHalfSent_RestIsTakenAndStored)
{
    Um.Como.PorSessao = 1;
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string pdf = UmPdf(3000);
    const auto fio = registro::v1::Documentos::NewStub(Um.Canal());
    grpc::ClientContext contexto;
    contexto.AddMetadata("sessao", ana);
    contexto.AddMetadata("operacao", ServidorDeTeste::Numero());
    NumeroDeDocumento resposta;
    const auto envio = fio->Guarda(&contexto, &resposta);
    PedacoDeDocumento pedaco;
    pedaco.set_tamanho(static_cast<std::int64_t>(pdf.size()));
    pedaco.set_sha256(mesa::Resumo(QByteArray::fromStdString(pdf)));
    pedaco.set_octetos(pdf.substr(0, 1000));
    ASSERT_TRUE(envio->Write(pedaco));
    const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Um.Chama("Entrada/Situacao", Vazio(), ana).Fim.ok()) { // until it is under way
        ASSERT_LT(std::chrono::steady_clock::now(), ate);
    }
    auto fim = std::async(std::launch::async, [&] { Um.Rodando().Termina(std::chrono::seconds(60)); });
    // Until nothing new is taken.
    Apresentacao eu;
    eu.set_contrato(rede::Contrato);
    while (Um.Chama("Entrada/Apresenta", {eu.SerializeAsString()}, {}, std::chrono::milliseconds(300)).Fim.ok()) {
        ASSERT_LT(std::chrono::steady_clock::now(), ate);
    }
    PedacoDeDocumento resto;
    resto.set_octetos(pdf.substr(1000));
    EXPECT_TRUE(envio->Write(resto));
    EXPECT_TRUE(envio->WritesDone());
    const grpc::Status feito = envio->Finish();
    EXPECT_TRUE(feito.ok()) << feito.error_message();
    fim.get();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
}

TEST_F(ServidorTeste, Chama_TooMuchAtATime_OcupadoAtOnceAndTheRestIsDone)
{
    Um.Como.Numeros = "127.0.0.1:0";
    Um.Como.Conexoes = 1;
    Um.Como.Esperando = 1;
    Um.Como.PorSessao = 1;
    Um.Comeca();
    const std::string ana = Um.Entra("ana");
    const std::string bia = Um.Entra("bia");
    const std::string caio = Um.Entra("caio");
    std::optional<Gravando> outro(std::in_place, Um.Registro.Caminho());
    const auto manda = [&](const std::string &codigo, const std::string &sessao) {
        return std::async(std::launch::async, [=, this] { return Um.Grava("EquiptoRN/inclui", Novo(codigo), sessao); });
    };
    auto primeira = manda("R-001", ana);
    EsperaNumero(Um, "registro_em_andamento 1");
    const Feita daMesma = Um.Chama("Entrada/Situacao", Vazio(), ana);
    EXPECT_EQ(daMesma.Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_TRUE(daMesma.Frase().starts_with("ocupado: esta sessão já tem 1 ")) << daMesma.Frase();
    auto segunda = manda("R-002", bia);
    EsperaNumero(Um, "registro_esperando 1");
    const Feita aMais = Um.Chama("Entrada/Situacao", Vazio(), caio);
    EXPECT_EQ(aMais.Fim.error_code(), StatusCode::RESOURCE_EXHAUSTED);
    EXPECT_TRUE(aMais.Frase().starts_with("ocupado: ")) << aMais.Frase();
    outro.reset();
    EXPECT_TRUE(primeira.get().Fim.ok());
    EXPECT_TRUE(segunda.get().Fim.ok());
    EXPECT_TRUE(Um.Chama("Entrada/Situacao", Vazio(), caio).Fim.ok());
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "2");
}
