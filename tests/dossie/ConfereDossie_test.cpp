#include "dossie/ArquivoPDF.h"
#include "dossie/ConfereDossie.h"
#include "dossie/Fatos.h"
#include "dossie/Paginas.h"
#include "services/TextoQt.h"
#include "tests/dossie/CenarioDoDossie.h"
#include "tests/dossie/Desmonta.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace dossie;
using namespace mesa;

namespace {

class ConfereDossieTeste : public CenarioDoDossie {
  protected:
    ResultadoDaConferencia Confere(const QByteArray &arquivo) { return ConfereDossie(m_Ana).Confere(arquivo); }
    QByteArray FazUm() { return Faz(Pergunta(ComCertificado(Certificado(1)), DataDe(15, 3, 2026), 1430)); }
    void Corrige()
    {
        m_Registro.PassaSegundos(60);
        m_Ana->PerguntaMotivo([](const std::string &) { return "data lida errada"; });
        Abre(m_Ana, 1);
        Exigido(Pede(
            m_Ana, "altera",
            Poe(SoNumero(1), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::DataVencimento, DataDe(30, 6, 2026))))));
    }
};

TEST_F(ConfereDossieTeste, Confere_AsItWasMade_Agrees)
{
    const QByteArray arquivo = FazUm();
    const auto resultado = Confere(arquivo);
    EXPECT_EQ(resultado.Como, Situacao::Concorda) << resultado.Frase;
    EXPECT_EQ(resultado.Frase, "O dossiê está como foi feito e concorda com o registro.");
    EXPECT_EQ(resultado.Detalhes,
              std::vector<std::string>{"O dossiê foi emitido em 20/11/2026 às 10:00:00 por Ana Souza."});
    // Whoever else may look finds the same.
    EXPECT_EQ(ConfereDossie(m_Registro.Sessao("bruno")).Confere(arquivo).Como, Situacao::Concorda);
    const auto semSessao = ConfereDossie(nullptr).Confere(arquivo);
    EXPECT_EQ(semSessao.Como, Situacao::NaoConferido);
    EXPECT_EQ(semSessao.Frase, "O arquivo está como foi feito. O registro não foi consultado.");
}

TEST_F(ConfereDossieTeste, Confere_AfterACorrection_IsUnchangedAndNamesIt)
{
    const QByteArray arquivo = FazUm();
    const auto antes = Pergunta(1, DataDe(15, 3, 2026));
    antes->ConhecidoEm = m_Registro.Relogio;
    Corrige();
    const auto resultado = Confere(arquivo);
    EXPECT_EQ(resultado.Como, Situacao::SabeMais) << resultado.Frase;
    ASSERT_GE(resultado.Detalhes.size(), 2U);
    EXPECT_EQ(
        resultado.Detalhes[0],
        "20/11/2026 às 10:01:00, por Ana Souza, aferição 7311: data de vencimento: de 31/12/2026 para 30/06/2026; "
        "motivo: data lida errada.");
    // One that knew of it when it was made agrees, also when it asked for the time before.
    EXPECT_EQ(Confere(Faz(antes)).Como, Situacao::Concorda);
    EXPECT_EQ(Confere(Faz(Pergunta(1, DataDe(15, 3, 2026)))).Como, Situacao::Concorda);
}

TEST_F(ConfereDossieTeste, Confere_AnyOctetChanged_IsNoticed)
{
    const QByteArray arquivo = FazUm();
    const qsizetype passo = arquivo.size() / 3000 + 1;
    for (qsizetype onde = 0; onde < arquivo.size(); onde += onde < 200 ? 1 : passo) {
        QByteArray mudado = arquivo;
        mudado[onde] = static_cast<char>(mudado[onde] ^ 1);
        ASSERT_EQ(ConfereDossie(nullptr).Confere(mudado).Como, Situacao::Mudado) << onde;
    }
    for (const QByteArray &mudado : {arquivo.left(arquivo.size() - 1), arquivo + "\n", arquivo.left(300),
                                     arquivo.left(arquivo.size() / 2), arquivo + arquivo}) {
        EXPECT_EQ(Confere(mudado).Como, Situacao::Mudado);
    }
}

