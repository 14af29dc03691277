#include "tests/server/Pedidos.h"
#include "tests/server/ServidorDeTeste.h"

#include "rede/Mensagens.h"
#include "services/Resumo.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

using grpc::StatusCode;

namespace {

// Who may call an operation: everybody; who is signed in; who has that right ("" looks).
enum class De { Todos, Sessao, Direito };
// How it ends for who is signed in without the right: refused in words, or with an answer that has nothing in it.
enum class Sem { Recusa, Vazia };

struct Entrada {
    De Quem = De::Direito;
    std::set<std::string> Direitos = {}; // any of them
    bool Grava = false;
    bool TrocandoSenha = false; // also while the password has to be changed
    Sem Como = Sem::Recusa;
};

Entrada Le(const std::set<std::string> &direitos = {""})
{
    return {De::Direito, direitos};
}
Entrada Muda(const std::set<std::string> &direitos)
{
    return {De::Direito, direitos, true};
}

// Every operation of the contract.
const std::map<std::string, Entrada> &Operacoes()
{
    static const std::map<std::string, Entrada> operacoes = {
        {"Entrada/Apresenta", {De::Todos}},
        {"Entrada/Entra", {De::Todos}},
        {"Entrada/Sai", {De::Sessao, {}, false, true}},
        {"Entrada/TemPermissao", {De::Sessao, {}, false, true}},
        {"Entrada/Situacao", {De::Sessao, {}, false, true}},
        {"EquiptoRN/consulta", Le()},
        {"EquiptoRN/consultaSimples", Le()},
        {"EquiptoRN/inclui", Muda({"I"})},
        {"EquiptoRN/altera", Muda({"A"})},
        {"EquiptoRN/desativa", Muda({"E"})},
        {"EquiptoRN/reativa", Muda({"E"})},
        {"EquiptoRN/lista2", Le()},
        {"EquiptoRN/consultaSimplesAfericaoVigente", Le()},
        {"EquiptoRN/listaLimiteDif", Le()},
        {"EquiptoRN/listaDiaEspecifico", Le()},
        {"EquiptoRN/consultaSimplesLimiteDif", Le()},
        {"EquiptoRN/consultaSimplesDiaEspecifico", Le()},
        {"EquiptoRN/alteraListaLimitesDif", Muda({"A"})},
        {"EquiptoRN/adicionaDiaEspecifico", Muda({"I"})},
        {"EquiptoRN/alteraDiaEspecifico", Muda({"A"})},
        {"EquiptoRN/desativaLimiteDif", Muda({"E"})},
        {"EquiptoRN/desativaDiaEspecifico", Muda({"E"})},
        {"RelatorioRN/consultaRelatorioRVOR011", Le()},
        {"PrazosRN/consultaPainel", Le()},
        {"PrazosRN/listaPrazos", Le()},
        {"PrazosRN/confereDocumentos", Le()},
        {"AdministracaoRN/listaUsuarios", Le({"U"})},
        {"AdministracaoRN/consultaUsuario", Le({"U"})},
        {"AdministracaoRN/incluiUsuario", Muda({"U"})},
        {"AdministracaoRN/alteraUsuario", Muda({"U"})},
        {"AdministracaoRN/desativaUsuario", Muda({"U"})},
        {"AdministracaoRN/reativaUsuario", Muda({"U"})},
        {"AdministracaoRN/desbloqueiaUsuario", Muda({"U"})},
        {"AdministracaoRN/defineSenha", Muda({"U"})},
        {"AdministracaoRN/trocaMinhaSenha", {De::Sessao, {}, true, true}},
        {"AdministracaoRN/listaEntradasRecusadas", Le({"U"})},
        {"AdministracaoRN/listaClientes", Le({"U"})},
        {"AdministracaoRN/incluiCliente", Muda({"U"})},
        {"AdministracaoRN/alteraCliente", Muda({"U"})},
        {"AdministracaoRN/listaLogradouros", Le({"", "T"})},
        {"AdministracaoRN/incluiLogradouro", Muda({"T"})},
        {"AdministracaoRN/alteraLogradouro", Muda({"T"})},
        {"AdministracaoRN/importaLogradouros", Muda({"T"})},
        {"AdministracaoRN/listaLayouts", Le({"", "T"})},
        {"AdministracaoRN/incluiLayout", Muda({"T"})},
        {"AdministracaoRN/alteraLayout", Muda({"T"})},
        {"Documentos/Guarda", Muda({"I", "A"})},
        {"Documentos/Le", Le()},
        {"Documentos/Afericoes", {De::Direito, {""}, false, false, Sem::Vazia}},
        {"Historia/VersoesDaAfericao", Le()},
        {"Historia/ComoConhecido", Le()},
        {"Replica/Clientes", {De::Sessao}},
        {"Replica/Le", {De::Direito, {""}, false, false, Sem::Vazia}},
        {"Conferencia/Confere", Le({"C"})},
        {"Conferencia/Cabeca", Le({"C"})},
    };
    return operacoes;
}

// What makes sense as far as to the question whether one may.
std::string Pedido(const std::string &operacao)
{
    using namespace registro::v1;
    if (operacao == "Documentos/Guarda") {
        const Bytes bytes = Pdf("um");
        const std::string octetos(bytes.begin(), bytes.end());
        PedacoDeDocumento pedaco;
        pedaco.set_octetos(octetos);
        pedaco.set_tamanho(static_cast<std::int64_t>(octetos.size()));
        pedaco.set_sha256(mesa::Resumo(QByteArray::fromStdString(octetos)));
        return pedaco.SerializeAsString();
    }
    if (operacao == "EquiptoRN/alteraListaLimitesDif") {
        registro::v1::EquiptoED equipto;
        equipto.set_nrointequip(1);
        registro::v1::LimiteDifED &limite = *equipto.mutable_listalimitedif()->add_itens();
        limite.set_nroint(1);
        limite.set_nrointequip(1);
        limite.set_dia(1);
        return equipto.SerializeAsString();
    }
    if (operacao == "Documentos/Afericoes") {
        DocumentoOuAfericao qual;
        qual.set_documento(1);
        return qual.SerializeAsString();
    }
    if (operacao == "Historia/ComoConhecido") {
        PedidoDeConhecido qual;
        qual.set_nrointequip(1);
        qual.set_quando(46346);
        return qual.SerializeAsString();
    }
    return "";
}

// Whether there is anything in an answer of those that have nothing in them for who has no right.
bool TemConteudo(const std::string &operacao, const Feita &feita)
{
    for (const std::string &resposta : feita.Respostas) {
        registro::v1::PedacoDeReplica pedaco;
        if (operacao == "Replica/Le" ? !pedaco.ParseFromString(resposta) || pedaco.linhas_size() > 0
                                     : !resposta.empty()) {
            return true;
        }
    }
    return false;
}

bool FaltaPermissao(const Feita &feita)
{
    return feita.Fim.error_code() == StatusCode::FAILED_PRECONDITION &&
           feita.Frase().find("não tem permissão para") != std::string::npos;
}

class DireitosTeste : public testing::Test {
  protected:
    DireitosTeste()
    {
        Um.Como.SessoesPorUsuario = 100;
        Um.Comeca();
    }

