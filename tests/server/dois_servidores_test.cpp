#include "tests/server/ServidorDeTeste.h"

#include "rede/Mensagens.h"

#include <gtest/gtest.h>

using grpc::StatusCode;
using namespace registro::v1;

namespace {

// Two servers on one registry.
class DoisServidoresTeste : public testing::Test {
  protected:
    DoisServidoresTeste()
    {
        Um.Comeca();
        Outro.Comeca();
    }

    static registro::v1::EquiptoED Novo(const std::string &codigo)
    {
        registro::v1::EquiptoED equipto;
        rede::ParaMensagem(*EquipamentoDe(codigo), equipto);
        return equipto;
    }
    // As marta has just read the user.
    registro::v1::UsuarioED Usuario(std::int32_t numero, const std::string &marta)
    {
        registro::v1::UsuarioED usuario;
        usuario.set_numero(numero);
        const auto lido = Um.Chama("AdministracaoRN/consultaUsuario", usuario, marta).Como<registro::v1::UsuarioED>();
        usuario.set_versao(lido.versao());
        usuario.set_versaolida(lido.versaolida());
        return usuario;
    }
    static StatusCode Situacao(const ServidorDeTeste &em, const std::string &sessao)
    {
        return em.Chama("Entrada/Situacao", Vazio(), sessao).Fim.error_code();
    }

    ServidorDeTeste Um;
    ServidorDeTeste Outro{Um.DoRegistro};
};

} // namespace

TEST_F(DoisServidoresTeste, Grava_AtOne_SeenAtTheOtherAtOnce)
{
    const std::string ana = Um.Entra("ana");
    const std::string bia = Outro.Entra("bia");
    const Feita incluida = Um.Grava("EquiptoRN/inclui", Novo("R-001"), ana);
    ASSERT_TRUE(incluida.Fim.ok()) << incluida.Frase();
    registro::v1::EquiptoED qual;
    qual.set_nrointequip(incluida.Como<registro::v1::EquiptoED>().nrointequip());
    const auto daAna = Um.Chama("EquiptoRN/consultaSimples", qual, ana).Como<registro::v1::EquiptoED>();
    const Feita lida = Outro.Chama("EquiptoRN/consultaSimples", qual, bia);
    ASSERT_TRUE(lida.Fim.ok()) << lida.Frase();
    EXPECT_EQ(lida.Como<registro::v1::EquiptoED>().codigo(), "R-001");
    // Of two who read the same, who saves first.
    qual.set_versaolida(lida.Como<registro::v1::EquiptoED>().versaolida());
    qual.set_descricao("de bia");
    const Feita deBia = Outro.Grava("EquiptoRN/altera", qual, bia);
    ASSERT_TRUE(deBia.Fim.ok()) << deBia.Frase();
    qual.set_versaolida(daAna.versaolida());
    qual.set_descricao("de ana");
    EXPECT_EQ(Um.Grava("EquiptoRN/altera", qual, ana).Fim.error_code(), StatusCode::FAILED_PRECONDITION);
    EXPECT_EQ(Um.Registro.Sql("SELECT Descricao FROM EQUIPAMENTO"), "de bia");
}

TEST_F(DoisServidoresTeste, Grava_SameNumberAtTheOther_DoneOnceAndAnsweredAsTheFirstTime)
{
    const std::string numero = ServidorDeTeste::Numero();
    const Feita primeira = Um.Chama("EquiptoRN/inclui", Novo("R-001"), Um.Entra("ana"), {{"operacao", numero}});
    ASSERT_TRUE(primeira.Fim.ok()) << primeira.Frase();
    Um.Acaba();
    const Feita segunda = Outro.Chama("EquiptoRN/inclui", Novo("R-001"), Outro.Entra("ana"), {{"operacao", numero}});
    ASSERT_TRUE(segunda.Fim.ok()) << segunda.Frase();
    EXPECT_EQ(primeira.Respostas, segunda.Respostas);
    EXPECT_EQ(Um.Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "1");
}

TEST_F(DoisServidoresTeste, Deactivated_AtOne_SessionsEndAtBoth)
{
    const std::string marta = Um.Entra("marta");
    const std::string aqui = Um.Entra("saulo");
    const std::string alhures = Outro.Entra("saulo");
    EXPECT_EQ(Situacao(Outro, alhures), StatusCode::OK);
    const Feita desativa = Um.Grava("AdministracaoRN/desativaUsuario", Usuario(12, marta), marta);
    ASSERT_TRUE(desativa.Fim.ok()) << desativa.Frase();
    EXPECT_EQ(Situacao(Um, aqui), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(Situacao(Outro, alhures), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(Outro.Chama("Entrada/Situacao", Vazio(), alhures).Frase(),
              "A sessão terminou. Entre de novo com usuário e senha.");
    EXPECT_EQ(Outro.TentaEntrar("saulo", "senha de saulo").Como<Sessao>().chave(), "");
}

TEST_F(DoisServidoresTeste, Password_ChangedAtOne_OtherSessionsEndAtBoth)
{
    const std::string aqui = Um.Entra("ana");
    const std::string tambemAqui = Um.Entra("ana");
    const std::string alhures = Outro.Entra("ana");
    TrocaSenhaED troca;
    troca.set_atual("senha de ana");
    troca.set_nova("vinte ovelhas no telhado");
    const Feita feita = Um.Grava("AdministracaoRN/trocaMinhaSenha", troca, aqui);
    ASSERT_TRUE(feita.Fim.ok()) << feita.Frase();
    EXPECT_EQ(Situacao(Um, aqui), StatusCode::OK);
    EXPECT_EQ(Situacao(Um, tambemAqui), StatusCode::UNAUTHENTICATED);
    EXPECT_EQ(Situacao(Outro, alhures), StatusCode::UNAUTHENTICATED);
    EXPECT_NE(Outro.TentaEntrar("ana", "vinte ovelhas no telhado").Como<Sessao>().chave(), "");
}
