#pragma once

#include <nlohmann/json.hpp>

#include <ostream>

namespace comando {

// An answer for programs, whose members come in the order in which they were put.
using Json = nlohmann::ordered_json;

// What is not UTF-8 in it, as a path may be, stands as a mark of that.
inline void Escreve(std::ostream &saida, const Json &resposta)
{
    saida << resposta.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace comando
