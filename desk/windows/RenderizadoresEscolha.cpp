#include "desk/windows/RenderizadoresEscolha.h"

#include "tela/Partes.h"

#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringListModel>

namespace mesa {

namespace {

QStringList Lista(const std::vector<std::string> &textos)
{
    QStringList lista;
    for (const std::string &texto : textos) {
        lista << Q(texto);
    }
    return lista;
}

void MostraTexto(QLineEdit &campo, const std::string &texto)
{
    if (campo.text() != Q(texto)) { // the cursor stays with what is being typed
        campo.setText(Q(texto));
    }
}

} // namespace

RenderEndereco::RenderEndereco(Ref<IControle> controle, QWidget *widget, Borda borda, Ref<ILogradouros> logradouros)
    : Renderizador(controle, widget, std::move(borda)),
      m_Escolha(ComoTipo<ztEndereco>(controle), std::move(logradouros)),
      m_Municipio(new QComboBox(widget)),
      m_Via(new QLineEdit(widget)),
      m_Numero(new QLineEdit(widget)),
      m_Complemento(new QLineEdit(widget)),
      m_Usar(new QPushButton(Q(std::string(Partes::UsarEndereco)), widget)),
      m_Limpar(new QPushButton(Q(std::string(Partes::LimparEndereco)), widget)),
      m_Atual(new QLabel(widget)),
      m_Sugestoes(new QStringListModel(this))
{
    m_Municipio->setObjectName("municipio");
    m_Municipio->setAccessibleName("Município");
    for (const MunicipioDeEndereco &municipio : m_Escolha.Municipios()) {
        m_Municipio->addItem(Q(municipio.Nome), municipio.Codigo);
    }
    m_Via->setObjectName("via");
    m_Numero->setObjectName("numero");
    m_Complemento->setObjectName("complemento");
    m_Usar->setObjectName("usar");
    m_Via->setPlaceholderText("Nome da rua ou CEP");
    m_Via->setAccessibleName("Logradouro ou CEP");
    m_Numero->setAccessibleName("Número");
    m_Numero->setValidator(new QIntValidator(0, EscolhaDeEndereco::MaiorNumero, m_Numero));
    m_Numero->setMaximumWidth(90);
    m_Complemento->setAccessibleName("Complemento");
    m_Complemento->setMaxLength(static_cast<int>(EscolhaDeEndereco::TamanhoDoComplemento));
    m_Atual->setWordWrap(true);
    m_Usar->setAutoDefault(false);
    m_Limpar->setAutoDefault(false);
    auto *completador = new QCompleter(m_Sugestoes, this);
    completador->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completador->setMaxVisibleItems(12);
    m_Via->setCompleter(completador);

    auto *grade = new QGridLayout(widget);
    grade->setContentsMargins(0, 0, 0, 0);
    grade->addWidget(new QLabel("Município:", widget), 0, 0);
    grade->addWidget(m_Municipio, 0, 1, 1, 3);
    grade->addWidget(new QLabel("Logradouro ou CEP:", widget), 1, 0);
    grade->addWidget(m_Via, 1, 1, 1, 3);
    grade->addWidget(new QLabel("Número:", widget), 2, 0);
    grade->addWidget(m_Numero, 2, 1);
    grade->addWidget(new QLabel("Complemento:", widget), 2, 2);
    grade->addWidget(m_Complemento, 2, 3);
    auto *botoes = new QHBoxLayout;
    botoes->addWidget(m_Atual, 1);
    botoes->addWidget(m_Usar);
    botoes->addWidget(m_Limpar);
    grade->addLayout(botoes, 3, 0, 1, 4);
    grade->setColumnStretch(3, 1);

    connect(m_Municipio, &QComboBox::activated, this,
            [this] { Age([this] { m_Escolha.EscolheMunicipio(m_Municipio->currentData().toInt()); }); });
    connect(m_Via, &QLineEdit::textEdited, this,
            [this](const QString &texto) { Age([&] { m_Escolha.DigitaVia(S(texto)); }); });
    connect(m_Numero, &QLineEdit::textEdited, this, [this](const QString &texto) { m_Escolha.DigitaNumero(S(texto)); });
    connect(m_Complemento, &QLineEdit::textEdited, this,
            [this](const QString &texto) { m_Escolha.DigitaComplemento(S(texto)); });
    connect(completador, qOverload<const QString &>(&QCompleter::activated), this, [this](const QString &item) {
        Age([&] { m_Escolha.EscolheSugestao(S(item)); });
        m_Numero->setFocus();
    });
    connect(m_Usar, &QPushButton::clicked, this, [this] { Age([this] { m_Escolha.Usa(); }); });
    connect(m_Limpar, &QPushButton::clicked, this, [this] { Age([this] { m_Escolha.Limpa(); }); });
    for (QWidget *parte : RenderEndereco::Partes()) {
        SegueFoco(parte);
    }
}

std::vector<QWidget *> RenderEndereco::Partes() const
{
    return {m_Municipio, m_Via, m_Numero, m_Complemento, m_Usar, m_Limpar};
}

QWidget *RenderEndereco::AlvoDoFoco()
{
    return m_Via;
}

void RenderEndereco::Mostra()
{
    m_Escolha.Acompanha();
    m_Municipio->setCurrentIndex(m_Municipio->findData(m_Escolha.CodMunic()));
    m_Municipio->setEnabled(m_Escolha.MunicipioEditavel());
    if (const QStringList sugestoes = Lista(m_Escolha.Sugestoes()); m_Sugestoes->stringList() != sugestoes) {
        m_Sugestoes->setStringList(sugestoes);
    }
    MostraTexto(*m_Via, m_Escolha.Via());
    MostraTexto(*m_Numero, m_Escolha.Numero());
    MostraTexto(*m_Complemento, m_Escolha.Complemento());
    m_Atual->setText(Q(m_Escolha.Atual()));
    const bool fixo = m_Escolha.SomenteLeitura();
    for (QLineEdit *campo : {m_Via, m_Numero, m_Complemento}) {
        DefineSomenteLeitura(*campo, fixo);
    }
    m_Usar->setVisible(!fixo);
    m_Limpar->setVisible(!fixo);
    m_Usar->setEnabled(m_Escolha.PodeUsar());
}

RenderClienteSetor::RenderClienteSetor(Ref<IControle> controle, QWidget *widget, Borda borda,
                                       std::vector<ClienteOferecido> clientes)
    : Renderizador(controle, widget, std::move(borda)),
      m_Escolha(ComoTipo<ztClienteSetor>(controle), std::move(clientes)),
      m_Cliente(new QComboBox(widget)),
      m_Setor(new QComboBox(widget))
{
    m_Cliente->setObjectName("cliente");
    m_Setor->setObjectName("setor");
    m_Cliente->setAccessibleName("Cliente");
    m_Setor->setAccessibleName("Setor");
    for (const ClienteOferecido &cliente : m_Escolha.Clientes()) {
        m_Cliente->addItem(Q(cliente.Nome));
    }
    for (QComboBox *combo : {m_Cliente, m_Setor}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        combo->setMinimumContentsLength(18);
    }
    auto *linha = new QHBoxLayout(widget);
    linha->setContentsMargins(0, 0, 0, 0);
    linha->addWidget(new QLabel("Cliente:", widget));
    linha->addWidget(m_Cliente);
    linha->addWidget(new QLabel("Setor:", widget));
    linha->addWidget(m_Setor);
    linha->addStretch();
    connect(m_Cliente, &QComboBox::activated, this,
            [this](int posicao) { Age([&] { m_Escolha.EscolheCliente(posicao); }); });
    connect(m_Setor, &QComboBox::activated, this,
            [this](int posicao) { Age([&] { m_Escolha.EscolheSetor(posicao); }); });
    SegueFoco(m_Cliente);
    SegueFoco(m_Setor);
}

std::vector<QWidget *> RenderClienteSetor::Partes() const
{
    return {m_Cliente, m_Setor};
}

QWidget *RenderClienteSetor::AlvoDoFoco()
{
    return m_Cliente;
}

void RenderClienteSetor::Mostra()
{
    m_Cliente->setCurrentIndex(m_Escolha.Cliente());
    m_Setor->clear();
    m_Setor->addItems(Lista(m_Escolha.Setores()));
    m_Setor->setCurrentIndex(m_Escolha.Setor());
}

} // namespace mesa
