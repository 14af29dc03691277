#include "tests/desk/ServicosTeste.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

using namespace mesa;

namespace {

constexpr std::size_t Maior = 5242880;

constexpr const char *Danificado =
    "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.";

class ServicosDocumentos : public ServicosTeste {
  protected:
    static Bytes DeTexto(const std::string &texto) { return Bytes(texto.begin(), texto.end()); }
};

TEST_F(ServicosDocumentos, Stored_ComesBackByteForByte)
{
    Bytes todos = Pdf("todos os bytes");
    for (int byte = 0; byte < 256; ++byte) {
        todos.insert(todos.begin() + 9, static_cast<std::uint8_t>(byte));
    }
    EXPECT_EQ(Guarda(m_Ana, todos), 1);
    EXPECT_EQ(GuardaPdf(m_Ana, "outro"), 2);
    m_Registro.Reabre();
    EXPECT_EQ(Le(m_Registro.Sessao("bruno"), 1), todos);
}

TEST_F(ServicosDocumentos, Size_UpToTheLimit)
{
    EXPECT_EQ(Le(m_Ana, Guarda(m_Ana, Pdf("grande", Maior))).size(), Maior);
    EXPECT_EQ(RecusaAoGuardar(m_Ana, Pdf("grande", Maior + 1)),
              "O documento ultrapassa o tamanho máximo de 5 Mb (5242881 bytes).");
    EXPECT_EQ(RecusaAoGuardar(m_Ana, {}), "O documento está vazio.");
}

TEST_F(ServicosDocumentos, Content_ThatIsNoPdf_IsRefused)
{
    for (const std::string &texto :
         {std::string("isto não é"), std::string("%PDF-1.4 sem fim"), std::string("sem começo %%EOF"),
          std::string(1024, ' ') + "%PDF-1.4 %%EOF", "%PDF-1.4 %%EOF" + std::string(1024, ' ')}) {
        EXPECT_EQ(RecusaAoGuardar(m_Ana, DeTexto(texto)),
                  "O documento não é um PDF completo: confira o arquivo e envie de novo.")
            << texto;
    }
    EXPECT_EQ(Linhas("DOCUMENTO"), "0");
    Guarda(m_Ana,
           DeTexto(std::string(1019, ' ') + "%PDF-" + std::string(5000, 'x') + "%%EOF" + std::string(1019, '\n')));
}

TEST_F(ServicosDocumentos, Number_ThatIsNone_IsRefused)
{
    GuardaPdf(m_Ana, "x");
    EXPECT_EQ(RecusaAoLer(m_Ana, 9), "O documento de número 9 não existe no cliente Autoridade Estadual de Trânsito.");
    for (const double numero : {0.0, -1.0, 1.5, 1e300, std::numeric_limits<double>::infinity()}) {
        RecusaAoLer(m_Ana, numero);
    }
    EXPECT_EQ(RecusaAoLer(m_Ana, std::nan("")),
              "O documento de número inválido não existe no cliente Autoridade Estadual de Trânsito.");
}

TEST_F(ServicosDocumentos, OfAnotherClientOrWithoutPermission_IsRefused)
{
    const double numero = GuardaPdf(m_Ana, "x");
    EXPECT_EQ(RecusaAoLer(m_Registro.Sessao("elisa"), numero),
              "O documento de número 1 não existe no cliente Autoridade Municipal de Trânsito.");
    EXPECT_EQ(RecusaAoLer(m_Registro.Sessao("carla"), numero), "Carla Dias não tem permissão para ver documentos.");
    EXPECT_EQ(RecusaAoGuardar(m_Registro.Sessao("bruno"), Pdf("y")),
              "Bruno Lima não tem permissão para guardar documentos.");
    Guarda(m_Registro.Sessao("inês"), Pdf("y"));
    Guarda(m_Registro.Sessao("alice"), Pdf("y"));
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
    EXPECT_EQ(RecusaAoLer(m_Ana, numero), Danificado);
}

TEST_F(ServicosDocumentos, Document_WhoseChecksumOrSizeIsNotItsOwn_IsRefusedWhenRead)
{
    const double numero = GuardaPdf(m_Ana, "x");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = substr(Sha256, 2) || 'x'");
    EXPECT_EQ(RecusaAoLer(m_Ana, numero), Danificado);
    EXPECT_THROW(m_Registro.Sql("UPDATE DOCUMENTO SET Tamanho = Tamanho + 1"), std::runtime_error);
    m_Registro.Sql("PRAGMA ignore_check_constraints = ON; UPDATE DOCUMENTO SET Tamanho = Tamanho + 1");
    EXPECT_EQ(RecusaAoLer(m_Ana, numero), Danificado);
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
    EXPECT_EQ(RecusaAoLer(m_Registro.Sessao("ana"), numero), Danificado);
}

TEST_F(ServicosDocumentos, Checksum_IsThatOfTheContent)
{
    Guarda(m_Ana, DeTexto("%PDF-%%EOF"));
    EXPECT_EQ(m_Registro.Sql("SELECT Sha256 FROM DOCUMENTO"),
              "bfa46a6395a5ff9b24b500aa7b859b9cf7c2d1eaca67a66ef03f3355276a5f6e");
    EXPECT_EQ(m_Registro.Sql("SELECT Tamanho FROM DOCUMENTO"), "10");
}

} // namespace
