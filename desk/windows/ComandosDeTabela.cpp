#include "desk/windows/ComandosDeTabela.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/ImpressaoDeTabela.h"
#include "desk/windows/Impressora.h"
#include "desk/windows/JanelaDasColunas.h"
#include "desk/windows/TelaDeAndamento.h"
#include "host/Conversoes.h"
#include "planilhas/ExportaTabela.h"
#include "services/TextoQt.h"
#include "tela/ComandosDeLista.h"
#include "tela/Twips.h"

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int LarguraDeUmaFolhaEmPe = 760; // pixels; a wider table lies

void Leva(const TabelaVista &tabela)
{
    auto *dados = new QMimeData;
    dados->setText(Q(TextoTabulado(tabela)));
    dados->setHtml(Q(TabelaEmHtml(tabela)));
    QGuiApplication::clipboard()->setMimeData(dados);
}

QStringList Textos(const std::vector<std::string> &celulas)
{
    QStringList textos;
    for (const std::string &celula : celulas) {
        textos << Q(celula);
    }
    return textos;
}

} // namespace

ComandosDeTabela::ComandosDeTabela(QTableView *tabela, QuemUsa quem, std::string lembranca,
                                   std::function<Cabeca()> cabeca)
    : QObject(tabela),
      m_Tabela(tabela),
      m_Vista(tabela->viewport()),
      m_Titulos(tabela->horizontalHeader()->viewport()),
      m_Quem(std::move(quem)),
      m_Lembranca(std::move(lembranca)),
      m_Cabeca(std::move(cabeca))
{
    QHeaderView *titulos = m_Tabela->horizontalHeader();
    titulos->setSectionsMovable(true);
    titulos->setSectionResizeMode(QHeaderView::Interactive);
    titulos->setMinimumSectionSize(m_Tabela->fontMetrics().averageCharWidth() * 4);
    titulos->setContextMenuPolicy(Qt::CustomContextMenu);
    titulos->setToolTip("Arraste muda a coluna de lugar; o botão direito escolhe as colunas.");
    connect(titulos, &QHeaderView::customContextMenuRequested, this,
            [this](const QPoint &onde) { MenuDoTitulo(m_Tabela->horizontalHeader()->mapToGlobal(onde)); });
    connect(titulos, &QHeaderView::sectionResized, this, [this](int coluna, int, int largura) {
        if (!m_Arrumando && largura > 0) {
            m_Arrumadas.Alarga(coluna + 1, largura * TwipsPorPixel);
            m_Mudou = true;
        }
    });
    connect(titulos, &QHeaderView::sectionMoved, this, [this](int coluna, int, int) {
        if (m_Arrumando) {
            return;
        }
        // The place among those that are for people.
        std::size_t lugar = 0;
        for (int visual = 0; visual < m_Tabela->horizontalHeader()->visualIndex(coluna); ++visual) {
            const int outra = m_Tabela->horizontalHeader()->logicalIndex(visual);
            lugar += m_Colunas[static_cast<std::size_t>(outra)].Oferecida ? 1 : 0;
        }
        m_Arrumadas.Move(coluna + 1, lugar);
        Arrumou();
    });
    m_Titulos->installEventFilter(this);
    m_Tabela->installEventFilter(this);
    m_Vista->installEventFilter(this);
}

void ComandosDeTabela::DefineColunas(const std::vector<Coluna> &colunas)
{
    m_Colunas = colunas;
    std::vector<ColunasArrumadas::Coluna> oferecidas;
    std::int32_t numero = 0;
    for (const Coluna &coluna : colunas) {
        ++numero;
        if (coluna.Oferecida) {
            oferecidas.push_back({coluna.Chave, numero, 0, true});
        }
    }
    m_Arrumadas.Define(oferecidas);
    if (!m_Lida && m_Quem.Lembrancas && !oferecidas.empty()) {
        m_Lida = true;
        m_Arrumadas.Le(m_Quem.Lembrancas->Lembranca(m_Lembranca));
    }
    Arruma();
}

