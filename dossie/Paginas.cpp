#include "dossie/Paginas.h"

#include "dossie/TextoDoDossie.h"
#include "host/Conversoes.h"
#include "services/Resumo.h"
#include "services/TextoQt.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace dossie {

using mesa::Q;

namespace {

constexpr int Resolucao = 300;          // of the pages, dots per inch
constexpr double PontosDoDesenho = 150; // of the certificate's pictures, dots per inch
constexpr double MaiorDesenho = 4e6;    // dots of one picture
constexpr double PontosPorPolegada = 72;
constexpr int TamanhoDoTexto = 9; // points
constexpr int TamanhoDoPe = 8;
const char *const Familia =
    "DejaVu Sans"; // with every letter of the texts, and on every machine that runs the programs
const char *const Folha = "folha";

QFont Fonte(int pontos)
{
    return QFont(Familia, pontos);
}

// What tells archives what this file is: the third part of the standard allows for what is attached.
QByteArray Metadados(const std::string &titulo)
{
    return QString(R"(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
<dc:title><rdf:Alt><rdf:li xml:lang="x-default">%1</rdf:li></rdf:Alt></dc:title></rdf:Description>
<rdf:Description rdf:about="" xmlns:pdfaid="http://www.aiim.org/pdfa/ns/id/" pdfaid:part="3" pdfaid:conformance="B"/>
</rdf:RDF></x:xmpmeta>
<?xpacket end="r"?>
)")
        .arg(Q(titulo).toHtmlEscaped())
        .toUtf8();
}

// Pages that are written one after the other, each with its foot.
class Folhas {
  public:
    Folhas(QPdfWriter &escritor, QPainter &pincel, const QString &pe, int quantas)
        : m_Escritor(escritor),
          m_Pincel(pincel),
          m_Pe(pe),
          m_Quantas(quantas)
    {
    }

    // The page's place without the foot.
    static QSizeF Lugar(const QPdfWriter &escritor)
    {
        const double linha = QFontMetricsF(Fonte(TamanhoDoPe), &escritor).height();
        return {static_cast<double>(escritor.width()), std::floor(escritor.height() - 2 * linha)};
    }

    void Nova()
    {
        if (m_Feitas++ > 0) {
            m_Escritor.newPage();
        }
        m_Pincel.save();
        m_Pincel.setFont(Fonte(TamanhoDoPe));
        m_Pincel.setPen(Qt::black);
        m_Pincel.drawText(QRectF(0, 0, m_Escritor.width(), m_Escritor.height()), Qt::AlignBottom | Qt::AlignLeft, m_Pe);
        m_Pincel.drawText(QRectF(0, 0, m_Escritor.width(), m_Escritor.height()), Qt::AlignBottom | Qt::AlignRight,
                          QString("%1 %2 de %3").arg(Folha).arg(m_Feitas).arg(m_Quantas));
        m_Pincel.restore();
    }

  private:
    QPdfWriter &m_Escritor;
    QPainter &m_Pincel;
    QString m_Pe;
    int m_Quantas;
    int m_Feitas = 0;
};

QImage Desenho(QPdfDocument &documento, int pagina, const QSizeF &lugar)
{
    const QSizeF naFolha = documento.pagePointSize(pagina).scaled(lugar, Qt::KeepAspectRatio);
    QSizeF pontos = naFolha * (PontosDoDesenho / Resolucao);
    const double demais = pontos.width() * pontos.height() / MaiorDesenho;
    pontos = demais > 1 ? pontos / std::sqrt(demais) : pontos;
    const QImage desenho = documento.render(pagina, pontos.toSize().expandedTo({1, 1}));
    if (desenho.isNull()) {
        return desenho;
    }
    QImage papel(desenho.size(), QImage::Format_RGB32);
    papel.fill(Qt::white);
    QPainter pincel(&papel);
    pincel.drawImage(0, 0, desenho);
    return papel;
}

class Documento {
  public:
    explicit Documento(const QByteArray &octetos) : m_Octetos(octetos)
    {
        m_Aparelho.setBuffer(&m_Octetos);
        m_Aparelho.open(QIODevice::ReadOnly);
        m_Documento.load(&m_Aparelho);
    }
    bool Aberto() const { return m_Documento.status() == QPdfDocument::Status::Ready && m_Documento.pageCount() > 0; }
    QPdfDocument &Qual() { return m_Documento; }

