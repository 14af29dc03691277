#pragma once

#include <QBuffer>
#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;
class QPdfDocument;
class QPdfSearchModel;
class QSpinBox;

namespace mesa {

class PaginasPDF;

// Shows the pages of a PDF, with zoom, search, copying of text, print and save as.
class VisorPDF : public QDialog {
  public:
    explicit VisorPDF(QWidget *dono);
    ~VisorPDF() override;

    // False when the file cannot be read as a PDF with pages. nome: of the document, when it is not the file's.
    bool Abre(const QString &caminho, const QString &nome = {});

  private:
    QWidget *FazBarra();
    QWidget *FazBusca();
    void FazAcoes();
    void FazTeclas();
    void Segue();
    void Procura(int passo);
    void EsqueceAchados();
    void Copia();
    void CopiaPagina();
    void Imprime();
    void SalvaComo();

    QString m_Nome;
    QBuffer m_Bytes;
    QPdfDocument *m_Documento;
    PaginasPDF *m_Paginas;
    QPdfSearchModel *m_Busca;
    QSpinBox *m_Pagina = nullptr;
    QLabel *m_Zoom = nullptr;
    QLineEdit *m_Procurado = nullptr;
    QLabel *m_Achados = nullptr;
    int m_Achado = -1; // of what was found
};

} // namespace mesa
