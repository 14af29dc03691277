#pragma once

#include <QByteArray>

#include <cstddef>
#include <string>

namespace mesa {

// The largest document that is taken, in bytes.
inline constexpr std::size_t MaiorDocumento = 5242880;

// Why the bytes are not taken as a document, as a sentence; empty when they are a whole PDF that opens without a
// password and has a page. Nothing is drawn, and what takes too long to open is refused.
std::string DefeitoDoPdf(const QByteArray &conteudo);

} // namespace mesa
