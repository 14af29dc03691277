#pragma once

#include "desk/windows/QuemUsa.h"
#include "desk/windows/Renderizador.h"
#include "tela/LinhasDeLista.h"

#include <map>
#include <memory>

class QBoxLayout;
class QKeyEvent;
class QLabel;
class QMenu;
class QPushButton;
class QToolButton;

namespace mesa {

class CampoDeFiltro;
class ComandosDeTabela;
class ModeloLista;

// What a list needs of the window around it.
struct AoRedorDaLista {
    std::function<bool(const std::string &)> Pergunta = [](const std::string &) { return false; };
    QuemUsa Quem{};
    std::string Janela{}; // under which what is remembered of its lists stands
};

// The list: its title, rows, the side bar of commands that is also its context menu, the button for more rows, the line
// that filters them, and the search button of the criteria bar. The context menu comes by the mouse, the menu key and
// Shift+F10, and sorts by a column too. Further rows come by the button, and when the person rolls to the end.
class RenderLista : public Renderizador {
  public:
    // fecha and ajuda: what the list's own two buttons do.
    RenderLista(Ref<IControle> controle, QWidget *widget, Borda borda, std::function<void()> fecha,
                std::function<void()> ajuda, AoRedorDaLista aoRedor = {});

  protected:
    void Mostra() override;
    QWidget *WidgetDe(Parte parte) const override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    class Tabela;
    class Espera;

    void MontaTabela();
    void MontaLeiaute();

    void MostraColunas();
    void MostraMenu();
    void MostraAtual(bool outras);
    void MostraRodape();
    void Filtra();
    void Ordena(int coluna);
    void Rola();
    bool NoFim() const;
    bool Tecla(const QKeyEvent &tecla);
    void AdicionaOrdens(QMenu &menu);
    void AbreMenu(const QPoint &onde);
    void Escolhe(const std::string &chave);

    AoRedorDaLista m_AoRedor;
    QWidget *m_Criterios; // null in a list without criteria
    QLabel *m_Titulo;
    Tabela *m_Tabela;
    ModeloLista *m_Modelo;
    QWidget *m_Barra;
    QBoxLayout *m_Comandos;
    std::map<std::string, QToolButton *> m_Botoes;
    QPushButton *m_Localizar;
    QPushButton *m_Mais;
    QLabel *m_Rodape;
    CampoDeFiltro *m_Filtro;
    ComandosDeTabela *m_ComandosDeTabela;
    QToolButton *m_Fechar;
    QToolButton *m_Ajuda;
    std::int64_t m_Arranjo = -1;
    std::int32_t m_Atual = 0; // row, as it was shown last
    std::string m_Ordem;      // that is remembered
    bool m_OrdemLida = false;
    bool m_Rolando = false;
    bool m_Carregando = false; // the rest, before it is sorted
};

} // namespace mesa
