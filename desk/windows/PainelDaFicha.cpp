#include "desk/windows/PainelDaFicha.h"

#include "controls/OrdemPortuguesa.h"
#include "desk/windows/CampoDeSenha.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Dica.h"
#include "desk/windows/Renderizador.h"
#include "services/TextoQt.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QFormLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>
#include <limits>

namespace mesa {

namespace {

constexpr int PapelDobrado = Qt::UserRole + 1; // the text as it is sought
constexpr int AlturaDeLinhas = 6;
constexpr int LarguraDoCampo = 320;

// Finds an item by any piece of its text, accents and case ignored.
class Completador : public QCompleter {
  public:
    explicit Completador(QComboBox *combo) : QCompleter(combo->model(), combo)
    {
        setCompletionRole(PapelDobrado);
        setFilterMode(Qt::MatchContains);
    }
    QStringList splitPath(const QString &digitado) const override { return {Q(SemAcentoNemCaixa(S(digitado)))}; }
    QString pathFromIndex(const QModelIndex &indice) const override { return indice.data(Qt::DisplayRole).toString(); }
};

void PoeOpcoes(QComboBox &combo, const CampoDaFicha &campo)
{
    combo.clear();
    for (const OpcaoDoCampo &opcao : campo.Opcoes) {
        combo.addItem(Q(opcao.Texto), Q(opcao.Valor));
    }
    if (campo.Especie == EspecieDoCampo::Procura) {
        for (int item = 0; item < combo.count(); ++item) {
            combo.setItemData(item, Q(SemAcentoNemCaixa(S(combo.itemText(item)))), PapelDobrado);
        }
    }
    combo.setCurrentIndex(combo.findData(Q(campo.Valor)));
}

// Why a key was not taken.
QString DicaDaRecusa(const QLineEdit &texto)
{
    const bool cheio = texto.text().size() >= texto.maxLength();
    const auto *numeros = qobject_cast<const QIntValidator *>(texto.validator());
    return numeros == nullptr || cheio ? QString("Até %1 caracteres.").arg(texto.maxLength())
                                       : QString("Só algarismos, até %1.").arg(numeros->top());
}

// What of a combo is chosen: what was typed counts when it is the text of an item, accents and case ignored.
QString Escolhido(const QComboBox &combo)
{
    const int item = combo.isEditable() ? combo.findData(Q(SemAcentoNemCaixa(S(combo.currentText()))), PapelDobrado)
                                        : combo.currentIndex();
    return item < 0 ? QString() : combo.itemData(item).toString();
}

} // namespace

PainelDaFicha::PainelDaFicha(Ficha &ficha, QWidget *dono) : QWidget(dono), m_Ficha(ficha)
{
    auto *principal = new QFormLayout(this);
    principal->setContentsMargins(0, 0, 0, 0);
    principal->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    for (CampoDaFicha &campo : m_Ficha.Campos) {
        Posto posto = Faz(campo);
        posto.Campo = campo.Nome;
        posto.Widget->setObjectName(Q(campo.Nome));
        QFormLayout *lugar = Lugar(campo.Grupo, principal);
        if (campo.Especie == EspecieDoCampo::Marca) {
            lugar->addRow(posto.Widget);
        } else {
            lugar->addRow(Q(campo.Rotulo), posto.Widget);
        }
        if (auto *senha = dynamic_cast<CampoDeSenha *>(posto.Widget)) {
            lugar->addRow("", senha->AvisoDeMaiusculas());
        }
        m_Postos.push_back(std::move(posto));
    }
}

QFormLayout *PainelDaFicha::Lugar(const std::string &grupo, QFormLayout *principal)
{
    if (grupo.empty()) {
        return principal;
    }
    const auto achado = std::ranges::find(m_Grupos, grupo, &std::pair<std::string, QFormLayout *>::first);
    if (achado != m_Grupos.end()) {
        return achado->second;
    }
    auto *moldura = new QGroupBox(Q(grupo), this);
    auto *dentro = new QFormLayout(moldura);
    principal->addRow(moldura);
    m_Grupos.emplace_back(grupo, dentro);
    return dentro;
}

PainelDaFicha::Posto PainelDaFicha::Faz(CampoDaFicha &campo)
{
    switch (campo.Especie) {
    case EspecieDoCampo::Senha:
        return FazSenha(campo);
    case EspecieDoCampo::Escolha:
    case EspecieDoCampo::Procura:
        return FazEscolha(campo);
    case EspecieDoCampo::Marca:
        return FazMarca(campo);
    case EspecieDoCampo::Linhas:
        return FazLinhas(campo);
    case EspecieDoCampo::Texto:
    case EspecieDoCampo::Inteiro:
        break;
    }
    return FazTexto(campo);
}

PainelDaFicha::Posto PainelDaFicha::FazTexto(CampoDaFicha &campo)
{
    auto *texto = new QLineEdit(Q(campo.Valor), this);
    texto->setMinimumWidth(LarguraDoCampo);
    if (campo.Maximo > 0) {
        texto->setMaxLength(static_cast<int>(campo.Maximo));
    }
    if (campo.Especie == EspecieDoCampo::Inteiro) {
        texto->setValidator(new QIntValidator(0, std::numeric_limits<int>::max(), texto));
    }
    DefineSomenteLeitura(*texto, campo.Travado);
    texto->setCursorPosition(0);
    connect(texto, &QLineEdit::inputRejected, texto, [texto] { Dica::Mostra(*texto, DicaDaRecusa(*texto), true); });
    return {"", texto, [texto](CampoDaFicha &c) { c.Valor = S(texto->text()); },
            [texto](const CampoDaFicha &c) { texto->setText(Q(c.Valor)); }};
}

PainelDaFicha::Posto PainelDaFicha::FazSenha(CampoDaFicha &campo)
{
    auto *senha = new CampoDeSenha(Q(campo.Nome), this);
    senha->setMinimumWidth(LarguraDoCampo);
    return {"", senha, [](CampoDaFicha &) {}, [](const CampoDaFicha &) {}};
}

PainelDaFicha::Posto PainelDaFicha::FazEscolha(CampoDaFicha &campo)
{
    auto *combo = new Combo(this);
    combo->setMinimumWidth(LarguraDoCampo);
    if (campo.Especie == EspecieDoCampo::Procura) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setCompleter(new Completador(combo));
        connect(combo->lineEdit(), &QLineEdit::editingFinished, combo, [combo] {
            if (!combo->currentText().trimmed().isEmpty() && Escolhido(*combo).isEmpty()) {
                Dica::Mostra(*combo, "Nenhum item é \"" + combo->currentText() + "\".", true);
            }
        });
    }
    PoeOpcoes(*combo, campo);
    combo->setEnabled(!campo.Travado);
    connect(combo, &QComboBox::currentIndexChanged, this, [this, nome = campo.Nome] { Mudou(nome); });
    return {"", combo, [combo](CampoDaFicha &c) { c.Valor = S(Escolhido(*combo)); },
            [combo](const CampoDaFicha &c) { PoeOpcoes(*combo, c); }};
}

