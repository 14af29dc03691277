#pragma once

#include "desk/windows/Renderizador.h"

#include <map>

class QBoxLayout;
class QKeyEvent;
class QLabel;
class QMenu;
class QPushButton;
class QToolButton;

namespace mesa {

class ModeloLista;

// The list: its title, rows, the side bar of commands that is also its context menu, the button for more rows, and the
// search button of the criteria bar. The context
// menu comes by the mouse, the menu key and Shift+F10, and sorts by a column too.
class RenderLista : public Renderizador {
  public:
    // fecha and ajuda: what the list's own two buttons do.
    RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                std::function<void()> ajuda);

  protected:
    void Mostra() override;
    QWidget *WidgetDe(Parte parte) const override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    class Tabela;

    void MostraColunas();
    void MostraMenu();
    bool Tecla(const QKeyEvent &tecla);
    void AdicionaOrdens(QMenu &menu);
    void AbreMenu(const QPoint &onde);
    void Abre();
    void Escolhe(const std::string &chave);

    QWidget *m_Criterios; // null in a list without criteria
    QLabel *m_Titulo;
    Tabela *m_Tabela;
    ModeloLista *m_Modelo;
    QWidget *m_Barra;
    QBoxLayout *m_Comandos;
    std::map<std::string, QToolButton *> m_Botoes;
    QPushButton *m_Localizar;
    QPushButton *m_Mais;
    QToolButton *m_Fechar;
    QToolButton *m_Ajuda;
    std::int64_t m_Arranjo = -1;
    int m_PrimeiraVisivel = 0;
};

} // namespace mesa
