#pragma once

#include "host/IztList.h"
#include "host/MenuLista.h"
#include "shell/Assinante.h"
#include "shell/Coluna.h"

#include <cstdint>
#include <string>
#include <string_view>

// Bars an item of a list's menu to a user without the permission for the action.
void BloqueiaSemPermissao(const Ref<IztList> &lista, const std::string &chave, const std::string &acao);

// Base of the controllers that drive the list of a form: its columns, its events and its standard menu. Each says what
// it does with a row. The procedures here are told in messages and paths as those of the controller's own class.
class ControladorLista : public Objeto, public Assinante {
  protected:
    // The name under which a fault of a menu command is told.
    explicit ControladorLista(std::string_view itemMenuClicado) : m_ItemMenuClicado(itemMenuClicado) {}

    // Binds the controller to the list, which is not kept alive, gives it its columns and sets its menu. A fault
    // changes nothing of the binding.
    void Prepara(const Ref<IztList> &lista, bool somenteLeitura);
    void HabilitaMenu();

    virtual TabelaColunas Colunas() const = 0;
    // What the user may not do at all.
    virtual void BloqueiaMenu() {}
    // Whether the current row may be removed, of so many rows.
    virtual bool PodeExcluir(std::int32_t) const { return true; }
    virtual void Novo() = 0;
    virtual void Editar() = 0;
    virtual void Detalhes() = 0;
    // False keeps the row.
    virtual bool Excluir(std::int32_t linha) = 0;

    RefFraca<IztList> m_ZtList;

  private:
    std::string_view m_ItemMenuClicado;
    bool m_SomenteLeitura = false;

    [[noreturn]] void Passa(std::string_view procedimento) const;
    void MenuInicial();
    void m_ZtList_AntesDeRemoverItem(std::int32_t &linha);
    void m_ZtList_DepoisDeRemoverItem();
    void ItemMenuClicado(const std::string &chave);
};
