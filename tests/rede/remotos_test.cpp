#include "Mudo.h"
#include "ServidorFalso.h"
#include "Tubo.h"

#include "host/EquiptoED.h"
#include "rede/Certificado.h"
#include "rede/Mensagens.h"
#include "rede/ServicosRemotos.h"
#include "rede/SessaoDeServidor.h"
#include "rede/SessaoRemota.h"
#include "server/Certificado.h"
#include "services/RegistrosAdministracao.h"
#include "services/Resumo.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <condition_variable>
#include <fstream>
#include <future>
#include <limits>
#include <set>
#include <thread>

namespace {

namespace v1 = registro::v1;
using grpc::ServerContext;
using grpc::Status;
using grpc::StatusCode;
using rede::Endereco;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

// What a call comes to that nobody waits long for.
rede::Insistencia Pouca()
{
    return {milliseconds(300), milliseconds(10000), {}};
}

// What was raised; a number of 0 when nothing was.
template <class Faz> Falha Levantada(Faz &&faz)
{
    try {
        faz();
    } catch (const Falha &falha) {
        return falha;
    }
    return Falha(0, "", "nada foi levantado");
}

Ref<EquiptoED> Equipamento(const std::string &codigo)
{
    auto equipamento = Novo<EquiptoED>();
    equipamento->Codigo = codigo;
    equipamento->VersaoLida = 3;
    return equipamento;
}

struct Feito {
    bool Sim = false;
    std::string Recusa;
    Valor Resposta;
};

Feito Executa(mesa::SessaoServico &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
              const std::string &classe = "EquiptoRN")
{
    Feito feito;
    Ref<Objeto> objeto = pedido;
    feito.Sim = sessao.Executa(classe, metodo, objeto, feito.Resposta, feito.Recusa);
    return feito;
}

Bytes Documento(std::size_t tamanho)
{
    Bytes bytes(tamanho);
    for (std::size_t n = 0; n < tamanho; ++n) {
        bytes[n] = static_cast<Bytes::value_type>(n * 7 + n / 251);
    }
    return bytes;
}

std::string SomaDe(const std::string &octetos)
{
    return mesa::Resumo(QByteArray::fromStdString(octetos));
}

// A server that keeps documents, and one who calls it.
class RemotosTeste : public testing::Test {
  protected:
    RemotosTeste()
    {
        Falso.Altera = [](ServerContext &, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
            resposta = pedido;
            resposta.set_versaolida(pedido.versaolida() + 1);
            return Status::OK;
        };
        Falso.Consulta = [](ServerContext &, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
            resposta.set_descricao("do servidor: " + pedido.codigo());
            return Status::OK;
        };
        Falso.Guarda = [this](ServerContext &contexto, grpc::ServerReader<v1::PedacoDeDocumento> &pedacos,
                              v1::NumeroDeDocumento &resposta) { return GuardaUmaVez(contexto, pedacos, resposta); };
        Falso.LeDocumento = [this](ServerContext &, const v1::PedidoDeDocumento &pedido,
                                   grpc::ServerWriter<v1::PedacoDeDocumento> &pedacos) { return Le(pedido, pedacos); };
        Falso.LeReplica = [](ServerContext &, const v1::PedidoDeReplica &pedido,
                             grpc::ServerWriter<v1::PedacoDeReplica> &pedacos) {
            for (int n = 1; n <= 3; ++n) {
                v1::PedacoDeReplica pedaco;
                pedaco.set_quantas(n == 1 ? 3 : 0);
                pedaco.add_linhas()->set_nrointequip(n + static_cast<int>(pedido.depoisde()));
                if (n == 3) {
                    pedaco.set_dequando(46000.5);
                    pedaco.set_ate(88);
                    pedaco.set_elo("elo");
                }
                pedacos.Write(pedaco);
            }
            return Status::OK;
        };
    }

    Ref<mesa::Servicos> Conecta(rede::Insistencia insistencia = Pouca(), std::uint16_t porta = 0)
    {
        return rede::Conecta({"127.0.0.1", porta == 0 ? Falso.Porta() : porta}, {}, "teste 1", std::move(insistencia));
    }
    Ref<mesa::SessaoServico> Sessao(rede::Insistencia insistencia = Pouca(), std::uint16_t porta = 0)
    {
        std::string recusa;
        std::int32_t espera = 0;
        return Conecta(std::move(insistencia), porta)->Entra("ana", mesa::Segredo("segredo"), "aqui", recusa, espera);
    }

    Status GuardaUmaVez(ServerContext &contexto, grpc::ServerReader<v1::PedacoDeDocumento> &pedacos,
                        v1::NumeroDeDocumento &resposta)
    {
        std::string octetos;
        v1::PedacoDeDocumento pedaco;
        std::int64_t tamanho = -1;
        std::string soma;
        while (pedacos.Read(&pedaco)) {
            EXPECT_LE(pedaco.octetos().size(), 1u << 20);
            if (tamanho < 0) {
                tamanho = pedaco.tamanho();
                soma = pedaco.sha256();
            }
            octetos += pedaco.octetos();
        }
        const std::lock_guard guarda(Tranca);
        if (contexto.IsCancelled() || tamanho != static_cast<std::int64_t>(octetos.size()) || soma != SomaDe(octetos)) {
            return {StatusCode::CANCELLED, "not whole"};
        }
        const std::string numero = ServidorFalso::Dado(contexto, "operacao");
        if (!NumeroDoAto.contains(numero)) {
            Guardados.push_back(octetos);
            NumeroDoAto[numero] = static_cast<double>(Guardados.size());
        }
        resposta.set_numero(NumeroDoAto[numero]);
        return Status::OK;
    }
    Status Le(const v1::PedidoDeDocumento &pedido, grpc::ServerWriter<v1::PedacoDeDocumento> &pedacos)
    {
        const std::lock_guard guarda(Tranca);
        const std::string &octetos = Guardados.at(static_cast<std::size_t>(pedido.numero()) - 1);
        Pedidos.push_back(pedido.apartirde());
        std::size_t onde = static_cast<std::size_t>(pedido.apartirde());
        do {
            v1::PedacoDeDocumento pedaco;
            pedaco.set_octetos(octetos.substr(onde, PedacoDoServidor));
            pedaco.set_tamanho(static_cast<std::int64_t>(octetos.size()));
            pedaco.set_sha256(SomaDe(octetos));
            if (!pedacos.Write(pedaco)) {
                return {StatusCode::CANCELLED, ""};
            }
            onde += PedacoDoServidor;
        } while (onde < octetos.size());
        return Status::OK;
    }

    std::mutex Tranca;
    std::vector<std::string> Guardados;
    std::map<std::string, double> NumeroDoAto;
    std::vector<std::int64_t> Pedidos;
    std::size_t PedacoDoServidor = 1 << 20;
    ServidorFalso Falso;
};

} // namespace

TEST_F(RemotosTeste, Entra_TellsWhoItIs_AndSignsOutAtTheEnd)
{
    Falso.Quem.set_amostra(true);
    Falso.Quem.set_somenteconsulta("O disco não aceita gravação.");
    std::string senha;
    std::string estacao;
    Falso.Entra = [&](ServerContext &, const v1::PedidoDeEntrada &pedido, v1::Sessao &) {
        senha = pedido.usuario() + "/" + pedido.senha();
        estacao = pedido.estacao();
        return Status::OK;
    };
    const auto servicos = Conecta();
    EXPECT_EQ(servicos->Tipo(), mesa::TipoDeRegistro::Amostra);
    EXPECT_EQ(servicos->Identificador(), "registro de teste");
    EXPECT_EQ(servicos->SomenteLeitura(), "O disco não aceita gravação.");
    std::string recusa;
    std::int32_t espera = 1;
    auto sessao = servicos->Entra("ana", mesa::Segredo("segredo"), "aqui", recusa, espera);
    ASSERT_TRUE(sessao);
    EXPECT_EQ(senha, "ana/segredo");
    EXPECT_EQ(estacao, "aqui");
    EXPECT_EQ(espera, 0);
    EXPECT_EQ(sessao->Operador().Nome, "Ana");
    EXPECT_EQ(sessao->Operador().CodCliente, 3);
    EXPECT_EQ(sessao->AvisoDeRelogio(), "o relógio voltou");
    EXPECT_EQ(Falso.Saidas, 0);
    sessao = nullptr;
    EXPECT_EQ(Falso.Saidas, 1);
}

