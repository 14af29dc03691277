#include "tela/Arrumacao.h"

#include "controls/ztList.h"
#include "equipment/frmEquipDetalhes.h"
#include "host/IControlesPadrao.h"
#include "host/Texto.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/support/HostTeste.h"
#include "tests/support/RetratoForm.h"
#include "tests/tela/FormDescrito.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>

void PrintTo(const Retangulo &r, std::ostream *saida)
{
    *saida << "(" << r.X << ", " << r.Y << ") " << r.Largura << " x " << r.Altura;
}

namespace {

// Every character is 10 wide and 20 high.
class MedidorDeTeste : public IMedidor {
  public:
    Tamanho Mede(const std::string &texto, std::int32_t largura) const override
    {
        Tamanho tamanho;
        for (const std::string &linha : Divide(texto, "\n")) {
            const auto cabem = largura == 0 ? Len(linha) : static_cast<std::size_t>(largura / 10);
            const std::size_t linhas = cabem == 0 ? 1 : std::max<std::size_t>((Len(linha) + cabem - 1) / cabem, 1);
            tamanho.Largura = std::max(tamanho.Largura, static_cast<std::int32_t>(std::min(Len(linha), cabem)) * 10);
            tamanho.Altura += static_cast<std::int32_t>(linhas) * 20;
        }
        return tamanho;
    }
};

class ArrumacaoTest : public testing::Test {
  protected:
    // Margin 10, 5 between pieces, fields 28 high and 8 wider than their texts.
    ArrumacaoTest() { m_Folgas = {.Margem = 10, .EntrePecas = 5, .Campo = 8}; }

    // Draws the pieces in a window of the size that they need, or of the one given.
    void Desenha(Peca raiz, Tamanho disponivel = {})
    {
        m_Desenho.Raiz = std::move(raiz);
        m_Descrito.Faz(m_Desenho.Raiz);
        DeNovo(disponivel);
    }
    void DeNovo(Tamanho disponivel = {})
    {
        m_Lugares.clear();
        m_Arrumado = Arruma(m_Desenho, *m_Descrito.Form, m_Medidor, disponivel, m_Folgas);
        for (const PecaArrumada &peca : m_Arrumado.Pecas) {
            m_Lugares[peca.Quem->Nome] = peca;
        }
    }
    Retangulo Lugar(const std::string &nome) const
    {
        const auto achado = m_Lugares.find(nome);
        return achado == m_Lugares.end() ? Retangulo{} : achado->second.Lugar;
    }
    Retangulo Rotulo(const std::string &nome) const { return m_Lugares.at(nome).Rotulo; }
    Retangulo Miolo(const std::string &nome) const { return m_Lugares.at(nome).Miolo; }
    bool Vista(const std::string &nome) const { return m_Lugares.count(nome) != 0; }
    Ref<IControle> Controle(const std::string &nome) const { return m_Descrito.Controle(nome); }

    Folgas m_Folgas;
    Desenho m_Desenho;
    FormDescrito m_Descrito;
    FormArrumado m_Arrumado;

    MedidorDeTeste m_Medidor;
    std::map<std::string, PecaArrumada> m_Lugares;
};

TEST_F(ArrumacaoTest, List_IsNaturallyAsWideAsItsColumnsAndGivesWay)
{
    Desenha(EmColuna({{.Ajustes = AjustesZtList{}, .Nome = "lista"}}));
    EXPECT_EQ(m_Arrumado.Natural.Largura, 20 + 300);
    const auto lista = ComoTipo<ztList>(Controle("lista"));
    lista->AlteraPrimeiraColuna(1, std::nullopt, "A", 4500, 0, "", true);
    lista->AdicionaColuna(2, std::nullopt, "B", 3000, 0, "", false);
    lista->AdicionaColuna(3, std::nullopt, "C", 1500, 0, "", true);
    DeNovo();
    EXPECT_EQ(m_Arrumado.Natural.Largura, 20 + 300 + 12 + 100 + 12 + 120);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 20 + 300);
    lista->AdicionaColuna(4, std::nullopt, "D", 15000, 0, "", true);
    DeNovo();
    EXPECT_EQ(m_Arrumado.Natural.Largura, 20 + 640 + 120);
}

