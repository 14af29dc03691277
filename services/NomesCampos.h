#pragma once

#include <QJsonObject>
#include <QJsonValue>

#include <string>
#include <string_view>
#include <vector>

namespace mesa {

// The member of a record in the words of the screens; the member's own name when it has none.
std::string NomeDoCampo(std::string_view membro);

// A member in which two records differ.
struct CampoDiferente {
    std::string Membro;
    QJsonValue Antes;
    QJsonValue Depois;
};

// The members in which two records differ, in alphabetical order. What only the services write does not count.
std::vector<CampoDiferente> Diferencas(const QJsonObject &antes, const QJsonObject &depois);
// Names of the members in which two records differ, in the same order.
std::vector<std::string> CamposDiferentes(const QJsonObject &antes, const QJsonObject &depois);

} // namespace mesa
