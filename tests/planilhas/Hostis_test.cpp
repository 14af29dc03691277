#include "bench/Memoria.h"
#include "planilhas/Falhas.h"
#include "tests/planilhas/Arquivos.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

using namespace planilhas;

// Files that are made to do harm, that are something else than they seem, or that are broken: each is a sentence.

namespace {

using Lidas = std::vector<std::string>;

const std::string NaoETabela = "O arquivo não é uma tabela: são lidos CSV, XLSX e ODS.";
const std::string NaoSeLe = "O arquivo está danificado: o conteúdo de uma das suas partes não se lê.";
const std::string NaoAbre = "O arquivo está danificado e não abre: confira-o e tente de novo.";
const std::string ComSenha = "O arquivo está protegido por senha: salve-o sem senha e tente de novo.";
const std::string GrandeDemais = "O arquivo, descompactado, é grande demais para ser lido como tabela.";

class HostisTeste : public testing::Test {
  protected:
    Pasta m_Pasta;
};

// No file grows beyond this size, for its scope: a write that the system refuses.
class DiscoApertado {
  public:
    explicit DiscoApertado(rlim_t octetos)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_Era);
        const rlimit agora{octetos, m_Era.rlim_max};
        setrlimit(RLIMIT_FSIZE, &agora);
    }
    DiscoApertado(const DiscoApertado &) = delete;
    DiscoApertado &operator=(const DiscoApertado &) = delete;
    ~DiscoApertado() { setrlimit(RLIMIT_FSIZE, &m_Era); }

  private:
    rlimit m_Era{};
};

// So many bytes that pack well.
std::string Repetido(const std::string &pedaco, std::size_t vezes)
{
    std::string tudo;
    tudo.reserve(pedaco.size() * vezes);
    for (std::size_t i = 0; i < vezes; ++i) {
        tudo += pedaco;
    }
    return tudo;
}

} // namespace

TEST_F(HostisTeste, Reconhece_WhatIsNoTable_IsASentence)
{
    EXPECT_EQ(Frase(m_Pasta.Com("a.csv", "")), "O arquivo está vazio.");
    EXPECT_EQ(Frase(m_Pasta / "b.csv"),
              "53 Não foi possível ler " + (m_Pasta / "b.csv").string() + ": o arquivo ou a pasta não existe.");
    EXPECT_EQ(Frase(m_Pasta / "."),
              "75 Não foi possível ler " + (m_Pasta / ".").string() + ": é uma pasta, e não um arquivo.");
    ASSERT_EQ(mkfifo((m_Pasta / "canal").c_str(), 0600), 0);
    EXPECT_EQ(Frase(m_Pasta / "canal"), "75 Não foi possível ler " + (m_Pasta / "canal").string() +
                                            ": é um canal ou um dispositivo, e não um arquivo.");
    std::filesystem::create_symlink("volta", m_Pasta / "volta");
    EXPECT_EQ(Frase(m_Pasta / "volta"), "75 Não foi possível ler " + (m_Pasta / "volta").string() +
                                            ": os atalhos do caminho apontam uns para os outros.");
    const auto longo = m_Pasta / std::string(300, 'a');
    EXPECT_EQ(Frase(longo), "75 Não foi possível ler " + longo.string() + ": o nome é longo demais.");
    EXPECT_EQ(Frase(m_Pasta.Com("a.xlsx", "%PDF-1.4\n")), NaoETabela);
    EXPECT_EQ(Frase(m_Pasta.Com("a.xlsx", "\x89PNG\r\n\x1A\n")), NaoETabela);
    EXPECT_EQ(
        Frase(m_Pasta.Com("a.xls", "<html><table><tr><td>1</td></tr></table></html>")),
        "O arquivo é uma página ou um documento XML, e não uma tabela: abra-o no programa de planilhas e salve-o como "
        "XLSX ou ODS.");
    EXPECT_EQ(Frase(m_Pasta.Com("a.xls", "\xEF\xBB\xBF <?XML version='1.0'?>")).substr(0, 20), "O arquivo é uma pá");
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.xlsx", {{"foto.jpg", "x"}})), NaoETabela);
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.ods", {{"mimetype", "application/vnd.oasis.opendocument.text"}})),
              "O arquivo é um documento, e não uma planilha.");
}