    Feita Chama(const std::string &operacao, const std::string &sessao) const
    {
        ServidorDeTeste::Metadados metadados{{"operacao", ServidorDeTeste::Numero()}};
        if (!sessao.empty()) {
            metadados.emplace("sessao", sessao);
        }
        return Um.Chama(operacao, {Pedido(operacao)}, metadados);
    }
    // The equipment 1 with the sensor 1, the calibration 1 and its document 1; "segredo" stands in the last two.
    void Enche() const
    {
        const auto ana = Um.Registro.Sessao("ana");
        const auto afericao = AfericaoDe("segredo", DataDe(1, 1, 2026), DataDe(1, 1, 2027), GuardaPdf(ana, "segredo"));
        ASSERT_EQ(IncluiComSensores(ana, {{afericao}}), 1);
    }
    // A user who has these rights and no others.
    std::string SoCom(const std::vector<std::string> &acoes, const std::vector<std::string> &administra)
    {
        const std::string nome = "so" + std::to_string(++m_Quantos);
        Um.Registro.Aberto().CadastraUsuario(
            {100 + m_Quantos, nome, "Pessoa " + nome, 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0},
            "senha de " + nome, acoes, administra);
        const auto sessao = Um.TentaEntrar(nome, "senha de " + nome).Como<registro::v1::Sessao>();
        EXPECT_NE(sessao.chave(), "") << sessao.recusa();
        return sessao.chave();
    }