TEST_F(RemotosTeste, DeveTrocarSenha_TellsTheServersClock)
{
    std::vector<double> ditas;
    rede::Insistencia insistencia = Pouca();
    insistencia.Relogio = [&](const Data &agora) { ditas.push_back(agora.Valor); };
    const auto sessao = Sessao(insistencia);
    for (const double agora : {46000.75, 0.0, 1e300, std::numeric_limits<double>::quiet_NaN(), 46001.0}) {
        Falso.Agora = agora;
        EXPECT_FALSE(sessao->DeveTrocarSenha());
    }
    EXPECT_EQ(ditas, (std::vector<double>{46000.75, 46001.0})); // and nothing that is no moment
}

TEST_F(RemotosTeste, Entra_Refused_TellsWhyAndForHowLong)
{
    Falso.Entra = [](ServerContext &, const v1::PedidoDeEntrada &, v1::Sessao &sessao) {
        sessao.Clear();
        sessao.set_recusa("Usuário ou senha incorretos.");
        sessao.set_espera(8);
        return Status::OK;
    };
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_TRUE(Conecta()->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera).Nada());
    EXPECT_EQ(recusa, "Usuário ou senha incorretos.");
    EXPECT_EQ(espera, 8);
    // A name that is no text never goes out.
    EXPECT_TRUE(Conecta()->Entra("an\xE3", mesa::Segredo("x"), "aqui", recusa, espera).Nada());
    EXPECT_EQ(recusa, "O campo Usuario de PedidoDeEntrada tem caracteres que não são texto.");
}

// A wrong password would count as often as it went out.
TEST_F(RemotosTeste, Entra_AnswerLost_IsTriedAgainByAPersonOnly_AndByItselfWhenTheServerIsBusy)
{
    int tentativas = 0;
    StatusCode como = StatusCode::UNAVAILABLE;
    Falso.Entra = [&](ServerContext &, const v1::PedidoDeEntrada &, v1::Sessao &) {
        return ++tentativas < 3 ? Status(como, "") : Status::OK;
    };
    const rede::Insistencia insistencia{milliseconds(5000), milliseconds(5000), {}};
    std::string recusa;
    std::int32_t espera = 0;
    const auto servicos = Conecta(insistencia);
    EXPECT_EQ(Levantada([&] { servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera); }).Descricao,
              "O servidor 127.0.0.1:" + std::to_string(Falso.Porta()) +
                  " não respondeu: a conexão caiu. Tente de novo daqui a pouco.");
    EXPECT_EQ(tentativas, 1);

    int perguntas = 0;
    rede::Insistencia comAlguem = insistencia;
    comAlguem.TentaDeNovo = [&](const std::string &) { return ++perguntas == 1; };
    tentativas = 0;
    const auto outros = Conecta(comAlguem);
    EXPECT_NE(Levantada([&] { outros->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera); }).Numero, 0);
    EXPECT_EQ(tentativas, 2);
    EXPECT_EQ(perguntas, 2);

    tentativas = 0;
    como = StatusCode::RESOURCE_EXHAUSTED;
    EXPECT_TRUE(servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera));
    EXPECT_EQ(tentativas, 3);
}

TEST_F(RemotosTeste, WhatIsOnlyDoneAtTheRegistry_IsRefused)
{
    const auto servicos = Conecta();
    std::string recusa;
    EXPECT_FALSE(servicos->PrimeiroAdministrador({}, {}, {}, recusa));
    EXPECT_EQ(recusa, "Isso só se faz na própria máquina do registro, por quem cuida do servidor.");
    EXPECT_NE(Levantada([&] { servicos->CadastraCliente({}); }).Numero, 0);
    EXPECT_NE(Levantada([&] { servicos->CadastraUsuario({}, {}, {}, {}); }).Numero, 0);
    EXPECT_FALSE(servicos->Vazio());
}

TEST_F(RemotosTeste, Versions_OutOfRange_AreRefusedInWordsOnEitherSide)
{
    const std::string onde = "127.0.0.1:" + std::to_string(Falso.Porta());
    Falso.Quem.set_contrato(9);
    Falso.Quem.set_contratominimo(2);
    EXPECT_EQ(Levantada([&] { Conecta(); }).Descricao,
              "O servidor " + onde +
                  " fala as versões 2 a 9 do contrato, e este programa fala a versão 1. Atualize este programa.");
    Falso.Quem.set_contrato(0);
    Falso.Quem.set_contratominimo(0);
    EXPECT_EQ(Levantada([&] { Conecta(); }).Descricao,
              "O servidor " + onde +
                  " fala a versão 0 do contrato, e este programa fala a versão 1. Atualize o servidor.");
    Falso.Quem.set_contrato(2);
    Falso.Quem.set_contratominimo(1);
    const auto servicos = Conecta();
    // A server that was brought up to date meanwhile.
    Falso.Quem.set_contrato(3);
    Falso.Quem.set_contratominimo(2);
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_NE(Levantada([&] { servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera); }).Numero, 0);

    int contrato = 0;
    Falso.Apresenta = [&](ServerContext &contexto, const v1::Apresentacao &pedido, v1::Servidor &) {
        contrato = pedido.contrato();
        return ServidorFalso::Fim(contexto, StatusCode::FAILED_PRECONDITION, "Este programa é velho demais.");
    };
    EXPECT_EQ(Levantada([&] { Conecta(); }).Descricao, "Este programa é velho demais.");
    EXPECT_EQ(contrato, 1);
}

// Each goes on with the latest that both speak, and a server is asked for nothing that it does not.
TEST_F(RemotosTeste, Versions_WithOneInCommon_SignInWithTheLatestOfThose)
{
    std::int32_t pedido = 0;
    Falso.Entra = [&](ServerContext &, const v1::PedidoDeEntrada &vindo, v1::Sessao &) {
        pedido = vindo.contrato();
        return Status::OK;
    };
    struct Caso {
        rede::Contratos Dele;
        rede::Contratos Meus;
        std::int32_t Comum;
    };
    for (const Caso &caso : {Caso{{1, 1}, {1, 2}, 1}, Caso{{1, 3}, {1, 2}, 2}, Caso{{2, 3}, {1, 2}, 2},
                             Caso{{1, 2}, {2, 5}, 2}, Caso{{1, 1}, {1, 1}, 1}}) {
        Falso.Quem.set_contratominimo(caso.Dele.Minimo);
        Falso.Quem.set_contrato(caso.Dele.Ultimo);
        std::string recusa;
        std::int32_t espera = 0;
        const auto servicos = rede::Conecta({"127.0.0.1", Falso.Porta()}, {}, "teste", Pouca(), caso.Meus);
        EXPECT_TRUE(servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera));
        EXPECT_EQ(pedido, caso.Comum);
    }
    Falso.Quem.set_contratominimo(3);
    Falso.Quem.set_contrato(4);
    EXPECT_NE(Levantada([&] { rede::Conecta({"127.0.0.1", Falso.Porta()}, {}, "teste", Pouca(), {1, 2}); }).Numero, 0);
}

TEST_F(RemotosTeste, Entra_OnAnotherRegistryThanAtFirst_IsRefused)
{
    const auto servicos = Conecta();
    Falso.Quem.set_registro("outro");
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_NE(Levantada([&] {
                  servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
              }).Descricao.find("agora é de outro registro"),
              std::string::npos);
}

TEST_F(RemotosTeste, Executa_Reading_AnswersTheRecord)
{
    std::string chave;
    std::string operacao;
    Falso.Consulta = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        chave = ServidorFalso::Dado(contexto, "sessao");
        operacao = ServidorFalso::Dado(contexto, "operacao");
        resposta.set_descricao("do servidor: " + pedido.codigo());
        resposta.set_versaolida(9);
        return Status::OK;
    };
    const auto sessao = Sessao();
    const Feito feito = Executa(*sessao, "consulta", Equipamento("EQ1"));
    ASSERT_TRUE(feito.Sim) << feito.Recusa;
    EXPECT_EQ(feito.Resposta.Como<EquiptoED>()->Texto(), "EquiptoED{Descricao=\"do servidor: EQ1\"}");
    EXPECT_EQ(feito.Resposta.Como<EquiptoED>()->VersaoLida, 9);
    EXPECT_EQ(chave, "chave-da-sessao");
    EXPECT_EQ(operacao, "");
}