TEST_F(HostisTeste, FalhaDeArquivo_WhateverTheSystemSays_IsASentenceInPortuguese)
{
    EXPECT_EQ(FalhaDe([] { FalhaDeArquivo(EMFILE, "Ato"); }).Descricao, "Ato: há arquivos demais abertos.");
    EXPECT_EQ(FalhaDe([] { FalhaDeArquivo(EPROTO, "Ato"); }).Descricao,
              "Ato: o sistema recusou, erro " + std::to_string(EPROTO) + ".");
}

TEST_F(HostisTeste, Reconhece_ByContent_WhateverTheName)
{
    const auto xlsx = m_Pasta.ComXlsx("<row><c><v>1</v></c></row>");
    std::filesystem::rename(xlsx, m_Pasta / "a.csv");
    EXPECT_EQ(Reconhece(m_Pasta / "a.csv").Formato, Formato::Xlsx);
    EXPECT_EQ(Linhas(m_Pasta / "a.csv"), Lidas{"1|N:1"});
    EXPECT_EQ(Linhas(m_Pasta.Com("a.xlsx", "a;b\n")), Lidas{"1|T:a|T:b"});
    EXPECT_EQ(FormatoDoNome("lista.XLSX"), Formato::Xlsx);
    EXPECT_EQ(FormatoDoNome("lista.Ods"), Formato::Ods);
    EXPECT_EQ(FormatoDoNome("lista.csv"), Formato::Csv);
    EXPECT_EQ(FormatoDoNome("lista.txt"), std::nullopt);
    EXPECT_EQ(FormatoDoNome("csv"), std::nullopt);
}

TEST_F(HostisTeste, Reconhece_FilesUnderAPassword_AreToldSo)
{
    const std::string composto = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    const std::string cifrado = std::string("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);
    for (const std::size_t antes : {std::size_t(0), std::size_t(65510), std::size_t(65528), std::size_t(200000)}) {
        EXPECT_EQ(Frase(m_Pasta.Com("a.xlsx", composto + std::string(antes, '\0') + cifrado + std::string(5000, 'x'))),
                  ComSenha);
    }
    EXPECT_EQ(Frase(m_Pasta.Com("a.xls", composto + std::string(5000, '\0'))),
              "O arquivo está num formato antigo, que não se lê aqui: salve-o como XLSX e tente de novo.");
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.ods",
                                      {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                                       {"META-INF/manifest.xml", "<m><file-entry><encryption-data/></file-entry></m>"},
                                       {"content.xml", "\x01\x02"}})),
              ComSenha);
}

TEST_F(HostisTeste, Le_AnArchiveEntryUnderAPassword_IsToldSo)
{
    const auto arquivo = m_Pasta.ComXlsx("<row><c><v>1</v></c></row>");
    int erro = 0;
    zip_t *const pacote = zip_open(arquivo.c_str(), 0, &erro);
    ASSERT_NE(pacote, nullptr);
    const zip_int64_t folha = zip_name_locate(pacote, "xl/worksheets/sheet1.xml", 0);
    ASSERT_EQ(zip_file_set_encryption(pacote, static_cast<zip_uint64_t>(folha), ZIP_EM_AES_256, "senha"), 0);
    ASSERT_EQ(zip_close(pacote), 0);
    EXPECT_EQ(Frase(arquivo), ComSenha);
}

TEST_F(HostisTeste, Le_PartsMissing_IsASentence)
{
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.ods", {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}})),
              "O arquivo está incompleto: falta nele a parte content.xml.");
    const std::string raiz = "<Relationships><Relationship Id=\"a\" Type=\"x/officeDocument\" Target=\"";
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.xlsx", {{"_rels/.rels", raiz + "xl/workbook.xml\"/></Relationships>"}})),
              "O arquivo está incompleto: falta nele a parte xl/_rels/workbook.xml.rels.");
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.xlsx", {{"_rels/.rels", raiz + "word/document.xml\"/></Relationships>"},
                                                 {"word/_rels/document.xml.rels", "<Relationships/>"},
                                                 {"word/document.xml", "<document/>"}})),
              "O arquivo não é uma planilha XLSX.");
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.xlsx", {{"_rels/.rels", raiz + "xl/workbook.bin\"/></Relationships>"}})),
              "O arquivo é uma planilha no formato binário XLSB: salve-a como XLSX e tente de novo.");
    EXPECT_EQ(
        Frase(m_Pasta.ComPacote("a.xlsx", {{"_rels/.rels", raiz + "/w.xml\"/></Relationships>"},
                                           {"_rels/w.xml.rels", "<Relationships/>"},
                                           {"w.xml", "<workbook><sheets><sheet name=\"a\"/></sheets></workbook>"}})),
        "O arquivo está danificado: falta nele uma das folhas.");
    EXPECT_EQ(Frase(m_Pasta.ComPacote("a.xlsx", {{"_rels/.rels", raiz + "/w.xml\"/></Relationships>"},
                                                 {"_rels/w.xml.rels", "<Relationships/>"},
                                                 {"w.xml", "<workbook/>"}})),
              "A planilha não tem nenhuma folha com células.");
}

