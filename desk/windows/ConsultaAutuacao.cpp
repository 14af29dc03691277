#include "desk/windows/ConsultaAutuacao.h"

#include "desk/windows/Calendario.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Icones.h"
#include "desk/windows/Renderizador.h"
#include "desk/windows/Rolagem.h"
#include "host/Conversoes.h"
#include "shell/ModGeral.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace mesa {

ConsultaAutuacao::ConsultaAutuacao(const QDate &hoje, std::function<Ref<CVorEquip>()> criaConsulta,
                                   std::function<void(const std::function<void()> &)> borda,
                                   std::function<void(const PedidoDeDossie &)> fazDossie, QWidget *dono)
    : QWidget(dono),
      m_Autuacao(std::move(criaConsulta)),
      m_Borda(std::move(borda)),
      m_FazDossie(std::move(fazDossie)),
      m_ComData(new QCheckBox("Com a &data da infração:", this)),
      m_Data(new CampoDeDia(hoje, this)),
      m_Codigo(new QLineEdit(this)),
      m_Tipo(new Combo(this)),
      m_Resultado(new QLabel(this))
{
    setObjectName("ConsultaAutuacao");
    setWindowTitle("Consulta para autuação");
    setWindowIcon(Icone("consulta"));
    m_Resultado->setObjectName("resultado");
    m_Resultado->setTextFormat(Qt::PlainText);
    m_Resultado->setWordWrap(true);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazPergunta());
    tudo->addWidget(m_Resultado);
    tudo->addWidget(FazResposta());
    tudo->addWidget(FazCertificado());
    tudo->addStretch(1);
    FazRolar(*this);
}

QWidget *ConsultaAutuacao::FazPergunta()
{
    m_Data->setObjectName("data");
    m_Data->setAccessibleName("Data da infração");
    m_ComData->setObjectName("comData");
    m_ComData->setChecked(true);
    m_Codigo->setObjectName("codigo");
    m_Codigo->setMaxLength(20);
    m_Tipo->setObjectName("tipo");
    m_Tipo->addItem("Todos", "");
    for (const char *codigo : {"C", "L", "P", "M", "R", "A", "E", "F", "U", "V"}) {
        m_Tipo->addItem(Q(gFunDescrEquipto(codigo)), codigo);
    }
    auto *pergunta = new QGroupBox("Pergunta", this);
    auto *campos = new QFormLayout(pergunta);
    campos->addRow(m_ComData, m_Data);
    campos->addRow("&Código do equipamento:", m_Codigo);
    campos->addRow("&Tipo de equipamento:", m_Tipo);
    auto *selecionar = new QPushButton("&Selecionar...", this);
    selecionar->setObjectName("selecionar");
    auto *buscar = new QPushButton("&Buscar pelo código", this);
    buscar->setObjectName("buscar");
    auto *botoes = new QHBoxLayout;
    botoes->addStretch(1);
    botoes->addWidget(selecionar);
    botoes->addWidget(buscar);
    campos->addRow(botoes);

    connect(m_ComData, &QCheckBox::toggled, m_Data, &QWidget::setEnabled);
    connect(m_ComData, &QCheckBox::toggled, this, [this] { MudaPergunta(); });
    connect(m_Data, &QDateEdit::dateChanged, this, [this] { MudaPergunta(); });
    connect(m_Codigo, &QLineEdit::textChanged, this, [this] { MudaPergunta(); });
    connect(m_Tipo, &QComboBox::currentIndexChanged, this, [this] { MudaPergunta(); });
    connect(selecionar, &QPushButton::clicked, this, [this] { Age([this] { m_Autuacao.Seleciona(Pergunta()); }); });
    connect(buscar, &QPushButton::clicked, this, [this] { Age([this] { m_Autuacao.Busca(Pergunta()); }); });
    return pergunta;
}

QWidget *ConsultaAutuacao::FazResposta()
{
    auto *resposta = new QGroupBox("Resposta do registro de equipamentos", this);
    auto *linhas = new QFormLayout(resposta);
    for (const char *rotulo : {"Número interno:", "Modelo:", "Código:", "Velocidade permitida (Km/h):",
                               "Número INMETRO:", "Certificado:", "Data de verificação:"}) {
        auto *linha = new QLineEdit(this);
        DefineSomenteLeitura(*linha, true);
        linha->setObjectName(QString("resposta%1").arg(m_Respostas.size() + 1));
        linhas->addRow(rotulo, linha);
        m_Respostas.push_back(linha);
    }
    return resposta;
}

QWidget *ConsultaAutuacao::FazCertificado()
{
    m_CodOat = new QLineEdit(this);
    m_CodOat->setObjectName("codOat");
    m_CodOat->setValidator(new QIntValidator(1, 2147483647, m_CodOat));
    auto *documento = new QGroupBox("Certificado de aferição", this);
    auto *chaves = new QHBoxLayout(documento);
    auto *rotuloOat = new QLabel("Número da &aferição:", this);
    rotuloOat->setBuddy(m_CodOat);
    chaves->addWidget(rotuloOat);
    chaves->addWidget(m_CodOat, 1);
    auto *imprimir = new QPushButton("&Imprimir certificado", this);
    imprimir->setObjectName("imprimir");
    chaves->addWidget(imprimir);
    auto *dossie = new QPushButton("D&ossiê...", this);
    dossie->setObjectName("dossie");
    dossie->setToolTip("Grava num PDF o que o registro sabe do equipamento no dia da infração, com o certificado e a "
                       "prova");
    chaves->addWidget(dossie);
    connect(dossie, &QPushButton::clicked, this, [this] {
        Age([this] {
            if (const auto pedido = m_Autuacao.Dossie(Pergunta())) {
                m_FazDossie(*pedido);
            }
        });
    });
    connect(m_CodOat, &QLineEdit::textEdited, this,
            [this](const QString &texto) { m_Autuacao.DefineNroAfericao(S(texto)); });
    connect(imprimir, &QPushButton::clicked, this, [this] {
        if (m_CodOat->text().isEmpty()) {
            m_CodOat->setFocus();
        }
        Age([this] { m_Autuacao.Imprime(); });
    });
    return documento;
}

// What is shown is what is known now, before a fault of the action is told too.
void ConsultaAutuacao::Age(const std::function<void()> &acao)
{
    const QPointer<ConsultaAutuacao> viva(this); // who is at work may sign out behind a question
    m_Borda([&] {
        const auto mostra = qScopeGuard([&] {
            if (!viva.isNull()) {
                Mostra();
            }
        });
        acao();
    });
}

PerguntaDaAutuacao ConsultaAutuacao::Pergunta() const
{
    PerguntaDaAutuacao pergunta{S(m_Codigo->text()), S(m_Tipo->currentData().toString()), {}};
    if (m_ComData->isChecked()) {
        const QDate dia = m_Data->date();
        pergunta.DataDaInfracao = DataDe(dia.day(), dia.month(), dia.year());
    }
    return pergunta;
}

void ConsultaAutuacao::MudaPergunta()
{
    m_Autuacao.MudaPergunta();
    Mostra();
}

void ConsultaAutuacao::Mostra()
{
    m_Resultado->setText(Q(m_Autuacao.Frase()));
    for (std::size_t resposta = 0; resposta < m_Respostas.size(); ++resposta) {
        m_Respostas[resposta]->setText(Q(m_Autuacao.Respostas()[resposta]));
    }
    m_CodOat->setText(Q(m_Autuacao.NroAfericao()));
}

} // namespace mesa
