#include "services/RegistrosAdministracao.h"
#include "services/ServicosSql.h"
#include "tests/services/ServicosTeste.h"

using namespace mesa;

namespace {

const std::string Trocada = "A sua senha foi trocada depois da entrada. Entre de novo.";
const std::string Desativado = "O usuário ana foi desativado depois da entrada. Procure quem administra os usuários.";

// Sign-ins that are taken up on other connections.
class ServicosRetomados : public ServicosTeste {
  protected:
    Portaria::Entrada EntraAna(const std::string &senha = "senha de ana")
    {
        std::string recusa;
        std::int32_t espera = 0;
        const auto entrada = m_Um->Autentica("ana", senha, "mesa 1", recusa, espera);
        EXPECT_TRUE(entrada) << recusa;
        return entrada.value_or(Portaria::Entrada());
    }
    static std::string FimDe(const Ref<SessaoSql> &sessao)
    {
        try {
            Pede(sessao, "lista2", Novo<ListaEquiptoED>());
        } catch (const RecusaDeEntrada &fim) {
            return fim.what();
        }
        return "";
    }
    static Ref<TrocaSenhaED> Troca(const std::string &atual, const std::string &nova)
    {
        auto troca = Novo<TrocaSenhaED>();
        troca->Atual = Segredo(atual);
        troca->Nova = Segredo(nova);
        return troca;
    }

    Ref<ServicosSql> m_Um = ComoTipo<ServicosSql>(m_Registro.AbreOutro());
    Ref<ServicosSql> m_Outro = ComoTipo<ServicosSql>(m_Registro.AbreOutro());
};

TEST_F(ServicosRetomados, Entrada_OfOneConnection_WorksOnAnother)
{
    const Portaria::Entrada entrada = EntraAna();
    const auto sessao = m_Outro->Retoma(entrada);
    EXPECT_EQ(sessao->Operador().Nome, "Ana Souza");
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("R-001")).Feita);
    EXPECT_EQ(m_Registro.Sql("SELECT Operador FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO'"), "1");
    EXPECT_TRUE(sessao->TemPermissao("NAB", "VOR-EQP-CS", "I"));
    EXPECT_FALSE(sessao->DeveTrocarSenha());
}

TEST_F(ServicosRetomados, Entrada_OfADeactivatedUser_EndsEverything)
{
    const auto sessao = m_Outro->Retoma(EntraAna());
    const auto marta = m_Registro.Sessao("marta");
    Faz(marta, "desativaUsuario", Com(Novo<UsuarioED>(), &UsuarioED::Numero, 1, &UsuarioED::Versao, 1),
        "AdministracaoRN");
    EXPECT_EQ(FimDe(sessao), Desativado);
    Bytes bytes;
    double numero = 0;
    std::string recusa;
    EXPECT_THROW(sessao->GuardaDocumento(Pdf("x"), numero, recusa), RecusaDeEntrada);
    EXPECT_THROW(sessao->LeDocumento(1, bytes, recusa), RecusaDeEntrada);
    EXPECT_THROW(sessao->AfericoesDoDocumento(1), RecusaDeEntrada);
    EXPECT_THROW(sessao->Clientes(), RecusaDeEntrada);
    EXPECT_THROW(sessao->LeReplica(0, [](const LinhaReplica &) { ADD_FAILURE(); }), RecusaDeEntrada);
    EXPECT_THROW(sessao->TemPermissao("NAB", "VOR-EQP-CS", ""), RecusaDeEntrada);
    EXPECT_THROW(sessao->DeveTrocarSenha(), RecusaDeEntrada);
    EXPECT_THROW(Pede(sessao, "trocaMinhaSenha", Troca("senha de ana", "tigela vidro moinho"), "AdministracaoRN"),
                 RecusaDeEntrada);
    // A session of the desk alone is told so like of any refusal.
    EXPECT_EQ(RecusaDe(m_Ana, "lista2", Novo<ListaEquiptoED>()), Desativado);
    EXPECT_TRUE(m_Ana->Clientes().empty());
    EXPECT_TRUE(m_Ana->AfericoesDoDocumento(1).empty());
}

