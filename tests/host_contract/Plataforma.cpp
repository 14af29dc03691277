#include "tests/host_contract/ContratoHost.h"

namespace {

TEST_P(ContratoHost, Plataforma_Ponteiro_KeepsWhatIsWritten)
{
    EXPECT_EQ(Plataforma()->Ponteiro(), PonteiroNormal);
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    EXPECT_EQ(Plataforma()->Ponteiro(), PonteiroAmpulheta);
    Plataforma()->DefinePonteiro(PonteiroAmpulheta); // not counted
    Plataforma()->DefinePonteiro(PonteiroNormal);
    EXPECT_EQ(Plataforma()->Ponteiro(), PonteiroNormal);
}

TEST_P(ContratoHost, Plataforma_Screen_HasASizeAndAQueueThatReturns)
{
    EXPECT_GT(Plataforma()->LarguraTela(), 0);
    EXPECT_GT(Plataforma()->AlturaTela(), 0);
    Plataforma()->ProcessaMensagens();
}

TEST_P(ContratoHost, Plataforma_Aplicacao_NamesTheComponent)
{
    EXPECT_EQ(Plataforma()->Aplicacao()->Nome(), "ZTAVOREQUIP");
    EXPECT_FALSE(Plataforma()->Aplicacao()->Titulo().empty());
}

TEST_P(ContratoHost, Plataforma_PerguntaSimNao_GivesThePersonsAnswer)
{
    adaptador->RespondePergunta("Confirma?", true);
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Confirma?", "Atenção", false));
    adaptador->RespondePergunta("Confirma?", false);
    EXPECT_FALSE(Plataforma()->PerguntaSimNao("Confirma?", "Atenção", true));
}

TEST_P(ContratoHost, Plataforma_PerguntaSimNao_AnsweredWithEnter_IsTheDefault)
{
    adaptador->RespondePergunta("Confirma?", std::nullopt);
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Confirma?", "Atenção", true));
    adaptador->RespondePergunta("Confirma?", std::nullopt);
    EXPECT_FALSE(Plataforma()->PerguntaSimNao("Confirma?", "Atenção", false));
}

TEST_P(ContratoHost, Plataforma_CaixaInformacao_ReturnsWhenItIsClosed)
{
    adaptador->FechaProximaCaixa();
    Plataforma()->CaixaInformacao("Não foi possivel", "Atenção");
}

TEST_P(ContratoHost, Plataforma_Agora_IsADayOfTheCalendarThatDoesNotGoBack)
{
    const Data antes = Plataforma()->Agora();
    EXPECT_GT(antes, DataDe(1, 1, 2020));
    EXPECT_GE(Plataforma()->Agora(), antes);
}

TEST_P(ContratoHost, Plataforma_DataCurta_CanBeReadBack)
{
    EXPECT_EQ(CDate(Plataforma()->DataCurta(DataDe(5, 3, 2026))), DataDe(5, 3, 2026));
    EXPECT_EQ(Plataforma()->DataCurta(DataDe(5, 3, 2026)), "05/03/2026");
}

TEST_P(ContratoHost, Plataforma_TemIcone_OfAKeyThatNobodyHas_IsFalse)
{
    EXPECT_FALSE(Plataforma()->TemIcone("chave que não existe"));
    EXPECT_TRUE(Plataforma()->TemIcone("Equipamentos"));
}

TEST_P(ContratoHost, Plataforma_CaminhoModulo_IsADirectoryToWriteIn)
{
    const std::string caminho = Plataforma()->CaminhoModulo();
    ASSERT_FALSE(caminho.empty());
    EXPECT_NE(caminho.back(), '\\');
    const std::string arquivo = caminho + "\\CONTRATO.TMP";
    Plataforma()->GravaArquivo(arquivo, {1});
    EXPECT_TRUE(Plataforma()->ExisteArquivo(arquivo));
    Plataforma()->ApagaArquivo(arquivo);
    EXPECT_FALSE(Plataforma()->ExisteArquivo(arquivo));
}

} // namespace
