#include "desk/windows/RenderizadoresEscolha.h"

#include "controls/OrdemPortuguesa.h"
#include "controls/ztEndereco.h"
#include "desk/host/BancoLocalMesa.h"
#include "host/Conversoes.h"
#include "tela/Partes.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringListModel>

#include <algorithm>

namespace {

constexpr std::size_t MaximoDeSugestoes = 20;
constexpr const char *TodosOsSetores = "Todos os setores";

// Municipality of the address last entered, with which the next one begins; 0 before the first.
std::int32_t g_UltimoMunicipio = 0;

void PreencheMunicipios(QComboBox &combo)
{
    std::vector<Municipio> municipios = Municipios();
    std::sort(municipios.begin(), municipios.end(),
              [](const Municipio &a, const Municipio &b) { return ChaveOrdem(a.Nome) < ChaveOrdem(b.Nome); });
    for (const Municipio &municipio : municipios) {
        combo.addItem(Q(municipio.Nome), municipio.Codigo);
    }
    combo.setCurrentIndex(-1);
}

QString CepComTraco(const std::string &cep)
{
    return Q(cep.substr(0, 5) + "-" + cep.substr(5));
}

QString TextoDaSugestao(const Logradouro &logradouro)
{
    return Q(logradouro.Nome + " - " + logradouro.Bairro) + " - " + CepComTraco(logradouro.Cep);
}

} // namespace

