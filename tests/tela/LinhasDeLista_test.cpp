#include "tela/LinhasDeLista.h"

#include "tests/controls/Tela.h"

#include <string>
#include <vector>

namespace {

class LinhasDeListaTest : public testing::Test {
  protected:
    Ref<ztList> Lista(const char *nome, std::int32_t linhas)
    {
        Ref<ztList> lista = m_Tela.Poe<ztList>(Chamado<AjustesZtList>(nome));
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", 1000, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Oculta", 0, 0, "", false);
        Traz(lista, linhas);
        return lista;
    }
    // Rows whose numbers fall.
    static void Traz(const Ref<ztList> &lista, std::int32_t linhas)
    {
        TabelaTexto tabela(2);
        for (std::int32_t n = 0; n < linhas; ++n) {
            const std::int32_t numero = tabela.AdicionaLinha();
            tabela.Celula(1, numero) = std::to_string(100000 - lista->NroItens() - n);
        }
        lista->CarregaItens(tabela);
    }
    // Pages of ten until there are so many.
    void TrazPaginas(const Ref<ztList> &lista, std::int32_t ate)
    {
        lista->DefineTemMais(true);
        m_Tela.Liga(lista->BotaoClick(), [lista, ate, this] {
            ++m_Pedidos;
            Traz(lista, 10);
            lista->DefineTemMais(lista->NroItens() < ate);
            lista->DefineItemAtual(lista->NroItens());
        });
    }
    TelaDaCarga Responde(bool sim, int segue = 1000)
    {
        return {[this, sim](const std::string &texto) {
                    m_Perguntas.push_back(texto);
                    return sim;
                },
                [this, segue](const std::string &texto) {
                    m_Andamento.push_back(texto);
                    return static_cast<int>(m_Andamento.size()) <= segue;
                }};
    }

    Tela m_Tela;
    Textos m_Perguntas;
    Textos m_Andamento;
    int m_Pedidos = 0;
};

TEST_F(LinhasDeListaTest, Rodape_SaysHowManyThereAreAndWhatIsSeenOfThem)
{
    EXPECT_EQ(RodapeDaLista(*Lista("ztlLista", 0)), "");
    EXPECT_EQ(RodapeDaLista(*Lista("ztlLista", 1)), "1 equipamento");
    EXPECT_EQ(RodapeDaLista(*Lista("ztListaSensor", 2)), "2 sensores");
    EXPECT_EQ(RodapeDaLista(*Lista("ztListaAfericao", 1)), "1 aferição");
    EXPECT_EQ(RodapeDaLista(*Lista("ztLista", 1234)), "1.234 registros");
    const Ref<ztList> lista = Lista("ztlLista", 120);
    lista->DefineTemMais(true);
    EXPECT_EQ(RodapeDaLista(*lista), "120 equipamentos; há mais");
    EXPECT_TRUE(lista->OrdenaPor(1));
    EXPECT_EQ(RodapeDaLista(*lista), "120 equipamentos; há mais; ordenados só os carregados");
    lista->Filtra("9999", {1});
    EXPECT_EQ(RodapeDaLista(*lista), "10 de 120 equipamentos; há mais; ordenados só os carregados");
    lista->DefineTemMais(false);
    lista->Filtra("nada", {1});
    EXPECT_EQ(RodapeDaLista(*lista), "0 de 120 equipamentos");
}

TEST_F(LinhasDeListaTest, Ordena_AListThatIsWhole_AsksNothing)
{
    const Ref<ztList> lista = Lista("ztlLista", 5);
    OrdenaLista(lista, 1, Responde(true));
    EXPECT_EQ(m_Perguntas, Textos{});
    EXPECT_EQ(lista->ColunaOrdem(), 1);
    OrdenaLista(lista, 2, Responde(true));
    EXPECT_EQ(lista->ColunaOrdem(), 1) << "by a column that is not for people";
}

TEST_F(LinhasDeListaTest, Ordena_AListThatHasMore_LoadsThemAllFirst)
{
    const Ref<ztList> lista = Lista("ztlLista", 10);
    lista->DefineItemAtual(3);
    TrazPaginas(lista, 40);
    OrdenaLista(lista, 1, Responde(true));
    EXPECT_EQ(m_Perguntas,
              Textos{"Só 10 equipamentos foram carregados, e há mais. Carregar os demais antes de ordenar?"});
    EXPECT_EQ(m_Andamento, (Textos{"10 equipamentos", "20 equipamentos", "30 equipamentos"}));
    EXPECT_EQ(lista->NroItens(), 40);
    EXPECT_EQ(lista->TextoCelula(1, 1), "99961");
    EXPECT_EQ(lista->ItemAtual(), 3) << "the person stays";
    EXPECT_EQ(RodapeDaLista(*lista), "40 equipamentos");
}

