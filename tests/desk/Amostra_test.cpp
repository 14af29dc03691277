#include "desk/host/FazAmostra.h"
#include "services/sample/CertificadoPDF.h"
#include "tests/services/RegistroDeTeste.h"

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

class AmostraTeste : public testing::Test {
  protected:
    std::filesystem::path Em(const std::string &nome) const
    {
        return pasta.filePath(QString::fromStdString(nome)).toStdString();
    }
    // The file of a new sample.
    std::string Faz(const std::string &nome, const Inicio::Progresso &progresso)
    {
        Preferencias preferencias(Em("preferencias.ini"));
        Inicio inicio(Em(nome), preferencias, Manha, FazAmostra(Manha), {});
        inicio.CriaAmostra(progresso);
        return CaminhoDoRegistro(inicio.Diretorio());
    }
    // Every row of every table, without what is another one each time: salted passwords, identifier and keys, and what
    // the history has of them.
    static std::vector<std::string> Despejo(const std::string &arquivo)
    {
        std::vector<std::string> despejo;
        for (const std::string &tabela :
             LinhasSql(arquivo, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name")) {
            std::string colunas;
            for (const std::string &coluna :
                 LinhasSql(arquivo, "SELECT name FROM pragma_table_info('" + tabela +
                                        "') WHERE name NOT IN ('Senha', 'Identificador', 'ChavePublica', "
                                        "'ChaveSecreta', 'Elo')")) {
                colunas += (colunas.empty() ? "quote(" : ", quote(") + coluna + ")";
            }
            despejo.push_back(tabela);
            const std::string onde = tabela == "HISTORICO" ? " WHERE Entidade NOT IN ('REGISTRO', 'USUARIO')" : "";
            for (std::string &linha :
                 LinhasSql(arquivo, "SELECT " + colunas + " FROM " + tabela + onde + " ORDER BY rowid")) {
                despejo.push_back(std::move(linha));
            }
        }
        return despejo;
    }

    QTemporaryDir pasta;
};

TEST_F(AmostraTeste, OfADay_IsRichAndTheSameTwice)
{
    std::vector<double> partes;
    const std::string arquivo = Faz("um", [&](double parte) { partes.push_back(parte); });
    EXPECT_TRUE(std::is_sorted(partes.begin(), partes.end()));
    EXPECT_LE(partes.back(), 1.0);

    const auto conta = [&](const std::string &oQue) {
        return std::stoi(LinhasSql(arquivo, "SELECT COUNT(" + oQue).at(0));
    };
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

    const auto um = Despejo(arquivo);
    const auto dois = Despejo(Faz("dois", [](double) {}));
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