RenderEndereco::RenderEndereco(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Municipio(new QComboBox(widget)),
      m_Via(new QLineEdit(widget)),
      m_Numero(new QLineEdit(widget)),
      m_Complemento(new QLineEdit(widget)),
      m_Usar(new QPushButton(Q(std::string(Partes::UsarEndereco)), widget)),
      m_Limpar(new QPushButton(Q(std::string(Partes::LimparEndereco)), widget)),
      m_Atual(new QLabel(widget)),
      m_Sugestoes(new QStringListModel(this)),
      m_Completador(new QCompleter(m_Sugestoes, this))
{
    m_Municipio->setObjectName("municipio");
    m_Municipio->setAccessibleName("Município");
    PreencheMunicipios(*m_Municipio);
    m_Via->setObjectName("via");
    m_Numero->setObjectName("numero");
    m_Complemento->setObjectName("complemento");
    m_Usar->setObjectName("usar");
    m_Via->setPlaceholderText("Nome da rua ou CEP");
    m_Via->setAccessibleName("Logradouro ou CEP");
    m_Numero->setAccessibleName("Número");
    m_Numero->setValidator(new QIntValidator(0, 999999, m_Numero));
    m_Numero->setMaximumWidth(90);
    m_Complemento->setAccessibleName("Complemento");
    m_Complemento->setMaxLength(30);
    m_Atual->setWordWrap(true);
    m_Usar->setAutoDefault(false);
    m_Limpar->setAutoDefault(false);
    m_Completador->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_Completador->setMaxVisibleItems(12);
    m_Via->setCompleter(m_Completador);

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

    connect(m_Municipio, &QComboBox::activated, this, [this] {
        g_UltimoMunicipio = CodMunic();
        Procura(m_Via->text());
    });
    connect(m_Via, &QLineEdit::textEdited, this, [this](const QString &texto) { Procura(texto); });
    connect(m_Completador, qOverload<const QString &>(&QCompleter::activated), this,
            [this](const QString &item) { Escolhe(item); });
    connect(m_Usar, &QPushButton::clicked, this, [this] { Usa(); });
    connect(m_Limpar, &QPushButton::clicked, this, [this] {
        m_Escolhido = {};
        Age([this] { Como<ztEndereco>(*this).LimpaEndereco(); });
        m_Via->clear();
        m_Numero->clear();
        m_Complemento->clear();
    });
    m_MudouEndereco = Como<ztEndereco>(*this).EnderecoProprio()->Mudou().liga([this] { Atualiza(); });
    SegueFoco(m_Via);
}

std::vector<QWidget *> RenderEndereco::Partes() const
{
    return {m_Municipio, m_Via, m_Numero, m_Complemento, m_Usar, m_Limpar};
}

QWidget *RenderEndereco::AlvoDoFoco()
{
    return m_Via;
}

std::int32_t RenderEndereco::CodMunic() const
{
    return m_Municipio->currentData().toInt();
}

void RenderEndereco::Procura(const QString &texto)
{
    m_Escolhido = {};
    m_Achados.clear();
    QStringList itens;
    if (!texto.trimmed().isEmpty()) {
        m_Achados = ProcuraLogradouros(CodMunic(), S(texto.trimmed()), MaximoDeSugestoes);
    }
    for (const Logradouro &logradouro : m_Achados) {
        itens << TextoDaSugestao(logradouro);
    }
    m_Sugestoes->setStringList(itens);
    if (itens.size() == 1) {
        m_Escolhido = m_Achados.front();
    }
    m_Usar->setEnabled(m_Escolhido.Codigo > 0);
}

void RenderEndereco::Escolhe(const QString &item)
{
    for (const Logradouro &logradouro : m_Achados) {
        if (TextoDaSugestao(logradouro) == item) {
            m_Escolhido = logradouro;
        }
    }
    m_Usar->setEnabled(m_Escolhido.Codigo > 0);
    m_Numero->setFocus();
}

void RenderEndereco::Usa()
{
    const std::int32_t numero = CLng(Val(S(m_Numero->text())));
    const std::string complemento = S(m_Complemento->text().trimmed());
    Age([&] {
        Como<ztEndereco>(*this).InformaEndereco(m_Escolhido.Codigo, numero, complemento, m_Escolhido.Cep,
                                                m_Escolhido.Descricao(numero, complemento));
    });
}

void RenderEndereco::Mostra()
{
    const auto &controle = Como<ztEndereco>(*this);
    const Ref<Endereco> &endereco = controle.EnderecoProprio();
    if (endereco->CodLogradouro() > 0 && m_Escolhido.Codigo != endereco->CodLogradouro()) {
        if (const auto logradouro = LogradouroPorCodigo(endereco->CodLogradouro())) {
            m_Escolhido = *logradouro;
            m_Via->setText(TextoDaSugestao(*logradouro));
            m_Numero->setText(endereco->Numero() > 0 ? QString::number(endereco->Numero()) : QString());
            m_Complemento->setText(Q(endereco->Complemento()));
        }
    }
    if (m_Municipio->currentIndex() < 0 || m_Escolhido.CodMunic > 0) {
        m_Municipio->setCurrentIndex(
            m_Municipio->findData(m_Escolhido.CodMunic > 0 ? m_Escolhido.CodMunic : g_UltimoMunicipio));
    }
    m_Municipio->setEnabled(!controle.ReadOnly() && !controle.Ajustes().ReadOnlyMunicipio);
    const std::string descricao = endereco->DescricaoEndereco();
    m_Atual->setText(descricao.empty() ? QString("Nenhum endereço escolhido.") : Q(descricao));
    for (QLineEdit *campo : {m_Via, m_Numero, m_Complemento}) {
        DefineSomenteLeitura(*campo, controle.ReadOnly());
    }
    m_Usar->setVisible(!controle.ReadOnly());
    m_Limpar->setVisible(!controle.ReadOnly());
    m_Usar->setEnabled(m_Escolhido.Codigo > 0);
}

RenderClienteSetor::RenderClienteSetor(Ref<IControle> controle, QWidget *widget, Borda borda,
                                       std::vector<ClienteCadastrado> clientes)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Clientes(std::move(clientes)),
      m_Cliente(new QComboBox(widget)),
      m_Setor(new QComboBox(widget))
{
    m_Cliente->setObjectName("cliente");
    m_Setor->setObjectName("setor");
    m_Cliente->setAccessibleName("Cliente");
    m_Setor->setAccessibleName("Setor");
    for (const ClienteCadastrado &cliente : m_Clientes) {
        m_Cliente->addItem(Q(cliente.Nome));
    }
    m_Setor->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_Setor->setMinimumContentsLength(16);
    auto *linha = new QHBoxLayout(widget);
    linha->setContentsMargins(0, 0, 0, 0);
    linha->addWidget(new QLabel("Cliente:", widget));
    linha->addWidget(m_Cliente, 1);
    linha->addWidget(new QLabel("Setor:", widget));
    linha->addWidget(m_Setor, 1);
    connect(m_Cliente, &QComboBox::activated, this, [this] {
        MostraSetores(S(m_Cliente->currentText()));
        Escolhe();
    });
    connect(m_Setor, &QComboBox::activated, this, [this] { Escolhe(); });
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

void RenderClienteSetor::Escolhe()
{
    const std::string setor = m_Setor->currentIndex() <= 0 ? "" : S(m_Setor->currentText());
    Age([&] { Como<ztClienteSetor>(*this).Escolhe(S(m_Cliente->currentText()), setor); });
}

void RenderClienteSetor::MostraSetores(const std::string &cliente)
{
    m_Setor->clear();
    m_Setor->addItem(TodosOsSetores);
    const auto achado = std::find_if(m_Clientes.begin(), m_Clientes.end(),
                                     [&](const auto &cadastrado) { return cadastrado.Nome == cliente; });
    if (achado != m_Clientes.end()) {
        for (const std::string &setor : achado->Setores) {
            m_Setor->addItem(Q(setor));
        }
    }
}

void RenderClienteSetor::Mostra()
{
    const auto &controle = Como<ztClienteSetor>(*this);
    m_Cliente->setCurrentIndex(m_Cliente->findText(Q(controle.Cliente())));
    MostraSetores(controle.Cliente());
    m_Setor->setCurrentIndex(controle.Setor().empty() ? 0 : m_Setor->findText(Q(controle.Setor())));
}
