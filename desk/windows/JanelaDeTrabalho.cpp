#include "desk/windows/JanelaDeTrabalho.h"

#include "desk/windows/Acessibilidade.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDeRelato.h"
#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace mesa {

namespace {

constexpr int Milesimos = 1000;

} // namespace

JanelaDeTrabalho::JanelaDeTrabalho(const QString &titulo, const QString &frase,
                                   std::function<ResultadoDoAto(const Segue &)> ato, QWidget *dono)
    : QDialog(dono),
      m_Ato(std::move(ato)),
      m_Frase(FazTexto("frase", frase, this)),
      m_Parte(FazTexto("parte", "", this)),
      m_Progresso(new QProgressBar(this)),
      m_Achados(new QPlainTextEdit(this)),
      m_Salvar(FazBotao("salvar", "&Salvar...", this)),
      m_Fechar(FazBotao("fechar", "&Cancelar", this))
{
    setObjectName("Trabalho");
    setWindowTitle(titulo);
    setWindowIcon(Icone("equipamentos"));
    resize(680, 420);
    m_Progresso->setRange(0, Milesimos);
    m_Progresso->setTextVisible(false);
    m_Progresso->setAccessibleName("Andamento");
    m_Achados->setObjectName("achados");
    m_Achados->setAccessibleName("O que foi achado");
    m_Achados->setReadOnly(true);
    m_Achados->setTabChangesFocus(true);
    m_Salvar->setEnabled(false);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(m_Frase);
    tudo->addWidget(m_Progresso);
    tudo->addWidget(m_Parte);
    tudo->addWidget(m_Achados, 1);
    tudo->addLayout(EmLinha({m_Salvar, m_Fechar}));
    connect(m_Salvar, &QPushButton::clicked, this,
            [this] { SalvaTexto(windowTitle(), "relato.txt", Relatorio(), this); });
    connect(m_Fechar, &QPushButton::clicked, this, [this] { reject(); });
    m_Fechar->setFocus();
    Comeca();
}

JanelaDeTrabalho::~JanelaDeTrabalho()
{
    Para();
}

void JanelaDeTrabalho::Para()
{
    m_Desistiu = true;
    if (m_Trabalho.joinable()) {
        m_Trabalho.join();
    }
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall); // of what nobody waits for any more
}

void JanelaDeTrabalho::Comeca()
{
    m_Trabalho = std::thread([this] {
        const auto naTela = [this](auto acao) { QMetaObject::invokeMethod(this, acao, Qt::QueuedConnection); };
        try {
            const ResultadoDoAto resultado = m_Ato([&](double parte, const std::string &oQue) {
                naTela([this, parte, oQue] { Mostra(parte, Q(oQue)); });
                return !m_Desistiu;
            });
            naTela([this, resultado] { Termina(resultado); });
        } catch (...) {
            naTela([this, frase = FalhaCorrente().Descricao] { Acaba("O trabalho não pôde ser feito: " + Q(frase)); });
        }
    });
}

void JanelaDeTrabalho::Mostra(double parte, const QString &oQue)
{
    m_Progresso->setValue(static_cast<int>(std::lround(parte * Milesimos)));
    m_Parte->setText(oQue);
}

void JanelaDeTrabalho::Termina(const ResultadoDoAto &resultado)
{
    m_Resultado = resultado;
    QStringList achados;
    for (const std::string &achado : resultado.Achados) {
        achados << Q(achado);
    }
    for (const std::string &aviso : resultado.Avisos) {
        achados << "Aviso: " + Q(aviso);
    }
    m_Achados->setPlainText(achados.join('\n'));
    m_Salvar->setEnabled(true);
    Acaba((resultado.Inteiro ? "" : "O trabalho foi interrompido. ") + Q(resultado.Frase));
}

void JanelaDeTrabalho::Acaba(const QString &frase)
{
    m_Frase->setText(frase);
    Anuncia(*m_Frase);
    m_Parte->clear();
    m_Progresso->setVisible(false);
    m_Fechar->setText("&Fechar");
    m_Acabou = true;
}

QString JanelaDeTrabalho::Relatorio() const
{
    return m_Resultado->Relatorio.empty() ? m_Frase->text() + "\n\n" + m_Achados->toPlainText() + "\n"
                                          : Q(m_Resultado->Relatorio);
}

// What was found until then is still shown.
void JanelaDeTrabalho::reject()
{
    if (m_Acabou) {
        QDialog::reject();
        return;
    }
    m_Desistiu = true;
    m_Parte->setText("Interrompendo...");
}

} // namespace mesa
