#include "desk/host/DisposicaoDePaginas.h"

#include <gtest/gtest.h>

using namespace mesa;

namespace {

constexpr QSizeF A4(600, 800); // near enough, and easy to calculate with
constexpr double M = DisposicaoDePaginas::Margem;

DisposicaoDePaginas De(std::vector<QSizeF> paginas, QSizeF vista = {416, 516})
{
    DisposicaoDePaginas disposicao;
    disposicao.DefinePaginas(std::move(paginas));
    disposicao.DefineVista(vista, 1);
    return disposicao;
}

TEST(DisposicaoDePaginas, Width_IsThatOfTheView_AndPagesLieBelowEachOther)
{
    const DisposicaoDePaginas disposicao = De({A4, A4, A4});
    EXPECT_DOUBLE_EQ(disposicao.Zoom(), 400.0 / 600);
    EXPECT_EQ(disposicao.Lugar(0), QRectF(M, M, 400, 533));
    EXPECT_EQ(disposicao.Lugar(2), QRectF(M, M + 2 * (533 + M), 400, 533));
    EXPECT_EQ(disposicao.Tamanho(), QSizeF(416, M + 3 * (533 + M)));
}

TEST(DisposicaoDePaginas, WholePage_FitsInBothDirections)
{
    DisposicaoDePaginas disposicao = De({A4, {300, 1000}});
    disposicao.DefineAjuste(AjusteDaPagina::PaginaInteira);
    EXPECT_DOUBLE_EQ(disposicao.Zoom(), 0.5);
    EXPECT_EQ(disposicao.Lugar(0).size(), QSizeF(300, 400));
    EXPECT_EQ(disposicao.Lugar(1).size(), QSizeF(150, 500));
}

// Bigger starts from what is seen, whatever has made it so.
TEST(DisposicaoDePaginas, Zoom_AfterAFit_StartsFromWhatIsSeen)
{
    for (const AjusteDaPagina ajuste : {AjusteDaPagina::Largura, AjusteDaPagina::PaginaInteira}) {
        DisposicaoDePaginas disposicao = De({A4}, {1816, 716});
        disposicao.DefineAjuste(ajuste);
        const QSizeF antes = disposicao.Lugar(0).size();
        disposicao.DefineZoom(disposicao.Zoom() * 1.25);
        EXPECT_EQ(disposicao.Ajuste(), AjusteDaPagina::Nenhum);
        EXPECT_NEAR(disposicao.Lugar(0).width(), antes.width() * 1.25, 2);
        EXPECT_NEAR(disposicao.Lugar(0).height(), antes.height() * 1.25, 2);
    }
}

TEST(DisposicaoDePaginas, Zoom_StaysWithinBounds_AndDoesNotFollowTheView)
{
    DisposicaoDePaginas disposicao = De({A4});
    disposicao.DefineZoom(1000);
    EXPECT_EQ(disposicao.Zoom(), DisposicaoDePaginas::MaiorZoom);
    disposicao.DefineZoom(0);
    EXPECT_EQ(disposicao.Zoom(), DisposicaoDePaginas::MenorZoom);
    disposicao.DefineZoom(2);
    disposicao.DefineVista({100, 100}, 1);
    EXPECT_EQ(disposicao.Lugar(0).size(), A4 * 2);
}

TEST(DisposicaoDePaginas, NarrowPage_StandsInTheMiddle)
{
    DisposicaoDePaginas disposicao = De({A4, {300, 400}});
    EXPECT_EQ(disposicao.Lugar(1).center().x(), 208);
    disposicao.DefineZoom(0.1);
    EXPECT_EQ(disposicao.Lugar(0).center().x(), 208);
}

TEST(DisposicaoDePaginas, PaginaEm_IsTheNearest)
{
    const DisposicaoDePaginas disposicao = De({A4, A4});
    EXPECT_EQ(disposicao.PaginaEm(-50), 0);
    EXPECT_EQ(disposicao.PaginaEm(M + 533), 0);
    EXPECT_EQ(disposicao.PaginaEm(M + 533 + M), 1);
    EXPECT_EQ(disposicao.PaginaEm(1e9), 1);
    EXPECT_EQ(De({}).PaginaEm(0), -1);
}

TEST(DisposicaoDePaginas, Points_AreThoseOfThePage_HoweverItIsTurned)
{
    DisposicaoDePaginas disposicao = De({A4, A4});
    const auto cantoEm = [&] { return disposicao.DosPontos(1).map(QPointF(0, 0)); };
    const auto fimEm = [&] { return disposicao.DosPontos(1).map(QPointF(600, 800)); };
    EXPECT_EQ(cantoEm(), disposicao.Lugar(1).topLeft());
    EXPECT_EQ(fimEm(), disposicao.Lugar(1).bottomRight());
    disposicao.Gira();
    EXPECT_EQ(disposicao.Lugar(1).size(), QSizeF(400, 300));
    EXPECT_EQ(cantoEm(), disposicao.Lugar(1).topRight());
    EXPECT_EQ(fimEm(), disposicao.Lugar(1).bottomLeft());
    disposicao.Gira();
    EXPECT_EQ(cantoEm(), disposicao.Lugar(1).bottomRight());
    disposicao.Gira();
    EXPECT_EQ(cantoEm(), disposicao.Lugar(1).bottomLeft());
    disposicao.Gira();
    EXPECT_EQ(cantoEm(), disposicao.Lugar(1).topLeft());
}

TEST(DisposicaoDePaginas, PageWithoutASize_IsStillOne)
{
    const DisposicaoDePaginas disposicao = De({{0, 0}, {-5, 20}});
    EXPECT_GE(disposicao.Lugar(0).width(), 1);
    EXPECT_GE(disposicao.Lugar(1).height(), 1);
}

TEST(DisposicaoDePaginas, ViewOfNoSize_ShowsAsSmallAsItCan)
{
    EXPECT_EQ(De({A4}, {0, 0}).Zoom(), DisposicaoDePaginas::MenorZoom);
}

} // namespace
