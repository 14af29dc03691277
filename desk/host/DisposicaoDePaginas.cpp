#include "desk/host/DisposicaoDePaginas.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mesa {

void DisposicaoDePaginas::DefinePaginas(std::vector<QSizeF> paginas)
{
    m_Paginas = std::move(paginas);
    for (QSizeF &pagina : m_Paginas) { // a damaged page may say that it has none
        pagina = pagina.expandedTo({1, 1});
    }
    Dispoe();
}

void DisposicaoDePaginas::DefineVista(const QSizeF &vista, double porPonto)
{
    m_Vista = vista;
    m_PorPonto = porPonto;
    Dispoe();
}

void DisposicaoDePaginas::DefineAjuste(AjusteDaPagina ajuste)
{
    m_Ajuste = ajuste;
    Dispoe();
}

void DisposicaoDePaginas::DefineZoom(double zoom)
{
    m_Ajuste = AjusteDaPagina::Nenhum;
    m_Zoom = std::clamp(zoom, MenorZoom, MaiorZoom);
    Dispoe();
}

void DisposicaoDePaginas::Gira()
{
    m_Quartos = (m_Quartos + 1) % 4;
    Dispoe();
}

// One for all pages, so that the largest fits.
double DisposicaoDePaginas::ZoomDoAjuste() const
{
    QSizeF maior(1, 1);
    for (const QSizeF &pagina : m_Paginas) {
        maior = maior.expandedTo(Girada(pagina) * m_PorPonto);
    }
    const QSizeF livre = (m_Vista - QSizeF(2 * Margem, 2 * Margem)).expandedTo({1, 1});
    const double largura = livre.width() / maior.width();
    const double zoom =
        m_Ajuste == AjusteDaPagina::Largura ? largura : std::min(largura, livre.height() / maior.height());
    return std::clamp(zoom, MenorZoom, MaiorZoom);
}

void DisposicaoDePaginas::Dispoe()
{
    if (m_Ajuste != AjusteDaPagina::Nenhum) {
        m_Zoom = ZoomDoAjuste();
    }
    m_Lugares.clear();
    double largura = m_Vista.width();
    double y = Margem;
    for (const QSizeF &pagina : m_Paginas) {
        // Whole pixels, in which a drawing of the page is as sharp as it was drawn; a fit must not become a pixel more.
        const QSizeF tamanho = Girada(pagina) * m_PorPonto * m_Zoom;
        const QSizeF inteiro(std::max(1.0, std::floor(tamanho.width() + 1e-6)),
                             std::max(1.0, std::floor(tamanho.height() + 1e-6)));
        m_Lugares.emplace_back(QPointF(0, y), inteiro);
        largura = std::max(largura, inteiro.width() + 2 * Margem);
        y += inteiro.height() + Margem;
    }
    for (QRectF &lugar : m_Lugares) {
        lugar.moveLeft(std::floor((largura - lugar.width()) / 2));
    }
    m_Tamanho = {largura, y};
}

int DisposicaoDePaginas::PaginaEm(double y) const
{
    const auto abaixo =
        std::ranges::find_if(m_Lugares, [y](const QRectF &lugar) { return y < lugar.bottom() + Margem / 2; });
    return std::min(static_cast<int>(abaixo - m_Lugares.begin()), Quantas() - 1);
}

QSizeF DisposicaoDePaginas::Desenho(int pagina) const
{
    return Girada(Lugar(pagina).size());
}

QTransform DisposicaoDePaginas::DoDesenho(int pagina) const
{
    const QRectF &lugar = Lugar(pagina);
    // Where the top left corner of the page has gone.
    const QPointF cantos[] = {lugar.topLeft(), lugar.topRight(), lugar.bottomRight(), lugar.bottomLeft()};
    const QPointF canto = cantos[m_Quartos];
    QTransform giro = QTransform::fromTranslate(canto.x(), canto.y());
    giro.rotate(90.0 * m_Quartos);
    return giro;
}

QTransform DisposicaoDePaginas::DosPontos(int pagina) const
{
    const QSizeF desenho = Desenho(pagina);
    const QSizeF &pontos = Pontos(pagina);
    return QTransform::fromScale(desenho.width() / pontos.width(), desenho.height() / pontos.height()) *
           DoDesenho(pagina);
}

} // namespace mesa
