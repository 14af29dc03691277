#include "desk/host/Manual.h"

#include <QFile>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

class ManualTeste : public testing::Test {
  protected:
    Manual De(const char *texto)
    {
        documento.setMarkdown(texto);
        return Manual(documento);
    }
    Manual DoOperador()
    {
        QFile arquivo(":/docs/manual.md");
        EXPECT_TRUE(arquivo.open(QIODevice::ReadOnly));
        documento.setMarkdown(QString::fromUtf8(arquivo.readAll()));
        return Manual(documento);
    }
    // What is found, as it stands in the text.
    QStringList Achados(const Manual &manual, const char *texto) const
    {
        QStringList achados;
        for (const AchadoNoManual &achado : manual.Procura(texto)) {
            achados << documento.toRawText().mid(achado.Posicao, achado.Tamanho);
        }
        return achados;
    }

    QTextDocument documento;
};

TEST_F(ManualTeste, Headings_BecomeSectionsWithTheAnchorsThatLinksHave)
{
    const Manual manual =
        De("# Manual\n\nComeço.\n\n## A senha & você\n\nTexto.\n\n### Página Dados\n\n## Página Dados\n");
    ASSERT_EQ(manual.Secoes().size(), 4U);
    EXPECT_EQ(manual.Secoes()[0].Ancora, "manual");
    EXPECT_EQ(manual.Secoes()[0].Posicao, 0);
    EXPECT_EQ(manual.Secoes()[1].Titulo, "A senha & você");
    EXPECT_EQ(manual.Secoes()[1].Ancora, "a-senha--você");
    EXPECT_EQ(manual.Secoes()[1].Nivel, 2);
    EXPECT_EQ(manual.Secoes()[2].Ancora, "página-dados");
    EXPECT_EQ(manual.Secoes()[2].Nivel, 3);
    EXPECT_EQ(manual.Secoes()[3].Ancora, "página-dados-1");
    EXPECT_EQ(manual.SecaoDe("página-dados-1"), std::optional<std::size_t>(3));
    EXPECT_EQ(manual.SecaoDe("nada"), std::nullopt);
}

TEST_F(ManualTeste, Position_StandsInTheLastSectionThatBeginsBeforeIt)
{
    const Manual manual = De("Antes.\n\n# Um\n\nTexto.\n\n# Dois\n\nTexto.\n");
    EXPECT_EQ(manual.SecaoEm(0), std::nullopt);
    EXPECT_EQ(manual.SecaoEm(manual.Secoes()[0].Posicao), std::optional<std::size_t>(0));
    EXPECT_EQ(manual.SecaoEm(manual.Secoes()[1].Posicao - 1), std::optional<std::size_t>(0));
    EXPECT_EQ(manual.SecaoEm(1000), std::optional<std::size_t>(1));
}

TEST_F(ManualTeste, Search_DoesNotMindAccentsCaseOrBlanks)
{
    const Manual manual = De("# Aferição\n\nA AFERIÇÃO vence; a afericao\nvigente não.\n");
    EXPECT_EQ(Achados(manual, "aferiçao"), (QStringList{"Aferição", "AFERIÇÃO", "afericao"}));
    EXPECT_EQ(Achados(manual, "  Aferição   VIGENTE "), (QStringList{"afericao vigente"}));
    // Typed as a letter and the accent after it.
    EXPECT_EQ(Achados(manual, "aferic\u0327a\u0303o").size(), 3);
}

TEST_F(ManualTeste, Search_TakesEveryCharacterAsItIs)
{
    const Manual manual = De("Um .* e um (2) e C:\\\\dados e 100%.\n");
    EXPECT_EQ(Achados(manual, ".*"), QStringList{".*"});
    EXPECT_EQ(Achados(manual, "(2)"), QStringList{"(2)"});
    EXPECT_EQ(Achados(manual, "\\d"), QStringList{"\\d"});
    EXPECT_EQ(Achados(manual, "u.").size(), 0);
    EXPECT_EQ(Achados(manual, "[").size(), 0);
}