TEST_F(RemotosTeste, Executa_AnsweringNothing_PutsTheMarksOnWhatWasSent)
{
    std::set<std::string> numeros;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.insert(ServidorFalso::Dado(contexto, "operacao"));
        resposta = pedido;
        resposta.set_versaolida(4);
        return Status::OK;
    };
    const auto sessao = Sessao();
    const auto equipamento = Equipamento("EQ1");
    Feito feito = Executa(*sessao, "altera", equipamento);
    ASSERT_TRUE(feito.Sim) << feito.Recusa;
    EXPECT_TRUE(feito.Resposta.EhVazio());
    EXPECT_EQ(equipamento->VersaoLida, 4);
    // Each act has a number of its own, of the same content too.
    Executa(*sessao, "altera", Equipamento("EQ1"));
    Executa(*sessao, "altera", Equipamento("EQ1"));
    EXPECT_EQ(numeros.size(), 3u);
    EXPECT_EQ(numeros.begin()->size(), 36u);
}

TEST_F(RemotosTeste, Executa_WhatTheContractDoesNotHave_IsRefusedWithoutACall)
{
    const auto sessao = Sessao();
    Falso.Termina();
    EXPECT_EQ(Executa(*sessao, "voa", Equipamento("")).Recusa, "O serviço EquiptoRN não tem a operação \"voa\".");
    EXPECT_EQ(Executa(*sessao, "Guarda", Equipamento(""), "Documentos").Recusa,
              "O serviço Documentos não tem a operação \"Guarda\".");
    EXPECT_EQ(Executa(*sessao, "consulta", Novo<AfericaoED>()).Recusa,
              "A operação pede um registro EquiptoED e recebeu AfericaoED.");
    EXPECT_EQ(Executa(*sessao, "consulta", {}).Recusa, "A operação pede um registro EquiptoED e recebeu nenhum.");
    EXPECT_EQ(Executa(*sessao, "altera", Equipamento("\xE7")).Recusa,
              "O campo Codigo de EquiptoED tem caracteres que não são texto.");
}

TEST_F(RemotosTeste, Executa_EachEndOfACall_BecomesWhatItIsOnAFile)
{
    StatusCode como = StatusCode::OK;
    std::string frase;
    std::string falha;
    int chamadas = 0;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &, v1::EquiptoED &) {
        ++chamadas;
        if (!falha.empty()) {
            contexto.AddTrailingMetadata("falha-bin", falha);
        }
        return frase.empty() ? Status(como, "") : ServidorFalso::Fim(contexto, como, frase);
    };
    const auto sessao = Sessao();
    const auto altera = [&](StatusCode fim, const std::string &dita) {
        como = fim;
        frase = dita;
        chamadas = 0;
        return Executa(*sessao, "altera", Equipamento("EQ1"));
    };
    EXPECT_EQ(altera(StatusCode::FAILED_PRECONDITION, "O código já existe.").Recusa, "O código já existe.");
    EXPECT_EQ(altera(StatusCode::INVALID_ARGUMENT, "O campo não serve.").Recusa, "O campo não serve.");
    EXPECT_EQ(altera(StatusCode::UNIMPLEMENTED, "").Recusa, "O servidor não tem essa operação: a versão dele é outra.");
    EXPECT_EQ(chamadas, 1);
    Falha levantada = Levantada([&] { altera(StatusCode::UNAUTHENTICATED, "Entre de novo."); });
    EXPECT_EQ(levantada.Numero, NumeroFalha::PermissaoNegada);
    EXPECT_EQ(levantada.Descricao, "Entre de novo.");
    EXPECT_EQ(chamadas, 1);
    // What is no text is not shown.
    EXPECT_EQ(altera(StatusCode::FAILED_PRECONDITION, "\xE3").Recusa,
              "O servidor recusou a operação, sem dizer por quê.");

    v1::Falha contada;
    contada.set_numero(NumeroFalha::DiscoCheio);
    contada.set_fonte("Banco < SessaoServico.Executa");
    contada.set_descricao("O disco do registro está cheio.");
    falha = contada.SerializeAsString();
    levantada = Levantada([&] { altera(StatusCode::INTERNAL, "O disco do registro está cheio."); });
    EXPECT_EQ(levantada.Numero, NumeroFalha::DiscoCheio);
    EXPECT_EQ(levantada.Fonte, "Banco < SessaoServico.Executa");
    EXPECT_EQ(levantada.Descricao, "O disco do registro está cheio.");
    EXPECT_EQ(chamadas, 1);
    falha.clear();

    levantada = Levantada([&] { altera(StatusCode::UNAVAILABLE, "O banco não respondeu"); });
    EXPECT_EQ(levantada.Descricao,
              "O servidor 127.0.0.1:" + std::to_string(Falso.Porta()) +
                  " não respondeu: O banco não respondeu. Não se sabe se foi gravado: confirme de novo com os mesmos "
                  "dados, e nada é gravado duas vezes.");
    EXPECT_EQ(levantada.Fonte, "Rede < SessaoServico.Executa");
    EXPECT_GT(chamadas, 1);
    levantada = Levantada([&] { altera(StatusCode::RESOURCE_EXHAUSTED, "O servidor está ocupado."); });
    EXPECT_EQ(levantada.Descricao, "O servidor está ocupado. Nada foi gravado.");
    EXPECT_GT(chamadas, 1);
}

