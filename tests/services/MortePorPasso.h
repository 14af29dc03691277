#pragma once

#include <functional>
#include <optional>
#include <string>

// Runs work in a process of its own, which is killed right before one of the system calls by which it would change
// something on the disk. Between two of them nothing changes there, so that all of them in turn are all of the states
// in which the work can be cut off.
class MortePorPasso {
  public:
    // Whether the system lets this process watch another one.
    static bool Possivel();

    // passo: how many changes happen before the end. The call that did not happen any more; nothing when the work was
    // done before. Work that fails ends the test by an exception.
    static std::optional<std::string> Mata(int passo, const std::function<void()> &trabalho);
};