TEST_F(ArrumacaoTest, Column_PiecesStandOneBelowTheOtherAsWideAsTheirValues)
{
    Desenha(EmColuna({UmCampo("a", 4), UmCampo("b", 12)}));
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{10, 43, 128, 28}));
    EXPECT_EQ(m_Arrumado.Menor, (Tamanho{148, 81}));
}

TEST_F(ArrumacaoTest, Row_PiecesStandOneBehindTheOtherInTheMiddleOfItsHeight)
{
    Desenha(
        EmLinha({UmCampo("a", 4), {.Ajustes = AjustesCheckBox{}, .Nome = "b", .Caption = "&Sim"}, UmCampo("c", 2)}));
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{63, 14, 50, 20}));
    EXPECT_EQ(Lugar("c"), (Retangulo{118, 10, 28, 28}));
}

TEST_F(ArrumacaoTest, Row_TheTextBeforeAControl_StandsRightBeforeIt)
{
    Desenha(EmLinha({Rotulado(UmCampo("a", 2), "&Cód:"), UmCampo("b", 2)}));
    EXPECT_EQ(Rotulo("a"), (Retangulo{10, 14, 40, 20}));
    EXPECT_EQ(Lugar("a"), (Retangulo{55, 10, 28, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{88, 10, 28, 28}));
    EXPECT_EQ(Rotulo("b"), Retangulo{});
}

TEST_F(ArrumacaoTest, Row_ThoseWithALeft_StandInItsOrder)
{
    Desenha(EmLinha({UmCampo("antes", 1), PostoEm(UmQuadro("veloc", {UmCampo("a", 2)}), 100),
                     PostoEm(UmQuadro("via", {UmCampo("b", 2)}), 2000), UmCampo("fim", 1)}));
    EXPECT_LT(Lugar("antes").X, Lugar("veloc").X);
    EXPECT_LT(Lugar("veloc").X, Lugar("via").X);
    EXPECT_LT(Lugar("via").X, Lugar("fim").X);
    Controle("via")->DefineLeft(50);
    DeNovo();
    EXPECT_LT(Lugar("antes").X, Lugar("via").X);
    EXPECT_LT(Lugar("via").X, Lugar("veloc").X);
    EXPECT_LT(Lugar("veloc").X, Lugar("fim").X);
}

TEST_F(ArrumacaoTest, Hidden_LeavesItsPlaceToTheOneBehindIt)
{
    Desenha(EmColuna(
        {EmLinha({UmQuadro("veloc", {UmCampo("a", 2)}), UmQuadro("via", {UmCampo("b", 2)})}), UmCampo("c", 2)}));
    const Retangulo lugar = Lugar("veloc");
    const Retangulo depois = Lugar("c");
    Controle("veloc")->DefineVisible(false);
    DeNovo();
    EXPECT_FALSE(Vista("veloc"));
    EXPECT_FALSE(Vista("a"));
    EXPECT_EQ(Lugar("via"), lugar);
    EXPECT_EQ(Lugar("c"), depois);
    Controle("via")->DefineVisible(false);
    DeNovo();
    EXPECT_EQ(Lugar("c"), (Retangulo{10, 10, 28, 28}));
}

TEST_F(ArrumacaoTest, Grid_FieldsOfAllRows_BeginInTheSameColumn)
{
    Desenha(EmGrade({EmLinha({Rotulado(UmCampo("a", 4), "Código:"), Rotulado(UmCampo("b", 2), "X:")}),
                     EmLinha({Rotulado(UmCampo("c", 9), "Mais longo:"), Rotulado(UmCampo("d", 2), "Outro:")}),
                     EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "l", .Caption = "Label:"}, UmCampo("e", 1)})}));
    EXPECT_EQ(Rotulo("a").X, 10);
    EXPECT_EQ(Rotulo("c").X, 10);
    EXPECT_EQ(Lugar("l").X, 10);
    EXPECT_EQ(Lugar("a").X, 10 + 110 + 5);
    EXPECT_EQ(Lugar("c").X, Lugar("a").X);
    EXPECT_EQ(Lugar("e").X, Lugar("a").X);
    EXPECT_EQ(Rotulo("b").X, Rotulo("d").X);
    EXPECT_EQ(Lugar("b").X, Lugar("d").X);
    EXPECT_EQ(Lugar("a").Largura, 48);
    EXPECT_EQ(Lugar("c").Y, Lugar("a").Y + 33);
    EXPECT_EQ(Rotulo("a").Y, Lugar("a").Y + 4);
}

