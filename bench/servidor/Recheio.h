#pragma once

#include <cstdint>
#include <string>

// What a registry for measuring has: clients, two users of each, and their equipment, each of one sensor with three
// calibrations in a row.
namespace Recheio {

inline constexpr int Clientes = 10;
inline constexpr int UsuariosPorCliente = 2;
inline constexpr const char *Senha = "cavalo grampeador azul";
inline constexpr int AfericoesPorEquipamento = 3;

// Sign-in name of one of a client's users, both from 0.
std::string Usuario(int cliente, int qual);
// The client, from 0, of an equipment by its number, from 1.
int ClienteDe(std::int32_t nroIntEquip);

// Makes the registry in the empty database that the connection text names, as somebody to whom the engine refuses
// nothing. Clients and users come in through the services. The equipment, its rows and a document of each are copied
// into the tables with the entries of their history, portraits and chain as the services make them, while indexes and
// guards are put aside; these stand again in the end. papel: the role that works on it. Raises what the services and
// the engine raise.
void Enche(const std::string &onde, const std::string &papel, std::int32_t equipamentos);

} // namespace Recheio