// Wherever a file is cut off or a byte is turned over, it is read as it was or refused in a sentence.
TEST_F(HostisTeste, Le_DamagedAnywhere_IsTheSameOrASentence)
{
    for (const Formato formato : {Formato::Xlsx, Formato::Ods}) {
        const auto arquivo = m_Pasta / "inteira";
        const auto escritor = FazEscritor(arquivo, formato);
        escritor->Folha("a");
        for (int i = 0; i < 20; ++i) {
            escritor->Escreve({CelulaDeTexto("linha " + std::to_string(i)), CelulaDeNumero(i * 1.5)});
        }
        escritor->Conclui();
        const Lidas inteira = Linhas(arquivo);
        ASSERT_EQ(inteira.size(), 20U);
        const std::string octetos = OctetosDe(arquivo);
        std::size_t iguais = 0;
        for (std::size_t onde = 0; onde < octetos.size(); onde += 31) {
            std::string danificado = octetos;
            danificado[onde] = static_cast<char>(~danificado[onde]);
            try {
                EXPECT_EQ(Linhas(m_Pasta.Com("danificada", danificado)), inteira) << onde;
                ++iguais;
            } catch (const Falha &falha) {
                EXPECT_TRUE(falha.Descricao.ends_with('.')) << falha.Descricao;
            }
            EXPECT_NE(Frase(m_Pasta.Com("cortada", octetos.substr(0, onde))), "") << onde;
        }
        EXPECT_GT(octetos.size() / 31, iguais);
    }
}

TEST_F(HostisTeste, Le_Bombs_AreRefusedByWhatTheyUnpackTo)
{
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Octetos = 1000000;
    const std::string linhas = Repetido("<row><c><v>1</v></c></row>", 100000);
    const auto xlsx = m_Pasta.ComXlsx(linhas);
    ASSERT_LT(std::filesystem::file_size(xlsx), 100000U);
    EXPECT_EQ(Frase(xlsx, opcoes), GrandeDemais);
    EXPECT_EQ(Frase(m_Pasta.ComOds(Repetido("<table:table/>", 100000)), opcoes), GrandeDemais);
    EXPECT_EQ(
        Frase(m_Pasta.ComXlsx("<row><c t=\"s\"><v>0</v></c></row>", "", Repetido("<si><t>x</t></si>", 100000)), opcoes),
        GrandeDemais);
    // Parts that are small in every honest file have a limit of their own.
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("", Repetido("<a/>", 5000000))), GrandeDemais);
}

// The size that the archive tells is a lie: what comes out is counted.
TEST_F(HostisTeste, Le_ABombThatTellsASmallSize_IsRefusedAsItUnpacks)
{
    const auto arquivo = m_Pasta.ComXlsx(Repetido("<row><c><v>1</v></c></row>", 100000));
    std::string octetos = OctetosDe(arquivo);
    int mentiras = 0;
    for (std::size_t onde = octetos.find("xl/worksheets/sheet1.xml"); onde != std::string::npos;
         onde = octetos.find("xl/worksheets/sheet1.xml", onde + 1)) {
        const bool noFim = octetos.substr(onde - 46, 4) == "PK\x01\x02";
        octetos.replace(onde - (noFim ? 22 : 8), 4, std::string("\x10\x27\0\0", 4));
        ++mentiras;
    }
    ASSERT_EQ(mentiras, 2);
    OpcoesDeLeitura opcoes;
    opcoes.Limites.Octetos = 1000000;
    const std::string frase = Frase(m_Pasta.Com("mentira.xlsx", octetos), opcoes);
    EXPECT_TRUE(frase == GrandeDemais || frase == NaoAbre) << frase;
}

