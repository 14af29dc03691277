#include "desk/windows/JanelaDasColunas.h"

#include "desk/windows/Dialogos.h"
#include "tela/Twips.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

namespace {

constexpr int MenorLargura = 20;
constexpr int MaiorLargura = 3000;

} // namespace

JanelaDasColunas::JanelaDasColunas(const ColunasArrumadas &colunas, const QStringList &titulos,
                                   std::vector<int> larguras, QWidget *dono)
    : QDialog(dono),
      m_Colunas(colunas),
      m_Titulos(titulos),
      m_Larguras(std::move(larguras)),
      m_Lista(new QListWidget(this)),
      m_Acima(FazBotao("acima", "Mover para &cima", this)),
      m_Abaixo(FazBotao("abaixo", "Mover para &baixo", this)),
      m_Largura(new QSpinBox(this))
{
    setObjectName("Colunas");
    setWindowTitle("Colunas");
    m_Lista->setObjectName("colunas");
    m_Lista->setAccessibleName("Colunas, na ordem em que aparecem");
    m_Largura->setObjectName("largura");
    m_Largura->setAccessibleName("Largura da coluna em pontos da tela");
    m_Largura->setRange(MenorLargura, MaiorLargura);
    m_Largura->setSingleStep(10);
    m_Largura->setKeyboardTracking(false);
    auto *rotulo = new QLabel("Lar&gura:", this);
    rotulo->setBuddy(m_Largura);
    QPushButton *voltar = FazBotao("voltar", "&Voltar ao original", this);
    QPushButton *ok = FazBotao("ok", "&OK", this);
    QPushButton *cancelar = FazBotao("cancelar", "C&ancelar", this);
    ok->setDefault(true);

    auto *lado = new QVBoxLayout;
    lado->addWidget(m_Acima);
    lado->addWidget(m_Abaixo);
    lado->addWidget(rotulo);
    lado->addWidget(m_Largura);
    lado->addStretch(1);
    lado->addWidget(voltar);
    auto *tudo = new QGridLayout(this);
    tudo->addWidget(FazTexto("explica", "Marque as colunas que quer ver.", this), 0, 0, 1, 2);
    tudo->addWidget(m_Lista, 1, 0);
    tudo->addLayout(lado, 1, 1);
    tudo->addLayout(EmLinha({ok, cancelar}), 2, 0, 1, 2);

    connect(m_Acima, &QPushButton::clicked, this, [this] { Move(-1); });
    connect(m_Abaixo, &QPushButton::clicked, this, [this] { Move(1); });
    connect(voltar, &QPushButton::clicked, this, [this] {
        m_Colunas.Volta();
        Mostra(0);
    });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_Lista, &QListWidget::currentRowChanged, this, [this] { MudouLinha(); });
    connect(m_Lista, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) {
        const bool vista = item->checkState() == Qt::Checked;
        if (!m_Mostrando && !m_Colunas.Mostra(item->data(Qt::UserRole).toInt(), vista)) {
            item->setCheckState(Qt::Checked); // the last one stays
        }
    });
    connect(m_Largura, &QSpinBox::valueChanged, this, [this](int largura) {
        const QListWidgetItem *item = m_Lista->currentItem();
        if (!m_Mostrando && item != nullptr) {
            m_Colunas.Alarga(item->data(Qt::UserRole).toInt(), largura * TwipsPorPixel);
        }
    });
    Mostra(0);
    m_Lista->setFocus();
}

void JanelaDasColunas::Mostra(int linha)
{
    m_Mostrando = true;
    m_Lista->clear();
    for (const ColunasArrumadas::Coluna &coluna : m_Colunas.Colunas()) {
        auto *item = new QListWidgetItem(m_Titulos[coluna.Numero - 1], m_Lista);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(coluna.Vista ? Qt::Checked : Qt::Unchecked);
        item->setData(Qt::UserRole, coluna.Numero);
    }
    m_Mostrando = false;
    m_Lista->setCurrentRow(linha);
    MudouLinha();
}

void JanelaDasColunas::Move(int passo)
{
    const int linha = m_Lista->currentRow() + passo;
    if (m_Lista->currentItem() != nullptr && linha >= 0 &&
        m_Colunas.Move(m_Lista->currentItem()->data(Qt::UserRole).toInt(), static_cast<std::size_t>(linha))) {
        Mostra(linha);
    }
}

void JanelaDasColunas::MudouLinha()
{
    const int linha = m_Lista->currentRow();
    if (m_Mostrando || linha < 0) {
        return;
    }
    const bool noAcima = m_Acima->hasFocus();
    const bool noAbaixo = m_Abaixo->hasFocus();
    m_Acima->setEnabled(linha > 0);
    m_Abaixo->setEnabled(linha + 1 < m_Lista->count());
    if ((noAcima && !m_Acima->isEnabled()) || (noAbaixo && !m_Abaixo->isEnabled())) {
        m_Lista->setFocus();
    }
    const ColunasArrumadas::Coluna &coluna = m_Colunas.Colunas()[static_cast<std::size_t>(linha)];
    m_Mostrando = true;
    m_Largura->setValue(coluna.Largura > 0 ? Pixels(coluna.Largura)
                                           : m_Larguras[static_cast<std::size_t>(coluna.Numero - 1)]);
    m_Mostrando = false;
}

} // namespace mesa
