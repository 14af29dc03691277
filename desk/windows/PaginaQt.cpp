#include "desk/windows/PaginaQt.h"

#include "controls/FiltroDeLinhas.h"
#include "desk/windows/CampoDeFiltro.h"
#include "desk/windows/ComandosDeTabela.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/PainelDaFicha.h"
#include "desk/windows/TelaDeAndamento.h"
#include "services/TextoQt.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int MenorColuna = 90;
constexpr int Margem = 6;                         // of a cell's text
constexpr qint64 MaiorArquivo = 32 * 1024 * 1024; // bytes of a table

QString SemLetra(const QString &texto)
{
    QString limpo = texto;
    return limpo.remove('&').remove("...");
}

int LarguraDoConteudo(QTableWidget &tabela, int coluna)
{
    const QFontMetrics medida = tabela.fontMetrics();
    int largura = tabela.horizontalHeader()->sectionSizeHint(coluna);
    for (int linha = 0; linha < tabela.rowCount(); ++linha) {
        const QTableWidgetItem *celula = tabela.item(linha, coluna);
        largura = std::max(largura, celula == nullptr ? 0 : medida.horizontalAdvance(celula->text()) + 2 * Margem);
    }
    return largura;
}

} // namespace

PaginaQt::PaginaQt(std::unique_ptr<PaginaAdministracao> pagina, BordaDaJanela borda, const QuemUsa &quem, QWidget *dono)
    : QWidget(dono),
      m_Pagina(std::move(pagina)),
      m_Borda(std::move(borda)),
      m_Linhas(new QTableWidget(this)),
      m_Nota(FazTexto("nota", "", this))
{
    const QString nome = Q(std::string(m_Pagina->Nome()));
    setObjectName(nome);
    auto *tudo = new QVBoxLayout(this);
    MontaCriterios(tudo);
    MontaTabela(quem);
    tudo->addWidget(m_Linhas, 1);
    m_Filtro = new CampoDeFiltro(nome + "_filtro", m_Linhas, this);
    auto *pe = new QHBoxLayout;
    pe->addWidget(m_Nota, 1);
    pe->addStretch(1);
    pe->addWidget(m_Filtro);
    tudo->addLayout(pe);
    MontaComandos(tudo);
    connect(m_Filtro, &QLineEdit::textChanged, this, [this] { Filtra(); });
    connect(m_Linhas, &QTableWidget::itemSelectionChanged, this, [this] { Habilita(); });
}

void PaginaQt::MontaTabela(const QuemUsa &quem)
{
    const std::string titulo(m_Pagina->Titulo());
    QStringList colunas;
    for (const std::string &coluna : m_Pagina->Colunas()) {
        colunas << Q(coluna);
    }
    m_Linhas->setObjectName("linhas");
    m_Linhas->setAccessibleName(SemLetra(Q(titulo)));
    m_Linhas->setColumnCount(static_cast<int>(colunas.size()));
    m_Linhas->setHorizontalHeaderLabels(colunas);
    m_Linhas->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_Linhas->horizontalHeader()->setHighlightSections(false);
    m_Linhas->verticalHeader()->hide();
    m_Linhas->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Linhas->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Linhas->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Linhas->setTabKeyNavigation(false);
    m_Linhas->setShowGrid(false);
    m_Linhas->setAlternatingRowColors(true);
    m_Linhas->setWordWrap(false);
    m_Linhas->setContextMenuPolicy(Qt::CustomContextMenu);
    m_ComandosDeTabela =
        new ComandosDeTabela(m_Linhas, quem, "Administracao/" + std::string(m_Pagina->Nome()) + "/colunas", [titulo] {
            return ComandosDeTabela::Cabeca{SemLetra(Q(titulo)), {}};
        });
    m_ComandosDeTabela->MudouVistas = [this] { Filtra(); };
    connect(m_Linhas, &QTableWidget::customContextMenuRequested, this, [this](const QPoint &onde) { AbreMenu(onde); });
}

