#pragma once

#include "controls/PesquisaPorLetras.h"

#include <QComboBox>

#include <functional>

class QKeyEvent;
class QLineEdit;

namespace mesa {

// A list to choose from, in which an item is found by typing; the letters typed so far are shown. One that is only to
// be read looks like a text that is.
class Combo : public QComboBox {
  public:
    using Age = std::function<void(const std::function<void()> &)>;

    explicit Combo(QWidget *dono);

    // The letters go there, by way of `age`, while the list is closed; otherwise to the combo's own items, of which one
    // is chosen as with the arrows.
    void PesquisaEm(PesquisaPorLetras &pesquisa, Age age);
    void DefineSomenteLeitura(bool valor);

    void showPopup() override;
    void hidePopup() override;

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;
    void focusOutEvent(QFocusEvent *evento) override;
    void inputMethodEvent(QInputMethodEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;

  private:
    class RestoDaPalavra;

    // Whether the key was for the search.
    bool Procura(const QKeyEvent &tecla, PesquisaPorLetras &pesquisa, const Age &age);
    bool Compoe(const QInputMethodEvent &evento, PesquisaPorLetras &pesquisa, const Age &age);
    void Digita(const std::function<void()> &ato, PesquisaPorLetras &pesquisa, const Age &age);
    void MostraProcura(const PesquisaPorLetras &pesquisa);
    void MostraFixo();
    // The list; the item that it leads to is chosen, or none.
    void Fecha(bool escolhe);

    PesquisaPorLetras m_DosItens; // closed, with nobody else to ask
    PesquisaPorLetras m_DaLista;  // open: the item is only led to
    PesquisaPorLetras *m_Pesquisa = &m_DosItens;
    Age m_Age;
    RestoDaPalavra *m_Resto;
    QLineEdit *m_Fixo;
    bool m_SomenteLeitura = false;
};

} // namespace mesa
