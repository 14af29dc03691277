#include "services/LogradouroED.h"
#include "tests/desk/HospedeiroDeTeste.h"

#include <gtest/gtest.h>

#include <optional>

using namespace mesa;

namespace {

// Operations that take long are given up at each of their steps: nothing of them stays, and the next one works.
class CancelamentoTeste : public testing::Test {
  protected:
    // At the step of that number, from 0; nothing when there are not so many.
    template <class Operacao> std::optional<std::string> CancelaNo(int passo, SessaoServico &sessao, Operacao operacao)
    {
        int passos = 0;
        double antes = 0;
        const Acompanhamento acompanhamento(sessao, [&](double parte, const std::string &oQue) {
            EXPECT_GE(parte, antes);
            EXPECT_LE(parte, 1);
            EXPECT_NE(oQue, "");
            antes = parte;
            return passos++ != passo;
        });
        std::string recusa;
        const bool feita = operacao(recusa);
        EXPECT_EQ(feita, passos <= passo);
        return feita ? std::nullopt : std::optional(recusa);
    }

    RegistroDeTeste registro;
};

TEST_F(CancelamentoTeste, Document_GivenUp_IsNotStored)
{
    const Ref<SessaoServico> ana = registro.Sessao("ana");
    const std::string historia = registro.Sql("SELECT COUNT(*) FROM HISTORICO");
    int passo = 0;
    double numero = 0;
    const auto guarda = [&](std::string &recusa) { return ana->GuardaDocumento(Pdf("x"), numero, recusa); };
    while (const auto recusa = CancelaNo(passo, *ana, guarda)) {
        EXPECT_EQ(*recusa, "A operação foi cancelada: nada foi gravado.");
        EXPECT_EQ(numero, 0);
        EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "0");
        EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM HISTORICO"), historia);
        ++passo;
    }
    EXPECT_EQ(passo, 3);
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
}

TEST_F(CancelamentoTeste, Document_ReadingGivenUp_GivesNothing)
{
    const Ref<SessaoServico> ana = registro.Sessao("ana");
    const double numero = GuardaPdf(ana, "x");
    Bytes bytes;
    int passo = 0;
    while (CancelaNo(passo, *ana, [&](std::string &recusa) { return ana->LeDocumento(numero, bytes, recusa); })) {
        EXPECT_TRUE(bytes.empty());
        ++passo;
    }
    EXPECT_EQ(passo, 2);
    EXPECT_EQ(bytes, Pdf("x"));
}

TEST_F(CancelamentoTeste, Import_GivenUp_LeavesNoRow)
{
    const Ref<SessaoServico> marta = registro.Sessao("marta");
    const std::string antes = registro.Sql("SELECT COUNT(*) FROM LOGRADOURO");
    const auto importa = [&](std::string &recusa) {
        auto pedido = Novo<ImportacaoED>();
        pedido->Conteudo = "4314902;Rua Um;Centro;90010150\n4314902;Rua Dois;Centro;90010160\n";
        Ref<Objeto> enviado = pedido;
        Valor retorno;
        return marta->Executa("AdministracaoRN", "importaLogradouros", enviado, retorno, recusa);
    };
    int passo = 0;
    while (CancelaNo(passo, *marta, importa)) {
        EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LOGRADOURO"), antes);
        ++passo;
    }
    EXPECT_EQ(passo, 4); // each row is looked at, and then written
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LOGRADOURO WHERE Nome IN ('Rua Um', 'Rua Dois')"), "2");
}

TEST_F(CancelamentoTeste, Upload_GivenUpWhileTheFileIsRead_SendsNothing)
{
    HospedeiroDeTeste mesa;
    mesa.Entra("ana");
    const std::string arquivo = mesa.NoModulo("grande.pdf");
    mesa.Host->Plataforma()->GravaArquivo(arquivo, Pdf("x", 1000000));
    double numero = 7;
    int passos = 0;
    mesa.Host->Acompanha = [&](const std::string &frase, bool cancelavel, const auto &trabalho) {
        EXPECT_EQ(frase, "O documento está sendo enviado.");
        EXPECT_TRUE(cancelavel);
        trabalho([&](double, const std::string &) { return ++passos < 3; });
    };
    EXPECT_FALSE(mesa.Host->CriaDadosVor()->EnviaDocumento(arquivo, numero, 0));
    EXPECT_EQ(passos, 3);
    EXPECT_EQ(numero, 7);
    EXPECT_EQ(mesa.Janelas->Avisos.size(), 1U);
    EXPECT_EQ(mesa.Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "0");
    mesa.Host->Acompanha = SemAndamento;
    EXPECT_TRUE(mesa.Host->CriaDadosVor()->EnviaDocumento(arquivo, numero, 0));
    EXPECT_EQ(mesa.Registro.Sql("SELECT Tamanho FROM DOCUMENTO"), "1000000");
}

// While the person sees how far a work is, nothing else may begin on the registry.
TEST_F(CancelamentoTeste, Operation_InTheMiddleOfAnother_IsRefusedAndHarmsNothing)
{
    const Ref<SessaoServico> ana = registro.Sessao("ana");
    double numero = 0;
    std::string recusa;
    int tentadas = 0;
    ana->Acompanha([&](double, const std::string &) {
        ++tentadas;
        EXPECT_ANY_THROW(ana->TemPermissao("NAB", "VOR-EQP-CS", ""));
        return true;
    });
    EXPECT_TRUE(ana->GuardaDocumento(Pdf("x"), numero, recusa)) << recusa;
    EXPECT_EQ(tentadas, 3);
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
}

} // namespace
