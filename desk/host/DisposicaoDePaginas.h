#pragma once

#include <QRectF>
#include <QSizeF>
#include <QTransform>

#include <vector>

namespace mesa {

// What makes the pages of a document as large as they are.
enum class AjusteDaPagina { Nenhum, Largura, PaginaInteira };

// Where the pages of a document lie in a view that shows them one below the other, and how large. Pixels of the view
// throughout, of the whole of the pages; a page has points of its own, from its top left corner.
class DisposicaoDePaginas {
  public:
    static constexpr double MenorZoom = 0.1;
    static constexpr double MaiorZoom = 8.0;
    static constexpr double Margem = 8; // around the pages, and between them

    // In points.
    void DefinePaginas(std::vector<QSizeF> paginas);
    // porPonto: pixels of a point at the zoom of 1.
    void DefineVista(const QSizeF &vista, double porPonto);
    void DefineAjuste(AjusteDaPagina ajuste);
    // As large as that, whatever the view; within bounds.
    void DefineZoom(double zoom);
    // Turns the pages by a quarter, clockwise.
    void Gira();

    AjusteDaPagina Ajuste() const { return m_Ajuste; }
    // As large as they are seen.
    double Zoom() const { return m_Zoom; }
    int Quantas() const { return static_cast<int>(m_Paginas.size()); }
    const QSizeF &Tamanho() const { return m_Tamanho; }
    const QRectF &Lugar(int pagina) const { return m_Lugares[static_cast<std::size_t>(pagina)]; }
    const QSizeF &Pontos(int pagina) const { return m_Paginas[static_cast<std::size_t>(pagina)]; }
    // The page at that height, or the nearest one; -1 without pages.
    int PaginaEm(double y) const;
    // As the page would stand unturned, in pixels, and its points.
    QSizeF Desenho(int pagina) const;
    QTransform DoDesenho(int pagina) const;
    QTransform DosPontos(int pagina) const;

  private:
    bool Deitada() const { return m_Quartos % 2 == 1; }
    QSizeF Girada(const QSizeF &pagina) const { return Deitada() ? pagina.transposed() : pagina; }
    double ZoomDoAjuste() const;
    void Dispoe();

    std::vector<QSizeF> m_Paginas;
    std::vector<QRectF> m_Lugares;
    QSizeF m_Vista;
    QSizeF m_Tamanho;
    double m_PorPonto = 1;
    double m_Zoom = 1;
    AjusteDaPagina m_Ajuste = AjusteDaPagina::Largura;
    int m_Quartos = 0; // clockwise
};

} // namespace mesa
