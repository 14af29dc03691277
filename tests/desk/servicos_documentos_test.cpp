#include "tests/desk/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

using namespace mesa;

namespace {

constexpr std::size_t Maior = 5242880;

class ServicosDocumentos : public testing::Test {
  protected:
    std::string RecusaDe(const Bytes &bytes)
    {
        double numero = 77;
        std::string recusa;
        EXPECT_FALSE(m_Ana->GuardaDocumento(bytes, numero, recusa));
        EXPECT_EQ(numero, 77); // untouched
        return recusa;
    }
    static Bytes DeTexto(const std::string &texto) { return Bytes(texto.begin(), texto.end()); }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
};

TEST_F(ServicosDocumentos, Stored_ComesBackByteForByte)
{
    Bytes todos = Pdf("todos os bytes");
    for (int byte = 0; byte < 256; ++byte) {
        todos.insert(todos.begin() + 9, static_cast<std::uint8_t>(byte));
    }
    double numero = 0;
    std::string recusa;
    ASSERT_TRUE(m_Ana->GuardaDocumento(todos, numero, recusa)) << recusa;
    EXPECT_EQ(numero, 1);
    EXPECT_EQ(GuardaPdf(m_Ana, "outro"), 2);
    m_Registro.Reabre();
    Bytes lidos;
    ASSERT_TRUE(m_Registro.Sessao("bruno")->LeDocumento(1, lidos, recusa)) << recusa;
    EXPECT_EQ(lidos, todos);
}

TEST_F(ServicosDocumentos, Size_UpToTheLimit)
{
    double numero = 0;
    std::string recusa;
    EXPECT_TRUE(m_Ana->GuardaDocumento(Pdf("grande", Maior), numero, recusa)) << recusa;
    Bytes lidos;
    ASSERT_TRUE(m_Ana->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(lidos.size(), Maior);
    EXPECT_EQ(RecusaDe(Pdf("grande", Maior + 1)), "O documento ultrapassa o tamanho máximo de 5 Mb (5242881 bytes).");
    EXPECT_EQ(RecusaDe({}), "O documento está vazio.");
}

TEST_F(ServicosDocumentos, Content_ThatIsNoPdf_IsRefused)
{
    const std::string recusa = "O documento não é um PDF completo: confira o arquivo e envie de novo.";
    EXPECT_EQ(RecusaDe(DeTexto("isto não é")), recusa);
    EXPECT_EQ(RecusaDe(DeTexto("%PDF-1.4 sem fim")), recusa);
    EXPECT_EQ(RecusaDe(DeTexto("sem começo %%EOF")), recusa);
    EXPECT_EQ(RecusaDe(DeTexto(std::string(1024, ' ') + "%PDF-1.4 %%EOF")), recusa);
    EXPECT_EQ(RecusaDe(DeTexto("%PDF-1.4 %%EOF" + std::string(1024, ' '))), recusa);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), "0");
    double numero = 0;
    std::string motivo;
    EXPECT_TRUE(m_Ana->GuardaDocumento(
        DeTexto(std::string(1019, ' ') + "%PDF-" + std::string(5000, 'x') + "%%EOF" + std::string(1019, '\n')), numero,
        motivo))
        << motivo;
}

