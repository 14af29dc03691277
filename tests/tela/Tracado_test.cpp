#include "tela/Tracado.h"

#include "controls/ztList.h"
#include "tests/tela/FormDescrito.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Posicoes = std::vector<std::size_t>;
using Larguras = std::map<std::string, std::int32_t>;

class TracadoTest : public testing::Test {
  protected:
    const ControlesDoForm &Descreve(Peca raiz)
    {
        m_Raiz = std::move(raiz);
        m_Descrito.Faz(m_Raiz);
        m_Controles = std::make_unique<ControlesDoForm>(*m_Descrito.Form);
        return *m_Controles;
    }
    Ref<IControle> Controle(const std::string &nome) const { return m_Descrito.Controle(nome); }
    OrdemDaLinha Ordem() const { return OrdenaLinha(m_Raiz, *m_Controles); }
    // Labels are as wide as their texts have bytes, and boxes 3 wide around what they hold.
    Larguras Alinha(const Peca &pagina) const
    {
        const MedidasDaPagina medidas = {
            [](const Peca &peca) {
                const auto *frame = std::get_if<AjustesZtFrame>(&peca.Ajustes);
                return frame != nullptr && frame->Contorno ? 3 : 0;
            },
            [](const Peca &peca) {
                return static_cast<std::int32_t>(peca.Rotulo.empty() ? peca.Caption.size() : peca.Rotulo.size());
            },
        };
        Larguras larguras;
        for (const auto &[peca, largura] : AlinhaRotulos(pagina, *m_Controles, medidas)) {
            larguras[peca->Nome] = largura;
        }
        return larguras;
    }

    Peca m_Raiz;
    FormDescrito m_Descrito;
    std::unique_ptr<ControlesDoForm> m_Controles;
};

TEST_F(TracadoTest, ControlesDoForm_FindsByNameAndIndex)
{
    Peca um = UmCampo("a", 1);
    um.Indice = 1;
    Peca dois = UmCampo("a", 1);
    dois.Indice = 2;
    Descreve(EmLinha({um, dois}));
    EXPECT_TRUE(m_Controles->De(um) == m_Descrito.Form->Controles()[0]);
    EXPECT_TRUE(m_Controles->De(dois) == m_Descrito.Form->Controles()[1]);
}

TEST_F(TracadoTest, EhMovel_ThatTellsAPlaceOrAWidth)
{
    EXPECT_FALSE(EhMovel(UmCampo("a", 1)));
    EXPECT_TRUE(EhMovel(PostoEm(UmCampo("a", 1), 15)));
    EXPECT_TRUE(EhMovel(PostoEm(UmCampo("a", 1), 0, 15)));
    EXPECT_FALSE(EhMovel(PostoEm(EmLinha({}), 15)));
}

TEST_F(TracadoTest, OrdenaLinha_ThoseThatMove_StandInTheirOrderInTheirOwnPlaces)
{
    Descreve(EmLinha({PostoEm(UmCampo("a", 1), 100), UmCampo("fixo", 1), PostoEm(UmCampo("b", 1), 200), Mola(),
                      PostoEm(UmCampo("c", 1), 300)}));
    EXPECT_EQ(Ordem().Pecas, (Posicoes{0, 1, 2, 3, 4}));
    Controle("c")->DefineLeft(150);
    EXPECT_EQ(Ordem().Pecas, (Posicoes{0, 1, 4, 3, 2}));
    Controle("b")->DefineLeft(0); // still one that moves
    EXPECT_EQ(Ordem().Pecas, (Posicoes{2, 1, 0, 3, 4}));
    Controle("a")->DefineLeft(150); // at one place: as described
    EXPECT_EQ(Ordem().Pecas, (Posicoes{2, 1, 0, 3, 4}));
    Controle("b")->DefineVisible(false);
    EXPECT_EQ(Ordem().Pecas, (Posicoes{2, 1, 0, 3, 4}));
}

TEST_F(TracadoTest, OrdenaLinha_ThatTellHowWideTheyAre_TellTheirDistance)
{
    Descreve(EmLinha({PostoEm(UmCampo("ok", 1), 0, 1215), PostoEm(UmCampo("cancelar", 1), 1245, 1215)}));
    EXPECT_EQ(Ordem().Distancia, 30);
    Controle("ok")->DefineLeft(2500);
    EXPECT_EQ(Ordem().Pecas, (Posicoes{1, 0}));
    EXPECT_EQ(Ordem().Distancia, 40);
    Controle("ok")->DefineLeft(2460);
    EXPECT_EQ(Ordem().Distancia, 0);
}

