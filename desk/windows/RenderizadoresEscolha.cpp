#include "desk/windows/RenderizadoresEscolha.h"

#include "desk/windows/Combo.h"
#include "desk/windows/Dica.h"
#include "tela/Partes.h"
#include "tela/Tracado.h"

#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStringListModel>

#include <algorithm>

namespace mesa {

namespace {

constexpr int LetrasDoMunicipio = 24;

QStringList Lista(const std::vector<std::string> &textos)
{
    QStringList lista;
    for (const std::string &texto : textos) {
        lista << Q(texto);
    }
    return lista;
}

// As wide as its digits, whatever their size.
class CampoDeNumero : public QLineEdit {
  public:
    explicit CampoDeNumero(QWidget *dono) : QLineEdit(dono) { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

    QSize sizeHint() const override
    {
        constexpr int Algarismos = EscolhaDeEndereco::DigitosDoNumero + 3;
        return {fontMetrics().horizontalAdvance('0') * Algarismos, QLineEdit::sizeHint().height()};
    }
};

QLabel *NovoRotulo(std::string_view texto, QWidget *alvo)
{
    auto *rotulo = new QLabel(Q(std::string(texto)), alvo->parentWidget());
    rotulo->setBuddy(alvo); // a combo is known to a reader by its label alone
    return rotulo;
}

void MostraTexto(QLineEdit &campo, const std::string &texto)
{
    const QString novo = Q(texto);
    if (campo.text() != novo) { // the cursor stays with what is being typed
        const auto sobra = static_cast<int>(campo.text().size() - novo.size());
        const int cursor = campo.cursorPosition() - std::max(sobra, 0);
        campo.setText(novo);
        campo.setCursorPosition(campo.hasFocus() ? cursor : static_cast<int>(novo.size()));
    }
}

} // namespace

RenderEndereco::RenderEndereco(Ref<IControle> controle, QWidget *widget, Borda borda, Ref<ILogradouros> logradouros,
                               Ref<MemoriaDeEnderecos> memoria)
    : Renderizador(controle, widget, std::move(borda)),
      m_Escolha(ComoTipo<ztEndereco>(controle), std::move(logradouros), std::move(memoria)),
      m_Municipio(new Combo(widget)),
      m_Via(new QLineEdit(widget)),
      m_Numero(new CampoDeNumero(widget)),
      m_Complemento(new QLineEdit(widget)),
      m_Usar(new QPushButton(Q(std::string(Partes::UsarEndereco)), widget)),
      m_Limpar(new QPushButton(Q(std::string(Partes::LimparEndereco)), widget)),
      m_Atual(new QLabel(widget)),
      m_Sugestoes(new QStringListModel(this))
{
    m_Municipio->setObjectName("municipio");
    m_Municipio->setAccessibleName("Município");
    // Thousands of them: in one piece, and not measured one by one.
    QStringList municipios;
    for (const MunicipioDeEndereco &municipio : m_Escolha.Municipios()) {
        municipios << Q(municipio.Nome);
    }
    m_Municipio->setModel(new QStringListModel(municipios, this));
    m_Municipio->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_Municipio->setMinimumContentsLength(LetrasDoMunicipio);
    if (auto *lista = qobject_cast<QListView *>(m_Municipio->view())) {
        lista->setUniformItemSizes(true);
    }
    m_Via->setObjectName("via");
    m_Numero->setObjectName("numero");
    m_Complemento->setObjectName("complemento");
    m_Usar->setObjectName("usar");
    m_Via->setPlaceholderText("Nome da rua ou CEP");
    m_Via->setAccessibleName("Logradouro ou CEP");
    m_Numero->setAccessibleName("Número");
    m_Complemento->setAccessibleName("Complemento");
    m_Atual->setObjectName("atual");
    m_Atual->setWordWrap(true);
    m_Usar->setAutoDefault(false);
    m_Limpar->setAutoDefault(false);
    auto *completador = new QCompleter(m_Sugestoes, this);
    completador->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completador->setMaxVisibleItems(12);
    m_Via->setCompleter(completador);

    auto *grade = new QGridLayout(widget);
    grade->setContentsMargins(0, 0, 0, 0);
    grade->addWidget(NovoRotulo(Partes::Municipio, m_Municipio), 0, 0);
    grade->addWidget(m_Municipio, 0, 1, 1, 3);
    grade->addWidget(NovoRotulo(Partes::Logradouro, m_Via), 1, 0);
    grade->addWidget(m_Via, 1, 1, 1, 3);
    grade->addWidget(NovoRotulo(Partes::Numero, m_Numero), 2, 0);
    grade->addWidget(m_Numero, 2, 1);
    grade->addWidget(NovoRotulo(Partes::Complemento, m_Complemento), 2, 2);
    grade->addWidget(m_Complemento, 2, 3);
    auto *botoes = new QHBoxLayout;
    botoes->addWidget(m_Atual, 1);
    botoes->addWidget(m_Usar);
    botoes->addWidget(m_Limpar);
    grade->addLayout(botoes, 3, 0, 1, 4);
    grade->setColumnStretch(3, 1);

    m_Municipio->PesquisaEm(m_Escolha.PesquisaDeMunicipios(), [this](const std::function<void()> &ato) { Age(ato); });
    connect(m_Municipio, &QComboBox::activated, this, [this](int lugar) {
        Age([&] { m_Escolha.EscolheMunicipio(m_Escolha.Municipios()[static_cast<std::size_t>(lugar)].Codigo); });
    });
    connect(m_Via, &QLineEdit::textEdited, this,
            [this](const QString &texto) { Digita(m_Via, &EscolhaDeEndereco::DigitaVia, texto); });
    connect(m_Numero, &QLineEdit::textEdited, this,
            [this](const QString &texto) { Digita(m_Numero, &EscolhaDeEndereco::DigitaNumero, texto); });
    connect(m_Complemento, &QLineEdit::textEdited, this,
            [this](const QString &texto) { Digita(m_Complemento, &EscolhaDeEndereco::DigitaComplemento, texto); });
    connect(completador, qOverload<const QString &>(&QCompleter::activated), this, [this](const QString &item) {
        Parte proxima = Parte::Via;
        Age([&] { proxima = m_Escolha.EscolheSugestao(S(item)); });
        WidgetDe(proxima)->setFocus();
    });
    connect(m_Usar, &QPushButton::clicked, this, [this] { Age([this] { m_Escolha.Usa(); }); });
    connect(m_Limpar, &QPushButton::clicked, this, [this] { Age([this] { m_Escolha.Limpa(); }); });
    for (QWidget *parte : Partes()) {
        SegueFoco(parte);
    }
}

QWidget *RenderEndereco::WidgetDe(Parte parte) const
{
    switch (parte) {
    case Parte::Municipio:
        return m_Municipio;
    case Parte::Numero:
        return m_Numero;
    case Parte::Complemento:
        return m_Complemento;
    case Parte::Usar:
        return m_Usar;
    case Parte::Limpar:
        return m_Limpar;
    default:
        return m_Via;
    }
}

void RenderEndereco::Mostra()
{
    m_Escolha.Acompanha();
    m_Municipio->setCurrentIndex(m_Escolha.LugarDoMunicipio());
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

void RenderEndereco::Digita(QLineEdit *onde, void (EscolhaDeEndereco::*digita)(const std::string &),
                            const QString &texto)
{
    const QPointer<RenderEndereco> vivo = this;
    Age([&] { (m_Escolha.*digita)(S(texto)); });
    if (!vivo.isNull()) {
        const std::string dica = onde == m_Via ? m_Escolha.Aviso() : m_Escolha.Recusa();
        Dica::Mostra(*onde, Q(dica), true);
    }
}

RenderClienteSetor::RenderClienteSetor(Ref<IControle> controle, QWidget *widget, Borda borda,
                                       std::vector<ClienteOferecido> clientes)
    : Renderizador(controle, widget, std::move(borda)),
      m_Escolha(ComoTipo<ztClienteSetor>(controle), std::move(clientes)),
      m_Cliente(new Combo(widget)),
      m_Setor(new Combo(widget))
{
    m_Cliente->setObjectName("cliente");
    m_Setor->setObjectName("setor");
    m_Cliente->setAccessibleName("Cliente");
    m_Setor->setAccessibleName("Setor");
    for (const ClienteOferecido &cliente : m_Escolha.Clientes()) {
        m_Cliente->addItem(Q(cliente.Nome));
    }
    for (Combo *combo : {m_Cliente, m_Setor}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        combo->setMinimumContentsLength(LetrasDoCombo);
    }
    auto *linha = new QHBoxLayout(widget);
    linha->setContentsMargins(0, 0, 0, 0);
    linha->addWidget(NovoRotulo(Partes::Cliente, m_Cliente));
    linha->addWidget(m_Cliente);
    linha->addWidget(NovoRotulo(Partes::Setor, m_Setor));
    linha->addWidget(m_Setor);
    linha->addStretch();
    connect(m_Cliente, &QComboBox::activated, this,
            [this](int posicao) { Age([&] { m_Escolha.EscolheCliente(posicao); }); });
    connect(m_Setor, &QComboBox::activated, this,
            [this](int posicao) { Age([&] { m_Escolha.EscolheSetor(posicao); }); });
    const auto age = [this](const std::function<void()> &ato) { Age(ato); };
    m_Cliente->PesquisaEm(m_Escolha.PesquisaDeClientes(), age);
    m_Setor->PesquisaEm(m_Escolha.PesquisaDeSetores(), age);
    SegueFoco(m_Cliente);
    SegueFoco(m_Setor);
}

QWidget *RenderClienteSetor::WidgetDe(Parte parte) const
{
    return parte == Parte::Setor ? m_Setor : m_Cliente;
}

void RenderClienteSetor::Mostra()
{
    m_Cliente->setCurrentIndex(m_Escolha.Cliente());
    m_Setor->clear();
    m_Setor->addItems(Lista(m_Escolha.Setores()));
    m_Setor->setCurrentIndex(m_Escolha.Setor());
}

} // namespace mesa
