#pragma once

#include <QJsonObject>

#include <string>
#include <string_view>
#include <vector>

namespace mesa {

// The member of a record in the words of the screens; the member's own name when it has none.
std::string NomeDoCampo(std::string_view membro);

// Names of the members in which two records differ, in alphabetical order of the members. What only the services write
// does not count.
std::vector<std::string> CamposDiferentes(const QJsonObject &antes, const QJsonObject &depois);

} // namespace mesa
