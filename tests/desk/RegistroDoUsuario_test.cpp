#include "desk/sample/RegistroDoUsuario.h"

#include "desk/sample/Amostra.h"
#include "desk/sample/CertificadoPDF.h"
#include "tests/desk/RegistroDeTeste.h"

#include <QBuffer>
#include <QPdfDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using namespace mesa;

namespace {

Data Manha()
{
    return DataDe(20, 11, 2026, 9, 30, 0);
}

class RegistroDoUsuarioTeste : public testing::Test {
  protected:
    std::filesystem::path Em(const std::string &nome) const
    {
        return pasta.filePath(QString::fromStdString(nome)).toStdString();
    }
    Ref<Servicos> Abre(const std::string &nome, ConteudoInicial tipo, bool deNovo = false)
    {
        return AbreRegistroDoUsuario(Em(nome), tipo, deNovo, Manha, [](double) {});
    }
    void Marca(const std::string &nome) const
    {
        LinhasSql(CaminhoDoRegistro(Em("d")), "UPDATE CLIENTE SET Nome = '" + nome + "' WHERE CodCliente = 3");
    }
    int Conta(const std::string &nome, const std::string &sql) const
    {
        return std::stoi(LinhasSql(CaminhoDoRegistro(Em(nome)), sql).at(0));
    }
    // Every row of every table, without the salted passwords.
    std::vector<std::string> Despejo(const std::string &nome) const
    {
        const auto arquivo = CaminhoDoRegistro(Em(nome));
        std::vector<std::string> despejo;
        for (const std::string &tabela :
             LinhasSql(arquivo, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name")) {
            std::string colunas;
            for (const std::string &coluna :
                 LinhasSql(arquivo, "SELECT name FROM pragma_table_info('" + tabela + "') WHERE name <> 'Senha'")) {
                colunas += (colunas.empty() ? "quote(" : ", quote(") + coluna + ")";
            }
            despejo.push_back(tabela);
            for (std::string &linha : LinhasSql(arquivo, "SELECT " + colunas + " FROM " + tabela + " ORDER BY rowid")) {
                despejo.push_back(std::move(linha));
            }
        }
        return despejo;
    }

    QTemporaryDir pasta;
};

TEST_F(RegistroDoUsuarioTeste, Vazio_OfANewDirectory_HasUsersAndNothingElse)
{
    const Ref<Servicos> servicos = Abre("novo/por/fazer", ConteudoInicial::Vazio);
    EXPECT_FALSE(servicos->Vazio());
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_FALSE(servicos->Entra("ana", SenhaDaAmostra, recusa, espera).Nada()) << recusa;
    EXPECT_EQ(Conta("novo/por/fazer", "SELECT COUNT(*) FROM EQUIPAMENTO"), 0);
    EXPECT_GE(Conta("novo/por/fazer", "SELECT COUNT(*) FROM USUARIO"), 7);
    EXPECT_EQ(Conta("novo/por/fazer", "SELECT COUNT(*) FROM CLIENTE"), 3);
}

TEST_F(RegistroDoUsuarioTeste, Registro_ThatIsThere_IsOpenedAsItIs)
{
    Abre("d", ConteudoInicial::Vazio);
    Marca("MARCADO");
    Abre("d", ConteudoInicial::Amostra);
    EXPECT_EQ(Conta("d", "SELECT COUNT(*) FROM CLIENTE WHERE Nome = 'MARCADO'"), 1);
    EXPECT_EQ(Conta("d", "SELECT COUNT(*) FROM EQUIPAMENTO"), 0);
}

TEST_F(RegistroDoUsuarioTeste, DeNovo_OverAnOldRegistry_KeepsThatBeside)
{
    Abre("d", ConteudoInicial::Vazio);
    Marca("MARCADO");
    Abre("d", ConteudoInicial::Vazio, true);
    EXPECT_EQ(Conta("d", "SELECT COUNT(*) FROM CLIENTE WHERE Nome = 'MARCADO'"), 0);
    EXPECT_EQ(LinhasSql(Em("d") / "registro.20261120-093000.db", "SELECT Nome FROM CLIENTE WHERE CodCliente = 3"),
              std::vector<std::string>{"MARCADO"});
}

TEST_F(RegistroDoUsuarioTeste, DeNovo_TwiceInTheSameSecond_KeepsBothOldOnes)
{
    Abre("d", ConteudoInicial::Vazio);
    Marca("PRIMEIRO");
    Abre("d", ConteudoInicial::Vazio, true);
    Marca("SEGUNDO");
    Abre("d", ConteudoInicial::Vazio, true);
    std::string nomes;
    for (const auto &arquivo : std::filesystem::directory_iterator(Em("d"))) {
        if (arquivo.path().extension() == ".db") {
            nomes += LinhasSql(arquivo.path(), "SELECT Nome FROM CLIENTE WHERE CodCliente = 3").at(0) + " ";
        }
    }
    EXPECT_NE(nomes.find("PRIMEIRO"), std::string::npos) << nomes;
    EXPECT_NE(nomes.find("SEGUNDO"), std::string::npos) << nomes;
}

TEST_F(RegistroDoUsuarioTeste, Preparo_ThatWasInterrupted_IsBegunAnew)
{
    std::filesystem::create_directory(Em("d"));
    Abre("outro", ConteudoInicial::Vazio);
    std::filesystem::copy_file(CaminhoDoRegistro(Em("outro")), Em("d") / "registro.em-preparo.db");
    Abre("d", ConteudoInicial::Vazio);
    EXPECT_EQ(Conta("d", "SELECT COUNT(*) FROM CLIENTE"), 3);
    EXPECT_FALSE(std::filesystem::exists(Em("d") / "registro.em-preparo.db"));
}

TEST_F(RegistroDoUsuarioTeste, Amostra_OfADay_IsRichAndTheSameTwice)
{
    std::vector<double> partes;
    AbreRegistroDoUsuario(Em("um"), ConteudoInicial::Amostra, false, Manha,
                          [&](double parte) { partes.push_back(parte); });
    EXPECT_TRUE(std::is_sorted(partes.begin(), partes.end()));
    EXPECT_LE(partes.back(), 1.0);

    const auto conta = [&](const std::string &oQue) { return Conta("um", "SELECT COUNT(" + oQue); };
    EXPECT_GE(conta("*) FROM EQUIPAMENTO"), 120);
    EXPECT_EQ(conta("DISTINCT TipoEquip) FROM EQUIPAMENTO"), 10);
    EXPECT_EQ(conta("DISTINCT ClienteInc) FROM EQUIPAMENTO"), 3);
    EXPECT_GE(conta("DISTINCT CodMunic) FROM EQUIPAMENTO"), 12);
    EXPECT_GE(conta("*) FROM EQUIPAMENTO WHERE Ativo = 2"), 1);
    EXPECT_GE(conta("*) FROM SENSOR"), 300);
    EXPECT_GE(conta("*) FROM AFERICAO WHERE NroIntImgCertif IN (SELECT NroDocumento FROM DOCUMENTO)"), 800);
    EXPECT_GE(conta("*) FROM LIMITE WHERE TipoLimite = 1"), 1);
    EXPECT_GE(conta("*) FROM LIMITE WHERE TipoLimite = 2"), 1);
    EXPECT_GE(conta("*) FROM DIA"), 1);
    // Days are kept as yyyymmdd; each sensor by its last calibration.
    const std::string ultimas =
        "(SELECT NroIntSensor, MAX(DataVencimento) AS Ate FROM AFERICAO WHERE Ativo = 1 GROUP BY NroIntSensor)";
    EXPECT_GE(conta("*) FROM " + ultimas + " WHERE Ate < 20261120"), 1);
    EXPECT_GE(conta("*) FROM " + ultimas + " WHERE Ate BETWEEN 20261120 AND 20261220"), 1);
    EXPECT_GE(conta("*) FROM " + ultimas + " WHERE Ate > 20261220"), 1);
    const auto dia = [](const std::string &coluna) {
        return "julianday(printf('%d-%02d-%02d', " + coluna + " / 10000, " + coluna + " / 100 % 100, " + coluna +
               " % 100))";
    };
    EXPECT_GE(conta("*) FROM (SELECT " + dia("DataVencimento") + " AS Ate, LEAD(" + dia("DataVerificacao") +
                    ") OVER (PARTITION BY NroIntSensor ORDER BY DataVerificacao) AS Seguinte FROM AFERICAO "
                    "WHERE Ativo = 1) WHERE Seguinte > Ate + 1"),
              1); // a gap

    Abre("dois", ConteudoInicial::Amostra);
    const auto um = Despejo("um");
    const auto dois = Despejo("dois");
    ASSERT_EQ(um.size(), dois.size());
    for (std::size_t linha = 0; linha < um.size(); ++linha) {
        ASSERT_EQ(um[linha].substr(0, 300), dois[linha].substr(0, 300));
        ASSERT_TRUE(um[linha] == dois[linha]);
    }
}

TEST(CertificadoPDF, EqualTexts_GiveEqualBytesThatOpenAsOnePage)
{
    const auto faz = [](const std::string &titulo) {
        return FazCertificadoPDF(titulo, {"Órgão: (a) \\ b", "Validade: 01/02/2027"});
    };
    const Bytes pdf = faz("Certificado de verificação");
    EXPECT_EQ(pdf, faz("Certificado de verificação"));
    EXPECT_NE(pdf, faz("Certificado"));

    QByteArray bytes(reinterpret_cast<const char *>(pdf.data()), static_cast<qsizetype>(pdf.size()));
    QBuffer aberto(&bytes);
    aberto.open(QIODevice::ReadOnly);
    QPdfDocument documento;
    documento.load(&aberto);
    ASSERT_EQ(documento.status(), QPdfDocument::Status::Ready);
    EXPECT_EQ(documento.pageCount(), 1);
    const QString texto = documento.getAllText(0).text();
    EXPECT_TRUE(texto.contains("Certificado de verificação")) << texto.toStdString();
    EXPECT_TRUE(texto.contains("Órgão: (a) \\ b")) << texto.toStdString();
}

} // namespace