int ComandosDeTabela::LarguraDe(const ColunasArrumadas::Coluna &coluna) const
{
    return coluna.Largura > 0 ? Pixels(coluna.Largura) : m_Colunas[static_cast<std::size_t>(coluna.Numero - 1)].Largura;
}

// The heading as the columns are arranged. Those that are not for people stand behind the others, unseen.
void ComandosDeTabela::Arruma()
{
    QHeaderView *titulos = m_Tabela->horizontalHeader();
    m_Arrumando = true;
    for (int coluna = 0; coluna < static_cast<int>(m_Colunas.size()); ++coluna) {
        if (!m_Colunas[static_cast<std::size_t>(coluna)].Oferecida) {
            titulos->setSectionHidden(coluna, true);
        }
    }
    int lugar = 0;
    for (const ColunasArrumadas::Coluna &coluna : m_Arrumadas.Colunas()) {
        titulos->setSectionHidden(coluna.Numero - 1, !coluna.Vista);
        titulos->moveSection(titulos->visualIndex(coluna.Numero - 1), lugar++);
        if (coluna.Vista) {
            titulos->resizeSection(coluna.Numero - 1, LarguraDe(coluna));
        }
    }
    m_Arrumando = false;
    EsticaUltima();
    if (std::vector<std::int32_t> vistas = Vistas(); vistas != m_Vistas) {
        m_Vistas = std::move(vistas);
        MudouVistas();
    }
}

// The last one that is seen takes what the others leave.
void ComandosDeTabela::EsticaUltima()
{
    const ColunasArrumadas::Coluna *ultima = nullptr;
    int resto = m_Tabela->viewport()->width();
    for (const ColunasArrumadas::Coluna &coluna : m_Arrumadas.Colunas()) {
        if (coluna.Vista) {
            ultima = &coluna;
            resto -= m_Tabela->columnWidth(coluna.Numero - 1);
        }
    }
    if (ultima == nullptr) {
        return;
    }
    resto += m_Tabela->columnWidth(ultima->Numero - 1);
    m_Arrumando = true;
    m_Tabela->setColumnWidth(ultima->Numero - 1, std::max(resto, LarguraDe(*ultima)));
    m_Arrumando = false;
}

void ComandosDeTabela::Arrumou()
{
    m_Mudou = false;
    if (m_Quem.Lembrancas) {
        m_Quem.Lembrancas->Lembra(m_Lembranca, m_Arrumadas.Texto());
    }
    Arruma();
}

void ComandosDeTabela::AdicionaAoMenu(QMenu &menu, const std::vector<std::string> &antes)
{
    const EntradasDeTabela entradas = EntradasDaTabela(antes);
    menu.addSeparator();
    const auto adiciona = [&](const std::string &caption, const QString &nome, const QString &tecla, bool utilizavel,
                              void (ComandosDeTabela::*faz)()) {
        QAction *acao = menu.addAction(Q(caption) + (tecla.isEmpty() ? QString() : "\t" + tecla), this, faz,
                                       Qt::QueuedConnection); // once the menu has gone
        acao->setObjectName(nome);
        acao->setEnabled(utilizavel);
    };
    const bool ha = !Linhas().empty();
    adiciona(entradas.Copiar, "copiar", "Ctrl+C", AtualVista(), &ComandosDeTabela::Copia);
    adiciona(entradas.CopiarTudo, "copiarTudo", "", ha, &ComandosDeTabela::CopiaTudo);
    adiciona(entradas.Imprimir, "imprimirLista", "Ctrl+P", ha, &ComandosDeTabela::Imprime);
    adiciona(entradas.Exportar, "exportarLista", "", ha, &ComandosDeTabela::Exporta);
    QMenu *colunas = menu.addMenu(Q(entradas.Colunas));
    colunas->setObjectName("menuDasColunas");
    AdicionaColunas(*colunas);
}

