#pragma once

#include <string>

namespace certificado_de_teste {

// Signs the server's own certificate in that directory again, valid between those seconds from now.
void ValeEntre(const std::string &pasta, long de, long ate);

} // namespace certificado_de_teste