TEST_F(TracadoTest, OrdenaLinha_AlonePiledUpOrWithoutWidths_LeavesTheDistanceToTheScreen)
{
    Descreve(EmLinha({PostoEm(UmCampo("a", 1), 100), PostoEm(UmCampo("b", 1), 200)}));
    EXPECT_EQ(Ordem().Distancia, std::nullopt);
    Descreve(EmLinha({PostoEm(UmCampo("a", 1), 100, 50), UmCampo("b", 1)}));
    EXPECT_EQ(Ordem().Distancia, std::nullopt);
    Descreve(EmLinha({PostoEm(UmCampo("a", 1), 100, 500), PostoEm(UmCampo("b", 1), 200, 500)}));
    EXPECT_EQ(Ordem().Distancia, std::nullopt);
}

TEST_F(TracadoTest, TomaLugar_WhatCanBeSeen)
{
    EXPECT_TRUE(TomaLugar(UmCampo("a", 1)));
    EXPECT_TRUE(TomaLugar(UmQuadro("q", {})));
    EXPECT_TRUE(TomaLugar(UmQuadro("q", {UmCampo("a", 1)}, false)));
    EXPECT_TRUE(TomaLugar(EmLinha({})));
    EXPECT_FALSE(TomaLugar(UmQuadro("q", {}, false)));
    EXPECT_FALSE(TomaLugar({.Ajustes = AjustesCommonDialog{}}));
}

TEST_F(TracadoTest, EhMola_EmptyRoomAlone)
{
    EXPECT_TRUE(EhMola(Mola()));
    EXPECT_FALSE(EhMola(EmLinha({})));
    EXPECT_FALSE(EhMola(Elastica(EmLinha({Mola()}))));
    EXPECT_FALSE(EhMola(Elastica(UmCampo("a", 1))));
}

TEST_F(TracadoTest, PaginasDe_TheRootAndThePagesOfItsStrips)
{
    m_Raiz = EmColuna({UmCampo("a", 1),
                       {.Ajustes = AjustesSSTab{}, .Nome = "abas", .Pecas = {UmQuadro("p", {}), UmQuadro("q", {})}}});
    const std::vector<const Peca *> paginas = PaginasDe(m_Raiz);
    ASSERT_EQ(paginas.size(), 3U);
    EXPECT_EQ(paginas[0], &m_Raiz);
    EXPECT_EQ(paginas[1]->Nome, "p");
    EXPECT_EQ(paginas[2]->Nome, "q");
}

TEST_F(TracadoTest, AlinhaRotulos_WithWhichRowsAtTheLeftEdgeBegin_EndAtOnePlace)
{
    Peca larga = UmTexto("larga", "Por duas colunas de uma grade:");
    larga.Vao = 2;
    Descreve(EmColuna({
        EmLinha({UmTexto("curto", "A:"), UmCampo("a", 1), UmTexto("segundo", "Um bem mais longo:"), UmCampo("b", 1)}),
        EmLinha({Rotulado(UmCampo("campo", 1), "Cinco")}),
        EmLinha({UmTexto("texto", "Texto", PapelLabel::Texto), UmCampo("c", 1)}),
        UmQuadro("caixa", {EmLinha({Rotulado(UmCampo("dentro", 1), "Na caixa")})}),
        EmGrade({EmLinha({UmTexto("grade", "G"), UmCampo("d", 1)}), EmLinha({larga, UmCampo("e", 1)})}),
        EmLinha(
            {EmColuna({EmLinha({Rotulado(UmCampo("fundo", 1), "F")})}), EmLinha({Rotulado(UmCampo("f", 1), "Longe")})}),
    }));
    EXPECT_EQ(Alinha(m_Raiz),
              (Larguras{{"curto", 11}, {"campo", 11}, {"texto", 11}, {"dentro", 8}, {"grade", 11}, {"fundo", 11}}));
}

