#pragma once

#include "host/IControle.h"

#include <span>
#include <string_view>

// What of a control has the keyboard by itself.
enum class Parte {
    Todo, // a control that is one place
    // Of an address picker.
    Municipio,
    Via,
    Numero,
    Complemento,
    Usar,
    Limpar,
    // Of a picker of clients.
    Cliente,
    Setor,
    // Of a list.
    Localizar,
    Linhas,
    MaisRegistros,
    Filtro, // of the rows, where a screen has one
};

// In the order of Tab; whether a person can use each now is another matter.
std::span<const Parte> PartesDe(EspecieControle especie);

// To which the keyboard goes when the control gets the focus.
Parte ParteDoFoco(EspecieControle especie);

// The captions that controls show of their own, besides what the form writes into them. A screen layer makes a button
// or a label of each.
namespace Partes {

inline constexpr std::string_view UsarEndereco = "&Usar endereço";
inline constexpr std::string_view LimparEndereco = "&Limpar";
inline constexpr std::string_view MaisRegistros = "&Mais registros";
inline constexpr std::string_view Localizar = "&Localizar";

inline constexpr std::string_view Municipio = "Município:";
inline constexpr std::string_view Logradouro = "Logradouro ou CEP:";
inline constexpr std::string_view Numero = "Número:";
inline constexpr std::string_view Complemento = "Complemento:";
inline constexpr std::string_view Cliente = "Cliente:";
inline constexpr std::string_view Setor = "Setor:";

} // namespace Partes

// Of a kind of control, the parts that are buttons, with letters that are the same in every window.
struct BotaoDeParte {
    Parte Qual;
    std::string_view Caption;
};

std::span<const BotaoDeParte> CaptionsDasPartes(EspecieControle especie);

// Of a picker, the labels with which its rows begin. They line up with those of the page.
std::span<const std::string_view> RotulosDasPartes(EspecieControle especie);