TEST_F(ServicosRetomados, OwnNewPassword_LeavesItsSessionAndEndsTheOthers)
{
    const Portaria::Entrada entrada = EntraAna();
    const auto sessao = m_Outro->Retoma(entrada);
    const auto outra = m_Um->Retoma(EntraAna());
    Faz(sessao, "trocaMinhaSenha", Troca("senha de ana", "tigela vidro moinho"), "AdministracaoRN");
    EXPECT_EQ(FimDe(sessao), "");
    EXPECT_NE(sessao->Entrada().Prova, entrada.Prova);
    EXPECT_EQ(FimDe(m_Um->Retoma(sessao->Entrada())), "");
    EXPECT_EQ(FimDe(outra), Trocada);
    EXPECT_EQ(FimDe(m_Um->Retoma(entrada)), Trocada);
    EXPECT_EQ(RecusaDe(m_Ana, "lista2", Novo<ListaEquiptoED>()), Trocada);
    EXPECT_EQ(FimDe(m_Um->Retoma(EntraAna("tigela vidro moinho"))), "");
}

TEST_F(ServicosRetomados, OwnNewPassword_ThatIsRefused_ChangesNothing)
{
    const auto sessao = m_Outro->Retoma(EntraAna());
    const std::string prova = sessao->Entrada().Prova;
    EXPECT_EQ(RecusaDe(sessao, "trocaMinhaSenha", Troca("errada", "tigela vidro moinho"), "AdministracaoRN"),
              "A senha atual não confere. Nada foi trocado.");
    EXPECT_EQ(sessao->Entrada().Prova, prova);
    EXPECT_EQ(FimDe(sessao), "");
}

// The same password, only kept at another cost since somebody signed in.
TEST_F(ServicosRetomados, PasswordKeptAtAnotherCost_EndsNoSession)
{
    const auto sessao = m_Um->Retoma(EntraAna());
    for (const unsigned long long passadas : {2ULL, 3ULL}) {
        const auto caro = Servicos::Abre(
            m_Registro.Caminho(), [this] { return Instante(m_Registro.Relogio); },
            CustoDaSenha{passadas, CustoDeTeste.Memoria});
        const std::string antes = m_Registro.Sql("SELECT Senha FROM USUARIO WHERE Numero = 1");
        std::string recusa;
        std::int32_t espera = 0;
        ASSERT_TRUE(caro->Entra("ana", "senha de ana", "mesa 2", recusa, espera)) << recusa;
        ASSERT_NE(m_Registro.Sql("SELECT Senha FROM USUARIO WHERE Numero = 1"), antes);
        EXPECT_EQ(FimDe(sessao), "");
        EXPECT_EQ(FimDe(m_Outro->Retoma(sessao->Entrada())), "");
    }
    Faz(m_Outro->Retoma(sessao->Entrada()), "trocaMinhaSenha", Troca("senha de ana", "tigela vidro moinho"),
        "AdministracaoRN");
    EXPECT_EQ(FimDe(sessao), Trocada);
}

// Names that there are not are counted together by all connections of a program.
TEST_F(ServicosRetomados, TriesInMemory_OfTwoConnections_AreCountedTogether)
{
    const auto contadas = std::make_shared<TentativasEmMemoria>();
    m_Um->ContaEm(contadas);
    m_Outro->ContaEm(contadas);
    std::string recusa;
    std::int32_t espera = 0;
    for (int vez = 0; vez < 3; ++vez) {
        EXPECT_FALSE((vez % 2 == 0 ? m_Um : m_Outro)->Autentica("ninguém", "x", "mesa 1", recusa, espera));
    }
    EXPECT_EQ(espera, 5);
    EXPECT_FALSE(m_Outro->Autentica("ninguém", "x", "mesa 1", recusa, espera));
    EXPECT_EQ(recusa, "Foram muitas tentativas com senha incorreta. Aguarde 5 segundos e tente de novo.");
}

} // namespace