TEST_F(RemotosTeste, Executa_CorrectionWithoutAReason_AsksAndCallsAgainWithTheSameNumber)
{
    std::vector<std::string> numeros;
    std::vector<std::string> motivos;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.push_back(ServidorFalso::Dado(contexto, "operacao"));
        motivos.push_back(ServidorFalso::Dado(contexto, "motivo-bin"));
        if (motivos.back().empty()) {
            contexto.AddTrailingMetadata("falta-motivo-bin", "Esta gravação corrige a aferição 1 do sensor 1.");
            return ServidorFalso::Fim(contexto, StatusCode::FAILED_PRECONDITION,
                                      "A correção da aferição 1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
        }
        resposta = pedido;
        return Status::OK;
    };
    const auto sessao = Sessao();
    // Nobody to ask.
    EXPECT_EQ(Executa(*sessao, "altera", Equipamento("EQ1")).Recusa,
              "A correção da aferição 1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    std::string perguntado;
    std::optional<std::string> dado;
    sessao->PerguntaMotivo([&](const std::string &oQue) {
        perguntado = oQue;
        return dado;
    });
    EXPECT_EQ(Executa(*sessao, "altera", Equipamento("EQ1")).Recusa,
              "A correção da aferição 1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    EXPECT_EQ(perguntado, "Esta gravação corrige a aferição 1 do sensor 1.");
    dado = "ab";
    EXPECT_EQ(Executa(*sessao, "altera", Equipamento("EQ1")).Recusa,
              "A correção da aferição 1 do sensor 1 não foi gravada: o motivo precisa ter de 5 a 500 caracteres; veio "
              "com 2.");
    EXPECT_EQ(motivos, std::vector<std::string>(3));
    numeros.clear();
    dado = "  erro de digitação ";
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_EQ(motivos.back(), "erro de digitação");
    ASSERT_EQ(numeros.size(), 2u);
    EXPECT_EQ(numeros[0], numeros[1]);
}

TEST_F(RemotosTeste, Executa_AnswerLost_IsAskedAgainWithItsNumberAndDoneOnce)
{
    const auto feitas = std::make_shared<std::atomic<int>>(0);
    const auto umaVez = ServidorFalso::UmaVez<v1::EquiptoED, v1::EquiptoED>(
        feitas, [](const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
            resposta = pedido;
            resposta.set_nrointequip(41);
        });
    int chamadas = 0;
    Falso.Inclui = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        const Status status = umaVez(contexto, pedido, resposta);
        return ++chamadas < 3 ? Status(StatusCode::UNAVAILABLE, "") : status;
    };
    const auto sessao = Sessao({milliseconds(5000), milliseconds(2000), {}});
    const Feito feito = Executa(*sessao, "inclui", Equipamento("EQ1"));
    ASSERT_TRUE(feito.Sim) << feito.Recusa;
    EXPECT_EQ(feito.Resposta.Como<EquiptoED>()->NroIntEquip.Valor(), 41);
    EXPECT_EQ(chamadas, 3);
    EXPECT_EQ(*feitas, 1);
}

TEST_F(RemotosTeste, Executa_GivenUp_AskedAgainWithTheSameContent_GoesWithTheSameNumber)
{
    std::vector<std::string> numeros;
    bool responde = false;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.push_back(ServidorFalso::Dado(contexto, "operacao"));
        resposta = pedido;
        return responde ? Status::OK : Status(StatusCode::UNAVAILABLE, "");
    };
    std::vector<std::string> perguntas;
    const auto servicos = Conecta({milliseconds(60), milliseconds(2000), [&](const std::string &frase) {
                                       perguntas.push_back(frase);
                                       return perguntas.size() == 1;
                                   }});
    std::string recusa;
    std::int32_t espera = 0;
    auto sessao = servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    const Falha desconhecido = Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ1")); });
    ASSERT_EQ(perguntas.size(), 2u);
    EXPECT_EQ(desconhecido.Descricao, perguntas[1]);
    EXPECT_EQ(std::set<std::string>(numeros.begin(), numeros.end()).size(), 1u);
    // Another content is another act.
    const std::string primeiro = numeros.front();
    EXPECT_NE(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ2")); }).Numero, 0);
    EXPECT_NE(numeros.back(), primeiro);
    // The same content, in a later session of the same user too.
    responde = true;
    sessao = nullptr;
    sessao = servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_EQ(numeros.back(), primeiro);
    // Now it is known, and the next is another one.
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_NE(numeros.back(), primeiro);
}

// Its answer was lost, and something else was done since: the same content may be a new act.
TEST_F(RemotosTeste, Executa_SameContentAfterSomethingElseWasDone_IsANewActWhenThePersonSaysSo)
{
    std::vector<std::string> numeros;
    bool cala = true;
    const auto altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.push_back(ServidorFalso::Dado(contexto, "operacao"));
        resposta = pedido;
        return cala ? Status(StatusCode::UNAVAILABLE, "") : Status::OK;
    };
    Falso.Altera = altera;
    Falso.Inclui = altera;
    std::vector<std::string> perguntas;
    std::optional<bool> mesmo;
    rede::Insistencia insistencia = Pouca();
    insistencia.EhOMesmo = [&](const std::string &frase) {
        perguntas.push_back(frase);
        return mesmo;
    };
    const auto sessao = Sessao(insistencia);
    EXPECT_NE(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ1")); }).Numero, 0);
    const std::string primeiro = numeros.front();
    EXPECT_NE(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ1")); }).Numero, 0);
    EXPECT_EQ(numeros.back(), primeiro);
    EXPECT_TRUE(perguntas.empty()); // nothing lies between
    cala = false;
    EXPECT_TRUE(Executa(*sessao, "inclui", Equipamento("EQ2")).Sim);
    numeros.clear();

    EXPECT_EQ(Executa(*sessao, "altera", Equipamento("EQ1")).Recusa, "A operação foi cancelada: nada foi gravado.");
    EXPECT_TRUE(numeros.empty());
    ASSERT_EQ(perguntas.size(), 1u);
    EXPECT_TRUE(perguntas[0].starts_with("Isto mesmo já foi pedido, e não se sabe se foi gravado.")) << perguntas[0];
    mesmo = false;
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    ASSERT_EQ(numeros.size(), 1u);
    EXPECT_NE(numeros[0], primeiro);
    EXPECT_EQ(perguntas.size(), 2u);

    // And the other answer: the number of before.
    cala = true;
    EXPECT_NE(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ3")); }).Numero, 0);
    const std::string terceiro = numeros.back();
    cala = false;
    EXPECT_TRUE(Executa(*sessao, "inclui", Equipamento("EQ2")).Sim);
    mesmo = true;
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ3")).Sim);
    EXPECT_EQ(numeros.back(), terceiro);
    EXPECT_EQ(perguntas.size(), 3u);
}

TEST(NumerosEmAbertoTeste, Duvidoso_AfterALongTimeOrAnotherActOfTheService)
{
    steady_clock::time_point agora;
    rede::NumerosEmAberto numeros([&] { return agora; });
    const std::string um = numeros.Chave(1, "EquiptoRN.altera", "um");
    EXPECT_FALSE(numeros.Duvidoso(um));
    const std::string numero = numeros.Abre("EquiptoRN", um).Numero;
    numeros.Passou("Documentos");
    agora += std::chrono::minutes(10);
    EXPECT_FALSE(numeros.Duvidoso(um));
    agora += std::chrono::seconds(1);
    EXPECT_TRUE(numeros.Duvidoso(um));
    EXPECT_EQ(numeros.Abre("EquiptoRN", um).Numero, numero);
    numeros.Fecha(um);
    EXPECT_FALSE(numeros.Duvidoso(um));
    EXPECT_NE(numeros.Abre("EquiptoRN", um).Numero, numero);
    numeros.Passou("EquiptoRN");
    EXPECT_TRUE(numeros.Duvidoso(um));
}

// The reason is part of what is asked for: what goes out again goes with the one that was given.
TEST_F(RemotosTeste, Executa_CorrectionWithoutAnAnswer_GoesAgainWithItsReasonAndNobodyIsAskedAgain)
{
    std::vector<std::string> vindas;
    bool cala = true;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        const std::string motivo = ServidorFalso::Dado(contexto, "motivo-bin");
        if (motivo.empty()) {
            contexto.AddTrailingMetadata("falta-motivo-bin", "Esta gravação corrige a aferição 1 do sensor 1.");
            return ServidorFalso::Fim(contexto, StatusCode::FAILED_PRECONDITION,
                                      "A correção não foi gravada: por quê?");
        }
        vindas.push_back(ServidorFalso::Dado(contexto, "operacao") + " " + motivo);
        resposta = pedido;
        return cala ? Status(StatusCode::UNAVAILABLE, "") : Status::OK;
    };
    const auto sessao = Sessao();
    int perguntas = 0;
    sessao->PerguntaMotivo([&](const std::string &) {
        return std::optional<std::string>(++perguntas == 1 ? "erro de digitação" : "outra razão");
    });
    EXPECT_NE(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ1")); }).Numero, 0);
    cala = false;
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_EQ(perguntas, 1);
    EXPECT_EQ(std::set<std::string>(vindas.begin(), vindas.end()).size(), 1u);
    // Known by now: the next correction has a number and a reason of its own.
    const std::string primeira = vindas.back();
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_EQ(perguntas, 2);
    EXPECT_TRUE(vindas.back().ends_with("outra razão"));
    EXPECT_NE(vindas.back().substr(0, 36), primeira.substr(0, 36));
}

// A server that died in the middle of a save, and one in its place that knows nothing of the session.
TEST_F(RemotosTeste, Executa_SessionGoneAfterALostAnswer_IsTheEndOfTheSession_AndTheNextOneGoesOnWithTheNumber)
{
    std::vector<std::string> numeros;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.push_back(ServidorFalso::Dado(contexto, "operacao"));
        resposta = pedido;
        return numeros.size() == 1   ? Status(StatusCode::UNAVAILABLE, "")
               : numeros.size() == 2 ? ServidorFalso::Fim(contexto, StatusCode::UNAUTHENTICATED, "A sessão terminou.")
                                     : Status::OK;
    };
    const auto servicos = Conecta();
    std::string recusa;
    std::int32_t espera = 0;
    auto sessao = servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    try {
        Executa(*sessao, "altera", Equipamento("EQ1"));
        ADD_FAILURE() << "the session goes on";
    } catch (const rede::SessaoEncerrada &fim) {
        EXPECT_EQ(fim.Descricao, "A sessão terminou. Não se sabe se foi gravado: confirme de novo com os mesmos dados, "
                                 "e nada é gravado duas vezes.");
    }
    sessao = servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    EXPECT_EQ(numeros, std::vector<std::string>(3, numeros[0]));
}

TEST_F(RemotosTeste, Executa_ServerNotThere_SaysSoAndGoesOnWhenItIsBack)
{
    int perguntas = 0;
    std::unique_ptr<ServidorFalso> outro;
    const std::uint16_t porta = Falso.Porta();
    const auto sessao = Sessao({milliseconds(60), milliseconds(2000), [&](const std::string &frase) {
                                    EXPECT_NE(frase.find("não respondeu"), std::string::npos) << frase;
                                    if (++perguntas == 2) {
                                        outro = std::make_unique<ServidorFalso>("", "", porta);
                                        outro->Consulta = Falso.Consulta;
                                    }
                                    return true;
                                }});
    Falso.Termina();
    EXPECT_TRUE(Executa(*sessao, "consulta", Equipamento("EQ1")).Sim);
    EXPECT_EQ(perguntas, 2);
}

TEST_F(RemotosTeste, Executa_SlowCall_IsGivenUpAtOnceWhenThePersonDoes)
{
    std::mutex tranca;
    std::condition_variable sinal;
    bool solta = false;
    const auto demora = [&](ServerContext &contexto, const v1::EquiptoED &, v1::EquiptoED &) {
        std::unique_lock guarda(tranca);
        sinal.wait_for(guarda, std::chrono::seconds(20), [&] { return solta || contexto.IsCancelled(); });
        return Status::OK;
    };
    Falso.Consulta = demora;
    Falso.Altera = demora;
    const auto sessao = Sessao({milliseconds(5000), milliseconds(20000), {}});
    int perguntas = 0;
    sessao->Acompanha([&](double, const std::string &) { return ++perguntas < 3; });
    const auto comeco = steady_clock::now();
    EXPECT_EQ(Executa(*sessao, "consulta", Equipamento("EQ1")).Recusa, "A operação foi cancelada: nada foi gravado.");
    perguntas = 0;
    EXPECT_NE(
        Executa(*sessao, "altera", Equipamento("EQ1")).Recusa.find("não se sabe se o servidor já a tinha gravado"),
        std::string::npos);
    EXPECT_LT(steady_clock::now() - comeco, std::chrono::seconds(15));
    {
        const std::lock_guard guarda(tranca);
        solta = true;
    }
    sinal.notify_all();
    Falso.Termina(); // with what it still has under way
}

TEST_F(RemotosTeste, Executa_CallThatTakesTooLong_IsTriedAgain)
{
    std::atomic<int> chamadas{0};
    std::mutex tranca;
    std::condition_variable sinal;
    bool solta = false;
    Falso.Consulta = [&](ServerContext &, const v1::EquiptoED &, v1::EquiptoED &resposta) {
        resposta.set_codigo("tarde");
        if (++chamadas == 1) {
            std::unique_lock guarda(tranca);
            sinal.wait_for(guarda, std::chrono::seconds(20), [&] { return solta; });
        }
        return Status::OK;
    };
    const auto sessao = Sessao({milliseconds(20000), milliseconds(3000), {}});
    EXPECT_TRUE(Executa(*sessao, "consulta", Equipamento("EQ1")).Sim);
    EXPECT_EQ(chamadas, 2);
    {
        const std::lock_guard guarda(tranca);
        solta = true;
    }
    sinal.notify_all();
    Falso.Termina(); // with what it still has under way
}

TEST_F(RemotosTeste, Executa_CallThatTakesLongerThanATry_WhileSomebodyFollowsIt_IsAnswered)
{
    std::atomic<int> chamadas{0};
    std::atomic<bool> poucoTempo{false};
    std::mutex tranca;
    std::condition_variable sinal;
    bool solta = false;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        ++chamadas;
        poucoTempo = contexto.deadline() < std::chrono::system_clock::now() + std::chrono::minutes(30);
        std::unique_lock guarda(tranca);
        sinal.wait_for(guarda, std::chrono::seconds(20), [&] { return solta || contexto.IsCancelled(); });
        resposta = pedido;
        return Status::OK;
    };
    constexpr milliseconds cada(2000);
    const auto sessao = Sessao({milliseconds(0), cada, {}});
    const auto comeco = steady_clock::now();
    sessao->Acompanha([&](double, const std::string &) {
        if (steady_clock::now() - comeco > 2 * cada) {
            const std::lock_guard guarda(tranca);
            solta = true;
            sinal.notify_all();
        }
        return true;
    });
    EXPECT_NO_THROW(EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim));
    EXPECT_EQ(chamadas, 1);
    EXPECT_FALSE(poucoTempo); // the server's own limit counts
    EXPECT_GT(steady_clock::now() - comeco, 2 * cada);
    Falso.Termina();
}

