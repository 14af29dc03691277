#include "services/RegistrosAdministracao.h"
#include "services/Resumo.h"
#include "services/ServicosSql.h"
#include "tests/services/ServicosTeste.h"

#include "services/LogradouroED.h"

#include <stdexcept>

using namespace mesa;

namespace {

const std::string Um = "0d9f6f0e-5a53-4a7b-8f5c-1f0b6f1f2a01";
const std::string Dois = "0d9f6f0e-5a53-4a7b-8f5c-1f0b6f1f2a02";

// Operations with a number of their caller's.
class ServicosRepeticao : public ServicosTeste {
  protected:
    // What an operation came to, and the octets when it had been done before.
    struct Desfecho : Retorno {
        std::optional<std::string> Repetida;
    };
    using Responde = std::function<std::string(const Ref<Objeto> &pedido, const Valor &retorno)>;

    static Desfecho Numerado(const Ref<SessaoServico> &sessao, const std::string &numero, const std::string &metodo,
                             const Ref<Objeto> &pedido, const Responde &responde,
                             const std::string &classe = "EquiptoRN", const std::string &soma = Resumo("o pedido"))
    {
        const auto sql = ComoTipo<SessaoSql>(sessao);
        Desfecho desfecho;
        Ref<Objeto> enviado = pedido;
        sql->Numera({numero, soma, [&] { return responde(enviado, desfecho.Resposta); }});
        desfecho.Feita = sql->Executa(classe, metodo, enviado, desfecho.Resposta, desfecho.Recusa);
        desfecho.Repetida = sql->Repetida();
        return desfecho;
    }
    static std::string Nada(const Ref<Objeto> &, const Valor &) { return ""; }
    // The marks and values that the caller would send over the network.
    static std::string Marca(const Ref<Objeto> &pedido, const Valor &)
    {
        return std::to_string(dynamic_cast<const Registro &>(*pedido).VersaoLida);
    }
    static std::string NumeroIncluido(const Ref<Objeto> &, const Valor &retorno)
    {
        return std::to_string(retorno.Como<EquiptoED>()->NroIntEquip.Valor());
    }
};

TEST_F(ServicosRepeticao, Altera_AskedForAgain_IsDoneOnceAndAnsweredAsTheFirstTime)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto pedido = Com(Abre(m_Ana, numero), &EquiptoED::Descricao, "Outra");
    const auto repetido = pedido->Copia();
    const Desfecho primeira = Numerado(m_Ana, Um, "altera", pedido, Marca);
    ASSERT_TRUE(primeira.Feita) << primeira.Recusa;
    EXPECT_EQ(primeira.Repetida, std::nullopt);
    EXPECT_EQ(pedido->VersaoLida, 2);
    const std::string entradas = Linhas("HISTORICO");

    const Desfecho segunda = Numerado(m_Ana, Um, "altera", repetido, [](const Ref<Objeto> &, const Valor &) {
        ADD_FAILURE() << "nothing is done, and nothing asked";
        return std::string();
    });
    EXPECT_TRUE(segunda.Feita) << segunda.Recusa;
    EXPECT_EQ(segunda.Repetida, "2");
    EXPECT_EQ(repetido->VersaoLida, 1); // what was sent is as it was
    EXPECT_TRUE(segunda.Resposta.EhVazio());
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "2");
    EXPECT_EQ(Linhas("HISTORICO"), entradas);
    EXPECT_EQ(m_Registro.Sql("SELECT Numero || Operador || Quando || Fuso FROM OPERACAO"), Um + "1202611201000000");
    EXPECT_EQ(m_Registro.Sql("SELECT '' || NroRepeticao || NroOperacao || Quando FROM REPETICAO"), "1120261120100000");
    // The same number for what comes next is not this operation's.
    EXPECT_TRUE(Numerado(m_Ana, Dois, "altera", Com(pedido, &EquiptoED::Descricao, "Mais"), Marca).Feita);
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "3");
}

