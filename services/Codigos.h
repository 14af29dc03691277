#pragma once

#include <string>

namespace mesa {

// The codes by which people know an equipment. They are looked up, compared and made names of files, so that two which
// look the same have to be the same, and none may hold what means something else to a look-up or a file system.
namespace Codigos {

// Why the text cannot be a code, without the field's name: "tem um caractere invisível (U+200B)". Empty when it can,
// and for an empty text.
std::string Ofende(const std::string &texto);

} // namespace Codigos

} // namespace mesa
