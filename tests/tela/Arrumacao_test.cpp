#include "tela/Arrumacao.h"

#include "controls/FabricaControles.h"
#include "equipment/frmEquipDetalhes.h"
#include "host/IControlesPadrao.h"
#include "host/Texto.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/support/FormFalso.h"
#include "tests/support/HostTeste.h"
#include "tests/support/RetratoForm.h"

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

Peca Campo(const std::string &nome, std::int16_t caracteres)
{
    return {.Ajustes = AjustesTextBox{}, .Nome = nome, .Caracteres = caracteres};
}

Peca Rotulado(Peca peca, const std::string &rotulo)
{
    peca.Rotulo = rotulo;
    return peca;
}

Peca Elastica(Peca peca)
{
    peca.Elastica = true;
    return peca;
}

Peca Botao(const std::string &nome, const std::string &caption)
{
    return {.Ajustes = AjustesCommandButton{}, .Nome = nome, .Caption = caption};
}

Peca Quadro(const std::string &nome, std::vector<Peca> pecas, bool contorno = true)
{
    return {.Ajustes = AjustesZtFrame{.Contorno = contorno}, .Nome = nome, .Caption = "Q", .Pecas = std::move(pecas)};
}

class ArrumacaoTest : public testing::Test {
  protected:
    // Margin 10, 5 between pieces, fields 28 high and 8 wider than their texts.
    ArrumacaoTest() { m_Folgas = {.Margem = 10, .EntrePecas = 5, .Campo = 8}; }

    // Draws the pieces in a window of the size that they need, or of the one given.
    void Desenha(Peca raiz, Tamanho disponivel = {})
    {
        m_Desenho.Raiz = std::move(raiz);
        Faz(m_Desenho.Raiz, nullptr, -1);
        DeNovo(disponivel);
    }
    void DeNovo(Tamanho disponivel = {})
    {
        m_Lugares.clear();
        m_Arrumado = Arruma(m_Desenho, *m_Form, m_Medidor, disponivel, m_Folgas);
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
    Ref<IControle> Controle(const std::string &nome) const
    {
        for (const Ref<IControle> &controle : m_Form->Controles()) {
            if (controle->Nome() == nome) {
                return controle;
            }
        }
        throw std::runtime_error(nome);
    }

    Folgas m_Folgas;
    Desenho m_Desenho;
    Ref<FormFalso> m_Form = FormNaTela();
    FormArrumado m_Arrumado;

  private:
    void Faz(const Peca &peca, const Ref<IControle> &container, std::int16_t pagina)
    {
        Ref<IControle> dono = container;
        if (peca.Especie()) {
            dono = m_Form->Guarda(m_Fabrica.Cria(m_Form, peca, container, pagina));
        }
        const bool abas = peca.Especie() == EspecieControle::SSTab;
        for (std::size_t i = 0; i < peca.Pecas.size(); ++i) {
            Faz(peca.Pecas[i], dono, abas ? static_cast<std::int16_t>(i) : peca.Especie() ? std::int16_t{-1} : pagina);
        }
    }

    FabricaControles m_Fabrica;
    MedidorDeTeste m_Medidor;
    std::map<std::string, PecaArrumada> m_Lugares;
};

TEST_F(ArrumacaoTest, Column_PiecesStandOneBelowTheOtherAsWideAsTheirValues)
{
    Desenha(EmColuna({Campo("a", 4), Campo("b", 12)}));
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{10, 43, 128, 28}));
    EXPECT_EQ(m_Arrumado.Menor, (Tamanho{148, 81}));
}

TEST_F(ArrumacaoTest, Row_PiecesStandOneBehindTheOtherInTheMiddleOfItsHeight)
{
    Desenha(EmLinha({Campo("a", 4), {.Ajustes = AjustesCheckBox{}, .Nome = "b", .Caption = "&Sim"}, Campo("c", 2)}));
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{63, 14, 50, 20}));
    EXPECT_EQ(Lugar("c"), (Retangulo{118, 10, 28, 28}));
}

TEST_F(ArrumacaoTest, Row_TheTextBeforeAControl_StandsRightBeforeIt)
{
    Desenha(EmLinha({Rotulado(Campo("a", 2), "&Cód:"), Campo("b", 2)}));
    EXPECT_EQ(Rotulo("a"), (Retangulo{10, 14, 40, 20}));
    EXPECT_EQ(Lugar("a"), (Retangulo{55, 10, 28, 28}));
    EXPECT_EQ(Lugar("b"), (Retangulo{88, 10, 28, 28}));
    EXPECT_EQ(Rotulo("b"), Retangulo{});
}

