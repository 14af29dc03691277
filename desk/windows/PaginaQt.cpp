#include "desk/windows/PaginaQt.h"

#include "desk/services/TextoQt.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/PainelDaFicha.h"

#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

namespace {

constexpr int MenorColuna = 90;
constexpr qint64 MaiorArquivo = 32 * 1024 * 1024; // bytes of a table

QString SemLetra(const QString &texto)
{
    QString limpo = texto;
    return limpo.remove('&').remove("...");
}

} // namespace

PaginaQt::PaginaQt(std::unique_ptr<PaginaAdministracao> pagina, BordaDaJanela borda, QWidget *dono)
    : QWidget(dono),
      m_Pagina(std::move(pagina)),
      m_Borda(std::move(borda)),
      m_Linhas(new QTableWidget(this)),
      m_Nota(FazTexto("nota", "", this))
{
    setObjectName(QString::fromUtf8(m_Pagina->Nome().data(), static_cast<qsizetype>(m_Pagina->Nome().size())));
    auto *tudo = new QVBoxLayout(this);
    MontaCriterios(tudo);
    QStringList colunas;
    for (const std::string &coluna : m_Pagina->Colunas()) {
        colunas << Q(coluna);
    }
    m_Linhas->setObjectName("linhas");
    m_Linhas->setAccessibleName(
        SemLetra(QString::fromUtf8(m_Pagina->Titulo().data(), static_cast<qsizetype>(m_Pagina->Titulo().size()))));
    m_Linhas->setColumnCount(static_cast<int>(colunas.size()));
    m_Linhas->setHorizontalHeaderLabels(colunas);
    m_Linhas->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_Linhas->horizontalHeader()->setMinimumSectionSize(MenorColuna);
    m_Linhas->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_Linhas->horizontalHeader()->setSectionResizeMode(static_cast<int>(colunas.size()) - 1, QHeaderView::Stretch);
    m_Linhas->horizontalHeader()->setHighlightSections(false);
    m_Linhas->verticalHeader()->hide();
    m_Linhas->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_Linhas->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Linhas->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Linhas->setTabKeyNavigation(false);
    m_Linhas->setShowGrid(false);
    m_Linhas->setAlternatingRowColors(true);
    m_Linhas->setWordWrap(false);
    tudo->addWidget(m_Linhas, 1);
    tudo->addWidget(m_Nota);
    MontaComandos(tudo);
    connect(m_Linhas, &QTableWidget::itemSelectionChanged, this, [this] { Habilita(); });
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
    const std::size_t atual = m_Pagina->Reencontra(S(antes)).value_or(0);
    if (atual < linhas.size()) {
        m_Linhas->setCurrentCell(static_cast<int>(atual), 0);
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
    return linha < 0 ? std::nullopt : std::optional<std::size_t>(static_cast<std::size_t>(linha));
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
    const QString escolhido =
        QFileDialog::getOpenFileName(this, titulo, {}, "Tabelas (*.csv *.tsv *.txt);;Todos os arquivos (*)");
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
        relato = m_Pagina->FazComArquivo(comando.Nome, conteudo, recusa);
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
