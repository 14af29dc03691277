#pragma once

#include "services/Segue.h"

#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

class QPainter;
class QPrinter;

namespace mesa {

// A table as it goes on paper.
struct TabelaImpressa {
    QString Titulo;
    QString Criterios; // what the rows are of; may be empty
    QString Rodape;    // when, and by whom
    QStringList Titulos;
    std::vector<double> Larguras; // of the columns, in proportion
    std::vector<QStringList> Linhas;
};

// Prints a table: on each page the title, the heading, as many rows as there is room for, and the number of the page.
// Texts are wrapped; a row is as high as its longest one, and no higher than a page.
class ImpressaoDeTabela {
  public:
    // Both outlive it.
    ImpressaoDeTabela(const TabelaImpressa &tabela, QPrinter &impressora);

    int Paginas() const { return static_cast<int>(m_Primeiras.size()); }
    // The pages that the printer is told to print; all of them when it is told none. False when it cannot; what is
    // given up on the way was what the person wanted.
    bool Imprime(const Segue &segue);

  private:
    double Altura(const QStringList &celulas, const QFont &letra) const;
    void Reparte();
    void DesenhaPagina(QPainter &pincel, int pagina) const;
    void DesenhaCelulas(QPainter &pincel, const QStringList &celulas, double y, double altura) const;

    const TabelaImpressa &m_Tabela;
    QPrinter &m_Impressora;
    QFont m_Letra;
    QFont m_LetraDoCabecalho;
    QFont m_LetraDoTitulo;
    QRectF m_Folha;
    double m_Linha = 0;  // height of one line of text
    double m_Cabeca = 0; // of what stands above the heading
    std::vector<double> m_Larguras;
    std::vector<std::size_t> m_Primeiras; // row of each page
};

} // namespace mesa
