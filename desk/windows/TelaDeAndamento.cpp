#include "desk/windows/TelaDeAndamento.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace mesa {

namespace {

constexpr int Milesimos = 1000;
constexpr int Letras = 48; // that the window is wide, at least

int abertas = 0;

} // namespace

JanelaDeAndamento::JanelaDeAndamento(const QString &frase, bool cancelavel, QWidget *dono)
    : QDialog(dono),
      m_Cancelavel(cancelavel),
      m_Parte(FazTexto("parte", "", this)),
      m_Progresso(new QProgressBar(this)),
      m_Cancelar(FazBotao("cancelar", "&Cancelar", this))
{
    setObjectName("Andamento");
    setWindowTitle("Aguarde");
    setWindowIcon(Icone("equipamentos"));
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(fontMetrics().averageCharWidth() * Letras);
    m_Progresso->setObjectName("progresso");
    m_Progresso->setAccessibleName(frase);
    m_Progresso->setRange(0, 0);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazTexto("frase", frase, this));
    tudo->addWidget(m_Progresso);
    tudo->addWidget(m_Parte);
    tudo->addLayout(EmLinha({m_Cancelar}));
    m_Cancelar->setVisible(cancelavel);
    connect(m_Cancelar, &QPushButton::clicked, this, [this] { reject(); });
    m_Cancelar->setFocus();
}

bool JanelaDeAndamento::Mostra(double parte, const QString &oQue)
{
    // While it is not known how far it is, the bar only shows that something goes on.
    m_Progresso->setRange(0, parte > 0 ? Milesimos : 0);
    m_Progresso->setValue(static_cast<int>(std::lround(parte * Milesimos)));
    if (!m_Desistiu) {
        m_Parte->setText(oQue);
    }
    QCoreApplication::processEvents();
    return !m_Desistiu;
}

// It goes when the work has come back.
void JanelaDeAndamento::reject()
{
    if (m_Cancelavel) {
        m_Desistiu = true;
        m_Cancelar->setEnabled(false);
        m_Parte->setText("Cancelando...");
    }
}

void TelaDeAndamento::Abre(const std::string &frase, bool cancelavel)
{
    QWidget *frente = QApplication::activeModalWidget();
    m_Antes = QApplication::focusWidget();
    m_Janela = new JanelaDeAndamento(Q(frase), cancelavel, frente == nullptr ? m_Dono.data() : frente);
    m_Aberta = true;
    ++abertas;
    m_Janela->show();
}

bool TelaDeAndamento::Mostra(double parte, const std::string &oQue)
{
    return !m_Janela.isNull() && m_Janela->Mostra(parte, Q(oQue));
}

void TelaDeAndamento::Fecha()
{
    if (!std::exchange(m_Aberta, false)) {
        return;
    }
    delete m_Janela.data();
    --abertas;
    if (!m_Antes.isNull()) {
        m_Antes->activateWindow();
        m_Antes->setFocus();
    }
}

bool TelaDeAndamento::EmCurso()
{
    return abertas > 0;
}

void FazNaFrente(const QString &frase, bool cancelavel, QWidget *dono,
                 const std::function<void(const Segue &)> &trabalho)
{
    TelaDeAndamento tela(dono);
    Andamento andamento(tela, S(frase), cancelavel);
    trabalho(andamento.ComoSegue());
}

} // namespace mesa
