#pragma once

#include <QObject>

#include <functional>
#include <string>

class QWidget;

namespace mesa {

class JanelaForm;

// F1 in every window of the program. The windows of forms have a way of their own, and the main window its menu.
class TeclaDeAjuda : public QObject {
  public:
    using Mostra = std::function<void(const std::string &topico, QWidget *dono)>;
    explicit TeclaDeAjuda(Mostra mostra);

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    Mostra m_Mostra;
};

// What a window of the desk's own is asked about: its name, and that of its page in front.
std::string TopicoDaJanela(const QWidget &janela);
// The form in a window, if there is one.
JanelaForm *FormDa(QWidget &janela);

} // namespace mesa
