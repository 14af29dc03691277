#include "tests/services/ServicosTeste.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

using namespace mesa;

namespace {

constexpr std::size_t Maior = 5242880;

constexpr const char *Danificado =
    "O documento de número 1 está danificado no registro: recupere-o de uma cópia de segurança.";

class ServicosDocumentos : public ServicosTeste {
  protected:
    static Bytes DeTexto(const std::string &texto) { return Bytes(texto.begin(), texto.end()); }
    static std::string Texto(const Bytes &bytes) { return std::string(bytes.begin(), bytes.end()); }
    // The text with the first `de` replaced, which has to be there.
    static std::string Trocado(std::string texto, const std::string &de, const std::string &para)
    {
        return texto.replace(texto.find(de), de.size(), para);
    }
};

TEST_F(ServicosDocumentos, Stored_ComesBackByteForByte)
{
    std::string marca;
    for (int byte = 0; byte < 256; ++byte) {
        marca += byte == '\r' || byte == '\n' ? '.' : static_cast<char>(byte); // a comment is one line
    }
    const Bytes todos = Pdf(marca);
    EXPECT_EQ(Guarda(m_Ana, todos), 1);
    EXPECT_EQ(GuardaPdf(m_Ana, "outro"), 2);
    m_Registro.Reabre();
    EXPECT_EQ(Le(m_Registro.Sessao("bruno"), 1), todos);
}

TEST_F(ServicosDocumentos, Size_UpToTheLimit)
{
    EXPECT_EQ(Le(m_Ana, Guarda(m_Ana, Pdf("grande", Maior))).size(), Maior);
    EXPECT_EQ(RecusaAoGuardar(m_Ana, Pdf("grande", Maior + 1)),
              "O documento tem mais de 5 MB, que é o tamanho máximo.");
    EXPECT_EQ(RecusaAoGuardar(m_Ana, {}), "O documento está vazio.");
}

TEST_F(ServicosDocumentos, Content_ThatIsNoWholePdf_IsRefusedInItsOwnWords)
{
    const std::string inteiro = Texto(Pdf("inteiro"));
    const std::string naoEh = "O documento não é um PDF: confira o arquivo e envie de novo.";
    const std::string incompleto = "O documento está incompleto, sem o fim do PDF: envie o arquivo inteiro.";
    const std::string naoAcaba = "O documento não acaba onde o PDF acaba: está incompleto ou tem outros dados no fim. "
                                 "Envie o arquivo inteiro, como foi emitido.";
    const std::string danificado = "O documento está danificado e não abre: confira o arquivo e envie de novo.";
    const std::string semPagina = "O documento não tem nenhuma página: confira o arquivo e envie de novo.";
    struct Caso {
        std::string Conteudo;
        std::string Recusa;
    };
    const std::vector<Caso> casos = {
        {"", "O documento está vazio."},
        {"isto não é", naoEh},
        {"sem começo %%EOF", naoEh},
        {std::string(1024, ' ') + inteiro, naoEh},
        {" " + inteiro, "O documento tem 1 byte antes do começo do PDF: envie o arquivo como foi emitido."},
        {"\xEF\xBB\xBF" + inteiro, "O documento tem 3 bytes antes do começo do PDF: envie o arquivo como foi emitido."},
        {std::string(1019, 'x') + inteiro,
         "O documento tem 1019 bytes antes do começo do PDF: envie o arquivo como foi emitido."},
        {"%PDF-1.4 sem fim", incompleto},
        {inteiro.substr(0, inteiro.size() / 2), incompleto},
        {inteiro.substr(0, inteiro.size() - 2), incompleto},
        {inteiro + "<html>", naoAcaba},
        {inteiro + inteiro.substr(0, 50), naoAcaba},
        {"%PDF-1.4 %%EOF", danificado},
        {"%PDF-1.4\n" + std::string(5000, 'x') + "\n%%EOF", danificado},
        {Trocado(inteiro, "/Root 1 0 R", "/Root 9 0 R"), danificado},
        {Trocado(inteiro, "/Kids [3 0 R] /Count 1", "/Kids [     ] /Count 0"), semPagina},
        {Trocado(inteiro, "/Catalog /Pages 2 0 R", "/Catalog             "), semPagina},
        {Trocado(inteiro, "/Kids [3 0 R]", "/Kids [9 0 R]"),
         "O documento está danificado, com páginas que não abrem: confira o arquivo e envie de novo."},
    };
    for (const Caso &caso : casos) {
        EXPECT_EQ(RecusaAoGuardar(m_Ana, DeTexto(caso.Conteudo)), caso.Recusa) << caso.Conteudo.substr(0, 80);
    }
    EXPECT_EQ(Linhas("DOCUMENTO"), "0");
    Guarda(m_Ana, DeTexto(inteiro + std::string("\0\r\n \n", 5))); // what some writers leave behind the end
}

TEST_F(ServicosDocumentos, Content_UnderAPassword_IsRefusedInItsOwnWords)
{
    const auto protegido = [](const std::string &protecao) {
        const std::string inteiro = Texto(Pdf("protegido", 600));
        return DeTexto(Trocado(inteiro, "/Root 1 0 R", "/Root 1 0 R /ID [<00> <00>] /Encrypt << " + protecao + " >>"));
    };
    const std::string chave(64, '4');
    EXPECT_EQ(
        RecusaAoGuardar(m_Ana, protegido("/Filter /Standard /V 1 /R 2 /P -4 /O <" + chave + "> /U <" + chave + ">")),
        "O documento pede uma senha para abrir: envie o arquivo sem senha.");
    // The password is an empty one, with which it opens for everybody.
    const std::string abre = "294f983e13d314030ad3162a2b68ec99b76d4618b5d511061b6a052fa26c668e";
    EXPECT_EQ(
        RecusaAoGuardar(m_Ana, protegido("/Filter /Standard /V 1 /R 2 /P -4 /O <" + chave + "> /U <" + abre + ">")),
        "O documento está cifrado: envie o arquivo sem senha e sem proteção.");
    EXPECT_EQ(RecusaAoGuardar(m_Ana, protegido("/Filter /Outra /V 9")),
              "O documento tem uma proteção que não se abre aqui: envie o arquivo sem proteção.");
    EXPECT_EQ(Linhas("DOCUMENTO"), "0");
}

// Made to bring down or to hold up whoever opens it. What becomes of each is the library's affair; that it ends, ours.
TEST_F(ServicosDocumentos, Content_MadeToDoHarm_IsTakenOrRefusedInASentence)
{
    const std::string inteiro = Texto(Pdf("maldoso"));
    const auto repetido = [](const std::string &pedaco, std::size_t vezes) {
        std::string tudo;
        for (std::size_t n = 0; n < vezes; ++n) {
            tudo += pedaco;
        }
        return tudo;
    };
    const std::string fim = "\nstartxref\n0\n%%EOF\n";
    const std::string colchetes = repetido("[", 1000000) + repetido("]", 1000000);
    const std::vector<std::string> maldosos = {
        Trocado(inteiro, "/Count 1", "/Count 2147483647"),
        Trocado(inteiro, "/Kids [3 0 R]", "/Kids [2 0 R 2 0 R]"),
        Trocado(inteiro, "/Kids [3 0 R]", "/Kids " + colchetes),
        Trocado(inteiro, "/Size 4", "/Size 2147483647"),
        Trocado(inteiro, "0 4\n", "0 2147483647\n"),
        Trocado(inteiro, "/Size 4", "/Size 4 /Prev " + std::to_string(inteiro.find("xref\n"))),
        "%PDF-1.4\n1 0 obj " + repetido("(", 4000000) + fim,
        "%PDF-1.4\n" + repetido("1 0 obj<<<<", 400000) + fim,
    };
    for (const std::string &maldoso : maldosos) {
        double numero = 0;
        std::string recusa;
        if (!m_Ana->GuardaDocumento(DeTexto(maldoso), numero, recusa)) {
            EXPECT_EQ(recusa.substr(0, 12), "O documento ") << recusa;
        }
    }
}

TEST_F(ServicosDocumentos, Number_ThatIsNone_IsRefused)
{
    GuardaPdf(m_Ana, "x");
    EXPECT_EQ(RecusaAoLer(m_Ana, 9), "O documento de número 9 não existe no cliente Autoridade Estadual de Trânsito.");
    Inclui(m_Ana,
           Poe(EquipamentoDe("R-001"), Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), 1))));
    ASSERT_EQ(m_Ana->AfericoesDoDocumento(1).size(), 1U);
    ASSERT_EQ(m_Ana->AfericoesDoDocumentoDa(1).size(), 1U);
    constexpr double infinito = std::numeric_limits<double>::infinity();
    for (const double numero : {0.0, -1.0, 1.5, 1e300, -1e300, infinito, -infinito, std::nan("")}) {
        RecusaAoLer(m_Ana, numero);
        EXPECT_TRUE(m_Ana->AfericoesDoDocumento(numero).empty()) << numero;
        EXPECT_TRUE(m_Ana->AfericoesDoDocumentoDa(numero).empty()) << numero;
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

TEST_F(ServicosDocumentos, Document_DamagedWhereItIsStored_IsRefusedWhenRead)
{
    const double numero = GuardaPdf(m_Ana, "x");
    GuardaPdf(m_Ana, "y");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Conteudo = (SELECT Conteudo FROM DOCUMENTO "
                   "WHERE NroDocumento = 2) WHERE NroDocumento = 1");
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

// Somebody who has the file and mends size and checksum too is given away by the history.
TEST_F(ServicosDocumentos, Document_ForgedWithItsChecksum_IsRefusedWhenRead)
{
    const double numero = GuardaPdf(m_Ana, "x");
    const double outro = GuardaPdf(m_Ana, "y");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET (Tamanho, Sha256, Conteudo) = "
                   "(SELECT Tamanho, Sha256, Conteudo FROM DOCUMENTO WHERE NroDocumento = 2) WHERE NroDocumento = 1");
    EXPECT_EQ(RecusaAoLer(m_Ana, numero), "O documento de número 1 não é o que foi guardado, pelo que diz o histórico: "
                                          "recupere-o de uma cópia de segurança.");
    EXPECT_EQ(Le(m_Ana, outro), Pdf("y"));
}

TEST_F(ServicosDocumentos, Document_OfWhichTheHistoryKnowsNothing_IsRefusedWhenRead)
{
    GuardaPdf(m_Ana, "x");
    m_Registro.Sql("INSERT INTO DOCUMENTO SELECT 2, ClienteInc, Tamanho, Sha256, Quando, Fuso, Operador, Conteudo "
                   "FROM DOCUMENTO");
    EXPECT_EQ(RecusaAoLer(m_Ana, 2), "O documento de número 2 não é o que foi guardado, pelo que diz o histórico: "
                                     "recupere-o de uma cópia de segurança.");
}

TEST_F(ServicosDocumentos, Checksum_IsThatOfTheContent)
{
    const Bytes pdf = Pdf("soma");
    Guarda(m_Ana, pdf);
    EXPECT_EQ(m_Registro.Sql("SELECT Sha256 FROM DOCUMENTO"),
              "2e8f14e02311ec32c0dc6111a271384a04ccc003fceef0c0d8d0389b7d501c00");
    EXPECT_EQ(m_Registro.Sql("SELECT Tamanho FROM DOCUMENTO"), std::to_string(pdf.size()));
}

} // namespace
