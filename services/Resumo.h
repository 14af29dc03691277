#pragma once

#include <QByteArray>

#include <string>

namespace mesa {

// SHA-256 of the bytes, as hexadecimal digits in lower case.
std::string Resumo(const QByteArray &octetos);

} // namespace mesa
