#include "tela/ComandosDeLista.h"

#include "controls/CommandButton.h"
#include "host/TabelaTexto.h"
#include "tests/controls/Tela.h"

namespace {

class ComandosDeListaTest : public testing::Test {
  protected:
    Ref<ztList> Lista(std::int16_t tipoMenu = 2)
    {
        return m_Tela.Poe<ztList>(Chamado<AjustesZtList>("ztLista", {.TipoMenu = tipoMenu}));
    }
    void Botao(const std::string &caption)
    {
        auto ajustes = Chamado<AjustesCommandButton>("cmd" + caption);
        ajustes.Caption = caption;
        m_Tela.Poe<CommandButton>(ajustes);
    }
    static Textos Letras(const ztList &lista)
    {
        Textos letras;
        for (const ComandoDeLista &comando : BarraDaLista(lista).Comandos) {
            if (comando.Visivel) {
                letras.push_back(comando.NoMenu + "=" + comando.Letra);
            }
        }
        return letras;
    }
    static void Enche(const Ref<ztList> &lista, std::int32_t linhas)
    {
        TabelaTexto tabela(1);
        for (std::int32_t linha = 0; linha < linhas; ++linha) {
            tabela.Celula(1, tabela.AdicionaLinha()) = std::to_string(linha);
        }
        lista->CarregaItens(tabela);
    }