TEST_F(LinhasDeListaTest, Ordena_AfterNo_SortsWhatThereIsAndAsksAgainOnlyForOtherRows)
{
    const Ref<ztList> lista = Lista("ztListaAfericao", 1);
    TrazPaginas(lista, 40);
    OrdenaLista(lista, 1, Responde(false));
    OrdenaLista(lista, 1, Responde(false));
    EXPECT_EQ(m_Perguntas, Textos{"Só 1 aferição foi carregada, e há mais. Carregar as demais antes de ordenar?"});
    EXPECT_TRUE(lista->OrdemDecrescente());
    EXPECT_EQ(m_Pedidos, 0);
    EXPECT_EQ(RodapeDaLista(*lista), "1 aferição; há mais; ordenadas só as carregadas");
    lista->Limpa(false);
    Traz(lista, 10);
    lista->DefineTemMais(true);
    OrdenaLista(lista, 1, Responde(false));
    EXPECT_EQ(m_Perguntas.size(), 2U);
}

TEST_F(LinhasDeListaTest, Ordena_GivenUpOnTheWay_KeepsAndSortsWhatHasCome)
{
    const Ref<ztList> lista = Lista("ztlLista", 10);
    TrazPaginas(lista, 1000);
    OrdenaLista(lista, 1, Responde(true, 3));
    EXPECT_EQ(lista->NroItens(), 40);
    EXPECT_EQ(lista->TextoCelula(1, 1), "99961");
    EXPECT_EQ(RodapeDaLista(*lista), "40 equipamentos; há mais; ordenados só os carregados");
}

TEST_F(LinhasDeListaTest, Ordena_WhenNothingMoreComes_Stops)
{
    const Ref<ztList> lista = Lista("ztlLista", 10);
    lista->DefineTemMais(true);
    m_Tela.Liga(lista->BotaoClick(), [&] {
        if (++m_Pedidos < 3) { // the service refuses the third page
            Traz(lista, 10);
        }
    });
    OrdenaLista(lista, 1, Responde(true));
    EXPECT_EQ(m_Pedidos, 3);
    EXPECT_EQ(lista->NroItens(), 30);
    EXPECT_EQ(lista->ColunaOrdem(), 1);
}

TEST_F(LinhasDeListaTest, Ordena_WhenTheFormGoesOnTheWay_EndsInPeace)
{
    Ref<ztList> lista = Lista("ztlLista", 10);
    TrazPaginas(lista, 1000);
    const TelaDaCarga tela{[](const std::string &) { return true; },
                           [this](const std::string &) {
                               m_Tela.Solta();
                               return true;
                           }};
    OrdenaLista(lista, 1, tela);
    EXPECT_EQ(m_Pedidos, 0);
    EXPECT_EQ(lista->ColunaOrdem(), 0);
}

TEST_F(LinhasDeListaTest, OrdemLembrada_ReadAgain_SortsSo)
{
    const Ref<ztList> lista = Lista("ztlLista", 3);
    EXPECT_EQ(OrdemLembrada(*lista), "");
    lista->OrdenaPor(1);
    EXPECT_EQ(OrdemLembrada(*lista), "Código");
    lista->OrdenaPor(1);
    EXPECT_EQ(OrdemLembrada(*lista), "Código\t-");
    const Ref<ztList> outra = Lista("ztlLista", 3);
    LembraOrdem(*outra, OrdemLembrada(*lista));
    EXPECT_EQ(outra->ColunaOrdem(), 1);
    EXPECT_TRUE(outra->OrdemDecrescente());
}

TEST_F(LinhasDeListaTest, LembraOrdem_OfNonsense_SortsNothing)
{
    const Ref<ztList> lista = Lista("ztlLista", 3);
    for (const char *texto : {"", "\t-", "Outra", "Oculta", "\n", "Código-"}) {
        LembraOrdem(*lista, texto);
        EXPECT_EQ(lista->ColunaOrdem(), 0) << texto;
    }
}

} // namespace
