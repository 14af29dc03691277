#include "desk/windows/VisorPDF.h"

#include "desk/windows/Icones.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfPageNavigator>
#include <QPdfSearchModel>
#include <QPdfView>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace mesa {

namespace {

constexpr double PassoDoZoom = 1.25;
constexpr double MenorZoom = 0.2;
constexpr double MaiorZoom = 5.0;
constexpr double ParteDaTela = 0.9;

} // namespace

VisorPDF::VisorPDF(QWidget *dono)
    : QDialog(dono),
      m_Documento(new QPdfDocument(this)),
      m_Visao(new QPdfView(this)),
      m_Busca(new QPdfSearchModel(this)),
      m_Procurado(new QLineEdit(this)),
      m_Achados(new QLabel(this))
{
    setObjectName("VisorPDF");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(QSize(1080, 900).boundedTo(screen()->availableSize() * ParteDaTela));
    m_Visao->setDocument(m_Documento);
    m_Visao->setPageMode(QPdfView::PageMode::MultiPage);
    m_Visao->setZoomMode(QPdfView::ZoomMode::FitToWidth);
    m_Busca->setDocument(m_Documento);
    m_Visao->setObjectName("paginas");
    m_Visao->setFocusPolicy(Qt::StrongFocus);
    m_Procurado->setObjectName("procurado");
    m_Achados->setObjectName("achados");
    m_Procurado->setMinimumWidth(120);
    m_Procurado->setPlaceholderText("Procurar no documento");
    m_Procurado->setAccessibleName("Procurar no documento");
    m_Procurado->setClearButtonEnabled(true);

    auto *barra = new QHBoxLayout;
    const auto botao = [&](const QString &texto, const char *icone, auto acao) {
        auto *novo = new QPushButton(Icone(icone), texto, this);
        novo->setAutoDefault(false);
        connect(novo, &QPushButton::clicked, this, acao);
        barra->addWidget(novo);
    };
    botao("A&umentar", "aumentar", [this] { MudaZoom(PassoDoZoom); });
    botao("&Diminuir", "diminuir", [this] { MudaZoom(1 / PassoDoZoom); });
    botao("&Largura", "largura", [this] { m_Visao->setZoomMode(QPdfView::ZoomMode::FitToWidth); });
    barra->addWidget(m_Procurado, 1);
    botao("A&nterior", "anterior", [this] { Procura(-1); });
    botao("&Próximo", "proximo", [this] { Procura(1); });
    barra->addWidget(m_Achados);
    botao("&Imprimir...", "imprimir", [this] { Imprime(); });
    botao("&Salvar como...", "salvar", [this] { SalvaComo(); });
    botao("&Fechar", "fechar", [this] { close(); });

    auto *tudo = new QVBoxLayout(this);
    tudo->addLayout(barra);
    tudo->addWidget(m_Visao, 1);

    connect(m_Procurado, &QLineEdit::textChanged, this, [this](const QString &texto) {
        m_Busca->setSearchString(texto);
        m_Resultado = -1;
        m_Achados->clear();
    });
    connect(m_Procurado, &QLineEdit::returnPressed, this, [this] { Procura(1); });
    new QShortcut(QKeySequence::Find, this, [this] { m_Procurado->setFocus(); });
    new QShortcut(QKeySequence("F3"), this, [this] { Procura(1); });
    new QShortcut(QKeySequence("Shift+F3"), this, [this] { Procura(-1); });
    new QShortcut(QKeySequence::Print, this, [this] { Imprime(); });
    new QShortcut(QKeySequence::Save, this, [this] { SalvaComo(); });
    new QShortcut(QKeySequence::ZoomIn, this, [this] { MudaZoom(PassoDoZoom); });
    new QShortcut(QKeySequence::ZoomOut, this, [this] { MudaZoom(1 / PassoDoZoom); });
    m_Visao->setFocus();
}

VisorPDF::~VisorPDF()
{
    m_Visao->setDocument(nullptr);
}

bool VisorPDF::Abre(const QString &caminho)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) {
        return false;
    }
    m_Bytes.setData(arquivo.readAll()); // the file may go while the viewer is open
    m_Bytes.open(QIODevice::ReadOnly);
    if (!m_Bytes.data().left(1024).contains("%PDF-")) {
        return false;
    }
    m_Documento->load(&m_Bytes);
    if (m_Documento->error() != QPdfDocument::Error::None) {
        return false;
    }
    m_Nome = QFileInfo(caminho).fileName();
    setWindowTitle("Documento - " + m_Nome);
    return true;
}

void VisorPDF::MudaZoom(double fator)
{
    m_Visao->setZoomMode(QPdfView::ZoomMode::Custom);
    m_Visao->setZoomFactor(qBound(MenorZoom, m_Visao->zoomFactor() * fator, MaiorZoom));
}

void VisorPDF::Procura(int passo)
{
    for (int pagina = 0; pagina < m_Documento->pageCount(); ++pagina) {
        m_Busca->resultsOnPage(pagina); // by itself it goes through the pages in its own time
    }
    const int total = m_Busca->rowCount({});
    if (total == 0) {
        m_Achados->setText(m_Procurado->text().isEmpty() ? QString() : QString("Não encontrado"));
        return;
    }
    m_Resultado = (m_Resultado + passo + total) % total;
    const QPdfLink achado = m_Busca->resultAtIndex(m_Resultado);
    m_Visao->pageNavigator()->jump(achado.page(), achado.location(), m_Visao->pageNavigator()->currentZoom());
    m_Achados->setText(QString("%1 de %2").arg(m_Resultado + 1).arg(total));
}

void VisorPDF::Imprime()
{
    QPrinter impressora(QPrinter::HighResolution);
    QPrintDialog dialogo(&impressora, this);
    dialogo.setWindowTitle("Imprimir documento");
    if (dialogo.exec() != QDialog::Accepted) {
        return;
    }
    QPainter pincel;
    if (!pincel.begin(&impressora)) {
        QMessageBox::warning(this, "Imprimir", "Não foi possível imprimir nesta impressora.");
        return;
    }
    const QRect area = impressora.pageLayout().paintRectPixels(impressora.resolution());
    for (int pagina = 0; pagina < m_Documento->pageCount(); ++pagina) {
        if (pagina > 0) {
            impressora.newPage();
        }
        const QSize tamanho = m_Documento->pagePointSize(pagina).scaled(area.size(), Qt::KeepAspectRatio).toSize();
        pincel.drawImage(QPoint(0, 0), m_Documento->render(pagina, tamanho));
    }
}

void VisorPDF::SalvaComo()
{
    const QString destino = QFileDialog::getSaveFileName(this, "Salvar documento", m_Nome, "PDF (*.pdf)");
    if (destino.isEmpty()) {
        return;
    }
    QSaveFile arquivo(destino); // the dialog has asked about one that is there
    arquivo.open(QIODevice::WriteOnly);
    arquivo.write(m_Bytes.data());
    if (!arquivo.commit()) {
        QMessageBox::warning(this, "Salvar documento", "Não foi possível salvar o documento em " + destino + ".");
    }
}

} // namespace mesa