    Tela m_Tela;
};

TEST_F(ComandosDeListaTest, Barra_OfTheStandardMenu_EachCommandHasALetterOfItsOwn)
{
    const Ref<ztList> lista = Lista(3);
    const BarraDeLista barra = BarraDaLista(*lista);
    EXPECT_EQ(barra.Fechar, "&Fechar");
    EXPECT_EQ(barra.Ajuda, "&Ajuda");
    EXPECT_TRUE(barra.Visivel);
    // "e" leads to a menu of the main window, "l" to the search button, which does the same as the command, "a" to the
    // list's own help.
    EXPECT_EQ(Letras(*lista),
              (Textos{"&Novo=n", "E&ditar=d", "De&talhes=t", "E&xcluir=x", "&Localizar=l", "Atual&izar=i"}));
}

TEST_F(ComandosDeListaTest, Barra_OfAListWithCriteria_LeavesTheLetterOfTheSearchToItsButton)
{
    const Ref<ztList> lista = Lista(3);
    lista->BarraCriteriosAtiva(true);
    EXPECT_EQ(Letras(*lista)[4], "Localizar=");
}

TEST_F(ComandosDeListaTest, Barra_LettersOfTheForm_AreLeftToIt)
{
    const Ref<ztList> lista = Lista();
    Botao("&Nada");
    Botao("&Ficar");
    EXPECT_EQ(BarraDaLista(*lista).Fechar, "Fe&char");
    EXPECT_EQ(Letras(*lista).front(), "N&ovo=o");
}

TEST_F(ComandosDeListaTest, Barra_WhenACaptionOfTheFormChanges_GivesWay)
{
    const Ref<ztList> lista = Lista();
    Botao("&Cancelar");
    EXPECT_EQ(BarraDaLista(*lista).Fechar, "&Fechar");
    m_Tela.Form->Controles().back()->DefineCaption("&Fechar");
    EXPECT_EQ(BarraDaLista(*lista).Fechar, "Fe&char");
}

TEST_F(ComandosDeListaTest, Barra_HiddenCommands_KeepTheirLetterAndTheirPlace)
{
    const Ref<ztList> lista = Lista();
    lista->IncluiItensMenu({{"mnuReativar", "Novamente", "", "", false}});
    EXPECT_EQ(Letras(*lista).back(), "N&ovamente=o");
    lista->MenuVisivel("mnuZTLObjNovo", false);
    EXPECT_EQ(Letras(*lista).back(), "N&ovamente=o");
    const BarraDeLista barra = BarraDaLista(*lista);
    EXPECT_EQ(barra.Comandos.front().Chave, "mnuZTLObjNovo");
    EXPECT_FALSE(barra.Comandos.front().Visivel);
    EXPECT_EQ(barra.Comandos.front().Letra, "n");
}

TEST_F(ComandosDeListaTest, Barra_WhenTheModuleChangesACaption_EveryCommandKeepsItsLetter)
{
    const Ref<ztList> lista = Lista(3);
    lista->IncluiItensMenu({{"mnuReativar", "Reativar", "", "", true}, {"mnuRuas", "Ruas", "", "", false}});
    const Textos antes = Letras(*lista);
    EXPECT_EQ(antes[6], "Reati&var=v"); // "r" asks for more rows
    EXPECT_EQ(antes[7], "Rua&s=s");
    lista->MenuTexto("mnuReativar", "Desativar");
    EXPECT_EQ(Letras(*lista)[6], "Desati&var=v");
    lista->MenuTexto("mnuReativar", "Outra coisa");
    EXPECT_EQ(Letras(*lista)[6], "Outra coisa (&V)=v");
    EXPECT_EQ(Letras(*lista)[7], antes[7]);
}

TEST_F(ComandosDeListaTest, Barra_ButtonWithACaptionOfItsOwn_HasTheSameLetterOnTrimmedLines)
{
    const Ref<ztList> lista = Lista();
    lista->IncluiItensMenu({{"mnuLimites", "Limites Diferenciados", " Limites \r\n  Diferenc. ", "Dica", true}});
    const ComandoDeLista comando = BarraDaLista(*lista).Comandos.back();
    EXPECT_EQ(comando.NoMenu, "Limite&s Diferenciados");
    EXPECT_EQ(comando.Letra, "s"); // "l" searches, "d" edits, "i" is kept for Atualizar
    EXPECT_EQ(comando.NoBotao, "Limite&s\nDiferenc.");
    EXPECT_EQ(comando.Dica, "Dica");
    EXPECT_TRUE(comando.IniciaGrupo);
    EXPECT_TRUE(comando.Utilizavel);
    lista->MenuHabilitado("mnuLimites", false);
    EXPECT_FALSE(BarraDaLista(*lista).Comandos.back().Utilizavel);
    EXPECT_TRUE(BarraDaLista(*lista).Comandos.back().Visivel);
}

TEST_F(ComandosDeListaTest, Barra_OwnButtons_ShowWhenTheListHasThem)
{
    const Ref<ztList> lista = Lista();
    EXPECT_TRUE(BarraDaLista(*lista).ComBotoesProprios);
    lista->BotoesFecharAjuda(false);
    EXPECT_FALSE(BarraDaLista(*lista).ComBotoesProprios);
}

TEST_F(ComandosDeListaTest, Barra_OfAListWhoseFormHasEnded_StillHasLetters)
{
    const Ref<ztList> lista = Lista();
    m_Tela.Solta();
    EXPECT_EQ(Letras(*lista).front(), "&Novo=n");
}

TEST_F(ComandosDeListaTest, Ordens_AreTheColumnsOfTheHeadingUnderDigits)
{
    const Ref<ztList> lista = Lista();
    lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", 2000, 0, "", true);
    lista->AdicionaColuna(2, std::nullopt, "Número", 2000, 0, "", false);
    lista->AdicionaColuna(3, std::nullopt, "Estreita", 0, 0, "", true);
    lista->AdicionaColuna(4, std::nullopt, "Descrição", 2000, 0, "", true);
    EXPECT_FALSE(OrdensDaLista(*lista).Utilizavel);
    Enche(lista, 2);
    lista->OrdenaPor(4);
    const OrdensDeLista ordens = OrdensDaLista(*lista);
    EXPECT_EQ(ordens.Caption, "&Ordenar por");
    EXPECT_TRUE(ordens.Utilizavel);
    ASSERT_EQ(ordens.Colunas.size(), 3U);
    EXPECT_EQ(ordens.Colunas[0].Caption, "&1 Código");
    EXPECT_EQ(ordens.Colunas[0].Numero, 1);
    EXPECT_FALSE(ordens.Colunas[0].Atual);
    EXPECT_EQ(ordens.Colunas[1].Caption, "&2 Descrição");
    EXPECT_EQ(ordens.Colunas[1].Numero, 4);
    EXPECT_TRUE(ordens.Colunas[1].Atual);
    EXPECT_EQ(ordens.Colunas[2].Caption, "&0 Como vieram");
    EXPECT_EQ(ordens.Colunas[2].Numero, 0);
    EXPECT_FALSE(ordens.Colunas[2].Atual);
    EXPECT_TRUE(lista->OrdenaPor(0));
    EXPECT_TRUE(OrdensDaLista(*lista).Colunas[2].Atual);
}

TEST_F(ComandosDeListaTest, Ordens_WhenACommandHasTheLetter_TakeAnother)
{
    const Ref<ztList> lista = Lista();
    lista->IncluiItensMenu({{"mnuO", "Ocultar", "", "", false}});
    EXPECT_EQ(OrdensDaLista(*lista).Caption, "Ordenar &por");
}

TEST_F(ComandosDeListaTest, Ordens_WithoutAColumnInTheHeading_CannotBeUsed)
{
    const Ref<ztList> lista = Lista();
    lista->AlteraPrimeiraColuna(1, std::nullopt, "A", 2000, 0, "", false);
    Enche(lista, 1);
    EXPECT_FALSE(OrdensDaLista(*lista).Utilizavel);
}

TEST_F(ComandosDeListaTest, Entradas_HaveLettersThatTheMenuHasNotYet)
{
    const EntradasDeTabela livres = EntradasDaTabela({});
    EXPECT_EQ(livres.Copiar, "&Copiar");
    EXPECT_EQ(livres.CopiarTudo, "Copiar &tudo");
    EXPECT_EQ(livres.Imprimir, "&Imprimir lista...");
    EXPECT_EQ(livres.Exportar, "Exportar &lista...");
    EXPECT_EQ(livres.Colunas, "C&olunas");
    const EntradasDeTabela outras = EntradasDaTabela({"&Consultar", "&Ordenar por"});
    EXPECT_EQ(outras.Copiar, "Co&piar");
    EXPECT_EQ(outras.Colunas, "Co&lunas");
}

TEST_F(ComandosDeListaTest, LinhaDaTecla_LeadsToTheEnds)
{
    const Ref<ztList> lista = Lista();
    EXPECT_EQ(LinhaDaTecla(*lista, TeclaDeLista::Home), std::nullopt);
    EXPECT_EQ(LinhaDaTecla(*lista, TeclaDeLista::End), std::nullopt);
    Enche(lista, 3);
    EXPECT_EQ(LinhaDaTecla(*lista, TeclaDeLista::Home), 1);
    EXPECT_EQ(LinhaDaTecla(*lista, TeclaDeLista::End), 3);
}

} // namespace