TEST_F(ArrumacaoTest, Row_ThoseWithALeft_StandInItsOrder)
{
    Peca velocidade = Quadro("veloc", {Campo("a", 2)});
    velocidade.Left = 100;
    Peca via = Quadro("via", {Campo("b", 2)});
    via.Left = 2000;
    Desenha(EmLinha({Campo("antes", 1), velocidade, via, Campo("fim", 1)}));
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
    Desenha(EmColuna({EmLinha({Quadro("veloc", {Campo("a", 2)}), Quadro("via", {Campo("b", 2)})}), Campo("c", 2)}));
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
    Desenha(EmGrade({EmLinha({Rotulado(Campo("a", 4), "Código:"), Rotulado(Campo("b", 2), "X:")}),
                     EmLinha({Rotulado(Campo("c", 9), "Mais longo:"), Rotulado(Campo("d", 2), "Outro:")}),
                     EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "l", .Caption = "Label:"}, Campo("e", 1)})}));
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
    Peca larga = Campo("larga", 20);
    larga.Vao = 3;
    Desenha(
        EmGrade({EmLinha({Campo("a", 2), Campo("b", 2), Campo("c", 2)}), EmLinha({larga}), EmLinha({Campo("d", 2)})}));
    EXPECT_EQ(Lugar("larga"), (Retangulo{10, 43, 208, 28}));
    EXPECT_EQ(Lugar("c").X, 10 + 2 * 33);
    EXPECT_EQ(Lugar("d").X, 10);
    EXPECT_EQ(m_Arrumado.Menor.Largura, 228);
}

TEST_F(ArrumacaoTest, Grid_HiddenPieceOrRow_LeavesTheOthersInLine)
{
    Desenha(EmGrade({EmLinha({Rotulado(Campo("a", 2), "A:"), Rotulado(Campo("b", 2), "B:")}),
                     EmLinha({Rotulado(Campo("c", 2), "Bem mais longo:")}),
                     EmLinha({Rotulado(Campo("d", 2), "D:"), Rotulado(Campo("e", 2), "E:")})}));
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
                      EmLinha({Botao("ok", "&OK"), Mola(), Botao("cancelar", "Cancelar")}),
                      EmLinha({Campo("fixo", 2), Elastica(Campo("resto", 2))})}),
            {600, 500});
    EXPECT_EQ(Lugar("lista"), (Retangulo{10, 10, 580, 480 - 2 * 33}));
    EXPECT_EQ(Lugar("ok").X, 10);
    EXPECT_EQ(Lugar("cancelar").X + Lugar("cancelar").Largura, 590);
    EXPECT_EQ(Lugar("resto"), (Retangulo{43, 462, 547, 28}));
    EXPECT_EQ(Lugar("fixo").Largura, 28);
}

TEST_F(ArrumacaoTest, Elastic_SeveralOfThem_ShareTheRoom)
{
    Desenha(EmLinha({Elastica(Campo("a", 1)), Elastica(Campo("b", 1))}), {10 + 18 + 5 + 18 + 10 + 7, 0});
    EXPECT_EQ(Lugar("a").Largura, 22);
    EXPECT_EQ(Lugar("b").Largura, 21);
    EXPECT_EQ(Lugar("b").X, 10 + 22 + 5);
}

TEST_F(ArrumacaoTest, Elastic_ColumnOfAGrid_TakesTheRoomOfItsGrid)
{
    Desenha(EmGrade({EmLinha({Rotulado(Campo("a", 2), "A:"), Elastica(Campo("b", 2))}),
                     EmLinha({Rotulado(Campo("c", 2), "C:"), Campo("d", 2)})}),
            {300, 0});
    EXPECT_EQ(Lugar("b").X + Lugar("b").Largura, 290);
    EXPECT_EQ(Lugar("d").Largura, 28);
    EXPECT_EQ(Lugar("d").X, Lugar("b").X);
}

TEST_F(ArrumacaoTest, Box_ItsPiecesStandInsideBelowItsTitle)
{
    Desenha(Quadro("caixa", {Campo("a", 4)}));
    EXPECT_EQ(Lugar("caixa"), (Retangulo{10, 10, 68, 68}));
    EXPECT_EQ(Miolo("caixa"), (Retangulo{20, 40, 48, 28}));
    EXPECT_EQ(Lugar("a"), (Retangulo{20, 40, 48, 28}));
}

TEST_F(ArrumacaoTest, Box_WithoutContour_AddsNothing)
{
    Desenha(EmColuna({Quadro("caixa", {Campo("a", 4)}, false), Campo("b", 4)}));
    EXPECT_EQ(Lugar("a").X, Lugar("b").X);
    EXPECT_EQ(Lugar("a").Y, 10);
}

