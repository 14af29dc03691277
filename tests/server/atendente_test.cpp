#include "server/Atendente.h"

#include "services/RegistrosAdministracao.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

using namespace registro::v1;

namespace {

// What a server consists of, without its network.
class AtendenteTeste : public testing::Test {
  protected:
    AtendenteTeste()
    {
        Um.Cadastra("ana");
        Como.Registro = Um.Caminho();
        Fios = std::make_unique<servidor::Trabalhadores>(
            1, 4, [this] { return ComoTipo<mesa::ServicosSql>(Onde->AbreOutro()); });
        Quem = std::make_unique<servidor::Atendente>(
            Como, [this] { return mesa::Instante(Um.Relogio); }, *Fios, Todas, Recusadas, Linhas, Medidas);
    }

    Sessao Entra(const std::string &senha = "senha de ana", const std::string &usuario = "ana")
    {
        Pedido.set_usuario(usuario);
        Pedido.set_senha(senha);
        Pedido.set_contrato(1);
        Sessao sessao;
        Fim = Quem->Entra({}, Pedido, sessao);
        return sessao;
    }

    RegistroDeTeste Um;
    RegistroDeTeste Outro;
    RegistroDeTeste *Onde = &Um;
    servidor::Configuracao Como;
    std::unique_ptr<servidor::Trabalhadores> Fios;
    std::chrono::steady_clock::time_point Agora;
    servidor::Sessoes Todas{[this] { return Agora; }, std::chrono::minutes(30), 8, servidor::Atendente::MaisFluxos + 1};
    servidor::EntradasRecusadas Recusadas;
    servidor::Diario Linhas{"/dev/null"};
    servidor::Figuras Medidas{"", [] { return servidor::Retrato(); }};
    std::unique_ptr<servidor::Atendente> Quem;
    PedidoDeEntrada Pedido;
    grpc::Status Fim;
};

bool Limpo(const std::string &segredo)
{
    return segredo.find_first_not_of('\0') == std::string::npos;
}

} // namespace

TEST_F(AtendenteTeste, Entra_RightOrWrong_PasswordIsWipedFromTheMessage)
{
    EXPECT_FALSE(Entra().chave().empty());
    EXPECT_TRUE(Limpo(Pedido.senha()));
    EXPECT_TRUE(Entra("outra").chave().empty());
    EXPECT_TRUE(Limpo(Pedido.senha()));
}

TEST_F(AtendenteTeste, Grava_DoneOrRefused_PasswordsAreWipedFromTheMessage)
{
    servidor::Chamada chamada;
    chamada.Sessao = Entra().chave();
    for (const char *atual : {"errada", "senha de ana"}) {
        TrocaSenhaED troca;
        troca.set_atual(atual);
        troca.set_nova("vinte ovelhas no telhado");
        chamada.Numero = std::string("6d5f2b1e-0000-4000-8000-00000000000") + (atual[0] == 'e' ? "1" : "2");
        Vazio resposta;
        const grpc::Status fim = Quem->Grava(chamada, "AdministracaoRN", "trocaMinhaSenha", troca, resposta);
        EXPECT_EQ(fim.ok(), atual[0] == 's') << fim.error_message();
        EXPECT_TRUE(Limpo(troca.atual()));
        EXPECT_TRUE(Limpo(troca.nova()));
    }
}

// As when a copy of another registry was restored into the database.
TEST_F(AtendenteTeste, Registro_IsAnotherOneNow_ToldAndSessionsEnd)
{
    Outro.Cadastra("ana");
    servidor::Chamada chamada;
    chamada.Sessao = Entra().chave();
    Apresentacao eu;
    eu.set_contrato(1);
    registro::v1::Servidor ele;
    EXPECT_TRUE(Quem->Apresenta({}, eu, ele).ok());
    EXPECT_EQ(ele.registro(), Um.Aberto().Identificador());
    Onde = &Outro;
    std::chrono::microseconds espera{};
    Fios->Faz([](servidor::Posto &posto) { posto.Renova(); }, servidor::Momento::max(), [] { return false; }, espera);
    SituacaoDaSessao situacao;
    const grpc::Status fim = Quem->Situacao(chamada, situacao);
    EXPECT_EQ(fim.error_code(), grpc::StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(fim.error_message(), "O registro deste servidor foi trocado por outro. Entre de novo.");
    EXPECT_EQ(Quem->Situacao(chamada, situacao).error_code(), grpc::StatusCode::UNAUTHENTICATED);
    EXPECT_TRUE(Quem->Apresenta({}, eu, ele).ok());
    EXPECT_EQ(ele.registro(), Outro.Aberto().Identificador());
    EXPECT_FALSE(Entra().chave().empty());
}

TEST_F(AtendenteTeste, LeDocumento_SmallOnesTakenSlowly_AsManyAsThereMayBe)
{
    servidor::Chamada chamada;
    chamada.Sessao = Entra().chave();
    PedidoDeDocumento pedido;
    pedido.set_numero(GuardaPdf(Um.Sessao("ana"), "um"));
    std::size_t maisLonge = 0;
    // Each is read while those before it are on their way.
    const std::function<grpc::Status()> le = [&] {
        return Quem->LeDocumento(chamada, pedido, [&](const PedacoDeDocumento &) {
            maisLonge = std::max(maisLonge, Quem->ACaminho());
            return Quem->ACaminho() == servidor::Atendente::MaisFluxos || le().ok();
        });
    };
    const grpc::Status fim = le();
    EXPECT_TRUE(fim.ok()) << fim.error_message();
    EXPECT_EQ(maisLonge, servidor::Atendente::MaisFluxos);
    EXPECT_EQ(Quem->ACaminho(), 0U);
}

TEST_F(AtendenteTeste, Confere_LongerThanASessionMayBeIdle_SessionGoesOn)
{
    Um.Cadastra("marta");
    servidor::Chamada chamada;
    chamada.Sessao = Entra("senha de marta", "marta").chave();
    bool vive = false;
    const grpc::Status fim = Quem->Confere(chamada, {}, [&](const AndamentoDaConferencia &) {
        Agora += std::chrono::minutes(31);
        SituacaoDaSessao situacao;
        vive = Quem->Situacao(chamada, situacao).ok();
        return true;
    });
    EXPECT_TRUE(fim.ok()) << fim.error_message();
    EXPECT_TRUE(vive);
}

TEST_F(AtendenteTeste, Confere_UserDeactivatedMeanwhile_FindingsAreNotGiven)
{
    Um.Cadastra("marta");
    const auto saulo = Um.Sessao("saulo");
    servidor::Chamada chamada;
    const Sessao sessao = Entra("senha de marta", "marta");
    chamada.Sessao = sessao.chave();
    bool andou = false;
    bool deu = false;
    const grpc::Status fim = Quem->Confere(chamada, {}, [&](const AndamentoDaConferencia &andamento) {
        if (!std::exchange(andou, true)) {
            Exigido(Pede(
                saulo, "desativaUsuario",
                Com(::Novo<mesa::UsuarioED>(), &mesa::UsuarioED::Numero, sessao.numero(), &mesa::UsuarioED::Versao, 1),
                "AdministracaoRN"));
        }
        deu = deu || andamento.has_resultado();
        return true;
    });
    EXPECT_EQ(fim.error_code(), grpc::StatusCode::UNAUTHENTICATED) << fim.error_message();
    EXPECT_TRUE(andou);
    EXPECT_FALSE(deu);
}
