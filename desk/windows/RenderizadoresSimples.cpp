#include "desk/windows/RenderizadoresSimples.h"

#include "controls/Acionavel.h"
#include "controls/CheckBox.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/TextBox.h"
#include "controls/ztCombo.h"
#include "controls/ztData.h"
#include "controls/ztFrame.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "desk/host/Caminhos.h"
#include "desk/windows/Calendario.h"
#include "desk/windows/Combo.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Dica.h"
#include "host/Texto.h"
#include "tela/EdicaoDeTexto.h"
#include "tela/PaginasDeAbas.h"

#include <QCheckBox>
#include <QDate>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

namespace mesa {

namespace {

constexpr int FolgaDoQuadro = 8;

} // namespace

RenderTextoFixo::RenderTextoFixo(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda))
{
    if (auto *rotulo = qobject_cast<QLabel *>(widget); rotulo != nullptr && rotulo->frameShape() != QFrame::NoFrame) {
        rotulo->setMinimumHeight(rotulo->fontMetrics().height() + FolgaDoQuadro); // as high as a field
    }
}

void RenderTextoFixo::Mostra()
{
    if (auto *rotulo = qobject_cast<QLabel *>(Widget())) {
        rotulo->setText(Q(ComNomesDoSistema(Controle()->Caption())));
    }
}

void RenderMoldura::Mostra()
{
    if (auto *grupo = qobject_cast<QGroupBox *>(Widget())) {
        grupo->setTitle(Q(Controle()->Caption()).trimmed());
    }
    if (Como<ztFrame>(*this).ComoBotao()) {
        Widget()->setBackgroundRole(QPalette::Button);
        Widget()->setAutoFillBackground(true);
    }
}

RenderMarca::RenderMarca(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda))
{
    connect(qobject_cast<QCheckBox *>(widget), &QCheckBox::clicked, this,
            [this] { Age([this] { Como<CheckBox>(*this).Clica(); }); });
}

void RenderMarca::Mostra()
{
    auto *caixa = qobject_cast<QCheckBox *>(Widget());
    caixa->setText(Q(Controle()->Caption()));
    caixa->setChecked(Como<CheckBox>(*this).Value() == 1);
}

RenderOpcao::RenderOpcao(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda))
{
    auto *opcao = qobject_cast<QRadioButton *>(widget);
    opcao->setAutoExclusive(false); // the control excludes the others
    connect(opcao, &QRadioButton::clicked, this, [this] { Age([this] { Como<OptionButton>(*this).Clica(); }); });
}

void RenderOpcao::Mostra()
{
    auto *opcao = qobject_cast<QRadioButton *>(Widget());
    opcao->setText(Q(Controle()->Caption()));
    opcao->setChecked(Como<OptionButton>(*this).Value());
}

RenderBotao::RenderBotao(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda))
{
    auto *botao = qobject_cast<QPushButton *>(widget);
    botao->setAutoDefault(false);
    connect(botao, &QPushButton::clicked, this, [this] {
        const Ref<IControle> vivo = Controle(); // the click may close the window and end this object
        Age([vivo] { dynamic_cast<Clicavel &>(*vivo).Clica(); });
    });
}

void RenderBotao::Mostra()
{
    auto *botao = qobject_cast<QPushButton *>(Widget());
    botao->setText(Q(Controle()->Caption()));
    botao->setDefault(dynamic_cast<Acionavel &>(*Controle()).Padrao());
}

RenderAbas::RenderAbas(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda))
{
    auto *abas = qobject_cast<QTabWidget *>(widget);
    connect(abas, &QTabWidget::currentChanged, this, [this](int pagina) {
        Age([this, pagina] { AbrePagina(Como<SSTab>(*this), static_cast<std::int16_t>(pagina)); });
    });
    // The keyboard is in the strip alone: what has the pages as well would be another stop, and take them along when
    // the order of Tab changes.
    abas->setFocusProxy(nullptr);
    abas->setFocusPolicy(Qt::NoFocus);
    SegueFoco(abas->tabBar());
}

QWidget *RenderAbas::WidgetDe(Parte) const
{
    return qobject_cast<QTabWidget *>(Widget())->tabBar();
}

// The arrow keys lead along the strip and stay in it.
bool RenderAbas::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<const QKeyEvent *>(evento)->key();
        if (tecla == Qt::Key_Left || tecla == Qt::Key_Right) {
            Age([&] {
                auto &abas = Como<SSTab>(*this);
                if (const auto pagina = PaginaVizinha(abas, tecla == Qt::Key_Right ? 1 : -1)) {
                    abas.Abre(*pagina);
                }
            });
            return true;
        }
    }
    return Renderizador::eventFilter(objeto, evento);
}

void RenderAbas::Mostra()
{
    auto *abas = qobject_cast<QTabWidget *>(Widget());
    const auto &controle = Como<SSTab>(*this);
    for (std::int16_t pagina = 0; pagina < controle.Tabs() && pagina < abas->count(); ++pagina) {
        abas->setTabText(pagina, Q(controle.TabCaption(pagina)));
        abas->setTabEnabled(pagina, controle.TabEnabled(pagina));
        abas->setTabVisible(pagina, controle.TabVisible(pagina));
    }
    abas->setCurrentIndex(controle.Tab());
}

