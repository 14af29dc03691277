#pragma once

#include "host/IztList.h"

// One item of a list's menu, with all that a screen shows of it.
class ItemMenu : public IItemMenu {
  public:
    ItemMenu(ItemMenuLista item, bool visivel);

    std::string_view NomeTipo() const override { return "ItemMenu"; }
    const std::string &Chave() const override { return m_Item.Chave; }
    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override;

    const std::string &Texto() const { return m_Item.Texto; }
    // What it said when it came, however often the module has changed it since.
    const std::string &PrimeiroTexto() const { return m_PrimeiroTexto; }
    const std::string &TextoBotao() const { return m_Item.TextoBotao; }
    const std::string &Dica() const { return m_Item.Dica; }
    bool IniciaGrupo() const { return m_Item.IniciaGrupo; }
    bool Visivel() const { return m_Visivel; }
    bool Bloqueado() const { return m_Bloqueado; }
    // The person can choose it.
    bool Utilizavel() const { return m_Visivel && m_Enabled && !m_Bloqueado; }

    void DefineVisivel(bool valor);
    void DefineBloqueado(bool valor);
    void DefineTexto(const std::string &valor);
    Evento<> &Mudou() { return m_Mudou; }

  private:
    template <class T> void Redefine(T &campo, const T &valor);

    ItemMenuLista m_Item;
    std::string m_PrimeiroTexto;
    bool m_Enabled = true;
    bool m_Visivel;
    bool m_Bloqueado = false;
    Evento<> m_Mudou;
};