void ComandosDeTabela::AdicionaColunas(QMenu &menu)
{
    int numero = 0;
    for (const ColunasArrumadas::Coluna &coluna : m_Arrumadas.Colunas()) {
        const std::string &titulo = m_Colunas[static_cast<std::size_t>(coluna.Numero - 1)].Titulo;
        ++numero;
        const QString letra = numero < 10 ? QString("&%1 ").arg(numero) : QString();
        QAction *acao = menu.addAction(
            letra + Q(titulo).replace("&", "&&"), this,
            [this, qual = coluna.Numero, vista = !coluna.Vista] {
                if (m_Arrumadas.Mostra(qual, vista)) {
                    Arrumou();
                }
            },
            Qt::QueuedConnection);
        acao->setCheckable(true);
        acao->setChecked(coluna.Vista);
        acao->setEnabled(!coluna.Vista || m_Arrumadas.Vistas().size() > 1);
    }
    menu.addSeparator();
    menu.addAction("&Organizar colunas...", this, &ComandosDeTabela::OrganizaColunas, Qt::QueuedConnection)
        ->setObjectName("organizar");
    QAction *voltar = menu.addAction(
        "&Voltar ao original", this,
        [this] {
            m_Arrumadas.Volta();
            Arrumou();
        },
        Qt::QueuedConnection);
    voltar->setObjectName("voltar");
    voltar->setEnabled(!m_Arrumadas.Texto().empty());
}

void ComandosDeTabela::MenuDoTitulo(const QPoint &onde)
{
    QMenu menu(m_Tabela);
    menu.setObjectName("menuDoTitulo");
    AdicionaColunas(menu);
    menu.exec(onde);
}

void ComandosDeTabela::OrganizaColunas()
{
    QStringList titulos;
    std::vector<int> larguras;
    for (const Coluna &coluna : m_Colunas) {
        titulos << Q(coluna.Titulo);
        larguras.push_back(coluna.Largura);
    }
    JanelaDasColunas janela(m_Arrumadas, titulos, std::move(larguras), m_Tabela->window());
    const QPointer<ComandosDeTabela> vivo = this;
    if (janela.exec() == QDialog::Accepted && vivo) {
        m_Arrumadas = janela.Colunas();
        Arrumou();
    }
}

std::vector<int> ComandosDeTabela::Linhas() const
{
    std::vector<int> linhas;
    for (int linha = 0; linha < m_Tabela->model()->rowCount(); ++linha) {
        if (!m_Tabela->isRowHidden(linha)) {
            linhas.push_back(linha);
        }
    }
    return linhas;
}

TabelaVista ComandosDeTabela::Tabela(const std::vector<int> &linhas) const
{
    TabelaVista tabela;
    const std::vector<std::int32_t> vistas = Vistas();
    for (const std::int32_t coluna : vistas) {
        tabela.Titulos.push_back(m_Colunas[static_cast<std::size_t>(coluna - 1)].Titulo);
    }
    for (const int linha : linhas) {
        std::vector<std::string> &celulas = tabela.Linhas.emplace_back();
        for (const std::int32_t coluna : vistas) {
            celulas.push_back(S(m_Tabela->model()->index(linha, coluna - 1).data().toString()));
        }
    }
    return tabela;
}

bool ComandosDeTabela::AtualVista() const
{
    const QModelIndex atual = m_Tabela->currentIndex();
    return atual.isValid() && !m_Tabela->isRowHidden(atual.row());
}

void ComandosDeTabela::Copia()
{
    if (AtualVista()) {
        Leva(Tabela({m_Tabela->currentIndex().row()}));
    }
}

// What brings the rows may take the table away.
bool ComandosDeTabela::TemTudo()
{
    const QPointer<ComandosDeTabela> vivo = this;
    return Completa() && vivo;
}

void ComandosDeTabela::CopiaTudo()
{
    if (!TemTudo()) {
        return;
    }
    if (const std::vector<int> linhas = Linhas(); !linhas.empty()) {
        Leva(Tabela(linhas));
    }
}

