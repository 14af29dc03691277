#include "services/Cabeca.h"
#include "tests/services/RegistroPovoado.h"
#include "tests/support/FalhaLancada.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sodium.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

std::string Troca(std::string texto, const std::string &de, const std::string &por)
{
    return texto.replace(texto.find(de), de.size(), por);
}

std::string Conteudo(const std::string &caminho)
{
    std::stringstream tudo;
    tudo << std::ifstream(caminho, std::ios::binary).rdbuf();
    return tudo.str();
}

class ServicosCabeca : public testing::Test {
  protected:
    static std::string Recusa(const std::string &texto)
    {
        return FalhaLancada([&] { CabecaAssinada::Le(texto); }).Descricao;
    }
    std::string Pasta() const { return m_Pasta.path().toStdString(); }
    std::vector<std::string> NaPasta() const
    {
        std::vector<std::string> nomes;
        for (const QString &nome : QDir(m_Pasta.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
            nomes.push_back(nome.toStdString());
        }
        return nomes;
    }

    RegistroPovoado m_Registro;
    Instante m_Agora{DataDe(21, 11, 2026, 22, 30, 0), -180};
    CabecaAssinada m_Cabeca = ExportacaoDeCabeca::Le(m_Registro.Caminho(), m_Agora);
    QTemporaryDir m_Pasta;
};

TEST_F(ServicosCabeca, Text_HasAllOfItAndIsReadBack)
{
    const std::string texto = m_Cabeca.Texto();
    EXPECT_EQ(texto, "Registro de equipamentos: cabeca do historico\nversao: 1\nregistro: " +
                         m_Registro.Sql("SELECT Identificador FROM REGISTRO") +
                         "\nentradas: " + m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO") +
                         "\nelo: " + m_Registro.Sql("SELECT Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1") +
                         "\nmomento: 20261122013000\nchave: " + m_Registro.Sql("SELECT ChavePublica FROM REGISTRO") +
                         "\nassinatura: " + m_Cabeca.Assinatura + "\n");
    EXPECT_TRUE(m_Cabeca.AssinaturaVale());
    const CabecaAssinada lida = CabecaAssinada::Le(texto);
    EXPECT_EQ(lida.Texto(), texto);
    EXPECT_TRUE(lida.AssinaturaVale());
    // as other programs end lines, and as a telephone reads it from the picture
    std::string deOutro;
    for (const char letra : texto) {
        deOutro += letra == '\n' ? "\r\n" : std::string(1, letra);
    }
    EXPECT_EQ(CabecaAssinada::Le(deOutro).Texto(), texto);
    EXPECT_EQ(CabecaAssinada::Le(texto.substr(0, texto.size() - 1)).Texto(), texto);
}

TEST_F(ServicosCabeca, SecretKey_IsNowhereInTheText)
{
    const std::string secreta = m_Registro.Sql("SELECT ChaveSecreta FROM REGISTRO");
    ASSERT_EQ(secreta.size(), 128U);
    EXPECT_EQ(m_Cabeca.Texto().find(secreta.substr(0, 64)), std::string::npos);
}

TEST_F(ServicosCabeca, DamagedText_IsRefusedWithWhatIsWrong)
{
    const std::string texto = m_Cabeca.Texto();
    EXPECT_EQ(Recusa(""), "O texto não é uma cabeça do histórico: a sua primeira linha é outra.");
    EXPECT_EQ(Recusa("\xff\xfe" + texto), "O texto não é uma cabeça do histórico: a sua primeira linha é outra.");
    EXPECT_EQ(Recusa(std::string(5000, 'x')), "O texto é longo demais para ser uma cabeça do histórico.");
    EXPECT_EQ(Recusa(Troca(texto, "versao: 1", "versao: 2")),
              "A cabeça é de uma forma que este programa não conhece: atualize o programa.");
    EXPECT_EQ(Recusa(texto.substr(0, texto.find("\nchave"))),
              "O texto da cabeça está incompleto ou tem linhas a mais: tem 6 linhas em vez de 8.");
    EXPECT_EQ(Recusa(texto + "mais\n"),
              "O texto da cabeça está incompleto ou tem linhas a mais: tem 9 linhas em vez de 8.");
    EXPECT_EQ(Recusa(Troca(texto, "elo: ", "ela: ")),
              "O texto da cabeça está incompleto ou foi alterado: a linha 5 deveria começar por \"elo:\".");
    EXPECT_EQ(Recusa(Troca(texto, m_Cabeca.Registro, "{" + m_Cabeca.Registro + "}")),
              "O texto da cabeça foi alterado: o identificador do registro não é válido.");
    for (const char *numero : {"027", "-27", "+27", " 27", "0", "2.7", "", "99999999999999999999"}) {
        EXPECT_EQ(
            Recusa(Troca(texto, "entradas: " + std::to_string(m_Cabeca.Tamanho), std::string("entradas: ") + numero)),
            "O texto da cabeça foi alterado: a quantidade de entradas não é um número válido.")
            << numero;
    }
    EXPECT_EQ(Recusa(Troca(texto, "20261122013000", "20261322013000")),
              "O texto da cabeça foi alterado: o momento não existe no calendário.");
    EXPECT_EQ(Recusa(Troca(texto, "elo: ", "elo: A")),
              "O texto da cabeça foi alterado: o elo não tem 64 algarismos hexadecimais.");
    EXPECT_EQ(Recusa(Troca(texto, m_Cabeca.ChavePublica, m_Cabeca.ChavePublica.substr(1) + "F")),
              "O texto da cabeça foi alterado: a chave não tem 64 algarismos hexadecimais.");
    EXPECT_EQ(Recusa(Troca(texto, m_Cabeca.Assinatura, "")), "A cabeça não está assinada.");
    EXPECT_EQ(Recusa(Troca(texto, m_Cabeca.Assinatura, m_Cabeca.Assinatura.substr(2))),
              "O texto da cabeça foi alterado: a assinatura não tem 128 algarismos hexadecimais.");
}

// Whatever letter is another one, it is either refused or no longer signed.
TEST_F(ServicosCabeca, AnyOtherLetterInTheText_IsNoticed)
{
    const std::string texto = m_Cabeca.Texto();
    for (std::size_t lugar = 0; lugar + 1 < texto.size(); ++lugar) {
        for (const char letra : {'0', 'a', '\n', ' '}) {
            if (texto[lugar] == letra) {
                continue;
            }
            std::string outro = texto;
            outro[lugar] = letra;
            try {
                EXPECT_FALSE(CabecaAssinada::Le(outro).AssinaturaVale()) << outro;
            } catch (const Falha &) {
            }
        }
    }
}

TEST_F(ServicosCabeca, QRCode_IsASquareWithItsThreeMarks)
{
    const CodigoQR codigo = CodigoQR::De(m_Cabeca.Texto());
    ASSERT_GT(codigo.Lado, 21);
    ASSERT_EQ(codigo.Pontos.size(), static_cast<std::size_t>(codigo.Lado * codigo.Lado));
    const int fim = codigo.Lado - 7;
    for (const auto &[x, y] : {std::pair{0, 0}, {fim, 0}, {0, fim}}) {
        for (int n = 0; n < 7; ++n) {
            EXPECT_TRUE(codigo.Escuro(x + n, y));
            EXPECT_TRUE(codigo.Escuro(x, y + n));
            EXPECT_TRUE(codigo.Escuro(x + 3, y + 3));
        }
        EXPECT_FALSE(codigo.Escuro(x + 1, y + 1));
    }
    EXPECT_NE(codigo.Pontos, CodigoQR::De("outro texto").Pontos);
}

TEST_F(ServicosCabeca, Saved_NeverOverAnotherFile)
{
    const std::string caminho = Pasta() + "/cabeca.txt";
    ExportacaoDeCabeca::Grava(m_Cabeca, caminho);
    EXPECT_EQ(Conteudo(caminho), m_Cabeca.Texto());
    EXPECT_EQ(CabecaAssinada::LeArquivo(caminho).Texto(), m_Cabeca.Texto());
    CabecaAssinada outra = m_Cabeca;
    outra.Tamanho = 1;
    EXPECT_TRUE(
        Lanca(75, "Cabeca",
              "A cabeça do histórico não pôde ser gravada em " + caminho + " (já existe um arquivo com esse nome).",
              [&] { ExportacaoDeCabeca::Grava(outra, caminho); }));
    EXPECT_EQ(Conteudo(caminho), m_Cabeca.Texto());
    EXPECT_EQ(NaPasta(), (std::vector<std::string>{"cabeca.txt"}));
}

TEST_F(ServicosCabeca, OfTheDay_IsExportedOnceByTheDayOfThePlace)
{
    const std::string nome = "cabeca.20261121." + m_Cabeca.Registro.substr(0, 8) + ".txt";
    EXPECT_EQ(ExportacaoDeCabeca::ExportaSeDevida(m_Registro.Caminho(), Pasta(), m_Agora), Pasta() + "/" + nome);
    EXPECT_EQ(Conteudo(Pasta() + "/" + nome), m_Cabeca.Texto());
    const Instante depois(DataDe(21, 11, 2026, 23, 59, 0), -180);
    EXPECT_EQ(ExportacaoDeCabeca::ExportaSeDevida(m_Registro.Caminho(), Pasta(), depois), "");
    EXPECT_EQ(Conteudo(Pasta() + "/" + nome), m_Cabeca.Texto());
    const Instante amanha(DataDe(22, 11, 2026, 0, 0, 0), -180);
    EXPECT_NE(ExportacaoDeCabeca::ExportaSeDevida(m_Registro.Caminho(), Pasta(), amanha), "");
    EXPECT_EQ(NaPasta(), (std::vector<std::string>{nome, Troca(nome, "1121", "1122")}));
}

TEST_F(ServicosCabeca, AbsentDirectory_IsNotMade)
{
    EXPECT_TRUE(Lanca(76, "Cabeca", "A pasta " + Pasta() + "/falta, para as cabeças do histórico, não foi encontrada.",
                      [&] { ExportacaoDeCabeca::ExportaSeDevida(m_Registro.Caminho(), Pasta() + "/falta", m_Agora); }));
    EXPECT_EQ(NaPasta(), std::vector<std::string>{});
}

TEST_F(ServicosCabeca, RegistryWhoseKeysDoNotFit_GivesNone)
{
    m_Registro.SemGuardas("UPDATE REGISTRO SET ChavePublica = substr(ChaveSecreta, 1, 64)");
    EXPECT_EQ(FalhaLancada([&] { ExportacaoDeCabeca::Le(m_Registro.Caminho(), m_Agora); }).Descricao,
              "As chaves do registro não servem uma à outra: confira-o.");
    m_Registro.SemGuardas("DELETE FROM REGISTRO");
    EXPECT_EQ(FalhaLancada([&] { ExportacaoDeCabeca::Le(m_Registro.Caminho(), m_Agora); }).Descricao,
              "O registro não tem do que exportar a cabeça: confira-o.");
    EXPECT_EQ(FalhaLancada([&] { ExportacaoDeCabeca::Le("/nao/ha", m_Agora); }).Numero, 51);
}

} // namespace
