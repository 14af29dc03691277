#include "planilhas/Falhas.h"
#include "tests/planilhas/Arquivos.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

using namespace planilhas;

// What is written is read as it was, in each format.

namespace {

class IdaEVolta : public testing::TestWithParam<Formato> {
  protected:
    // The rows that come back of those that are written, below a header.
    std::vector<Linha> Volta(const std::vector<Linha> &linhas)
    {
        const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
        escritor->Folha("Equipamentos");
        escritor->Cabecalho({"Código", "=Nome"});
        for (const Linha &linha : linhas) {
            escritor->Escreve(linha);
        }
        escritor->Conclui();
        const auto leitor = AbreLeitor(m_Pasta / "tabela");
        std::vector<Linha> lidas;
        LinhaLida linha;
        EXPECT_TRUE(leitor->Le(linha));
        EXPECT_EQ(linha.Numero, 1U);
        EXPECT_EQ(linha.Celulas, (Linha{CelulaDeTexto("Código"), CelulaDeTexto("=Nome")}));
        while (leitor->Le(linha)) {
            lidas.resize(linha.Numero - 2);
            lidas.push_back(linha.Celulas);
        }
        return lidas;
    }

    Pasta m_Pasta;
};

Linha Textos(const std::vector<std::string> &textos)
{
    Linha linha;
    for (const std::string &texto : textos) {
        linha.push_back(CelulaDeTexto(texto));
    }
    return linha;
}

std::string NomeDoFormato(const testing::TestParamInfo<Formato> &caso)
{
    return caso.param == Formato::Csv ? "Csv" : caso.param == Formato::Xlsx ? "Xlsx" : "Ods";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Formatos, IdaEVolta, testing::Values(Formato::Csv, Formato::Xlsx, Formato::Ods),
                         NomeDoFormato);

TEST_P(IdaEVolta, write_AnyTexts_ComeBackTheSame)
{
    const std::vector<Linha> linhas{
        Textos({"simples", "acentuação çãé", "emoji \xF0\x9F\x9A\x97", "a;b,c\td"}),
        Textos({"=1+1", "+1", "-1", "@x", "\tx", "\nx", "'=x", "''-x", "'", "'a"}),
        Textos({"aspas \"duplas\" e 'simples'", "\"", "\"\"", "<b>&amp;</b>", "]]>", "&#10;"}),
        Textos({" antes", "depois ", "a  b   c", " ", "  ", "a \tb", "\t ", "a \nb", "\n\n", " \n "}),
        Textos({"linha 1\nlinha 2", "linha 1\r\nlinha 2", "\rx", "x\r", "x\n"}),
        Textos({"_x0041_", "_x000D_", "_x", "_xZZZZ_", "x_x0020_y", "_x005F_x0041_", "_x_x0041_", "_x00_x0041_"}),
        Textos({"007", "1,5", "1.5", "01/02/2024", "VERDADEIRO", "1E5", "#N/A", "NULL"}),
        Textos({"", "", "só a terceira"}),
        Linha{},
        Textos({"depois de uma linha vazia", "", "", "fim"}),
        Textos({std::string(30000, 'x') + "ç"}),
    };
    const std::vector<Linha> lidas = Volta(linhas);
    ASSERT_EQ(lidas.size(), linhas.size());
    for (std::size_t i = 0; i < linhas.size(); ++i) {
        ASSERT_EQ(lidas[i].size(), linhas[i].size()) << i;
        for (std::size_t j = 0; j < linhas[i].size(); ++j) {
            EXPECT_EQ(lidas[i][j].Texto, linhas[i][j].Texto) << i << " " << j;
            EXPECT_EQ(lidas[i][j], linhas[i][j]);
        }
    }
}

TEST_P(IdaEVolta, write_EveryType_ComesBackAsTheFormatKeepsIt)
{
    const Linha tipos{CelulaDeNumero("5.3"),
                      CelulaDeNumero("-60"),
                      CelulaDeNumero("123456789012345"),
                      CelulaDeNumero(0.1),
                      CelulaDeData(31, 1, 2024),
                      CelulaDeData(28, 2, 1900),
                      CelulaDeData(1, 3, 1900),
                      CelulaDeData(31, 12, 9999),
                      CelulaDeDataHora({31, 12, 2024, 23, 59, 59}),
                      CelulaDeDataHora({1, 1, 2024, 0, 0, 0}),
                      CelulaDeHora(8, 30, 15),
                      CelulaDeHora(0, 0, 0),
                      CelulaDeHora(100, 0, 1),
                      CelulaLogica(true),
                      CelulaLogica(false)};
    const std::vector<Linha> lidas = Volta({tipos});
    ASSERT_EQ(lidas.size(), 1U);
    if (GetParam() == Formato::Csv) {
        Linha textos;
        for (const Celula &celula : tipos) {
            textos.push_back(CelulaDeTexto(TextoDaCelula(celula)));
        }
        EXPECT_EQ(lidas[0], textos);
        EXPECT_EQ(lidas[0][0].Texto, "5,3");
        EXPECT_EQ(lidas[0][1].Texto, "-60");
        return;
    }
    EXPECT_EQ(lidas[0].size(), tipos.size());
    for (std::size_t i = 0; i < tipos.size(); ++i) {
        EXPECT_EQ(TextoDaCelula(lidas[0].at(i)), TextoDaCelula(tipos[i]));
        EXPECT_EQ(lidas[0][i], tipos[i]);
    }
}

TEST_P(IdaEVolta, write_WhatAFormatHasNoTypeFor_LosesNothing)
{
    const Linha especiais{CelulaDeNumero("12345678901234567890"), CelulaDeNumero("0.30000000000000004"),
                          CelulaDeData(31, 12, 1899), CelulaDeErro("#DIV/0!")};
    const std::vector<Linha> lidas = Volta({especiais});
    ASSERT_EQ(lidas.size(), 1U);
    ASSERT_EQ(lidas[0].size(), especiais.size());
    for (std::size_t i = 0; i < especiais.size(); ++i) {
        EXPECT_EQ(TextoDaCelula(lidas[0][i]), TextoDaCelula(especiais[i]));
    }
    EXPECT_EQ(lidas[0][0].Tipo, GetParam() == Formato::Ods ? TipoDeCelula::Numero : TipoDeCelula::Texto);
    EXPECT_EQ(lidas[0][2].Tipo, GetParam() == Formato::Ods ? TipoDeCelula::Data : TipoDeCelula::Texto);
}

TEST_P(IdaEVolta, write_AFormulasResult_IsWrittenAlone)
{
    Celula formula = CelulaDeNumero("7");
    formula.Formula = true;
    Celula vazia;
    vazia.Formula = true;
    const std::vector<Linha> lidas = Volta({{formula, vazia, CelulaDeTexto("fim")}});
    ASSERT_EQ(lidas.size(), 1U);
    EXPECT_FALSE(lidas[0][0].Formula);
    EXPECT_EQ(TextoDaCelula(lidas[0][0]), "7");
    EXPECT_TRUE(lidas[0][1].Nada());
}

TEST_P(IdaEVolta, write_WhatIsNoText_IsRefusedAndNothingStays)
{
    for (const std::string &texto : {std::string("\xE7"), std::string("a\0b", 3)}) {
        const Falha falha = FalhaDe([&] {
            const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
            escritor->Folha("x");
            escritor->Escreve({CelulaDeTexto(texto)});
        });
        EXPECT_EQ(falha.Numero, NumeroFalha::ArgumentoInvalido);
        EXPECT_TRUE(m_Pasta.Nomes().empty());
    }
}

TEST_P(IdaEVolta, write_NotConcluded_LeavesWhatWasThere)
{
    m_Pasta.Com("tabela", "antes");
    {
        const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
        escritor->Folha("x");
        escritor->Escreve({CelulaDeTexto("depois")});
    }
    EXPECT_EQ(m_Pasta.Nomes(), std::vector<std::string>{"tabela"});
    EXPECT_EQ(OctetosDe(m_Pasta / "tabela"), "antes");
}

TEST_P(IdaEVolta, write_ThroughLinks_ReplacesWhatTheyPointTo)
{
    std::filesystem::create_directory(m_Pasta / "pasta");
    m_Pasta.Com("pasta/real", "antes");
    std::filesystem::create_symlink("pasta/real", m_Pasta / "perto");
    std::filesystem::create_symlink(m_Pasta / "perto", m_Pasta / "tabela");
    EXPECT_EQ(Volta({Textos({"a"})}), std::vector<Linha>{Textos({"a"})});
    EXPECT_TRUE(std::filesystem::is_symlink(m_Pasta / "tabela"));
    EXPECT_TRUE(std::filesystem::is_symlink(m_Pasta / "perto"));
    EXPECT_EQ(OctetosDe(m_Pasta / "pasta" / "real"), OctetosDe(m_Pasta / "tabela"));
    EXPECT_EQ(m_Pasta.Nomes(), (std::vector<std::string>{"pasta", "perto", "tabela"}));
    std::filesystem::remove(m_Pasta / "pasta" / "real"); // the link points to what is not there yet
    EXPECT_EQ(Volta({Textos({"b"})}), std::vector<Linha>{Textos({"b"})});
    EXPECT_TRUE(std::filesystem::is_regular_file(m_Pasta / "pasta" / "real"));
    EXPECT_TRUE(std::filesystem::is_symlink(m_Pasta / "tabela"));
}

TEST_P(IdaEVolta, write_NotConcluded_PacksNothingAndClosesItsFiles)
{
    if (GetParam() == Formato::Csv) {
        GTEST_SKIP() << "a file of text is not packed";
    }
    const auto abertos = [] {
        const std::filesystem::directory_iterator todos("/proc/self/fd");
        return std::distance(begin(todos), end(todos));
    };
    const auto antes = abertos();
    auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
    escritor->Folha("x");
    escritor->Escreve({CelulaDeTexto("a")});
    escritor->Folha("y");
    ASSERT_EQ(m_Pasta.Nomes().size(), 1U);
    std::filesystem::create_hard_link(m_Pasta / m_Pasta.Nomes().front(), m_Pasta / "testemunha");
    escritor.reset();
    EXPECT_EQ(m_Pasta.Nomes(), std::vector<std::string>{"testemunha"});
    EXPECT_EQ(std::filesystem::file_size(m_Pasta / "testemunha"), 0U);
    EXPECT_EQ(abertos(), antes);
}

TEST_P(IdaEVolta, write_OverAFile_KeepsItsRights)
{
    using std::filesystem::perms;
    for (const perms direitos :
         {perms::owner_read | perms::owner_write,
          perms::owner_read | perms::owner_write | perms::group_read | perms::group_write | perms::others_read}) {
        std::filesystem::permissions(m_Pasta.Com("tabela", "antes"), direitos);
        Volta({Textos({"a"})});
        EXPECT_EQ(std::filesystem::status(m_Pasta / "tabela").permissions(), direitos);
    }
}

TEST_P(IdaEVolta, write_WhereNothingCanBeWritten_IsAFaultWithTheReason)
{
    EXPECT_EQ(FalhaDe([&] { FazEscritor(m_Pasta / "não há" / "tabela", GetParam()); }).Numero,
              NumeroFalha::ArquivoNaoEncontrado);
    EXPECT_TRUE(
        FalhaDe([&] { FazEscritor(m_Pasta / ".", GetParam()); }).Descricao.ends_with("é uma pasta, e não um arquivo."));
    std::filesystem::create_symlink("volta", m_Pasta / "volta");
    EXPECT_TRUE(FalhaDe([&] {
                    FazEscritor(m_Pasta / "volta", GetParam());
                }).Descricao.ends_with(": os atalhos do caminho apontam uns para os outros."));
    EXPECT_TRUE(FalhaDe([&] {
                    FazEscritor(m_Pasta / std::string(300, 'a'), GetParam());
                }).Descricao.ends_with(": o nome é longo demais."));
    ASSERT_EQ(mkfifo((m_Pasta / "canal").c_str(), 0600), 0);
    EXPECT_TRUE(FalhaDe([&] {
                    FazEscritor(m_Pasta / "canal", GetParam());
                }).Descricao.ends_with(": é um canal ou um dispositivo, e não um arquivo."));
}

TEST_P(IdaEVolta, write_ControlCharacters_AreKeptOrRefused)
{
    const Linha controle = Textos({"a\x01"
                                   "b\x1F",
                                   "\x02_x0041_", "\xEF\xBF\xBE e \xEF\xBF\xBF"});
    if (GetParam() == Formato::Ods) {
        EXPECT_EQ(FalhaDe([&] { Volta({controle}); }).Descricao,
                  "Um texto da tabela tem um caractere de controle, que uma planilha ODS não guarda.");
        return;
    }
    EXPECT_EQ(Volta({controle}), std::vector<Linha>{controle});
}

// Sheets of their own, in the formats that have them.
TEST_P(IdaEVolta, write_TwoSheets_EachIsReadByItsNumber)
{
    const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
    escritor->Folha("Primeira & única");
    escritor->Escreve({CelulaDeTexto("a")});
    if (GetParam() == Formato::Csv) {
        EXPECT_EQ(FalhaDe([&] { escritor->Folha("Outra"); }).Descricao, "Um arquivo CSV tem uma folha só.");
        return;
    }
    for (const char *nome : {"", "a/b", "'a", "PRIMEIRA & ÚNICA", "um nome com mais de trinta e um caracteres"}) {
        EXPECT_EQ(FalhaDe([&] { escritor->Folha(nome); }).Numero, NumeroFalha::ArgumentoInvalido) << nome;
    }
    escritor->Folha("Segunda");
    escritor->Escreve({});
    escritor->Escreve({CelulaDeTexto("b")});
    escritor->Conclui();
    const auto leitor = AbreLeitor(m_Pasta / "tabela");
    EXPECT_EQ(leitor->Folhas(), (std::vector<std::string>{"Primeira & única", "Segunda"}));
    EXPECT_EQ(Linhas(*leitor), std::vector<std::string>{"1|T:a"});
    leitor->Escolhe(1);
    EXPECT_EQ(Linhas(*leitor), std::vector<std::string>{"2|T:b"});
    leitor->Escolhe(0);
    EXPECT_EQ(Linhas(*leitor), std::vector<std::string>{"1|T:a"});
    EXPECT_EQ(FalhaDe([&] { leitor->Escolhe(2); }).Numero, NumeroFalha::SubscritoForaDoIntervalo);
}

TEST_P(IdaEVolta, write_OfASpreadsheetWithoutASheet_IsRefused)
{
    const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
    if (GetParam() == Formato::Csv) { // a text needs none
        escritor->Escreve({CelulaDeTexto("a")});
        escritor->Conclui();
        EXPECT_EQ(OctetosDe(m_Pasta / "tabela"), "\xEF\xBB\xBF"
                                                 "a\r\n");
        return;
    }
    EXPECT_EQ(FalhaDe([&] { escritor->Escreve({}); }).Descricao, "A planilha ainda não tem uma folha.");
    EXPECT_EQ(FalhaDe([&] { escritor->Conclui(); }).Descricao, "A planilha ainda não tem uma folha.");
}
