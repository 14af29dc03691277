#pragma once

#include <QString>

#include <functional>
#include <type_traits>

class QMainWindow;
class QWidget;

namespace mesa {

// Looking at the windows; all of it belongs in their thread.

// The main window, while it is seen.
QMainWindow *Principal();
// The window of documents that is active, or else the main window.
QWidget *JanelaAtiva();
// "pai/filho" finds the child in the parent.
QWidget *Procura(QWidget *onde, const QString &nome);
// What a person reads on a widget; of a box or option, whether it is ticked.
QString TextoDe(const QWidget *widget);

// Runs in the windows' thread, called from another one, to which a fault goes.
void ExecutaNaTela(const std::function<void()> &acao);
template <class Pergunta> auto NaTela(Pergunta &&pergunta)
{
    if constexpr (std::is_void_v<std::invoke_result_t<Pergunta>>) {
        ExecutaNaTela(pergunta);
    } else {
        std::invoke_result_t<Pergunta> resposta{};
        ExecutaNaTela([&] { resposta = pergunta(); });
        return resposta;
    }
}

} // namespace mesa