TEST_F(RemotosTeste, Executa_LineThatDied_IsFoundOut_WhileSomebodyFollowsTheCall)
{
    Tubo tubo(Falso.Porta());
    const auto sessao = Sessao({milliseconds(0), milliseconds(3000), {}}, tubo.Porta());
    sessao->Acompanha([](double, const std::string &) { return true; });
    EXPECT_TRUE(Executa(*sessao, "consulta", Equipamento("EQ1")).Sim);
    tubo.Cala();
    EXPECT_NE(Levantada([&] { Executa(*sessao, "consulta", Equipamento("EQ1")); }).Descricao.find("não respondeu"),
              std::string::npos);
}

TEST_F(RemotosTeste, Executa_RequestBeyondTheServersLimit_IsARefusalAndNotTriedAgain)
{
    const auto sessao = Sessao();
    auto equipamento = Equipamento("EQ1");
    equipamento->Descricao = std::string(5 << 20, 'x'); // the server of the test takes 4 MB
    const Feito feito = Executa(*sessao, "altera", equipamento);
    EXPECT_FALSE(feito.Sim);
    EXPECT_EQ(feito.Recusa, "O que se pediu é maior do que o servidor aceita de uma vez. Nada foi gravado.");
}

TEST_F(RemotosTeste, Executa_AnswerBeyondTheLimit_IsNotKnownToBeDoneAndKeepsItsNumber)
{
    std::vector<std::string> numeros;
    Falso.Altera = [&](ServerContext &contexto, const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
        numeros.push_back(ServidorFalso::Dado(contexto, "operacao"));
        resposta = pedido;
        if (numeros.size() == 1) {
            resposta.set_descricao(std::string(66 << 20, 'x'));
        }
        return Status::OK;
    };
    const auto sessao = Sessao({milliseconds(0), milliseconds(30000), {}});
    EXPECT_EQ(Levantada([&] { Executa(*sessao, "altera", Equipamento("EQ1")); }).Descricao,
              "O servidor respondeu mais do que este programa aceita de uma vez. Se era para gravar, confira se foi "
              "gravado.");
    EXPECT_TRUE(Executa(*sessao, "altera", Equipamento("EQ1")).Sim);
    ASSERT_EQ(numeros.size(), 2u);
    EXPECT_EQ(numeros[0], numeros[1]);
}

TEST_F(RemotosTeste, TrocaMinhaSenha_SendsTheSecrets_AndAgainAfterALostAnswer)
{
    std::vector<std::string> vindas;
    Falso.TrocaMinhaSenha = [&](ServerContext &contexto, const v1::TrocaSenhaED &pedido, v1::Vazio &) {
        vindas.push_back(pedido.atual() + "/" + pedido.nova());
        if (vindas.size() == 1) {
            return Status(StatusCode::UNAVAILABLE, "");
        }
        return vindas.size() == 2 ? Status::OK
                                  : ServidorFalso::Fim(contexto, StatusCode::FAILED_PRECONDITION, "A senha é curta.");
    };
    const auto sessao = Sessao();
    auto troca = Novo<mesa::TrocaSenhaED>();
    troca->Atual = mesa::Segredo("velha");
    troca->Nova = mesa::Segredo("nova");
    EXPECT_TRUE(Executa(*sessao, "trocaMinhaSenha", troca, "AdministracaoRN").Sim);
    EXPECT_EQ(vindas, (std::vector<std::string>{"velha/nova", "velha/nova"}));
    EXPECT_EQ(Executa(*sessao, "trocaMinhaSenha", troca, "AdministracaoRN").Recusa, "A senha é curta.");
}

