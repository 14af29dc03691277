#pragma once

#include <optional>
#include <string>

// Where the faults of the module's procedures go: a passing tail adds its text to the source, a reporting one shows the
// error box with its context, a procedure with errors ignored drops the fault. Written out procedure by procedure,
// since the texts, the wrong ones included, are a contract.
struct Desfecho {
    enum class Fim { Passa, Mostra, Ignora };
    Fim Tipo;
    std::string Texto; // the tail, or the context
};

// No value for a procedure that is not known. What stands in parentheses behind the name belongs to the context only.
std::optional<Desfecho> DesfechoDe(const std::string &procedimento);
