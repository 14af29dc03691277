#include "desk/windows/ImpressaoDeTabela.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <numeric>

namespace mesa {

namespace {

constexpr int PontosDaLetra = 9;
constexpr int PontosDoTitulo = 13;
constexpr double Folga = 0.3; // beside a text, of the height of a line
constexpr int Quebra = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;
constexpr int Corrida = Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine;
constexpr double Alto = 1'000'000;

QFont Letra(int pontos, bool negrito)
{
    QFont letra;
    letra.setPointSize(pontos);
    letra.setBold(negrito);
    return letra;
}

} // namespace

ImpressaoDeTabela::ImpressaoDeTabela(const TabelaImpressa &tabela, QPrinter &impressora)
    : m_Tabela(tabela),
      m_Impressora(impressora),
      m_Letra(Letra(PontosDaLetra, false)),
      m_LetraDoCabecalho(Letra(PontosDaLetra, true)),
      m_LetraDoTitulo(Letra(PontosDoTitulo, true)),
      m_Folha(QPointF(), impressora.pageLayout().paintRectPixels(impressora.resolution()).size())
{
    m_Linha = QFontMetricsF(m_Letra, &impressora).lineSpacing();
    const double soma = std::accumulate(tabela.Larguras.begin(), tabela.Larguras.end(), 0.0);
    for (const double largura : tabela.Larguras) {
        m_Larguras.push_back(m_Folha.width() * largura / std::max(soma, 1.0));
    }
    m_Cabeca = QFontMetricsF(m_LetraDoTitulo, &impressora)
                   .boundingRect(QRectF(0, 0, m_Folha.width(), Alto), Quebra, tabela.Titulo)
                   .height() +
               m_Linha * Folga;
    if (!tabela.Criterios.isEmpty()) {
        m_Cabeca += QFontMetricsF(m_Letra, &impressora)
                        .boundingRect(QRectF(0, 0, m_Folha.width(), Alto), Quebra, tabela.Criterios)
                        .height() +
                    m_Linha * Folga;
    }
    Reparte();
}

double ImpressaoDeTabela::Altura(const QStringList &celulas, const QFont &letra) const
{
    const QFontMetricsF medida(letra, &m_Impressora);
    double altura = m_Linha;
    for (qsizetype coluna = 0; coluna < celulas.size(); ++coluna) {
        const double largura = m_Larguras[static_cast<std::size_t>(coluna)] - 2 * m_Linha * Folga;
        if (medida.horizontalAdvance(celulas[coluna]) > largura || celulas[coluna].contains('\n')) {
            altura =
                std::max(altura, medida.boundingRect(QRectF(0, 0, largura, Alto), Quebra, celulas[coluna]).height());
        }
    }
    return altura + m_Linha * Folga;
}

// A row that is higher than a page has one of its own.
void ImpressaoDeTabela::Reparte()
{
    const double comeco = m_Cabeca + Altura(m_Tabela.Titulos, m_LetraDoCabecalho) + m_Linha * Folga;
    const double fim = m_Folha.height() - 2 * m_Linha;
    m_Primeiras = {0};
    double y = comeco;
    for (std::size_t linha = 0; linha < m_Tabela.Linhas.size(); ++linha) {
        const double altura = Altura(m_Tabela.Linhas[linha], m_Letra);
        if (y + altura > fim && y > comeco) {
            m_Primeiras.push_back(linha);
            y = comeco;
        }
        y += altura;
    }
}

bool ImpressaoDeTabela::Imprime()
{
    const bool faixa = m_Impressora.printRange() == QPrinter::PageRange && m_Impressora.fromPage() > 0;
    const int primeira = faixa ? m_Impressora.fromPage() : 1;
    const int ultima = std::min(faixa ? m_Impressora.toPage() : Paginas(), Paginas());
    QPainter pincel;
    if (primeira > ultima || !pincel.begin(&m_Impressora)) {
        return false;
    }
    for (int pagina = primeira; pagina <= ultima; ++pagina) {
        if (pagina > primeira && !m_Impressora.newPage()) {
            return false;
        }
        DesenhaPagina(pincel, pagina);
    }
    return pincel.end();
}

void ImpressaoDeTabela::DesenhaPagina(QPainter &pincel, int pagina) const
{
    QRectF desenhado;
    pincel.setFont(m_LetraDoTitulo);
    pincel.drawText(QRectF(0, 0, m_Folha.width(), m_Cabeca), Quebra, m_Tabela.Titulo, &desenhado);
    pincel.setFont(m_Letra);
    if (!m_Tabela.Criterios.isEmpty()) {
        const double y = desenhado.height() + m_Linha * Folga;
        pincel.drawText(QRectF(0, y, m_Folha.width(), m_Cabeca), Quebra, m_Tabela.Criterios);
    }
    pincel.setPen(QPen(Qt::black, m_Linha / 20));
    double y = m_Cabeca;
    const double altura = Altura(m_Tabela.Titulos, m_LetraDoCabecalho);
    pincel.setFont(m_LetraDoCabecalho);
    DesenhaCelulas(pincel, m_Tabela.Titulos, y, altura);
    pincel.setFont(m_Letra);
    y += altura;
    pincel.drawLine(QPointF(0, y), QPointF(m_Folha.width(), y));
    y += m_Linha * Folga;
    const auto indice = static_cast<std::size_t>(pagina);
    const std::size_t fim = indice < m_Primeiras.size() ? m_Primeiras[indice] : m_Tabela.Linhas.size();
    for (std::size_t linha = m_Primeiras[indice - 1]; linha < fim; ++linha) {
        const double alta = Altura(m_Tabela.Linhas[linha], m_Letra);
        DesenhaCelulas(pincel, m_Tabela.Linhas[linha], y, alta);
        y += alta;
    }
    const QRectF rodape(0, m_Folha.height() - m_Linha, m_Folha.width(), m_Linha);
    pincel.drawText(rodape, Corrida, m_Tabela.Rodape);
    pincel.drawText(rodape, Qt::AlignRight | Qt::AlignTop | Qt::TextSingleLine,
                    QString("Página %1 de %2").arg(pagina).arg(Paginas()));
}

void ImpressaoDeTabela::DesenhaCelulas(QPainter &pincel, const QStringList &celulas, double y, double altura) const
{
    const double folga = m_Linha * Folga;
    double x = 0;
    for (qsizetype coluna = 0; coluna < celulas.size(); ++coluna) {
        const double largura = m_Larguras[static_cast<std::size_t>(coluna)];
        pincel.drawText(QRectF(x + folga, y, largura - 2 * folga, altura), Quebra, celulas[coluna]);
        x += largura;
    }
}

} // namespace mesa