namespace {

template <class C> CampoDeTexto FazCampo(C &campo)
{
    return {[&campo] { return campo.Text(); }, [&campo] { return campo.SomenteLeitura(); },
            [&campo] { return campo.Cursor(); },
            [&campo](std::size_t posicao, std::size_t n, const std::string &texto) {
                return campo.Edita(posicao, n, texto);
            },
            [&campo] { return campo.Recusa(); }};
}

CampoDeTexto CampoDoControle(const Ref<IControle> &controle)
{
    switch (controle->Especie()) {
    case EspecieControle::ztMask:
        return FazCampo(dynamic_cast<ztMask &>(*controle));
    case EspecieControle::ztData:
        return FazCampo(dynamic_cast<ztData &>(*controle));
    case EspecieControle::ztVeiObservacao:
        return FazCampo(dynamic_cast<ztVeiObservacao &>(*controle));
    default:
        return FazCampo(dynamic_cast<TextBox &>(*controle));
    }
}

} // namespace

RenderCampo::RenderCampo(Ref<IControle> controle, QWidget *widget, Borda borda, const std::function<Data()> &agora)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Campo(CampoDoControle(Controle())),
      m_Linha(qobject_cast<QLineEdit *>(widget))
{
    connect(m_Linha, &QLineEdit::textEdited, this, [this](const QString &novo) { TextoEditado(novo); });
    if (Controle()->Especie() == EspecieControle::ztData) {
        PoeCalendario(agora);
    }
}

// The day that was taken there is typed in the place of what the field has.
void RenderCampo::PoeCalendario(const std::function<Data()> &agora)
{
    constexpr const char *Formato = "dd/MM/yyyy";
    new BotaoDeCalendario(
        m_Linha,
        [this, agora] {
            const QDate escrito = QDate::fromString(m_Linha->text(), Formato);
            const PartesData hoje = agora().Partes();
            return escrito.isValid() ? escrito : QDate(hoje.Ano, hoje.Mes, hoje.Dia);
        },
        [this](const QDate &dia) { Edita(0, Len(m_Campo.Texto()), S(dia.toString(Formato))); });
}

// The line says only what it has become.
void RenderCampo::TextoEditado(const QString &novo)
{
    const auto cursor = novo.left(m_Linha->cursorPosition()).toUcs4().size(); // the line counts units of UTF-16
    const EdicaoDeTexto edicao = AchaEdicao(m_Campo.Texto(), S(novo), static_cast<std::size_t>(cursor));
    Edita(edicao.Posicao, edicao.Retirados, edicao.Inserido);
}

void RenderCampo::Edita(std::size_t posicao, std::size_t n, const std::string &texto)
{
    const QPointer<RenderCampo> vivo = this;
    Age([&] { m_Campo.Edita(posicao, n, texto); });
    if (!vivo.isNull() && !m_Campo.Recusa().empty()) {
        Dica::Mostra(*m_Linha, Q(m_Campo.Recusa()), true);
    }
}

void RenderCampo::Mostra()
{
    const QString texto = Q(m_Campo.Texto());
    if (m_Linha->text() != texto) {
        m_Linha->setText(texto);
        // The cursor counts characters; the line counts units of UTF-16.
        const QList<uint> letras = texto.toUcs4().mid(0, static_cast<qsizetype>(m_Campo.Cursor()));
        const auto *inicio = reinterpret_cast<const char32_t *>(letras.constData());
        m_Linha->setCursorPosition(static_cast<int>(QString::fromUcs4(inicio, letras.size()).size()));
    }
    DefineSomenteLeitura(*m_Linha, m_Campo.SomenteLeitura());
}

RenderCombo::RenderCombo(Ref<IControle> controle, QWidget *widget, Borda borda)
    : Renderizador(std::move(controle), widget, std::move(borda)),
      m_Combo(dynamic_cast<Combo *>(widget))
{
    m_Combo->setMaxVisibleItems(18);
    m_Combo->PesquisaEm(Como<ztCombo>(*this).Pesquisa(), [this](const std::function<void()> &ato) {
        const Ref<IControle> vivo = Controle(); // an event may end the window
        Age(ato);
    });
    connect(m_Combo, &QComboBox::activated, this,
            [this](int indice) { Age([this, indice] { Como<ztCombo>(*this).Escolhe(indice); }); });
}

void RenderCombo::Mostra()
{
    const auto &controle = Como<ztCombo>(*this);
    const auto &itens = controle.Itens();
    bool iguais = m_Combo->count() == static_cast<int>(itens.size());
    for (std::size_t indice = 0; iguais && indice < itens.size(); ++indice) {
        iguais = m_Combo->itemText(static_cast<int>(indice)) == Q(itens[indice].Texto);
    }
    if (!iguais) {
        m_Combo->clear();
        for (const auto &item : itens) {
            m_Combo->addItem(Q(item.Texto));
        }
    }
    m_Combo->setCurrentIndex(controle.IndiceAtual());
    m_Combo->DefineSomenteLeitura(controle.ComboSomenteLeitura());
}

} // namespace mesa
