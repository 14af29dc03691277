#include "controls/ItemMenu.h"

#include <utility>

ItemMenu::ItemMenu(ItemMenuLista item, bool visivel)
    : m_Item(std::move(item)),
      m_PrimeiroTexto(m_Item.Texto),
      m_Visivel(visivel)
{
}

template <class T> void ItemMenu::Redefine(T &campo, const T &valor)
{
    if (campo != valor) {
        Ref<ItemMenu> vivo = Eu(*this);
        campo = valor;
        m_Mudou.dispara();
    }
}

void ItemMenu::DefineEnabled(bool valor)
{
    Redefine(m_Enabled, valor);
}

void ItemMenu::DefineVisivel(bool valor)
{
    Redefine(m_Visivel, valor);
}

void ItemMenu::DefineBloqueado(bool valor)
{
    Redefine(m_Bloqueado, valor);
}

void ItemMenu::DefineTexto(const std::string &valor)
{
    Redefine(m_Item.Texto, valor);
}