TEST_F(ArrumacaoTest, Grid_PieceOverSeveralColumns_WidensTheLastOnlyAsFarAsItMust)
{
    Peca larga = UmCampo("larga", 20);
    larga.Vao = 3;
    Desenha(EmGrade(
        {EmLinha({UmCampo("a", 2), UmCampo("b", 2), UmCampo("c", 2)}), EmLinha({larga}), EmLinha({UmCampo("d", 2)})}));
    EXPECT_EQ(Lugar("larga"), (Retangulo{10, 43, 208, 28}));
    EXPECT_EQ(Lugar("c").X, 10 + 2 * 33);
    EXPECT_EQ(Lugar("d").X, 10);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 228);
}

TEST_F(ArrumacaoTest, Grid_PieceOverAColumnOfItsOwn_HasTheDistanceBeforeItToo)
{
    Peca larga = UmCampo("larga", 20);
    larga.Vao = 2;
    Desenha(EmGrade({EmLinha({UmCampo("a", 2)}), EmLinha({larga})}));
    EXPECT_EQ(Lugar("larga"), (Retangulo{10, 43, 208, 28}));
    EXPECT_EQ(Lugar("a").Largura, 28);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 228);
}

TEST_F(ArrumacaoTest, Grid_ColumnOfHiddenPieces_TakesNoRoom)
{
    Desenha(EmGrade({EmLinha({UmCampo("a", 4), UmCampo("b", 2)}), EmLinha({UmCampo("c", 3), UmCampo("d", 2)})}));
    EXPECT_EQ(Lugar("b").X, 10 + 48 + 5);
    Controle("a")->DefineVisible(false);
    Controle("c")->DefineVisible(false);
    DeNovo();
    EXPECT_EQ(Lugar("b").X, 10);
    EXPECT_EQ(Lugar("d").X, 10);
}

TEST_F(ArrumacaoTest, Grid_HiddenPieceOrRow_LeavesTheOthersInLine)
{
    Desenha(EmGrade({EmLinha({Rotulado(UmCampo("a", 2), "A:"), Rotulado(UmCampo("b", 2), "B:")}),
                     EmLinha({Rotulado(UmCampo("c", 2), "Bem mais longo:")}),
                     EmLinha({Rotulado(UmCampo("d", 2), "D:"), Rotulado(UmCampo("e", 2), "E:")})}));
    Controle("c")->DefineVisible(false);
    Controle("d")->DefineVisible(false);
    DeNovo();
    EXPECT_EQ(Lugar("a").X, 10 + 20 + 5);
    EXPECT_EQ(Lugar("e").X, Lugar("b").X);
    EXPECT_EQ(Lugar("e").Y, Lugar("b").Y + 33);
    EXPECT_FALSE(Vista("d"));
}

TEST_F(ArrumacaoTest, Elastic_TakesTheRoomThatIsLeft)
{
    Desenha(EmColuna({Elastica({.Ajustes = AjustesZtList{}, .Nome = "lista"}),
                      EmLinha({UmBotao("ok", "&OK"), Mola(), UmBotao("cancelar", "Cancelar")}),
                      EmLinha({UmCampo("fixo", 2), Elastica(UmCampo("resto", 2))})}),
            {600, 500});
    EXPECT_EQ(Lugar("lista"), (Retangulo{10, 10, 580, 480 - 2 * 33}));
    EXPECT_EQ(Lugar("ok").X, 10);
    EXPECT_EQ(Lugar("cancelar").X + Lugar("cancelar").Largura, 590);
    EXPECT_EQ(Lugar("resto"), (Retangulo{43, 462, 547, 28}));
    EXPECT_EQ(Lugar("fixo").Largura, 28);
}

TEST_F(ArrumacaoTest, Elastic_SeveralOfThem_ShareTheRoom)
{
    Desenha(EmLinha({Elastica(UmCampo("a", 1)), Elastica(UmCampo("b", 1))}), {10 + 18 + 5 + 18 + 10 + 7, 0});
    EXPECT_EQ(Lugar("a").Largura, 22);
    EXPECT_EQ(Lugar("b").Largura, 21);
    EXPECT_EQ(Lugar("b").X, 10 + 22 + 5);
}

