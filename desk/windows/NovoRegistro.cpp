#include "desk/windows/NovoRegistro.h"

#include "desk/windows/CampoDeSenha.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "services/Referencias.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int MaiorCodigo = 999999;
constexpr int LinhasDeSetores = 4;
constexpr int Largura = 560;

QLineEdit *FazCampo(const char *nome, QWidget *dono)
{
    auto *campo = new QLineEdit(dono);
    campo->setObjectName(nome);
    return campo;
}

} // namespace

NovoRegistro::NovoRegistro(std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> faz)
    : m_Faz(std::move(faz)),
      m_CodCliente(FazCampo("codCliente", this)),
      m_Cliente(FazCampo("cliente", this)),
      m_Estado(new Combo(this)),
      m_Setores(new QPlainTextEdit(this)),
      m_Usuario(FazCampo("usuario", this)),
      m_Nome(FazCampo("nome", this)),
      m_Senha(new CampoDeSenha("senha", this)),
      m_Repetida(new CampoDeSenha("repetida", this)),
      m_Aviso(FazAviso(this))
{
    setObjectName("NovoRegistro");
    setWindowTitle("Registro novo - Registro de Equipamentos");
    setWindowIcon(Icone("equipamentos"));
    setMinimumWidth(Largura);
    m_CodCliente->setValidator(new QIntValidator(1, MaiorCodigo, m_CodCliente));
    m_Estado->setObjectName("estado");
    m_Estado->addItem("");
    for (const std::string &estado : Referencias::Tabelas().Estados()) {
        m_Estado->addItem(Q(estado));
    }
    m_Setores->setObjectName("setores");
    m_Setores->setTabChangesFocus(true);
    m_Setores->setFixedHeight(m_Setores->fontMetrics().lineSpacing() * LinhasDeSetores + 12);

    auto *cliente = new QGroupBox("Cliente", this);
    auto *doCliente = new QFormLayout(cliente);
    doCliente->addRow("&Código:", m_CodCliente);
    doCliente->addRow("N&ome:", m_Cliente);
    doCliente->addRow("&Estado:", m_Estado);
    doCliente->addRow("Se&tores, um por linha:", m_Setores);
    auto *administrador = new QGroupBox("Primeiro administrador", this);
    auto *doAdministrador = new QFormLayout(administrador);
    doAdministrador->addRow("&Usuário:", m_Usuario);
    doAdministrador->addRow("&Nome:", m_Nome);
    doAdministrador->addRow("&Senha:", m_Senha);
    doAdministrador->addRow("", m_Senha->AvisoDeMaiusculas());
    doAdministrador->addRow("&Repita a senha:", m_Repetida);
    doAdministrador->addRow("", m_Repetida->AvisoDeMaiusculas());
    int largura = 0; // the fields of both begin at one place
    for (const QFormLayout *parte : {doCliente, doAdministrador}) {
        for (int linha = 0; linha < parte->rowCount(); ++linha) {
            if (const QLayoutItem *rotulo = parte->itemAt(linha, QFormLayout::LabelRole)) {
                largura = std::max(largura, rotulo->sizeHint().width());
            }
        }
    }
    for (const QFormLayout *parte : {doCliente, doAdministrador}) {
        parte->itemAt(0, QFormLayout::LabelRole)->widget()->setMinimumWidth(largura);
    }
    QPushButton *criar = FazBotao("criar", "Cr&iar o registro", this);
    QPushButton *cancelar = FazBotao("cancelar", "C&ancelar", this);
    criar->setDefault(true);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazCabeca("Registro novo",
                              "Quem cria o registro é o seu primeiro administrador: cadastra os demais usuários e o "
                              "que cada um pode fazer. A senha tem ao menos 12 caracteres e não é das mais comuns.",
                              this));
    tudo->addWidget(cliente);
    tudo->addWidget(administrador);
    tudo->addWidget(m_Aviso);
    tudo->addLayout(EmLinha({criar, cancelar}));
    m_CodCliente->setFocus();
    connect(criar, &QPushButton::clicked, this, [this] { Tenta(); });
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

RegistroNovo NovoRegistro::Informado() const
{
    RegistroNovo novo;
    novo.Cliente.CodCliente = m_CodCliente->text().toInt();
    novo.Cliente.Nome = S(m_Cliente->text());
    novo.Cliente.UF = S(m_Estado->currentText());
    for (const QString &setor : m_Setores->toPlainText().split('\n')) {
        if (!setor.trimmed().isEmpty()) {
            novo.Cliente.Setores.push_back(S(setor.trimmed()));
        }
    }
    novo.Usuario = S(m_Usuario->text());
    novo.Nome = S(m_Nome->text());
    novo.Senha = m_Senha->Senha();
    return novo;
}

void NovoRegistro::Tenta()
{
    m_Aviso->clear();
    m_Senha->Esconde();
    m_Repetida->Esconde();
    if (m_Senha->Senha() != m_Repetida->Senha()) {
        m_Repetida->Limpa();
        Mostra({CampoDoRegistroNovo::Senha, "As duas senhas não são iguais. Digite-as de novo."});
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto problema = m_Faz(Informado());
    QApplication::restoreOverrideCursor();
    if (problema) {
        Mostra(*problema);
        return;
    }
    accept();
}

void NovoRegistro::Mostra(const ProblemaDoRegistroNovo &problema)
{
    using Campo = CampoDoRegistroNovo;
    MostraAviso(*m_Aviso, Q(problema.Frase));
    switch (problema.Campo) {
    case Campo::CodCliente:
        m_CodCliente->setFocus();
        break;
    case Campo::Cliente:
        m_Cliente->setFocus();
        break;
    case Campo::Estado:
        m_Estado->setFocus();
        break;
    case Campo::Usuario:
        m_Usuario->setFocus();
        break;
    case Campo::Nome:
        m_Nome->setFocus();
        break;
    case Campo::Senha:
        m_Senha->setFocus();
        m_Senha->selectAll();
        break;
    }
}

} // namespace mesa
