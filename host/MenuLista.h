#pragma once

// Keys of the standard items, which every list's menu has.
namespace MenuLista {
inline constexpr const char *Novo = "mnuZTLObjNovo";
inline constexpr const char *Editar = "mnuZTLObjEditar";
inline constexpr const char *Detalhes = "mnuZTLObjDetalhes";
inline constexpr const char *Excluir = "mnuZTLObjExcluir";
inline constexpr const char *Localizar = "mnuZTLObjLocalizar";
inline constexpr const char *Atualizar = "mnuZTLObjAtualizar";
} // namespace MenuLista
