#include "desk/windows/PaginasPDF.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPdfPageRenderer>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mesa {

namespace {

constexpr double PontosPorPolegada = 72;
constexpr double PassoDaRoda = 1.25;
constexpr int DegrauDaRoda = 120;
constexpr double MaisPontosDoDesenho = 24e6; // pixels of one drawing; larger pages are drawn coarser
constexpr int FolgaDoAchado = 40;            // pixels around what was found
constexpr int FracaMarca = 70;               // of 255
constexpr int ForteMarca = 150;

} // namespace

PaginasPDF::PaginasPDF(QPdfDocument &documento, QWidget *dono)
    : QAbstractScrollArea(dono),
      m_Documento(documento),
      m_Desenhista(new QPdfPageRenderer(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // it must not come and go with the width that it takes
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Dark);
    m_Desenhista->setRenderMode(QPdfPageRenderer::RenderMode::MultiThreaded);
    connect(m_Desenhista, &QPdfPageRenderer::pageRendered, this,
            [this](int pagina, QSize, const QImage &desenho) { Desenhou(pagina, desenho); });
}

PaginasPDF::~PaginasPDF()
{
    m_Desenhista->setDocument(nullptr);
}

void PaginasPDF::Abriu()
{
    m_Desenhista->setDocument(&m_Documento);
    std::vector<QSizeF> paginas;
    for (int pagina = 0; pagina < m_Documento.pageCount(); ++pagina) {
        paginas.push_back(m_Documento.pagePointSize(pagina));
        if (paginas.back().isEmpty()) {
            m_SemDesenho[pagina] = true; // a damaged one, which nobody would draw
        }
    }
    m_Disposicao.DefinePaginas(std::move(paginas));
    AjustaVista();
    VaiPara(0);
}

QPointF PaginasPDF::Rolagem() const
{
    return QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

void PaginasPDF::Rola(const QPointF &para)
{
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(para.x())));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(para.y())));
}

void PaginasPDF::AjustaVista()
{
    m_Disposicao.DefineVista(viewport()->size(), logicalDpiX() / PontosPorPolegada);
    AtualizaRolagem();
    viewport()->update();
}

