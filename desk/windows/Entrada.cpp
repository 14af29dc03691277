#include "desk/windows/Entrada.h"

#include "desk/host/Preferencias.h"
#include "desk/host/Titulo.h"
#include "desk/windows/CampoDeSenha.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDoLugar.h"
#include "desk/windows/Renderizador.h"
#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

Entrada::Entrada(Ref<Servicos> servicos, Preferencias &preferencias, std::optional<Operador> travada, QWidget *dono)
    : QDialog(dono),
      m_Servicos(std::move(servicos)),
      m_Preferencias(preferencias),
      m_Travada(std::move(travada)),
      m_Usuario(new QLineEdit(this)),
      m_Senha(new CampoDeSenha("senha", this)),
      m_Lembrar(new QCheckBox("&Lembrar o usuário", this)),
      m_Aviso(FazAviso(this)),
      m_Entrar(FazBotao("entrar", m_Travada ? "&Destravar" : "&Entrar", this)),
      m_Outro(FazBotao(m_Travada ? "trocar" : "sair", m_Travada ? "&Trocar de usuário..." : "Sai&r", this)),
      m_Relogio(new QTimer(this))
{
    setObjectName(m_Travada ? "Trava" : "Entrada");
    setWindowTitle(Q(TituloDoRegistro(*m_Servicos)) + (m_Travada ? " - Travado" : " - Entrada"));
    setWindowIcon(Icone("equipamentos"));
    setMinimumWidth(420);
    m_Usuario->setObjectName("usuario");
    m_Lembrar->setObjectName("lembrar");
    m_Entrar->setDefault(true);
    Monta();
    if (m_Travada) {
        m_Usuario->setText(Q(m_Travada->Usuario));
        DefineSomenteLeitura(*m_Usuario, true);
        m_Lembrar->hide();
        m_Senha->setFocus();
    } else {
        OfereceUltimo();
    }
    connect(m_Entrar, &QPushButton::clicked, this, [this] { Tenta(); });
    connect(m_Outro, &QPushButton::clicked, this, [this] { m_Travada && !m_Terminada ? Troca() : QDialog::reject(); });
    m_Relogio->setInterval(1000);
    connect(m_Relogio, &QTimer::timeout, this, [this] { Espera(m_Restante - 1); });
}

void Entrada::Monta()
{
    const QString frase = m_Travada ? "Travado por falta de uso. Informe a senha de " + Q(m_Travada->Nome) + "."
                                    : QString("Informe o usuário e a senha.");
    auto *campos = new QFormLayout;
    campos->addRow("&Usuário:", m_Usuario);
    campos->addRow("&Senha:", m_Senha);
    campos->addRow("", m_Senha->AvisoDeMaiusculas());
    campos->addRow("", m_Lembrar);
    auto *tudo = new QVBoxLayout(this);
    QWidget *cabeca = FazCabeca("Registro de Equipamentos", frase, this);
    m_Frase = cabeca->findChild<QLabel *>("frase");
    m_Tudo = tudo;
    tudo->addWidget(cabeca);
    if (m_Servicos->Tipo() == TipoDeRegistro::Amostra) {
        QLabel *amostra = FazTexto("amostra", "AMOSTRA: equipamentos e usuários inventados. Nada disso vale.", this);
        QFont letra = amostra->font();
        letra.setBold(true);
        amostra->setFont(letra);
        Colore(*amostra, Cor::Amostra);
        tudo->addWidget(amostra);
    }
    tudo->addLayout(campos);
    tudo->addWidget(m_Aviso);
    tudo->addLayout(EmLinha({m_Entrar, m_Outro}));
}

void Entrada::OfereceLugar(const LugarDoTrabalho &lugar)
{
    QLabel *onde = FazTexto("onde", "Registro: " + Q(OndeFica(lugar)), this);
    QPushButton *mudar = FazBotao("mudarDeRegistro", "Mu&dar de registro...", this);
    connect(mudar, &QPushButton::clicked, this, [this, lugar] { EscolheLugar(lugar); });
    auto *linha = new QHBoxLayout;
    linha->addWidget(onde, 1);
    linha->addWidget(mudar);
    m_Tudo->addLayout(linha); // after what is done each day
}

void Entrada::EscolheLugar(const LugarDoTrabalho &agora)
{
    JanelaDoLugar janela(agora, this);
    if (janela.exec() == QDialog::Accepted) {
        m_OutroLugar = janela.Lugar();
        QDialog::reject();
    }
}

void Entrada::TerminouASessao(const QString &frase)
{
    m_Terminada = true;
    setObjectName("SessaoTerminada");
    setWindowTitle(Q(TituloDoRegistro(*m_Servicos)) + " - Entrar de novo");
    m_Frase->setText(frase + " Informe a senha de " + Q(m_Travada->Nome) +
                     " para continuar: o que foi digitado continua nas janelas.");
    m_Outro->setText("&Desistir");
    Espera(0);
}

void Entrada::OfereceUltimo()
{
    m_Lembrar->setChecked(m_Preferencias.LembraUsuario());
    m_Usuario->setText(Q(m_Preferencias.UltimoUsuario(m_Servicos->Identificador())));
    if (!m_Usuario->text().isEmpty()) {
        m_Senha->setFocus();
    }
}

void Entrada::LembraEste()
{
    if (!m_Travada) {
        m_Preferencias.DefineLembraUsuario(m_Lembrar->isChecked());
        m_Preferencias.LembraUltimoUsuario(m_Servicos->Identificador(), S(m_Usuario->text().trimmed()));
    }
}

void Entrada::Tenta()
{
    if (m_Usuario->text().trimmed().isEmpty()) {
        MostraAviso(*m_Aviso, "Informe o usuário.");
        m_Usuario->setFocus();
        return;
    }
    std::string recusa;
    std::int32_t espera = 0;
    m_Aviso->clear();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        m_Sessao = m_Servicos->Entra(S(m_Usuario->text().trimmed()), m_Senha->Senha(), m_Preferencias.Estacao(), recusa,
                                     espera);
    } catch (...) {
        recusa = FalhaCorrente().Descricao;
    }
    QApplication::restoreOverrideCursor();
    m_Senha->Limpa();
    if (m_Sessao) {
        LembraEste();
        accept();
        return;
    }
    MostraAviso(*m_Aviso, Q(recusa));
    m_Senha->setFocus();
    Espera(espera);
}

void Entrada::Troca()
{
    if (PerguntaSimNao("As janelas de " + Q(m_Travada->Nome) +
                           " serão fechadas, e o que não foi salvo nelas se perde. Trocar de usuário?",
                       this)) {
        m_PediuTroca = true;
        QDialog::reject();
    }
}

void Entrada::reject()
{
    if (!m_Travada || m_Terminada) {
        QDialog::reject();
    }
}

void Entrada::Espera(int segundos)
{
    m_Restante = segundos;
    m_Entrar->setEnabled(segundos <= 0);
    m_Entrar->setText(segundos > 0                ? QString("Aguarde %1 s").arg(segundos)
                      : m_Travada && !m_Terminada ? QString("&Destravar")
                                                  : QString("&Entrar"));
    if (segundos > 0) {
        m_Relogio->start();
    } else {
        m_Relogio->stop();
    }
}

} // namespace mesa
