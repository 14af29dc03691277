#include "desk/windows/Quadro.h"

#include "desk/windows/Icones.h"

#include "controls/ControleBase.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Rolagem.h"
#include "services/TextoQt.h"
#include "tela/Partes.h"
#include "tela/Twips.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionFrame>
#include <QTabWidget>

#include <algorithm>

namespace mesa {

namespace {

// A line of text as wide as what it is to hold.
class CampoMedido : public QLineEdit {
  public:
    CampoMedido(const LarguraEmLetras &largura, QWidget *dono) : QLineEdit(dono), m_Largura(largura) {}

    QSize sizeHint() const override { return Medida(m_Largura.Natural); }
    QSize minimumSizeHint() const override { return Medida(m_Largura.Menor); }

  private:
    QSize Medida(int letras) const
    {
        constexpr int Folga = 10; // around the text, with the cursor
        QStyleOptionFrame opcao;
        initStyleOption(&opcao);
        const QMargins margens = textMargins(); // with what stands beside the text
        const QSize texto(letras * fontMetrics().horizontalAdvance(m_Largura.Letra) + Folga + margens.left() +
                              margens.right(),
                          fontMetrics().height());
        return {style()->sizeFromContents(QStyle::CT_LineEdit, &opcao, texto, this).width(),
                QLineEdit::sizeHint().height()};
    }

    LarguraEmLetras m_Largura;
};

// A label at least as wide as what it is to hold.
class TextoMedido : public QLabel {
  public:
    TextoMedido(const LarguraEmLetras &largura, QWidget *dono) : QLabel(dono), m_Largura(largura) {}

    QSize sizeHint() const override { return QLabel::sizeHint().expandedTo({Largura(), 0}); }
    QSize minimumSizeHint() const override { return QLabel::minimumSizeHint().expandedTo({Largura(), 0}); }

  private:
    int Largura() const { return m_Largura.Natural * fontMetrics().horizontalAdvance(m_Largura.Letra); }

