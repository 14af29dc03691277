#include "desk/windows/Combo.h"

#include "desk/services/TextoQt.h"
#include "desk/windows/Dica.h"
#include "desk/windows/Renderizador.h"
#include "tela/TeclasDeCombo.h"

#include <QAbstractItemView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

#include <utility>

namespace mesa {

namespace {

constexpr const char *ListaAberta = "listaAberta";

Momento QuandoFoi(const QKeyEvent &tecla)
{
    return Momento(static_cast<Momento::rep>(tecla.timestamp()));
}

bool EhLetra(const QKeyEvent &tecla)
{
    return (tecla.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0 &&
           EhLetraDeCombo(S(tecla.text()));
}

// Keys that do something else than to look for an item. Those that go with a letter, such as Shift, do nothing.
bool FazOutraCoisa(int tecla)
{
    switch (tecla) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_F4:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}

bool FechaLista(const QKeyEvent &tecla)
{
    switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_F4:
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        return (tecla.modifiers() & Qt::AltModifier) != 0;
    default:
        return false;
    }
}

} // namespace

Combo::Combo(QWidget *dono)
    : QComboBox(dono),
      m_DosItens({[this] { return count(); }, [this](std::int32_t item) { return S(itemText(item)); },
                  [this] { return currentIndex(); }, [this] { return isEnabled() && !m_SomenteLeitura; },
                  [this](std::int32_t item) {
                      setCurrentIndex(item);
                      Q_EMIT activated(item);
                  }}),
      m_DaLista({[this] { return count(); }, [this](std::int32_t item) { return S(itemText(item)); },
                 [this] { return view()->currentIndex().row(); }, [this] { return view()->isVisible(); },
                 [this](std::int32_t item) {
                     view()->setCurrentIndex(model()->index(item, modelColumn(), rootModelIndex()));
                 }}),
      m_Age([](const std::function<void()> &ato) { ato(); }),
      m_Fixo(new QLineEdit(this))
{
    m_Fixo->setObjectName("fixo");
    m_Fixo->setFocusPolicy(Qt::ClickFocus);
    m_Fixo->setFocusProxy(this);
    m_Fixo->hide();
    mesa::DefineSomenteLeitura(*m_Fixo, true);
    connect(this, &QComboBox::currentTextChanged, this, [this] { MostraFixo(); });
}

void Combo::PesquisaEm(PesquisaPorLetras &pesquisa, Age age)
{
    m_Pesquisa = &pesquisa;
    m_Age = std::move(age);
}

void Combo::DefineSomenteLeitura(bool valor)
{
    if (m_SomenteLeitura == valor) {
        return;
    }
    m_SomenteLeitura = valor;
    if (valor) {
        hidePopup();
    }
    setAccessibleDescription(valor ? "Somente leitura" : "");
    MostraFixo();
    m_Fixo->setVisible(valor);
    m_Fixo->raise();
    update();
}

void Combo::MostraFixo()
{
    m_Fixo->setAccessibleName(accessibleName());
    if (m_Fixo->text() != currentText()) {
        m_Fixo->setText(currentText());
        m_Fixo->setCursorPosition(0);
    }
}

void Combo::showPopup()
{
    if (m_SomenteLeitura) {
        return;
    }
    m_Pesquisa->Encerra();
    m_DaLista.Encerra();
    Dica::Mostra(*this, {}, false);
    setProperty(ListaAberta, true);
    QComboBox::showPopup();
    view()->installEventFilter(this); // before the list itself
}

void Combo::hidePopup()
{
    setProperty(ListaAberta, false);
    Dica::Mostra(*this, {}, false);
    QComboBox::hidePopup();
}

bool Combo::Procura(const QKeyEvent &tecla, PesquisaPorLetras &pesquisa, const Age &age)
{
    const Momento quando = QuandoFoi(tecla);
    const bool apaga = tecla.key() == Qt::Key_Backspace && pesquisa.EmCurso(quando);
    const bool espaco = tecla.text() == " " && !pesquisa.EmCurso(quando); // which opens the list, or takes the item
    if (!apaga && (!EhLetra(tecla) || espaco)) {
        if (FazOutraCoisa(tecla.key())) {
            pesquisa.Encerra();
        }
        return false;
    }
    const QPointer<Combo> vivo = this;
    age([&] { apaga ? pesquisa.Encurta(quando) : pesquisa.Digita(S(tecla.text()), quando); });
    if (!vivo.isNull()) {
        MostraProcura(pesquisa);
    }
    return true;
}

void Combo::MostraProcura(const PesquisaPorLetras &pesquisa)
{
    if (!pesquisa.Aviso().empty()) {
        Dica::Mostra(*this, Q(pesquisa.Aviso()), true);
    } else {
        const QString procurado = Q(pesquisa.Procurado());
        Dica::Mostra(*this, procurado.isEmpty() ? procurado : "Procurando: " + procurado, false);
    }
}

void Combo::keyPressEvent(QKeyEvent *evento)
{
    if (m_SomenteLeitura) {
        m_Fixo->event(evento);
        return;
    }
    if (isEditable()) {
        QComboBox::keyPressEvent(evento);
        return;
    }
    if (Procura(*evento, *m_Pesquisa, m_Age)) {
        return;
    }
    const bool espaco = evento->key() == Qt::Key_Space && evento->modifiers() == Qt::NoModifier;
    if (FazOutraCoisa(evento->key()) || espaco) {
        QComboBox::keyPressEvent(evento);
    } else {
        evento->ignore(); // the toolkit would look for an item in a way of its own
    }
}

// A letter that was put together out of several keys.
void Combo::inputMethodEvent(QInputMethodEvent *evento)
{
    if (isEditable() || m_SomenteLeitura || evento->commitString().isEmpty()) {
        QComboBox::inputMethodEvent(evento);
        return;
    }
    const QPointer<Combo> vivo = this;
    m_Age([&] { m_Pesquisa->Digita(S(evento->commitString())); });
    if (!vivo.isNull()) {
        MostraProcura(*m_Pesquisa);
    }
    evento->accept();
}

// A key for the open list is for nobody else: the toolkit would close the list before the key arrives, which then would
// go to the window behind it.
bool Combo::eventFilter(QObject *objeto, QEvent *evento)
{
    const bool tecla = evento->type() == QEvent::KeyPress || evento->type() == QEvent::ShortcutOverride;
    if (!tecla || objeto != view()) {
        return QComboBox::eventFilter(objeto, evento);
    }
    const auto &qual = *static_cast<QKeyEvent *>(evento);
    if (FechaLista(qual)) {
        evento->accept();
        if (evento->type() == QEvent::KeyPress) {
            Fecha(qual.key() == Qt::Key_Return || qual.key() == Qt::Key_Enter);
        }
        return true;
    }
    const Age jaAge = [](const std::function<void()> &ato) { ato(); };
    return evento->type() == QEvent::KeyPress && !isEditable() && Procura(qual, m_DaLista, jaAge);
}

void Combo::Fecha(bool escolhe)
{
    const int item = view()->currentIndex().row();
    hidePopup();
    if (escolhe && item >= 0) {
        setCurrentIndex(item);
        Q_EMIT activated(item);
    }
}

void Combo::focusInEvent(QFocusEvent *evento)
{
    QComboBox::focusInEvent(evento);
    if (m_SomenteLeitura) {
        m_Fixo->event(evento);
    }
}

void Combo::focusOutEvent(QFocusEvent *evento)
{
    m_Pesquisa->Encerra();
    QComboBox::focusOutEvent(evento);
    if (m_SomenteLeitura) {
        m_Fixo->event(evento);
    }
}

void Combo::paintEvent(QPaintEvent *evento)
{
    if (!m_SomenteLeitura) { // the text is in front of all of it
        QComboBox::paintEvent(evento);
    }
}

void Combo::resizeEvent(QResizeEvent *evento)
{
    QComboBox::resizeEvent(evento);
    m_Fixo->setGeometry(rect());
}

} // namespace mesa
