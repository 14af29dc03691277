#include "comando/Subcomando.h"

#include <algorithm>

namespace comando {

namespace {

// Made by the first that asks for it: the files come in no order.
std::vector<FazSubcomando> &Conhecidos()
{
    static std::vector<FazSubcomando> conhecidos;
    return conhecidos;
}

} // namespace

Conhecido::Conhecido(FazSubcomando faz)
{
    Conhecidos().push_back(faz);
}

std::vector<std::unique_ptr<Subcomando>> FazTodos()
{
    std::vector<std::unique_ptr<Subcomando>> todos;
    for (const FazSubcomando faz : Conhecidos()) {
        todos.push_back(faz());
    }
    std::ranges::sort(todos, {}, [](const auto &um) { return um->Nome(); });
    return todos;
}

} // namespace comando