TEST_F(ArrumacaoTest, Elastic_ColumnOfAGrid_TakesTheRoomOfItsGrid)
{
    Desenha(EmGrade({EmLinha({Rotulado(UmCampo("a", 2), "A:"), Elastica(UmCampo("b", 2))}),
                     EmLinha({Rotulado(UmCampo("c", 2), "C:"), UmCampo("d", 2)})}),
            {300, 0});
    EXPECT_EQ(Lugar("b").X + Lugar("b").Largura, 290);
    EXPECT_EQ(Lugar("d").Largura, 28);
    EXPECT_EQ(Lugar("d").X, Lugar("b").X);
}

TEST_F(ArrumacaoTest, Elastic_RowOfAGrid_TakesTheHeightThatIsLeft)
{
    Desenha(EmGrade({EmLinha({UmCampo("a", 2)}), Elastica(EmLinha({UmQuadro("caixa", {UmCampo("b", 2)})})),
                     EmLinha({UmCampo("c", 2)})}),
            {300, 400});
    EXPECT_EQ(Lugar("a").Y, 10);
    EXPECT_EQ(Lugar("caixa").Y, 43);
    EXPECT_EQ(Lugar("caixa").Altura, 380 - 2 * 33);
    EXPECT_EQ(Lugar("c").Y, 390 - 28);
    Controle("caixa")->DefineVisible(false);
    DeNovo({300, 400});
    EXPECT_EQ(Lugar("c").Y, 43);
}

TEST_F(ArrumacaoTest, Box_ItsPiecesStandInsideBelowItsTitle)
{
    Desenha(UmQuadro("caixa", {UmCampo("a", 4)}));
    EXPECT_EQ(Lugar("caixa"), (Retangulo{10, 10, 68, 68}));
    EXPECT_EQ(Miolo("caixa"), (Retangulo{20, 40, 48, 28}));
    EXPECT_EQ(Lugar("a"), (Retangulo{20, 40, 48, 28}));
}

TEST_F(ArrumacaoTest, Box_WithoutContour_AddsNothing)
{
    Desenha(EmColuna({UmQuadro("caixa", {UmCampo("a", 4)}, false), UmCampo("b", 4)}));
    EXPECT_EQ(Lugar("a").X, Lugar("b").X);
    EXPECT_EQ(Lugar("a").Y, 10);
}

TEST_F(ArrumacaoTest, Pages_AreAsLargeAsTheLargest)
{
    Desenha({.Ajustes = AjustesSSTab{.Paginas = {"A", "B"}},
             .Nome = "abas",
             .Pecas = {EmColuna({UmCampo("a", 4)}), EmColuna({UmCampo("b", 2), UmCampo("c", 2)})}});
    EXPECT_EQ(Lugar("a").Y, Lugar("b").Y);
    EXPECT_EQ(Miolo("abas"), (Retangulo{20, 48, 48, 61}));
    EXPECT_EQ(Lugar("abas"), (Retangulo{10, 10, 68, 109}));
    EXPECT_EQ(Lugar("c"), (Retangulo{20, 81, 28, 28}));
}

TEST_F(ArrumacaoTest, Row_OfPiecesThatTellTheirWidth_KeepsTheDistanceThatTheyTell)
{
    Desenha(EmLinha({PostoEm(UmBotao("ok", "OK"), 0, 1200), PostoEm(UmBotao("cancelar", "Cancelar"), 1230, 1200)}));
    EXPECT_EQ(Lugar("ok"), (Retangulo{10, 10, 75, 28}));
    EXPECT_EQ(Lugar("cancelar").X, 10 + 75 + 2);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 10 + 75 + 2 + 104 + 10);
    Controle("ok")->DefineLeft(2430);
    DeNovo();
    EXPECT_EQ(Lugar("cancelar").X, 10);
    EXPECT_EQ(Lugar("ok").X, 10 + 104);
}

