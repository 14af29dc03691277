#pragma once

#include "desk/host/Preferencias.h"

#include <QFont>
#include <QObject>
#include <QPalette>

class QApplication;

namespace mesa {

// What a program needs of the toolkit before its first window: the look of the windows, and their words in Portuguese.
void PreparaAparencia(QApplication &aplicacao);

// What the desktop says of the colours that its user likes.
enum class DesejoDeCores { Nenhum, Claro, Escuro };

// Gives all windows of the program the colours and the size of text that the settings tell, and again as soon as the
// settings, the desktop's wish or its own palette change. What was there before comes back at its end.
class Aparencia : public QObject {
  public:
    // preferencias: outlives this object.
    explicit Aparencia(Preferencias &preferencias);
    ~Aparencia() override;

    void DefineDesejo(DesejoDeCores desejo);

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void Aplica();
    void PoeCores(Tema tema);
    void PoeTexto(std::int32_t tamanho);

    Preferencias &m_Preferencias;
    DesejoDeCores m_Desejo = DesejoDeCores::Nenhum;
    QFont m_Letra;     // of the system
    QPalette m_Postas; // last
    bool m_Pondo = false;
    Conexao m_AoMudar;
};

} // namespace mesa