TEST_F(TracadoTest, AlinhaRotulos_WhatNamesNothingBehindIt_StandsByItself)
{
    Descreve(EmColuna({
        EmLinha({UmTexto("so", "Ninguém atrás")}),
        UmTexto("coluna", "Numa coluna"),
        EmLinha({UmTexto("valor", "Um valor", PapelLabel::Valor), UmCampo("a", 1)}),
        EmLinha({UmTexto("paragrafo", "Um parágrafo", PapelLabel::Paragrafo), UmCampo("b", 1)}),
        EmLinha({Mola(), Rotulado(UmCampo("direita", 1), "À direita:")}),
        {.Ajustes = AjustesSSTab{}, .Nome = "abas", .Pecas = {EmLinha({Rotulado(UmCampo("c", 1), "Em página:")})}},
    }));
    EXPECT_EQ(Alinha(m_Raiz), Larguras{});
    EXPECT_EQ(Alinha(*PaginasDe(m_Raiz)[1]), (Larguras{{"c", 11}}));
}

TEST_F(TracadoTest, AlinhaRotulos_ThoseHiddenAndThoseOfPickers_CountToo)
{
    Descreve(EmColuna({
        EmLinha({Rotulado(UmCampo("a", 1), "A")}),
        EmLinha({Rotulado(UmCampo("oculto", 1), "Oculto")}),
        UmQuadro("q", {{.Ajustes = AjustesZtEndereco{}, .Nome = "endereco", .Caption = "12345678"}}),
        {.Ajustes = AjustesZtClienteSetor{}, .Nome = "cliente"},
    }));
    Controle("oculto")->DefineVisible(false);
    EXPECT_EQ(Alinha(m_Raiz), (Larguras{{"a", 11}, {"oculto", 11}, {"endereco", 8}, {"cliente", 11}}));
    Descreve(
        EmColuna({EmLinha({Rotulado(UmCampo("a", 1), "A")}), EmLinha({Rotulado(UmCampo("oculto", 1), "Oculto")})}));
    Controle("oculto")->DefineVisible(false);
    EXPECT_EQ(Alinha(m_Raiz), (Larguras{{"a", 6}, {"oculto", 6}}));
}

TEST_F(TracadoTest, AlinhaRotulos_OfARowThatMoved_IsThatOfTheFirstOneNow)
{
    Descreve(EmLinha({PostoEm(Rotulado(UmCampo("a", 1), "A"), 100), PostoEm(Rotulado(UmCampo("b", 1), "Bem"), 200)}));
    EXPECT_EQ(Alinha(m_Raiz), (Larguras{{"a", 1}}));
    Controle("b")->DefineLeft(50);
    EXPECT_EQ(Alinha(m_Raiz), (Larguras{{"b", 3}}));
}

TEST_F(TracadoTest, BarraDe_TheFrameSeen_TellsWhatIsAroundIt)
{
    Peca um = PostoEm(UmQuadro("um", {}), 45);
    um.Height = 1410;
    Peca outro = PostoEm(UmQuadro("outro", {}), 90);
    outro.Height = 600;
    outro.Visible = false;
    Descreve({.Ajustes = AjustesZtList{.BarraCriteriosAtiva = true, .BarraCriteriosAltura = 1500},
              .Nome = "lista",
              .Pecas = {um, outro}});
    const auto confere = [&](bool visivel, std::int32_t esquerda, std::int32_t acima, std::int32_t abaixo) {
        const BarraDeCriterios barra = BarraDe(m_Raiz, *m_Controles);
        EXPECT_EQ(barra.Visivel, visivel);
        EXPECT_EQ(barra.Esquerda, esquerda);
        EXPECT_EQ(barra.Acima, acima);
        EXPECT_EQ(barra.Abaixo, abaixo);
    };
    confere(true, 45, 0, 90);
    Controle("um")->DefineTop(60);
    confere(true, 45, 60, 30);
    Controle("um")->DefineTop(120); // more than there is
    confere(true, 45, 120, 0);
    Controle("um")->DefineVisible(false);
    confere(true, 0, 0, 0);
    Controle("outro")->DefineVisible(true);
    confere(true, 90, 0, 900);
    ComoTipo<ztList>(Controle("lista"))->BarraCriteriosAtiva(false);
    confere(false, 90, 0, 900);
}

TEST_F(TracadoTest, BarraDe_ListWithoutCriteria_IsNotSeen)
{
    Descreve({.Ajustes = AjustesZtList{.BarraCriteriosAtiva = true}, .Nome = "lista"});
    EXPECT_FALSE(BarraDe(m_Raiz, *m_Controles).Visivel);
}

