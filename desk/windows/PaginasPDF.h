#pragma once

#include "desk/host/DisposicaoDePaginas.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QPdfDocument>
#include <QPdfSelection>

#include <functional>
#include <map>
#include <optional>
#include <vector>

class QPdfPageRenderer;

namespace mesa {

// The pages of a PDF, one below the other: zoom, turning, what was found marked, and text that can be chosen and
// copied.
class PaginasPDF : public QAbstractScrollArea {
  public:
    // documento: outlives this object, and is open already.
    PaginasPDF(QPdfDocument &documento, QWidget *dono);
    ~PaginasPDF() override;

    // The document was opened: it is shown from its beginning.
    void Abriu();

    // Another page, zoom or choice of text.
    std::function<void()> Mudou;

    const DisposicaoDePaginas &Disposicao() const { return m_Disposicao; }
    // The page that is looked at, from 0.
    int Atual() const { return m_Atual; }
    void VaiPara(int pagina);
    void MudaZoom(double fator);
    void Ajusta(AjusteDaPagina ajuste);
    void Gira();

    // Places of one find on a page, in points.
    struct Achado {
        int Pagina = 0;
        QList<QRectF> Lugares;
    };
    // All are marked, and that one stronger, which comes into view.
    void MostraAchados(std::vector<Achado> achados, int atual);

    bool TemEscolha() const { return m_TudoEscolhido || m_Escolha.has_value(); }
    QString TextoEscolhido() const;
    QString TextoDaPagina(int pagina) const;
    void EscolheTudo();

  protected:
    void paintEvent(QPaintEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void wheelEvent(QWheelEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;
    void mouseMoveEvent(QMouseEvent *evento) override;
    void changeEvent(QEvent *evento) override;

  private:
    // A place of a page, in points.
    struct Ponto {
        int Pagina = -1;
        QPointF Onde;
    };
    QPointF Rolagem() const;
    void Rola(const QPointF &para);
    // Changes how the pages lie; what is at that place of the view stays there.
    void Redispoe(const QPointF &onde, const std::function<void()> &muda);
    QPointF Meio() const { return QRectF(viewport()->rect()).center(); }
    void AjustaVista();
    void AtualizaRolagem();
    void ContaMudanca();
    void SegueRolagem();
    void Pinta(QPainter &pincel, int pagina);
    void PintaMarcas(QPainter &pincel, int pagina) const;
    void Pede(int pagina);
    void Desenhou(int pagina, const QImage &desenho);
    QSize TamanhoDoDesenho(int pagina) const;
    Ponto PontoDe(const QPointF &naVista) const;
    // A place of the page that has text.
    struct LugarDeTexto {
        QPointF Onde;
        double Linha = 0; // height of its line
        bool NoFim = false;
    };
    // The nearest one.
    std::optional<LugarDeTexto> NoTexto(const Ponto &ponto) const;

    QPdfDocument &m_Documento;
    QPdfPageRenderer *m_Desenhista;
    DisposicaoDePaginas m_Disposicao;
    std::map<int, QImage> m_Desenhos;
    std::map<int, QSize> m_Pedidos; // drawings that are being made
    std::map<int, bool> m_SemDesenho;
    std::vector<Achado> m_Achados;
    int m_Achado = -1;
    std::optional<QPdfSelection> m_Escolha;
    int m_PaginaDaEscolha = -1;
    bool m_TudoEscolhido = false;
    Ponto m_Comeco; // of what the mouse chooses
    int m_Atual = 0;
};

} // namespace mesa