void ComandosDeTabela::Imprime()
{
    if (!TemTudo()) {
        return;
    }
    const TabelaVista tabela = Tabela(Linhas());
    if (tabela.Linhas.empty()) {
        return;
    }
    const Cabeca cabeca = m_Cabeca();
    TabelaImpressa impressa{cabeca.Titulo, cabeca.Criterios, {}, Textos(tabela.Titulos), {}, {}};
    int largura = 0;
    for (const std::int32_t coluna : Vistas()) {
        impressa.Larguras.push_back(m_Tabela->columnWidth(coluna - 1));
        largura += m_Tabela->columnWidth(coluna - 1);
    }
    for (const std::vector<std::string> &linha : tabela.Linhas) {
        impressa.Linhas.push_back(Textos(linha));
    }
    QPrinter impressora(QPrinter::HighResolution);
    PreparaImpressora(impressora);
    impressora.setDocName(cabeca.Titulo);
    if (largura > LarguraDeUmaFolhaEmPe) {
        impressora.setPageOrientation(QPageLayout::Landscape);
    }
    QPrintDialog dialogo(&impressora, m_Tabela->window());
    dialogo.setObjectName("ImprimirLista");
    dialogo.setWindowTitle("Imprimir lista");
    dialogo.setOption(QAbstractPrintDialog::PrintPageRange);
    const QPointer<ComandosDeTabela> vivo = this;
    if (dialogo.exec() != QDialog::Accepted || !vivo) {
        return;
    }
    const Data agora = m_Quem.Agora();
    impressa.Rodape = Q("Impresso em " + Format(agora, "dd/mm/yyyy") + " " + Format(agora, "hh:nn")) +
                      (m_Quem.Nome.empty() ? QString() : " por " + Q(m_Quem.Nome));
    bool feita = false;
    FazNaFrente("A lista está sendo impressa.", true, m_Tabela->window(),
                [&](const Segue &segue) { feita = ImpressaoDeTabela(impressa, impressora).Imprime(segue); });
    if (!feita && vivo) {
        AvisaEmCaixa("Não foi possível imprimir. Confira a impressora e as páginas pedidas.", m_Tabela->window());
    }
}

void ComandosDeTabela::Exporta()
{
    if (!TemTudo()) {
        return;
    }
    const TabelaVista tabela = Tabela(Linhas());
    if (tabela.Linhas.empty()) {
        return;
    }
    const QString titulo = m_Cabeca().Titulo;
    EscolhaDeArquivo escolha;
    escolha.Titulo = "Exportar lista";
    escolha.Filtros = "Planilha XLSX (*.xlsx);;Planilha ODS (*.ods);;Texto CSV (*.csv)";
    escolha.Uso = "listas";
    escolha.Nome = QString(titulo).replace('/', ' ');
    escolha.Extensao = "xlsx";
    const QPointer<ComandosDeTabela> vivo = this;
    const QString escolhido = EscolheParaSalvar(escolha, m_Tabela->window());
    if (escolhido.isEmpty() || !vivo) {
        return;
    }
    std::string defeito;
    FazNaFrente("A lista está sendo exportada.", true, m_Tabela->window(), [&](const Segue &segue) {
        try {
            planilhas::ExportaTabela(S(titulo), tabela.Titulos, tabela.Linhas)
                .Grava(QFile::encodeName(escolhido).toStdString(), [&](double parte) { return segue(parte, ""); });
        } catch (const Falha &falha) {
            defeito = falha.Descricao;
        }
    });
    if (!defeito.empty() && vivo) {
        AvisaEmCaixa(Q(defeito), m_Tabela->window());
    }
}

bool ComandosDeTabela::eventFilter(QObject *objeto, QEvent *evento)
{
    if (objeto == m_Vista) {
        if (evento->type() == QEvent::Resize) {
            EsticaUltima();
        }
        return false;
    }
    if (objeto == m_Titulos) {
        if (evento->type() == QEvent::MouseButtonRelease && m_Mudou) {
            QMetaObject::invokeMethod(
                this, [this] { Arrumou(); }, Qt::QueuedConnection); // once it is done with it
        }
        return false;
    }
    if (evento->type() == QEvent::KeyPress) {
        const auto &tecla = *static_cast<QKeyEvent *>(evento);
        if (tecla.matches(QKeySequence::Copy)) {
            Copia();
            return true;
        }
        if (tecla.matches(QKeySequence::Print)) {
            Imprime();
            return true;
        }
    }
    return false;
}

} // namespace mesa