TEST_F(ConfereDossieTeste, Confere_ChangedUnderANewSeal_IsNoticed)
{
    const QByteArray arquivo = FazUm();
    ASSERT_EQ(Reselado(arquivo), arquivo);
    const auto troca = [&](const QByteArray &de, const QByteArray &para) {
        QByteArray mudado = arquivo;
        EXPECT_TRUE(mudado.contains(de)) << S(QString(de));
        return Confere(Reselado(mudado.replace(de, para)));
    };
    // The facts alone, the original alone, and whether there is one.
    EXPECT_EQ(troca("\"Codigo\": \"R-001\"", "\"Codigo\": \"R-002\"").Como, Situacao::Mudado);
    EXPECT_EQ(troca("\"EmitidoPor\": \"Ana Souza\"", "\"EmitidoPor\": \"Ivo Souza\"").Como, Situacao::Mudado);
    const QByteArray doOriginal = Certificado(1).mid(Certificado(1).size() / 2, 40);
    EXPECT_EQ(troca(doOriginal, QByteArray(doOriginal.size(), ' ')).Como, Situacao::Mudado);
    EXPECT_EQ(troca("\"dossie\": 1", "\"dossie\": 2").Como, Situacao::Mudado);
}

TEST_F(ConfereDossieTeste, Confere_MadeOfOtherFacts_DoesNotAgreeWithTheRegistry)
{
    const std::int32_t numero = ComCertificado(Certificado(1));
    const auto resultado = [&](const auto &muda, const QByteArray &certificado) {
        const auto prova = Prova(Pergunta(numero, DataDe(15, 3, 2026)));
        muda(*prova);
        return Confere(FazDossie::Monta(*prova, certificado, "", {}));
    };
    EXPECT_EQ(resultado([](ProvaED &) {}, Certificado(1)).Como, Situacao::Concorda);
    EXPECT_EQ(
        resultado([](ProvaED &p) { p.Vigente.Valor()->Item(1)->DataVencimento = DataDe(31, 12, 2027); }, Certificado(1))
            .Detalhes.front(),
        "O que o histórico diz até a entrada " + m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO") +
            " não é o que o dossiê diz.");
    EXPECT_EQ(resultado([](ProvaED &p) { p.EloDoCorte = std::string(64, 'a'); }, Certificado(1)).Como,
              Situacao::Discorda);
    EXPECT_EQ(resultado([](ProvaED &p) { p.Sha256DoDocumento = Resumo(Certificado(2)); }, Certificado(2)).Como,
              Situacao::Discorda);
    EXPECT_EQ(resultado([](ProvaED &p) { p.Identificador = "outro"; }, Certificado(1)).Frase,
              "O arquivo está como foi feito, e é de outro registro.");
    EXPECT_EQ(resultado([](ProvaED &p) { p.Corte = 1e9; }, Certificado(1)).Como, Situacao::NaoConferido);
    EXPECT_EQ(resultado([](ProvaED &p) { p.Equipamento.Valor()->Item(1)->NroIntEquip = 77; }, Certificado(1)).Como,
              Situacao::NaoConferido);
}

TEST_F(ConfereDossieTeste, Confere_WithoutTheRightOrOfAnotherClient_TellsWhatTheServicesTell)
{
    const QByteArray arquivo = FazUm();
    const auto resultado = ConfereDossie(m_Registro.Sessao("elisa")).Confere(arquivo);
    EXPECT_EQ(resultado.Como, Situacao::NaoConferido);
    EXPECT_EQ(resultado.Detalhes.front(),
              "O cliente Autoridade Municipal de Trânsito não tem equipamento de número interno 1.");
}

