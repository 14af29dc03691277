#pragma once

#include <string>

// Person's face of what is typed into. Every operation brings the focus to the control first.
class Digitavel {
  public:
    virtual ~Digitavel() = default;

    // Types the characters one by one at the end.
    virtual bool Digita(const std::string &texto) = 0;
    // Selects all and deletes it.
    virtual bool Apaga() = 0;

    bool Preenche(const std::string &texto) { return Apaga() && Digita(texto); }
};
