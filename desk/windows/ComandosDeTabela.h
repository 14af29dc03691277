#pragma once

#include "desk/windows/QuemUsa.h"
#include "tela/ColunasArrumadas.h"
#include "tela/TextoDeTabela.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QMenu;
class QTableView;

namespace mesa {

// What can be done with every table besides its own commands: which columns are seen, in which order and how wide,
// which is remembered for who works; its rows to the clipboard, on paper and into a file. By the heading's menu, by the
// table's, and by keys.
class ComandosDeTabela : public QObject {
  public:
    struct Coluna {
        std::string Chave;
        std::string Titulo;
        int Largura = 0;       // as the table has it, in pixels
        bool Oferecida = true; // for people
    };
    // What is printed above the rows, and names the file that they are exported to.
    struct Cabeca {
        QString Titulo;
        QString Criterios;
    };

    // lembranca: the key under which the columns are remembered.
    ComandosDeTabela(QTableView *tabela, QuemUsa quem, std::string lembranca, std::function<Cabeca()> cabeca);

    // The columns of the table's model, in its order. The person's arrangement is laid over them.
    void DefineColunas(const std::vector<Coluna> &colunas);
    // Those that are seen, from 1, from left to right.
    std::vector<std::int32_t> Vistas() const { return m_Arrumadas.Vistas(); }
    // Others are seen than before.
    std::function<void()> MudouVistas = [] {};
    // Before all rows are copied, printed or exported: brings those that the table does not have yet. False when it is
    // not to be done then.
    std::function<bool()> Completa = [] { return true; };

    // The entries of the table's menu, behind those that it has, which have these captions. What is chosen is done.
    void AdicionaAoMenu(QMenu &menu, const std::vector<std::string> &antes);

    void Copia();
    void CopiaTudo();
    void Imprime();
    void Exporta();

  protected:
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void Arruma();
    void EsticaUltima();
    void Arrumou();
    int LarguraDe(const ColunasArrumadas::Coluna &coluna) const;
    void AdicionaColunas(QMenu &menu);
    void MenuDoTitulo(const QPoint &onde);
    void OrganizaColunas();
    TabelaVista Tabela(const std::vector<int> &linhas) const;
    std::vector<int> Linhas() const;
    bool AtualVista() const;
    bool TemTudo();

    QTableView *m_Tabela;
    QObject *m_Vista;   // what of the table the mouse is in
    QObject *m_Titulos; // and of its heading
    QuemUsa m_Quem;
    std::string m_Lembranca;
    std::function<Cabeca()> m_Cabeca;
    std::vector<Coluna> m_Colunas;
    ColunasArrumadas m_Arrumadas;
    std::vector<std::int32_t> m_Vistas; // as they were shown last
    bool m_Lida = false;                // what was remembered
    bool m_Arrumando = false;           // by itself, and not by the person
    bool m_Mudou = false;               // by the mouse, which is still pressed
};

} // namespace mesa
