#include "desk/windows/JanelaForm.h"

#include "desk/services/SessaoServico.h"
#include "desk/windows/Quadro.h"
#include "desk/windows/RenderLista.h"
#include "desk/windows/RenderizadoresEscolha.h"
#include "desk/windows/RenderizadoresSimples.h"
#include "desk/windows/Twips.h"
#include "tela/OrdemDeTab.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>

#include <algorithm>

JanelaForm::JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor, QWidget *dono)
    : QWidget(dono),
      m_Form(std::move(form)),
      m_AoRedor(std::move(aoRedor)),
      m_Pessoa(m_Form)
{
    setObjectName(QString::fromUtf8(m_Form->NomeTipo().data(), static_cast<qsizetype>(m_Form->NomeTipo().size())));
    m_Quadro = new Quadro(*m_Form, this);
    LigaControles();
    m_Quadro->Segue();
    m_Conexoes.push_back(m_Form->Mudou().liga([this] { MostraForm(); }));
    m_Conexoes.push_back(m_Form->PediuFoco().liga([this] {
        activateWindow();
        raise();
    }));
    m_Conexoes.push_back(m_Form->PediuOrdem().liga([this](std::int16_t) { raise(); }));
    MostraForm();
    Dimensiona();
}

// As large as what is in it needs, and not smaller than the form was made.
void JanelaForm::Dimensiona()
{
    // The layouts of a window not yet seen know nothing of what has become of the widgets: from the inside out.
    const QList<QWidget *> widgets = findChildren<QWidget *>();
    for (auto widget = widgets.crbegin(); widget != widgets.crend(); ++widget) {
        if (QLayout *leiaute = (*widget)->layout()) {
            leiaute->invalidate();
            leiaute->activate();
        }
    }
    resize(sizeHint().expandedTo({Pixels(m_Form->Width()), Pixels(m_Form->Height())}));
}

void JanelaForm::LigaControles()
{
    for (const Ref<IControle> &controle : m_Form->Controles()) {
        auto *widget = findChild<QWidget *>(NomeDoWidget(controle->Nome(), controle->Indice()));
        if (widget == nullptr) {
            continue; // a control without a picture, such as a file dialog
        }
        m_Renderizadores.push_back(FazRenderizador(controle, widget));
    }
    for (Renderizador *renderizador : m_Renderizadores) {
        renderizador->Atualiza();
    }
    OrdenaTab();
}

void JanelaForm::OrdenaTab()
{
    std::vector<QWidget *> ordem;
    for (const Ref<IControle> &controle : EmOrdemDeTab(*m_Form)) {
        for (const Renderizador *renderizador : m_Renderizadores) {
            if (renderizador->Controle() == controle) {
                const std::vector<QWidget *> partes = renderizador->Partes();
                std::copy_if(partes.begin(), partes.end(), std::back_inserter(ordem),
                             [](const QWidget *parte) { return (parte->focusPolicy() & Qt::TabFocus) != 0; });
            }
        }
    }
    for (std::size_t n = 1; n < ordem.size(); ++n) {
        setTabOrder(ordem[n - 1], ordem[n]);
    }
}

Renderizador *JanelaForm::FazRenderizador(const Ref<IControle> &controle, QWidget *widget)
{
    const Borda &borda = m_AoRedor.NaBorda;
    switch (controle->Especie()) {
    case EspecieControle::Label:
        return new RenderTextoFixo(controle, widget, borda);
    case EspecieControle::TextBox:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
    case EspecieControle::ztVeiObservacao:
        return new RenderCampo(controle, widget, borda);
    case EspecieControle::CheckBox:
        return new RenderMarca(controle, widget, borda);
    case EspecieControle::OptionButton:
        return new RenderOpcao(controle, widget, borda);
    case EspecieControle::CommandButton:
    case EspecieControle::ztCommand:
        return new RenderBotao(controle, widget, borda);
    case EspecieControle::SSTab:
        return new RenderAbas(controle, widget, borda);
    case EspecieControle::ztCombo:
        return new RenderCombo(controle, widget, borda);
    case EspecieControle::ztList:
        return new RenderLista(
            controle, widget, borda, [this] { m_AoRedor.Descarrega(m_Form); },
            [this] { m_AoRedor.Ajuda(S(objectName())); });
    case EspecieControle::ztEndereco:
        return new RenderEndereco(controle, widget, borda);
    case EspecieControle::ztClienteSetor:
        return new RenderClienteSetor(controle, widget, borda, m_AoRedor.Clientes());
    case EspecieControle::Image:
        return new RenderImagem(controle, widget, borda);
    case EspecieControle::ztFrame:
    case EspecieControle::CommonDialog:
        break;
    }
    return new RenderMoldura(controle, widget, borda);
}

