#include "desk/windows/JanelaForm.h"

#include "controls/ztList.h"
#include "desk/host/Caminhos.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/Quadro.h"
#include "desk/windows/RenderLista.h"
#include "desk/windows/RenderizadoresEscolha.h"
#include "desk/windows/RenderizadoresSimples.h"
#include "tela/ArquivoSolto.h"
#include "tela/OrdemDeTab.h"
#include "tela/Twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace mesa {

JanelaForm::JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor, QWidget *dono)
    : QWidget(dono),
      m_Form(std::move(form)),
      m_AoRedor(std::move(aoRedor)),
      m_Pessoa(m_Form, m_AoRedor.Pedidos),
      m_Criterios(*m_Form, m_AoRedor.Clientes ? m_AoRedor.Clientes() : std::vector<ClienteOferecido>())
{
    setObjectName(QString::fromUtf8(m_Form->NomeTipo().data(), static_cast<qsizetype>(m_Form->NomeTipo().size())));
    DefineIdentidade(*this, m_AoRedor.Identidade);
    m_Quadro = new Quadro(*m_Form, this);
    LigaControles();
    LigaLimpar();
    m_Quadro->Segue();
    m_Conexoes.push_back(m_Form->Mudou().liga([this] { MostraForm(); }));
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
            (*widget)->updateGeometry();
        }
    }
    layout()->invalidate();
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
    for (QLabel *rotulo : findChildren<QLabel *>()) {
        rotulo->setTextFormat(Qt::PlainText); // a text may be anything, such as the name of a file
    }
    for (QWidget *parte : findChildren<QWidget *>()) {
        parte->setAcceptDrops(false); // a file is for the form, and its path no text for a field
    }
    setAcceptDrops(ArquivoSolto::Conhece(*m_Form));
    OrdenaTab();
    for (const Ref<IControle> &controle : m_Form->Controles()) {
        m_Conexoes.push_back(ComoBase(controle)->Mudou().liga([this] { OrdenaTab(); }));
    }
}

