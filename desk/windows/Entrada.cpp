#include "desk/windows/Entrada.h"

#include "desk/windows/Renderizador.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace mesa {

Entrada::Entrada(Ref<Servicos> servicos, QWidget *dono)
    : QDialog(dono),
      m_Servicos(std::move(servicos)),
      m_Usuario(new QLineEdit(this)),
      m_Senha(new QLineEdit(this)),
      m_Aviso(new QLabel(this)),
      m_Entrar(new QPushButton("&Entrar", this)),
      m_Relogio(new QTimer(this))
{
    setObjectName("Entrada");
    setWindowTitle("Entrada - Registro de Equipamentos");
    setWindowIcon(QIcon(":/icones/equipamentos.svg"));
    setMinimumWidth(420);
    m_Usuario->setObjectName("usuario");
    m_Senha->setObjectName("senha");
    m_Entrar->setObjectName("entrar");
    m_Senha->setEchoMode(QLineEdit::Password);
    m_Aviso->setWordWrap(true);
    m_Aviso->setTextFormat(Qt::PlainText);
    m_Aviso->setObjectName("aviso");
    m_Aviso->setStyleSheet("color: #a4161a");

    auto *marca = new QLabel(this);
    marca->setPixmap(QIcon(":/icones/equipamentos.svg").pixmap(56, 56));
    auto *nome =
        new QLabel("<b style='font-size:15pt'>Registro de Equipamentos</b><br>Informe o usuário e a senha.", this);
    auto *cabeca = new QHBoxLayout;
    cabeca->addWidget(marca);
    cabeca->addWidget(nome, 1);
    auto *campos = new QFormLayout;
    campos->addRow("&Usuário:", m_Usuario);
    campos->addRow("&Senha:", m_Senha);
    auto *sair = new QPushButton("Sai&r", this);
    sair->setAutoDefault(false);
    auto *botoes = new QHBoxLayout;
    botoes->addStretch(1);
    botoes->addWidget(m_Entrar);
    botoes->addWidget(sair);
    auto *tudo = new QVBoxLayout(this);
    tudo->addLayout(cabeca);
    tudo->addLayout(campos);
    tudo->addWidget(m_Aviso);
    tudo->addLayout(botoes);

    m_Entrar->setDefault(true);
    connect(m_Entrar, &QPushButton::clicked, this, [this] { Tenta(); });
    connect(sair, &QPushButton::clicked, this, &QDialog::reject);
    m_Relogio->setInterval(1000);
    connect(m_Relogio, &QTimer::timeout, this, [this] { Espera(m_Restante - 1); });
}

void Entrada::Tenta()
{
    if (m_Usuario->text().trimmed().isEmpty()) {
        m_Aviso->setText("Informe o usuário.");
        m_Usuario->setFocus();
        return;
    }
    std::string recusa;
    std::int32_t espera = 0;
    m_Aviso->clear();
    try {
        QString senha = m_Senha->text();
        m_Sessao = m_Servicos->Entra(S(m_Usuario->text().trimmed()), Segredo::Toma(senha), "", recusa, espera);
    } catch (...) {
        recusa = FalhaCorrente().Descricao;
    }
    if (m_Sessao) {
        accept();
        return;
    }
    m_Aviso->setText(Q(recusa));
    m_Senha->clear();
    m_Senha->setFocus();
    Espera(espera);
}

void Entrada::Espera(int segundos)
{
    m_Restante = segundos;
    m_Entrar->setEnabled(segundos <= 0);
    m_Entrar->setText(segundos > 0 ? QString("Aguarde %1 s").arg(segundos) : QString("&Entrar"));
    if (segundos > 0) {
        m_Relogio->start();
    } else {
        m_Relogio->stop();
    }
}

} // namespace mesa