TEST_F(HostisTeste, Le_EntitiesOfADocumentsOwn_AreRefused)
{
    const std::string entidades =
        "<!DOCTYPE a [<!ENTITY x \"xxxxxxxxxx\"><!ENTITY y \"&x;&x;&x;&x;&x;&x;&x;&x;&x;&x;\">]>";
    const auto com = [&](const std::string &antes, const std::string &texto) {
        return m_Pasta.ComPacote("a.ods", {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                                           {"content.xml", antes + "<a>" + texto + "</a>"}});
    };
    EXPECT_EQ(Frase(com(entidades, "&y;")), NaoSeLe);
    EXPECT_EQ(Frase(com("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>", "&x;")), NaoSeLe);
    EXPECT_EQ(Frase(com("<!DOCTYPE a SYSTEM \"a.dtd\">", "&x;")), NaoSeLe);
    EXPECT_EQ(Frase(com("", "&x;")), NaoSeLe);
    EXPECT_EQ(Frase(com("<!DOCTYPE a SYSTEM \"a.dtd\">", "&lt;&#65;")), "A planilha não tem nenhuma folha.");
}

TEST_F(HostisTeste, Le_DeepNestingAndEndlessTags_AreRefused)
{
    EXPECT_EQ(Frase(m_Pasta.ComXlsx(Repetido("<a>", 100000) + Repetido("</a>", 100000))), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComOds(Repetido("<table:table>", 100000) + Repetido("</table:table>", 100000))), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row a=\"" + std::string(6000000, 'x') + "\"/>")), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<!--" + std::string(6000000, 'x') + "-->")), NaoSeLe);
    EXPECT_EQ(
        Frase(m_Pasta.ComXlsx("<row><c t=\"inlineStr\"><is><t>" + std::string(200000, 'x') + "</t></is></c></row>")),
        "O arquivo tem uma célula longa demais.");
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row><c><v>" + std::string(200000, '1') + "</v></c></row>")),
              "O arquivo está danificado: tem uma célula longa demais.");
}

TEST_F(HostisTeste, Le_DocumentsThatAreNotWellFormed_AreRefused)
{
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row></c></row>")), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row r=1/>")), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row><c t=\"inlineStr\"><is><t>\xE7</t></is></c></row>")), NaoSeLe);
    EXPECT_EQ(Frase(m_Pasta.ComXlsx("<row><c t=\"inlineStr\"><is><t>\x01</t></is></c></row>")), NaoSeLe);
}

TEST_F(HostisTeste, Le_ManyEmptyRows_HoldNoMoreThanFew)
{
    const auto xlsx = [&](int quantas) {
        std::string linhas;
        for (int i = 1; i <= quantas; ++i) {
            linhas += "<row r=\"" + std::to_string(i) + "\" ht=\"15\"/>";
        }
        const auto arquivo = m_Pasta.ComXlsx(linhas + "<row r=\"1048576\"><c><v>1</v></c></row>");
        return PicoDeMemoria([&] { EXPECT_EQ(Linhas(arquivo), Lidas{"1048576|N:1"}); });
    };
    const auto ods = [&](std::size_t quantas) {
        const auto arquivo = m_Pasta.ComOds(
            "<table:table>" + Repetido("<table:table-row><table:table-cell/></table:table-row>", quantas) +
            "</table:table>");
        return PicoDeMemoria([&] { EXPECT_EQ(Linhas(arquivo), Lidas{}); });
    };
    const std::size_t comPoucas = xlsx(1000);
    EXPECT_LT(xlsx(50000), comPoucas + 100000);
    const std::size_t emOutroComPoucas = ods(1000);
    EXPECT_LT(ods(50000), emOutroComPoucas + 100000);
}

TEST_F(HostisTeste, write_WhereTheDiskIsFull_IsASentenceAndLeavesNothing)
{
    for (const Formato formato : {Formato::Csv, Formato::Xlsx, Formato::Ods}) {
        for (const rlim_t octetos : {rlim_t(0), rlim_t(1000), rlim_t(20000)}) {
            const DiscoApertado apertado(octetos);
            const Falha falha = FalhaDe([&] {
                const auto escritor = FazEscritor(m_Pasta / "tabela", formato);
                escritor->Folha("a");
                for (int i = 0; i < 5000; ++i) {
                    escritor->Escreve(
                        {CelulaDeTexto("linha " + std::to_string(i * 7919 % 5003)), CelulaDeNumero(i / 7.0)});
                }
                escritor->Conclui();
            });
            EXPECT_EQ(falha.Numero, NumeroFalha::DiscoCheio)
                << static_cast<int>(formato) << " " << octetos << falha.Descricao;
            EXPECT_TRUE(falha.Descricao.starts_with("Não foi possível gravar ")) << falha.Descricao;
            EXPECT_TRUE(m_Pasta.Nomes().empty());
        }
    }
}