TEST_F(ServicosRepeticao, Inclui_AskedForAgain_AnswersTheNumberOfThen)
{
    ASSERT_TRUE(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), NumeroIncluido).Feita);
    const Desfecho segunda = Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), NumeroIncluido);
    EXPECT_TRUE(segunda.Feita);
    EXPECT_EQ(segunda.Repetida, "1");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "1");
}

TEST_F(ServicosRepeticao, Number_InCapitals_IsTheSame)
{
    std::string maiusculo = Um;
    for (char &letra : maiusculo) {
        letra = static_cast<char>(std::toupper(letra));
    }
    ASSERT_TRUE(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), NumeroIncluido).Feita);
    EXPECT_EQ(Numerado(m_Ana, maiusculo, "inclui", EquipamentoDe("R-001"), NumeroIncluido).Repetida, "1");
}

TEST_F(ServicosRepeticao, Number_OfAnotherOperationOrUserOrNone_IsRefused)
{
    const auto bia = m_Registro.Sessao("bia");
    ASSERT_TRUE(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), Nada).Feita);
    const std::string deOutra = "O número com que a operação foi pedida já é o de outra operação. Nada foi gravado.";
    EXPECT_EQ(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-002"), Nada, "EquiptoRN", Resumo("outro")).Recusa,
              deOutra);
    EXPECT_EQ(Numerado(bia, Um, "inclui", EquipamentoDe("R-001"), Nada).Recusa, deOutra);
    for (const char *ruim : {"", "1", "zd9f6f0e-5a53-4a7b-8f5c-1f0b6f1f2a01", "00000000-0000-0000-0000-000000000000"}) {
        const Desfecho desfecho = Numerado(m_Ana, ruim, "inclui", EquipamentoDe("R-002"), Nada);
        EXPECT_EQ(desfecho.Recusa,
                  "O número com que a operação foi pedida não é um número de operação. Nada foi gravado.");
        EXPECT_EQ(desfecho.Repetida, std::nullopt);
    }
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "1");
    EXPECT_EQ(Linhas("OPERACAO"), "1");
    EXPECT_EQ(Linhas("REPETICAO"), "0");
}

TEST_F(ServicosRepeticao, Refusal_KeepsNothing_AndTheNumberIsFree)
{
    auto semCodigo = EquipamentoDe("R-001");
    semCodigo->Codigo = "";
    EXPECT_FALSE(Numerado(m_Ana, Um, "inclui", semCodigo, Nada).Feita);
    EXPECT_EQ(Linhas("OPERACAO"), "0");
    EXPECT_EQ(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), NumeroIncluido).Repetida, std::nullopt);
    EXPECT_EQ(Linhas("OPERACAO"), "1");
}

TEST_F(ServicosRepeticao, Number_CountsForOneOperationOnly)
{
    ASSERT_TRUE(Numerado(m_Ana, Um, "inclui", EquipamentoDe("R-001"), Nada).Feita);
    Faz(m_Ana, "inclui", EquipamentoDe("R-002"));
    EXPECT_EQ(ComoTipo<SessaoSql>(m_Ana)->Repetida(), std::nullopt);
    EXPECT_EQ(Linhas("OPERACAO"), "1");
    EXPECT_TRUE(Numerado(m_Ana, Dois, "consultaSimples", SoNumero(1), Nada).Feita); // which changes nothing
    EXPECT_EQ(Linhas("OPERACAO"), "1");
}