PainelDaFicha::Posto PainelDaFicha::FazMarca(CampoDaFicha &campo)
{
    auto *marca = new QCheckBox(Q(campo.Rotulo), this);
    marca->setChecked(campo.Valor == "1");
    marca->setEnabled(!campo.Travado);
    return {"", marca, [marca](CampoDaFicha &c) { c.Valor = marca->isChecked() ? "1" : "2"; },
            [marca](const CampoDaFicha &c) { marca->setChecked(c.Valor == "1"); }};
}

PainelDaFicha::Posto PainelDaFicha::FazLinhas(CampoDaFicha &campo)
{
    auto *linhas = new QPlainTextEdit(Q(campo.Valor), this);
    linhas->setTabChangesFocus(true);
    linhas->setMinimumWidth(LarguraDoCampo);
    linhas->setMinimumHeight(linhas->fontMetrics().lineSpacing() * AlturaDeLinhas);
    linhas->setReadOnly(campo.Travado);
    return {"", linhas, [linhas](CampoDaFicha &c) { c.Valor = S(linhas->toPlainText()); },
            [linhas](const CampoDaFicha &c) { linhas->setPlainText(Q(c.Valor)); }};
}

void PainelDaFicha::Mudou(const std::string &campo)
{
    if (m_Mostrando || !m_Ficha.Mudou) {
        return;
    }
    Recolhe();
    m_Ficha.Mudou(m_Ficha, campo);
    m_Mostrando = true;
    for (const Posto &posto : m_Postos) {
        if (posto.Campo != campo) {
            posto.Mostra(m_Ficha.Campo(posto.Campo));
        }
    }
    m_Mostrando = false;
}

void PainelDaFicha::Recolhe()
{
    for (const Posto &posto : m_Postos) {
        posto.Recolhe(m_Ficha.Campo(posto.Campo));
    }
}

void PainelDaFicha::RecolheSenhas()
{
    for (const Posto &posto : m_Postos) {
        if (auto *senha = dynamic_cast<CampoDeSenha *>(posto.Widget)) {
            senha->Esconde();
            m_Ficha.Campo(posto.Campo).Senha = senha->Senha();
        }
    }
}

void PainelDaFicha::LimpaSenhas()
{
    for (const Posto &posto : m_Postos) {
        if (auto *senha = dynamic_cast<CampoDeSenha *>(posto.Widget)) {
            senha->Limpa();
            m_Ficha.Campo(posto.Campo).Senha = {};
        }
    }
}

void PainelDaFicha::Foca(const std::string &campo)
{
    const auto posto = std::ranges::find(m_Postos, campo, &Posto::Campo);
    if (posto != m_Postos.end()) {
        posto->Widget->setFocus();
    }
}

} // namespace mesa
