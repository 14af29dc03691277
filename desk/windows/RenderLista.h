#pragma once

#include "desk/windows/Renderizador.h"

#include <map>

class ModeloLista;
class QBoxLayout;
class QKeyEvent;
class QLabel;
class QMenu;
class QPushButton;
class QTableView;
class QToolButton;

// The list: its title, rows, the side bar of commands that is also its context menu, the button for more rows, and the
// search button of the criteria bar, which the form's layout holds under the list's name and "_localizar". The context
// menu comes by the mouse, the menu key and Shift+F10, and sorts by a column too.
class RenderLista : public Renderizador {
  public:
    // fecha and ajuda: what the list's own two buttons do.
    RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                std::function<void()> ajuda);

    std::vector<QWidget *> Partes() const override;

  protected:
    void Mostra() override;
    QWidget *AlvoDoFoco() override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void MostraColunas();
    void MostraMenu();
    bool Tecla(const QKeyEvent &tecla);
    void AdicionaOrdens(QMenu &menu);
    void AbreMenu(const QPoint &onde);
    void Escolhe(const std::string &chave);

    QLabel *m_Titulo;
    QTableView *m_Tabela;
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