// What was to be sent cannot be made: the change is taken back, and the request stands as it was sent.
TEST_F(ServicosRepeticao, Answer_ThatCannotBeMade_TakesTheChangeBack)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto pedido = Com(Abre(m_Ana, numero), &EquiptoED::Descricao, "Outra");
    EXPECT_ANY_THROW(Numerado(m_Ana, Um, "altera", pedido, [](const Ref<Objeto> &enviado, const Valor &valor) {
        EXPECT_EQ(Marca(enviado, valor), "2");
        throw std::runtime_error("no memory");
        return std::string();
    }));
    EXPECT_EQ(pedido->VersaoLida, 1);
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "1");
    EXPECT_EQ(Linhas("OPERACAO"), "0");
    const Desfecho denovo = Numerado(m_Ana, Um, "altera", pedido, Marca);
    EXPECT_TRUE(denovo.Feita) << denovo.Recusa;
    EXPECT_EQ(denovo.Repetida, std::nullopt);
    EXPECT_EQ(Numerado(m_Ana, Um, "altera", pedido, Nada).Repetida, "2"); // what was kept then
}

// The reason is asked for between two runs of one number.
TEST_F(ServicosRepeticao, Correction_AskedForItsReason_IsKeptOnce)
{
    const std::int32_t numero =
        IncluiComSensores(m_Ana, {{AfericaoDe("123", DataDe(1, 1, 2026), DataDe(31, 12, 2026))}});
    const auto pedido = Abre(m_Ana, numero);
    pedido->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->DataVencimento = DataDe(30, 11, 2026);
    const auto repetido = pedido->Copia();
    m_Ana->PerguntaMotivo([](const std::string &) { return std::nullopt; });
    EXPECT_FALSE(Numerado(m_Ana, Um, "altera", pedido, Marca).Feita);
    EXPECT_EQ(pedido->VersaoLida, 1);
    EXPECT_EQ(Linhas("OPERACAO"), "0");
    int perguntas = 0;
    m_Ana->PerguntaMotivo([&](const std::string &) {
        ++perguntas;
        return "o vencimento foi lido errado";
    });
    const Desfecho feita = Numerado(m_Ana, Um, "altera", pedido, Marca);
    EXPECT_TRUE(feita.Feita) << feita.Recusa;
    EXPECT_EQ(Numerado(m_Ana, Um, "altera", repetido, Marca).Repetida, "2");
    EXPECT_EQ(perguntas, 1);
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM AFERICAO"), "2");
}

TEST_F(ServicosRepeticao, GuardaDocumento_AskedForAgain_IsStoredOnce)
{
    const auto sessao = ComoTipo<SessaoSql>(m_Ana);
    const Bytes pdf = Pdf("x");
    double numero = 0;
    std::string recusa;
    const auto numera = [&] { sessao->Numera({Um, Resumo("x"), [&] { return std::to_string(numero); }}); };
    numera();
    ASSERT_TRUE(sessao->GuardaDocumento(pdf, numero, recusa)) << recusa;
    EXPECT_EQ(numero, 1);
    EXPECT_EQ(sessao->Repetida(), std::nullopt);
    // It was done, whatever its user may do by now.
    m_Registro.Sql("UPDATE PERMISSAO SET Ativo = 2 WHERE Numero = 1 AND Acao IN ('I', 'A')");
    numero = 77;
    numera();
    ASSERT_TRUE(sessao->GuardaDocumento(pdf, numero, recusa)) << recusa;
    EXPECT_EQ(numero, 77);
    EXPECT_EQ(sessao->Repetida(), "1.000000");
    EXPECT_EQ(Linhas("DOCUMENTO"), "1");
    EXPECT_FALSE(sessao->GuardaDocumento(pdf, numero, recusa));
    EXPECT_EQ(sessao->Repetida(), std::nullopt);
}

TEST_F(ServicosRepeticao, ImportaLogradouros_AskedForAgain_IsImportedOnce)
{
    const auto marta = m_Registro.Sessao("marta");
    const auto pedido = Com(Novo<ImportacaoED>(), &ImportacaoED::Conteudo, "4314902;Rua São José;Centro;90010000\n");
    const Desfecho primeira = Numerado(marta, Um, "importaLogradouros", pedido, Nada, "AdministracaoRN");
    ASSERT_TRUE(primeira.Feita) << primeira.Recusa;
    const std::string linhas = Linhas("LOGRADOURO");
    EXPECT_EQ(linhas, "1");
    EXPECT_EQ(Numerado(marta, Um, "importaLogradouros", pedido, Nada, "AdministracaoRN").Repetida, "");
    EXPECT_EQ(Linhas("LOGRADOURO"), linhas);
}