TEST_F(ArrumacaoTest, Pages_AreAsLargeAsTheLargest)
{
    Desenha({.Ajustes = AjustesSSTab{.Paginas = {"A", "B"}},
             .Nome = "abas",
             .Pecas = {EmColuna({Campo("a", 4)}), EmColuna({Campo("b", 2), Campo("c", 2)})}});
    EXPECT_EQ(Lugar("a").Y, Lugar("b").Y);
    EXPECT_EQ(Miolo("abas"), (Retangulo{20, 48, 48, 61}));
    EXPECT_EQ(Lugar("abas"), (Retangulo{10, 10, 68, 109}));
    EXPECT_EQ(Lugar("c"), (Retangulo{20, 81, 28, 28}));
}

TEST_F(ArrumacaoTest, List_ItsCriteriaStandAboveItsRows)
{
    Desenha(Elastica({.Ajustes = AjustesZtList{}, .Nome = "lista", .Pecas = {EmLinha({Campo("a", 4)})}}), {500, 400});
    EXPECT_EQ(Lugar("lista"), (Retangulo{10, 10, 480, 380}));
    EXPECT_EQ(Lugar("a"), (Retangulo{10, 10, 48, 28}));
    EXPECT_EQ(Miolo("lista"), (Retangulo{10, 43, 480, 347}));
}

TEST_F(ArrumacaoTest, Widths_FollowWhatEachKindShows)
{
    Desenha(EmColuna({{.Ajustes = AjustesTextBox{.MaxLength = 7}, .Nome = "limite"},
                      {.Ajustes = AjustesTextBox{}, .Nome = "sem"},
                      {.Ajustes = AjustesZtMask{.MaxLength = 3}, .Nome = "mascara"},
                      {.Ajustes = AjustesZtMask{.Tipo = TipoMascara::Hora, .Mascara = "00:00"}, .Nome = "hora"},
                      {.Ajustes = AjustesZtData{}, .Nome = "data"},
                      {.Ajustes = AjustesZtCombo{.Conteudo = "Um|1??Dezessete|2??"}, .Nome = "combo"},
                      {.Ajustes = AjustesLabel{.Papel = PapelLabel::Valor}, .Nome = "valor", .Caracteres = 6},
                      {.Ajustes = AjustesZtVeiObservacao{.MaxLength = 9}, .Nome = "obs"},
                      {.Ajustes = AjustesCommonDialog{}, .Nome = "dialogo"},
                      {.Ajustes = AjustesImage{}, .Nome = "imagem"},
                      Botao("ok", "&OK"),
                      Botao("longo", "Um texto de botão")}));
    EXPECT_EQ(Lugar("limite").Largura, 78);
    EXPECT_EQ(Lugar("sem").Largura, 208);
    EXPECT_EQ(Lugar("mascara").Largura, 38);
    EXPECT_EQ(Lugar("hora").Largura, 58);
    EXPECT_EQ(Lugar("data").Largura, 108);
    EXPECT_EQ(Lugar("combo").Largura, 90 + 8 + 20);
    EXPECT_EQ(Lugar("valor"), (Retangulo{10, Lugar("valor").Y, 68, 28}));
    EXPECT_EQ(Lugar("obs").Largura, 98);
    EXPECT_FALSE(Vista("dialogo"));
    EXPECT_EQ(Lugar("imagem"), (Retangulo{10, Lugar("imagem").Y, 32, 32}));
    EXPECT_EQ(Lugar("ok").Largura, 75);
    EXPECT_EQ(Lugar("longo").Largura, 170 + 24);
    ComoTipo<IztCombo>(Controle("combo"))->AdicionaItem("Uma linha bem maior|3");
    DeNovo();
    EXPECT_EQ(Lugar("combo").Largura, 190 + 8 + 20);
}

TEST_F(ArrumacaoTest, Paragraph_TakesTheLinesThatItNeeds)
{
    Desenha(EmColuna({{.Ajustes = AjustesLabel{.Papel = PapelLabel::Paragrafo},
                       .Nome = "texto",
                       .Caption = "Dez letras e mais",
                       .Caracteres = 10},
                      Campo("a", 1)}));
    EXPECT_EQ(Lugar("texto"), (Retangulo{10, 10, 100, 40}));
    EXPECT_EQ(Lugar("a").Y, 55);
}

TEST_F(ArrumacaoTest, Captions_ThatChange_ChangeTheRoom)
{
    Desenha(EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "l", .Caption = "Um"}, Campo("a", 1)}));
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
    Desenha(EmColuna({Campo("a", 4)}));
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