TEST_F(ServicosDocumentos, Number_ThatIsNone_IsRefused)
{
    GuardaPdf(m_Ana, "x");
    Bytes lidos = {1};
    std::string recusa;
    EXPECT_FALSE(m_Ana->LeDocumento(9, lidos, recusa));
    EXPECT_EQ(recusa, "O documento de número 9 não existe no cliente DETRAN/RS.");
    EXPECT_EQ(lidos, Bytes{1});
    for (const double numero : {0.0, -1.0, 1.5, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(m_Ana->LeDocumento(numero, lidos, recusa)) << numero;
    }
    EXPECT_FALSE(m_Ana->LeDocumento(std::nan(""), lidos, recusa));
    EXPECT_EQ(recusa, "O documento de número inválido não existe no cliente DETRAN/RS.");
}

TEST_F(ServicosDocumentos, OfAnotherClient_IsNotRead)
{
    const double numero = GuardaPdf(m_Ana, "x");
    Bytes lidos;
    std::string recusa;
    EXPECT_FALSE(m_Registro.Sessao("elisa")->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, "O documento de número 1 não existe no cliente EPTC.");
}

TEST_F(ServicosDocumentos, Permissions_AreAsked)
{
    double numero = GuardaPdf(m_Ana, "x");
    Bytes lidos;
    std::string recusa;
    EXPECT_FALSE(m_Registro.Sessao("carla")->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para ver documentos.");
    EXPECT_FALSE(m_Registro.Sessao("bruno")->GuardaDocumento(Pdf("y"), numero, recusa));
    EXPECT_EQ(recusa, "Bruno Lima não tem permissão para guardar documentos.");
    EXPECT_TRUE(m_Registro.Sessao("inês")->GuardaDocumento(Pdf("y"), numero, recusa)) << recusa;
    EXPECT_TRUE(m_Registro.Sessao("alice")->GuardaDocumento(Pdf("y"), numero, recusa)) << recusa;
}

TEST_F(ServicosDocumentos, Document_IsNeverChanged)
{
    GuardaPdf(m_Ana, "x");
    EXPECT_THROW(m_Registro.Sql("UPDATE DOCUMENTO SET Conteudo = x'00', Tamanho = 1"), std::runtime_error);
    EXPECT_THROW(m_Registro.Sql("DELETE FROM DOCUMENTO"), std::runtime_error);
}

TEST_F(ServicosDocumentos, Document_DamagedInTheFile_IsRefusedWhenRead)
{
    const double numero = GuardaPdf(m_Ana, "x");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; "
                   "UPDATE DOCUMENTO SET Conteudo = CAST(replace(CAST(Conteudo AS TEXT), 'x', 'y') AS BLOB)");
    Bytes lidos;
    std::string recusa;
    EXPECT_FALSE(m_Ana->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.");
    EXPECT_TRUE(lidos.empty());
}

TEST_F(ServicosDocumentos, Document_WhoseChecksumOrSizeIsNotItsOwn_IsRefusedWhenRead)
{
    const std::string recusaEsperada =
        "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.";
    const double numero = GuardaPdf(m_Ana, "x");
    Bytes lidos;
    std::string recusa;
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = substr(Sha256, 2) || 'x'");
    EXPECT_FALSE(m_Ana->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, recusaEsperada);
    EXPECT_THROW(m_Registro.Sql("UPDATE DOCUMENTO SET Tamanho = Tamanho + 1"), std::runtime_error);
    m_Registro.Sql("PRAGMA ignore_check_constraints = ON; UPDATE DOCUMENTO SET Tamanho = Tamanho + 1");
    recusa.clear();
    EXPECT_FALSE(m_Ana->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, recusaEsperada);
}

// As a failing disk does it: a byte of the file itself, which no trigger sees.
TEST_F(ServicosDocumentos, Document_DamagedByTheDisk_IsRefusedWhenRead)
{
    const std::string marca = "um texto que se acha no arquivo";
    const double numero = GuardaPdf(m_Ana, marca);
    m_Registro.Fecha();
    m_Ana = nullptr;
    {
        std::fstream arquivo(m_Registro.Caminho(), std::ios::in | std::ios::out | std::ios::binary);
        const std::string tudo(std::istreambuf_iterator<char>(arquivo), {});
        const std::size_t onde = tudo.find(marca);
        ASSERT_NE(onde, std::string::npos);
        arquivo.seekp(static_cast<std::streamoff>(onde));
        arquivo.put('U');
    }
    m_Registro.Reabre();
    Bytes lidos;
    std::string recusa;
    EXPECT_FALSE(m_Registro.Sessao("ana")->LeDocumento(numero, lidos, recusa));
    EXPECT_EQ(recusa, "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.");
}

TEST_F(ServicosDocumentos, Checksum_IsThatOfTheContent)
{
    double numero = 0;
    std::string recusa;
    ASSERT_TRUE(m_Ana->GuardaDocumento(DeTexto("%PDF-%%EOF"), numero, recusa));
    EXPECT_EQ(m_Registro.Sql("SELECT Sha256 FROM DOCUMENTO"),
              "bfa46a6395a5ff9b24b500aa7b859b9cf7c2d1eaca67a66ef03f3355276a5f6e");
    EXPECT_EQ(m_Registro.Sql("SELECT Tamanho FROM DOCUMENTO"), "10");
}

} // namespace
