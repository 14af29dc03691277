#include "desk/windows/ConsultaAutuacao.h"

#include "desk/windows/Calendario.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Renderizador.h"
#include "host/Conversoes.h"
#include "shell/ModGeral.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace mesa {

ConsultaAutuacao::ConsultaAutuacao(Ref<CVorEquip> equipamentos,
                                   std::function<void(const std::function<void()> &)> borda, QWidget *dono)
    : QWidget(dono),
      m_Equipamentos(std::move(equipamentos)),
      m_Borda(std::move(borda)),
      m_ComData(new QCheckBox("Com a &data da infração:", this)),
      m_Data(new CampoDeDia(QDate::currentDate(), this)),
      m_Codigo(new QLineEdit(this)),
      m_Tipo(new Combo(this)),
      m_Resultado(new QLabel(this)),
      m_CodOat(new QLineEdit(this))
{
    setObjectName("ConsultaAutuacao");
    setWindowTitle("Consulta para autuação");
    setWindowIcon(QIcon(":/icones/consulta.svg"));
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
    m_Resultado->setObjectName("resultado");
    m_Resultado->setWordWrap(true);
    m_CodOat->setObjectName("codOat");
    m_CodOat->setValidator(new QIntValidator(1, 2147483647, m_CodOat));

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

    auto *documento = new QGroupBox("Certificado de aferição", this);
    auto *chaves = new QHBoxLayout(documento);
    auto *rotuloOat = new QLabel("Número da &aferição:", this);
    rotuloOat->setBuddy(m_CodOat);
    chaves->addWidget(rotuloOat);
    chaves->addWidget(m_CodOat, 1);
    auto *imprimir = new QPushButton("&Imprimir certificado", this);
    imprimir->setObjectName("imprimir");
    chaves->addWidget(imprimir);

    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(pergunta);
    tudo->addWidget(m_Resultado);
    tudo->addWidget(resposta);
    tudo->addWidget(documento);
    tudo->addStretch(1);

    connect(m_ComData, &QCheckBox::toggled, m_Data, &QWidget::setEnabled);
    connect(selecionar, &QPushButton::clicked, this, [this] { m_Borda([this] { Seleciona(); }); });
    connect(buscar, &QPushButton::clicked, this, [this] { m_Borda([this] { Busca(); }); });
    connect(imprimir, &QPushButton::clicked, this, [this] { m_Borda([this] { Imprime(); }); });
}

Data ConsultaAutuacao::DataDaInfracao() const
{
    if (!m_ComData->isChecked()) {
        return {};
    }
    const QDate dia = m_Data->date();
    return DataDe(dia.day(), dia.month(), dia.year());
}

std::string ConsultaAutuacao::Tipo() const
{
    return S(m_Tipo->currentData().toString());
}

void ConsultaAutuacao::Seleciona()
{
    const bool achou = m_Equipamentos->SelecionaEquipamento(S(m_Codigo->text()), Tipo(), DataDaInfracao());
    MostraRespostas(achou ? "Equipamento selecionado." : "Nenhum equipamento foi selecionado.");
}

void ConsultaAutuacao::Busca()
{
    const bool achou = m_Equipamentos->BuscaEquipamento(S(m_Codigo->text()), Tipo(), DataDaInfracao());
    MostraRespostas(achou ? "Equipamento encontrado."
                          : "Equipamento não encontrado; as respostas anteriores permanecem.");
}

void ConsultaAutuacao::Imprime()
{
    if (m_CodOat->text().isEmpty()) {
        m_Resultado->setText("Informe o número da aferição.");
        m_CodOat->setFocus();
        return;
    }
    m_Equipamentos->LimpaArqTemp(); // a file that is there already would keep what it has behind the new one
    bool mostrou = false;
    const auto limpa = qScopeGuard([&] {
        if (!mostrou) {
            IgnoraErro([&] { m_Equipamentos->LimpaArqTemp(); });
        }
    });
    mostrou = m_Equipamentos->ImpCertificadoAfericaoEquipto(CLng(S(m_CodOat->text())), m_Equipamentos->Codigo(),
                                                            "Consulta para autuação");
    m_Resultado->setText(mostrou ? "Certificado aberto." : "O certificado não foi aberto.");
}

void ConsultaAutuacao::MostraRespostas(const QString &resultado)
{
    m_Resultado->setText(resultado);
    const std::vector<std::string> valores = {CStr(m_Equipamentos->NroIntEquip()),
                                              m_Equipamentos->Modelo(),
                                              m_Equipamentos->Codigo(),
                                              CStr(m_Equipamentos->VelocPerm()),
                                              m_Equipamentos->NroInmetro(),
                                              m_Equipamentos->MarcaInmetro(),
                                              m_Equipamentos->DtVerifInmetro().Vazia()
                                                  ? std::string()
                                                  : Format(m_Equipamentos->DtVerifInmetro(), "dd/mm/yyyy")};
    for (std::size_t resposta = 0; resposta < m_Respostas.size(); ++resposta) {
        m_Respostas[resposta]->setText(Q(valores[resposta]));
    }
}

} // namespace mesa
