#include "desk/windows/Quadro.h"

#include "controls/ControleBase.h"
#include "desk/host/Twips.h"
#include "desk/services/TextoQt.h"
#include "host/IztList.h"

#include <QCheckBox>
#include <QComboBox>
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

constexpr int CaracteresDoCombo = 18;      // of one that has no items yet
constexpr int CaracteresDoComboCheio = 45; // of one with items longer than that
constexpr int CaracteresDaData = 10;
constexpr int CaracteresSemLimite = 20; // of a field that takes any number
constexpr int CaracteresQueBastam = 20; // to which a longer field gives way
constexpr int CaracteresDoValor = 8;

// A line of text as wide as what it is to hold.
class CampoMedido : public QLineEdit {
  public:
    CampoMedido(int caracteres, QChar largo, QWidget *dono) : QLineEdit(dono), m_Caracteres(caracteres), m_Largo(largo)
    {
    }

    QSize sizeHint() const override { return Medida(m_Caracteres); }
    QSize minimumSizeHint() const override { return Medida(std::min(m_Caracteres, CaracteresQueBastam)); }

  private:
    QSize Medida(int caracteres) const
    {
        constexpr int Folga = 10; // around the text, with the cursor
        QStyleOptionFrame opcao;
        initStyleOption(&opcao);
        const QSize texto(caracteres * fontMetrics().horizontalAdvance(m_Largo) + Folga, fontMetrics().height());
        return {style()->sizeFromContents(QStyle::CT_LineEdit, &opcao, texto, this).width(),
                QLineEdit::sizeHint().height()};
    }

    int m_Caracteres;
    QChar m_Largo;
};

// A label at least as wide as so many characters.
class TextoMedido : public QLabel {
  public:
    TextoMedido(int caracteres, QWidget *dono) : QLabel(dono), m_Caracteres(caracteres) {}

    QSize sizeHint() const override { return QLabel::sizeHint().expandedTo({Largura(), 0}); }
    QSize minimumSizeHint() const override { return QLabel::minimumSizeHint().expandedTo({Largura(), 0}); }

  private:
    int Largura() const { return m_Caracteres * fontMetrics().horizontalAdvance('n'); }

    int m_Caracteres;
};

bool EhMola(const Peca &peca)
{
    return !peca.Especie() && peca.Elastica && peca.Pecas.empty();
}

bool TemFoco(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
}

QWidget *NovoTexto(const Peca &peca, QWidget *dono)
{
    const PapelLabel papel = std::get<AjustesLabel>(peca.Ajustes).Papel;
    const bool valor = papel == PapelLabel::Valor;
    auto *texto = new TextoMedido(peca.Caracteres == 0 && valor ? CaracteresDoValor : peca.Caracteres, dono);
    texto->setTextFormat(Qt::PlainText); // a file name or a person's text is no mark-up
    texto->setWordWrap(papel == PapelLabel::Paragrafo);
    if (valor) {
        texto->setFrameShape(QFrame::StyledPanel);
    }
    return texto;
}

QWidget *NovoCampo(const Peca &peca, std::int32_t limite, QChar largo, QWidget *dono)
{
    const int semPedido = limite > 0 ? limite : CaracteresSemLimite;
    auto *campo = new CampoMedido(peca.Caracteres > 0 ? peca.Caracteres : semPedido, largo, dono);
    campo->setSizePolicy(peca.Elastica ? QSizePolicy::Expanding : QSizePolicy::Preferred, QSizePolicy::Fixed);
    return campo;
}

QWidget *NovaMascara(const Peca &peca, QWidget *dono)
{
    const auto &ajustes = std::get<AjustesZtMask>(peca.Ajustes);
    const bool numeros = ajustes.Tipo == TipoMascara::Digitos || ajustes.Tipo == TipoMascara::Hora;
    return NovoCampo(peca, ajustes.MaxLength, numeros ? u'0' : u'N', dono);
}

QWidget *NovoCombo(const Peca &peca, QWidget *dono)
{
    auto *combo = new QComboBox(dono);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combo->setMinimumContentsLength(peca.Caracteres > 0 ? peca.Caracteres : CaracteresDoCombo);
    combo->setSizePolicy(peca.Elastica ? QSizePolicy::Expanding : QSizePolicy::Preferred, QSizePolicy::Fixed);
    combo->setMaximumWidth(peca.Elastica ? QWIDGETSIZE_MAX
                                         : CaracteresDoComboCheio * combo->fontMetrics().horizontalAdvance('n'));
    return combo;
}

QLabel *NovaImagem(const Peca &peca, QWidget *dono)
{
    auto *imagem = new QLabel(dono);
    imagem->setPixmap(QIcon(":/icones/" + Q(std::get<AjustesImage>(peca.Ajustes).Icone) + ".svg").pixmap(32, 32));
    imagem->setAlignment(Qt::AlignTop);
    return imagem;
}