// As wide as what is in them.
void PaginaQt::MostraColunas()
{
    const std::vector<std::string> titulos = m_Pagina->Colunas();
    std::vector<ComandosDeTabela::Coluna> colunas;
    for (int coluna = 0; coluna < m_Linhas->columnCount(); ++coluna) {
        const std::string &titulo = titulos[static_cast<std::size_t>(coluna)];
        colunas.push_back({titulo, titulo, std::max(LarguraDoConteudo(*m_Linhas, coluna), MenorColuna)});
    }
    m_ComandosDeTabela->DefineColunas(colunas);
}

void PaginaQt::Filtra()
{
    const FiltroDeLinhas filtro(S(m_Filtro->text()));
    const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
    for (int linha = 0; linha < m_Linhas->rowCount(); ++linha) {
        std::string chave;
        for (const std::int32_t coluna : vistas) {
            FiltroDeLinhas::Acrescenta(chave, S(m_Linhas->model()->index(linha, coluna - 1).data().toString()));
        }
        m_Linhas->setRowHidden(linha, !filtro.Aceita(chave));
    }
    Habilita();
}

void PaginaQt::AbreMenu(const QPoint &onde)
{
    QMenu menu(m_Linhas);
    menu.setObjectName("menuDaTabela");
    m_ComandosDeTabela->AdicionaAoMenu(menu, {});
    menu.exec(m_Linhas->viewport()->mapToGlobal(onde));
}

void PaginaQt::MontaCriterios(QVBoxLayout *tudo)
{
    Ficha *criterios = m_Pagina->Criterios();
    if (criterios == nullptr) {
        return;
    }
    m_Criterios = new PainelDaFicha(*criterios, this);
    QPushButton *localizar = FazBotao("localizar", "L&ocalizar", this);
    localizar->setIcon(Icone("localizar"));
    auto *linha = new QHBoxLayout;
    linha->addWidget(m_Criterios);
    linha->addWidget(localizar, 0, Qt::AlignBottom);
    linha->addStretch(1);
    tudo->addLayout(linha);
    setTabOrder(localizar, m_Linhas);
    connect(localizar, &QPushButton::clicked, this, [this] {
        m_Criterios->Recolhe();
        Carrega();
    });
}

void PaginaQt::MontaComandos(QVBoxLayout *tudo)
{
    auto *linha = new QHBoxLayout;
    for (const ComandoDaPagina &comando : m_Pagina->Comandos()) {
        QPushButton *botao = FazBotao(Q(comando.Nome), Q(comando.Texto), this);
        connect(botao, &QPushButton::clicked, this, [this, comando] { Comanda(comando); });
        linha->addWidget(botao);
        m_Botoes.emplace_back(comando.Nome, botao);
    }
    linha->addStretch(1);
    tudo->addLayout(linha);
    connect(m_Linhas, &QTableWidget::activated, this, [this] {
        for (const ComandoDaPagina &comando : m_Pagina->Comandos()) {
            if (comando.Nome == "editar" && Escolhida()) {
                Comanda(comando);
            }
        }
    });
}

void PaginaQt::Carrega()
{
    m_Borda([this] {
        std::string recusa;
        if (!m_Pagina->Carrega(recusa)) {
            Recusa(recusa);
        }
    });
    Mostra();
}

void PaginaQt::Mostra()
{
    const auto antes =
        m_Linhas->currentItem() == nullptr ? QString() : m_Linhas->currentItem()->data(Qt::UserRole).toString();
    const auto linhas = m_Pagina->Linhas();
    m_Linhas->setRowCount(0);
    m_Linhas->setRowCount(static_cast<int>(linhas.size()));
    for (std::size_t linha = 0; linha < linhas.size(); ++linha) {
        for (std::size_t coluna = 0; coluna < linhas[linha].size(); ++coluna) {
            auto *celula = new QTableWidgetItem(Q(linhas[linha][coluna]));
            celula->setData(Qt::UserRole, Q(m_Pagina->Chave(linha)));
            m_Linhas->setItem(static_cast<int>(linha), static_cast<int>(coluna), celula);
        }
    }
    MostraColunas();
    Filtra();
    const std::size_t atual = m_Pagina->Reencontra(S(antes)).value_or(0);
    if (atual < linhas.size()) {
        const std::vector<std::int32_t> vistas = m_ComandosDeTabela->Vistas();
        m_Linhas->setCurrentCell(static_cast<int>(atual), vistas.empty() ? 0 : vistas.front() - 1);
    }
    m_Nota->setText(Q(m_Pagina->Nota()));
    m_Nota->setVisible(!m_Nota->text().isEmpty());
    Habilita();
}