class ArrumacaoDaListaTest : public ArrumacaoTest {
  protected:
    // A list 480 x 380 at (10, 10), whose criteria frame takes 68 x 68. The search button is 106 wide.
    void DesenhaLista(AjustesZtList ajustes, std::vector<Peca> criterios)
    {
        Desenha(Elastica({.Ajustes = std::move(ajustes), .Nome = "lista", .Pecas = std::move(criterios)}), {500, 400});
        ASSERT_EQ(Lugar("lista"), (Retangulo{10, 10, 480, 380}));
    }
    static Peca Criterios()
    {
        Peca criterios = PostoEm(UmQuadro("criterios", {UmCampo("a", 4)}), 45);
        criterios.Height = 1500;
        return criterios;
    }
};

TEST_F(ArrumacaoDaListaTest, Criteria_StandAboveTheRowsWithTheSearchButtonBesideThem)
{
    DesenhaLista({.BarraCriteriosAtiva = true}, {EmLinha({UmCampo("a", 4)})});
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Miolo("lista"), (Retangulo{10, 43, 480, 347}));
    EXPECT_EQ(m_Lugares.at("lista").Localizar, (Retangulo{490 - 114, 10, 114, 28}));
}

TEST_F(ArrumacaoDaListaTest, CriteriaFrame_StandsWhereItIsToldInABarOfTheHeightTold)
{
    DesenhaLista({.BarraCriteriosAtiva = true, .BarraCriteriosAltura = 1620}, {Criterios()});
    EXPECT_EQ(Lugar("criterios"), (Retangulo{10 + 3, 10, 480 - 3 - 5 - 114, 68}));
    EXPECT_EQ(Miolo("lista"), (Retangulo{10, 10 + 68 + 8 + 5, 480, 380 - 81}));
    Controle("criterios")->DefineTop(60);
    DeNovo({500, 400});
    EXPECT_EQ(Lugar("criterios"), (Retangulo{10 + 3, 10 + 4, 480 - 3 - 5 - 114, 68}));
    EXPECT_EQ(Miolo("lista"), (Retangulo{10, 10 + 68 + 8 + 5, 480, 380 - 81}));
}

TEST_F(ArrumacaoDaListaTest, BarThatIsOffOrHoldsNothing_LeavesTheListToItsRows)
{
    DesenhaLista({}, {Criterios()});
    EXPECT_EQ(Miolo("lista"), Lugar("lista"));
    EXPECT_EQ(m_Lugares.at("lista").Localizar, Retangulo{});
    EXPECT_FALSE(Vista("criterios"));
    EXPECT_FALSE(Vista("a"));
    DesenhaLista({.BarraCriteriosAtiva = true}, {});
    EXPECT_EQ(Miolo("lista"), Lugar("lista"));
    EXPECT_EQ(m_Lugares.at("lista").Localizar, Retangulo{});
}

TEST_F(ArrumacaoTest, Labels_OfRowsOfAPage_EndAtOnePlaceWhateverFramesTheyAreIn)
{
    Desenha(EmColuna({EmLinha({UmTexto("l", "Um:"), UmCampo("a", 2)}),
                      UmQuadro("caixa", {EmLinha({Rotulado(UmCampo("b", 2), "Mais longo:")})}),
                      UmQuadro("picker", {{.Ajustes = AjustesZtEndereco{}, .Nome = "endereco"}}, false),
                      EmLinha({Rotulado(UmCampo("c", 2), "X:"), Rotulado(UmCampo("d", 2), "Y:")})}));
    constexpr std::int32_t Fim = 10 + 10 + 180; // "Logradouro ou CEP:", and the box's margin of the one beside it
    EXPECT_EQ(m_Lugares.at("endereco").LarguraDosRotulos, 180);
    EXPECT_EQ(Lugar("l").Largura, 180);
    EXPECT_EQ(Lugar("a").X, Fim - 10 + 5);
    EXPECT_EQ(Rotulo("b"), (Retangulo{20, Rotulo("b").Y, 170, 20}));
    EXPECT_EQ(Lugar("b").X, Lugar("a").X);
    EXPECT_EQ(Lugar("c").X, Lugar("a").X);
    EXPECT_EQ(Rotulo("d").Largura, 20);
}