TEST_F(ManualTeste, Search_OfNothing_FindsNothing)
{
    const Manual manual = De("Um  texto.\n");
    EXPECT_TRUE(manual.Procura("").empty());
    EXPECT_TRUE(manual.Procura("  \t\n").empty());
    EXPECT_TRUE(De("").Procura("a").empty());
}

TEST_F(ManualTeste, Search_FindsNoPlaceTwice)
{
    EXPECT_EQ(Achados(De("aaaa\n"), "aa"), (QStringList{"aa", "aa"}));
}

TEST_F(ManualTeste, Excerpt_IsOneLineAroundTheFind)
{
    const Manual manual = De("# Título\n\n![Figura](nada.png)\n\n| a | b |\n|---|---|\n| achado | fim |\n");
    const auto achados = manual.Procura("achado");
    ASSERT_EQ(achados.size(), 1U);
    EXPECT_EQ(manual.Trecho(achados.front()), "Título a b achado fim");
}

TEST_F(ManualTeste, Place_HoldsWhenTheManualBeforeItGrows)
{
    const Manual antes = De("# Um\n\nTexto.\n\n# Dois\n\nMais texto.\n");
    const std::string lugar = antes.Lugar(antes.Secoes()[1].Posicao + 6);
    EXPECT_EQ(lugar, "dois+6");
    const Manual depois = De("# Um\n\nTexto bem mais comprido.\n\n# Dois\n\nMais texto.\n");
    EXPECT_EQ(depois.PosicaoDe(lugar), depois.Secoes()[1].Posicao + 6);
    EXPECT_EQ(depois.PosicaoDe("dois+999"), depois.Secoes()[1].Posicao);
}

TEST_F(ManualTeste, Place_WithoutASense_IsNone)
{
    const Manual manual = De("# Um\n\nTexto.\n");
    for (const char *lugar : {"", "um", "+", "um+", "um+x", "um+-3", "outro+1", "um+99999999999999"}) {
        EXPECT_EQ(manual.PosicaoDe(lugar), std::nullopt) << lugar;
    }
    EXPECT_EQ(De("Sem títulos.\n").Lugar(3), "");
}

TEST_F(ManualTeste, Topics_LeadToSectionsThatThereAre)
{
    const Manual manual = DoOperador();
    for (const std::string &topico : Manual::Topicos()) {
        const QString ancora = Manual::AncoraDoTopico(topico);
        EXPECT_TRUE(manual.SecaoDe(ancora).has_value()) << topico << " -> " << ancora.toStdString();
    }
}

TEST_F(ManualTeste, Topic_OfAPageWithoutASection_IsThatOfItsWindow)
{
    EXPECT_EQ(Manual::AncoraDoTopico("frmEquipDetalhes.Sensores"), "sensores");
    EXPECT_EQ(Manual::AncoraDoTopico("frmLimitesDifDetalhes.Geral"), "limites-dias-e-horários");
    EXPECT_EQ(Manual::AncoraDoTopico("frmLista.um.dois"), "pesquisar");
    EXPECT_EQ(Manual::AncoraDoTopico("janelaQueNaoHa.pagina"), "");
    EXPECT_EQ(Manual::AncoraDoTopico(""), "");
}

TEST_F(ManualTeste, LinksAndPicturesOfTheManual_LeadSomewhere)
{
    const Manual manual = DoOperador();
    int ligacoes = 0;
    int figuras = 0;
    for (QTextBlock bloco = documento.begin(); bloco.isValid(); bloco = bloco.next()) {
        for (auto parte = bloco.begin(); !parte.atEnd(); ++parte) {
            const QTextCharFormat formato = parte.fragment().charFormat();
            if (formato.isImageFormat()) {
                const QString nome = formato.toImageFormat().name();
                EXPECT_TRUE(QFile::exists(":/docs/" + nome)) << nome.toStdString();
                ++figuras;
            } else if (formato.isAnchor()) {
                EXPECT_TRUE(manual.SecaoDe(formato.anchorHref().mid(1)).has_value())
                    << formato.anchorHref().toStdString();
                ++ligacoes;
            }
        }
    }
    EXPECT_GT(figuras, 15);
    EXPECT_GE(ligacoes, 3);
}

} // namespace
