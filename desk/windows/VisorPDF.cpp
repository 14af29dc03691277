#include "desk/windows/VisorPDF.h"

#include "desk/host/NomesDeDocumentos.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "desk/windows/ImpressaoDePDF.h"
#include "desk/windows/Impressora.h"
#include "desk/windows/LeiauteEmFluxo.h"
#include "desk/windows/PaginasPDF.h"
#include "desk/windows/TelaDeAndamento.h"
#include "services/TextoQt.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPdfDocument>
#include <QPdfSearchModel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>

namespace mesa {

namespace {

constexpr double PassoDoZoom = 1.25;
constexpr double ParteDaTela = 0.9;
constexpr qsizetype LugarDoInicio = 1024; // bytes in which a PDF says that it is one

// The library tells a word in pieces, letter by letter at times.
QList<QRectF> PorLinha(const QList<QRectF> &pedacos)
{
    QList<QRectF> linhas;
    for (const QRectF &pedaco : pedacos) {
        const bool continua =
            !linhas.isEmpty() && linhas.back().top() < pedaco.bottom() && pedaco.top() < linhas.back().bottom();
        if (continua) {
            linhas.back() |= pedaco;
        } else {
            linhas << pedaco;
        }
    }
    return linhas;
}

} // namespace

VisorPDF::VisorPDF(QWidget *dono)
    : QDialog(dono),
      m_Documento(new QPdfDocument(this)),
      m_Paginas(new PaginasPDF(*m_Documento, this)),
      m_Busca(new QPdfSearchModel(this))
{
    setObjectName("VisorPDF");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(QSize(1080, 900).boundedTo(screen()->availableSize() * ParteDaTela));
    m_Paginas->setObjectName("paginas");
    m_Paginas->setAccessibleName("Páginas do documento");
    m_Paginas->Mudou = [this] { Segue(); };
    m_Busca->setDocument(m_Documento);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazBarra());
    tudo->addWidget(FazBusca());
    tudo->addWidget(m_Paginas, 1);
    setTabOrder(m_Procurado, m_Paginas);
    FazAcoes();
    FazTeclas();
    m_Paginas->setFocus();
}

VisorPDF::~VisorPDF()
{
    m_Paginas->Mudou = nullptr;
    delete m_Paginas; // while there is still a document that it draws
}

QWidget *VisorPDF::FazBarra()
{
    auto *barra = new QWidget(this);
    auto *fluxo = new LeiauteEmFluxo(barra);
    fluxo->setContentsMargins(0, 0, 0, 0);
    const auto botao = [&](const char *nome, const QString &texto, const char *icone, auto acao) {
        QPushButton *novo = FazBotao(nome, texto, barra);
        novo->setIcon(Icone(icone));
        connect(novo, &QPushButton::clicked, this, acao);
        fluxo->addWidget(novo);
    };
    m_Pagina = new QSpinBox(barra);
    m_Pagina->setObjectName("pagina");
    m_Pagina->setAccessibleName("Página");
    m_Pagina->setKeyboardTracking(false);
    auto *rotulo = new QLabel("Pá&gina:", barra);
    rotulo->setObjectName("rotuloPagina");
    rotulo->setBuddy(m_Pagina);
    auto *pagina = new QHBoxLayout;
    pagina->addWidget(rotulo);
    pagina->addWidget(m_Pagina);
    fluxo->addItem(pagina);
    connect(m_Pagina, &QSpinBox::valueChanged, this, [this](int qual) { m_Paginas->VaiPara(qual - 1); });
    botao("aumentar", "A&umentar", "aumentar", [this] { m_Paginas->MudaZoom(PassoDoZoom); });
    botao("diminuir", "&Diminuir", "diminuir", [this] { m_Paginas->MudaZoom(1 / PassoDoZoom); });
    m_Zoom = new QLabel(barra);
    m_Zoom->setObjectName("zoom");
    m_Zoom->setAccessibleName("Tamanho");
    m_Zoom->setMinimumWidth(m_Zoom->fontMetrics().horizontalAdvance("000 %"));
    m_Zoom->setAlignment(Qt::AlignCenter);
    m_Zoom->setMinimumHeight(m_Pagina->sizeHint().height());
    fluxo->addWidget(m_Zoom);
    botao("largura", "&Largura", "largura", [this] { m_Paginas->Ajusta(AjusteDaPagina::Largura); });
    botao("inteira", "Página in&teira", "pagina", [this] { m_Paginas->Ajusta(AjusteDaPagina::PaginaInteira); });
    botao("girar", "Gi&rar", "girar", [this] { m_Paginas->Gira(); });
    botao("copiar", "&Copiar texto", "copiar", [this] { Copia(); });
    botao("imprimir", "&Imprimir...", "imprimir", [this] { Imprime(); });
    botao("salvar", "&Salvar como...", "salvar", [this] { SalvaComo(); });
    botao("fechar", "&Fechar", "fechar", [this] { close(); });
    return barra;
}

