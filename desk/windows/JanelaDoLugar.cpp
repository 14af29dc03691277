#include "desk/windows/JanelaDoLugar.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "services/TextoQt.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace mesa {

namespace {

constexpr int Largura = 560;

QLineEdit *FazCampo(const char *nome, const char *dica, const std::string &texto, QWidget *dono)
{
    auto *campo = new QLineEdit(Q(texto), dono);
    campo->setObjectName(nome);
    campo->setToolTip(dica);
    campo->setAccessibleDescription(dica);
    return campo;
}

} // namespace

JanelaDoLugar::JanelaDoLugar(const LugarDoTrabalho &agora, QWidget *dono)
    : QDialog(dono),
      m_EsteComputador(new QRadioButton("Este &computador", this)),
      m_NoServidor(new QRadioButton("&Servidor", this)),
      m_Endereco(FazCampo("endereco", "O nome da máquina; depois de dois-pontos, a porta, quando não é a 50443.",
                          agora.Servidor && !agora.Servidor->Maquina.empty() ? agora.Servidor->Texto() : "", this)),
      m_Digital(FazCampo("digital", "Pode ficar vazia: na primeira vez a do servidor é mostrada para ser conferida.",
                         agora.Digital, this)),
      m_Autoridade(FazCampo("autoridade", "Arquivo, em lugar da digital, quando uma autoridade assinou o certificado.",
                            agora.Autoridade, this)),
      m_Escolher(FazBotao("escolher", "Esco&lher...", this)),
      m_Aviso(FazAviso(this))
{
    setObjectName("LugarDoRegistro");
    setWindowTitle(TituloDosAvisos);
    setWindowIcon(Icone("equipamentos"));
    setMinimumWidth(Largura);
    m_EsteComputador->setObjectName("esteComputador");
    m_NoServidor->setObjectName("noServidor");
    m_Endereco->setPlaceholderText("máquina:porta");
    (agora.Servidor ? m_NoServidor : m_EsteComputador)->setChecked(true);
    Monta();
    Habilita();
    (agora.Servidor ? static_cast<QWidget *>(m_Endereco) : m_EsteComputador)->setFocus();
    connect(m_NoServidor, &QRadioButton::toggled, this, [this] { Habilita(); });
    connect(m_Escolher, &QPushButton::clicked, this, [this] { EscolheAutoridade(); });
}

void JanelaDoLugar::Monta()
{
    QPushButton *usar = FazBotao("usar", "&Usar este", this);
    QPushButton *cancelar = FazBotao("cancelar", "C&ancelar", this);
    usar->setDefault(true);
    connect(usar, &QPushButton::clicked, this, [this] { Tenta(); });
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    auto *arquivo = new QHBoxLayout;
    arquivo->addWidget(m_Autoridade, 1);
    arquivo->addWidget(m_Escolher);
    auto *campos = new QFormLayout;
    campos->setRowWrapPolicy(QFormLayout::WrapLongRows);
    campos->addRow("&Máquina:porta:", m_Endereco);
    campos->addRow("&Digital:", m_Digital);
    auto *autoridade = new QLabel("Au&toridade:", this);
    autoridade->setBuddy(m_Autoridade);
    campos->addRow(autoridade, arquivo);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(
        FazCabeca("Onde está o registro",
                  "Num servidor, várias pessoas trabalham ao mesmo tempo no mesmo registro. Quem administra "
                  "o servidor diz qual é a máquina e qual é a digital do seu certificado.",
                  this));
    tudo->addWidget(m_EsteComputador);
    tudo->addWidget(m_NoServidor);
    tudo->addLayout(campos);
    tudo->addWidget(m_Aviso);
    tudo->addLayout(EmLinha({usar, cancelar}));
}

void JanelaDoLugar::Habilita()
{
    for (QWidget *doServidor : {static_cast<QWidget *>(m_Endereco), static_cast<QWidget *>(m_Digital),
                                static_cast<QWidget *>(m_Autoridade), static_cast<QWidget *>(m_Escolher)}) {
        doServidor->setEnabled(m_NoServidor->isChecked());
    }
}

void JanelaDoLugar::EscolheAutoridade()
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = "Certificado da autoridade";
    escolha.Filtros = "Certificados (*.pem *.crt *.cer);;Todos os arquivos (*)";
    if (const QString escolhido = EscolheParaAbrir(escolha, this); !escolhido.isEmpty()) {
        m_Autoridade->setText(escolhido);
    }
}

void JanelaDoLugar::Tenta()
{
    m_Aviso->clear();
    if (m_EsteComputador->isChecked()) {
        m_Lugar = {};
        accept();
        return;
    }
    ProblemaDoLugar problema;
    if (const auto lugar = LeServidor(S(m_Endereco->text()), S(m_Digital->text()), S(m_Autoridade->text()), problema)) {
        m_Lugar = *lugar;
        accept();
        return;
    }
    MostraAviso(*m_Aviso, Q(problema.Frase));
    QLineEdit *campo = problema.Campo == CampoDoLugar::Servidor  ? m_Endereco
                       : problema.Campo == CampoDoLugar::Digital ? m_Digital
                                                                 : m_Autoridade;
    campo->setFocus();
    campo->selectAll();
}

} // namespace mesa
