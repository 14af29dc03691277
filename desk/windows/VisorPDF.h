#pragma once

#include <QBuffer>
#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;
class QPdfDocument;
class QPdfSearchModel;
class QPdfView;

namespace mesa {

// Shows the pages of a PDF, with zoom, search, print and save as.
class VisorPDF : public QDialog {
  public:
    explicit VisorPDF(QWidget *dono);
    ~VisorPDF() override;

    // False when the file cannot be read as a PDF.
    bool Abre(const QString &caminho);

  private:
    void MudaZoom(double fator);
    void Procura(int passo);
    void Imprime();
    void SalvaComo();

    QString m_Nome; // of the file
    QBuffer m_Bytes;
    QPdfDocument *m_Documento;
    QPdfView *m_Visao;
    QPdfSearchModel *m_Busca;
    QLineEdit *m_Procurado;
    QLabel *m_Achados;
    int m_Resultado = -1;
};

} // namespace mesa