void PaginasPDF::AtualizaRolagem()
{
    const QSize sobra = m_Disposicao.Tamanho().toSize() - viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, sobra.width()));
    verticalScrollBar()->setRange(0, std::max(0, sobra.height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    verticalScrollBar()->setPageStep(viewport()->height());
    const int passo = std::max(1, fontMetrics().lineSpacing() * 3);
    horizontalScrollBar()->setSingleStep(passo);
    verticalScrollBar()->setSingleStep(passo);
}

void PaginasPDF::Redispoe(const QPointF &onde, const std::function<void()> &muda)
{
    const int pagina = m_Disposicao.PaginaEm(Rolagem().y() + onde.y());
    if (pagina < 0) {
        muda();
        return;
    }
    const QPointF ponto = m_Disposicao.DosPontos(pagina).inverted().map(Rolagem() + onde);
    const int atual = m_Atual;
    muda();
    AtualizaRolagem();
    Rola(m_Disposicao.DosPontos(pagina).map(ponto) - onde);
    m_Atual = atual;
    viewport()->update();
    ContaMudanca();
}

void PaginasPDF::ContaMudanca()
{
    if (Mudou) {
        Mudou();
    }
}

void PaginasPDF::VaiPara(int pagina)
{
    if (m_Disposicao.Quantas() == 0) {
        return;
    }
    const int qual = std::clamp(pagina, 0, m_Disposicao.Quantas() - 1);
    verticalScrollBar()->setValue(
        static_cast<int>(std::lround(m_Disposicao.Lugar(qual).top() - DisposicaoDePaginas::Margem)));
    m_Atual = qual; // the last ones may not come to the top of the view
    ContaMudanca();
}

void PaginasPDF::MudaZoom(double fator)
{
    Redispoe(Meio(), [&] { m_Disposicao.DefineZoom(m_Disposicao.Zoom() * fator); });
}

void PaginasPDF::Ajusta(AjusteDaPagina ajuste)
{
    Redispoe(Meio(), [&] { m_Disposicao.DefineAjuste(ajuste); });
    if (ajuste == AjusteDaPagina::PaginaInteira) {
        VaiPara(m_Atual);
    }
}

void PaginasPDF::Gira()
{
    Redispoe(Meio(), [&] { m_Disposicao.Gira(); });
}

void PaginasPDF::MostraAchados(std::vector<Achado> achados, int atual)
{
    m_Achados = std::move(achados);
    m_Achado = atual;
    viewport()->update();
    if (m_Achado < 0) {
        return;
    }
    const Achado &achado = m_Achados[static_cast<std::size_t>(m_Achado)];
    QRectF lugar;
    for (const QRectF &parte : achado.Lugares) {
        lugar |= parte;
    }
    const QRectF todo = m_Disposicao.DosPontos(achado.Pagina).mapRect(lugar);
    const auto traz = [](QScrollBar &barra, double de, double ate, int vista) {
        if (de - FolgaDoAchado < barra.value() || ate + FolgaDoAchado > barra.value() + vista) {
            barra.setValue(static_cast<int>(std::lround((de + ate - vista) / 2)));
        }
    };
    traz(*horizontalScrollBar(), todo.left(), todo.right(), viewport()->width());
    traz(*verticalScrollBar(), todo.top(), todo.bottom(), viewport()->height());
    m_Atual = achado.Pagina;
    ContaMudanca();
}

QString PaginasPDF::TextoDaPagina(int pagina) const
{
    return pagina < m_Documento.pageCount() ? m_Documento.getAllText(pagina).text() : QString();
}

QString PaginasPDF::TextoEscolhido() const
{
    if (!m_TudoEscolhido) {
        return m_Escolha ? m_Escolha->text() : QString();
    }
    QStringList paginas;
    for (int pagina = 0; pagina < m_Disposicao.Quantas(); ++pagina) {
        paginas << TextoDaPagina(pagina);
    }
    return paginas.join('\n');
}

void PaginasPDF::EscolheTudo()
{
    m_Escolha.reset();
    m_TudoEscolhido = true;
    viewport()->update();
    ContaMudanca();
}

PaginasPDF::Ponto PaginasPDF::PontoDe(const QPointF &naVista) const
{
    const QPointF noTodo = naVista + Rolagem();
    const int pagina = m_Disposicao.PaginaEm(noTodo.y());
    return pagina < 0 ? Ponto{} : Ponto{pagina, m_Disposicao.DosPontos(pagina).inverted().map(noTodo)};
}

std::optional<PaginasPDF::LugarDeTexto> PaginasPDF::NoTexto(const Ponto &ponto) const
{
    const QList<QPolygonF> partes = m_Documento.getAllText(ponto.Pagina).bounds();
    const auto acha = [&](const auto &distancia) {
        QRectF melhor;
        for (const QPolygonF &parte : partes) {
            const QRectF lugar = parte.boundingRect();
            melhor = melhor.isNull() || distancia(lugar) < distancia(melhor) ? lugar : melhor;
        }
        return melhor;
    };
    // The line first, then the part of it.
    const QRectF linha = acha([&](const QRectF &lugar) { return std::abs(lugar.center().y() - ponto.Onde.y()); });
    const QRectF lugar = acha([&](const QRectF &parte) {
        const bool daLinha = parte.top() < linha.center().y() && parte.bottom() > linha.center().y();
        const double fora = std::max({0.0, parte.left() - ponto.Onde.x(), ponto.Onde.x() - parte.right()});
        return daLinha ? fora : 1e6 + fora;
    });
    if (lugar.isNull()) {
        return std::nullopt;
    }
    const double folga = std::min(1.0, lugar.width() / 2);
    return LugarDeTexto{{std::clamp(ponto.Onde.x(), lugar.left() + folga, lugar.right() - folga), lugar.center().y()},
                        linha.center().y(),
                        ponto.Onde.x() >= lugar.right() - folga};
}

void PaginasPDF::mousePressEvent(QMouseEvent *evento)
{
    if (evento->button() != Qt::LeftButton) {
        return;
    }
    m_Comeco = PontoDe(evento->position());
    m_Escolha.reset();
    m_TudoEscolhido = false;
    viewport()->update();
    ContaMudanca();
}

// On the page where it began.
void PaginasPDF::mouseMoveEvent(QMouseEvent *evento)
{
    if (!(evento->buttons() & Qt::LeftButton) || m_Comeco.Pagina < 0) {
        return;
    }
    const QPointF agora = m_Disposicao.DosPontos(m_Comeco.Pagina).inverted().map(evento->position() + Rolagem());
    const auto de = NoTexto(m_Comeco);
    const auto ate = NoTexto({m_Comeco.Pagina, agora});
    if (!de || !ate) {
        return;
    }
    QPdfSelection escolha = m_Documento.getSelection(m_Comeco.Pagina, de->Onde, ate->Onde);
    const bool paraTras = std::pair(ate->Linha, ate->Onde.x()) < std::pair(de->Linha, de->Onde.x());
    if (escolha.isValid() && (paraTras ? *de : *ate).NoFim) { // the last letter is not behind its own middle
        const int letras = static_cast<int>(escolha.text().size());
        escolha = m_Documento.getSelectionAtIndex(m_Comeco.Pagina, escolha.startIndex(), letras + 1);
    }
    m_Escolha = escolha.isValid() && !escolha.text().isEmpty() ? std::optional(escolha) : std::nullopt;
    m_PaginaDaEscolha = m_Comeco.Pagina;
    viewport()->update();
    ContaMudanca();
}

void PaginasPDF::wheelEvent(QWheelEvent *evento)
{
    if (evento->modifiers() & Qt::ControlModifier) {
        MudaZoom(std::pow(PassoDaRoda, evento->angleDelta().y() / static_cast<double>(DegrauDaRoda)));
        evento->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(evento);
}

void PaginasPDF::keyPressEvent(QKeyEvent *evento)
{
    const bool inteira = m_Disposicao.Ajuste() == AjusteDaPagina::PaginaInteira;
    switch (evento->key()) {
    case Qt::Key_Home:
        VaiPara(0);
        return;
    case Qt::Key_End:
        VaiPara(m_Disposicao.Quantas() - 1);
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        return;
    case Qt::Key_Space:
        verticalScrollBar()->triggerAction(evento->modifiers() & Qt::ShiftModifier
                                               ? QAbstractSlider::SliderPageStepSub
                                               : QAbstractSlider::SliderPageStepAdd);
        return;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        if (inteira) {
            VaiPara(m_Atual + (evento->key() == Qt::Key_PageDown ? 1 : -1));
            return;
        }
        break;
    default:
        break;
    }
    QAbstractScrollArea::keyPressEvent(evento);
}

void PaginasPDF::resizeEvent(QResizeEvent *evento)
{
    QAbstractScrollArea::resizeEvent(evento);
    const bool noComeco = verticalScrollBar()->value() == 0;
    Redispoe({Meio().x(), 0},
             [this] { m_Disposicao.DefineVista(viewport()->size(), logicalDpiX() / PontosPorPolegada); });
    if (noComeco) {
        verticalScrollBar()->setValue(0); // the margin above does not grow with the page
    }
}

void PaginasPDF::changeEvent(QEvent *evento)
{
    QAbstractScrollArea::changeEvent(evento);
    if (evento->type() == QEvent::PaletteChange) {
        viewport()->update();
    }
}

void PaginasPDF::scrollContentsBy(int, int)
{
    viewport()->update();
    const int maximo = verticalScrollBar()->maximum();
    const int agora = verticalScrollBar()->value();
    m_Atual = std::max(0, agora == maximo && maximo > 0
                              ? m_Disposicao.Quantas() - 1
                              : m_Disposicao.PaginaEm(agora == 0 ? 0 : agora + viewport()->height() / 2.0));
    ContaMudanca();
}

QSize PaginasPDF::TamanhoDoDesenho(int pagina) const
{
    const QSizeF inteiro = m_Disposicao.Desenho(pagina) * devicePixelRatioF();
    const double demais = inteiro.width() * inteiro.height() / MaisPontosDoDesenho;
    return (demais > 1 ? inteiro / std::sqrt(demais) : inteiro).toSize().expandedTo({1, 1});
}

void PaginasPDF::Pede(int pagina)
{
    const QSize tamanho = TamanhoDoDesenho(pagina);
    const auto desenho = m_Desenhos.find(pagina);
    const auto pedido = m_Pedidos.find(pagina);
    if (m_SemDesenho.contains(pagina) || (desenho != m_Desenhos.end() && desenho->second.size() == tamanho) ||
        (pedido != m_Pedidos.end() && pedido->second == tamanho)) {
        return;
    }
    m_Pedidos[pagina] = tamanho;
    m_Desenhista->requestPage(pagina, tamanho);
}

void PaginasPDF::Desenhou(int pagina, const QImage &desenho)
{
    const auto pedido = m_Pedidos.find(pagina);
    if (pedido == m_Pedidos.end() || (!desenho.isNull() && pedido->second != desenho.size())) {
        return; // another one is on its way
    }
    m_Pedidos.erase(pedido);
    if (desenho.isNull()) {
        m_SemDesenho[pagina] = true;
    } else {
        m_Desenhos[pagina] = desenho;
    }
    viewport()->update();
}

void PaginasPDF::Pinta(QPainter &pincel, int pagina)
{
    pincel.save();
    pincel.translate(-Rolagem());
    const QRectF lugar = m_Disposicao.Lugar(pagina);
    pincel.fillRect(lugar, Qt::white); // paper, whatever the palette
    const auto desenho = m_Desenhos.find(pagina);
    if (m_SemDesenho.contains(pagina)) {
        pincel.setPen(Qt::black);
        pincel.drawText(lugar, Qt::AlignCenter | Qt::TextWordWrap,
                        QString("A página %1 está danificada e não pode ser mostrada.").arg(pagina + 1));
    } else if (desenho != m_Desenhos.end()) {
        pincel.save();
        pincel.setRenderHint(QPainter::SmoothPixmapTransform);
        pincel.setTransform(m_Disposicao.DoDesenho(pagina), /*combine=*/true);
        pincel.drawImage(QRectF(QPointF(), m_Disposicao.Desenho(pagina)), desenho->second);
        pincel.restore();
    }
    pincel.setTransform(m_Disposicao.DosPontos(pagina), /*combine=*/true);
    PintaMarcas(pincel, pagina);
    pincel.restore();
}

void PaginasPDF::PintaMarcas(QPainter &pincel, int pagina) const
{
    QColor fraca = palette().color(QPalette::Highlight);
    QColor forte = fraca;
    fraca.setAlpha(FracaMarca);
    forte.setAlpha(ForteMarca);
    QPen contorno(palette().color(QPalette::Highlight), 2);
    contorno.setCosmetic(true);
    for (std::size_t n = 0; n < m_Achados.size(); ++n) {
        if (m_Achados[n].Pagina != pagina) {
            continue;
        }
        const bool atual = static_cast<int>(n) == m_Achado;
        pincel.setBrush(atual ? forte : fraca);
        pincel.setPen(atual ? contorno : QPen(Qt::NoPen));
        for (const QRectF &lugar : m_Achados[n].Lugares) {
            pincel.drawRect(lugar);
        }
    }
    pincel.setPen(Qt::NoPen);
    pincel.setBrush(fraca);
    if (m_TudoEscolhido || (m_Escolha && m_PaginaDaEscolha == pagina)) {
        const QPdfSelection escolha = m_TudoEscolhido ? m_Documento.getAllText(pagina) : *m_Escolha;
        for (const QPolygonF &linha : escolha.bounds()) {
            pincel.drawPolygon(linha);
        }
    }
}

void PaginasPDF::paintEvent(QPaintEvent *)
{
    QPainter pincel(viewport());
    pincel.fillRect(viewport()->rect(), palette().color(QPalette::Dark));
    if (m_Disposicao.Quantas() == 0) {
        return;
    }
    const double alto = Rolagem().y();
    const int primeira = m_Disposicao.PaginaEm(alto);
    const int ultima = m_Disposicao.PaginaEm(alto + viewport()->height());
    for (int pagina = primeira; pagina <= ultima; ++pagina) {
        Pede(pagina);
        Pinta(pincel, pagina);
    }
    std::erase_if(m_Desenhos, [&](const auto &desenho) { // the neighbours stay, for who goes to and fro
        return desenho.first < primeira - 1 || desenho.first > ultima + 1;
    });
}

} // namespace mesa
