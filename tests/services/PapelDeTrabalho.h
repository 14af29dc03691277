#pragma once

#include <string>

// The role that works on the registries of the tests where the engine has roles, as a server does; one for all of a
// cluster.
namespace papel {

// How whoever makes a registry in that database says that it works there.
std::string ComTrabalho(const std::string &onde);
// The same place as it comes in. A file stays what it is.
std::string DeTrabalho(const std::string &onde);

} // namespace papel