// What has a width of its own stands at the left of the room that it is given; the rest fills it.
Qt::Alignment AlinhamentoDe(const Peca &peca, const QWidget *widget)
{
    const bool doTamanhoDele = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget) ||
                               qobject_cast<const QPushButton *>(widget);
    return doTamanhoDele && !peca.Elastica ? Qt::AlignLeft | Qt::AlignVCenter : Qt::Alignment();
}

struct RotuloDeLinha {
    QLabel *Label;
    int Recuo; // from the edge of the page
};

// The labels with which rows at the left edge begin. seguido: something stands behind the item in its row.
void JuntaRotulos(QLayoutItem &item, int recuo, bool seguido, std::vector<RotuloDeLinha> &rotulos)
{
    if (QLayout *leiaute = item.layout()) {
        recuo += leiaute->contentsMargins().left();
        auto *grade = qobject_cast<QGridLayout *>(leiaute);
        const bool linha = qobject_cast<QHBoxLayout *>(leiaute) != nullptr;
        for (int posicao = 0; posicao < leiaute->count(); ++posicao) {
            int colunaDaGrade = 0;
            int colunas = 1;
            int ignorada = 0;
            if (grade != nullptr) {
                grade->getItemPosition(posicao, &ignorada, &colunaDaGrade, &ignorada, &colunas);
            }
            if (colunaDaGrade == 0 && (!linha || posicao == 0)) {
                const bool temVizinho = (grade != nullptr && colunas == 1) || (linha && leiaute->count() > 1);
                JuntaRotulos(*leiaute->itemAt(posicao), recuo, temVizinho, rotulos);
            }
        }
        return;
    }
    QWidget *widget = item.widget();
    if (widget == nullptr) {
        return;
    }
    auto *label = qobject_cast<QLabel *>(widget);
    if (label != nullptr && seguido && !label->wordWrap() && label->frameShape() == QFrame::NoFrame &&
        label->pixmap().isNull()) {
        rotulos.push_back({label, recuo});
    } else if (widget->layout() != nullptr) {
        JuntaRotulos(*widget->layout(), recuo + widget->contentsMargins().left(), false, rotulos);
    }
}

} // namespace

QString NomeDoWidget(const std::string &nome, std::int16_t indice)
{
    return indice < 0 ? Q(nome) : Q(nome) + "_" + QString::number(indice);
}

Quadro::Quadro(const IForm &form, QWidget *janela) : QObject(janela), m_Janela(janela)
{
    for (const Ref<IControle> &controle : form.Controles()) {
        m_Controles.emplace(std::pair(controle->Nome(), controle->Indice()), controle);
    }
    janela->setLayout(FazArranjo(form.Desenho().Raiz, janela));
    janela->layout()->setSizeConstraint(QLayout::SetMinimumSize);
    m_Paginas.push_back(janela);
}

const Ref<IControle> &Quadro::ControleDe(const Peca &peca) const
{
    return m_Controles.at({peca.Nome, peca.Indice});
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
        m_Rotulos[ControleDe(peca).Ponteiro()] = parte.Rotulo;
        anterior = parte.Rotulo;
    }
    parte.Widget = FazWidget(peca, dono);
    if (parte.Widget == nullptr) {
        return parte;
    }
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
    return FazColuna(peca, dono);
}

QLayout *Quadro::FazColuna(const Peca &peca, QWidget *dono, bool enche)
{
    auto *coluna = new QVBoxLayout;
    for (const Peca &contida : peca.Pecas) {
        enche = enche || contida.Elastica;
        if (EhMola(contida)) {
            coluna->addStretch(1);
            continue;
        }
        const Parte parte = Faz(contida, dono, nullptr);
        if (parte.Rotulo != nullptr) {
            coluna->addWidget(parte.Rotulo);
        }
        if (parte.Widget != nullptr && parte.Widget->maximumHeight() > 0) {
            coluna->addWidget(parte.Widget, contida.Elastica ? 1 : 0, AlinhamentoDe(contida, parte.Widget));
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
    Fila fila{linha, {}, {}};
    QLabel *anterior = nullptr;
    std::size_t moveis = 0;
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
            if (contida.Left != 0 || contida.Width != 0) {
                lugar.Movel = ControleDe(contida);
                m_FilaDe[lugar.Movel.Ponteiro()] = m_Filas.size();
                ++moveis;
            }
        }
        for (int item = primeiro; item < linha->count(); ++item) {
            lugar.Itens.push_back(linha->itemAt(item));
        }
        fila.Lugares.push_back(std::move(lugar));
    }
    if (!enche) {
        linha->addStretch();
        fila.Lugares.push_back({{linha->itemAt(linha->count() - 1)}, 0, nullptr});
    }
    if (moveis > 0) {
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
                    grade->addWidget(parte.Widget, linha, coluna, 1, celula.Vao, AlinhamentoDe(celula, parte.Widget));
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
        return NovoCampo(peca, std::get<AjustesTextBox>(peca.Ajustes).MaxLength, u'n', dono);
    case EspecieControle::ztVeiObservacao:
        return NovoCampo(peca, std::get<AjustesZtVeiObservacao>(peca.Ajustes).MaxLength, u'n', dono);
    case EspecieControle::ztMask:
        return NovaMascara(peca, dono);
    case EspecieControle::ztData:
        return NovoCampo(peca, CaracteresDaData, u'0', dono);
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
    if (peca.Pecas.empty()) { // nothing to be seen: it takes no room either
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
        pagina->setLayout(FazColuna({.Pecas = {contida}}, pagina, true));
        abas->addTab(pagina, QString());
        m_Paginas.push_back(pagina);
    }
    return abas;
}

// The criteria bar has the search button beside the criteria.
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
        leiaute->addWidget(localizar, 0, Qt::AlignTop);
        m_Barras.push_back({ControleDe(peca), criterios});
    }
    return lista;
}