TEST_F(ArrumacaoTest, Labels_OfAnotherPage_DoNotMoveThoseOfThisOne)
{
    Desenha({.Ajustes = AjustesSSTab{.Paginas = {"A", "B"}},
             .Nome = "abas",
             .Pecas = {UmQuadro("p", {EmLinha({Rotulado(UmCampo("a", 2), "A:")})}, false),
                       UmQuadro("q", {EmLinha({Rotulado(UmCampo("b", 2), "Longo:")})}, false)}});
    EXPECT_EQ(Lugar("a").X, 20 + 20 + 5);
    EXPECT_EQ(Lugar("b").X, 20 + 60 + 5);
}

TEST_F(ArrumacaoTest, FrameThatCannotBeSeenAndHoldsNothing_TakesNoRoom)
{
    Desenha(EmColuna({UmCampo("a", 2), UmQuadro("nada", {}, false), UmCampo("b", 2)}));
    EXPECT_FALSE(Vista("nada"));
    EXPECT_EQ(Lugar("b").Y, 10 + 28 + 5);
}

TEST_F(ArrumacaoTest, LongFields_GiveWayInLessThanTheirRoom)
{
    Desenha(EmColuna({EmLinha({UmCampo("a", 60), UmCampo("b", 40)}), EmLinha({UmCampo("c", 5)})}));
    EXPECT_EQ(m_Arrumado.Natural.Largura, 608 + 5 + 408 + 20);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 208 + 5 + 208 + 20);
    EXPECT_EQ(Lugar("a").Largura, 208);
    EXPECT_EQ(Lugar("b").Largura, 208);
    EXPECT_EQ(Lugar("c").Largura, 58);
    DeNovo({m_Arrumado.Natural.Largura - 60, 0});
    EXPECT_EQ(Lugar("a").Largura, 608 - 40);
    EXPECT_EQ(Lugar("b").Largura, 408 - 20);
    EXPECT_EQ(Lugar("b").X, 10 + 568 + 5);
    DeNovo({2000, 0});
    EXPECT_EQ(Lugar("a").Largura, 608);
    EXPECT_EQ(Lugar("b").Largura, 408);
}

TEST_F(ArrumacaoTest, LongFields_InAGrid_GiveWayWithTheirColumns)
{
    Peca larga = UmCampo("larga", 70);
    larga.Vao = 2;
    Desenha(EmGrade({EmLinha({UmCampo("a", 60), UmCampo("b", 10)}), EmLinha({larga})}));
    EXPECT_EQ(m_Arrumado.Natural.Largura, 20 + 608 + 5 + 108);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 20 + 208 + 5 + 108);
    EXPECT_EQ(Lugar("a").Largura, 208);
    EXPECT_EQ(Lugar("b"), (Retangulo{10 + 208 + 5, 10, 108, 28}));
    EXPECT_EQ(Lugar("larga").Largura, 208 + 5 + 108);
}

