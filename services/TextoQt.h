#pragma once

#include <QString>

#include <string>

namespace mesa {

// Text of the contract as text of the toolkit, and back.

inline QString Q(const std::string &texto)
{
    return QString::fromStdString(texto);
}

inline std::string S(const QString &texto)
{
    return texto.toStdString();
}

} // namespace mesa
