#pragma once

#include "comando/Ambiente.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace comando {

// One thing that the program does: a class in a file of its own, which makes itself known by a Conhecido.
class Subcomando {
  public:
    Subcomando() = default;
    Subcomando(const Subcomando &) = delete;
    Subcomando &operator=(const Subcomando &) = delete;
    virtual ~Subcomando() = default;

    virtual std::string Nome() const = 0;
    // What it does, as the list of all of them has it.
    virtual std::string Resumo() const = 0;
    // Adds what it takes to its own line, whose values this object then has.
    virtual void Descreve(CLI::App &linha) = 0;
    // What the line asked for. Fim and Falha say why it could not be.
    virtual Codigo Faz(Ambiente &ambiente) = 0;
};

using FazSubcomando = std::unique_ptr<Subcomando> (*)();

// New ones of all that are known, in the order of their names.
std::vector<std::unique_ptr<Subcomando>> FazTodos();

// Makes a sub-command known for as long as the program runs.
struct Conhecido {
    explicit Conhecido(FazSubcomando faz);
};

template <class T> std::unique_ptr<Subcomando> FazUm()
{
    return std::make_unique<T>();
}

} // namespace comando
