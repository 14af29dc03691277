#include "desk/windows/Combo.h"

#include "desk/windows/Dica.h"
#include "desk/windows/Renderizador.h"
#include "services/TextoQt.h"
#include "tela/TeclasDeCombo.h"

#include <QAbstractItemView>
#include <QApplication>
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

// Keys that only go with a letter.
bool Acompanha(int tecla)
{
    return tecla == Qt::Key_Shift || tecla == Qt::Key_CapsLock || tecla == Qt::Key_AltGr;
}

} // namespace

// A choice may lead the keyboard to another field while its word is still being typed: what is left of the word is no
// text for that field.
class Combo::RestoDaPalavra : public QObject {
  public:
    using QObject::QObject;

    void Segue(PesquisaPorLetras &pesquisa)
    {
        m_Pesquisa = &pesquisa;
        qApp->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (!objeto->isWidgetType()) {
            return false;
        }
        switch (evento->type()) {
        case QEvent::KeyPress: {
            const auto &tecla = *static_cast<QKeyEvent *>(evento);
            if (Acompanha(tecla.key())) {
                return false;
            }
            return Fica(EhLetra(tecla) && m_Pesquisa->Continua(S(tecla.text()), QuandoFoi(tecla)));
        }
        case QEvent::InputMethod: {
            auto &composta = *static_cast<QInputMethodEvent *>(evento);
            if (!composta.commitString().isEmpty() && Fica(m_Pesquisa->Continua(S(composta.commitString())))) {
                composta.setCommitString({});
            }
            return false;
        }
        case QEvent::MouseButtonPress:
            return Fica(false);
        default:
            return false;
        }
    }

  private:
    bool Fica(bool continua)
    {
        if (!continua) {
            qApp->removeEventFilter(this);
        }
        return continua;
    }

    PesquisaPorLetras *m_Pesquisa = nullptr;
};

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
      m_Resto(new RestoDaPalavra(this)),
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
    Digita([&] { apaga ? pesquisa.Encurta(quando) : pesquisa.Digita(S(tecla.text()), quando); }, pesquisa, age);
    return true;
}

void Combo::Digita(const std::function<void()> &ato, PesquisaPorLetras &pesquisa, const Age &age)
{
    const QPointer<Combo> vivo = this;
    age(ato);
    if (vivo.isNull()) {
        return;
    }
    if (!hasFocus() && &pesquisa != &m_DaLista) {
        m_Resto->Segue(pesquisa);
    }
    MostraProcura(pesquisa);
}

// A letter that was put together out of several keys.
bool Combo::Compoe(const QInputMethodEvent &evento, PesquisaPorLetras &pesquisa, const Age &age)
{
    if (evento.commitString().isEmpty()) {
        return false;
    }
    Digita([&] { pesquisa.Digita(S(evento.commitString())); }, pesquisa, age);
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

void Combo::inputMethodEvent(QInputMethodEvent *evento)
{
    if (isEditable() || m_SomenteLeitura || !Compoe(*evento, *m_Pesquisa, m_Age)) {
        QComboBox::inputMethodEvent(evento);
    } else {
        evento->accept();
    }
}

// A key for the open list is for nobody else: the toolkit would close the list before the key arrives, which then would
// go to the window behind it.
bool Combo::eventFilter(QObject *objeto, QEvent *evento)
{
    const Age jaAge = [](const std::function<void()> &ato) { ato(); };
    if (objeto == view() && evento->type() == QEvent::InputMethod && !isEditable()) {
        return Compoe(*static_cast<QInputMethodEvent *>(evento), m_DaLista, jaAge);
    }
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
