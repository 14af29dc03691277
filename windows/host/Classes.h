#pragma once

#include "windows/automation/Remoto.h"

#include <string>
#include <string_view>

// The classes of the foreign host that the component creates by itself. Those of its system library have identifiers
// that we do not know: for each class here a value of the key "Classes" beside the component's registration,
// CLSID\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\Classes, tells another one. The value's name is the class's name here,
// its text a programmatic identifier or a class identifier in braces. What the user has told counts before what was
// told for the machine.
namespace nativo::Classes {

inline constexpr std::string_view AMRegistro = "AMRegistro";
inline constexpr std::string_view AMEditMenu = "AMEditMenu";
inline constexpr std::string_view Relatorios = "Relatorios";
inline constexpr std::string_view Ajuda = "Ajuda";
inline constexpr std::string_view CFunGen = "CFunGen";
inline constexpr std::string_view Mensagem = "Mensagem";
inline constexpr std::string_view DadosVor = "DadosVor";
inline constexpr std::string_view Diretorios = "Diretorios";
inline constexpr std::string_view ObjGlobalVor = "ObjGlobalVor";
inline constexpr std::string_view DocumentoPDF = "DocumentoPDF";
// What the pickers offer; there is none unless a value tells it.
inline constexpr std::string_view Logradouros = "Logradouros";
inline constexpr std::string_view Clientes = "Clientes";

// The identifier that counts for a class; empty when there is none.
std::string Identificador(std::string_view classe);
// A new object of a class. Fault 429 when it cannot be had.
Com<IDispatch> CriaObjeto(std::string_view classe);

template <class Contrato> Ref<Contrato> Cria(std::string_view classe)
{
    return RemotoDe<Contrato>(CriaObjeto(classe));
}

} // namespace nativo::Classes
