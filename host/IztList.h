#pragma once

#include "host/IControle.h"
#include "host/TabelaTexto.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// An item that a controller adds to the list's menu.
struct ItemMenuLista {
    std::string Chave;
    std::string Texto;
    std::string TextoBotao; // caption on the button bar, may have a line break; empty: none of its own
    std::string Dica;
    bool IniciaGrupo = false;
};

// One item of a list's menu. The person can use it only when it is visible, enabled and not barred.
class IItemMenu : public Objeto {
  public:
    virtual const std::string &Chave() const = 0;
    virtual bool Enabled() const = 0;
    virtual void DefineEnabled(bool valor) = 0;
};

// The list with rows, columns and its own context menu. Rows and columns are numbered from 1; a column is also found by
// its key, which is its title when no key was given. Standard menu items, always there: mnuZTLObjNovo, mnuZTLObjEditar,
// mnuZTLObjDetalhes, mnuZTLObjExcluir, mnuZTLObjLocalizar, mnuZTLObjAtualizar. An unknown menu key is fault 5; an
// unknown row or column is fault 9.
class IztList : public IControle {
  public:
    // Empties the rows; no row is current then, and no more rows are offered. The title goes too unless the argument is
    // there and false. Raises HabilitaItensMenuLista when there were rows.
    virtual void Limpa(std::optional<bool> limpaTitulo) = 0;

    // Adds a column behind the others, or changes the one column that the list has from the start.
    // numero from 1; chave absent: the title is the key; largura in twips, 0 hides; alinhamento 0 left; marca "data":
    // the column holds dates dd/mm/yyyy and sorts as such.
    virtual void AdicionaColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                                std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                                bool visivel) = 0;
    virtual void AlteraPrimeiraColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                                      std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                                      bool visivel) = 0;

    // Appends the table's rows; a column of the table goes to the list's column of the same number. The current row
    // stays.
    virtual void CarregaItens(TabelaTexto &tabela) = 0;
    // Repaints.
    virtual void AtualizaLista() = 0;
    virtual std::int32_t NroItens() const = 0;
    // Current row from 1; -1 when none is.
    virtual std::int32_t ItemAtual() const = 0;
    // Makes a row current; 0 or -1: none. Raises ItemClick and HabilitaItensMenuLista when another row becomes current,
    // and HabilitaItensMenuLista alone when none is any more.
    virtual void DefineItemAtual(std::int32_t linha) = 0;
    virtual std::string Celula(std::int32_t linha, const std::string &chaveColuna) const = 0;
    // Cell of the current row; empty when there is no current row.
    virtual std::string ValorAtual(const std::string &chaveColuna) const = 0;
    // n-th column of the current row; empty when there is no current row.
    virtual std::string ColunaAtual(std::int16_t coluna) const = 0;
    virtual std::string Titulo() const = 0;
    virtual void DefineTitulo(const std::string &valor) = 0;
    // Offers the button for more rows, which raises BotaoClick.
    virtual void DefineTemMais(bool valor) = 0;

    virtual void IncluiItensMenu(const std::vector<ItemMenuLista> &itens) = 0;
    virtual Ref<IItemMenu> ItemMenu(const std::string &chave) = 0;
    virtual void MenuVisivel(const std::string &chave, bool valor) = 0;
    // A barred item cannot be used, whatever its enabled flag says.
    virtual void MenuBloqueado(const std::string &chave, bool valor) = 0;
    virtual void MenuHabilitado(const std::string &chave, bool valor) = 0;
    virtual void MenuTexto(const std::string &chave, const std::string &valor) = 0;
    // Look of the menu and of the button bar; no rule hangs on them.
    virtual void EstiloMenu1(std::int32_t valor) = 0;
    virtual void EstiloMenu2(std::int32_t valor) = 0;

    virtual void BarraCriteriosAtiva(bool valor) = 0;
    virtual std::int32_t BarraCriteriosAltura() const = 0;
    virtual void DefineBarraCriteriosAltura(std::int32_t twips) = 0;
    // The list's own close and help buttons.
    virtual void BotoesFecharAjuda(bool valor) = 0;
    // Told once, after the window that holds the list has been shown.
    virtual void DefineJanelaExibida(bool valor) = 0;

    // The button for more rows was pressed.
    virtual Evento<> &BotaoClick() = 0;
    // Another row became current.
    virtual Evento<> &ItemClick() = 0;
    // A menu item was chosen; argument: its key. Not raised for mnuZTLObjExcluir, which the list carries out by itself.
    virtual Evento<std::string> &ItemMenuClicado() = 0;
    // What the menu depends on may have changed: current row, rows taken away, or the menu is about to be offered.
    virtual Evento<> &HabilitaItensMenuLista() = 0;
    // The focus has come. A list with rows but no current row has made row 1 current before.
    virtual Evento<> &GotFocus() = 0;
    // The person wants the row removed; writing 0 to the row cancels.
    virtual Evento<std::int32_t &> &AntesDeRemoverItem() = 0;
    // The row is gone. If it was the current one, the row now in its place is, or the last row; ItemClick is not raised
    // for that.
    virtual Evento<> &DepoisDeRemoverItem() = 0;
    // The criteria bar's search button: first BotaoLocalizarValida (writing true cancels), then, unless cancelled,
    // BotaoLocalizarEnvia.
    virtual Evento<bool &> &BotaoLocalizarValida() = 0;
    virtual Evento<> &BotaoLocalizarEnvia() = 0;
};