TEST_F(RemotosTeste, TemPermissao_IsAskedOnceInAShortWhile_AndAnewAfterAChange)
{
    int chamadas = 0;
    Falso.TemPermissao = [&](ServerContext &, const v1::Permissao &pedido, v1::SimOuNao &resposta) {
        ++chamadas;
        resposta.set_sim(pedido.acao() == "I");
        return Status::OK;
    };
    const auto sessao = Sessao();
    for (int n = 0; n < 50; ++n) {
        EXPECT_TRUE(sessao->TemPermissao("VOR", "EQUIP", "I"));
        EXPECT_FALSE(sessao->TemPermissao("VOR", "EQUIP", "E"));
    }
    EXPECT_EQ(chamadas, 2);
    Executa(*sessao, "altera", Equipamento("EQ1"));
    EXPECT_TRUE(sessao->TemPermissao("VOR", "EQUIP", "I"));
    EXPECT_EQ(chamadas, 3);
}

TEST_F(RemotosTeste, Documents_ComeBackAsTheyWent_WhateverTheirSize)
{
    const auto sessao = Sessao();
    std::vector<double> partes;
    sessao->Acompanha([&](double parte, const std::string &) {
        partes.push_back(parte);
        return true;
    });
    for (const std::size_t tamanho : {0u, 1u, (1u << 20) - 1, 1u << 20, (1u << 20) + 1, 5u << 20}) {
        const Bytes documento = Documento(tamanho);
        partes.clear();
        double numero = 0;
        std::string recusa;
        ASSERT_TRUE(sessao->GuardaDocumento(documento, numero, recusa)) << recusa;
        EXPECT_TRUE(std::is_sorted(partes.begin(), partes.end()));
        partes.clear();
        Bytes lido;
        ASSERT_TRUE(sessao->LeDocumento(numero, lido, recusa)) << recusa;
        EXPECT_EQ(lido, documento);
        EXPECT_TRUE(std::is_sorted(partes.begin(), partes.end()));
        EXPECT_GE(partes.size(), 1u);
    }
    // The same again is another one.
    EXPECT_EQ(Guardados.size(), 6u);
    double numero = 0;
    std::string recusa;
    ASSERT_TRUE(sessao->GuardaDocumento(Documento(1), numero, recusa));
    EXPECT_EQ(numero, 7);
}

TEST_F(RemotosTeste, Documents_Cancelled_LeaveNothing)
{
    const auto sessao = Sessao();
    const Bytes documento = Documento(5 << 20);
    double numero = -1;
    std::string recusa;
    sessao->Acompanha([&](double parte, const std::string &) { return parte < 0.4; });
    EXPECT_FALSE(sessao->GuardaDocumento(documento, numero, recusa));
    EXPECT_EQ(recusa, "A operação foi cancelada: nada foi gravado.");
    EXPECT_EQ(numero, -1);
    EXPECT_TRUE(Guardados.empty());
    sessao->Acompanha({});
    ASSERT_TRUE(sessao->GuardaDocumento(documento, numero, recusa));
    EXPECT_EQ(Guardados.size(), 1u);

    Bytes lido{1, 2, 3};
    sessao->Acompanha([&](double parte, const std::string &) { return parte < 0.4; });
    EXPECT_FALSE(sessao->LeDocumento(numero, lido, recusa));
    EXPECT_EQ(recusa, "A operação foi cancelada: nada foi gravado.");
    EXPECT_EQ(lido, (Bytes{1, 2, 3}));
}

TEST_F(RemotosTeste, Documents_DamagedOnTheWay_AreNotHandedOver)
{
    const auto sessao = Sessao();
    Bytes lido;
    std::string recusa;
    v1::PedacoDeDocumento pedaco;
    Falso.LeDocumento = [&](ServerContext &, const v1::PedidoDeDocumento &,
                            grpc::ServerWriter<v1::PedacoDeDocumento> &pedacos) {
        pedacos.Write(pedaco);
        return Status::OK;
    };
    pedaco.set_octetos("abc");
    pedaco.set_tamanho(3);
    pedaco.set_sha256(SomaDe("abd"));
    EXPECT_EQ(Levantada([&] { sessao->LeDocumento(1, lido, recusa); }).Descricao,
              "O documento chegou danificado. Tente de novo.");
    pedaco.set_sha256(SomaDe("abc"));
    pedaco.set_tamanho(4);
    EXPECT_NE(Levantada([&] { sessao->LeDocumento(1, lido, recusa); }).Numero, 0);
    for (const std::int64_t tamanho : {std::int64_t{2}, std::int64_t{-1}, std::int64_t{1} << 40}) {
        pedaco.set_tamanho(tamanho);
        EXPECT_NE(Levantada([&] { sessao->LeDocumento(1, lido, recusa); }).Numero, 0) << tamanho;
    }
    EXPECT_TRUE(lido.empty());
    pedaco.set_tamanho(3);
    EXPECT_TRUE(sessao->LeDocumento(1, lido, recusa));
}

TEST_F(RemotosTeste, LeReplica_GivesItsRowsAndItsEnd)
{
    const auto sessao = Sessao();
    std::vector<std::int32_t> numeros;
    const mesa::Replicado replicado =
        sessao->LeReplica(10, [&](const mesa::LinhaReplica &linha) { numeros.push_back(linha.NroIntEquip); });
    EXPECT_EQ(numeros, (std::vector<std::int32_t>{11, 12, 13}));
    EXPECT_EQ(replicado.Ate, 88);
    EXPECT_EQ(replicado.DeQuando.Valor, 46000.5);
    EXPECT_EQ(replicado.Quantas, 3);
    EXPECT_EQ(replicado.Elo, "elo");
    // Given up on the way.
    sessao->Acompanha([](double parte, const std::string &) { return parte < 0.5; });
    EXPECT_TRUE(sessao->LeReplica(10, [](const mesa::LinhaReplica &) {}).DeQuando.Vazia());
}

namespace {

v1::AndamentoDaConferencia Noticia(double parte)
{
    v1::AndamentoDaConferencia noticia;
    noticia.set_parte(parte);
    noticia.set_oque("Aferições");
    return noticia;
}

v1::AndamentoDaConferencia Ultima(int como)
{
    v1::AndamentoDaConferencia ultima = Noticia(1);
    ultima.mutable_resultado()->set_como(como);
    ultima.mutable_resultado()->set_frase("O registro foi conferido.");
    ultima.mutable_resultado()->add_achados("Um problema.");
    ultima.mutable_resultado()->add_avisos("Um aviso.");
    return ultima;
}

rede::SessaoDeServidor::Conferencia ConferenciaDe(const Ref<mesa::SessaoServico> &sessao)
{
    return ComoTipo<rede::SessaoDeServidor>(sessao)->PreparaConferencia({});
}

} // namespace

TEST_F(RemotosTeste, Check_TellsHowFarItIsAndWhatWasFound_InAnyThread)
{
    std::promise<void> visto;
    Falso.Confere = [&](ServerContext &contexto, grpc::ServerWriter<v1::AndamentoDaConferencia> &noticias) {
        EXPECT_EQ(ServidorFalso::Dado(contexto, "sessao"), "chave-da-sessao");
        noticias.Write(Noticia(0.25));
        visto.get_future().wait(); // until it was told
        noticias.Write(Ultima(1));
        return Status::OK;
    };
    const auto sessao = Sessao();
    auto conferencia = ConferenciaDe(sessao);
    mesa::ResultadoDaConferencia resultado;
    std::thread outra([&] {
        bool disse = false;
        resultado = conferencia([&](double parte, const std::string &oQue) {
            if (!disse && parte == 0.25 && oQue == "Aferições") {
                disse = true;
                visto.set_value();
            }
            return true;
        });
    });
    outra.join();
    EXPECT_EQ(resultado.Como, mesa::ResultadoDaConferencia::Desfecho::ComAchados);
    EXPECT_EQ(resultado.Frase, "O registro foi conferido.");
    EXPECT_EQ(resultado.Achados, std::vector<std::string>{"Um problema."});
    EXPECT_EQ(resultado.Avisos, std::vector<std::string>{"Um aviso."});
}

TEST_F(RemotosTeste, Check_GivenUp_EndsAtTheServerToo)
{
    std::promise<void> desistiu;
    Falso.Confere = [&](ServerContext &contexto, grpc::ServerWriter<v1::AndamentoDaConferencia> &noticias) {
        while (noticias.Write(Noticia(0.5)) && !contexto.IsCancelled()) {
        }
        desistiu.set_value();
        return Status::OK;
    };
    const auto resultado = ConferenciaDe(Sessao())([](double parte, const std::string &) { return parte < 0.5; });
    EXPECT_EQ(resultado.Como, mesa::ResultadoDaConferencia::Desfecho::Cancelada);
    EXPECT_EQ(resultado.Frase, "A conferência foi cancelada antes do fim: nada se pode dizer do registro.");
    desistiu.get_future().wait();
}