void PaginaQt::Habilita()
{
    for (const auto &[comando, botao] : m_Botoes) {
        botao->setEnabled(m_Pagina->Habilitado(comando, Escolhida()));
    }
}

std::optional<std::size_t> PaginaQt::Escolhida() const
{
    const int linha = m_Linhas->currentRow();
    return linha < 0 || m_Linhas->isRowHidden(linha) ? std::nullopt
                                                     : std::optional<std::size_t>(static_cast<std::size_t>(linha));
}

void PaginaQt::Comanda(const ComandoDaPagina &comando)
{
    if (m_Criterios != nullptr) {
        m_Criterios->Recolhe();
    }
    if (!m_Pagina->Habilitado(comando.Nome, Escolhida()) || !Confirma(comando.Nome)) {
        return;
    }
    switch (comando.OQue) {
    case ComandoDaPagina::Pede::Nada:
        m_Borda([&] {
            std::string recusa;
            if (!m_Pagina->Faz(comando.Nome, Escolhida(), recusa)) {
                Recusa(recusa);
            }
        });
        Mostra();
        break;
    case ComandoDaPagina::Pede::Ficha:
        ComFicha(comando.Nome);
        break;
    case ComandoDaPagina::Pede::Arquivo:
        ComArquivo(comando);
        break;
    }
}

void PaginaQt::ComFicha(const std::string &comando)
{
    std::optional<Ficha> ficha;
    m_Borda([&] {
        std::string recusa;
        ficha = m_Pagina->Abre(comando, Escolhida(), recusa);
        if (!ficha) {
            Recusa(recusa);
        }
    });
    if (ficha && FichaQt(*ficha, m_Borda, this).exec() == QDialog::Accepted) {
        Carrega();
    }
}

void PaginaQt::ComArquivo(const ComandoDaPagina &comando)
{
    const QString titulo = SemLetra(Q(comando.Texto));
    EscolhaDeArquivo escolha;
    escolha.Titulo = titulo;
    escolha.Filtros = "Tabelas (*.csv *.tsv *.txt);;Todos os arquivos (*)";
    escolha.Uso = "tabelas";
    const QString escolhido = EscolheParaAbrir(escolha, this);
    if (escolhido.isEmpty()) {
        return;
    }
    QFile arquivo(escolhido);
    if (!arquivo.open(QIODevice::ReadOnly) || arquivo.size() > MaiorArquivo) {
        Recusa(arquivo.isOpen() ? "O arquivo " + S(escolhido) + " tem mais de 32 MB: parta a tabela em pedaços."
                                : "O arquivo " + S(escolhido) + " não pôde ser aberto.");
        return;
    }
    const std::string conteudo = arquivo.readAll().toStdString();
    std::optional<RelatoDaPagina> relato;
    m_Borda([&] {
        std::string recusa;
        FazNaFrente("A tabela " + QFileInfo(escolhido).fileName() + " está sendo importada.", /*cancelavel=*/true, this,
                    [&](const Segue &segue) {
                        m_Pagina->Acompanha(segue);
                        const auto deixa = qScopeGuard([this] { m_Pagina->Acompanha({}); });
                        relato = m_Pagina->FazComArquivo(comando.Nome, conteudo, recusa);
                    });
        if (!relato) {
            Recusa(recusa);
        }
    });
    if (relato) {
        QStringList linhas;
        for (const std::string &linha : relato->Linhas) {
            linhas << Q(linha);
        }
        JanelaDeRelato(titulo, Q(relato->Frase), linhas, this).exec();
        Carrega();
    }
}

bool PaginaQt::Confirma(const std::string &comando)
{
    const std::string pergunta = m_Pagina->Pergunta(comando, Escolhida());
    return pergunta.empty() || PerguntaSimNao(Q(pergunta), this);
}

void PaginaQt::Recusa(const std::string &frase)
{
    AvisaEmCaixa(Q(frase), this);
}

} // namespace mesa