// Whoever has a copy of the registry would otherwise try passwords by a hash that costs nothing.
TEST_F(ServicosRepeticao, Password_IsNotToBeFoundByTheHashOfItsRequest)
{
    const auto marta = m_Registro.Sessao("marta");
    m_Registro.Cadastra("bruno");
    const auto pedido = Com(Novo<UsuarioED>(), &UsuarioED::Numero, 2, &UsuarioED::Versao, 1);
    pedido->Senha = Segredo("tigela vidro moinho");
    const std::string soma = Resumo("o pedido com a senha");
    ASSERT_TRUE(Numerado(marta, Um, "defineSenha", pedido, Nada, "AdministracaoRN", soma).Feita);
    const std::string guardada = m_Registro.Sql("SELECT Soma FROM OPERACAO");
    EXPECT_EQ(guardada.size(), 64U);
    EXPECT_NE(guardada, soma);
    EXPECT_EQ(Numerado(marta, Um, "defineSenha", pedido, Nada, "AdministracaoRN", soma).Repetida, "");
    EXPECT_FALSE(Numerado(marta, Um, "defineSenha", pedido, Nada, "AdministracaoRN", Resumo("outro")).Feita);
}

// The answer of the first time was lost: asked for again, the password of before is no wrong one.
TEST_F(ServicosRepeticao, TrocaMinhaSenha_AskedForAgain_IsNoWrongPassword)
{
    const auto troca = Novo<TrocaSenhaED>();
    troca->Atual = Segredo("senha de ana");
    troca->Nova = Segredo("tigela vidro moinho");
    const Portaria::Entrada deAntes = ComoTipo<SessaoSql>(m_Ana)->Entrada();
    const auto outro = ComoTipo<ServicosSql>(m_Registro.AbreOutro());
    ASSERT_TRUE(Numerado(m_Ana, Um, "trocaMinhaSenha", troca, Nada, "AdministracaoRN").Feita);
    for (int vez = 0; vez < 4; ++vez) { // by whoever knows only the sign-in of before
        const auto retomada = outro->Retoma(deAntes);
        const Desfecho denovo = Numerado(retomada, Um, "trocaMinhaSenha", troca, Nada, "AdministracaoRN");
        EXPECT_TRUE(denovo.Feita) << denovo.Recusa;
        EXPECT_EQ(denovo.Repetida, "");
        EXPECT_EQ(retomada->Entrada().Prova, ComoTipo<SessaoSql>(m_Ana)->Entrada().Prova);
        EXPECT_TRUE(Pede(retomada, "inclui", EquipamentoDe("R-00" + std::to_string(vez))).Feita);
    }
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Acao = 'recusa'"), "0");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'USUARIO' AND Acao = 'altera'"), "1");
    EXPECT_EQ(m_Registro.Sql("SELECT COALESCE(MAX(Vezes), 0) FROM ENTRADA_RECUSADA"), "0");
    // Another password since then: the act of before does not open the door.
    const auto marta = m_Registro.Sessao("marta");
    const auto definida = Com(Novo<UsuarioED>(), &UsuarioED::Numero, 1, &UsuarioED::Versao, 2);
    definida->Senha = Segredo("pluma cerca torta 4");
    Faz(marta, "defineSenha", definida, "AdministracaoRN");
    EXPECT_THROW(Numerado(outro->Retoma(deAntes), Um, "trocaMinhaSenha", troca, Nada, "AdministracaoRN"),
                 RecusaDeEntrada);
}

} // namespace
