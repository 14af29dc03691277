#pragma once

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QString>
#include <QStringList>

// A PDF with a text on each page, in a file.
inline QString FazPdfDePaginas(const QString &caminho, const QStringList &textos,
                               const QPageSize &papel = QPageSize(QPageSize::A4),
                               QPageLayout::Orientation como = QPageLayout::Portrait)
{
    QPdfWriter escrita(caminho);
    escrita.setPageSize(papel);
    escrita.setPageOrientation(como);
    QPainter pincel(&escrita);
    pincel.setFont(QFont("DejaVu Sans", 24));
    for (int pagina = 0; pagina < textos.size(); ++pagina) {
        if (pagina > 0) {
            escrita.newPage();
        }
        pincel.drawText(pincel.viewport(), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, textos[pagina]);
    }
    return caminho;
}
