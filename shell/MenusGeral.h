#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <optional>
#include <string>

class Geral;

// The shell's dealings with the host's menus: the items that the module contributes, the state of their tools, and
// popups.
class MenusGeral {
  public:
    explicit MenusGeral(Geral &geral) : m_Geral(geral) {}
    MenusGeral(const MenusGeral &) = delete;
    MenusGeral &operator=(const MenusGeral &) = delete;

    // The main and the auxiliary items; the loops over them leave element 0 out.
    ItensMenu aMenu;
    ItensMenu aMenuAux;

    // Merges the main items into the host's menus, once.
    void IncorporaMenuPrincipal() noexcept;
    void AdicionaMenu(ItensMenu &aItens);
    // Removing any items clears the flag of the main ones too: all share it.
    void RemoveMenu(ItensMenu &aItens) noexcept;
    void AdicionaMenuAuxiliar() noexcept;
    void RemoveMenuAuxiliar() noexcept;

    // An item by position from 1 or by its Name; Nothing when there is none, or for a key that is neither. What reads
    // as a number is a position.
    Ref<ItemMenuModulo> Item(const Valor &vChave) const noexcept { return Procura(aMenu, vChave); }
    Ref<ItemMenuModulo> ItemAuxiliar(const Valor &vChave) const noexcept { return Procura(aMenuAux, vChave); }

    // Brings the main items' tools to the disabled state.
    void DesabilitarMenu() noexcept;
    void HabilitarFerramenta(const Ref<ItemMenuModulo> &item, bool bHabilita) noexcept;
    // Whether any tool of the band is visible and enabled.
    bool HabilitarBand(const std::string &sBand);

    // Show a band as a popup. The queue runs first, so another click may arrive before it shows.
    void PopupBand(double x, double y, const std::string &sBand) noexcept;
    void PopupBand16(const std::string &sBand, std::int16_t x, std::int16_t y) noexcept;
    // The band of an auxiliary item (by position; the first one with a SubBand when absent), or a band by its name in
    // any case. Nothing happens when there is none.
    void PopupAuxiliar(std::int32_t x, std::int32_t y, const std::optional<Valor> &item = std::nullopt) noexcept;

  private:
    static Ref<ItemMenuModulo> Procura(const ItensMenu &aItens, const Valor &vChave) noexcept;
    Ref<ITool> Ferramenta(const ItemMenuModulo &item) const;
    void DefineEstado(const ItemMenuModulo &item, bool bVisivel, bool bHabilitado) const noexcept;
    // Name of the band that PopupAuxiliar shows; empty when there is none.
    std::string BandAuxiliar(const Valor &item) const;
    std::int32_t PrimeiraSubBand() const noexcept;
    void MostraPopup(const std::string &sBand, std::int32_t x, std::int32_t y) const noexcept;

    Geral &m_Geral;
    bool m_bMenuIncorporado = false;
};