    ServidorDeTeste Um;

  private:
    std::int32_t m_Quantos = 0;
};

} // namespace

TEST(Direitos, Contrato_EveryOperation_StandsInTheTable)
{
    const std::vector<std::string> todas = pedidos::Operacoes();
    const std::set<std::string> doContrato(todas.begin(), todas.end());
    std::set<std::string> daTabela;
    for (const auto &[nome, entrada] : Operacoes()) {
        daTabela.insert(nome);
    }
    EXPECT_EQ(doContrato, daTabela);
}

TEST_F(DireitosTeste, WithoutSession_EveryOperation_NoAnswer)
{
    const std::string inventada(43, 'A');
    const std::string terminada = Um.Entra("saulo");
    Um.Chama("Entrada/Sai", registro::v1::Vazio(), terminada);
    for (const auto &[nome, entrada] : Operacoes()) {
        for (const std::string &sessao : {std::string(), inventada, terminada, std::string("curta")}) {
            const Feita feita = Chama(nome, sessao);
            if (entrada.Quem == De::Todos) {
                EXPECT_NE(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome;
                continue;
            }
            EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome << ": " << feita.Frase();
            EXPECT_TRUE(feita.Respostas.empty()) << nome;
        }
    }
}

TEST_F(DireitosTeste, EachRightAlone_EveryOperation_OnlyThoseOfTheRight)
{
    Enche();
    const std::vector<std::string> acoes{"", "I", "A", "E"};
    const std::vector<std::string> administra{"U", "T", "C"};
    std::map<std::string, std::string> sessoes;
    for (const std::string &acao : acoes) {
        sessoes[acao] = SoCom({acao}, {});
    }
    for (const std::string &acao : administra) {
        sessoes[acao] = SoCom({}, {acao});
    }
    sessoes["nenhum"] = SoCom({}, {});
    for (const auto &[nome, entrada] : Operacoes()) {
        if (entrada.Quem == De::Todos || nome == "Entrada/Sai") {
            continue;
        }
        for (const auto &[direito, sessao] : sessoes) {
            const Feita feita = Chama(nome, sessao);
            ASSERT_NE(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome << " com " << direito;
            if (entrada.Quem == De::Sessao || entrada.Direitos.contains(direito)) {
                EXPECT_TRUE((feita.Fim.ok() || feita.Fim.error_code() == StatusCode::FAILED_PRECONDITION ||
                             feita.Fim.error_code() == StatusCode::INVALID_ARGUMENT) &&
                            !FaltaPermissao(feita))
                    << nome << " com \"" << direito << "\": " << feita.Fim.error_code() << " " << feita.Frase();
                EXPECT_TRUE(entrada.Como != Sem::Vazia || TemConteudo(nome, feita)) << nome;
            } else if (entrada.Como == Sem::Vazia) {
                EXPECT_TRUE(feita.Fim.ok() && !TemConteudo(nome, feita)) << nome << " com \"" << direito << "\"";
            } else {
                EXPECT_TRUE(FaltaPermissao(feita))
                    << nome << " com \"" << direito << "\": " << feita.Fim.error_code() << " " << feita.Frase();
                EXPECT_TRUE(feita.Respostas.empty()) << nome;
            }
        }
    }
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
    EXPECT_EQ(Um.Registro.Sql("SELECT MAX(Versao) FROM EQUIPAMENTO"), "1");
}

TEST_F(DireitosTeste, Deactivated_EveryOperation_SessionHasEnded)
{
    Um.Registro.Cadastra("saulo");
    const std::string marta = Um.Entra("marta");
    std::map<std::string, std::string> sessoes;
    for (const auto &[nome, entrada] : Operacoes()) {
        if (entrada.Quem != De::Todos && nome != "Entrada/Sai") {
            sessoes[nome] = Um.Entra("saulo");
        }
    }
    registro::v1::UsuarioED saulo;
    saulo.set_numero(12);
    const auto lido = Um.Chama("AdministracaoRN/consultaUsuario", saulo, marta).Como<registro::v1::UsuarioED>();
    saulo.set_versao(lido.versao());
    saulo.set_versaolida(lido.versaolida());
    const Feita desativa = Um.Grava("AdministracaoRN/desativaUsuario", saulo, marta);
    ASSERT_TRUE(desativa.Fim.ok()) << desativa.Frase();
    for (const auto &[nome, sessao] : sessoes) {
        const Feita feita = Chama(nome, sessao);
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome << ": " << feita.Frase();
        EXPECT_TRUE(feita.Respostas.empty()) << nome;
        // It is gone, and not only refused.
        const Feita depois = Chama(nome, sessao);
        EXPECT_EQ(depois.Frase(), "A sessão terminou. Entre de novo com usuário e senha.") << nome;
    }
}

TEST_F(DireitosTeste, MustChangePassword_EveryOperation_OnlyThatAndTheSessionsOwn)
{
    Enche();
    Um.Registro.Cadastra("saulo");
    const std::string marta = Um.Entra("marta");
    registro::v1::UsuarioED saulo;
    saulo.set_numero(12);
    const auto lido = Um.Chama("AdministracaoRN/consultaUsuario", saulo, marta).Como<registro::v1::UsuarioED>();
    saulo.set_versao(lido.versao());
    saulo.set_versaolida(lido.versaolida());
    saulo.set_senha("vinte ovelhas no telhado");
    const Feita define = Um.Grava("AdministracaoRN/defineSenha", saulo, marta);
    ASSERT_TRUE(define.Fim.ok()) << define.Frase();
    const auto sessao = Um.TentaEntrar("saulo", "vinte ovelhas no telhado").Como<registro::v1::Sessao>();
    ASSERT_NE(sessao.chave(), "") << sessao.recusa();
    EXPECT_TRUE(sessao.devetrocarsenha());
    for (const auto &[nome, entrada] : Operacoes()) {
        if (entrada.Quem == De::Todos || nome == "Entrada/Sai") {
            continue;
        }
        const Feita feita = Chama(nome, sessao.chave());
        if (entrada.TrocandoSenha) {
            EXPECT_EQ(feita.Frase().find("precisa trocar a senha"), std::string::npos) << nome;
        } else if (entrada.Como == Sem::Vazia || nome == "Replica/Clientes") {
            EXPECT_TRUE(feita.Fim.ok() && !TemConteudo(nome, feita)) << nome << ": " << feita.Frase();
        } else {
            EXPECT_NE(feita.Frase().find("precisa trocar a senha"), std::string::npos) << nome << ": " << feita.Frase();
        }
    }
}

TEST_F(DireitosTeste, AnotherClient_EquipmentAndDocuments_NotSeenNorChanged)
{
    const auto ana = Um.Registro.Sessao("ana");
    const std::int32_t numero = IncluiComSensores(ana, {{AfericaoDe("A-1", DataDe(1, 1, 2026), DataDe(1, 1, 2027))}});
    const std::string elisa = Um.Entra("elisa");
    registro::v1::EquiptoED qual;
    qual.set_nrointequip(numero);
    for (const char *nome : {"consulta", "consultaSimples"}) {
        const Feita feita = Um.Chama(std::string("EquiptoRN/") + nome, qual, elisa);
        EXPECT_EQ(feita.Fim.error_code(), StatusCode::FAILED_PRECONDITION) << nome;
        EXPECT_TRUE(feita.Respostas.empty()) << nome;
    }
    qual.set_versaolida(1);
    EXPECT_EQ(Um.Grava("EquiptoRN/desativa", qual, elisa).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    registro::v1::PedidoDeDocumento documento;
    documento.set_numero(1);
    EXPECT_EQ(Um.Chama("Documentos/Le", documento, elisa).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    registro::v1::PedidoDeConhecido conhecido;
    conhecido.set_nrointequip(numero);
    conhecido.set_quando(46346);
    EXPECT_EQ(Um.Chama("Historia/ComoConhecido", conhecido, elisa).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.Chama("Replica/Le", registro::v1::PedidoDeReplica(), elisa)
                  .Como<registro::v1::PedacoDeReplica>()
                  .linhas_size(),
              0);
    EXPECT_EQ(Um.Registro.Sql("SELECT Ativo FROM EQUIPAMENTO"), "1");
}

TEST_F(DireitosTeste, AnotherClient_EveryOperationAboutTheFirstOfEverything_SeesAndChangesNothing)
{
    Enche();
    const std::string elisa = Um.Entra("elisa");
    const auto como = [&] {
        return Um.Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO' AND NroRaiz = 1") + " " +
               Um.Registro.Sql("SELECT SUM(Versao) FROM EQUIPAMENTO WHERE NroIntEquip = 1") + " " +
               Um.Registro.Sql("SELECT COUNT(*) FROM AFERICAO WHERE NroIntSensor = 1");
    };
    const std::string antes = como();
    for (const auto &[nome, entrada] : Operacoes()) {
        if (entrada.Quem == De::Todos || nome == "Entrada/Sai") {
            continue;
        }
        for (const std::string &pedido : {Pedido(nome), pedidos::SoDeUns(nome)}) {
            const Feita feita = Um.Chama(nome, {pedido}, {{"operacao", ServidorDeTeste::Numero()}, {"sessao", elisa}});
            EXPECT_NE(feita.Fim.error_code(), StatusCode::UNAUTHENTICATED) << nome << ": " << feita.Frase();
            EXPECT_EQ(feita.Frase().find("segredo"), std::string::npos) << nome << ": " << feita.Frase();
            for (const std::string &resposta : feita.Respostas) {
                EXPECT_EQ(resposta.find("segredo"), std::string::npos) << nome;
            }
            EXPECT_EQ(como(), antes) << nome;
        }
    }
    // The same are answered to whose they are.
    const std::string ana = Um.Entra("ana");
    for (const char *nome : {"EquiptoRN/consulta", "Documentos/Le", "Historia/VersoesDaAfericao"}) {
        const Feita feita =
            Um.Chama(nome, {pedidos::SoDeUns(nome)}, {{"operacao", ServidorDeTeste::Numero()}, {"sessao", ana}});
        ASSERT_FALSE(feita.Respostas.empty()) << nome << ": " << feita.Frase();
        EXPECT_NE(feita.Respostas.front().find("segredo"), std::string::npos) << nome;
    }
}

// Davi's place is Porto Alegre.
TEST_F(DireitosTeste, OfAMunicipality_IncludesInItsOwnOnly)
{
    const std::string davi = Um.Entra("davi");
    registro::v1::EquiptoED equipto;
    rede::ParaMensagem(*EquipamentoDe("R-001"), equipto);
    equipto.set_codmunic(4304606);
    const Feita fora = Um.Grava("EquiptoRN/inclui", equipto, davi);
    EXPECT_EQ(fora.Fim.error_code(), StatusCode::FAILED_PRECONDITION) << fora.Frase();
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
    equipto.set_codmunic(4314902);
    const Feita dentro = Um.Grava("EquiptoRN/inclui", equipto, davi);
    EXPECT_TRUE(dentro.Fim.ok()) << dentro.Frase();
}