TEST_F(ArrumacaoTest, Widths_FollowWhatEachKindShows)
{
    Desenha(
        EmColuna({{.Ajustes = AjustesTextBox{.MaxLength = 7}, .Nome = "limite"},
                  {.Ajustes = AjustesTextBox{}, .Nome = "sem"},
                  {.Ajustes = AjustesZtMask{.MaxLength = 3}, .Nome = "mascara"},
                  {.Ajustes = AjustesZtMask{.Tipo = TipoMascara::Hora, .Mascara = "00:00"}, .Nome = "hora"},
                  {.Ajustes = AjustesZtData{}, .Nome = "data"},
                  {.Ajustes = AjustesZtCombo{.Conteudo = "Um|1??Dezessete|2??"}, .Nome = "combo"},
                  EmLinha({{.Ajustes = AjustesLabel{.Papel = PapelLabel::Valor}, .Nome = "valor", .Caracteres = 6}}),
                  {.Ajustes = AjustesZtVeiObservacao{.MaxLength = 9}, .Nome = "obs"},
                  {.Ajustes = AjustesCommonDialog{}, .Nome = "dialogo"},
                  {.Ajustes = AjustesImage{}, .Nome = "imagem"},
                  UmBotao("ok", "&OK"),
                  UmBotao("longo", "Um texto de botão")}));
    EXPECT_EQ(Lugar("limite").Largura, 78);
    EXPECT_EQ(Lugar("sem").Largura, 208);
    EXPECT_EQ(Lugar("mascara").Largura, 38);
    EXPECT_EQ(Lugar("hora").Largura, 58);
    EXPECT_EQ(Lugar("data").Largura, 108);
    EXPECT_EQ(Lugar("combo").Largura, 180 + 8 + 20);
    EXPECT_EQ(Lugar("valor"), (Retangulo{10, Lugar("valor").Y, 68, 28}));
    EXPECT_EQ(Lugar("obs").Largura, 98);
    EXPECT_FALSE(Vista("dialogo"));
    EXPECT_EQ(Lugar("imagem"), (Retangulo{10, Lugar("imagem").Y, 32, 32}));
    EXPECT_EQ(Lugar("ok").Largura, 75);
    EXPECT_EQ(Lugar("longo").Largura, 170 + 24);
    for (const std::int32_t letras : {19, 45, 60}) {
        ComoTipo<IztCombo>(Controle("combo"))->AdicionaItem(std::string(static_cast<std::size_t>(letras), 'n'));
        DeNovo({1000, 0});
        EXPECT_EQ(Lugar("combo").Largura, std::min(letras, 45) * 10 + 8 + 20);
    }
    DeNovo();
    EXPECT_EQ(Lugar("combo").Largura, 180 + 8 + 20);
    Controle("valor")->DefineCaption("Um valor mais longo");
    DeNovo();
    EXPECT_EQ(Lugar("valor").Largura, 190 + 8);
}

TEST_F(ArrumacaoTest, Combo_ThatIsElastic_AsksForTheRoomOfItsLongestItem)
{
    Desenha(
        EmLinha({Elastica({.Ajustes = AjustesZtCombo{.Conteudo = std::string(60, 'n') + "|1??"}, .Nome = "combo"})}));
    EXPECT_EQ(m_Arrumado.Natural.Largura, 20 + 600 + 8 + 20);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 20 + 180 + 8 + 20);
}

TEST_F(ArrumacaoTest, Column_WhatHasNoWidthOfItsOwn_FillsIt)
{
    Desenha(EmColuna({UmCampo("a", 12), UmTexto("valor", "1", PapelLabel::Valor), UmTexto("texto", "2")}));
    EXPECT_EQ(Lugar("valor").Largura, 128);
    EXPECT_EQ(Lugar("texto").Largura, 128);
    DeNovo({400, 0});
    EXPECT_EQ(Lugar("a").Largura, 128);
    EXPECT_EQ(Lugar("valor").Largura, 380);
}

TEST_F(ArrumacaoTest, Paragraph_TakesTheLinesThatItNeeds)
{
    Desenha(EmColuna({{.Ajustes = AjustesLabel{.Papel = PapelLabel::Paragrafo},
                       .Nome = "texto",
                       .Caption = "Dez letras e mais",
                       .Caracteres = 10},
                      UmCampo("a", 1)}));
    EXPECT_EQ(Lugar("texto"), (Retangulo{10, 10, 100, 40}));
    EXPECT_EQ(Lugar("a").Y, 55);
}

TEST_F(ArrumacaoTest, Captions_ThatChange_ChangeTheRoom)
{
    Desenha(EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "l", .Caption = "Um"}, UmCampo("a", 1)}));
    EXPECT_EQ(Lugar("a").X, 10 + 20 + 5);
    Controle("l")->DefineCaption("&Quatro");
    DeNovo();
    EXPECT_EQ(Lugar("a").X, 10 + 60 + 5);
}

TEST_F(ArrumacaoTest, Empty_DescriptionOrAllHidden_NeedsNothing)
{
    Desenha({});
    EXPECT_EQ(m_Arrumado.Menor, (Tamanho{20, 20}));
    EXPECT_TRUE(m_Arrumado.Pecas.empty());
    const auto semDesenho = Novo<FormFalso>();
    EXPECT_EQ(Arruma(semDesenho->Desenho(), *semDesenho, m_Medidor, {}, m_Folgas).Menor, (Tamanho{20, 20}));
    Desenha(EmColuna({UmCampo("a", 4)}));
    Controle("a")->DefineVisible(false);
    DeNovo({300, 300});
    EXPECT_EQ(m_Arrumado.Menor, (Tamanho{20, 20}));
    EXPECT_TRUE(m_Arrumado.Pecas.empty());
}