    LarguraEmLetras m_Largura;
};

bool TemFoco(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
}

QWidget *NovoTexto(const Peca &peca, QWidget *dono)
{
    const PapelLabel papel = std::get<AjustesLabel>(peca.Ajustes).Papel;
    auto *texto = new TextoMedido(LarguraDe(peca), dono);
    texto->setTextFormat(Qt::PlainText); // a file name or a person's text is no mark-up
    texto->setWordWrap(papel == PapelLabel::Paragrafo);
    if (papel == PapelLabel::Valor) {
        texto->setFrameShape(QFrame::StyledPanel);
    }
    return texto;
}

QWidget *NovoCampo(const Peca &peca, QWidget *dono)
{
    auto *campo = new CampoMedido(LarguraDe(peca), dono);
    campo->setSizePolicy(peca.Elastica ? QSizePolicy::Expanding : QSizePolicy::Preferred, QSizePolicy::Fixed);
    return campo;
}

QWidget *NovoCombo(const Peca &peca, QWidget *dono)
{
    const LarguraEmLetras largura = LarguraDe(peca);
    auto *combo = new Combo(dono);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combo->setMinimumContentsLength(largura.Natural);
    combo->setSizePolicy(peca.Elastica ? QSizePolicy::Expanding : QSizePolicy::Preferred, QSizePolicy::Fixed);
    if (largura.Maior > 0) {
        combo->setMaximumWidth(largura.Maior * combo->fontMetrics().horizontalAdvance(largura.Letra));
    }
    return combo;
}

QLabel *NovaImagem(const Peca &peca, QWidget *dono)
{
    auto *imagem = new QLabel(dono);
    PoeIcone(*imagem, Q(std::get<AjustesImage>(peca.Ajustes).Icone), LadoDaImagem);
    imagem->setAlignment(Qt::AlignTop);
    return imagem;
}

Qt::Alignment AlinhamentoDe(const Peca &peca)
{
    return Enche(peca) ? Qt::Alignment() : Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

QString NomeDoWidget(const std::string &nome, std::int16_t indice)
{
    return indice < 0 ? Q(nome) : Q(nome) + "_" + QString::number(indice);
}

Quadro::Quadro(const IForm &form, QWidget *janela) : QObject(janela), m_Desenho(form.Desenho()), m_Controles(form)
{
    FazJanela(janela);
}

void Quadro::FazJanela(QWidget *janela)
{
    const std::span<const Peca> todas = m_Desenho.Raiz.Pecas;
    const auto comandos = std::ranges::find_if(todas, [](const Peca &peca) { return ::EhDeComandos(peca); });
    auto *conteudo = new QWidget(janela);
    conteudo->setObjectName("conteudo");
    QLayout *arranjo = FazColuna({todas.begin(), comandos}, conteudo);
    conteudo->setLayout(arranjo);
    const QMargins margens = arranjo->contentsMargins();
    auto *tudo = new QVBoxLayout(janela);
    tudo->setContentsMargins(0, 0, 0, 0);
    tudo->addWidget(new Rolagem(conteudo, janela), 1);
    if (comandos != todas.end()) {
        arranjo->setContentsMargins(margens.left(), margens.top(), margens.right(), 0);
        QLayout *linha = FazArranjo(*comandos, janela);
        linha->setContentsMargins(margens.left(), 0, margens.right(), margens.bottom());
        tudo->addLayout(linha);
    }
}

// anterior: the label before it in its row, which leads to it.
Quadro::Parte Quadro::Faz(const Peca &peca, QWidget *dono, QLabel *anterior)
{
    Parte parte;
    if (!peca.Especie()) {
        parte.Arranjo = FazArranjo(peca, dono);
        return parte;
    }
    if (!peca.Rotulo.empty()) {
        parte.Rotulo = new QLabel(dono);
        parte.Rotulo->setObjectName("rot_" + NomeDoWidget(peca.Nome, peca.Indice));
        parte.Rotulo->setTextFormat(Qt::PlainText);
        m_Rotulos[&peca] = parte.Rotulo;
        anterior = parte.Rotulo;
    }
    parte.Widget = FazWidget(peca, dono);
    if (parte.Widget == nullptr) {
        return parte;
    }
    m_Widgets[&peca] = parte.Widget;
    parte.Widget->setObjectName(NomeDoWidget(peca.Nome, peca.Indice));
    parte.Widget->setAccessibleName(Q(peca.NomeAcessivel));
    if (anterior != nullptr && TemFoco(*parte.Widget)) {
        anterior->setBuddy(parte.Widget);
    }
    return parte;
}

QLayout *Quadro::FazArranjo(const Peca &peca, QWidget *dono)
{
    switch (peca.Disposicao) {
    case Arranjo::Linha:
        return FazLinha(peca, dono);
    case Arranjo::Grade:
        return FazGrade(peca, dono);
    case Arranjo::Coluna:
        break;
    }
    return FazColuna(peca.Pecas, dono);
}

QLayout *Quadro::FazColuna(std::span<const Peca> pecas, QWidget *dono)
{
    auto *coluna = new QVBoxLayout;
    bool enche = false;
    for (const Peca &contida : pecas) {
        enche = enche || contida.Elastica;
        if (EhMola(contida)) {
            coluna->addStretch(1);
            continue;
        }
        const Parte parte = Faz(contida, dono, nullptr);
        if (parte.Rotulo != nullptr) {
            coluna->addWidget(parte.Rotulo);
        }
        if (parte.Widget != nullptr && TomaLugar(contida)) {
            coluna->addWidget(parte.Widget, contida.Elastica ? 1 : 0, AlinhamentoDe(contida));
        } else if (parte.Arranjo != nullptr) {
            coluna->addLayout(parte.Arranjo, contida.Elastica ? 1 : 0);
        }
    }
    if (!enche) {
        coluna->addStretch();
    }
    return coluna;
}

QLayout *Quadro::FazLinha(const Peca &peca, QWidget *dono)
{
    auto *linha = new QHBoxLayout;
    Fila fila{linha, &peca, {}, {}};
    QLabel *anterior = nullptr;
    bool enche = false;
    for (const Peca &contida : peca.Pecas) {
        enche = enche || contida.Elastica;
        Lugar lugar;
        lugar.Elasticidade = contida.Elastica ? 1 : 0;
        const int primeiro = linha->count();
        if (EhMola(contida)) {
            linha->addStretch(1);
        } else {
            const Parte parte = Faz(contida, dono, anterior);
            if (parte.Rotulo != nullptr) {
                linha->addWidget(parte.Rotulo);
            }
            if (parte.Widget != nullptr) {
                linha->addWidget(parte.Widget, lugar.Elasticidade);
            } else if (parte.Arranjo != nullptr) {
                linha->addLayout(parte.Arranjo, lugar.Elasticidade);
            }
            anterior = qobject_cast<QLabel *>(parte.Widget);
        }
        for (int item = primeiro; item < linha->count(); ++item) {
            lugar.Itens.push_back(linha->itemAt(item));
        }
        fila.Lugares.push_back(std::move(lugar));
    }
    if (!enche) {
        linha->addStretch();
        fila.Lugares.push_back({{linha->itemAt(linha->count() - 1)}, 0});
    }
    if (std::ranges::any_of(peca.Pecas, EhMovel)) {
        m_Filas.push_back(std::move(fila));
    }
    return linha;
}

QLayout *Quadro::FazGrade(const Peca &peca, QWidget *dono)
{
    auto *grade = new QGridLayout;
    int linha = 0;
    int colunas = 0;
    bool enche = false;
    for (const Peca &contida : peca.Pecas) {
        int coluna = 0;
        QLabel *anterior = nullptr;
        for (const Peca &celula : contida.Pecas) {
            if (!EhMola(celula)) {
                const Parte parte = Faz(celula, dono, anterior);
                if (parte.Rotulo != nullptr) {
                    grade->addWidget(parte.Rotulo, linha, coluna++);
                }
                if (parte.Widget != nullptr) {
                    grade->addWidget(parte.Widget, linha, coluna, 1, celula.Vao, AlinhamentoDe(celula));
                } else if (parte.Arranjo != nullptr) {
                    grade->addLayout(parte.Arranjo, linha, coluna, 1, celula.Vao);
                }
                anterior = qobject_cast<QLabel *>(parte.Widget);
            }
            coluna += celula.Vao;
            if (celula.Elastica) {
                grade->setColumnStretch(coluna - 1, 1);
                enche = true;
            }
        }
        colunas = std::max(colunas, coluna);
        ++linha;
    }
    if (!enche) {
        grade->setColumnStretch(colunas, 1);
    }
    return grade;
}

// Null for what has no picture, or none that could be seen.
QWidget *Quadro::FazWidget(const Peca &peca, QWidget *dono)
{
    switch (*peca.Especie()) {
    case EspecieControle::Label:
        return NovoTexto(peca, dono);
    case EspecieControle::TextBox:
    case EspecieControle::ztVeiObservacao:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
        return NovoCampo(peca, dono);
    case EspecieControle::ztCombo:
        return NovoCombo(peca, dono);
    case EspecieControle::CheckBox:
        return new QCheckBox(dono);
    case EspecieControle::OptionButton:
        return new QRadioButton(dono);
    case EspecieControle::CommandButton:
    case EspecieControle::ztCommand:
        return new QPushButton(dono);
    case EspecieControle::Image:
        return NovaImagem(peca, dono);
    case EspecieControle::ztFrame:
        return FazMoldura(peca, dono);
    case EspecieControle::SSTab:
        return FazAbas(peca, dono);
    case EspecieControle::ztList:
        return FazLista(peca, dono);
    case EspecieControle::ztEndereco:
    case EspecieControle::ztClienteSetor:
        return new QWidget(dono);
    case EspecieControle::CommonDialog:
        break;
    }
    return nullptr;
}

QWidget *Quadro::FazMoldura(const Peca &peca, QWidget *dono)
{
    if (std::get<AjustesZtFrame>(peca.Ajustes).Contorno) {
        auto *grupo = new QGroupBox(dono);
        grupo->setLayout(FazArranjo(peca, grupo));
        return grupo;
    }
    if (!TomaLugar(peca)) {
        auto *vazia = new QWidget(dono);
        vazia->setFixedSize(0, 0);
        return vazia;
    }
    // One that cannot be seen leaves what is in it in line with what is around it.
    auto *moldura = new QWidget(dono);
    moldura->setLayout(FazArranjo(peca, moldura));
    moldura->layout()->setContentsMargins(0, 0, 0, 0);
    return moldura;
}

QWidget *Quadro::FazAbas(const Peca &peca, QWidget *dono)
{
    auto *abas = new QTabWidget(dono);
    for (const Peca &contida : peca.Pecas) {
        auto *pagina = new QWidget(abas);
        pagina->setObjectName(NomeDoWidget(peca.Nome, peca.Indice) + "_pagina" + QString::number(abas->count()));
        auto *coluna = new QVBoxLayout(pagina);
        if (const Parte parte = Faz(contida, pagina, nullptr); parte.Widget != nullptr) {
            coluna->addWidget(parte.Widget);
        } else {
            coluna->addLayout(parte.Arranjo);
        }
        abas->addTab(pagina, QString());
    }
    return abas;
}

// The criteria bar has beside the criteria the button that searches by them, and the one that empties them.
QWidget *Quadro::FazLista(const Peca &peca, QWidget *dono)
{
    auto *lista = new QWidget(dono);
    if (!peca.Pecas.empty()) {
        const QString nome = NomeDoWidget(peca.Nome, peca.Indice);
        auto *barra = new QWidget(lista);
        barra->setObjectName(nome + "_criterios");
        auto *localizar = new QPushButton(barra);
        localizar->setObjectName(nome + "_localizar");
        auto *leiaute = new QHBoxLayout(barra);
        leiaute->setContentsMargins(0, 0, 0, 0);
        QLayout *criterios = FazArranjo(peca, barra);
        leiaute->addLayout(criterios, 1);
        auto *limpar = new QPushButton(Q(std::string(Partes::LimparCriterios)), barra);
        limpar->setObjectName(nome + "_limpar");
        auto *comandos = new QVBoxLayout;
        comandos->addWidget(localizar);
        comandos->addWidget(limpar);
        comandos->addStretch(1);
        leiaute->addLayout(comandos);
        m_Barras.push_back({&peca, criterios});
    }
    return lista;
}

void Quadro::Segue()
{
    for (const auto &[peca, widget] : m_Widgets) {
        Acompanha(*peca);
        const Ref<IControle> &controle = m_Controles.De(*peca);
        m_Conexoes.push_back(ComoBase(controle)->Mudou().liga([this, peca = peca] {
            Acompanha(*peca);
            if (peca->Especie() == EspecieControle::Label || m_Rotulos.contains(peca)) {
                AlinhaRotulos();
            }
        }));
    }
    AlinhaRotulos();
}

void Quadro::Acompanha(const Peca &peca)
{
    if (const auto achado = m_Rotulos.find(&peca); achado != m_Rotulos.end()) {
        const Ref<IControle> &controle = m_Controles.De(peca);
        achado->second->setText(Q(controle->Rotulo()));
        achado->second->setVisible(controle->Visible());
        achado->second->setEnabled(controle->Enabled());
    }
    for (Fila &fila : m_Filas) {
        Ordena(fila);
    }
    for (const Barra &barra : m_Barras) {
        const BarraDeCriterios lugar = BarraDe(*barra.Lista, m_Controles);
        barra.Criterios->setContentsMargins(Pixels(lugar.Esquerda), Pixels(lugar.Acima), 0, Pixels(lugar.Abaixo));
    }
}

void Quadro::Ordena(Fila &fila) const
{
    OrdemDaLinha ordem = OrdenaLinha(*fila.Linha, m_Controles);
    if (ordem == fila.Ordem) {
        return;
    }
    fila.Ordem = std::move(ordem);
    while (fila.Leiaute->count() > 0) {
        fila.Leiaute->takeAt(0);
    }
    constexpr int DoEstilo = -1;
    fila.Leiaute->setSpacing(fila.Ordem.Distancia ? Pixels(*fila.Ordem.Distancia) : DoEstilo);
    for (std::size_t n = 0; n < fila.Lugares.size(); ++n) {
        const bool descrito = n < fila.Ordem.Pecas.size(); // behind those may be the room that is left
        const Lugar &lugar = fila.Lugares[descrito ? fila.Ordem.Pecas[n] : n];
        for (QLayoutItem *item : lugar.Itens) {
            if (item->layout() != nullptr) {
                fila.Leiaute->addLayout(item->layout());
            } else {
                fila.Leiaute->addItem(item);
            }
        }
        fila.Leiaute->setStretch(fila.Leiaute->count() - 1, lugar.Elasticidade);
    }
}

// How far inside it, from the left, what a piece holds begins.
int Quadro::RecuoDe(const Peca &peca) const
{
    if (!peca.Especie()) {
        return 0;
    }
    if (peca.Especie() == EspecieControle::ztList) {
        return Pixels(BarraDe(peca, m_Controles).Esquerda);
    }
    const QWidget *widget = m_Widgets.at(&peca);
    return widget->contentsMargins().left() + widget->layout()->contentsMargins().left();
}

// The labels that a piece has before it, is itself, or makes by itself.
std::vector<QLabel *> Quadro::RotulosDe(const Peca &peca) const
{
    if (const auto achado = m_Rotulos.find(&peca); achado != m_Rotulos.end()) {
        return {achado->second};
    }
    QWidget *widget = m_Widgets.at(&peca);
    if (auto *label = qobject_cast<QLabel *>(widget)) {
        return {label};
    }
    std::vector<QLabel *> proprios;
    for (QLabel *label : widget->findChildren<QLabel *>()) {
        const auto captions = RotulosDasPartes(*peca.Especie());
        if (std::ranges::find(captions, S(label->text())) != captions.end()) {
            proprios.push_back(label);
        }
    }
    return proprios;
}

void Quadro::AlinhaRotulos() const
{
    const MedidasDaPagina medidas = {
        [this](const Peca &peca) { return RecuoDe(peca); },
        [this](const Peca &peca) {
            int maior = 0;
            for (const QLabel *rotulo : RotulosDe(peca)) {
                maior = std::max(maior, rotulo->sizeHint().width());
            }
            return maior;
        },
    };
    for (const Peca *pagina : PaginasDe(m_Desenho.Raiz)) {
        for (const auto &[peca, largura] : ::AlinhaRotulos(*pagina, m_Controles, medidas)) {
            for (QLabel *rotulo : RotulosDe(*peca)) {
                rotulo->setMinimumWidth(largura);
            }
        }
    }
}

} // namespace mesa
