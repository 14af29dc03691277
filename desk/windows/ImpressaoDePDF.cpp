#include "desk/windows/ImpressaoDePDF.h"

#include "desk/host/FolhasAImprimir.h"

#include <QFile>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfDocumentRenderOptions>
#include <QPrinter>

#include <algorithm>
#include <cmath>

namespace mesa {

namespace {

constexpr int MaisPorPolegada = 600; // dots; nobody sees more of them on paper
constexpr double PontosPorPolegada = 72;
constexpr int PontosDaFaixa = 8'000'000; // drawn at a time

PedidoDeImpressao PedidoA(const QPrinter &impressora, int paginas, int atual)
{
    PedidoDeImpressao pedido;
    pedido.Paginas = paginas;
    pedido.Copias = impressora.supportsMultipleCopies() ? 1 : impressora.copyCount();
    pedido.Agrupa = impressora.collateCopies();
    pedido.DeTrasParaFrente = impressora.pageOrder() == QPrinter::LastPageFirst;
    if (impressora.printRange() == QPrinter::CurrentPage) {
        pedido.Escolhe = [atual](int pagina) { return pagina == atual; };
    } else if (impressora.printRange() == QPrinter::PageRange) {
        pedido.Escolhe = [faixas = impressora.pageRanges()](int pagina) {
            return faixas.isEmpty() || faixas.contains(pagina + 1);
        };
    }
    return pedido;
}

// Draws one page in the middle of the sheet, a strip at a time. False when there is nothing to be drawn of it, or
// `continua` says no.
class Folha {
  public:
    Folha(QPdfDocument &documento, int pagina, const QPrinter &impressora)
        : m_Documento(documento),
          m_Pagina(pagina),
          m_Area(QPointF(), QSizeF(impressora.pageLayout().paintRectPixels(impressora.resolution()).size())),
          m_Dpi(impressora.resolution())
    {
        const QSizeF pontos = documento.pagePointSize(pagina).expandedTo({1, 1});
        m_Gira = (pontos.width() > pontos.height()) != (m_Area.width() > m_Area.height()) &&
                 pontos.width() != pontos.height();
        const QSizeF area = m_Gira ? m_Area.size().transposed() : m_Area.size();
        const QSizeF natural = pontos * (m_Dpi / PontosPorPolegada);
        m_Tamanho = natural.boundedTo(area) == natural ? natural : natural.scaled(area, Qt::KeepAspectRatio);
        const double resolucao = std::min(1.0, MaisPorPolegada / m_Dpi);
        m_Desenho = (m_Tamanho * resolucao).toSize().expandedTo({1, 1});
    }

    int Faixas() const { return (m_Desenho.height() + AlturaDaFaixa() - 1) / AlturaDaFaixa(); }
    bool Desenha(QPainter &pincel, int faixa) const
    {
        const int y = faixa * AlturaDaFaixa();
        const int altura = std::min(AlturaDaFaixa(), m_Desenho.height() - y);
        QPdfDocumentRenderOptions opcoes;
        opcoes.setScaledSize(m_Desenho);
        opcoes.setScaledClipRect(QRect(0, y, m_Desenho.width(), altura));
        const QImage parte = m_Documento.render(m_Pagina, QSize(m_Desenho.width(), altura), opcoes);
        if (parte.isNull()) {
            return false;
        }
        QImage papel(parte.size(), QImage::Format_RGB32);
        papel.fill(Qt::white);
        QPainter(&papel).drawImage(0, 0, parte);
        pincel.save();
        pincel.translate(m_Area.center());
        if (m_Gira) {
            pincel.rotate(90);
        }
        pincel.translate(-m_Tamanho.width() / 2, -m_Tamanho.height() / 2);
        const double escala = m_Tamanho.height() / m_Desenho.height();
        pincel.drawImage(QRectF(0, y * escala, m_Tamanho.width(), altura * escala), papel);
        pincel.restore();
        return true;
    }

  private:
    int AlturaDaFaixa() const { return std::max(1, PontosDaFaixa / m_Desenho.width()); }

    QPdfDocument &m_Documento;
    int m_Pagina;
    QRectF m_Area;
    double m_Dpi;
    QSizeF m_Tamanho; // on the sheet, in its pixels
    QSize m_Desenho;
    bool m_Gira = false;
};

} // namespace

Impressao ImprimePDF(QPdfDocument &documento, int atual, QPrinter &impressora, const Segue &segue)
{
    const std::vector<int> folhas = FolhasAImprimir(PedidoA(impressora, documento.pageCount(), atual));
    QPainter pincel;
    if (folhas.empty() || !pincel.begin(&impressora)) {
        return Impressao::Falhou;
    }
    const auto desiste = [&](Impressao como) {
        pincel.end();
        impressora.abort();
        if (!impressora.outputFileName().isEmpty()) {
            QFile::remove(impressora.outputFileName()); // a part would look like the whole
        }
        return como;
    };
    for (std::size_t n = 0; n < folhas.size(); ++n) {
        if (n > 0 && !impressora.newPage()) {
            return desiste(Impressao::Falhou);
        }
        const Folha folha(documento, folhas[n], impressora);
        for (int faixa = 0; faixa < folha.Faixas(); ++faixa) {
            const double parte = (static_cast<double>(n) + static_cast<double>(faixa) / folha.Faixas()) /
                                 static_cast<double>(folhas.size());
            if (!segue(parte, "Folha " + std::to_string(n + 1) + " de " + std::to_string(folhas.size()))) {
                return desiste(Impressao::Cancelada);
            }
            if (!folha.Desenha(pincel, faixa)) {
                return desiste(Impressao::Falhou);
            }
        }
    }
    return pincel.end() && impressora.printerState() != QPrinter::Error ? Impressao::Feita : Impressao::Falhou;
}

} // namespace mesa