TEST_F(RemotosTeste, Check_NotMade_SaysWhy_AndIsNotMadeAgain)
{
    int vezes = 0;
    StatusCode como{};
    Falso.Confere = [&](ServerContext &contexto, grpc::ServerWriter<v1::AndamentoDaConferencia> &) {
        ++vezes;
        return ServidorFalso::Fim(contexto, como, "Não deu.");
    };
    int perguntas = 0;
    rede::Insistencia insistencia = Pouca();
    insistencia.TentaDeNovo = [&](const std::string &) { return ++perguntas < 2; };
    const auto sessao = Sessao(insistencia);
    const std::string ninguem = "O servidor 127.0.0.1:" + std::to_string(Falso.Porta()) + " não respondeu: ";
    for (const auto &[fim, frase] : std::vector<std::pair<StatusCode, std::string>>{
             {StatusCode::FAILED_PRECONDITION, "Não deu."},
             {StatusCode::RESOURCE_EXHAUSTED, "Não deu. Tente de novo daqui a pouco."},
             {StatusCode::UNAVAILABLE, ninguem + "Não deu. Tente de novo daqui a pouco."},
             {StatusCode::INTERNAL, "Não deu."}}) {
        como = fim;
        vezes = 0;
        EXPECT_EQ(Levantada([&] { ConferenciaDe(sessao)({}); }).Descricao, frase) << fim;
        EXPECT_EQ(vezes, 1) << fim;
    }
    EXPECT_EQ(perguntas, 0);
}

TEST_F(RemotosTeste, Check_OfASessionThatEnded_IsNotBegun)
{
    const auto sessao = Sessao();
    Falso.Situacao = [](ServerContext &contexto, const v1::Vazio &, v1::SituacaoDaSessao &) {
        return ServidorFalso::Fim(contexto, StatusCode::UNAUTHENTICATED, "A sessão terminou.");
    };
    EXPECT_THROW(ConferenciaDe(sessao), rede::SessaoEncerrada);
}

TEST_F(RemotosTeste, CheckAndHead_ThatAreNone_AreNotHandedOver)
{
    Falso.Cabeca = [](ServerContext &, const v1::Vazio &, v1::CabecaDoHistorico &resposta) {
        resposta.set_texto("nada disso");
        return Status::OK;
    };
    const auto sessao = Sessao();
    for (const auto &ultima : {Noticia(1), Ultima(4), Ultima(-1)}) {
        Falso.Confere = [&](ServerContext &, grpc::ServerWriter<v1::AndamentoDaConferencia> &noticias) {
            noticias.Write(ultima);
            return Status::OK;
        };
        EXPECT_EQ(Levantada([&] { ConferenciaDe(sessao)({}); }).Descricao,
                  "O servidor respondeu o que este programa não entende. Não se sabe o que a conferência achou.");
    }
    EXPECT_TRUE(Levantada([&] {
                    ComoTipo<rede::SessaoDeServidor>(sessao)->Cabeca();
                }).Descricao.starts_with("O servidor respondeu o que este programa não entende."));
}

// Each call is cut at places all along its way, there and back; it is done once, and answered whole.
TEST_F(RemotosTeste, CutConnections_AtManyPlaces_EachIsDoneOnce)
{
    const auto feitas = std::make_shared<std::atomic<int>>(0);
    Falso.Altera = ServidorFalso::UmaVez<v1::EquiptoED, v1::EquiptoED>(
        feitas, [](const v1::EquiptoED &pedido, v1::EquiptoED &resposta) {
            resposta = pedido;
            resposta.set_versaolida(pedido.versaolida() + 1);
        });
    Tubo tubo(Falso.Porta());
    const auto sessao = Sessao({milliseconds(10000), milliseconds(5000), {}}, tubo.Porta());
    PedacoDoServidor = 20000;
    const Bytes documento = Documento(70000);
    std::string recusa;
    double numero = 0;
    ASSERT_TRUE(sessao->GuardaDocumento(documento, numero, recusa));

    int cortes = 0;
    const std::vector<std::function<void()>> chamadas{
        [&] { ASSERT_TRUE(Executa(*sessao, "consulta", Equipamento("EQ1")).Sim); },
        [&] {
            const int antes = *feitas;
            const auto equipamento = Equipamento("EQ1");
            ASSERT_TRUE(Executa(*sessao, "altera", equipamento).Sim);
            EXPECT_EQ(equipamento->VersaoLida, 4);
            EXPECT_EQ(*feitas, antes + 1);
        },
        [&] {
            const std::size_t antes = Guardados.size();
            double guardado = 0;
            ASSERT_TRUE(sessao->GuardaDocumento(documento, guardado, recusa)) << recusa;
            EXPECT_EQ(Guardados.size(), antes + 1);
            EXPECT_EQ(guardado, static_cast<double>(antes + 1));
        },
        [&] {
            Bytes lido;
            ASSERT_TRUE(sessao->LeDocumento(numero, lido, recusa)) << recusa;
            EXPECT_EQ(lido, documento);
        },
        [&] {
            int linhas = 0;
            ASSERT_EQ(sessao->LeReplica(0, [&](const mesa::LinhaReplica &) { ++linhas; }).Ate, 88);
            EXPECT_EQ(linhas, 3);
        },
    };
    for (const auto &chamada : chamadas) {
        for (const auto sentido : {Tubo::Sentido::Ida, Tubo::Sentido::Volta}) {
            tubo.CortaEm(sentido, -1);
            chamada();
            const std::int64_t todos = tubo.Passaram(sentido);
            ASSERT_GT(todos, 0);
            for (int n = 0; n < 8; ++n) {
                tubo.CortaEm(sentido, todos * n / 8);
                chamada();
                cortes += tubo.Cortou() ? 1 : 0;
            }
        }
    }
    EXPECT_GT(cortes, 60);
    // Some of the document was there when the way was cut, and did not come a second time.
    EXPECT_GT(*std::max_element(Pedidos.begin(), Pedidos.end()), 0);
}

namespace {

void Escreve(const std::string &arquivo, const std::string &texto)
{
    std::ofstream(arquivo, std::ios::binary) << texto;
}

class ConfiancaTeste : public testing::Test {
  protected:
    servidor::ParDeChaves Par(const std::string &nome)
    {
        const QString pasta = Pasta.filePath(QString::fromStdString(nome));
        QDir().mkpath(pasta);
        return servidor::ParDeChaves::Proprio(pasta.toStdString());
    }
    static std::string Recusa(const Endereco &endereco, const rede::Confianca &confianca)
    {
        return Levantada([&] { rede::Conecta(endereco, confianca, "teste", Pouca()); }).Descricao;
    }

    QTemporaryDir Pasta;
};

} // namespace

TEST_F(ConfiancaTeste, PinnedCertificate_IsTakenAndAnotherOneIsNot)
{
    const auto par = Par("um");
    auto falso = std::make_unique<ServidorFalso>(par.Certificado, par.Chave);
    const Endereco onde{"127.0.0.1", falso->Porta()};
    EXPECT_EQ(rede::DigitalDoServidor(onde), par.Digital());
    EXPECT_EQ(rede::DigitalDoServidor({"localhost", falso->Porta()}), par.Digital());
    EXPECT_EQ(par.Digital().size(), 95u);

    const auto servicos = rede::Conecta(onde, {par.Digital(), ""}, "teste", Pouca());
    std::string recusa;
    std::int32_t espera = 0;
    int senhas = 0;
    falso->Entra = [&](ServerContext &, const v1::PedidoDeEntrada &, v1::Sessao &) {
        ++senhas;
        return Status::OK;
    };
    auto sessao = servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    ASSERT_TRUE(sessao);
    EXPECT_EQ(senhas, 1);

    const auto outro = Par("outro");
    const std::string naoEMais =
        "O servidor " + onde.Texto() + " não é mais o mesmo: o certificado que ele mostra é outro.";
    EXPECT_TRUE(Recusa(onde, {outro.Digital(), ""}).starts_with(naoEMais));

    // Another server in its place, while somebody works: nothing reaches it.
    const int porta = falso->Porta();
    falso->Termina();
    ServidorFalso intruso(outro.Certificado, outro.Chave, porta);
    intruso.Consulta = [&](ServerContext &, const v1::EquiptoED &, v1::EquiptoED &) {
        ADD_FAILURE() << "a question reached the other server";
        return Status::OK;
    };
    EXPECT_TRUE(Levantada([&] { Executa(*sessao, "consulta", Equipamento("EQ1")); }).Descricao.starts_with(naoEMais));
    EXPECT_NE(Levantada([&] { servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera); }).Numero, 0);
    EXPECT_EQ(senhas, 1);
    sessao = nullptr;
    EXPECT_EQ(intruso.Saidas, 0);
}