void JanelaForm::OrdenaTab()
{
    std::vector<Ref<IControle>> controles = EmOrdemDeTab(*m_Form);
    if (controles == m_OrdemDeTab) {
        return;
    }
    m_OrdemDeTab = std::move(controles);
    std::vector<QWidget *> ordem;
    for (const Ref<IControle> &controle : m_OrdemDeTab) {
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
    const Borda &borda = m_AoRedor.Pedidos.NaBorda;
    switch (controle->Especie()) {
    case EspecieControle::Label:
        return new RenderTextoFixo(controle, widget, borda);
    case EspecieControle::TextBox:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
    case EspecieControle::ztVeiObservacao:
        return new RenderCampo(controle, widget, borda, m_AoRedor.Agora);
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
        return new RenderLista(controle, widget, borda, m_AoRedor.Pedidos.Fecha, m_AoRedor.Pedidos.Ajuda,
                               {m_AoRedor.Pedidos.Pergunta,
                                {m_AoRedor.Usuario, m_AoRedor.Lembrancas, m_AoRedor.Agora},
                                m_AoRedor.Identidade});
    case EspecieControle::ztEndereco: {
        auto *endereco = new RenderEndereco(controle, widget, borda, m_AoRedor.Logradouros, m_AoRedor.Memoria);
        m_Pessoa.Conhece(controle, endereco->Escolha());
        return endereco;
    }
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
    setWindowTitle(Q(TextoDaMoldura(m_Texto.isEmpty() ? m_Form->Caption() : S(m_Texto), m_AoRedor.Qual)));
    const bool voltou = m_Form->Enabled() && !isEnabled();
    setEnabled(m_Form->Enabled());
    if (voltou) {
        LevaTeclado();
    }
    if (!m_Form->Icone().empty()) {
        setWindowIcon(Icone(Q(m_Form->Icone()).toLower()));
    }
}

void JanelaForm::DefineTexto(const QString &texto)
{
    m_Texto = texto;
    MostraForm();
}

void JanelaForm::LembraCriterios()
{
    if (!m_Criterios.Ha() || !m_AoRedor.Lembrancas) {
        return;
    }
    m_AoRedor.Pedidos.NaBorda([this] { m_Criterios.Poe(m_AoRedor.Lembrancas->Lembranca(ChaveDosCriterios())); });
    m_CriteriosLembrados = true;
    for (const Ref<IControle> &controle : m_Form->Controles()) {
        if (auto *lista = dynamic_cast<IztList *>(controle.Ponteiro())) {
            m_Conexoes.push_back(lista->BotaoLocalizarEnvia().liga([this] { GuardaCriterios(); }));
        }
    }
}

std::string JanelaForm::ChaveDosCriterios() const
{
    return m_AoRedor.Identidade + "/criterios";
}

void JanelaForm::PoeCriterios(const std::function<void()> &poe)
{
    const QPointer<JanelaForm> vivo = this;
    const bool lembrados = std::exchange(m_CriteriosLembrados, false);
    poe();
    if (!vivo.isNull()) {
        m_CriteriosLembrados = lembrados;
        m_CriteriosAlheios = m_Criterios.Texto();
    }
}

void JanelaForm::GuardaCriterios()
{
    const std::string agora = m_Criterios.Texto();
    if (m_CriteriosLembrados && agora != m_CriteriosAlheios) {
        m_CriteriosAlheios.reset();
        m_AoRedor.Lembrancas->Lembra(ChaveDosCriterios(), agora);
    }
}

void JanelaForm::LigaLimpar()
{
    for (const Ref<IControle> &controle : m_Form->Controles()) {
        if (auto *lista = dynamic_cast<ztList *>(controle.Ponteiro()); lista != nullptr && m_Criterios.Ha()) {
            lista->OfereceLimpar([este = QPointer<JanelaForm>(this)] {
                if (!este.isNull()) {
                    este->m_Criterios.Limpa();
                    este->GuardaCriterios();
                }
            });
        }
    }
}

void JanelaForm::Encerra()
{
    if (!m_Encerrando) {
        GuardaCriterios();
    }
    m_Encerrando = true;
    m_Conexoes.clear();
    hide();
    deleteLater();
}

// Tab is the toolkit's own.
void JanelaForm::DizOndeEstaOTeclado()
{
    m_Pessoa.Ocupa(nullptr, Parte::Todo);
    for (const Renderizador *renderizador : m_Renderizadores) {
        if (const auto parte = renderizador->ParteComTeclado()) {
            m_Pessoa.Ocupa(renderizador->Controle(), *parte);
        }
    }
}

void JanelaForm::LevaTeclado()
{
    m_AoRedor.Pedidos.NaBorda([this] {
        m_Pessoa.Retoma();
        const auto [controle, parte] = m_Pessoa.ParadaAtual();
        for (Renderizador *renderizador : m_Renderizadores) {
            if (renderizador->Controle() == controle) {
                renderizador->LevaTeclado(parte);
            }
        }
    });
}

// The quick filter of a list that has one, otherwise the criteria.
void JanelaForm::VaiProcurar()
{
    for (const Renderizador *renderizador : m_Renderizadores) {
        const Ref<IControle> &controle = renderizador->Controle();
        auto *filtro = findChild<QLineEdit *>(NomeDoWidget(controle->Nome(), controle->Indice()) + "_filtro");
        if (filtro != nullptr && filtro->isVisible() && filtro->isEnabled()) {
            filtro->setFocus(Qt::ShortcutFocusReason);
            filtro->selectAll();
            return;
        }
    }
    if (m_Pessoa.VaiAosCriterios()) {
        LevaTeclado();
    }
}

// The person closes the window: the platform asks the form, and comes back through Encerra when it has gone.
void JanelaForm::closeEvent(QCloseEvent *evento)
{
    evento->ignore();
    if (!m_Encerrando) {
        m_AoRedor.Pedidos.Fecha();
    }
}

void JanelaForm::AceitaSeRecebe(QDropEvent &evento) const
{
    const QList<QUrl> soltos = evento.mimeData()->urls();
    const bool daqui =
        !soltos.isEmpty() && std::ranges::all_of(soltos, [](const QUrl &url) { return url.isLocalFile(); });
    evento.setDropAction(Qt::CopyAction);
    evento.setAccepted(daqui && isEnabled() && ArquivoSolto(m_Form).Recebe());
}

void JanelaForm::dragEnterEvent(QDragEnterEvent *evento)
{
    AceitaSeRecebe(*evento);
}

void JanelaForm::dragMoveEvent(QDragMoveEvent *evento)
{
    AceitaSeRecebe(*evento);
}

// Once whoever dragged it knows that it has come.
void JanelaForm::dropEvent(QDropEvent *evento)
{
    AceitaSeRecebe(*evento);
    if (!evento->isAccepted()) {
        return;
    }
    std::vector<ItemSolto> itens;
    for (const QUrl &url : evento->mimeData()->urls()) {
        const QString caminho = url.toLocalFile();
        itens.push_back({CaminhoEscolhido(S(caminho)), S(QFileInfo(caminho).fileName()), QFileInfo(caminho).isDir()});
    }
    const auto solta = [this, itens] {
        m_AoRedor.Pedidos.NaBorda([&] {
            const std::string recusa = ArquivoSolto(m_Form).Solta(itens);
            if (!recusa.empty()) {
                AvisaEmCaixa(Q(recusa), this);
            }
        });
    };
    QMetaObject::invokeMethod(this, solta, Qt::QueuedConnection);
}

void JanelaForm::keyPressEvent(QKeyEvent *evento)
{
    switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        if (evento->isAutoRepeat()) {
            return; // held down it acts once
        }
        break;
    default:
        break;
    }
    switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_AoRedor.Pedidos.NaBorda([this] {
            DizOndeEstaOTeclado();
            m_Pessoa.Enter();
        });
        break;
    case Qt::Key_Escape:
        m_AoRedor.Pedidos.NaBorda([this] { m_Pessoa.Esc(); });
        break;
    case Qt::Key_F1:
        m_AoRedor.Pedidos.Ajuda();
        break;
    default:
        QWidget::keyPressEvent(evento);
    }
}