  private:
    QByteArray m_Octetos;
    QBuffer m_Aparelho;
    QPdfDocument m_Documento;
};

void DesenhaCertificado(QPdfDocument &documento, Folhas &folhas, QPdfWriter &escritor, QPainter &pincel,
                        Figuras figuras, const mesa::Segue &segue)
{
    const int quantas = std::min(documento.pageCount(), MaisPaginasDoCertificado);
    const QSizeF folha = Folhas::Lugar(escritor);
    for (int pagina = 0; pagina < quantas; ++pagina) {
        if (segue && !segue(0.3 + 0.6 * pagina / quantas, "Desenhando o certificado")) {
            throw Desistencia();
        }
        folhas.Nova();
        pincel.setFont(Fonte(TamanhoDoTexto));
        pincel.setPen(Qt::black);
        QString titulo = QString("Certificado, página %1 de %2. O original está anexado a este arquivo com o nome %3.")
                             .arg(pagina + 1)
                             .arg(documento.pageCount())
                             .arg(NomeDoCertificado);
        if (pagina + 1 == quantas && quantas < documento.pageCount()) {
            titulo += " As páginas seguintes estão só no original.";
        }
        const QRectF alto = pincel.boundingRect(QRectF(QPointF(), folha), Qt::TextWordWrap, titulo);
        pincel.drawText(alto, Qt::TextWordWrap, titulo);
        if (figuras == Figuras::Omite) {
            continue;
        }
        const QRectF lugar(0, alto.bottom() + escritor.logicalDpiY() / 12.0, folha.width(),
                           folha.height() - alto.bottom() - escritor.logicalDpiY() / 12.0);
        const QImage desenho = Desenho(documento, pagina, lugar.size());
        if (desenho.isNull()) {
            pincel.drawText(lugar, Qt::AlignCenter | Qt::TextWordWrap,
                            "A página está danificada e não pode ser desenhada.");
            continue;
        }
        QRectF onde(QPointF(), QSizeF(desenho.size()).scaled(lugar.size(), Qt::KeepAspectRatio));
        onde.moveTopLeft({lugar.left() + (lugar.width() - onde.width()) / 2, lugar.top()});
        pincel.drawImage(onde, desenho);
        pincel.setPen(QPen(Qt::gray, 2));
        pincel.drawRect(onde);
    }
}

} // namespace

QByteArray DesenhaPaginas(const mesa::ProvaED &prova, const Certificado &certificado, const QByteArray &fatos,
                          Figuras figuras, const mesa::Segue &segue)
{
    QByteArray pdf;
    QBuffer onde(&pdf);
    onde.open(QIODevice::WriteOnly);
    {
        QPdfWriter escritor(&onde);
        escritor.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
        escritor.setResolution(Resolucao);
        escritor.setPageLayout(
            QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {18, 16, 18, 14}, QPageLayout::Millimeter));
        escritor.setTitle(Q(Titulo(prova)));
        escritor.setDocumentXmpMetadata(Metadados(Titulo(prova)));

        QTextDocument texto;
        texto.setDefaultFont(Fonte(TamanhoDoTexto));
        texto.setDocumentMargin(0);
        QTextOption quebra;
        quebra.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        texto.setDefaultTextOption(quebra);
        texto.documentLayout()->setPaintDevice(&escritor);
        const QSizeF folha = Folhas::Lugar(escritor);
        texto.setPageSize(folha);
        std::optional<Documento> documento;
        if (!certificado.Octetos.isEmpty()) {
            documento.emplace(certificado.Octetos);
        }
        const bool desenha = documento && documento->Aberto();
        texto.setHtml(TextoDoDossie(prova, certificado, desenha, mesa::Resumo(fatos)));

        const int doCertificado = desenha ? std::min(documento->Qual().pageCount(), MaisPaginasDoCertificado) : 0;
        QPainter pincel(&escritor);
        Folhas folhas(
            escritor, pincel,
            Q(Titulo(prova) + ", fato de " + MomentoDoFato(prova) + ", emitido em " + prova.EmitidoEm.Valor()),
            texto.pageCount() + doCertificado);
        QAbstractTextDocumentLayout::PaintContext contexto;
        contexto.palette.setColor(QPalette::Text, Qt::black); // paper, whatever the desk's colours
        for (int pagina = 0; pagina < texto.pageCount(); ++pagina) {
            if (segue && !segue(0.3 * pagina / texto.pageCount(), "Escrevendo os fatos")) {
                throw Desistencia();
            }
            folhas.Nova();
            pincel.save();
            pincel.translate(0, -pagina * folha.height());
            contexto.clip = QRectF(0, pagina * folha.height(), folha.width(), folha.height());
            pincel.setClipRect(contexto.clip);
            texto.documentLayout()->draw(&pincel, contexto);
            pincel.restore();
        }
        if (desenha) {
            DesenhaCertificado(documento->Qual(), folhas, escritor, pincel, figuras, segue);
        }
    }
    return pdf;
}

QString TextoDasPaginas(const QByteArray &pdf)
{
    Documento documento(pdf);
    QString tudo;
    static const QRegularExpression pe(
        QString("Dossiê do equipamento [^\\n]* emitido em [0-9/]+ às [0-9:]+|%1\\s*\\d+\\s*de\\s*\\d+").arg(Folha));
    static const QRegularExpression brancos("\\s+");
    for (int pagina = 0; documento.Aberto() && pagina < documento.Qual().pageCount(); ++pagina) {
        QString texto = documento.Qual().getAllText(pagina).text();
        texto.remove(pe).remove(brancos);
        tudo += texto;
    }
    return tudo;
}

} // namespace dossie