TEST_F(ConfereDossieTeste, Confere_WhatIsNoDossier_SaysSo)
{
    for (const QByteArray &outro : {QByteArray(), QByteArray("x"), QByteArray(5000, '\0'), Certificado(1)}) {
        const auto resultado = Confere(outro);
        EXPECT_EQ(resultado.Como, Situacao::NaoEDossie);
        EXPECT_EQ(resultado.Frase, "Este arquivo não é um dossiê do registro de equipamentos.");
    }
}

// The seal holds, and the rest is anything.
TEST_F(ConfereDossieTeste, Confere_HostileFilesUnderASeal_AreAnAnswer)
{
    const QByteArray arquivo = FazUm();
    std::mt19937 acaso(815);
    for (int vez = 0; vez < 150; ++vez) {
        QByteArray mudado = arquivo;
        for (int n = 0; n < 1 + vez % 12; ++n) {
            const auto onde = static_cast<qsizetype>(200 + acaso() % static_cast<unsigned>(mudado.size() - 200));
            if (vez % 3 == 0) {
                mudado.remove(onde, static_cast<qsizetype>(acaso() % 2000));
            } else {
                mudado[onde] = static_cast<char>(acaso());
            }
            if (mudado.size() < 1000) {
                break;
            }
        }
        const Situacao como = ConfereDossie(nullptr).Confere(Reselado(mudado)).Como;
        EXPECT_TRUE(como == Situacao::Mudado || como == Situacao::NaoConferido) << vez;
    }
    const QByteArray selo = "%PDF-1.7\n% Dossie do registro de equipamentos, selo: " + QByteArray(64, '0') + "\n";
    for (const QByteArray &resto : {QByteArray(), QByteArray("trailer << /Root 1 0 R >>"), QByteArray(100000, '['),
                                    QByteArray("1 0 obj << /Names 1 0 R >> endobj trailer << /Root 1 0 R >>")}) {
        EXPECT_EQ(Confere(Reselado(selo + resto)).Como, Situacao::Mudado);
    }
    for (const char *fatos :
         {"", "{", "[]", "null", "{\"dossie\":1}", "{\"dossie\":1,\"prova\":{},\"certificado\":{}}",
          "{\"dossie\":1,\"prova\":[],\"certificado\":{\"sha256\":\"\",\"falta\":\"\"}}",
          "{\"dossie\":1,\"prova\":{\"Dia\":1e300,\"Hora\":99999999999},\"certificado\":{\"sha256\":"
          "\"\",\"falta\":\"\"}}"}) {
        EXPECT_FALSE(LeFatos(fatos)) << fatos;
        EXPECT_EQ(Confere(MontaPDF(Certificado(1), {{NomeDosFatos, fatos, "application/json", "", "/Data"}}, "t",
                                   "20260101000000"))
                      .Como,
                  Situacao::Mudado)
            << fatos;
    }
    const QByteArray fundo(200000, '[');
    EXPECT_FALSE(LeFatos(fundo));
}

TEST_F(ConfereDossieTeste, ConfereArquivo_ThatCannotBeRead_SaysSo)
{
    QTemporaryDir pasta;
    const auto confere = [&](const QString &nome) {
        return ConfereDossie(m_Ana).ConfereArquivo(S(pasta.filePath(nome)));
    };
    EXPECT_EQ(confere("nenhum.pdf").Como, Situacao::NaoConferido);
    EXPECT_TRUE(confere("nenhum.pdf").Frase.starts_with("O arquivo não pôde ser lido: "));
    EXPECT_EQ(confere("").Como, Situacao::NaoConferido); // the directory
    const std::string caminho = S(pasta.filePath("dossiê.pdf"));
    FazDossie::Grava(FazUm(), caminho);
    EXPECT_EQ(ConfereDossie(m_Ana).ConfereArquivo(caminho).Como, Situacao::Concorda);
}

} // namespace