// The forms of the module: nothing is cut, and nothing lies over anything else of the same page.

bool Encontram(const Retangulo &a, const Retangulo &b)
{
    return a.Largura > 0 && b.Largura > 0 && a.X < b.X + b.Largura && b.X < a.X + a.Largura && a.Y < b.Y + b.Altura &&
           b.Y < a.Y + a.Altura;
}

bool Contem(const Retangulo &fora, const Retangulo &dentro)
{
    return dentro.X >= fora.X && dentro.Y >= fora.Y && dentro.X + dentro.Largura <= fora.X + fora.Largura &&
           dentro.Y + dentro.Altura <= fora.Y + fora.Altura;
}

// Whether one piece is inside the other, and whether two are on different pages of the same strip.
bool EstaEm(const Peca &dono, const Peca *procurada)
{
    return std::ranges::any_of(dono.Pecas,
                               [&](const Peca &peca) { return &peca == procurada || EstaEm(peca, procurada); });
}

bool EmOutraPagina(const Peca &raiz, const Peca *a, const Peca *b)
{
    if (raiz.Especie() == EspecieControle::SSTab) {
        for (const Peca &pagina : raiz.Pecas) {
            const bool comA = &pagina == a || EstaEm(pagina, a);
            const bool comB = &pagina == b || EstaEm(pagina, b);
            if (comA != comB && (comA || comB) && EstaEm(raiz, a) && EstaEm(raiz, b)) {
                return true;
            }
        }
    }
    return std::ranges::any_of(raiz.Pecas, [&](const Peca &peca) { return EmOutraPagina(peca, a, b); });
}

class ArrumacaoDosFormsTest : public HostTeste {
  protected:
    static void Confere(const Ref<IForm> &form, Tamanho disponivel)
    {
        SCOPED_TRACE(std::string(form->NomeTipo()));
        const Desenho desenho = form->Desenho();
        const FormArrumado arrumado = Arruma(desenho, *form, MedidorDeTeste(), disponivel);
        const Retangulo janela = {0, 0, std::max(disponivel.Largura, arrumado.Menor.Largura),
                                  std::max(disponivel.Altura, arrumado.Menor.Altura)};
        EXPECT_FALSE(arrumado.Pecas.empty());
        for (const PecaArrumada &a : arrumado.Pecas) {
            EXPECT_TRUE(Contem(janela, a.Lugar)) << a.Quem->Nome;
            EXPECT_TRUE(Contem(janela, a.Rotulo)) << a.Quem->Nome;
            EXPECT_FALSE(Encontram(a.Lugar, a.Rotulo)) << a.Quem->Nome;
            for (const PecaArrumada &b : arrumado.Pecas) {
                if (&a < &b && !EmOutraPagina(desenho.Raiz, a.Quem, b.Quem)) {
                    const bool dentro = EstaEm(*a.Quem, b.Quem);
                    EXPECT_TRUE(dentro ? Contem(a.Lugar, b.Lugar) : !Encontram(a.Lugar, b.Lugar))
                        << a.Quem->Nome << " and " << b.Quem->Nome;
                    EXPECT_TRUE(dentro || !Encontram(a.Rotulo, b.Lugar)) << a.Quem->Nome << " and " << b.Quem->Nome;
                    EXPECT_TRUE(dentro || !Encontram(a.Lugar, b.Rotulo)) << a.Quem->Nome << " and " << b.Quem->Nome;
                }
            }
        }
    }
};

TEST_F(ArrumacaoDosFormsTest, EveryForm_NothingIsCutAndNothingLiesOverAnythingElse)
{
    for (const Tamanho disponivel : {Tamanho{}, Tamanho{1280, 900}}) {
        for (const Ref<IForm> &form :
             std::vector<Ref<IForm>>{SoCarregada<frmLista>(), SoCarregada<frmEquipDetalhes>(),
                                     SoCarregada<frmEquipSensores>(), SoCarregada<frmEquipAfericoes>(),
                                     SoCarregada<frmLimitesDif>(), SoCarregada<frmLimitesDifDetalhes>()}) {
            Confere(form, disponivel);
        }
    }
}

} // namespace
