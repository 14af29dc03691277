#pragma once

#include "host/IPlataforma.h"

#include <string>
#include <vector>

namespace mesa {

// A small real PDF of one A4 page: a title and lines of text. The same texts give the same bytes.
Bytes FazCertificadoPDF(const std::string &titulo, const std::vector<std::string> &linhas);

} // namespace mesa