QWidget *VisorPDF::FazBusca()
{
    auto *busca = new QWidget(this);
    auto *linha = new QHBoxLayout(busca);
    linha->setContentsMargins(0, 0, 0, 0);
    m_Procurado = new QLineEdit(busca);
    m_Procurado->setObjectName("procurado");
    m_Procurado->setPlaceholderText("Procurar no documento");
    m_Procurado->setAccessibleName("Procurar no documento");
    m_Procurado->setClearButtonEnabled(true);
    linha->addWidget(m_Procurado, 1);
    const auto botao = [&](const char *nome, const QString &texto, int passo) {
        QPushButton *novo = FazBotao(nome, texto, busca);
        novo->setIcon(Icone(nome));
        connect(novo, &QPushButton::clicked, this, [this, passo] { Procura(passo); });
        linha->addWidget(novo);
    };
    botao("anterior", "A&nterior", -1);
    botao("proximo", "&Próximo", 1);
    m_Achados = FazTexto("achados", "", busca);
    m_Achados->setWordWrap(false);
    m_Achados->setMinimumWidth(m_Achados->fontMetrics().horizontalAdvance("Não encontrado"));
    linha->addWidget(m_Achados);
    connect(m_Procurado, &QLineEdit::textChanged, this, [this](const QString &texto) {
        m_Busca->setSearchString(texto);
        EsqueceAchados();
    });
    connect(m_Procurado, &QLineEdit::returnPressed, this, [this] { Procura(1); });
    return busca;
}

// What can be done with the text of the pages, also where they are clicked with the other button.
void VisorPDF::FazAcoes()
{
    const auto acao = [this](const QString &texto, const QKeySequence &tecla, auto faz) {
        auto *nova = new QAction(texto, m_Paginas);
        nova->setShortcut(tecla);
        nova->setShortcutContext(Qt::WidgetShortcut);
        connect(nova, &QAction::triggered, this, faz);
        m_Paginas->addAction(nova);
    };
    m_Paginas->setContextMenuPolicy(Qt::ActionsContextMenu);
    acao("&Copiar", QKeySequence::Copy, [this] { Copia(); });
    acao("Copiar texto da &página", {}, [this] { CopiaPagina(); });
    acao("Selecionar &tudo", QKeySequence::SelectAll, [this] { m_Paginas->EscolheTudo(); });
}

void VisorPDF::FazTeclas()
{
    const auto tecla = [this](const QKeySequence &qual, auto faz) {
        connect(new QShortcut(qual, this), &QShortcut::activated, this, faz);
    };
    tecla(QKeySequence::Find, [this] {
        m_Procurado->setFocus();
        m_Procurado->selectAll();
    });
    tecla(QKeySequence("F3"), [this] { Procura(1); });
    tecla(QKeySequence("Shift+F3"), [this] { Procura(-1); });
    tecla(QKeySequence::Print, [this] { Imprime(); });
    tecla(QKeySequence::Save, [this] { SalvaComo(); });
    tecla(QKeySequence("Ctrl+Home"), [this] { m_Paginas->VaiPara(0); });
    tecla(QKeySequence("Ctrl+End"), [this] { m_Paginas->VaiPara(m_Documento->pageCount() - 1); });
    for (const QKeySequence &mais : {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")}) {
        tecla(mais, [this] { m_Paginas->MudaZoom(PassoDoZoom); });
    }
    tecla(QKeySequence("Ctrl+-"), [this] { m_Paginas->MudaZoom(1 / PassoDoZoom); });
}

bool VisorPDF::Abre(const QString &caminho, const QString &nome)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) {
        return false;
    }
    m_Bytes.setData(arquivo.readAll()); // the file may go while the viewer is open
    m_Bytes.open(QIODevice::ReadOnly);
    if (!m_Bytes.data().left(LugarDoInicio).contains("%PDF-")) {
        return false;
    }
    m_Documento->load(&m_Bytes);
    if (m_Documento->error() != QPdfDocument::Error::None || m_Documento->pageCount() < 1) {
        return false;
    }
    m_Nome = nome.isEmpty() ? QFileInfo(caminho).fileName() : nome;
    setWindowTitle(m_Nome);
    {
        const QSignalBlocker calado(m_Pagina);
        m_Pagina->setRange(1, m_Documento->pageCount());
        m_Pagina->setSuffix(QString(" de %1").arg(m_Documento->pageCount()));
    }
    m_Paginas->Abriu();
    return true;
}