TEST_F(TracadoTest, Enche_WhatHasNoWidthOfItsOwnOrIsElastic)
{
    for (const AjustesPeca &ajustes :
         std::vector<AjustesPeca>{AjustesTextBox{}, AjustesZtVeiObservacao{}, AjustesZtMask{}, AjustesZtData{},
                                  AjustesZtCombo{}, AjustesCommandButton{}, AjustesZtCommand{}, AjustesImage{}}) {
        EXPECT_FALSE(Enche({.Ajustes = ajustes})) << ajustes.index();
        EXPECT_TRUE(Enche(Elastica({.Ajustes = ajustes}))) << ajustes.index();
    }
    for (const AjustesPeca &ajustes : std::vector<AjustesPeca>{{},
                                                               AjustesLabel{},
                                                               AjustesCheckBox{},
                                                               AjustesOptionButton{},
                                                               AjustesZtFrame{},
                                                               AjustesSSTab{},
                                                               AjustesZtList{},
                                                               AjustesZtEndereco{},
                                                               AjustesZtClienteSetor{}}) {
        EXPECT_TRUE(Enche({.Ajustes = ajustes})) << ajustes.index();
    }
}

struct CasoDeLargura {
    const char *Nome;
    Peca Quem;
    LarguraEmLetras Esperada;
};

TEST_F(TracadoTest, LarguraDe_EachKind_IsAsWideAsWhatItIsToHold)
{
    const auto pedida = [](AjustesPeca ajustes, std::int16_t caracteres) {
        return Peca{.Ajustes = std::move(ajustes), .Caracteres = caracteres};
    };
    const AjustesLabel valor{.Papel = PapelLabel::Valor};
    const CasoDeLargura casos[] = {
        {"field", {.Ajustes = AjustesTextBox{.MaxLength = 7}}, {7, 7, 0, 'n'}},
        {"field of any number", {.Ajustes = AjustesTextBox{}}, {20, 20, 0, 'n'}},
        {"long field", {.Ajustes = AjustesTextBox{.MaxLength = 80}}, {80, 20, 0, 'n'}},
        {"field that asks for its width", pedida(AjustesTextBox{.MaxLength = 80}, 30), {30, 20, 0, 'n'}},
        {"note", {.Ajustes = AjustesZtVeiObservacao{.MaxLength = 70}}, {70, 20, 0, 'n'}},
        {"digits", {.Ajustes = AjustesZtMask{.MaxLength = 3, .Tipo = TipoMascara::Digitos}}, {3, 3, 0, '0'}},
        {"code", {.Ajustes = AjustesZtMask{.MaxLength = 9, .Tipo = TipoMascara::Codigo}}, {9, 9, 0, 'N'}},
        {"free mask", {.Ajustes = AjustesZtMask{}}, {20, 20, 0, 'N'}},
        {"hour", {.Ajustes = AjustesZtMask{.Tipo = TipoMascara::Hora}}, {5, 5, 0, '0'}},
        {"hour of its own form",
         {.Ajustes = AjustesZtMask{.MaxLength = 5, .Tipo = TipoMascara::Hora, .Mascara = "00:00:00"}},
         {8, 8, 0, '0'}},
        {"date", {.Ajustes = AjustesZtData{}}, {10, 10, 0, '0'}},
        {"combo", {.Ajustes = AjustesZtCombo{}}, {18, 18, 45, 'n'}},
        {"combo that asks for its width", pedida(AjustesZtCombo{}, 30), {30, 30, 45, 'n'}},
        {"elastic combo", Elastica({.Ajustes = AjustesZtCombo{}}), {18, 18, 0, 'n'}},
        {"label", {.Ajustes = AjustesLabel{}}, {0, 0, 0, 'n'}},
        {"label that asks for its width", pedida(AjustesLabel{.Papel = PapelLabel::Texto}, 28), {28, 28, 0, 'n'}},
        {"value", {.Ajustes = valor}, {8, 8, 0, 'n'}},
        {"value that asks for its width", pedida(valor, 3), {3, 3, 0, 'n'}},
        {"button", {.Ajustes = AjustesCommandButton{}}, {0, 0, 0, 'n'}},
    };
    for (const auto &[nome, peca, esperada] : casos) {
        SCOPED_TRACE(nome);
        const LarguraEmLetras largura = LarguraDe(peca);
        EXPECT_EQ(largura.Natural, esperada.Natural);
        EXPECT_EQ(largura.Menor, esperada.Menor);
        EXPECT_EQ(largura.Maior, esperada.Maior);
        EXPECT_EQ(largura.Letra, esperada.Letra);
    }
}

} // namespace
