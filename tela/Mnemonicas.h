#pragma once

#include "host/IForm.h"

#include <set>
#include <string>
#include <string_view>

// The letter or digit that a caption marks with "&", in lower case; empty when it marks none. "&&" stands for the
// character itself.
std::string Mnemonica(std::string_view caption);

// The caption without its marks, as it is read.
std::string SemMarca(std::string_view caption);

// The caption with the letter marked, wherever it first stands in either case; unchanged for an empty letter.
std::string ComMarca(std::string_view caption, std::string_view letra);

// The letters that Alt answers to in one window, so that each leads to one place only.
class Mnemonicas {
  public:
    // Those that the main window's menus have, everywhere.
    Mnemonicas();
    // Those, and the letters of all captions on the form and in its controls: what chooses its letters, such as a
    // list's commands, has the rest.
    explicit Mnemonicas(const IForm &form);

    // Takes the letter that the caption marks, if any.
    void Toma(std::string_view caption);
    // A letter of the caption that is still free, now taken; empty when none is. The beginnings of words come first.
    std::string Acha(std::string_view caption);

  private:
    std::set<std::string> m_Tomadas;
};
