#include "controls/ztList.h"
#include "desk/windows/RenderLista.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

#include <QHeaderView>
#include <QTableView>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

// A list on the screen with a text, a number, a date that is marked as such and a date that is not.
class RenderListaTeste : public testing::Test {
  protected:
    RenderListaTeste()
    {
        form->Guarda(lista);
        lista->AlteraPrimeiraColuna(1, std::nullopt, "Nome", 2000, 0, "", true);
        lista->AdicionaColuna(2, std::nullopt, "Número", 2000, 0, "", true);
        lista->AdicionaColuna(3, std::nullopt, "Marcada", 2000, 0, "data", true);
        lista->AdicionaColuna(4, std::nullopt, "Sem marca", 2000, 0, "", true);
        janela.resize(900, 400);
        render = new RenderLista(
            lista, &janela, [](const std::function<void()> &acao) { acao(); }, [] {}, [] {});
        janela.show();
        render->Atualiza();
        tabela = janela.findChild<QTableView *>("linhas");
    }

    void Carrega(const std::vector<Textos> &linhas)
    {
        TabelaTexto dados(4);
        for (const Textos &linha : linhas) {
            const std::int32_t numero = dados.AdicionaLinha();
            for (std::size_t coluna = 0; coluna < linha.size(); ++coluna) {
                dados.Celula(static_cast<std::int32_t>(coluna) + 1, numero) = linha[coluna];
            }
        }
        lista->CarregaItens(dados);
    }
    void ClicaTitulo(int coluna)
    {
        const QHeaderView *titulos = tabela->horizontalHeader();
        QTest::mouseClick(titulos->viewport(), Qt::LeftButton, {},
                          {titulos->sectionViewportPosition(coluna) + titulos->sectionSize(coluna) / 2, 5});
    }
    Textos Coluna(int coluna) const
    {
        Textos textos;
        for (int linha = 0; linha < tabela->model()->rowCount(); ++linha) {
            textos.push_back(S(tabela->model()->index(linha, coluna).data().toString()));
        }
        return textos;
    }

    Ref<FormFalso> form = FormNaTela();
    Ref<ztList> lista = Feito<ztList>(form, Chamado<AjustesZtList>(""));
    QWidget janela;
    RenderLista *render = nullptr;
    QTableView *tabela = nullptr;
};

TEST_F(RenderListaTeste, Heading_OfAColumnMarkedData_SortsByDateWithEmptyOnesFirst)
{
    Carrega({{"a", "1", "31/01/2027", ""},
             {"b", "2", "01/12/2025", ""},
             {"c", "3", "", ""},
             {"d", "4", "15/06/2026", ""},
             {"e", "5", "02/01/2026", ""}});
    ClicaTitulo(2);
    EXPECT_EQ(Coluna(2), (Textos{"", "01/12/2025", "02/01/2026", "15/06/2026", "31/01/2027"}));
    EXPECT_EQ(Coluna(0), (Textos{"c", "b", "e", "d", "a"}));
    EXPECT_EQ(tabela->horizontalHeader()->sortIndicatorSection(), 2);
    ClicaTitulo(2);
    EXPECT_EQ(Coluna(2), (Textos{"31/01/2027", "15/06/2026", "02/01/2026", "01/12/2025", ""}));
    EXPECT_EQ(tabela->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(RenderListaTeste, Heading_OfAColumnWithoutTheMark_SortsDatesAsTexts)
{
    Carrega({{"a", "1", "", "31/01/2025"}, {"b", "2", "", "01/12/2027"}, {"c", "3", "", "15/06/2026"}});
    ClicaTitulo(3);
    EXPECT_EQ(Coluna(3), (Textos{"01/12/2027", "15/06/2026", "31/01/2025"}));
}

TEST_F(RenderListaTeste, Heading_OfTextsAndNumbers_SortsAccentsWithTheirLettersAndNumbersByValue)
{
    Carrega({{"Zona", "10", "", ""},
             {"ótica", "9", "", ""},
             {"Água", "100", "", ""},
             {"azul", "2", "", ""},
             {"Onda", "1", "", ""}});
    ClicaTitulo(0);
    EXPECT_EQ(Coluna(0), (Textos{"Água", "azul", "Onda", "ótica", "Zona"}));
    ClicaTitulo(1);
    EXPECT_EQ(Coluna(1), (Textos{"1", "2", "9", "10", "100"}));
}

TEST_F(RenderListaTeste, CurrentRow_AfterSorting_IsTheSameOne)
{
    Carrega({{"c", "", "", ""}, {"a", "", "", ""}, {"b", "", "", ""}});
    QTest::mouseClick(tabela->viewport(), Qt::LeftButton, {},
                      tabela->visualRect(tabela->model()->index(0, 0)).center());
    ASSERT_EQ(lista->ItemAtual(), 1);
    ClicaTitulo(0);
    EXPECT_EQ(tabela->currentIndex().row(), 2);
    EXPECT_EQ(S(tabela->currentIndex().siblingAtColumn(0).data().toString()), "c");
}

} // namespace