void JanelaForm::MostraForm()
{
    if (m_Encerrando) {
        return;
    }
    setWindowTitle(m_Texto.isEmpty() ? Q(m_Form->Caption()) : m_Texto);
    setEnabled(m_Form->Enabled());
    if (!m_Form->Icone().empty()) {
        setWindowIcon(QIcon(":/icones/" + Q(m_Form->Icone()).toLower() + ".svg"));
    }
}

void JanelaForm::DefineTexto(const QString &texto)
{
    m_Texto = texto;
    MostraForm();
}

void JanelaForm::Encerra()
{
    m_Encerrando = true;
    m_Conexoes.clear();
    hide();
    if (AoEncerrar) {
        AoEncerrar();
    }
    deleteLater();
}

// A button that is part of a control, such as the picker's: the form knows nothing of it.
QPushButton *JanelaForm::BotaoInterno() const
{
    auto *botao = qobject_cast<QPushButton *>(focusWidget());
    const bool deControle =
        std::any_of(m_Renderizadores.begin(), m_Renderizadores.end(),
                    [&](const Renderizador *renderizador) { return renderizador->Widget() == botao; });
    return deControle ? nullptr : botao;
}

// The person closes the window: the platform asks the form, and comes back through Encerra when it has gone.
void JanelaForm::closeEvent(QCloseEvent *evento)
{
    evento->ignore();
    if (!m_Encerrando && m_Form->Enabled()) {
        m_AoRedor.NaBorda([this] { m_AoRedor.Descarrega(m_Form); });
    }
}

void JanelaForm::keyPressEvent(QKeyEvent *evento)
{
    switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_AoRedor.NaBorda([this] {
            QPushButton *botao = BotaoInterno();
            m_Pessoa.Enter(botao == nullptr ? std::function<void()>() : [botao] { botao->click(); });
        });
        break;
    case Qt::Key_Escape:
        m_AoRedor.NaBorda([this] { m_Pessoa.Esc(); });
        break;
    case Qt::Key_F1:
        m_AoRedor.NaBorda([this] { m_AoRedor.Ajuda(S(objectName())); });
        break;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        if (evento->modifiers() == Qt::ControlModifier) {
            m_AoRedor.NaBorda([&] { m_Pessoa.AndaPaginas(evento->key() == Qt::Key_PageDown ? 1 : -1); });
            break;
        }
        QWidget::keyPressEvent(evento);
        break;
    default:
        QWidget::keyPressEvent(evento);
    }
}

// A letter with Alt to which the form answers is the form's, before the toolkit looks for the caption that marks it.
bool JanelaForm::event(QEvent *evento)
{
    if (evento->type() == QEvent::ShortcutOverride) {
        auto *tecla = static_cast<QKeyEvent *>(evento);
        const auto letra = static_cast<char32_t>(tecla->key());
        if (tecla->modifiers() == Qt::AltModifier && m_Pessoa.RespondeAlt(letra)) {
            evento->accept();
            m_Alt = letra;
            qApp->installEventFilter(this);
            return true;
        }
    }
    return QWidget::event(evento);
}

// The key itself comes next, to the widget that has the keyboard.
bool JanelaForm::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(objeto, evento);
    }
    qApp->removeEventFilter(this);
    m_AoRedor.NaBorda([this] { m_Pessoa.Alt(m_Alt); });
    return true;
}

void JanelaForm::changeEvent(QEvent *evento)
{
    QWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
        m_Quadro->AlinhaRotulos();
    }
}

void JanelaForm::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    if (!m_Encerrando) {
        m_AoRedor.NaBorda([this] { m_Form->Redimensionada(); });
    }
}