void Quadro::Segue()
{
    for (const auto &[nome, controle] : m_Controles) {
        Acompanha(controle);
        m_Conexoes.push_back(ComoBase(controle)->Mudou().liga([this, controle = controle] {
            Acompanha(controle);
            if (controle->Especie() == EspecieControle::Label || m_Rotulos.count(controle.Ponteiro()) > 0) {
                AlinhaRotulos();
            }
        }));
    }
    AlinhaRotulos();
}

void Quadro::Acompanha(const Ref<IControle> &controle)
{
    if (const auto achado = m_Rotulos.find(controle.Ponteiro()); achado != m_Rotulos.end()) {
        achado->second->setText(Q(controle->Rotulo()));
        achado->second->setVisible(controle->Visible());
        achado->second->setEnabled(controle->Enabled());
    }
    if (const auto achada = m_FilaDe.find(controle.Ponteiro()); achada != m_FilaDe.end()) {
        Ordena(m_Filas[achada->second]);
    }
    for (const Barra &barra : m_Barras) {
        if (controle == barra.Lista || controle->Container() == barra.Lista) {
            AjustaBarra(barra);
        }
    }
}

// The pieces that can be moved stand in the order of their Left, in the places that such pieces have in the row; as far
// from one another as they say, if they tell their width.
void Quadro::Ordena(Fila &fila)
{
    std::vector<const Lugar *> moveis;
    std::vector<std::int32_t> esquerdas;
    for (const Lugar &lugar : fila.Lugares) {
        if (lugar.Movel) {
            moveis.push_back(&lugar);
            esquerdas.push_back(lugar.Movel->Left());
        }
    }
    if (esquerdas == fila.Esquerdas) {
        return;
    }
    fila.Esquerdas = std::move(esquerdas);
    std::ranges::stable_sort(moveis, {}, [](const Lugar *lugar) { return lugar->Movel->Left(); });
    while (fila.Leiaute->count() > 0) {
        fila.Leiaute->takeAt(0);
    }
    if (moveis.size() > 1 && moveis.front()->Movel->Width() > 0) {
        const IControle &primeiro = *moveis.front()->Movel;
        fila.Leiaute->setSpacing(Pixels(moveis[1]->Movel->Left() - primeiro.Left() - primeiro.Width()));
    }
    auto movel = moveis.begin();
    for (const Lugar &vaga : fila.Lugares) {
        const Lugar &lugar = vaga.Movel ? **movel++ : vaga;
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

// The frame that is seen stands where its Left and Top are, in a bar of the list's height around it.
void Quadro::AjustaBarra(const Barra &barra) const
{
    const std::int32_t altura = dynamic_cast<const IztList &>(*barra.Lista).BarraCriteriosAltura();
    for (const auto &[nome, moldura] : m_Controles) {
        if (moldura->Container() == barra.Lista && moldura->Visible()) {
            barra.Criterios->setContentsMargins(Pixels(moldura->Left()), Pixels(moldura->Top()), 0,
                                                Pixels(altura - moldura->Top() - moldura->Height()));
        }
    }
}

void Quadro::AlinhaRotulos() const
{
    for (QWidget *pagina : m_Paginas) {
        std::vector<RotuloDeLinha> rotulos;
        JuntaRotulos(*pagina->layout(), 0, false, rotulos);
        int fim = 0;
        for (const RotuloDeLinha &rotulo : rotulos) {
            fim = std::max(fim, rotulo.Recuo + rotulo.Label->sizeHint().width());
        }
        for (const RotuloDeLinha &rotulo : rotulos) {
            rotulo.Label->setMinimumWidth(fim - rotulo.Recuo);
        }
    }
}

} // namespace mesa