// A key that is the form's whatever has the keyboard: a letter with Alt to which it answers, before the toolkit looks
// for the caption that marks it, and the way through the pages.
std::function<void()> JanelaForm::AtoDaTecla(const QKeyEvent &tecla)
{
    const auto letra = static_cast<char32_t>(tecla.key());
    const Qt::KeyboardModifiers com = tecla.modifiers() & ~Qt::KeypadModifier;
    if (tecla.modifiers() == Qt::AltModifier && m_Pessoa.RespondeAlt(letra)) {
        return [this, letra] { m_Pessoa.Alt(letra); };
    }
    if (com == Qt::ControlModifier && letra == Qt::Key_F) {
        return [this] { VaiProcurar(); };
    }
    if (com == Qt::NoModifier && letra == Qt::Key_F5) {
        return [this] { m_Pessoa.Atalho(AtalhoDeLista::Atualiza); };
    }
    if (com == Qt::ControlModifier && (letra == Qt::Key_PageDown || letra == Qt::Key_PageUp)) {
        return [this, passo = letra == Qt::Key_PageDown ? 1 : -1] { m_Pessoa.AndaPaginas(passo); };
    }
    return {};
}

bool JanelaForm::event(QEvent *evento)
{
    if (evento->type() == QEvent::ShortcutOverride) {
        const auto &tecla = *static_cast<QKeyEvent *>(evento);
        if (AtoDaTecla(tecla)) {
            m_Tecla = tecla.key();
            qApp->installEventFilter(this);
            evento->accept();
            return true;
        }
    }
    return QWidget::event(evento);
}

// The key itself comes next, to the widget that has the keyboard.
bool JanelaForm::eventFilter(QObject *objeto, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress) {
        qApp->removeEventFilter(this);
        const auto &tecla = *static_cast<QKeyEvent *>(evento);
        if (const auto ato = AtoDaTecla(tecla); ato && tecla.key() == m_Tecla) {
            if (!tecla.isAutoRepeat() || (tecla.modifiers() & Qt::ControlModifier) != 0) {
                m_AoRedor.Pedidos.NaBorda(ato);
            }
            return true;
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void JanelaForm::changeEvent(QEvent *evento)
{
    QWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
        m_Quadro->AlinhaRotulos();
    }
}

void JanelaForm::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    if (!evento->spontaneous() && !std::exchange(m_Vista, true)) {
        LevaTeclado();
    }
}

void JanelaForm::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    if (!m_Encerrando) {
        m_AoRedor.Pedidos.Redimensionou();
    }
}

} // namespace mesa