TEST_F(ConfiancaTeste, CertificateByAnAuthority_HasToBeByThatOne)
{
    const auto par = Par("um");
    const std::string boa = Pasta.filePath("boa.pem").toStdString();
    const std::string ma = Pasta.filePath("ma.pem").toStdString();
    Escreve(boa, par.Certificado);
    Escreve(ma, Par("outro").Certificado);
    ServidorFalso falso(par.Certificado, par.Chave);
    const Endereco onde{"localhost", falso.Porta()};
    EXPECT_FALSE(rede::Conecta(onde, {"", boa}, "teste", Pouca()).Nada());
    EXPECT_EQ(Recusa(onde, {"", ma}), "O servidor " + onde.Texto() +
                                          " não serve: o certificado dele não é da autoridade indicada. Nada foi "
                                          "enviado.");
    EXPECT_EQ(Recusa(onde, {"", "/nao/ha"}), "O arquivo do certificado da autoridade não pôde ser lido: /nao/ha.");
}

TEST_F(ConfiancaTeste, WithoutACertificate_OnlyOnThisMachine)
{
    for (const char *desta : {"localhost", "127.0.0.1", "127.255.0.9", "::1"}) {
        EXPECT_TRUE((Endereco{desta, 1}.DestaMaquina())) << desta;
    }
    for (const char *outra :
         {"127.exemplo.org", "127.", "127.0.0.1.exemplo.org", "128.0.0.1", "::2", "localhost.org"}) {
        EXPECT_FALSE((Endereco{outra, 1}.DestaMaquina())) << outra;
    }
    ServidorFalso falso;
    EXPECT_EQ(rede::DigitalDoServidor({"127.0.0.1", falso.Porta()}), "");
    EXPECT_FALSE(rede::Conecta({"127.0.0.1", falso.Porta()}, {}, "teste", Pouca()).Nada());
    EXPECT_EQ(Recusa({"servidor.exemplo", 1}, {}),
              "Não se sabe por que certificado reconhecer o servidor servidor.exemplo:1.");
    // One that has a certificate is not spoken to without.
    const auto par = Par("um");
    ServidorFalso cifrado(par.Certificado, par.Chave);
    EXPECT_NE(Recusa({"127.0.0.1", cifrado.Porta()}, {}).find("não respondeu"), std::string::npos);
    EXPECT_NE(Recusa({"127.0.0.1", falso.Porta()}, {par.Digital(), ""}).find("não é um servidor do registro"),
              std::string::npos);
}

namespace {

constexpr std::chrono::seconds MuitoMenos{10}; // than a wait that nobody gives up

} // namespace

TEST_F(ConfiancaTeste, ServerThatSaysNothing_IsGivenUpAtOnceWhenThePersonDoes)
{
    const Mudo mudo;
    const Endereco onde{"127.0.0.1", mudo.Porta()};
    int olhadas = 0;
    const mesa::Segue segue = [&](double, const std::string &) { return ++olhadas % 3 != 0; };
    rede::Insistencia insistencia{milliseconds(0), milliseconds(30000), {}};
    insistencia.Espera = [&](const std::function<void(const mesa::Segue &)> &espera) { espera(segue); };
    const auto comeco = steady_clock::now();
    EXPECT_EQ(Levantada([&] {
                  rede::Conecta(onde, {"AA", ""}, "teste", insistencia);
              }).Descricao,
              "A espera pelo servidor " + onde.Texto() + " foi cancelada.");
    EXPECT_EQ(Levantada([&] { rede::DigitalDoServidor(onde, milliseconds(30000), segue); }).Descricao,
              "Não se chegou ao servidor " + onde.Texto() + ": a espera foi cancelada.");
    // The name of a machine is looked for on the way.
    EXPECT_NE(Levantada([&] {
                  rede::DigitalDoServidor({"localhost", mudo.Porta()}, milliseconds(30000), segue);
              }).Descricao.find("a espera foi cancelada"),
              std::string::npos);
    EXPECT_LT(steady_clock::now() - comeco, MuitoMenos);
    EXPECT_EQ(olhadas, 9);
}

TEST_F(ConfiancaTeste, SignInThatTakesLong_IsGivenUpWhenThePersonDoes)
{
    ServidorFalso falso;
    std::atomic<bool> cancela{false};
    rede::Insistencia insistencia{milliseconds(0), milliseconds(30000), {}};
    insistencia.Espera = [&](const std::function<void(const mesa::Segue &)> &espera) {
        espera([&](double, const std::string &) { return !cancela; });
    };
    falso.Entra = [&](ServerContext &contexto, const v1::PedidoDeEntrada &, v1::Sessao &) {
        cancela = true;
        const auto fim = steady_clock::now() + std::chrono::seconds(20);
        while (!contexto.IsCancelled() && steady_clock::now() < fim) {
            std::this_thread::sleep_for(milliseconds(5));
        }
        return Status::OK;
    };
    const auto servicos = rede::Conecta({"127.0.0.1", falso.Porta()}, {}, "teste", insistencia);
    std::string recusa;
    std::int32_t espera = 0;
    const auto comeco = steady_clock::now();
    EXPECT_TRUE(servicos->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera).Nada());
    EXPECT_NE(recusa.find("foi cancelada"), std::string::npos) << recusa;
    EXPECT_LT(steady_clock::now() - comeco, MuitoMenos);
}

TEST_F(ConfiancaTeste, SeveralAddresses_ADeadOne_LeavesTimeForTheOthers)
{
    const auto par = Par("um");
    const ServidorFalso falso(par.Certificado, par.Chave);
    const Mudo mudo;
    const Endereco vivo{"127.0.0.1", falso.Porta()};
    const auto certificado = rede::Certificado::De("localhost", {{"127.0.0.1", mudo.Porta()}, {"127.0.0.1", 1}, vivo},
                                                   "", milliseconds(6000), {});
    EXPECT_EQ(certificado.Digital, par.Digital());
    EXPECT_EQ(certificado.Onde, vivo);
}

TEST_F(ConfiancaTeste, Session_OfAServerThatIsGone_EndsWithoutAWait)
{
    const auto par = Par("um");
    auto falso = std::make_unique<ServidorFalso>(par.Certificado, par.Chave);
    const std::uint16_t porta = falso->Porta();
    std::string recusa;
    std::int32_t espera = 0;
    auto sessao =
        rede::Conecta({"127.0.0.1", porta}, {par.Digital(), ""}, "teste", {milliseconds(0), milliseconds(30000), {}})
            ->Entra("ana", mesa::Segredo("x"), "aqui", recusa, espera);
    ASSERT_TRUE(sessao) << recusa;
    falso = nullptr;
    EXPECT_NE(Levantada([&] { Executa(*sessao, "consulta", Equipamento("EQ1")); }).Numero, 0);
    const Mudo mudo(porta);
    const auto comeco = steady_clock::now();
    sessao = nullptr;
    EXPECT_LT(steady_clock::now() - comeco, MuitoMenos);
}

TEST_F(ConfiancaTeste, NobodyThere_SaysWhatIsTheMatter)
{
    std::uint16_t porta = 0;
    {
        ServidorFalso falso;
        porta = falso.Porta();
    }
    const std::string texto = "127.0.0.1:" + std::to_string(porta);
    EXPECT_EQ(Levantada([&] {
                  rede::DigitalDoServidor({"127.0.0.1", porta});
              }).Descricao,
              "Não se chegou ao servidor " + texto + ": não há servidor ligado ali.");
    EXPECT_EQ(Recusa({"127.0.0.1", porta}, {"AA", ""}),
              "O servidor " + texto + " não respondeu: não há servidor ligado ali. Tente de novo daqui a pouco.");
}