// The fields beside the pages follow them.
void VisorPDF::Segue()
{
    if (m_Zoom == nullptr || m_Documento->pageCount() < 1) {
        return;
    }
    const QSignalBlocker calado(m_Pagina);
    m_Pagina->setValue(m_Paginas->Atual() + 1);
    m_Zoom->setText(QString("%1 %").arg(std::lround(m_Paginas->Disposicao().Zoom() * 100)));
    m_Paginas->setAccessibleDescription(m_Pagina->text());
}

void VisorPDF::EsqueceAchados()
{
    m_Achado = -1;
    m_Achados->clear();
    m_Paginas->MostraAchados({}, -1);
}

// From the page that is looked at on, and after the last one from the first.
void VisorPDF::Procura(int passo)
{
    std::vector<PaginasPDF::Achado> achados;
    int daqui = -1;
    for (int pagina = 0; pagina < m_Documento->pageCount(); ++pagina) {
        // By itself it goes through the pages in its own time.
        for (const QPdfLink &achado : m_Busca->resultsOnPage(pagina)) {
            if (daqui < 0 && pagina >= m_Paginas->Atual()) {
                daqui = static_cast<int>(achados.size());
            }
            achados.push_back({pagina, PorLinha(achado.rectangles())});
        }
    }
    const int total = static_cast<int>(achados.size());
    if (total == 0) {
        m_Achados->setText(m_Procurado->text().isEmpty() ? QString() : QString("Não encontrado"));
        return;
    }
    if (m_Achado >= 0) {
        m_Achado = (m_Achado + passo + total) % total;
    } else if (passo > 0) {
        m_Achado = std::max(0, daqui);
    } else {
        m_Achado = daqui > 0 ? daqui - 1 : total - 1;
    }
    m_Paginas->MostraAchados(std::move(achados), m_Achado);
    m_Achados->setText(QString("%1 de %2").arg(m_Achado + 1).arg(total));
}

void VisorPDF::Copia()
{
    if (!m_Paginas->TemEscolha()) {
        CopiaPagina();
        return;
    }
    QApplication::clipboard()->setText(m_Paginas->TextoEscolhido());
    m_Achados->setText("Texto copiado");
}

void VisorPDF::CopiaPagina()
{
    const QString texto = m_Paginas->TextoDaPagina(m_Paginas->Atual());
    if (texto.trimmed().isEmpty()) {
        m_Achados->setText("Página sem texto");
        return;
    }
    QApplication::clipboard()->setText(texto);
    m_Achados->setText(QString("Página %1 copiada").arg(m_Paginas->Atual() + 1));
}

void VisorPDF::Imprime()
{
    QPrinter impressora(QPrinter::HighResolution);
    PreparaImpressora(impressora);
    impressora.setDocName(m_Nome);
    QPrintDialog dialogo(&impressora, this);
    dialogo.setWindowTitle("Imprimir documento");
    dialogo.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                       QAbstractPrintDialog::PrintCollateCopies | QAbstractPrintDialog::PrintCurrentPage);
    dialogo.setMinMax(1, m_Documento->pageCount());
    dialogo.setFromTo(1, m_Documento->pageCount());
    if (dialogo.exec() != QDialog::Accepted) {
        return;
    }
    Impressao como = Impressao::Falhou;
    FazNaFrente("O documento está sendo impresso.", /*cancelavel=*/true, this, [&](const mesa::Segue &segue) {
        como = ImprimePDF(*m_Documento, m_Paginas->Atual(), impressora, segue);
    });
    if (como == Impressao::Falhou) {
        AvisaEmCaixa("Não foi possível imprimir nesta impressora.", this);
    }
}

void VisorPDF::SalvaComo()
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = "Salvar documento";
    escolha.Filtros = "PDF (*.pdf)";
    escolha.Uso = "documentos";
    escolha.Extensao = "pdf";
    escolha.Nome = Q(NomeDeArquivo(S(m_Nome), ".pdf"));
    const QString destino = EscolheParaSalvar(escolha, this);
    if (destino.isEmpty()) {
        return;
    }
    QSaveFile arquivo(destino); // the dialog has asked about one that is there
    arquivo.open(QIODevice::WriteOnly);
    arquivo.write(m_Bytes.data());
    if (!arquivo.commit()) {
        AvisaEmCaixa("Não foi possível salvar o documento em " + destino + ".", this);
    }
}

} // namespace mesa
