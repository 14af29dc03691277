#pragma once

#include <string>

namespace mesa {

// A database engine that was left behind when another one was promoted in its place, and came back, takes writes and
// knows nothing of that. This process knows it by the history that it has seen the engine in before.
namespace Promocoes {

// What to ask of an engine: its identity, and its history in hexadecimal digits; no row where it follows another one.
inline constexpr const char *Pergunta = "SELECT system_identifier, substr(pg_walfile_name(pg_current_wal_lsn()), 1, 8) "
                                        "FROM pg_control_system() WHERE NOT pg_is_in_recovery()";

// Whether the engine that answered so stands where this process has seen it stand, or further. Any thread may ask.
bool EmDia(const std::string &motor, const std::string &historia);

// A list with commas of which the first one comes last.
std::string DepoisDoPrimeiro(const std::string &lista);

} // namespace Promocoes

} // namespace mesa
